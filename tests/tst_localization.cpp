// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "cg_loc_modules.h"
#include "cg_qtcompat.h"
#include "common_gui_loc.h"
#include "edirs.h"
#include "qt_loc_loader.h"

#include <QProcess>
#include <QTranslator>
#include <QTemporaryDir>

#include <algorithm>
#include <climits>
#include <cstdio>

namespace {

#define TEST_ENGLISH_TEXT(name, english) QStringLiteral(english),
const QStringList englishTexts = {LCQT_SLOT_LIST(TEST_ENGLISH_TEXT)};
#undef TEST_ENGLISH_TEXT

const int slotCount = 59;
const quint32 libraryId = 0x109E601Au;

// A localization file written field by field, so that a test can spoil exactly one of them.
struct LocImage
{
    qint32 reserved = 0;
    QByteArray magic = "LCLR";
    qint32 version = 1, unit = 8;
    quint32 id = libraryId;
    qint32 count = slotCount, dataSize = -1; // -1: the size of the block
    QVector<qint32> offsets;
    QByteArray block;
    bool bigEndian = false;

    explicit LocImage(const QStringList& texts)
    {
        for (const QString& text : texts) {
            offsets.append(block.size());
            block.append(text.toUtf8() + '\0');
        }
    }
    QByteArray bytes() const
    {
        QByteArray out;
        QDataStream stream(&out, QIODevice::WriteOnly);
        stream.setByteOrder(bigEndian ? QDataStream::BigEndian : QDataStream::LittleEndian);
        stream << reserved;
        stream.writeRawData(magic.constData(), magic.size());
        stream << version << unit << id << count << qint32(dataSize == -1 ? block.size() : dataSize);
        for (qint32 offset : offsets)
            stream << offset;
        return out + block;
    }
};

QStringList sampleTexts()
{
    QStringList texts;
    for (int i = 0; i < slotCount; ++i)
        texts.append(QStringLiteral("text %1").arg(i));
    return texts;
}

// A private set of slots, so the loader's tests never disturb the library's own texts.
struct PrivateTable
{
    QVector<QString> texts = QVector<QString>(slotCount, QStringLiteral("untouched"));
    QVector<QString*> pointers;
    QTLocLoader::Localization table{};
    PrivateTable()
    {
        for (QString& text : texts)
            pointers.append(&text);
        table = {slotCount, 8, libraryId, pointers.data()};
    }
    QStringList values() const { return QStringList(texts.begin(), texts.end()); }
    int load(const QByteArray& bytes)
    {
        FILE* file = std::tmpfile();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), file);
        std::rewind(file);
        const int code = QTLocLoader().load(file, table);
        std::fclose(file);
        return code;
    }
};

QStringList librarySlots()
{
    QStringList values;
    for (int i = 0; i < LCQT_info.count; ++i)
        values.append(*LCQT_info.slotTable[i]);
    return values;
}

QByteArray readAll(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Runs a tool or the probe; returns its exit code (-1 after a crash) and its output, both channels.
int runTool(const char* program, const QStringList& arguments, QByteArray* out)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QString::fromUtf8(program), arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return -1;
    *out = process.readAll();
    return process.exitCode();
}

} // namespace

class TestLocalization : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void loaderResultCodes_data();
    void loaderResultCodes();
    void textsKeepLineBreaksAndZeroLengthEntries();
    void runningOutOfMemoryWhileDecodingIsCode7();
    void claimedSizesAreCheckedBeforeAllocating();
    void russianFileReplacesTheLibraryTexts();
    void refusedFileLeavesEveryText_data();
    void refusedFileLeavesEveryText();
    void compilerReadsAnyOrderAndLineEndsAndDumpsBack();
    void compilerRefusesBadSources_data();
    void compilerRefusesBadSources();
    void qtTranslationIsInstalledOnlyForRussian();

private:
    QTemporaryDir scratch;
};

void TestLocalization::init()
{
    for (int i = 0; i < LCQT_info.count; ++i)
        *LCQT_info.slotTable[i] = englishTexts.at(i);
}

