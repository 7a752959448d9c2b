// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "edatetimepair.h"

#include "edatetimebox.h"

#include <QCalendarWidget>

EDateTimePair::EDateTimePair(const QString& label, QWidget* parent)
    : EPair(parent, QBoxLayout::LeftToRight)
{
    auto* box = new EDateTimeBox(nullptr);
    setWidget(box, true);
    setLabelText(label);
    box->setCalendarPopup(true);
    box->setDateTime(QDateTime::currentDateTime().addMonths(1));
    if (QCalendarWidget* calendar = box->calendarWidget())
        calendar->setSelectedDate(QDate::currentDate().addMonths(1));
}

EDateTimeBox* EDateTimePair::getDateTimeBox() const
{
    return dynamic_cast<EDateTimeBox*>(widget);
}
