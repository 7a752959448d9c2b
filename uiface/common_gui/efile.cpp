// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "efile.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <new>
#include <sys/stat.h>

namespace {

const char* modeString(EFile::OpenMode mode)
{
    switch (mode) {
    case EFile::ReadOnly: return "rb";
    case EFile::WriteOnly: return "wb";
    default: return "rb+";
    }
}

} // namespace

EFile::EFile() = default;

EFile::EFile(const QString& fileName)
    : m_fileName(fileName)
{
}

EFile::~EFile() noexcept(false)
{
    close();
}

bool EFile::fail()
{
    if (throwOnError)
        throw EFileException();
    return false;
}

bool EFile::open(EFile::OpenMode mode)
{
    if (!close())
        return false;
    if (m_fileName.isEmpty())
        return fail();
    m_stream = std::fopen(m_fileName.toUtf8().constData(), modeString(mode));
    if (!m_stream)
        return fail();
    // stdio opens a directory for reading, and every read of it fails afterwards: refuse it here.
    struct stat info;
    if (::fstat(fileno(m_stream), &info) == 0 && S_ISDIR(info.st_mode)) {
        std::fclose(m_stream);
        m_stream = nullptr;
        return fail();
    }
    std::fseek(m_stream, 0, SEEK_END);
    m_size = std::ftell(m_stream);
    std::fseek(m_stream, 0, SEEK_SET);
    return true;
}

bool EFile::close()
{
    if (!m_stream)
        return true;
    const int result = std::fclose(m_stream);
    m_stream = nullptr;
    return result == 0 || fail();
}

bool EFile::seek(long offset, int whence)
{
    if (!m_stream || std::fseek(m_stream, offset, whence) != 0)
        return fail();
    return true;
}

long EFile::pos()
{
    const long position = m_stream ? std::ftell(m_stream) : -1;
    if (position < 0 && throwOnError)
        throw EFileException();
    return position;
}

void EFile::beginTransfer(int operation)
{
    errno = 0;
    // stdio requires a repositioning between a read and a following write, and the reverse.
    if (m_lastOperation != operation)
        std::fseek(m_stream, 0, SEEK_CUR);
    m_lastOperation = NoOperation;
}

bool EFile::read(void* buffer, unsigned int size)
{
    if (!m_stream || m_size < 1)
        return fail();
    if (size == 0)
        return true;
    beginTransfer(ReadOperation);
    if (std::fread(buffer, size, 1, m_stream) != 1) {
        // Past the end rather than an error: leave the position at the end and the stream usable.
        if (errno == 0) {
            std::rewind(m_stream);
            std::fseek(m_stream, 0, SEEK_END);
        }
        if (throwOnError)
            throw EFileException();
    }
    // A short read without exceptions still reports success: existing callers rely on it.
    m_lastOperation = ReadOperation;
    return true;
}

bool EFile::write(const void* buffer, unsigned int size)
{
    if (!m_stream)
        return fail();
    if (size == 0)
        return true;
    beginTransfer(WriteOperation);
    if (std::fwrite(buffer, size, 1, m_stream) != 1)
        return fail();
    m_lastOperation = WriteOperation;
    return true;
}

bool EFile::atEnd() const
{
    if (!m_stream)
        return true;
    return std::ftell(m_stream) == m_size;
}

long EFile::size()
{
    if (!m_stream)
        return m_size;
    // Count what was written and still sits in stdio's buffer.
    if (m_lastOperation == WriteOperation)
        std::fflush(m_stream);
    struct stat info;
    if (::fstat(fileno(m_stream), &info) != 0 || info.st_nlink == 0)
        return -1;
    m_size = long(info.st_size);
    return m_size;
}

// ------------------------------------------------------------------------------ EFileCharStream

EFileCharStream::~EFileCharStream()
{
    closeStream();
}

bool EFileCharStream::openStream(long start, long pieceSize)
{
    closeStream();
    m_endOfStream = false;
    m_pieceSize = pieceSize;
    // One piece is read with one EFile::read(), which takes an unsigned int.
    if (pieceSize > 0 && static_cast<unsigned long>(pieceSize) <= UINT_MAX)
        m_begin = new (std::nothrow) char[static_cast<size_t>(pieceSize)];
    m_pieceStart = 0;
    m_current = m_end = m_begin;
    if (!m_begin)
        return false;
    size();
    return seekStream(start);
}

void EFileCharStream::closeStream()
{
    delete[] m_begin;
    m_begin = m_current = m_end = nullptr;
}

bool EFileCharStream::load()
{
    if (!m_begin || m_pieceStart < 0)
        return false;
    if (m_pieceStart >= m_size) {
        m_endOfStream = true;
        return false;
    }
    const long aligned = m_pieceSize * (m_pieceStart / m_pieceSize);
    const long count = std::min(m_size - aligned, m_pieceSize);
    if (!seek(aligned, SEEK_SET) || !read(m_begin, static_cast<unsigned int>(count)))
        return false;
    // read() reports a short read as success; a file that shrank since its size was taken would
    // leave stale bytes in the buffer, so check where the read ended.
    if (pos() != aligned + count)
        return false;
    m_current = m_begin + (m_pieceStart - aligned);
    m_end = m_begin + count;
    m_pieceStart = aligned;
    return true;
}

bool EFileCharStream::readNextPiece()
{
    m_pieceStart += m_current - m_begin;
    // Keep the position right when the next piece does not come: the buffer starts empty there.
    m_current = m_end = m_begin;
    return load();
}

bool EFileCharStream::ungetChar()
{
    if (m_current > m_begin) {
        --m_current;
        return true;
    }
    if (m_pieceStart <= 0)
        return false;
    --m_pieceStart;
    return load();
}

bool EFileCharStream::seekStream(long position)
{
    m_endOfStream = false;
    if (position < 0)
        return fail();
    // The piece start is never negative, so this cannot overflow.
    const long offset = position - m_pieceStart;
    if (offset >= 0 && offset < m_end - m_begin) {
        m_current = m_begin + offset;
        return true;
    }
    m_pieceStart = position;
    m_current = m_end = m_begin;
    return seek(position, SEEK_SET);
}
