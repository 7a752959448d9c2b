// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "edirs.h"

#include <QProcess>
#include <QTemporaryDir>

#include <clocale>

enum class LocaleKind { Builtin, System, Custom };
Q_DECLARE_METATYPE(LocaleKind)

namespace {

struct ProbeRun
{
    bool finished = false;
    bool crashed = false;
    int exitCode = -1;
    QString out;
    QString err;
};

ProbeRun runProbe(const QStringList& arguments, const QProcessEnvironment& env)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(CG_LOC_PROBE), arguments);
    ProbeRun run;
    run.finished = process.waitForFinished(60000);
    run.crashed = process.exitStatus() == QProcess::CrashExit;
    run.exitCode = process.exitCode();
    run.out = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// The child's locale comes from LC_ALL alone; LOCPATH adds the locales this test compiled itself.
QProcessEnvironment childEnvironment(const QString& commonDir, const QString& locale, const QString& localePath)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("CG_COMMON_DIR"), commonDir);
    env.remove(QStringLiteral("LC_CTYPE"));
    env.remove(QStringLiteral("LANGUAGE"));
    env.insert(QStringLiteral("LANG"), locale);
    env.insert(QStringLiteral("LC_ALL"), locale);
    if (!localePath.isEmpty())
        env.insert(QStringLiteral("LOCPATH"), localePath);
    return env;
}

bool writeFile(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QString langIni()
{
    return EDirs::getCommonSettingsDir().filePath(QStringLiteral("lang.ini"));
}

} // namespace

class TestEDirs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void languageComesFromFileElseLocale_data();
    void languageComesFromFileElseLocale();
    void overlongCodeAbortsTheProcess_data();
    void overlongCodeAbortsTheProcess();
    void setLanguageIsReadBackFromTheFile();
    void localeFallbackKeepsTheEnvironmentsLocale();
    void helpDirIsCachedUntilSetHelpDir();
    void stripOperations_data();
    void stripOperations();
    void directoriesAreDecodedAsUtf8();

private:
    bool systemHasRussianLocale = false;
    QString customLocales; // LOCPATH holding "ru" and "RUS", or empty when they cannot be made
    QTemporaryDir localeDir;
};

void TestEDirs::initTestCase()
{
    QProcess list;
    list.start(QStringLiteral("locale"), {QStringLiteral("-a")});
    if (list.waitForFinished(30000)) {
        const QString all = QString::fromLocal8Bit(list.readAllStandardOutput()).toLower();
        systemHasRussianLocale = all.split(QLatin1Char('\n')).contains(QStringLiteral("ru_ru.utf8"));
    }

    // Locale names that no system has: "ru" (too short to count as Russian) and "RUS" (upper case).
    QProcess localedef;
    localedef.start(QStringLiteral("localedef"),
                    {QStringLiteral("-i"), QStringLiteral("ru_RU"), QStringLiteral("-f"), QStringLiteral("UTF-8"),
                     localeDir.filePath(QStringLiteral("ru"))});
    if (localedef.waitForFinished(120000) && localedef.exitStatus() == QProcess::NormalExit
        && localedef.exitCode() == 0
        && QFile::link(localeDir.filePath(QStringLiteral("ru")), localeDir.filePath(QStringLiteral("RUS"))))
        customLocales = localeDir.path();
}

void TestEDirs::languageComesFromFileElseLocale_data()
{
    QTest::addColumn<QByteArray>("file");   // lang.ini; null: none
    QTest::addColumn<QString>("locale");
    QTest::addColumn<LocaleKind>("kind");
    QTest::addColumn<QString>("expected");

    const QByteArray none;
    QTest::newRow("no file, ru_RU.UTF-8") << none << QStringLiteral("ru_RU.UTF-8") << LocaleKind::System << QStringLiteral("rus");
    QTest::newRow("no file, C") << none << QStringLiteral("C") << LocaleKind::Builtin << QStringLiteral("eng");
    QTest::newRow("no file, POSIX") << none << QStringLiteral("POSIX") << LocaleKind::Builtin << QStringLiteral("eng");
    QTest::newRow("no file, C.UTF-8") << none << QStringLiteral("C.UTF-8") << LocaleKind::Builtin << QStringLiteral("eng");
    QTest::newRow("no file, two-character ru") << none << QStringLiteral("ru") << LocaleKind::Custom << QStringLiteral("eng");
    QTest::newRow("no file, upper-case RUS") << none << QStringLiteral("RUS") << LocaleKind::Custom << QStringLiteral("rus");
    QTest::newRow("deu wins over ru_RU.UTF-8") << QByteArray("[Language]\nCode=deu\n") << QStringLiteral("ru_RU.UTF-8")
                                             << LocaleKind::System << QStringLiteral("deu");
    QTest::newRow("deu wins over C") << QByteArray("[Language]\nCode=deu\n") << QStringLiteral("C") << LocaleKind::Builtin
                                     << QStringLiteral("deu");
    QTest::newRow("19 characters fit") << QByteArray("[Language]\nCode=abcdefghijklmnopqrs\n") << QStringLiteral("C")
                                       << LocaleKind::Builtin << QStringLiteral("abcdefghijklmnopqrs");
    QTest::newRow("empty code") << QByteArray("[Language]\nCode=\n") << QStringLiteral("ru_RU.UTF-8") << LocaleKind::System
                                << QStringLiteral("rus");
    QTest::newRow("code outside the group") << QByteArray("Code=deu\n[Other]\nCode=fin\n") << QStringLiteral("C")
                                            << LocaleKind::Builtin << QStringLiteral("eng");
    QTest::newRow("binary garbage") << QByteArray("\x00\xff\xfe\x01[[[\n\x80\x81=\x00", 12) << QStringLiteral("C")
                                    << LocaleKind::Builtin << QStringLiteral("eng");
    QTest::newRow("unterminated group header") << QByteArray("[Language\nCode") << QStringLiteral("C") << LocaleKind::Builtin
                                               << QStringLiteral("eng");
}

