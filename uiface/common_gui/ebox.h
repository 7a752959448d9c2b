// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QAbstractItemModel>
#include <QListView>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <type_traits>

class QAbstractItemView;
class QPixmap;
class EBox;

/// The library's growable array of plain values (pointers, integers). It never owns what its
/// elements point to: removing elements only closes the gap.
///
/// Capacity grows to the needed size rounded up to a multiple of 16 (up to 256 elements), of 256
/// (up to 4096) or of 4096 (beyond), and never shrinks. Out-of-range positions are ignored.
template <class T>
class SimpleVector
{
public:
    SimpleVector() = default;
    ~SimpleVector() { freeArray(); }
    SimpleVector(const SimpleVector&) = delete;
    SimpleVector& operator=(const SimpleVector&) = delete;

    int count() const { return m_count; }
    int size() const { return m_count; }
    int capacity() const { return m_capacity; }
    bool isEmpty() const { return m_count == 0; }

    /// The element array (null while nothing was ever stored); valid up to count().
    T* data() { return m_data; }
    const T* data() const { return m_data; }
    T* begin() { return m_data; }
    T* end() { return m_data + m_count; }
    const T* begin() const { return m_data; }
    const T* end() const { return m_data + m_count; }
    /// No range check: \a i must be in 0 … count()-1.
    T& operator[](int i) { return m_data[i]; }
    const T& operator[](int i) const { return m_data[i]; }
    /// The element at \a i, or a value-initialised T (0, null) when \a i is out of range.
    T value(int i) const { return i >= 0 && i < m_count ? m_data[i] : T(); }

    /// Makes room for \a n elements by the growth rule; a smaller request changes nothing.
    void expand(int n)
    {
        if (n <= m_capacity)
            return;
        const int newCapacity = grownCapacity(n);
        if constexpr (growsInPlace) {
            // realloc can move a large array by remapping its pages: growing a million-row list
            // in steps of 4096 would otherwise copy and fault in every page again and again.
            void* grown = std::realloc(static_cast<void*>(m_data), size_t(newCapacity) * sizeof(T));
            if (!grown)
                throw std::bad_alloc();
            m_data = static_cast<T*>(grown);
        } else {
            T* grown = new T[size_t(newCapacity)];
            std::move(m_data, m_data + m_count, grown);
            delete[] m_data;
            m_data = grown;
        }
        m_capacity = newCapacity;
    }

    void append(T v)
    {
        expand(m_count + 1);
        m_data[m_count++] = v;
    }

    /// Stores \a v at \a pos, shifting the tail up; ignored unless 0 <= pos <= count().
    void insert(int pos, T v)
    {
        if (pos < 0 || pos > m_count)
            return;
        expand(m_count + 1);
        std::move_backward(m_data + pos, m_data + m_count, m_data + m_count + 1);
        m_data[pos] = v;
        ++m_count;
    }

    /// Removes the half-open range [from, to) and closes the gap; nothing pointed to is destroyed.
    /// Ignored when from < 0, from >= count() or to <= from; \a to is clipped to count().
    void removeRange(int from, int to)
    {
        if (from < 0 || from >= m_count || to <= from)
            return;
        to = std::min(to, m_count);
        std::move(m_data + to, m_data + m_count, m_data + from);
        m_count -= to - from;
    }

    /// The capacity the growth rule gives for \a n elements.
    static int grownCapacity(int n)
    {
        const std::int64_t step = n <= 256 ? 16 : n <= 4096 ? 256 : 4096;
        const std::int64_t rounded = (std::int64_t(n) + step - 1) / step * step;
        return int(std::min<std::int64_t>(rounded, INT32_MAX));
    }

    /// Frees the array: count and capacity become 0. The elements are not destroyed.
    void clear()
    {
        freeArray();
        m_data = nullptr;
        m_count = 0;
        m_capacity = 0;
    }

protected:
    // Only values that malloc can hold and realloc can move byte by byte go through realloc;
    // anything else (strings, over-aligned types) is moved into a new array.
    static constexpr bool growsInPlace = std::is_trivial<T>::value
        && alignof(T) <= alignof(std::max_align_t);

    void freeArray()
    {
        if constexpr (growsInPlace)
            std::free(static_cast<void*>(m_data));
        else
            delete[] m_data;
    }

    T* m_data = nullptr;
    int m_count = 0;
    int m_capacity = 0;
};

