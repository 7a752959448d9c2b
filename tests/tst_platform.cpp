// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_core.h"
#include "convi.h"
#include "paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextCodec>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Sets (or with a null value removes) one environment variable for the life of the object.
class EnvVar
{
public:
    EnvVar(const char* name, const char* value)
        : m_name(name), m_had(qEnvironmentVariableIsSet(name)), m_old(qgetenv(name))
    {
        if (value)
            qputenv(name, value);
        else
            qunsetenv(name);
    }
    ~EnvVar()
    {
        if (m_had)
            qputenv(m_name, m_old);
        else
            qunsetenv(m_name);
    }
    EnvVar(const EnvVar&) = delete;
    EnvVar& operator=(const EnvVar&) = delete;

private:
    const char* m_name;
    bool m_had;
    QByteArray m_old;
};

using PathFunction = const char* (*)();

const PathFunction pathFunctions[] = {agentBinDir, agentEtcDir, userDataDirForWrite_utf8,
                                      userDataCommonDir_utf8, productName};

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

void writeFile(const QString& path, const QByteArray& bytes, mode_t mode = 0644)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    QCOMPARE(file.write(bytes), bytes.size());
    file.close();
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

mode_t permissions(const QString& path)
{
    struct stat st;
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? (st.st_mode & 07777) : mode_t(-1);
}

QString reason(int errorNumber)
{
    return QString::fromLocal8Bit(std::strerror(errorNumber));
}

// A module whose loadFile reads the whole file and answers with a chosen code.
class ProbeModule : public Loc::Module
{
public:
    explicit ProbeModule(int answer) : Module("probe"), m_answer(answer) {}
    int loadFile(FILE* file) override
    {
        char chunk[256];
        size_t n;
        while ((n = std::fread(chunk, 1, sizeof chunk, file)) > 0)
            seen.append(chunk, int(n));
        ++calls;
        return m_answer;
    }
    QByteArray seen;
    int calls = 0;

private:
    int m_answer;
};

// A module that keeps the base's loadFile.
class BareModule : public Loc::Module
{
public:
    BareModule() : Module("bare") {}
};

} // namespace

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    // paths
    void environmentRedirectsEveryDirectory_data();
    void environmentRedirectsEveryDirectory();
    void userAndCommonDirsFollowXdg_data();
    void userAndCommonDirsFollowXdg();
    void binaryAndResourceDirsFollowTheExecutable();
    void handedOutTextOutlivesEnvironmentChange();

    // TTT, streq, containers
    void makeMultiPutsTheMostGeneralFirst_data();
    void makeMultiPutsTheMostGeneralFirst();
    void streqComparesBytes_data();
    void streqComparesBytes();
    void bagKeepsEveryByte();
    void arrayHolderOwnsExactlyOnce();

    // Loc::Module
    void moduleLoadsItsFileFromTheResourceDir();
    void moduleLoadFailures_data();
    void moduleLoadFailures();
    void baseLoadFileThrowsMinusOne();

    // UTF8File
    void loadReadsTheWholeFile_data();
    void loadReadsTheWholeFile();
    void loadRefuses_data();
    void loadRefuses();
    void saveKeepsPermissions_data();
    void saveKeepsPermissions();
    void saveCreatesAFileWithTheUmaskMode();
    void saveThroughASymlinkReplacesItsTarget();
    void failedSaveLeavesTheOldFile_data();
    void failedSaveLeavesTheOldFile();
    void saveOnAFullDiskLeavesTheOldFile();

    // convi
    void conviRoundTrips_data();
    void conviRoundTrips();
    void conviCannotConvert_data();
    void conviCannotConvert();
    void conviTinyBuffersStayTerminated_data();
    void conviTinyBuffersStayTerminated();

private:
    QTemporaryDir m_tmp;
};

// ---------------------------------------------------------------- paths

