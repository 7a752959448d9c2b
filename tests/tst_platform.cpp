// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_core.h"
#include "convi.h"
#include "paths.h"

#include <QTemporaryDir>
#include <QTextCodec>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <forward_list>
#include <iconv.h>
#include <sys/resource.h>
#include <sys/stat.h>

using PathFunction = const char* (*)();
Q_DECLARE_METATYPE(PathFunction)

namespace {

// Sets (or with a null value removes) one environment variable for the life of the object.
struct EnvVar
{
    QByteArray name, old;
    bool had;
    EnvVar(const QByteArray& n, const char* value) : name(n), old(qgetenv(n)), had(qEnvironmentVariableIsSet(n))
    { value ? void(qputenv(name, value)) : void(qunsetenv(name)); }
    ~EnvVar() { had ? void(qputenv(name, old)) : void(qunsetenv(name)); }
};

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

void writeFile(const QString& path, const QByteArray& bytes, mode_t mode = 0644)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

mode_t permissions(const QString& path)
{
    struct stat st;
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? (st.st_mode & 07777) : mode_t(-1);
}

QString reason(int errorNumber) { return QString::fromLocal8Bit(std::strerror(errorNumber)); }

// A module whose loadFile reads the whole file and answers with a chosen code.
struct ProbeModule : Loc::Module
{
    explicit ProbeModule(int answer) : Module("probe"), answer(answer) {}
    int loadFile(FILE* file) override
    {
        seen.resize(64);
        seen.resize(int(std::fread(seen.data(), 1, 64, file)));
        return answer;
    }
    int answer;
    QByteArray seen;
};

} // namespace

class TestPlatform : public QObject
{
    Q_OBJECT
private slots:
    void directoriesFollowTheEnvironment_data();
    void directoriesFollowTheEnvironment();
    void binaryAndResourceDirsFollowTheExecutable();
    void moduleLoad_data();
    void moduleLoad();
    void savedFileLoadsBackKeepingPermissionsAndSymlinks();
    void failedSaveLeavesTheOldFile_data();
    void failedSaveLeavesTheOldFile();
    void conviRoundTrips_data();
    void conviRoundTrips();
    void conviStopsAtWhatDoesNotFitOrConvert_data();
    void conviStopsAtWhatDoesNotFitOrConvert();
    void conviTablesDecodeAsIconvDoes_data();
    void conviTablesDecodeAsIconvDoes();
};

void TestPlatform::directoriesFollowTheEnvironment_data()
{
    QTest::addColumn<PathFunction>("function");
    QTest::addColumn<QByteArrayList>("environment"); // "NAME=value", or "NAME" to unset it
    QTest::addColumn<QByteArray>("expected");         // "~" stands for $HOME
    const PathFunction user = userDataDirForWrite_utf8, common = userDataCommonDir_utf8;
    QTest::newRow("user, empty is unset") << user << QByteArrayList{"CG_USER_DIR=", "XDG_CONFIG_HOME=/x"} << QByteArray("/x/common_gui");
    QTest::newRow("user, home, product") << user << QByteArrayList{"CG_USER_DIR", "XDG_CONFIG_HOME", "CG_PRODUCT_NAME=vpn"}
                                         << QByteArray("~/.config/vpn");
    QTest::newRow("common, empty head") << common << QByteArrayList{"CG_COMMON_DIR=", "XDG_CONFIG_DIRS=:/b", "CG_PRODUCT_NAME=vpn"}
                                        << QByteArray("/etc/xdg/vpn");
}

void TestPlatform::directoriesFollowTheEnvironment()
{
    QFETCH(PathFunction, function);
    QFETCH(QByteArrayList, environment);
    QFETCH(QByteArray, expected);
    const char* handedOut = nullptr;
    {
        std::forward_list<EnvVar> set;
        for (const QByteArray& entry : environment) {
            const int eq = entry.indexOf('=');
            set.emplace_front(eq < 0 ? entry : entry.left(eq), eq < 0 ? nullptr : entry.constData() + eq + 1);
        }
        handedOut = function();
        QCOMPARE(QByteArray(handedOut), expected.replace('~', qgetenv("HOME")));
    }
    QVERIFY(QByteArray(function()) != expected && *function() != 0);
    QCOMPARE(QByteArray(handedOut), expected); // text handed out earlier outlives the change
}

