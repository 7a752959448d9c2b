// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebind.h"
#include "eboxlayout.h"
#include "egroupbox.h"
#include "epair.h"
#include "eradiogroup.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QSpinBox>

#include <functional>

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

using MakeLayout = std::function<QLayout*(QWidget* host)>;

} // namespace

Q_DECLARE_METATYPE(MakeLayout)
Q_DECLARE_METATYPE(QMargins)

class TestEPair : public QObject
{
    Q_OBJECT
private slots:
    void layoutsUseTheHouseGeometry_data();
    void layoutsUseTheHouseGeometry();
    void clearDeletesWidgetsAndNestedLayouts();
    void setWidgetRules();
    void setLabelIgnoredActsOnTheWholePair();
    void boundCaptionsTakeTheLargestWidthAndHeight();
    void bindingMergesWholeGroups_data();
    void bindingMergesWholeGroups();
    void destroyedPairsLeaveTheirGroup();
    void radioGroupReportsOnlyUserClicks();
};

void TestEPair::layoutsUseTheHouseGeometry_data()
{
    QTest::addColumn<MakeLayout>("make");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("spacing");
    QTest::addColumn<QMargins>("margins");
    QTest::addColumn<int>("captionAlignment"); // of an EPair's caption

    const int down = QBoxLayout::TopToBottom;
    const int beside = Qt::AlignRight | Qt::AlignVCenter;
    const int above = Qt::AlignLeft | Qt::AlignTop;
    QTest::newRow("EHBoxLayout") << MakeLayout([](QWidget* h) { return new EHBoxLayout(h); })
                                 << int(QBoxLayout::LeftToRight) << 8 << QMargins() << 0;
    QTest::newRow("EVBoxLayout(spacing 5, margin 3)")
        << MakeLayout([](QWidget* h) { return new EVBoxLayout(h, 5, 3); }) << down << 5 << QMargins(3, 3, 3, 3) << 0;
    QTest::newRow("EVRootBoxLayout") << MakeLayout([](QWidget* h) { return new EVRootBoxLayout(h); }) << down << 8
                                     << QMargins(8, 8, 8, 8) << 0;
    QTest::newRow("EGroupBox") << MakeLayout([](QWidget* h) { return (new EGroupBox(QString(), nullptr, h))->layout(); })
                               << down << 8 << QMargins(8, 4, 8, 8) << 0;
    QTest::newRow("EBoxLayout, four margins")
        << MakeLayout([](QWidget* h) { return new EBoxLayout(QBoxLayout::RightToLeft, h, 6, 1, 2, 3, 4); })
        << int(QBoxLayout::RightToLeft) << 6 << QMargins(1, 2, 3, 4) << 0;
    QTest::newRow("EPair beside") << MakeLayout([](QWidget* h) { return (new EPair(h))->layout(); })
                                  << int(QBoxLayout::LeftToRight) << 4 << QMargins() << beside;
    QTest::newRow("EPair above") << MakeLayout([](QWidget* h) { return (new EPair(h, QBoxLayout::TopToBottom))->layout(); })
                                 << down << 8 << QMargins() << above;
    // Only LeftToRight counts as the usual caption-beside-field pair.
    QTest::newRow("EPair RightToLeft")
        << MakeLayout([](QWidget* h) { return (new EPair(h, QBoxLayout::RightToLeft))->layout(); })
        << int(QBoxLayout::RightToLeft) << 8 << QMargins() << above;
}

void TestEPair::layoutsUseTheHouseGeometry()
{
    QFETCH(MakeLayout, make);
    QFETCH(int, direction);
    QFETCH(int, spacing);
    QFETCH(QMargins, margins);
    QFETCH(int, captionAlignment);
    QWidget host;
    auto* box = qobject_cast<QBoxLayout*>(make(&host));
    QVERIFY(box);
    QCOMPARE(int(box->direction()), direction);
    QCOMPARE(box->spacing(), spacing);
    QCOMPARE(box->contentsMargins(), margins);
    if (auto* pair = dynamic_cast<EPair*>(box->parentWidget())) {
        QCOMPARE(int(pair->label->alignment()), captionAlignment);
        QCOMPARE(pair->isVertical(), direction == QBoxLayout::LeftToRight);
        QCOMPARE(box->indexOf(pair->label), 0);
    }
}

