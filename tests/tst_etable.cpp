// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "edirs.h"
#include "esettings.h"
#include "etable.h"

#include <QFontInfo>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QRandomGenerator>
#include <QRegExp>
#include <QScrollBar>
#include <QRegularExpression>
#include <QSignalSpy>

#include <memory>

using Ranges = QList<QPair<int, int>>;

namespace {

class GridModel : public ETableModel
{
public:
    explicit GridModel(QVector<QStringList> rows, QStringList titles = {})
        : cells(std::move(rows))
        , headers(std::move(titles))
    {
    }
    int getRowCount() const override { return cells.size(); }
    int getColumnCount() const override { return cells.isEmpty() ? headers.size() : cells.first().size(); }
    QString getCell(int row, int column) const override { return cells.at(row).value(column); }
    QString getHeader(int column) const override { return headers.value(column); }

    QVector<QStringList> cells;
    QStringList headers;
};

// The grid every search case runs on.
QVector<QStringList> searchGrid()
{
    return {
        {QStringLiteral("alpha"), QStringLiteral("sub-net mask"), QStringLiteral("Net")},
        {QStringLiteral("network"), QStringLiteral("beta"), QStringLiteral("net")},
        {QStringLiteral("gamma"), QStringLiteral("NET-2"), QStringLiteral("delta")},
        {QStringLiteral("net"), QString(), QStringLiteral("omega")},
    };
}

QVector<QStringList> numberedRows(int count, int columns = 3)
{
    QVector<QStringList> rows;
    for (int r = 0; r < count; ++r) {
        QStringList row;
        for (int c = 0; c < columns; ++c)
            row << QStringLiteral("r%1c%2").arg(r).arg(c);
        rows << row;
    }
    return rows;
}

void clickCell(ETable& table, int row, int column, Qt::KeyboardModifiers mods = Qt::NoModifier)
{
    const QRect rect = table.visualRect(table.model()->index(row, column));
    QTest::mouseClick(table.viewport(), Qt::LeftButton, mods, rect.center());
}

void showTable(ETable& table)
{
    table.resize(520, 400);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
}

QSettings* openSettings()
{
    return new ESettings(QStringLiteral("ETableTest"));
}

} // namespace

class Receiver : public QObject
{
    Q_OBJECT
public:
    int doubleClicks = 0;
    int currentChanges = 0;
    int selectionChanges = 0;
    int menus = 0;
    int lastRow = -1;
    QPoint lastPoint;

public slots:
    void onDoubleClick(const QModelIndex& index)
    {
        ++doubleClicks;
        lastRow = index.row();
    }
    void onCurrent(const QModelIndex& current, const QModelIndex&)
    {
        ++currentChanges;
        lastRow = current.row();
    }
    void onSelection(const QItemSelection&, const QItemSelection&) { ++selectionChanges; }
    void onMenu(const QPoint& p)
    {
        ++menus;
        lastPoint = p;
    }
};

class TestETable : public QObject
{
    Q_OBJECT
private slots:
    void newTableHasTheLibraryLook();
    void modelAnswersOnlyWhatItHas_data();
    void modelAnswersOnlyWhatItHas();
    void itemFontIsFixedAtFirstUse();
    void ownedModelsAreDeletedOthersSurvive();
    void tableWithoutModelAnswersEmpty();
    void mouseSelectsWholeRows();
    void keyboardMovesAndExtendsTheSelection();
    void selectedRangesComeBottomBlockFirst_data();
    void selectedRangesComeBottomBlockFirst();
    void tabAndBacktabLeaveTheTable();
    void find_data();
    void find();
    void findStopsAtTheEndWithoutWrapping();
    void findMatchBecomesTheOnlySelectedCell();
    void wholeWordAgreesWithSplittingAtNonWordRuns();
    void headerStateRoundTrips();
    void unusableHeaderStateLeavesColumnsAlone_data();
    void unusableHeaderStateLeavesColumnsAlone();
    void sizeHintsFollowTheirFormulas();
    void rowHeightNeverGoesBelowTheFont_data();
    void rowHeightNeverGoesBelowTheFont();
    void connectorsReachTheReceiver();
};