void TestLocalization::loaderResultCodes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("code");
    auto row = [](const char* name, int code, void (*spoil)(LocImage&), int keep = -1) {
        LocImage i(sampleTexts());
        spoil(i);
        QTest::newRow(name) << i.bytes().left(keep < 0 ? INT_MAX : keep) << code;
    };
    row("valid", 0, [](LocImage&) {});
    row("big-endian under RLCL", 0, [](LocImage& i) { i.bigEndian = true; i.magic = "RLCL"; });
    // The magic decides the byte order, not the host.
    row("big-endian under LCLR", 3, [](LocImage& i) { i.bigEndian = true; });
    row("unit 16", 4, [](LocImage& i) { i.unit = 16; });
    row("identifier bit 31 flipped", 5, [](LocImage& i) { i.id ^= 1u << 31; });
    row("last offset beyond the block", 2, [](LocImage& i) { i.offsets[58] = i.block.size() + 10; });
    row("offsets whose difference overflows", 2, [](LocImage& i) { i.offsets[1] = INT_MIN; i.offsets[2] = INT_MAX; });
    row("data size larger than the file", 6, [](LocImage& i) { i.dataSize = i.block.size() + 1; });
    // The header is checked one field at a time: the first bad field decides, even when a later
    // one is bad too or the file ends right after it.
    row("bad version before bad unit", 3, [](LocImage& i) { i.version = 2; i.unit = 16; });
    row("foreign identifier, file ends after it", 5, [](LocImage& i) { i.id ^= 1u; }, 20);
    row("wrong count, file ends after it", 2, [](LocImage& i) { i.count = 58; }, 24);
}

void TestLocalization::loaderResultCodes()
{
    QFETCH(QByteArray, file);
    QFETCH(int, code);
    PrivateTable target;
    QCOMPARE(target.load(file), code);
    QCOMPARE(target.values(), code == 0 ? sampleTexts() : PrivateTable().values());
    // A file cut anywhere is refused whole.
    for (int length = 0; code == 0 && length < file.size(); ++length) {
        if (target.load(file.left(length)) != 6 || target.values() != sampleTexts())
            QFAIL(qPrintable(QStringLiteral("cut after %1 bytes").arg(length)));
    }
}

void TestLocalization::textsKeepLineBreaksAndZeroLengthEntries()
{
    QStringList texts = sampleTexts();
    texts[0] = QString();
    texts[7] = QString::fromUtf8("Строка первая\nΔεύτερη γραμμή — 日本語 🙂");
    LocImage image(texts);
    // Entry 5 gets no bytes of its own: its text is read up to the terminator of entry 6.
    const int gap = image.offsets[6] - image.offsets[5];
    image.block.remove(image.offsets[5], gap);
    for (int i = 6; i < slotCount; ++i)
        image.offsets[i] -= gap;
    image.offsets[5] = image.offsets[6];
    // The last entry has no bytes either and sits at the very end of the block.
    image.block.truncate(image.offsets[58]);
    texts[5] = texts[6];
    texts[58] = QString();
    PrivateTable target;
    QCOMPARE(target.load(image.bytes()), 0);
    QCOMPARE(target.values(), texts);
}

void TestLocalization::runningOutOfMemoryWhileDecodingIsCode7()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("AddressSanitizer reserves more address space than the limit this test sets");
#endif
    // The block itself fits; its one long text, decoded into twice as many bytes, does not.
    QStringList texts = sampleTexts();
    texts[0] = QString(48 << 20, QLatin1Char('x'));
    const QString fileName = scratch.filePath(QStringLiteral("huge.lcl"));
    QVERIFY(writeAll(fileName, LocImage(texts).bytes()));
    QByteArray out;
    QCOMPARE(runTool(CG_LOC_PROBE, {QStringLiteral("load-limited"), fileName}, &out), 0);
    QFile::remove(fileName);
    QCOMPARE(out, QByteArray("code=7\ncancel=&Cancel\n")); // and no slot changed
}

void TestLocalization::claimedSizesAreCheckedBeforeAllocating()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("AddressSanitizer reserves more address space than the limit this test sets");
#endif
    // A header claiming a 2 GiB block in a small file ends early (code 6) without trying to get
    // the 2 GiB: under a limit far below that, the allocation would fail first with code 7.
    LocImage image(sampleTexts());
    image.dataSize = INT_MAX;
    const QString fileName = scratch.filePath(QStringLiteral("claims.lcl"));
    QVERIFY(writeAll(fileName, image.bytes()));
    QByteArray out;
    QCOMPARE(runTool(CG_LOC_PROBE, {QStringLiteral("load-limited"), fileName}, &out), 0);
    QCOMPARE(out, QByteArray("code=6\ncancel=&Cancel\n"));
}

