// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "estate.h"

#include <QMainWindow>

/// A main window with a name under which it keeps its state. Escape closes it, and it deletes
/// itself when closed: an owner that keeps a pointer listens to stateWindowClosed().
/// The window's state is empty by default; override saveState(QSettings&)/loadState(QSettings&),
/// typically with saveLayout()/loadLayout(), to keep its layout.
///
/// \code
/// class LogWindow : public EStateWindow
/// {
/// public:
///     LogWindow() : EStateWindow(nullptr, "LogWindow", QStringLiteral("Log"), CgIcon::TbLog) { loadState(); }
///     void saveState(QSettings& s) override { saveLayout(s); }
///     void loadState(QSettings& s) override { loadLayout(s); }
///     using EStateWindow::saveState;
///     using EStateWindow::loadState;
/// };
/// \endcode
class COMMON_GUI_EXPORT EStateWindow : public QMainWindow, public EState
{
    Q_OBJECT
public:
    /// \a icon and \a icon2 are ids of the library's icon table (common_gui_res.h); a negative id
    /// adds nothing, and with both negative the application's window icon stays.
    EStateWindow(QWidget* parent, const char* name, const QString& title = QString(), int icon = -1, int icon2 = -1,
                 Qt::WindowFlags flags = Qt::WindowFlags());

    using EState::loadLayout;
    using EState::loadState;
    using EState::saveLayout;
    using EState::saveState;
    /// Does nothing: a subclass that wants its layout kept overrides it.
    void saveState(QSettings& s) override;
    /// Does nothing: a subclass that wants its layout kept overrides it.
    void loadState(QSettings& s) override;
    /// EState::saveLayout of this window; a subclass may extend the layout it keeps.
    virtual void saveLayout(QSettings& s);
    /// EState::loadLayout of this window.
    virtual void loadLayout(QSettings& s);

    /// No context menu for toolbars and docks: returns null.
    QMenu* createPopupMenu() override;

signals:
    /// Emitted as the window closes, before its state is saved; the window deletes itself afterwards.
    void stateWindowClosed(EStateWindow* window);

protected:
    void closeEvent(QCloseEvent* e) override;
};
