// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "ebuttonpanel.h"
#include "egroupbox.h"
#include "epassdialog.h"
#include "epasswordpanel.h"

#include <QLabel>
#include <QPushButton>

namespace {

class PasswordsPage : public QWidget
{
public:
    PasswordsPage()
    {
        auto* root = new EVBoxLayout(this);
        root->setContentsMargins(8, 8, 8, 8);
        root->addWidget(makeNewPassword());
        root->addWidget(makeExisting());
        root->addStretch(1);
    }

private:
    QWidget* makeNewPassword()
    {
        auto* box = new EGroupBox(QStringLiteral("New password (minimum strength: Medium)"));
        auto* help = new QLabel(QStringLiteral(
            "Type a password: the strength follows every keystroke, and OK is enabled from Medium up. "
            "High needs more than 8 characters with digits, lower- and upper-case letters and "
            "punctuation ('+' and '$' are symbols, they do not count). \"Show password\" reveals both "
            "fields for three seconds."));
        help->setWordWrap(true);
        box->addWidget(help);

        auto* buttons = new EButtonPanel(box, EButtonPanel::OK);
        auto* panel = new EPasswordPanel(box, &chosen, EPasswordPanel::Medium, buttons->okButton);
        panel->setObjectName(QStringLiteral("newPassword"));
        box->addWidget(panel);
        box->addWidget(buttons);
        auto* result = new QLabel(QStringLiteral("Accepted: nothing yet"));
        result->setObjectName(QStringLiteral("acceptedPassword"));
        box->addWidget(result);
        connect(buttons, &EButtonPanel::ok, this, [this, panel, result] {
            // accept() reports a mismatch or a weak password itself and leaves the variable alone.
            if (panel->accept())
                result->setText(QStringLiteral("Accepted: a password of %1 characters").arg(chosen.size()));
        });
        return box;
    }

    QWidget* makeExisting()
    {
        auto* box = new EGroupBox(QStringLiteral("Existing password"));
        auto* row = new EHBoxLayout;
        auto* ask = new EButton(QStringLiteral("&Unlock token..."));
        ask->setObjectName(QStringLiteral("askPassword"));
        auto* result = new QLabel(QStringLiteral("The dialog stays on top of other windows."));
        result->setObjectName(QStringLiteral("askedPassword"));
        row->addWidget(ask);
        row->addWidget(result, 1);
        box->addLayout(row);
        connect(ask, &QPushButton::clicked, this, [this, result] {
            EPassDialog dialog(this, QStringLiteral("Unlock token"), LCQT__Password,
                               QStringLiteral("Token \"user@example.org\" is locked."));
            if (dialog.exec() == QDialog::Accepted)
                result->setText(QStringLiteral("OK with a password of %1 characters").arg(dialog.getPassword().size()));
            else
                result->setText(QStringLiteral("Cancelled"));
        });
        return box;
    }

    QString chosen;
};

} // namespace

GALLERY_PAGE(85, "passwords", "Passwords", [] { return new PasswordsPage; });