void TestLocalization::russianFileReplacesTheLibraryTexts()
{
    CgTest::Environment::useBuildResources();
    Loc::GUIModule module;
    std::string error;
    QCOMPARE(module.load("rus", &error), 1);
    QVERIFY2(error.empty(), error.c_str());
    QCOMPARE(LCQT__Cancel, QString::fromUtf8("&Отмена"));
    const QStringList russian = librarySlots();
    int translated = 0;
    for (int i = 0; i < slotCount; ++i) {
        // Accelerators and line breaks survive the translation.
        QCOMPARE(russian.at(i).contains(QLatin1Char('&')), englishTexts.at(i).contains(QLatin1Char('&')));
        QCOMPARE(russian.at(i).count(QLatin1Char('\n')), englishTexts.at(i).count(QLatin1Char('\n')));
        translated += russian.at(i) != englishTexts.at(i);
    }
    QCOMPARE(translated, slotCount - 1); // "&OK" stays as it is

    // The controls of one dialog need different accelerators: the find dialog, and the button panel.
    const QList<QList<const QString*>> dialogs = {
        {&LCQT__Match_whole_word_only, &LCQT__Match_case, &LCQT__Find_in_all_columns, &LCQT__Up, &LCQT__Down,
         &LCQT__Find_Next__0, &LCQT__Cancel},
        {&LCQT__Back, &LCQT__Save, &LCQT__OK, &LCQT__Next, &LCQT__Finish, &LCQT__Cancel},
    };
    for (const QList<const QString*>& dialog : dialogs) {
        QString keys;
        for (const QString* text : dialog) {
            const int amp = text->indexOf(QLatin1Char('&'));
            QVERIFY2(amp >= 0 && amp + 1 < text->size() && text->at(amp + 1).isLetter(), qPrintable(*text));
            QVERIFY2(!keys.contains(text->at(amp + 1).toLower()), qPrintable(*text));
            keys += text->at(amp + 1).toLower();
        }
    }

    // The English file equals the built-in texts.
    QCOMPARE(module.load("eng", &error), 1);
    QCOMPARE(librarySlots(), englishTexts);
}

void TestLocalization::refusedFileLeavesEveryText_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("reason");
    const QByteArray russian = readAll(CgTest::Environment::buildResourceDir()
                                       + QStringLiteral("/translations/common_gui_rus.lcl"));
    QByteArray foreign = russian;
    foreign[16] = char(foreign[16] ^ 0x01);
    QTest::newRow("cut in the text block") << russian.left(russian.size() - 3) << QStringLiteral("code 6");
    QTest::newRow("identifier of another build") << foreign << QStringLiteral("code 5");
}

void TestLocalization::refusedFileLeavesEveryText()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, reason);
    QTemporaryDir resources;
    QVERIFY(QDir(resources.path()).mkpath(QStringLiteral("translations")));
    QVERIFY(writeAll(resources.filePath(QStringLiteral("translations/common_gui_rus.lcl")), file));
    qputenv("CG_RESOURCE_DIR", resources.path().toUtf8());
    std::string error;
    QCOMPARE(Loc::GUIModule().load("rus", &error), 0);
    const QString text = QString::fromStdString(error);
    QVERIFY2(text.contains(QStringLiteral("common_gui_rus.lcl")) && text.contains(reason), qPrintable(text));
    QCOMPARE(librarySlots(), englishTexts);
}

void TestLocalization::compilerReadsAnyOrderAndLineEndsAndDumpsBack()
{
    // The Russian source reversed, with a BOM, comments and CR LF line ends still compiles into the
    // file the build installs; the dump writes the lines back without comments.
    QList<QByteArray> lines = readAll(QStringLiteral(CG_SOURCE_DIR "/translations/rus.txt")).split('\n');
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QByteArray& l) { return l.isEmpty() || l.startsWith('#'); }), lines.end());
    QCOMPARE(lines.size(), slotCount);
    QByteArray text = "\xEF\xBB\xBF# a comment first\r\n\r\n";
    for (auto line = lines.rbegin(); line != lines.rend(); ++line)
        text += *line + "\r\n# between\r\n";
    const QString source = scratch.filePath(QStringLiteral("shuffled.txt")), binary = scratch.filePath(QStringLiteral("rus.lcl"));
    QVERIFY(writeAll(source, text));
    QByteArray out;
    QVERIFY2(runTool(CG_LOC_COMPILE, {source, binary}, &out) == 0, out.constData());
    QCOMPARE(readAll(binary), readAll(CgTest::Environment::buildResourceDir()
                                      + QStringLiteral("/translations/common_gui_rus.lcl")));
    QVERIFY2(runTool(CG_LOC_DUMP, {binary}, &out) == 0, out.constData()); // to standard output
    QCOMPARE(out, lines.join('\n') + '\n');
}

