// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// An application's own identity: its product name, the directories and language file that follow
// from it, the library's translations and default icons that stay the library's.
#include "cgtest.h"

#include "cg_loc_modules.h"
#include "common_gui_loc.h"
#include "common_gui_res.h"
#include "edirs.h"
#include "eresource.h"
#include "esettings.h"
#include "paths.h"

#include <QPixmap>

namespace {

struct EnvVar
{
    QByteArray name, old;
    bool had;
    EnvVar(const QByteArray& n, const QString& value) : name(n), old(qgetenv(n)), had(qEnvironmentVariableIsSet(n))
    { value.isNull() ? void(qunsetenv(name)) : void(qputenv(name, value.toUtf8())); }
    ~EnvVar() { had ? void(qputenv(name, old)) : void(qunsetenv(name)); }
};

QString readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

} // namespace

class TestProduct : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();
    void productNameIsOneDirectoryName_data();
    void productNameIsOneDirectoryName();
    void environmentWinsOnlyWithAnAcceptableName();
    void renamedProductHasItsOwnResourcesButTheLibrarysTexts();
    void defaultIconsComeWithTheLibrary();
    void languageChoiceSticks_data();
    void languageChoiceSticks();
    void usersChoiceComesBeforeTheDefault();
};

void TestProduct::cleanup()
{
    setProductName("common_gui");
}

void TestProduct::productNameIsOneDirectoryName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("plain") << QByteArray("hostlist") << true;
    QTest::newRow("blank and UTF-8") << QByteArray("host list \xd1\x83\xd0\xb7\xd0\xbb\xd1\x8b") << true;
    QTest::newRow("dots inside a word") << QByteArray("org.example.app") << true;
    QTest::newRow("64 bytes") << QByteArray(maxProductNameLength, 'x') << true;
    QTest::newRow("65 bytes") << QByteArray(maxProductNameLength + 1, 'x') << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("dot") << QByteArray(".") << false;
    QTest::newRow("dot dot") << QByteArray("..") << false;
    QTest::newRow("climbing") << QByteArray("../../etc") << false;
    QTest::newRow("absolute") << QByteArray("/tmp/evil") << false;
    QTest::newRow("two components") << QByteArray("a/b") << false;
    QTest::newRow("dot dot inside") << QByteArray("a..b") << false;
    QTest::newRow("line break") << QByteArray("a\nb") << false;
}

void TestProduct::productNameIsOneDirectoryName()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, accepted);
    const QString config = QDir::tempPath() + QStringLiteral("/cfg-") + QString::number(QCoreApplication::applicationPid());
    EnvVar user("CG_USER_DIR", QString()), common("CG_COMMON_DIR", QString()), env("CG_PRODUCT_NAME", QString());
    EnvVar home("XDG_CONFIG_HOME", config), dirs("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg"));
    QVERIFY(setProductName("before"));
    QCOMPARE(setProductName(name.constData()), accepted);
    const QByteArray expected = accepted ? name : QByteArray("before");
    QCOMPARE(QByteArray(productName()), expected);
    QCOMPARE(QString::fromUtf8(userDataDirForWrite_utf8()), config + QLatin1Char('/') + QString::fromUtf8(expected));
    QCOMPARE(QByteArray(userDataCommonDir_utf8()), "/etc/xdg/" + expected);
    QVERIFY(!setProductName(nullptr));
    QCOMPARE(QByteArray(productName()), expected);

    // What the library writes lands in the product's own folder, right under the configuration home.
    {
        ESettings s(QStringLiteral("Probe"));
        s.setValue(QStringLiteral("Written"), true);
    }
    const QString written = QDir(config).filePath(QString::fromUtf8(expected) + QStringLiteral("/common_gui.ini"));
    QVERIFY2(readFile(written).contains(QStringLiteral("Written=true")), qPrintable(written));
    QDir(config).removeRecursively();
}

void TestProduct::environmentWinsOnlyWithAnAcceptableName()
{
    EnvVar user("CG_USER_DIR", QString()), home("XDG_CONFIG_HOME", QStringLiteral("/x"));
    QVERIFY(setProductName("fromcode"));
    {
        EnvVar env("CG_PRODUCT_NAME", QStringLiteral("fromenv"));
        QCOMPARE(QByteArray(userDataDirForWrite_utf8()), QByteArray("/x/fromenv"));
    }
    for (const char* bad : {"../../x", "a/b", ".."}) {
        EnvVar env("CG_PRODUCT_NAME", QString::fromLatin1(bad));
        QCOMPARE(QByteArray(productName()), QByteArray("fromcode"));
        QCOMPARE(QByteArray(userDataDirForWrite_utf8()), QByteArray("/x/fromcode"));
    }
}

