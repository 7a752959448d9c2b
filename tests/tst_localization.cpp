// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "cg_loc_modules.h"
#include "common_gui_loc.h"
#include "edirs.h"
#include "qt_loc_loader.h"

#include <QLibraryInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtEndian>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <memory>

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
    qint32 version = 1;
    qint32 unit = 8;
    quint32 id = libraryId;
    qint32 count = slotCount;
    qint32 dataSize = -1;           // -1: the size of the block below
    QVector<qint32> offsets;        // empty: computed from the texts
    QByteArray block;               // empty: the texts, each with its terminator
    bool bigEndian = false;

    explicit LocImage(const QStringList& texts = QStringList())
    {
        for (const QString& text : texts) {
            offsets.append(block.size());
            block.append(text.toUtf8());
            block.append('\0');
        }
    }

    QByteArray bytes() const
    {
        QByteArray out;
        auto put = [&out, this](quint32 value) {
            char raw[4];
            if (bigEndian)
                qToBigEndian(value, raw);
            else
                qToLittleEndian(value, raw);
            out.append(raw, 4);
        };
        put(static_cast<quint32>(reserved));
        out.append(magic);
        put(static_cast<quint32>(version));
        put(static_cast<quint32>(unit));
        put(id);
        put(static_cast<quint32>(count));
        put(static_cast<quint32>(dataSize == -1 ? block.size() : dataSize));
        for (qint32 offset : offsets)
            put(static_cast<quint32>(offset));
        out.append(block);
        return out;
    }
};

QStringList sampleTexts()
{
    QStringList texts;
    for (int i = 0; i < slotCount; ++i)
        texts.append(QStringLiteral("text %1").arg(i));
    return texts;
}

// A private set of 59 slots, so the loader's tests never disturb the library's own texts.
struct PrivateTable
{
    QVector<QString> texts;
    QVector<QString*> pointers;
    QTLocLoader::Localization table{};

    explicit PrivateTable(int count = slotCount)
    {
        for (int i = 0; i < count; ++i)
            texts.append(QStringLiteral("untouched %1").arg(i));
        for (QString& text : texts)
            pointers.append(&text);
        table = {count, 8, libraryId, pointers.data()};
    }
    QStringList values() const { return QStringList(texts.begin(), texts.end()); }
};

struct FileCloser
{
    void operator()(FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

FilePtr openBytes(const QByteArray& bytes)
{
    FILE* file = std::tmpfile();
    if (file) {
        std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), file);
        std::rewind(file);
    }
    return FilePtr(file);
}

int loadBytes(const QByteArray& bytes, QTLocLoader::Localization& table)
{
    FilePtr file = openBytes(bytes);
    return file ? QTLocLoader().load(file.get(), table) : -100;
}

QStringList librarySlots()
{
    QStringList values;
    for (int i = 0; i < LCQT_info.count; ++i)
        values.append(*LCQT_info.slotTable[i]);
    return values;
}

void restoreEnglish()
{
    for (int i = 0; i < LCQT_info.count; ++i)
        *LCQT_info.slotTable[i] = englishTexts.at(i);
}

QString sourceFile(const char* language)
{
    return QStringLiteral(CG_SOURCE_DIR "/translations/%1.txt").arg(QLatin1String(language));
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

// A readable source with its comment lines taken out: what the dump writes back.
QByteArray withoutComments(const QByteArray& source)
{
    QByteArray out;
    for (const QByteArray& line : source.split('\n')) {
        if (!line.isEmpty() && !line.startsWith('#'))
            out += line + '\n';
    }
    return out;
}

struct ToolRun
{
    int exitCode = -1;
    QByteArray out;
    QString err;
};

ToolRun runTool(const char* program, const QStringList& arguments, const QProcessEnvironment& env = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QString::fromUtf8(program), arguments);
    ToolRun run;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

QMap<QString, QString> parseProbe(const QByteArray& out)
{
    QMap<QString, QString> values;
    for (const QByteArray& line : out.split('\n')) {
        const int eq = line.indexOf('=');
        if (eq > 0)
            values.insert(QString::fromUtf8(line.left(eq)), QString::fromUtf8(line.mid(eq + 1)));
    }
    return values;
}

} // namespace

