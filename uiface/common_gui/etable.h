// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QList>
#include <QModelIndexList>
#include <QPair>
#include <QString>
#include <QTableView>
#include <type_traits>

class QKeyEvent;
class QSettings;

/// A read-only table model: subclasses supply the counts, the cell texts and the column titles.
/// Every cell is shown in the library's item font, fontRole().
class COMMON_GUI_EXPORT ETableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit ETableModel(QObject* parent = nullptr);
    ~ETableModel() override;

    /// getRowCount(); the parent is ignored.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    /// getColumnCount(); the parent is ignored.
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// getHeader(section) for horizontal display titles; nothing for anything else.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// The item font for Qt::FontRole; getCell() for display and edit; getCellToolTip() for tool tips.
    /// \note The column is not checked against the column count, only the row.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    virtual int getRowCount() const = 0;
    virtual int getColumnCount() const = 0;
    virtual QString getCell(int row, int column) const = 0;
    virtual QString getHeader(int column) const = 0;
    /// The cell text by default.
    virtual QString getCellToolTip(int row, int column) const;

    /// The library-wide item font: the concrete font the default font resolved to at the first call.
    /// Later changes of the application font do not affect it.
    static QFont fontRole();
};

/// A read-mostly table view: no row header, whole rows selected, compact rows, left-aligned titles,
/// size hints set by its owner, header layout saved in a settings file, and a cell search.
///
/// \code
/// auto* table = new ETable(new HostModel(rows), true, this);   // the table deletes the model
/// table->setWideColumn(2, true);
/// table->setHeightInRows(10);
/// table->setSlotForDoubleClick(this, SLOT(openHost(const QModelIndex&)));
/// {
///     ESettings s(QStringLiteral("HostDialog"));
///     table->loadState(s, "Columns");
/// }
/// if (!table->find(QStringLiteral("down"), Qt::CaseInsensitive, true, true, +1, false))
///     status->setText(QStringLiteral("Text not found"));
/// \endcode
class COMMON_GUI_EXPORT ETable : public QTableView
{
    Q_OBJECT
public:
    explicit ETable(QWidget* parent = nullptr);
    /// The table deletes \a model when \a ownModel is true.
    ETable(ETableModel* model, bool ownModel, QWidget* parent = nullptr);
    ~ETable() override;

    /// Installs \a model (deleting the previous one when it was owned). Passing the current model
    /// again only changes the ownership.
    /// \note A new model comes with a new selection model: connect the selection connectors again.
    void setModel(ETableModel* model, bool ownModel);

    /// Row / column of the current index, -1 when there is none.
    int currentRow() const;
    int currentColumn() const;

    void setColumnWidth(int column, int width);
    int getColumnWidth(int column) const;
    /// The column takes the free width (stretch) or is resized by the user (no stretch).
    void setWideColumn(int column, bool stretch);

    bool isRowSelected(int row) const;
    bool hasSelected() const;
    int selectedCount() const;
    /// Extended selection; there is no way back to single selection.
    void setMultiSelect();

    /// The display text of a cell, empty for a cell that does not exist.
    QString getText(int row, int column) const;
    /// Selected rows (column 0): ascending for order > 0, descending for order < 0, as the
    /// selection model has them for 0.
    QModelIndexList selectedRows(int order) const;
    /// Runs of consecutive selected rows as (lowest, highest), the bottom block first, so that a
    /// caller can delete them one after another without renumbering.
    QList<QPair<int, int>> selectedRanges() const;

    /// (width hint, height hint); both 1 until one of the size operations below runs.
    QSize sizeHint() const override;
    /// Width hint = the column widths + the vertical scroll bar + 8, at most 1000.
    void adjustSizeHint();
    /// Height hint = \a rows rows + the header + 2.
    void setHeightInRows(int rows);
    /// Resizes the columns to their contents; the hints then cover every column and up to 20 rows.
    void adjustSizeHintToContent();
    /// Default row height = max(font height + 2, \a height + 4), at most the header's largest section.
    void setRowHeight(int height);

    /// Writes the header's layout under \a key (Latin-1).
    void saveState(QSettings& settings, const char* key);
    /// Restores the header's layout from \a key; a missing, empty or unreadable value leaves the
    /// header as it is.
    void loadState(QSettings& settings, const char* key);

    /// Searches the cells for \a text, starting after the current cell (or at the first cell when
    /// \a fromStart or there is no current cell), left to right and top to bottom for \a direction
    /// +1, the other way for -1. Whole words are the parts between runs of non-word characters.
    /// On a match the cell becomes current and the only selected cell and true is returned; at
    /// the end of the table it returns false. It does not wrap around: the caller decides.
    bool find(const QString& text, Qt::CaseSensitivity cs, bool wholeWord, bool allColumns, int direction,
              bool fromStart);

    /// Connectors: \a slot is a SLOT() string; true when the connection was made.
    bool setSlotForDoubleClick(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForDoubleClick(const Receiver* receiver, Slot slot)
    {
        if (!receiver)
            return false;
        return bool(connect(this, &QAbstractItemView::doubleClicked, receiver, slot));
    }
    bool setSlotForChangeCurrent(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeCurrent(const Receiver* receiver, Slot slot)
    {
        if (!receiver || !selectionModel())
            return false;
        return bool(connect(selectionModel(), &QItemSelectionModel::currentRowChanged, receiver, slot));
    }
    bool setSlotForChangeSelection(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeSelection(const Receiver* receiver, Slot slot)
    {
        if (!receiver || !selectionModel())
            return false;
        return bool(connect(selectionModel(), &QItemSelectionModel::selectionChanged, receiver, slot));
    }
    /// Also switches the table to a custom context menu.
    bool setSlotForContextMenu(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForContextMenu(const Receiver* receiver, Slot slot)
    {
        setContextMenuPolicy(Qt::CustomContextMenu);
        if (!receiver)
            return false;
        return bool(connect(this, &QWidget::customContextMenuRequested, receiver, slot));
    }

protected:
    /// Tab and Backtab leave the table instead of moving between cells.
    void keyPressEvent(QKeyEvent* event) override;
    /// The common set-up of both constructors.
    void init();

private:
    int columnsWidth() const;

    ETableModel* tableModel = nullptr;
    bool ownModel = false;
    int widthHint = 1;
    int heightHint = 1;
};
