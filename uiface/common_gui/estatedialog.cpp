// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "estatedialog.h"

EStateDialog::EStateDialog(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : EDialog(parent, flags)
    , EState(name)
{
}

void EStateDialog::saveState(QSettings& s)
{
    EState::saveLayout(s, this);
}

void EStateDialog::loadState(QSettings& s)
{
    EState::loadLayout(s, this);
}

void EStateDialog::done(int result)
{
    // accept(), reject(), Escape and closeEvent all end here, while the dialog is still shown.
    EState::saveState();
    EDialog::done(result);
}
