// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebox.h"
#include "etable.h"

#include <QPixmap>
#include <QRegularExpression>
#include <QSignalSpy>

#include <cstdint>
#include <functional>
#include <string>

namespace {

// An item that counts its living instances, so tests can see who deletes what.
class CountedItem : public EBoxItem
{
public:
    explicit CountedItem(const QString& text)
        : EBoxItem(text)
    {
        ++alive;
    }
    ~CountedItem() override { --alive; }
    QString getToolTip() const override { return QStringLiteral("tip: ") + text(); }
    static int alive;
};
int CountedItem::alive = 0;

QStringList texts(const EBoxModel& model)
{
    QStringList out;
    for (const EBoxItem* item : model.items())
        out << (item ? item->text() : QStringLiteral("<null>"));
    return out;
}

QStringList letters(const char* s)
{
    QStringList out;
    for (const char* p = s; *p; ++p)
        out << QString(QLatin1Char(*p));
    return out;
}

QList<int> selectedRows(const EBox& box)
{
    QList<int> rows;
    for (const QModelIndex& index : box.selectionModel()->selectedRows(0))
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void fill(EBox& box, const char* s)
{
    box.boxModel()->insert(0, letters(s));
}

// Writes every notification of the model into a log, one line each.
class ModelLog
{
public:
    explicit ModelLog(QAbstractItemModel* model)
    {
        auto rows = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                lines << QStringLiteral("%1 %2 %3").arg(QLatin1String(what)).arg(first).arg(last);
            };
        };
        auto plain = [this](const char* what) { return [this, what] { lines << QLatin1String(what); }; };
        QObject::connect(model, &QAbstractItemModel::rowsAboutToBeInserted, &ctx, rows("aboutToInsert"));
        QObject::connect(model, &QAbstractItemModel::rowsInserted, &ctx, rows("inserted"));
        QObject::connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, &ctx, rows("aboutToRemove"));
        QObject::connect(model, &QAbstractItemModel::rowsRemoved, &ctx, rows("removed"));
        QObject::connect(model, &QAbstractItemModel::columnsAboutToBeInserted, &ctx, rows("columns"));
        QObject::connect(model, &QAbstractItemModel::columnsAboutToBeRemoved, &ctx, rows("columns"));
        QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, &ctx, plain("aboutToReset"));
        QObject::connect(model, &QAbstractItemModel::modelReset, &ctx, plain("reset"));
        QObject::connect(model, &QAbstractItemModel::dataChanged, &ctx, plain("dataChanged"));
        QObject::connect(model, &QAbstractItemModel::headerDataChanged, &ctx, plain("headerDataChanged"));
        QObject::connect(model, &QAbstractItemModel::layoutAboutToBeChanged, &ctx, plain("layoutAboutToChange"));
        QObject::connect(model, &QAbstractItemModel::layoutChanged, &ctx, plain("layoutChanged"));
        QObject::connect(model, &QAbstractItemModel::rowsAboutToBeMoved, &ctx, plain("rowsAboutToMove"));
        QObject::connect(model, &QAbstractItemModel::rowsMoved, &ctx, plain("rowsMoved"));
    }
    QStringList lines;

private:
    QObject ctx;
};

} // namespace

using ModelOp = std::function<void(EBoxModel&)>;
Q_DECLARE_METATYPE(ModelOp)

class Receiver : public QObject
{
    Q_OBJECT
public:
    QList<int> doubleClicked;
    int selectionChanges = 0;
    QList<int> currentRows;
    QList<QPoint> menus;

public slots:
    void onDoubleClick(const QModelIndex& index) { doubleClicked << index.row(); }
    void onSelection(const QItemSelection&, const QItemSelection&) { ++selectionChanges; }
    void onCurrent(const QModelIndex& current, const QModelIndex&) { currentRows << current.row(); }
    void onMenu(const QPoint& pos) { menus << pos; }
};

class TestEBox : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(CountedItem::alive, 0); }

    void capacityFollowsGrowthRule_data();
    void capacityFollowsGrowthRule();
    void vectorKeepsValuesReallocCannotMove();
    void vectorIgnoresOutOfRangePositions_data();
    void vectorIgnoresOutOfRangePositions();
    void objectVectorOwnsAndHandsOverItems();

    void dataAnswersColumnOneLikeColumnZero_data();
    void dataAnswersColumnOneLikeColumnZero();
    void structureAndLookups();

    void notifications_data();
    void notifications();
    void batchFreezesTheViewUntilTheOutermostEnd();

    void moveTo_data();
    void moveTo();
    void moveSelected_data();
    void moveSelected();
    void moveSelectedTo_data();
    void moveSelectedTo();
    void removeSelectedTakesItemsOutWithoutDeleting();
    void sortByText_data();
    void sortByText();

    void userSelectsWithMouseAndKeyboard();
    void connectorsDeliverUserActions();
    void badInputIsIgnored();
};

