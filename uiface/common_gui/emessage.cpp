// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "emessage.h"

#include "common_core.h"
#include "common_gui_loc.h"

#include <QApplication>
#include <QMessageBox>

bool EMessage::cumulativeErrorMode = false;
QString EMessage::cumulativeError;

namespace {

int showBox(QMessageBox::Icon icon, const QString& title, const QString& text,
            QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(icon, title, text, buttons, EMessage::getTopWidget(nullptr),
                    Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    box.setDefaultButton(defaultButton);
    return box.exec();
}

} // namespace

void EMessage::info(QWidget*, const QString& text)
{
    showBox(QMessageBox::Information, LCQT__Information, text, QMessageBox::Ok, QMessageBox::Ok);
}

void EMessage::erro(QWidget*, const QString& text)
{
    if (!cumulativeErrorMode) {
        showBox(QMessageBox::Critical, LCQT__Error, text, QMessageBox::Ok, QMessageBox::Ok);
        return;
    }
    // Callers split the collection on CR LF whatever the platform, so the separator is fixed.
    if (!cumulativeError.isNull())
        cumulativeError += QLatin1String("\r\n");
    else
        cumulativeError = QLatin1String(""); // an empty first error still counts as collected
    cumulativeError += text;
}

void EMessage::erro(QWidget* parent, const std::string& text)
{
    erro(parent, QString::fromUtf8(text.data(), int(text.size())));
}

void EMessage::erro(QWidget* parent, const char* text)
{
    erro(parent, QString::fromUtf8(text));
}

void EMessage::erro(QWidget* parent, const TTT& error)
{
    std::string text;
    error.makeMulti(text);
    erro(parent, text);
}

void EMessage::erro(QWidget* parent, const std::bad_alloc&)
{
    erro(parent, LCQT__Not_enough_memory);
}

bool EMessage::warn(QWidget*, const QString& text)
{
    return showBox(QMessageBox::Warning, LCQT__Warning, text, QMessageBox::Ok | QMessageBox::Cancel,
                   QMessageBox::Cancel)
        == QMessageBox::Ok;
}

bool EMessage::ask(QWidget*, const QString& text)
{
    return showBox(QMessageBox::Question, LCQT__Question, text, QMessageBox::Yes | QMessageBox::No,
                   QMessageBox::Yes)
        == QMessageBox::Yes;
}

int EMessage::ync(QWidget*, const QString& text)
{
    return showBox(QMessageBox::Question, LCQT__Question, text,
                   QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
}

int EMessage::asknoall(QWidget*, const QString& text)
{
    return showBox(QMessageBox::Question, LCQT__Question, text,
                   QMessageBox::Yes | QMessageBox::No | QMessageBox::NoToAll, QMessageBox::Yes);
}

int EMessage::askyesall(QWidget*, const QString& text)
{
    return showBox(QMessageBox::Question, LCQT__Question, text,
                   QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::No, QMessageBox::Yes);
}

int EMessage::askall(QWidget*, const QString& text)
{
    return showBox(QMessageBox::Question, LCQT__Question, text,
                   QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::No | QMessageBox::NoToAll,
                   QMessageBox::Yes);
}

QWidget* EMessage::getTopWidget(QWidget*)
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

void EMessage::setCumulativeErrorMode()
{
    cumulativeErrorMode = true;
    cumulativeError = QString();
}

QString EMessage::getCumulativeError()
{
    cumulativeErrorMode = false;
    QString collected = cumulativeError;
    cumulativeError = QString();
    return collected;
}
