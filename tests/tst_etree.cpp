// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebox.h"
#include "ecombobox.h"
#include "esettings.h"
#include "etree.h"

#include <QHeaderView>
#include <QLabel>
#include <QPixmap>
#include <QPointer>
#include <QRegularExpression>

namespace {

const QString nameTitle = QStringLiteral("Name"), valueTitle = QStringLiteral("Value"), noteTitle = QStringLiteral("Note");
const QString* headers[] = {&nameTitle, &valueTitle, &noteTitle, nullptr};

class Values : public EEnumerator
{
public:
    Values(QStringList texts, const QPixmap* icon)
        : texts(std::move(texts))
        , icon(icon)
    {
    }
    const QPixmap* getIcon() override { return icon; }
    QString getText() override { return texts.at(at); }
    void* getData() override { return nullptr; }
    int getId() override { return at; }
    bool next() override { return ++at < texts.size(); }
    QString getListText() override { return texts.join(QLatin1String(", ")); }

private:
    QStringList texts;
    const QPixmap* icon = nullptr;
    int at = -1;
};

ETreeItem* item(const QString& text)
{
    return new ETreeItem(QStringList{text, text + QStringLiteral("-v")});
}

QStringList boxTexts(const QAbstractItemModel* model)
{
    QStringList texts;
    for (int r = 0; r < model->rowCount(); ++r)
        texts << model->index(r, 0).data().toString();
    return texts;
}

} // namespace

class TestETree : public QObject
{
    Q_OBJECT
    int doubleClicks = 0;
    int currentChanges = 0;

public slots:
    void onDoubleClick(QTreeWidgetItem*, int) { ++doubleClicks; }
    void onCurrent(QTreeWidgetItem*, QTreeWidgetItem*) { ++currentChanges; }

private slots:
    void headersAndFontAndUserData();
    void pendingWidgetIsOwnedUntilTheItemEntersATree();
    void pendingWidgetsReachTheTreeThroughTheSubtree();
    void toolTipsCopyTheTexts();
    void expandStateIsReadByDepth_data();
    void expandStateIsReadByDepth();
    void shortExpandStateReadsAsNothingSaved();
    void headerStateAlwaysUsesOneKey();
    void damagedHeaderStateReadsAsNothingSaved_data();
    void damagedHeaderStateReadsAsNothingSaved();
    void selectRowShowColumnUpdateRow();
    void addTopLevelItemsKeepsRepaintingAsItWas();
    void cellsFromEnumerators_data();
    void cellsFromEnumerators();
    void connectorsReachTheReceiver();
};

void TestETree::headersAndFontAndUserData()
{
    ETree tree(headers);
    QCOMPARE(tree.columnCount(), 3);
    QCOMPARE(tree.headerItem()->text(2), noteTitle);
    ETree untitled(nullptr);
    QCOMPARE(untitled.columnCount(), 1);

    ETreeItem* row = item(QStringLiteral("a"));
    tree.addTopLevelItem(row);
    const QFont font = row->data(1, Qt::FontRole).value<QFont>();
    QCOMPARE(font, ETreeItem::itemFont());
    QCOMPARE(font.family(), QFontInfo(QFont()).family());
    // Resolved once: a later application font does not change it.
    const QFont before = QApplication::font();
    QFont big = before;
    big.setPointSize(before.pointSize() + 9);
    QApplication::setFont(big);
    QCOMPARE(row->data(0, Qt::FontRole).value<QFont>(), font);
    QApplication::setFont(before);

    QVERIFY(!row->getUserData());
    int payload = 0;
    row->setUserData(&payload);
    QCOMPARE(row->getUserData(), static_cast<void*>(&payload));
    row->setData(0, Qt::UserRole + 1, QStringLiteral("not a pointer"));
    QVERIFY(!row->getUserData());
    QCOMPARE(row->text(0), QStringLiteral("a")); // the user data sits beside the text
}