// ------------------------------------------------------------------------------------ arrays

void TestEBox::capacityFollowsGrowthRule_data()
{
    QTest::addColumn<int>("appends");
    QTest::addColumn<int>("capacity");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 16;
    QTest::newRow("16") << 16 << 16;
    QTest::newRow("17") << 17 << 32;
    QTest::newRow("255") << 255 << 256;
    QTest::newRow("256") << 256 << 256;
    QTest::newRow("257 steps by 256") << 257 << 512;
    QTest::newRow("4096") << 4096 << 4096;
    QTest::newRow("4097 steps by 4096") << 4097 << 8192;
    QTest::newRow("10000") << 10000 << 12288;
}

void TestEBox::capacityFollowsGrowthRule()
{
    QFETCH(int, appends);
    QFETCH(int, capacity);
    SimpleVector<int> v;
    for (int i = 0; i < appends; ++i)
        v.append(i);
    QCOMPARE(v.count(), appends);
    QCOMPARE(v.capacity(), capacity);
    for (int i = 0; i < appends; ++i)
        QCOMPARE(v[i], i);

    SimpleVector<int> expanded;
    expanded.expand(appends);
    QCOMPARE(expanded.capacity(), capacity);
    QCOMPARE(expanded.count(), 0);

    // Capacity never shrinks: removing everything keeps the array.
    v.removeRange(0, v.count());
    QCOMPARE(v.count(), 0);
    QCOMPARE(v.capacity(), capacity);
    v.expand(capacity - 1);
    QCOMPARE(v.capacity(), capacity);
}

void TestEBox::vectorKeepsValuesReallocCannotMove()
{
    // A short std::string points into itself, and an over-aligned value needs more alignment than
    // malloc gives: neither may be grown with realloc.
    struct alignas(64) Wide
    {
        int value;
    };
    SimpleVector<std::string> strings;
    SimpleVector<Wide> wide;
    for (int i = 0; i < 300; ++i) {
        strings.insert(i / 2, std::to_string(i));
        wide.append(Wide{i});
        QCOMPARE(reinterpret_cast<std::uintptr_t>(wide.data()) % alignof(Wide), std::uintptr_t(0));
    }
    QCOMPARE(strings.capacity(), 512);
    QCOMPARE(strings[0], std::string("1"));
    QCOMPARE(strings[150], std::string("298"));
    QCOMPARE(strings[299], std::string("0"));
    strings.removeRange(0, 299);
    QCOMPARE(strings[0], std::string("0"));
    QCOMPARE(wide[299].value, 299);
}

void TestEBox::vectorIgnoresOutOfRangePositions_data()
{
    QTest::addColumn<QString>("op");
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<QList<int>>("expected");
    const QList<int> same{0, 1, 2, 3, 4};
    QTest::newRow("insert front") << "insert" << 0 << 9 << QList<int>{9, 0, 1, 2, 3, 4};
    QTest::newRow("insert middle") << "insert" << 2 << 9 << QList<int>{0, 1, 9, 2, 3, 4};
    QTest::newRow("insert at count") << "insert" << 5 << 9 << QList<int>{0, 1, 2, 3, 4, 9};
    QTest::newRow("insert past end") << "insert" << 6 << 9 << same;
    QTest::newRow("insert negative") << "insert" << -1 << 9 << same;
    QTest::newRow("remove middle") << "remove" << 1 << 3 << QList<int>{0, 3, 4};
    QTest::newRow("remove tail") << "remove" << 3 << 5 << QList<int>{0, 1, 2};
    QTest::newRow("remove empty range") << "remove" << 2 << 2 << same;
    QTest::newRow("remove negative from") << "remove" << -1 << 2 << same;
    QTest::newRow("remove from count") << "remove" << 5 << 6 << same;
    QTest::newRow("remove reversed") << "remove" << 3 << 1 << same;
    QTest::newRow("remove past end clipped") << "remove" << 3 << 99 << QList<int>{0, 1, 2};
}

void TestEBox::vectorIgnoresOutOfRangePositions()
{
    QFETCH(QString, op);
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(QList<int>, expected);
    SimpleVector<int> v;
    for (int i = 0; i < 5; ++i)
        v.append(i);
    if (op == QLatin1String("insert"))
        v.insert(a, b);
    else
        v.removeRange(a, b);
    QCOMPARE(QList<int>(v.begin(), v.end()), expected);
    QCOMPARE(v.capacity(), 16);
}

