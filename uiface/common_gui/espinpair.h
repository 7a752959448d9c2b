// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "epair.h"

class ESpinBox;

/// A caption beside an ESpinBox.
///
/// \code
/// auto* port = new ESpinPair(QStringLiteral("&Port:"), 1, 65535, 1, this);
/// port->getSpinBox()->setValue(443);
/// \endcode
class COMMON_GUI_EXPORT ESpinPair : public EPair
{
public:
    explicit ESpinPair(const QString& label, QWidget* parent = nullptr);
    /// The box gets the range \a min..\a max and the step \a step.
    ESpinPair(const QString& label, int min, int max, int step, QWidget* parent = nullptr);

    /// The pair's field; null if setWidget() installed another kind of widget.
    ESpinBox* getSpinBox() const;
};
