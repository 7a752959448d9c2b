// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eboxlayout.h"

#include <QWidget>

namespace {
constexpr int houseSpacing = 8;
constexpr int rootMargin = 8;
} // namespace

EBoxLayout::EBoxLayout(QBoxLayout::Direction dir, QWidget* parent, int spacing, int margin)
    : EBoxLayout(dir, parent, spacing, margin, margin, margin, margin)
{
}

EBoxLayout::EBoxLayout(QBoxLayout::Direction dir, QWidget* parent, int spacing, int left, int top,
                       int right, int bottom)
    : QBoxLayout(dir, parent)
{
    setSpacing(spacing);
    setContentsMargins(left, top, right, bottom);
}

void EBoxLayout::clear()
{
    clearLayout(this);
}

void EBoxLayout::clearLayout(QLayout* layout)
{
    if (!layout)
        return;
    while (QLayoutItem* item = layout->takeAt(0)) {
        QWidget* w = item->widget();
        if (QLayout* nested = item->layout())
            clearLayout(nested);
        delete item; // for a nested layout the item is the layout itself
        // At once, not deleteLater: callers refill the layout right away and expect the old
        // widgets gone from findChildren().
        delete w;
    }
}

EHBoxLayout::EHBoxLayout(QWidget* parent)
    : EBoxLayout(QBoxLayout::LeftToRight, parent, houseSpacing, 0)
{
}

EVBoxLayout::EVBoxLayout(QWidget* parent, int spacing, int margin)
    : EBoxLayout(QBoxLayout::TopToBottom, parent, spacing, margin)
{
}

EVRootBoxLayout::EVRootBoxLayout(QWidget* parent)
    : EBoxLayout(QBoxLayout::TopToBottom, parent, houseSpacing, rootMargin)
{
}

EVGroupBoxLayout::EVGroupBoxLayout(QWidget* parent)
    : EBoxLayout(QBoxLayout::TopToBottom, parent, houseSpacing, 8, 4, 8, 8)
{
}