void TestEBox::objectVectorOwnsAndHandsOverItems()
{
    {
        ObjectVector<EBoxItem> owned;
        owned.append(new CountedItem(QStringLiteral("a")));
        owned.append(nullptr);
        owned.append(new CountedItem(QStringLiteral("b")));
        QCOMPARE(CountedItem::alive, 2);
    }
    QCOMPARE(CountedItem::alive, 0);

    ObjectVector<EBoxItem> source;
    for (int i = 0; i < 20; ++i)
        source.append(new CountedItem(QString::number(i)));
    EBoxItem* third = source[2];
    ObjectVector<EBoxItem> target;
    target.append(new CountedItem(QStringLiteral("first")));
    source.moveAllTo(target);
    QCOMPARE(source.count(), 0);
    QCOMPARE(source.capacity(), 0);
    QVERIFY(!source.data());
    QCOMPARE(target.count(), 21);
    QCOMPARE(target.capacity(), 32);
    QCOMPARE(target[3], third);
    source.moveAllTo(source); // nothing to move, nothing lost
    target.moveAllTo(target);
    QCOMPARE(target.count(), 21);
    QCOMPARE(CountedItem::alive, 21);

    EBox box;
    ObjectVector<EBoxItem> batch;
    batch.append(new CountedItem(QStringLiteral("x")));
    batch.append(new CountedItem(QStringLiteral("y")));
    EBoxItem* y = batch[1];
    target.moveAllTo(batch);
    box.boxModel()->appendSteal(batch);
    QCOMPARE(batch.count(), 0);
    QCOMPARE(batch.capacity(), 0);
    QCOMPARE(box.boxModel()->count(), 23);
    QCOMPARE(box.boxModel()->item(1), y);
    QCOMPARE(CountedItem::alive, 23); // taken over, not copied
}

// ------------------------------------------------------------------------------------- model

void TestEBox::dataAnswersColumnOneLikeColumnZero_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("expected");
    const QVariant none;
    const QVariant text(QStringLiteral("alpha"));
    QTest::newRow("display") << 0 << int(Qt::DisplayRole) << text;
    QTest::newRow("edit") << 0 << int(Qt::EditRole) << text;
    QTest::newRow("tool tip from the item") << 0 << int(Qt::ToolTipRole) << QVariant(QStringLiteral("tip: alpha"));
    QTest::newRow("column 1 display") << 1 << int(Qt::DisplayRole) << text;
    QTest::newRow("column 2 display") << 2 << int(Qt::DisplayRole) << none;
    QTest::newRow("column 2 font") << 2 << int(Qt::FontRole) << none;
    QTest::newRow("no icon") << 0 << int(Qt::DecorationRole) << none;
    QTest::newRow("other role") << 0 << int(Qt::CheckStateRole) << none;
    QTest::newRow("user role") << 1 << int(Qt::UserRole) << none;
}

void TestEBox::dataAnswersColumnOneLikeColumnZero()
{
    QFETCH(int, column);
    QFETCH(int, role);
    QFETCH(QVariant, expected);
    EBoxModel model;
    model.append(new CountedItem(QStringLiteral("alpha")));
    QCOMPARE(model.data(model.index(0, column), role), expected);
}

void TestEBox::structureAndLookups()
{
    EBoxModel model;
    QCOMPARE(model.findId(0), -1);
    QCOMPARE(model.findData(nullptr), -1);

    QPixmap icon(8, 8);
    icon.fill(Qt::red);
    const int anchor = 0;
    model.append(new EBoxItem(&icon, QStringLiteral("with icon"), 7));
    model.append(new EBoxItem(nullptr, QStringLiteral("data"), &anchor));
    model.append(new EBoxItem(QStringLiteral("plain")));
    model.append(new EBoxItem(nullptr, QStringLiteral("seven again"), 7));

    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.columnCount(), 1);
    QVERIFY(!model.hasChildren(QModelIndex()));
    QVERIFY(!model.parent(model.index(1, 0)).isValid());
    QVERIFY(!model.index(4, 0).isValid());
    QVERIFY(!model.index(-1, 0).isValid());
    QCOMPARE(model.index(1, 0).internalPointer(), static_cast<void*>(model.item(1)));

    const QVariant decoration = model.data(model.index(0, 0), Qt::DecorationRole);
    QCOMPARE(decoration.value<QPixmap>().toImage(), icon.toImage());
    QCOMPARE(model.data(model.index(2, 0), Qt::ToolTipRole).toString(), QStringLiteral("plain"));
    // The font is the library's item font for every row, even one that does not exist.
    QCOMPARE(model.data(model.index(3, 0), Qt::FontRole).value<QFont>(), ETableModel::fontRole());
    model.items().append(nullptr);
    QCOMPARE(model.data(model.index(4, 0), Qt::FontRole).value<QFont>(), ETableModel::fontRole());
    QVERIFY(!model.data(model.index(4, 0), Qt::DisplayRole).isValid());
    QVERIFY(!model.data(model.index(4, 0), Qt::ToolTipRole).isValid());

    QCOMPARE(model.findId(7), 0);
    QCOMPARE(model.findData(&anchor), 1);
    QCOMPARE(model.findId(0), 2);
    QCOMPARE(model.findData(nullptr), 2); // id 0 and a null pointer are the same word
    QCOMPARE(model.findId(8), -1);

    // Id and data share one word: writing one replaces the other.
    model.item(1)->setId(7);
    QCOMPARE(model.findData(&anchor), -1);
    QCOMPARE(model.findId(7), 0);
    model.item(0)->setData(&anchor);
    QCOMPARE(model.findId(7), 1);
    QCOMPARE(model.findData(&anchor), 0);
}

