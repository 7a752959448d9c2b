// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "echeckbox.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "epassdialog.h"
#include "epasswordpanel.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>

namespace {

/// Types \a text key by key as a keyboard would, non-Latin letters included (QTest::keyClicks knows
/// only Latin-1).
void type(QWidget* w, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80)
            QTest::keyClick(w, char(c.unicode()));
        else
            QTest::sendKeyEvent(QTest::Click, w, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

/// A panel in a shown window, with an OK button of its own, as a dialog would have it.
struct PanelWindow
{
    explicit PanelWindow(EPasswordPanel::Strength minimum, QString* password = nullptr)
    {
        ok = new QPushButton(QStringLiteral("OK"), &window);
        panel = new EPasswordPanel(&window, password, minimum, ok);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(panel);
        layout->addWidget(ok);
        window.show();
    }
    EEditBox* field() const { return panel->passwordPair->getEditBox(); }
    EEditBox* confirm() const { return panel->confirmPair->getEditBox(); }
    QString level() const { return panel->strengthLabel->text(); }
    /// The level's colour, the same in every colour group or invalid when the groups differ.
    QColor colour() const
    {
        const QPalette p = panel->strengthLabel->palette();
        const QPalette::ColorRole role = panel->strengthLabel->foregroundRole();
        const QColor active = p.color(QPalette::Active, role);
        for (const QPalette::ColorGroup group : {QPalette::Inactive, QPalette::Disabled})
            if (p.color(group, role) != active)
                return QColor();
        return active;
    }

    QWidget window;
    QPushButton* ok = nullptr;
    EPasswordPanel* panel = nullptr;
};

const QString* levelText(int level)
{
    const QString* const texts[] = {&LCQT__Zero, &LCQT__Low, &LCQT__Medium, &LCQT__High};
    return texts[level];
}

} // namespace

class TestEPassword : public QObject
{
    Q_OBJECT
private slots:
    void typedPasswordShowsItsLevelInColour_data();
    void typedPasswordShowsItsLevelInColour();
    void okButtonFollowsTheMinimumWhateverTheConfirmation();
    void acceptReportsTheMismatchBeforeTheStrength_data();
    void acceptReportsTheMismatchBeforeTheStrength();
    void showBoxCountsDownAndMasksBothFields();
    void uncheckingByHandMasksAtOnce();
    void threeCaptionsShareOneWidth();
    void veryLongPasswordIsKeptWholeAndMeasured();
    void passDialogAsksForOneMaskedPassword_data();
    void passDialogAsksForOneMaskedPassword();
};

void TestEPassword::typedPasswordShowsItsLevelInColour_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("level");
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("six lower-case letters score 2") << QStringLiteral("abcdef") << 1;
    QTest::newRow("length 6, digit, lower, upper") << QStringLiteral("abcDE1") << 2;
    QTest::newRow("five letters and a digit are too short") << QStringLiteral("abDE1") << 1;
    QTest::newRow("punctuation makes 5") << QStringLiteral("abcDE1!") << 2;
    QTest::newRow("eight characters miss the length point") << QStringLiteral("abcdE12!") << 2;
    QTest::newRow("nine characters of every kind") << QStringLiteral("abcdEF12!") << 3;
    QTest::newRow("no lower-case letter") << QStringLiteral("ABCDEFGH1!") << 2;
    QTest::newRow("plus and dollar are symbols, not punctuation") << QStringLiteral("abcdEF12+$") << 2;
    QTest::newRow("euro sign and caret are symbols") << QString::fromUtf8("abcdEF12€^") << 2;
    QTest::newRow("underscore and hyphen are punctuation") << QStringLiteral("abcdEF12_-") << 3;
    QTest::newRow("Cyrillic of every kind") << QString::fromUtf8("пароЛЬ123,") << 3;
    QTest::newRow("Cyrillic lower case and digits") << QString::fromUtf8("пароль1") << 1;
    QTest::newRow("Greek upper, lower, digit") << QString::fromUtf8("ΑλφαΒ1") << 2;
    QTest::newRow("CJK letters have no case") << QString::fromUtf8("密码密码密码密码1!") << 2;
    QTest::newRow("Arabic-Indic digits are digits") << QString::fromUtf8("abcDE٣") << 2;
}

