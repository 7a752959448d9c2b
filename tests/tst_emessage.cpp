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

#include <algorithm>
#include <new>
#include <string>

Q_DECLARE_METATYPE(ModalAnswer)

namespace {

enum class Box { Info, Erro, Warn, Ask, Ync, AskNoAll, AskYesAll, AskAll };

constexpr int noResult = -100;

// Runs one box and turns its result into an int: bool as 0/1, none as noResult.
int run(Box box, const QString& text)
{
    switch (box) {
    case Box::Info:
        EMessage::info(nullptr, text);
        return noResult;
    case Box::Erro:
        EMessage::erro(nullptr, text);
        return noResult;
    case Box::Warn:
        return EMessage::warn(nullptr, text) ? 1 : 0;
    case Box::Ask:
        return EMessage::ask(nullptr, text) ? 1 : 0;
    case Box::Ync:
        return EMessage::ync(nullptr, text);
    case Box::AskNoAll:
        return EMessage::asknoall(nullptr, text);
    case Box::AskYesAll:
        return EMessage::askyesall(nullptr, text);
    case Box::AskAll:
        return EMessage::askall(nullptr, text);
    }
    return noResult;
}

QList<int> sorted(QList<QMessageBox::StandardButton> buttons)
{
    QList<int> result;
    for (auto b : buttons)
        result.append(int(b));
    std::sort(result.begin(), result.end());
    return result;
}

QList<int> sorted(QList<int> buttons)
{
    std::sort(buttons.begin(), buttons.end());
    return buttons;
}

} // namespace

Q_DECLARE_METATYPE(Box)

class TestEMessage : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();

    void boxesShowTheirIconTitleAndButtons_data();
    void boxesShowTheirIconTitleAndButtons();
    void resultFollowsThePressedButtonOrKey_data();
    void resultFollowsThePressedButtonOrKey();
    void escapeIsIgnoredWhenTwoButtonsSayNo_data();
    void escapeIsIgnoredWhenTwoButtonsSayNo();

    void cumulativeModeJoinsErrorsWithCrLfAndShowsNothing();
    void cumulativeModeCountsAnEmptyFirstError();
    void getCumulativeErrorWithoutErrorsIsNullAndEndsTheMode();
    void setCumulativeErrorModeAgainDiscardsTheCollection();
    void cumulativeModeStillShowsInfoAndQuestions();

    void erroOverloadsShowTheirText_data();
    void erroOverloadsShowTheirText();
    void erroOverloadsAreCollectedInCumulativeMode();
    void notEnoughMemoryFollowsTheCurrentText();

    void boxParentIsTheActiveModalWidget();
    void boxParentIsTheActiveWindowWithoutModal();

    // Last: it leaves Qt's Russian translator installed.
    void russianTitlesAndButtonsAfterLoadingTheLanguage_data();
    void russianTitlesAndButtonsAfterLoadingTheLanguage();
};

void TestEMessage::cleanup()
{
    // A failed test must not leave the mode on for the next one.
    EMessage::getCumulativeError();
}

void TestEMessage::boxesShowTheirIconTitleAndButtons_data()
{
    QTest::addColumn<Box>("box");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QList<int>>("buttons");
    QTest::addColumn<int>("defaultButton");

    using M = QMessageBox;
    QTest::newRow("info") << Box::Info << int(M::Information) << QStringLiteral("Information")
                          << QList<int>{M::Ok} << int(M::Ok);
    QTest::newRow("erro") << Box::Erro << int(M::Critical) << QStringLiteral("Error")
                          << QList<int>{M::Ok} << int(M::Ok);
    QTest::newRow("warn") << Box::Warn << int(M::Warning) << QStringLiteral("Warning")
                          << QList<int>{M::Ok, M::Cancel} << int(M::Cancel);
    QTest::newRow("ask") << Box::Ask << int(M::Question) << QStringLiteral("Question")
                         << QList<int>{M::Yes, M::No} << int(M::Yes);
    QTest::newRow("ync") << Box::Ync << int(M::Question) << QStringLiteral("Question")
                         << QList<int>{M::Yes, M::No, M::Cancel} << int(M::Yes);
    QTest::newRow("asknoall") << Box::AskNoAll << int(M::Question) << QStringLiteral("Question")
                              << QList<int>{M::Yes, M::No, M::NoToAll} << int(M::Yes);
    QTest::newRow("askyesall") << Box::AskYesAll << int(M::Question) << QStringLiteral("Question")
                               << QList<int>{M::Yes, M::YesToAll, M::No} << int(M::Yes);
    QTest::newRow("askall") << Box::AskAll << int(M::Question) << QStringLiteral("Question")
                            << QList<int>{M::Yes, M::YesToAll, M::No, M::NoToAll} << int(M::Yes);
}

