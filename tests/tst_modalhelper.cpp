// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

// The other modal tests exercise the helper's answers; this one checks that a missing box makes a
// test fail instead of hang.
class TestModalHelper : public QObject
{
    Q_OBJECT
private slots:
    void reportsWhenNoBoxAppearsAndClosesALateOne();
};

void TestModalHelper::reportsWhenNoBoxAppearsAndClosesALateOne()
{
    ModalAnswerer answerer(QMessageBox::Ok, 100);
    QVERIFY(!answerer.wait(2000));
    QVERIFY2(answerer.error().contains(QLatin1String("no modal box")), qPrintable(answerer.error()));

    // A box that comes too late is closed rather than left to hang the test.
    QMessageBox late(QMessageBox::Information, QStringLiteral("Late"), QStringLiteral("x"), QMessageBox::Ok);
    QCOMPARE(late.exec(), -1);
    QCOMPARE(answerer.count(), 0);
}

CG_TEST_MAIN(TestModalHelper)
#include "tst_modalhelper.moc"
