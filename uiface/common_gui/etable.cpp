// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etable.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSettings>
#include <QStringList>

#include <algorithm>
#include <functional>

// ---------------------------------------------------------------- ETableModel

namespace {

QFont defaultFont;
bool defaultFontResolved = false;

} // namespace

QFont ETableModel::fontRole()
{
    if (!defaultFontResolved) {
        // Pin the concrete font the default resolves to now, so that every view of the process
        // keeps one look even if the application font changes later.
        const QFontInfo info{QFont()};
        defaultFont = QFont(info.family(), info.pointSize(), info.weight(), info.italic());
        defaultFontResolved = true;
    }
    return defaultFont;
}

ETableModel::ETableModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

ETableModel::~ETableModel() = default;

int ETableModel::rowCount(const QModelIndex&) const
{
    return getRowCount();
}

int ETableModel::columnCount(const QModelIndex&) const
{
    return getColumnCount();
}

QVariant ETableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Horizontal)
        return getHeader(section);
    return QVariant();
}

QVariant ETableModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::FontRole)
        return fontRole();
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return QVariant();
    if (index.row() < 0 || index.column() < 0 || !index.model() || index.row() >= getRowCount())
        return QVariant();
    if (role == Qt::ToolTipRole)
        return getCellToolTip(index.row(), index.column());
    return getCell(index.row(), index.column());
}

QString ETableModel::getCellToolTip(int row, int column) const
{
    return getCell(row, column);
}

// ---------------------------------------------------------------- whole words

namespace {

// A word character as QRegExp's \w has it; everything else separates words.
bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

// Whether one of the parts of \a cell between runs of non-word characters equals \a text: the
// answer of cell.split(QRegExp("\\W+"), Qt::KeepEmptyParts).contains(text, cs), found by checking
// the boundaries of each occurrence instead of building the parts. Splitting with the regular
// expression took three quarters of a whole-word search over cells that hold the text.
bool containsWord(const QString& cell, const QString& text, Qt::CaseSensitivity cs)
{
    if (text.isEmpty()) // an empty part exists before a leading or after a trailing separator
        return cell.isEmpty() || !isWordChar(cell.front()) || !isWordChar(cell.back());
    if (!std::all_of(text.begin(), text.end(), isWordChar))
        return false;
    const int size = text.size();
    for (int at = cell.indexOf(text, 0, cs); at >= 0; at = cell.indexOf(text, at + 1, cs)) {
        const int end = at + size;
        if ((at == 0 || !isWordChar(cell.at(at - 1))) && (end == cell.size() || !isWordChar(cell.at(end)))
            && std::all_of(cell.begin() + at, cell.begin() + end, isWordChar))
            return true;
    }
    return false;
}

} // namespace

// ---------------------------------------------------------------- ETable

ETable::ETable(QWidget* parent)
    : QTableView(parent)
{
    init();
}

ETable::ETable(ETableModel* model, bool ownModel, QWidget* parent)
    : QTableView(parent)
    , tableModel(model)
    , ownModel(ownModel && model)
{
    init();
}

ETable::~ETable()
{
    if (ownModel)
        delete tableModel;
}

