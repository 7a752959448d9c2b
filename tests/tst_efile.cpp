// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "efile.h"

#include <QTemporaryDir>

#include <functional>
#include <random>
#include <unistd.h>

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

// Bytes that differ from their neighbours and do not repeat with any small period.
QByteArray pattern(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char((i * 7 + i / 251) & 0xFF);
    return bytes;
}

// Runs \a operation with throwOnError off, where it must answer false, and on, where it must throw.
void failsBothWays(const std::function<bool(bool throwOnError)>& operation)
{
    QVERIFY(!operation(false));
    QVERIFY_EXCEPTION_THROWN(operation(true), EFileException);
}

} // namespace

class TestEFile : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void openModes_data();
    void openModes();
    void openFailsForBadPaths_data();
    void openFailsForBadPaths();
    void operationsWithoutAnOpenFile();
    void readingAnEmptyFileFails();
    void readPastTheEndStopsAtTheEnd();
    void readAndWriteFollowEachOther();
    void atEndUsesTheSizeTakenLast();
    void sizeOfAFileDeletedWhileOpen();
    void closeReportsDataThatCannotBeWritten();

    void streamWalksThePieces_data();
    void streamWalksThePieces();
    void streamRandomWalkMatchesTheFile_data();
    void streamRandomWalkMatchesTheFile();
    void seekInsideThePieceReadsNoFile();
    void streamRefusesBadRequests();
    void streamOverAFileThatShrinksOrIsDeleted_data();
    void streamOverAFileThatShrinksOrIsDeleted();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestEFile::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestEFile::openModes_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<bool>("opens");
    QTest::addColumn<long>("size");
    QTest::addColumn<QByteArray>("readBack");    // what a read of 3 bytes finds; empty: read refused
    QTest::addColumn<QByteArray>("afterWrite");  // the file after writing "XY" at the start
    QTest::newRow("read") << int(EFile::ReadOnly) << true << true << 5L << QByteArray("abc") << QByteArray("abcde");
    QTest::newRow("read, missing") << int(EFile::ReadOnly) << false << false << -1L << QByteArray() << QByteArray();
    QTest::newRow("write truncates") << int(EFile::WriteOnly) << true << true << 0L << QByteArray() << QByteArray("XY");
    QTest::newRow("write creates") << int(EFile::WriteOnly) << false << true << 0L << QByteArray() << QByteArray("XY");
    QTest::newRow("read-write") << int(EFile::ReadWrite) << true << true << 5L << QByteArray("abc") << QByteArray("XYcde");
    QTest::newRow("read-write, missing") << int(EFile::ReadWrite) << false << false << -1L << QByteArray() << QByteArray();
    QTest::newRow("other value: read-write") << 7 << true << true << 5L << QByteArray("abc") << QByteArray("XYcde");
}

void TestEFile::openModes()
{
    QFETCH(int, mode);
    QFETCH(bool, exists);
    QFETCH(bool, opens);
    QFETCH(QByteArray, readBack);
    QFETCH(QByteArray, afterWrite);
    const QString name = path("file.bin");
    if (exists)
        writeFile(name, "abcde");
    EFile file(name);
    QCOMPARE(file.open(EFile::OpenMode(mode)), opens);
    QTEST(file.size(), "size");
    if (!opens) {
        QVERIFY(!QFile::exists(name));
        return;
    }
    QByteArray bytes(3, '\0');
    QCOMPARE(file.read(bytes.data(), 3), !readBack.isEmpty());
    if (!readBack.isEmpty())
        QCOMPARE(bytes, readBack);
    QVERIFY(file.seek(0, SEEK_SET));
    file.write("XY", 2);
    QVERIFY(file.close());
    QCOMPARE(readAll(name), afterWrite);
}

void TestEFile::openFailsForBadPaths_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("mode");
    QTest::newRow("empty name") << QString() << int(EFile::WriteOnly);
    QTest::newRow("missing") << QStringLiteral("missing") << int(EFile::ReadOnly);
    QTest::newRow("missing directory") << QStringLiteral("missing/file") << int(EFile::WriteOnly);
    QTest::newRow("directory, read") << QStringLiteral(".") << int(EFile::ReadOnly);
    QTest::newRow("directory, write") << QStringLiteral(".") << int(EFile::WriteOnly);
    QTest::newRow("directory, read-write") << QStringLiteral(".") << int(EFile::ReadWrite);
    // A file used as a directory cannot be opened, even by root.
    QTest::newRow("below a file") << QStringLiteral("plain/inner") << int(EFile::ReadOnly);
    QTest::newRow("below a file, write") << QStringLiteral("plain/inner") << int(EFile::WriteOnly);
}