void TestEBox::notifications_data()
{
    QTest::addColumn<ModelOp>("op");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("rows");
    const QStringList reset{QStringLiteral("aboutToReset"), QStringLiteral("reset")};

    QTest::newRow("append") << ModelOp([](EBoxModel& m) { m.append(new EBoxItem(QStringLiteral("D"))); })
                            << QStringList{"aboutToInsert 3 3", "inserted 3 3"} << letters("ABCD");
    QTest::newRow("insert one") << ModelOp([](EBoxModel& m) { m.insert(1, new EBoxItem(QStringLiteral("x"))); })
                                << QStringList{"aboutToInsert 1 1", "inserted 1 1"} << letters("AxBC");
    QTest::newRow("insert bad row still announced")
        << ModelOp([](EBoxModel& m) { m.insert(7, new CountedItem(QStringLiteral("x"))); })
        << QStringList{"aboutToInsert 7 7", "inserted 7 7"} << letters("ABC");
    QTest::newRow("insert texts") << ModelOp([](EBoxModel& m) { m.insert(1, letters("xy")); })
                                  << QStringList{"aboutToInsert 1 2", "inserted 1 2"} << letters("AxyBC");
    QTest::newRow("insert texts at the largest row") << ModelOp([](EBoxModel& m) { m.insert(INT_MAX, letters("xy")); })
                                                     << QStringList{"aboutToInsert 2147483647 2147483647",
                                                                    "inserted 2147483647 2147483647"}
                                                     << letters("ABC");
    QTest::newRow("insert no texts") << ModelOp([](EBoxModel& m) { m.insert(0, QStringList()); })
                                     << QStringList() << letters("ABC");
    QTest::newRow("remove") << ModelOp([](EBoxModel& m) { m.remove(1); })
                            << QStringList{"aboutToRemove 1 1", "removed 1 1"} << letters("AC");
    QTest::newRow("remove bad row still announced") << ModelOp([](EBoxModel& m) { m.remove(3); })
                                                    << QStringList{"aboutToRemove 3 3", "removed 3 3"}
                                                    << letters("ABC");
    QTest::newRow("remove all") << ModelOp([](EBoxModel& m) { m.removeAll(); })
                                << QStringList{"aboutToRemove 0 2", "removed 0 2"} << QStringList();
    QTest::newRow("remove all twice") << ModelOp([](EBoxModel& m) {
        m.removeAll();
        m.removeAll();
    }) << QStringList{"aboutToRemove 0 2", "removed 0 2"} << QStringList();
    QTest::newRow("append steal") << ModelOp([](EBoxModel& m) {
        ObjectVector<EBoxItem> v;
        v.append(new EBoxItem(QStringLiteral("x")));
        v.append(new EBoxItem(QStringLiteral("y")));
        m.appendSteal(v);
    }) << QStringList{"aboutToInsert 3 4", "inserted 3 4"} << letters("ABCxy");
    QTest::newRow("append steal nothing") << ModelOp([](EBoxModel& m) {
        ObjectVector<EBoxItem> v;
        m.appendSteal(v);
    }) << QStringList() << letters("ABC");
    QTest::newRow("moveTo in place") << ModelOp([](EBoxModel& m) { QCOMPARE(m.moveTo(1, 2), 2); })
                                     << QStringList() << letters("ABC");
    QTest::newRow("moveTo resets") << ModelOp([](EBoxModel& m) { QCOMPARE(m.moveTo(2, 0), 0); })
                                   << reset << letters("CAB");
    QTest::newRow("sort resets") << ModelOp([](EBoxModel& m) { m.sort(0, Qt::DescendingOrder); })
                                 << reset << letters("CBA");
    QTest::newRow("batch of everything") << ModelOp([](EBoxModel& m) {
        m.beginChanges();
        m.append(new EBoxItem(QStringLiteral("D")));
        m.insert(0, letters("xy"));
        m.insert(0, new EBoxItem(QStringLiteral("z")));
        m.remove(1);
        m.remove(42);
        ObjectVector<EBoxItem> v;
        v.append(new EBoxItem(QStringLiteral("w")));
        m.appendSteal(v);
        m.moveTo(0, 3);
        m.sort(0, Qt::AscendingOrder);
        m.endChanges();
    }) << reset << letters("ABCDwyz");
    QTest::newRow("nested batches") << ModelOp([](EBoxModel& m) {
        m.beginChanges();
        m.beginChanges();
        m.removeAll();
        m.endChanges();
        QCOMPARE(m.changeDepth(), 1);
        m.insert(0, letters("q"));
        m.beginChanges();
        m.append(new EBoxItem(QStringLiteral("r")));
        m.endChanges();
        m.endChanges();
        m.endChanges(); // one too many: ignored
        QCOMPARE(m.changeDepth(), 0);
    }) << reset << letters("qr");
}