void TestPlatform::binaryAndResourceDirsFollowTheExecutable()
{
    EnvVar noBin("CG_BIN_DIR", nullptr), noResource("CG_RESOURCE_DIR", nullptr);
    QCOMPARE(QString::fromUtf8(agentBinDir()), QCoreApplication::applicationDirPath());
    // Beside a bin directory, share/common_gui is the resource tree; without one the installed one.
    QTemporaryDir prefix;
    QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("bin")));
    EnvVar bin("CG_BIN_DIR", QFile::encodeName(prefix.path() + QStringLiteral("/bin")).constData());
    const QString fallback = QString::fromUtf8(agentEtcDir());
    QVERIFY(fallback.endsWith(QLatin1String("/share/common_gui")) && !fallback.startsWith(prefix.path()));
    QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("share/common_gui")));
    QCOMPARE(QString::fromUtf8(agentEtcDir()),
             QFileInfo(prefix.path() + QStringLiteral("/share/common_gui")).canonicalFilePath());
}

void TestPlatform::moduleLoad_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<int>("answer");       // what loadFile returns
    QTest::addColumn<int>("fileKind");     // 0 none, 1 regular file, 2 directory
    QTest::addColumn<QString>("mentions"); // besides the file name; null: loads
    QTest::newRow("loads") << QByteArray("rus") << 0 << 1 << QString();
    QTest::newRow("directory in the way") << QByteArray("fra") << 0 << 2 << reason(EISDIR);
    QTest::newRow("most negative code") << QByteArray("lit") << INT_MIN << 1 << QStringLiteral("code %1").arg(INT_MIN);
    QTest::newRow("language leaving the directory") << QByteArray("x/../../probe_rus") << 0 << 0 << reason(EINVAL);
}

void TestPlatform::moduleLoad()
{
    QFETCH(QByteArray, language);
    QFETCH(int, answer);
    QFETCH(int, fileKind);
    QFETCH(QString, mentions);
    const QString dir = QString::fromUtf8(agentEtcDir()) + QStringLiteral("/translations/");
    QVERIFY(QDir().mkpath(dir));
    const QString file = dir + QStringLiteral("probe_%1.lcl").arg(QString::fromLatin1(language));
    if (fileKind == 1)
        writeFile(file, QByteArray("LCLR\0\x01", 6));
    else if (fileKind == 2)
        QVERIFY(QDir().mkpath(file));
    ProbeModule module(answer);
    std::string error = "untouched";
    QCOMPARE(module.load(language.constData(), &error), mentions.isNull() ? 1 : 0);
    QCOMPARE(module.seen, fileKind == 1 ? QByteArray("LCLR\0\x01", 6) : QByteArray());
    const QString text = QString::fromStdString(error);
    QVERIFY2(mentions.isNull() ? error == "untouched" && module.state == 0 : text.contains(file) && text.contains(mentions),
             qPrintable(text));
    QCOMPARE(module.load(language.constData(), nullptr), mentions.isNull() ? 1 : 0);
}