void TestEMessage::boxesShowTheirIconTitleAndButtons()
{
    QFETCH(Box, box);
    QFETCH(int, icon);
    QFETCH(QString, title);
    QFETCH(QList<int>, buttons);
    QFETCH(int, defaultButton);

    const QString text = QString::fromUtf8("Line one\nстрока два");
    ModalAnswerer answer{QMessageBox::StandardButton(defaultButton)};
    run(box, text);
    QVERIFY2(answer.done(), qPrintable(answer.error()));

    const ModalSeen& seen = answer.seen();
    QCOMPARE(seen.className, QStringLiteral("QMessageBox"));
    QCOMPARE(seen.title, title);
    QCOMPARE(seen.text, text);
    QCOMPARE(int(seen.icon), icon);
    QCOMPARE(sorted(seen.standardButtons), sorted(buttons));
    QCOMPARE(int(seen.defaultStandardButton), defaultButton);
    QVERIFY(seen.flags.testFlag(Qt::Dialog));
    QVERIFY(seen.flags.testFlag(Qt::MSWindowsFixedSizeDialogHint));
    QVERIFY(!seen.parent);
    // The box is gone once the call returns.
    QVERIFY(!ModalAnswerer::currentModal());
}

void TestEMessage::resultFollowsThePressedButtonOrKey_data()
{
    QTest::addColumn<Box>("box");
    QTest::addColumn<ModalAnswer>("answer");
    QTest::addColumn<int>("result");

    using M = QMessageBox;
    const auto button = [](M::StandardButton b) { return ModalAnswer::button(b); };
    const ModalAnswer escape = ModalAnswer::key(Qt::Key_Escape);
    const ModalAnswer enter = ModalAnswer::key(Qt::Key_Return);

    QTest::newRow("info OK") << Box::Info << button(M::Ok) << noResult;
    QTest::newRow("info Escape") << Box::Info << escape << noResult;
    QTest::newRow("erro Enter") << Box::Erro << enter << noResult;

    QTest::newRow("warn OK") << Box::Warn << button(M::Ok) << 1;
    QTest::newRow("warn Cancel") << Box::Warn << button(M::Cancel) << 0;
    QTest::newRow("warn Enter is Cancel") << Box::Warn << enter << 0;
    QTest::newRow("warn Escape") << Box::Warn << escape << 0;

    QTest::newRow("ask Yes") << Box::Ask << button(M::Yes) << 1;
    QTest::newRow("ask No") << Box::Ask << button(M::No) << 0;
    QTest::newRow("ask Enter is Yes") << Box::Ask << enter << 1;
    QTest::newRow("ask Escape") << Box::Ask << escape << 0;

    QTest::newRow("ync Yes") << Box::Ync << button(M::Yes) << int(M::Yes);
    QTest::newRow("ync No") << Box::Ync << button(M::No) << int(M::No);
    QTest::newRow("ync Cancel") << Box::Ync << button(M::Cancel) << int(M::Cancel);
    QTest::newRow("ync Enter") << Box::Ync << enter << int(M::Yes);
    QTest::newRow("ync Escape is Cancel") << Box::Ync << escape << int(M::Cancel);

    QTest::newRow("asknoall Yes") << Box::AskNoAll << button(M::Yes) << int(M::Yes);
    QTest::newRow("asknoall No") << Box::AskNoAll << button(M::No) << int(M::No);
    QTest::newRow("asknoall No to All") << Box::AskNoAll << button(M::NoToAll) << int(M::NoToAll);
    QTest::newRow("asknoall Enter") << Box::AskNoAll << enter << int(M::Yes);

    QTest::newRow("askyesall Yes") << Box::AskYesAll << button(M::Yes) << int(M::Yes);
    QTest::newRow("askyesall Yes to All") << Box::AskYesAll << button(M::YesToAll) << int(M::YesToAll);
    QTest::newRow("askyesall No") << Box::AskYesAll << button(M::No) << int(M::No);
    QTest::newRow("askyesall Escape is No") << Box::AskYesAll << escape << int(M::No);

    QTest::newRow("askall Yes") << Box::AskAll << button(M::Yes) << int(M::Yes);
    QTest::newRow("askall Yes to All") << Box::AskAll << button(M::YesToAll) << int(M::YesToAll);
    QTest::newRow("askall No") << Box::AskAll << button(M::No) << int(M::No);
    QTest::newRow("askall No to All") << Box::AskAll << button(M::NoToAll) << int(M::NoToAll);
    QTest::newRow("askall Enter") << Box::AskAll << enter << int(M::Yes);
}

