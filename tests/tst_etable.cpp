// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "esettings.h"
#include "etable.h"

#include <QFontInfo>
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

// Rows separated by ';', cells by '|'.
GridModel* grid(const QString& text)
{
    QVector<QStringList> rows;
    for (const QString& row : text.split(QLatin1Char(';')))
        rows << row.split(QLatin1Char('|'));
    return new GridModel(rows);
}

GridModel* numbered(int count)
{
    QStringList rows;
    for (int r = 0; r < count; ++r)
        rows << QStringLiteral("r%1c0|r%1c1|r%1c2").arg(r);
    return grid(rows.join(QLatin1Char(';')));
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
    // What the connectors delivered.
    QList<int> doubleClicked, currentRows;
    int selectionChanges = 0;
    QPoint menuAt;

public slots:
    void onDoubleClick(const QModelIndex& index) { doubleClicked << index.row(); }
    void onCurrent(const QModelIndex& current, const QModelIndex&) { currentRows << current.row(); }
    void onSelection(const QItemSelection&, const QItemSelection&) { ++selectionChanges; }
    void onMenu(const QPoint& p) { menuAt = p; }

private slots:
    void modelAnswersOnlyWhatItHasInTheFontFixedAtFirstUse()
    {
        std::unique_ptr<GridModel> model(numbered(4));
        const QModelIndex gone = model->index(3, 1);
        model->cells.resize(3); // an index kept across a shrink reaches data() with a row that is gone
        QCOMPARE(model->data(gone), QVariant());
        QCOMPARE(model->data(model->index(2, 1), Qt::ToolTipRole), QVariant(QStringLiteral("r2c1")));
        QCOMPARE(model->data(model->index(0, 0), Qt::DecorationRole), QVariant());

        const QFont first = ETableModel::fontRole();
        const QFont appFont = QApplication::font();
        QFont big(appFont);
        big.setPointSize(appFont.pointSize() + 17);
        QApplication::setFont(big);
        const QFont later = model->data(gone, Qt::FontRole).value<QFont>();
        QApplication::setFont(appFont);
        QCOMPARE(later, first);
        QCOMPARE(later.pointSize(), QFontInfo(appFont).pointSize());
    }

    void ownedModelsAreDeletedOthersSurvive()
    {
        QPointer<GridModel> first = numbered(2), second = numbered(2), borrowed = numbered(2);
        {
            ETable table(first, true);
            table.setModel(second, false);
            QVERIFY(first.isNull());
            table.setModel(second, true); // the same model again only changes the ownership
            table.setModel(borrowed, true);
            QVERIFY(second.isNull());
            table.setModel(borrowed, false);
        }
        QVERIFY(!borrowed.isNull());
        delete new ETable(borrowed, true);
        QVERIFY(borrowed.isNull());
    }

    void tableWithoutModelAnswersEmpty()
    {
        ETable table;
        showTable(table);
        QCOMPARE(table.sizeHint(), QSize(1, 1));
        QVERIFY(!table.find(QString(), Qt::CaseInsensitive, false, true, 1, true));
        QVERIFY(!table.hasSelected() && table.selectedRanges().isEmpty() && table.currentRow() == -1);
        table.adjustSizeHintToContent();
        QCOMPARE(table.sizeHint().width(), 2 * table.frameWidth());

        table.setModel(numbered(2), true);
        for (const QPoint& cell : {QPoint(2, 0), QPoint(0, 3), QPoint(-1, -1)})
            QCOMPARE(table.getText(cell.x(), cell.y()), QString());
        table.setWideColumn(7, true);
        table.setWideColumn(-1, true);
        QCOMPARE(table.horizontalHeader()->stretchSectionCount(), 0);
    }

    void selectedRangesComeBottomBlockFirst_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<Ranges>("expected");
        QTest::newRow("one row") << QList<int>{4} << Ranges{{4, 4}};
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
        QCOMPARE(table.selectedCount(), rows.size());
        QCOMPARE(table.selectedRanges(), expected);
        // selectedRows: ascending for order 1, descending for -1.
        std::sort(rows.begin(), rows.end());
        QCOMPARE(table.selectedRows(1).first().row(), rows.first());
        QCOMPARE(table.selectedRows(-1).first().row(), rows.last());
        QCOMPARE(table.selectedRows(-1).last().row(), rows.first());
    }

    void tabAndBacktabLeaveTheTable()
    {
        QWidget window;
        auto* before = new QLineEdit(&window);
        auto* table = new ETable(numbered(4), true, &window);
        auto* after = new QLineEdit(&window);
        (new QHBoxLayout(&window))->addWidget(table);
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
        row("no current cell starts at the top", {-1, -1}, "net", "", 1, {0, 1});
        row("from start ignores the current cell", {2, 2}, "net", "s", 1, {0, 1});
        row("current cell itself is skipped", {0, 1}, "net", "", 1, {0, 2});
        row("match case", {0, 1}, "net", "c", 1, {1, 0});
        row("whole word inside sub-net", {-1, -1}, "net", "ws", 1, {0, 1});
        row("whole word skips network", {0, 2}, "net", "cw", 1, {1, 2});
        row("one column, up", {3, 2}, "net", "1", -1, {1, 2});
        row("backward from start is bottom right", {-1, -1}, "net", "s", -1, {3, 0});
        row("last cell then the end", {3, 1}, "net", "", 1, {-1, -1});
        row("backward stops at row 0", {0, 2}, "omega", "", -1, {-1, -1});
        row("one column without current cell", {-1, -1}, "alpha", "1", 1, {-1, -1});
        row("empty whole word matches an empty cell", {-1, -1}, "", "ws", 1, {3, 1});
        row("unusual direction counts as forward", {0, 1}, "net", "", 5, {0, 2});
    }

    void find()
    {
        QFETCH(QPoint, start);
        QFETCH(QString, text);
        QFETCH(QString, options);
        QFETCH(int, direction);
        QFETCH(QPoint, found);
        ETable table(grid(QStringLiteral("alpha|sub-net mask|Net;network|beta|net;gamma|NET-2|delta;net||omega")), true);
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
        QVector<QStringList> rows(400);
        for (QStringList& row : rows) {
            row << QString();
            for (int i = random.bounded(7); i > 0; --i)
                row[0] += pieces.at(random.bounded(pieces.size()));
        }
        QStringList texts = QString::fromUtf8("|a|ab|AB|b_|1|a-b|K|\u00e9|\u0301|a ").split(QLatin1Char('|'));
        for (int i = 0; i < 10; ++i)
            texts << rows.at(random.bounded(rows.size())).first().left(3);
        ETable table(new GridModel(rows), true);
        for (const QString& text : texts) {
            for (Qt::CaseSensitivity cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                QList<int> expected, found;
                for (int r = 0; r < rows.size(); ++r) {
                    if (rows.at(r).first().split(QRegExp(QStringLiteral("\\W+"))).contains(text, cs))
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
        QTest::addColumn<QVariant>("stored"); // invalid: nothing stored
        QTest::addColumn<bool>("restored");
        ETable donor(numbered(3), true);
        donor.setColumnWidth(0, 55);
        donor.horizontalHeader()->moveSection(2, 0);
        const QByteArray valid = donor.horizontalHeader()->saveState();
        QByteArray flipped = valid;
        for (int i = 8; i < flipped.size(); i += 3)
            flipped[i] = char(flipped.at(i) ^ 0x5a);
        QTest::newRow("saved header") << QVariant(valid) << true;
        QTest::newRow("nothing stored") << QVariant() << false;
        QTest::newRow("text") << QVariant(QStringLiteral("Columns")) << false;
        QTest::newRow("truncated") << QVariant(valid.left(valid.size() / 2)) << false;
        QTest::newRow("bits flipped") << QVariant(flipped) << false;
    }

    void headerStateComesBackOnlyWhenUsable()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, restored);
        ESettings s(QStringLiteral("ETableTest"));
        s.remove(QStringLiteral("Columns"));
        if (stored.isValid())
            s.setValue(QStringLiteral("Columns"), stored);
        ETable table(numbered(3), true);
        table.setColumnWidth(0, 61);
        table.loadState(s, "Columns");
        QCOMPARE(table.getColumnWidth(0), restored ? 55 : 61);
        QCOMPARE(table.horizontalHeader()->visualIndex(2), restored ? 0 : 2);
        QCOMPARE(table.horizontalHeader()->count(), 3);
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
        static_cast<GridModel*>(table.model())->cells.resize(3);
        table.reset();
        table.adjustSizeHintToContent();
        QCOMPARE(table.sizeHint().height(), 3 * row + header + 2 * table.frameWidth());
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

    void connectorsReachTheReceiver()
    {
        ETable table(numbered(5), true);
        QVERIFY(table.setSlotForDoubleClick(this, SLOT(onDoubleClick(const QModelIndex&))));
        QVERIFY(table.setSlotForChangeCurrent(this, SLOT(onCurrent(const QModelIndex&, const QModelIndex&))));
        QVERIFY(table.setSlotForChangeSelection(this, SLOT(onSelection(const QItemSelection&, const QItemSelection&))));
        QVERIFY(table.setSlotForContextMenu(this, SLOT(onMenu(const QPoint&))));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot")));
        QVERIFY(!table.setSlotForDoubleClick(this, SLOT(noSuchSlot(const QModelIndex&))));
        QVERIFY(!table.setSlotForChangeCurrent(nullptr, SLOT(onCurrent(const QModelIndex&, const QModelIndex&))));
        table.setWideColumn(1, true);
        showTable(table);
        QVERIFY(table.getColumnWidth(1) > table.getColumnWidth(0));
        currentRows.clear(); // taking the focus may already have made row 0 current
        selectionChanges = 0;
        clickCell(table, 3, 0);
        clickCell(table, 3, 2); // another column of the same row is not a change of the current row
        QCOMPARE(currentRows, QList<int>{3});
        QCOMPARE(selectionChanges, 1);

        const QPoint at = table.visualRect(table.model()->index(4, 1)).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(doubleClicked, QList<int>{4});
        QContextMenuEvent menu(QContextMenuEvent::Mouse, at, table.viewport()->mapToGlobal(at));
        QApplication::sendEvent(table.viewport(), &menu);
        QCOMPARE(menuAt, at);
    }
};

CG_TEST_MAIN(TestETable)
#include "tst_etable.moc"
