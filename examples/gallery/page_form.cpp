// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "echeckbox.h"
#include "ecombobox.h"
#include "ecombopair.h"
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

/// The encodings the form offers, as an enumerator the combo fills itself from.
class EncodingList : public EEnumerator
{
public:
    const QPixmap* getIcon() override { return nullptr; }
    QString getText() override { return QString::fromLatin1(names[pos]); }
    void* getData() override { return nullptr; }
    int getId() override { return pos; }
    bool next() override { return ++pos < int(sizeof(names) / sizeof(names[0])); }
    QString getListText() override { return QString(); }

private:
    static constexpr const char* names[] = {"UTF-8", "Windows-1251", "KOI8-R", "IBM866", "ISO-8859-5"};
    int pos = -1;
};

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
        encoding = new EComboPair(LCQT__Encoding + QLatin1Char(':'));
        // The remembered texts are kept under the class of the pair's parent: give it at once.
        find = new EComboStatePair(LCQT__Find_what, QStringLiteral("GalleryFindWhat"), this);
        host->bind(port);
        port->bind(until);
        until->bind(check);
        check->bind(encoding);
        encoding->bind(find);

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

        EComboBox* encodingBox = encoding->getComboBox();
        EncodingList encodings;
        encodingBox->addId(encodings, true);
        encodingBox->setCurrentId(0);
        encodingBox->setSlotForChangeSelection(addRow(fields, encoding), SLOT(anyChange()));
        encodingBox->setSlotForUserChangeSelection(counters.back(), SLOT(userChange()));

        EComboState* findBox = find->getComboState();
        findBox->setSlotForChangeSelection(addRow(fields, find), SLOT(anyChange()));
        findBox->setSlotForUserChangeSelection(counters.back(), SLOT(userChange()));
        connect(findBox, &EComboState::activateText, findBox,
                [findBox] { findBox->setEditText(findBox->currentText()); });
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
        EComboBox* encodingBox = encoding->getComboBox();
        encodingBox->setCurrentIndex(round % encodingBox->count());
        find->getComboState()->setEditText(QStringLiteral("round %1").arg(round));
        matchCase->setChecked(!matchCase->isChecked());
        wholeWord->setChecked(round % 2 == 1);
        direction->setId(round % 2);
    }

    EEditPair* host = nullptr;
    ESpinPair* port = nullptr;
    EDateTimePair* until = nullptr;
    ETimePair* check = nullptr;
    EComboPair* encoding = nullptr;
    EComboStatePair* find = nullptr;
    ECheckBox* matchCase = nullptr;
    ECheckBox* wholeWord = nullptr;
    ERadioGroup* direction = nullptr;
    std::vector<ChangeCounter*> counters;
    int round = 0;
};

} // namespace

GALLERY_PAGE(70, "form", "Forms", [] { return new FormPage; });

#include "page_form.moc"
