// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eeditpair.h"

#include "eeditbox.h"

EEditPair::EEditPair(const QString& label, QWidget* parent)
    : EPair(parent, QBoxLayout::LeftToRight)
{
    setWidget(new EEditBox(nullptr), true);
    setLabelText(label);
}

EEditBox* EEditPair::getEditBox() const
{
    return dynamic_cast<EEditBox*>(widget);
}
