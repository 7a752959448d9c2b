// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "fsfault.h"
#include "modalhelper.h"
#include "textfiles.h"

#include "common_core.h"
#include "ecodeeditor.h"
#include "elsptextedit.h"
#include "eutils.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

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
    void detectEncoding_data();
    void detectEncoding();
    void defaultsPerKindOfText();
    void setTextOverloadsAgree();
    void saveWritesTheDeclaredOrDefaultEncoding_data();
    void saveWritesTheDeclaredOrDefaultEncoding();
    void loadRoundTrip();
    void emptyFileKeepsTheText();
    void loadErrorsNameTheCause_data();
    void loadErrorsNameTheCause();
    void failedSaveLeavesTheOldFile();
};

void TestELSPTextEdit::detectEncoding_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("encoding");
    // What the code editor's rule says about the same bytes: the rows where they differ matter most.
    QTest::addColumn<QString>("codeEditor");

    QTest::newRow("fewer than 10 bytes") << QByteArray("#encoding") << w1251 << w1251;
    QTest::newRow("9 bytes with a name") << QByteArray("#coding=x") << w1251 << w1251;
    QTest::newRow("hash, blanks, colon") << QByteArray("#  encoding: koi8-r\n") << QStringLiteral("koi8-r")
                                         << QStringLiteral("koi8-r");
    QTest::newRow("hash, equals sign") << QByteArray("#encoding=koi8-r\n") << QStringLiteral("koi8-r") << w1251;
    QTest::newRow("separators mixed") << QByteArray("# encoding := \t utf-8") << QStringLiteral("utf-8")
                                      << w1251;
    QTest::newRow("word not right after the blanks") << QByteArray("# -*- encoding: koi8-r -*-") << w1251
                                                     << QStringLiteral("koi8-r");
    QTest::newRow("name stops at a semicolon") << QByteArray("#encoding: cp866;charset") << QStringLiteral("cp866")
                                               << QStringLiteral("cp866;charset");
    QTest::newRow("name stops at a quote") << QByteArray("#encoding: \"utf-8\"\n") << w1251
                                           << QStringLiteral("\"utf-8\"");
    QTest::newRow("nothing after the separators") << QByteArray("#encoding:  \t ") << w1251 << w1251;
    QTest::newRow("leading blank line") << QByteArray("\n#encoding: koi8-r\n") << w1251 << QStringLiteral("koi8-r");
    QTest::newRow("xml, double quotes")
        << QByteArray("<?xml version=\"1.0\" encoding=\"KOI8-R\"?>") << QStringLiteral("KOI8-R")
        << QStringLiteral("KOI8-R");
    QTest::newRow("xml, single quotes") << QByteArray("<?xml version='1.0' encoding='KOI8-R'?>") << w1251 << w1251;
    QTest::newRow("xml, tab after the tag") << QByteArray("<?xml\tencoding=\"KOI8-R\"?>") << QStringLiteral("KOI8-R")
                                            << w1251;
    QTest::newRow("xml, declaration after the first >")
        << QByteArray("<?xml version=\"1.0\"?><a encoding=\"KOI8-R\"/>") << w1251 << QStringLiteral("KOI8-R");
    QTest::newRow("xml, declaration on a later line before any >")
        << QByteArray("<?xml version=\"1.0\"\n encoding=\"cp866\"?>") << QStringLiteral("cp866") << w1251;
    QTest::newRow("xml, no closing quote needed") << QByteArray("<?xml encoding=\"koi8-r") << QStringLiteral("koi8-r")
                                                  << w1251;
    QTest::newRow("xml, the word at the very end") << QByteArray("<?xml ver encoding") << w1251 << w1251;
    QTest::newRow("not a declaration") << QByteArray("policy { encoding: utf-8 }") << w1251 << w1251;
    QTest::newRow("name bytes beyond ASCII stop the name")
        << QByteArray("#encoding: koi8\xe9r") << QStringLiteral("koi8") << QString::fromUtf8("koi8\xe9r");
}

void TestELSPTextEdit::detectEncoding()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, encoding);
    QFETCH(QString, codeEditor);

    QCOMPARE(ELSPTextEdit::detectEncoding(data.constData(), data.size(), w1251), encoding);
    QCOMPARE(ECodeEditor::detectEncoding(data.constData(), data.size(), nullptr), codeEditor);
}

void TestELSPTextEdit::defaultsPerKindOfText()
{
    QCOMPARE(ELSPTextEdit::defaultEncodingForLSP, QStringLiteral("Windows-1251"));
    for (const QString* kind : {&ELSPTextEdit::defaultEncodingForFile, &ELSPTextEdit::defaultEncodingForCustomLSP,
                                &ELSPTextEdit::defaultEncodingForDescriptor,
                                &ELSPTextEdit::defaultEncodingForCertificate})
        QCOMPARE(*kind, QStringLiteral("utf-8"));

    // The default decides only for texts that declare nothing.
    const QByteArray plain = encoded("Windows-1251", russian);
    ELSPTextEdit editor(false);
    editor.setText(plain, ELSPTextEdit::defaultEncodingForLSP);
    QCOMPARE(editor.toPlainText(), russian);
    editor.setText(plain, ELSPTextEdit::defaultEncodingForFile);
    QCOMPARE(editor.toPlainText(), QString::fromUtf8(plain));
    // An unknown or empty default silently means UTF-8.
    editor.setText(russian.toUtf8(), QStringLiteral("no-such-codec"));
    QCOMPARE(editor.toPlainText(), russian);
    editor.setText(russian.toUtf8(), QString());
    QCOMPARE(editor.toPlainText(), russian);
}

