// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QString>

class QSettings;
class QWidget;

/// A window that keeps its state in "common_gui.ini" under its own name (the settings group).
/// A subclass says what its state is by implementing saveState(QSettings&) and loadState(QSettings&);
/// saveState() and loadState() open the file and the group around them.
///
/// The layout of a window is kept under "Size", "Pos" and "Geometry" (see saveLayout).
class COMMON_GUI_EXPORT EState
{
public:
    /// \a name is the settings group (ASCII).
    explicit EState(const char* name);
    virtual ~EState();
    EState(const EState&) = delete;
    EState& operator=(const EState&) = delete;

    /// Writes the state into \a s, which is open on the window's group.
    virtual void saveState(QSettings& s) = 0;
    /// Reads the state from \a s, which is open on the window's group.
    virtual void loadState(QSettings& s) = 0;

    /// Opens "common_gui.ini" on the group and calls saveState(QSettings&); written on return.
    void saveState();
    /// Opens "common_gui.ini" on the group and calls loadState(QSettings&).
    void loadState();

    /// Writes "Size", "Pos" and "Geometry" of \a w, in that order.
    static void saveLayout(QSettings& s, QWidget* w);
    /// Restores "Geometry" if Qt accepts it, else "Size" and "Pos" if some screen shows that
    /// rectangle, else centres \a w on the primary screen at its size hint. Malformed values are
    /// never fatal.
    static void loadLayout(QSettings& s, QWidget* w);

    /// The settings group of this window.
    const QString& stateName() const { return name; }

protected:
    QString name; ///< the settings group
};
