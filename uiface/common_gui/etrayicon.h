// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QIcon>
#include <QObject>
#include <QSize>
#include <QVBoxLayout>

class QSystemTrayIcon;

/// An icon in the X11 desktop's system tray that fills the whole slot the tray gives it, instead
/// of being drawn small in a corner of it.
///
/// \code
/// ESystemTrayIcon tray(mainWindow);
/// tray.setIcon(QIcon(*Resource::getPixmap(CgIcon::Agent48)));
/// tray.trayIcon->setToolTip(QStringLiteral("Agent: connected"));
/// tray.trayIcon->setContextMenu(menu);   // the inner icon for its menu and activated() signal
/// tray.show();
/// \endcode
class COMMON_GUI_EXPORT ESystemTrayIcon : public QObject
{
public:
    /// The object itself has no parent; \a parent becomes the parent of the inner tray icon.
    explicit ESystemTrayIcon(QObject* parent);
    ~ESystemTrayIcon() override;
    ESystemTrayIcon(const ESystemTrayIcon&) = delete;
    ESystemTrayIcon& operator=(const ESystemTrayIcon&) = delete;

    /// Gives \a icon to the inner tray icon.
    void setIcon(const QIcon& icon);
    /// Takes the icon out of the tray.
    void hide();
    /// Puts the icon into the tray and sizes it to the slot the tray gave it. Without a tray it
    /// only makes the icon visible. A null icon is not shown at all (the tray would get an empty
    /// slot). The tool tip is the caller's again afterwards.
    void show();

    /// The inner icon, for its context menu, tool tip and activated() signal.
    QSystemTrayIcon* getTrayIcon() const { return trayIcon; }

    QSystemTrayIcon* trayIcon = nullptr; ///< owned; deleted by the destructor

private:
    /// Finds the tray widget of this icon by a marker tool tip and sizes it to its slot; shows the
    /// icon first when \a showing.
    void fitSlot(bool showing);
};

/// The layout put on the tray icon's window: whenever the tray lays the window out again, it keeps
/// it as large as the tray's slot (or, before the tray embedded it, as the icon's pixmap).
class COMMON_GUI_EXPORT ETrayLayout : public QVBoxLayout
{
public:
    ETrayLayout(QWidget* parent, const QSize& iconSize);

    /// Lays out as QBoxLayout does, then gives the parent widget its minimum size and repaints it:
    /// a square of the tray slot's larger edge once the tray has embedded the widget, else iconSize.
    void setGeometry(const QRect& r) override;

    QSize iconSize = QSize(); ///< the size the icon's pixmap actually has
};