void TestEBox::notifications()
{
    QFETCH(ModelOp, op);
    QFETCH(QStringList, expected);
    QFETCH(QStringList, rows);
    EBox box;
    fill(box, "ABC");
    ModelLog log(box.boxModel());
    op(*box.boxModel());
    QCOMPARE(log.lines, expected);
    QCOMPARE(texts(*box.boxModel()), rows);
    QCOMPARE(box.model()->rowCount(), rows.size());
}

void TestEBox::batchFreezesTheViewUntilTheOutermostEnd()
{
    EBox box;
    box.show();
    EBoxModel* model = box.boxModel();
    QVERIFY(box.updatesEnabled());
    model->beginChanges();
    QVERIFY(!box.updatesEnabled());
    model->beginChanges();
    model->endChanges();
    QVERIFY(!box.updatesEnabled());
    for (int i = 0; i < 100; ++i)
        model->append(new EBoxItem(QString::number(i)));
    QCOMPARE(box.model()->rowCount(), 100);
    model->endChanges();
    QVERIFY(box.updatesEnabled());
    QVERIFY(box.visualRect(model->index(99, 0)).height() > 0);
}

// ------------------------------------------------------------------------------------- moves

void TestEBox::moveTo_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("order");
    QTest::newRow("onto itself") << 3 << 3 << 3 << "ABCDE";
    QTest::newRow("before the next") << 3 << 4 << 4 << "ABCDE";
    QTest::newRow("first to the end") << 0 << 5 << 4 << "BCDEA";
    QTest::newRow("last to the front") << 4 << 0 << 0 << "EABCD";
    QTest::newRow("down past one") << 1 << 3 << 2 << "ACBDE";
    QTest::newRow("up by one") << 2 << 1 << 1 << "ACBDE";
    QTest::newRow("bad from") << 7 << 0 << -1 << "ABCDE";
    QTest::newRow("negative from") << -2 << 0 << -1 << "ABCDE";
    QTest::newRow("to past the end") << 0 << 9 << -1 << "ABCDE";
    QTest::newRow("largest from") << INT_MAX << 0 << -1 << "ABCDE";
}

void TestEBox::moveTo()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, result);
    QFETCH(QString, order);
    EBox box;
    fill(box, "ABCDE");
    EBoxItem* moved = box.boxModel()->item(from);
    QCOMPARE(box.boxModel()->moveTo(from, to), result);
    QCOMPARE(texts(*box.boxModel()).join(QString()), order);
    if (result >= 0 && order != QLatin1String("ABCDE"))
        QCOMPARE(box.boxModel()->item(result), moved);
    QVERIFY(box.updatesEnabled());
}

