// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ebox.h"

#include "etable.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <QPixmap>

#include <algorithm>
#include <climits>
#include <vector>

namespace {

const QString& itemText(const void* p)
{
    static const QString empty;
    const EBoxItem* item = *static_cast<const EBoxItem* const*>(p);
    return item ? item->text() : empty;
}

// Adds rows [first, end) of column 0 to the selection without touching the rest of it.
void selectRowRange(QAbstractItemView* view, int first, int end)
{
    if (!view)
        return;
    QAbstractItemModel* model = view->model();
    QItemSelectionModel* selection = view->selectionModel();
    if (!model || !selection)
        return;
    first = std::max(first, 0);
    end = std::min(end, model->rowCount());
    if (first >= end)
        return;
    selection->select(QItemSelection(model->index(first, 0), model->index(end - 1, 0)),
                      QItemSelectionModel::Select);
}

} // namespace

// --------------------------------------------------------------------------------------- FixedPool

FixedPool::FixedPool(std::size_t blockSize)
    : blockSize(std::max(blockSize, sizeof(void*)))
{
}

FixedPool::~FixedPool()
{
    release();
}

void* FixedPool::take()
{
    ++live;
    if (freeList) {
        void* block = freeList;
        freeList = *static_cast<void**>(block);
        return block;
    }
    if (slabs.isEmpty() || used == slabBlocks) {
        // Slabs grow from 64 blocks to 8192, so a short list costs little and a long one few slabs.
        slabBlocks = std::min(64 << std::min(slabs.count(), 7), 8192);
        slabs.append(static_cast<char*>(::operator new(std::size_t(slabBlocks) * blockSize)));
        used = 0;
    }
    return slabs[slabs.count() - 1] + std::size_t(used++) * blockSize;
}

void FixedPool::give(void* block)
{
    *static_cast<void**>(block) = freeList;
    freeList = block;
    if (--live == 0)
        release();
}

void FixedPool::release()
{
    for (char* slab : slabs)
        ::operator delete(slab);
    slabs.clear();
    freeList = nullptr;
    used = 0;
    slabBlocks = 0;
}

// ---------------------------------------------------------------------------------------- EBoxItem

namespace {

// Never destroyed: items of models that outlive main() may still come back to it.
FixedPool& itemPool()
{
    static FixedPool* pool = new FixedPool(sizeof(EBoxItem));
    return *pool;
}

} // namespace

void* EBoxItem::operator new(std::size_t size)
{
    return size == sizeof(EBoxItem) ? itemPool().take() : ::operator new(size);
}

void EBoxItem::operator delete(void* item, std::size_t size)
{
    if (!item)
        return;
    if (size == sizeof(EBoxItem))
        itemPool().give(item);
    else
        ::operator delete(item);
}

EBoxItem::EBoxItem(const QString& text, const QPixmap* icon)
    : m_icon(icon)
    , m_text(text)
{
}

EBoxItem::EBoxItem(const QPixmap* icon, const QString& text, int id)
    : m_icon(icon)
    , m_text(text)
    , m_word(std::intptr_t(id))
{
}

EBoxItem::EBoxItem(const QPixmap* icon, const QString& text, const void* data)
    : m_icon(icon)
    , m_text(text)
    , m_word(reinterpret_cast<std::intptr_t>(data))
{
}

EBoxItem::~EBoxItem() = default;

QString EBoxItem::getToolTip() const
{
    return m_text;
}

int comparator_asc(const void* a, const void* b)
{
    return QString::compare(itemText(a), itemText(b), Qt::CaseSensitive);
}

int comparator_des(const void* a, const void* b)
{
    return QString::compare(itemText(b), itemText(a), Qt::CaseSensitive);
}

// --------------------------------------------------------------------------------------- EBoxModel

EBoxModel::EBoxModel(QAbstractItemView* view)
    : m_view(view)
{
}

EBoxModel::~EBoxModel()
{
    for (EBoxItem* item : m_items)
        delete item;
}

QModelIndex EBoxModel::index(int row, int column, const QModelIndex&) const
{
    if (row < 0 || row >= m_items.count())
        return QModelIndex();
    return createIndex(row, column, m_items[row]);
}

QModelIndex EBoxModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int EBoxModel::rowCount(const QModelIndex&) const
{
    return m_items.count();
}

int EBoxModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool EBoxModel::hasChildren(const QModelIndex&) const
{
    return false;
}