void TestEPair::clearDeletesWidgetsAndNestedLayouts()
{
    QWidget host;
    auto* outer = new EVBoxLayout(&host);
    QPointer<QLabel> top = new QLabel;
    outer->addWidget(top);
    outer->addSpacing(20);
    QPointer<QLayout> row = new EHBoxLayout;
    outer->addLayout(row);
    QPointer<QLineEdit> deep = new QLineEdit;
    row->addWidget(deep);

    outer->clear();
    QCOMPARE(outer->count(), 0);
    QCOMPARE(host.layout(), outer);
    QVERIFY(!top);
    QVERIFY(!row);
    QVERIFY(!deep);
}

void TestEPair::setWidgetRules()
{
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(collectWarnings);
    EPair pair;
    pair.fixWidth(50); // no field yet: nothing to fix, no crash
    auto* layout = qobject_cast<QBoxLayout*>(pair.layout());
    QPointer<QLineEdit> first = new QLineEdit;
    pair.setWidget(first, true);
    QCOMPARE(layout->indexOf(first), 1);
    QCOMPARE(layout->stretch(1), 1);
    QCOMPARE(pair.label->buddy(), first.data());
    pair.fixWidth(123);
    QCOMPARE(first->maximumWidth(), 123);

    // The installed widget again: nothing at all happens, not even to the buddy.
    QLineEdit elsewhere;
    pair.label->setBuddy(&elsewhere);
    pair.setWidget(first, true);
    QVERIFY(first);
    QCOMPARE(pair.label->buddy(), &elsewhere);

    // Replacing without deleting keeps the old widget as a child, out of the layout.
    QPointer<QSpinBox> second = new QSpinBox;
    pair.setWidget(second, false);
    QCOMPARE(first->parent(), &pair);
    QCOMPARE(layout->indexOf(first), -1);
    QCOMPARE(layout->indexOf(second), 1);
    QCOMPARE(pair.label->buddy(), second.data());

    pair.setWidget(first, true); // deletes the old one at once
    QVERIFY(!second);

    // Null removes the field and the buddy, silently.
    pair.setWidget(nullptr, false);
    QVERIFY(first);
    QVERIFY(!pair.label->buddy());
    QCOMPARE(layout->count(), 1);
    qInstallMessageHandler(previous);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

void TestEPair::setLabelIgnoredActsOnTheWholePair()
{
    QWidget window;
    auto* pair = new EPair;
    (new EVBoxLayout(&window))->addWidget(pair);
    pair->setWidget(new QLineEdit, true);

    // Compared with isVisible(): while the window is hidden the pair already counts as invisible,
    // so hiding it does nothing and it appears with its window.
    pair->setLabelIgnored(false);
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

void TestEPair::boundCaptionsTakeTheLargestWidthAndHeight()
{
    EPair a, b, c;
    a.setLabelText(QStringLiteral("Wide single-line caption:"));
    b.setLabelText(QStringLiteral("Tall\ncaption\nhere:"));
    c.setLabelText(QStringLiteral("x"));
    QCOMPARE(c.label->maximumSize(), c.label->sizeHint()); // alone: its own size
    // The maxima come from different captions, so a single "largest" label would not do.
    const QSize expected(a.label->sizeHint().width(), b.label->sizeHint().height());
    QVERIFY(expected.height() > a.label->sizeHint().height() && expected.width() > b.label->sizeHint().width());
    a.bind(&b);
    b.bind(&c);
    a.bind(&c); // already together: nothing changes
    QCOMPARE(membersOf(a.bindGroup), (QList<EPair*>{&a, &b, &c}));
    for (EPair* p : {&a, &b, &c}) {
        QCOMPARE(p->label->minimumSize(), expected);
        QCOMPARE(p->label->maximumSize(), expected);
        QCOMPARE(p->getGreatestCommonSize(), expected);
    }
    // A caption changed later widens the whole group.
    c.setLabelText(QStringLiteral("A much, much longer caption than the others:"));
    QCOMPARE(a.label->maximumWidth(), c.label->sizeHint().width());

    a.setWidget(new QLineEdit, true);
    b.setWidget(new QSpinBox, true);
    QCOMPARE(a.bindGroup->getGreatestCommonSizeRight(), a.widget->sizeHint().expandedTo(b.widget->sizeHint()));
}

void TestEPair::bindingMergesWholeGroups_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<int>>("order");
    // Pairs 0,1 form one group and 2,3 another; from.bind(to) joins them into from's group.
    QTest::newRow("b.bind(c)") << 1 << 2 << QList<int>{0, 1, 2, 3};
    QTest::newRow("d.bind(a)") << 3 << 0 << QList<int>{2, 3, 0, 1};
}

void TestEPair::bindingMergesWholeGroups()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QList<int>, order);
    EPair p[4];
    p[3].setLabelText(QStringLiteral("A rather long caption"));
    p[0].bind(&p[1]);
    p[2].bind(&p[3]);
    EBind* surviving = p[from].bindGroup;

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
    auto* b = new EPair;
    b->setLabelText(QStringLiteral("The widest caption of all"));
    a.bind(b);
    b->bind(&c);
    const QSize common = b->label->sizeHint();
    EBind* group = a.bindGroup;
    delete b;
    QCOMPARE(membersOf(group), (QList<EPair*>{&a, &c}));
    QCOMPARE(a.label->maximumSize(), common); // computed while the widest caption was there

    // The group ends with its last member (a leak under the sanitizer build otherwise).
    group->removePair(&c);
    QVERIFY(!c.bindGroup);
    a.bindGroup->removePair(&a);
    QVERIFY(!a.bindGroup);
    QCOMPARE(a.getGreatestCommonSize(), QSize());
    auto* x = new EPair;
    auto* y = new EPair;
    x->bind(y);
    delete x;
    QCOMPARE(membersOf(y->bindGroup), QList<EPair*>{y});
    delete y;
}

