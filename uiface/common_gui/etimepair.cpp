// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etimepair.h"

#include "etimebox.h"

ETimePair::ETimePair(const QString& label, QWidget* parent)
    : EPair(parent, QBoxLayout::LeftToRight)
{
    setWidget(new ETimeBox(nullptr), true);
    setLabelText(label);
}

ETimeBox* ETimePair::getTimeBox() const
{
    return dynamic_cast<ETimeBox*>(widget);
}