QVariant EBoxModel::data(const QModelIndex& index, int role) const
{
    // Column 1 is answered like column 0: older callers ask for it.
    if (index.row() < 0 || index.column() < 0 || index.column() > 1 || index.model() != this)
        return QVariant();
    if (role == Qt::FontRole)
        return ETableModel::fontRole();
    // The row, not the index's pointer, finds the item: a stale index then cannot reach a
    // deleted item.
    const EBoxItem* item = m_items.value(index.row());
    if (!item)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return item->text();
    case Qt::DecorationRole:
        return item->icon() ? QVariant(*item->icon()) : QVariant();
    case Qt::ToolTipRole:
        return item->getToolTip();
    default:
        return QVariant();
    }
}

namespace {

// A sort entry: the first twelve UTF-16 code units of the text packed so that comparing the
// integers compares the units in order. On a long list the sort is bound by cache misses, and
// most comparisons are decided here without touching the texts.
struct SortKey
{
    quint64 prefix[3];
    EBoxItem* item;

    explicit SortKey(EBoxItem* i)
        : item(i)
    {
        const QString& text = itemText(&item);
        const ushort* units = text.utf16();
        const int size = text.size();
        int at = 0;
        for (quint64& word : prefix) {
            word = 0;
            for (int k = 0; k < 4; ++k, ++at)
                word = (word << 16) | (at < size ? units[at] : 0u);
        }
    }

    static bool less(const SortKey& a, const SortKey& b)
    {
        for (int i = 0; i < 3; ++i) {
            if (a.prefix[i] != b.prefix[i])
                return a.prefix[i] < b.prefix[i];
        }
        return comparator_asc(&a.item, &b.item) < 0;
    }
};

} // namespace

void EBoxModel::sort(int, Qt::SortOrder order)
{
    if (m_items.isEmpty())
        return;
    // The same order as sort(comparator_asc) or sort(comparator_des), equal texts included.
    std::vector<SortKey> keys(m_items.begin(), m_items.end());
    openReset();
    if (order == Qt::DescendingOrder)
        std::stable_sort(keys.begin(), keys.end(), [](const SortKey& a, const SortKey& b) { return SortKey::less(b, a); });
    else
        std::stable_sort(keys.begin(), keys.end(), &SortKey::less);
    EBoxItem** d = m_items.data();
    for (const SortKey& key : keys)
        *d++ = key.item;
    closeReset();
}

void EBoxModel::append(EBoxItem* item)
{
    const int row = m_items.count();
    if (m_depth == 0)
        beginInsertRows(QModelIndex(), row, row);
    m_items.append(item);
    if (m_depth == 0)
        endInsertRows();
}

void EBoxModel::appendSteal(ObjectVector<EBoxItem>& items)
{
    if (items.isEmpty())
        return;
    const int first = m_items.count();
    if (m_depth == 0)
        beginInsertRows(QModelIndex(), first, first + items.count() - 1);
    items.moveAllTo(m_items);
    if (m_depth == 0)
        endInsertRows();
}

void EBoxModel::insert(int pos, EBoxItem* item)
{
    if (m_depth == 0)
        beginInsertRows(QModelIndex(), pos, pos);
    if (pos >= 0 && pos <= m_items.count())
        m_items.insert(pos, item);
    else
        delete item; // handed over but not stored: nobody else would free it
    if (m_depth == 0)
        endInsertRows();
}

void EBoxModel::insert(int pos, const QStringList& texts)
{
    if (texts.isEmpty())
        return;
    const int n = texts.size();
    if (m_depth == 0)
        beginInsertRows(QModelIndex(), pos, int(std::min<qint64>(qint64(pos) + n - 1, INT_MAX)));
    if (pos >= 0 && pos <= m_items.count()) {
        // One shift of the tail instead of n single inserts; the capacity ends up the same.
        const int oldCount = m_items.count();
        m_items.expand(oldCount + n);
        for (int i = 0; i < n; ++i)
            m_items.append(nullptr);
        EBoxItem** d = m_items.data();
        std::copy_backward(d + pos, d + oldCount, d + oldCount + n);
        for (int i = 0; i < n; ++i)
            d[pos + i] = new EBoxItem(texts.at(i));
    }
    if (m_depth == 0)
        endInsertRows();
}

void EBoxModel::remove(int row)
{
    // The removal is announced before the row is checked; views have always seen it so.
    if (m_depth == 0)
        beginRemoveRows(QModelIndex(), row, row);
    if (row >= 0 && row < m_items.count()) {
        delete m_items[row];
        m_items.removeRange(row, row + 1);
    }
    if (m_depth == 0)
        endRemoveRows();
}

void EBoxModel::removeAll()
{
    if (m_items.isEmpty())
        return;
    if (m_depth == 0)
        beginRemoveRows(QModelIndex(), 0, m_items.count() - 1);
    for (EBoxItem* item : m_items)
        delete item;
    m_items.clear();
    if (m_depth == 0)
        endRemoveRows();
}