void TestEBox::moveSelected_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QList<int>>("select"); // rows selected one at a time
    QTest::addColumn<int>("direction");
    QTest::addColumn<QString>("order");
    QTest::addColumn<QList<int>>("selected");
    QTest::newRow("block down") << "ABCDE" << QList<int>{1, 2} << 1 << "ADBCE" << QList<int>{2, 3};
    QTest::newRow("block up") << "ABCDE" << QList<int>{1, 2} << -1 << "BCADE" << QList<int>{0, 1};
    QTest::newRow("last row stays, loses selection") << "ABCDE" << QList<int>{4} << 1 << "ABCDE" << QList<int>{};
    QTest::newRow("first row stays, loses selection") << "ABCDE" << QList<int>{0} << -1 << "ABCDE" << QList<int>{};
    QTest::newRow("adjacent rows move as one block") << "ABCDE" << QList<int>{2, 1} << 1 << "ADBCE" << QList<int>{2, 3};
    QTest::newRow("scattered blocks down") << "ABCDEFG" << QList<int>{0, 2, 3} << 1 << "BAECDFG" << QList<int>{1, 3, 4};
    QTest::newRow("scattered blocks up") << "ABCDEFG" << QList<int>{1, 3, 4} << -1 << "BADECFG" << QList<int>{0, 2, 3};
    QTest::newRow("blocked block is overtaken") << "ABCDE" << QList<int>{3, 4} << 1 << "ABCED" << QList<int>{4};
    QTest::newRow("magnitude only tests eligibility") << "ABCDEFG" << QList<int>{1} << 3 << "ACBDEFG" << QList<int>{4};
    QTest::newRow("direction 0 moves down, reselects in place") << "ABCDE" << QList<int>{1} << 0 << "ACBDE" << QList<int>{1};
    QTest::newRow("direction 0 at the end stays") << "ABCDE" << QList<int>{4} << 0 << "ABCDE" << QList<int>{};
    QTest::newRow("too far to be eligible") << "ABCDE" << QList<int>{1} << -2 << "ABCDE" << QList<int>{};
}

void TestEBox::moveSelected()
{
    QFETCH(QString, start);
    QFETCH(QList<int>, select);
    QFETCH(int, direction);
    QFETCH(QString, order);
    QFETCH(QList<int>, selected);
    EBox box;
    box.setSelectionMode(QAbstractItemView::ExtendedSelection);
    fill(box, start.toLatin1().constData());
    for (int row : select)
        box.setSelected(row, true);
    QCOMPARE(box.selectedCount(), select.size());
    ModelLog log(box.boxModel());
    box.boxModel()->moveSelected(direction);
    QCOMPARE(texts(*box.boxModel()).join(QString()), order);
    QCOMPARE(selectedRows(box), selected);
    QCOMPARE(log.lines, (QStringList{"aboutToReset", "reset"}));
}

void TestEBox::moveSelectedTo_data()
{
    QTest::addColumn<QList<int>>("select"); // [first, end) pairs, one selection range each
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    QTest::newRow("blocks arrive in reverse order") << QList<int>{1, 3, 5, 6} << "ADE" << "XFBC";
    QTest::newRow("rows picked one by one arrive reversed") << QList<int>{1, 2, 2, 3, 5, 6} << "ADE" << "XFCB";
    QTest::newRow("one block") << QList<int>{0, 3} << "DEF" << "XABC";
    QTest::newRow("everything") << QList<int>{0, 6} << "" << "XABCDEF";
}

void TestEBox::moveSelectedTo()
{
    QFETCH(QList<int>, select);
    QFETCH(QString, source);
    QFETCH(QString, target);
    EBox from;
    EBox to;
    from.setSelectionMode(QAbstractItemView::ExtendedSelection);
    to.setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (const char* s = "ABCDEF"; *s; ++s)
        from.boxModel()->append(new CountedItem(QString(QLatin1Char(*s))));
    to.boxModel()->append(new CountedItem(QStringLiteral("X")));
    to.setSelected(0, true);
    // Select the first range last, so the order of the ranges does not decide the result.
    int moved = 0;
    for (int i = select.size() - 2; i >= 0; i -= 2) {
        from.selectRange(select.at(i), select.at(i + 1));
        moved += select.at(i + 1) - select.at(i);
    }

    ModelLog fromLog(from.boxModel());
    ModelLog toLog(to.boxModel());
    from.boxModel()->moveSelectedTo(to.boxModel());
    QCOMPARE(texts(*from.boxModel()).join(QString()), source);
    QCOMPARE(texts(*to.boxModel()).join(QString()), target);
    QCOMPARE(fromLog.lines, (QStringList{"aboutToReset", "reset"}));
    QCOMPARE(toLog.lines, (QStringList{"aboutToReset", "reset"}));
    QList<int> movedRows;
    for (int i = 0; i < moved; ++i)
        movedRows << 1 + i;
    QCOMPARE(selectedRows(to), movedRows);
    QCOMPARE(from.selectedCount(), 0);
    QCOMPARE(CountedItem::alive, 7); // every item is owned exactly once: cleanup() proves it
}

