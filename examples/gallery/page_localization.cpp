// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "edirs.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

#define GALLERY_ENGLISH_TEXT(name, english) english,
const char* const englishTexts[] = {LCQT_SLOT_LIST(GALLERY_ENGLISH_TEXT)};
#undef GALLERY_ENGLISH_TEXT

// Every text slot with the text it holds now, so a translator can check a language at a glance.
QWidget* makeLocalizationPage()
{
    auto* page = new QWidget;
    auto* layout = new EVRootBoxLayout(page);

    auto* caption = new QLabel(page);
    caption->setObjectName(QStringLiteral("languageCaption"));
    caption->setText(QStringLiteral("Language \"%1\": the %2 texts of the library as loaded at start-up. "
                                    "Choose another language in the toolbar and restart to see it here.")
                         .arg(QString::fromLatin1(EDirs::getLanguage()))
                         .arg(LCQT_info.count));
    caption->setWordWrap(true);
    layout->addWidget(caption);

    auto* table = new QTableWidget(LCQT_info.count, 4, page);
    table->setObjectName(QStringLiteral("slotTable"));
    table->setHorizontalHeaderLabels({QStringLiteral("#"), QStringLiteral("Slot"), QStringLiteral("English"), QStringLiteral("Current")});
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setWordWrap(true);
    for (int i = 0; i < LCQT_info.count; ++i) {
        auto* number = new QTableWidgetItem(QString::number(i));
        number->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table->setItem(i, 0, number);
        table->setItem(i, 1, new QTableWidgetItem(QString::fromLatin1(LCQT_names[i])));
        table->setItem(i, 2, new QTableWidgetItem(QString::fromUtf8(englishTexts[i])));
        table->setItem(i, 3, new QTableWidgetItem(*LCQT_info.slotTable[i]));
    }
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(3, QHeaderView::Stretch);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    layout->addWidget(table, 1);
    return page;
}

} // namespace

GALLERY_PAGE(5, "localization", "Localization", makeLocalizationPage);
