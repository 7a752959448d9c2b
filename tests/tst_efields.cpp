// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebutton.h"
#include "echeckbox.h"
#include "ecombobox.h"
#include "ecombopair.h"
#include "edatetimebox.h"
#include "edatetimepair.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "edirs.h"
#include "eiconbutton.h"
#include "espinbox.h"
#include "espinpair.h"
#include "etimebox.h"
#include "etimepair.h"

#include <QCalendarWidget>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QTableView>
#include <QWheelEvent>

#include <ctime>
#include <functional>
#include <limits>
#include <memory>

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

/// Hands a list of texts to a combo, ids counting from 100.
class TextEnumerator : public EEnumerator
{
public:
    explicit TextEnumerator(QStringList texts) : texts(std::move(texts)) {}
    const QPixmap* getIcon() override { return nullptr; }
    QString getText() override { return texts.at(pos); }
    void* getData() override { return nullptr; }
    int getId() override { return 100 + pos; }
    bool next() override { return ++pos < texts.size(); }
    QString getListText() override { return texts.join(QLatin1Char(',')); }

private:
    QStringList texts;
    int pos = -1;
};

/// A field of one kind in a shown top-level window, its receiver already connected.
struct Field
{
    std::unique_ptr<QWidget> window;
    QWidget* editor = nullptr;             ///< receives the user's keys and wheel
    std::function<void()> setFromCode;     ///< the widget's own setter, to a new value
    std::function<QVariant()> value;
};

Field makeField(const QString& kind, Counter& counter)
{
    Field f;
    f.window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(f.window.get());
    const char* any = SLOT(anyChange());
    const char* user = SLOT(userChange());
    bool connected = false;
    if (kind == QLatin1String("edit")) {
        auto* box = new EEditBox;
        box->setText(QStringLiteral("start"));
        connected = box->setSlotForChangeText(&counter, any) && box->setSlotForUserChangeText(&counter, user);
        f.editor = box;
        f.setFromCode = [box] { box->setText(QStringLiteral("from code")); };
        f.value = [box] { return QVariant(box->text()); };
    } else if (kind == QLatin1String("spin")) {
        auto* box = new ESpinBox(0, 100, 1);
        box->setValue(3);
        connected = box->setSlotForChangeValue(&counter, any) && box->setSlotForUserChangeValue(&counter, user);
        f.editor = box;
        f.setFromCode = [box] { box->setValue(5); };
        f.value = [box] { return QVariant(box->value()); };
    } else if (kind.startsWith(QLatin1String("datetime"))) {
        auto* box = new EDateTimeBox;
        box->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        box->setCalendarPopup(true);
        box->setDateTime(QDateTime(QDate(2024, 5, 10), QTime(12, 0)));
        connected = box->setSlotForChangeValue(&counter, any) && box->setSlotForUserChangeValue(&counter, user);
        f.editor = box;
        if (kind.endsWith(QLatin1String("seconds")))
            f.setFromCode = [box] { box->setDateTime(1000000000L); };
        else if (kind.endsWith(QLatin1String("now")))
            f.setFromCode = [box] { box->setCurrentDateTime(); };
        else
            f.setFromCode = [box] { box->setDateTime(QDateTime(QDate(2030, 1, 2), QTime(3, 4, 5))); };
        f.value = [box] { return QVariant(box->dateTime()); };
    } else if (kind.startsWith(QLatin1String("time"))) {
        auto* box = new ETimeBox;
        box->setDisplayFormat(QStringLiteral("HH:mm:ss"));
        box->setTime(QTime(10, 0));
        connected = box->setSlotForChangeValue(&counter, any) && box->setSlotForUserChangeValue(&counter, user);
        f.editor = box;
        if (kind.endsWith(QLatin1String("seconds")))
            f.setFromCode = [box] { box->setTime(3661); };
        else
            f.setFromCode = [box] { box->setTime(QTime(1, 2, 3)); };
        f.value = [box] { return QVariant(box->time()); };
    } else if (kind.startsWith(QLatin1String("combo"))) {
        auto* box = new EComboBox;
        TextEnumerator texts({QStringLiteral("TCP"), QStringLiteral("UDP"), QStringLiteral("ICMP")});
        box->addId(texts, false);
        box->setCurrentIndex(0);
        connected = box->setSlotForChangeSelection(&counter, any) && box->setSlotForUserChangeSelection(&counter, user);
        f.editor = box;
        if (kind.endsWith(QLatin1String("id")))
            f.setFromCode = [box] { box->setCurrentId(102); };
        else
            f.setFromCode = [box] { box->setCurrentIndex(1); };
        f.value = [box] { return QVariant(box->currentIndex()); };
    } else if (kind == QLatin1String("check")) {
        auto* box = new ECheckBox(QStringLiteral("Check"));
        connected = box->setSlotForToggle(&counter, any) && box->setSlotForUserToggle(&counter, user);
        f.editor = box;
        f.setFromCode = [box] { box->setChecked(true); };
        f.value = [box] { return QVariant(box->isChecked()); };
    }
    if (!f.editor || !connected)
        return Field();
    layout->addWidget(f.editor);
    f.window->show();
    f.window->activateWindow();
    f.editor->setFocus();
    return f;
}

