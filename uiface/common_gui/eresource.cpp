// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eresource.h"

#include "common_gui_res.h"

#include <QPixmap>
#include <QResource>
#include <QString>

bool Resource::load(const QString& file)
{
    return QResource::registerResource(file, QString());
}

namespace {

// Filled on first use and never freed: pixmap pointers handed out to items and tool buttons
// stay valid until the process ends.
QPixmap* pixmaps[common_gui_resource_count] = {};

} // namespace

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
