// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "epassdialog.h"

#include "eboxlayout.h"
#include "ebuttonpanel.h"
#include "eeditbox.h"
#include "eeditpair.h"

#include <QLabel>

#include <limits>

EPassDialog::EPassDialog(QWidget* parent, const QString& title, const QString& label, const QString& message)
    : EDialog(parent, Qt::WindowStaysOnTopHint)
{
    setWindowTitle(title);
    auto* root = new EVRootBoxLayout(this);

    if (!message.isEmpty()) {
        auto* text = new QLabel(message);
        text->setObjectName(QStringLiteral("message"));
        root->addWidget(text);
    }

    pair = new EEditPair(label);
    pair->setObjectName(QStringLiteral("passwordPair"));
    EEditBox* edit = pair->getEditBox();
    edit->setObjectName(QStringLiteral("passwordPairEdit"));
    edit->setEchoMode(QLineEdit::Password);
    // The same limit as the new-password panel: what was chosen there can be typed here.
    edit->setMaxLength(std::numeric_limits<int>::max());
    root->addWidget(pair);

    auto* panel = new EButtonPanel(this, EButtonPanel::OK | EButtonPanel::Cancel);
    root->addWidget(panel);
    connect(panel, &EButtonPanel::ok, this, &QDialog::accept);
    connect(panel, &EButtonPanel::cancel, this, &QDialog::reject);
}

QString EPassDialog::getPassword()
{
    return pair->getEditBox()->text();
}

void EPassDialog::setPassword(const QString& s)
{
    pair->getEditBox()->setText(s);
}