class TestLocalization : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void loaderResultCodes_data();
    void loaderResultCodes();
    void bigEndianFileLoadsLikeLittleEndian();
    void fileCutShortChangesNothing_data();
    void fileCutShortChangesNothing();
    void nonLatinTextWithLineBreakRoundTrips();
    void zeroLengthEntryReadsUpToTheNextTerminator();
    void emptyTableLoadsWithoutReading();
    void runningOutOfMemoryIsCode7_data();
    void runningOutOfMemoryIsCode7();

    void russianFileReplacesTheLibraryTexts();
    void englishFileEqualsTheBuiltInTexts();
    void refusedFileLeavesEveryText_data();
    void refusedFileLeavesEveryText();

    void qtLibraryForEnglishInstallsNothing();
    void qtLibraryForRussianInstallsQtsTranslation();
    void qtLibraryFallsBackToTheResourceDirectory();

    void compilerRefusesBadSources_data();
    void compilerRefusesBadSources();
    void compilerTakesAnyOrderCommentsAndCrLf();
    void dumpOfCompiledSourceIsTheSource_data();
    void dumpOfCompiledSourceIsTheSource();

private:
    QTemporaryDir scratch;
};

void TestLocalization::init()
{
    restoreEnglish();
}

void TestLocalization::cleanup()
{
    restoreEnglish();
}

// ---------------------------------------------------------------- the loader

void TestLocalization::loaderResultCodes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("code");

    const QStringList texts = sampleTexts();
    auto image = [&texts] { return LocImage(texts); };
    LocImage i = image();
    QTest::newRow("valid") << i.bytes() << 0;

    i = image(); i.reserved = 1;
    QTest::newRow("reserved word not 0") << i.bytes() << 2;
    i = image(); i.magic = "LCLX";
    QTest::newRow("unknown magic") << i.bytes() << 2;
    i = image(); i.magic = "lclr";
    QTest::newRow("magic in lower case") << i.bytes() << 2;
    i = image(); i.version = 2;
    QTest::newRow("version 2") << i.bytes() << 3;
    i = image(); i.version = 0;
    QTest::newRow("version 0") << i.bytes() << 3;
    i = image(); i.unit = 16;
    QTest::newRow("unit 16") << i.bytes() << 4;
    for (int bit : {0, 7, 16, 31}) {
        i = image(); i.id ^= 1u << bit;
        QTest::addRow("identifier bit %d flipped", bit) << i.bytes() << 5;
    }
    i = image(); i.count = 58; i.offsets.removeLast();
    QTest::newRow("58 entries") << i.bytes() << 2;
    i = image(); i.count = 60; i.offsets.append(i.block.size());
    QTest::newRow("60 entries") << i.bytes() << 2;
    i = image(); i.count = 0;
    QTest::newRow("count 0 for a table of 59") << i.bytes() << 2;
    i = image(); i.dataSize = 0;
    QTest::newRow("data size 0") << i.bytes() << 2;
    i = image(); i.dataSize = -5;
    QTest::newRow("negative data size") << i.bytes() << 2;
    i = image(); std::swap(i.offsets[3], i.offsets[4]);
    QTest::newRow("offsets running backwards") << i.bytes() << 2;
    i = image(); i.offsets[58] = i.block.size() + 10;
    QTest::newRow("last offset beyond the block") << i.bytes() << 2;
    i = image(); i.offsets[0] = -1000;
    QTest::newRow("first offset far before the block") << i.bytes() << 2;
    i = image(); i.offsets[1] = INT_MIN; i.offsets[2] = INT_MAX;
    QTest::newRow("offsets whose difference overflows") << i.bytes() << 2;
    i = image(); i.dataSize = i.block.size() + 1;
    QTest::newRow("data size larger than the file") << i.bytes() << 6;

    // The header is read and checked one field at a time: the first bad field decides, even when a
    // later one is bad too or the file ends right after it.
    i = image(); i.magic = "LCLX"; i.version = 2;
    QTest::newRow("bad magic before bad version") << i.bytes() << 2;
    i = image(); i.version = 2; i.unit = 16;
    QTest::newRow("bad version before bad unit") << i.bytes() << 3;
    i = image(); i.unit = 16; i.id ^= 1u;
    QTest::newRow("bad unit before foreign identifier") << i.bytes() << 4;
    i = image(); i.id ^= 1u; i.count = 58;
    QTest::newRow("foreign identifier before wrong count") << i.bytes() << 5;
    i = image(); i.id ^= 1u;
    QTest::newRow("foreign identifier, file ends after it") << i.bytes().left(20) << 5;
    i = image(); i.count = 58;
    QTest::newRow("wrong count, file ends after it") << i.bytes().left(24) << 2;
    QTest::newRow("empty file") << QByteArray() << 6;
}

