// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "edirs.h"
#include "eplaintextedit.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>

namespace {

QString settingsFile()
{
    return EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"));
}

void activate(QWidget* w)
{
    QApplication::setActiveWindow(w);
    QVERIFY(QTest::qWaitForWindowActive(w));
}

/// A shown, active editor of a usual size holding \a text.
std::unique_ptr<EPlainTextEdit> shownEditor(const QString& text, bool shortcuts = true)
{
    auto editor = std::make_unique<EPlainTextEdit>(shortcuts);
    editor->setText(text);
    editor->resize(480, 320);
    editor->show();
    activate(editor.get());
    return editor;
}

/// Rows (y) of the gutter that hold a dark pixel: where numbers were painted.
QVector<int> inkedRows(QWidget* gutter)
{
    const QImage image = gutter->grab().toImage();
    QVector<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 96) {
                rows << y;
                break;
            }
    return rows;
}

/// The number of separate bands of inked rows, one per painted line number.
int numberBands(const QVector<int>& rows)
{
    int bands = 0;
    for (int i = 0; i < rows.size(); ++i)
        if (i == 0 || rows.at(i) != rows.at(i - 1) + 1)
            ++bands;
    return bands;
}

QString lines(int n)
{
    QStringList list;
    for (int i = 1; i <= n; ++i)
        list << QStringLiteral("line %1").arg(i);
    return list.join(QLatin1Char('\n'));
}

QAbstractButton* findOption(EPlainTextEdit* editor, const char* name)
{
    return editor->getFindDialog()->findChild<QAbstractButton*>(QLatin1String(name));
}

/// Types \a typed over the selected number of a Go to Line dialog and finishes with Enter or
/// "cancel"; records the prompt, the shown number and the maximum.
ModalAnswer typeLine(QStringList& seen, const QString& typed, bool enter = true)
{
    return ModalAnswer::call([&seen, typed, enter](QWidget* box) {
        auto* spin = box->findChild<QAbstractSpinBox*>();
        seen = QStringList{box->findChild<QLabel*>()->text(), spin->text(),
                           spin->property("maximum").toString()};
        spin->setFocus();
        QTest::keyClicks(spin, typed);
        if (enter)
            QTest::keyClick(spin, Qt::Key_Return);
        else
            QTest::mouseClick(box->findChild<QPushButton*>(QStringLiteral("cancelButton")), Qt::LeftButton);
    });
}

} // namespace

class TestEPlainTextEdit : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void gutterWidthFollowsTheLineCount_data();
    void gutterWidthFollowsTheLineCount();
    void gutterNumbersEveryVisibleLineAndTheEmptyOne();
    void currentLineHighlightFollowsTheCursorExceptReadOnly();
    void setTextDropsOneTrailingNulAndLeavesTheTextUnmodified_data();
    void setTextDropsOneTrailingNulAndLeavesTheTextUnmodified();
    void findAsksToRestartUnlessItStartedAtTheEnd_data();
    void findAsksToRestartUnlessItStartedAtTheEnd();
    void f3FindsTheNextMatchWithTheDialogClosed();
    void ctrlGSelectsTheTypedLine_data();
    void ctrlGSelectsTheTypedLine();
    void shortcutsOnlyWhenAskedForButAlwaysAFindDialog();
    void damagedAndHugeTextsShowWithoutACrash_data();
    void damagedAndHugeTextsShowWithoutACrash();
};

void TestEPlainTextEdit::init()
{
    QFile::remove(settingsFile());
}

void TestEPlainTextEdit::gutterWidthFollowsTheLineCount_data()
{
    QTest::addColumn<int>("lineCount"); // 0: an empty text
    QTest::addColumn<int>("digits");
    QTest::addColumn<int>("returns");   // then typed at the end
    QTest::addColumn<int>("digitsAfter");
    QTest::newRow("empty") << 0 << 1 << 9 << 2;
    QTest::newRow("9") << 9 << 1 << 1 << 2;
    QTest::newRow("10") << 10 << 2 << 89 << 2;
    QTest::newRow("99") << 99 << 2 << 1 << 3;
    QTest::newRow("12345") << 12345 << 5 << 1 << 5;
}