void TestEDirs::languageComesFromFileElseLocale()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, locale);
    QFETCH(LocaleKind, kind);
    QFETCH(QString, expected);

    if (kind == LocaleKind::System && !systemHasRussianLocale)
        QSKIP("The locale ru_RU.UTF-8 is missing: run build.sh once (it enables it with locale-gen)");
    if (kind == LocaleKind::Custom && customLocales.isEmpty())
        QSKIP("localedef could not compile ru_RU into a private locale directory");

    QTemporaryDir common;
    if (!file.isNull())
        QVERIFY(writeFile(common.filePath(QStringLiteral("lang.ini")), file));
    const ProbeRun run = runProbe({QStringLiteral("language")},
                                  childEnvironment(common.path(), locale, kind == LocaleKind::Custom ? customLocales : QString()));
    QVERIFY2(run.finished && !run.crashed && run.exitCode == 0, qPrintable(run.err));
    QCOMPARE(run.out, expected);
    // The locale fallback is only cached, never written back.
    QCOMPARE(QFile::exists(common.filePath(QStringLiteral("lang.ini"))), !file.isNull());
}

void TestEDirs::overlongCodeAbortsTheProcess_data()
{
    QTest::addColumn<bool>("throughFile");
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("aborts");

    const QString nineteen = QStringLiteral("abcdefghijklmnopqrs");
    QTest::newRow("lang.ini, 19 characters") << true << nineteen << false;
    QTest::newRow("lang.ini, 20 characters") << true << nineteen + QLatin1Char('t') << true;
    QTest::newRow("lang.ini, 200 characters") << true << QString(200, QLatin1Char('x')) << true;
    QTest::newRow("setLanguage, 19 characters") << false << nineteen << false;
    QTest::newRow("setLanguage, 20 characters") << false << nineteen + QLatin1Char('t') << true;
}

void TestEDirs::overlongCodeAbortsTheProcess()
{
    QFETCH(bool, throughFile);
    QFETCH(QString, code);
    QFETCH(bool, aborts);

    QTemporaryDir common;
    QStringList arguments;
    if (throughFile) {
        QVERIFY(writeFile(common.filePath(QStringLiteral("lang.ini")), "[Language]\nCode=" + code.toLatin1() + '\n'));
        arguments = QStringList{QStringLiteral("language")};
    } else {
        arguments = QStringList{QStringLiteral("set-language"), code};
    }
    const ProbeRun run = runProbe(arguments, childEnvironment(common.path(), QStringLiteral("C"), QString()));
    QVERIFY(run.finished);
    if (aborts) {
        // A truncated code would silently pick the wrong files; the process must not go on.
        QVERIFY2(run.crashed, qPrintable(run.out));
        QVERIFY(run.out.isEmpty());
        // setLanguage aborts before it writes anything.
        if (!throughFile)
            QVERIFY(!QFile::exists(common.filePath(QStringLiteral("lang.ini"))));
    } else {
        QVERIFY2(!run.crashed && run.exitCode == 0, qPrintable(run.err));
        QCOMPARE(run.out, throughFile ? code : QStringLiteral("stored"));
    }
}

void TestEDirs::setLanguageIsReadBackFromTheFile()
{
    EDirs::setLanguage("rus");
    {
        QSettings raw(langIni(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("Language/Code")).toString(), QStringLiteral("rus"));
    }
    // The cache is empty after setLanguage: what counts is the file, even if it changed meanwhile.
    // (QSettings notices an edit by size and time stamp; an edit of the same size within one clock
    // tick of the last write would look unchanged to it, hence the extra line.)
    QVERIFY(writeFile(langIni(), "[Language]\n; edited by hand\nCode=fin\n"));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("fin"));
    // Once determined, the language is cached until the next setLanguage.
    QVERIFY(writeFile(langIni(), "[Language]\nCode=deu\n"));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("fin"));
    EDirs::setLanguage("eng");
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("eng"));
}

