// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebutton.h"
#include "echeckbox.h"
#include "ecombobox.h"
#include "ecombopair.h"
#include "edatetimebox.h"
#include "edatetimepair.h"
#include "edirs.h"
#include "eiconbutton.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "espinbox.h"
#include "espinpair.h"
#include "etimebox.h"
#include "etimepair.h"

#include <QCalendarWidget>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>

#include <ctime>
#include <functional>
#include <limits>

namespace {

/// The receiver of a field's two connectors: every change, and the user's changes.
class Counter : public QObject
{
    Q_OBJECT
public:
    int all = 0, user = 0;
public slots:
    void anyChange() { ++all; }
    void userChange() { ++user; }
};

/// Hands TCP, UDP and ICMP to a combo with the ids 100, 101 and 102.
class Protocols : public EEnumerator
{
public:
    const QPixmap* getIcon() override { return nullptr; }
    QString getText() override { return texts.at(pos); }
    void* getData() override { return nullptr; }
    int getId() override { return 100 + pos; }
    bool next() override { return ++pos < texts.size(); }
    QString getListText() override { return texts.join(QLatin1Char(',')); }
    const QStringList texts{QStringLiteral("TCP"), QStringLiteral("UDP"), QStringLiteral("ICMP")};
    int pos = -1;
};

using Action = std::function<void(QWidget*)>;

/// \a box with its every-change and user-change connectors wired to \a c, shown in \a window; null if a step failed.
template<class Box>
using StringConnector = bool (Box::*)(QObject*, const char*);   // the slot-string form of an overloaded connector

template<class Box>
QWidget* shown(Box* box, StringConnector<Box> all, StringConnector<Box> user, Counter& c, QWidget& window)
{
    if (!(box->*all)(&c, SLOT(anyChange())) || !(box->*user)(&c, SLOT(userChange())))
        return nullptr;
    (new QVBoxLayout(&window))->addWidget(box);
    window.show();
    box->setFocus();
    return QTest::qWaitForWindowExposed(&window) ? box : nullptr;
}

/// A field of \a kind, wired to \a c and shown alone in \a w.
QWidget* makeField(const QString& kind, QWidget& w, Counter& c)
{
    if (kind == QLatin1String("edit"))
        return shown(new EEditBox(&w), &EEditBox::setSlotForChangeText, &EEditBox::setSlotForUserChangeText, c, w);
    if (kind == QLatin1String("spin"))
        return shown(new ESpinBox(&w), &ESpinBox::setSlotForChangeValue, &ESpinBox::setSlotForUserChangeValue, c, w);
    if (kind == QLatin1String("datetime"))
        return shown(new EDateTimeBox(&w), &EDateTimeBox::setSlotForChangeValue,
                     &EDateTimeBox::setSlotForUserChangeValue, c, w);
    if (kind == QLatin1String("time"))
        return shown(new ETimeBox(&w), &ETimeBox::setSlotForChangeValue, &ETimeBox::setSlotForUserChangeValue, c, w);
    if (kind == QLatin1String("check"))
        return shown(new ECheckBox(QStringLiteral("Check"), &w), &ECheckBox::setSlotForToggle,
                     &ECheckBox::setSlotForUserToggle, c, w);
    auto* combo = new EComboBox(&w);
    Protocols protocols;
    combo->addId(protocols, false);
    return shown(combo, &EComboBox::setSlotForChangeSelection, &EComboBox::setSlotForUserChangeSelection, c, w);
}

template<class Box>
Box* on(QWidget* w)
{
    return static_cast<Box*>(w);
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestEFields : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        qputenv("TZ", "MSK-3"); // three hours east of UTC, so local time differs visibly from UTC
        tzset();
    }