void sendWheel(QWidget* w, int delta)
{
    const QPoint pos(w->width() / 2, w->height() / 2);
    QWheelEvent event(QPointF(pos), QPointF(w->mapToGlobal(pos)), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &event);
}

} // namespace

class TestEFields : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void ownSetterRaisesOnlyTheGeneralSignal_data();
    void ownSetterRaisesOnlyTheGeneralSignal();
    void userActionsRaiseBothSignals_data();
    void userActionsRaiseBothSignals();
    void buttonConnectorsReportClicks();

    void unixTimeShowsInLocalTime();
    void currentDateTimeIsWholeSecondsAndNotAUserChange();
    void secondsAfterMidnight_data();
    void secondsAfterMidnight();

    void pairsHoldTheirFieldBesideTheCaption_data();
    void pairsHoldTheirFieldBesideTheCaption();
    void spinPairPassesTheRange();
    void comboPairFixesTheComboAndItsList();
    void comboStatePairRemembersUnderItsForm();
    void dateTimePairProposesAMonthAhead();

    void buttonCaptionIsPadded_data();
    void buttonCaptionIsPadded();
    void buttonMnemonicStillWorks();
    void iconButtonIsSquareAndStaysSo_data();
    void iconButtonIsSquareAndStaysSo();
};

void TestEFields::initTestCase()
{
    // A fixed zone three hours east of UTC, so local time differs visibly from UTC.
    qputenv("TZ", "MSK-3");
    tzset();
}

void TestEFields::ownSetterRaisesOnlyTheGeneralSignal_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("repeatable");

    QTest::newRow("EEditBox::setText") << "edit" << true;
    QTest::newRow("ESpinBox::setValue") << "spin" << true;
    QTest::newRow("EDateTimeBox::setDateTime(QDateTime)") << "datetime" << true;
    QTest::newRow("EDateTimeBox::setDateTime(long)") << "datetime seconds" << true;
    // The clock may tick between two calls, so a repeat may change the value.
    QTest::newRow("EDateTimeBox::setCurrentDateTime") << "datetime now" << false;
    QTest::newRow("ETimeBox::setTime(QTime)") << "time" << true;
    QTest::newRow("ETimeBox::setTime(int)") << "time seconds" << true;
    QTest::newRow("ECheckBox::setChecked") << "check" << true;
    QTest::newRow("EComboBox::setCurrentIndex") << "combo" << true;
    QTest::newRow("EComboBox::setCurrentId") << "combo id" << true;
}

void TestEFields::ownSetterRaisesOnlyTheGeneralSignal()
{
    QFETCH(QString, kind);
    QFETCH(bool, repeatable);

    Counter counter;
    Field f = makeField(kind, counter);
    QVERIFY(f.editor);
    const QVariant before = f.value();

    f.setFromCode();
    QVERIFY(f.value() != before);
    QCOMPARE(counter.all, 1);
    QCOMPARE(counter.user, 0);

    if (repeatable) {
        f.setFromCode(); // the value already shown: neither signal
        QCOMPARE(counter.all, 1);
        QCOMPARE(counter.user, 0);
    }
}

