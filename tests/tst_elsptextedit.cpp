// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"
#include "textfiles.h"

#include "common_core.h"
#include "ecodeeditor.h"
#include "elsptextedit.h"
#include "eutils.h"

#include <memory>

using namespace TextFiles;

namespace {
const QString russian = QString::fromUtf8("Политика безопасности");
const QString w1251 = QStringLiteral("Windows-1251");
} // namespace

class TestELSPTextEdit : public QObject
{
    Q_OBJECT

private slots:
    void bothDeclarationRules_data();
    void bothDeclarationRules();
    void saveWritesTheDeclaredOrDefaultEncoding_data();
    void saveWritesTheDeclaredOrDefaultEncoding();
    void fileErrorsNameTheCause_data();
    void fileErrorsNameTheCause();
};

void TestELSPTextEdit::bothDeclarationRules_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("lsp");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("headerLength"); // the code editor's

    const QString w = w1251;
    const auto row = [](const char* name, const QByteArray& data, const QString& lsp, const QString& code, int header) {
        QTest::newRow(name) << data << lsp << code << header;
    };
    row("empty", QByteArray(), w, w, 0);
    row("only blanks", " \t\r\n \n", w, w, 0);
    row("fewer than 10 bytes", "#encoding", w, w, 9);
    row("hash, blanks, colon", "#  encoding: koi8-r\n", "koi8-r", "koi8-r", 19);
    row("blank lines first", "  \n\n# -*- encoding: KOI8-R -*-\nx", w, "KOI8-R", 26);
    row("word after -*-", "# -*- encoding: koi8-r -*-", w, "koi8-r", 26);
    row("equals sign", "#encoding=koi8-r\n", "koi8-r", w, 16);
    row("mixed separators", "# encoding := \t utf-8", "utf-8", w, 21);
    row("name up to a semicolon", "#encoding: cp866;x", "cp866", "cp866;x", 18);
    row("quoted name", "#encoding: \"utf-8\"\n", w, "\"utf-8\"", 18);
    // Blanks include line ends for the policy rule, not for the code editor's.
    row("nothing after the marker", "# encoding:\nutf-8", "utf-8", w, 11);
    row("only blanks after the marker", "# encoding:  \t\nutf-8", "utf-8", w, 14);
    row("NUL ends name and line", QByteArray("# encoding: koi8-r\0tail", 23), "koi8-r", "koi8-r", 18);
    row("leading NUL starts the line", QByteArray("\0# encoding: utf-8\nx", 20), w, w, 18);
    row("second line", "hello there\n# encoding: utf-8\n", w, w, 11);
    row("xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>", "UTF-8", "UTF-8", 38);
    row("xml, single quotes", "<?xml version='1.0' encoding='UTF-8'?>", w, w, 38);
    row("xml, tab after the tag", "<?xml\tencoding=\"KOI8-R\"?>", "KOI8-R", w, 25);
    row("xml, after the first >", "<?xml version=\"1.0\"?><a encoding=\"KOI8-R\"/>", w, "KOI8-R", 43);
    row("xml, on the next line", "<?xml version=\"1.0\"\n encoding=\"cp866\"?>", "cp866", w, 19);
    row("xml, empty name", "<?xml encoding=\"\"?>", w, QString(), 19);
    row("xml, no closing quote", "<?xml encoding=\"koi8-r", "koi8-r", w, 22);
    row("xml, marker ends the line", "<?xml encoding=\"\nUTF-8\"", "UTF-8", w, 16);
    row("name beyond ASCII", "#encoding: koi8\xe9r", "koi8", QString::fromUtf8("koi8\xe9r"), 17);
}

void TestELSPTextEdit::bothDeclarationRules()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, lsp);
    QFETCH(QString, code);
    QFETCH(int, headerLength);

    QCOMPARE(ELSPTextEdit::detectEncoding(data.constData(), data.size(), w1251), lsp);
    int length = -1;
    QCOMPARE(ECodeEditor::detectEncoding(data.constData(), data.size(), &length), code);
    QCOMPARE(length, headerLength);
}