void TestEPassword::typedPasswordShowsItsLevelInColour()
{
    QFETCH(QString, password);
    QFETCH(int, level);
    QString copy = password;
    QCOMPARE(getStrength(copy), level);
    QCOMPARE(copy, password);

    PanelWindow w(EPasswordPanel::Zero);
    type(w.field(), password);
    QCOMPARE(w.field()->text(), password);
    QCOMPARE(w.level(), *levelText(level));
    const QColor colours[] = {Qt::red, Qt::red, Qt::darkYellow, Qt::darkGreen};
    QCOMPARE(w.colour(), colours[level]);
    // Typing never gets refused, whatever the level.
    QVERIFY(w.field()->hasAcceptableInput());
}

void TestEPassword::okButtonFollowsTheMinimumWhateverTheConfirmation()
{
    PanelWindow w(EPasswordPanel::Medium);
    QVERIFY(!w.ok->isEnabled());
    QCOMPARE(w.level(), LCQT__Zero);
    QTest::keyClicks(w.field(), QStringLiteral("abcDE"));
    QVERIFY(!w.ok->isEnabled());
    QTest::keyClick(w.field(), Qt::Key_1);
    QVERIFY(w.ok->isEnabled());
    QVERIFY(w.confirm()->text().isEmpty());
    QTest::keyClick(w.field(), Qt::Key_Backspace);
    QVERIFY(!w.ok->isEnabled());
    // The confirmation field has no say in it.
    QTest::keyClicks(w.confirm(), QStringLiteral("abcdEF12!"));
    QVERIFY(!w.ok->isEnabled());
    QCOMPARE(w.level(), LCQT__Low);

    // A password given by the caller is measured at once; clearing measures again.
    QString given = QStringLiteral("abcdEF12!");
    PanelWindow filled(EPasswordPanel::High, &given);
    QVERIFY(filled.ok->isEnabled());
    QCOMPARE(filled.level(), LCQT__High);
    QCOMPARE(filled.confirm()->text(), given);
    filled.panel->clearPassword();
    QVERIFY(!filled.ok->isEnabled());
    QVERIFY(filled.field()->text().isEmpty() && filled.confirm()->text().isEmpty());
    filled.panel->setPassword(QStringLiteral("abcDE1"));
    QCOMPARE(filled.level(), LCQT__Medium);
    QCOMPARE(filled.confirm()->text(), QStringLiteral("abcDE1"));
}

void TestEPassword::acceptReportsTheMismatchBeforeTheStrength_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("confirmed");
    QTest::addColumn<QString>("message");
    QTest::newRow("weak and mistyped: the mismatch") << 3 << QStringLiteral("abc") << QStringLiteral("abd")
                                                     << LCQT__Passwords_do_not_match;
    QTest::newRow("strong and mistyped") << 3 << QStringLiteral("abcdEF12!") << QStringLiteral("abcdEF12?")
                                         << LCQT__Passwords_do_not_match;
    QTest::newRow("case counts in the match") << 0 << QStringLiteral("Secret") << QStringLiteral("secret")
                                              << LCQT__Passwords_do_not_match;
    QTest::newRow("equal but weak") << 3 << QStringLiteral("abcDE1!") << QStringLiteral("abcDE1!")
                                    << LCQT__Password_is_not_strong_enough;
    QTest::newRow("empty against Low") << 1 << QString() << QString() << LCQT__Password_is_not_strong_enough;
    QTest::newRow("empty is enough for Zero") << 0 << QString() << QString() << QString();
    QTest::newRow("equal and strong") << 3 << QStringLiteral("abcdEF12!") << QStringLiteral("abcdEF12!") << QString();
}