void TestEPlainTextEdit::gutterWidthFollowsTheLineCount()
{
    QFETCH(int, lineCount);
    QFETCH(int, digits);
    QFETCH(int, returns);
    QFETCH(int, digitsAfter);
    auto editor = shownEditor(lines(lineCount));
    auto* gutter = editor->findChild<QWidget*>(QStringLiteral("lineNumberArea"));
    const int digit = editor->fontMetrics().horizontalAdvance(QLatin1Char('9'));
    const auto check = [&](int n) {
        const int width = 3 + n * digit;
        QCOMPARE(editor->lineNumberAreaWidth(), width);
        QCOMPARE(editor->viewport()->geometry().left() - editor->contentsRect().left(), width);
        QCOMPARE(gutter->sizeHint(), QSize(width, 0));
        QTRY_COMPARE(gutter->width(), width);
        QCOMPARE(gutter->geometry().left(), editor->contentsRect().left());
    };
    check(digits);
    if (QTest::currentTestFailed())
        return;
    editor->moveCursor(QTextCursor::End);
    for (int i = 0; i < returns; ++i)
        QTest::keyClick(editor.get(), Qt::Key_Return);
    check(digitsAfter);
}

void TestEPlainTextEdit::gutterNumbersEveryVisibleLineAndTheEmptyOne()
{
    auto editor = shownEditor(QString());
    auto* gutter = editor->findChild<QWidget*>(QStringLiteral("lineNumberArea"));
    const int lineHeight = editor->fontMetrics().height();
    QVector<int> rows = inkedRows(gutter);
    QCOMPARE(numberBands(rows), 1); // "1" for the empty document
    QVERIFY(rows.last() < 2 * lineHeight);

    editor->setText(QStringLiteral("a\nb\nc"));
    QCOMPARE(numberBands(inkedRows(gutter)), 3);

    // A long text: exactly the lines in sight are numbered, also after scrolling.
    editor->setText(lines(1000));
    const int visible = numberBands(inkedRows(gutter));
    QVERIFY(visible > 5 && visible < 1000);
    editor->verticalScrollBar()->setValue(500);
    QCOMPARE(editor->cursorForPosition(QPoint(0, 0)).blockNumber(), 500);
    QCOMPARE(numberBands(inkedRows(gutter)), visible);
}

void TestEPlainTextEdit::currentLineHighlightFollowsTheCursorExceptReadOnly()
{
    auto editor = shownEditor(lines(5));
    const auto highlighted = [&editor] {
        const QList<QTextEdit::ExtraSelection> list = editor->extraSelections();
        return list.size() == 1 && !list.at(0).cursor.hasSelection()
                       && list.at(0).format.property(QTextFormat::FullWidthSelection).toBool()
                   ? list.at(0).cursor.blockNumber()
                   : -list.size() - 1;
    };
    QCOMPARE(highlighted(), 0);
    QTest::keyClick(editor.get(), Qt::Key_Down);
    QTest::keyClick(editor.get(), Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(highlighted(), 2); // the cursor's line, not its selection
    QCOMPARE(editor->extraSelections().at(0).format.background().color(), QColor(255, 255, 153));

    // Made read-only later, the highlight goes at the next cursor move only.
    editor->setReadOnly(true);
    QCOMPARE(highlighted(), 2);
    editor->moveCursor(QTextCursor::Start);
    QCOMPARE(highlighted(), -1);
    editor->setReadOnly(false);
    editor->moveCursor(QTextCursor::End);
    QCOMPARE(highlighted(), 4);
}

void TestEPlainTextEdit::setTextDropsOneTrailingNulAndLeavesTheTextUnmodified_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("typedBefore"); // the user edited the previous text
    const QChar nul(0);
    QTest::newRow("plain over edited") << "abc" << "abc" << true;
    QTest::newRow("plain over unedited") << "abc" << "abc" << false;
    QTest::newRow("trailing NUL") << QStringLiteral("abc") + nul << "abc" << false;
    QTest::newRow("two trailing NULs") << QStringLiteral("ab") + nul + nul << QStringLiteral("ab") + nul << true;
    QTest::newRow("inner NUL") << QStringLiteral("a") + nul + QStringLiteral("b")
                               << QStringLiteral("a") + nul + QStringLiteral("b") << false;
    QTest::newRow("only a NUL") << QString(nul) << "" << false;
    QTest::newRow("empty over unedited") << "" << "" << false;
    QTest::newRow("empty over edited") << "" << "" << true;
}

