// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <utility>

class QWidget;

/// Showing and centring windows, and the process-wide wait cursor. Static operations only.
///
/// \code
/// EUtils::waitCursor(true);            // nestable: the cursor goes once the last caller is done
/// loadEverything();
/// EUtils::suspendWaitCursor(true);     // normal cursor while the user answers
/// EMessage::erro(this, problem);
/// EUtils::suspendWaitCursor(false);
/// EUtils::waitCursor(false);
/// \endcode
class COMMON_GUI_EXPORT EUtils
{
public:
    EUtils() = delete;

    /// Resizes \a w to its size hint and centres it on the primary screen.
    static void center(QWidget* w);
    /// Shows \a w (restoring it if minimized), raises and activates it; centres it if it lies on no screen.
    static void show(QWidget* w);
    /// Counts wait requests: the wait cursor is shown while the count is above 0 and not suspended.
    /// Calls are expected to be balanced; the count is not clamped.
    static void waitCursor(bool on);
    /// Counts suspensions: while any is active the wait cursor is removed, keeping the wait count.
    static void suspendWaitCursor(bool on);

    /// The current number of unbalanced waitCursor(true) calls.
    static int getWaitCursorCounter();
    /// The current number of unbalanced suspendWaitCursor(true) calls.
    static int getWaitCursorSuspendCounter();

    /// Runs \a set with \a settingValue true: the bookkeeping of the boxes that tell the user's
    /// changes from the code's (ESpinBox, EDateTimeBox, ETimeBox), whose change handler reports a
    /// user change only while the flag is false. The flag is restored afterwards, also when nested.
    template <typename Set>
    static void setByCode(bool& settingValue, Set set)
    {
        const bool before = std::exchange(settingValue, true);
        set();
        settingValue = before;
    }
};