void TestLocalization::loaderResultCodes()
{
    QFETCH(QByteArray, file);
    QFETCH(int, code);

    PrivateTable target;
    const QStringList before = target.values();
    QCOMPARE(loadBytes(file, target.table), code);
    if (code == 0)
        QCOMPARE(target.values(), sampleTexts());
    else
        QCOMPARE(target.values(), before);
}

void TestLocalization::bigEndianFileLoadsLikeLittleEndian()
{
    const QStringList texts = sampleTexts();
    LocImage little(texts);
    LocImage big(texts);
    big.bigEndian = true;
    big.magic = "RLCL";
    QVERIFY(little.bytes() != big.bytes());

    PrivateTable fromLittle;
    PrivateTable fromBig;
    QCOMPARE(loadBytes(little.bytes(), fromLittle.table), 0);
    QCOMPARE(loadBytes(big.bytes(), fromBig.table), 0);
    QCOMPARE(fromBig.values(), texts);
    QCOMPARE(fromBig.values(), fromLittle.values());

    // The magic decides the byte order, not the host: big-endian numbers under "LCLR" are refused.
    big.magic = "LCLR";
    PrivateTable mixed;
    QCOMPARE(loadBytes(big.bytes(), mixed.table), 3);
}

void TestLocalization::fileCutShortChangesNothing_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    const int header = 28;
    const int offsets = header + 4 * slotCount;
    const int total = LocImage(sampleTexts()).bytes().size();
    QTest::newRow("in the header") << 1 << header - 1;
    QTest::newRow("in the offsets") << header << offsets - 1;
    QTest::newRow("in the text block") << offsets << total - 1;
}

void TestLocalization::fileCutShortChangesNothing()
{
    QFETCH(int, from);
    QFETCH(int, to);
    const QByteArray whole = LocImage(sampleTexts()).bytes();
    for (int length = from; length <= to; ++length) {
        PrivateTable target;
        const QStringList before = target.values();
        const int code = loadBytes(whole.left(length), target.table);
        if (code != 6 || target.values() != before)
            QFAIL(qPrintable(QStringLiteral("cut after %1 bytes: code %2").arg(length).arg(code)));
    }
}

void TestLocalization::nonLatinTextWithLineBreakRoundTrips()
{
    QStringList texts = sampleTexts();
    texts[7] = QString::fromUtf8("Строка первая\nΔεύτερη γραμμή — 日本語 🙂");
    texts[58] = QString::fromUtf8("последняя\n");
    texts[0] = QString();
    PrivateTable target;
    QCOMPARE(loadBytes(LocImage(texts).bytes(), target.table), 0);
    QCOMPARE(target.texts[7], texts[7]);
    QCOMPARE(target.texts[58], texts[58]);
    QVERIFY(target.texts[0].isEmpty());
    QCOMPARE(target.values(), texts);
}

void TestLocalization::zeroLengthEntryReadsUpToTheNextTerminator()
{
    LocImage image(sampleTexts());
    // Entry 5 gets no bytes of its own; its text is read up to the terminator of entry 6.
    const int gap = image.offsets[6] - image.offsets[5];
    image.block.remove(image.offsets[5], gap);
    for (int i = 6; i < slotCount; ++i)
        image.offsets[i] -= gap;
    image.offsets[5] = image.offsets[6];
    // The last entry has no bytes either and sits at the very end of the block.
    image.block.truncate(image.offsets[58]);
    PrivateTable target;
    QCOMPARE(loadBytes(image.bytes(), target.table), 0);
    QCOMPARE(target.texts[4], QStringLiteral("text 4"));
    QCOMPARE(target.texts[5], QStringLiteral("text 6"));
    QCOMPARE(target.texts[6], QStringLiteral("text 6"));
    QCOMPARE(target.texts[57], QStringLiteral("text 57"));
    QCOMPARE(target.texts[58], QString());
}

void TestLocalization::emptyTableLoadsWithoutReading()
{
    PrivateTable empty(0);
    LocImage image;
    image.count = 0;
    image.dataSize = 0; // would be refused if it were read
    FilePtr file = openBytes(image.bytes());
    QVERIFY(file);
    QCOMPARE(QTLocLoader().load(file.get(), empty.table), 0);
    QCOMPARE(std::ftell(file.get()), 24L);
}