void TestEDirs::localeFallbackKeepsTheEnvironmentsLocale()
{
    const QByteArray savedLcAll = qgetenv("LC_ALL");
    const QByteArray savedCtype = std::setlocale(LC_CTYPE, nullptr);
    qputenv("LC_ALL", "C.UTF-8");
    std::setlocale(LC_CTYPE, "C");

    EDirs::setLanguage("fin"); // empties the cache; without the file the locale decides
    QVERIFY(QFile::remove(langIni()));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("eng"));
    // The applications rely on LC_CTYPE following the environment afterwards.
    const QByteArray ctype = std::setlocale(LC_CTYPE, nullptr);

    std::setlocale(LC_CTYPE, savedCtype.constData());
    if (savedLcAll.isNull())
        qunsetenv("LC_ALL");
    else
        qputenv("LC_ALL", savedLcAll);
    QCOMPARE(ctype, QByteArray("C.UTF-8"));
}

void TestEDirs::helpDirIsCachedUntilSetHelpDir()
{
    EDirs::setHelpDir(QString()); // null: computed again on the next call
    EDirs::setLanguage("rus");
    const QString rusHelp = EDirs::getResourceDir().path() + QStringLiteral("/help/rus");
    QCOMPARE(EDirs::getHelpDir(), rusHelp);

    EDirs::setLanguage("eng");
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("eng"));
    QCOMPARE(EDirs::getHelpDir(), rusHelp);

    EDirs::setHelpDir(QStringLiteral("/somewhere/else"));
    QCOMPARE(EDirs::getHelpDir(), QStringLiteral("/somewhere/else"));
    EDirs::setHelpDir(QString());
    QCOMPARE(EDirs::getHelpDir(), EDirs::getResourceDir().path() + QStringLiteral("/help/eng"));
}

void TestEDirs::stripOperations_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("withoutFile");
    QTest::addColumn<QString>("lastComponent");
    QTest::addColumn<QString>("withoutExt");

    QTest::newRow("file with extension") << "/a/b.c/f.txt" << "/a/b.c" << "f.txt" << "/a/b.c/f";
    QTest::newRow("dot only in a folder") << "/a/b.c/file" << "/a/b.c" << "file" << "/a/b";
    QTest::newRow("bare name") << "archive" << "archive" << "archive" << "archive";
    QTest::newRow("hidden file") << ".profile" << ".profile" << ".profile" << "";
    QTest::newRow("trailing separator") << "/a/b/" << "/a/b" << "" << "/a/b/";
    QTest::newRow("root file") << "/f.txt" << "" << "f.txt" << "/f";
    QTest::newRow("two extensions") << "dir/x.tar.gz" << "dir" << "x.tar.gz" << "dir/x.tar";
    QTest::newRow("backslash is no separator here") << "C:\\dir\\f.txt" << "C:\\dir\\f.txt" << "C:\\dir\\f.txt"
                                                     << "C:\\dir\\f";
    QTest::newRow("empty") << "" << "" << "" << "";
}

void TestEDirs::stripOperations()
{
    QFETCH(QString, path);
    QFETCH(QString, withoutFile);
    QFETCH(QString, lastComponent);
    QFETCH(QString, withoutExt);

    QString p = path;
    EDirs::stripFileFromPath(p);
    QCOMPARE(p, withoutFile);
    p = path;
    EDirs::stripFolderFromPath(p);
    QCOMPARE(p, lastComponent);
    p = path;
    EDirs::stripExtFromPath(p);
    QCOMPARE(p, withoutExt);
}

void TestEDirs::directoriesAreDecodedAsUtf8()
{
    QTemporaryDir base;
    const QString binary = base.filePath(QString::fromUtf8("Программы"));
    const QString resource = base.filePath(QString::fromUtf8("Ресурсы продукта"));
    const QString user = base.filePath(QString::fromUtf8("Настройки"));
    const QString common = base.filePath(QString::fromUtf8("Общие"));
    qputenv("CG_BIN_DIR", binary.toUtf8());
    qputenv("CG_RESOURCE_DIR", resource.toUtf8());
    qputenv("CG_USER_DIR", user.toUtf8());
    qputenv("CG_COMMON_DIR", common.toUtf8());

    QCOMPARE(QByteArray(EDirs::c_binaryDir()), binary.toUtf8());
    QCOMPARE(QByteArray(EDirs::c_resourceDir()), resource.toUtf8());
    QCOMPARE(QByteArray(EDirs::c_settingsDir()), user.toUtf8());
    QCOMPARE(EDirs::getBinaryDir().path(), binary);
    QCOMPARE(EDirs::getResourceDir().path(), resource);
    QCOMPARE(EDirs::getSettingsDir().path(), user);
    QCOMPARE(EDirs::getCommonSettingsDir().path(), common);

    // Not cached: the next call asks the path layer again.
    qputenv("CG_RESOURCE_DIR", base.path().toUtf8());
    QCOMPARE(EDirs::getResourceDir().path(), base.path());

    // lang.ini goes to the common settings directory, whatever its name, and nowhere else.
    EDirs::setLanguage("rus");
    QVERIFY(QFile::exists(common + QStringLiteral("/lang.ini")));
    QVERIFY(!QFile::exists(user + QStringLiteral("/lang.ini")));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("rus"));
}

CG_TEST_MAIN(TestEDirs)
#include "tst_edirs.moc"