void TestPlatform::savedFileLoadsBackKeepingPermissionsAndSymlinks()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("файл.ini"));
    writeFile(path, QByteArray("old content that is longer"), 0444);
    UTF8File::save(path.toUtf8().constData(), "new\0bytes", 9);
    ArrayHolder<char> buffer;
    QCOMPARE(UTF8File::load(path.toUtf8().constData(), buffer, 9, false), 9u); // exactly the limit
    QCOMPARE(QByteArray(buffer.get(), 10), QByteArray("new\0bytes\0", 10));
    QVERIFY_EXCEPTION_THROWN(UTF8File::load(path.toUtf8().constData(), buffer, 8, false), TTT);
    QVERIFY_EXCEPTION_THROWN(UTF8File::load("/dev/null", buffer, 8, false), TTT); // not a regular file
    QCOMPARE(permissions(path), mode_t(0444));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("файл.ini")});

    const mode_t old = ::umask(027); // a new file gets the umask's mode
    const QString created = dir.filePath(QStringLiteral("created.txt"));
    UTF8File::save(created.toUtf8().constData(), "", 0);
    ::umask(old);
    QCOMPARE(permissions(created), mode_t(0640));

    const QString link = dir.filePath(QStringLiteral("link.txt")); // replaces the target, keeps the link
    QVERIFY(QFile::link(created, link));
    UTF8File::save(link.toUtf8().constData(), "new", 3);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(readAll(created), QByteArray("new"));

    // A dangling link (relative, through a second link) gets its target created.
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("sub")));
    QCOMPARE(::symlink("sub/hop", dir.filePath(QStringLiteral("dangling")).toUtf8().constData()), 0);
    QCOMPARE(::symlink("later.txt", dir.filePath(QStringLiteral("sub/hop")).toUtf8().constData()), 0);
    UTF8File::save(dir.filePath(QStringLiteral("dangling")).toUtf8().constData(), "made", 4);
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("dangling"))).isSymLink());
    QCOMPARE(readAll(dir.filePath(QStringLiteral("sub/later.txt"))), QByteArray("made"));

    // Names up to the file system's limit can be saved again, though the temporary name is longer.
    for (int length : {247, 248, 255}) {
        const QString longName = dir.filePath(QString(length - 4, QLatin1Char('n')) + QStringLiteral(".txt"));
        writeFile(longName, "old");
        UTF8File::save(longName.toUtf8().constData(), "saved", 5);
        QCOMPARE(readAll(longName), QByteArray("saved"));
    }
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).filter(QStringLiteral("nnnn")).size(), 3);
}

void TestPlatform::failedSaveLeavesTheOldFile_data()
{
    // As root, permissions do not stop a write; these make it fail for reasons that do.
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("mentions");
    QTest::newRow("target is a directory") << QStringLiteral("sub") << reason(EISDIR);
    QTest::newRow("write fails half way") << QStringLiteral("settings.ini") << reason(EFBIG);
}

void TestPlatform::failedSaveLeavesTheOldFile()
{
    QFETCH(QString, target);
    QFETCH(QString, mentions);
    QTemporaryDir dir;
    const QString old = dir.filePath(QStringLiteral("settings.ini")), path = dir.filePath(target);
    writeFile(old, QByteArray("[Group]\nKey=1\n"), 0640);
    QVERIFY(QDir().mkpath(dir.filePath(QStringLiteral("sub/inner"))));

    // A file size limit below the new content makes the write fail half way, like a full disk.
    struct rlimit saved;
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    const struct rlimit small = {4096, saved.rlim_max};
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    std::string message;
    try {
        UTF8File::save(path.toUtf8().constData(), std::string(10000, 'n').c_str(), 10000);
    } catch (const TTT& error) {
        error.makeMulti(message);
    }
    ::setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);

    QVERIFY2(message.find(path.toStdString()) != std::string::npos
                 && message.find(mentions.toStdString()) != std::string::npos, message.c_str());
    QCOMPARE(readAll(old), QByteArray("[Group]\nKey=1\n"));
    QCOMPARE(permissions(old), mode_t(0640));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("settings.ini")});
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("sub/inner"))).isDir());
}

