// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eresource.h"

#include "common_gui_res.h"

#include <QFile>
#include <QPixmap>
#include <QResource>
#include <QString>
#include <QtEndian>

namespace {

// Qt keeps the mapping of a file it refuses, and the heap block it read an empty file into: look
// at the header first and hand Qt only files that will pass its own checks.
bool isResourceFile(const QString& file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    const qint64 size = f.size();
    const QByteArray header = f.read(20);
    if (header.size() < 20 || !header.startsWith("qres"))
        return false;
    const auto field = [&header](int at) { return qint64(qFromBigEndian<quint32>(header.constData() + at)); };
    const qint64 version = field(4);
    return version >= 1 && version <= 3 && field(8) < size && field(12) < size && field(16) < size;
}

// Filled on first use and never freed: pixmap pointers handed out to items and tool buttons
// stay valid until the process ends.
QPixmap* pixmaps[common_gui_resource_count] = {};

} // namespace

bool Resource::load(const QString& file)
{
    return isResourceFile(file) && QResource::registerResource(file, QString());
}

QPixmap* Resource::getPixmap(int id)
{
    if (id < 0 || id >= common_gui_resource_count) {
        // Callers dereference the result: give them something harmless rather than a bad read.
        static QPixmap* const outOfRange = new QPixmap;
        return outOfRange;
    }
    QPixmap*& pixmap = pixmaps[id];
    if (!pixmap)
        pixmap = new QPixmap(QString::fromLatin1(common_gui_resource_paths[id]));
    return pixmap;
}

QIcon defaultIconLoader(int id)
{
    return QIcon(*Resource::getPixmap(id));
}
