// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ecombopair.h"

EComboPair::EComboPair(EComboBox* combo, const QString& label, QWidget* parent)
    : EPair(parent, QBoxLayout::LeftToRight)
{
    setWidget(combo, true);
    setLabelText(label);
}

EComboPair::EComboPair(const QString& label, QWidget* parent)
    : EComboPair(new EComboBox(nullptr), label, parent)
{
}

void EComboPair::fixWidth(int w)
{
    if (EComboBox* combo = getComboBox())
        combo->fixWidth(w);
    keepFieldAtStart();
}

EComboBox* EComboPair::getComboBox() const
{
    return dynamic_cast<EComboBox*>(widget);
}