CG_TEST_MAIN(TestLocalization)
void TestLocalization::compilerRefusesBadSources_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("message");
    const QList<QByteArray> lines = readAll(QStringLiteral(CG_SOURCE_DIR "/translations/eng.txt")).split('\n');
    auto with = [&lines](int index, const QByteArray& line) {
        QList<QByteArray> l = lines;
        if (line.isNull())
            l.removeAt(index);
        else
            l.insert(index, line);
        return l.join('\n');
    };
    const int first = int(std::find_if(lines.begin(), lines.end(), [](const QByteArray& l) {
                              return l.startsWith("LCQT__");
                          }) - lines.begin());
    auto replaced = [&lines](int index, const QByteArray& line) {
        QList<QByteArray> l = lines;
        l[index] = line;
        return l.join('\n');
    };
    QTest::newRow("missing name") << with(first, QByteArray())
                                  << QStringLiteral("error: missing slot name \"LCQT__Auto\"");
    QTest::newRow("unknown name") << with(first, "LCQT__Confirm_passwort\tConfirm password:")
                                  << QStringLiteral(":%1: error: unknown slot name \"LCQT__Confirm_passwort\"").arg(first + 1);
    QTest::newRow("duplicate name") << with(first + 1, lines.at(first))
                                    << QStringLiteral(":%1: error: duplicate slot name \"LCQT__Auto\" (first given on line %2)")
                                           .arg(first + 2).arg(first + 1);
    // Messages name what is there, even bytes a terminal would hide or mangle.
    QTest::newRow("NUL inside a name") << with(first, QByteArray("LCQT__Auto\0x\tText", 17))
                                       << QStringLiteral(":%1: error: unknown slot name \"LCQT__Auto\\0x\"").arg(first + 1);
    QTest::newRow("escape of a Cyrillic letter") << replaced(first, "LCQT__Auto\tA\\\xD0\xB6" "B")
                                                 << QStringLiteral(":%1: error: malformed line: unknown escape \\%2 (")
                                                        .arg(first + 1).arg(QChar(0x436));
    QTest::newRow("escape of a stray byte") << replaced(first, "LCQT__Auto\tA\\\xFF" "B")
                                            << QStringLiteral(":%1: error: malformed line: unknown escape (backslash, then the byte \\xff)").arg(first + 1);
}

void TestLocalization::compilerRefusesBadSources()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, message);
    const QString sourceName = scratch.filePath(QStringLiteral("bad.txt"));
    const QString output = scratch.filePath(QStringLiteral("bad.lcl"));
    QVERIFY(writeAll(sourceName, source));
    QByteArray out;
    QVERIFY(runTool(CG_LOC_COMPILE, {sourceName, output}, &out) > 0);
    QVERIFY2(QString::fromUtf8(out).contains(message), out.constData());
    QVERIFY(!QFile::exists(output));
}

void TestLocalization::qtTranslationIsInstalledOnlyForRussian()
{
    const int before = qApp->findChildren<QTranslator*>().size();
    Loc::QTLibModule module;
    std::string error;
    QCOMPARE(module.load("eng", &error), 1);
    QCOMPARE(qApp->findChildren<QTranslator*>().size(), before);

    if (!QFile::exists(CgQt::qtTranslationsPath() + QStringLiteral("/qt_ru.qm")))
        QSKIP("Qt's Russian translation is not installed (qttranslations5-l10n or qt6-translations-l10n)");
    QCOMPARE(module.load("rus", &error), 1);
    const QList<QTranslator*> translators = qApp->findChildren<QTranslator*>();
    QCOMPARE(translators.size(), before + 1);
    const QString cancel = QCoreApplication::translate("QPlatformTheme", "Cancel");
    qDeleteAll(translators);
    QCOMPARE(cancel, QString::fromUtf8("Отмена"));
}

#include "tst_localization.moc"
