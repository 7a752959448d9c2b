// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "edirs.h"
#include "efiledialog.h"
#include "esettings.h"

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>

namespace {

/// What the file dialog showed when it came up.
struct Seen
{
    QString directory;
    QString proposedName;
    QString filter;
};

/// Records what Qt's file dialog shows, then types \a answer into its file name field and presses
/// Enter, or presses Escape for a null answer.
ModalAnswer fileAnswer(Seen& seen, const QString& answer)
{
    return ModalAnswer::call([&seen, answer](QWidget* box) {
        auto* dialog = qobject_cast<QFileDialog*>(box);
        auto* edit = box->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (!dialog || !edit)
            return void(box->close());
        seen = {dialog->directory().absolutePath(), edit->text(), dialog->selectedNameFilter()};
        if (answer.isNull()) {
            QTest::keyClick(edit, Qt::Key_Escape);
        } else {
            edit->setText(answer);
            QTest::keyClick(edit, Qt::Key_Return);
        }
    });
}

QString canonical(const QString& path)
{
    return QFileInfo(path).canonicalFilePath();
}

QString remembered(const QString& key)
{
    ESettings s(QStringLiteral("EFileDialog"));
    return s.value(key).toString();
}

void remember(const QString& key, const QString& dir)
{
    ESettings s(QStringLiteral("EFileDialog"));
    s.setValue(key, dir);
}

class OtherWindow : public QMainWindow
{
    Q_OBJECT
};

} // namespace

#define ANSWERED(answerer) QVERIFY2((answerer).done(), qPrintable((answerer).error()))

class TestEFileDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void firstUseStartsInTheBinaryDirectoryThenInTheChosenOne_data();
    void firstUseStartsInTheBinaryDirectoryThenInTheChosenOne();
    void stateNamesAndWindowClassesKeepSeparateDirectories();
    void proposedFileGivesDirectoryAndName_data();
    void proposedFileGivesDirectoryAndName();
    void cancelReturnsEmptyAndRemembersNothing_data();
    void cancelReturnsEmptyAndRemembersNothing();
    void saveToNewFileRemembersItsDirectory();
    void removedDirectoryFallsBackToTheBinaryDirectory();
    void multiReturnsEveryNameAndStoresCanonicalPaths();
    void defaultCaptionsAndFilterPreselection_data();
    void defaultCaptionsAndFilterPreselection();

private:
    QString makeFile(const QString& relative);
    QString dir(const char* relative) { return canonical(root + QLatin1Char('/') + QLatin1String(relative)); }
    QString root;
    QWidget parent;
};

QString TestEFileDialog::makeFile(const QString& relative)
{
    const QString path = root + QLatin1Char('/') + relative;
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    return f.open(QIODevice::WriteOnly) ? path : QString();
}

void TestEFileDialog::init()
{
    root = QFileInfo(EDirs::getSettingsDir().absolutePath()).path() + QStringLiteral("/files");
    QDir(root).removeRecursively();
    QDir().mkpath(root);
    QFile::remove(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")));
}

void TestEFileDialog::firstUseStartsInTheBinaryDirectoryThenInTheChosenOne_data()
{
    QTest::addColumn<QByteArray>("stateName");
    QTest::addColumn<QString>("key");
    QTest::newRow("by window class") << QByteArray() << QStringLiteral("DirQWidget");
    QTest::newRow("by state name") << QByteArray("Certificates") << QStringLiteral("Certificates");
}

void TestEFileDialog::firstUseStartsInTheBinaryDirectoryThenInTheChosenOne()
{
    QFETCH(QByteArray, stateName);
    QFETCH(QString, key);
    const char* state = stateName.isNull() ? nullptr : stateName.constData();
    const QString chosen = makeFile(QStringLiteral("a/one.txt"));

    Seen first, second;
    {
        ModalAnswerer answer(fileAnswer(first, chosen));
        QCOMPARE(EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, state), chosen);
        ANSWERED(answer);
    }
    QCOMPARE(first.directory, EDirs::getBinaryDir().canonicalPath());
    QCOMPARE(remembered(key), dir("a"));

    ModalAnswerer answer(fileAnswer(second, QString()));
    EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, state);
    ANSWERED(answer);
    QCOMPARE(second.directory, dir("a"));
}

