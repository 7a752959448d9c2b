// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QVBoxLayout>

Q_DECLARE_METATYPE(ModalAnswer)

class TestModalHelper : public QObject
{
    Q_OBJECT
private slots:
    void answersAndRecordsAMessageBox_data();
    void answersAndRecordsAMessageBox();
    void answersAChainInOrder();
    void reportsWhenNoBoxAppears();
    void closesABoxThatLacksTheWantedButton();
    void answersAPlainDialogWithAButtonBox();
    void callAnswerSeesTheBox();
};

void TestModalHelper::answersAndRecordsAMessageBox_data()
{
    QTest::addColumn<ModalAnswer>("answer");
    QTest::addColumn<int>("result");

    QTest::newRow("standard Yes") << ModalAnswer::button(QMessageBox::Yes) << int(QMessageBox::Yes);
    QTest::newRow("standard Cancel") << ModalAnswer::button(QMessageBox::Cancel) << int(QMessageBox::Cancel);
    QTest::newRow("text with accelerator") << ModalAnswer::text("&No") << int(QMessageBox::No);
    QTest::newRow("text without accelerator") << ModalAnswer::text("No") << int(QMessageBox::No);
    QTest::newRow("Enter takes the default") << ModalAnswer::key(Qt::Key_Return) << int(QMessageBox::No);
    QTest::newRow("Escape takes Cancel") << ModalAnswer::key(Qt::Key_Escape) << int(QMessageBox::Cancel);
}

void TestModalHelper::answersAndRecordsAMessageBox()
{
    QFETCH(ModalAnswer, answer);
    QFETCH(int, result);

    QMessageBox box(QMessageBox::Warning, QStringLiteral("Title"), QStringLiteral("Body"),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    box.setInformativeText(QStringLiteral("More"));
    box.setDefaultButton(QMessageBox::No);

    ModalAnswerer answerer(answer);
    QCOMPARE(box.exec(), result);
    QVERIFY2(answerer.done(), qPrintable(answerer.error()));
    QCOMPARE(answerer.count(), 1);

    const ModalSeen& seen = answerer.seen();
    QVERIFY(seen.found);
    QCOMPARE(seen.className, QStringLiteral("QMessageBox"));
    QCOMPARE(seen.title, QStringLiteral("Title"));
    QCOMPARE(seen.text, QStringLiteral("Body"));
    QCOMPARE(seen.informativeText, QStringLiteral("More"));
    QCOMPARE(seen.icon, QMessageBox::Warning);
    QCOMPARE(seen.buttons.size(), 3);
    QVERIFY(seen.plainButtons().contains(QStringLiteral("Yes")));
    QVERIFY(seen.standardButtons.contains(QMessageBox::Cancel));
    QCOMPARE(seen.defaultStandardButton, QMessageBox::No);
    QCOMPARE(seen.defaultButton, box.button(QMessageBox::No)->text());
}

void TestModalHelper::answersAChainInOrder()
{
    ModalAnswerer answerer({ModalAnswer::button(QMessageBox::Ok), ModalAnswer::key(Qt::Key_Escape)});
    QMessageBox first(QMessageBox::Information, QStringLiteral("First"), QStringLiteral("1"), QMessageBox::Ok);
    QCOMPARE(first.exec(), int(QMessageBox::Ok));
    QVERIFY(!answerer.done());
    QMessageBox second(QMessageBox::Question, QStringLiteral("Second"), QStringLiteral("2"),
                       QMessageBox::Ok | QMessageBox::Cancel);
    QCOMPARE(second.exec(), int(QMessageBox::Cancel));
    QVERIFY2(answerer.done(), qPrintable(answerer.error()));
    QCOMPARE(answerer.count(), 2);
    QCOMPARE(answerer.seen(0).title, QStringLiteral("First"));
    QCOMPARE(answerer.seen(1).title, QStringLiteral("Second"));
    QVERIFY(!answerer.seen(2).found);
}

void TestModalHelper::reportsWhenNoBoxAppears()
{
    ModalAnswerer answerer(QMessageBox::Ok, 100);
    QVERIFY(!answerer.wait(2000));
    QVERIFY(!answerer.done());
    QVERIFY2(answerer.error().contains(QLatin1String("no modal box")), qPrintable(answerer.error()));
    QCOMPARE(answerer.count(), 0);

    // A box that comes too late is closed rather than left to hang the test.
    QMessageBox late(QMessageBox::Information, QStringLiteral("Late"), QStringLiteral("x"), QMessageBox::Ok);
    QCOMPARE(late.exec(), -1);
    QCOMPARE(answerer.count(), 0);
}

void TestModalHelper::closesABoxThatLacksTheWantedButton()
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("Only OK"), QStringLiteral("x"), QMessageBox::Ok);
    ModalAnswerer answerer(QMessageBox::Yes);
    QCOMPARE(box.exec(), -1);
    QVERIFY(!answerer.done());
    QVERIFY2(answerer.error().contains(QLatin1String("Only OK")), qPrintable(answerer.error()));
}

void TestModalHelper::answersAPlainDialogWithAButtonBox()
{
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("Plain"));
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(QStringLiteral("Label text"), &dialog));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    {
        ModalAnswerer answerer(QMessageBox::Ok);
        QCOMPARE(dialog.exec(), int(QDialog::Accepted));
        QVERIFY2(answerer.done(), qPrintable(answerer.error()));
        QCOMPARE(answerer.seen().title, QStringLiteral("Plain"));
        QCOMPARE(answerer.seen().text, QStringLiteral("Label text"));
        QCOMPARE(answerer.seen().buttons.size(), 2);
    }
    {
        ModalAnswerer answerer(Qt::Key_Escape);
        QCOMPARE(dialog.exec(), int(QDialog::Rejected));
        QVERIFY2(answerer.done(), qPrintable(answerer.error()));
    }
}

void TestModalHelper::callAnswerSeesTheBox()
{
    // Yes, No and No to All: Qt finds no escape button, so Escape must leave the box open.
    QMessageBox box(QMessageBox::Question, QStringLiteral("Q"), QStringLiteral("?"),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::NoToAll);
    bool stayedOpen = false;
    ModalAnswerer answerer(ModalAnswer::call([&stayedOpen](QWidget* w) {
        QTest::keyClick(w, Qt::Key_Escape);
        stayedOpen = w->isVisible();
        qobject_cast<QMessageBox*>(w)->button(QMessageBox::NoToAll)->click();
    }));
    QCOMPARE(box.exec(), int(QMessageBox::NoToAll));
    QVERIFY2(answerer.done(), qPrintable(answerer.error()));
    QVERIFY(stayedOpen);
}

CG_TEST_MAIN(TestModalHelper)
#include "tst_modalhelper.moc"