void TestEFile::openFailsForBadPaths()
{
    QFETCH(QString, name);
    QFETCH(int, mode);
    writeFile(path("plain"), "content");
    const QString fullName = name.isEmpty() ? name : m_dir->filePath(name);
    failsBothWays([&](bool throwOnError) {
        EFile file(fullName);
        file.throwOnError = throwOnError;
        return file.open(EFile::OpenMode(mode));
    });
    QCOMPARE(readAll(path("plain")), QByteArray("content"));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{QStringLiteral("plain")});
}

void TestEFile::operationsWithoutAnOpenFile()
{
    EFile never;
    QCOMPARE(never.size(), -1L);
    QVERIFY(never.atEnd());
    QCOMPARE(never.pos(), -1L);
    QVERIFY(never.close());
    char byte = 0;
    for (const auto& operation : std::initializer_list<std::function<bool(EFile&)>>{
             [](EFile& f) { return f.seek(0, SEEK_SET); },
             [&](EFile& f) { return f.read(&byte, 1); },
             [](EFile& f) { return f.write("x", 1); },
             [](EFile& f) { return f.pos() >= 0; },
         }) {
        failsBothWays([&](bool throwOnError) {
            EFile file;
            file.throwOnError = throwOnError;
            return operation(file);
        });
    }
    // A closed file remembers the size it had when open.
    writeFile(path("five"), "abcde");
    EFile closed(path("five"));
    QVERIFY(closed.open(EFile::ReadOnly) && closed.close());
    QCOMPARE(closed.size(), 5L);
}

void TestEFile::readingAnEmptyFileFails()
{
    writeFile(path("empty"), QByteArray());
    for (const unsigned size : {0u, 1u}) {
        failsBothWays([&](bool throwOnError) {
            EFile file(path("empty"));
            file.throwOnError = throwOnError;
            char byte = 0;
            return file.open(EFile::ReadOnly) && file.atEnd() && file.read(&byte, size);
        });
    }
}

void TestEFile::readPastTheEndStopsAtTheEnd()
{
    writeFile(path("ten"), "0123456789");
    EFile file(path("ten"));
    QVERIFY(file.open(EFile::ReadOnly));
    QByteArray bytes(8, '\0');
    QVERIFY(file.seek(6, SEEK_SET));
    QVERIFY(file.read(bytes.data(), 8));        // short, still true without exceptions
    QCOMPARE(file.pos(), 10L);
    QVERIFY(file.atEnd());
    QVERIFY(file.read(bytes.data(), 1));        // and again at the end
    QCOMPARE(file.pos(), 10L);

    file.throwOnError = true;
    QVERIFY(file.seek(6, SEEK_SET));
    QVERIFY_EXCEPTION_THROWN(file.read(bytes.data(), 8), EFileException);
    QCOMPARE(file.pos(), 10L);
    // The file stays usable.
    QVERIFY(file.seek(1, SEEK_SET));
    QVERIFY(file.read(bytes.data(), 4));
    QCOMPARE(bytes.left(4), QByteArray("1234"));
}

void TestEFile::readAndWriteFollowEachOther()
{
    writeFile(path("rw"), "0123456789");
    EFile file(path("rw"));
    file.throwOnError = true;
    QVERIFY(file.open(EFile::ReadWrite));
    char two[3] = {};
    QVERIFY(file.read(two, 2));
    QCOMPARE(two, "01");
    QVERIFY(file.write("AB", 2));   // stdio needs a seek between the read and this write
    QVERIFY(file.read(two, 2));     // and between the write and this read
    QCOMPARE(two, "45");
    QVERIFY(file.write("CD", 2));
    QCOMPARE(file.pos(), 8L);
    QVERIFY(file.close());
    QCOMPARE(readAll(path("rw")), QByteArray("01AB45CD89"));
}

void TestEFile::atEndUsesTheSizeTakenLast()
{
    writeFile(path("grow"), "abc");
    EFile file(path("grow"));
    QVERIFY(file.open(EFile::ReadWrite));
    QVERIFY(file.seek(0, SEEK_END));
    QVERIFY(file.atEnd());
    QVERIFY(file.write("def", 3));
    QVERIFY(!file.atEnd());           // still measured against the 3 bytes taken at open
    QCOMPARE(file.size(), 6L);        // counts what was written, buffered or not
    QVERIFY(file.atEnd());
    QVERIFY(file.seek(-1, SEEK_END));
    QVERIFY(!file.atEnd());
}

