// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebind.h"
#include "eboxlayout.h"
#include "egroupbox.h"
#include "epair.h"
#include "eradiogroup.h"

#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QSpinBox>

#include <memory>
#include <vector>

namespace {

/// Collects the ids a radio group hands to its user-toggle receiver.
class IdReceiver : public QObject
{
    Q_OBJECT
public:
    QList<int> ids;
public slots:
    void chosen(int id) { ids << id; }
};

QList<EPair*> membersOf(const EBind* group)
{
    return QList<EPair*>(group->members().begin(), group->members().end());
}

QStringList warnings;
void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        warnings << text;
}

} // namespace

class TestEPair : public QObject
{
    Q_OBJECT
private slots:
    void layoutsUseTheHouseGeometry_data();
    void layoutsUseTheHouseGeometry();
    void clearDeletesWidgetsAndNestedLayouts();

    void captionPlacementFollowsDirection_data();
    void captionPlacementFollowsDirection();
    void captionMnemonicFocusesTheField();
    void setWidgetRules();
    void setLabelTextResizesTheCaption();
    void setLabelIgnoredActsOnTheWholePair();
    void fixWidthFixesTheField();

    void boundCaptionsTakeTheLargestWidthAndHeight();
    void bindingMergesWholeGroups_data();
    void bindingMergesWholeGroups();
    void destroyedPairsLeaveTheirGroup();

    void groupBoxForwardsToItsLayout();
    void radioGroupReportsOnlyUserClicks();
    void radioGroupAddressesButtonsById();
};

void TestEPair::layoutsUseTheHouseGeometry_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("spacing");
    QTest::addColumn<QList<int>>("margins"); // left, top, right, bottom

    QTest::newRow("row") << "EHBoxLayout" << int(QBoxLayout::LeftToRight) << 8 << QList<int>{0, 0, 0, 0};
    QTest::newRow("column") << "EVBoxLayout" << int(QBoxLayout::TopToBottom) << 8 << QList<int>{0, 0, 0, 0};
    QTest::newRow("column 0/0") << "EVBoxLayout(0,0)" << int(QBoxLayout::TopToBottom) << 0 << QList<int>{0, 0, 0, 0};
    QTest::newRow("column 5/3") << "EVBoxLayout(5,3)" << int(QBoxLayout::TopToBottom) << 5 << QList<int>{3, 3, 3, 3};
    QTest::newRow("dialog root") << "EVRootBoxLayout" << int(QBoxLayout::TopToBottom) << 8 << QList<int>{8, 8, 8, 8};
    QTest::newRow("group box") << "EVGroupBoxLayout" << int(QBoxLayout::TopToBottom) << 8 << QList<int>{8, 4, 8, 8};
    QTest::newRow("four margins") << "EBoxLayout(1,2,3,4)" << int(QBoxLayout::RightToLeft) << 6 << QList<int>{1, 2, 3, 4};
    QTest::newRow("EGroupBox default") << "EGroupBox" << int(QBoxLayout::TopToBottom) << 8 << QList<int>{8, 4, 8, 8};
    QTest::newRow("pair beside") << "EPair LeftToRight" << int(QBoxLayout::LeftToRight) << 4 << QList<int>{0, 0, 0, 0};
    QTest::newRow("pair above") << "EPair TopToBottom" << int(QBoxLayout::TopToBottom) << 8 << QList<int>{0, 0, 0, 0};
}

