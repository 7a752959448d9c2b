// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QAction>

class QMenu;
class QPixmap;

/// A menu entry that carries an integer command id (the action's data; -1 for none).
///
/// \code
/// EPopupMenu menu(nullptr, QStringLiteral("Certificate"), QString());
/// menu.insertItem(new EMenuItem(&menu, CmdDelete, Resource::getPixmap(CgIcon::TbDelete), QStringLiteral("&Delete"), QString()));
/// \endcode
class COMMON_GUI_EXPORT EMenuItem : public QAction
{
public:
    /// An entry of \a parent with \a id; \a icon may be null, an empty \a toolTip sets none.
    EMenuItem(QMenu* parent, int id, QPixmap* icon, const QString& text, const QString& toolTip);
    /// The same without an id (-1): choosing it reads as choosing nothing.
    EMenuItem(QMenu* parent, QPixmap* icon, const QString& text, const QString& toolTip);

    /// Gives \a action the id, icon, text and tool tip as the constructors do; used for the action
    /// of a sub-menu too.
    static void initAction(QAction* action, int id, QPixmap* icon, const QString& text, const QString& toolTip);
};