void TestPlatform::environmentRedirectsEveryDirectory_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("bin") << 0 << QByteArray("CG_BIN_DIR") << QByteArray("/opt/x/bin");
    QTest::newRow("resource") << 1 << QByteArray("CG_RESOURCE_DIR") << QByteArray("/opt/x/share");
    QTest::newRow("user") << 2 << QByteArray("CG_USER_DIR") << QByteArray("/home/\xd0\xaf/cfg");
    QTest::newRow("common") << 3 << QByteArray("CG_COMMON_DIR") << QByteArray("/etc/x");
    QTest::newRow("product") << 4 << QByteArray("CG_PRODUCT_NAME") << QByteArray("agent");
}

void TestPlatform::environmentRedirectsEveryDirectory()
{
    QFETCH(int, function);
    QFETCH(QByteArray, variable);
    QFETCH(QByteArray, value);
    {
        EnvVar set(variable.constData(), value.constData());
        QCOMPARE(QByteArray(pathFunctions[function]()), value);
    }
    // An empty value counts as unset.
    EnvVar empty(variable.constData(), "");
    QVERIFY(QByteArray(pathFunctions[function]()) != value);
    QVERIFY(*pathFunctions[function]() != 0);
}

void TestPlatform::userAndCommonDirsFollowXdg_data()
{
    QTest::addColumn<bool>("common");
    QTest::addColumn<QByteArray>("xdg");      // XDG_CONFIG_HOME or XDG_CONFIG_DIRS; empty = unset
    QTest::addColumn<QByteArray>("product");  // empty = unset
    QTest::addColumn<QByteArray>("expected"); // "~" stands for $HOME
    QTest::newRow("user, xdg") << false << QByteArray("/x/cfg") << QByteArray() << QByteArray("/x/cfg/common_gui");
    QTest::newRow("user, home") << false << QByteArray() << QByteArray() << QByteArray("~/.config/common_gui");
    QTest::newRow("user, product") << false << QByteArray("/x/cfg") << QByteArray("vpn") << QByteArray("/x/cfg/vpn");
    QTest::newRow("common, first of list") << true << QByteArray("/a/xdg:/b/xdg") << QByteArray() << QByteArray("/a/xdg/common_gui");
    QTest::newRow("common, default") << true << QByteArray() << QByteArray() << QByteArray("/etc/xdg/common_gui");
    QTest::newRow("common, empty head") << true << QByteArray(":/b/xdg") << QByteArray("vpn") << QByteArray("/etc/xdg/vpn");
}

void TestPlatform::userAndCommonDirsFollowXdg()
{
    QFETCH(bool, common);
    QFETCH(QByteArray, xdg);
    QFETCH(QByteArray, product);
    QFETCH(QByteArray, expected);
    expected.replace('~', qgetenv("HOME"));

    EnvVar noUser("CG_USER_DIR", nullptr);
    EnvVar noCommon("CG_COMMON_DIR", nullptr);
    EnvVar base(common ? "XDG_CONFIG_DIRS" : "XDG_CONFIG_HOME", xdg.isEmpty() ? nullptr : xdg.constData());
    EnvVar name("CG_PRODUCT_NAME", product.isEmpty() ? nullptr : product.constData());
    QCOMPARE(QByteArray(common ? userDataCommonDir_utf8() : userDataDirForWrite_utf8()), expected);
}

void TestPlatform::binaryAndResourceDirsFollowTheExecutable()
{
    EnvVar noBin("CG_BIN_DIR", nullptr);
    EnvVar noResource("CG_RESOURCE_DIR", nullptr);
    QCOMPARE(QString::fromUtf8(agentBinDir()), QCoreApplication::applicationDirPath());

    // Beside a bin directory, share/common_gui is the resource tree (the shape of the build and
    // of an install); without one the installed data directory is used.
    QTemporaryDir prefix;
    QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("bin")));
    EnvVar bin("CG_BIN_DIR", QFile::encodeName(prefix.path() + QStringLiteral("/bin")).constData());
    const QString fallback = QString::fromUtf8(agentEtcDir());
    QVERIFY2(fallback.endsWith(QLatin1String("/share/common_gui")), qPrintable(fallback));
    QVERIFY(!fallback.startsWith(prefix.path()));

    QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("share/common_gui")));
    QCOMPARE(QString::fromUtf8(agentEtcDir()),
             QFileInfo(prefix.path() + QStringLiteral("/share/common_gui")).canonicalFilePath());
}