void TestEPair::layoutsUseTheHouseGeometry()
{
    QFETCH(QString, kind);
    QFETCH(int, direction);
    QFETCH(int, spacing);
    QFETCH(QList<int>, margins);

    QWidget host;
    std::unique_ptr<QWidget> owner;
    if (kind == QLatin1String("EHBoxLayout"))
        new EHBoxLayout(&host);
    else if (kind == QLatin1String("EVBoxLayout"))
        new EVBoxLayout(&host);
    else if (kind == QLatin1String("EVBoxLayout(0,0)"))
        new EVBoxLayout(&host, 0, 0);
    else if (kind == QLatin1String("EVBoxLayout(5,3)"))
        new EVBoxLayout(&host, 5, 3);
    else if (kind == QLatin1String("EVRootBoxLayout"))
        new EVRootBoxLayout(&host);
    else if (kind == QLatin1String("EVGroupBoxLayout"))
        new EVGroupBoxLayout(&host);
    else if (kind == QLatin1String("EBoxLayout(1,2,3,4)"))
        new EBoxLayout(QBoxLayout::RightToLeft, &host, 6, 1, 2, 3, 4);
    else if (kind == QLatin1String("EGroupBox"))
        owner.reset(new EGroupBox(QStringLiteral("Title")));
    else if (kind == QLatin1String("EPair LeftToRight"))
        owner.reset(new EPair(nullptr, QBoxLayout::LeftToRight));
    else if (kind == QLatin1String("EPair TopToBottom"))
        owner.reset(new EPair(nullptr, QBoxLayout::TopToBottom));
    else
        QFAIL("unknown kind");

    auto* box = qobject_cast<QBoxLayout*>(owner ? owner->layout() : host.layout());
    QVERIFY(box);
    QCOMPARE(int(box->direction()), direction);
    QCOMPARE(box->spacing(), spacing);
    const QMargins m = box->contentsMargins();
    QCOMPARE((QList<int>{m.left(), m.top(), m.right(), m.bottom()}), margins);
}

void TestEPair::clearDeletesWidgetsAndNestedLayouts()
{
    QWidget host;
    auto* outer = new EVBoxLayout(&host);
    QPointer<QLabel> top = new QLabel(QStringLiteral("top"));
    outer->addWidget(top);
    outer->addSpacing(20);
    auto* row = new EHBoxLayout;
    outer->addLayout(row);
    QPointer<QLayout> nested = row;
    QPointer<QLineEdit> left = new QLineEdit;
    QPointer<QSpinBox> right = new QSpinBox;
    row->addWidget(left);
    row->addStretch();
    row->addWidget(right);
    auto* inner = new EVBoxLayout;
    row->addLayout(inner);
    QPointer<QLayout> innermost = inner;
    QPointer<QLabel> deep = new QLabel(QStringLiteral("deep"));
    inner->addWidget(deep);
    QCOMPARE(host.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size(), 4);

    outer->clear();

    QCOMPARE(outer->count(), 0);
    QCOMPARE(host.layout(), outer);
    QVERIFY(!top);
    QVERIFY(!left);
    QVERIFY(!right);
    QVERIFY(!deep);
    QVERIFY(!nested);
    QVERIFY(!innermost);
    QVERIFY(host.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());

    // Still usable afterwards.
    outer->addWidget(new QLabel(QStringLiteral("again")));
    QCOMPARE(outer->count(), 1);
    outer->clear();
    QCOMPARE(outer->count(), 0);
}

void TestEPair::captionPlacementFollowsDirection_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<bool>("vertical");

    const int beside = Qt::AlignRight | Qt::AlignVCenter;
    const int above = Qt::AlignLeft | Qt::AlignTop;
    QTest::newRow("LeftToRight") << int(QBoxLayout::LeftToRight) << beside << true;
    QTest::newRow("RightToLeft") << int(QBoxLayout::RightToLeft) << above << false;
    QTest::newRow("TopToBottom") << int(QBoxLayout::TopToBottom) << above << false;
    QTest::newRow("BottomToTop") << int(QBoxLayout::BottomToTop) << above << false;
}

void TestEPair::captionPlacementFollowsDirection()
{
    QFETCH(int, direction);
    QFETCH(int, alignment);
    QFETCH(bool, vertical);

    EPair pair(nullptr, QBoxLayout::Direction(direction));
    QVERIFY(pair.label);
    QCOMPARE(pair.label->parent(), &pair);
    QCOMPARE(int(pair.label->alignment()), alignment);
    QCOMPARE(pair.isVertical(), vertical);
    QCOMPARE(pair.layout()->indexOf(pair.label), 0);
    QVERIFY(!pair.widget);
    QVERIFY(!pair.bindGroup);
}

void TestEPair::captionMnemonicFocusesTheField()
{
    QWidget window;
    auto* column = new EVRootBoxLayout(&window);
    auto* first = new QLineEdit;
    column->addWidget(first);
    auto* pair = new EPair(&window);
    column->addWidget(pair);
    auto* field = new QLineEdit;
    pair->setWidget(field, true);
    pair->setLabelText(QStringLiteral("&Name:"));
    QCOMPARE(pair->label->buddy(), field);

    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first->setFocus();
    QTRY_VERIFY(first->hasFocus());
    QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier);
    QTRY_VERIFY(field->hasFocus());
}

