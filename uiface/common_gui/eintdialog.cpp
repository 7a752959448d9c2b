// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eintdialog.h"

#include "espinbox.h"
#include "espinpair.h"

EIntDialog::EIntDialog(QWidget* parent, const QString& title, const QString& label, int min, int max, int& value)
    : EDialog(parent)
    , value(&value)
{
    pair = new ESpinPair(label, min, max, 1);
    ESpinBox* box = pair->getSpinBox();
    box->setValue(value);
    box->selectAll();
    layOutValueDialog(title, pair);
}

void EIntDialog::accept()
{
    // A number typed without Enter or a focus change is not committed yet; it counts all the same.
    ESpinBox* box = pair->getSpinBox();
    box->interpretText();
    *value = box->value();
    QDialog::accept();
}
