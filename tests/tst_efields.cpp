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
#include "eeditbox.h"
#include "eeditpair.h"
#include "eiconbutton.h"
#include "espinbox.h"
#include "espinpair.h"
#include "etimebox.h"
#include "etimepair.h"

#include <QCalendarWidget>
#include <QDialog>
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
    int all = 0;
    int user = 0;
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

/// \a box with its every-change and user-change connectors wired to \a c; null if one failed.
template<class Box, class Connector>
QWidget* wired(Box* box, Connector all, Connector user, Counter& c)
{
    return (box->*all)(&c, SLOT(anyChange())) && (box->*user)(&c, SLOT(userChange())) ? box : nullptr;
}

/// A field of \a kind, wired to \a c and shown alone in \a window.
QWidget* makeField(const QString& kind, QWidget& window, Counter& c)
{
    QWidget* field = nullptr;
    if (kind == QLatin1String("edit")) {
        field = wired(new EEditBox(&window), &EEditBox::setSlotForChangeText, &EEditBox::setSlotForUserChangeText, c);
    } else if (kind == QLatin1String("spin")) {
        field = wired(new ESpinBox(&window), &ESpinBox::setSlotForChangeValue, &ESpinBox::setSlotForUserChangeValue, c);
    } else if (kind == QLatin1String("datetime")) {
        field = wired(new EDateTimeBox(&window), &EDateTimeBox::setSlotForChangeValue,
                      &EDateTimeBox::setSlotForUserChangeValue, c);
    } else if (kind == QLatin1String("time")) {
        field = wired(new ETimeBox(&window), &ETimeBox::setSlotForChangeValue, &ETimeBox::setSlotForUserChangeValue, c);
    } else if (kind == QLatin1String("check")) {
        field = wired(new ECheckBox(QStringLiteral("Check"), &window), &ECheckBox::setSlotForToggle,
                      &ECheckBox::setSlotForUserToggle, c);
    } else {
        auto* combo = new EComboBox(&window);
        Protocols protocols;
        combo->addId(protocols, false);
        field = wired(combo, &EComboBox::setSlotForChangeSelection, &EComboBox::setSlotForUserChangeSelection, c);
    }
    if (!field)
        return nullptr;
    (new QVBoxLayout(&window))->addWidget(field);
    window.show();
    field->setFocus();
    return QTest::qWaitForWindowExposed(&window) ? field : nullptr;
}

template<class Box>
Box* on(QWidget* w)
{
    return static_cast<Box*>(w);
}

Action key(Qt::Key key)
{
    return [key](QWidget* w) { QTest::keyClick(w, key); };
}

void wheelUp(QWidget* w)
{
    const QPoint pos = w->rect().center();
    QWheelEvent wheel(pos, w->mapToGlobal(pos), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &wheel);
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestEFields : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void onlyTheUsersChangesReachTheUserConnector_data();
    void onlyTheUsersChangesReachTheUserConnector();
    void dateTimeFromSecondsIsLocalAndNotAUserChange();
    void secondsAfterMidnightWrap_data();
    void secondsAfterMidnightWrap();
    void pairsHoldTheirFieldBesideTheCaption();
    void comboPairFixesTheComboAndItsList();
    void comboStatePairRemembersUnderItsForm();
    void dateTimePairProposesAMonthAhead();
    void buttonCaptionIsPadded_data();
    void buttonCaptionIsPadded();
    void iconButtonIsSquareAndStaysSo();
};

void TestEFields::initTestCase()
{
    qputenv("TZ", "MSK-3"); // three hours east of UTC, so local time differs visibly from UTC
    tzset();
}