void TestELSPTextEdit::setTextOverloadsAgree()
{
    const QByteArray bytes = encoded("KOI8-R", QStringLiteral("#encoding=koi8-r\n") + russian);
    ELSPTextEdit a(false), b(false), c(false);
    a.setText(bytes.constData(), bytes.size(), w1251);
    b.setText(bytes, w1251);
    c.setText(Bag(bytes.constData(), size_t(bytes.size())), w1251);
    QCOMPARE(a.toPlainText(), QStringLiteral("#encoding=koi8-r\n") + russian);
    QCOMPARE(b.toPlainText(), a.toPlainText());
    QCOMPARE(c.toPlainText(), a.toPlainText());
    QVERIFY(!a.isModified() && !b.isModified() && !c.isModified());

    b.setText(QByteArray(), w1251);
    c.setText(Bag(), w1251);
    QCOMPARE(b.toPlainText(), QString());
    QCOMPARE(c.toPlainText(), QString());
}

void TestELSPTextEdit::saveWritesTheDeclaredOrDefaultEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("defaultEncoding");
    QTest::addColumn<QByteArray>("codec");

    QTest::newRow("no declaration, policy default") << russian << w1251 << QByteArray("Windows-1251");
    QTest::newRow("comment declares utf-8") << QStringLiteral("# encoding: utf-8\n") + russian << w1251
                                            << QByteArray("UTF-8");
    QTest::newRow("xml declares KOI8-R") << QStringLiteral("<?xml version=\"1.0\" encoding=\"KOI8-R\"?>\n") + russian
                                         << ELSPTextEdit::defaultEncodingForFile << QByteArray("KOI8-R");
    // Cyrillic in the first line reads as '?' to the scan, exactly as a Latin-1 copy would.
    QTest::newRow("Cyrillic before the word") << QStringLiteral("#") + russian + QStringLiteral(" encoding: koi8-r")
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
    QVERIFY(editor.isModified());
    QVERIFY(editor.saveToFile(path, defaultEncoding));
    QVERIFY(!editor.isModified());
    QCOMPARE(readAll(path), encoded(codec, text));
    QCOMPARE(EUtils::getWaitCursorCounter(), 0);
}

void TestELSPTextEdit::loadRoundTrip()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("policy.lsp"));
    const QString text = QStringLiteral("#encoding: koi8-r\n") + russian + QStringLiteral("\n");
    writeFile(path, encoded("KOI8-R", text));

    ELSPTextEdit editor(false);
    QVERIFY(editor.loadFromFile(path, w1251));
    QCOMPARE(editor.toPlainText(), text);
    editor.moveCursor(QTextCursor::End);
    editor.insertPlainText(russian);
    QVERIFY(editor.saveToFile(path, w1251));
    QCOMPARE(readAll(path), encoded("KOI8-R", text + russian));
}

void TestELSPTextEdit::emptyFileKeepsTheText()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("empty.lsp"));
    writeFile(path, QByteArray());
    ELSPTextEdit editor(false);
    editor.setPlainText(russian);
    QVERIFY(editor.loadFromFile(path, w1251));
    QCOMPARE(editor.toPlainText(), russian);
}

void TestELSPTextEdit::loadErrorsNameTheCause_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("cause");
    QTest::newRow("missing") << QStringLiteral("missing") << QStringLiteral("No such file");
    QTest::newRow("directory") << QStringLiteral("directory") << QStringLiteral("directory");
    QTest::newRow("unreadable") << QStringLiteral("unreadable") << QStringLiteral("denied");
    QTest::newRow("100,000,001 bytes") << QStringLiteral("oversized") << QStringLiteral("too large");
}

void TestELSPTextEdit::loadErrorsNameTheCause()
{
    QFETCH(QString, kind);
    QFETCH(QString, cause);

    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("policy.lsp"));
    if (kind == QLatin1String("directory"))
        path = dir.path();
    if (kind == QLatin1String("unreadable")) {
        writeFile(path, "#encoding: utf-8\nsecret");
        QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    }
    if (kind == QLatin1String("oversized")) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(qint64(ELSPTextEdit::maxFileSize) + 1));
    }

    ELSPTextEdit editor(false);
    editor.setPlainText(QStringLiteral("kept"));
    bool loaded = true;
    ModalAnswerer answer(QMessageBox::Ok);
    {
        std::unique_ptr<FsFault::AsNobody> nobody(kind == QLatin1String("unreadable") ? new FsFault::AsNobody : nullptr);
        loaded = editor.loadFromFile(path, w1251);
    }
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QVERIFY(!loaded);
    QVERIFY2(answer.seen().text.contains(cause), qPrintable(answer.seen().text));
    QCOMPARE(editor.toPlainText(), QStringLiteral("kept"));
    QCOMPARE(EUtils::getWaitCursorCounter(), 0);
}

void TestELSPTextEdit::failedSaveLeavesTheOldFile()
{
    FsFault::SmallDisk disk(64);
    if (!disk.mounted())
        QSKIP(qPrintable(disk.reason()));
    const QString path = disk.path(QStringLiteral("policy.lsp"));
    const QByteArray old = encoded("Windows-1251", russian);
    writeFile(path, old);
    disk.fill();

    ELSPTextEdit editor(false);
    QString big;
    for (int i = 0; i < 4000; ++i)
        big += russian + QLatin1Char('\n');
    editor.insertPlainText(big);
    ModalAnswerer answer(QMessageBox::Ok);
    QVERIFY(!editor.saveToFile(path, w1251));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QVERIFY(answer.seen().text.contains(QStringLiteral("policy.lsp")));
    QVERIFY(editor.isModified());
    QCOMPARE(readAll(path), old);
    QCOMPARE(EUtils::getWaitCursorCounter(), 0);
}

CG_TEST_MAIN(TestELSPTextEdit)
#include "tst_elsptextedit.moc"