void TestLocalization::runningOutOfMemoryIsCode7_data()
{
    QTest::addColumn<QByteArray>("file");

    LocImage image(sampleTexts());
    image.dataSize = INT_MAX; // about 2 GiB, far beyond the child's limit
    QTest::newRow("text block") << image.bytes();

    // The block itself fits; its one long text, decoded into twice as many bytes, does not.
    QStringList texts = sampleTexts();
    texts[0] = QString(48 << 20, QLatin1Char('x'));
    QTest::newRow("decoded text") << LocImage(texts).bytes();
}

void TestLocalization::runningOutOfMemoryIsCode7()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("AddressSanitizer reserves more address space than the limit this test sets");
#endif
    QFETCH(QByteArray, file);
    const QString fileName = scratch.filePath(QStringLiteral("huge.lcl"));
    QVERIFY(writeAll(fileName, file));
    const ToolRun run = runTool(CG_LOC_PROBE, {QStringLiteral("load-limited"), fileName});
    QFile::remove(fileName);
    QCOMPARE(run.exitCode, 0);
    const auto values = parseProbe(run.out);
    QCOMPARE(values.value(QStringLiteral("code")), QStringLiteral("7"));
    QCOMPARE(values.value(QStringLiteral("cancel")), QStringLiteral("&Cancel"));
}

// ---------------------------------------------------------------- the library's module

void TestLocalization::russianFileReplacesTheLibraryTexts()
{
    CgTest::Environment::useBuildResources();
    Loc::GUIModule module;
    QCOMPARE(module.name, std::string("common_gui"));
    QCOMPARE(module.table, &LCQT_info);

    std::string error;
    QCOMPARE(module.load("rus", &error), 1);
    QVERIFY2(error.empty(), error.c_str());
    QCOMPARE(LCQT__Cancel, QString::fromUtf8("&Отмена"));
    QCOMPARE(LCQT__Find_what, QString::fromUtf8("Найти: "));
    QCOMPARE(LCQT__Text_not_found_below_this_point,
             QString::fromUtf8("Текст не найден ниже этой позиции.\nПродолжить поиск с начала документа?"));

    const QStringList russian = librarySlots();
    int translated = 0;
    for (int i = 0; i < slotCount; ++i) {
        // Accelerators and line breaks survive the translation.
        QCOMPARE(russian.at(i).contains(QLatin1Char('&')), englishTexts.at(i).contains(QLatin1Char('&')));
        QCOMPARE(russian.at(i).count(QLatin1Char('\n')), englishTexts.at(i).count(QLatin1Char('\n')));
        if (russian.at(i) != englishTexts.at(i))
            ++translated;
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
            const QChar key = text->at(amp + 1).toLower();
            QVERIFY2(!keys.contains(key), qPrintable(*text));
            keys += key;
        }
    }

    QCOMPARE(module.load("eng", &error), 1);
    QCOMPARE(librarySlots(), englishTexts);
}

void TestLocalization::englishFileEqualsTheBuiltInTexts()
{
    CgTest::Environment::useBuildResources();
    for (int i = 0; i < slotCount; ++i)
        *LCQT_info.slotTable[i] = QStringLiteral("placeholder");
    Loc::GUIModule module;
    std::string error;
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
    foreign[16] = static_cast<char>(foreign[16] ^ 0x01);
    QTest::newRow("cut in the text block") << russian.left(russian.size() - 3) << QStringLiteral("code 6");
    QTest::newRow("identifier of another build") << foreign << QStringLiteral("code 5");
    QTest::newRow("not a localization file") << QByteArray("[Language]\nCode=rus\n") << QStringLiteral("code 2");
    QTest::newRow("empty file") << QByteArray() << QStringLiteral("code 6");
}

void TestLocalization::refusedFileLeavesEveryText()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, reason);
    QTemporaryDir resources;
    QVERIFY(QDir(resources.path()).mkpath(QStringLiteral("translations")));
    QVERIFY(writeAll(resources.filePath(QStringLiteral("translations/common_gui_rus.lcl")), file));
    qputenv("CG_RESOURCE_DIR", resources.path().toUtf8());

    Loc::GUIModule module;
    std::string error;
    QCOMPARE(module.load("rus", &error), 0);
    const QString text = QString::fromStdString(error);
    QVERIFY2(text.contains(QStringLiteral("common_gui_rus.lcl")), qPrintable(text));
    QVERIFY2(text.contains(reason), qPrintable(text));
    QCOMPARE(librarySlots(), englishTexts);
}

