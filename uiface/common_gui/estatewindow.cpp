// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "estatewindow.h"

#include "eresource.h"

#include <QCloseEvent>
#include <QIcon>
#include <QPixmap>
#include <QShortcut>

EStateWindow::EStateWindow(QWidget* parent, const char* name, const QString& title, int icon, int icon2,
                           Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
    , EState(name)
{
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    escape->setObjectName(QStringLiteral("escape"));
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    if (icon >= 0 || icon2 >= 0) {
        QIcon windowIcon;
        if (icon >= 0)
            windowIcon.addPixmap(*Resource::getPixmap(icon), QIcon::Normal, QIcon::Off);
        if (icon2 >= 0)
            windowIcon.addPixmap(*Resource::getPixmap(icon2), QIcon::Normal, QIcon::Off);
        setWindowIcon(windowIcon);
    }
}

void EStateWindow::saveState(QSettings&)
{
}

void EStateWindow::loadState(QSettings&)
{
}

void EStateWindow::saveLayout(QSettings& s)
{
    EState::saveLayout(s, this);
}

void EStateWindow::loadLayout(QSettings& s)
{
    EState::loadLayout(s, this);
}

QMenu* EStateWindow::createPopupMenu()
{
    return nullptr;
}

void EStateWindow::closeEvent(QCloseEvent* e)
{
    // The owner hears of it first, so it can drop its pointer before anything else happens.
    emit stateWindowClosed(this);
    EState::saveState();
    QMainWindow::closeEvent(e);
}
