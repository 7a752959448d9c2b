// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QTimer>

/// A timer bound to a slot of its parent.
///
/// \code
/// auto* refresh = new ETimer(this, 1000, SLOT(refreshList()), true);   // every second from now on
/// \endcode
class COMMON_GUI_EXPORT ETimer : public QTimer
{
    Q_OBJECT
public:
    explicit ETimer(QObject* parent);
    /// As ETimer(parent), then init(msec, slot, start).
    ETimer(QObject* parent, int msec, const char* slot, bool start);

    /// Connects timeout() to \a slot of the parent (if \a slot is not null), then starts the timer
    /// with the interval \a msec, or only sets the interval when \a start is false.
    void init(int msec, const char* slot, bool start);
};
