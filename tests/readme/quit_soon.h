// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Put in front of every README example built as a test: the application quits as soon as its
// event loop (or a modal box's) runs, so an example that ends in app.exec() still finishes.
#pragma once

#include <QCoreApplication>
#include <QTimer>

static void cgReadmeQuitSoon()
{
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
}
Q_COREAPP_STARTUP_FUNCTION(cgReadmeQuitSoon)