void TestEFields::userActionsRaiseBothSignals_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QVariant>("expected");

    const QDateTime start(QDate(2024, 5, 10), QTime(12, 0));
    QTest::newRow("edit typing") << "edit" << "type" << QVariant(QStringLiteral("start42"));
    QTest::newRow("edit backspace") << "edit" << "backspace" << QVariant(QStringLiteral("star"));
    QTest::newRow("spin typing") << "spin" << "type" << QVariant(42);
    QTest::newRow("spin arrow up") << "spin" << "up" << QVariant(4);
    QTest::newRow("spin page down") << "spin" << "pagedown" << QVariant(0);
    QTest::newRow("spin wheel") << "spin" << "wheel" << QVariant(4);
    QTest::newRow("spin base setter") << "spin" << "base" << QVariant(77);
    QTest::newRow("datetime typing") << "datetime" << "type" << QVariant(start.addYears(2031 - 2024));
    QTest::newRow("datetime arrow up") << "datetime" << "up" << QVariant(start.addYears(1));
    QTest::newRow("datetime wheel") << "datetime" << "wheel" << QVariant(start.addYears(1));
    QTest::newRow("datetime calendar") << "datetime" << "calendar" << QVariant(start.addDays(1));
    QTest::newRow("datetime base setter") << "datetime" << "base" << QVariant(start.addDays(-1));
    QTest::newRow("time typing") << "time" << "type" << QVariant(QTime(7, 0));
    QTest::newRow("time arrow down") << "time" << "down" << QVariant(QTime(9, 0));
    QTest::newRow("time wheel") << "time" << "wheel" << QVariant(QTime(11, 0));
    QTest::newRow("time base setter") << "time" << "base" << QVariant(QTime(23, 30));
    QTest::newRow("check click") << "check" << "click" << QVariant(true);
    QTest::newRow("check space") << "check" << "space" << QVariant(true);
    QTest::newRow("combo arrow down") << "combo" << "down" << QVariant(1);
    QTest::newRow("combo wheel") << "combo" << "wheel" << QVariant(1);
}

void TestEFields::userActionsRaiseBothSignals()
{
    QFETCH(QString, kind);
    QFETCH(QString, action);
    QFETCH(QVariant, expected);

    Counter counter;
    Field f = makeField(kind, counter);
    QVERIFY(f.editor);
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));

    if (action == QLatin1String("type")) {
        if (auto* spin = qobject_cast<QSpinBox*>(f.editor)) {
            spin->selectAll();
            QTest::keyClicks(spin, QStringLiteral("42"));
        } else if (auto* dt = qobject_cast<QDateTimeEdit*>(f.editor)) {
            dt->setSelectedSection(qobject_cast<QTimeEdit*>(dt) ? QDateTimeEdit::HourSection
                                                                 : QDateTimeEdit::YearSection);
            QTest::keyClicks(dt, qobject_cast<QTimeEdit*>(dt) ? QStringLiteral("07")
                                                               : QStringLiteral("2031"));
        } else {
            QTest::keyClick(f.editor, Qt::Key_End);
            QTest::keyClicks(f.editor, QStringLiteral("42"));
        }
    } else if (action == QLatin1String("backspace")) {
        QTest::keyClick(f.editor, Qt::Key_End);
        QTest::keyClick(f.editor, Qt::Key_Backspace);
    } else if (action == QLatin1String("up")) {
        QTest::keyClick(f.editor, Qt::Key_Up);
    } else if (action == QLatin1String("down")) {
        QTest::keyClick(f.editor, Qt::Key_Down);
    } else if (action == QLatin1String("pagedown")) {
        QTest::keyClick(f.editor, Qt::Key_PageDown);
    } else if (action == QLatin1String("wheel")) {
        // Up a step in a spin box; a combo's next entry lies downwards.
        sendWheel(f.editor, qobject_cast<QComboBox*>(f.editor) ? -120 : 120);
    } else if (action == QLatin1String("calendar")) {
        auto* dt = qobject_cast<QDateTimeEdit*>(f.editor);
        QCalendarWidget* calendar = dt->calendarWidget();
        QVERIFY(calendar);
        auto* days = calendar->findChild<QTableView*>();
        QVERIFY(days);
        QTest::keyClick(days, Qt::Key_Right);
    } else if (action == QLatin1String("base")) {
        // The base class's setters bypass the flag: they count as the user's.
        if (auto* spin = qobject_cast<ESpinBox*>(f.editor))
            static_cast<QSpinBox*>(spin)->setValue(77);
        else if (auto* time = qobject_cast<ETimeBox*>(f.editor))
            static_cast<QTimeEdit*>(time)->setTime(QTime(23, 30));
        else if (auto* dt = qobject_cast<EDateTimeBox*>(f.editor))
            static_cast<QDateTimeEdit*>(dt)->setDateTime(dt->dateTime().addDays(-1));
    } else if (action == QLatin1String("click")) {
        QTest::mouseClick(f.editor, Qt::LeftButton);
    } else if (action == QLatin1String("space")) {
        QTest::keyClick(f.editor, Qt::Key_Space);
    } else {
        QFAIL("unknown action");
    }

    QCOMPARE(f.value(), expected);
    QVERIFY(counter.all > 0);
    QCOMPARE(counter.user, counter.all);
}

