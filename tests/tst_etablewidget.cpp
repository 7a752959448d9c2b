// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_loc.h"
#include "etablewidget.h"
#include "etablewidgetmodel.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QPixmap>
#include <QPointer>

namespace {

const QString first = QStringLiteral("First"), second = QStringLiteral("Second"), third = QStringLiteral("Third");
const QString* threeTitles[] = {&first, &second, &third};

QStringList column(const ETableWidgetModel& model, int c)
{
    QStringList texts;
    for (int r = 0; r < model.getRowCount(); ++r)
        texts << model.getCell(r, c);
    return texts;
}

// Fills rows whose three cells are name, name + "-b", name + "-c", so each row can be recognised.
void fill(ETableWidget& table, const QStringList& names)
{
    ETableWidgetModel* model = table.widgetModel();
    model->addRows(names.size());
    for (int r = 0; r < names.size(); ++r) {
        table.setCell(r, 0, names[r], nullptr, reinterpret_cast<void*>(quintptr(r + 1)));
        table.setCell(r, 1, names[r] + QStringLiteral("-b"), nullptr, nullptr);
        table.setCell(r, 2, names[r] + QStringLiteral("-c"), nullptr, nullptr);
    }
}

} // namespace

class TestETableWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
    }
    void nullTitlesGiveParameterAndValueWithStretchingValue();
    void parentIsNotTakenOver();
    void rowsComeAndGoWithoutNotifications();
    void cellDataFollowsItsRole();
    void setCellKeepsToolTipAndIgnoresMissingCells();
    void sortMovesWholeRows_data();
    void sortMovesWholeRows();
    void resetModelReplacesAndDeletesTheOldModel();
    void headerClickSortsTheTable();
    void modelPassesTheTester();
};

void TestETableWidget::nullTitlesGiveParameterAndValueWithStretchingValue()
{
    ETableWidget table(nullptr, 2, nullptr);
    QCOMPARE(table.model()->headerData(0, Qt::Horizontal).toString(), LCQT__Parameter);
    QCOMPARE(table.model()->headerData(1, Qt::Horizontal).toString(), LCQT__Value);
    QCOMPARE(LCQT__Parameter, QStringLiteral("Parameter"));
    QCOMPARE(table.horizontalHeader()->sectionResizeMode(1), QHeaderView::Stretch);
    QCOMPARE(table.horizontalHeader()->sectionResizeMode(0), QHeaderView::ResizeToContents);

    // Three columns keep the titles given and no column stretches.
    ETableWidget three(nullptr, 3, threeTitles);
    QCOMPARE(three.model()->headerData(2, Qt::Horizontal).toString(), third);
    for (int c = 0; c < 3; ++c)
        QCOMPARE(three.horizontalHeader()->sectionResizeMode(c), QHeaderView::Interactive);
    QCOMPARE(three.widgetModel()->getHeader(3), QString());
    QCOMPARE(three.widgetModel()->getHeader(-1), QString());

    // Null titles for more columns than the default table has: untitled, never read past it.
    ETableWidget wide(nullptr, 5, nullptr);
    for (int c = 0; c < 5; ++c)
        QCOMPARE(wide.model()->headerData(c, Qt::Horizontal).toString(), QString());
    ETableWidget single(nullptr, 1, nullptr);
    QCOMPARE(single.model()->headerData(0, Qt::Horizontal).toString(), LCQT__Parameter);
}

void TestETableWidget::parentIsNotTakenOver()
{
    QWidget owner;
    QPointer<ETableWidget> table = new ETableWidget(&owner, 2, nullptr);
    QVERIFY(!table->parentWidget());
    delete table;
}

