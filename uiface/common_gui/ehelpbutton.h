// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "ebutton.h"

/// A "Help" push button that opens a help page in the browser.
///
/// \code
/// auto* help = new EHelpButton(this, "dialogs.html");   // the text must outlive the button
/// row->addWidget(help);
/// \endcode
class COMMON_GUI_EXPORT EHelpButton : public EButton
{
    Q_OBJECT
public:
    /// A button captioned with the localized "Help"; \a page is kept as given, not copied
    /// (null: "index.html").
    EHelpButton(QWidget* parent, const char* page);

public slots:
    /// Opens the page with EBrowser::help.
    void showContextHelp();

private:
    const char* page = nullptr;
};