void TestETable::newTableHasTheLibraryLook()
{
    ETable table(new GridModel(numberedRows(3)), true);
    QVERIFY(table.verticalHeader()->isHidden());
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), table.fontMetrics().height() + 2);
    QVERIFY(!table.horizontalHeader()->highlightSections());
    QCOMPARE(table.horizontalHeader()->defaultAlignment(), Qt::Alignment(Qt::AlignLeft));
    QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table.maximumHeight(), 100000);
    QCOMPARE(table.horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(table.sizeHint(), QSize(1, 1));
    QCOMPARE(table.currentRow(), -1);
    QCOMPARE(table.currentColumn(), -1);
    QCOMPARE(table.model()->rowCount(), 3);
    QCOMPARE(table.rowHeight(0), table.fontMetrics().height() + 2);
}

void TestETable::modelAnswersOnlyWhatItHas_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("display") << 1 << 2 << int(Qt::DisplayRole) << QVariant(QStringLiteral("r1c2"));
    QTest::newRow("edit") << 0 << 0 << int(Qt::EditRole) << QVariant(QStringLiteral("r0c0"));
    QTest::newRow("tool tip is the text") << 2 << 1 << int(Qt::ToolTipRole) << QVariant(QStringLiteral("r2c1"));
    QTest::newRow("decoration") << 0 << 0 << int(Qt::DecorationRole) << QVariant();
    QTest::newRow("alignment") << 0 << 0 << int(Qt::TextAlignmentRole) << QVariant();
    QTest::newRow("row past the end") << 3 << 0 << int(Qt::DisplayRole) << QVariant();
    QTest::newRow("negative row") << -1 << 0 << int(Qt::DisplayRole) << QVariant();
}

void TestETable::modelAnswersOnlyWhatItHas()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, role);
    QFETCH(QVariant, expected);

    GridModel model(numberedRows(4));
    const QModelIndex index = model.index(row, column);
    // An index kept across a shrink reaches data() with a row that is gone.
    model.cells.resize(3);
    QCOMPARE(model.data(index, role), expected);
    QCOMPARE(model.data(index, Qt::FontRole).value<QFont>(), ETableModel::fontRole());
}

void TestETable::itemFontIsFixedAtFirstUse()
{
    GridModel model(numberedRows(1), {QStringLiteral("Title")});
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Title"));
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::FontRole).isValid());

    const QFont first = ETableModel::fontRole();
    const QFont appFont = QApplication::font();
    QFont big(appFont);
    big.setPointSize(appFont.pointSize() + 17);
    big.setItalic(!appFont.italic());
    QApplication::setFont(big);
    const QFont later = ETableModel::fontRole();
    QApplication::setFont(appFont);
    QCOMPARE(later, first);
    QCOMPARE(later.pointSize(), QFontInfo(appFont).pointSize());
    QCOMPARE(model.data(model.index(0, 0), Qt::FontRole).value<QFont>(), first);
}

void TestETable::ownedModelsAreDeletedOthersSurvive()
{
    QPointer<GridModel> owned = new GridModel(numberedRows(2));
    QPointer<GridModel> borrowed = new GridModel(numberedRows(2));
    QPointer<GridModel> second = new GridModel(numberedRows(5));
    {
        ETable table(owned, true);
        table.setModel(second, false);
        QVERIFY(owned.isNull());
        QCOMPARE(table.model(), second.data());
        // The same model again only changes the ownership.
        table.setModel(second, true);
        QVERIFY(!second.isNull());
        table.setModel(borrowed, false);
        QVERIFY(second.isNull());
        table.setModel(nullptr, true);
        QVERIFY(!borrowed.isNull());
        QCOMPARE(table.model(), static_cast<QAbstractItemModel*>(nullptr));
    }
    QVERIFY(!borrowed.isNull());
    {
        ETable table(borrowed, true);
        table.setModel(borrowed, false);
    }
    QVERIFY(!borrowed.isNull());
    {
        ETable table(borrowed, true);
    }
    QVERIFY(borrowed.isNull());
}