void TestEFields::onlyTheUsersChangesReachTheUserConnector_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Action>("setFromCode"); // the widget's own setter, to a value it does not show yet
    QTest::addColumn<Action>("userAction");

    const QDateTime later(QDate(2030, 1, 2), QTime(3, 4, 5));
    const Action click = [](QWidget* w) { QTest::mouseClick(w, Qt::LeftButton); };
    const Action calendar = [](QWidget* w) {
        on<QDateTimeEdit>(w)->setCalendarPopup(true);
        QTest::keyClick(on<QDateTimeEdit>(w)->calendarWidget()->findChild<QTableView*>(), Qt::Key_Right);
    };
    QTest::newRow("edit, backspace")
        << "edit" << Action([](QWidget* w) { on<EEditBox>(w)->setText(QStringLiteral("x")); }) << key(Qt::Key_Backspace);
    // The base class's setters bypass the library's own: they count as the user's.
    QTest::newRow("spin, QSpinBox::setValue") << "spin" << Action([](QWidget* w) { on<ESpinBox>(w)->setValue(5); })
                                              << Action([](QWidget* w) { on<QSpinBox>(w)->setValue(77); });
    QTest::newRow("datetime(long), calendar")
        << "datetime" << Action([](QWidget* w) { on<EDateTimeBox>(w)->setDateTime(1000000000L); }) << calendar;
    QTest::newRow("datetime, QDateTimeEdit::setDateTime")
        << "datetime" << Action([later](QWidget* w) { on<EDateTimeBox>(w)->setDateTime(later); })
        << Action([later](QWidget* w) { on<QDateTimeEdit>(w)->setDateTime(later.addDays(1)); });
    QTest::newRow("time, arrow down")
        << "time" << Action([](QWidget* w) { on<ETimeBox>(w)->setTime(QTime(1, 2, 3)); }) << key(Qt::Key_Down);
    QTest::newRow("time(int), QTimeEdit::setTime") << "time" << Action([](QWidget* w) { on<ETimeBox>(w)->setTime(3661); })
                                                   << Action([](QWidget* w) { on<QTimeEdit>(w)->setTime(QTime(23, 30)); });
    QTest::newRow("check, click") << "check" << Action([](QWidget* w) { on<ECheckBox>(w)->setChecked(true); }) << click;
    QTest::newRow("combo, arrow down")
        << "combo" << Action([](QWidget* w) { on<EComboBox>(w)->setCurrentIndex(1); }) << key(Qt::Key_Down);
    QTest::newRow("combo by id, wheel")
        << "combo" << Action([](QWidget* w) { on<EComboBox>(w)->setCurrentId(102); }) << Action(wheelUp);
}

void TestEFields::onlyTheUsersChangesReachTheUserConnector()
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

void TestEFields::dateTimeFromSecondsIsLocalAndNotAUserChange()
{
    EDateTimeBox box;
    box.setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QSignalSpy user(&box, &EDateTimeBox::userChanged);
    box.setDateTime(1234567890L);
    QCOMPARE(box.dateTime().toSecsSinceEpoch(), qint64(1234567890));
    QCOMPARE(box.text(), QStringLiteral("2009-02-14 02:31:30"));
    const qint64 before = std::time(nullptr);
    box.setCurrentDateTime();
    const qint64 now = box.dateTime().toSecsSinceEpoch();
    QVERIFY(now >= before && now <= std::time(nullptr));
    QCOMPARE(box.dateTime().time().msec(), 0);
    QCOMPARE(user.count(), 0);
}

void TestEFields::secondsAfterMidnightWrap_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QTime>("time");
    QTest::newRow("a day and a minute") << 86460 << QTime(0, 1, 0);
    QTest::newRow("a minute before midnight") << -60 << QTime(23, 59, 0);
    // Where seconds times a thousand no longer fit an int.
    QTest::newRow("largest int") << std::numeric_limits<int>::max() << QTime(3, 14, 7);
    QTest::newRow("smallest int") << std::numeric_limits<int>::min() << QTime(20, 45, 52);
}

void TestEFields::secondsAfterMidnightWrap()
{
    QFETCH(int, seconds);
    QFETCH(QTime, time);
    ETimeBox box;
    box.setTime(seconds);
    QCOMPARE(box.time(), time);
}

