// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETableWidget against QTableWidget: filling rows x 3 cells (our addRows + setCell, Qt's setRowCount +
// setItem) with the heap each leaves in use per cell, and sorting by a column.
#include "benchutil.h"

#include "etablewidget.h"
#include "etablewidgetmodel.h"

#include <QTableWidget>

#include <memory>
#include <vector>

namespace {

constexpr int columns = 3;

void tableSizes(benchmark::internal::Benchmark* b)
{
    b->Arg(CgBench::smoke() ? 1000 : 100000)->Unit(benchmark::kMillisecond);
}

// A 9-character text per cell, "c0012345", built without formatting so every contender pays the same.
QString cellText(int value, char column)
{
    QString s(9, Qt::Uninitialized);
    QChar* p = s.data();
    p[0] = QLatin1Char(column);
    p[1] = QLatin1Char('-');
    for (int k = 8; k >= 2; --k) {
        p[k] = QLatin1Char(char('0' + value % 10));
        value /= 10;
    }
    return s;
}

using CgBench::shuffled;

std::unique_ptr<ETableWidget> fillOurs(int n)
{
    const std::vector<int>& order = shuffled(n);
    auto table = std::make_unique<ETableWidget>(nullptr, columns, nullptr);
    table->widgetModel()->addRows(n);
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < columns; ++c)
            table->setCell(r, c, cellText(order[size_t(r)], char('a' + c)), nullptr, nullptr);
    return table;
}

std::unique_ptr<QTableWidget> fillQt(int n)
{
    const std::vector<int>& order = shuffled(n);
    auto table = std::make_unique<QTableWidget>(n, columns);
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < columns; ++c)
            table->setItem(r, c, new QTableWidgetItem(cellText(order[size_t(r)], char('a' + c))));
    return table;
}

template <class Fill>
void fillRounds(benchmark::State& state, Fill fill)
{
    const int n = int(state.range(0));
    shuffled(n);
    long bytes = -1;
    for (auto _ : state) {
        const long before = CgBench::heapInUse();
        auto filled = fill(n);
        state.PauseTiming();
        bytes = CgBench::heapInUse() - before;
        filled.reset();
        CgBench::settleHeap();
        state.ResumeTiming();
    }
    state.counters["bytes_per_cell"] = double(bytes) / (double(n) * columns);
    state.counters["time_per_cell"] = benchmark::Counter(double(n) * columns,
                                                         benchmark::Counter::kIsIterationInvariantRate |
                                                             benchmark::Counter::kInvert);
}

void BM_Fill_ETableWidget(benchmark::State& state)
{
    fillRounds(state, fillOurs);
}

void BM_Fill_QTableWidget(benchmark::State& state)
{
    fillRounds(state, fillQt);
}

template <class Fill, class Sort>
void sortRounds(benchmark::State& state, Fill fill, Sort sort)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto table = fill(n);
        state.ResumeTiming();
        sort(*table);
        state.PauseTiming();
        table.reset();
        CgBench::settleHeap();
        state.ResumeTiming();
    }
}

void BM_Sort_ETableWidget(benchmark::State& state)
{
    sortRounds(state, fillOurs, [](ETableWidget& t) { t.widgetModel()->sort(1, Qt::AscendingOrder); });
}

void BM_Sort_QTableWidget(benchmark::State& state)
{
    sortRounds(state, fillQt, [](QTableWidget& t) { t.sortItems(1, Qt::AscendingOrder); });
}

} // namespace

BENCHMARK(BM_Fill_ETableWidget)->Apply(tableSizes);
BENCHMARK(BM_Fill_QTableWidget)->Apply(tableSizes);
BENCHMARK(BM_Sort_ETableWidget)->Apply(tableSizes);
BENCHMARK(BM_Sort_QTableWidget)->Apply(tableSizes);
