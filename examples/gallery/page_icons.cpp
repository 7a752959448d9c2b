// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The library's icon table: every id with its image (from icons.rcc, registered at start-up) and path.
#include "gallery.h"

#include "common_gui_res.h"
#include "eboxlayout.h"
#include "eresource.h"

#include <QLabel>
#include <QListWidget>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

QWidget* makePage()
{
    auto* page = new QWidget;
    auto* layout = new EVRootBoxLayout(page);

    int found = 0;
    for (int id = 0; id < common_gui_resource_count; ++id)
        found += Resource::getPixmap(id)->isNull() ? 0 : 1;
    auto* summary = new QLabel(QStringLiteral("The icon table: Resource::getPixmap(id) for the %1 ids; %2 of them found in "
                                              "the registered icons.rcc. Pixel size as the name says, 24 otherwise.")
                                   .arg(common_gui_resource_count)
                                   .arg(found),
                               page);
    summary->setObjectName(QStringLiteral("summary"));
    summary->setWordWrap(true);
    layout->addWidget(summary);

    // Icon mode keeps each image at its own size (50 px at most) and flows the tiles to the width.
    auto* grid = new QListWidget(page);
    grid->setObjectName(QStringLiteral("iconGrid"));
    grid->setViewMode(QListView::IconMode);
    grid->setResizeMode(QListView::Adjust);
    grid->setMovement(QListView::Static);
    grid->setIconSize(QSize(50, 50));
    grid->setGridSize(QSize(176, 84));
    grid->setUniformItemSizes(true);
    QFont small = grid->font();
    small.setPixelSize(11);
    grid->setFont(small);
    for (int id = 0; id < common_gui_resource_count; ++id) {
        const QString path = QString::fromLatin1(common_gui_resource_paths[id]);
        auto* item = new QListWidgetItem(defaultIconLoader(id), QStringLiteral("%1\n%2").arg(id).arg(path), grid);
        item->setToolTip(path);
        item->setData(Qt::UserRole, id);
    }
    layout->addWidget(grid, 1);
    return page;
}

} // namespace

GALLERY_PAGE(30, "icons", "Icons", makePage);
