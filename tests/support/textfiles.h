// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <csignal>
#include <cstring>
#include <sys/fsuid.h>
#include <sys/mount.h>
#include <sys/resource.h>

/// Files, encodings and file-system faults for the tests of the text editors.
namespace TextFiles {

inline QByteArray encoded(const char* codec, const QString& text)
{
    return QTextCodec::codecForName(codec)->fromUnicode(text);
}

/// The whole file, or "<unreadable>".
inline QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

/// Creates or replaces the file with \a bytes; a failure fails the calling test.
inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// A tmpfs of \a kib KiB, mounted where the machine allows it (reason() says why not), and filled
/// to the last byte by fill().
class FullDisk
{
public:
    explicit FullDisk(int kib)
    {
        const QByteArray size = "size=" + QByteArray::number(kib) + 'k';
        if (::mount("tmpfs", QFile::encodeName(dir.path()).constData(), "tmpfs", 0, size.constData()) == 0)
            mounted = true;
        else
            why = QStringLiteral("cannot mount a small tmpfs here: ") + QString::fromLocal8Bit(std::strerror(errno));
    }
    ~FullDisk()
    {
        if (mounted)
            ::umount2(QFile::encodeName(dir.path()).constData(), MNT_DETACH);
    }
    bool isMounted() const { return mounted; }
    QString reason() const { return why; }
    QString path(const char* name) const { return dir.filePath(QLatin1String(name)); }
    void fill() const
    {
        QFile filler(path("filler"));
        if (filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            while (filler.write("f", 1) == 1) {
            }
    }

private:
    QTemporaryDir dir;
    bool mounted = false;
    QString why;
};

/// While it lives, every file this process writes is limited to \a bytes: longer writes fail part
/// way with EFBIG (SIGXFSZ is ignored meanwhile).
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &saved);
        struct rlimit small = saved;
        small.rlim_cur = bytes;
        oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, oldHandler);
    }

private:
    struct rlimit saved {};
    void (*oldHandler)(int) = SIG_DFL;
};

/// While it lives, this thread's file access is checked as the user "nobody", so a file of mode
/// 000 is unreadable even when the tests run as root.
class AsNobody
{
public:
    AsNobody() : old(::setfsuid(65534)) {}
    ~AsNobody() { ::setfsuid(uid_t(old)); }

private:
    int old;
};

} // namespace TextFiles