void TestPlatform::handedOutTextOutlivesEnvironmentChange()
{
    const char* first = nullptr;
    {
        EnvVar user("CG_USER_DIR", "/first/user");
        first = userDataDirForWrite_utf8();
    }
    EnvVar user("CG_USER_DIR", "/second/user");
    QCOMPARE(QByteArray(userDataDirForWrite_utf8()), QByteArray("/second/user"));
    QCOMPARE(QByteArray(first), QByteArray("/first/user"));
}

// ---------------------------------------------------------------- TTT, streq, containers

void TestPlatform::makeMultiPutsTheMostGeneralFirst_data()
{
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QStringList() << QString();
    QTest::newRow("one") << QStringList{QStringLiteral("cause")} << QStringLiteral("cause");
    QTest::newRow("context added last comes first")
        << QStringList{QStringLiteral("open failed"), QStringLiteral("cannot read policy"), QStringLiteral("import stopped")}
        << QStringLiteral("import stopped\ncannot read policy\nopen failed");
    QTest::newRow("empty message keeps its line")
        << QStringList{QStringLiteral("a"), QString(), QStringLiteral("c")} << QStringLiteral("c\n\na");
}

void TestPlatform::makeMultiPutsTheMostGeneralFirst()
{
    QFETCH(QStringList, added);
    QFETCH(QString, expected);
    TTT error = added.isEmpty() ? TTT() : TTT(added.first().toStdString());
    for (int i = 1; i < added.size(); ++i)
        QCOMPARE(&error.add(added.at(i).toStdString()), &error);
    QCOMPARE(error.empty(), added.isEmpty());
    QCOMPARE(int(error.messages().size()), added.size());

    std::string out = "left over from before";
    error.makeMulti(out);
    QCOMPARE(QString::fromStdString(out), expected);
}

void TestPlatform::streqComparesBytes_data()
{
    QTest::addColumn<bool>("aNull");
    QTest::addColumn<bool>("bNull");
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<bool>("equal");
    QTest::newRow("both null") << true << true << QByteArray() << QByteArray() << true;
    QTest::newRow("null vs empty") << true << false << QByteArray() << QByteArray("") << false;
    QTest::newRow("empty vs null") << false << true << QByteArray("") << QByteArray() << false;
    QTest::newRow("both empty") << false << false << QByteArray("") << QByteArray("") << true;
    QTest::newRow("same") << false << false << QByteArray("utf-8") << QByteArray("utf-8") << true;
    QTest::newRow("case differs") << false << false << QByteArray("utf-8") << QByteArray("UTF-8") << false;
    QTest::newRow("prefix") << false << false << QByteArray("utf") << QByteArray("utf-8") << false;
    QTest::newRow("high bytes") << false << false << QByteArray("\xd0\xaf") << QByteArray("\xd0\xaf") << true;
}

void TestPlatform::streqComparesBytes()
{
    QFETCH(bool, aNull);
    QFETCH(bool, bNull);
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(bool, equal);
    QCOMPARE(streq(aNull ? nullptr : a.constData(), bNull ? nullptr : b.constData()), equal);
}

void TestPlatform::bagKeepsEveryByte()
{
    Bag bag;
    QVERIFY(bag.empty());
    QVERIFY(bag.data() != nullptr);
    const char chunk[] = {'a', 0, '\xff', 'b'};
    bag.append(chunk, sizeof chunk);
    bag.append(std::string("tail"));
    bag.append(nullptr, 10);
    QCOMPARE(QByteArray(bag.data(), int(bag.size())), QByteArray("a\0\xff" "btail", 8));
    QVERIFY(bag == Bag(QByteArray("a\0\xff" "btail", 8).constData(), 8));
    Bag copy = bag;
    bag.clear();
    QCOMPARE(bag.size(), size_t(0));
    QCOMPARE(copy.size(), size_t(8));
    QVERIFY(copy != bag);
}

