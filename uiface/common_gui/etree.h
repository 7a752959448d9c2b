// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QList>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QVector>

#include <type_traits>

class EEnumerator;
class QSettings;

/// A tree row: shown in the library's tree font, with one user-data pointer, widgets that may be
/// given before the row is in a tree, and its subtree's expanded state as a list of flags.
class COMMON_GUI_EXPORT ETreeItem : public QTreeWidgetItem
{
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    /// Deletes the widgets still pending in the item (never handed to a tree).
    ~ETreeItem() override;

    /// The tree font for Qt::FontRole, QTreeWidgetItem::data for every other role.
    QVariant data(int column, int role) const override;

    void setUserData(void* data);
    /// The user-data pointer, null when none was stored.
    void* getUserData() const;

    /// Puts \a widget into the cell (null removes it). In a tree it goes to the tree at once;
    /// otherwise the item keeps it pending and owns it: a different pending widget is deleted.
    /// A widget for a negative column is deleted at once.
    void setCustomWidget(int column, QWidget* widget);
    /// Hands the pending widgets of this item and of its subtree to the tree; nothing outside a tree.
    void updateCustomWidgets();
    /// Every column's tool tip becomes its display text.
    void toolTipsAsTexts();

    /// Appends the expanded flags of the subtree, this item first, in pre-order.
    void saveExpandState(QVector<bool>& states) const;
    /// Expands this item by states[0] and every child by states[1], recursively: each depth below
    /// this item reads one flag, states[depth]. This is not the order saveExpandState writes; for
    /// chains of single children the two agree, and saved files depend on this reading.
    /// \note Reads up to the subtree's depth without a bound: use the QVector form for saved data.
    void loadExpandState(const bool* states);
    /// The same, but does nothing and returns false when \a states has fewer flags than the
    /// subtree has levels (an empty or damaged saved state).
    bool loadExpandState(const QVector<bool>& states);

    /// The process-wide font of tree items: the default font as it resolved at the first call.
    static QFont itemFont();

private:
    static void handOver(QTreeWidgetItem* item, QTreeWidget* tree);
    static void saveStates(const QTreeWidgetItem* item, QVector<bool>& states);
    static void loadStates(QTreeWidgetItem* item, const bool* states);
    static int depthBelow(const QTreeWidgetItem* item);
};

/// A tree list with saved header layout, row selection, shown and hidden columns, and cells
/// that hold a list box or a combo box filled from an EEnumerator.
///
/// \code
/// const QString name = QStringLiteral("Name"), value = QStringLiteral("Value");
/// const QString* headers[] = {&name, &value, nullptr};
/// auto* tree = new ETree(headers, this);
/// auto* host = new ETreeItem(QStringList{QStringLiteral("gateway")});
/// tree->addTopLevelItem(host);
/// tree->addCombo(host, 1, protocols);        // an EEnumerator with several values
/// {
///     ESettings s(QStringLiteral("HostTree"));
///     tree->loadState(s, "Columns");           // the key is always "HeaderState"
/// }
/// tree->setSlotForDoubleClick(this, &HostPage::openHost);
/// \endcode
class COMMON_GUI_EXPORT ETree : public QTreeWidget
{
    Q_OBJECT
public:
    /// \a headers is a null-terminated array of title pointers, or null for no titles.
    explicit ETree(const QString** headers, QWidget* parent = nullptr);
    ~ETree() override;

    /// Writes the header layout under "HeaderState" in the current group.
    /// \note \a key is not used: every tree writes "HeaderState".
    void saveState(QSettings& settings, const char* key);
    /// Restores the header layout from "HeaderState" (\a key unused). False, and the header left
    /// as it is, when nothing usable was saved (missing, empty or damaged).
    bool loadState(QSettings& settings, const char* key);

    /// Makes \a item current and its whole row the only selection.
    void selectRow(QTreeWidgetItem* item);
    /// Shows or hides a column; a column that does not exist is ignored.
    void showColumn(int column, bool show);
    /// Repaints the row of \a index, every column.
    void updateRow(const QModelIndex& index);
    void updateCurrentRow();

    /// Adds the item, then hands its subtree's pending widgets to the tree.
    void addTopLevelItem(QTreeWidgetItem* item);
    /// Adds the items with repainting off, then hands their pending widgets to the tree.
    void addTopLevelItems(const QList<QTreeWidgetItem*>& items);

    /// Fills the cell from \a values: no value empties it, one value becomes the cell's text and
    /// icon, several values a list box (the cell text is the enumerator's list text).
    void addList(QTreeWidgetItem* item, int column, EEnumerator& values);
    /// The same with a combo box for several values.
    void addCombo(QTreeWidgetItem* item, int column, EEnumerator& values);

    /// itemDoubleClicked(QTreeWidgetItem*, int); a double click no longer expands or collapses.
    bool setSlotForDoubleClick(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForDoubleClick(const Receiver* receiver, Slot slot)
    {
        setExpandsOnDoubleClick(false);
        return bool(connect(this, &QTreeWidget::itemDoubleClicked, receiver, slot));
    }
    /// currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*).
    bool setSlotForChangeCurrent(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeCurrent(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QTreeWidget::currentItemChanged, receiver, slot));
    }
    /// customContextMenuRequested(const QPoint&); switches to a custom context menu.
    bool setSlotForContextMenu(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForContextMenu(const Receiver* receiver, Slot slot)
    {
        setContextMenuPolicy(Qt::CustomContextMenu);
        return bool(connect(this, &QWidget::customContextMenuRequested, receiver, slot));
    }

private:
    template <class Make>
    void fillCell(QTreeWidgetItem* item, int column, EEnumerator& values, Make make);
    static void putWidget(QTreeWidgetItem* item, int column, QWidget* widget);
};
