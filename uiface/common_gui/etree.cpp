// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etree.h"

#include "ebox.h"
#include "ecombobox.h"

#include <QFontInfo>
#include <QHeaderView>
#include <QIcon>
#include <QPixmap>
#include <QSettings>

#include <algorithm>

// ---------------------------------------------------------------- ETreeItem

namespace {

QFont treeFont;
bool treeFontResolved = false;

// Widgets waiting in items outside a tree, process-wide. While it is 0 handing widgets to a tree
// has nothing to find, so adding many plain rows costs no extra walk over them.
int pendingWidgets = 0;

const QLatin1String headerStateKey("HeaderState");

QWidget* pendingAt(const QTreeWidgetItem* item, int column)
{
    const QVariant v = item->QTreeWidgetItem::data(column, Qt::UserRole);
    return v.userType() == QMetaType::VoidStar ? static_cast<QWidget*>(v.value<void*>()) : nullptr;
}

} // namespace

QFont ETreeItem::itemFont()
{
    if (!treeFontResolved) {
        const QFontInfo info{QFont()};
        treeFont = QFont(info.family(), info.pointSize(), info.weight(), info.italic());
        treeFontResolved = true;
    }
    return treeFont;
}

ETreeItem::~ETreeItem()
{
    if (pendingWidgets == 0)
        return;
    for (int c = 0, n = columnCount(); c < n; ++c) {
        if (QWidget* w = pendingAt(this, c)) {
            delete w;
            --pendingWidgets;
        }
    }
}

QVariant ETreeItem::data(int column, int role) const
{
    if (role == Qt::FontRole)
        return itemFont();
    return QTreeWidgetItem::data(column, role);
}

void ETreeItem::setUserData(void* data)
{
    setData(0, Qt::UserRole + 1, QVariant::fromValue(data));
}

void* ETreeItem::getUserData() const
{
    const QVariant v = QTreeWidgetItem::data(0, Qt::UserRole + 1);
    return v.userType() == QMetaType::VoidStar ? v.value<void*>() : nullptr;
}

void ETreeItem::setCustomWidget(int column, QWidget* widget)
{
    if (column < 0) {
        delete widget; // handed over all the same: nobody else would delete it
        return;
    }
    if (widget)
        widget->setAutoFillBackground(true);
    if (QTreeWidget* tree = treeWidget()) {
        tree->setItemWidget(this, column, widget);
        return;
    }
    QWidget* pending = pendingAt(this, column);
    if (pending == widget)
        return;
    if (pending) {
        delete pending;
        --pendingWidgets;
    }
    if (widget)
        ++pendingWidgets;
    setData(column, Qt::UserRole, QVariant::fromValue(static_cast<void*>(widget)));
}

void ETreeItem::updateCustomWidgets()
{
    QTreeWidget* tree = treeWidget();
    if (tree && pendingWidgets > 0)
        handOver(this, tree);
}

void ETreeItem::handOver(QTreeWidgetItem* item, QTreeWidget* tree)
{
    for (int c = 0, n = item->columnCount(); c < n; ++c) {
        if (QWidget* w = pendingAt(item, c)) {
            item->setData(c, Qt::UserRole, QVariant::fromValue(static_cast<void*>(nullptr)));
            --pendingWidgets;
            tree->setItemWidget(item, c, w);
        }
    }
    for (int i = 0, n = item->childCount(); i < n; ++i)
        handOver(item->child(i), tree);
}

void ETreeItem::toolTipsAsTexts()
{
    for (int c = 0, n = columnCount(); c < n; ++c)
        setData(c, Qt::ToolTipRole, QTreeWidgetItem::data(c, Qt::DisplayRole).toString());
}

void ETreeItem::saveExpandState(QVector<bool>& states) const
{
    saveStates(this, states);
}

void ETreeItem::saveStates(const QTreeWidgetItem* item, QVector<bool>& states)
{
    states.append(item->treeWidget() ? item->isExpanded() : false);
    for (int i = 0, n = item->childCount(); i < n; ++i)
        saveStates(item->child(i), states);
}

void ETreeItem::loadExpandState(const bool* states)
{
    loadStates(this, states);
}

void ETreeItem::loadStates(QTreeWidgetItem* item, const bool* states)
{
    if (item->treeWidget())
        item->setExpanded(states[0]);
    // Every child reads the flag right after its parent's: depth d takes states[d].
    for (int i = 0, n = item->childCount(); i < n; ++i)
        loadStates(item->child(i), states + 1);
}

bool ETreeItem::loadExpandState(const QVector<bool>& states)
{
    if (states.size() <= depthBelow(this))
        return false;
    loadStates(this, states.constData());
    return true;
}

int ETreeItem::depthBelow(const QTreeWidgetItem* item)
{
    int deepest = 0;
    for (int i = 0, n = item->childCount(); i < n; ++i)
        deepest = std::max(deepest, depthBelow(item->child(i)) + 1);
    return deepest;
}

// ---------------------------------------------------------------- ETree

ETree::ETree(const QString** headers, QWidget* parent)
    : QTreeWidget(parent)
{
    if (!headers)
        return;
    QStringList labels;
    for (const QString** h = headers; *h; ++h)
        labels.append(**h);
    setHeaderLabels(labels);
}

