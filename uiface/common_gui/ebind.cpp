// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ebind.h"

#include "epair.h"

#include <QLabel>

EBind::EBind() = default;

void EBind::addPair(EPair* p)
{
    if (!p || p->bindGroup == this)
        return;
    EBind* other = p->bindGroup;
    if (!other) {
        pairs.push_back(p);
        p->bindGroup = this;
        return;
    }
    for (EPair* q : other->pairs) {
        pairs.push_back(q);
        q->bindGroup = this;
    }
    other->pairs.clear();
    delete other;
}

void EBind::removePair(EPair* p)
{
    if (!p)
        return;
    pairs.remove(p);
    if (p->bindGroup == this)
        p->bindGroup = nullptr;
    if (pairs.empty())
        delete this;
}

QSize EBind::getGreatestCommonSize()
{
    QSize size(0, 0);
    for (const EPair* p : pairs)
        size = size.expandedTo(p->label->sizeHint());
    return size;
}

QSize EBind::getGreatestCommonSizeRight()
{
    QSize size(0, 0);
    for (const EPair* p : pairs) {
        if (p->widget)
            size = size.expandedTo(p->widget->sizeHint());
    }
    return size;
}

void EBind::updateSize()
{
    const QSize size = getGreatestCommonSize();
    for (EPair* p : pairs)
        p->label->setFixedSize(size);
}
