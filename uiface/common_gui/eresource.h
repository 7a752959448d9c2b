// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QIcon>

class QPixmap;
class QString;

/// The library's icons, addressed by id (see common_gui_res.h). The images live in a binary Qt
/// resource file that the application registers once at start-up: its own, or the default set
/// that ships with the library.
///
/// \code
/// Resource::loadDefaultIcons();   // or Resource::load(EDirs::getResourceDir().filePath("my_icons.rcc"))
/// label->setPixmap(*Resource::getPixmap(CgIcon::Lock));
/// \endcode
class COMMON_GUI_EXPORT Resource
{
public:
    Resource() = delete;

    /// Registers a binary resource file (made with `rcc --binary`) at the resource root.
    /// False for a missing or unreadable file.
    static bool load(const QString& file);
    /// Registers the default images of all 82 icon ids, installed with the library (icons.rcc in
    /// its data directory). An application that registers its own file for the same paths first
    /// keeps its images. False when the set is not installed.
    static bool loadDefaultIcons();
    /// The pixmap of icon \a id, loaded on first use and cached until the process ends; the cache
    /// owns it. A path that does not load gives a null pixmap, cached all the same, so a missing
    /// image is looked for only once. An id outside the table gives a shared null pixmap.
    static QPixmap* getPixmap(int id);
};

/// An icon made of Resource::getPixmap(id); the toolbar's default icon loader.
COMMON_GUI_EXPORT QIcon defaultIconLoader(int id);