void TestEFileDialog::stateNamesAndWindowClassesKeepSeparateDirectories()
{
    OtherWindow other;
    Seen seen;
    {
        ModalAnswerer answer({fileAnswer(seen, makeFile(QStringLiteral("a/1.txt"))),
                              fileAnswer(seen, makeFile(QStringLiteral("b/2.txt"))),
                              fileAnswer(seen, makeFile(QStringLiteral("c/3.txt")))});
        EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, "Keys");
        EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, "Logs");
        EFileDialog::open(&other);
        ANSWERED(answer);
    }
    QCOMPARE(remembered(QStringLiteral("DirOtherWindow")), dir("c"));

    const struct
    {
        QWidget* window;
        const char* state;
        QString dir;
    } expected[] = {{&parent, "Keys", dir("a")},
                    {&parent, "Logs", dir("b")},
                    {&other, nullptr, dir("c")},
                    {&parent, nullptr, EDirs::getBinaryDir().canonicalPath()}};
    for (const auto& e : expected) {
        ModalAnswerer answer(fileAnswer(seen, QString()));
        EFileDialog::open(e.window, QString(), QString(), nullptr, nullptr, e.state);
        ANSWERED(answer);
        QCOMPARE(seen.directory, e.dir);
    }
}

void TestEFileDialog::proposedFileGivesDirectoryAndName_data()
{
    QTest::addColumn<QString>("proposed"); // "$" stands for the test's root directory
    QTest::addColumn<QString>("expectedDir");
    QTest::newRow("bare name uses the remembered directory") << "new.txt" << "a";
    QTest::newRow("dot path counts as none") << "./new.txt" << "a";
    QTest::newRow("path uses its own directory") << "$/b/new.txt" << "b";
}

void TestEFileDialog::proposedFileGivesDirectoryAndName()
{
    QFETCH(QString, proposed);
    QFETCH(QString, expectedDir);
    QDir().mkpath(root + QStringLiteral("/a"));
    QDir().mkpath(root + QStringLiteral("/b"));
    remember(QStringLiteral("Proposals"), root + QStringLiteral("/a"));
    QString file = proposed.replace(QLatin1Char('$'), root);

    Seen seen;
    ModalAnswerer answer(fileAnswer(seen, QString()));
    QVERIFY(EFileDialog::save(&parent, QString(), QString(), &file, nullptr, "Proposals").isEmpty());
    ANSWERED(answer);
    QCOMPARE(seen.directory, dir(expectedDir.toLatin1().constData()));
    QCOMPARE(seen.proposedName, QStringLiteral("new.txt"));
    QCOMPARE(file, proposed); // cancelled: the caller's name stays
}

void TestEFileDialog::cancelReturnsEmptyAndRemembersNothing_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("open") << int(EFileDialog::Open);
    QTest::newRow("multi") << int(EFileDialog::Multi);
    QTest::newRow("save") << int(EFileDialog::Save);
}

void TestEFileDialog::cancelReturnsEmptyAndRemembersNothing()
{
    QFETCH(int, method);
    QDir().mkpath(root + QStringLiteral("/kept"));
    remember(QStringLiteral("DirQWidget"), root + QStringLiteral("/kept"));
    QString file = makeFile(QStringLiteral("elsewhere/x.txt"));
    const QString before = file;

    Seen seen;
    ModalAnswerer answer(fileAnswer(seen, QString()));
    const EFileDialog::Result r = EFileDialog::run(&parent, QString(), QString(), &file, nullptr, nullptr,
                                                   EFileDialog::Method(method));
    ANSWERED(answer);
    QVERIFY(r.file.isEmpty() && r.files.isEmpty());
    QCOMPARE(file, before);
    QCOMPARE(remembered(QStringLiteral("DirQWidget")), root + QStringLiteral("/kept"));
}

