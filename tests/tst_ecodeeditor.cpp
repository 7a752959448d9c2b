// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The declaration rule itself is tested beside the policy editor's in tst_elsptextedit.
#include "cgtest.h"
#include "modalhelper.h"
#include "textfiles.h"

#include "ecodeeditor.h"

#include <QScrollBar>
#include <QSignalSpy>

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
        QApplication::sendEvent(widget, &press);
    }
}

} // namespace

class TestECodeEditor : public QObject
{
    Q_OBJECT

private slots:
    void roundTripInTheDeclaredEncoding_data();
    void roundTripInTheDeclaredEncoding();
    void setEncodingReinterpretsTheSameBytes();
    void firstLineEditsFollowTheDeclaration_data();
    void firstLineEditsFollowTheDeclaration();
    void loadErrorsAreReportedInWords_data();
    void loadErrorsAreReportedInWords();
    void failedSaveLeavesTheOldFile_data();
    void failedSaveLeavesTheOldFile();
};

void TestECodeEditor::roundTripInTheDeclaredEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("codec");

    QTest::newRow("KOI8-R comment") << QStringLiteral("# -*- encoding: KOI8-R -*-\necho ") + russian << QByteArray("KOI8-R");
    QTest::newRow("UTF-8 xml") << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + russian
                               << QByteArray("UTF-8");
    QTest::newRow("no declaration") << russian + QStringLiteral("\n") << QByteArray("Windows-1251");
    QTest::newRow("CP866") << QStringLiteral("#encoding: IBM866\n") + russian << QByteArray("IBM866");
    QTest::newRow("binary with NULs") << QChar(0) + QStringLiteral("\x01") + russian + QStringLiteral("\n") + QChar(0)
                                             + QStringLiteral("# encoding: utf-8")
                                      << QByteArray("Windows-1251");
}

void TestECodeEditor::roundTripInTheDeclaredEncoding()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, codec);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file.txt"));
    writeFile(path, encoded(codec, text));
    ECodeEditor editor(false);
    QVERIFY(editor.loadFromFile(path));
    QCOMPARE(editor.toPlainText(), text);
    QCOMPARE(editor.getEncoding(), QString::fromLatin1(codec));
    QVERIFY(!editor.isModified());

    editor.moveCursor(QTextCursor::End);
    typeText(&editor, QString::fromUtf8(" ещё"));
    QVERIFY(editor.saveToFile(path));
    QVERIFY(!editor.isModified());
    QCOMPARE(readAll(path), encoded(codec, text + QString::fromUtf8(" ещё")));

    // A text made in memory is encoded the same way.
    editor.setText(text);
    QCOMPARE(editor.getTextRef(), encoded(codec, text));
}

void TestECodeEditor::setEncodingReinterpretsTheSameBytes()
{
    QString text = QStringLiteral("# encoding: KOI8-R\n");
    for (int i = 0; i < 300; ++i)
        text += russian + QStringLiteral(" line %1, long enough to scroll sideways in a small window\n").arg(i);
    const QByteArray bytes = encoded("KOI8-R", text);
    ECodeEditor editor(false);
    editor.setLineWrapMode(QPlainTextEdit::NoWrap);
    editor.resize(300, 200);
    editor.show();
    editor.setText(bytes.constData(), bytes.size());
    editor.verticalScrollBar()->setValue(150);
    editor.horizontalScrollBar()->setValue(40);

    editor.setEncoding(QStringLiteral("Windows-1251"));
    QCOMPARE(editor.toPlainText(), QTextCodec::codecForName("Windows-1251")->toUnicode(bytes));
    QCOMPARE(editor.verticalScrollBar()->value(), 150);
    QCOMPARE(editor.horizontalScrollBar()->value(), 40);
    QCOMPARE(editor.getDetectedEncoding(), QStringLiteral("KOI8-R"));
    // The chosen view outlives a new text; an unknown name falls back to UTF-8 with a note.
    editor.setText(bytes.constData(), bytes.size());
    QCOMPARE(editor.getEncoding(), QStringLiteral("Windows-1251"));
    editor.setEncoding(QStringLiteral("martian"));
    QCOMPARE(editor.getEncoding(), QStringLiteral("Unknown encoding, using UTF-8"));
    QCOMPARE(editor.toPlainText(), QString::fromUtf8(bytes));

    editor.setEncoding(QString());
    QCOMPARE(editor.toPlainText(), text);
    QCOMPARE(editor.getTextRef(), bytes);

    // Loading an empty file clears the view but keeps the bytes and what they declare.
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("empty")), QByteArray());
    QVERIFY(editor.loadFromFile(dir.filePath(QStringLiteral("empty"))));
    QCOMPARE(editor.toPlainText(), QString());
    QCOMPARE(editor.getHeaderLength(), 18);
    editor.setEncoding(QString());
    QCOMPARE(editor.toPlainText(), text);

    // Declared names without a codec: read and written as UTF-8, with a fixed note each time.
    const QByteArray unknown = (QStringLiteral("<?xml encoding=\"\"?>\n") + russian).toUtf8();
    editor.setText(unknown.constData(), unknown.size());
    QCOMPARE(editor.getEncoding(), QStringLiteral("Unknown encoding, using UTF-8 to open"));
    QCOMPARE(editor.toPlainText(), QString::fromUtf8(unknown));
    QCOMPARE(editor.getTextRef(), unknown);
    QCOMPARE(editor.getEncoding(), QStringLiteral("Unknown encoding, using UTF-8 to save"));
}

