// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETree::addTopLevelItems against QTreeWidget::addTopLevelItems for rows of 3 columns, and filling
// list cells from a 20-value enumerator (ETree::addList) against a QListWidget per cell by hand.
#include "benchutil.h"

#include "ecombobox.h"
#include "etree.h"

#include <QListWidget>
#include <QTreeWidget>

#include <memory>

namespace {

void treeSizes(benchmark::internal::Benchmark* b)
{
    b->Arg(CgBench::smoke() ? 1000 : 100000)->Unit(benchmark::kMillisecond);
}

void listCellSizes(benchmark::internal::Benchmark* b)
{
    b->Arg(CgBench::smoke() ? 50 : 1000)->Unit(benchmark::kMillisecond);
}

QStringList rowTexts(int r)
{
    return QStringList{QStringLiteral("host-%1").arg(r), QStringLiteral("10.0.%1.%2").arg(r / 256).arg(r % 256),
                       QStringLiteral("up")};
}

template <class Tree, class Item, class Add>
void addRounds(benchmark::State& state, Add add)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const QString a = QStringLiteral("Name"), b = QStringLiteral("Address"), c = QStringLiteral("State");
        const QString* headers[] = {&a, &b, &c, nullptr};
        std::unique_ptr<Tree> tree;
        if constexpr (std::is_same<Tree, ETree>::value)
            tree.reset(new ETree(headers));
        else {
            tree.reset(new Tree);
            tree->setHeaderLabels({a, b, c});
        }
        QList<QTreeWidgetItem*> items;
        items.reserve(n);
        for (int r = 0; r < n; ++r)
            items << new Item(rowTexts(r));
        state.ResumeTiming();
        add(*tree, items);
        state.PauseTiming();
        tree.reset();
        CgBench::settleHeap();
        state.ResumeTiming();
    }
    state.counters["time_per_row"] = benchmark::Counter(double(n), benchmark::Counter::kIsIterationInvariantRate |
                                                                        benchmark::Counter::kInvert);
}

void BM_AddTopLevelItems_ETree(benchmark::State& state)
{
    addRounds<ETree, ETreeItem>(state, [](ETree& t, const QList<QTreeWidgetItem*>& items) { t.addTopLevelItems(items); });
}

void BM_AddTopLevelItems_QTreeWidget(benchmark::State& state)
{
    addRounds<QTreeWidget, QTreeWidgetItem>(
        state, [](QTreeWidget& t, const QList<QTreeWidgetItem*>& items) { t.addTopLevelItems(items); });
}

class Twenty : public EEnumerator
{
public:
    const QPixmap* getIcon() override { return nullptr; }
    QString getText() override { return QStringLiteral("value %1").arg(at); }
    void* getData() override { return nullptr; }
    int getId() override { return at; }
    bool next() override { return ++at < 20; }
    QString getListText() override { return QStringLiteral("20 values"); }

private:
    int at = -1;
};

template <class Tree, class Fill>
void listCellRounds(benchmark::State& state, Fill fill)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<Tree>(nullptr);
        tree->setColumnCount(2);
        QList<QTreeWidgetItem*> items;
        for (int r = 0; r < n; ++r)
            items << new ETreeItem(QStringList{QStringLiteral("row %1").arg(r)});
        tree->addTopLevelItems(items);
        state.ResumeTiming();
        for (QTreeWidgetItem* item : items)
            fill(*tree, item);
        state.PauseTiming();
        tree.reset();
        CgBench::settleHeap();
        state.ResumeTiming();
    }
    state.counters["time_per_cell"] = benchmark::Counter(double(n), benchmark::Counter::kIsIterationInvariantRate |
                                                                         benchmark::Counter::kInvert);
}

void BM_ListCells_ETree_addList(benchmark::State& state)
{
    listCellRounds<ETree>(state, [](ETree& tree, QTreeWidgetItem* item) {
        Twenty values;
        tree.addList(item, 1, values);
    });
}

void BM_ListCells_QTreeWidget_QListWidget(benchmark::State& state)
{
    listCellRounds<ETree>(state, [](ETree& tree, QTreeWidgetItem* item) {
        auto* list = new QListWidget;
        list->setAutoFillBackground(true);
        for (int v = 0; v < 20; ++v)
            list->addItem(QStringLiteral("value %1").arg(v));
        item->setText(1, QStringLiteral("20 values"));
        tree.QTreeWidget::setItemWidget(item, 1, list);
    });
}

} // namespace

BENCHMARK(BM_AddTopLevelItems_ETree)->Apply(treeSizes);
BENCHMARK(BM_AddTopLevelItems_QTreeWidget)->Apply(treeSizes);
BENCHMARK(BM_ListCells_ETree_addList)->Apply(listCellSizes);
BENCHMARK(BM_ListCells_QTreeWidget_QListWidget)->Apply(listCellSizes);