// ---------------------------------------------------------------- Qt's own translation

void TestLocalization::qtLibraryForEnglishInstallsNothing()
{
    const int before = qApp->findChildren<QTranslator*>().size();
    Loc::QTLibModule module;
    std::string error;
    QCOMPARE(module.load("eng", &error), 1);
    QCOMPARE(module.load(nullptr, &error), 1);
    QVERIFY(error.empty());
    QCOMPARE(qApp->findChildren<QTranslator*>().size(), before);
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
}

void TestLocalization::qtLibraryForRussianInstallsQtsTranslation()
{
    if (!QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qt_ru.qm")))
        QSKIP("Qt's Russian translation is not installed (package qttranslations5-l10n)");
    const int before = qApp->findChildren<QTranslator*>().size();
    Loc::QTLibModule module;
    std::string error;
    QCOMPARE(module.load("rus", &error), 1);
    QVERIFY2(error.empty(), error.c_str());
    const QList<QTranslator*> translators = qApp->findChildren<QTranslator*>();
    QCOMPARE(translators.size(), before + 1);
    const QString cancel = QCoreApplication::translate("QPlatformTheme", "Cancel");
    for (QTranslator* translator : translators) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
    QCOMPARE(cancel, QString::fromUtf8("Отмена"));
}

void TestLocalization::qtLibraryFallsBackToTheResourceDirectory()
{
    // The probe's qt.conf sends Qt's translations directory nowhere; only the resource dir is left.
    const QString qtFile = QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qt_ru.qm");
    const QString baseFile = QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_ru.qm");
    if (!QFile::exists(qtFile) || !QFile::exists(baseFile))
        QSKIP("Qt's Russian translation is not installed (package qttranslations5-l10n)");

    QTemporaryDir resources;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("CG_RESOURCE_DIR"), resources.path());

    ToolRun run = runTool(CG_LOC_PROBE, {QStringLiteral("qt-library"), QStringLiteral("rus")}, env);
    QCOMPARE(run.exitCode, 0);
    auto values = parseProbe(run.out);
    QCOMPARE(values.value(QStringLiteral("result")), QStringLiteral("0"));
    const QString expected = QDir(resources.path()).canonicalPath() + QStringLiteral("/qt_ru");
    QVERIFY2(values.value(QStringLiteral("error")).contains(QLatin1Char('"') + expected + QLatin1Char('"')),
             qPrintable(values.value(QStringLiteral("error"))));
    QVERIFY2(values.value(QStringLiteral("error")).contains(QStringLiteral("code -1")),
             qPrintable(values.value(QStringLiteral("error"))));
    QCOMPARE(values.value(QStringLiteral("translators")), QStringLiteral("0"));
    QCOMPARE(values.value(QStringLiteral("cancel")), QStringLiteral("Cancel"));

    // "qt_ru" is a catalogue of the per-module files, which must come along.
    const QDir qtDir(QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    for (const QString& name : qtDir.entryList({QStringLiteral("qt*_ru.qm")}, QDir::Files))
        QVERIFY(QFile::copy(qtDir.filePath(name), resources.filePath(name)));
    run = runTool(CG_LOC_PROBE, {QStringLiteral("qt-library"), QStringLiteral("rus")}, env);
    QCOMPARE(run.exitCode, 0);
    values = parseProbe(run.out);
    QCOMPARE(values.value(QStringLiteral("result")), QStringLiteral("1"));
    QCOMPARE(values.value(QStringLiteral("error")), QString());
    QCOMPARE(values.value(QStringLiteral("translators")), QStringLiteral("1"));
    QCOMPARE(values.value(QStringLiteral("cancel")), QString::fromUtf8("Отмена"));
}

// ---------------------------------------------------------------- the tools

void TestLocalization::compilerRefusesBadSources_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("message");

    const QByteArray english = withoutComments(readAll(sourceFile("eng")));
    QList<QByteArray> lines = english.split('\n');
    lines.removeLast(); // after the final line break
    QCOMPARE(lines.size(), slotCount);
    auto join = [](const QList<QByteArray>& parts) { return parts.join('\n') + '\n'; };

    QList<QByteArray> l = lines;
    l.removeAt(40);
    QTest::newRow("missing name") << join(l) << QStringLiteral(":58: error: missing slot name \"%1\"").arg(QLatin1String(LCQT_names[40]));
    l = lines;
    l[4] = "LCQT__Confirm_passwort\tConfirm password:";
    QTest::newRow("unknown name") << join(l) << QStringLiteral(":5: error: unknown slot name \"LCQT__Confirm_passwort\"");
    l = lines;
    l.append(lines.at(2));
    QTest::newRow("duplicate name") << join(l) << QStringLiteral(":60: error: duplicate slot name \"LCQT__Cancel\" (first given on line 3)");
    l = lines;
    l[9] = "LCQT__File File";
    QTest::newRow("no tab") << join(l) << QStringLiteral(":10: error: malformed line");
    l = lines;
    l[11] = "LCQT__File_saving_error\tC:\\data";
    QTest::newRow("unknown escape") << join(l) << QStringLiteral(":12: error: malformed line: unknown escape \\d");
    l = lines;
    l[11] = "LCQT__File_saving_error\tends in \\";
    QTest::newRow("backslash at the end") << join(l) << QStringLiteral(":12: error: malformed line: backslash");
    l = lines;
    l[20] = "LCQT__Finish\t&Fertig \xC3";
    QTest::newRow("invalid UTF-8") << join(l) << QStringLiteral(":21: error: malformed line: the text is not valid UTF-8");
    QTest::newRow("empty source") << QByteArray() << QStringLiteral(":1: error: missing slot name \"LCQT__Auto\"");
}

