// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etimebox.h"

#include "eutils.h"

ETimeBox::ETimeBox(QWidget* parent)
    : QTimeEdit(parent)
{
    connect(this, &QDateTimeEdit::dateTimeChanged, this, &ETimeBox::catchChanged,
            Qt::DirectConnection);
}

void ETimeBox::setTime(const QTime& t)
{
    EUtils::setByCode(settingValue, [&] { QTimeEdit::setTime(t); });
}

void ETimeBox::setTime(int seconds)
{
    // Qt 4 counted a null time as midnight; Qt 5 wants midnight spelled out.
    setTime(QTime(0, 0).addSecs(seconds));
}

bool ETimeBox::setSlotForChangeValue(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(dateTimeChanged(const QDateTime&)), receiver, slot);
}

bool ETimeBox::setSlotForUserChangeValue(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(userChanged()), receiver, slot);
}

void ETimeBox::catchChanged()
{
    if (!settingValue)
        emit userChanged();
}
