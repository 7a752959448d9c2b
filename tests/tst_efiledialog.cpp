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

namespace {

/// What the file dialog showed when it came up.
struct Seen
{
    QString directory, proposedName, filter;
};

/// Records what Qt's file dialog shows, then enters \a answer as the file name, or presses Escape
/// for a null answer.
ModalAnswer fileAnswer(Seen& seen, const QString& answer)
{
    return ModalAnswer::call([&seen, answer](QWidget* box) {
        auto* dialog = qobject_cast<QFileDialog*>(box);
        auto* edit = box->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        seen = {dialog->directory().absolutePath(), edit->text(), dialog->selectedNameFilter()};
        if (!answer.isNull())
            edit->setText(answer);
        QTest::keyClick(edit, answer.isNull() ? Qt::Key_Escape : Qt::Key_Return);
    });
}

QString remembered(const QString& key)
{
    return ESettings(QStringLiteral("EFileDialog")).value(key).toString();
}

void remember(const QString& key, const QString& dir)
{
    ESettings(QStringLiteral("EFileDialog")).setValue(key, dir);
}

} // namespace

#define ANSWERED(answerer) QVERIFY2((answerer).done(), qPrintable((answerer).error()))

class TestEFileDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void firstUseStartsInTheBinaryDirectoryThenInTheChosenOne_data();
    void firstUseStartsInTheBinaryDirectoryThenInTheChosenOne();
    void cancelKeepsEverythingAndTheDialogShowsTheProposal_data();
    void cancelKeepsEverythingAndTheDialogShowsTheProposal();
    void multiReturnsEveryNameAndStoresCanonicalPaths();

private:
    QString makeFile(const QString& relative)
    {
        const QString path = root + QLatin1Char('/') + relative;
        QDir().mkpath(QFileInfo(path).path());
        QFile f(path);
        return f.open(QIODevice::WriteOnly) ? path : QString();
    }
    QString dir(const QString& relative) { return QFileInfo(root + QLatin1Char('/') + relative).canonicalFilePath(); }
    QString root;
    QWidget parent;
};

void TestEFileDialog::init()
{
    root = QFileInfo(EDirs::getSettingsDir().absolutePath()).path() + QStringLiteral("/files");
    QDir(root).removeRecursively();
    QDir().mkpath(root);
    QFile::remove(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")));
}

void TestEFileDialog::firstUseStartsInTheBinaryDirectoryThenInTheChosenOne_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QByteArray>("stateName");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("removedBefore"); // a remembered directory that no longer exists
    QTest::newRow("by window class") << int(EFileDialog::Open) << QByteArray() << "DirQWidget" << false;
    QTest::newRow("by state name") << int(EFileDialog::Open) << QByteArray("Certificates") << "Certificates" << false;
    QTest::newRow("remembered directory removed") << int(EFileDialog::Open) << QByteArray() << "DirQWidget" << true;
    QTest::newRow("save to a new file") << int(EFileDialog::Save) << QByteArray("Reports") << "Reports" << false;
}

void TestEFileDialog::firstUseStartsInTheBinaryDirectoryThenInTheChosenOne()
{
    QFETCH(int, method);
    QFETCH(QByteArray, stateName);
    QFETCH(QString, key);
    QFETCH(bool, removedBefore);
    if (removedBefore) {
        remember(key, QFileInfo(makeFile(QStringLiteral("gone/x"))).path());
        QVERIFY(QDir(root + QStringLiteral("/gone")).removeRecursively());
    }
    const char* state = stateName.isNull() ? nullptr : stateName.constData();
    const bool save = method == EFileDialog::Save;
    const QString chosen = makeFile(QStringLiteral("a/one.txt")) + (save ? QStringLiteral(".new") : QString());

    QString file;
    Seen first, second;
    ModalAnswerer answer({fileAnswer(first, chosen), fileAnswer(second, QString())});
    QCOMPARE(EFileDialog::run(&parent, QString(), QString(), &file, nullptr, state, EFileDialog::Method(method)).file,
             chosen);
    QCOMPARE(file, save ? QString() : dir("a/one.txt")); // a new file has no canonical path yet
    QVERIFY(!save || !QFile::exists(chosen));
    QCOMPARE(remembered(key), dir("a"));
    EFileDialog::open(&parent, QString(), QString(), nullptr, nullptr, state);
    ANSWERED(answer);
    QCOMPARE(first.directory, EDirs::getBinaryDir().canonicalPath());
    QCOMPARE(second.directory, dir("a"));
}

void TestEFileDialog::cancelKeepsEverythingAndTheDialogShowsTheProposal_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("proposed"); // "$" stands for the test's root directory
    QTest::addColumn<QString>("expectedDir");
    QTest::addColumn<QString>("filter"); // preselected; empty: the first one is
    QTest::addColumn<QString>("title");
    const QString all = QStringLiteral("All Files (*)");
    QTest::newRow("open, bare name uses the remembered directory")
        << int(EFileDialog::Open) << "new.txt" << "a" << QString() << LCQT__Open_file;
    QTest::newRow("multi, dot path counts as none")
        << int(EFileDialog::Multi) << "./new.txt" << "a" << all << LCQT__Open_file;
    QTest::newRow("save, path uses its own directory")
        << int(EFileDialog::Save) << "$/b/new.txt" << "b" << QString() << LCQT__Save_to_file;
}

void TestEFileDialog::cancelKeepsEverythingAndTheDialogShowsTheProposal()
{
    QFETCH(int, method);
    QFETCH(QString, proposed);
    QFETCH(QString, expectedDir);
    QFETCH(QString, filter);
    QFETCH(QString, title);
    makeFile(QStringLiteral("a/new.txt"));
    makeFile(QStringLiteral("b/new.txt"));
    remember(QStringLiteral("DirQWidget"), dir("a"));
    QString file = proposed.replace(QLatin1Char('$'), root);
    QString selected = filter;

    Seen seen;
    ModalAnswerer answer(fileAnswer(seen, QString()));
    const EFileDialog::Result r = EFileDialog::run(&parent, QString(), LCQT__Text_Files_txt_All_Files_All, &file,
                                                   &selected, nullptr, EFileDialog::Method(method));
    ANSWERED(answer);
    QVERIFY(r.file.isEmpty() && r.files.isEmpty());
    QCOMPARE(answer.seen().title, title);
    QCOMPARE(seen.directory, dir(expectedDir));
    QCOMPARE(seen.proposedName, QStringLiteral("new.txt"));
    QCOMPARE(seen.filter, filter.isEmpty() ? QStringLiteral("Text Files (*.txt)") : filter);
    QCOMPARE(file, proposed);
    QCOMPARE(remembered(QStringLiteral("DirQWidget")), dir("a"));
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
    QStringList names = EFileDialog::multi(&parent, QString(), QString(), &file, nullptr, "Many");
    ANSWERED(answer);
    names.sort();
    QCOMPARE(names, (QStringList{root + QStringLiteral("/alias/one.txt"), root + QStringLiteral("/alias/two.txt")}));
    QVERIFY(file == dir("m/one.txt") || file == dir("m/two.txt"));
    QCOMPARE(remembered(QStringLiteral("Many")), dir("m"));
}

CG_TEST_MAIN(TestEFileDialog)
#include "tst_efiledialog.moc"