void TestPlatform::conviRoundTrips_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("qtName");
    QTest::addColumn<QString>("text");
    // Every code page convi knows, with text that uses its upper half.
    QTest::newRow("IBM866") << CP_IBM866 << QByteArray("IBM866") << QString::fromUtf8("Съешь же ещё этих булок, ЁЖ 5 ░▒▓╬ №");
    QTest::newRow("windows-1251, long") << CP_WINDOWS1251 << QByteArray("windows-1251")
                                        << QString::fromUtf8("Съешь же ещё «этих» булок — № 5, Ђђ Її Ґґ").repeated(500);
    QTest::newRow("KOI8-R") << CP_KOI8R << QByteArray("KOI8-R") << QString::fromUtf8("Съешь же ещё этих булок ЁЖ ─│┌ ≤≥");
    QTest::newRow("KOI8-U") << CP_KOI8U << QByteArray("KOI8-U") << QString::fromUtf8("Ґанок, їжак, єнот, ієрогліф: ЄІЇҐ");
    QTest::newRow("ISO-8859-5") << CP_ISO8859_5 << QByteArray("ISO-8859-5") << QString::fromUtf8("Съешь же ещё этих булок № ЂЉЊ §");
    QTest::newRow("windows-1252, long") << CP_WINDOWS1252 << QByteArray("windows-1252")
                                        << QString::fromUtf8("Ça coûte 5 € déjà — „gut“").repeated(500);
    QTest::newRow("ISO-8859-1") << CP_ISO8859_1 << QByteArray("ISO-8859-1") << QString::fromUtf8("Ça déjà vu, naïve façade ÿ ¿¡ ß ×÷");
    QTest::newRow("ASCII") << CP_ASCII << QByteArray("US-ASCII") << QStringLiteral("The quick brown fox, 0123456789 ~!@#$%^&*()");
    QTest::newRow("UTF-8") << CP_UTF8 << QByteArray("UTF-8") << QString::fromUtf8("Съешь ЁЖ 😀 中文 déjà");
    QTest::newRow("UTF-16LE") << CP_UTF16LE << QByteArray("UTF-16LE") << QString::fromUtf8("Съешь ЁЖ 😀 中文 déjà");
    QTest::newRow("UTF-16BE, long") << CP_UTF16BE << QByteArray("UTF-16BE") << QString::fromUtf8("Съешь ЁЖ 😀 中文").repeated(500);
    QTest::newRow("KOI8-R, empty") << CP_KOI8R << QByteArray("KOI8-R") << QString();
}

void TestPlatform::conviRoundTrips()
{
    QFETCH(int, page);
    QFETCH(QByteArray, qtName);
    QFETCH(QString, text);
    // Qt's own codecs are the independent reference for the encoded bytes.
    QTextCodec* codec = QTextCodec::codecForName(qtName);
    QVERIFY(codec);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray encoded = codec->fromUnicode(text.constData(), text.size(), &state);
    QCOMPARE(state.invalidChars, 0);
    for (const bool encode : {true, false}) {
        const QByteArray in = encode ? text.toUtf8() : encoded;
        const int nul = page == CP_UTF16BE || page == CP_UTF16LE ? 2 : 1;
        const QByteArray expected = encode ? encoded + QByteArray(nul, '\0') : text.toUtf8() + '\0';
        convi converter(encode ? CP_UTF8 : page, encode ? page : CP_UTF8);
        const unsigned size = converter.get_outsize(in.constData(), unsigned(in.size()));
        QCOMPARE(size, unsigned(expected.size()));
        QByteArray out(int(size) + 1, '\x7f');
        converter.convert_safe(in.constData(), unsigned(in.size()), out.data(), size);
        QCOMPARE(out, expected + '\x7f');
    }
}

void TestPlatform::conviStopsAtWhatDoesNotFitOrConvert_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("dstSize");
    QTest::addColumn<uint>("outsize");    // 0: cannot convert
    QTest::addColumn<QByteArray>("written");
    const QByteArray abv("\xdf\xc1\xc2"); // "ЯБВ" in Windows-1251
    QTest::newRow("UTF-8, 2: no half character") << CP_WINDOWS1251 << CP_UTF8 << abv << 2 << 7u << QByteArray("", 1);
    QTest::newRow("UTF-16BE, 7") << CP_WINDOWS1251 << CP_UTF16BE << abv << 7 << 8u << QByteArray("\x04\x2f\x04\x11\0", 6);
    QTest::newRow("cut UTF-8") << CP_UTF8 << CP_WINDOWS1251 << QByteArray("\xd0\xaf\xd0") << 8 << 0u << QByteArray("\xdf", 2);
    QTest::newRow("Cyrillic into 1252") << CP_UTF8 << CP_WINDOWS1252 << QByteArray("abc \xd0\xaf") << 8 << 0u << QByteArray("abc ", 5);
}

void TestPlatform::conviStopsAtWhatDoesNotFitOrConvert()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QByteArray, input);
    QFETCH(int, dstSize);
    QFETCH(QByteArray, written);
    convi converter(from, to);
    QTEST(converter.get_outsize(input.constData(), unsigned(input.size())), "outsize");
    QByteArray out(32, '\x7f');
    converter.convert_safe(input.constData(), unsigned(input.size()), out.data(), unsigned(dstSize));
    converter.convert_safe(input.constData(), unsigned(input.size()), out.data() + dstSize, 0); // writes nothing
    QCOMPARE(out, written + QByteArray(32 - written.size(), '\x7f'));
    if (from == CP_UTF8) // a failed conversion leaves no state behind
        QCOMPARE(converter.get_outsize("abc", 3), 4u);
}

