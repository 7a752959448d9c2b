// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "esplitter.h"

#include "esettings.h"

#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>

ESplitter::ESplitter(QWidget* parent)
    : QSplitter(parent)
{
}

ESplitter::ESplitter(Qt::Orientation orientation, QWidget* parent)
    : QSplitter(orientation, parent)
{
}

void ESplitter::setVisible(bool visible)
{
    if (!visible && isVisible())
        hiddenSizes = sizes();
    QSplitter::setVisible(visible);
}

void ESplitter::saveState(QSettings& s, const char* name)
{
    const QList<int> list = isVisible() ? sizes() : hiddenSizes;
    // Never shown and never hidden: keep what an earlier run stored.
    if (!list.isEmpty())
        ESettings::setList(name, list, s);
}

void ESplitter::loadState(QSettings& s, const char* name)
{
    QList<int> list;
    ESettings::getList(name, list, s);
    if (list.size() > 1)
        setSizes(list);
}

QSplitterHandle* ESplitter::createHandle()
{
    return new ESplitterHandle(orientation(), this);
}

// ---------------------------------------------------------------- ESplitterHandle

ESplitterHandle::ESplitterHandle(Qt::Orientation orientation, QSplitter* parent)
    : QSplitterHandle(orientation, parent)
{
}

void ESplitterHandle::paintEvent(QPaintEvent* e)
{
    QLinearGradient gradient;
    if (orientation() == Qt::Horizontal) {
        gradient.setStart(0, height() / 2);
        gradient.setFinalStop(width() - 1, height() / 2);
    } else {
        gradient.setStart(width() / 2, 0);
        gradient.setFinalStop(width() / 2, height() - 1);
    }
    gradient.setColorAt(0, palette().color(QPalette::Light));
    gradient.setColorAt(1, palette().color(QPalette::Dark));
    QPainter painter(this);
    painter.fillRect(e->rect(), QBrush(gradient));
}
