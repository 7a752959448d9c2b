// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "cg_loc_modules.h"
#include "common_core.h"
#include "common_gui_loc.h"
#include "emessage.h"

#include <QAbstractButton>
#include <QDialog>

#include <new>
#include <string>

namespace {

enum class Box { Info, Erro, Warn, Ask, Ync, AskNoAll, AskYesAll, AskAll };
constexpr int noResult = -100;

// Runs one box and turns its result into an int: bool as 0/1, none as noResult.
int run(Box box, const QString& text)
{
    switch (box) {
    case Box::Info: EMessage::info(nullptr, text); return noResult;
    case Box::Erro: EMessage::erro(nullptr, text); return noResult;
    case Box::Warn: return EMessage::warn(nullptr, text) ? 1 : 0;
    case Box::Ask: return EMessage::ask(nullptr, text) ? 1 : 0;
    case Box::Ync: return EMessage::ync(nullptr, text);
    case Box::AskNoAll: return EMessage::asknoall(nullptr, text);
    case Box::AskYesAll: return EMessage::askyesall(nullptr, text);
    case Box::AskAll: return EMessage::askall(nullptr, text);
    }
    return noResult;
}

} // namespace

Q_DECLARE_METATYPE(Box)

class TestEMessage : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { EMessage::getCumulativeError(); } // a failed test must not leave the mode on
    void boxesShowTheirIconTitleButtonsAndEscapeResult_data();
    void boxesShowTheirIconTitleButtonsAndEscapeResult();
    void cumulativeModeCollectsEveryErroOverloadAndShowsOtherBoxes();
    void boxParentIsTheActiveModalWidgetElseTheActiveWindow();
    // Last: it leaves Qt's Russian translator installed.
    void russianTitlesAndButtonsAfterLoadingTheLanguage();
};

void TestEMessage::boxesShowTheirIconTitleButtonsAndEscapeResult_data()
{
    QTest::addColumn<Box>("box");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("defaultButton");
    QTest::addColumn<int>("escaped"); // the result of Escape; Yes when Escape is ignored

    using M = QMessageBox;
    const QString q = QStringLiteral("Question");
    QTest::newRow("info") << Box::Info << int(M::Information) << "Information" << int(M::Ok) << int(M::Ok) << noResult;
    QTest::newRow("erro") << Box::Erro << int(M::Critical) << "Error" << int(M::Ok) << int(M::Ok) << noResult;
    QTest::newRow("warn") << Box::Warn << int(M::Warning) << "Warning" << int(M::Ok | M::Cancel) << int(M::Cancel)
                          << 0;
    QTest::newRow("ask") << Box::Ask << int(M::Question) << q << int(M::Yes | M::No) << int(M::Yes) << 0;
    QTest::newRow("ync") << Box::Ync << int(M::Question) << q << int(M::Yes | M::No | M::Cancel) << int(M::Yes)
                         << int(M::Cancel);
    QTest::newRow("asknoall") << Box::AskNoAll << int(M::Question) << q << int(M::Yes | M::No | M::NoToAll)
                              << int(M::Yes) << int(M::Yes);
    QTest::newRow("askyesall") << Box::AskYesAll << int(M::Question) << q << int(M::Yes | M::YesToAll | M::No)
                               << int(M::Yes) << int(M::No);
    QTest::newRow("askall") << Box::AskAll << int(M::Question) << q
                            << int(M::Yes | M::YesToAll | M::No | M::NoToAll) << int(M::Yes) << int(M::Yes);
}

void TestEMessage::boxesShowTheirIconTitleButtonsAndEscapeResult()
{
    QFETCH(Box, box);
    QFETCH(int, icon);
    QFETCH(QString, title);
    QFETCH(int, buttons);
    QFETCH(int, defaultButton);
    QFETCH(int, escaped);

    // No and No to All both decline, so Escape cannot pick one: those boxes stay open and take Yes.
    ModalAnswerer answer(ModalAnswer::call([](QWidget* w) {
        QTest::keyClick(w, Qt::Key_Escape);
        if (w->isVisible())
            qobject_cast<QMessageBox*>(w)->button(QMessageBox::Yes)->click();
    }));
    const QString text = QString::fromUtf8("Line one\nстрока два");
    QCOMPARE(run(box, text), escaped);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    const ModalSeen& seen = answer.seen();
    QCOMPARE(seen.title, title);
    QCOMPARE(seen.text, text);
    QCOMPARE(int(seen.icon), icon);
    int shown = 0;
    for (auto b : seen.standardButtons)
        shown |= b;
    QCOMPARE(shown, buttons);
    QCOMPARE(int(seen.defaultStandardButton), defaultButton);
}

