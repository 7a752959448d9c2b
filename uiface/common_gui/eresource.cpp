// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eresource.h"

#include "common_gui_res.h"
#include "paths.h"

#include <QFile>
#include <QPixmap>
#include <QResource>
#include <QString>
#include <QtEndian>

namespace {

// Qt trusts the offsets inside a resource file: a copy cut short points past its end, and Qt reads
// there when a path is looked up. Qt also keeps the memory of a file it refuses. So walk the whole
// tree first (nodes, names, data lengths) and hand Qt only files that are complete.
bool isResourceFile(const QString& file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly) || f.size() > (qint64(1) << 31))
        return false;
    const QByteArray bytes = f.readAll();
    const qint64 size = bytes.size();
    const auto u16 = [&bytes](qint64 at) { return qint64(qFromBigEndian<quint16>(bytes.constData() + at)); };
    const auto u32 = [&bytes](qint64 at) { return qint64(qFromBigEndian<quint32>(bytes.constData() + at)); };
    if (size < 20 || !bytes.startsWith("qres"))
        return false;
    const qint64 version = u32(4);
    const qint64 tree = u32(8);
    const qint64 data = u32(12);
    const qint64 names = u32(16);
    if (version < 1 || version > 3 || tree >= size || data >= size || names >= size)
        return false;
    const qint64 nodeSize = version >= 2 ? 22 : 14;
    const qint64 nodeCount = (size - tree) / nodeSize;
    if (nodeCount < 1)
        return false;
    for (qint64 node = 0; node < nodeCount; ++node) {
        const qint64 at = tree + node * nodeSize;
        const qint64 name = names + u32(at);
        // The root has no name; every other node's name is a length, a hash and UTF-16 text.
        if (node > 0 && (name + 6 > size || name + 6 + 2 * u16(name) > size))
            return false;
        if (u16(at + 4) & 0x02) { // a directory: its children are later nodes
            const qint64 count = u32(at + 6);
            const qint64 first = u32(at + 10);
            if (first < 1 || first > nodeCount || count > nodeCount - first)
                return false;
        } else {
            const qint64 content = data + u32(at + 10);
            if (content + 4 > size || content + 4 + u32(content) > size)
                return false;
        }
    }
    return true;
}

// Filled on first use and never freed: pixmap pointers handed out to items and tool buttons
// stay valid until the process ends.
QPixmap* pixmaps[common_gui_resource_count] = {};

} // namespace

bool Resource::load(const QString& file)
{
    return isResourceFile(file) && QResource::registerResource(file, QString());
}

bool Resource::loadDefaultIcons()
{
    return load(QString::fromUtf8(libraryDataDir()) + QStringLiteral("/icons.rcc"));
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