void TestEPassword::acceptReportsTheMismatchBeforeTheStrength()
{
    QFETCH(int, minimum);
    QFETCH(QString, typed);
    QFETCH(QString, confirmed);
    QFETCH(QString, message);
    for (const bool withVariable : {true, false}) {
        QString variable = QStringLiteral("old");
        PanelWindow w(EPasswordPanel::Strength(minimum), withVariable ? &variable : nullptr);
        w.panel->clearPassword();
        QTest::keyClicks(w.field(), typed);
        QTest::keyClicks(w.confirm(), confirmed);
        if (message.isEmpty()) {
            QVERIFY(w.panel->accept());
            QCOMPARE(variable, withVariable ? typed : QStringLiteral("old"));
            continue;
        }
        ModalAnswerer answer(QMessageBox::Ok);
        QVERIFY(!w.panel->accept());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
        QCOMPARE(answer.seen().text, message);
        QCOMPARE(answer.seen().icon, QMessageBox::Critical);
        QCOMPARE(variable, QStringLiteral("old"));
        QCOMPARE(w.field()->text(), typed);
        QCOMPARE(w.confirm()->text(), confirmed);
    }
}

void TestEPassword::showBoxCountsDownAndMasksBothFields()
{
    PanelWindow w(EPasswordPanel::Zero);
    w.panel->setPassword(QStringLiteral("secret"));
    ECheckBox* box = w.panel->showCheck;
    QCOMPARE(box->text(), LCQT__Show_password);
    QCOMPARE(w.field()->echoMode(), QLineEdit::Password);

    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box->height() / 2));
    QVERIFY(box->isChecked());
    QCOMPARE(w.field()->echoMode(), QLineEdit::Normal);
    QCOMPARE(w.confirm()->echoMode(), QLineEdit::Normal);
    QCOMPARE(box->text(), LCQT__Show_password + QStringLiteral(" (3)"));
    QCOMPARE(w.panel->countdown, 3);
    // Each step waits its second: a step is never seen sooner (lateness of the test's polling
    // aside), however slow the machine; only the order of the steps is waited for.
    QElapsedTimer step;
    step.start();
    QTRY_COMPARE(box->text(), LCQT__Show_password + QStringLiteral(" (2)"));
    QVERIFY(step.restart() >= 800);
    QCOMPARE(w.field()->echoMode(), QLineEdit::Normal);
    QTRY_COMPARE(box->text(), LCQT__Show_password + QStringLiteral(" (1)"));
    QVERIFY(step.restart() >= 800);
    QVERIFY(box->isChecked());
    QTRY_VERIFY(!box->isChecked());
    QVERIFY(step.restart() >= 800);
    QCOMPARE(box->text(), LCQT__Show_password);
    QCOMPARE(w.field()->echoMode(), QLineEdit::Password);
    QCOMPARE(w.confirm()->echoMode(), QLineEdit::Password);
    // The caption does not move the row: the widest countdown caption fits the box.
    QVERIFY(box->minimumWidth() >= box->sizeHint().width() + box->fontMetrics().horizontalAdvance(QStringLiteral(" (3)")));
}

void TestEPassword::uncheckingByHandMasksAtOnce()
{
    PanelWindow w(EPasswordPanel::Zero);
    ECheckBox* box = w.panel->showCheck;
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
    QCOMPARE(w.confirm()->echoMode(), QLineEdit::Normal);
    QTest::keyClick(box, Qt::Key_Space);
    QVERIFY(!box->isChecked());
    QCOMPARE(w.field()->echoMode(), QLineEdit::Password);
    QCOMPARE(w.confirm()->echoMode(), QLineEdit::Password);
    QCOMPARE(box->text(), LCQT__Show_password);
    // The pending step of the first countdown finds the box unchecked and leaves it so.
    QTest::qWait(1200);
    QVERIFY(!box->isChecked());
    QCOMPARE(box->text(), LCQT__Show_password);
}

