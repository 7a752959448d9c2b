// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebind.h"
#include "eboxlayout.h"
#include "ecombopair.h"
#include "egroupbox.h"
#include "epair.h"
#include "eradiogroup.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QSpinBox>

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
    void layoutsUseTheHouseGeometry()
    {
        QWidget host;
        auto* box = new EBoxLayout(QBoxLayout::RightToLeft, &host, 6, 1, 2, 3, 4);
        QCOMPARE(box->direction(), QBoxLayout::RightToLeft);
        QCOMPARE(box->spacing(), 6);
        QCOMPARE(box->contentsMargins(), QMargins(1, 2, 3, 4));
        QCOMPARE((new EGroupBox(QString(), nullptr, &host))->layout()->contentsMargins(), QMargins(8, 4, 8, 8));
        // Only LeftToRight counts as the usual caption-beside-field pair, with the caption right-aligned.
        EPair beside, reversed(nullptr, QBoxLayout::RightToLeft);
        QVERIFY(beside.isVertical() && !reversed.isVertical());
        QCOMPARE(beside.layout()->spacing(), 4);
        QCOMPARE(int(beside.label->alignment()), int(Qt::AlignRight | Qt::AlignVCenter));
        QCOMPARE(int(reversed.label->alignment()), int(Qt::AlignLeft | Qt::AlignTop));
    }

    void clearDeletesWidgetsAndNestedLayouts()
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
        QVERIFY(!top && !row && !deep);
    }

    void setWidgetRules()
    {
        warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(collectWarnings);
        EPair pair;
        auto* layout = qobject_cast<QBoxLayout*>(pair.layout());
        QPointer<QLineEdit> first = new QLineEdit;
        pair.setWidget(first, true);
        QCOMPARE(layout->stretch(layout->indexOf(first)), 1);
        pair.fixWidth(123);
        QCOMPARE(first->maximumWidth(), 123);
        // The installed widget again: nothing at all happens, not even to the buddy.
        QLineEdit elsewhere;
        pair.label->setBuddy(&elsewhere);
        pair.setWidget(first, true);
        QCOMPARE(pair.label->buddy(), &elsewhere);
        // Replacing without deleting keeps the old widget as a child, out of the layout.
        QPointer<QSpinBox> second = new QSpinBox;
        pair.setWidget(second, false);
        QCOMPARE(first->parent(), &pair);
        QCOMPARE(layout->indexOf(first), -1);
        QCOMPARE(pair.label->buddy(), second.data());
        pair.setWidget(first, true); // deletes the old one at once
        QVERIFY(!second);
        // Null removes the field and the buddy, silently.
        pair.setWidget(nullptr, false);
        QVERIFY(first && !pair.label->buddy());
        QCOMPARE(layout->count(), 1);
        qInstallMessageHandler(previous);
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
    }

    void fixedFieldStaysAtTheStartOfItsColumn_data()
    {
        QTest::addColumn<int>("direction");
        QTest::addColumn<bool>("combo"); // EComboPair fixes the width its own way
        QTest::newRow("beside") << int(QBoxLayout::LeftToRight) << false;
        QTest::newRow("combo beside") << int(QBoxLayout::LeftToRight) << true;
    }

    void fixedFieldStaysAtTheStartOfItsColumn()
    {
        QFETCH(int, direction);
        QFETCH(bool, combo);
        QWidget form;
        auto* column = new EVBoxLayout(&form);
        auto* wide = new EPair(nullptr, QBoxLayout::Direction(direction));
        wide->setLabelText(QStringLiteral("Host name:"));
        wide->setWidget(new QLineEdit, true);
        EPair* fixed = combo ? new EComboPair(QStringLiteral("Port:")) : new EPair(nullptr, QBoxLayout::Direction(direction));
        if (!combo) {
            fixed->setLabelText(QStringLiteral("Port:"));
            fixed->setWidget(new QSpinBox, true);
        }
        wide->bind(fixed);
        column->addWidget(wide);
        column->addWidget(fixed);
        fixed->fixWidth(60);
        form.resize(400, 200);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QCOMPARE(fixed->widget->width(), 60);
        QCOMPARE(fixed->widget->x(), wide->widget->x());
        QCOMPARE(fixed->label->x(), wide->label->x());
    }

    void setLabelIgnoredActsOnTheWholePair()
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
        QVERIFY(!pair->isVisible() && !pair->label->isHidden());
        pair->setLabelIgnored(true);
        QVERIFY(pair->isVisible() && pair->label->isVisible());
    }

    void boundCaptionsTakeTheLargestWidthAndHeight()
    {
        EPair a, b, c;
        a.setLabelText(QStringLiteral("Wide single-line caption:"));
        b.setLabelText(QStringLiteral("Tall\ncaption\nhere:"));
        c.setLabelText(QStringLiteral("x"));
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
        }
        // A caption changed later widens the whole group.
        c.setLabelText(QStringLiteral("A much, much longer caption than the others:"));
        QCOMPARE(a.label->maximumWidth(), c.label->sizeHint().width());
        a.setWidget(new QLineEdit, true);
        b.setWidget(new QSpinBox, true);
        QCOMPARE(a.bindGroup->getGreatestCommonSizeRight(), a.widget->sizeHint().expandedTo(b.widget->sizeHint()));
    }

    void bindingMergesWholeGroups()
    {
        // Pairs 0,1 form one group and 2,3 another; from.bind(to) joins them into from's group, its members first.
        for (const QPoint& fromTo : {QPoint(1, 2), QPoint(3, 0)}) {
            EPair p[4];
            p[3].setLabelText(QStringLiteral("A rather long caption"));
            p[0].bind(&p[1]);
            p[2].bind(&p[3]);
            EBind* surviving = p[fromTo.x()].bindGroup;
            p[fromTo.x()].bind(&p[fromTo.y()]);
            const int f = fromTo.x() / 2 * 2, t = fromTo.y() / 2 * 2;
            QCOMPARE(membersOf(surviving), (QList<EPair*>{&p[f], &p[f + 1], &p[t], &p[t + 1]}));
            for (EPair& pair : p) {
                QCOMPARE(pair.bindGroup, surviving);
                QCOMPARE(pair.label->maximumSize(), p[3].label->sizeHint());
            }
        } // the other group object is gone; the sanitizer build reports it as a leak otherwise
    }

    void destroyedPairsLeaveTheirGroup()
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
    }

    void radioGroupReportsOnlyUserClicks()
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
        QVERIFY(radio.getId() == 20 && down->isChecked());
        QVERIFY(receiver.ids.isEmpty());
        QTest::mouseClick(up, Qt::LeftButton);
        QCOMPARE(radio.getId(), 10);
        // A click on the checked button is still a user choice.
        QTest::mouseClick(up, Qt::LeftButton);
        QCOMPARE(receiver.ids, (QList<int>{10, 10}));
    }
};

CG_TEST_MAIN(TestEPair)
#include "tst_epair.moc"
