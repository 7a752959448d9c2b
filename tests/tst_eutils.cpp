// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_loc.h"
#include "ehexconverter.h"
#include "etag.h"
#include "etimer.h"
#include "eutils.h"

#include <QScreen>
#include <QSignalSpy>
#include <QWidget>

namespace {

// A top-level widget whose size hint the test chooses.
class Sized : public QWidget
{
public:
    explicit Sized(QSize hint) : m_hint(hint) {}
    QSize sizeHint() const override { return m_hint; }

private:
    QSize m_hint;
};

QPoint centredPosition(QSize size)
{
    const QRect r = QGuiApplication::primaryScreen()->geometry();
    return {(r.left() + r.right()) / 2 - (size.width() - 1) / 2, (r.top() + r.bottom()) / 2 - (size.height() - 1) / 2};
}

} // namespace

class Receiver : public QObject
{
    Q_OBJECT
public:
    int ticks = 0;
public slots:
    void tick() { ++ticks; }
};

class TestEUtils : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();

    void waitCursorNestsAndSuspends_data();
    void waitCursorNestsAndSuspends();
    void centerUsesTheSizeHintAndThePrimaryScreen_data();
    void centerUsesTheSizeHintAndThePrimaryScreen();
    void showCentresOnlyAWindowOffAllScreens_data();
    void showCentresOnlyAWindowOffAllScreens();
    void showRestoresAMinimizedWindow();

    void timerConnectsToItsParentsSlot_data();
    void timerConnectsToItsParentsSlot();

    void hex2arrayDecodes_data();
    void hex2arrayDecodes();
    void array2hexWritesUpperCasePairs_data();
    void array2hexWritesUpperCasePairs();
    void hexRoundTripKeepsOnlyLetterFreeBytes();
    void array2stringReplacesUnprintableBytes_data();
    void array2stringReplacesUnprintableBytes();
    void string2arrayEncodesUtf8();

    void tagLooksUpValuesAndTexts();
};

void TestEUtils::cleanup()
{
    // A failed step must not leave the process-wide counters off balance for the next row.
    while (EUtils::getWaitCursorSuspendCounter() != 0)
        EUtils::suspendWaitCursor(EUtils::getWaitCursorSuspendCounter() < 0);
    while (EUtils::getWaitCursorCounter() != 0)
        EUtils::waitCursor(EUtils::getWaitCursorCounter() < 0);
}

void TestEUtils::waitCursorNestsAndSuspends_data()
{
    // Operations: W/w = waitCursor(true/false), S/s = suspendWaitCursor(true/false).
    // Expected after each: '*' wait cursor installed, '-' no override cursor.
    QTest::addColumn<QString>("ops");
    QTest::addColumn<QString>("cursor");

    QTest::newRow("nested waits install once") << "WWww" << "***-";
    QTest::newRow("suspend in between") << "WWSsww" << "**-**-";
    QTest::newRow("suspended before the wait") << "SWsw" << "--*-";
    QTest::newRow("nested suspensions") << "WSSssw" << "*---*-";
    QTest::newRow("counters are not clamped") << "wWWw" << "--*-";
    QTest::newRow("suspension alone") << "Ss" << "--";
}

void TestEUtils::waitCursorNestsAndSuspends()
{
    QFETCH(QString, ops);
    QFETCH(QString, cursor);
    QVERIFY(!QApplication::overrideCursor());

    for (int i = 0; i < ops.size(); ++i) {
        const QChar op = ops.at(i);
        if (op.toLower() == QLatin1Char('w'))
            EUtils::waitCursor(op.isUpper());
        else
            EUtils::suspendWaitCursor(op.isUpper());
        const QCursor* c = QApplication::overrideCursor();
        const QString step = QStringLiteral("after step %1 (%2)").arg(i + 1).arg(op);
        if (cursor.at(i) == QLatin1Char('*')) {
            QVERIFY2(c, qPrintable(step));
            QVERIFY2(c->shape() == Qt::WaitCursor, qPrintable(step));
        } else {
            QVERIFY2(!c, qPrintable(step));
        }
    }
    QCOMPARE(EUtils::getWaitCursorCounter(), 0);
    QCOMPARE(EUtils::getWaitCursorSuspendCounter(), 0);
}

