// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "efind.h"

#include "common_gui_loc.h"
#include "ebrowser.h"
#include "ebutton.h"
#include "eboxlayout.h"
#include "echeckbox.h"
#include "ecombopair.h"
#include "eradiogroup.h"
#include "esettings.h"

#include <QLineEdit>
#include <QRadioButton>

namespace {

const QString sharedGroup()
{
    return QStringLiteral("EFindOwner");
}

ECheckBox* makeCheckBox(const QString& text, const char* objectName, QBoxLayout* column)
{
    auto* box = new ECheckBox(text);
    box->setObjectName(QLatin1String(objectName));
    column->addWidget(box);
    return box;
}

} // namespace

EFindOwner::EFindOwner(const char* name)
    : name(name)
{
}

EFindOwner::~EFindOwner()
{
    EFind* dialog = findDialog;
    findDialog = nullptr;
    delete dialog;
}

void EFindOwner::makeFindDialog(QWidget* parent, int flags, const char* help)
{
    if (!findDialog)
        findDialog = new EFind(this, parent, flags, name, help);
}

EFind::EFind(EFindOwner* owner, QWidget* parent, int flags, const char* name, const char* help)
    : EDialog(parent)
    , owner(owner)
{
    // The search goes on in the owner's window while the dialog stays open.
    setModal(false);
    setWindowTitle(LCQT__Find__0);
    setObjectName(QLatin1String(name));
    EBrowser::setHelp(this, help);

    auto* root = new EVRootBoxLayout(this);

    auto* what = new EComboStatePair(LCQT__Find_what, QStringLiteral("Find_what"), this);
    findWhat = what->getComboState();
    findWhat->setObjectName(QStringLiteral("Find_what"));
    findWhat->setSlotForChangeText(this, SLOT(textChanged(const QString&)));
    findWhat->setSlotForActivateText(this, SLOT(findClick()));
    root->addWidget(what);

    auto* row = new EHBoxLayout;
    root->addLayout(row);
    auto* checks = new EVBoxLayout;
    row->addLayout(checks);
    if (flags & WholeWord)
        wholeWord = makeCheckBox(LCQT__Match_whole_word_only, "wholeWord", checks);
    if (flags & MatchCase)
        matchCase = makeCheckBox(LCQT__Match_case, "matchCase", checks);
    if (flags & AllColumns) {
        allColumns = makeCheckBox(LCQT__Find_in_all_columns, "allColumns", checks);
        allColumns->setChecked(true);
    }
    checks->addStretch(1);
    if (flags & Direction) {
        auto* direction = new ERadioGroup(LCQT__Direction);
        direction->setObjectName(QStringLiteral("direction"));
        up = direction->addButton(LCQT__Up, 0);
        up->setObjectName(QStringLiteral("up"));
        down = direction->addButton(LCQT__Down, 1);
        down->setObjectName(QStringLiteral("down"));
        down->setChecked(true);
        row->addWidget(direction);
    }

    auto* buttons = new EVBoxLayout;
    row->addLayout(buttons);
    buttons->addStretch(1);
    findButton = new EButton(LCQT__Find__1, this, true);
    findButton->setObjectName(QStringLiteral("find"));
    connect(findButton, &QPushButton::clicked, this, &EFind::findClick);
    buttons->addWidget(findButton);
    auto* cancel = new EButton(LCQT__Cancel, this);
    cancel->setObjectName(QStringLiteral("cancel"));
    connect(cancel, &QPushButton::clicked, this, &QWidget::hide);
    buttons->addWidget(cancel);
    buttons->addStretch(1);

    findButton->setEnabled(!getText().isEmpty());
}

EFind::~EFind()
{
    // An editor closed with its find dialog open would otherwise forget the options in it.
    if (isVisible())
        saveState();
    if (owner && owner->findDialog == this)
        owner->findDialog = nullptr;
}

int EFind::getDirection() const
{
    return up && up->isChecked() ? -1 : 1;
}

bool EFind::getCaseSensitive() const
{
    return matchCase ? matchCase->isChecked() : true;
}

bool EFind::getWholeWord() const
{
    return wholeWord ? wholeWord->isChecked() : false;
}

bool EFind::getAllColumns() const
{
    return allColumns ? allColumns->isChecked() : true;
}

QString EFind::getText() const
{
    return findWhat->currentText();
}

void EFind::loadState(ESettings& s)
{
    if (up) {
        if (s.value(QStringLiteral("Direction"), 1).toInt() < 0)
            up->setChecked(true);
        else
            down->setChecked(true);
    }
    if (matchCase)
        matchCase->setChecked(s.value(QStringLiteral("Case"), 0).toInt() != 0);
    if (wholeWord)
        wholeWord->setChecked(s.value(QStringLiteral("Word"), 0).toInt() != 0);
    if (allColumns)
        allColumns->setChecked(s.value(QStringLiteral("Column"), 0).toInt() != 0);
    if (QLineEdit* edit = findWhat->lineEdit())
        edit->selectAll();
}

void EFind::saveState(ESettings& s)
{
    s.setValue(QStringLiteral("Direction"), getDirection());
    s.setValue(QStringLiteral("Case"), matchCase && matchCase->isChecked() ? 1 : 0);
    s.setValue(QStringLiteral("Word"), wholeWord && wholeWord->isChecked() ? 1 : 0);
    s.setValue(QStringLiteral("Column"), allColumns && allColumns->isChecked() ? 1 : 0);
    s.setValue(QStringLiteral("Text"), getText());
}

void EFind::setVisible(bool visible)
{
    if (visible) {
        loadState();
    } else if (isVisible()) {
        // A dialog never shown holds the built-in options, not the user's: saving them would
        // overwrite the shared group with defaults.
        saveState();
    }
    QDialog::setVisible(visible);
}

void EFind::findFirst()
{
    setFindLabel(LCQT__Find__1);
    setVisible(true);
    raise();
    activateWindow();
    findWhat->setFocus(Qt::OtherFocusReason);
}

void EFind::findNext()
{
    loadState();
    if (owner && owner->find())
        setFindLabel(LCQT__Find_Next__0);
}

void EFind::findClick()
{
    findWhat->setEditText(getText());
    if (owner && owner->find())
        setFindLabel(LCQT__Find_Next__0);
}

void EFind::loadState()
{
    int saved = 0;
    {
        ESettings own(objectName());
        saved = own.value(QStringLiteral("Direction"), 0).toInt();
        if (saved != 0) {
            loadState(own);
            return;
        }
    }
    // Never used under this name: start from the options last used in any find dialog.
    ESettings shared(sharedGroup());
    loadState(shared);
}

void EFind::saveState()
{
    {
        ESettings own(objectName());
        saveState(own);
    }
    ESettings shared(sharedGroup());
    saveState(shared);
}

void EFind::textChanged(const QString& text)
{
    findButton->setEnabled(!text.isEmpty());
    setFindLabel(LCQT__Find__1);
}

void EFind::setFindLabel(const QString& text)
{
    // EButton's one-space margin on either side of the caption.
    findButton->setText(QLatin1Char(' ') + text + QLatin1Char(' '));
}
