// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eeditbox.h"

EEditBox::EEditBox(QWidget* parent)
    : QLineEdit(parent)
{
}

bool EEditBox::setSlotForChangeText(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(textChanged(const QString&)), receiver, slot);
}

bool EEditBox::setSlotForUserChangeText(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(textEdited(const QString&)), receiver, slot);
}