void TestETable::tableWithoutModelAnswersEmpty()
{
    ETable table;
    showTable(table);
    QCOMPARE(table.getText(0, 0), QString());
    QVERIFY(!table.find(QString(), Qt::CaseInsensitive, false, true, 1, true));
    QVERIFY(!table.hasSelected());
    QVERIFY(!table.isRowSelected(0));
    QCOMPARE(table.selectedCount(), 0);
    QVERIFY(table.selectedRanges().isEmpty());
    QCOMPARE(table.currentRow(), -1);
    table.adjustSizeHint();
    QCOMPARE(table.sizeHint().width(), table.verticalScrollBar()->sizeHint().width() + 8);
    table.adjustSizeHintToContent();
    QCOMPARE(table.sizeHint().width(), 2 * table.frameWidth());

    // Cells that are not there read as empty in a table that has a model too.
    table.setModel(new GridModel(numberedRows(2)), true);
    QCOMPARE(table.getText(1, 1), QStringLiteral("r1c1"));
    QCOMPARE(table.getText(2, 0), QString());
    QCOMPARE(table.getText(0, 3), QString());
    QCOMPARE(table.getText(-1, -1), QString());
    table.setWideColumn(7, true);
    table.setWideColumn(-1, true);
    QCOMPARE(table.horizontalHeader()->stretchSectionCount(), 0);
}

void TestETable::mouseSelectsWholeRows()
{
    ETable table(new GridModel(numberedRows(8)), true);
    showTable(table);
    clickCell(table, 2, 1);
    QCOMPARE(table.currentRow(), 2);
    QCOMPARE(table.currentColumn(), 1);
    QVERIFY(table.isRowSelected(2));
    QVERIFY(table.hasSelected());
    QCOMPARE(table.selectedCount(), 1);

    // Single selection: a Ctrl-click moves the selection instead of adding to it.
    clickCell(table, 5, 0, Qt::ControlModifier);
    QCOMPARE(table.selectedCount(), 1);
    QVERIFY(table.isRowSelected(5));
    QVERIFY(!table.isRowSelected(2));

    table.setMultiSelect();
    QCOMPARE(table.selectionMode(), QAbstractItemView::ExtendedSelection);
    clickCell(table, 1, 0, Qt::ControlModifier);
    clickCell(table, 7, 2, Qt::ControlModifier);
    QCOMPARE(table.selectedCount(), 3);

    const auto rowsOf = [](const QModelIndexList& list) {
        QList<int> rows;
        for (const QModelIndex& i : list)
            rows << i.row();
        return rows;
    };
    QCOMPARE(rowsOf(table.selectedRows(1)), (QList<int>{1, 5, 7}));
    QCOMPARE(rowsOf(table.selectedRows(-1)), (QList<int>{7, 5, 1}));
    QList<int> unordered = rowsOf(table.selectedRows(0));
    std::sort(unordered.begin(), unordered.end());
    QCOMPARE(unordered, (QList<int>{1, 5, 7}));
}

void TestETable::keyboardMovesAndExtendsTheSelection()
{
    ETable table(new GridModel(numberedRows(8)), true);
    showTable(table);
    table.setFocus();
    clickCell(table, 0, 0);
    QTest::keyClick(&table, Qt::Key_Down);
    QTest::keyClick(&table, Qt::Key_Down);
    QCOMPARE(table.currentRow(), 2);
    QVERIFY(table.isRowSelected(2));
    QVERIFY(!table.isRowSelected(0));

    table.setMultiSelect();
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(table.currentRow(), 4);
    QCOMPARE(table.selectedRanges(), (QList<QPair<int, int>>{{2, 4}}));
}

void TestETable::selectedRangesComeBottomBlockFirst_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<Ranges>("expected");

    QTest::newRow("nothing") << QList<int>{} << QList<QPair<int, int>>{};
    QTest::newRow("one row") << QList<int>{4} << QList<QPair<int, int>>{{4, 4}};
    QTest::newRow("first two rows are one block") << QList<int>{0, 1} << QList<QPair<int, int>>{{0, 1}};
    QTest::newRow("block and single") << QList<int>{1, 2, 3, 6} << QList<QPair<int, int>>{{6, 6}, {1, 3}};
    QTest::newRow("clicked out of order") << QList<int>{9, 0, 8, 2, 1}
                                          << QList<QPair<int, int>>{{8, 9}, {0, 2}};
    QTest::newRow("every other row") << QList<int>{1, 3, 5}
                                     << QList<QPair<int, int>>{{5, 5}, {3, 3}, {1, 1}};
}

void TestETable::selectedRangesComeBottomBlockFirst()
{
    QFETCH(QList<int>, rows);
    QFETCH(Ranges, expected);

    ETable table(new GridModel(numberedRows(10)), true);
    table.setMultiSelect();
    showTable(table);
    for (int row : rows)
        clickCell(table, row, 1, Qt::ControlModifier);
    QCOMPARE(table.selectedCount(), rows.size());
    QCOMPARE(table.selectedRanges(), expected);
}