void TestEFile::sizeOfAFileDeletedWhileOpen()
{
    writeFile(path("doomed"), "abcde");
    EFile file(path("doomed"));
    QVERIFY(file.open(EFile::ReadOnly));
    QVERIFY(QFile::remove(path("doomed")));
    QCOMPARE(file.size(), -1L);
    // The size taken at open stays in use, and the open file can still be read.
    char bytes[6] = {};
    QVERIFY(file.read(bytes, 5) && file.atEnd());
    QCOMPARE(bytes, "abcde");
    QVERIFY(file.close());
    QCOMPARE(file.size(), 5L);
}

void TestEFile::closeReportsDataThatCannotBeWritten()
{
    // /dev/full takes every write into the buffer and refuses it when flushed: a full disk.
    const QString full = QStringLiteral("/dev/full");
    if (!QFileInfo(full).isWritable())
        QSKIP("no writable /dev/full on this system");
    failsBothWays([&](bool throwOnError) {
        EFile file(full);
        file.throwOnError = throwOnError;
        const bool closed = file.open(EFile::WriteOnly) && file.write("data", 4) && file.close();
        if (!closed && !throwOnError)
            return !file.close();     // closed even though close failed: a second close succeeds
        return closed;
    });
    // With exceptions on, the destructor's close reports it too.
    QVERIFY_EXCEPTION_THROWN(([&] {
                                 EFile file(full);
                                 file.throwOnError = true;
                                 file.open(EFile::WriteOnly);
                                 file.write("data", 4);
                             }()),
                             EFileException);
}

// ----------------------------------------------------------------------------------------- streams

void TestEFile::streamWalksThePieces_data()
{
    QTest::addColumn<int>("fileSize");
    QTest::addColumn<long>("start");
    QTest::addColumn<long>("pieceSize");
    QTest::newRow("from 5000 in pieces of 4096") << 10000 << 5000L << 4096L;
    QTest::newRow("from 0") << 10000 << 0L << 4096L;
    QTest::newRow("the last byte") << 10000 << 9999L << 4096L;
    QTest::newRow("at the end") << 10000 << 10000L << 4096L;
    QTest::newRow("past the end") << 10000 << 12000L << 4096L;
    QTest::newRow("pieces of 1") << 10000 << 17L << 1L;
    QTest::newRow("pieces of 7") << 10000 << 3L << 7L;
    QTest::newRow("one piece, exactly") << 10000 << 0L << 10000L;
    QTest::newRow("piece larger than the file") << 10000 << 1L << 65536L;
    QTest::newRow("whole pieces") << 3 * 4096 << 4096L << 4096L;
    QTest::newRow("one byte") << 1 << 0L << 65536L;
    QTest::newRow("empty file") << 0 << 0L << 4096L;
}

void TestEFile::streamWalksThePieces()
{
    QFETCH(int, fileSize);
    QFETCH(long, start);
    QFETCH(long, pieceSize);
    const QByteArray content = pattern(fileSize);
    writeFile(path("walk"), content);
    EFileCharStream stream(path("walk"));
    QVERIFY(stream.open(EFile::ReadOnly));
    QVERIFY(stream.openStream(start, pieceSize));
    QCOMPARE(stream.streamPos(), start);
    QByteArray seen;
    char c = 0;
    while (stream.getChar(c))
        seen += c;
    QCOMPARE(seen, content.mid(int(start)));
    QVERIFY(stream.atStreamEnd());
    QCOMPARE(stream.streamPos(), std::max<long>(fileSize, start));
    QCOMPARE(stream.getChar(), -1);
    QCOMPARE(stream.streamPos(), std::max<long>(fileSize, start));
    // And back to the start one ungetChar() at a time, across every piece boundary.
    QByteArray back;
    while (stream.ungetChar()) {
        back.prepend(char(stream.getChar()));
        QVERIFY(stream.ungetChar());
    }
    QCOMPARE(back, start <= fileSize ? content : QByteArray());
    QCOMPARE(stream.getChar(), start <= fileSize && fileSize > 0 ? uchar(content[0]) : -1);
}

void TestEFile::streamRandomWalkMatchesTheFile_data()
{
    QTest::addColumn<long>("pieceSize");
    QTest::newRow("1") << 1L;
    QTest::newRow("5") << 5L;
    QTest::newRow("4096") << 4096L;
    QTest::newRow("65536") << 65536L;
}