void TestEMessage::resultFollowsThePressedButtonOrKey()
{
    QFETCH(Box, box);
    QFETCH(ModalAnswer, answer);
    QFETCH(int, result);

    ModalAnswerer answerer(answer);
    QCOMPARE(run(box, QStringLiteral("Proceed?")), result);
    QVERIFY2(answerer.done(), qPrintable(answerer.error()));
}

void TestEMessage::escapeIsIgnoredWhenTwoButtonsSayNo_data()
{
    QTest::addColumn<Box>("box");
    QTest::newRow("asknoall") << Box::AskNoAll;
    QTest::newRow("askall") << Box::AskAll;
}

void TestEMessage::escapeIsIgnoredWhenTwoButtonsSayNo()
{
    // No and No to All both decline, so Escape cannot pick one for the user.
    QFETCH(Box, box);
    bool stayedOpen = false;
    ModalAnswerer answerer(ModalAnswer::call([&stayedOpen](QWidget* w) {
        QTest::keyClick(w, Qt::Key_Escape);
        stayedOpen = w->isVisible();
        qobject_cast<QMessageBox*>(w)->button(QMessageBox::No)->click();
    }));
    QCOMPARE(run(box, QStringLiteral("Overwrite?")), int(QMessageBox::No));
    QVERIFY2(answerer.done(), qPrintable(answerer.error()));
    QVERIFY(stayedOpen);
}

void TestEMessage::cumulativeModeJoinsErrorsWithCrLfAndShowsNothing()
{
    {
        ModalAnswerer watch(QMessageBox::Ok, 0);
        EMessage::setCumulativeErrorMode();
        EMessage::erro(nullptr, QStringLiteral("A"));
        EMessage::erro(nullptr, QStringLiteral("B"));
        EMessage::erro(nullptr, QStringLiteral("C"));
        QCOMPARE(watch.count(), 0);
    }
    QCOMPARE(EMessage::getCumulativeError(), QStringLiteral("A\r\nB\r\nC"));

    // The mode is off again: the next error is shown.
    ModalAnswerer answer(QMessageBox::Ok);
    EMessage::erro(nullptr, QStringLiteral("D"));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().text, QStringLiteral("D"));
    QVERIFY(EMessage::getCumulativeError().isNull());
}

void TestEMessage::cumulativeModeCountsAnEmptyFirstError()
{
    EMessage::setCumulativeErrorMode();
    EMessage::erro(nullptr, QString());
    const QString one = EMessage::getCumulativeError();
    QVERIFY(!one.isNull());
    QVERIFY(one.isEmpty());

    EMessage::setCumulativeErrorMode();
    EMessage::erro(nullptr, QString());
    EMessage::erro(nullptr, QStringLiteral("B"));
    QCOMPARE(EMessage::getCumulativeError(), QStringLiteral("\r\nB"));
}