void TestETable::tabAndBacktabLeaveTheTable()
{
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    auto* before = new QLineEdit(&window);
    auto* table = new ETable(new GridModel(numberedRows(4)), true, &window);
    auto* after = new QLineEdit(&window);
    layout->addWidget(before);
    layout->addWidget(table);
    layout->addWidget(after);
    window.resize(700, 300);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));

    clickCell(*table, 1, 0);
    table->setFocus();
    QTRY_VERIFY(table->hasFocus());
    QTest::keyClick(table, Qt::Key_Tab);
    QTRY_VERIFY(after->hasFocus());
    QCOMPARE(table->currentRow(), 1);
    QCOMPARE(table->currentColumn(), 0);

    table->setFocus();
    QTRY_VERIFY(table->hasFocus());
    QTest::keyClick(table, Qt::Key_Backtab, Qt::ShiftModifier);
    QTRY_VERIFY(before->hasFocus());
    QCOMPARE(table->currentRow(), 1);
    QCOMPARE(table->currentColumn(), 0);
}

void TestETable::find_data()
{
    QTest::addColumn<int>("startRow"); // -1: no current cell
    QTest::addColumn<int>("startColumn");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matchCase");
    QTest::addColumn<bool>("wholeWord");
    QTest::addColumn<bool>("allColumns");
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("fromStart");
    QTest::addColumn<int>("foundRow"); // -1: not found
    QTest::addColumn<int>("foundColumn");

    const QString net = QStringLiteral("net");
    QTest::newRow("no current cell starts at the top") << -1 << -1 << net << false << false << true << 1 << false << 0 << 1;
    QTest::newRow("from start ignores the current cell") << 2 << 2 << net << false << false << true << 1 << true << 0 << 1;
    QTest::newRow("current cell itself is skipped") << 0 << 1 << net << false << false << true << 1 << false << 0 << 2;
    QTest::newRow("match case") << 0 << 1 << net << true << false << true << 1 << false << 1 << 0;
    QTest::newRow("upper case text, match case") << -1 << -1 << QStringLiteral("NET") << true << false << true << 1 << true << 2 << 1;
    QTest::newRow("whole word inside sub-net") << -1 << -1 << net << false << true << true << 1 << true << 0 << 1;
    QTest::newRow("whole word skips network") << 0 << 2 << net << true << true << true << 1 << false << 1 << 2;
    QTest::newRow("whole word NET in NET-2") << 1 << 2 << QStringLiteral("NET") << true << true << true << 1 << false << 2 << 1;
    QTest::newRow("one column, down") << 0 << 0 << net << true << true << false << 1 << false << 3 << 0;
    QTest::newRow("one column, up") << 3 << 2 << net << false << false << false << -1 << false << 1 << 2;
    QTest::newRow("backward from start is bottom right") << -1 << -1 << net << false << false << true << -1 << true << 3 << 0;
    QTest::newRow("backward crosses to the previous row") << 1 << 0 << net << false << false << true << -1 << false << 0 << 2;
    QTest::newRow("last cell then the end") << 3 << 1 << net << false << false << true << 1 << false << -1 << -1;
    QTest::newRow("match in the current cell only") << 3 << 0 << net << true << true << true << 1 << false << -1 << -1;
    QTest::newRow("backward stops at row 0") << 0 << 2 << QStringLiteral("omega") << false << false << true << -1 << false << -1 << -1;
    QTest::newRow("one column without current cell") << -1 << -1 << QStringLiteral("alpha") << false << false << false << 1 << false << -1 << -1;
    QTest::newRow("absent text") << -1 << -1 << QStringLiteral("zzz") << false << false << true << 1 << true << -1 << -1;
    QTest::newRow("absent whole word") << -1 << -1 << QStringLiteral("mas") << false << true << true << 1 << true << -1 << -1;
    QTest::newRow("empty text matches the first cell") << -1 << -1 << QString() << false << false << true << 1 << true << 0 << 0;
    QTest::newRow("empty whole word matches an empty cell") << -1 << -1 << QString() << false << true << true << 1 << true << 3 << 1;
    QTest::newRow("unusual direction counts as forward") << 0 << 1 << net << false << false << true << 5 << false << 0 << 2;
}

