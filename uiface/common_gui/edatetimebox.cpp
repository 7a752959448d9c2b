// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "edatetimebox.h"

#include "eutils.h"

#include <ctime>

EDateTimeBox::EDateTimeBox(QWidget* parent)
    : QDateTimeEdit(parent)
{
    connect(this, &QDateTimeEdit::dateTimeChanged, this, &EDateTimeBox::catchChanged,
            Qt::DirectConnection);
}

void EDateTimeBox::setDateTime(const QDateTime& dt)
{
    EUtils::setByCode(settingValue, [&] { QDateTimeEdit::setDateTime(dt); });
}

void EDateTimeBox::setDateTime(long t)
{
    setDateTime(QDateTime::fromSecsSinceEpoch(qint64(t), Qt::LocalTime));
}

void EDateTimeBox::setCurrentDateTime()
{
    setDateTime(long(std::time(nullptr)));
}

bool EDateTimeBox::setSlotForChangeValue(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(dateTimeChanged(const QDateTime&)), receiver, slot);
}

bool EDateTimeBox::setSlotForUserChangeValue(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(userChanged()), receiver, slot);
}

void EDateTimeBox::catchChanged()
{
    if (!settingValue)
        emit userChanged();
}