void TestETree::pendingWidgetIsOwnedUntilTheItemEntersATree()
{
    QPointer<QLabel> first = new QLabel(QStringLiteral("first"));
    QPointer<QLabel> second = new QLabel(QStringLiteral("second"));
    {
        ETreeItem loose(QStringList{QStringLiteral("x")});
        loose.setCustomWidget(1, first);
        QVERIFY(first->autoFillBackground());
        loose.setCustomWidget(1, first); // the same widget again: kept
        QVERIFY(first);
        loose.setCustomWidget(1, second); // a different one: the first is deleted
        QVERIFY(!first);
        QVERIFY(second);
        QPointer<QLabel> nowhere = new QLabel;
        loose.setCustomWidget(-1, nowhere); // a column that cannot exist: deleted, not leaked
        QVERIFY(!nowhere);
    }
    QVERIFY(!second); // deleted with the item that never entered a tree

    QPointer<QLabel> removed = new QLabel;
    ETreeItem loose(QStringList{QStringLiteral("y")});
    loose.setCustomWidget(0, removed);
    loose.setCustomWidget(0, nullptr);
    QVERIFY(!removed);
}

void TestETree::pendingWidgetsReachTheTreeThroughTheSubtree()
{
    ETree tree(headers);
    ETreeItem* root = item(QStringLiteral("root"));
    ETreeItem* child = item(QStringLiteral("child"));
    auto* plain = new QTreeWidgetItem(QStringList{QStringLiteral("plain")});
    ETreeItem* grandchild = item(QStringLiteral("grandchild"));
    root->addChild(child);
    root->addChild(plain);
    plain->addChild(grandchild);
    QPointer<QLabel> onRoot = new QLabel, onChild = new QLabel, onGrandchild = new QLabel;
    root->setCustomWidget(2, onRoot);
    child->setCustomWidget(1, onChild);
    grandchild->setCustomWidget(0, onGrandchild);

    tree.addTopLevelItem(root);
    QCOMPARE(tree.itemWidget(root, 2), onRoot.data());
    QCOMPARE(tree.itemWidget(child, 1), onChild.data());
    QCOMPARE(tree.itemWidget(grandchild, 0), onGrandchild.data()); // below an item of Qt's own
    QVERIFY(!root->data(2, Qt::UserRole).value<void*>());

    // A child added later keeps its widget pending until someone hands it over.
    ETreeItem* late = item(QStringLiteral("late"));
    QPointer<QLabel> onLate = new QLabel;
    late->setCustomWidget(1, onLate);
    root->addChild(late);
    QVERIFY(!tree.itemWidget(late, 1));
    root->updateCustomWidgets();
    QCOMPARE(tree.itemWidget(late, 1), onLate.data());

    // The tree owns them now: deleting it deletes them, not the items' destructors twice.
    tree.clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!onRoot && !onChild && !onGrandchild && !onLate);
}

void TestETree::toolTipsCopyTheTexts()
{
    ETreeItem row(QStringList{QStringLiteral("gateway"), QString(), QStringLiteral("lab")});
    row.setToolTip(1, QStringLiteral("stale"));
    row.toolTipsAsTexts();
    QCOMPARE(row.toolTip(0), QStringLiteral("gateway"));
    QCOMPARE(row.toolTip(1), QString());
    QCOMPARE(row.toolTip(2), QStringLiteral("lab"));
}

void TestETree::expandStateIsReadByDepth_data()
{
    // Trees are written as child counts in pre-order; every item with children can be expanded.
    QTest::addColumn<QVector<int>>("shape");
    QTest::addColumn<QVector<bool>>("states");
    QTest::addColumn<QVector<bool>>("expected");

    QTest::newRow("chain agrees with pre-order") << QVector<int>{1, 1, 0} << QVector<bool>{true, false, true}
                                                 << QVector<bool>{true, false, true};
    // root with children A and B: both children read the second flag.
    QTest::newRow("siblings share their depth's flag") << QVector<int>{2, 0, 0} << QVector<bool>{true, false, true}
                                                      << QVector<bool>{true, false, false};
    // root(A(A1), B(B1)): A and B take states[1], A1 and B1 states[2].
    QTest::newRow("two levels of siblings") << QVector<int>{2, 1, 0, 1, 0}
                                            << QVector<bool>{true, true, false, false, true}
                                            << QVector<bool>{true, true, false, true, false};
}

