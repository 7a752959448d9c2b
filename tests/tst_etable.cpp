// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "esettings.h"
#include "etable.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QRandomGenerator>
#include <QRegExp>
#include <QRegularExpression>
#include <QScrollBar>

using Ranges = QList<QPair<int, int>>;

namespace {

class GridModel : public ETableModel
{
public:
    explicit GridModel(QVector<QStringList> rows) : cells(std::move(rows)) {}
    int getRowCount() const override { return cells.size(); }
    int getColumnCount() const override { return cells.isEmpty() ? 0 : cells.first().size(); }
    QString getCell(int row, int column) const override { return cells.at(row).value(column); }
    QString getHeader(int) const override { return QString(); }
    QVector<QStringList> cells;
};

// The words of a cell as QRegExp's \W+ splits them: the reference for the table's word search.
QStringList qRegExpWords(const QString& cell)
{
    const QRegExp separators(QStringLiteral("\\W+"));
#if QT_VERSION_MAJOR >= 6
    return separators.splitString(cell);
#else
    return cell.split(separators);
#endif
}

GridModel* numbered(int count)
{
    QVector<QStringList> rows(count);
    for (int r = 0; r < count; ++r)
        rows[r] = QStringLiteral("r%1c0|r%1c1|r%1c2").arg(r).split(QLatin1Char('|'));
    return new GridModel(rows);
}

void clickCell(ETable& table, int row, int column, Qt::KeyboardModifiers mods = Qt::NoModifier)
{
    QTest::mouseClick(table.viewport(), Qt::LeftButton, mods, table.visualRect(table.model()->index(row, column)).center());
}

void showTable(ETable& table)
{
    table.resize(520, 400);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
}

} // namespace

class TestETable : public QObject
{
    Q_OBJECT
    QList<int> currentRows; // what the connector delivered

public slots:
    void onCurrent(const QModelIndex& current, const QModelIndex&) { currentRows << current.row(); }

private slots:
    void ownedModelsAreDeletedMissingDataAnswersEmpty()
    {
        QPointer<GridModel> first = numbered(2), second = numbered(2), borrowed = numbered(2);
        {
            ETable table(first, true);
            QPointer<QItemSelectionModel> firstSelection = table.selectionModel();
            table.setModel(second, true);
            QVERIFY(first.isNull());
            QVERIFY(firstSelection.isNull()); // one selection model per model, none left behind
            QPointer<QItemSelectionModel> secondSelection = table.selectionModel();
            table.setModel(borrowed, false);
            QVERIFY(second.isNull());
            QVERIFY(secondSelection.isNull());
            QCOMPARE(table.selectionModel()->model(), borrowed.data());
            QCOMPARE(table.findChildren<QItemSelectionModel*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
        }
        QVERIFY(!borrowed.isNull());
        delete borrowed;
        // Without a model, or asked for rows and cells it does not have, a table answers empty.
        ETable table;
        QVERIFY(!table.find(QString(), Qt::CaseInsensitive, false, true, 1, true));
        QVERIFY(!table.hasSelected() && table.selectedRanges().isEmpty() && table.currentRow() == -1);
        auto* model = numbered(4);
        const QModelIndex gone = model->index(3, 1);
        table.setModel(model, true);
        model->cells.resize(3); // an index kept across a shrink reaches data() with a row that is gone
        QCOMPARE(model->data(gone), QVariant());
        QCOMPARE(table.getText(3, 0) + table.getText(0, 3) + table.getText(-1, -1), QString());
    }

    void selectedRangesComeBottomBlockFirst_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<Ranges>("expected");
        QTest::newRow("block and single") << QList<int>{1, 2, 3, 6} << Ranges{{6, 6}, {1, 3}};
        QTest::newRow("clicked out of order") << QList<int>{9, 0, 8, 2, 1} << Ranges{{8, 9}, {0, 2}};
    }

    void selectedRangesComeBottomBlockFirst()
    {
        QFETCH(QList<int>, rows);
        QFETCH(Ranges, expected);
        ETable table(numbered(10), true);
        table.setMultiSelect();
        showTable(table);
        for (int row : rows)
            clickCell(table, row, 1, Qt::ControlModifier);
        QCOMPARE(table.selectedRanges(), expected);
        QCOMPARE(table.selectedRows(-1).first().row(), *std::max_element(rows.begin(), rows.end()));
    }