void TestELSPTextEdit::saveWritesTheDeclaredOrDefaultEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("defaultEncoding");
    QTest::addColumn<QByteArray>("codec");

    QTest::newRow("policy default") << russian << ELSPTextEdit::defaultEncodingForLSP << QByteArray("Windows-1251");
    QTest::newRow("file default") << russian << ELSPTextEdit::defaultEncodingForFile << QByteArray("UTF-8");
    QTest::newRow("unknown default means UTF-8") << russian << QStringLiteral("martian") << QByteArray("UTF-8");
    QTest::newRow("declared utf-8") << QStringLiteral("# encoding: utf-8\n") + russian << w1251 << QByteArray("UTF-8");
    QTest::newRow("declared KOI8-R") << QStringLiteral("<?xml version=\"1.0\" encoding=\"KOI8-R\"?>\n") + russian
                                     << ELSPTextEdit::defaultEncodingForCertificate << QByteArray("KOI8-R");
    // Cyrillic reads as '?' to the scan, as in a Latin-1 copy: the word does not follow the blanks.
    QTest::newRow("Cyrillic before the word") << QStringLiteral("# ") + russian + QStringLiteral(" encoding: koi8-r")
                                              << w1251 << QByteArray("Windows-1251");
}

void TestELSPTextEdit::saveWritesTheDeclaredOrDefaultEncoding()
{
    QFETCH(QString, text);
    QFETCH(QString, defaultEncoding);
    QFETCH(QByteArray, codec);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("policy.lsp"));
    ELSPTextEdit editor(false);
    editor.insertPlainText(text);
    QVERIFY(editor.saveToFile(path, defaultEncoding));
    QVERIFY(!editor.isModified());
    QCOMPARE(readAll(path), encoded(codec, text));

    // Loading reads it back the same way, through each setText overload.
    editor.clear();
    QVERIFY(editor.loadFromFile(path, defaultEncoding));
    QCOMPARE(editor.toPlainText(), text);
    editor.setText(Bag(readAll(path).constData(), size_t(readAll(path).size())), defaultEncoding);
    QCOMPARE(editor.toPlainText(), text);
    QVERIFY(!editor.isModified());

    // An empty file keeps the text.
    writeFile(path, QByteArray());
    QVERIFY(editor.loadFromFile(path, defaultEncoding));
    QCOMPARE(editor.toPlainText(), text);
    QCOMPARE(EUtils::getWaitCursorCounter(), 0);
}

void TestELSPTextEdit::fileErrorsNameTheCause_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("cause");
    QTest::newRow("missing") << QStringLiteral("missing") << QStringLiteral("No such file");
    QTest::newRow("directory") << QStringLiteral("directory") << QStringLiteral("directory");
    QTest::newRow("unreadable") << QStringLiteral("unreadable") << QStringLiteral("denied");
    QTest::newRow("100,000,001 bytes") << QStringLiteral("oversized") << QStringLiteral("too large");
    QTest::newRow("save on a full disk") << QStringLiteral("full") << QStringLiteral("space");
}

void TestELSPTextEdit::fileErrorsNameTheCause()
{
    QFETCH(QString, kind);
    QFETCH(QString, cause);

    QTemporaryDir dir;
    FullDisk disk(64);
    QString path = dir.filePath(QStringLiteral("policy.lsp"));
    const QByteArray old = encoded("Windows-1251", russian);
    if (kind == QLatin1String("directory"))
        path = dir.path();
    if (kind == QLatin1String("unreadable")) {
        writeFile(path, old);
        QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    }
    if (kind == QLatin1String("oversized")) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64(ELSPTextEdit::maxFileSize) + 1));
    }
    if (kind == QLatin1String("full")) {
        if (!disk.isMounted())
            QSKIP(qPrintable(disk.reason()));
        path = disk.path("policy.lsp");
        writeFile(path, old);
        disk.fill();
    }

    ELSPTextEdit editor(false);
    editor.insertPlainText(russian.repeated(2000));
    ModalAnswerer answer(QMessageBox::Ok);
    if (kind == QLatin1String("full")) {
        QVERIFY(!editor.saveToFile(path, w1251));
        QVERIFY(editor.isModified());
        QCOMPARE(readAll(path), old);
    } else {
        std::unique_ptr<AsNobody> nobody(kind == QLatin1String("unreadable") ? new AsNobody : nullptr);
        QVERIFY(!editor.loadFromFile(path, w1251));
        QCOMPARE(editor.toPlainText(), russian.repeated(2000));
    }
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QVERIFY2(answer.seen().text.contains(cause), qPrintable(answer.seen().text));
    QCOMPARE(EUtils::getWaitCursorCounter(), 0);
}

CG_TEST_MAIN(TestELSPTextEdit)
#include "tst_elsptextedit.moc"