QVector<EBoxModel::Block> EBoxModel::selectedBlocks() const
{
    QVector<Block> blocks;
    if (!m_view)
        return blocks;
    const QItemSelectionModel* selection = m_view->selectionModel();
    if (!selection || selection->model() != this)
        return blocks;
    const QItemSelection ranges = selection->selection();
    blocks.reserve(ranges.size());
    for (const QItemSelectionRange& range : ranges) {
        if (range.isValid())
            blocks.append({range.top(), range.bottom() + 1});
    }
    std::sort(blocks.begin(), blocks.end(),
              [](const Block& a, const Block& b) { return a.top < b.top || (a.top == b.top && a.end > b.end); });
    // Ranges of other columns may cover the same rows, and persistent rows may point past the end
    // inside a batch: clip them so that no item is ever taken twice.
    QVector<Block> clean;
    clean.reserve(blocks.size());
    int covered = 0;
    for (const Block& b : qAsConst(blocks)) {
        const int top = std::max(b.top, covered);
        const int end = std::min(b.end, m_items.count());
        if (top < end) {
            clean.append({top, end});
            covered = end;
        }
    }
    return clean;
}

void EBoxModel::openReset()
{
    if (m_depth == 0)
        beginResetModel();
}

void EBoxModel::closeReset()
{
    if (m_depth == 0)
        endResetModel();
}

void EBoxModel::selectRows(int first, int end)
{
    if (m_view && m_view->model() == this)
        selectRowRange(m_view, first, end);
}

void EBoxModel::dropBlocks(const QVector<Block>& blocks)
{
    if (blocks.isEmpty())
        return;
    // One pass that closes every gap, so that many scattered blocks cost no more than one.
    EBoxItem** d = m_items.data();
    const int count = m_items.count();
    EBoxItem** out = d + blocks.first().top;
    for (int i = 0; i < blocks.size(); ++i) {
        const int keepTo = i + 1 < blocks.size() ? blocks.at(i + 1).top : count;
        out = std::copy(d + blocks.at(i).end, d + keepTo, out);
    }
    m_items.removeRange(int(out - d), count);
}

void EBoxModel::removeSelected()
{
    const QVector<Block> blocks = selectedBlocks();
    if (blocks.isEmpty())
        return;
    openReset();
    // The items are only taken out of the list, not deleted: applications that hold them
    // delete them after the removal.
    dropBlocks(blocks);
    closeReset();
}

int EBoxModel::moveTo(int from, int to)
{
    if (to == from || qint64(to) == qint64(from) + 1)
        return to;
    if (from < 0 || from >= m_items.count() || to < 0 || to > m_items.count())
        return -1;
    beginChanges();
    EBoxItem* item = m_items[from];
    m_items[from] = nullptr;
    remove(from);
    const int pos = to > from ? to - 1 : to;
    insert(pos, item);
    endChanges();
    return pos;
}

void EBoxModel::moveSelected(int direction)
{
    const QVector<Block> ranges = selectedBlocks();
    if (ranges.isEmpty())
        return;
    openReset();
    const qint64 count = m_items.count();
    QVector<Block> blocks;
    for (const Block& r : ranges) {
        if (r.top + qint64(direction) < 0 || r.end + qint64(direction) > count)
            continue;
        // Direction 0 passes the test above but still moves down: it needs a row below.
        if (direction == 0 && r.end >= count)
            continue;
        if (!blocks.isEmpty() && blocks.last().end == r.top)
            blocks.last().end = r.end;
        else
            blocks.append(r);
    }
    EBoxItem** d = m_items.data();
    for (const Block& b : qAsConst(blocks)) {
        // The block moves by one row whatever the size of direction.
        if (direction >= 0)
            std::rotate(d + b.top, d + b.end, d + b.end + 1);
        else
            std::rotate(d + b.top - 1, d + b.top, d + b.end);
    }
    closeReset();
    // All blocks are selected in one step: block by block, the selection model would compare
    // every new range with every old one, which costs seconds for a thousand blocks.
    QItemSelection moved;
    for (const Block& b : qAsConst(blocks)) {
        const int first = int(std::max<qint64>(b.top + qint64(direction), 0));
        const int end = int(std::min<qint64>(b.end + qint64(direction), count));
        if (first < end)
            moved.append(QItemSelectionRange(index(first, 0), index(end - 1, 0)));
    }
    if (!moved.isEmpty() && m_view && m_view->model() == this && m_view->selectionModel())
        m_view->selectionModel()->select(moved, QItemSelectionModel::Select);
}

