// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebox.h"
#include "etable.h"

#include <QPixmap>
#include <QRandomGenerator>
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

QString texts(const EBoxModel& model)
{
    QString out;
    for (const EBoxItem* item : model.items())
        out += item ? item->text() : QStringLiteral("<null>");
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

// Writes the notifications that complete a change into a log, one line each.
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
        QObject::connect(model, &QAbstractItemModel::rowsInserted, &ctx, rows("inserted"));
        QObject::connect(model, &QAbstractItemModel::rowsRemoved, &ctx, rows("removed"));
        QObject::connect(model, &QAbstractItemModel::modelReset, &ctx, [this] { lines << QStringLiteral("reset"); });
        QObject::connect(model, &QAbstractItemModel::layoutChanged, &ctx, [this] { lines << QStringLiteral("layout"); });
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
    QStringList log;

public slots:
    void onDoubleClick(const QModelIndex& index) { log << QStringLiteral("double %1").arg(index.row()); }
    void onSelection() { log << QStringLiteral("selection"); }
    void onCurrent(const QModelIndex& current) { log << QStringLiteral("current %1").arg(current.row()); }
    void onMenu(const QPoint& pos) { log << QStringLiteral("menu %1,%2").arg(pos.x()).arg(pos.y()); }
};

class TestEBox : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(CountedItem::alive, 0); }

    void capacityFollowsGrowthRule_data();
    void capacityFollowsGrowthRule();
    void vectorKeepsValuesReallocCannotMove();
    void vectorIgnoresOutOfRangePositions();
    void objectVectorOwnsAndHandsOverItems();

    void dataAnswersColumnOneLikeColumnZero_data();
    void dataAnswersColumnOneLikeColumnZero();
    void iconFontAndSharedIdWord();
    void notifications_data();
    void notifications();

    void moveSelected_data();
    void moveSelected();
    void moveSelectedTo_data();
    void moveSelectedTo();
    void removeSelectedTakesItemsOutWithoutDeleting();
    void sortByText_data();
    void sortByText();

    void connectorsDeliverUserActions();
    void badInputIsIgnored();
    void longListReachesItsLastRowAtOnce();
    void pooledItemsAreReusedAndSubclassesStayWhole();
};

// ------------------------------------------------------------------------------------ arrays

void TestEBox::capacityFollowsGrowthRule_data()
{
    QTest::addColumn<int>("appends");
    QTest::addColumn<int>("capacity");
    QTest::newRow("17") << 17 << 32;
    QTest::newRow("256") << 256 << 256;
    QTest::newRow("257 steps by 256") << 257 << 512;
    QTest::newRow("4096") << 4096 << 4096;
    QTest::newRow("4097 steps by 4096") << 4097 << 8192;
}

void TestEBox::capacityFollowsGrowthRule()
{
    QFETCH(int, appends);
    QFETCH(int, capacity);
    SimpleVector<int> v;
    for (int i = 0; i < appends; ++i)
        v.append(i);
    QCOMPARE(v.capacity(), capacity);
    QCOMPARE(v[appends - 1], appends - 1);

    SimpleVector<int> expanded;
    expanded.expand(appends);
    QCOMPARE(expanded.capacity(), capacity);
    QCOMPARE(expanded.count(), 0);

    // Capacity never shrinks.
    v.removeRange(0, v.count());
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
        strings.insert(0, std::to_string(i));
        wide.append(Wide{i});
        QCOMPARE(reinterpret_cast<std::uintptr_t>(wide.data()) % alignof(Wide), std::uintptr_t(0));
    }
    strings.removeRange(0, 1);
    QCOMPARE(strings[0], std::string("298"));
    QCOMPARE(strings[298], std::string("0"));
    QCOMPARE(wide[299].value, 299);
}


