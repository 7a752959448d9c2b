// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "esettings.h"

#include "edirs.h"

#include <QDir>
#include <QFileInfo>
#include <QWidget>

namespace {

QString getFileName(const char* name)
{
    return QFileInfo(EDirs::getSettingsDir(), QString::fromLatin1(name)).filePath();
}

const QString itemKey()
{
    return QStringLiteral("Item");
}

} // namespace

ESettings::ESettings(const QString& group)
    : ESettings("common_gui.ini", group)
{
}

ESettings::ESettings(const char* fileName, const QString& group)
    : QSettings(getFileName(fileName), QSettings::IniFormat)
    , groupName(group)
{
    if (!group.isEmpty())
        beginGroup(group);
}

ESettings::ESettings(const QDir& dir, const char* fileName, const QString& group)
    : QSettings(QFileInfo(dir, QString::fromLatin1(fileName)).filePath(), QSettings::IniFormat)
    , groupName(group)
{
    if (!group.isEmpty())
        beginGroup(group);
}

ESettings::~ESettings()
{
    if (!groupName.isEmpty())
        endGroup();
}

void ESettings::saveGeometry(QWidget* w)
{
    setValue(QStringLiteral("Geometry"), w->saveGeometry());
}

bool ESettings::loadGeometry(QWidget* w)
{
    const QByteArray bytes = value(QStringLiteral("Geometry"), QByteArray()).toByteArray();
    if (bytes.isEmpty())
        return false;
    return w->restoreGeometry(bytes);
}

void ESettings::getList(const char* name, QList<int>& list, QSettings& s)
{
    list.clear();
    ESettingsReadArray array(s, QString::fromLatin1(name));
    while (array.getIndex() < array.getSize()) {
        const QVariant v = array.read();
        // A hole ends the list: a number made up for it would shift every later one.
        if (!v.isValid())
            break;
        list.append(v.toInt());
    }
}

void ESettings::setList(const char* name, const QList<int>& list, QSettings& s)
{
    ESettingsWriteArray array(s, QString::fromLatin1(name));
    for (int value : list)
        array.write(QVariant(value));
}

ESettingsWriteArray::ESettingsWriteArray(QSettings& s, const QString& name)
{
    // An empty name addresses the whole group: removing it would wipe every key beside the array.
    if (name.isEmpty())
        return;
    settings = &s;
    // Dropping the old array first means a shorter new one leaves no stale tail.
    s.remove(name);
    s.beginWriteArray(name);
}

ESettingsWriteArray::~ESettingsWriteArray()
{
    if (settings)
        settings->endArray();
}

void ESettingsWriteArray::write(const QVariant& v)
{
    if (!settings)
        return;
    settings->setArrayIndex(index);
    ++index;
    settings->setValue(itemKey(), v);
}

ESettingsReadArray::ESettingsReadArray(QSettings& s, const QString& name)
{
    if (name.isEmpty())
        return;
    settings = &s;
    const int claimed = s.beginReadArray(name);
    // The stored size is only a claim: a damaged file says two billion and holds nothing. The
    // array ends at its last element actually present.
    const QStringList elements = s.childGroups();
    for (const QString& element : elements) {
        bool ok = false;
        const int number = element.toInt(&ok);
        if (ok && number > size && number <= claimed && element == QString::number(number))
            size = number;
    }
}

ESettingsReadArray::~ESettingsReadArray()
{
    if (settings)
        settings->endArray();
}

QVariant ESettingsReadArray::read()
{
    if (!settings)
        return QVariant();
    settings->setArrayIndex(index);
    ++index;
    return settings->value(itemKey(), QVariant());
}
