// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etablewidget.h"

#include "common_gui_loc.h"
#include "etablewidgetmodel.h"

#include <QHeaderView>

namespace {

const QString* defaultTitles[] = {&LCQT__Parameter, &LCQT__Value};

// The default table has two titles: a wider table without titles gets none rather than reading past it.
const QString** titlesFor(unsigned int columns, const QString** titles)
{
    return titles || columns > 2 ? titles : defaultTitles;
}

} // namespace

// The parent is deliberately not passed on: whoever lays the widget out adopts it.
ETableWidget::ETableWidget(QWidget*, unsigned int columns, const QString** titles)
    : ETable(new ETableWidgetModel(columns, titlesFor(columns, titles)), true, nullptr)
{
    if (columns == 2) {
        setWideColumn(1, true);
        horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    }
}

ETableWidget::~ETableWidget() = default;

ETableWidgetModel* ETableWidget::widgetModel() const
{
    return static_cast<ETableWidgetModel*>(model());
}

void ETableWidget::resetModel(unsigned int columns, const QString** titles)
{
    setModel(new ETableWidgetModel(columns, titles), true);
}

void ETableWidget::setCell(int row, int column, const QString& text, QPixmap* icon, void* data)
{
    setCell(row, column, QString(text), icon, data);
}

void ETableWidget::setCell(int row, int column, QString&& text, QPixmap* icon, void* data)
{
    ETableWidgetModel::Cell* c = widgetModel()->cell(row, column);
    if (!c)
        return;
    c->text = std::move(text);
    c->icon = icon;
    c->data = data;
}