void TestPlatform::arrayHolderOwnsExactlyOnce()
{
    ArrayHolder<int> a(new int[3]{1, 2, 3}, 3);
    ArrayHolder<int> b(std::move(a));
    QCOMPARE(a.get(), nullptr);
    QCOMPARE(a.size(), size_t(0));
    QCOMPARE(b.size(), size_t(3));
    QCOMPARE(b[2], 3);

    a = std::move(b);
    QCOMPARE(a[0], 1);
    a.reset(new int[1]{7}, 1);   // frees the old array (the sanitizer build would see a leak)
    QCOMPARE(a[0], 7);
    a.reset(a.get(), 1);         // taking back the same array must not free it
    QCOMPARE(a[0], 7);

    int* raw = a.release();
    QCOMPARE(a.get(), nullptr);
    QCOMPARE(raw[0], 7);
    delete[] raw;
}

// ---------------------------------------------------------------- Loc::Module

void TestPlatform::moduleLoadsItsFileFromTheResourceDir()
{
    const QString dir = QString::fromUtf8(agentEtcDir()) + QStringLiteral("/translations");
    QVERIFY(QDir().mkpath(dir));
    writeFile(dir + QStringLiteral("/probe_rus.lcl"), QByteArray("LCLR\0\x01", 6));
    writeFile(dir + QStringLiteral("/probe_eng.lcl"), QByteArray("english"));

    ProbeModule module(0);
    std::string error = "untouched";
    QCOMPARE(module.load("rus", &error), 1);
    QCOMPARE(module.seen, QByteArray("LCLR\0\x01", 6));
    QCOMPARE(QString::fromStdString(error), QStringLiteral("untouched"));
    QCOMPARE(module.state, 0);

    QCOMPARE(module.load("eng", nullptr), 1);
    QCOMPARE(module.seen, QByteArray("LCLR\0\x01", 6) + "english");
}

void TestPlatform::moduleLoadFailures_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<int>("answer");          // what loadFile returns
    QTest::addColumn<int>("fileKind");        // 0 none, 1 regular file, 2 directory
    QTest::addColumn<QString>("mentions");    // besides the file name
    QTest::addColumn<int>("calls");
    QTest::newRow("missing file") << QByteArray("deu") << 0 << 0 << reason(ENOENT) << 0;
    QTest::newRow("directory in the way") << QByteArray("fra") << 0 << 2 << reason(EISDIR) << 0;
    QTest::newRow("not a localization file") << QByteArray("ita") << 2 << 1 << QStringLiteral("code 2") << 1;
    QTest::newRow("foreign identifier") << QByteArray("spa") << 5 << 1 << QStringLiteral("code 5") << 1;
    QTest::newRow("ends early") << QByteArray("pol") << 6 << 1 << QStringLiteral("code 6") << 1;
    QTest::newRow("unknown code") << QByteArray("ukr") << 42 << 1 << QStringLiteral("code 42") << 1;
    QTest::newRow("negative code") << QByteArray("bel") << -1 << 1 << QStringLiteral("code -1") << 1;
    QTest::newRow("most negative code") << QByteArray("lit") << INT_MIN << 1
                                        << QStringLiteral("code %1").arg(INT_MIN) << 1;
    QTest::newRow("language leaving the directory") << QByteArray("x/../../probe_rus") << 0 << 0
                                                    << reason(EINVAL) << 0;
}

void TestPlatform::moduleLoadFailures()
{
    QFETCH(QByteArray, language);
    QFETCH(int, answer);
    QFETCH(int, fileKind);
    QFETCH(QString, mentions);
    QFETCH(int, calls);

    const QString dir = QString::fromUtf8(agentEtcDir()) + QStringLiteral("/translations");
    const QString file = dir + QStringLiteral("/probe_") + QString::fromLatin1(language) + QStringLiteral(".lcl");
    QVERIFY(QDir().mkpath(dir));
    if (fileKind == 1)
        writeFile(file, QByteArray("junk"));
    else if (fileKind == 2)
        QVERIFY(QDir().mkpath(file));

    ProbeModule module(answer);
    std::string error;
    QCOMPARE(module.load(language.constData(), &error), 0);
    QCOMPARE(module.calls, calls);
    const QString text = QString::fromStdString(error);
    QVERIFY2(text.contains(file), qPrintable(text));
    QVERIFY2(text.contains(mentions), qPrintable(text));

    // Without an error string the failure is only the result.
    QCOMPARE(module.load(language.constData(), nullptr), 0);
}

