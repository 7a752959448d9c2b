// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "fsfault.h"
#include "modalhelper.h"
#include "textfiles.h"

#include "ecodeeditor.h"

#include <QFile>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCodec>

#include <memory>
#include <sys/stat.h>

using namespace TextFiles;

namespace {

const QString russian = QString::fromUtf8("Привет, мир");

/// Types \a text as key presses; unlike QTest::keyClicks it takes letters outside ASCII.
void typeText(QWidget* widget, const QString& text)
{
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QApplication::sendEvent(widget, &press);
        QApplication::sendEvent(widget, &release);
    }
}

/// What detection over the whole plain text gives, as the editor must keep it after every edit.
QString detectedOverWholeText(ECodeEditor& editor)
{
    const QByteArray bytes = editor.toPlainText().toUtf8();
    return ECodeEditor::detectEncoding(bytes.constData(), bytes.size(), nullptr);
}

/// Runs \a action, which must show exactly one error box, and returns its text.
template <typename Action>
QString errorShownBy(Action action, bool& result)
{
    ModalAnswerer answer(QMessageBox::Ok);
    result = action();
    if (!answer.done())
        return QStringLiteral("<no box: %1>").arg(answer.error());
    return answer.seen().text;
}

} // namespace

class TestECodeEditor : public QObject
{
    Q_OBJECT

private slots:
    void detectEncoding_data();
    void detectEncoding();
    void loadDecodesAsTheFileDeclares_data();
    void loadDecodesAsTheFileDeclares();
    void roundTripKeepsTheDeclaredEncoding_data();
    void roundTripKeepsTheDeclaredEncoding();
    void viewingInAnotherEncodingKeepsTheBytes();
    void setEncodingKeepsTheScrollPosition();
    void unknownEncodingsFallBackToUtf8();
    void textFromMemoryIsEncodedAsItDeclares();
    void editingTheDeclarationSignalsOnce();
    void firstLineDetectionMatchesTheWholeText_data();
    void firstLineDetectionMatchesTheWholeText();
    void emptyFileKeepsThePreviousBytes();
    void binaryFilesLoadWithoutHarm();
    void loadErrorsAreReportedInWords_data();
    void loadErrorsAreReportedInWords();
    void failedSaveLeavesTheOldFile_data();
    void failedSaveLeavesTheOldFile();
    void saveKeepsPermissionsAndFollowsLinks();
};

void TestECodeEditor::detectEncoding_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("encoding");
    QTest::addColumn<int>("headerLength");

    const QString fallback = QStringLiteral("Windows-1251");
    QTest::newRow("empty") << QByteArray() << fallback << 0;
    QTest::newRow("only blanks") << QByteArray(" \t\r\n \n") << fallback << 0;
    QTest::newRow("blank lines, then a comment")
        << QByteArray("  \n\n# -*- encoding: KOI8-R -*-\nprint 1\n") << QStringLiteral("KOI8-R") << 26;
    QTest::newRow("marker anywhere in the comment") << QByteArray("#!/bin/sh  vim: encoding: cp866")
                                                    << QStringLiteral("cp866") << 31;
    QTest::newRow("name ends at a tab") << QByteArray("#encoding:\tutf-8\tmore") << QStringLiteral("utf-8") << 21;
    QTest::newRow("name ends at NUL, and so does the line")
        << QByteArray("# encoding: koi8-r\0tail", 23) << QStringLiteral("koi8-r") << 18;
    QTest::newRow("CR ends the line") << QByteArray("# encoding: ibm866\r\nx") << QStringLiteral("ibm866") << 18;
    QTest::newRow("line ends after the marker") << QByteArray("# encoding:\nutf-8") << fallback << 11;
    QTest::newRow("only blanks after the marker") << QByteArray("# encoding:  \t\nutf-8") << fallback << 14;
    QTest::newRow("equals sign is not the marker") << QByteArray("# encoding=utf-8") << fallback << 16;
    QTest::newRow("comment without a marker") << QByteArray("# coding: utf-8") << fallback << 15;
    QTest::newRow("declaration on the second line") << QByteArray("hello\n# encoding: utf-8\n") << fallback << 5;
    QTest::newRow("xml, double quotes")
        << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>") << QStringLiteral("UTF-8") << 38;
    QTest::newRow("xml after blank lines") << QByteArray("\r\n\r\n<?xml encoding=\"KOI8-R\"?>")
                                           << QStringLiteral("KOI8-R") << 25;
    QTest::newRow("xml, single quotes") << QByteArray("<?xml version='1.0' encoding='UTF-8'?>") << fallback << 38;
    QTest::newRow("xml with a tab after the tag") << QByteArray("<?xml\tencoding=\"UTF-8\"?>") << fallback << 24;
    QTest::newRow("xml, empty name") << QByteArray("<?xml encoding=\"\"?>") << QString() << 19;
    QTest::newRow("xml, line ends after the quote") << QByteArray("<?xml encoding=\"\nUTF-8\"") << fallback << 16;
    QTest::newRow("xml, no closing quote") << QByteArray("<?xml encoding=\"UTF-8?>") << fallback << 23;
    QTest::newRow("bare <?xml") << QByteArray("<?xml") << fallback << 5;
    QTest::newRow("plain first line") << QByteArray("key = value\n# encoding: utf-8") << fallback << 11;
}