void TestEBox::removeSelectedTakesItemsOutWithoutDeleting()
{
    EBox box;
    box.setSelectionMode(QAbstractItemView::ExtendedSelection);
    QList<EBoxItem*> all;
    for (const char* s = "ABCDEFG"; *s; ++s) {
        all << new CountedItem(QString(QLatin1Char(*s)));
        box.boxModel()->append(all.last());
    }
    box.selectRange(5, 7);
    box.setSelected(1, true);
    box.setSelected(2, true);
    box.setSelected(2, false);
    QCOMPARE(box.selectedCount(), 3);
    ModelLog log(box.boxModel());
    box.boxModel()->removeSelected();
    QCOMPARE(log.lines, (QStringList{"aboutToReset", "reset"}));
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("ACDE"));
    QCOMPARE(CountedItem::alive, 7);
    QCOMPARE(box.selectedCount(), 0);
    // The application that kept the pointers deletes the removed items.
    delete all.at(1);
    delete all.at(5);
    delete all.at(6);
}

void TestEBox::sortByText_data()
{
    QTest::addColumn<QStringList>("start");
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("sorted");
    const QStringList bab{"b", "a", "B"};
    QTest::newRow("descending, upper case last") << bab << int(Qt::DescendingOrder) << bab;
    QTest::newRow("ascending, upper case first") << bab << int(Qt::AscendingOrder) << QStringList{"B", "a", "b"};
    QTest::newRow("code units, not locale")
        << QStringList{"\xc3\xa9", "z", "e", "Z"} << int(Qt::AscendingOrder) << QStringList{"Z", "e", "z", "\xc3\xa9"};
    QTest::newRow("prefix first") << QStringList{"ab", "a", "abc", ""} << int(Qt::AscendingOrder)
                                  << QStringList{"", "a", "ab", "abc"};
    const QString nul = QStringLiteral("a") + QChar(0);
    QTest::newRow("a NUL unit is more than nothing")
        << QStringList{nul, "a", nul + "b"} << int(Qt::DescendingOrder) << QStringList{nul + "b", nul, "a"};
    QTest::newRow("long shared beginning")
        << QStringList{"certificate-authority-2", "certificate-authority-10", "certificate-authority-1"}
        << int(Qt::AscendingOrder)
        << QStringList{"certificate-authority-1", "certificate-authority-10", "certificate-authority-2"};
    QTest::newRow("units above 0x7fff")
        << QStringList{QString(QChar(0xfffd)), QString(QChar(0x8000)), "~"} << int(Qt::DescendingOrder)
        << QStringList{QString(QChar(0xfffd)), QString(QChar(0x8000)), "~"};
}

void TestEBox::sortByText()
{
    QFETCH(QStringList, start);
    QFETCH(int, order);
    QFETCH(QStringList, sorted);
    // Ids remember the original positions, so equal texts show whether they kept their order.
    auto make = [&start](EBoxModel& model) {
        model.insert(0, start + start);
        for (int i = 0; i < model.count(); ++i)
            model.item(i)->setId(i);
    };
    auto ids = [](const EBoxModel& model) {
        QList<int> out;
        for (const EBoxItem* item : model.items())
            out << item->id();
        return out;
    };
    QStringList doubled;
    for (const QString& s : sorted)
        doubled << s << s;

    EBoxModel byColumn;
    make(byColumn);
    byColumn.sort(0, Qt::SortOrder(order));
    QCOMPARE(texts(byColumn), doubled);

    // The column sort and the comparator sort agree, down to the order of equal texts.
    EBoxModel byComparator;
    make(byComparator);
    byComparator.sort(order == Qt::DescendingOrder ? comparator_des : comparator_asc);
    QCOMPARE(texts(byComparator), doubled);
    QCOMPARE(ids(byComparator), ids(byColumn));
}

// ------------------------------------------------------------------------------------ widget

void TestEBox::userSelectsWithMouseAndKeyboard()
{
    EBox box;
    box.setSelectionMode(QAbstractItemView::ExtendedSelection);
    fill(box, "ABCDEFGH");
    box.resize(200, 300);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QWidget* vp = box.viewport();
    auto at = [&box](int row) { return box.visualRect(box.boxModel()->index(row, 0)).center(); };

    QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, at(1));
    QTest::mouseClick(vp, Qt::LeftButton, Qt::ShiftModifier, at(2));
    QTest::mouseClick(vp, Qt::LeftButton, Qt::ControlModifier, at(5));
    QCOMPARE(selectedRows(box), (QList<int>{1, 2, 5}));
    QCOMPARE(box.selectedCount(), 3);

    box.boxModel()->moveSelected(1);
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("ADBCEGFH"));
    QCOMPARE(selectedRows(box), (QList<int>{2, 3, 6}));

    // Keyboard: a plain arrow replaces the selection, Shift+arrow extends it.
    box.setFocus();
    QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, at(6));
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(selectedRows(box), (QList<int>{5}));
    QTest::keyClick(&box, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&box, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(selectedRows(box), (QList<int>{5, 6, 7}));
    box.boxModel()->moveSelected(-1);
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("ADBCGFHE"));
    QCOMPARE(selectedRows(box), (QList<int>{4, 5, 6}));
}