void TestPlatform::baseLoadFileThrowsMinusOne()
{
    BareModule module;
    QVERIFY_EXCEPTION_THROWN(module.loadFile(stdin), int);
    try {
        module.loadFile(stdin);
    } catch (int code) {
        QCOMPARE(code, -1);
    }

    // Through load() the thrown code becomes an ordinary failure.
    const QString dir = QString::fromUtf8(agentEtcDir()) + QStringLiteral("/translations");
    QVERIFY(QDir().mkpath(dir));
    writeFile(dir + QStringLiteral("/bare_rus.lcl"), QByteArray("x"));
    std::string error;
    QCOMPARE(module.load("rus", &error), 0);
    QVERIFY2(QString::fromStdString(error).contains(QStringLiteral("code -1")), error.c_str());
    QCOMPARE(module.load(nullptr, &error), 0);
}

// ---------------------------------------------------------------- UTF8File

void TestPlatform::loadReadsTheWholeFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<uint>("maxSize");
    QTest::newRow("empty") << QStringLiteral("empty.txt") << QByteArray() << 0u;
    QTest::newRow("text") << QStringLiteral("a.txt") << QByteArray("line 1\r\nline 2\n") << 100u;
    QTest::newRow("embedded NUL") << QStringLiteral("bin.dat") << QByteArray("a\0b\0\xff", 5) << 5u;
    QTest::newRow("Cyrillic name") << QStringLiteral("политика.lsp") << QByteArray("\xd0\xaf") << 2u;
    QTest::newRow("larger than a page") << QStringLiteral("big.txt") << QByteArray(100000, 'z') << 100000u;
}

void TestPlatform::loadReadsTheWholeFile()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(uint, maxSize);
    const QString path = m_tmp.filePath(name);
    writeFile(path, content);

    ArrayHolder<char> buffer(new char[4]{'o', 'l', 'd', 0}, 4);
    const unsigned n = UTF8File::load(path.toUtf8().constData(), buffer, maxSize, false);
    QCOMPARE(n, uint(content.size()));
    QVERIFY(buffer.size() > n);
    QCOMPARE(QByteArray(buffer.get(), int(n)), content);
    QCOMPARE(buffer.get()[n], '\0');
}

void TestPlatform::loadRefuses_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<uint>("maxSize");
    QTest::addColumn<QString>("mentions");

    const QString plain = m_tmp.filePath(QStringLiteral("plain.txt"));
    writeFile(plain, QByteArray(64, 'x'));
    QTest::newRow("missing") << m_tmp.filePath(QStringLiteral("nope.txt")) << 100u << reason(ENOENT);
    QTest::newRow("directory") << m_tmp.path() << 100u << reason(EISDIR);
    QTest::newRow("through a file") << plain + QStringLiteral("/x") << 100u << reason(ENOTDIR);
    QTest::newRow("name too long") << m_tmp.filePath(QString(300, QLatin1Char('n'))) << 100u << reason(ENAMETOOLONG);
    QTest::newRow("one byte too large") << plain << 63u << reason(EFBIG);
    QTest::newRow("device") << QStringLiteral("/dev/null") << 100u << QStringLiteral("not a regular file");
}

void TestPlatform::loadRefuses()
{
    QFETCH(QString, path);
    QFETCH(uint, maxSize);
    QFETCH(QString, mentions);

    char* before = new char[2]{'k', 0};
    ArrayHolder<char> buffer(before, 2);
    try {
        UTF8File::load(path.toUtf8().constData(), buffer, maxSize, false);
        QFAIL("no exception");
    } catch (const TTT& error) {
        std::string text;
        error.makeMulti(text);
        const QString message = QString::fromStdString(text);
        QVERIFY2(message.contains(path), qPrintable(message));
        QVERIFY2(message.contains(mentions), qPrintable(message));
    }
    QCOMPARE(buffer.get(), before);
}

void TestPlatform::saveKeepsPermissions_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("0600") << 0600;
    QTest::newRow("0640") << 0640;
    QTest::newRow("0755") << 0755;
    QTest::newRow("0444 read-only") << 0444;
}

