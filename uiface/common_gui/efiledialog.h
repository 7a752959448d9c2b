// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QString>
#include <QStringList>

class QWidget;

/// Open, save and multi-select file dialogs that start where the user last chose a file.
///
/// The directory is remembered in "common_gui.ini", group "EFileDialog": under the state name when
/// one is given, else under "Dir" + the parent's class name, so every window class has its own.
///
/// \code
/// QString selected;
/// const QString name = EFileDialog::open(this, QString(), LCQT__Text_Files_txt_All_Files_All,
///                                        nullptr, &selected, "GalleryOpen");
/// if (!name.isEmpty())
///     chosen->setText(name);
/// \endcode
class COMMON_GUI_EXPORT EFileDialog
{
public:
    EFileDialog() = delete;

    /// Which dialog run() shows.
    enum Method {
        Open = 0,  ///< one existing file
        Multi = 1, ///< several existing files
        Save = 2,  ///< a file to write (Qt asks before overwriting)
    };

    /// What the user chose; empty when the dialog was cancelled.
    struct Result
    {
        QString file;      ///< the chosen name (Open, Save)
        QStringList files; ///< the chosen names (Multi)
    };

    /// Shows the dialog for \a method and remembers the chosen file's directory.
    /// \a file, when not empty, proposes a directory and a name; after a choice it receives the
    /// canonical path of the chosen file, which is empty for a new file chosen in a save dialog
    /// (use the returned name then). \a selectedFilter preselects a filter and receives the chosen one.
    /// An empty \a caption gets the library's default; \a stateName may be null.
    static Result run(QWidget* parent, const QString& caption, const QString& filter, QString* file,
                      QString* selectedFilter, const char* stateName, Method method);

    /// One existing file; empty on cancel.
    static QString open(QWidget* parent, const QString& caption = QString(), const QString& filter = QString(),
                        QString* file = nullptr, QString* selectedFilter = nullptr,
                        const char* stateName = nullptr);
    /// A file to save to, exactly as the dialog gave it; empty on cancel.
    static QString save(QWidget* parent, const QString& caption = QString(), const QString& filter = QString(),
                        QString* file = nullptr, QString* selectedFilter = nullptr,
                        const char* stateName = nullptr);
    /// Several existing files; empty on cancel.
    static QStringList multi(QWidget* parent, const QString& caption = QString(), const QString& filter = QString(),
                             QString* file = nullptr, QString* selectedFilter = nullptr,
                             const char* stateName = nullptr);
};
