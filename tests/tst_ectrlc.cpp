// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include <QProcess>

#include <csignal>
#include <sys/types.h>

class TestECtrlC : public QObject
{
    Q_OBJECT
private slots:
    void signalEndsTheEventLoopNormally_data();
    void signalEndsTheEventLoopNormally();
    void signalWithoutApplicationIsIgnored();
};

void TestECtrlC::signalEndsTheEventLoopNormally_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("signal");

    QTest::newRow("SIGINT, installed after the application") << QStringLiteral("after") << int(SIGINT);
    QTest::newRow("SIGTERM, installed after the application") << QStringLiteral("after") << int(SIGTERM);
    QTest::newRow("SIGINT, installed before the application") << QStringLiteral("before") << int(SIGINT);
    QTest::newRow("SIGTERM, installed before the application") << QStringLiteral("before") << int(SIGTERM);
    // A later ECtrlC takes the signals back from whoever replaced its handler.
    QTest::newRow("SIGINT, installed again after a reset") << QStringLiteral("again") << int(SIGINT);
    QTest::newRow("SIGTERM, installed again after a reset") << QStringLiteral("again") << int(SIGTERM);
}

void TestECtrlC::signalEndsTheEventLoopNormally()
{
    QFETCH(QString, mode);
    QFETCH(int, signal);

    QProcess child;
    child.start(QStringLiteral(ECTRLC_CHILD), {mode});
    QVERIFY2(child.waitForStarted(), qPrintable(child.errorString()));
    QByteArray out;
    QTRY_VERIFY_WITH_TIMEOUT((out += child.readAllStandardOutput()).contains("ready\n"), 10000);

    QCOMPARE(::kill(pid_t(child.processId()), signal), 0);
    QVERIFY(child.waitForFinished(10000));
    out += child.readAllStandardOutput();
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    QVERIFY2(out.endsWith("after exec\n"), out.constData());
}

void TestECtrlC::signalWithoutApplicationIsIgnored()
{
    QProcess child;
    child.start(QStringLiteral(ECTRLC_CHILD), {QStringLiteral("noapp")});
    QVERIFY(child.waitForFinished(10000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    QCOMPARE(child.readAllStandardOutput(), QByteArray("survived\n"));
}

CG_TEST_MAIN(TestECtrlC)
#include "tst_ectrlc.moc"
