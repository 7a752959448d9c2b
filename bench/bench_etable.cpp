// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETable::find against QAbstractItemModel::match (Qt::MatchContains, every column) on the same model,
// for a text that is in no cell, so both walk the whole table.
#include "benchutil.h"

#include "etable.h"

#include <map>
#include <memory>
#include <vector>

namespace {

constexpr int columns = 3;

class HostModel : public ETableModel
{
public:
    explicit HostModel(int rows)
    {
        cells.reserve(size_t(rows) * columns);
        const QString statuses[] = {QStringLiteral("up"), QStringLiteral("down"), QStringLiteral("sub-net unreachable")};
        for (int r = 0; r < rows; ++r) {
            cells.push_back(QStringLiteral("host-%1.example.net").arg(r));
            cells.push_back(QStringLiteral("10.%1.%2.%3").arg((r >> 16) & 255).arg((r >> 8) & 255).arg(r & 255));
            cells.push_back(statuses[r % 3]);
        }
    }
    int getRowCount() const override { return int(cells.size() / columns); }
    int getColumnCount() const override { return columns; }
    QString getCell(int row, int column) const override { return cells[size_t(row) * columns + size_t(column)]; }
    QString getHeader(int column) const override { return QString::number(column); }

private:
    std::vector<QString> cells;
};

// One model per size for the whole run: building a million rows takes longer than searching them.
HostModel& modelFor(int rows)
{
    static std::map<int, std::unique_ptr<HostModel>> models;
    std::unique_ptr<HostModel>& m = models[rows];
    if (!m)
        m.reset(new HostModel(rows));
    return *m;
}

void perRow(benchmark::State& state)
{
    state.counters["per_row"] = benchmark::Counter(double(state.range(0)),
                                                   benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

void runFind(benchmark::State& state, const QString& text, bool wholeWord)
{
    HostModel& model = modelFor(int(state.range(0)));
    ETable table(&model, false);
    for (auto _ : state) {
        const bool found = table.find(text, Qt::CaseInsensitive, wholeWord, true, 1, true);
        benchmark::DoNotOptimize(found);
    }
    perRow(state);
}

void BM_ETableFind_Absent(benchmark::State& state)
{
    runFind(state, QStringLiteral("gateway"), false);
}

void BM_ETableFind_AbsentWholeWord(benchmark::State& state)
{
    runFind(state, QStringLiteral("gateway"), true);
}

// "exampl" is inside every host name but never a word of its own: every host cell has its occurrence's
// word boundaries checked.
void BM_ETableFind_WholeWordNearMiss(benchmark::State& state)
{
    runFind(state, QStringLiteral("exampl"), true);
}

void BM_QtMatch_Absent(benchmark::State& state)
{
    HostModel& model = modelFor(int(state.range(0)));
    const QString text = QStringLiteral("gateway");
    for (auto _ : state) {
        int hits = 0;
        for (int c = 0; c < columns; ++c)
            hits += model.match(model.index(0, c), Qt::DisplayRole, text, 1, Qt::MatchContains).size();
        benchmark::DoNotOptimize(hits);
    }
    perRow(state);
}

} // namespace

BENCHMARK(BM_QtMatch_Absent)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ETableFind_Absent)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ETableFind_AbsentWholeWord)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ETableFind_WholeWordNearMiss)->Apply(CgBench::rowSizes)->Unit(benchmark::kMillisecond);
