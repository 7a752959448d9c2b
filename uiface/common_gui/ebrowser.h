// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QObject>
#include <QString>

class QWidget;

/// Help pages in the desktop's web browser. Static operations only.
///
/// Pages live under the resource directory in "help/<language>/"; a language without its own
/// directory gets the Russian pages.
///
/// \code
/// EBrowser::setHelp(this, "dialogs.html");    // F1 anywhere in this window opens the page
/// EBrowser::help(QStringLiteral("index.html"));
/// \endcode
class COMMON_GUI_EXPORT EBrowser
{
public:
    EBrowser() = delete;

    /// The product's name from the path layer, read once and cached.
    static QString& getProductName();

    /// Opens help/<language>/\a page (help/rus/\a page when the language has no help directory)
    /// in the default browser, or shows "Help file not found: <path>." through EMessage::erro.
    static void help(const QString& page);

    /// Makes F1 on \a w open \a page (null: "index.html"). The link object behind the key is
    /// deleted with \a w. Call it once per widget: a second call adds a second F1 shortcut.
    static bool setHelp(QWidget* w, const char* page);
};

/// The object behind an F1 shortcut made by EBrowser::setHelp: it opens its page when the key is
/// pressed and lives exactly as long as its widget.
class COMMON_GUI_EXPORT EHelpLink : public QObject
{
    Q_OBJECT
public:
    EHelpLink(const QString& page, QWidget* widget);

public slots:
    /// EBrowser::help(page).
    void help();

private:
    QString page;             ///< the page's file name
    QWidget* widget = nullptr; ///< the widget it serves
};
