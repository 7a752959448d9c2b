// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "edialog.h"
#include "estate.h"

/// A dialog that reopens where it was closed. Every way of ending it (OK, Cancel, Escape, the
/// close button, done()) saves its layout under its name; a subclass calls loadState() once its
/// contents are built.
///
/// \code
/// class ConnectDialog : public EStateDialog
/// {
/// public:
///     explicit ConnectDialog(QWidget* parent)
///         : EStateDialog(parent, "ConnectDialog")
///     {
///         // ... build the contents ...
///         loadState();   // size and position of the last time
///     }
/// };
/// \endcode
class COMMON_GUI_EXPORT EStateDialog : public EDialog, public EState
{
    Q_OBJECT
public:
    EStateDialog(QWidget* parent, const char* name, Qt::WindowFlags flags = Qt::WindowFlags());

    using EState::loadState;
    using EState::saveState;
    /// Saves the layout (EState::saveLayout).
    void saveState(QSettings& s) override;
    /// Restores the layout (EState::loadLayout).
    void loadState(QSettings& s) override;

public slots:
    /// Saves the state, then ends the dialog with \a result.
    void done(int result) override;
};
