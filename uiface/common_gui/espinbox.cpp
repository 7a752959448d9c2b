// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "espinbox.h"

#include "eutils.h"

ESpinBox::ESpinBox(QWidget* parent)
    : QSpinBox(parent)
{
    connect(this, QOverload<int>::of(&QSpinBox::valueChanged), this, &ESpinBox::catchChanged,
            Qt::DirectConnection);
}

ESpinBox::ESpinBox(int min, int max, int step, QWidget* parent)
    : ESpinBox(parent)
{
    setRange(min, max);
    setSingleStep(step);
}

void ESpinBox::setValue(int v)
{
    EUtils::setByCode(settingValue, [&] { QSpinBox::setValue(v); });
}

bool ESpinBox::setSlotForChangeValue(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(valueChanged(int)), receiver, slot);
}

bool ESpinBox::setSlotForUserChangeValue(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(userChanged()), receiver, slot);
}

void ESpinBox::catchChanged()
{
    if (!settingValue)
        emit userChanged();
}
