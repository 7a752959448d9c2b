// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "platform/common_core.h"

#include <cstdio>

/// Reads a binary localization file ("LCLR") into a table of text slots.
class COMMON_GUI_EXPORT QTLocLoader
{
public:
    /// A set of text slots and the identifier that a file for it must carry; the platform's
    /// localization modules hold one, so the type is theirs.
    using Localization = Loc::Table;

    /// Reads one file from the current position into \a table. Returns 0 on success, 2 when it is
    /// not a file of this kind, 3 for an unsupported version, 4 for a unit other than 8, 5 for a
    /// foreign identifier, 6 when the file ends early, 7 when memory runs out. On any failure no
    /// slot changes. The byte order is the writer's, told by the magic ("LCLR" or "RLCL").
    /// \note An entry of length 0 (two equal offsets) is read up to the next 0 byte, and a table
    /// whose count is below 1 loads successfully without reading anything; offsets that run
    /// backwards or past the text block make the file refused with 2.
    int load(FILE* file, Localization& table);
};