void TestPlatform::saveKeepsPermissions()
{
    QFETCH(int, mode);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("файл.ini"));
    writeFile(path, QByteArray("old content that is longer"), mode_t(mode));

    const QByteArray fresh("new\0bytes", 9);
    UTF8File::save(path.toUtf8().constData(), fresh.constData(), unsigned(fresh.size()));
    QCOMPARE(readAll(path), fresh);
    QCOMPARE(permissions(path), mode_t(mode));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("файл.ini")});

    UTF8File::save(path.toUtf8().constData(), "", 0);
    QCOMPARE(readAll(path), QByteArray());
}

void TestPlatform::saveCreatesAFileWithTheUmaskMode()
{
    const mode_t old = ::umask(027);
    const QString path = m_tmp.filePath(QStringLiteral("created.txt"));
    UTF8File::save(path.toUtf8().constData(), "abc", 3);
    ::umask(old);
    QCOMPARE(readAll(path), QByteArray("abc"));
    QCOMPARE(permissions(path), mode_t(0640));
}

void TestPlatform::saveThroughASymlinkReplacesItsTarget()
{
    QTemporaryDir dir;
    const QString target = dir.filePath(QStringLiteral("real.txt"));
    const QString link = dir.filePath(QStringLiteral("link.txt"));
    writeFile(target, QByteArray("old"), 0600);
    QVERIFY(QFile::link(target, link));

    UTF8File::save(link.toUtf8().constData(), "new", 3);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(readAll(target), QByteArray("new"));
    QCOMPARE(permissions(target), mode_t(0600));
}

void TestPlatform::failedSaveLeavesTheOldFile_data()
{
    // As root, permissions do not stop a write; these make it fail for reasons that do.
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("mentions");
    QTest::newRow("directory does not exist") << QStringLiteral("nodir") << reason(ENOENT);
    QTest::newRow("target is a directory") << QStringLiteral("isdir") << reason(EISDIR);
    QTest::newRow("file size limit") << QStringLiteral("fsize") << reason(EFBIG);
}

void TestPlatform::failedSaveLeavesTheOldFile()
{
    QFETCH(QString, kind);
    QFETCH(QString, mentions);

    QTemporaryDir dir;
    const QString old = dir.filePath(QStringLiteral("settings.ini"));
    const QByteArray oldBytes("[Group]\nKey=1\n");
    writeFile(old, oldBytes, 0640);

    QString path = old;
    if (kind == QLatin1String("nodir"))
        path = dir.filePath(QStringLiteral("missing/settings.ini"));
    else if (kind == QLatin1String("isdir")) {
        path = dir.filePath(QStringLiteral("sub"));
        QVERIFY(QDir().mkpath(path + QStringLiteral("/inner")));
    }

    // A file size limit below the new content makes the write fail half way, like a full disk.
    struct rlimit saved;
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    if (kind == QLatin1String("fsize")) {
        struct rlimit small = saved;
        small.rlim_cur = 4096;
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }

    const QByteArray fresh(10000, 'n');
    QString message;
    try {
        UTF8File::save(path.toUtf8().constData(), fresh.constData(), unsigned(fresh.size()));
    } catch (const TTT& error) {
        std::string text;
        error.makeMulti(text);
        message = QString::fromStdString(text);
    }
    ::setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);

    QVERIFY2(message.contains(path), qPrintable(message));
    QVERIFY2(message.contains(mentions), qPrintable(message));
    QCOMPARE(readAll(old), oldBytes);
    QCOMPARE(permissions(old), mode_t(0640));
    QStringList left = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);
    QCOMPARE(left, QStringList{QStringLiteral("settings.ini")});
    if (kind == QLatin1String("isdir"))
        QVERIFY(QFileInfo(path + QStringLiteral("/inner")).isDir());
}

