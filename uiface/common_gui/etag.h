// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QString>

/// One entry of an id/text lookup table. A table is an array ended by an entry with a null text;
/// the operations are called on its first entry.
///
/// \code
/// static const ETag directions[] = {{0, &LCQT__Up}, {1, &LCQT__Down}, {0, nullptr}};
/// int d = directions->getValue(combo->currentText(), 1);
/// combo->setCurrentText(directions->getText(d));
/// \endcode
struct COMMON_GUI_EXPORT ETag
{
    int value = 0;
    const QString* text = nullptr; ///< not owned; typically one of the LCQT__ text slots

    /// The empty text returned by getText() when no default is given.
    static const QString empty;

    /// The first entry whose text equals \a text exactly (case-sensitive), or null.
    const ETag* find(const QString& text) const;
    /// The first entry whose value equals \a value, or null.
    const ETag* find(int value) const;
    /// The value of find(\a text), or \a def.
    int getValue(const QString& text, int def) const;
    /// The text of find(\a value), or \a def.
    const QString& getText(int value, const QString& def = empty) const;
};