void TestECodeEditor::detectEncoding()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, encoding);
    QFETCH(int, headerLength);

    int length = -1;
    QCOMPARE(ECodeEditor::detectEncoding(data.constData(), data.size(), &length), encoding);
    QCOMPARE(length, headerLength);
}

void TestECodeEditor::loadDecodesAsTheFileDeclares_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoding");

    const QString koi = QStringLiteral("# -*- encoding: KOI8-R -*-\necho ") + russian;
    QTest::newRow("KOI8-R comment") << encoded("KOI8-R", koi) << koi << QStringLiteral("KOI8-R");
    const QString xml = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<t>") + russian + QStringLiteral("</t>");
    QTest::newRow("UTF-8 xml") << xml.toUtf8() << xml << QStringLiteral("UTF-8");
    const QString plain = russian + QStringLiteral("\nsecond line");
    QTest::newRow("no declaration") << encoded("Windows-1251", plain) << plain << QStringLiteral("Windows-1251");
    const QString dos = QStringLiteral("#encoding: IBM866\n") + russian;
    QTest::newRow("CP866 comment") << encoded("IBM866", dos) << dos << QStringLiteral("IBM866");
}

void TestECodeEditor::loadDecodesAsTheFileDeclares()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QFETCH(QString, encoding);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file.txt"));
    writeFile(path, bytes);
    ECodeEditor editor(false);
    QVERIFY(editor.loadFromFile(path));
    QCOMPARE(editor.toPlainText(), text);
    QCOMPARE(editor.getEncoding(), encoding);
    QCOMPARE(editor.getDetectedEncoding(), encoding);
    QVERIFY(!editor.isModified());
}

void TestECodeEditor::roundTripKeepsTheDeclaredEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("codec");

    QTest::newRow("KOI8-R") << QStringLiteral("# encoding: KOI8-R\n") + russian << QByteArray("KOI8-R");
    QTest::newRow("UTF-8 xml") << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + russian
                               << QByteArray("UTF-8");
    QTest::newRow("Windows-1251 by default") << russian + QStringLiteral("\n") << QByteArray("Windows-1251");
    QTest::newRow("ISO-8859-5") << QStringLiteral("# encoding: ISO-8859-5\n") + russian << QByteArray("ISO-8859-5");
}

void TestECodeEditor::roundTripKeepsTheDeclaredEncoding()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, codec);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("round.txt"));
    writeFile(path, encoded(codec, text));
    ECodeEditor editor(false);
    QVERIFY(editor.loadFromFile(path));

    editor.moveCursor(QTextCursor::End);
    typeText(&editor, QString::fromUtf8(" ещё"));
    QVERIFY(editor.isModified());
    QVERIFY(editor.saveToFile(path));
    QVERIFY(!editor.isModified());
    QCOMPARE(readAll(path), encoded(codec, text + QString::fromUtf8(" ещё")));
}

