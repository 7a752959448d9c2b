// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

// The places where Qt 5.15 and Qt 6 differ, gathered so that the rest of the library (and an
// application that builds on both) reads the same on either major. Qt 5.15 already has the Qt 6
// spelling of most things (horizontalAdvance, QScreen, QRegularExpression, QStringView::mid,
// QVariant::userType, Qt::SkipEmptyParts): use those directly. What is here has no common spelling.

#include "common_gui_export.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QString>
#include <QtGlobal>

class QEnterEvent;
class QEvent;
struct _XDisplay; // Xlib's Display

namespace CgQt {

#if QT_VERSION_MAJOR >= 6
/// The event type of QWidget::enterEvent.
using EnterEvent = QEnterEvent;
/// The result type of QWidget::nativeEvent and QAbstractNativeEventFilter::nativeEventFilter.
using NativeEventResult = qintptr;
/// The value type of qHash overloads.
using HashValue = size_t;
#else
using EnterEvent = QEvent;
using NativeEventResult = long;
using HashValue = uint;
#endif

/// A menu entry that calls \a slot of \a receiver, with a shortcut. Qt 5 has only the order
/// (text, receiver, slot, shortcut), which Qt 6.4 deprecates; Qt 6's (text, shortcut, ...) is new.
template <typename Receiver, typename Slot>
QAction* addAction(QMenu* menu, const QString& text, const Receiver* receiver, Slot slot, const QKeySequence& shortcut)
{
    QAction* action = menu->addAction(text, receiver, slot);
    action->setShortcut(shortcut);
    return action;
}

/// Qt's own translation files (qt_ru.qm and the like).
COMMON_GUI_EXPORT QString qtTranslationsPath();

/// The X11 display the application runs on, or nullptr on another platform (offscreen, Wayland).
COMMON_GUI_EXPORT _XDisplay* x11Display();
/// The root window of the application's X11 screen, or 0 on another platform.
COMMON_GUI_EXPORT unsigned long x11RootWindow();

} // namespace CgQt