void TestEBox::connectorsDeliverUserActions()
{
    EBox box;
    fill(box, "ABCD");
    box.resize(200, 200);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    Receiver r;
    QVERIFY(box.setSlotForDoubleClick(&r, SLOT(onDoubleClick(QModelIndex))));
    QVERIFY(box.setSlotForChangeSelection(&r, SLOT(onSelection(QItemSelection, QItemSelection))));
    QVERIFY(box.setSlotForChangeCurrent(&r, SLOT(onCurrent(QModelIndex, QModelIndex))));
    QCOMPARE(box.contextMenuPolicy(), Qt::DefaultContextMenu);
    QVERIFY(box.setSlotForContextMenu(&r, SLOT(onMenu(QPoint))));
    QCOMPARE(box.contextMenuPolicy(), Qt::CustomContextMenu);

    QWidget* vp = box.viewport();
    const QPoint second = box.visualRect(box.boxModel()->index(2, 0)).center();
    QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, second);
    QCOMPARE(r.currentRows, QList<int>{2});
    QCOMPARE(r.selectionChanges, 1);
    QTest::mouseDClick(vp, Qt::LeftButton, Qt::NoModifier, second);
    QCOMPARE(r.doubleClicked, QList<int>{2});
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(r.currentRows, (QList<int>{2, 3}));
    QCOMPARE(r.selectionChanges, 2);

    QContextMenuEvent menu(QContextMenuEvent::Mouse, second, vp->mapToGlobal(second));
    QApplication::sendEvent(vp, &menu);
    QCOMPARE(r.menus, QList<QPoint>{second});

    // Connectors refuse what cannot be connected.
    QVERIFY(!box.setSlotForDoubleClick(nullptr, SLOT(onDoubleClick(QModelIndex))));
    QVERIFY(!box.setSlotForChangeCurrent(&r, nullptr));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot")));
    QVERIFY(!box.setSlotForChangeSelection(&r, SLOT(noSuchSlot())));
}

void TestEBox::badInputIsIgnored()
{
    // A model without a view has no selection to act on.
    EBoxModel lonely;
    lonely.insert(0, letters("AB"));
    ModelLog lonelyLog(&lonely);
    lonely.moveSelected(1);
    lonely.removeSelected();
    lonely.moveSelectedTo(nullptr);
    QCOMPARE(lonely.moveTo(0, -3), -1);
    QVERIFY(!lonely.data(QModelIndex(), Qt::DisplayRole).isValid());
    QVERIFY(lonelyLog.lines.isEmpty());

    EBox box;
    EBox other;
    box.setSelectionMode(QAbstractItemView::ExtendedSelection);
    fill(box, "ABC");
    ModelLog log(box.boxModel());
    // Empty selections: nothing moves and the view keeps its state.
    box.boxModel()->moveSelected(-1);
    box.boxModel()->removeSelected();
    box.boxModel()->moveSelectedTo(other.boxModel());
    box.setSelected(1, true);
    box.boxModel()->moveSelectedTo(nullptr);
    box.boxModel()->moveSelectedTo(box.boxModel());
    QVERIFY(log.lines.isEmpty());
    QCOMPARE(other.boxModel()->count(), 0);

    box.setSelected(-1, true);
    box.setSelected(3, true);
    box.selectRange(2, 1);
    box.selectRange(-5, 0);
    box.selectRange(3, 40);
    QCOMPARE(selectedRows(box), QList<int>{1});
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("ABC"));

    // Indexes of another model, negative columns and empty comparators are refused.
    other.boxModel()->append(new EBoxItem(QStringLiteral("Z")));
    QVERIFY(!box.boxModel()->data(other.boxModel()->index(0, 0)).isValid());
    QVERIFY(!box.boxModel()->data(box.boxModel()->index(0, -1)).isValid());
    box.boxModel()->sort(nullptr);
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("ABC"));

    // Rows selected in a second column stand for the same rows, never for a second copy.
    box.selectionModel()->select(QItemSelection(box.boxModel()->index(0, 1), box.boxModel()->index(1, 1)),
                                 QItemSelectionModel::Select);
    box.boxModel()->moveSelectedTo(other.boxModel());
    QCOMPARE(texts(*other.boxModel()).join(QString()), QStringLiteral("ZAB"));
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("C"));

    // remove() of a bad row with a view attached changes nothing in the list.
    box.boxModel()->remove(-1);
    box.boxModel()->remove(1);
    QCOMPARE(texts(*box.boxModel()).join(QString()), QStringLiteral("C"));
}

CG_TEST_MAIN(TestEBox)
#include "tst_ebox.moc"
