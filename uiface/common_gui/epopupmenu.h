// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QMenu>

class EMenuItem;
class QPixmap;

/// A context menu whose entries are addressed by command id; exec() returns the chosen id. Its own
/// id, icon, text and tool tip are those of its menuAction(), shown when it is a sub-menu.
///
/// \code
/// EPopupMenu menu(nullptr, QString(), QString());
/// menu.insertItem(new EMenuItem(&menu, CmdOpen, nullptr, QStringLiteral("&Open"), QString()));
/// auto* more = new EPopupMenu(CmdMore, nullptr, QStringLiteral("&More"), QString());
/// more->setParent(&menu, more->windowFlags());   // the caller owns sub-menus
/// more->insertItem(new EMenuItem(more, CmdExport, nullptr, QStringLiteral("&Export"), QString()));
/// menu.insertItem(more);
/// switch (menu.exec(QCursor::pos())) { case CmdOpen: ...; case -1: /* nothing chosen */ }
/// \endcode
class COMMON_GUI_EXPORT EPopupMenu : public QMenu
{
public:
    /// A menu without a parent; \a icon may be null, an empty \a toolTip sets none.
    EPopupMenu(int id, QPixmap* icon, const QString& text, const QString& toolTip);
    /// The same without an id (-1).
    EPopupMenu(QPixmap* icon, const QString& text, const QString& toolTip);

    /// Appends an entry.
    void insertItem(EMenuItem* item);
    /// Appends a sub-menu; returns its action. The sub-menu stays the caller's to delete (give it a
    /// parent).
    QAction* insertItem(EPopupMenu* menu);

    /// Shows the menu modally at \a pos; the chosen entry's id, or -1 when nothing was chosen.
    int exec(const QPoint& pos);

    /// Depth-first in insertion order, into sub-menus (whose own ids are not compared); null when
    /// no entry has \a id.
    QAction* findItem(int id);
    /// setChecked() on the entry with \a id, if any. Does not make it checkable.
    void setItemChecked(int id, bool checked);
    /// setEnabled() on the entry with \a id, if any.
    void setItemEnabled(int id, bool enabled);
};