void TestECodeEditor::viewingInAnotherEncodingKeepsTheBytes()
{
    const QString text = QStringLiteral("# encoding: KOI8-R\n") + russian;
    const QByteArray bytes = encoded("KOI8-R", text);
    ECodeEditor editor(false);
    editor.setText(bytes.constData(), bytes.size());

    editor.setEncoding(QStringLiteral("Windows-1251"));
    QCOMPARE(editor.getEncoding(), QStringLiteral("Windows-1251"));
    QCOMPARE(editor.getDetectedEncoding(), QStringLiteral("KOI8-R"));
    QCOMPARE(editor.toPlainText(), QTextCodec::codecForName("Windows-1251")->toUnicode(bytes));

    // A new text of the same file keeps the chosen view.
    editor.setText(bytes.constData(), bytes.size());
    QCOMPARE(editor.getEncoding(), QStringLiteral("Windows-1251"));

    editor.setEncoding(QString());
    QCOMPARE(editor.getEncoding(), QStringLiteral("KOI8-R"));
    QCOMPARE(editor.toPlainText(), text);
    QCOMPARE(editor.getTextRef(), bytes);
}

void TestECodeEditor::setEncodingKeepsTheScrollPosition()
{
    QString text = QStringLiteral("# encoding: KOI8-R\n");
    for (int i = 0; i < 500; ++i)
        text += russian + QStringLiteral(" line %1 with some more words to make it long enough to scroll sideways\n").arg(i);
    const QByteArray bytes = encoded("KOI8-R", text);
    ECodeEditor editor(false);
    editor.setLineWrapMode(QPlainTextEdit::NoWrap);
    editor.resize(300, 200);
    editor.show();
    editor.setText(bytes.constData(), bytes.size());
    QVERIFY(editor.verticalScrollBar()->maximum() > 300);
    editor.verticalScrollBar()->setValue(250);
    editor.horizontalScrollBar()->setValue(40);

    editor.setEncoding(QStringLiteral("UTF-8"));
    QCOMPARE(editor.verticalScrollBar()->value(), 250);
    QCOMPARE(editor.horizontalScrollBar()->value(), 40);
}

void TestECodeEditor::unknownEncodingsFallBackToUtf8()
{
    const QString text = QStringLiteral("# encoding: no-such-codec\n") + russian;
    const QByteArray utf8 = text.toUtf8();
    ECodeEditor editor(false);
    editor.setText(utf8.constData(), utf8.size());
    QCOMPARE(editor.getEncoding(), QStringLiteral("Unknown encoding, using UTF-8 to open"));
    QCOMPARE(editor.getDetectedEncoding(), QStringLiteral("no-such-codec"));
    QCOMPARE(editor.toPlainText(), text);

    editor.setEncoding(QStringLiteral("bogus"));
    QCOMPARE(editor.getEncoding(), QStringLiteral("Unknown encoding, using UTF-8"));
    QCOMPARE(editor.toPlainText(), text);

    QCOMPARE(editor.getTextRef(), utf8);
    QCOMPARE(editor.getEncoding(), QStringLiteral("Unknown encoding, using UTF-8 to save"));

    // An empty xml declaration is an unknown codec as well.
    const QByteArray empty = QByteArray("<?xml encoding=\"\"?>\n") + russian.toUtf8();
    editor.setText(empty.constData(), empty.size());
    QCOMPARE(editor.getDetectedEncoding(), QString());
    QCOMPARE(editor.toPlainText(), QString::fromUtf8(empty));
}

void TestECodeEditor::textFromMemoryIsEncodedAsItDeclares()
{
    ECodeEditor editor(false);
    const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"KOI8-R\"?>\n") + russian;
    editor.setText(text);
    QCOMPARE(editor.toPlainText(), text);
    QCOMPARE(editor.getEncoding(), QStringLiteral("KOI8-R"));
    QByteArray out;
    editor.getText(out);
    QCOMPARE(out, encoded("KOI8-R", text));
}

