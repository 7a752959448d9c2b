// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_core.h"
#include "ecombobox.h"
#include "edirs.h"
#include "esettings.h"
#include "esplitter.h"
#include "estatedialog.h"

#include <QDirIterator>
#include <QProcess>
#include <QTextEdit>

#include <cerrno>
#include <cstring>
#include <unistd.h>

// Every writer of the library and of the tools, run against a small tmpfs that is full: each must
// fail (or say nothing, where its interface has no way to), and leave the old file byte for byte.
// Mounting needs root; elsewhere the suite is skipped, saying why.

namespace {

QByteArray readAll(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

int run(const QString& program, const QStringList& arguments, QByteArray* output = nullptr)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return -1;
    if (output)
        *output = process.readAll();
    return process.exitCode();
}

} // namespace

class TestFullDisk : public QObject
{
    Q_OBJECT
    QString disk;             // the tmpfs, mounted over the user's settings directory
    QMap<QString, QByteArray> old; // file name -> the bytes it held before the disk filled

    QString file(const char* name) const { return disk + QLatin1Char('/') + QLatin1String(name); }

    void write(const QString& name, const QByteArray& bytes)
    {
        QFile f(name);
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(f.write(bytes), qint64(bytes.size()));
        old.insert(name, bytes);
    }

    // The files the writers will try to replace, then a filler that takes every free page.
    void fill()
    {
        for (const QString& entry : QDir(disk).entryList(QDir::Files | QDir::Hidden))
            QVERIFY(QFile::remove(disk + QLatin1Char('/') + entry));
        old.clear();
        QByteArray settings = "[Kept]\nValue=1\n";
        settings += "[EComboStatePair_QWidget]\nHistory\\1\\Item=first\nHistory\\size=1\n";
        settings += "[Full]\nSize=@Size(300 200)\nPos=@Point(10 10)\n";
        settings += "[Split]\nSizes\\1\\Item=10\nSizes\\2\\Item=20\nSizes\\size=2\n";
        write(file("common_gui.ini"), settings);
        write(file("saved.txt"), QByteArray("old text\n").repeated(100));
        write(file("common_gui.lcl"), QByteArray("old binary"));
        write(file("dump.txt"), QByteArray("old dump"));

        QFile filler(file("filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray chunk(4096, 'f');
        while (filler.write(chunk) == chunk.size()) {
        }
        while (filler.write("f", 1) == 1) {
        }
    }

    void verifyOldFilesAndNoLeftovers()
    {
        for (auto it = old.constBegin(); it != old.constEnd(); ++it)
            QVERIFY2(readAll(it.key()) == it.value(), qPrintable(it.key()));
        QStringList names = QDir(disk).entryList(QDir::Files | QDir::Hidden);
        names.removeOne(QStringLiteral("filler"));
        QStringList expected;
        for (const QString& name : old.keys())
            expected << QFileInfo(name).fileName();
        expected.sort();
        QCOMPARE(names, expected);
    }

private slots:
    void initTestCase()
    {
        if (::geteuid() != 0)
            QSKIP("needs root to mount a small tmpfs; the writers are not tried on a full disk here");
        if (QStandardPaths::findExecutable(QStringLiteral("mount")).isEmpty())
            QSKIP("no mount program: the writers are not tried on a full disk here");
        disk = EDirs::getSettingsDir().absolutePath();
        QByteArray output;
        if (run(QStringLiteral("mount"), {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                                          QStringLiteral("size=256k"), QStringLiteral("tmpfs"), disk}, &output) != 0) {
            disk.clear();
            QSKIP(qPrintable(QStringLiteral("cannot mount a tmpfs (%1): the writers are not tried on a full disk here")
                                 .arg(QString::fromLocal8Bit(output).trimmed())));
        }
    }

    void cleanupTestCase()
    {
        if (!disk.isEmpty())
            QCOMPARE(run(QStringLiteral("umount"), {disk}), 0);
    }

    void init() { fill(); }

    void fileSaveFailsWithTheReason()
    {
        std::string message = "no error";
        try {
            UTF8File::save(file("saved.txt").toUtf8().constData(), "new", 3);
        } catch (const TTT& error) {
            error.makeMulti(message);
        }
        QVERIFY2(message.find(std::strerror(ENOSPC)) != std::string::npos, message.c_str());
        verifyOldFilesAndNoLeftovers();
    }

    void settingsWritersLeaveTheOldFile()
    {
        QWidget owner;
        {
            ESettings s(QStringLiteral("Kept"));
            s.setValue(QStringLiteral("Value"), QByteArray(5000, 'v'));
            ESettings::setList("List", {1, 2, 3}, s);
            s.sync();
            QCOMPARE(s.status(), QSettings::AccessError);
        }
        {
            EComboState combo(&owner, QStringLiteral("History"));
            combo.setEditText(QStringLiteral("second"));
        }
        {
            EStateDialog dialog(nullptr, "Full");
            dialog.resize(333, 222);
            dialog.saveState();
        }
        {
            ESettings s(QStringLiteral("Split"));
            ESplitter splitter;
            splitter.addWidget(new QTextEdit(&splitter));
            splitter.addWidget(new QTextEdit(&splitter));
            splitter.show();
            QVERIFY(QTest::qWaitForWindowExposed(&splitter));
            splitter.setSizes({70, 80});
            splitter.saveState(s, "Sizes");
        }
        verifyOldFilesAndNoLeftovers();
    }

    void toolsExitWithTheReason_data()
    {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("output");
        QTest::addColumn<int>("longText"); // bytes of one text in the source: past Qt's write buffer, or not
        QTest::newRow("compiler, small") << QStringLiteral(CG_LOC_COMPILE) << QStringLiteral("common_gui.lcl") << 0;
        QTest::newRow("compiler, large") << QStringLiteral(CG_LOC_COMPILE) << QStringLiteral("common_gui.lcl") << 100000;
        QTest::newRow("dump, small") << QStringLiteral(CG_LOC_DUMP) << QStringLiteral("dump.txt") << 0;
        QTest::newRow("dump, large") << QStringLiteral(CG_LOC_DUMP) << QStringLiteral("dump.txt") << 100000;
    }

    void toolsExitWithTheReason()
    {
        QFETCH(QString, tool);
        QFETCH(QString, output);
        QFETCH(int, longText);
        QTemporaryDir elsewhere; // the input lives on a disk with room
        QByteArray source = readAll(QStringLiteral(CG_SOURCE_DIR "/translations/eng.txt"));
        if (longText > 0)
            source.replace("LCQT__Auto\t", "LCQT__Auto\t" + QByteArray(longText, 'x'));
        {
            QFile f(elsewhere.filePath(QStringLiteral("src.txt")));
            QVERIFY(f.open(QIODevice::WriteOnly) && f.write(source) == source.size());
        }
        const QString binary = elsewhere.filePath(QStringLiteral("in.lcl"));
        QByteArray messages;
        QCOMPARE(run(QStringLiteral(CG_LOC_COMPILE), {elsewhere.filePath(QStringLiteral("src.txt")), binary}, &messages), 0);
        const QString input = tool == QStringLiteral(CG_LOC_COMPILE) ? elsewhere.filePath(QStringLiteral("src.txt")) : binary;
        const int code = run(tool, {input, disk + QLatin1Char('/') + output}, &messages);
        QVERIFY2(code > 0 && messages.contains(std::strerror(ENOSPC)), messages.constData());
        verifyOldFilesAndNoLeftovers();
    }
};

CG_TEST_MAIN(TestFullDisk)
#include "tst_fulldisk.moc"
