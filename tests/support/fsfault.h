// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <sys/resource.h>

/// File-system faults for save tests: a tiny full disk, a file-size limit, and reading as another
/// user. Each undoes itself when it goes out of scope.
namespace FsFault {

/// A tmpfs of a few KiB mounted on a fresh temporary directory. Mounting needs privileges: when it
/// is refused, mounted() is false and reason() says why.
class SmallDisk
{
public:
    explicit SmallDisk(int kib);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool mounted() const { return m_mounted; }
    QString reason() const { return m_reason; }
    QString path(const QString& name) const { return m_dir.path() + QLatin1Char('/') + name; }
    /// Writes filler bytes into a file until the disk is full.
    void fill();

private:
    QTemporaryDir m_dir;
    bool m_mounted = false;
    QString m_reason;
};

/// Every file this process writes is limited to \a bytes: a longer write fails with EFBIG (the
/// SIGXFSZ signal is ignored meanwhile).
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    bool active() const { return m_active; }

private:
    struct rlimit m_saved {};
    bool m_active = false;
    void (*m_oldHandler)(int) = nullptr;
};

/// File access checks of this thread are made as the user "nobody" (root loses its override), so
/// a file with mode 000 is unreadable even for root.
class AsNobody
{
public:
    AsNobody();
    ~AsNobody();
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    int m_oldFsuid = 0;
};

} // namespace FsFault