void TestETableWidget::rowsComeAndGoWithoutNotifications()
{
    ETableWidgetModel model(3, threeTitles);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    QCOMPARE(model.addRow(), 0);
    QCOMPARE(model.getRowCount(), 1);
    for (int c = 0; c < 3; ++c) {
        const ETableWidgetModel::Cell* cell = model.cell(0, c);
        QVERIFY(cell);
        QVERIFY(cell->text.isEmpty() && cell->toolTip.isEmpty() && !cell->icon && !cell->data);
    }
    model.addRows(4);
    model.addRows(0);
    model.addRows(-3);
    QCOMPARE(model.getRowCount(), 5);
    QCOMPARE(model.addRow(), 5);
    for (int r = 0; r < 6; ++r)
        model.cell(r, 1)->text = QString::number(r);

    model.removeRow(2);
    model.removeRow(-1);
    model.removeRow(5);   // only rows 0..4 are left
    QCOMPARE(column(model, 1), (QStringList{"0", "1", "3", "4", "5"}));
    QCOMPARE(inserted.count() + removed.count() + reset.count(), 0);

    // Emptied and filled again: the cells given back are made anew, empty.
    while (model.getRowCount())
        model.removeRow(0);
    QCOMPARE(model.addRow(), 0);
    QVERIFY(model.cell(0, 1)->text.isEmpty());
    {
        ETableWidgetModel other(2, nullptr); // cells of two models share one pool
        other.addRows(100);
        model.addRows(100);
        other.cell(99, 1)->text = QStringLiteral("other");
    }
    QCOMPARE(model.getRowCount(), 101);
    QVERIFY(model.cell(100, 2)->text.isEmpty());

    ETableWidgetModel noColumns(0, nullptr);
    QCOMPARE(noColumns.addRow(), -1);
    QCOMPARE(noColumns.getRowCount(), 0);
}

void TestETableWidget::cellDataFollowsItsRole()
{
    ETableWidget table(nullptr, 2, nullptr);
    QPixmap icon(8, 8);
    icon.fill(Qt::red);
    table.widgetModel()->addRows(1);
    table.setCell(0, 0, QStringLiteral("Address"), &icon, nullptr);
    table.setCell(0, 1, QStringLiteral("10.0.0.1"), nullptr, nullptr);
    QAbstractItemModel* model = table.model();
    const QModelIndex withIcon = model->index(0, 0), plain = model->index(0, 1);

    QCOMPARE(withIcon.data(Qt::DecorationRole).value<QPixmap>().toImage(), icon.toImage());
    QVERIFY(!plain.data(Qt::DecorationRole).isValid());
    QCOMPARE(plain.data(Qt::DisplayRole).toString(), QStringLiteral("10.0.0.1"));
    QCOMPARE(plain.data(Qt::EditRole).toString(), QStringLiteral("10.0.0.1"));
    QCOMPARE(plain.data(Qt::ToolTipRole).toString(), QStringLiteral("10.0.0.1"));
    QCOMPARE(plain.data(Qt::FontRole).value<QFont>(), ETableModel::fontRole());
    QVERIFY(!model->data(QModelIndex(), Qt::DisplayRole).isValid());
}

void TestETableWidget::setCellKeepsToolTipAndIgnoresMissingCells()
{
    ETableWidget table(nullptr, 2, nullptr);
    ETableWidgetModel* model = table.widgetModel();
    model->addRows(1);
    model->cell(0, 1)->setToolTip(QStringLiteral("The lab gateway"));
    int payload = 0;
    table.setCell(0, 1, QStringLiteral("10.0.0.1"), nullptr, &payload);
    QCOMPARE(model->index(0, 1).data(Qt::ToolTipRole).toString(), QStringLiteral("The lab gateway"));
    QCOMPARE(model->cell(0, 1)->data, static_cast<void*>(&payload));

    for (const QPoint& p : {QPoint(1, 0), QPoint(0, 2), QPoint(-1, 0), QPoint(0, -1)})
        table.setCell(p.x(), p.y(), QStringLiteral("x"), nullptr, nullptr);
    QCOMPARE(model->getRowCount(), 1);
    QVERIFY(!model->cell(1, 0));
    QVERIFY(!model->cell(0, 2));
    QCOMPARE(model->getCell(0, 5), QString());
}

void TestETableWidget::sortMovesWholeRows_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("sortColumn");
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("layoutChanges");

    const QStringList bBa{"b", "B", "a"};
    QTest::newRow("ascending is plain code-unit order") << bBa << 0 << int(Qt::AscendingOrder)
                                                        << QStringList{"B", "a", "b"} << 1;
    QTest::newRow("descending") << bBa << 0 << int(Qt::DescendingOrder) << QStringList{"b", "a", "B"} << 1;
    QTest::newRow("by the last column") << bBa << 2 << int(Qt::AscendingOrder) << QStringList{"B", "a", "b"} << 1;
    QTest::newRow("one row is left alone") << QStringList{"z"} << 0 << int(Qt::AscendingOrder) << QStringList{"z"} << 0;
    QTest::newRow("no rows") << QStringList{} << 0 << int(Qt::AscendingOrder) << QStringList{} << 0;
    QTest::newRow("column out of range") << bBa << 3 << int(Qt::AscendingOrder) << bBa << 0;
    QTest::newRow("negative column") << bBa << -1 << int(Qt::AscendingOrder) << bBa << 0;
}

