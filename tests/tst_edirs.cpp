// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "edirs.h"

#include <QProcess>
#include <QTemporaryDir>

#include <clocale>

static bool writeFile(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

class TestEDirs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void languageInAChildProcess_data();
    void languageInAChildProcess();
    void languageAndHelpDirAreCachedUntilSet();
    void localeFallbackKeepsTheEnvironmentsLocale();
    void stripOperations_data();
    void stripOperations();

private:
    QTemporaryDir locales; // LOCPATH with ru_RU compiled as "ru_RU.UTF-8", "ru" and "RUS"
    bool haveLocales = false;
};

void TestEDirs::initTestCase()
{
    const QString ru = locales.filePath(QStringLiteral("ru"));
    haveLocales = QProcess::execute(QStringLiteral("localedef"), {QStringLiteral("-i"), QStringLiteral("ru_RU"),
                                                                  QStringLiteral("-f"), QStringLiteral("UTF-8"), ru}) == 0
        && QFile::link(ru, locales.filePath(QStringLiteral("RUS")))
        && QFile::link(ru, locales.filePath(QStringLiteral("ru_RU.UTF-8")));
}

void TestEDirs::languageInAChildProcess_data()
{
    QTest::addColumn<QByteArray>("file"); // lang.ini; null: none
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("expected"); // null: the process aborts
    const QByteArray none;
    const QStringList get{QStringLiteral("language")};
    const QString abort, nineteen = QStringLiteral("abcdefghijklmnopqrs");
    QTest::newRow("ru_RU.UTF-8") << none << "ru_RU.UTF-8" << get << "rus";
    QTest::newRow("C") << none << "C" << get << "eng";
    QTest::newRow("two-character ru") << none << "ru" << get << "eng";
    QTest::newRow("upper-case RUS") << none << "RUS" << get << "rus";
    QTest::newRow("file wins") << QByteArray("[Language]\nCode=deu\n") << "ru_RU.UTF-8" << get << "deu";
    QTest::newRow("empty code") << QByteArray("[Language]\nCode=\n") << "ru_RU.UTF-8" << get << "rus";
    // A truncated code would silently pick the wrong files; the process must not go on.
    QTest::newRow("lang.ini, 19 characters") << "[Language]\nCode=" + nineteen.toLatin1() << "C" << get << nineteen;
    QTest::newRow("lang.ini, 20 characters") << "[Language]\nCode=" + nineteen.toLatin1() + 't' << "C" << get << abort;
    QTest::newRow("setLanguage, 19 characters") << none << "C" << QStringList{QStringLiteral("set-language"), nineteen}
                                                << "stored";
    QTest::newRow("setLanguage, 20 characters") << none << "C" << QStringList{QStringLiteral("set-language"), nineteen + 't'}
                                                << abort;
}

void TestEDirs::languageInAChildProcess()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, locale);
    QFETCH(QStringList, arguments);
    QFETCH(QString, expected);
    if (locale != QLatin1String("C") && !haveLocales)
        QSKIP("localedef could not compile ru_RU into a private locale directory");

    QTemporaryDir common;
    const QString ini = common.filePath(QStringLiteral("lang.ini"));
    if (!file.isNull())
        QVERIFY(writeFile(ini, file));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"LC_CTYPE", "LANGUAGE", "LANG", "LC_ALL"})
        env.insert(QLatin1String(name), locale);
    env.insert(QStringLiteral("LOCPATH"), locales.path());
    env.insert(QStringLiteral("CG_COMMON_DIR"), common.path());
    QProcess probe;
    probe.setProcessEnvironment(env);
    probe.start(QStringLiteral(CG_LOC_PROBE), arguments);
    QVERIFY(probe.waitForFinished(60000));
    QCOMPARE(QString::fromUtf8(probe.readAllStandardOutput()).trimmed(), expected);
    QCOMPARE(probe.exitStatus() == QProcess::CrashExit, expected.isNull());
    // The locale's answer is only cached, and setLanguage aborts before it writes.
    QCOMPARE(QFile::exists(ini), !file.isNull() || expected == QLatin1String("stored"));
}