void TestEFields::buttonConnectorsReportClicks()
{
    Counter counter;
    EButton button(QStringLiteral("B"));
    EIconButton icon{QIcon()};
    QVERIFY(button.setSlotForClick(&counter, SLOT(anyChange())));
    QVERIFY(icon.setSlotForClick(&counter, SLOT(userChange())));
    button.click();
    icon.click();
    icon.click();
    QCOMPARE(counter.all, 1);
    QCOMPARE(counter.user, 2);
}

void TestEFields::unixTimeShowsInLocalTime()
{
    EDateTimeBox box;
    box.setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    box.setDateTime(0L);
    QCOMPARE(box.dateTime().toSecsSinceEpoch(), qint64(0));
    QCOMPARE(box.text(), QStringLiteral("1970-01-01 03:00:00"));
    box.setDateTime(1234567890L);
    QCOMPARE(box.text(), QStringLiteral("2009-02-14 02:31:30"));
}

void TestEFields::currentDateTimeIsWholeSecondsAndNotAUserChange()
{
    EDateTimeBox box;
    QSignalSpy user(&box, &EDateTimeBox::userChanged);
    QSignalSpy all(&box, &QDateTimeEdit::dateTimeChanged);
    const qint64 before = std::time(nullptr);
    box.setCurrentDateTime();
    const qint64 after = std::time(nullptr);
    const QDateTime shown = box.dateTime();
    QVERIFY(shown.toSecsSinceEpoch() >= before && shown.toSecsSinceEpoch() <= after);
    QCOMPARE(shown.time().msec(), 0);
    QCOMPARE(all.count(), 1);
    QCOMPARE(user.count(), 0);
}

void TestEFields::secondsAfterMidnight_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QTime>("shown");

    QTest::newRow("midnight") << 0 << QTime(0, 0, 0);
    QTest::newRow("an hour, a minute, a second") << 3661 << QTime(1, 1, 1);
    QTest::newRow("last second of the day") << 86399 << QTime(23, 59, 59);
    QTest::newRow("a day and a minute wraps") << 86460 << QTime(0, 1, 0);
    QTest::newRow("a minute before midnight") << -60 << QTime(23, 59, 0);
    // Far from the day, where seconds times a thousand no longer fit an int.
    QTest::newRow("largest int") << std::numeric_limits<int>::max() << QTime(3, 14, 7);
    QTest::newRow("smallest int") << std::numeric_limits<int>::min() << QTime(20, 45, 52);
}

void TestEFields::secondsAfterMidnight()
{
    QFETCH(int, seconds);
    QFETCH(QTime, shown);

    ETimeBox box;
    box.setDisplayFormat(QStringLiteral("HH:mm:ss"));
    box.setTime(QTime(12, 34, 56));
    QSignalSpy user(&box, &ETimeBox::userChanged);
    box.setTime(seconds);
    QCOMPARE(box.time(), shown);
    QCOMPARE(box.text(), shown.toString(QStringLiteral("HH:mm:ss")));
    QCOMPARE(user.count(), 0);
}