void TestEFields::pairsHoldTheirFieldBesideTheCaption()
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
    QCOMPARE(spin->getSpinBox()->minimum(), -10);
    QCOMPARE(spin->getSpinBox()->maximum(), 90);
    QCOMPARE(spin->getSpinBox()->singleStep(), 5);
    QVERIFY(edit->getEditBox() && dt->getDateTimeBox() && time->getTimeBox());
    for (EPair* pair : std::initializer_list<EPair*>{edit, spin, dt, time, combo, state}) {
        QVERIFY(pair->widget);
        QCOMPARE(pair->getLabelText(), caption);
        QCOMPARE(pair->layout()->indexOf(pair->widget), 1);
        pair->setWidget(new QLabel, true);
    }
    // Replaced by another kind of widget, the typed accessors say so instead of lying.
    QVERIFY(!edit->getEditBox() && !spin->getSpinBox() && !dt->getDateTimeBox() && !time->getTimeBox());
    QVERIFY(!combo->getComboBox() && !state->getComboState());
}

void TestEFields::comboPairFixesTheComboAndItsList()
{
    EComboPair pair(QStringLiteral("Protocol:"));
    static_cast<EPair&>(pair).fixWidth(150); // through the base class: the override must still be called
    EComboBox* combo = pair.getComboBox();
    QCOMPARE(combo->minimumWidth(), 150);
    QCOMPARE(combo->maximumWidth(), 150);
    QCOMPARE(combo->view()->minimumWidth(), 150);
    QCOMPARE(combo->view()->maximumWidth(), 150);
}

void TestEFields::comboStatePairRemembersUnderItsForm()
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
    QCOMPARE(pair.getComboState()->itemText(1), QStringLiteral("first"));
}

void TestEFields::dateTimePairProposesAMonthAhead()
{
    const qint64 before = QDateTime::currentDateTime().addMonths(1).toSecsSinceEpoch();
    EDateTimePair pair(QStringLiteral("Valid until:"));
    const qint64 after = QDateTime::currentDateTime().addMonths(1).toSecsSinceEpoch();
    EDateTimeBox* box = pair.getDateTimeBox();
    QVERIFY(box->dateTime().toSecsSinceEpoch() >= before && box->dateTime().toSecsSinceEpoch() <= after);
    QVERIFY(box->calendarPopup());
    // The proposed value is an ordinary starting point: the first arrow press is a user change.
    QSignalSpy user(box, &EDateTimeBox::userChanged);
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(user.count(), 1);
}

void TestEFields::buttonCaptionIsPadded_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("isDefault");
    QTest::newRow("OK") << "OK" << " OK " << true;
    QTest::newRow("mnemonic") << "&Cancel" << " &Cancel " << false;
    QTest::newRow("spaces kept") << " x " << "  x  " << false;
    QTest::newRow("Cyrillic") << QString::fromUtf8("Отмена") << QString::fromUtf8(" Отмена ") << true;
}

void TestEFields::buttonCaptionIsPadded()
{
    QFETCH(QString, text);
    QFETCH(QString, caption);
    QFETCH(bool, isDefault);
    EButton button(text, nullptr, isDefault);
    QCOMPARE(button.text(), caption);
    QCOMPARE(button.isDefault(), isDefault);
}

void TestEFields::iconButtonIsSquareAndStaysSo()
{
    QPixmap pixmap(48, 48);
    pixmap.fill(Qt::darkCyan);
    QWidget window;
    auto* button = new EIconButton(QIcon(pixmap));
    QVERIFY(button->text().isEmpty());
    QCOMPARE(button->minimumWidth(), button->sizeHint().height());
    button->setIconSize(QSize(48, 48)); // after construction: the width stays as fixed
    (new QHBoxLayout(&window))->addWidget(button);
    const int side = button->minimumWidth();
    QCOMPARE(button->maximumWidth(), side);
    window.resize(600, 80);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(button->width(), side);
}

CG_TEST_MAIN(TestEFields)
#include "tst_efields.moc"