void TestECodeEditor::firstLineEditsFollowTheDeclaration_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("insert"); // empty: cut the rest of the line
    QTest::addColumn<int>("emitted");

    QTest::newRow("a new name") << QStringLiteral("# encoding: KOI8-R\nbody") << 12 << QStringLiteral("UTF-8 ") << 1;
    QTest::newRow("same name") << QStringLiteral("# encoding: KOI8-R\nbody") << 0 << QStringLiteral(" ") << 0;
    QTest::newRow("below the first line") << QStringLiteral("x\n# encoding: utf-8") << 3 << QStringLiteral("z") << 0;
    QTest::newRow("first line made blank") << QStringLiteral("x\n# encoding: utf-8") << 0 << QString() << 1;
    // The text's UTF-8 bytes of a no-break space are not blank, the plain text's space is.
    QTest::newRow("no-break space is blank") << QString(QChar(QChar::Nbsp)) + QStringLiteral("\n#encoding: cp866") << 0
                                             << QStringLiteral(" ") << 1;
    QTest::newRow("line separator ends the line")
        << QStringLiteral("# encoding: utf-8") + QChar(QChar::LineSeparator) + QStringLiteral("x") << 12
        << QStringLiteral("koi8-r ") << 1;
    QTest::newRow("NUL ends the name") << QStringLiteral("# encoding: ") + QChar(0) + QStringLiteral("utf-8") << 12
                                       << QStringLiteral("cp1251") << 1;
}

void TestECodeEditor::firstLineEditsFollowTheDeclaration()
{
    QFETCH(QString, text);
    QFETCH(int, position);
    QFETCH(QString, insert);
    QFETCH(int, emitted);

    ECodeEditor editor(false);
    editor.setText(text);
    const QString before = editor.getEncoding();
    QSignalSpy changed(&editor, &ECodeEditor::saveWithEncodingChanged);
    QTextCursor cursor(editor.document());
    cursor.setPosition(position);
    if (insert.isEmpty()) {
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    } else {
        cursor.insertText(insert);
    }
    QCOMPARE(changed.count(), emitted);
    // Only the first line is looked at, with the result the whole text gives.
    const QByteArray whole = editor.toPlainText().toUtf8();
    QCOMPARE(editor.getDetectedEncoding(), ECodeEditor::detectEncoding(whole.constData(), whole.size(), nullptr));
    QCOMPARE(editor.getEncoding(), before);
}

void TestECodeEditor::loadErrorsAreReportedInWords_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"missing", "directory", "unreadable", "empty path", "FIFO without a writer"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void TestECodeEditor::loadErrorsAreReportedInWords()
{
    QFETCH(QString, kind);

    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("file.txt"));
    if (kind == QLatin1String("directory"))
        path = dir.path();
    if (kind == QLatin1String("empty path"))
        path.clear();
    if (kind == QLatin1String("unreadable")) {
        writeFile(path, "# encoding: utf-8\nsecret");
        QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    }
    if (kind.startsWith(QLatin1String("FIFO")))
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);

    ECodeEditor editor(false);
    editor.setText(QStringLiteral("old text"));
    ModalAnswerer answer(QMessageBox::Ok);
    std::unique_ptr<AsNobody> nobody(kind == QLatin1String("unreadable") ? new AsNobody : nullptr);
    QVERIFY(!editor.loadFromFile(path));
    nobody.reset();
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().text, QStringLiteral("File loading error"));
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
    FullDisk disk(64);
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("keep.txt"));
    if (fullDisk) {
        if (!disk.isMounted())
            QSKIP(qPrintable(disk.reason()));
        path = disk.path("keep.txt");
    }
    writeFile(path, old);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    const QString link = QFileInfo(path).path() + QStringLiteral("/link.txt");
    QVERIFY(QFile::link(path, link));
    if (fullDisk)
        disk.fill();

    ECodeEditor editor(false);
    QVERIFY(editor.loadFromFile(link));
    editor.moveCursor(QTextCursor::End);
    editor.insertPlainText(russian.repeated(4000));
    {
        ModalAnswerer answer(QMessageBox::Ok);
        FileSizeLimit limit(fullDisk ? RLIM_INFINITY : 4096);
        QVERIFY(!editor.saveToFile(link));
        QVERIFY2(answer.done(), qPrintable(answer.error()));
        QCOMPARE(answer.seen().text, QStringLiteral("File saving error"));
    }
    QVERIFY(editor.isModified());
    QCOMPARE(readAll(path), old);
    const QStringList files = QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    QCOMPARE(files.size(), fullDisk ? 3 : 2); // no temporary file left behind

    // Once there is room, the save goes through the link to its target and keeps the permissions.
    QFile::remove(disk.path("filler"));
    editor.document()->undo();
    QVERIFY(editor.saveToFile(link));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(readAll(path), old);
    struct stat st;
    QCOMPARE(::stat(QFile::encodeName(path).constData(), &st), 0);
    QCOMPARE(int(st.st_mode & 07777), 0640);
}

CG_TEST_MAIN(TestECodeEditor)
#include "tst_ecodeeditor.moc"
