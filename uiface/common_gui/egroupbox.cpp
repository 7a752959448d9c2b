// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "egroupbox.h"

#include "eboxlayout.h"

EGroupBox::EGroupBox(const QString& title, QLayout* layout, QWidget* parent)
    : QGroupBox(title, parent)
{
    if (layout)
        setLayout(layout);
    else
        new EVGroupBoxLayout(this);
}

namespace {
QBoxLayout* boxLayoutOf(QWidget* w)
{
    return qobject_cast<QBoxLayout*>(w->layout());
}
} // namespace

void EGroupBox::addLayout(QLayout* l, int stretch)
{
    if (QBoxLayout* box = boxLayoutOf(this))
        box->addLayout(l, stretch);
}

void EGroupBox::addWidget(QWidget* w, int stretch, Qt::Alignment a)
{
    if (QBoxLayout* box = boxLayoutOf(this))
        box->addWidget(w, stretch, a);
}

void EGroupBox::addSpacing(int size)
{
    if (QBoxLayout* box = boxLayoutOf(this))
        box->addSpacing(size);
}

void EGroupBox::addStretch(int stretch)
{
    if (QBoxLayout* box = boxLayoutOf(this))
        box->addStretch(stretch);
}