void TestETable::find()
{
    QFETCH(int, startRow);
    QFETCH(int, startColumn);
    QFETCH(QString, text);
    QFETCH(bool, matchCase);
    QFETCH(bool, wholeWord);
    QFETCH(bool, allColumns);
    QFETCH(int, direction);
    QFETCH(bool, fromStart);
    QFETCH(int, foundRow);
    QFETCH(int, foundColumn);

    ETable table(new GridModel(searchGrid()), true);
    // A shown table takes the focus, and with it a current cell: keep it hidden for "no current cell".
    if (startRow >= 0) {
        showTable(table);
        clickCell(table, startRow, startColumn);
    }
    QCOMPARE(table.currentRow(), startRow);

    const bool found = table.find(text, matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive, wholeWord, allColumns,
                                  direction, fromStart);
    QCOMPARE(found, foundRow >= 0);
    if (found) {
        QCOMPARE(table.currentRow(), foundRow);
        QCOMPARE(table.currentColumn(), foundColumn);
    } else {
        QCOMPARE(table.currentRow(), startRow);
        QCOMPARE(table.currentColumn(), startColumn);
    }
}

void TestETable::findStopsAtTheEndWithoutWrapping()
{
    ETable table(new GridModel(searchGrid()), true);
    QList<QPair<int, int>> hits;
    bool fromStart = true;
    while (table.find(QStringLiteral("net"), Qt::CaseInsensitive, false, true, 1, fromStart)) {
        hits << qMakePair(table.currentRow(), table.currentColumn());
        fromStart = false;
        QVERIFY(hits.size() < 20);
    }
    QCOMPARE(hits, (QList<QPair<int, int>>{{0, 1}, {0, 2}, {1, 0}, {1, 2}, {2, 1}, {3, 0}}));
    // Past the last match the current cell stays, and a new search must be asked for explicitly.
    QCOMPARE(table.currentRow(), 3);
    QVERIFY(!table.find(QStringLiteral("net"), Qt::CaseInsensitive, false, true, 1, false));
    QVERIFY(table.find(QStringLiteral("net"), Qt::CaseInsensitive, false, true, 1, true));
    QCOMPARE(table.currentRow(), 0);

    hits.clear();
    fromStart = true;
    while (table.find(QStringLiteral("net"), Qt::CaseInsensitive, true, true, -1, fromStart)) {
        hits << qMakePair(table.currentRow(), table.currentColumn());
        fromStart = false;
        QVERIFY(hits.size() < 20);
    }
    QCOMPARE(hits, (QList<QPair<int, int>>{{3, 0}, {2, 1}, {1, 2}, {0, 2}, {0, 1}}));
}

void TestETable::findMatchBecomesTheOnlySelectedCell()
{
    ETable table(new GridModel(searchGrid()), true);
    table.setMultiSelect();
    showTable(table);
    clickCell(table, 0, 0, Qt::ControlModifier);
    clickCell(table, 3, 0, Qt::ControlModifier);
    QCOMPARE(table.selectedCount(), 2);

    QVERIFY(table.find(QStringLiteral("beta"), Qt::CaseSensitive, false, true, 1, true));
    const QModelIndexList selected = table.selectionModel()->selectedIndexes();
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.first(), table.model()->index(1, 1));
    QCOMPARE(table.selectionModel()->currentIndex(), table.model()->index(1, 1));
}

void TestETable::wholeWordAgreesWithSplittingAtNonWordRuns()
{
    // Letters, digits, '_', marks, case pairs, separators and a surrogate pair, mixed at random.
    const QStringList pieces{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("B"),
                             QStringLiteral("_"), QStringLiteral("-"), QStringLiteral(" "), QStringLiteral("1"),
                             QStringLiteral("."), QString(QChar(0x00e9)), QString(QChar(0x0301)),
                             QString(QChar(0x00df)), QString(QChar(0x212a)), QStringLiteral("k"),
                             QString::fromUtf8("\xf0\x9f\x98\x80"), QStringLiteral("ab")};
    QRandomGenerator random(20240611);
    QVector<QStringList> rows;
    for (int r = 0; r < 400; ++r) {
        QString cell;
        const int length = random.bounded(7);
        for (int i = 0; i < length; ++i)
            cell += pieces.at(random.bounded(pieces.size()));
        rows << QStringList{cell};
    }
    QStringList texts{QString(), QStringLiteral("a"), QStringLiteral("ab"), QStringLiteral("AB"), QStringLiteral("b_"),
                      QStringLiteral("1"), QStringLiteral("a-b"), QStringLiteral("K"), QString(QChar(0x00e9)),
                      QString(QChar(0x0301)), QStringLiteral("a ")};
    for (int i = 0; i < 10; ++i)
        texts << rows.at(random.bounded(rows.size())).first().left(3);

    ETable table(new GridModel(rows), true);
    const QRegExp nonWord(QStringLiteral("\\W+"));
    for (const QString& text : texts) {
        for (Qt::CaseSensitivity cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
            QList<int> expected;
            for (int r = 0; r < rows.size(); ++r) {
                if (rows.at(r).first().split(nonWord, Qt::KeepEmptyParts).contains(text, cs))
                    expected << r;
            }
            QList<int> found;
            for (bool fromStart = true; table.find(text, cs, true, true, 1, fromStart); fromStart = false)
                found << table.currentRow();
            QVERIFY2(found == expected, qPrintable(QStringLiteral("text '%1'").arg(text)));
        }
    }
}

