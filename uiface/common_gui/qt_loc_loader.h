// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <cstdio>

class QString;

/// Reads a binary localization file ("LCLR") into a table of text slots.
class COMMON_GUI_EXPORT QTLocLoader
{
public:
    /// A set of text slots and the identifier that a file for it must carry.
    struct Localization
    {
        int count;          ///< number of slots
        int unit;           ///< always 8; not consulted by the loader
        unsigned int id;    ///< identifier of this exact set of texts
        QString** slots;    ///< \c count pointers to the slot variables, in file order
    };

    /// Reads one file from the current position into \a table. Returns 0 on success, 2 when it is
    /// not a file of this kind, 3 for an unsupported version, 4 for a unit other than 8, 5 for a
    /// foreign identifier, 6 when the file ends early, 7 when memory runs out. On any failure no
    /// slot changes.
    int load(FILE* file, Localization& table);
};