void TestEMessage::cumulativeModeCollectsEveryErroOverloadAndShowsOtherBoxes()
{
    EMessage::setCumulativeErrorMode();
    EMessage::erro(nullptr, QString());
    const QString one = EMessage::getCumulativeError();
    QVERIFY(!one.isNull() && one.isEmpty()); // one empty error is not "nothing collected"

    EMessage::setCumulativeErrorMode();
    EMessage::erro(nullptr, QStringLiteral("discarded"));
    EMessage::setCumulativeErrorMode(); // starts over
    TTT error("Cannot open file x.lsp: No such file or directory");
    error.add("Cannot load the policy");
    {
        // Only the information box and the question are shown.
        ModalAnswerer answer({ModalAnswer::button(QMessageBox::Ok), ModalAnswer::button(QMessageBox::Yes)});
        EMessage::erro(nullptr, QString());
        EMessage::info(nullptr, QStringLiteral("i"));
        EMessage::erro(nullptr, std::string("Файл"));
        EMessage::erro(nullptr, "не найден");
        QVERIFY(EMessage::ask(nullptr, QStringLiteral("q")));
        EMessage::erro(nullptr, error);
        EMessage::erro(nullptr, std::bad_alloc());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
        QCOMPARE(answer.seen(0).title, QStringLiteral("Information"));
        QCOMPARE(answer.seen(1).title, QStringLiteral("Question"));
    }
    QCOMPARE(EMessage::getCumulativeError(),
             QString::fromUtf8("\r\nФайл\r\nне найден\r\n"
                               "Cannot load the policy\nCannot open file x.lsp: No such file or directory\r\n"
                               "Not enough memory"));

    // Nothing collected gives a null string; either way the mode is off and the next error is shown.
    EMessage::setCumulativeErrorMode();
    QVERIFY(EMessage::getCumulativeError().isNull());
    ModalAnswerer answer(QMessageBox::Ok);
    EMessage::erro(nullptr, QStringLiteral("D"));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().text, QStringLiteral("D"));
}

void TestEMessage::boxParentIsTheActiveModalWidgetElseTheActiveWindow()
{
    QWidget window;
    window.show();
    window.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &window);
    {
        ModalAnswerer answer(QMessageBox::Ok);
        EMessage::info(nullptr, QStringLiteral("hello"));
        QVERIFY2(answer.done(), qPrintable(answer.error()));
        QCOMPARE(answer.seen().parent, static_cast<const QObject*>(&window));
    }

    QDialog dialog;
    ModalSeen inner;
    ModalAnswerer outer(ModalAnswer::call([&](QWidget* w) {
        {
            ModalAnswerer answer(QMessageBox::Ok);
            QWidget unrelated; // the parent argument is ignored on purpose
            EMessage::info(&unrelated, QStringLiteral("inside"));
            inner = answer.seen();
        }
        qobject_cast<QDialog*>(w)->accept();
    }));
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QVERIFY2(outer.done(), qPrintable(outer.error()));
    QVERIFY(inner.found);
    QCOMPARE(inner.parent, static_cast<const QObject*>(&dialog));
}

void TestEMessage::russianTitlesAndButtonsAfterLoadingTheLanguage()
{
    CgTest::Environment::useBuildResources();
    static Loc::GUIModule texts;
    static Loc::QTLibModule qtTexts;
    std::string error;
    QVERIFY2(texts.load("rus", &error), error.c_str());
    QVERIFY2(qtTexts.load("rus", &error), error.c_str());

    ModalAnswerer answer({ModalAnswer::button(QMessageBox::NoToAll), ModalAnswer::key(Qt::Key_Return)});
    QCOMPARE(EMessage::askall(nullptr, QStringLiteral("text")), int(QMessageBox::NoToAll));
    EMessage::erro(nullptr, std::bad_alloc());
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen(0).title, QString::fromUtf8("Вопрос"));
    QVERIFY2(answer.seen(0).buttons.contains(QString::fromUtf8("Да")),
             qPrintable(answer.seen(0).buttons.join(QLatin1Char(','))));
    QCOMPARE(answer.seen(1).title, QString::fromUtf8("Ошибка"));
    QCOMPARE(answer.seen(1).text, QString::fromUtf8("Недостаточно памяти"));
    QVERIFY2(texts.load("eng", &error), error.c_str());
}

CG_TEST_MAIN(TestEMessage)
#include "tst_emessage.moc"
