// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ebutton.h"

EButton::EButton(const QString& text, QWidget* parent, bool isDefault)
    : QPushButton(QLatin1Char(' ') + text + QLatin1Char(' '), parent)
{
    setDefault(isDefault);
}

bool EButton::setSlotForClick(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(clicked()), receiver, slot);
}