    void find_data()
    {
        QTest::addColumn<QPoint>("start"); // (row, column); (-1, -1): no current cell
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("options"); // c: match case, w: whole word, 1: one column, s: from start
        QTest::addColumn<int>("direction");
        QTest::addColumn<QPoint>("found"); // (-1, -1): not found
        const auto row = [](const char* tag, QPoint start, const char* text, const char* options, int direction, QPoint found) {
            QTest::newRow(tag) << start << QString::fromUtf8(text) << QString::fromLatin1(options) << direction << found;
        };
        row("current cell itself is skipped", {0, 1}, "net", "", 1, {0, 2});
        row("match case", {0, 1}, "net", "c", 1, {1, 0});
        row("whole word inside sub-net", {-1, -1}, "net", "ws", 1, {0, 1});
        row("whole word skips network", {0, 2}, "net", "cw", 1, {1, 2});
        row("one column, up", {3, 2}, "net", "1", -1, {1, 2});
        row("backward from start ignores the current cell", {1, 1}, "net", "s", -1, {3, 0});
        row("backward stops at row 0", {0, 2}, "omega", "", -1, {-1, -1});
        row("backward goes on in the last column of the row above", {2, 0}, "net", "", -1, {1, 2});
        row("every negative direction is backward", {2, 0}, "net", "", -2, {1, 2});
        row("last cell then the end", {3, 1}, "net", "", 1, {-1, -1});
    }

    void find()
    {
        QFETCH(QPoint, start);
        QFETCH(QString, text);
        QFETCH(QString, options);
        QFETCH(int, direction);
        QFETCH(QPoint, found);
        ETable table(new GridModel({{"alpha", "sub-net mask", "Net"}, {"network", "beta", "net"}, {"gamma", "NET-2", "delta"},
                                    {"net", "", "omega"}}), true);
        table.setMultiSelect();
        // A shown table takes the focus, and with it a current cell: keep it hidden for "no current cell".
        if (start.x() >= 0) {
            showTable(table);
            clickCell(table, (start.x() + 2) % 4, 0);
            clickCell(table, start.x(), start.y(), Qt::ControlModifier);
        }
        const auto has = [&options](char c) { return options.contains(QLatin1Char(c)); };
        const bool hit = table.find(text, has('c') ? Qt::CaseSensitive : Qt::CaseInsensitive, has('w'), !has('1'),
                                    direction, has('s'));
        QCOMPARE(hit, found.x() >= 0);
        QCOMPARE(QPoint(table.currentRow(), table.currentColumn()), hit ? found : start);
        // A match is the only selected cell, whatever was selected before.
        if (hit)
            QCOMPARE(table.selectionModel()->selectedIndexes(), QModelIndexList{table.model()->index(found.x(), found.y())});
    }

    // Whole words: the parts between runs of non-word characters, compared on random cells.
    void wholeWordAgreesWithSplittingAtNonWordRuns()
    {
        const QStringList pieces = QString::fromUtf8("a|b|A|B|_|-| |1|.|\u00e9|\u0301|\u00df|\u212a|k|\U0001F600|ab").split(QLatin1Char('|'));
        QRandomGenerator random(20240611);
        QVector<QStringList> rows(400, QStringList(QString()));
        for (QStringList& row : rows) {
            for (int i = random.bounded(7); i > 0; --i)
                row[0] += pieces.at(random.bounded(pieces.size()));
        }
        ETable table(new GridModel(rows), true);
        for (const QString& text : QString::fromUtf8("|a|ab|AB|b_|1|a-b|K|\u00e9|\u0301|a |ba|_a|b-").split(QLatin1Char('|'))) {
            for (Qt::CaseSensitivity cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                QList<int> expected, found;
                for (int r = 0; r < rows.size(); ++r) {
                    if (qRegExpWords(rows.at(r).first()).contains(text, cs))
                        expected << r;
                }
                for (bool fromStart = true; table.find(text, cs, true, true, 1, fromStart); fromStart = false)
                    found << table.currentRow();
                QVERIFY2(found == expected, qPrintable(QStringLiteral("text '%1'").arg(text)));
            }
        }
    }