void EBoxModel::moveSelectedTo(EBoxModel* target)
{
    if (!target || target == this)
        return;
    const QVector<Block> blocks = selectedBlocks();
    if (blocks.isEmpty())
        return;
    openReset();
    target->openReset();
    const int oldCount = target->m_items.count();
    int moved = 0;
    for (const Block& b : blocks)
        moved += b.end - b.top;
    target->m_items.expand(oldCount + moved);
    // Blocks go over from the last to the first, so they arrive in reverse order while each
    // block keeps its own order; lists built on this rely on it.
    const EBoxItem* const* d = m_items.data();
    for (int i = blocks.size() - 1; i >= 0; --i) {
        for (int row = blocks.at(i).top; row < blocks.at(i).end; ++row)
            target->m_items.append(const_cast<EBoxItem*>(d[row]));
    }
    dropBlocks(blocks);
    closeReset();
    target->closeReset();
    target->selectRows(oldCount, target->m_items.count());
}

int EBoxModel::findId(int id) const
{
    const std::intptr_t word = std::intptr_t(id);
    for (int i = 0; i < m_items.count(); ++i) {
        if (m_items[i] && m_items[i]->word() == word)
            return i;
    }
    return -1;
}

int EBoxModel::findData(const void* data) const
{
    const std::intptr_t word = reinterpret_cast<std::intptr_t>(data);
    for (int i = 0; i < m_items.count(); ++i) {
        if (m_items[i] && m_items[i]->word() == word)
            return i;
    }
    return -1;
}

void EBoxModel::sort(int (*compare)(const void*, const void*))
{
    if (m_items.isEmpty() || !compare)
        return;
    openReset();
    // A merge sort, like glibc's qsort, never leaves the array even for a comparator that
    // contradicts itself.
    std::stable_sort(m_items.begin(), m_items.end(),
                     [compare](EBoxItem* a, EBoxItem* b) { return compare(&a, &b) < 0; });
    closeReset();
}

void EBoxModel::beginChanges()
{
    if (++m_depth != 1)
        return;
    beginResetModel();
    if (m_view)
        m_view->setUpdatesEnabled(false);
}

void EBoxModel::endChanges()
{
    if (m_depth <= 0)
        return;
    if (--m_depth != 0)
        return;
    endResetModel();
    if (m_view)
        m_view->setUpdatesEnabled(true);
}

// -------------------------------------------------------------------------------------------- EBox

EBox::EBox(QWidget* parent)
    : QListView(parent)
{
    setTextElideMode(Qt::ElideRight);
    // Every row has the same height, so a long list is laid out without measuring each row.
    setUniformItemSizes(true);
    // Lay out the first rows before showing and the rest while events are processed: the first
    // paint of a million rows then costs what it costs for ten thousand.
    setLayoutMode(QListView::Batched);
    setBatchSize(layoutBatch);
    m_model = new EBoxModel(this);
    setModel(m_model);
}

EBox::~EBox()
{
    delete m_model;
}

void EBox::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    // A row beyond the rows laid out so far has no place yet: finish the layout first.
    if (index.isValid() && index.row() >= layoutBatch && visualRect(index).isEmpty()) {
        setLayoutMode(QListView::SinglePass);
        doItemsLayout();
        setLayoutMode(QListView::Batched);
    }
    QListView::scrollTo(index, hint);
}

void EBox::setSelected(int row, bool selected)
{
    const QModelIndex index = m_model->index(row, 0);
    if (!index.isValid() || !selectionModel())
        return;
    selectionModel()->select(index, selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect);
}

void EBox::selectRange(int first, int end)
{
    selectRowRange(this, first, end);
}

int EBox::selectedCount() const
{
    return selectionModel() ? selectionModel()->selectedRows(0).count() : 0;
}

bool EBox::setSlotForDoubleClick(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    return static_cast<bool>(connect(this, SIGNAL(doubleClicked(const QModelIndex &)), receiver, slot));
}

bool EBox::setSlotForChangeSelection(QObject* receiver, const char* slot)
{
    if (!receiver || !slot || !selectionModel())
        return false;
    return static_cast<bool>(
        connect(selectionModel(), SIGNAL(selectionChanged(const QItemSelection &,const QItemSelection &)),
                receiver, slot));
}

bool EBox::setSlotForChangeCurrent(QObject* receiver, const char* slot)
{
    if (!receiver || !slot || !selectionModel())
        return false;
    return static_cast<bool>(
        connect(selectionModel(), SIGNAL(currentRowChanged(const QModelIndex&, const QModelIndex&)),
                receiver, slot));
}

bool EBox::setSlotForContextMenu(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    setContextMenuPolicy(Qt::CustomContextMenu);
    return static_cast<bool>(connect(this, SIGNAL(customContextMenuRequested(const QPoint&)), receiver, slot));
}
