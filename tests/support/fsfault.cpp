// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "fsfault.h"

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/fsuid.h>
#include <sys/mount.h>
#include <unistd.h>

namespace FsFault {

SmallDisk::SmallDisk(int kib)
{
    if (!m_dir.isValid()) {
        m_reason = QStringLiteral("no temporary directory");
        return;
    }
    const QByteArray options = "size=" + QByteArray::number(kib) + 'k';
    if (::mount("tmpfs", QFile::encodeName(m_dir.path()).constData(), "tmpfs", 0, options.constData()) == 0)
        m_mounted = true;
    else
        m_reason = QStringLiteral("mounting a tmpfs is not allowed here: ") + QString::fromLocal8Bit(std::strerror(errno));
}

SmallDisk::~SmallDisk()
{
    if (m_mounted)
        ::umount2(QFile::encodeName(m_dir.path()).constData(), MNT_DETACH);
}

void SmallDisk::fill()
{
    const int fd = ::open(QFile::encodeName(path(QStringLiteral("filler"))).constData(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (fd < 0)
        return;
    const QByteArray block(512, 'f');
    while (::write(fd, block.constData(), size_t(block.size())) > 0) {
    }
    // Small writes fill the last partial page too.
    while (::write(fd, "f", 1) > 0) {
    }
    ::close(fd);
}

FileSizeLimit::FileSizeLimit(rlim_t bytes)
{
    if (::getrlimit(RLIMIT_FSIZE, &m_saved) != 0)
        return;
    struct rlimit small = m_saved;
    small.rlim_cur = bytes;
    m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    m_active = ::setrlimit(RLIMIT_FSIZE, &small) == 0;
}

FileSizeLimit::~FileSizeLimit()
{
    if (m_active)
        ::setrlimit(RLIMIT_FSIZE, &m_saved);
    std::signal(SIGXFSZ, m_oldHandler ? m_oldHandler : SIG_DFL);
}

AsNobody::AsNobody()
    : m_oldFsuid(::setfsuid(65534))
{
}

AsNobody::~AsNobody()
{
    ::setfsuid(uid_t(m_oldFsuid));
}

} // namespace FsFault
