// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "epair.h"

class EDateTimeBox;

/// A caption beside an EDateTimeBox with a calendar pop-up.
/// \note A new pair proposes the date and time one month from now (Qt's addMonths() rule): the
/// forms use it for end-of-validity dates.
///
/// \code
/// auto* until = new EDateTimePair(QStringLiteral("Valid &until:"), this);
/// until->getDateTimeBox()->setSlotForUserChangeValue(this, SLOT(untilEdited()));
/// \endcode
class COMMON_GUI_EXPORT EDateTimePair : public EPair
{
public:
    explicit EDateTimePair(const QString& label, QWidget* parent = nullptr);

    /// The pair's field; null if setWidget() installed another kind of widget.
    EDateTimeBox* getDateTimeBox() const;
};