void TestEMessage::getCumulativeErrorWithoutErrorsIsNullAndEndsTheMode()
{
    EMessage::setCumulativeErrorMode();
    QVERIFY(EMessage::getCumulativeError().isNull());

    ModalAnswerer answer(QMessageBox::Ok);
    EMessage::erro(nullptr, QStringLiteral("shown"));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, QStringLiteral("Error"));
}

void TestEMessage::setCumulativeErrorModeAgainDiscardsTheCollection()
{
    EMessage::setCumulativeErrorMode();
    EMessage::erro(nullptr, QStringLiteral("old"));
    EMessage::setCumulativeErrorMode();
    EMessage::erro(nullptr, QStringLiteral("new"));
    QCOMPARE(EMessage::getCumulativeError(), QStringLiteral("new"));
}

void TestEMessage::cumulativeModeStillShowsInfoAndQuestions()
{
    EMessage::setCumulativeErrorMode();
    ModalAnswerer answer({ModalAnswer::button(QMessageBox::Ok), ModalAnswer::button(QMessageBox::Ok),
                          ModalAnswer::button(QMessageBox::Yes)});
    EMessage::info(nullptr, QStringLiteral("i"));
    QVERIFY(EMessage::warn(nullptr, QStringLiteral("w")));
    QVERIFY(EMessage::ask(nullptr, QStringLiteral("q")));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen(0).title, QStringLiteral("Information"));
    QCOMPARE(answer.seen(1).title, QStringLiteral("Warning"));
    QCOMPARE(answer.seen(2).title, QStringLiteral("Question"));
    QVERIFY(EMessage::getCumulativeError().isNull());
}

namespace {

enum class Overload { StdString, CString, Ttt, BadAlloc };

void callOverload(Overload which)
{
    switch (which) {
    case Overload::StdString:
        EMessage::erro(nullptr, std::string("Файл не найден"));
        break;
    case Overload::CString:
        EMessage::erro(nullptr, "Файл не найден");
        break;
    case Overload::Ttt: {
        TTT error("Cannot open file x.lsp: No such file or directory");
        error.add("Cannot load the policy");
        EMessage::erro(nullptr, error);
        break;
    }
    case Overload::BadAlloc:
        EMessage::erro(nullptr, std::bad_alloc());
        break;
    }
}

} // namespace

Q_DECLARE_METATYPE(Overload)

void TestEMessage::erroOverloadsShowTheirText_data()
{
    QTest::addColumn<Overload>("overload");
    QTest::addColumn<QString>("text");

    const QString cyrillic = QString::fromUtf8("Файл не найден");
    QTest::newRow("std::string as UTF-8") << Overload::StdString << cyrillic;
    QTest::newRow("const char* as UTF-8") << Overload::CString << cyrillic;
    QTest::newRow("TTT, most general first")
        << Overload::Ttt
        << QStringLiteral("Cannot load the policy\nCannot open file x.lsp: No such file or directory");
    QTest::newRow("bad_alloc") << Overload::BadAlloc << QStringLiteral("Not enough memory");
}

void TestEMessage::erroOverloadsShowTheirText()
{
    QFETCH(Overload, overload);
    QFETCH(QString, text);

    ModalAnswerer answer(QMessageBox::Ok);
    callOverload(overload);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, QStringLiteral("Error"));
    QCOMPARE(answer.seen().icon, QMessageBox::Critical);
    QCOMPARE(answer.seen().text, text);
}

void TestEMessage::erroOverloadsAreCollectedInCumulativeMode()
{
    ModalAnswerer watch(QMessageBox::Ok, 0);
    EMessage::setCumulativeErrorMode();
    callOverload(Overload::StdString);
    callOverload(Overload::Ttt);
    callOverload(Overload::BadAlloc);
    QCOMPARE(watch.count(), 0);
    QCOMPARE(EMessage::getCumulativeError(),
             QString::fromUtf8("Файл не найден\r\n"
                               "Cannot load the policy\nCannot open file x.lsp: No such file or directory\r\n"
                               "Not enough memory"));
}

