// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etablewidgetmodel.h"

#include <QPixmap>

#include <algorithm>

namespace {

// Cells are small and made by the hundred thousand: a pool halves the allocations of a fill and
// the heap's overhead per cell. Never destroyed: cells of models that outlive main() come back to it.
FixedPool& cellPool()
{
    static FixedPool* pool = new FixedPool(sizeof(ETableWidgetModel::Cell));
    return *pool;
}

} // namespace

void* ETableWidgetModel::Cell::operator new(std::size_t size)
{
    return size == sizeof(Cell) ? cellPool().take() : ::operator new(size);
}

void ETableWidgetModel::Cell::operator delete(void* cell, std::size_t size)
{
    if (!cell)
        return;
    if (size == sizeof(Cell))
        cellPool().give(cell);
    else
        ::operator delete(cell);
}

// ---------------------------------------------------------------- ETableWidgetModel

ETableWidgetModel::ETableWidgetModel(unsigned int columns, const QString** titles)
    : titles(titles)
    , columns(columns)
{
}

ETableWidgetModel::~ETableWidgetModel() = default;

int ETableWidgetModel::getRowCount() const
{
    return columns ? int(unsigned(cells.count()) / columns) : 0;
}

int ETableWidgetModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : getRowCount();
}

int ETableWidgetModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : getColumnCount();
}

int ETableWidgetModel::getColumnCount() const
{
    return int(columns);
}

ETableWidgetModel::Cell* ETableWidgetModel::cell(int row, int column) const
{
    if (row < 0 || column < 0 || unsigned(column) >= columns)
        return nullptr;
    const qint64 at = qint64(row) * columns + column;
    return at < cells.count() ? cells[int(at)] : nullptr;
}

QString ETableWidgetModel::getCell(int row, int column) const
{
    const Cell* c = cell(row, column);
    return c ? c->text : QString();
}

QString ETableWidgetModel::getHeader(int column) const
{
    if (!titles || column < 0 || unsigned(column) >= columns || !titles[column])
        return QString();
    return *titles[column];
}

int ETableWidgetModel::addRow()
{
    addRows(1);
    return getRowCount() - 1;
}

void ETableWidgetModel::addRows(int count)
{
    if (count <= 0 || columns == 0)
        return;
    const qint64 total = qint64(cells.count()) + qint64(count) * columns;
    if (total > INT32_MAX)
        throw std::bad_alloc();
    cells.expand(int(total));
    for (int i = cells.count(); i < int(total); ++i)
        cells.append(new Cell);
}

void ETableWidgetModel::removeRow(int row)
{
    if (row < 0 || row >= getRowCount())
        return;
    const int from = int(unsigned(row) * columns);
    const int to = from + int(columns);
    for (int i = from; i < to; ++i)
        delete cells[i];
    cells.removeRange(from, to);
}

QVariant ETableWidgetModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Cell* c = cell(index.row(), index.column());
    if (c) {
        switch (role) {
        case Qt::DecorationRole:
            if (c->icon)
                return *c->icon;
            break;
        case Qt::ToolTipRole:
            return c->toolTip.isEmpty() ? c->text : c->toolTip;
        case Qt::DisplayRole:
            return c->text;
        default:
            break;
        }
    }
    return ETableModel::data(index, role);
}

void ETableWidgetModel::sort(int column, Qt::SortOrder order)
{
    const int n = getRowCount();
    if (n < 2 || column < 0 || unsigned(column) >= columns)
        return;
    SimpleVector<int> positions;
    positions.expand(n);
    for (int i = 0; i < n; ++i)
        positions.append(int(columns * unsigned(i) + unsigned(column)));

    Cell* const* all = cells.data();
    int* first = positions.begin();
    if (order == Qt::AscendingOrder)
        std::sort(first, positions.end(), [all](int a, int b) { return all[a]->text < all[b]->text; });
    else
        std::sort(first, positions.end(), [all](int a, int b) { return all[b]->text < all[a]->text; });

    emit layoutAboutToBeChanged();
    // Only the pointers move: the cells themselves, with their texts, stay where they are.
    SimpleVector<Cell*> sorted;
    sorted.expand(cells.count());
    for (int p : positions) {
        Cell* const* rowStart = all + (p - column);
        for (unsigned c = 0; c < columns; ++c)
            sorted.append(rowStart[c]);
    }
    std::copy(sorted.begin(), sorted.end(), cells.begin());
    emit layoutChanged();
}
