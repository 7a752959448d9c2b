// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eutils.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

int waitCursorCounter = 0;
int waitCursorSuspendCounter = 0;
bool waitCursorOn = false; // whether our override cursor is installed

void updateCursor()
{
    const bool wanted = waitCursorCounter > 0 && waitCursorSuspendCounter == 0;
    if (wanted == waitCursorOn)
        return;
    waitCursorOn = wanted;
    if (wanted)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool liesOnSomeScreen(const QWidget* w)
{
    const QRect frame = w->frameGeometry();
    const auto screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        if (screen->geometry().intersects(frame))
            return true;
    }
    return false;
}

} // namespace

void EUtils::center(QWidget* w)
{
    if (!w)
        return;
    w->resize(w->sizeHint());
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect r = screen->geometry();
    w->move((r.left() + r.right()) / 2 - (w->width() - 1) / 2,
            (r.top() + r.bottom()) / 2 - (w->height() - 1) / 2);
}

void EUtils::show(QWidget* w)
{
    if (!w)
        return;
    if (!w->isVisible())
        w->show();
    if (w->isMinimized())
        w->showNormal();
    w->raise();
    w->activateWindow();
    if (!liesOnSomeScreen(w))
        center(w);
}

void EUtils::waitCursor(bool on)
{
    waitCursorCounter += on ? 1 : -1;
    updateCursor();
}

void EUtils::suspendWaitCursor(bool on)
{
    waitCursorSuspendCounter += on ? 1 : -1;
    updateCursor();
}

int EUtils::getWaitCursorCounter()
{
    return waitCursorCounter;
}

int EUtils::getWaitCursorSuspendCounter()
{
    return waitCursorSuspendCounter;
}
