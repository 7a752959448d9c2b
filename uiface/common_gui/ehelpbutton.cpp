// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ehelpbutton.h"

#include "common_gui_loc.h"
#include "ebrowser.h"

EHelpButton::EHelpButton(QWidget* parent, const char* page)
    : EButton(LCQT__Help, parent)
    , page(page)
{
    setObjectName(QStringLiteral("helpButton"));
    connect(this, &QPushButton::clicked, this, &EHelpButton::showContextHelp);
}

void EHelpButton::showContextHelp()
{
    // A button made without a topic (a button panel with no help id) opens the start page.
    EBrowser::help(page ? QString::fromLatin1(page) : QStringLiteral("index.html"));
}
