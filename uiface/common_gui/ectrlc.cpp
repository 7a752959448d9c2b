// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ectrlc.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

using SignalHandler = void (*)(int);

SignalHandler old_signal_handler = nullptr;
bool installed = false;
// Self-pipe: the handler only writes a byte; the event loop reads it and quits. Quitting from inside
// the handler could deadlock on a lock the interrupted GUI thread holds (the GLib main context).
int wakeFds[2] = {-1, -1};
QPointer<QSocketNotifier> notifier;

void onSignal(int)
{
    if (!QCoreApplication::instance())
        return;
    const int savedErrno = errno;
    const char byte = 1;
    ssize_t written = ::write(wakeFds[1], &byte, 1);
    (void)written; // a full pipe already holds a pending quit
    errno = savedErrno;
}

void drainAndQuit()
{
    char buffer[64];
    while (::read(wakeFds[0], buffer, sizeof buffer) > 0) {
    }
    QCoreApplication::quit();
}

void createNotifier()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || wakeFds[0] < 0 || notifier)
        return;
    // Owned by the application, so a later application object gets a fresh one.
    notifier = new QSocketNotifier(wakeFds[0], QSocketNotifier::Read, app);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [] { drainAndQuit(); });
}

} // namespace

ECtrlC::ECtrlC()
{
    if (!installed) {
        installed = true;
        if (::pipe2(wakeFds, O_CLOEXEC | O_NONBLOCK) != 0) {
            wakeFds[0] = wakeFds[1] = -1;
            return;
        }
        // Applications made after us get their notifier from their own constructor; an existing one
        // gets it at once.
        qAddPreRoutine(createNotifier);
    } else {
        if (wakeFds[0] < 0)
            return;
        createNotifier();
    }

    // Installed on every construction: someone may have replaced our handler since the last one.
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    struct sigaction previous = {};
    if (::sigaction(SIGINT, &action, &previous) == 0 && previous.sa_handler != onSignal)
        old_signal_handler = previous.sa_handler;
    ::sigaction(SIGTERM, &action, nullptr);
}
