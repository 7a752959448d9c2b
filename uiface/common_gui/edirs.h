// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QDir>
#include <QString>

/// Where the product lives on disk and which language it speaks. Static operations only.
///
/// \code
/// const char* lang = EDirs::getLanguage();          // "eng", "rus", or what lang.ini says
/// QDir settings = EDirs::getSettingsDir();          // the user's writable settings directory
/// \endcode
class COMMON_GUI_EXPORT EDirs
{
public:
    EDirs() = delete;

    /// The product's binary directory as the path layer returns it (UTF-8).
    static const char* c_binaryDir();
    /// The product's resource directory (UTF-8).
    static const char* c_resourceDir();
    /// The user's writable settings directory (UTF-8).
    static const char* c_settingsDir();

    static QDir getBinaryDir();
    static QDir getResourceDir();
    static QDir getSettingsDir();
    /// The settings directory shared by all users; its "lang.ini" is the default for everyone.
    static QDir getCommonSettingsDir();

    /// The language code: from the user's own "lang.ini" in the settings directory, else from the
    /// one in the common settings directory, else "rus" for a Russian locale, else "eng".
    /// The locale fallback calls setlocale(LC_CTYPE, "") and keeps that change.
    /// A code of 20 or more characters aborts the process.
    static const char* getLanguage();
    /// Stores the code in "lang.ini" and empties the cache, so the next getLanguage() reads the file.
    /// Where the common settings directory can be written (an administrator), the code becomes the
    /// default for everyone and the writer's own choice is dropped; elsewhere it is the user's own
    /// choice, kept in the settings directory. A write that fails in both places is reported as a Qt
    /// warning on the message log.
    static void setLanguage(const char* code);

    /// The help directory: resource dir + "help/<language>", computed once and then cached.
    static QString getHelpDir();
    static void setHelpDir(const QString& dir);

    /// Cuts the last path component off ("/a/b.c/f.txt" -> "/a/b.c").
    static void stripFileFromPath(QString& path);
    /// Keeps only the last path component ("/a/b.c/f.txt" -> "f.txt").
    static void stripFolderFromPath(QString& path);
    /// Cuts at the last dot anywhere in the path ("/a/b.c/file" -> "/a/b", on purpose).
    static void stripExtFromPath(QString& path);

private:
    static char static_lang[20];
    static QString s_helpDir;
};