void TestPlatform::saveOnAFullDiskLeavesTheOldFile()
{
    QTemporaryDir dir;
    const QByteArray mountPoint = QFile::encodeName(dir.path());
    if (::mount("tmpfs", mountPoint.constData(), "tmpfs", 0, "size=64k,mode=0755") != 0)
        QSKIP("cannot mount a small tmpfs here; the file size limit case covers a failing write");
    struct Unmount
    {
        QByteArray point;
        ~Unmount() { ::umount2(point.constData(), MNT_DETACH); }
    } unmount{mountPoint};

    const QString old = dir.filePath(QStringLiteral("state.ini"));
    const QByteArray oldBytes("Size=@Size(640 480)\n");
    writeFile(old, oldBytes, 0600);
    {
        QFile filler(dir.filePath(QStringLiteral("filler")));
        QVERIFY(filler.open(QIODevice::WriteOnly));
        const QByteArray block(4096, 'f');
        while (filler.write(block) == block.size() && filler.flush()) {
        }
    }

    const QByteArray fresh(16384, 'n');
    QVERIFY_EXCEPTION_THROWN(UTF8File::save(old.toUtf8().constData(), fresh.constData(), unsigned(fresh.size())), TTT);
    QCOMPARE(readAll(old), oldBytes);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
             (QStringList{QStringLiteral("filler"), QStringLiteral("state.ini")}));
}

// ---------------------------------------------------------------- convi

namespace {

struct Page
{
    codepage_t page;
    const char* qtName;
};

const Page pages[] = {
    {CP_IBM866, "IBM866"},         {CP_WINDOWS1251, "windows-1251"}, {CP_KOI8R, "KOI8-R"},
    {CP_ISO8859_5, "ISO-8859-5"},  {CP_WINDOWS1252, "windows-1252"}, {CP_UTF16LE, "UTF-16LE"},
    {CP_UTF16BE, "UTF-16BE"},      {CP_ISO8859_1, "ISO-8859-1"},     {CP_ASCII, "US-ASCII"},
    {CP_KOI8U, "KOI8-U"},
};

QByteArray convert(codepage_t from, codepage_t to, const QByteArray& bytes, unsigned* size = nullptr)
{
    convi converter(from, to);
    const unsigned need = converter.get_outsize(bytes.constData(), unsigned(bytes.size()));
    if (size)
        *size = need;
    if (need == 0)
        return QByteArray("<cannot>");
    QByteArray out(int(need), '\x7f');
    converter.convert_safe(bytes.constData(), unsigned(bytes.size()), out.data(), need);
    return out;
}

} // namespace

void TestPlatform::conviRoundTrips_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    const QString cyrillic = QStringLiteral("Съешь же ещё этих мягких французских булок, ЁЖ 5");
    for (int i = 0; i < int(sizeof pages / sizeof pages[0]); ++i) {
        const codepage_t page = pages[i].page;
        QString text = cyrillic;
        if (page == CP_WINDOWS1252)
            text = QStringLiteral("Ça coûte 5 € déjà — „gut“");
        else if (page == CP_ISO8859_1)
            text = QStringLiteral("Größe ½ façade");
        else if (page == CP_ASCII)
            text = QStringLiteral("plain text, 100%");
        else if (page == CP_UTF16LE || page == CP_UTF16BE)
            text += QStringLiteral(" 😀 中文");
        QTest::newRow(pages[i].qtName) << i << text;
        QTest::newRow(QByteArray(pages[i].qtName) + ", long") << i << text.repeated(500);
        QTest::newRow(QByteArray(pages[i].qtName) + ", empty") << i << QString();
    }
}

void TestPlatform::conviRoundTrips()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    const Page& page = pages[index];
    const unsigned nul = (page.page == CP_UTF16LE || page.page == CP_UTF16BE) ? 2 : 1;

    // Qt's own codecs are the independent reference for the encoded bytes.
    QTextCodec* codec = QTextCodec::codecForName(page.qtName);
    QVERIFY(codec);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray reference = codec->fromUnicode(text.constData(), text.size(), &state);
    QCOMPARE(state.invalidChars, 0);

    unsigned size = 0;
    const QByteArray encoded = convert(CP_UTF8, page.page, text.toUtf8(), &size);
    QCOMPARE(size, unsigned(reference.size()) + nul);
    QCOMPARE(encoded.left(reference.size()), reference);
    QCOMPARE(encoded.mid(reference.size()), QByteArray(int(nul), '\0'));

    const QByteArray back = convert(page.page, CP_UTF8, reference, &size);
    QCOMPARE(size, unsigned(text.toUtf8().size()) + 1);
    QCOMPARE(QString::fromUtf8(back.constData()), text);
}