void TestEPair::setWidgetRules()
{
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(collectWarnings);

    EPair pair;
    auto* layout = qobject_cast<QBoxLayout*>(pair.layout());
    QPointer<QLineEdit> first = new QLineEdit;
    pair.setWidget(first, true);
    QCOMPARE(pair.widget, first.data());
    QCOMPARE(first->parent(), &pair);
    QCOMPARE(layout->indexOf(first), 1);
    QCOMPARE(layout->stretch(1), 1);
    QCOMPARE(pair.label->buddy(), first.data());

    // The installed widget again: nothing at all happens, not even to the buddy.
    QLineEdit elsewhere;
    pair.label->setBuddy(&elsewhere);
    pair.setWidget(first, true);
    QVERIFY(first);
    QCOMPARE(pair.label->buddy(), &elsewhere);
    QCOMPARE(layout->count(), 2);

    // Replacing without deleting keeps the old widget as a child, out of the layout.
    QPointer<QSpinBox> second = new QSpinBox;
    pair.setWidget(second, false);
    QVERIFY(first);
    QCOMPARE(first->parent(), &pair);
    QCOMPARE(layout->indexOf(first), -1);
    QCOMPARE(layout->indexOf(second), 1);
    QCOMPARE(layout->count(), 2);
    QCOMPARE(pair.label->buddy(), second.data());

    // Replacing with deleting destroys the old one at once.
    QPointer<QLineEdit> third = new QLineEdit;
    pair.setWidget(third, true);
    QVERIFY(!second);
    QCOMPARE(pair.widget, third.data());

    // Null removes the field and the buddy, silently.
    pair.setWidget(nullptr, false);
    QVERIFY(!pair.widget);
    QVERIFY(third);
    QVERIFY(!pair.label->buddy());
    QCOMPARE(layout->count(), 1);

    qInstallMessageHandler(previous);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

void TestEPair::setLabelTextResizesTheCaption()
{
    EPair lone;
    lone.setLabelText(QStringLiteral("Short"));
    const QSize shortSize = lone.label->size();
    lone.setLabelText(QStringLiteral("A considerably longer caption"));
    QCOMPARE(lone.label->minimumSize(), lone.label->sizeHint());
    QCOMPARE(lone.label->maximumSize(), lone.label->sizeHint());
    QVERIFY(lone.label->maximumWidth() > shortSize.width());
    QCOMPARE(lone.getGreatestCommonSize(), QSize());

    EPair a, b;
    a.setLabelText(QStringLiteral("A"));
    b.setLabelText(QStringLiteral("B"));
    a.bind(&b);
    b.setLabelText(QStringLiteral("A much, much longer caption"));
    const QSize common = b.label->sizeHint();
    QCOMPARE(a.label->maximumSize(), common);
    QCOMPARE(a.label->minimumSize(), common);
    QCOMPARE(b.label->maximumSize(), common);
    QCOMPARE(a.getGreatestCommonSize(), common);
}

void TestEPair::setLabelIgnoredActsOnTheWholePair()
{
    QWidget window;
    auto* column = new EVBoxLayout(&window);
    auto* pair = new EPair;
    column->addWidget(pair);
    pair->setWidget(new QLineEdit, true);

    // Compared with isVisible(): while the window is hidden the pair already counts as invisible,
    // so hiding it does nothing and it appears with its window.
    pair->setLabelIgnored(false);
    QVERIFY(!pair->isHidden());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(pair->isVisible());

    pair->setLabelIgnored(false);
    QVERIFY(!pair->isVisible());
    QVERIFY(!pair->label->isHidden());
    pair->setLabelIgnored(true);
    QVERIFY(pair->isVisible());
    QVERIFY(pair->label->isVisible());
}

void TestEPair::fixWidthFixesTheField()
{
    EPair pair;
    pair.fixWidth(50); // no field yet: nothing to fix, no crash
    auto* field = new QLineEdit;
    pair.setWidget(field, true);
    pair.fixWidth(123);
    QCOMPARE(field->minimumWidth(), 123);
    QCOMPARE(field->maximumWidth(), 123);
}

void TestEPair::boundCaptionsTakeTheLargestWidthAndHeight()
{
    EPair a, b, c;
    a.setLabelText(QStringLiteral("Wide single-line caption:"));
    b.setLabelText(QStringLiteral("Tall\ncaption\nhere:"));
    c.setLabelText(QStringLiteral("x"));
    const QSize ha = a.label->sizeHint(), hb = b.label->sizeHint(), hc = c.label->sizeHint();
    // The maxima come from different captions, so a single "largest" label would not do.
    QVERIFY(ha.width() > hb.width() && hb.height() > ha.height());

    a.bind(&b);
    b.bind(&c);
    const QSize expected(qMax(ha.width(), qMax(hb.width(), hc.width())),
                         qMax(ha.height(), qMax(hb.height(), hc.height())));
    QCOMPARE(expected, QSize(ha.width(), hb.height()));
    for (EPair* p : {&a, &b, &c}) {
        QCOMPARE(p->label->minimumSize(), expected);
        QCOMPARE(p->label->maximumSize(), expected);
        QCOMPARE(p->getGreatestCommonSize(), expected);
    }
    QVERIFY(a.bindGroup);
    QCOMPARE(membersOf(a.bindGroup), (QList<EPair*>{&a, &b, &c}));

    a.setWidget(new QLineEdit, true);
    b.setWidget(new QSpinBox, true);
    c.setWidget(new QLineEdit, true);
    QCOMPARE(a.bindGroup->getGreatestCommonSizeRight(),
             a.widget->sizeHint().expandedTo(b.widget->sizeHint()).expandedTo(c.widget->sizeHint()));

    a.bind(nullptr); // nothing
    a.bind(&c);      // already together: nothing changes
    QCOMPARE(membersOf(a.bindGroup), (QList<EPair*>{&a, &b, &c}));
}

void TestEPair::bindingMergesWholeGroups_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<int>>("order");

    // Pairs 0,1 form one group and 2,3 another; bind(from -> to) joins them.
    QTest::newRow("b.bind(c)") << 1 << 2 << QList<int>{0, 1, 2, 3};
    QTest::newRow("d.bind(a)") << 3 << 0 << QList<int>{2, 3, 0, 1};
    QTest::newRow("a.bind(d)") << 0 << 3 << QList<int>{0, 1, 2, 3};
}