void TestEFileDialog::saveToNewFileRemembersItsDirectory()
{
    QDir().mkpath(root + QStringLiteral("/out"));
    const QString target = root + QStringLiteral("/out/report.txt");
    QString file = QStringLiteral("report.txt");

    Seen seen;
    {
        ModalAnswerer answer({fileAnswer(seen, target), fileAnswer(seen, QString())});
        QCOMPARE(EFileDialog::save(&parent, QString(), QString(), &file, nullptr, "Reports"), target);
        QVERIFY(file.isEmpty()); // no canonical path for a file that does not exist yet
        QVERIFY(!QFile::exists(target));
        EFileDialog::save(&parent, QString(), QString(), nullptr, nullptr, "Reports");
        ANSWERED(answer);
    }
    QCOMPARE(seen.directory, dir("out"));
}

void TestEFileDialog::removedDirectoryFallsBackToTheBinaryDirectory()
{
    QDir().mkpath(root + QStringLiteral("/gone"));
    remember(QStringLiteral("DirQWidget"), dir("gone"));
    QVERIFY(QDir(root + QStringLiteral("/gone")).removeRecursively());

    Seen seen;
    ModalAnswerer answer(fileAnswer(seen, QString()));
    EFileDialog::open(&parent);
    ANSWERED(answer);
    QCOMPARE(seen.directory, EDirs::getBinaryDir().canonicalPath());
}

void TestEFileDialog::multiReturnsEveryNameAndStoresCanonicalPaths()
{
    // Chosen through a symbolic link: the caller's file and the remembered directory are canonical.
    makeFile(QStringLiteral("m/one.txt"));
    makeFile(QStringLiteral("m/two.txt"));
    QVERIFY(QFile::link(root + QStringLiteral("/m"), root + QStringLiteral("/alias")));
    remember(QStringLiteral("Many"), root + QStringLiteral("/alias"));

    QString file;
    Seen seen;
    ModalAnswerer answer(fileAnswer(seen, QStringLiteral("\"one.txt\" \"two.txt\"")));
    const QStringList names = EFileDialog::multi(&parent, QString(), QString(), &file, nullptr, "Many");
    ANSWERED(answer);
    QCOMPARE(names.size(), 2);
    QVERIFY(names.contains(root + QStringLiteral("/alias/one.txt")));
    QVERIFY(names.contains(root + QStringLiteral("/alias/two.txt")));
    QCOMPARE(file, canonical(names.first()));
    QVERIFY(file.startsWith(dir("m")));
    QCOMPARE(remembered(QStringLiteral("Many")), dir("m"));
}

void TestEFileDialog::defaultCaptionsAndFilterPreselection_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("expectedTitle");
    QTest::addColumn<QString>("expectedFilter");
    const QString first = QStringLiteral("Text Files (*.txt)");
    QTest::newRow("open") << int(EFileDialog::Open) << QString() << QString() << LCQT__Open_file << first;
    QTest::newRow("multi") << int(EFileDialog::Multi) << QString() << QString() << LCQT__Open_file << first;
    QTest::newRow("save") << int(EFileDialog::Save) << QString() << QString() << LCQT__Save_to_file << first;
    QTest::newRow("own caption, preset filter") << int(EFileDialog::Open) << QStringLiteral("Pick a key")
                                                << QStringLiteral("All Files (*)") << QStringLiteral("Pick a key")
                                                << QStringLiteral("All Files (*)");
}

void TestEFileDialog::defaultCaptionsAndFilterPreselection()
{
    QFETCH(int, method);
    QFETCH(QString, caption);
    QFETCH(QString, preset);
    QFETCH(QString, expectedTitle);
    QFETCH(QString, expectedFilter);
    // A new name for the save dialog, so that it does not ask about replacing.
    const QString chosen = method == EFileDialog::Save ? root + QStringLiteral("/pick.txt")
                                                       : makeFile(QStringLiteral("f/pick.txt"));
    QString selected = preset;
    Seen seen;
    ModalAnswerer answer(fileAnswer(seen, chosen));
    EFileDialog::run(&parent, caption, LCQT__Text_Files_txt_All_Files_All, nullptr, &selected, nullptr,
                     EFileDialog::Method(method));
    ANSWERED(answer);
    QCOMPARE(answer.seen().title, expectedTitle);
    QCOMPARE(seen.filter, expectedFilter);
    QCOMPARE(selected, expectedFilter);
}

CG_TEST_MAIN(TestEFileDialog)
#include "tst_efiledialog.moc"