namespace {

// Builds a subtree from child counts in pre-order; returns the items in pre-order.
ETreeItem* buildShape(const QVector<int>& shape, QVector<ETreeItem*>& order)
{
    int at = 0;
    std::function<ETreeItem*()> make = [&]() {
        ETreeItem* node = item(QString::number(at));
        order << node;
        const int children = shape.at(at++);
        for (int i = 0; i < children; ++i)
            node->addChild(make());
        return node;
    };
    return make();
}

} // namespace

void TestETree::expandStateIsReadByDepth()
{
    QFETCH(QVector<int>, shape);
    QFETCH(QVector<bool>, states);
    QFETCH(QVector<bool>, expected);

    ETree tree(headers);
    QVector<ETreeItem*> order;
    ETreeItem* root = buildShape(shape, order);
    tree.addTopLevelItem(root);
    QVERIFY(root->loadExpandState(states));
    QVector<bool> actual;
    for (ETreeItem* node : order)
        actual << node->isExpanded();
    QCOMPARE(actual, expected);

    // Saving writes the pre-order flags as they are now.
    QVector<bool> saved;
    root->saveExpandState(saved);
    QCOMPARE(saved, expected);

    // Outside a tree nothing is expanded and loading changes nothing.
    tree.takeTopLevelItem(0);
    QVector<bool> outside;
    root->saveExpandState(outside);
    QCOMPARE(outside, QVector<bool>(order.size(), false));
    root->loadExpandState(QVector<bool>(order.size(), true).constData());
    QVERIFY(!root->isExpanded());
    delete root;
}

void TestETree::shortExpandStateReadsAsNothingSaved()
{
    ETree tree(headers);
    QVector<ETreeItem*> order;
    ETreeItem* root = buildShape({1, 1, 0}, order);
    tree.addTopLevelItem(root);
    QVERIFY(!root->loadExpandState(QVector<bool>{}));
    QVERIFY(!root->loadExpandState(QVector<bool>{true, true}));
    for (ETreeItem* node : order)
        QVERIFY(!node->isExpanded());
    QVERIFY(root->loadExpandState(QVector<bool>{true, true, true}));
    QVERIFY(order.last()->isExpanded());
}

void TestETree::headerStateAlwaysUsesOneKey()
{
    {
        ETree tree(headers);
        tree.header()->resizeSection(0, 211);
        tree.header()->resizeSection(1, 97);
        ESettings s(QStringLiteral("TreeState"));
        tree.saveState(s, "Columns");
    }
    {
        ESettings s(QStringLiteral("TreeState"));
        QVERIFY(s.contains(QStringLiteral("HeaderState")));
        QVERIFY(!s.contains(QStringLiteral("Columns")));
        ETree tree(headers);
        QVERIFY(tree.loadState(s, "SomethingElse"));
        QCOMPARE(tree.header()->sectionSize(0), 211);
        QCOMPARE(tree.header()->sectionSize(1), 97);
    }
}

void TestETree::damagedHeaderStateReadsAsNothingSaved_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("empty") << QVariant(QByteArray());
    QTest::newRow("garbage bytes") << QVariant(QByteArray("\x00\x00\x00\xff garbage", 12));
    QTest::newRow("a text") << QVariant(QStringLiteral("wide columns please"));
}

