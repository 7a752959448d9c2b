// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The list model and list box against the Qt classes an application would pick instead:
// QStandardItemModel, QStringListModel, QListWidget and QListView.
//
// Memory per row is the growth of the heap's bytes in use (glibc mallinfo2().uordblks) while the
// filled model is alive. It counts every allocation of the process, operator new and malloc alike
// (Qt allocates string data with malloc), without replacing the global allocator of the binary.
#include "benchutil.h"

#include "ebox.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QListView>
#include <QListWidget>
#include <QStandardItemModel>
#include <QStringListModel>

#include <algorithm>
#include <malloc.h>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace {

using CgBench::heapInUse;
using CgBench::settleHeap;

// An 11-character text, "row 0012345", built without formatting so the texts cost the same for
// every contender.
QString rowText(int value)
{
    QString s(11, Qt::Uninitialized);
    QChar* p = s.data();
    p[0] = QLatin1Char('r');
    p[1] = QLatin1Char('o');
    p[2] = QLatin1Char('w');
    p[3] = QLatin1Char(' ');
    for (int k = 10; k >= 4; --k) {
        p[k] = QLatin1Char(char('0' + value % 10));
        value /= 10;
    }
    return s;
}

using CgBench::shuffled;

void perRow(benchmark::State& state, long bytes)
{
    const double n = double(state.range(0));
    state.counters["time_per_row"] =
        benchmark::Counter(n, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    if (bytes >= 0)
        state.counters["bytes_per_row"] = double(bytes) / n;
}

// ------------------------------------------------------------------------------------- filling

// Times fill(n), which returns the filled container, and counts the heap it left in use. Each
// round frees its container and trims the heap outside the timed part.
template <class Fill>
void fillRounds(benchmark::State& state, Fill fill)
{
    const int n = int(state.range(0));
    long bytes = -1;
    for (auto _ : state) {
        const long before = heapInUse();
        auto filled = fill(n);
        state.PauseTiming();
        bytes = heapInUse() - before;
        filled.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, bytes);
}

void BM_Fill_EBoxModel_Batch(benchmark::State& state)
{
    fillRounds(state, [](int n) {
        auto model = std::make_unique<EBoxModel>();
        model->beginChanges();
        for (int i = 0; i < n; ++i)
            model->append(new EBoxItem(rowText(i)));
        model->endChanges();
        return model;
    });
}

void BM_Fill_EBoxModel_AppendSteal(benchmark::State& state)
{
    fillRounds(state, [](int n) {
        auto model = std::make_unique<EBoxModel>();
        ObjectVector<EBoxItem> items;
        items.expand(n);
        for (int i = 0; i < n; ++i)
            items.append(new EBoxItem(rowText(i)));
        model->appendSteal(items);
        return model;
    });
}

void BM_Fill_QStandardItemModel(benchmark::State& state)
{
    fillRounds(state, [](int n) {
        auto model = std::make_unique<QStandardItemModel>();
        for (int i = 0; i < n; ++i)
            model->appendRow(new QStandardItem(rowText(i)));
        return model;
    });
}

void BM_Fill_QStringListModel(benchmark::State& state)
{
    fillRounds(state, [](int n) {
        auto model = std::make_unique<QStringListModel>();
        QStringList texts;
        texts.reserve(n);
        for (int i = 0; i < n; ++i)
            texts.append(rowText(i));
        model->setStringList(texts);
        return model;
    });
}

void BM_Fill_QListWidget(benchmark::State& state)
{
    const int n = int(state.range(0));
    long bytes = -1;
    for (auto _ : state) {
        state.PauseTiming();
        const long before = heapInUse();
        auto list = std::make_unique<QListWidget>();
        const long widget = heapInUse() - before;
        state.ResumeTiming();
        for (int i = 0; i < n; ++i)
            list->addItem(rowText(i));
        state.PauseTiming();
        bytes = heapInUse() - before - widget;
        list.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, bytes);
}

// ------------------------------------------------------------------------------------- sorting

void BM_Sort_EBoxModel(benchmark::State& state)
{
    const int n = int(state.range(0));
    const std::vector<int>& values = shuffled(n);
    for (auto _ : state) {
        state.PauseTiming();
        auto model = std::make_unique<EBoxModel>();
        ObjectVector<EBoxItem> items;
        for (int v : values)
            items.append(new EBoxItem(rowText(v)));
        model->appendSteal(items);
        state.ResumeTiming();
        model->sort(0, Qt::AscendingOrder);
        state.PauseTiming();
        model.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

void BM_Sort_QStandardItemModel(benchmark::State& state)
{
    const int n = int(state.range(0));
    const std::vector<int>& values = shuffled(n);
    for (auto _ : state) {
        state.PauseTiming();
        auto model = std::make_unique<QStandardItemModel>();
        for (int v : values)
            model->appendRow(new QStandardItem(rowText(v)));
        state.ResumeTiming();
        model->sort(0, Qt::AscendingOrder);
        state.PauseTiming();
        // Deleting a sorted QStandardItemModel looks every item up by a linear search (the
        // items' cached rows are stale), which takes many minutes on a million rows: take the
        // items out first.
        qDeleteAll(model->takeColumn(0));
        model.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

void BM_Sort_QStringListModel(benchmark::State& state)
{
    const int n = int(state.range(0));
    const std::vector<int>& values = shuffled(n);
    for (auto _ : state) {
        state.PauseTiming();
        QStringList texts;
        for (int v : values)
            texts.append(rowText(v));
        auto model = std::make_unique<QStringListModel>(texts);
        texts.clear();
        state.ResumeTiming();
        model->sort(0, Qt::AscendingOrder);
        state.PauseTiming();
        model.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

// ------------------------------------------------------------------------------- first paint

// Show the list and let it lay out and paint its first frame.
void showAndPaint(QAbstractItemView* view)
{
    view->resize(320, 480);
    view->show();
    QApplication::processEvents();
    view->viewport()->repaint();
    benchmark::DoNotOptimize(view->visualRect(view->model()->index(0, 0)));
}

void BM_FirstPaint_EBox(benchmark::State& state)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto box = std::make_unique<EBox>();
        ObjectVector<EBoxItem> items;
        for (int i = 0; i < n; ++i)
            items.append(new EBoxItem(rowText(i)));
        box->boxModel()->appendSteal(items);
        state.ResumeTiming();
        showAndPaint(box.get());
        state.PauseTiming();
        box.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

void BM_FirstPaint_QListView_QStringListModel(benchmark::State& state)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        QStringList texts;
        for (int i = 0; i < n; ++i)
            texts.append(rowText(i));
        QStringListModel model(texts);
        auto view = std::make_unique<QListView>();
        view->setModel(&model);
        state.ResumeTiming();
        showAndPaint(view.get());
        state.PauseTiming();
        view.reset();
        settleHeap();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

// ----------------------------------------------------------------------- moving and removing

constexpr int kBlocks = 1000;

// kBlocks blocks (fewer on a short smoke-run list) of n / kBlocks / 2 rows spread evenly over the
// list: half the rows, scattered.
QItemSelection scatteredBlocks(QAbstractItemModel* model, int n)
{
    QItemSelection selection;
    const int blocks = std::min(kBlocks, n / 10);
    const int stride = n / blocks;
    const int size = stride / 2;
    for (int top = stride / 4; top + size <= n && selection.size() < blocks; top += stride)
        selection.append(QItemSelectionRange(model->index(top, 0), model->index(top + size - 1, 0)));
    return selection;
}

// A list box with the scattered blocks selected; every item it ever held is kept in all, so that
// removed items can be put back and deleted at the end.
struct BoxFixture
{
    explicit BoxFixture(int n)
    {
        box.setSelectionMode(QAbstractItemView::ExtendedSelection);
        all.reserve(size_t(n));
        for (int i = 0; i < n; ++i)
            all.push_back(new EBoxItem(rowText(i)));
        refill();
    }
    ~BoxFixture()
    {
        box.boxModel()->items().clear();
        for (EBoxItem* item : all)
            delete item;
    }
    void refill()
    {
        EBoxModel* model = box.boxModel();
        model->beginChanges();
        model->items().clear();
        model->items().expand(int(all.size()));
        for (EBoxItem* item : all)
            model->items().append(item);
        model->endChanges();
        box.selectionModel()->select(scatteredBlocks(model, int(all.size())), QItemSelectionModel::Select);
    }
    EBox box;
    std::vector<EBoxItem*> all;
};

// A QListView over a QStringListModel with the scattered blocks selected.
struct QtList
{
    explicit QtList(int n)
    {
        for (int i = 0; i < n; ++i)
            texts.append(rowText(i));
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setModel(&model);
        refill();
    }
    void refill()
    {
        model.setStringList(texts);
        view.selectionModel()->select(scatteredBlocks(&model, texts.size()), QItemSelectionModel::Select);
    }
    QStringList texts;
    QStringListModel model;
    QListView view;
};

// Every round moves all blocks by one row, down and up by turns, so one list serves every round.
void BM_MoveSelected_EBox(benchmark::State& state)
{
    BoxFixture fixture(int(state.range(0)));
    int direction = 1;
    for (auto _ : state) {
        fixture.box.boxModel()->moveSelected(direction);
        direction = -direction;
    }
    state.counters["selected_rows"] = fixture.box.selectedCount();
    perRow(state, -1);
}

// The same with Qt's own row moves: one moveRows per block, then the moved blocks reselected.
void BM_MoveSelected_QStringListModel(benchmark::State& state)
{
    QtList list(int(state.range(0)));
    int direction = 1;
    for (auto _ : state) {
        const QItemSelection blocks = list.view.selectionModel()->selection();
        QItemSelection moved;
        for (const QItemSelectionRange& r : blocks) {
            if (direction > 0)
                list.model.moveRows(QModelIndex(), r.bottom() + 1, 1, QModelIndex(), r.top());
            else
                list.model.moveRows(QModelIndex(), r.top() - 1, 1, QModelIndex(), r.bottom() + 1);
            moved.append(QItemSelectionRange(list.model.index(r.top() + direction, 0),
                                             list.model.index(r.bottom() + direction, 0)));
        }
        list.view.selectionModel()->select(moved, QItemSelectionModel::ClearAndSelect);
        direction = -direction;
    }
    state.counters["selected_rows"] = list.view.selectionModel()->selectedRows().size();
    perRow(state, -1);
}

void BM_RemoveSelectedHalf_EBox(benchmark::State& state)
{
    BoxFixture fixture(int(state.range(0)));
    for (auto _ : state) {
        fixture.box.boxModel()->removeSelected();
        state.PauseTiming();
        fixture.refill();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

// Qt's way: removeRows per selected block, from the last to the first.
void BM_RemoveSelectedHalf_QStringListModel(benchmark::State& state)
{
    QtList list(int(state.range(0)));
    for (auto _ : state) {
        QItemSelection selection = list.view.selectionModel()->selection();
        std::sort(selection.begin(), selection.end(),
                  [](const QItemSelectionRange& a, const QItemSelectionRange& b) { return a.top() > b.top(); });
        for (const QItemSelectionRange& r : qAsConst(selection))
            list.model.removeRows(r.top(), r.height());
        state.PauseTiming();
        list.refill();
        state.ResumeTiming();
    }
    perRow(state, -1);
}

} // namespace

BENCHMARK(BM_Fill_EBoxModel_Batch)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fill_EBoxModel_AppendSteal)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fill_QStandardItemModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fill_QStringListModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fill_QListWidget)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_EBoxModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_QStandardItemModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_QStringListModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstPaint_EBox)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstPaint_QListView_QStringListModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveSelected_EBox)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
// Qt's row moves take minutes on a million rows: the comparison stops at 100,000.
BENCHMARK(BM_MoveSelected_QStringListModel)
    ->Apply([](benchmark::internal::Benchmark* b) {
        if (CgBench::smoke())
            b->Arg(1000);
        else
            b->Arg(10000)->Arg(100000);
    })
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveSelectedHalf_EBox)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveSelectedHalf_QStringListModel)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