void TestEFields::pairsHoldTheirFieldBesideTheCaption_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("EEditPair") << "edit";
    QTest::newRow("ESpinPair") << "spin";
    QTest::newRow("ESpinPair range") << "spin range";
    QTest::newRow("EDateTimePair") << "datetime";
    QTest::newRow("ETimePair") << "time";
    QTest::newRow("EComboPair") << "combo";
    QTest::newRow("EComboPair given combo") << "combo given";
    QTest::newRow("EComboStatePair") << "combo state";
}

void TestEFields::pairsHoldTheirFieldBesideTheCaption()
{
    QFETCH(QString, kind);

    const QString caption = QStringLiteral("&Caption:");
    QWidget parent;
    EPair* pair = nullptr;
    QWidget* typed = nullptr;
    if (kind == QLatin1String("edit")) {
        auto* p = new EEditPair(caption, &parent);
        typed = p->getEditBox();
        pair = p;
    } else if (kind == QLatin1String("spin")) {
        auto* p = new ESpinPair(caption, &parent);
        typed = p->getSpinBox();
        pair = p;
    } else if (kind == QLatin1String("spin range")) {
        auto* p = new ESpinPair(caption, 1, 9, 2, &parent);
        typed = p->getSpinBox();
        pair = p;
    } else if (kind == QLatin1String("datetime")) {
        auto* p = new EDateTimePair(caption, &parent);
        typed = p->getDateTimeBox();
        pair = p;
    } else if (kind == QLatin1String("time")) {
        auto* p = new ETimePair(caption, &parent);
        typed = p->getTimeBox();
        pair = p;
    } else if (kind == QLatin1String("combo")) {
        auto* p = new EComboPair(caption, &parent);
        typed = p->getComboBox();
        pair = p;
    } else if (kind == QLatin1String("combo given")) {
        auto* combo = new EComboBox;
        auto* p = new EComboPair(combo, caption, &parent);
        QCOMPARE(p->getComboBox(), combo);
        typed = combo;
        pair = p;
    } else if (kind == QLatin1String("combo state")) {
        auto* p = new EComboStatePair(caption, QStringLiteral("Remembered"), &parent);
        typed = p->getComboState();
        QVERIFY(p->getComboState()->isEditable());
        pair = p;
    }
    QVERIFY(pair);
    QVERIFY(typed);
    QCOMPARE(typed, pair->widget);
    QCOMPARE(typed->parent(), pair);
    QCOMPARE(pair->parent(), &parent);
    QVERIFY(pair->isVertical());
    QCOMPARE(pair->getLabelText(), caption);
    QCOMPARE(pair->label->buddy(), typed);
    QCOMPARE(pair->label->maximumSize(), pair->label->sizeHint());
    QCOMPARE(pair->layout()->indexOf(typed), 1);

    // Replaced by another kind of widget, the typed accessor says so instead of lying.
    pair->setWidget(new QLabel, true);
    if (auto* p = dynamic_cast<EEditPair*>(pair))
        QVERIFY(!p->getEditBox());
    else if (auto* p = dynamic_cast<ESpinPair*>(pair))
        QVERIFY(!p->getSpinBox());
    else if (auto* p = dynamic_cast<EDateTimePair*>(pair))
        QVERIFY(!p->getDateTimeBox());
    else if (auto* p = dynamic_cast<ETimePair*>(pair))
        QVERIFY(!p->getTimeBox());
    else if (auto* p = dynamic_cast<EComboPair*>(pair))
        QVERIFY(!p->getComboBox());
}

void TestEFields::spinPairPassesTheRange()
{
    ESpinPair pair(QStringLiteral("Step"), -10, 90, 5);
    ESpinBox* box = pair.getSpinBox();
    QCOMPARE(box->minimum(), -10);
    QCOMPARE(box->maximum(), 90);
    QCOMPARE(box->singleStep(), 5);
    box->setValue(0);
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(box->value(), 5);
}

