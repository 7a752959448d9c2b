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
    {
        value ? void(qputenv(name, value)) : void(qunsetenv(name));
    }
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
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size(), qPrintable(path));
    file.close();
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

mode_t permissions(const QString& path)
{
    struct stat st;
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? (st.st_mode & 07777) : mode_t(-1);
}

QString reason(int errorNumber) { return QString::fromLocal8Bit(std::strerror(errorNumber)); }

QString translationFile(const QString& name)
{
    const QString dir = QString::fromUtf8(agentEtcDir()) + QStringLiteral("/translations");
    QDir().mkpath(dir);
    return dir + QLatin1Char('/') + name;
}

// A module whose loadFile reads the whole file and answers with a chosen code.
struct ProbeModule : Loc::Module
{
    explicit ProbeModule(int answer) : Module("probe"), answer(answer) {}
    int loadFile(FILE* file) override
    {
        char chunk[256];
        for (size_t n; (n = std::fread(chunk, 1, sizeof chunk, file)) > 0;)
            seen.append(chunk, int(n));
        ++calls;
        return answer;
    }
    int answer;
    QByteArray seen;
    int calls = 0;
};

struct BareModule : Loc::Module // keeps the base's loadFile
{
    BareModule() : Module("bare") {}
};

} // namespace

class TestPlatform : public QObject
{
    Q_OBJECT
private slots:
    void directoriesFollowTheEnvironment_data();
    void directoriesFollowTheEnvironment();
    void binaryAndResourceDirsFollowTheExecutable();
    void errorTextsAndStreqEdges();
    void containersKeepEveryByteAndOwnOnce();
    void moduleLoad_data();
    void moduleLoad();
    void utf8FileLoad_data();
    void utf8FileLoad();
    void saveKeepsPermissionsAndSymlinks();
    void failedSaveLeavesTheOldFile_data();
    void failedSaveLeavesTheOldFile();
    void conviRoundTrips_data();
    void conviRoundTrips();
    void conviCannotConvert_data();
    void conviCannotConvert();
    void conviTinyBuffersStayTerminated_data();
    void conviTinyBuffersStayTerminated();

private:
    QTemporaryDir m_tmp;
};

void TestPlatform::directoriesFollowTheEnvironment_data()
{
    QTest::addColumn<PathFunction>("function");
    QTest::addColumn<QByteArrayList>("environment"); // "NAME=value", or "NAME" to unset it
    QTest::addColumn<QByteArray>("expected");         // "~" stands for $HOME
    const PathFunction user = userDataDirForWrite_utf8, common = userDataCommonDir_utf8;
    QTest::newRow("bin") << PathFunction(agentBinDir) << QByteArrayList{"CG_BIN_DIR=/opt/x/bin"} << QByteArray("/opt/x/bin");
    QTest::newRow("resource") << PathFunction(agentEtcDir) << QByteArrayList{"CG_RESOURCE_DIR=/opt/share"} << QByteArray("/opt/share");
    QTest::newRow("product") << PathFunction(productName) << QByteArrayList{"CG_PRODUCT_NAME=agent"} << QByteArray("agent");
    QTest::newRow("user, UTF-8") << user << QByteArrayList{"CG_USER_DIR=/home/\xd0\xaf"} << QByteArray("/home/\xd0\xaf");
    QTest::newRow("user, empty counts as unset, xdg") << user << QByteArrayList{"CG_USER_DIR=", "XDG_CONFIG_HOME=/x/cfg"}
                                                      << QByteArray("/x/cfg/common_gui");
    QTest::newRow("user, home, product") << user << QByteArrayList{"CG_USER_DIR", "XDG_CONFIG_HOME", "CG_PRODUCT_NAME=vpn"}
                                         << QByteArray("~/.config/vpn");
    QTest::newRow("common") << common << QByteArrayList{"CG_COMMON_DIR=/etc/x"} << QByteArray("/etc/x");
    QTest::newRow("common, first of list") << common << QByteArrayList{"CG_COMMON_DIR", "XDG_CONFIG_DIRS=/a/xdg:/b/xdg"}
                                           << QByteArray("/a/xdg/common_gui");
    QTest::newRow("common, default") << common << QByteArrayList{"CG_COMMON_DIR", "XDG_CONFIG_DIRS"}
                                     << QByteArray("/etc/xdg/common_gui");
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
    QVERIFY2(fallback.endsWith(QLatin1String("/share/common_gui")) && !fallback.startsWith(prefix.path()),
             qPrintable(fallback));
    QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("share/common_gui")));
    QCOMPARE(QString::fromUtf8(agentEtcDir()),
             QFileInfo(prefix.path() + QStringLiteral("/share/common_gui")).canonicalFilePath());
}

