// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Child process of tst_ectrlc. Modes:
//   before   ECtrlC made before the application object, then "ready" from the running event loop
//   after    ECtrlC made after the application object, likewise
//   again    as after, then the default handlers are put back and a second ECtrlC is made
//   noapp    ECtrlC without an application object; raises SIGINT itself and must survive it
// "after exec" is printed once exec() has returned normally.
#include "ectrlc.h"

#include <QCoreApplication>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>

int main(int argc, char** argv)
{
    const char* mode = argc > 1 ? argv[1] : "after";
    if (std::strcmp(mode, "noapp") == 0) {
        ECtrlC ctrlC;
        std::raise(SIGINT);
        std::raise(SIGTERM);
        std::printf("survived\n");
        return 0;
    }

    std::unique_ptr<ECtrlC> early;
    if (std::strcmp(mode, "before") == 0)
        early = std::make_unique<ECtrlC>();
    QCoreApplication app(argc, argv);
    std::unique_ptr<ECtrlC> late;
    if (!early)
        late = std::make_unique<ECtrlC>();
    std::unique_ptr<ECtrlC> second;
    if (std::strcmp(mode, "again") == 0) {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
        second = std::make_unique<ECtrlC>();
    }

    QTimer::singleShot(0, &app, [] {
        std::printf("ready\n");
        std::fflush(stdout);
    });
    // Never hang a test run: a missed signal ends with a distinct code.
    QTimer::singleShot(20000, &app, [] { QCoreApplication::exit(3); });
    const int code = app.exec();
    std::printf("after exec\n");
    return code;
}
