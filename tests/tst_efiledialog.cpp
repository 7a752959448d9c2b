// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_loc.h"
#include "edirs.h"
#include "efiledialog.h"
#include "esettings.h"

#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace {

/// What the file dialog looked like when it came up, and how it was answered.
struct Seen
{
    bool shown = false;
    bool stuck = false; // the answer did not close the dialog
    QString title;
    QString directory;
    QString proposedName;
    QString filter;
    QString question; // what the dialog asked before accepting, if anything
};

/// Says Yes to a question the file dialog asks about the answer (replacing a file). A dialog that
/// still refuses the answer would block the test for good: it is closed and marked stuck.
void answerQuestions(std::shared_ptr<Seen> seen, QPointer<QFileDialog> dialog, int tries)
{
    if (!dialog || !dialog->isVisible())
        return;
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        seen->question = box->text();
        box->button(QMessageBox::Yes)->click();
    } else if (tries > 300) {
        seen->stuck = true;
        dialog->reject();
        return;
    }
    QTimer::singleShot(10, [=] { answerQuestions(seen, dialog, tries + 1); });
}

/// Answers the next modal QFileDialog: records what it shows, then types \a answer into its file
/// name field and presses Enter, or presses Escape when \a answer is null.
void answerNextDialog(std::shared_ptr<Seen> seen, const QString& answer, int tries = 0)
{
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) {
        if (tries < 500)
            QTimer::singleShot(10, [=] { answerNextDialog(seen, answer, tries + 1); });
        return;
    }
    auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    seen->shown = true;
    seen->title = dialog->windowTitle();
    seen->directory = dialog->directory().absolutePath();
    seen->proposedName = edit ? edit->text() : QString();
    seen->filter = dialog->selectedNameFilter();
    // Watch for questions first: a question about the answer runs inside the key press.
    QPointer<QFileDialog> guard(dialog);
    QTimer::singleShot(10, [=] { answerQuestions(seen, guard, 0); });
    if (answer.isNull() || !edit) {
        QTest::keyClick(dialog, Qt::Key_Escape);
    } else {
        edit->setText(answer);
        QTest::keyClick(edit, Qt::Key_Return);
    }
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

class OtherWindow : public QMainWindow
{
    Q_OBJECT
};

} // namespace

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
    void multiReturnsEveryNameAndRemembersTheFirstDirectory();
    void defaultCaptionsAndFilterPreselection_data();
    void defaultCaptionsAndFilterPreselection();
    void symlinkedChoiceIsStoredCanonically();
    void onlySaveAsksBeforeReplacingAFile_data();
    void onlySaveAsksBeforeReplacingAFile();

private:
    QString makeFile(const QString& relative);
    QString root;
    QWidget parent;
};

QString TestEFileDialog::makeFile(const QString& relative)
{
    const QString path = root + QLatin1Char('/') + relative;
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return QString();
    f.write("x");
    return path;
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

    auto first = std::make_shared<Seen>();
    answerNextDialog(first, chosen);
    QCOMPARE(EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, state), chosen);
    QVERIFY(first->shown && !first->stuck);
    QCOMPARE(first->directory, EDirs::getBinaryDir().canonicalPath());
    QCOMPARE(remembered(key), canonical(root + QStringLiteral("/a")));

    auto second = std::make_shared<Seen>();
    answerNextDialog(second, QString());
    EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, state);
    QVERIFY(second->shown);
    QCOMPARE(second->directory, canonical(root + QStringLiteral("/a")));
}