/// The owning variant of SimpleVector: its elements are pointers to heap objects that it deletes
/// (through their virtual destructors) when it is destroyed. removeRange() hands the removed
/// objects back to the caller without deleting them.
template <class T>
class ObjectVector : public SimpleVector<T*>
{
public:
    ObjectVector() = default;
    ~ObjectVector()
    {
        for (int i = 0; i < this->m_count; ++i)
            delete this->m_data[i];
    }

    /// Appends every pointer to \a dst and leaves this vector empty with capacity 0; the objects
    /// now belong to whoever owns \a dst.
    void moveAllTo(SimpleVector<T*>& dst)
    {
        if (&dst == this || this->m_count == 0) {
            if (&dst != this)
                this->clear();
            return;
        }
        dst.expand(dst.count() + this->m_count);
        for (int i = 0; i < this->m_count; ++i)
            dst.append(this->m_data[i]);
        this->clear();
    }
};

/// A pool of equal-sized blocks for small objects made by the hundred thousand (list items, table
/// cells): blocks come from slabs instead of one heap allocation each, freed blocks are reused, and
/// the slabs go back to the heap when the last block is freed. Use it on the GUI thread only.
class COMMON_GUI_EXPORT FixedPool
{
public:
    explicit FixedPool(std::size_t blockSize);
    ~FixedPool();
    FixedPool(const FixedPool&) = delete;
    FixedPool& operator=(const FixedPool&) = delete;

    void* take();
    /// \a block must come from take() of this pool.
    void give(void* block);

private:
    void release();

    std::size_t blockSize = 0;
    SimpleVector<char*> slabs;
    void* freeList = nullptr;
    std::size_t live = 0;
    int used = 0;
    int slabBlocks = 0;
};

/// One entry of a list box or combo box: an optional icon, a text and one word that is either an
/// integer id or a data pointer. The icon is not owned and must outlive the item.
class COMMON_GUI_EXPORT EBoxItem
{
public:
    EBoxItem() = default;
    explicit EBoxItem(const QString& text, const QPixmap* icon = nullptr);
    EBoxItem(const QPixmap* icon, const QString& text, int id);
    EBoxItem(const QPixmap* icon, const QString& text, const void* data);
    virtual ~EBoxItem();
    EBoxItem(const EBoxItem&) = delete;
    /// Items of this exact size come from a FixedPool: make and delete them on the GUI thread.
    static void* operator new(std::size_t size);
    static void operator delete(void* item, std::size_t size);
    EBoxItem& operator=(const EBoxItem&) = delete;

    /// The tool tip the list shows; the text unless a subclass says otherwise.
    virtual QString getToolTip() const;

    const QPixmap* icon() const { return m_icon; }
    void setIcon(const QPixmap* icon) { m_icon = icon; }
    const QString& text() const { return m_text; }
    void setText(const QString& text) { m_text = text; }

    /// The id and the data pointer share one word: setting either replaces the other.
    int id() const { return int(m_word); }
    void setId(int id) { m_word = std::intptr_t(id); }
    const void* data() const { return reinterpret_cast<const void*>(m_word); }
    void setData(const void* data) { m_word = reinterpret_cast<std::intptr_t>(data); }
    /// The shared word itself, as findId() and findData() compare it.
    std::intptr_t word() const { return m_word; }

private:
    const QPixmap* m_icon = nullptr;
    QString m_text;
    std::intptr_t m_word = 0;
};

/// Comparators with qsort's signature; the operands point to two EBoxItem*. Exact, case-sensitive
/// comparison of the texts' UTF-16 code units (not locale-aware): "B" sorts before "a".
COMMON_GUI_EXPORT int comparator_asc(const void* a, const void* b);
/// The reverse of comparator_asc.
COMMON_GUI_EXPORT int comparator_des(const void* a, const void* b);