void ETable::init()
{
    verticalHeader()->hide();
    // Qt 5 clamps row heights to a style minimum with header margins; rows here are compact.
    verticalHeader()->setMinimumSectionSize(fontMetrics().height() + 2);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    if (tableModel)
        QTableView::setModel(tableModel);
    setMaximumHeight(100000);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void ETable::setModel(ETableModel* model, bool own)
{
    if (model != tableModel) {
        ETableModel* old = tableModel;
        const bool ownedOld = ownModel;
        tableModel = model;
        QItemSelectionModel* oldSelection = selectionModel();
        QTableView::setModel(model);
        // Qt makes a new selection model for every model and leaves the old one to its owner.
        if (oldSelection && oldSelection != selectionModel() && oldSelection->parent() == this)
            delete oldSelection;
        // Switch the view over before deleting, so it never paints from a dying model.
        if (ownedOld)
            delete old;
    }
    ownModel = own && model;
}

int ETable::currentRow() const
{
    const QItemSelectionModel* sm = selectionModel();
    return sm && sm->currentIndex().isValid() ? sm->currentIndex().row() : -1;
}

int ETable::currentColumn() const
{
    const QItemSelectionModel* sm = selectionModel();
    return sm && sm->currentIndex().isValid() ? sm->currentIndex().column() : -1;
}

void ETable::setColumnWidth(int column, int width)
{
    horizontalHeader()->resizeSection(column, width);
}

int ETable::getColumnWidth(int column) const
{
    return horizontalHeader()->sectionSize(column);
}

void ETable::setWideColumn(int column, bool stretch)
{
    if (column < 0 || column >= horizontalHeader()->count())
        return;
    horizontalHeader()->setSectionResizeMode(column, stretch ? QHeaderView::Stretch : QHeaderView::Interactive);
}

bool ETable::isRowSelected(int row) const
{
    const QItemSelectionModel* sm = selectionModel();
    return sm && sm->isRowSelected(row, QModelIndex());
}

bool ETable::hasSelected() const
{
    const QItemSelectionModel* sm = selectionModel();
    return sm && sm->hasSelection();
}

int ETable::selectedCount() const
{
    return selectedRows(0).size();
}

void ETable::setMultiSelect()
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
}

QString ETable::getText(int row, int column) const
{
    const QAbstractItemModel* m = model();
    if (!m)
        return QString();
    return m->data(m->index(row, column), Qt::DisplayRole).toString();
}

QModelIndexList ETable::selectedRows(int order) const
{
    const QItemSelectionModel* sm = selectionModel();
    if (!sm)
        return QModelIndexList();
    QModelIndexList rows = sm->selectedRows(0);
    if (order > 0)
        std::sort(rows.begin(), rows.end());
    else if (order < 0)
        std::sort(rows.begin(), rows.end(), [](const QModelIndex& a, const QModelIndex& b) { return b < a; });
    return rows;
}

QList<QPair<int, int>> ETable::selectedRanges() const
{
    QList<int> rows;
    for (const QModelIndex& index : selectedRows(0))
        rows.append(index.row());
    std::sort(rows.begin(), rows.end(), std::greater<int>());

    QList<QPair<int, int>> ranges;
    for (int i = 0; i < rows.size();) {
        const int highest = rows.at(i);
        int lowest = highest;
        for (++i; i < rows.size() && rows.at(i) == lowest - 1; ++i)
            lowest = rows.at(i);
        ranges.append(qMakePair(lowest, highest));
    }
    return ranges;
}

QSize ETable::sizeHint() const
{
    return QSize(widthHint, heightHint);
}

int ETable::columnsWidth() const
{
    const int columns = model() ? model()->columnCount() : 0;
    qint64 width = 0;
    for (int c = 0; c < columns; ++c)
        width += getColumnWidth(c);
    return int(std::min<qint64>(width, QWIDGETSIZE_MAX));
}

void ETable::adjustSizeHint()
{
    widthHint = std::min(columnsWidth() + verticalScrollBar()->sizeHint().width() + 8, 1000);
    updateGeometry();
}

void ETable::setHeightInRows(int rows)
{
    const qint64 height = qint64(std::max(rows, 0)) * verticalHeader()->defaultSectionSize()
                          + horizontalHeader()->sizeHint().height() + 2;
    heightHint = int(std::min<qint64>(height, QWIDGETSIZE_MAX));
    updateGeometry();
}

