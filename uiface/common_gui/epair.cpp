// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "epair.h"

#include "ebind.h"
#include "eboxlayout.h"

#include <QLabel>

namespace {
constexpr int besideSpacing = 4;
} // namespace

EPair::EPair(QWidget* parent, QBoxLayout::Direction dir)
    : QWidget(parent)
{
    auto* box = new EBoxLayout(dir, this, 8, 0);
    const bool beside = dir == QBoxLayout::LeftToRight;
    if (beside)
        box->setSpacing(besideSpacing);

    label = new QLabel(this);
    // The mnemonic flag travels in the alignment word (0x882 beside, 0x821 above); Qt 5 keeps only
    // the alignment part and shows the mnemonic through the buddy.
    const int textShowMnemonic = Qt::TextShowMnemonic;
    label->setAlignment(beside ? Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter | textShowMnemonic)
                               : Qt::Alignment(Qt::AlignLeft | Qt::AlignTop | textShowMnemonic));
    box->addWidget(label, 0);
}

EPair::~EPair()
{
    if (bindGroup)
        bindGroup->removePair(this);
}

QString EPair::getLabelText() const
{
    return label->text();
}

void EPair::setLabelText(const QString& text)
{
    label->setText(text);
    if (bindGroup)
        bindGroup->updateSize();
    else
        label->setFixedSize(label->sizeHint());
}

void EPair::setWidget(QWidget* w, bool deleteOld)
{
    if (w == widget)
        return;
    if (widget) {
        layout()->removeWidget(widget);
        if (deleteOld)
            delete widget;
    }
    widget = w;
    // A null widget only clears the buddy; QLayout would warn about adding it.
    if (w)
        static_cast<QBoxLayout*>(layout())->addWidget(w, 1);
    label->setBuddy(w);
}

void EPair::bind(EPair* other)
{
    if (!other)
        return;
    EBind* group = bindGroup ? bindGroup : other->bindGroup ? other->bindGroup : new EBind;
    group->addPair(this);
    group->addPair(other);
    group->updateSize();
}

bool EPair::isVertical() const
{
    return static_cast<QBoxLayout*>(layout())->direction() == QBoxLayout::LeftToRight;
}

void EPair::setLabelIgnored(bool b)
{
    // Acts on the whole pair, as forms have always relied on.
    if (isVisible() == b)
        return;
    setVisible(b);
}

QSize EPair::getGreatestCommonSize()
{
    return bindGroup ? bindGroup->getGreatestCommonSize() : QSize();
}

void EPair::fixWidth(int w)
{
    if (widget)
        widget->setFixedWidth(w);
    keepFieldAtStart();
}

void EPair::keepFieldAtStart()
{
    // Without an alignment the layout centres a field narrower than its row.
    if (widget)
        layout()->setAlignment(widget, Qt::AlignLeading);
}