void TestEBox::vectorIgnoresOutOfRangePositions()
{
    SimpleVector<int> v;
    for (int i = 0; i < 5; ++i)
        v.append(i);
    v.insert(6, 9);
    v.insert(-1, 9);
    v.removeRange(-1, 2);
    v.removeRange(5, 6);
    v.removeRange(3, 1);
    QCOMPARE(QList<int>(v.begin(), v.end()), (QList<int>{0, 1, 2, 3, 4}));
    v.removeRange(3, 99); // the end is clipped
    v.insert(3, 9);
    v.removeRange(0, 1);
    QCOMPARE(QList<int>(v.begin(), v.end()), (QList<int>{1, 2, 9}));
}

void TestEBox::objectVectorOwnsAndHandsOverItems()
{
    ObjectVector<EBoxItem> source;
    for (int i = 0; i < 20; ++i)
        source.append(i == 5 ? nullptr : new CountedItem(QString::number(i)));
    EBoxItem* third = source[2];
    ObjectVector<EBoxItem> target;
    target.append(new CountedItem(QStringLiteral("first")));
    source.moveAllTo(target);
    QCOMPARE(source.count(), 0);
    QCOMPARE(source.capacity(), 0);
    QCOMPARE(target.capacity(), 32);
    QCOMPARE(target[3], third);
    target.moveAllTo(target); // nothing to move, nothing lost
    QCOMPARE(target.count(), 21);
    {
        EBox box;
        box.boxModel()->appendSteal(target);
        QCOMPARE(target.count(), 0);
        QCOMPARE(box.boxModel()->item(3), third);
        QCOMPARE(CountedItem::alive, 20); // taken over, not copied
    }
    // The model deleted them all, the null element included: cleanup() checks it.
}

// ------------------------------------------------------------------------------------- model

void TestEBox::dataAnswersColumnOneLikeColumnZero_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("expected");
    const QVariant text(QStringLiteral("alpha"));
    QTest::newRow("display") << 0 << int(Qt::DisplayRole) << text;
    QTest::newRow("tool tip from the item") << 0 << int(Qt::ToolTipRole) << QVariant(QStringLiteral("tip: alpha"));
    QTest::newRow("column 1 display") << 1 << int(Qt::DisplayRole) << text;
    QTest::newRow("column 2 display") << 2 << int(Qt::DisplayRole) << QVariant();
    QTest::newRow("column 2 font") << 2 << int(Qt::FontRole) << QVariant();
    QTest::newRow("no icon") << 0 << int(Qt::DecorationRole) << QVariant();
    QTest::newRow("other role") << 0 << int(Qt::CheckStateRole) << QVariant();
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

void TestEBox::iconFontAndSharedIdWord()
{
    EBoxModel model;
    QPixmap icon(8, 8);
    icon.fill(Qt::red);
    const int anchor = 0;
    model.append(new EBoxItem(&icon, QStringLiteral("with icon"), 7));
    model.append(new EBoxItem(nullptr, QStringLiteral("data"), &anchor));
    model.append(new EBoxItem(QStringLiteral("plain")));
    model.append(new EBoxItem(nullptr, QStringLiteral("seven again"), 7));

    QCOMPARE(model.data(model.index(0, 0), Qt::DecorationRole).value<QPixmap>().toImage(), icon.toImage());
    // The font is the library's item font for every row, even one without an item.
    model.items().append(nullptr);
    QCOMPARE(model.data(model.index(4, 0), Qt::FontRole).value<QFont>(), ETableModel::fontRole());
    QVERIFY(!model.data(model.index(4, 0), Qt::DisplayRole).isValid());

    QCOMPARE(model.findId(7), 0);
    QCOMPARE(model.findData(&anchor), 1);
    QCOMPARE(model.findData(nullptr), 2); // id 0 and a null pointer are the same word
    QCOMPARE(model.findId(8), -1);
    // Writing the id replaces the data and the other way round.
    model.item(1)->setId(7);
    model.item(0)->setData(&anchor);
    QCOMPARE(model.findId(7), 1);
    QCOMPARE(model.findData(&anchor), 0);
}

