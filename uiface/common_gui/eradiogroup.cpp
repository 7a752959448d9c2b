// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eradiogroup.h"

#include <QButtonGroup>
#include <QRadioButton>

ERadioGroup::ERadioGroup(const QString& title, QLayout* layout, QWidget* parent)
    : EGroupBox(title, layout, parent)
    , group(new QButtonGroup(this))
{
}

QRadioButton* ERadioGroup::addButton(const QString& text, int id)
{
    auto* b = new QRadioButton(text);
    group->addButton(b, id);
    addWidget(b, 0, Qt::Alignment());
    if (!b->parent())
        b->setParent(this); // a layout that is not a box layout would leave it an orphan
    return b;
}

void ERadioGroup::addButton(QRadioButton* b, int id)
{
    group->addButton(b, id);
}

int ERadioGroup::getId() const
{
    return group->checkedId();
}

void ERadioGroup::setId(int id)
{
    if (QAbstractButton* b = group->button(id))
        b->setChecked(true);
}

void ERadioGroup::setEnabled(int id, bool enabled)
{
    if (QAbstractButton* b = group->button(id))
        b->setEnabled(enabled);
}

QAbstractButton* ERadioGroup::getButton(int id) const
{
    return group->button(id);
}

bool ERadioGroup::setSlotForUserToggle(QObject* receiver, const char* slot)
{
    // idClicked(int) is the name Qt 5.15 and Qt 6 give to the old buttonClicked(int): same
    // signal, emitted on user clicks only.
    return QObject::connect(group, SIGNAL(idClicked(int)), receiver, slot);
}