void TestEPlainTextEdit::setTextDropsOneTrailingNulAndLeavesTheTextUnmodified()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QFETCH(bool, typedBefore);

    auto editor = shownEditor(QString());
    if (typedBefore) {
        QTest::keyClicks(editor.get(), QStringLiteral("typed"));
        QVERIFY(editor->isModified());
    }
    QSignalSpy spy(editor->document(), &QTextDocument::modificationChanged);
    editor->setText(text);
    QCOMPARE(editor->toPlainText(), shown);
    QVERIFY(!editor->isModified());
    // Editor windows keep their titles by this signal: it must come, and the last word is "unmodified".
    QVERIFY(!spy.isEmpty());
    QCOMPARE(spy.last().at(0).toBool(), false);
}

void TestEPlainTextEdit::findAsksToRestartUnlessItStartedAtTheEnd_data()
{
    QTest::addColumn<int>("cursor");       // position before the search; -1: the end
    QTest::addColumn<QString>("what");
    QTest::addColumn<QStringList>("options"); // buttons clicked in the dialog
    QTest::addColumn<QStringList>("answers"); // "ok" / "cancel" per box, in turn
    QTest::addColumn<QStringList>("boxes");   // the texts of the boxes seen
    QTest::addColumn<int>("selectionStart");  // -1: nothing found
    QTest::addColumn<bool>("dialogShown");    // after the search

    // "one two\nThree one\nfour": "two" at 4, "one" at 0 and 14, "Three" at 8.
    const QString below = LCQT__Text_not_found_below_this_point;
    const QString above = LCQT__Text_not_found_above_this_point;
    const QString none = LCQT__Text_not_found;
    using S = QStringList;
    QTest::newRow("found below") << 0 << "one" << S{} << S{} << S{} << 0 << true;
    QTest::newRow("absent from the start: no question") << 0 << "zzz" << S{} << S{"ok"} << S{none} << -1 << true;
    QTest::newRow("absent from the middle, restarted") << 10 << "zzz" << S{} << S{"ok", "ok"} << S{below, none}
                                                       << -1 << true;
    QTest::newRow("above, restarted") << 10 << "two" << S{} << S{"ok"} << S{below} << 4 << true;
    QTest::newRow("above, declined") << 10 << "two" << S{} << S{"cancel"} << S{below} << -1 << false;
    QTest::newRow("upwards") << -1 << "one" << S{"up"} << S{} << S{} << 14 << true;
    QTest::newRow("upwards from the end: no question") << -1 << "zzz" << S{"up"} << S{"ok"} << S{none} << -1 << true;
    QTest::newRow("below, restarted upwards") << 6 << "four" << S{"up"} << S{"ok"} << S{above} << 18 << true;
    QTest::newRow("below, declined upwards") << 6 << "four" << S{"up"} << S{"cancel"} << S{above} << -1 << false;
    QTest::newRow("case ignored") << 0 << "three" << S{} << S{} << S{} << 8 << true;
    QTest::newRow("case matched") << 0 << "three" << S{"matchCase"} << S{"ok"} << S{none} << -1 << true;
    QTest::newRow("whole words") << 1 << "on" << S{"wholeWord"} << S{"ok", "ok"} << S{below, none} << -1 << true;
}