void TestEFileDialog::stateNamesAndWindowClassesKeepSeparateDirectories()
{
    const QString inA = makeFile(QStringLiteral("a/1.txt"));
    const QString inB = makeFile(QStringLiteral("b/2.txt"));
    const QString inC = makeFile(QStringLiteral("c/3.txt"));
    OtherWindow other;

    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, inA);
    EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, "Keys");
    answerNextDialog(seen, inB);
    EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, "Logs");
    answerNextDialog(seen, inC);
    EFileDialog::open(&other);

    const struct
    {
        QWidget* window;
        const char* state;
        QString dir;
    } expected[] = {
        {&parent, "Keys", canonical(root + QStringLiteral("/a"))},
        {&parent, "Logs", canonical(root + QStringLiteral("/b"))},
        {&other, nullptr, canonical(root + QStringLiteral("/c"))},
        {&parent, nullptr, EDirs::getBinaryDir().canonicalPath()},
    };
    for (const auto& e : expected) {
        auto look = std::make_shared<Seen>();
        answerNextDialog(look, QString());
        EFileDialog::open(e.window, QString(), QString(), nullptr, nullptr, e.state);
        QCOMPARE(look->directory, e.dir);
    }
    QVERIFY(remembered(QStringLiteral("DirOtherWindow")).endsWith(QStringLiteral("/c")));
}

void TestEFileDialog::proposedFileGivesDirectoryAndName_data()
{
    QTest::addColumn<QString>("proposed");  // relative to the test root unless bare
    QTest::addColumn<QString>("expectedDir");
    QTest::newRow("bare name uses the remembered directory") << QStringLiteral("new.txt") << QStringLiteral("a");
    QTest::newRow("path uses its own directory") << QStringLiteral("$/b/new.txt") << QStringLiteral("b");
    QTest::newRow("dot path counts as none") << QStringLiteral("./new.txt") << QStringLiteral("a");
}

void TestEFileDialog::proposedFileGivesDirectoryAndName()
{
    QFETCH(QString, proposed);
    QFETCH(QString, expectedDir);
    makeFile(QStringLiteral("b/other.txt"));
    {
        ESettings s(QStringLiteral("EFileDialog"));
        s.setValue(QStringLiteral("Proposals"), root + QStringLiteral("/a"));
    }
    QDir().mkpath(root + QStringLiteral("/a"));
    proposed.replace(QStringLiteral("$"), root);

    QString file = proposed;
    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, QString());
    QVERIFY(EFileDialog::save(&parent, QString(), QString(), &file, nullptr, "Proposals").isEmpty());
    QCOMPARE(seen->directory, canonical(root + QLatin1Char('/') + expectedDir));
    QCOMPARE(seen->proposedName, QStringLiteral("new.txt"));
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
    {
        ESettings s(QStringLiteral("EFileDialog"));
        s.setValue(QStringLiteral("DirQWidget"), root + QStringLiteral("/kept"));
    }
    makeFile(QStringLiteral("elsewhere/x.txt"));
    QString file = root + QStringLiteral("/elsewhere/x.txt");
    const QString before = file;

    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, QString());
    const EFileDialog::Result r = EFileDialog::run(&parent, QString(), QString(), &file, nullptr, nullptr,
                                                   EFileDialog::Method(method));
    QVERIFY(seen->shown);
    QVERIFY(r.file.isEmpty());
    QVERIFY(r.files.isEmpty());
    QCOMPARE(file, before);
    QCOMPARE(remembered(QStringLiteral("DirQWidget")), root + QStringLiteral("/kept"));
}

void TestEFileDialog::saveToNewFileRemembersItsDirectory()
{
    QDir().mkpath(root + QStringLiteral("/out"));
    const QString target = root + QStringLiteral("/out/report.txt");
    QString file = QStringLiteral("report.txt");

    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, target);
    QCOMPARE(EFileDialog::save(&parent, QString(), QString(), &file, nullptr, "Reports"), target);
    QVERIFY(!seen->stuck);
    QVERIFY(file.isEmpty()); // no canonical path for a file that does not exist yet
    QVERIFY(!QFile::exists(target));

    auto next = std::make_shared<Seen>();
    answerNextDialog(next, QString());
    EFileDialog::save(&parent, QString(), QString(), nullptr, nullptr, "Reports");
    QCOMPARE(next->directory, canonical(root + QStringLiteral("/out")));
}

void TestEFileDialog::removedDirectoryFallsBackToTheBinaryDirectory()
{
    const QString chosen = makeFile(QStringLiteral("gone/f.txt"));
    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, chosen);
    EFileDialog::open(&parent);
    QVERIFY(!remembered(QStringLiteral("DirQWidget")).isEmpty());
    QVERIFY(QDir(root + QStringLiteral("/gone")).removeRecursively());

    answerNextDialog(seen, QString());
    EFileDialog::open(&parent);
    QCOMPARE(seen->directory, EDirs::getBinaryDir().canonicalPath());
}

