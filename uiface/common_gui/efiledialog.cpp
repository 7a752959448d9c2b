// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "efiledialog.h"

#include "common_gui_loc.h"
#include "edirs.h"
#include "esettings.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QWidget>

namespace {

const QString groupName()
{
    return QStringLiteral("EFileDialog");
}

QString settingsKey(QWidget* parent, const char* stateName)
{
    if (stateName && *stateName)
        return QString::fromUtf8(stateName);
    // A parentless dialog shares one plain "Dir" entry rather than inventing a class name.
    if (!parent)
        return QStringLiteral("Dir");
    return QStringLiteral("Dir") + QString::fromLatin1(parent->metaObject()->className());
}

QString startDirectory(const QString& key, const QString* file)
{
    if (file && !file->isEmpty()) {
        const QString dir = QFileInfo(*file).path();
        if (dir != QLatin1String("."))
            return dir;
    }
    QString remembered;
    {
        ESettings s(groupName());
        remembered = s.value(key, QString()).toString();
    }
    // A directory removed since it was remembered would leave Qt's dialog wherever it likes.
    if (!remembered.isEmpty() && QFileInfo(remembered).isDir())
        return remembered;
    QString bin = EDirs::getBinaryDir().canonicalPath();
    bin.replace(QLatin1Char('/'), QDir::separator());
    return bin;
}

// The directory that the next dialog should start in. A new file chosen in a save dialog has no
// canonical path yet, so its directory is taken from the name the dialog gave.
QString directoryOf(const QString& canonicalFile, const QString& chosen)
{
    if (!canonicalFile.isEmpty())
        return QFileInfo(canonicalFile).canonicalPath();
    return QFileInfo(QFileInfo(chosen).absolutePath()).canonicalFilePath();
}

} // namespace

EFileDialog::Result EFileDialog::run(QWidget* parent, const QString& caption, const QString& filter,
                                     QString* file, QString* selectedFilter, const char* stateName,
                                     Method method)
{
    QString localFilter;
    QString& preselected = selectedFilter ? *selectedFilter : localFilter;
    if (preselected.isEmpty() && !filter.isEmpty())
        preselected = filter.section(QLatin1Char(';'), 0, 0);

    const QString key = settingsKey(parent, stateName);
    QString start = startDirectory(key, file);
    if (file && !file->isEmpty())
        start += QDir::separator() + QFileInfo(*file).fileName();

    Result result;
    QString first;
    switch (method) {
    case Save:
        result.file = QFileDialog::getSaveFileName(parent, caption.isEmpty() ? LCQT__Save_to_file : caption,
                                                   start, filter, &preselected);
        first = result.file;
        break;
    case Open:
        result.file = QFileDialog::getOpenFileName(parent, caption.isEmpty() ? LCQT__Open_file : caption,
                                                   start, filter, &preselected,
                                                   QFileDialog::DontConfirmOverwrite);
        first = result.file;
        break;
    case Multi:
        result.files = QFileDialog::getOpenFileNames(parent, caption.isEmpty() ? LCQT__Open_file : caption,
                                                     start, filter, &preselected,
                                                     QFileDialog::DontConfirmOverwrite);
        if (!result.files.isEmpty())
            first = result.files.first();
        break;
    }
    if (first.isEmpty())
        return result;

    const QString canonical = QFileInfo(first).canonicalFilePath();
    if (file)
        *file = canonical;
    const QString dir = directoryOf(canonical, first);
    if (!dir.isEmpty()) {
        ESettings s(groupName());
        s.setValue(key, dir);
    }
    return result;
}

QString EFileDialog::open(QWidget* parent, const QString& caption, const QString& filter, QString* file,
                          QString* selectedFilter, const char* stateName)
{
    return run(parent, caption, filter, file, selectedFilter, stateName, Open).file;
}

QString EFileDialog::save(QWidget* parent, const QString& caption, const QString& filter, QString* file,
                          QString* selectedFilter, const char* stateName)
{
    return run(parent, caption, filter, file, selectedFilter, stateName, Save).file;
}

QStringList EFileDialog::multi(QWidget* parent, const QString& caption, const QString& filter, QString* file,
                               QString* selectedFilter, const char* stateName)
{
    return run(parent, caption, filter, file, selectedFilter, stateName, Multi).files;
}
