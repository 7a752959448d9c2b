// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "echeckbox.h"
#include "edatetimebox.h"
#include "edatetimepair.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "egroupbox.h"
#include "eiconbutton.h"
#include "eradiogroup.h"
#include "espinbox.h"
#include "espinpair.h"
#include "etimebox.h"
#include "etimepair.h"

#include <QButtonGroup>
#include <QLabel>
#include <QStyle>

#include <vector>

namespace {

/// Shows how often a field changed at all and how often the user changed it, side by side, so
/// that "Set from code" visibly moves only the first figure.
class ChangeCounter : public QLabel
{
    Q_OBJECT
public:
    explicit ChangeCounter(QWidget* parent)
        : QLabel(parent)
    {
        setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("all 999 · user 999")));
        refresh();
    }

public slots:
    void anyChange()
    {
        ++all;
        refresh();
    }
    void userChange()
    {
        ++user;
        refresh();
    }
    void reset()
    {
        all = user = 0;
        refresh();
    }

private:
    void refresh() { setText(QStringLiteral("all %1 · user %2").arg(all).arg(user)); }

    int all = 0;
    int user = 0;
};

class FormPage : public QWidget
{
public:
    FormPage()
    {
        auto* root = new EVRootBoxLayout(this);

        auto* fields = new EGroupBox(QStringLiteral("Connection"));
        host = new EEditPair(QStringLiteral("&Host:"));
        port = new ESpinPair(QStringLiteral("&Port:"), 1, 65535, 1);
        until = new EDateTimePair(QStringLiteral("Valid &until:"));
        check = new ETimePair(QStringLiteral("Daily &check at:"));
        find = new EEditPair(LCQT__Find_what);
        host->bind(port);
        port->bind(until);
        until->bind(check);
        check->bind(find);

        EEditBox* hostBox = host->getEditBox();
        hostBox->setText(QStringLiteral("gateway.example.org"));
        hostBox->setSlotForChangeText(addRow(fields, host), SLOT(anyChange()));
        hostBox->setSlotForUserChangeText(counters.back(), SLOT(userChange()));

        ESpinBox* portBox = port->getSpinBox();
        portBox->setValue(443);
        portBox->setSlotForChangeValue(addRow(fields, port), SLOT(anyChange()));
        portBox->setSlotForUserChangeValue(counters.back(), SLOT(userChange()));

        EDateTimeBox* untilBox = until->getDateTimeBox();
        untilBox->setSlotForChangeValue(addRow(fields, until), SLOT(anyChange()));
        untilBox->setSlotForUserChangeValue(counters.back(), SLOT(userChange()));

        ETimeBox* checkBox = check->getTimeBox();
        checkBox->setTime(3 * 3600 + 30 * 60);
        checkBox->setSlotForChangeValue(addRow(fields, check), SLOT(anyChange()));
        checkBox->setSlotForUserChangeValue(counters.back(), SLOT(userChange()));

        EEditBox* findBox = find->getEditBox();
        findBox->setSlotForChangeText(addRow(fields, find), SLOT(anyChange()));
        findBox->setSlotForUserChangeText(counters.back(), SLOT(userChange()));
        root->addWidget(fields);

        auto* options = new EGroupBox(QStringLiteral("Options"));
        matchCase = new ECheckBox(LCQT__Match_case);
        matchCase->setSlotForToggle(addRow(options, matchCase), SLOT(anyChange()));
        matchCase->setSlotForUserToggle(counters.back(), SLOT(userChange()));
        wholeWord = new ECheckBox(LCQT__Match_whole_word_only);
        wholeWord->setSlotForToggle(addRow(options, wholeWord), SLOT(anyChange()));
        wholeWord->setSlotForUserToggle(counters.back(), SLOT(userChange()));

        direction = new ERadioGroup(LCQT__Direction);
        direction->addButton(LCQT__Up, 0);
        direction->addButton(LCQT__Down, 1);
        direction->setId(1);
        ChangeCounter* directionCounter = addRow(options, direction);
        connect(direction->group, &QButtonGroup::idToggled, directionCounter,
                [directionCounter](int, bool checked) {
                    if (checked)
                        directionCounter->anyChange();
                });
        direction->setSlotForUserToggle(directionCounter, SLOT(userChange()));
        root->addWidget(options);

        auto* buttons = new EHBoxLayout;
        auto* fromCode = new EButton(QStringLiteral("Set from &code"));
        fromCode->setObjectName(QStringLiteral("setFromCode"));
        connect(fromCode, &QPushButton::clicked, this, [this] { setFromCode(); });
        auto* reset = new EIconButton(style()->standardIcon(QStyle::SP_BrowserReload));
        reset->setObjectName(QStringLiteral("resetCounters"));
        reset->setToolTip(QStringLiteral("Reset the counters"));
        for (ChangeCounter* c : counters)
            reset->setSlotForClick(c, SLOT(reset()));
        buttons->addWidget(fromCode);
        buttons->addWidget(reset);
        buttons->addStretch(1);
        buttons->addWidget(new EButton(LCQT__OK, nullptr, true));
        buttons->addWidget(new EButton(LCQT__Cancel));
        root->addStretch(1);
        root->addLayout(buttons);
    }

private:
    /// One row of a group: the field, stretched, and its counter at the right.
    ChangeCounter* addRow(EGroupBox* group, QWidget* field)
    {
        auto* row = new EHBoxLayout;
        auto* counter = new ChangeCounter(nullptr);
        row->addWidget(field, 1);
        // Beside a one-line field the counter is centred; beside the radio box it stays on top.
        row->addWidget(counter, 0, qobject_cast<EGroupBox*>(field) ? Qt::AlignTop : Qt::AlignVCenter);
        group->addLayout(row);
        counters.push_back(counter);
        return counter;
    }

    void setFromCode()
    {
        ++round;
        host->getEditBox()->setText(QStringLiteral("node%1.example.org").arg(round));
        port->getSpinBox()->setValue(8000 + round);
        until->getDateTimeBox()->setCurrentDateTime();
        check->getTimeBox()->setTime(round * 15 * 60);
        find->getEditBox()->setText(QStringLiteral("round %1").arg(round));
        matchCase->setChecked(!matchCase->isChecked());
        wholeWord->setChecked(round % 2 == 1);
        direction->setId(round % 2);
    }

    EEditPair* host = nullptr;
    ESpinPair* port = nullptr;
    EDateTimePair* until = nullptr;
    ETimePair* check = nullptr;
    EEditPair* find = nullptr;
    ECheckBox* matchCase = nullptr;
    ECheckBox* wholeWord = nullptr;
    ERadioGroup* direction = nullptr;
    std::vector<ChangeCounter*> counters;
    int round = 0;
};

} // namespace

GALLERY_PAGE(70, "form", "Forms", [] { return new FormPage; });

#include "page_form.moc"