void TestPlatform::conviCannotConvert_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("invalid UTF-8") << CP_UTF8 << CP_WINDOWS1251 << QByteArray("ok\xff\xfe");
    QTest::newRow("UTF-8 cut mid-character") << CP_UTF8 << CP_WINDOWS1251 << QByteArray("\xd0\xaf\xd0");
    QTest::newRow("Cyrillic into Windows-1252") << CP_UTF8 << CP_WINDOWS1252 << QByteArray("abc \xd0\xaf");
    QTest::newRow("Cyrillic into ASCII") << CP_UTF8 << CP_ASCII << QByteArray("\xd0\xaf");
    QTest::newRow("undefined Windows-1251 byte") << CP_WINDOWS1251 << CP_UTF8 << QByteArray("a\x98");
    QTest::newRow("odd UTF-16 length") << CP_UTF16LE << CP_UTF8 << QByteArray("a\0b", 3);
    QTest::newRow("lone surrogate") << CP_UTF16BE << CP_UTF8 << QByteArray("\xd8\x3d\x00\x41", 4);
    QTest::newRow("unknown source page") << 0 << CP_UTF8 << QByteArray("abc");
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
    QVERIFY(std::memchr(out, 0, 8) != nullptr);
    QCOMPARE(out[8], '\x7f');

    // A failed conversion leaves no state behind for the next one.
    if (from == CP_UTF8 && to != 99)
        QCOMPARE(converter.get_outsize("abc", 3), 4u);
}

void TestPlatform::conviTinyBuffersStayTerminated_data()
{
    QTest::addColumn<int>("to");
    QTest::addColumn<uint>("dstSize");
    QTest::addColumn<QByteArray>("expected");   // the bytes before the terminator
    const QByteArray ya("\xd0\xaf"), be("\xd0\x91");
    QTest::newRow("UTF-8, 1") << CP_UTF8 << 1u << QByteArray();
    QTest::newRow("UTF-8, 2: no half character") << CP_UTF8 << 2u << QByteArray();
    QTest::newRow("UTF-8, 3") << CP_UTF8 << 3u << ya;
    QTest::newRow("UTF-8, 4") << CP_UTF8 << 4u << ya;
    QTest::newRow("UTF-8, 5") << CP_UTF8 << 5u << ya + be;
    QTest::newRow("UTF-16LE, 1") << CP_UTF16LE << 1u << QByteArray();
    QTest::newRow("UTF-16LE, 3") << CP_UTF16LE << 3u << QByteArray();
    QTest::newRow("UTF-16LE, 4") << CP_UTF16LE << 4u << QByteArray("\x2f\x04", 2);
    QTest::newRow("UTF-16BE, 7") << CP_UTF16BE << 7u << QByteArray("\x04\x2f\x04\x11", 4);
}

void TestPlatform::conviTinyBuffersStayTerminated()
{
    QFETCH(int, to);
    QFETCH(uint, dstSize);
    QFETCH(QByteArray, expected);

    const char source[] = "\xdf\xc1\xc2";   // "ЯБВ" in Windows-1251
    convi converter(CP_WINDOWS1251, to);
    char out[32];
    std::memset(out, '\x7f', sizeof out);
    converter.convert_safe(source, 3, out, dstSize);
    QCOMPARE(QByteArray(out, expected.size()), expected);
    const int nul = qMin(int(dstSize) - expected.size(), (to == CP_UTF8) ? 1 : 2);
    QCOMPARE(QByteArray(out + expected.size(), nul), QByteArray(nul, '\0'));
    for (uint i = dstSize; i < sizeof out; ++i)
        QCOMPARE(out[i], '\x7f');

    converter.convert_safe(source, 3, out, 0);   // nothing may be written
    QCOMPARE(out[dstSize], '\x7f');
}

CG_TEST_MAIN(TestPlatform)
#include "tst_platform.moc"
