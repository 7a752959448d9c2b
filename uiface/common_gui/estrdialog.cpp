// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "estrdialog.h"

#include "eboxlayout.h"
#include "ebuttonpanel.h"
#include "eeditbox.h"
#include "eeditpair.h"

EStrDialog::EStrDialog(QWidget* parent, const QString& title, const QString& label, QString& value)
    : EDialog(parent)
    , value(&value)
{
    setWindowTitle(title);
    auto* root = new EVRootBoxLayout(this);

    pair = new EEditPair(label);
    pair->setObjectName(QStringLiteral("valuePair"));
    EEditBox* edit = pair->getEditBox();
    edit->setText(value);
    edit->selectAll();
    root->addWidget(pair, 0);

    auto* panel = new EButtonPanel(this, EButtonPanel::OK | EButtonPanel::Cancel);
    root->addWidget(panel);
    connect(panel, &EButtonPanel::cancel, this, &QDialog::reject);
    connect(panel, &EButtonPanel::ok, this, &EStrDialog::accept);
}

void EStrDialog::accept()
{
    // Accepted first: a receiver of accepted() can still compare with the caller's old string.
    QDialog::accept();
    *value = pair->getEditBox()->text();
}