void TestEFields::comboPairFixesTheComboAndItsList()
{
    EComboPair pair(QStringLiteral("Protocol:"));
    EPair& base = pair;
    base.fixWidth(150); // through the base class: the override must still be the one called
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
    ini.beginGroup(QStringLiteral("EComboStatePair_QDialog"));
    const int size = ini.beginReadArray(QStringLiteral("What"));
    QStringList texts;
    for (int i = 0; i < size; ++i) {
        ini.setArrayIndex(i);
        texts << ini.value(QStringLiteral("Item")).toString();
    }
    QCOMPARE(texts, (QStringList{QStringLiteral("second"), QStringLiteral("first")}));

    QDialog again;
    EComboStatePair pair(QStringLiteral("Find what:"), QStringLiteral("What"), &again);
    QCOMPARE(pair.getComboState()->count(), 2);
    QCOMPARE(pair.getComboState()->itemText(0), QStringLiteral("second"));
}

void TestEFields::dateTimePairProposesAMonthAhead()
{
    const QDateTime before = QDateTime::currentDateTime();
    EDateTimePair pair(QStringLiteral("Valid until:"));
    const QDateTime after = QDateTime::currentDateTime();
    EDateTimeBox* box = pair.getDateTimeBox();
    QVERIFY(box->calendarPopup());
    const QDateTime proposed = box->dateTime();
    // The editor keeps whole seconds and more; compare at the seconds it can show.
    QVERIFY(proposed.toSecsSinceEpoch() >= before.addMonths(1).toSecsSinceEpoch());
    QVERIFY(proposed.toSecsSinceEpoch() <= after.addMonths(1).toSecsSinceEpoch());
    QVERIFY(box->calendarWidget());
    QCOMPARE(box->calendarWidget()->selectedDate(), proposed.date());

    // The proposed value is an ordinary starting point: the first arrow press is a user change.
    Counter counter;
    QVERIFY(box->setSlotForUserChangeValue(&counter, SLOT(userChange())));
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(counter.user, 1);
}

void TestEFields::buttonCaptionIsPadded_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("isDefault");

    QTest::newRow("OK") << "OK" << " OK " << true;
    QTest::newRow("mnemonic") << "&Cancel" << " &Cancel " << false;
    QTest::newRow("empty") << "" << "  " << false;
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

void TestEFields::buttonMnemonicStillWorks()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* edit = new QLineEdit;
    auto* button = new EButton(QStringLiteral("&Apply"));
    layout->addWidget(edit);
    layout->addWidget(button);
    Counter counter;
    QVERIFY(button->setSlotForClick(&counter, SLOT(anyChange())));
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    edit->setFocus();

    QTest::keyClick(&window, Qt::Key_A, Qt::AltModifier);
    QTRY_COMPARE(counter.all, 1);
}

void TestEFields::iconButtonIsSquareAndStaysSo_data()
{
    QTest::addColumn<int>("iconSide");
    QTest::newRow("no icon") << 0;
    QTest::newRow("16 px") << 16;
    QTest::newRow("48 px") << 48;
}

void TestEFields::iconButtonIsSquareAndStaysSo()
{
    QFETCH(int, iconSide);

    QIcon icon;
    if (iconSide > 0) {
        QPixmap pixmap(iconSide, iconSide);
        pixmap.fill(Qt::darkCyan);
        icon = QIcon(pixmap);
    }
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    auto* button = new EIconButton(icon);
    if (iconSide > 0)
        button->setIconSize(QSize(iconSide, iconSide)); // after construction: width stays as fixed
    layout->addWidget(button);
    QVERIFY(button->text().isEmpty());
    const int side = button->minimumWidth();
    QCOMPARE(button->maximumWidth(), side);

    EIconButton fresh(icon);
    QCOMPARE(fresh.width(), fresh.sizeHint().height());
    QCOMPARE(fresh.minimumWidth(), fresh.sizeHint().height());

    window.resize(600, 80);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(button->width(), side);
}

CG_TEST_MAIN(TestEFields)
#include "tst_efields.moc"