void TestLocalization::compilerRefusesBadSources()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, message);
    const QString sourceName = scratch.filePath(QStringLiteral("bad.txt"));
    const QString output = scratch.filePath(QStringLiteral("bad.lcl"));
    QFile::remove(output);
    QVERIFY(writeAll(sourceName, source));
    const ToolRun run = runTool(CG_LOC_COMPILE, {sourceName, output});
    QVERIFY(run.exitCode > 0);
    QVERIFY2(run.err.contains(sourceName + message), qPrintable(run.err));
    QVERIFY(!QFile::exists(output));
}

void TestLocalization::compilerTakesAnyOrderCommentsAndCrLf()
{
    const QByteArray russian = withoutComments(readAll(sourceFile("rus")));
    QList<QByteArray> lines = russian.split('\n');
    lines.removeLast();
    std::reverse(lines.begin(), lines.end());
    QByteArray shuffled = "\xEF\xBB\xBF# a comment first\r\n\r\n";
    for (const QByteArray& line : lines)
        shuffled += line + "\r\n# between\r\n";

    const QString sourceName = scratch.filePath(QStringLiteral("shuffled.txt"));
    const QString output = scratch.filePath(QStringLiteral("shuffled.lcl"));
    QVERIFY(writeAll(sourceName, shuffled));
    ToolRun run = runTool(CG_LOC_COMPILE, {sourceName, output});
    QVERIFY2(run.exitCode == 0, qPrintable(run.err));

    const QByteArray binary = readAll(output);
    QCOMPARE(binary.left(8), QByteArray("\0\0\0\0LCLR", 8));
    QCOMPARE(qFromLittleEndian<quint32>(binary.constData() + 16), libraryId);
    QCOMPARE(qFromLittleEndian<quint32>(binary.constData() + 20), quint32(slotCount));

    run = runTool(CG_LOC_DUMP, {output});
    QVERIFY2(run.exitCode == 0, qPrintable(run.err));
    QCOMPARE(run.out, russian);
}

void TestLocalization::dumpOfCompiledSourceIsTheSource_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("eng") << QStringLiteral("eng");
    QTest::newRow("rus") << QStringLiteral("rus");
}

void TestLocalization::dumpOfCompiledSourceIsTheSource()
{
    QFETCH(QString, language);
    const QString sourceName = sourceFile(language.toLatin1().constData());
    const QString binary = scratch.filePath(language + QStringLiteral(".lcl"));
    const QString text = scratch.filePath(language + QStringLiteral(".txt"));
    ToolRun run = runTool(CG_LOC_COMPILE, {sourceName, binary});
    QVERIFY2(run.exitCode == 0, qPrintable(run.err));
    // What the build installs is what the tool makes of the source.
    QCOMPARE(readAll(binary), readAll(CgTest::Environment::buildResourceDir()
                                      + QStringLiteral("/translations/common_gui_%1.lcl").arg(language)));
    run = runTool(CG_LOC_DUMP, {binary, text});
    QVERIFY2(run.exitCode == 0, qPrintable(run.err));
    QCOMPARE(readAll(text), withoutComments(readAll(sourceName)));
}

CG_TEST_MAIN(TestLocalization)
#include "tst_localization.moc"