void TestEBox::notifications_data()
{
    QTest::addColumn<ModelOp>("op");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QString>("rows");
    const QStringList reset{QStringLiteral("reset")};

    QTest::newRow("append") << ModelOp([](EBoxModel& m) { m.append(new EBoxItem(QStringLiteral("D"))); })
                            << QStringList{"inserted 3 3"} << "ABCD";
    QTest::newRow("insert bad row still announced")
        << ModelOp([](EBoxModel& m) { m.insert(7, new CountedItem(QStringLiteral("x"))); })
        << QStringList{"inserted 7 7"} << "ABC";
    QTest::newRow("insert texts") << ModelOp([](EBoxModel& m) { m.insert(1, letters("xy")); })
                                  << QStringList{"inserted 1 2"} << "AxyBC";
    QTest::newRow("insert texts at the largest row") << ModelOp([](EBoxModel& m) { m.insert(INT_MAX, letters("xy")); })
                                                     << QStringList{"inserted 2147483647 2147483647"} << "ABC";
    QTest::newRow("insert no texts") << ModelOp([](EBoxModel& m) { m.insert(0, QStringList()); }) << QStringList()
                                     << "ABC";
    QTest::newRow("remove bad row still announced") << ModelOp([](EBoxModel& m) { m.remove(3); })
                                                    << QStringList{"removed 3 3"} << "ABC";
    QTest::newRow("remove all") << ModelOp([](EBoxModel& m) { m.removeAll(); }) << QStringList{"removed 0 2"} << "";
    // moveTo(from, to) puts the item in front of the item at to and returns its new position.
    auto moveTo = [](int from, int to, int result) {
        return ModelOp([=](EBoxModel& m) { QCOMPARE(m.moveTo(from, to), result); });
    };
    QTest::newRow("moveTo onto itself") << moveTo(1, 1, 1) << QStringList() << "ABC";
    QTest::newRow("moveTo before the next") << moveTo(1, 2, 2) << QStringList() << "ABC";
    QTest::newRow("moveTo first to the end") << moveTo(0, 3, 2) << reset << "BCA";
    QTest::newRow("moveTo last to the front") << moveTo(2, 0, 0) << reset << "CAB";
    QTest::newRow("moveTo bad from") << moveTo(7, 0, -1) << QStringList() << "ABC";
    QTest::newRow("moveTo past the end") << moveTo(0, 9, -1) << QStringList() << "ABC";
    QTest::newRow("moveTo from the largest row") << moveTo(INT_MAX, 0, -1) << QStringList() << "ABC";
    QTest::newRow("sort resets") << ModelOp([](EBoxModel& m) { m.sort(0, Qt::DescendingOrder); }) << reset << "CBA";
    QTest::newRow("batch of everything") << ModelOp([](EBoxModel& m) {
        m.beginChanges();
        m.append(new EBoxItem(QStringLiteral("D")));
        m.insert(0, letters("xy"));
        m.insert(0, new EBoxItem(QStringLiteral("z")));
        m.remove(1);
        m.remove(42);
        m.moveTo(0, 3);
        m.sort(0, Qt::AscendingOrder);
        m.endChanges();
    }) << reset << "ABCDyz";
    QTest::newRow("nested batches") << ModelOp([](EBoxModel& m) {
        m.beginChanges();
        m.beginChanges();
        m.removeAll();
        m.endChanges();
        m.insert(0, letters("q"));
        QVERIFY(!m.view()->updatesEnabled());
        m.endChanges();
        m.endChanges(); // one too many: ignored
        QVERIFY(m.view()->updatesEnabled());
    }) << reset << "q";
    QTest::newRow("stray endChanges, then edits notify as usual") << ModelOp([](EBoxModel& m) {
        m.endChanges();
        m.append(new EBoxItem(QStringLiteral("D")));
        m.insert(0, new EBoxItem(QStringLiteral("x")));
        m.remove(1);
    }) << QStringList{"inserted 3 3", "inserted 0 0", "removed 1 1"} << "xBCD";
    QTest::newRow("appendSteal announces the rows it adds") << ModelOp([](EBoxModel& m) {
        ObjectVector<EBoxItem> items;
        m.appendSteal(items); // nothing to add, nothing announced
        items.append(new EBoxItem(QStringLiteral("d")));
        items.append(new EBoxItem(QStringLiteral("e")));
        m.appendSteal(items);
    }) << QStringList{"inserted 3 4"} << "ABCde";
}