void TestEMessage::notEnoughMemoryFollowsTheCurrentText()
{
    const QString saved = LCQT__Not_enough_memory;
    const QString saved2 = LCQT__Question;
    LCQT__Not_enough_memory = QString::fromUtf8("Недостаточно памяти");
    LCQT__Question = QString::fromUtf8("Вопрос");

    ModalAnswerer answer({ModalAnswer::button(QMessageBox::Ok), ModalAnswer::button(QMessageBox::No)});
    EMessage::erro(nullptr, std::bad_alloc());
    EMessage::ask(nullptr, QStringLiteral("?"));
    LCQT__Not_enough_memory = saved;
    LCQT__Question = saved2;

    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen(0).text, QString::fromUtf8("Недостаточно памяти"));
    QCOMPARE(answer.seen(1).title, QString::fromUtf8("Вопрос"));
}

void TestEMessage::boxParentIsTheActiveModalWidget()
{
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("Owner"));
    ModalSeen inner;
    QWidget* topSeenInside = nullptr;
    ModalAnswerer outer(ModalAnswer::call([&](QWidget* w) {
        topSeenInside = EMessage::getTopWidget(nullptr);
        {
            ModalAnswerer answer(QMessageBox::Ok);
            // The parent argument is ignored on purpose.
            QWidget unrelated;
            EMessage::info(&unrelated, QStringLiteral("inside"));
            inner = answer.seen();
        }
        qobject_cast<QDialog*>(w)->accept();
    }));
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QVERIFY2(outer.done(), qPrintable(outer.error()));
    QCOMPARE(topSeenInside, static_cast<QWidget*>(&dialog));
    QVERIFY(inner.found);
    QCOMPARE(inner.parent, static_cast<const QObject*>(&dialog));
}

void TestEMessage::boxParentIsTheActiveWindowWithoutModal()
{
    QWidget window;
    window.setWindowTitle(QStringLiteral("Main"));
    window.show();
    window.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &window);
    QCOMPARE(EMessage::getTopWidget(nullptr), &window);

    ModalAnswerer answer(QMessageBox::Ok);
    EMessage::info(nullptr, QStringLiteral("hello"));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().parent, static_cast<const QObject*>(&window));
}

void TestEMessage::russianTitlesAndButtonsAfterLoadingTheLanguage_data()
{
    QTest::addColumn<Box>("box");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("yesButton");

    QTest::newRow("info") << Box::Info << QString::fromUtf8("Информация") << QString();
    QTest::newRow("erro") << Box::Erro << QString::fromUtf8("Ошибка") << QString();
    QTest::newRow("warn") << Box::Warn << QString::fromUtf8("Предупреждение") << QString();
    QTest::newRow("askall") << Box::AskAll << QString::fromUtf8("Вопрос") << QString::fromUtf8("Да");
}

void TestEMessage::russianTitlesAndButtonsAfterLoadingTheLanguage()
{
    QFETCH(Box, box);
    QFETCH(QString, title);
    QFETCH(QString, yesButton);

    CgTest::Environment::useBuildResources();
    static Loc::GUIModule texts;
    static Loc::QTLibModule qtTexts;
    std::string error;
    QVERIFY2(texts.load("rus", &error), error.c_str());
    QVERIFY2(qtTexts.load("rus", &error), error.c_str());

    ModalAnswerer answer(Qt::Key_Return);
    run(box, QStringLiteral("text"));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, title);
    if (!yesButton.isEmpty())
        QVERIFY2(answer.seen().plainButtons().contains(yesButton), qPrintable(answer.seen().buttons.join(QLatin1Char(','))));

    if (box == Box::Erro) {
        ModalAnswerer memory(QMessageBox::Ok);
        EMessage::erro(nullptr, std::bad_alloc());
        QVERIFY2(memory.done(), qPrintable(memory.error()));
        QCOMPARE(memory.seen().text, QString::fromUtf8("Недостаточно памяти"));
    }
    QVERIFY2(texts.load("eng", &error), error.c_str());
}

CG_TEST_MAIN(TestEMessage)
#include "tst_emessage.moc"