void TestEFileDialog::multiReturnsEveryNameAndRemembersTheFirstDirectory()
{
    const QString one = makeFile(QStringLiteral("m/one.txt"));
    const QString two = makeFile(QStringLiteral("m/two.txt"));
    {
        ESettings s(QStringLiteral("EFileDialog"));
        s.setValue(QStringLiteral("Many"), root + QStringLiteral("/m"));
    }
    QString file;
    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, QStringLiteral("\"one.txt\" \"two.txt\""));
    const QStringList names = EFileDialog::multi(&parent, QString(), QString(), &file, nullptr, "Many");
    QVERIFY(!seen->stuck);
    QCOMPARE(names.size(), 2);
    QVERIFY(names.contains(canonical(one)));
    QVERIFY(names.contains(canonical(two)));
    QCOMPARE(file, canonical(names.first()));
    QCOMPARE(remembered(QStringLiteral("Many")), canonical(root + QStringLiteral("/m")));
}

void TestEFileDialog::defaultCaptionsAndFilterPreselection_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("expectedTitle");
    QTest::addColumn<QString>("expectedFilter");
    const QString filters = LCQT__Text_Files_txt_All_Files_All;
    QTest::newRow("open default") << int(EFileDialog::Open) << QString() << QString() << LCQT__Open_file
                                  << QStringLiteral("Text Files (*.txt)");
    QTest::newRow("multi default") << int(EFileDialog::Multi) << QString() << QString() << LCQT__Open_file
                                   << QStringLiteral("Text Files (*.txt)");
    QTest::newRow("save default") << int(EFileDialog::Save) << QString() << QString() << LCQT__Save_to_file
                                  << QStringLiteral("Text Files (*.txt)");
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
    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, chosen);
    EFileDialog::run(&parent, caption, LCQT__Text_Files_txt_All_Files_All, nullptr, &selected, nullptr,
                     EFileDialog::Method(method));
    QVERIFY(!seen->stuck);
    QCOMPARE(seen->title, expectedTitle);
    QCOMPARE(seen->filter, expectedFilter);
    QCOMPARE(selected, expectedFilter);
}

void TestEFileDialog::symlinkedChoiceIsStoredCanonically()
{
    const QString real = makeFile(QStringLiteral("real/data.txt"));
    QVERIFY(QFile::link(root + QStringLiteral("/real"), root + QStringLiteral("/alias")));
    QString file;
    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, root + QStringLiteral("/alias/data.txt"));
    QCOMPARE(EFileDialog::open(&parent, QString(), QString(), &file), root + QStringLiteral("/alias/data.txt"));
    QCOMPARE(file, canonical(real));
    QCOMPARE(remembered(QStringLiteral("DirQWidget")), canonical(root + QStringLiteral("/real")));
}

void TestEFileDialog::onlySaveAsksBeforeReplacingAFile_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<bool>("asks");
    QTest::newRow("open") << int(EFileDialog::Open) << false;
    QTest::newRow("save") << int(EFileDialog::Save) << true;
}

void TestEFileDialog::onlySaveAsksBeforeReplacingAFile()
{
    QFETCH(int, method);
    QFETCH(bool, asks);
    const QString existing = makeFile(QStringLiteral("r/existing.txt"));
    auto seen = std::make_shared<Seen>();
    answerNextDialog(seen, existing);
    const EFileDialog::Result r = EFileDialog::run(&parent, QString(), QString(), nullptr, nullptr, nullptr,
                                                   EFileDialog::Method(method));
    QVERIFY(!seen->stuck);
    QCOMPARE(r.file, existing);
    QCOMPARE(!seen->question.isEmpty(), asks);
    QCOMPARE(seen->question.contains(QStringLiteral("existing.txt")), asks);
}

CG_TEST_MAIN(TestEFileDialog)
#include "tst_efiledialog.moc"
