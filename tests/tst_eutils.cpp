// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_loc.h"
#include "ehexconverter.h"
#include "etag.h"
#include "etimer.h"
#include "eutils.h"

#include <QPointer>
#include <QScreen>
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

class TestEUtils : public QObject
{
    Q_OBJECT
private slots:
    void waitCursorNestsAndSuspends_data();
    void waitCursorNestsAndSuspends();
    void centerAndShowUseTheSizeHintAndThePrimaryScreen_data();
    void centerAndShowUseTheSizeHintAndThePrimaryScreen();
    void timerConnectsToItsParentsSlot();
    void hex2arrayDecodes_data();
    void hex2arrayDecodes();
    void array2hexWritesUpperCasePairs();
    void array2stringReplacesUnprintableBytes();
    void tagLooksUpValuesAndTexts();
};

void TestEUtils::waitCursorNestsAndSuspends_data()
{
    // Operations: W/w = waitCursor(true/false), S/s = suspendWaitCursor(true/false).
    // Expected after each: '*' wait cursor installed, '-' no override cursor.
    QTest::addColumn<QString>("ops");
    QTest::addColumn<QString>("cursor");
    QTest::newRow("nested waits install once") << "WWww" << "***-";
    QTest::newRow("suspend in between") << "WWSsww" << "**-**-";
    QTest::newRow("suspended before the wait") << "SWsw" << "--*-";
    QTest::newRow("counters are not clamped") << "wWWw" << "--*-";
}

void TestEUtils::waitCursorNestsAndSuspends()
{
    QFETCH(QString, ops);
    QFETCH(QString, cursor);
    for (int i = 0; i < ops.size(); ++i) {
        const QChar op = ops.at(i);
        if (op.toLower() == QLatin1Char('w'))
            EUtils::waitCursor(op.isUpper());
        else
            EUtils::suspendWaitCursor(op.isUpper());
        const QCursor* c = QApplication::overrideCursor();
        QCOMPARE(c && c->shape() == Qt::WaitCursor ? '*' : c ? '?' : '-', cursor.at(i).toLatin1());
    }
}

void TestEUtils::centerAndShowUseTheSizeHintAndThePrimaryScreen_data()
{
    QTest::addColumn<bool>("show"); // EUtils::show, else EUtils::center
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<bool>("centred");
    QTest::newRow("center, even") << false << QSize(300, 200) << QPoint(3, 4) << true;
    QTest::newRow("center, odd") << false << QSize(301, 201) << QPoint(3, 4) << true;
    QTest::newRow("show, off all screens") << true << QSize(200, 120) << QPoint(-5000, 10) << true;
    QTest::newRow("show, partly on the screen") << true << QSize(200, 120) << QPoint(-100, -50) << false;
}

void TestEUtils::centerAndShowUseTheSizeHintAndThePrimaryScreen()
{
    QFETCH(bool, show);
    QFETCH(QSize, hint);
    QFETCH(QPoint, start);
    QFETCH(bool, centred);
    Sized w(hint);
    w.resize(show ? hint : QSize(50, 50));
    w.move(start);
    if (show) {
        w.showMinimized();
        EUtils::show(&w);
        QVERIFY(w.isVisible() && !w.isMinimized());
    } else {
        EUtils::center(&w);
    }
    QCOMPARE(w.size(), hint);
    QCOMPARE(w.pos(), centred ? centredPosition(hint) : start);
}

void TestEUtils::timerConnectsToItsParentsSlot()
{
    auto* receiver = new QObject;
    QPointer<QObject> alive(receiver);
    auto* timer = new ETimer(receiver, 15, SLOT(deleteLater()), false);
    QCOMPARE(timer->interval(), 15);
    QVERIFY(!timer->isActive());
    timer->start();
    QTRY_VERIFY(alive.isNull()); // the timer's tick reached the parent's slot
}

void TestEUtils::hex2arrayDecodes_data()
{
    QTest::addColumn<QString>("hex");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QString() << true << QByteArray();
    QTest::newRow("digits") << QStringLiteral("0123456789") << true << QByteArray("\x01\x23\x45\x67\x89");
    QTest::newRow("0A: letters count from zero") << QStringLiteral("0A") << true << QByteArray(1, '\0');
    QTest::newRow("1f lower case") << QStringLiteral("1f") << true << QByteArray("\x15");
    QTest::newRow("odd length keeps the target") << QStringLiteral("ABC") << false << QByteArray("prev");
    QTest::newRow("invalid after a good pair") << QStringLiteral("100G") << false << QByteArray("\x10");
    QTest::newRow("outside Latin-1") << QString::fromUtf8("1Ж") << false << QByteArray();
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

void TestEUtils::array2hexWritesUpperCasePairs()
{
    QString hex = QStringLiteral("old");
    EHexConverter::array2hex(QByteArray("\x00\x41\xff\x10\xab", 5), hex);
    QCOMPARE(hex, QStringLiteral("0041FF10AB"));
}

void TestEUtils::array2stringReplacesUnprintableBytes()
{
    // Latin-1 letters and spaces are printable; NUL, DEL, C1 and C0 controls are not.
    QString s = QStringLiteral("old");
    QCOMPARE(EHexConverter::array2string(QByteArray("A\0 \xe9\x7f\x85\n\t", 8), s, QLatin1Char('.')), 5);
    QCOMPARE(s, QString::fromUtf8("A. é...."));

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

    QCOMPARE(table->find(QStringLiteral("first")), &table[2]); // the first of two equal texts
    QCOMPARE(table->find(LCQT__Up.toUpper()), nullptr);        // case-sensitive
    QCOMPARE(table->find(20), &table[1]);
    QCOMPARE(table->find(0), nullptr);                         // the terminator is not an entry
    QCOMPARE(table->getValue(LCQT__Up, -1), 10);
    QCOMPARE(table->getValue(QStringLiteral("none"), -1), -1);
    QCOMPARE(&table->getText(20, fallback), &LCQT__Down);
    QCOMPARE(&table->getText(99, fallback), &fallback);
    QCOMPARE(&table->getText(99), &ETag::empty);
}

CG_TEST_MAIN(TestEUtils)
#include "tst_eutils.moc"