void TestEBox::notifications()
{
    QFETCH(ModelOp, op);
    QFETCH(QStringList, expected);
    QFETCH(QString, rows);
    EBox box;
    box.boxModel()->insert(0, letters("ABC"));
    ModelLog log(box.boxModel());
    op(*box.boxModel());
    QCOMPARE(log.lines, expected);
    QCOMPARE(texts(*box.boxModel()), rows);
    QVERIFY(box.updatesEnabled());
}

// ------------------------------------------------------------------------------------- moves



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
    QTest::newRow("adjacent rows move as one block") << "ABCDE" << QList<int>{2, 1} << 1 << "ADBCE" << QList<int>{2, 3};
    QTest::newRow("scattered blocks up") << "ABCDEFG" << QList<int>{1, 3, 4} << -1 << "BADECFG" << QList<int>{0, 2, 3};
    QTest::newRow("blocked block is overtaken") << "ABCDE" << QList<int>{3, 4} << 1 << "ABCED" << QList<int>{4};
    QTest::newRow("magnitude only tests eligibility") << "ABCDEFG" << QList<int>{1} << 3 << "ACBDEFG" << QList<int>{4};
    QTest::newRow("direction 0 moves down, reselects in place") << "ABCDE" << QList<int>{1} << 0 << "ACBDE" << QList<int>{1};
    QTest::newRow("direction 0 at the end stays") << "ABCDE" << QList<int>{4} << 0 << "ABCDE" << QList<int>{};
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
    box.boxModel()->insert(0, letters(start.toLatin1().constData()));
    for (int row : select)
        box.setSelected(row, true);
    ModelLog log(box.boxModel());
    box.boxModel()->moveSelected(direction);
    QCOMPARE(texts(*box.boxModel()), order);
    QCOMPARE(selectedRows(box), selected);
    QCOMPARE(log.lines, QStringList{"reset"});
}

void TestEBox::moveSelectedTo_data()
{
    QTest::addColumn<QList<int>>("select"); // [first, end) pairs, one selection range each
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    QTest::newRow("blocks arrive in reverse order") << QList<int>{1, 3, 5, 6} << "ADE" << "XFBC";
    QTest::newRow("rows picked one by one arrive reversed") << QList<int>{1, 2, 2, 3, 5, 6} << "ADE" << "XFCB";
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
    for (const QString& s : letters("ABCDEF"))
        from.boxModel()->append(new CountedItem(s));
    to.boxModel()->append(new CountedItem(QStringLiteral("X")));
    to.setSelected(0, true);
    // Select the first range last, so the order of the ranges does not decide the result.
    for (int i = select.size() - 2; i >= 0; i -= 2)
        from.selectRange(select.at(i), select.at(i + 1));

    ModelLog fromLog(from.boxModel());
    ModelLog toLog(to.boxModel());
    from.boxModel()->moveSelectedTo(to.boxModel());
    QCOMPARE(texts(*from.boxModel()), source);
    QCOMPARE(texts(*to.boxModel()), target);
    QCOMPARE(fromLog.lines + toLog.lines, (QStringList{"reset", "reset"}));
    QList<int> movedRows;
    for (int row = 1; row < to.boxModel()->count(); ++row)
        movedRows << row;
    QCOMPARE(selectedRows(to), movedRows);
    QCOMPARE(CountedItem::alive, 7); // every item is owned exactly once: cleanup() proves it
}

void TestEBox::removeSelectedTakesItemsOutWithoutDeleting()
{
    EBox box;
    box.setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (const QString& s : letters("ABCDEFG"))
        box.boxModel()->append(new CountedItem(s));
    const QList<EBoxItem*> removed{box.boxModel()->item(1), box.boxModel()->item(5), box.boxModel()->item(6)};
    box.selectRange(5, 7);
    box.setSelected(1, true);
    box.setSelected(2, true);
    box.setSelected(2, false);
    ModelLog log(box.boxModel());
    box.boxModel()->removeSelected();
    QCOMPARE(log.lines, QStringList{"reset"});
    QCOMPARE(texts(*box.boxModel()), QStringLiteral("ACDE"));
    QCOMPARE(CountedItem::alive, 7);
    qDeleteAll(removed); // the application that kept the pointers deletes the items
}