    void headerStateComesBackOnlyWhenUsable_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("restored");
        ETable donor(numbered(3), true);
        donor.setColumnWidth(0, 55);
        donor.horizontalHeader()->moveSection(2, 0);
        const QByteArray valid = donor.horizontalHeader()->saveState();
        QTest::newRow("saved header") << valid << true;
        QTest::newRow("truncated") << valid.left(valid.size() / 2) << false;
    }

    void headerStateComesBackOnlyWhenUsable()
    {
        QFETCH(QByteArray, stored);
        QFETCH(bool, restored);
        ESettings s(QStringLiteral("ETableTest"));
        s.setValue(QStringLiteral("Columns"), stored);
        ETable table(numbered(3), true);
        table.setColumnWidth(0, 61);
        table.loadState(s, "Columns");
        QCOMPARE(table.getColumnWidth(0), restored ? 55 : 61);
        QCOMPARE(table.horizontalHeader()->visualIndex(2), restored ? 0 : 2);
        // The value is the header's own byte array under the caller's key.
        table.saveState(s, "Columns");
        QCOMPARE(s.value(QStringLiteral("Columns")).toByteArray(), table.horizontalHeader()->saveState());
    }

    void sizeHintsFollowTheirFormulas()
    {
        ETable table(numbered(50), true);
        const int header = table.horizontalHeader()->sizeHint().height();
        const int row = table.verticalHeader()->defaultSectionSize();
        table.setColumnWidth(0, 50);
        table.setColumnWidth(1, 60);
        table.setColumnWidth(2, 70);
        table.adjustSizeHint();
        QCOMPARE(table.sizeHint(), QSize(180 + table.verticalScrollBar()->sizeHint().width() + 8, 1));
        table.setColumnWidth(1, 900);
        table.adjustSizeHint();
        QCOMPARE(table.sizeHint().width(), 1000);

        table.setHeightInRows(7);
        QCOMPARE(table.sizeHint(), QSize(1000, 7 * row + header + 2));
        table.setHeightInRows(-3);
        QCOMPARE(table.sizeHint().height(), header + 2);
        table.setHeightInRows(INT_MAX);
        QCOMPARE(table.sizeHint().height(), QWIDGETSIZE_MAX);

        table.adjustSizeHintToContent();
        const int columns = table.getColumnWidth(0) + table.getColumnWidth(1) + table.getColumnWidth(2);
        QVERIFY(columns < 900);
        QCOMPARE(table.sizeHint(), QSize(columns + 2 * table.frameWidth(), 20 * row + header + 2 * table.frameWidth()));
    }

    void rowHeightStaysBetweenTheFontAndTheHeaderLimit()
    {
        ETable table(numbered(3), true);
        const int fontRow = table.fontMetrics().height() + 2;
        QCOMPARE(table.rowHeight(0), fontRow); // compact rows from the start, under Qt's header minimum
        table.setRowHeight(5);
        QCOMPARE(table.rowHeight(2), fontRow);
        table.setRowHeight(1000);
        QCOMPARE(table.rowHeight(2), 1004);
        table.setRowHeight(INT_MAX);
        QCOMPARE(table.rowHeight(2), table.verticalHeader()->maximumSectionSize());
    }

    void currentRowConnectorReportsRowChangesOnly()
    {
        ETable table(numbered(5), true);
        QVERIFY(table.setSlotForChangeCurrent(this, SLOT(onCurrent(const QModelIndex&, const QModelIndex&))));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot")));
        QVERIFY(!table.setSlotForDoubleClick(this, SLOT(noSuchSlot(const QModelIndex&))));
        showTable(table);
        currentRows.clear(); // taking the focus may already have made row 0 current
        clickCell(table, 3, 0);
        clickCell(table, 3, 2); // another column of the same row is not a change of the current row
        QCOMPARE(currentRows, QList<int>{3});
    }

    void tabAndBacktabLeaveTheTable()
    {
        QWidget window;
        auto* before = new QLineEdit(&window);
        auto* table = new ETable(numbered(4), true, &window);
        auto* after = new QLineEdit(&window);
        auto* row = new QHBoxLayout(&window);
        row->addWidget(before);
        row->addWidget(table);
        row->addWidget(after);
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        clickCell(*table, 1, 0);
        QTest::keyClick(table, Qt::Key_Tab);
        QTRY_VERIFY(after->hasFocus());
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Backtab, Qt::ShiftModifier);
        QTRY_VERIFY(before->hasFocus());
        QCOMPARE(QPoint(table->currentRow(), table->currentColumn()), QPoint(1, 0));
    }
};

CG_TEST_MAIN(TestETable)
#include "tst_etable.moc"