/// The flat list model of EBox and EComboBox: an array of EBoxItem pointers that it owns.
///
/// Row notifications are sent only while no change batch is open; a batch
/// (beginChanges() … endChanges(), nestable) ends in exactly one model reset and switches the
/// view's repainting off while it is open.
class COMMON_GUI_EXPORT EBoxModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    /// \a view is the list the model serves (not owned): it is frozen during batches, and its
    /// selection drives the ...Selected operations.
    explicit EBoxModel(QAbstractItemView* view = nullptr);
    ~EBoxModel() override;

    QAbstractItemView* view() const { return m_view; }

    /// The items, for callers that fill or read the array directly (inside a change batch).
    SimpleVector<EBoxItem*>& items() { return m_items; }
    const SimpleVector<EBoxItem*>& items() const { return m_items; }
    int count() const { return m_items.count(); }
    /// The item at \a row, or null when \a row is out of range.
    EBoxItem* item(int row) const { return m_items.value(row); }

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    using QObject::parent;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    /// Column 1 is answered like column 0 although there is one column: callers rely on it.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Sorts by text; the column is ignored. Equal texts may change their relative order.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// Takes ownership of \a item and appends it.
    void append(EBoxItem* item);
    /// Appends every item of \a items without copying them and leaves \a items empty.
    void appendSteal(ObjectVector<EBoxItem>& items);
    /// Takes ownership of \a item and inserts it at \a pos. An out-of-range \a pos is still
    /// announced, but the item is not stored (it is deleted).
    void insert(int pos, EBoxItem* item);
    /// Inserts one new item per text at \a pos, pos+1, …; nothing for an empty list.
    void insert(int pos, const QStringList& texts);
    /// Deletes the item at \a row. The removal is announced even for a row that does not exist.
    void remove(int row);
    /// Deletes every item and frees the array.
    void removeAll();
    /// Takes the rows selected in the view out of the list. The items are NOT deleted: whoever
    /// still holds pointers to them owns them now.
    void removeSelected();
    /// Moves the item at \a from in front of the item at \a to (\a to may be count()); returns the
    /// item's new position, or -1 for an out-of-range position.
    int moveTo(int from, int to);
    /// Moves every selected block one row down (direction >= 0) or up (direction < 0) and keeps
    /// it selected; a block already at the end it moves towards stays and loses its selection.
    void moveSelected(int direction);
    /// Moves the selected items to the end of \a target and selects them there. Blocks arrive
    /// from the last to the first (rows 1-2 and 5 arrive as 5, 1, 2).
    void moveSelectedTo(EBoxModel* target);
    /// Position of the first item whose id word equals \a id, or -1.
    int findId(int id) const;
    /// Position of the first item whose data word equals \a data, or -1.
    int findData(const void* data) const;
    /// Sorts the item pointers with \a compare (qsort's signature, operands are EBoxItem**).
    void sort(int (*compare)(const void*, const void*));

    /// Opens a change batch (nestable): row notifications stop and the view stops repainting.
    void beginChanges();
    /// Closes a batch; closing the outermost one resets the model once and repaints the view.
    void endChanges();
    int changeDepth() const { return m_depth; }

private:
    struct Block
    {
        int top;
        int end;
    };
    QVector<Block> selectedBlocks() const;
    void openReset();
    void closeReset();
    void selectRows(int first, int end);
    void dropBlocks(const QVector<Block>& blocks);

    int m_depth = 0;
    QPointer<QAbstractItemView> m_view;
    SimpleVector<EBoxItem*> m_items;
};

/// A one-column list box that owns its EBoxModel.
///
/// \code
/// auto* box = new EBox(this);
/// box->setSelectionMode(QAbstractItemView::ExtendedSelection);
/// box->boxModel()->insert(0, QStringList{QStringLiteral("alpha"), QStringLiteral("beta")});
/// box->boxModel()->append(new EBoxItem(nullptr, QStringLiteral("gamma"), 42));
/// box->setSlotForDoubleClick(this, SLOT(openEntry(QModelIndex)));
/// \endcode
class COMMON_GUI_EXPORT EBox : public QListView
{
    Q_OBJECT
public:
    explicit EBox(QWidget* parent = nullptr);
    ~EBox() override;

    EBoxModel* boxModel() const { return m_model; }

    /// Adds the row to, or removes it from, the selection; other rows are untouched.
    void setSelected(int row, bool selected);
    /// Adds rows [first, end) to the selection.
    void selectRange(int first, int end);
    int selectedCount() const;

    /// Connectors: each connects one fixed signal to \a slot of \a receiver and returns whether
    /// the connection was made.
    /// doubleClicked(const QModelIndex&) of the list box.
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
    /// selectionChanged(const QItemSelection&, const QItemSelection&) of the selection model.
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
    /// currentRowChanged(const QModelIndex&, const QModelIndex&) of the selection model.
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
    /// customContextMenuRequested(const QPoint&); switches to a custom context menu.
    bool setSlotForContextMenu(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForContextMenu(const Receiver* receiver, Slot slot)
    {
        if (!receiver)
            return false;
        setContextMenuPolicy(Qt::CustomContextMenu);
        return bool(connect(this, &QWidget::customContextMenuRequested, receiver, slot));
    }

    /// Also reaches rows that the batched layout has not placed yet.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

private:
    static constexpr int layoutBatch = 10000;
    EBoxModel* m_model = nullptr;
};
