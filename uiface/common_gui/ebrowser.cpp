// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ebrowser.h"

#include "common_gui_loc.h"
#include "edirs.h"
#include "emessage.h"
#include "paths.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QShortcut>
#include <QUrl>
#include <QWidget>

namespace {
QString mangledProductName;
} // namespace

QString& EBrowser::getProductName()
{
    if (mangledProductName.isEmpty())
        mangledProductName = QString::fromLatin1(productName());
    return mangledProductName;
}

void EBrowser::help(const QString& page)
{
    // Built afresh on every call, so that a language or resource directory changed at run time
    // is honoured (EDirs::getHelpDir() caches its answer).
    const QString separator = QDir::separator();
    const QString base = EDirs::getResourceDir().canonicalPath() + separator + QStringLiteral("help") + separator;
    QString languageDir = base + QString::fromLatin1(EDirs::getLanguage());
    // The Russian pages are the fallback for every language whose help is not installed.
    if (!QFileInfo::exists(languageDir))
        languageDir = base + QStringLiteral("rus");
    const QString file = languageDir + separator + page;

    if (QFileInfo::exists(file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    else
        EMessage::erro(nullptr, LCQT__Help_file_not_found + file + QLatin1Char('.'));
}

bool EBrowser::setHelp(QWidget* w, const char* page)
{
    if (!w)
        return false;
    auto* link = new EHelpLink(page ? QString::fromLatin1(page) : QStringLiteral("index.html"), w);
    auto* shortcut = new QShortcut(QKeySequence(Qt::Key_F1), w);
    shortcut->setObjectName(QStringLiteral("helpShortcut"));
    QObject::connect(shortcut, &QShortcut::activated, link, &EHelpLink::help);
    return bool(QObject::connect(w, &QObject::destroyed, link, &QObject::deleteLater));
}

// ---------------------------------------------------------------------------------------------- EHelpLink

EHelpLink::EHelpLink(const QString& page, QWidget* widget)
    : page(page)
    , widget(widget)
{
}

void EHelpLink::help()
{
    EBrowser::help(page);
}