void TestEBox::sortByText_data()
{
    QTest::addColumn<QStringList>("start");
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("sorted");
    const QStringList bab{"b", "a", "B"};
    QTest::newRow("descending, upper case last") << bab << int(Qt::DescendingOrder) << bab;
    QTest::newRow("code units, not locale")
        << QStringList{"\xc3\xa9", "z", "e", "Z"} << int(Qt::AscendingOrder) << QStringList{"Z", "e", "z", "\xc3\xa9"};
    const QString nul = QStringLiteral("a") + QChar(0);
    QTest::newRow("a NUL unit is more than nothing")
        << QStringList{nul, "a", nul + "b", ""} << int(Qt::DescendingOrder) << QStringList{nul + "b", nul, "a", ""};

    // Texts that share long beginnings, with units that are NUL, of either case, above 0x7fff and
    // surrogates: the packed prefixes and the texts must decide exactly as QString's order does.
    const ushort units[] = {0, 'A', 'a', 0xe9, 0x8000, 0xd800, 0xdc00, 0xffff};
    QRandomGenerator random(20261123);
    QStringList mixed;
    for (int i = 0; i < 400; ++i) {
        QString s = random.bounded(2) ? QStringLiteral("certificate-") : QString();
        for (int n = random.bounded(6); n > 0; --n)
            s += QChar(units[random.bounded(8)]);
        mixed << s;
    }
    QStringList ascending = mixed;
    std::sort(ascending.begin(), ascending.end());
    QStringList descending(ascending.crbegin(), ascending.crend());
    QTest::newRow("mixed ascending") << mixed << int(Qt::AscendingOrder) << ascending;
    QTest::newRow("mixed descending") << mixed << int(Qt::DescendingOrder) << descending;
}

void TestEBox::sortByText()
{
    QFETCH(QStringList, start);
    QFETCH(int, order);
    QFETCH(QStringList, sorted);
    // Ids remember the original positions, so equal texts show whether they kept their order.
    EBoxModel models[2];
    for (EBoxModel& model : models) {
        model.insert(0, start + start);
        for (int i = 0; i < model.count(); ++i)
            model.item(i)->setId(i);
    }
    models[0].sort(0, Qt::SortOrder(order));
    models[1].sort(order == Qt::DescendingOrder ? comparator_des : comparator_asc);
    QString doubled;
    for (const QString& s : sorted)
        doubled += s + s;
    QCOMPARE(texts(models[0]), doubled);
    // The column sort and the comparator sort agree, down to the order of equal texts.
    for (int i = 0; i < models[0].count(); ++i)
        QCOMPARE(models[0].item(i)->id(), models[1].item(i)->id());
}

// ------------------------------------------------------------------------------------ widget

void TestEBox::connectorsDeliverUserActions()
{
    EBox box;
    box.boxModel()->insert(0, letters("ABCD"));
    box.resize(200, 200);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    Receiver r;
    QVERIFY(box.setSlotForDoubleClick(&r, SLOT(onDoubleClick(QModelIndex))));
    QVERIFY(box.setSlotForChangeSelection(&r, SLOT(onSelection())));
    QVERIFY(box.setSlotForChangeCurrent(&r, SLOT(onCurrent(QModelIndex))));
    QVERIFY(box.setSlotForContextMenu(&r, SLOT(onMenu(QPoint))));
    QVERIFY(!box.setSlotForDoubleClick(nullptr, SLOT(onDoubleClick(QModelIndex))));

    const QPoint at = box.visualRect(box.boxModel()->index(2, 0)).center();
    QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(box.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::keyClick(&box, Qt::Key_Down);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(5, 6), box.viewport()->mapToGlobal(QPoint(5, 6)));
    QApplication::sendEvent(box.viewport(), &menu);
    QCOMPARE(r.log, (QStringList{"current 2", "selection", "double 2", "selection", "current 3", "menu 5,6"}));
}

