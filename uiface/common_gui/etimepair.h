// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "epair.h"

class ETimeBox;

/// A caption beside an ETimeBox.
///
/// \code
/// auto* start = new ETimePair(QStringLiteral("&Start:"), this);
/// start->getTimeBox()->setTime(8 * 3600);
/// \endcode
class COMMON_GUI_EXPORT ETimePair : public EPair
{
public:
    explicit ETimePair(const QString& label, QWidget* parent = nullptr);

    /// The pair's field; null if setWidget() installed another kind of widget.
    ETimeBox* getTimeBox() const;
};
