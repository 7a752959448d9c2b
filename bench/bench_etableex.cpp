// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETableEx painting a visible page of progress cells against the same table with Qt's default
// delegate painting the same cells as text.
#include "benchutil.h"

#include "etableex.h"

#include <QApplication>
#include <QStyledItemDelegate>

#include <memory>

namespace {

class Progress : public ETableModelEx
{
public:
    explicit Progress(int rows)
        : ETableModelEx(4)
        , rows(rows)
    {
    }
    int getRowCount() const override { return rows; }
    QString getCell(int row, int column) const override
    {
        return column == 0 ? QStringLiteral("job %1").arg(row) : QStringLiteral("%1%").arg((row * 7 + column * 13) % 101);
    }
    int getCellType(int, int column) const override { return column == 0 ? Text : ProgressBar; }
    int getProgress(int row, int column, QColor& colour) const override
    {
        colour = QColor(70, 130, 220);
        return (row * 7 + column * 13) % 101;
    }

private:
    int rows = 0;
};

void repaintRounds(benchmark::State& state, bool ourDelegate)
{
    Progress model(CgBench::smoke() ? 500 : 10000);
    ETableEx table(ETableModelEx::ProgressBar, &model, false);
    if (!ourDelegate)
        table.setItemDelegate(new QStyledItemDelegate(&table));
    for (int c = 0; c < 4; ++c)
        table.setColumnWidth(c, 150);
    table.resize(640, 600);
    table.show();
    QApplication::processEvents();
    table.scrollTo(model.index(model.getRowCount() / 2, 0));
    QApplication::processEvents();
    for (auto _ : state)
        table.viewport()->repaint();
    const int visible = table.rowAt(table.viewport()->height() - 1) - table.rowAt(0) + 1;
    state.counters["cells"] = double(visible * 4);
}

void BM_RepaintPage_ETableEx_Progress(benchmark::State& state)
{
    repaintRounds(state, true);
}

void BM_RepaintPage_QStyledItemDelegate(benchmark::State& state)
{
    repaintRounds(state, false);
}

} // namespace

BENCHMARK(BM_RepaintPage_ETableEx_Progress)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RepaintPage_QStyledItemDelegate)->Unit(benchmark::kMicrosecond);