void TestEFile::streamRandomWalkMatchesTheFile()
{
    QFETCH(long, pieceSize);
    const int size = 20000;
    const QByteArray content = pattern(size);
    writeFile(path("random"), content);
    EFileCharStream stream(path("random"));
    QVERIFY(stream.open(EFile::ReadOnly));
    QVERIFY(stream.openStream(0, pieceSize));
    std::mt19937 random(20261123);
    long at = 0;   // where the stream should be
    for (int step = 0; step < 20000; ++step) {
        const unsigned kind = random() % 16;
        if (kind < 9) {
            QCOMPARE(stream.getChar(), at < size ? uchar(content[int(at)]) : -1);
            at = std::min<long>(at + 1, size);
        } else if (kind < 14) {
            QCOMPARE(stream.ungetChar(), at > 0);
            at = std::max(at - 1, 0L);
        } else {
            at = long(random() % (size + 1));
            QVERIFY(stream.seekStream(at));
        }
        QCOMPARE(stream.streamPos(), at);
    }
}

void TestEFile::seekInsideThePieceReadsNoFile()
{
    const QByteArray content = pattern(10000);
    writeFile(path("changing"), content);
    EFileCharStream stream(path("changing"));
    QVERIFY(stream.open(EFile::ReadOnly) && stream.openStream(0, 4096));
    QCOMPARE(stream.getChar(), uchar(content[0]));
    writeFile(path("changing"), QByteArray(10000, 'Z'));
    QVERIFY(stream.seekStream(4095));
    QCOMPARE(stream.getChar(), uchar(content[4095]));   // from the loaded piece
    QCOMPARE(stream.getChar(), int('Z'));               // the next piece comes from the file
    QVERIFY(stream.seekStream(100));
    QCOMPARE(stream.getChar(), int('Z'));
}

void TestEFile::streamRefusesBadRequests()
{
    writeFile(path("some"), pattern(100));
    // A stream over a file that is not open.
    failsBothWays([&](bool throwOnError) {
        EFileCharStream stream(path("some"));
        stream.throwOnError = throwOnError;
        return stream.openStream(0, 4096);
    });
    // Negative positions.
    failsBothWays([&](bool throwOnError) {
        EFileCharStream stream(path("some"));
        stream.throwOnError = throwOnError;
        return stream.open(EFile::ReadOnly) && stream.openStream(0, 16) && stream.getChar() >= 0
               && stream.seekStream(-1);
    });
    // Piece sizes that give no buffer fail without throwing, and leave nothing to read.
    for (const long pieceSize : {0L, -1L, -4096L, LONG_MAX}) {
        EFileCharStream stream(path("some"));
        stream.throwOnError = true;
        QVERIFY(stream.open(EFile::ReadOnly));
        QVERIFY(!stream.openStream(0, pieceSize));
        QCOMPARE(stream.getChar(), -1);
        QVERIFY(!stream.ungetChar());
        QVERIFY(!stream.load());
    }
    // Never given a buffer at all.
    EFileCharStream bare(path("some"));
    QVERIFY(bare.open(EFile::ReadOnly));
    char c = 0;
    QVERIFY(!bare.getChar(c));
    QVERIFY(!bare.readNextPiece());
}

void TestEFile::streamOverAFileThatShrinksOrIsDeleted_data()
{
    QTest::addColumn<qint64>("newSize");     // -1: deleted
    QTest::addColumn<int>("readable");       // bytes the stream still gives
    QTest::addColumn<bool>("fails");         // stops with a failure rather than at the end
    QTest::newRow("deleted") << qint64(-1) << 20000 << false;
    QTest::newRow("shrinks") << qint64(6000) << 4096 << true;
    QTest::newRow("emptied") << qint64(0) << 4096 << true;
    QTest::newRow("shrinks inside a later piece") << qint64(12000) << 8192 << true;
}

void TestEFile::streamOverAFileThatShrinksOrIsDeleted()
{
    QFETCH(qint64, newSize);
    QFETCH(int, readable);
    QFETCH(bool, fails);
    const QByteArray content = pattern(20000);
    for (const bool throwOnError : {false, true}) {
        writeFile(path("moving"), content);
        EFileCharStream stream(path("moving"));
        stream.throwOnError = throwOnError;
        QVERIFY(stream.open(EFile::ReadOnly) && stream.openStream(0, 4096));
        QByteArray seen;
        seen += char(stream.getChar());
        QVERIFY(newSize < 0 ? QFile::remove(path("moving")) : QFile::resize(path("moving"), newSize));
        bool thrown = false;
        try {
            for (int c; (c = stream.getChar()) >= 0;)
                seen += char(c);
        } catch (const EFileException&) {
            thrown = true;
        }
        QCOMPARE(seen, content.left(readable));
        QCOMPARE(thrown, fails && throwOnError);
        QCOMPARE(stream.atStreamEnd(), !fails);
    }
}

CG_TEST_MAIN(TestEFile)
#include "tst_efile.moc"