void TestEPair::bindingMergesWholeGroups()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QList<int>, order);

    EPair p[4];
    const char* captions[4] = {"a", "bb", "ccc", "A rather long caption d"};
    for (int i = 0; i < 4; ++i)
        p[i].setLabelText(QString::fromLatin1(captions[i]));
    p[0].bind(&p[1]);
    p[2].bind(&p[3]);
    EBind* surviving = p[from].bindGroup;
    QVERIFY(surviving != p[to].bindGroup);

    p[from].bind(&p[to]);

    QList<EPair*> expected;
    for (int i : order)
        expected << &p[i];
    QCOMPARE(membersOf(surviving), expected);
    for (EPair& pair : p) {
        QCOMPARE(pair.bindGroup, surviving);
        QCOMPARE(pair.label->maximumSize(), p[3].label->sizeHint());
    }
    // The other group object is gone; the sanitizer build reports it as a leak otherwise.
}

void TestEPair::destroyedPairsLeaveTheirGroup()
{
    EPair a, c;
    a.setLabelText(QStringLiteral("a"));
    c.setLabelText(QStringLiteral("c"));
    auto* b = new EPair;
    b->setLabelText(QStringLiteral("The widest caption of all"));
    a.bind(b);
    b->bind(&c);
    const QSize common = b->label->sizeHint();
    EBind* group = a.bindGroup;

    delete b;
    QCOMPARE(membersOf(group), (QList<EPair*>{&a, &c}));
    // The others keep the size computed while the widest caption was there.
    QCOMPARE(a.label->maximumSize(), common);
    QCOMPARE(c.label->maximumSize(), common);

    // Leaving one by one: the group ends with its last member (a leak under the sanitizer build
    // otherwise) and the pairs are free again.
    group->removePair(&c);
    QVERIFY(!c.bindGroup);
    QCOMPARE(membersOf(a.bindGroup), QList<EPair*>{&a});
    a.bindGroup->removePair(&a);
    QVERIFY(!a.bindGroup);
    QCOMPARE(a.getGreatestCommonSize(), QSize());

    // A group whose last member is destroyed goes with it.
    auto* x = new EPair;
    auto* y = new EPair;
    x->bind(y);
    delete x;
    QCOMPARE(membersOf(y->bindGroup), QList<EPair*>{y});
    delete y;
}