void TestEDirs::languageAndHelpDirAreCachedUntilSet()
{
    QTemporaryDir base;
    const QString user = base.filePath(QString::fromUtf8("Настройки"));
    const QString common = base.filePath(QString::fromUtf8("Общие"));
    qputenv("CG_USER_DIR", user.toUtf8());
    qputenv("CG_COMMON_DIR", common.toUtf8());
    QCOMPARE(EDirs::getSettingsDir().path(), user); // decoded as UTF-8, not cached
    QCOMPARE(QByteArray(EDirs::c_settingsDir()), user.toUtf8());

    EDirs::setLanguage("rus");
    const QString lang = common + QStringLiteral("/lang.ini");
    QCOMPARE(QSettings(lang, QSettings::IniFormat).value(QStringLiteral("Language/Code")).toString(), QStringLiteral("rus"));
    QVERIFY(!QFile::exists(user + QStringLiteral("/lang.ini")));
    // setLanguage empties the cache: the file counts, even if it changed meanwhile (the extra line
    // changes its size, so QSettings cannot take it for unchanged); then it is cached again.
    QVERIFY(writeFile(lang, "[Language]\n; edited by hand\nCode=fin\n"));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("fin"));
    QVERIFY(writeFile(lang, "[Language]\nCode=deu\n"));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("fin"));

    const QString help = EDirs::getResourceDir().path() + QStringLiteral("/help/");
    QCOMPARE(EDirs::getHelpDir(), help + QStringLiteral("fin"));
    EDirs::setLanguage("eng");
    QCOMPARE(EDirs::getHelpDir(), help + QStringLiteral("fin"));
    EDirs::setHelpDir(QString()); // null: computed again on the next call
    QCOMPARE(EDirs::getHelpDir(), help + QStringLiteral("eng"));

    // A damaged common file is replaced all the same: the choice must not land in the user's file.
    QVERIFY(writeFile(lang, "[Language\n\x01=\"open\n@Variant(junk"));
    EDirs::setLanguage("rus");
    QVERIFY(!QFile::exists(user + QStringLiteral("/lang.ini")));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("rus"));
}

void TestEDirs::localeFallbackKeepsTheEnvironmentsLocale()
{
    const QByteArray savedLcAll = qgetenv("LC_ALL"), savedCtype = std::setlocale(LC_CTYPE, nullptr);
    qputenv("LC_ALL", "C.UTF-8");
    std::setlocale(LC_CTYPE, "C");
    EDirs::setLanguage("fin"); // empties the cache; without the file the locale decides
    QVERIFY(QFile::remove(EDirs::getCommonSettingsDir().filePath(QStringLiteral("lang.ini"))));
    QCOMPARE(QByteArray(EDirs::getLanguage()), QByteArray("eng"));
    // The applications rely on LC_CTYPE following the environment afterwards.
    const QByteArray ctype = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, savedCtype.constData());
    savedLcAll.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", savedLcAll);
    QCOMPARE(ctype, QByteArray("C.UTF-8"));
}

void TestEDirs::stripOperations_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("withoutFile");
    QTest::addColumn<QString>("lastComponent");
    QTest::addColumn<QString>("withoutExt");
    QTest::newRow("file with extension") << "/a/b.c/f.txt" << "/a/b.c" << "f.txt" << "/a/b.c/f";
    QTest::newRow("dot only in a folder") << "/a/b.c/file" << "/a/b.c" << "file" << "/a/b";
    QTest::newRow("hidden file") << ".profile" << ".profile" << ".profile" << "";
    QTest::newRow("trailing separator") << "/a/b/" << "/a/b" << "" << "/a/b/";
}

void TestEDirs::stripOperations()
{
    QFETCH(QString, path);
    QString p = path;
    EDirs::stripFileFromPath(p);
    QTEST(p, "withoutFile");
    p = path;
    EDirs::stripFolderFromPath(p);
    QTEST(p, "lastComponent");
    p = path;
    EDirs::stripExtFromPath(p);
    QTEST(p, "withoutExt");
}

CG_TEST_MAIN(TestEDirs)
#include "tst_edirs.moc"