    void onlyTheUsersChangesReachTheUserConnector_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<Action>("setFromCode"); // the widget's own setter, to a value it does not show yet
        QTest::addColumn<Action>("userAction");
        const Action calendar = [](QWidget* w) {
            on<QDateTimeEdit>(w)->setCalendarPopup(true);
            QTest::keyClick(on<QDateTimeEdit>(w)->calendarWidget()->findChild<QTableView*>(), Qt::Key_Right);
        };
        const auto key = [](Qt::Key key) { return Action([key](QWidget* w) { QTest::keyClick(w, key); }); };
        QTest::newRow("edit, backspace")
            << "edit" << Action([](QWidget* w) { on<EEditBox>(w)->setText(QStringLiteral("x")); }) << key(Qt::Key_Backspace);
        // The base class's setters bypass the library's own: they count as the user's.
        QTest::newRow("spin, QSpinBox::setValue") << "spin" << Action([](QWidget* w) { on<ESpinBox>(w)->setValue(5); })
                                                  << Action([](QWidget* w) { on<QSpinBox>(w)->setValue(77); });
        QTest::newRow("datetime(long), calendar")
            << "datetime" << Action([](QWidget* w) { on<EDateTimeBox>(w)->setDateTime(1000000000L); }) << calendar;
        QTest::newRow("time(int), arrow down")
            << "time" << Action([](QWidget* w) { on<ETimeBox>(w)->setTime(3661); }) << key(Qt::Key_Down);
        QTest::newRow("check, click") << "check" << Action([](QWidget* w) { on<ECheckBox>(w)->setChecked(true); })
                                      << Action([](QWidget* w) { QTest::mouseClick(w, Qt::LeftButton); });
        QTest::newRow("combo by id, arrow up")
            << "combo" << Action([](QWidget* w) { on<EComboBox>(w)->setCurrentId(102); }) << key(Qt::Key_Up);
    }

    void onlyTheUsersChangesReachTheUserConnector()
    {
        QFETCH(QString, kind);
        QFETCH(Action, setFromCode);
        QFETCH(Action, userAction);
        QWidget window;
        Counter counter;
        QWidget* field = makeField(kind, window, counter);
        QVERIFY(field);
        setFromCode(field);
        QCOMPARE(counter.all, 1);
        QCOMPARE(counter.user, 0);
        setFromCode(field); // the value already shown: neither connector
        QCOMPARE(counter.all, 1);
        userAction(field);
        QVERIFY(counter.all > 1);
        QCOMPARE(counter.user, counter.all - 1);
    }

    void dateTimeFromSecondsIsLocalAndNotAUserChange()
    {
        EDateTimeBox box;
        box.setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        QSignalSpy user(&box, &EDateTimeBox::userChanged);
        box.setDateTime(1234567890L);
        QCOMPARE(box.text(), QStringLiteral("2009-02-14 02:31:30"));
        const qint64 before = std::time(nullptr);
        box.setCurrentDateTime();
        const qint64 now = box.dateTime().toSecsSinceEpoch();
        QVERIFY(now >= before && now <= std::time(nullptr));
        QCOMPARE(user.count(), 0);
    }

    void secondsAfterMidnightWrap_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QTime>("time");
        QTest::newRow("a minute before midnight") << -60 << QTime(23, 59, 0);
        // Where seconds times a thousand no longer fit an int.
        QTest::newRow("largest int") << std::numeric_limits<int>::max() << QTime(3, 14, 7);
        QTest::newRow("smallest int") << std::numeric_limits<int>::min() << QTime(20, 45, 52);
    }

    void secondsAfterMidnightWrap()
    {
        QFETCH(int, seconds);
        QFETCH(QTime, time);
        ETimeBox box;
        box.setTime(seconds);
        QCOMPARE(box.time(), time);
    }

    void pairsHoldTheirFieldBesideTheCaption()
    {
        const QString caption = QStringLiteral("&Caption:");
        QWidget parent;
        auto* edit = new EEditPair(caption, &parent);
        auto* spin = new ESpinPair(caption, -10, 90, 5, &parent);
        auto* dt = new EDateTimePair(caption, &parent);
        auto* time = new ETimePair(caption, &parent);
        auto* given = new EComboBox;
        auto* combo = new EComboPair(given, caption, &parent);
        auto* state = new EComboStatePair(caption, QStringLiteral("Remembered"), &parent);
        QCOMPARE(combo->getComboBox(), given);
        QVERIFY(state->getComboState()->isEditable());
        const QSpinBox* box = spin->getSpinBox();
        QCOMPARE(QVector<int>({box->minimum(), box->maximum(), box->singleStep()}), QVector<int>({-10, 90, 5}));
        QVERIFY(edit->getEditBox() && dt->getDateTimeBox() && time->getTimeBox());
        for (EPair* pair : std::initializer_list<EPair*>{edit, spin, dt, time, combo, state}) {
            QCOMPARE(pair->getLabelText(), caption);
            QCOMPARE(pair->layout()->indexOf(pair->widget), 1);
            pair->setWidget(new QLabel, true);
        }
        // Replaced by another kind of widget, the typed accessors say so instead of lying.
        QVERIFY(!edit->getEditBox() && !spin->getSpinBox() && !dt->getDateTimeBox() && !time->getTimeBox());
        QVERIFY(!combo->getComboBox() && !state->getComboState());
    }

    void comboPairFixesTheComboAndItsList()
    {
        EComboPair pair(QStringLiteral("Protocol:"));
        static_cast<EPair&>(pair).fixWidth(150); // through the base class: the override must still be called
        EComboBox* combo = pair.getComboBox();
        QCOMPARE(QSize(combo->minimumWidth(), combo->maximumWidth()), QSize(150, 150));
        QCOMPARE(QSize(combo->view()->minimumWidth(), combo->view()->maximumWidth()), QSize(150, 150));
    }

    void comboStatePairRemembersUnderItsForm()
    {
        {
            QDialog form;
            auto* pair = new EComboStatePair(QStringLiteral("Find what:"), QStringLiteral("What"), &form);
            pair->getComboState()->setEditText(QStringLiteral("first"));
            pair->getComboState()->setEditText(QStringLiteral("second"));
        }
        QSettings ini(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
        QVERIFY(ini.childGroups().contains(QStringLiteral("EComboStatePair_QDialog")));
        QDialog again;
        EComboStatePair pair(QStringLiteral("Find what:"), QStringLiteral("What"), &again);
        QCOMPARE(pair.getComboState()->count(), 2);
        QCOMPARE(pair.getComboState()->itemText(0), QStringLiteral("second"));
    }

    void buttonsArePaddedAndIconButtonsSquare()
    {
        EButton ok(QStringLiteral("&OK"), nullptr, true);
        QCOMPARE(ok.text(), QStringLiteral(" &OK "));
        QVERIFY(ok.isDefault());

        QPixmap pixmap(48, 48);
        pixmap.fill(Qt::darkCyan);
        QWidget window;
        auto* button = new EIconButton(QIcon(pixmap));
        button->setIconSize(QSize(48, 48)); // after construction: the width stays as fixed
        (new QHBoxLayout(&window))->addWidget(button);
        const int side = button->minimumWidth();
        QCOMPARE(button->maximumWidth(), side);
        window.resize(600, 80);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(button->width(), side);
    }

    void dateTimePairProposesAMonthAhead()
    {
        const qint64 before = QDateTime::currentDateTime().addMonths(1).toSecsSinceEpoch();
        EDateTimePair pair(QStringLiteral("Valid until:"));
        const qint64 after = QDateTime::currentDateTime().addMonths(1).toSecsSinceEpoch();
        const qint64 proposed = pair.getDateTimeBox()->dateTime().toSecsSinceEpoch();
        QVERIFY(proposed >= before && proposed <= after);
    }
};

CG_TEST_MAIN(TestEFields)
#include "tst_efields.moc"
