// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ebuttonpanel.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "ehelpbutton.h"

EButtonPanel::EButtonPanel(QWidget* parent, QFlags<Button> buttons, const char* helpId, const char* okSlot,
                           const char* cancelSlot)
    : QWidget(parent)
{
    row = new EHBoxLayout(this);
    row->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    addButtons(buttons, helpId, okSlot, cancelSlot);
}

QPushButton* EButtonPanel::makeButton(const QString& text, const char* name, bool confirms)
{
    auto* button = new EButton(text, nullptr, confirms);
    button->setObjectName(QString::fromLatin1(name));
    if (confirms) {
        // Only a QDialog keeps a single default button by itself; a panel on any other widget
        // would otherwise show every confirming button as the default.
        if (okButton)
            okButton->setDefault(false);
        okButton = button;
    }
    row->addWidget(button);
    return button;
}

void EButtonPanel::addButtons(QFlags<Button> buttons, const char* helpId, const char* okSlot,
                              const char* cancelSlot)
{
    // Navigation first, then the confirming buttons, then the dismissing ones; Help always last.
    struct Entry
    {
        Button flag;
        const QString* caption;
        const char* name;
        bool confirms;
        void (EButtonPanel::*slot)();
    };
    const Entry order[] = {
        {Back, &LCQT__Back, "backButton", false, &EButtonPanel::buttonBackPressed},
        {Save, &LCQT__Save, "saveButton", true, &EButtonPanel::buttonOKPressed},
        {OK, &LCQT__OK, "okButton", true, &EButtonPanel::buttonOKPressed},
        {Next, &LCQT__Next, "nextButton", true, &EButtonPanel::buttonOKPressed},
        {Finish, &LCQT__Finish, "finishButton", true, &EButtonPanel::buttonOKPressed},
        {Cancel, &LCQT__Cancel, "cancelButton", false, &EButtonPanel::buttonCancelPressed},
        {Close, &LCQT__Close, "closeButton", false, &EButtonPanel::buttonCancelPressed},
    };
    for (const Entry& e : order) {
        if (buttons.testFlag(e.flag))
            connect(makeButton(*e.caption, e.name, e.confirms), &QPushButton::clicked, this, e.slot);
    }
    if (buttons.testFlag(Help)) {
        auto* help = new EHelpButton(parentWidget(), helpId);
        connect(help, &QPushButton::clicked, this, &EButtonPanel::buttonHelpPressed);
        row->addWidget(help);
    }

    QObject* owner = parent();
    if (owner && okSlot)
        connect(this, SIGNAL(ok()), owner, okSlot);
    if (owner && cancelSlot)
        connect(this, SIGNAL(cancel()), owner, cancelSlot);
}

QPushButton* EButtonPanel::addButton(const QString& text, bool isDefault)
{
    QPushButton* button = makeButton(text, "", isDefault);
    if (isDefault)
        connect(button, &QPushButton::clicked, this, &EButtonPanel::buttonOKPressed);
    return button;
}

void EButtonPanel::enableOK(bool enabled)
{
    if (okButton)
        okButton->setEnabled(enabled);
}

void EButtonPanel::clear()
{
    while (QLayoutItem* item = row->takeAt(0))
        delete item;
}

void EButtonPanel::buttonCancelPressed()
{
    emit cancel();
}

void EButtonPanel::buttonHelpPressed()
{
    emit help();
}

void EButtonPanel::buttonOKPressed()
{
    emit ok();
}

void EButtonPanel::buttonBackPressed()
{
    emit back();
}