void TestETableWidget::sortMovesWholeRows()
{
    QFETCH(QStringList, names);
    QFETCH(int, sortColumn);
    QFETCH(int, order);
    QFETCH(QStringList, expected);
    QFETCH(int, layoutChanges);

    ETableWidget table(nullptr, 3, threeTitles);
    fill(table, names);
    ETableWidgetModel* model = table.widgetModel();
    ETableWidgetModel::Cell* firstRowCell = model->cell(0, 1);
    if (firstRowCell)
        firstRowCell->setToolTip(QStringLiteral("tip of the first row"));
    QSignalSpy layout(model, &QAbstractItemModel::layoutChanged);

    model->sort(sortColumn, Qt::SortOrder(order));
    QCOMPARE(layout.count(), layoutChanges);
    QCOMPARE(column(*model, 0), expected);
    for (int r = 0; r < expected.size(); ++r) {
        QCOMPARE(model->getCell(r, 1), expected[r] + QStringLiteral("-b"));
        QCOMPARE(model->getCell(r, 2), expected[r] + QStringLiteral("-c"));
        QCOMPARE(model->cell(r, 0)->data, reinterpret_cast<void*>(quintptr(names.indexOf(expected[r]) + 1)));
    }
    // The cells themselves moved: the same object, with its tool tip, sits in its new row.
    if (firstRowCell) {
        const int at = expected.indexOf(names.first());
        QCOMPARE(model->cell(at, 1), firstRowCell);
        QCOMPARE(model->cell(at, 1)->toolTip, QStringLiteral("tip of the first row"));
    }
}

void TestETableWidget::resetModelReplacesAndDeletesTheOldModel()
{
    ETableWidget table(nullptr, 2, nullptr);
    QPointer<ETableWidgetModel> old = table.widgetModel();
    old->addRows(3);
    table.resetModel(3, nullptr);
    QVERIFY(!old);
    QCOMPARE(table.widgetModel()->getColumnCount(), 3);
    QCOMPARE(table.widgetModel()->getRowCount(), 0);
    // No default titles after a reset: the columns are untitled.
    QCOMPARE(table.model()->headerData(0, Qt::Horizontal).toString(), QString());
}

void TestETableWidget::headerClickSortsTheTable()
{
    ETableWidget table(nullptr, 3, threeTitles);
    fill(table, {"delta", "alpha", "charlie", "bravo"});
    table.setSortingEnabled(true);
    table.resize(500, 300);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));

    QHeaderView* header = table.horizontalHeader();
    const QPoint onSecond(header->sectionViewportPosition(1) + 10, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, onSecond);
    const Qt::SortOrder firstOrder = header->sortIndicatorOrder();
    QStringList ascending{"alpha", "bravo", "charlie", "delta"};
    QStringList descending = ascending;
    std::reverse(descending.begin(), descending.end());
    QCOMPARE(column(*table.widgetModel(), 0), firstOrder == Qt::AscendingOrder ? ascending : descending);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, onSecond);
    QCOMPARE(column(*table.widgetModel(), 0), firstOrder == Qt::AscendingOrder ? descending : ascending);
    QCOMPARE(table.model()->index(0, 1).data().toString(), table.widgetModel()->getCell(0, 0) + QStringLiteral("-b"));
}

void TestETableWidget::modelPassesTheTester()
{
    ETableWidget table(nullptr, 3, threeTitles);
    fill(table, {"b", "a", "c"});
    QAbstractItemModelTester tester(table.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    table.widgetModel()->sort(1, Qt::AscendingOrder);
    table.widgetModel()->sort(1, Qt::DescendingOrder);
    table.resetModel(2, threeTitles);
    QAbstractItemModelTester again(table.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    table.widgetModel()->addRows(2);
    table.widgetModel()->sort(0, Qt::AscendingOrder);
}

CG_TEST_MAIN(TestETableWidget)
#include "tst_etablewidget.moc"
