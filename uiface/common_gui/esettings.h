// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QList>
#include <QSettings>
#include <QString>
#include <QVariant>

class QDir;
class QWidget;

/// An INI settings file opened for one load or save, with an optional group held open for the
/// object's lifetime. Relative file names land in the user's settings directory.
///
/// \code
/// {
///     ESettings s(QStringLiteral("MyDialog"));    // common_gui.ini, group MyDialog
///     s.saveGeometry(this);                       // MyDialog\Geometry
///     ESettings::setList("Widths", widths, s);    // MyDialog\Widths\size, MyDialog\Widths\1\Item, ...
/// }                                               // written here
/// \endcode
class COMMON_GUI_EXPORT ESettings : public QSettings
{
    Q_OBJECT
public:
    /// Opens "common_gui.ini" in the user's settings directory.
    explicit ESettings(const QString& group);
    ESettings(const char* fileName, const QString& group);
    /// Opens \a fileName inside \a dir instead of the settings directory.
    ESettings(const QDir& dir, const char* fileName, const QString& group);
    ~ESettings() override;

    /// Stores the widget's geometry under "Geometry".
    void saveGeometry(QWidget* w);
    /// Restores "Geometry"; false (widget untouched) when nothing is stored or Qt refuses the bytes.
    bool loadGeometry(QWidget* w);

    /// Clears \a list, then appends the elements of the array \a name up to the first missing one.
    static void getList(const char* name, QList<int>& list, QSettings& s);
    /// Replaces the array \a name with the elements of \a list.
    static void setList(const char* name, const QList<int>& list, QSettings& s);

private:
    QString groupName; // closed again by the destructor
};

/// Writes one array, each element under the key "Item"; the old array is removed first. An empty
/// name writes nothing.
class COMMON_GUI_EXPORT ESettingsWriteArray
{
public:
    ESettingsWriteArray(QSettings& s, const QString& name);
    ~ESettingsWriteArray();
    ESettingsWriteArray(const ESettingsWriteArray&) = delete;
    ESettingsWriteArray& operator=(const ESettingsWriteArray&) = delete;

    void write(const QVariant& v);

private:
    QSettings* settings = nullptr;
    int index = 0;
};

/// Reads one array written by ESettingsWriteArray. getSize() is the stored size cut at the last
/// element the file holds; an element missing below it reads as an invalid QVariant. read() does
/// not check the bound: compare the number of reads with getSize(). An empty name reads nothing.
class COMMON_GUI_EXPORT ESettingsReadArray
{
public:
    ESettingsReadArray(QSettings& s, const QString& name);
    ~ESettingsReadArray();
    ESettingsReadArray(const ESettingsReadArray&) = delete;
    ESettingsReadArray& operator=(const ESettingsReadArray&) = delete;

    QVariant read();
    int getIndex() const { return index; }
    int getSize() const { return size; }

private:
    QSettings* settings = nullptr;
    int index = 0;
    int size = 0;
};