void TestEUtils::centerUsesTheSizeHintAndThePrimaryScreen_data()
{
    QTest::addColumn<QSize>("hint");
    QTest::newRow("even") << QSize(300, 200);
    QTest::newRow("odd") << QSize(301, 201);
    QTest::newRow("small") << QSize(1, 1);
}

void TestEUtils::centerUsesTheSizeHintAndThePrimaryScreen()
{
    QFETCH(QSize, hint);
    Sized w(hint);
    w.resize(50, 50);
    w.move(3, 4);
    EUtils::center(&w);
    QCOMPARE(w.size(), hint);
    QCOMPARE(w.pos(), centredPosition(hint));
    // The centres agree to within the half pixel that integer division drops.
    const QPoint delta = w.geometry().center() - QGuiApplication::primaryScreen()->geometry().center();
    QVERIFY2(qAbs(delta.x()) <= 1 && qAbs(delta.y()) <= 1, qPrintable(QStringLiteral("%1,%2").arg(delta.x()).arg(delta.y())));
}

void TestEUtils::showCentresOnlyAWindowOffAllScreens_data()
{
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<bool>("centred");

    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QTest::newRow("far to the left") << QPoint(-5000, 10) << true;
    QTest::newRow("below the screen") << QPoint(10, screen.bottom() + 100) << true;
    QTest::newRow("on the screen") << QPoint(10, 20) << false;
    QTest::newRow("partly on the screen") << QPoint(-100, -50) << false;
}

void TestEUtils::showCentresOnlyAWindowOffAllScreens()
{
    QFETCH(QPoint, start);
    QFETCH(bool, centred);

    const QSize hint(200, 120);
    Sized w(hint);
    w.resize(hint);
    w.move(start);
    EUtils::show(&w);
    QVERIFY(w.isVisible());
    QCOMPARE(w.pos(), centred ? centredPosition(hint) : start);
}

void TestEUtils::showRestoresAMinimizedWindow()
{
    Sized w(QSize(100, 100));
    w.showMinimized();
    QVERIFY(w.isMinimized());
    EUtils::show(&w);
    QVERIFY(!w.isMinimized());
    QVERIFY(w.isVisible());
}

void TestEUtils::timerConnectsToItsParentsSlot_data()
{
    QTest::addColumn<bool>("withSlot");
    QTest::addColumn<bool>("start");

    QTest::newRow("slot, started") << true << true;
    QTest::newRow("slot, interval only") << true << false;
    QTest::newRow("no slot, started") << false << true;
}

void TestEUtils::timerConnectsToItsParentsSlot()
{
    QFETCH(bool, withSlot);
    QFETCH(bool, start);

    Receiver receiver;
    auto* timer = new ETimer(&receiver, 15, withSlot ? SLOT(tick()) : nullptr, start);
    QCOMPARE(timer->parent(), &receiver);
    QCOMPARE(timer->interval(), 15);
    QCOMPARE(timer->isActive(), start);

    QSignalSpy fired(timer, &QTimer::timeout);
    if (!start) {
        QTest::qWait(60);
        QCOMPARE(fired.count(), 0);
        timer->start();
    }
    QTRY_VERIFY(fired.count() >= 2);
    QCOMPARE(receiver.ticks > 0, withSlot);

    // The plain constructor leaves the timer unconnected and stopped.
    ETimer plain(&receiver);
    QCOMPARE(plain.parent(), &receiver);
    QVERIFY(!plain.isActive());
}

void TestEUtils::hex2arrayDecodes_data()
{
    QTest::addColumn<QString>("hex");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray untouched("prev");
    QTest::newRow("empty") << QString() << true << QByteArray();
    QTest::newRow("10") << QStringLiteral("10") << true << QByteArray("\x10");
    QTest::newRow("digits") << QStringLiteral("0123456789") << true << QByteArray("\x01\x23\x45\x67\x89");
    QTest::newRow("0A: letters count from zero") << QStringLiteral("0A") << true << QByteArray(1, '\0');
    QTest::newRow("1F") << QStringLiteral("1F") << true << QByteArray("\x15");
    QTest::newRow("1f lower case") << QStringLiteral("1f") << true << QByteArray("\x15");
    QTest::newRow("FF") << QStringLiteral("FF") << true << QByteArray("\x55");
    QTest::newRow("odd length keeps the target") << QStringLiteral("ABC") << false << untouched;
    QTest::newRow("0G") << QStringLiteral("0G") << false << QByteArray();
    QTest::newRow("invalid after a good pair") << QStringLiteral("100G") << false << QByteArray("\x10");
    QTest::newRow("space") << QStringLiteral(" 1") << false << QByteArray();
    QTest::newRow("outside Latin-1") << QString::fromUtf8("1Ж") << false << QByteArray();
    QTest::newRow("NUL character") << QString(QStringLiteral("1") + QChar(0)) << false << QByteArray();
    QTest::newRow("Latin-1 letter") << QString::fromUtf8("1é") << false << QByteArray();
}