void TestEBox::badInputIsIgnored()
{
    // A model without a view has no selection to act on.
    EBoxModel lonely;
    lonely.insert(0, letters("AB"));
    ModelLog lonelyLog(&lonely);
    lonely.moveSelected(1);
    lonely.removeSelected();
    QVERIFY(lonelyLog.lines.isEmpty());

    EBox box;
    EBox other;
    box.setSelectionMode(QAbstractItemView::ExtendedSelection);
    box.boxModel()->insert(0, letters("ABC"));
    ModelLog log(box.boxModel());
    // Empty selections, a missing target or the list itself: nothing moves, no reset.
    box.boxModel()->moveSelected(-1);
    box.boxModel()->moveSelectedTo(other.boxModel());
    box.setSelected(1, true);
    box.boxModel()->moveSelectedTo(nullptr);
    box.boxModel()->moveSelectedTo(box.boxModel());
    QVERIFY(log.lines.isEmpty());

    box.setSelected(3, true);
    box.selectRange(2, 1);
    box.selectRange(-5, 0);
    QCOMPARE(selectedRows(box), QList<int>{1});

    // Rows selected in a second column stand for the same rows, never for a second copy.
    box.selectionModel()->select(QItemSelection(box.boxModel()->index(0, 1), box.boxModel()->index(1, 1)),
                                 QItemSelectionModel::Select);
    box.boxModel()->moveSelectedTo(other.boxModel());
    QCOMPARE(texts(*other.boxModel()), QStringLiteral("AB"));
    QCOMPARE(texts(*box.boxModel()), QStringLiteral("C"));
}

void TestEBox::longListReachesItsLastRowAtOnce()
{
    EBox box;
    ObjectVector<EBoxItem> items;
    for (int i = 0; i < 30000; ++i)
        items.append(new EBoxItem(QString::number(i)));
    box.boxModel()->appendSteal(items);
    box.resize(200, 300);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));

    // Right after showing, the last row is reached by scrolling and by the keyboard.
    const QModelIndex last = box.boxModel()->index(29999, 0);
    box.scrollTo(last);
    QVERIFY(box.viewport()->rect().contains(box.visualRect(last)));
    box.setCurrentIndex(box.boxModel()->index(0, 0));
    QTest::keyClick(&box, Qt::Key_End);
    QCOMPARE(box.currentIndex().row(), 29999);
    // Every row gets its place once events have run.
    QTRY_VERIFY(!box.visualRect(box.boxModel()->index(25000, 0)).isEmpty());
    QCOMPARE(box.indexAt(box.visualRect(last).center()), last);
}

void TestEBox::pooledItemsAreReusedAndSubclassesStayWhole()
{
    FixedPool pool(sizeof(EBoxItem));
    void* first = pool.take();
    void* second = pool.take();
    QVERIFY(first != second);
    pool.give(first);
    QCOMPARE(pool.take(), first); // a freed block is handed out again
    pool.give(first);
    pool.give(second);            // the last one back: the slabs are released
    QVERIFY(pool.take());

    // A subclass with fields of its own is not of the pooled size and is deleted whole.
    struct Tagged : EBoxItem
    {
        Tagged() : EBoxItem(QStringLiteral("tagged")) {}
        QString tag = QStringLiteral("a tag long enough to need a heap block of its own");
        double weight = 1.5;
    };
    EBoxModel model;
    model.beginChanges();
    for (int i = 0; i < 300; ++i)
        model.append(i % 3 ? new EBoxItem(QString::number(i)) : new Tagged);
    model.endChanges();
    model.remove(0);
    model.remove(1);
    QCOMPARE(model.count(), 298);
    QCOMPARE(model.item(0)->text(), QStringLiteral("1"));
    QCOMPARE(static_cast<Tagged*>(model.item(1))->tag, QStringLiteral("a tag long enough to need a heap block of its own"));
    model.removeAll();
    model.append(new EBoxItem(QStringLiteral("after")));
    QCOMPARE(model.item(0)->text(), QStringLiteral("after"));
}

CG_TEST_MAIN(TestEBox)
#include "tst_ebox.moc"
