// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "espinpair.h"

#include "espinbox.h"

ESpinPair::ESpinPair(const QString& label, QWidget* parent)
    : EPair(parent, QBoxLayout::LeftToRight)
{
    setLabelText(label);
    setWidget(new ESpinBox(nullptr), true);
}

ESpinPair::ESpinPair(const QString& label, int min, int max, int step, QWidget* parent)
    : EPair(parent, QBoxLayout::LeftToRight)
{
    setLabelText(label);
    setWidget(new ESpinBox(min, max, step, nullptr), true);
}

ESpinBox* ESpinPair::getSpinBox() const
{
    return dynamic_cast<ESpinBox*>(widget);
}
