// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "epopupmenu.h"

#include "emenuitem.h"

EPopupMenu::EPopupMenu(int id, QPixmap* icon, const QString& text, const QString& toolTip)
    : QMenu(nullptr)
{
    EMenuItem::initAction(menuAction(), id, icon, text, toolTip);
    setTitle(text);
}

EPopupMenu::EPopupMenu(QPixmap* icon, const QString& text, const QString& toolTip)
    : EPopupMenu(-1, icon, text, toolTip)
{
}

void EPopupMenu::insertItem(EMenuItem* item)
{
    addAction(item);
}

QAction* EPopupMenu::insertItem(EPopupMenu* menu)
{
    return addMenu(menu);
}

int EPopupMenu::exec(const QPoint& pos)
{
    QAction* chosen = QMenu::exec(pos);
    if (!chosen)
        return -1;
    bool ok = false;
    const int id = chosen->data().toInt(&ok);
    // An action the caller added by hand carries no data: it has no id either.
    return ok ? id : -1;
}

namespace {

QAction* findIn(const QMenu* menu, int id)
{
    const QList<QAction*> list = menu->actions();
    for (QAction* action : list) {
        // A sub-menu is searched, its own action is not compared; a miss there goes on with the
        // entries after it.
        if (const QMenu* sub = action->menu()) {
            if (QAction* found = findIn(sub, id))
                return found;
            continue;
        }
        bool ok = false;
        if (action->data().toInt(&ok) == id && ok)
            return action;
    }
    return nullptr;
}

} // namespace

QAction* EPopupMenu::findItem(int id)
{
    return findIn(this, id);
}

void EPopupMenu::setItemChecked(int id, bool checked)
{
    if (QAction* action = findItem(id))
        action->setChecked(checked);
}

void EPopupMenu::setItemEnabled(int id, bool enabled)
{
    if (QAction* action = findItem(id))
        action->setEnabled(enabled);
}