void TestProduct::renamedProductHasItsOwnResourcesButTheLibrarysTexts()
{
    QTemporaryDir prefix;
    QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("bin")) && QDir(prefix.path()).mkpath(QStringLiteral("share/hostlist/help/eng")));
    EnvVar bin("CG_BIN_DIR", prefix.path() + QStringLiteral("/bin")), resource("CG_RESOURCE_DIR", QString());
    QVERIFY(setProductName("hostlist"));
    const QString own = QFileInfo(prefix.path() + QStringLiteral("/share/hostlist")).canonicalFilePath();
    QCOMPARE(QString::fromUtf8(agentEtcDir()), own);
    QCOMPARE(EDirs::getResourceDir().canonicalPath(), own);
    // The build's own data directory, found beside the library, holds the library's translations.
    QCOMPARE(QFileInfo(QString::fromUtf8(libraryDataDir())).canonicalFilePath(),
             QFileInfo(CgTest::Environment::buildResourceDir()).canonicalFilePath());

    const QString english = LCQT__Cancel;
    Loc::GUIModule texts;
    std::string error;
    QVERIFY2(texts.load("rus", &error) == 1, error.c_str());
    QVERIFY(LCQT__Cancel != english);
    QCOMPARE(texts.load("deu", &error), 0);   // still reported with the application's own file name
    QVERIFY2(QString::fromStdString(error).contains(own + QStringLiteral("/translations/common_gui_deu.lcl")), error.c_str());
    QVERIFY(texts.load("eng", &error) == 1);
    QCOMPARE(LCQT__Cancel, english);

    // An application translation of the library's texts in its own directory comes first.
    QVERIFY(QDir(own).mkpath(QStringLiteral("translations")));
    QVERIFY(QFile::copy(CgTest::Environment::buildResourceDir() + QStringLiteral("/translations/common_gui_eng.lcl"),
                        own + QStringLiteral("/translations/common_gui_rus.lcl")));
    QVERIFY(texts.load("rus", &error) == 1);
    QCOMPARE(LCQT__Cancel, english);
}

void TestProduct::defaultIconsComeWithTheLibrary()
{
    EnvVar resource("CG_RESOURCE_DIR", QString()), bin("CG_BIN_DIR", QString());
    QVERIFY(setProductName("iconuser"));   // an application's resource directory has no icons
    QVERIFY(!QFile::exists(EDirs::getResourceDir().filePath(QStringLiteral("icons.rcc"))));
    // An application's own image for a path, registered first, stays in front of the default set.
    QVERIFY(Resource::load(QStringLiteral(CG_BINARY_DIR "/tests/eresource_early.rcc")));
    QVERIFY(Resource::loadDefaultIcons());
    QCOMPARE(QImage(QStringLiteral(":/tb_log.png")).pixel(12, 12), qRgb(0x20, 0x60, 0xc0));
    for (int id : {int(CgIcon::TbMonitor), int(CgIcon::Lock1), common_gui_resource_count - 1}) {
        const QPixmap* pixmap = Resource::getPixmap(id);
        QVERIFY2(!pixmap->isNull(), common_gui_resource_paths[id]);
    }
    QCOMPARE(Resource::getPixmap(CgIcon::Agent48)->width(), 48);
}

namespace {

// setLanguage() empties the cache even when it cannot write: the next getLanguage() reads again.
void forgetLanguage()
{
    QTemporaryDir root;
    writeFile(root.filePath(QStringLiteral("file")), "x");
    EnvVar common("CG_COMMON_DIR", root.filePath(QStringLiteral("file/common")));
    EnvVar user("CG_USER_DIR", root.filePath(QStringLiteral("file/user")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"xx\" could not be saved in .*file/common/lang.ini or in .*file/user/lang.ini")));
    EDirs::setLanguage("xx");
}

} // namespace

void TestProduct::languageChoiceSticks_data()
{
    QTest::addColumn<bool>("commonWritable");
    QTest::newRow("user without rights on the common folder") << false;
    QTest::newRow("administrator") << true;
}

void TestProduct::languageChoiceSticks()
{
    QFETCH(bool, commonWritable);
    QTemporaryDir root;
    // A folder below a regular file cannot be made, not even by root: a system folder for a user.
    writeFile(root.filePath(QStringLiteral("file")), "x");
    const QString common = root.filePath(commonWritable ? QStringLiteral("common") : QStringLiteral("file/common"));
    const QString user = root.filePath(QStringLiteral("user"));
    EnvVar commonDir("CG_COMMON_DIR", common), userDir("CG_USER_DIR", user);
    if (commonWritable)
        writeFile(common + QStringLiteral("/lang.ini"), "[Language]\nCode=deu\n");
    writeFile(user + QStringLiteral("/lang.ini"), "[Language]\nCode=fra\n");   // an older choice

    EDirs::setLanguage("rus");
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("rus"));
    // The administrator sets the default for everyone and drops an own older choice; a user's
    // choice is the user's alone.
    QCOMPARE(readFile(common + QStringLiteral("/lang.ini")).contains(QStringLiteral("Code=rus")), commonWritable);
    QCOMPARE(QFile::exists(user + QStringLiteral("/lang.ini")), !commonWritable);
    forgetLanguage();
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("rus"));   // as after a restart
}

void TestProduct::usersChoiceComesBeforeTheDefault()
{
    QTemporaryDir root;
    EnvVar commonDir("CG_COMMON_DIR", root.filePath(QStringLiteral("common"))), userDir("CG_USER_DIR", root.filePath(QStringLiteral("user")));
    writeFile(root.filePath(QStringLiteral("common/lang.ini")), "[Language]\nCode=deu\n");
    writeFile(root.filePath(QStringLiteral("user/lang.ini")), "[Language]\nCode=fra\n");
    forgetLanguage();
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("fra"));
    writeFile(root.filePath(QStringLiteral("user/lang.ini")), "[Language]\nCode=\n");   // no choice of one's own
    forgetLanguage();
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("deu"));
}

CG_TEST_MAIN(TestProduct)
#include "tst_product.moc"
