// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etimer.h"

ETimer::ETimer(QObject* parent)
    : QTimer(parent)
{
}

ETimer::ETimer(QObject* parent, int msec, const char* slot, bool start)
    : QTimer(parent)
{
    init(msec, slot, start);
}

void ETimer::init(int msec, const char* slot, bool start)
{
    if (slot && parent())
        connect(this, SIGNAL(timeout()), parent(), slot);
    if (start)
        QTimer::start(msec);
    else
        setInterval(msec);
}