void TestETable::headerStateRoundTrips()
{
    const QStringList titles{QStringLiteral("Host"), QStringLiteral("Address"), QStringLiteral("Status")};
    {
        ETable table(new GridModel(numberedRows(3), titles), true);
        table.setColumnWidth(0, 55);
        table.setColumnWidth(1, 140);
        table.setColumnWidth(2, 75);
        table.horizontalHeader()->moveSection(2, 0);
        std::unique_ptr<QSettings> s(openSettings());
        table.saveState(*s, "Columns");
    }
    ETable table(new GridModel(numberedRows(3), titles), true);
    QCOMPARE(table.getColumnWidth(1), table.horizontalHeader()->defaultSectionSize());
    {
        std::unique_ptr<QSettings> s(openSettings());
        table.loadState(*s, "Absent");
        QCOMPARE(table.getColumnWidth(1), table.horizontalHeader()->defaultSectionSize());
        table.loadState(*s, "Columns");
    }
    QCOMPARE(table.getColumnWidth(0), 55);
    QCOMPARE(table.getColumnWidth(1), 140);
    QCOMPARE(table.getColumnWidth(2), 75);
    QCOMPARE(table.horizontalHeader()->visualIndex(2), 0);

    // The value is the header's own byte array under the caller's key.
    QSettings raw(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("ETableTest/Columns")).toByteArray(), table.horizontalHeader()->saveState());
}

void TestETable::unusableHeaderStateLeavesColumnsAlone_data()
{
    QTest::addColumn<QVariant>("stored");

    ETable donor(new GridModel(numberedRows(3)), true);
    donor.setColumnWidth(0, 200);
    const QByteArray valid = donor.horizontalHeader()->saveState();
    QByteArray flipped = valid;
    for (int i = 8; i < flipped.size(); i += 3)
        flipped[i] = char(flipped.at(i) ^ 0x5a);

    QTest::newRow("empty bytes") << QVariant(QByteArray());
    QTest::newRow("garbage") << QVariant(QByteArray("definitely not a header"));
    QTest::newRow("text") << QVariant(QStringLiteral("Columns"));
    QTest::newRow("number") << QVariant(12345);
    QTest::newRow("truncated") << QVariant(valid.left(valid.size() / 2));
    QTest::newRow("only the marker") << QVariant(valid.left(4));
    QTest::newRow("bits flipped") << QVariant(flipped);
}

void TestETable::unusableHeaderStateLeavesColumnsAlone()
{
    QFETCH(QVariant, stored);
    {
        std::unique_ptr<QSettings> s(openSettings());
        s->setValue(QStringLiteral("Broken"), stored);
    }
    ETable table(new GridModel(numberedRows(3)), true);
    table.setColumnWidth(0, 61);
    table.setColumnWidth(1, 62);
    table.setColumnWidth(2, 63);
    std::unique_ptr<QSettings> s(openSettings());
    table.loadState(*s, "Broken");
    QCOMPARE(table.getColumnWidth(0), 61);
    QCOMPARE(table.getColumnWidth(1), 62);
    QCOMPARE(table.getColumnWidth(2), 63);
    QCOMPARE(table.horizontalHeader()->count(), 3);
}