void TestEPassword::threeCaptionsShareOneWidth()
{
    PanelWindow w(EPasswordPanel::Zero);
    const auto widths = [&w] {
        auto* strength = dynamic_cast<EPair*>(w.panel->findChild<QWidget*>(QStringLiteral("strengthPair")));
        return QList<int>{w.panel->passwordPair->label->width(), w.panel->confirmPair->label->width(),
                          strength ? strength->label->width() : -1};
    };
    QApplication::processEvents();
    QList<int> before = widths();
    QCOMPARE(before.size(), 3);
    QVERIFY(before.count(before.first()) == 3);
    QCOMPARE(w.panel->passwordPair->getLabelText(), LCQT__Password);
    QCOMPARE(w.panel->confirmPair->getLabelText(), LCQT__Confirm_password);

    w.panel->setPasswordPrompt(QStringLiteral("A much longer prompt for the old password:"));
    QApplication::processEvents();
    const QList<int> after = widths();
    QVERIFY(after.count(after.first()) == 3);
    QVERIFY(after.first() > before.first());

    // The strength label is wide enough for the widest level: the row does not move.
    int widest = 0;
    for (int level = 0; level < 4; ++level)
        widest = std::max(widest, w.panel->fontMetrics().horizontalAdvance(*levelText(level)));
    QCOMPARE(w.panel->strengthLabel->minimumWidth(), widest);
}

void TestEPassword::veryLongPasswordIsKeptWholeAndMeasured()
{
    PanelWindow w(EPasswordPanel::High);
    const QString longText = QString(50000, QLatin1Char('a')) + QString(49999, QLatin1Char('B'));
    w.panel->setPassword(longText);
    QCOMPARE(w.panel->getPassword().size(), 99999);
    QCOMPARE(w.level(), LCQT__Medium); // long, letters of both cases
    QVERIFY(!w.ok->isEnabled());
    // Keystrokes at the end still count; the line edit's own limit (32767) would have cut them off.
    w.field()->end(false);
    QTest::keyClick(w.field(), '!');
    QCOMPARE(w.level(), LCQT__Medium); // no digit yet
    QTest::keyClick(w.field(), Qt::Key_7);
    QCOMPARE(w.panel->getPassword().size(), 100001);
    QCOMPARE(w.level(), LCQT__High);
    QVERIFY(w.ok->isEnabled());
    QTest::keyClicks(w.confirm(), QStringLiteral("x"));
    ModalAnswerer answer(QMessageBox::Ok);
    QVERIFY(!w.panel->accept());
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().text, LCQT__Passwords_do_not_match);
}

void TestEPassword::passDialogAsksForOneMaskedPassword_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("finish");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("message, Enter") << QStringLiteral("Token \"user\" is locked.") << QStringLiteral("Return") << true;
    QTest::newRow("no message, OK") << QString() << QStringLiteral("okButton") << true;
    QTest::newRow("Escape") << QStringLiteral("x") << QStringLiteral("Escape") << false;
    QTest::newRow("Cancel") << QString() << QStringLiteral("cancelButton") << false;
}

void TestEPassword::passDialogAsksForOneMaskedPassword()
{
    QFETCH(QString, message);
    QFETCH(QString, finish);
    QFETCH(bool, accepted);
    EPassDialog dialog(nullptr, QStringLiteral("Unlock"), QStringLiteral("&PIN:"), message);
    QVERIFY(dialog.windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Unlock"));
    QCOMPARE(dialog.pair->getLabelText(), QStringLiteral("&PIN:"));
    auto* shown = dialog.findChild<QLabel*>(QStringLiteral("message"));
    QCOMPARE(bool(shown), !message.isEmpty());
    if (shown)
        QCOMPARE(shown->text(), message);
    dialog.setPassword(QStringLiteral("12"));

    QString echo;
    ModalAnswerer answer(ModalAnswer::call([&](QWidget* box) {
        auto* edit = box->findChild<EEditBox*>();
        echo = QString::number(edit->echoMode());
        edit->setFocus();
        edit->end(false);
        type(edit, QString::fromUtf8("34Ж"));
        if (finish == QLatin1String("Return") || finish == QLatin1String("Escape"))
            QTest::keyClick(edit, finish == QLatin1String("Return") ? Qt::Key_Return : Qt::Key_Escape);
        else
            QTest::mouseClick(box->findChild<QPushButton*>(finish), Qt::LeftButton);
    }));
    QCOMPARE(dialog.exec() == QDialog::Accepted, accepted);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(echo, QString::number(QLineEdit::Password));
    QCOMPARE(dialog.getPassword(), QString::fromUtf8("1234Ж"));
}

CG_TEST_MAIN(TestEPassword)
#include "tst_epassword.moc"
