// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include "ebox.h"
#include "etable.h"

#include <QString>

#include <cstddef>

class QPixmap;

/// A table model that keeps its cells itself: a text, a tool tip, an icon and a data pointer per
/// cell, row-major. Rows are added and removed without notifying the views: fill the model before
/// showing it, or reset / refresh the view yourself afterwards.
class COMMON_GUI_EXPORT ETableWidgetModel : public ETableModel
{
    Q_OBJECT
public:
    /// One cell; the icon and the data pointer belong to the caller.
    /// Cells come from a pool of the GUI thread: make and delete them on that thread only.
    class COMMON_GUI_EXPORT Cell
    {
    public:
        static void* operator new(std::size_t size);
        static void operator delete(void* cell, std::size_t size);

        QString text;
        QString toolTip;        ///< empty: the text serves as tool tip
        QPixmap* icon = nullptr;
        void* data = nullptr;

        /// The tool tip shown for the cell; an empty one falls back to the text.
        void setToolTip(const QString& tip) { toolTip = tip; }
    };

    /// A model with no rows. \a titles holds one title pointer per column and must outlive the
    /// model (it is not copied); it may be null, then the columns have no titles.
    ETableWidgetModel(unsigned int columns, const QString** titles);
    ~ETableWidgetModel() override;

    /// Number of cells / column count.
    int getRowCount() const override;
    /// No rows and columns below a cell: a flat table, whatever ETableModel answers for a parent.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    int getColumnCount() const override;
    /// The cell's text; empty for a cell that does not exist.
    QString getCell(int row, int column) const override;
    /// The column's title; empty for a column out of range or without a title.
    QString getHeader(int column) const override;

    /// The cell at (\a row, \a column), or null when it does not exist.
    Cell* cell(int row, int column) const;

    /// Appends one row of empty cells and returns its index. No notification is sent.
    int addRow();
    /// Appends \a count rows of empty cells (nothing for count <= 0). No notification is sent.
    void addRows(int count);
    /// Deletes the row's cells and closes the gap; a row out of range is ignored. No notification.
    void removeRow(int row);

    /// Decoration: the cell's icon; tool tip: its tool tip, else its text; display: its text;
    /// everything else as ETableModel (the item font, the edit text).
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Reorders whole rows by the texts of \a column (plain UTF-16 comparison, case-sensitive);
    /// rows with equal texts may come in any order. Emits layoutChanged() unless fewer than 2 rows.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    ObjectVector<Cell> cells;
    const QString** titles = nullptr;
    unsigned int columns = 0;
};