void TestEPair::radioGroupReportsOnlyUserClicks()
{
    ERadioGroup radio(QStringLiteral("Direction"));
    QRadioButton* up = radio.addButton(QStringLiteral("Up"), 10);
    QRadioButton* down = radio.addButton(QStringLiteral("Down"), 20);
    // An existing button is only registered; its owner places it.
    QWidget elsewhere;
    auto* outside = new QRadioButton(&elsewhere);
    radio.addButton(outside, 30);
    QCOMPARE(outside->parent(), &elsewhere);
    QCOMPARE(radio.getButton(30), outside);
    IdReceiver receiver;
    QVERIFY(radio.setSlotForUserToggle(&receiver, SLOT(chosen(int))));
    radio.show();
    QVERIFY(QTest::qWaitForWindowExposed(&radio));

    QCOMPARE(radio.getId(), -1);
    radio.setId(20);
    radio.setId(99); // unknown: ignored
    QCOMPARE(radio.getId(), 20);
    QVERIFY(down->isChecked());
    QVERIFY(receiver.ids.isEmpty());
    QTest::mouseClick(up, Qt::LeftButton);
    QCOMPARE(radio.getId(), 10);
    // A click on the checked button is still a user choice.
    QTest::mouseClick(up, Qt::LeftButton);
    QCOMPARE(receiver.ids, (QList<int>{10, 10}));

    radio.setEnabled(10, false);
    radio.setEnabled(99, false);
    QVERIFY(!up->isEnabled());
    QVERIFY(down->isEnabled());
}

CG_TEST_MAIN(TestEPair)
#include "tst_epair.moc"
