// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "emenuitem.h"

#include <QMenu>
#include <QPixmap>

EMenuItem::EMenuItem(QMenu* parent, int id, QPixmap* icon, const QString& text, const QString& toolTip)
    : QAction(parent)
{
    initAction(this, id, icon, text, toolTip);
}

EMenuItem::EMenuItem(QMenu* parent, QPixmap* icon, const QString& text, const QString& toolTip)
    : EMenuItem(parent, -1, icon, text, toolTip)
{
}

void EMenuItem::initAction(QAction* action, int id, QPixmap* icon, const QString& text, const QString& toolTip)
{
    action->setData(QVariant(id));
    if (icon)
        action->setIcon(QIcon(*icon));
    action->setText(text);
    if (!toolTip.isEmpty())
        action->setToolTip(toolTip);
}