void TestECodeEditor::editingTheDeclarationSignalsOnce()
{
    const QByteArray bytes = encoded("KOI8-R", QStringLiteral("# encoding: KOI8-R\n") + russian + QStringLiteral("\n"));
    ECodeEditor editor(false);
    editor.setText(bytes.constData(), bytes.size());
    QSignalSpy changed(&editor, &ECodeEditor::saveWithEncodingChanged);

    // Typing below the first line never touches the declaration.
    editor.moveCursor(QTextCursor::End);
    QTest::keyClicks(&editor, QStringLiteral("# encoding: UTF-8"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(editor.getDetectedEncoding(), QStringLiteral("KOI8-R"));

    // Replace "KOI8-R" in the first line by "UTF-8", key by key.
    editor.moveCursor(QTextCursor::Start);
    editor.moveCursor(QTextCursor::EndOfLine);
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(&editor, Qt::Key_Backspace);
    QTest::keyClicks(&editor, QStringLiteral("UTF-8"));
    // Each intermediate name ("KOI8-", ..., "", "U", ...) is a change of the declared name.
    QVERIFY(changed.count() > 0);
    const int afterTyping = changed.count();
    QCOMPARE(editor.getDetectedEncoding(), QStringLiteral("UTF-8"));
    QCOMPARE(editor.getEncoding(), QStringLiteral("KOI8-R"));

    // An edit of the first line that keeps the name signals nothing more.
    editor.moveCursor(QTextCursor::Start);
    QTest::keyClick(&editor, Qt::Key_Space);
    QCOMPARE(changed.count(), afterTyping);

    // One pasted replacement is one change.
    QTextCursor cursor(editor.document());
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, 5);
    cursor.insertText(QStringLiteral("cp866"));
    QCOMPARE(changed.count(), afterTyping + 1);
}

void TestECodeEditor::firstLineDetectionMatchesTheWholeText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("insert");

    QTest::newRow("typing a name") << QStringLiteral("# encoding: \nbody") << 12 << QStringLiteral("koi8-r");
    QTest::newRow("blank lines before") << QStringLiteral("\n \n# encoding: utf-8\nbody") << 0 << QStringLiteral("x");
    QTest::newRow("making the first line blank") << QStringLiteral("x\n# encoding: utf-8") << 0 << QString();
    QTest::newRow("no-break space is a blank") << QString(QChar(QChar::Nbsp)) + QStringLiteral("\n#encoding: cp866")
                                               << 0 << QStringLiteral(" ");
    QTest::newRow("line separator ends the line")
        << QStringLiteral("# encoding: utf-8") + QChar(QChar::LineSeparator) + QStringLiteral("x") << 12
        << QStringLiteral("koi8-r ");
    QTest::newRow("NUL ends the name") << QStringLiteral("# encoding: ") + QChar(0) + QStringLiteral("utf-8") << 12
                                       << QStringLiteral("cp1251");
}

void TestECodeEditor::firstLineDetectionMatchesTheWholeText()
{
    QFETCH(QString, text);
    QFETCH(int, position);
    QFETCH(QString, insert);

    ECodeEditor editor(false);
    editor.setText(text);
    QTextCursor cursor(editor.document());
    cursor.setPosition(position);
    if (insert.isEmpty()) {
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    } else {
        cursor.insertText(insert);
    }
    QCOMPARE(editor.getDetectedEncoding(), detectedOverWholeText(editor));
}

void TestECodeEditor::emptyFileKeepsThePreviousBytes()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("empty.txt"));
    writeFile(path, QByteArray());
    const QString text = QStringLiteral("# encoding: KOI8-R\n") + russian;
    ECodeEditor editor(false);
    editor.setText(encoded("KOI8-R", text).constData(), encoded("KOI8-R", text).size());

    QVERIFY(editor.loadFromFile(path));
    QCOMPARE(editor.toPlainText(), QString());
    QCOMPARE(editor.getDetectedEncoding(), QStringLiteral("KOI8-R"));
    QCOMPARE(editor.getHeaderLength(), 18);
    editor.setEncoding(QString());
    QCOMPARE(editor.toPlainText(), text);
}

void TestECodeEditor::binaryFilesLoadWithoutHarm()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("blob.bin"));
    QByteArray blob("\0\x01\xff\xfe# encoding: utf-8\n", 22);
    for (int i = 0; i < 4096; ++i)
        blob += char(i * 7);
    writeFile(path, blob);

    ECodeEditor editor(false);
    QVERIFY(editor.loadFromFile(path));
    QCOMPARE(editor.getEncoding(), QStringLiteral("Windows-1251"));
    // A leading NUL is not blank: it starts the first line, which runs on to the line feed.
    QCOMPARE(editor.getHeaderLength(), 21);
    QCOMPARE(editor.toPlainText().size(), QTextCodec::codecForName("Windows-1251")->toUnicode(blob).size());

    // Invalid UTF-8 under a UTF-8 declaration becomes replacement characters, not a failure.
    const QByteArray bad("# encoding: UTF-8\n\xc3\x28\xa0\xa1", 22);
    editor.setText(bad.constData(), bad.size());
    QCOMPARE(editor.getEncoding(), QStringLiteral("UTF-8"));
    QVERIFY(editor.toPlainText().contains(QChar(QChar::ReplacementCharacter)));
}

