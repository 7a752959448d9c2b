// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eintdialog.h"

#include "eboxlayout.h"
#include "ebuttonpanel.h"
#include "espinbox.h"
#include "espinpair.h"

EIntDialog::EIntDialog(QWidget* parent, const QString& title, const QString& label, int min, int max, int& value)
    : EDialog(parent)
    , value(&value)
{
    setWindowTitle(title);
    auto* root = new EVRootBoxLayout(this);

    pair = new ESpinPair(label, min, max, 1);
    pair->setObjectName(QStringLiteral("valuePair"));
    ESpinBox* box = pair->getSpinBox();
    box->setValue(value);
    box->selectAll();
    root->addWidget(pair, 0);

    auto* panel = new EButtonPanel(this, EButtonPanel::OK | EButtonPanel::Cancel);
    root->addWidget(panel);
    connect(panel, &EButtonPanel::cancel, this, &QDialog::reject);
    connect(panel, &EButtonPanel::ok, this, &EIntDialog::accept);
}

void EIntDialog::accept()
{
    // A number typed without Enter or a focus change is not committed yet; it counts all the same.
    ESpinBox* box = pair->getSpinBox();
    box->interpretText();
    *value = box->value();
    QDialog::accept();
}
