// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "edirs.h"
#include "platform/paths.h"

#include <QFormLayout>
#include <QLabel>

namespace {

QWidget* makeAboutPage()
{
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    auto add = [form, page](const char* caption, const QString& value) {
        auto* label = new QLabel(value, page);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(QString::fromUtf8(caption), label);
    };
    add("Product name", QString::fromUtf8(productName()));
    add("Language", QString::fromLatin1(EDirs::getLanguage()));
    add("Binary directory", EDirs::getBinaryDir().absolutePath());
    add("Resource directory", EDirs::getResourceDir().absolutePath());
    add("Settings directory", EDirs::getSettingsDir().absolutePath());
    add("Common settings directory", EDirs::getCommonSettingsDir().absolutePath());
    add("Help directory", EDirs::getHelpDir());
    add("Library data directory", QString::fromUtf8(libraryDataDir()));
    return page;
}

} // namespace

GALLERY_PAGE(0, "about", "Directories", makeAboutPage);
