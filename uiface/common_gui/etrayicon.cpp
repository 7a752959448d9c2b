// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etrayicon.h"

#include "cg_qtcompat.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

#include <X11/Xlib.h>

#include <algorithm>

namespace {

/// The larger edge of the window that embeds \a w (the tray's slot), or 0 while \a w is not embedded
/// (its parent is still the root window) or when the server cannot tell.
int embeddingEdge(QWidget* w)
{
    Display* display = CgQt::x11Display();
    if (!display)
        return 0;
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(display, Window(w->winId()), &root, &parent, &children, &count))
        return 0;
    if (children)
        XFree(children);
    XWindowAttributes attributes;
    // The tray reparents the window some time after Qt asked it to: until then the parent is the
    // root window, whose size is the screen's.
    if (!parent || parent == root || !XGetWindowAttributes(display, parent, &attributes))
        return 0;
    return std::max(attributes.width, attributes.height);
}

QSize nonNegative(const QSize& size)
{
    return size.expandedTo(QSize(0, 0));
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// ETrayLayout

ETrayLayout::ETrayLayout(QWidget* parent, const QSize& iconSize)
    : QVBoxLayout(parent)
    , iconSize(nonNegative(iconSize))
{
}

void ETrayLayout::setGeometry(const QRect& r)
{
    QVBoxLayout::setGeometry(r);
    if (QWidget* w = parentWidget()) {
        // The tray embeds the window after show() has returned and then sizes it to the slot:
        // follow the slot from then on, rather than falling back to the pixmap's size.
        const int edge = embeddingEdge(w);
        const QSize minimum = edge > 0 ? QSize(edge, edge) : iconSize;
        if (w->minimumSize() != minimum)
            w->setMinimumSize(minimum);
        w->update();
    }
}

// ---------------------------------------------------------------------------------------------------------
// ESystemTrayIcon

ESystemTrayIcon::ESystemTrayIcon(QObject* parent)
    : QObject(nullptr)
    , trayIcon(new QSystemTrayIcon(parent))
{
}

ESystemTrayIcon::~ESystemTrayIcon()
{
    delete trayIcon;
}

void ESystemTrayIcon::setIcon(const QIcon& icon)
{
    trayIcon->setIcon(icon);
}

void ESystemTrayIcon::hide()
{
    trayIcon->hide();
}

void ESystemTrayIcon::show()
{
    if (trayIcon->icon().isNull())
        return;
    fitSlot(true);
}

void ESystemTrayIcon::fitSlot(bool showing)
{
    const QSize iconSize = nonNegative(trayIcon->icon().actualSize(QSize(300, 300), QIcon::Normal, QIcon::Off));

    // Qt makes a top-level widget for the icon and gives it the icon's tool tip: a marker that no
    // other icon of the process has lets us tell which widget is ours.
    const QString saved = trayIcon->toolTip();
    const QString marker = QString::number(quintptr(this));
    trayIcon->setToolTip(marker);
    if (showing)
        trayIcon->show();

    QWidgetList widgets = QApplication::topLevelWidgets();
    QWidget* found = nullptr;
    while (!widgets.isEmpty() && !found) {
        QWidget* w = widgets.takeLast();
        if (w->toolTip() == marker)
            found = w;
    }
    if (found) {
        // Qt refuses (with a warning) a second layout on one widget: a widget sized before keeps
        // its layout and learns the new icon size.
        if (auto* layout = dynamic_cast<ETrayLayout*>(found->layout()))
            layout->iconSize = iconSize;
        else if (!found->layout())
            new ETrayLayout(found, iconSize);
        const int edge = embeddingEdge(found);
        found->setMinimumSize(edge > 0 ? QSize(edge, edge) : iconSize);
        found->update();
        // Qt replaces the widget when the tray announces itself again (a tray that has just
        // started does so): size the new one as well.
        connect(found, &QObject::destroyed, trayIcon, [this] {
            QTimer::singleShot(0, trayIcon, [this] {
                if (trayIcon->isVisible())
                    fitSlot(false);
            });
        });
    }
    trayIcon->setToolTip(saved);
}