void TestEPlainTextEdit::findAsksToRestartUnlessItStartedAtTheEnd()
{
    QFETCH(int, cursor);
    QFETCH(QString, what);
    QFETCH(QStringList, options);
    QFETCH(QStringList, answers);
    QFETCH(QStringList, boxes);
    QFETCH(int, selectionStart);
    QFETCH(bool, dialogShown);

    auto editor = shownEditor(QStringLiteral("one two\nThree one\nfour"));
    QTextCursor c = editor->textCursor();
    c.setPosition(cursor < 0 ? editor->document()->characterCount() - 1 : cursor);
    editor->setTextCursor(c);
    const int before = editor->textCursor().position();

    QTest::keyClick(editor.get(), Qt::Key_F, Qt::ControlModifier);
    EFind* dialog = editor->getFindDialog();
    QVERIFY(dialog->isVisible());
    activate(dialog);
    for (const QString& option : options)
        QTest::mouseClick(findOption(editor.get(), option.toLatin1().constData()), Qt::LeftButton);
    auto* combo = dialog->findChild<QComboBox*>(QStringLiteral("Find_what"));
    QTest::keyClicks(combo, what);

    std::unique_ptr<ModalAnswerer> answer;
    if (answers.size() == 1)
        answer.reset(new ModalAnswerer(ModalAnswer::button(answers.at(0) == QLatin1String("ok") ? QMessageBox::Ok
                                                                                                : QMessageBox::Cancel)));
    else if (answers.size() == 2)
        answer.reset(new ModalAnswerer({ModalAnswer::button(QMessageBox::Ok), ModalAnswer::button(QMessageBox::Ok)}));
    QTest::keyClick(combo, Qt::Key_Return);
    QStringList seen;
    if (answer) {
        QVERIFY2(answer->wait(), qPrintable(answer->error()));
        for (int i = 0; i < answer->count(); ++i)
            seen << answer->seen(i).text;
    }
    QCOMPARE(seen, boxes);

    const QTextCursor after = editor->textCursor();
    if (selectionStart < 0) {
        QVERIFY(!after.hasSelection());
    } else {
        QCOMPARE(after.selectedText().toLower(), what);
        QCOMPARE(after.selectionStart(), selectionStart);
    }
    // Declined, the cursor stays where the search began.
    if (answers == QStringList{QStringLiteral("cancel")})
        QCOMPARE(after.position(), before);
    QCOMPARE(dialog->isVisible(), dialogShown);
    QCOMPARE(dialog->findChild<QPushButton*>(QStringLiteral("find"))->text().trimmed(),
             selectionStart < 0 ? LCQT__Find__1 : LCQT__Find_Next__0);
}

void TestEPlainTextEdit::f3FindsTheNextMatchWithTheDialogClosed()
{
    auto editor = shownEditor(QStringLiteral("x one\ny one\nz one"));
    QTest::keyClick(editor.get(), Qt::Key_F, Qt::ControlModifier);
    EFind* dialog = editor->getFindDialog();
    activate(dialog);
    auto* combo = dialog->findChild<QComboBox*>(QStringLiteral("Find_what"));
    QTest::keyClicks(combo, QStringLiteral("one"));
    QTest::keyClick(combo, Qt::Key_Return);
    QCOMPARE(editor->textCursor().selectionStart(), 2);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());

    activate(editor.get());
    QTest::keyClick(editor.get(), Qt::Key_F3);
    QCOMPARE(editor->textCursor().selectionStart(), 8);
    QTest::keyClick(editor.get(), Qt::Key_F3);
    QCOMPARE(editor->textCursor().selectionStart(), 14);
    {
        ModalAnswerer answer(QMessageBox::Ok);
        QTest::keyClick(editor.get(), Qt::Key_F3);
        QVERIFY2(answer.wait(), qPrintable(answer.error()));
        QCOMPARE(answer.seen().text, LCQT__Text_not_found_below_this_point);
    }
    QCOMPARE(editor->textCursor().selectionStart(), 2);
    QVERIFY(!dialog->isVisible());
}

void TestEPlainTextEdit::ctrlGSelectsTheTypedLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("typed");    // over the selected current line number
    QTest::addColumn<bool>("enter");       // else Cancel
    QTest::addColumn<QStringList>("shown"); // the current line and the maximum
    QTest::addColumn<QString>("selected");

    const QString text = QStringLiteral("alpha\nbeta\ngamma");
    using S = QStringList;
    QTest::newRow("first line") << text << 8 << "1" << true << S{"2", "3"} << "alpha";
    QTest::newRow("last line") << text << 0 << "3" << true << S{"1", "3"} << "gamma";
    QTest::newRow("beyond the end refused") << text << 12 << "9" << true << S{"3", "3"} << "gamma";
    QTest::newRow("zero refused") << text << 0 << "0" << true << S{"1", "3"} << "alpha";
    QTest::newRow("cancelled") << text << 7 << "1" << false << S{"2", "3"} << "";
    QTest::newRow("empty document offers line 1 only") << "" << 0 << "2" << true << S{"1", "1"} << "";
    QTest::newRow("empty last line") << "a\n" << 0 << "2" << true << S{"1", "2"} << "";
}

