// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "epair.h"

class EEditBox;

/// A caption beside an EEditBox.
///
/// \code
/// auto* host = new EEditPair(QStringLiteral("&Host:"), this);
/// host->getEditBox()->setSlotForUserChangeText(this, SLOT(hostEdited()));
/// \endcode
class COMMON_GUI_EXPORT EEditPair : public EPair
{
public:
    explicit EEditPair(const QString& label, QWidget* parent = nullptr);

    /// The pair's field; null if setWidget() installed another kind of widget.
    EEditBox* getEditBox() const;
};