void TestEUtils::hex2arrayDecodes()
{
    QFETCH(QString, hex);
    QFETCH(bool, ok);
    QFETCH(QByteArray, bytes);

    QByteArray target("prev");
    QCOMPARE(EHexConverter::hex2array(hex, target), ok);
    QCOMPARE(target, bytes);
}

void TestEUtils::array2hexWritesUpperCasePairs_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("hex");

    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("mixed") << QByteArray("\x00\x41\xff\x10\xab", 5) << QStringLiteral("0041FF10AB");
}

void TestEUtils::array2hexWritesUpperCasePairs()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, hex);

    QString s = QStringLiteral("old");
    EHexConverter::array2hex(bytes, s);
    QCOMPARE(s, hex);
}

void TestEUtils::hexRoundTripKeepsOnlyLetterFreeBytes()
{
    const QByteArray digitsOnly("\x00\x10\x99\x42", 4);
    QString hex;
    QByteArray back;
    EHexConverter::array2hex(digitsOnly, hex);
    QVERIFY(EHexConverter::hex2array(hex, back));
    QCOMPARE(back, digitsOnly);

    EHexConverter::array2hex(QByteArray("\xab"), hex);
    QVERIFY(EHexConverter::hex2array(hex, back));
    QCOMPARE(back, QByteArray("\x01"));
}

void TestEUtils::array2stringReplacesUnprintableBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("replaced");

    QTest::newRow("A NUL B") << QByteArray("A\0B", 3) << QStringLiteral("A.B") << 1;
    QTest::newRow("empty") << QByteArray() << QString() << 0;
    QTest::newRow("Latin-1 letter is printable") << QByteArray("\xe9") << QString::fromUtf8("é") << 0;
    QTest::newRow("control bytes") << QByteArray("\x7f\x85\n\t") << QStringLiteral("....") << 4;
    QTest::newRow("space is printable") << QByteArray("a b") << QStringLiteral("a b") << 0;
}

void TestEUtils::array2stringReplacesUnprintableBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QFETCH(int, replaced);

    QString s = QStringLiteral("old");
    QCOMPARE(EHexConverter::array2string(bytes, s, QLatin1Char('.')), replaced);
    QCOMPARE(s, text);
}

void TestEUtils::string2arrayEncodesUtf8()
{
    QByteArray a("old");
    EHexConverter::string2array(QString::fromUtf8("aЖ"), a);
    QCOMPARE(a, QByteArray("a\xd0\x96"));
}

void TestEUtils::tagLooksUpValuesAndTexts()
{
    const QString first = QStringLiteral("first");
    const QString again = QStringLiteral("first");
    const ETag table[] = {{10, &LCQT__Up}, {20, &LCQT__Down}, {20, &first}, {30, &again}, {0, nullptr}};
    const QString fallback = QStringLiteral("fallback");

    QCOMPARE(table->find(LCQT__Down), &table[1]);
    QCOMPARE(table->find(QStringLiteral("first")), &table[2]);   // the first of two equal texts
    QCOMPARE(table->find(LCQT__Up.toUpper()), nullptr);          // case-sensitive
    QCOMPARE(table->find(20), &table[1]);
    QCOMPARE(table->find(0), nullptr);                           // the terminator is not an entry

    QCOMPARE(table->getValue(LCQT__Up, -1), 10);
    QCOMPARE(table->getValue(QStringLiteral("none"), -1), -1);
    QCOMPARE(&table->getText(20, fallback), &LCQT__Down);
    QCOMPARE(&table->getText(99, fallback), &fallback);
    QCOMPARE(&table->getText(99), &ETag::empty);

    const ETag none[] = {{0, nullptr}};
    QCOMPARE(none->find(0), nullptr);
    QCOMPARE(none->getValue(QString(), 7), 7);
}

CG_TEST_MAIN(TestEUtils)
#include "tst_eutils.moc"