namespace {

// iconv itself, as convert_safe() uses it: whole characters into dstSize - 1 bytes, then NUL.
struct IconvResult
{
    bool converts = false;   // the whole input converts
    unsigned outsize = 0;    // as get_outsize() answers
    QByteArray written;      // what convert_safe() leaves, NUL included
};

IconvResult iconvReference(const char* fromName, const QByteArray& input, unsigned dstSize)
{
    IconvResult result;
    iconv_t cd = ::iconv_open("UTF-8", fromName);
    if (cd == reinterpret_cast<iconv_t>(-1))
        return result;
    QByteArray out(int(input.size()) * 3 + 1, '\0');
    char* in = const_cast<char*>(input.constData());
    size_t inLeft = size_t(input.size());
    char* o = out.data();
    size_t outLeft = size_t(out.size());
    result.converts = ::iconv(cd, &in, &inLeft, &o, &outLeft) != size_t(-1);
    result.outsize = result.converts ? unsigned(o - out.data()) + 1 : 0;
    ::iconv(cd, nullptr, nullptr, nullptr, nullptr);
    in = const_cast<char*>(input.constData());
    inLeft = size_t(input.size());
    o = out.data();
    outLeft = dstSize - 1;
    ::iconv(cd, &in, &inLeft, &o, &outLeft);
    result.written = QByteArray(out.constData(), int(o - out.data())) + '\0';
    ::iconv_close(cd);
    return result;
}

} // namespace

void TestPlatform::conviTablesDecodeAsIconvDoes_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("iconvName");
    QTest::newRow("CP866") << CP_IBM866 << QByteArray("CP866");
    QTest::newRow("Windows-1251") << CP_WINDOWS1251 << QByteArray("WINDOWS-1251");
    QTest::newRow("Windows-1252") << CP_WINDOWS1252 << QByteArray("WINDOWS-1252");
    QTest::newRow("KOI8-R") << CP_KOI8R << QByteArray("KOI8-R");
    QTest::newRow("KOI8-U") << CP_KOI8U << QByteArray("KOI8-U");
    QTest::newRow("ISO-8859-1") << CP_ISO8859_1 << QByteArray("ISO-8859-1");
    QTest::newRow("ISO-8859-5") << CP_ISO8859_5 << QByteArray("ISO-8859-5");
}

void TestPlatform::conviTablesDecodeAsIconvDoes()
{
    QFETCH(int, page);
    QFETCH(QByteArray, iconvName);
    convi converter(page, CP_UTF8);
    auto check = [&](const QByteArray& input, unsigned dstSize) {
        const IconvResult expected = iconvReference(iconvName.constData(), input, dstSize);
        QCOMPARE(converter.get_outsize(input.constData(), unsigned(input.size())), expected.outsize);
        QByteArray out(int(dstSize) + 4, '\x7f');
        converter.convert_safe(input.constData(), unsigned(input.size()), out.data(), dstSize);
        QCOMPARE(out, expected.written + QByteArray(out.size() - expected.written.size(), '\x7f'));
    };
    for (int b = 0; b < 256; ++b) {
        check(QByteArray(1, char(b)), 4);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("byte 0x%1").arg(b, 2, 16, QLatin1Char('0'))));
    }
    // All 256 bytes in one text, and all that the code page defines, cut off at every output size:
    // both stop at the same character, one the code page lacks or the first that does not fit.
    QByteArray all, defined;
    for (int b = 255; b >= 0; --b) {
        all += char(b);
        if (iconvReference(iconvName.constData(), QByteArray(1, char(b)), 4).converts)
            defined += char(b);
    }
    QVERIFY(defined.size() >= 250);
    for (const QByteArray& text : {all, defined}) {
        for (unsigned dstSize = 1; dstSize <= 800; dstSize += dstSize < 40 ? 1 : 37) {
            check(text, dstSize);
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(QStringLiteral("%1 bytes into %2").arg(text.size()).arg(dstSize)));
        }
    }
}

CG_TEST_MAIN(TestPlatform)
#include "tst_platform.moc"