void TestECodeEditor::loadErrorsAreReportedInWords_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("directory") << QStringLiteral("directory");
    QTest::newRow("unreadable") << QStringLiteral("unreadable");
    QTest::newRow("empty path") << QStringLiteral("empty");
    QTest::newRow("FIFO without a writer") << QStringLiteral("fifo");
}

void TestECodeEditor::loadErrorsAreReportedInWords()
{
    QFETCH(QString, kind);

    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("file.txt"));
    if (kind == QLatin1String("directory"))
        path = dir.path();
    if (kind == QLatin1String("empty"))
        path.clear();
    if (kind == QLatin1String("fifo"))
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    if (kind == QLatin1String("unreadable")) {
        writeFile(path, "# encoding: utf-8\nsecret");
        QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0), 0);
    }

    ECodeEditor editor(false);
    editor.setText(QStringLiteral("old text"));
    bool loaded = true;
    QString shown;
    {
        std::unique_ptr<FsFault::AsNobody> nobody(kind == QLatin1String("unreadable") ? new FsFault::AsNobody : nullptr);
        shown = errorShownBy([&] { return editor.loadFromFile(path); }, loaded);
    }
    QVERIFY(!loaded);
    QCOMPARE(shown, QStringLiteral("File loading error"));
    QCOMPARE(editor.toPlainText(), QString());
}

void TestECodeEditor::failedSaveLeavesTheOldFile_data()
{
    QTest::addColumn<bool>("fullDisk");
    QTest::newRow("full disk") << true;
    QTest::newRow("write error part-way") << false;
}

void TestECodeEditor::failedSaveLeavesTheOldFile()
{
    QFETCH(bool, fullDisk);

    const QByteArray old = encoded("KOI8-R", QStringLiteral("# encoding: KOI8-R\n") + russian);
    QString big = QStringLiteral("# encoding: KOI8-R\n");
    for (int i = 0; i < 4000; ++i)
        big += russian + QLatin1Char('\n');

    FsFault::SmallDisk disk(64);
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("keep.txt"));
    if (fullDisk) {
        if (!disk.mounted())
            QSKIP(qPrintable(disk.reason()));
        path = disk.path(QStringLiteral("keep.txt"));
    }
    writeFile(path, old);
    if (fullDisk)
        disk.fill();

    ECodeEditor editor(false);
    QVERIFY(editor.loadFromFile(path));
    editor.selectAll();
    editor.insertPlainText(big);
    QVERIFY(editor.isModified());

    bool saved = true;
    QString shown;
    {
        FsFault::FileSizeLimit limit(fullDisk ? RLIM_INFINITY : 4096);
        shown = errorShownBy([&] { return editor.saveToFile(path); }, saved);
    }
    QVERIFY(!saved);
    QCOMPARE(shown, QStringLiteral("File saving error"));
    QVERIFY(editor.isModified());
    QCOMPARE(readAll(path), old);
    const QStringList left = QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden);
    QVERIFY2(left.size() == (fullDisk ? 2 : 1), qPrintable(left.join(QLatin1Char(' '))));
}

void TestECodeEditor::saveKeepsPermissionsAndFollowsLinks()
{
    QTemporaryDir dir;
    const QString target = dir.filePath(QStringLiteral("target.txt"));
    const QString link = dir.filePath(QStringLiteral("link.txt"));
    writeFile(target, "old");
    QCOMPARE(::chmod(QFile::encodeName(target).constData(), 0640), 0);
    QVERIFY(QFile::link(target, link));

    ECodeEditor editor(false);
    editor.setText(QStringLiteral("# encoding: utf-8\n") + russian);
    QVERIFY(editor.saveToFile(link));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(readAll(target), (QStringLiteral("# encoding: utf-8\n") + russian).toUtf8());
    struct stat st;
    QCOMPARE(::stat(QFile::encodeName(target).constData(), &st), 0);
    QCOMPARE(int(st.st_mode & 07777), 0640);
}

CG_TEST_MAIN(TestECodeEditor)
#include "tst_ecodeeditor.moc"
