// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "echeckbox.h"

ECheckBox::ECheckBox(const QString& text, QWidget* parent)
    : QCheckBox(text, parent)
{
}

bool ECheckBox::setSlotForToggle(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(toggled(bool)), receiver, slot);
}

bool ECheckBox::setSlotForUserToggle(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(clicked(bool)), receiver, slot);
}