void ETable::adjustSizeHintToContent()
{
    resizeColumnsToContents();
    const int rows = model() ? model()->rowCount() : 0;
    widthHint = std::min(columnsWidth(), QWIDGETSIZE_MAX - 2 * frameWidth()) + 2 * frameWidth();
    // The frame on both sides here, a fixed 2 in setHeightInRows: owners size dialogs by both.
    heightHint = std::min(rows, 20) * verticalHeader()->defaultSectionSize()
                 + horizontalHeader()->sizeHint().height() + 2 * frameWidth();
    updateGeometry();
}

void ETable::setRowHeight(int height)
{
    const int fontRow = fontMetrics().height() + 2;
    verticalHeader()->setMinimumSectionSize(fontRow);
    // The header ignores a size above its maximum, and height + 4 must not overflow: cap it.
    const int largest = verticalHeader()->maximumSectionSize();
    verticalHeader()->setDefaultSectionSize(std::max(fontRow, std::min(height, largest - 4) + 4));
}

void ETable::saveState(QSettings& settings, const char* key)
{
    if (!key)
        return;
    settings.setValue(QString::fromLatin1(key), horizontalHeader()->saveState());
}

void ETable::loadState(QSettings& settings, const char* key)
{
    if (!key)
        return;
    const QByteArray state = settings.value(QString::fromLatin1(key), QByteArray()).toByteArray();
    if (state.isEmpty())
        return;
    // restoreState refuses bytes it cannot read and leaves the header alone; then there is
    // nothing to reset either.
    if (horizontalHeader()->restoreState(state))
        horizontalHeader()->reset();
}

bool ETable::find(const QString& text, Qt::CaseSensitivity cs, bool wholeWord, bool allColumns, int direction,
                  bool fromStart)
{
    QAbstractItemModel* m = model();
    QItemSelectionModel* sm = selectionModel();
    if (!m || !sm)
        return false;
    const int step = direction < 0 ? -1 : 1;
    const int rowCount = m->rowCount();
    const int columnCount = m->columnCount();

    int row = currentRow();
    int column = currentColumn();
    if (column < 0)
        fromStart = true;
    const int first = allColumns ? 0 : column;
    const int last = allColumns ? columnCount - 1 : column;
    if (rowCount <= 0 || first < 0 || last < first || last >= columnCount)
        return false;

    bool examine = false;
    if (row < 0 || fromStart) {
        row = step > 0 ? 0 : rowCount - 1;
        column = step > 0 ? first : last;
        examine = true;
    }

    for (;;) {
        if (!examine) {
            column += step;
            if (column > last || column < first) {
                column = step > 0 ? first : last;
                row += step;
                if (row < 0 || row >= rowCount)
                    return false;
            }
        }
        examine = false;

        const QString cell = getText(row, column);
        const bool match = wholeWord ? containsWord(cell, text, cs) : cell.indexOf(text, 0, cs) >= 0;
        if (match) {
            const QModelIndex index = m->index(row, column);
            sm->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Current);
            return true;
        }
    }
}

void ETable::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    QAbstractItemView::keyPressEvent(event);
}

bool ETable::setSlotForDoubleClick(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    return connect(this, SIGNAL(doubleClicked(const QModelIndex&)), receiver, slot);
}

bool ETable::setSlotForChangeCurrent(QObject* receiver, const char* slot)
{
    if (!receiver || !slot || !selectionModel())
        return false;
    return connect(selectionModel(), SIGNAL(currentRowChanged(const QModelIndex&, const QModelIndex&)), receiver,
                   slot);
}

bool ETable::setSlotForChangeSelection(QObject* receiver, const char* slot)
{
    if (!receiver || !slot || !selectionModel())
        return false;
    return connect(selectionModel(), SIGNAL(selectionChanged(const QItemSelection&, const QItemSelection&)),
                   receiver, slot);
}

bool ETable::setSlotForContextMenu(QObject* receiver, const char* slot)
{
    setContextMenuPolicy(Qt::CustomContextMenu);
    if (!receiver || !slot)
        return false;
    return connect(this, SIGNAL(customContextMenuRequested(const QPoint&)), receiver, slot);
}