void TestETable::sizeHintsFollowTheirFormulas()
{
    ETable table(new GridModel(numberedRows(50)), true);
    const int scrollBar = table.verticalScrollBar()->sizeHint().width();
    const int header = table.horizontalHeader()->sizeHint().height();
    const int row = table.verticalHeader()->defaultSectionSize();

    table.setColumnWidth(0, 50);
    table.setColumnWidth(1, 60);
    table.setColumnWidth(2, 70);
    table.adjustSizeHint();
    QCOMPARE(table.sizeHint(), QSize(180 + scrollBar + 8, 1));

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
    const int widest = table.fontMetrics().horizontalAdvance(QStringLiteral("r49c0"));
    int columns = 0;
    for (int c = 0; c < 3; ++c) {
        QVERIFY(table.getColumnWidth(c) >= widest);
        columns += table.getColumnWidth(c);
    }
    QVERIFY(columns < 900);
    QCOMPARE(table.sizeHint(), QSize(columns + 2 * table.frameWidth(), 20 * row + header + 2 * table.frameWidth()));

    static_cast<GridModel*>(table.model())->cells.resize(3);
    table.reset();
    table.adjustSizeHintToContent();
    QCOMPARE(table.sizeHint().height(), 3 * row + header + 2 * table.frameWidth());
}

void TestETable::rowHeightNeverGoesBelowTheFont_data()
{
    QTest::addColumn<int>("requested");
    QTest::addColumn<int>("expected"); // 0: the font height + 2, -1: the header's largest section

    QTest::newRow("tiny request keeps the font height") << 5 << 0;
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("negative") << -40 << 0;
    QTest::newRow("taller than the font") << 1000 << 1004;
    QTest::newRow("largest int") << INT_MAX << -1;
}

void TestETable::rowHeightNeverGoesBelowTheFont()
{
    QFETCH(int, requested);
    QFETCH(int, expected);

    ETable table(new GridModel(numberedRows(3)), true);
    table.setRowHeight(requested);
    if (expected == 0)
        expected = table.fontMetrics().height() + 2;
    else if (expected < 0)
        expected = table.verticalHeader()->maximumSectionSize();
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), expected);
    QCOMPARE(table.rowHeight(2), expected);
}

void TestETable::connectorsReachTheReceiver()
{
    ETable table(new GridModel(numberedRows(5)), true);
    Receiver r;
    QVERIFY(table.setSlotForDoubleClick(&r, SLOT(onDoubleClick(const QModelIndex&))));
    QVERIFY(table.setSlotForChangeCurrent(&r, SLOT(onCurrent(const QModelIndex&, const QModelIndex&))));
    QVERIFY(table.setSlotForChangeSelection(&r, SLOT(onSelection(const QItemSelection&, const QItemSelection&))));
    QCOMPARE(table.contextMenuPolicy(), Qt::DefaultContextMenu);
    QVERIFY(table.setSlotForContextMenu(&r, SLOT(onMenu(const QPoint&))));
    QCOMPARE(table.contextMenuPolicy(), Qt::CustomContextMenu);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot")));
    QVERIFY(!table.setSlotForDoubleClick(&r, SLOT(noSuchSlot(const QModelIndex&))));
    QVERIFY(!table.setSlotForChangeCurrent(nullptr, SLOT(onCurrent(const QModelIndex&, const QModelIndex&))));
    table.setWideColumn(1, true);
    showTable(table);
    QVERIFY(table.getColumnWidth(1) > table.getColumnWidth(0));
    // Taking the focus may already have made row 0 current.
    const int currentBefore = r.currentChanges;
    const int selectionBefore = r.selectionChanges;

    clickCell(table, 3, 0);
    QCOMPARE(r.currentChanges, currentBefore + 1);
    QCOMPARE(r.selectionChanges, selectionBefore + 1);
    QCOMPARE(r.lastRow, 3);
    // Another column of the same row is not a change of the current row.
    clickCell(table, 3, 2);
    QCOMPARE(r.currentChanges, currentBefore + 1);

    const QPoint at = table.visualRect(table.model()->index(4, 1)).center();
    // A person's double click: press and release, then the double-click event.
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(r.doubleClicks, 1);
    QCOMPARE(r.lastRow, 4);

    QContextMenuEvent menu(QContextMenuEvent::Mouse, at, table.viewport()->mapToGlobal(at));
    QApplication::sendEvent(table.viewport(), &menu);
    QCOMPARE(r.menus, 1);
    QCOMPARE(r.lastPoint, at);
}

CG_TEST_MAIN(TestETable)
#include "tst_etable.moc"