void TestETree::damagedHeaderStateReadsAsNothingSaved()
{
    QFETCH(QVariant, stored);
    ESettings s(QStringLiteral("DamagedTree"));
    s.remove(QStringLiteral("HeaderState"));
    if (stored.isValid())
        s.setValue(QStringLiteral("HeaderState"), stored);
    ETree tree(headers);
    tree.header()->resizeSection(0, 123);
    QVERIFY(!tree.loadState(s, "HeaderState"));
    QCOMPARE(tree.header()->sectionSize(0), 123);
    QCOMPARE(tree.header()->count(), 3);
}

void TestETree::selectRowShowColumnUpdateRow()
{
    ETree tree(headers);
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    QList<QTreeWidgetItem*> rows;
    for (int i = 0; i < 5; ++i)
        rows << item(QString::number(i));
    tree.addTopLevelItems(rows);
    tree.resize(400, 300);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));

    rows[1]->setSelected(true);
    rows[3]->setSelected(true);
    tree.selectRow(rows[2]);
    QCOMPARE(tree.selectedItems(), QList<QTreeWidgetItem*>{rows[2]});
    QCOMPARE(tree.currentItem(), rows[2]);
    QCOMPARE(tree.selectionModel()->selectedIndexes().size(), 3); // the whole row

    tree.showColumn(1, false);
    QVERIFY(tree.header()->isSectionHidden(1));
    tree.showColumn(1, true);
    QVERIFY(!tree.header()->isSectionHidden(1));
    tree.showColumn(7, false);
    tree.showColumn(-1, false);
    QCOMPARE(tree.header()->hiddenSectionCount(), 0);

    // A value changed behind the view's back shows after updateCurrentRow.
    tree.updateCurrentRow();
    tree.updateRow(QModelIndex());
    QTest::qWait(1);
    QImage before = tree.viewport()->grab().toImage();
    rows[2]->setData(2, Qt::DisplayRole, QStringLiteral("changed"));
    QTest::qWait(1);
    QVERIFY(tree.viewport()->grab().toImage() != before);
}

void TestETree::addTopLevelItemsKeepsRepaintingAsItWas()
{
    ETree tree(headers);
    QList<QTreeWidgetItem*> rows;
    QPointer<QLabel> onLast = new QLabel;
    for (int i = 0; i < 100; ++i)
        rows << item(QString::number(i));
    static_cast<ETreeItem*>(rows.last())->setCustomWidget(1, onLast);
    tree.addTopLevelItems(rows);
    QVERIFY(tree.updatesEnabled());
    QCOMPARE(tree.topLevelItemCount(), 100);
    QCOMPARE(tree.itemWidget(rows.last(), 1), onLast.data());

    tree.setUpdatesEnabled(false);
    tree.addTopLevelItems({item(QStringLiteral("more"))});
    QVERIFY(!tree.updatesEnabled());
}

void TestETree::cellsFromEnumerators_data()
{
    QTest::addColumn<bool>("combo");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<bool>("withIcon");
    QTest::addColumn<QString>("cellText");

    for (bool combo : {false, true}) {
        const QByteArray kind = combo ? "combo: " : "list: ";
        QTest::newRow(kind + "no value") << combo << QStringList{} << true << QString();
        QTest::newRow(kind + "one value") << combo << QStringList{"tcp"} << true << QStringLiteral("tcp");
        QTest::newRow(kind + "one value without icon") << combo << QStringList{"tcp"} << false << QStringLiteral("tcp");
        QTest::newRow(kind + "several values") << combo << QStringList{"tcp", "udp", "icmp"} << true
                                               << QStringLiteral("tcp, udp, icmp");
    }
}