void TestPlatform::errorTextsAndStreqEdges()
{
    TTT error("open failed");
    QCOMPARE(&error.add(std::string()), &error);
    error.add("import stopped");
    std::string out = "left over from before";
    error.makeMulti(out);
    QCOMPARE(out, std::string("import stopped\n\nopen failed")); // the most general first
    TTT().makeMulti(out);
    QCOMPARE(out, std::string());

    QVERIFY(streq(nullptr, nullptr) && streq("", "") && streq("\xd0\xaf", "\xd0\xaf"));
    QVERIFY(!streq(nullptr, "") && !streq("", nullptr));
    QVERIFY(!streq("utf-8", "UTF-8") && !streq("utf", "utf-8"));
}

void TestPlatform::containersKeepEveryByteAndOwnOnce()
{
    Bag bag;
    QVERIFY(bag.empty() && bag.data() != nullptr);
    bag.append("a\0\xff", 3);
    bag.append(std::string("tail"));
    bag.append(nullptr, 10);
    QCOMPARE(QByteArray(bag.data(), int(bag.size())), QByteArray("a\0\xfftail", 7));

    // The sanitizer build sees a leak or a double free here.
    ArrayHolder<int> a(new int[3]{1, 2, 3}, 3);
    ArrayHolder<int> b(std::move(a));
    QVERIFY(a.get() == nullptr && b[2] == 3);
    b.reset(new int[1]{7}, 1);
    b.reset(b.get(), 1); // taking back the same array must not free it
    QCOMPARE(b[0], 7);
    delete[] b.release();
    QCOMPARE(b.get(), nullptr);
}

void TestPlatform::moduleLoad_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<int>("answer");       // what loadFile returns
    QTest::addColumn<int>("fileKind");     // 0 none, 1 regular file, 2 directory
    QTest::addColumn<QString>("mentions"); // besides the file name; null: loads
    QTest::newRow("loads") << QByteArray("rus") << 0 << 1 << QString();
    QTest::newRow("missing file") << QByteArray("deu") << 0 << 0 << reason(ENOENT);
    QTest::newRow("directory in the way") << QByteArray("fra") << 0 << 2 << reason(EISDIR);
    QTest::newRow("not a localization file") << QByteArray("ita") << 2 << 1 << QStringLiteral("code 2");
    QTest::newRow("unknown code") << QByteArray("ukr") << 42 << 1 << QStringLiteral("code 42");
    QTest::newRow("most negative code") << QByteArray("lit") << INT_MIN << 1 << QStringLiteral("code %1").arg(INT_MIN);
    QTest::newRow("language leaving the directory") << QByteArray("x/../../probe_rus") << 0 << 0 << reason(EINVAL);
}

void TestPlatform::moduleLoad()
{
    QFETCH(QByteArray, language);
    QFETCH(int, answer);
    QFETCH(int, fileKind);
    QFETCH(QString, mentions);
    const QString file = translationFile(QStringLiteral("probe_%1.lcl").arg(QString::fromLatin1(language)));
    if (fileKind == 1)
        writeFile(file, QByteArray("LCLR\0\x01", 6));
    else if (fileKind == 2)
        QVERIFY(QDir().mkpath(file));

    ProbeModule module(answer);
    std::string error = "untouched";
    QCOMPARE(module.load(language.constData(), &error), mentions.isNull() ? 1 : 0);
    QCOMPARE(module.calls, fileKind == 1 ? 1 : 0);
    const QString text = QString::fromStdString(error);
    if (mentions.isNull())
        QVERIFY(module.seen == QByteArray("LCLR\0\x01", 6) && error == "untouched" && module.state == 0);
    else
        QVERIFY2(text.contains(file) && text.contains(mentions), qPrintable(text));
    QCOMPARE(module.load(language.constData(), nullptr), mentions.isNull() ? 1 : 0);
    if (!mentions.isNull())
        return;
    // The base loadFile throws -1; through load() that becomes an ordinary failure.
    BareModule bare;
    QVERIFY_EXCEPTION_THROWN(bare.loadFile(stdin), int);
    writeFile(translationFile(QStringLiteral("bare_rus.lcl")), QByteArray("x"));
    QCOMPARE(bare.load("rus", &error), 0);
    QVERIFY2(error.find("code -1") != std::string::npos, error.c_str());
}