void TestEPlainTextEdit::ctrlGSelectsTheTypedLine()
{
    QFETCH(QString, text);
    QFETCH(int, cursor);
    QFETCH(QString, typed);
    QFETCH(bool, enter);
    QFETCH(QStringList, shown);
    QFETCH(QString, selected);

    auto editor = shownEditor(text);
    QTextCursor c = editor->textCursor();
    c.setPosition(cursor);
    editor->setTextCursor(c);

    QStringList seen;
    ModalAnswerer answer(typeLine(seen, typed, enter));
    QTest::keyClick(editor.get(), Qt::Key_G, Qt::ControlModifier);
    QVERIFY2(answer.wait(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, LCQT__Go_to_Line);
    QCOMPARE(seen, QStringList{LCQT__Specify_line_number_from_1} + shown);
    const QTextCursor after = editor->textCursor();
    QCOMPARE(after.selectedText(), selected);
    if (!enter)
        QCOMPARE(after.position(), cursor);
    else
        QCOMPARE(after.selectionStart(), after.block().position());
}

void TestEPlainTextEdit::shortcutsOnlyWhenAskedForButAlwaysAFindDialog()
{
    const auto keys = [](EPlainTextEdit& editor) {
        QStringList list;
        for (QShortcut* s : editor.findChildren<QShortcut*>())
            if (s->parent() == &editor)
                list << s->key().toString();
        list.sort();
        return list;
    };
    QPointer<EFind> dialog;
    {
        EPlainTextEdit with(true);
        QCOMPARE(keys(with), (QStringList{QStringLiteral("Ctrl+F"), QStringLiteral("Ctrl+G"), QStringLiteral("F3")}));
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QCOMPARE(with.sizeHint(), QSize(2 * screen.width() / 3, 2 * screen.height() / 3));

        auto without = shownEditor(QStringLiteral("text"), false);
        QVERIFY(keys(*without).isEmpty());
        dialog = without->getFindDialog();
        QVERIFY(dialog);
        QCOMPARE(dialog->objectName(), QStringLiteral("EPlainTextEdit"));
        QTest::keyClick(without.get(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(without->toPlainText(), QStringLiteral("text"));
        without->findFirst(); // the application's own command still works
        QVERIFY(dialog->isVisible());
    }
    QVERIFY(dialog.isNull());
}

void TestEPlainTextEdit::damagedAndHugeTextsShowWithoutACrash_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("blocks");
    QTest::addColumn<bool>("anywhere"); // wrapped anywhere, not at word boundaries
    QString nuls(64, QChar(0));
    nuls[10] = QLatin1Char('\n');
    QTest::newRow("NULs") << nuls << 2 << false;
    QTest::newRow("invalid UTF-8") << QString::fromUtf8("\xff\xfe bad \xc3\x28 \xe2\x82\nend \xf0\x28\x8c\x28") << 2 << false;
    QTest::newRow("lone surrogates") << QString(QChar(0xd800)) + QLatin1Char('\n') + QChar(0xdc00) << 2 << false;
    // Without blanks, word wrapping of a line this long takes minutes (20 MiB: see the benchmark).
    QTest::newRow("one line of 1 MiB") << QString(1 << 20, QLatin1Char('x')) << 1 << true;
    QTest::newRow("long line among short ones") << QStringLiteral("a\n") + QString(40000, QLatin1Char('y')) + QStringLiteral("\nb") << 3 << true;
}

void TestEPlainTextEdit::damagedAndHugeTextsShowWithoutACrash()
{
    QFETCH(QString, text);
    QFETCH(int, blocks);
    QFETCH(bool, anywhere);
    auto editor = shownEditor(text);
    QCOMPARE(editor->blockCount(), blocks);
    QCOMPARE(editor->wordWrapMode() == QTextOption::WrapAnywhere, anywhere);
    editor->moveCursor(QTextCursor::End);
    QCoreApplication::processEvents();
    QVERIFY(!editor->viewport()->grab().isNull());

    QStringList seen;
    ModalAnswerer answer(typeLine(seen, QStringLiteral("1")));
    editor->goToLine();
    QVERIFY2(answer.wait(), qPrintable(answer.error()));
    QCOMPARE(seen.last(), QString::number(blocks));
    QCOMPARE(editor->textCursor().selectionStart(), 0);

    // The next ordinary text wraps at word boundaries again.
    editor->setText(QStringLiteral("short"));
    QCOMPARE(editor->wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

CG_TEST_MAIN(TestEPlainTextEdit)
#include "tst_eplaintextedit.moc"