void TestETree::cellsFromEnumerators()
{
    QFETCH(bool, combo);
    QFETCH(QStringList, values);
    QFETCH(bool, withIcon);
    QFETCH(QString, cellText);

    QPixmap icon(8, 8);
    icon.fill(Qt::blue);
    ETree tree(headers);
    ETreeItem* inTree = item(QStringLiteral("in"));
    tree.addTopLevelItem(inTree);
    ETreeItem* outside = item(QStringLiteral("out"));
    // Both cells held something before: a widget, and a text with an icon.
    QPointer<QLabel> old = new QLabel;
    inTree->setCustomWidget(1, old);
    outside->setText(1, QStringLiteral("old"));

    for (ETreeItem* row : {inTree, outside}) {
        Values e(values, withIcon ? &icon : nullptr);
        if (combo)
            tree.addCombo(row, 1, e);
        else
            tree.addList(row, 1, e);
        QCOMPARE(row->text(1), cellText);
    }
    tree.addTopLevelItem(outside);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!old);

    for (ETreeItem* row : {inTree, outside}) {
        QWidget* widget = tree.itemWidget(row, 1);
        const QIcon decoration = row->icon(1);
        if (values.size() < 2) {
            QVERIFY(!widget);
            QCOMPARE(decoration.isNull(), values.isEmpty() || !withIcon);
            continue;
        }
        QVERIFY(decoration.isNull());
        QVERIFY(widget && widget->autoFillBackground());
        QVERIFY(!widget->parentWidget() || widget->window() == &tree);
        if (combo) {
            auto* c = dynamic_cast<EComboBox*>(widget);
            QVERIFY(c);
            QCOMPARE(boxTexts(c->model()), values);
            QCOMPARE(c->boxModel()->item(1)->icon(), &icon);
        } else {
            auto* box = qobject_cast<EBox*>(widget);
            QVERIFY(box);
            QCOMPARE(boxTexts(box->model()), values);
            QCOMPARE(box->boxModel()->item(2)->id(), 0);
        }
    }

    // Filling again with one value removes the widget from the tree.
    Values single({QStringLiteral("esp")}, &icon);
    tree.addList(inTree, 1, single);
    QVERIFY(!tree.itemWidget(inTree, 1));
    QCOMPARE(inTree->text(1), QStringLiteral("esp"));
    Values none({}, nullptr);
    tree.addCombo(nullptr, 1, none); // ignored
    tree.addCombo(inTree, -2, none);
}

void TestETree::connectorsReachTheReceiver()
{
    ETree tree(headers);
    QList<QTreeWidgetItem*> rows{item(QStringLiteral("a")), item(QStringLiteral("b"))};
    rows[0]->addChild(item(QStringLiteral("a1")));
    tree.addTopLevelItems(rows);
    tree.resize(400, 300);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));

    QVERIFY(tree.setSlotForDoubleClick(this, SLOT(onDoubleClick(QTreeWidgetItem*, int))));
    QVERIFY(tree.setSlotForChangeCurrent(this, SLOT(onCurrent(QTreeWidgetItem*, QTreeWidgetItem*))));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot TestETree::noSuchSlot\\(\\)")));
    QVERIFY(!tree.setSlotForChangeCurrent(this, SLOT(noSuchSlot())));
    QPoint menuAt;
    QVERIFY(tree.setSlotForContextMenu(this, [&menuAt](const QPoint& p) { menuAt = p; }));
    QCOMPARE(tree.contextMenuPolicy(), Qt::CustomContextMenu);
    int typedDoubleClicks = 0;
    QVERIFY(tree.setSlotForDoubleClick(this, [&typedDoubleClicks](QTreeWidgetItem*, int) { ++typedDoubleClicks; }));

    const QPoint onA = tree.visualItemRect(rows[0]).center();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, onA);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(doubleClicks, 1);
    QCOMPARE(typedDoubleClicks, 1);
    QVERIFY(!rows[0]->isExpanded()); // a double click no longer expands

    currentChanges = 0;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.visualItemRect(rows[1]).center());
    QCOMPARE(currentChanges, 1);

    QContextMenuEvent menu(QContextMenuEvent::Mouse, onA, tree.viewport()->mapToGlobal(onA));
    QCoreApplication::sendEvent(tree.viewport(), &menu);
    QCOMPARE(menuAt, onA);
}

CG_TEST_MAIN(TestETree)
#include "tst_etree.moc"