void TestPlatform::utf8FileLoad_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<uint>("maxSize");
    QTest::addColumn<QString>("mentions"); // null: loads
    const QString plain = m_tmp.filePath(QStringLiteral("plain.txt"));
    const QString nuls = m_tmp.filePath(QStringLiteral("политика.lsp"));
    const QString big = m_tmp.filePath(QStringLiteral("big.txt"));
    writeFile(nuls, QByteArray("a\0b\0\xff", 5));
    writeFile(plain, QByteArray());
    writeFile(big, QByteArray(100000, 'z'));
    QTest::newRow("empty") << plain << QByteArray() << 0u << QString();
    QTest::newRow("NULs, exactly the limit") << nuls << QByteArray("a\0b\0\xff", 5) << 5u << QString();
    QTest::newRow("larger than a page") << big << QByteArray(100000, 'z') << 100000u << QString();
    QTest::newRow("one byte too large") << nuls << QByteArray() << 4u << reason(EFBIG);
    QTest::newRow("missing") << m_tmp.filePath(QStringLiteral("nope.txt")) << QByteArray() << 100u << reason(ENOENT);
    QTest::newRow("directory") << m_tmp.path() << QByteArray() << 100u << reason(EISDIR);
    QTest::newRow("device") << QStringLiteral("/dev/null") << QByteArray() << 100u << QStringLiteral("not a regular file");
}

void TestPlatform::utf8FileLoad()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, content);
    QFETCH(uint, maxSize);
    QFETCH(QString, mentions);
    char* before = new char[2]{'k', 0};
    ArrayHolder<char> buffer(before, 2);
    try {
        const unsigned n = UTF8File::load(path.toUtf8().constData(), buffer, maxSize, false);
        QVERIFY2(mentions.isNull(), "no exception");
        QCOMPARE(QByteArray(buffer.get(), int(n)), content);
        QVERIFY(buffer.size() > n && buffer.get()[n] == '\0');
    } catch (const TTT& error) {
        std::string text;
        error.makeMulti(text);
        QVERIFY2(!mentions.isNull() && text.find(path.toStdString()) != std::string::npos
                     && text.find(mentions.toStdString()) != std::string::npos, text.c_str());
        QCOMPARE(buffer.get(), before);
    }
}

void TestPlatform::saveKeepsPermissionsAndSymlinks()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("файл.ini"));
    writeFile(path, QByteArray("old content that is longer"), 0444);
    const QByteArray fresh("new\0bytes", 9);
    UTF8File::save(path.toUtf8().constData(), fresh.constData(), unsigned(fresh.size()));
    QCOMPARE(readAll(path), fresh);
    QCOMPARE(permissions(path), mode_t(0444));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("файл.ini")});

    const mode_t old = ::umask(027); // a new file gets the umask's mode
    const QString created = dir.filePath(QStringLiteral("created.txt"));
    UTF8File::save(created.toUtf8().constData(), "", 0);
    ::umask(old);
    QCOMPARE(readAll(created), QByteArray());
    QCOMPARE(permissions(created), mode_t(0640));

    const QString link = dir.filePath(QStringLiteral("link.txt")); // replaces the target, keeps the link
    QVERIFY(QFile::link(created, link));
    UTF8File::save(link.toUtf8().constData(), "new", 3);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(readAll(created), QByteArray("new"));
    QCOMPARE(permissions(created), mode_t(0640));
}

void TestPlatform::failedSaveLeavesTheOldFile_data()
{
    // As root, permissions do not stop a write; these make it fail for reasons that do.
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("mentions");
    QTest::newRow("directory does not exist") << QStringLiteral("missing/settings.ini") << reason(ENOENT);
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
    struct rlimit saved, small;
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    small = saved;
    small.rlim_cur = 4096;
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const QByteArray fresh(10000, 'n');
    std::string message;
    try {
        UTF8File::save(path.toUtf8().constData(), fresh.constData(), unsigned(fresh.size()));
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

static const struct
{
    codepage_t page;
    const char* qtName;
    const char* text;
} pages[] = {
    {CP_IBM866, "IBM866", "Съешь же ещё этих мягких булок, ЁЖ 5"},
    {CP_WINDOWS1251, "windows-1251", "Съешь же ещё этих мягких булок, ЁЖ 5"},
    {CP_KOI8R, "KOI8-R", "Съешь же ещё этих мягких булок, ЁЖ 5"},
    {CP_ISO8859_5, "ISO-8859-5", "Съешь же ещё этих мягких булок, ЁЖ 5"},
    {CP_KOI8U, "KOI8-U", "Ґанок, їжак, єдність, Съешь 5"},
    {CP_WINDOWS1252, "windows-1252", "Ça coûte 5 € déjà — „gut“"},
    {CP_ISO8859_1, "ISO-8859-1", "Größe ½ façade"},
    {CP_ASCII, "US-ASCII", "plain text, 100%"},
    {CP_UTF16LE, "UTF-16LE", "Съешь ЁЖ 😀 中文"},
    {CP_UTF16BE, "UTF-16BE", "Съешь ЁЖ 😀 中文"},
};

void TestPlatform::conviRoundTrips_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    for (int i = 0; i < int(sizeof pages / sizeof pages[0]); ++i) {
        QTest::newRow(pages[i].qtName) << i << QString::fromUtf8(pages[i].text);
        if (i % 2)
            QTest::addRow("%s, long", pages[i].qtName) << i << QString::fromUtf8(pages[i].text).repeated(500);
    }
    QTest::newRow("UTF-16LE, empty") << 8 << QString();
    QTest::newRow("KOI8-R, empty") << 2 << QString();
}

void TestPlatform::conviRoundTrips()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    const codepage_t page = pages[index].page;
    const int nul = (page == CP_UTF16LE || page == CP_UTF16BE) ? 2 : 1;
    // Qt's own codecs are the independent reference for the encoded bytes.
    QTextCodec* codec = QTextCodec::codecForName(pages[index].qtName);
    QVERIFY(codec);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray encoded = codec->fromUnicode(text.constData(), text.size(), &state);
    QCOMPARE(state.invalidChars, 0);
    for (const bool encode : {true, false}) {
        const QByteArray in = encode ? text.toUtf8() : encoded;
        const QByteArray expected = encode ? encoded + QByteArray(nul, '\0') : text.toUtf8() + '\0';
        convi converter(encode ? CP_UTF8 : page, encode ? page : CP_UTF8);
        const unsigned size = converter.get_outsize(in.constData(), unsigned(in.size()));
        QCOMPARE(size, unsigned(expected.size()));
        QByteArray out(int(size), '\x7f');
        converter.convert_safe(in.constData(), unsigned(in.size()), out.data(), size);
        QCOMPARE(out, expected);
    }
}