ETree::~ETree() = default;

void ETree::saveState(QSettings& settings, const char*)
{
    settings.setValue(headerStateKey, header()->saveState());
}

bool ETree::loadState(QSettings& settings, const char*)
{
    const QByteArray state = settings.value(headerStateKey).toByteArray();
    if (state.isEmpty() || !header()->restoreState(state))
        return false;
    header()->reset();
    return true;
}

void ETree::selectRow(QTreeWidgetItem* item)
{
    setCurrentItem(item, 0,
                   QItemSelectionModel::Clear | QItemSelectionModel::Select | QItemSelectionModel::Current
                       | QItemSelectionModel::Rows);
}

void ETree::showColumn(int column, bool show)
{
    if (column < 0 || column >= header()->count())
        return;
    header()->setSectionHidden(column, !show);
}

void ETree::updateRow(const QModelIndex& index)
{
    if (!index.isValid() || index.model() != model())
        return;
    dataChanged(index.sibling(index.row(), 0), index.sibling(index.row(), columnCount() - 1));
}

void ETree::updateCurrentRow()
{
    updateRow(currentIndex());
}

void ETree::addTopLevelItem(QTreeWidgetItem* item)
{
    QTreeWidget::addTopLevelItem(item);
    if (auto* e = dynamic_cast<ETreeItem*>(item))
        e->updateCustomWidgets();
}

void ETree::addTopLevelItems(const QList<QTreeWidgetItem*>& items)
{
    const bool updates = updatesEnabled();
    setUpdatesEnabled(false);
    QTreeWidget::addTopLevelItems(items);
    if (pendingWidgets > 0) {
        for (QTreeWidgetItem* item : items) {
            if (auto* e = dynamic_cast<ETreeItem*>(item))
                e->updateCustomWidgets();
        }
    }
    setUpdatesEnabled(updates);
}

void ETree::putWidget(QTreeWidgetItem* item, int column, QWidget* widget)
{
    if (auto* e = dynamic_cast<ETreeItem*>(item)) {
        e->setCustomWidget(column, widget);
    } else if (QTreeWidget* tree = item->treeWidget()) {
        if (widget)
            widget->setAutoFillBackground(true);
        tree->setItemWidget(item, column, widget);
    } else {
        delete widget; // a plain item outside a tree has nowhere to keep it
    }
}

template <class Make>
void ETree::fillCell(QTreeWidgetItem* item, int column, EEnumerator& values, Make make)
{
    if (!item || column < 0)
        return;
    putWidget(item, column, nullptr);
    if (!values.next()) {
        if (QTreeWidget* tree = item->treeWidget())
            tree->removeItemWidget(item, column);
        item->setData(column, Qt::DisplayRole, QString());
        item->setData(column, Qt::DecorationRole, QIcon());
        return;
    }
    const QPixmap* icon = values.getIcon();
    const QString text = values.getText();
    if (!values.next()) {
        if (QTreeWidget* tree = item->treeWidget())
            tree->removeItemWidget(item, column);
        item->setData(column, Qt::DisplayRole, text);
        item->setData(column, Qt::DecorationRole, icon ? QIcon(*icon) : QIcon());
        return;
    }
    ObjectVector<EBoxItem> entries;
    entries.append(new EBoxItem(icon, text, 0));
    do
        entries.append(new EBoxItem(values.getIcon(), values.getText(), 0));
    while (values.next());
    QWidget* widget = make(entries);
    widget->setAutoFillBackground(true);
    item->setData(column, Qt::DecorationRole, QIcon());
    item->setData(column, Qt::DisplayRole, values.getListText());
    putWidget(item, column, widget);
}

void ETree::addList(QTreeWidgetItem* item, int column, EEnumerator& values)
{
    fillCell(item, column, values, [](ObjectVector<EBoxItem>& entries) {
        auto* box = new EBox;
        box->boxModel()->beginChanges();
        box->boxModel()->appendSteal(entries);
        box->boxModel()->endChanges();
        return box;
    });
}

void ETree::addCombo(QTreeWidgetItem* item, int column, EEnumerator& values)
{
    fillCell(item, column, values, [](ObjectVector<EBoxItem>& entries) {
        auto* combo = new EComboBox;
        combo->beginChanges();
        combo->boxModel()->appendSteal(entries);
        combo->endChanges();
        return combo;
    });
}

bool ETree::setSlotForDoubleClick(QObject* receiver, const char* slot)
{
    setExpandsOnDoubleClick(false);
    return bool(connect(this, SIGNAL(itemDoubleClicked(QTreeWidgetItem*, int)), receiver, slot));
}

bool ETree::setSlotForChangeCurrent(QObject* receiver, const char* slot)
{
    return bool(connect(this, SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)), receiver, slot));
}

bool ETree::setSlotForContextMenu(QObject* receiver, const char* slot)
{
    setContextMenuPolicy(Qt::CustomContextMenu);
    return bool(connect(this, SIGNAL(customContextMenuRequested(const QPoint&)), receiver, slot));
}