void TestEPair::groupBoxForwardsToItsLayout()
{
    auto* own = new EHBoxLayout;
    EGroupBox given(QStringLiteral("Given"), own);
    QCOMPARE(given.layout(), own);
    QCOMPARE(given.title(), QStringLiteral("Given"));

    EGroupBox box(QStringLiteral("Box"));
    auto* layout = qobject_cast<QBoxLayout*>(box.layout());
    QVERIFY(layout);
    auto* edit = new QLineEdit;
    box.addWidget(edit, 2, Qt::AlignTop);
    box.addSpacing(13);
    box.addLayout(new EHBoxLayout, 3);
    box.addStretch(4);
    QCOMPARE(layout->count(), 4);
    QCOMPARE(edit->parent(), &box);
    QCOMPARE(layout->stretch(0), 2);
    QCOMPARE(layout->itemAt(0)->alignment(), Qt::AlignTop);
    QCOMPARE(layout->itemAt(1)->spacerItem()->sizeHint().height(), 13);
    QVERIFY(layout->itemAt(2)->layout());
    QCOMPARE(layout->stretch(2), 3);
    QCOMPARE(layout->stretch(3), 4);
}

void TestEPair::radioGroupReportsOnlyUserClicks()
{
    ERadioGroup radio(QStringLiteral("Direction"));
    QRadioButton* up = radio.addButton(QStringLiteral("Up"), 10);
    QRadioButton* down = radio.addButton(QStringLiteral("Down"), 20);
    IdReceiver receiver;
    QVERIFY(radio.setSlotForUserToggle(&receiver, SLOT(chosen(int))));
    radio.show();
    QVERIFY(QTest::qWaitForWindowExposed(&radio));

    QCOMPARE(radio.getId(), -1);
    radio.setId(20);
    QCOMPARE(radio.getId(), 20);
    QVERIFY(down->isChecked());
    QVERIFY(receiver.ids.isEmpty());

    QTest::mouseClick(up, Qt::LeftButton);
    QCOMPARE(radio.getId(), 10);
    QCOMPARE(receiver.ids, QList<int>{10});

    // A click on the checked button is still a user choice; exclusivity is QButtonGroup's.
    QTest::mouseClick(up, Qt::LeftButton);
    QCOMPARE(receiver.ids, (QList<int>{10, 10}));
    QVERIFY(!down->isChecked());
}

void TestEPair::radioGroupAddressesButtonsById()
{
    ERadioGroup radio;
    QRadioButton* a = radio.addButton(QStringLiteral("A"), 1);
    QCOMPARE(a->parent(), &radio);
    QCOMPARE(radio.layout()->indexOf(a), 0);
    QCOMPARE(radio.group->parent(), &radio);

    // An existing button is only registered; its owner places it.
    QWidget elsewhere;
    auto* outside = new QRadioButton(QStringLiteral("Outside"), &elsewhere);
    radio.addButton(outside, 2);
    QCOMPARE(radio.layout()->count(), 1);
    QCOMPARE(outside->parent(), &elsewhere);
    QCOMPARE(radio.getButton(2), outside);
    QCOMPARE(radio.getButton(1), a);
    QVERIFY(!radio.getButton(3));

    radio.setId(2);
    QCOMPARE(radio.getId(), 2);
    radio.setId(99); // unknown: ignored
    QCOMPARE(radio.getId(), 2);

    radio.setEnabled(1, false);
    QVERIFY(!a->isEnabled());
    QVERIFY(outside->isEnabled());
    radio.setEnabled(1, true);
    QVERIFY(a->isEnabled());
    radio.setEnabled(99, false);
    radio.setEnabled(false); // the widget's own setEnabled is still reachable
    QVERIFY(!a->isEnabled());
}

CG_TEST_MAIN(TestEPair)
#include "tst_epair.moc"