void TestPlatform::conviCannotConvert_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("invalid UTF-8") << CP_UTF8 << CP_WINDOWS1251 << QByteArray("ok\xff\xfe");
    QTest::newRow("UTF-8 cut mid-character") << CP_UTF8 << CP_WINDOWS1251 << QByteArray("\xd0\xaf\xd0");
    QTest::newRow("Cyrillic into Windows-1252") << CP_UTF8 << CP_WINDOWS1252 << QByteArray("abc \xd0\xaf");
    QTest::newRow("undefined Windows-1251 byte") << CP_WINDOWS1251 << CP_UTF8 << QByteArray("a\x98");
    QTest::newRow("odd UTF-16 length") << CP_UTF16LE << CP_UTF8 << QByteArray("a\0b", 3);
    QTest::newRow("lone surrogate") << CP_UTF16BE << CP_UTF8 << QByteArray("\xd8\x3d\x00\x41", 4);
    QTest::newRow("unknown target page") << CP_UTF8 << 99 << QByteArray("abc");
    QTest::newRow("negative page") << -1 << CP_UTF8 << QByteArray("abc");
}

void TestPlatform::conviCannotConvert()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QByteArray, input);
    convi converter(from, to);
    QCOMPARE(converter.get_outsize(input.constData(), unsigned(input.size())), 0u);
    char out[16];
    std::memset(out, '\x7f', sizeof out);
    converter.convert_safe(input.constData(), unsigned(input.size()), out, 8);
    QVERIFY(std::memchr(out, 0, 8) != nullptr && out[8] == '\x7f');
    if (from == CP_UTF8 && to != 99) // a failed conversion leaves no state behind
        QCOMPARE(converter.get_outsize("abc", 3), 4u);
}

void TestPlatform::conviTinyBuffersStayTerminated_data()
{
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("dstSize");
    QTest::addColumn<QByteArray>("expected"); // everything written
    QTest::newRow("UTF-8, 1") << CP_UTF8 << 1 << QByteArray("", 1);
    QTest::newRow("UTF-8, 2: no half character") << CP_UTF8 << 2 << QByteArray("", 1);
    QTest::newRow("UTF-8, 5") << CP_UTF8 << 5 << QByteArray("\xd0\xaf\xd0\x91", 5);
    QTest::newRow("UTF-16LE, 3") << CP_UTF16LE << 3 << QByteArray("\0", 2);
    QTest::newRow("UTF-16BE, 7") << CP_UTF16BE << 7 << QByteArray("\x04\x2f\x04\x11\0", 6);
}

void TestPlatform::conviTinyBuffersStayTerminated()
{
    QFETCH(int, to);
    QFETCH(int, dstSize);
    QFETCH(QByteArray, expected);
    convi converter(CP_WINDOWS1251, to);
    QByteArray out(32, '\x7f');
    converter.convert_safe("\xdf\xc1\xc2", 3, out.data(), unsigned(dstSize)); // "ЯБВ" in Windows-1251
    converter.convert_safe("\xdf\xc1\xc2", 3, out.data() + dstSize, 0);       // writes nothing
    QCOMPARE(out, expected + QByteArray(32 - expected.size(), '\x7f'));
}

CG_TEST_MAIN(TestPlatform)
#include "tst_platform.moc"
