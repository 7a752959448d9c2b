// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "estrdialog.h"

#include "eeditbox.h"
#include "eeditpair.h"

EStrDialog::EStrDialog(QWidget* parent, const QString& title, const QString& label, QString& value)
    : EDialog(parent)
    , value(&value)
{
    pair = new EEditPair(label);
    EEditBox* edit = pair->getEditBox();
    edit->setText(value);
    edit->selectAll();
    layOutValueDialog(title, pair);
}

void EStrDialog::accept()
{
    // Accepted first: a receiver of accepted() can still compare with the caller's old string.
    QDialog::accept();
    *value = pair->getEditBox()->text();
}
