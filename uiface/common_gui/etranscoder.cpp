// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etranscoder.h"

#include <QString>

#include <cstring>
#include <memory>

namespace {

// Longer texts take the way through UTF-8, whose sizes are what limit them.
constexpr unsigned directLimit = 0x10000000;

// A single-byte code page straight into UTF-16 through its table: the same string that converting
// to UTF-8 and reading that up to its NUL gives, without the UTF-8 between (a third of the time).
// As there, a byte the code page lacks anywhere in the first length bytes makes the whole text
// count as UTF-8 up to its NUL.
QString decodeSingleByte(const char16_t* table, const char* text, unsigned length)
{
    // A code page lacks a handful of bytes at most: memchr finds them faster than a test per byte.
    for (int b = 0; b < 256; ++b) {
        if (table[b] == 0xFFFF && std::memchr(text, b, length))
            return QString::fromUtf8(text);
    }
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    const void* nul = std::memchr(text, 0, length);
    const unsigned size = nul ? unsigned(static_cast<const char*>(nul) - text) : length;
    QString result(int(size), Qt::Uninitialized);
    auto* out = reinterpret_cast<char16_t*>(result.data());
    for (unsigned i = 0; i < size; ++i)
        out[i] = table[bytes[i]];
    return result;
}

class Locker
{
public:
    explicit Locker(pthread_mutex_t* mutex)
        : m_mutex(mutex)
    {
        pthread_mutex_lock(m_mutex);
    }
    ~Locker() { pthread_mutex_unlock(m_mutex); }
    Locker(const Locker&) = delete;
    Locker& operator=(const Locker&) = delete;

private:
    pthread_mutex_t* m_mutex;
};

} // namespace

ETranscoder::ETranscoder()
{
    // Should the attributes fail, the mutex keeps its static default (not recursive, still usable).
    pthread_mutexattr_t attributes;
    if (pthread_mutexattr_init(&attributes) != 0)
        return;
    if (pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0)
        pthread_mutex_init(&m_mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

ETranscoder::~ETranscoder()
{
    delete m_converter;
    pthread_mutex_destroy(&m_mutex);
}

void ETranscoder::setEncoding(codepage_t encoding)
{
    Locker lock(&m_mutex);
    if (encoding == m_encoding)
        return;
    m_encoding = encoding;
    delete m_converter;
    m_converter = nullptr;
    if (encoding != CP_UTF8)
        m_converter = new convi(encoding, CP_UTF8);
}

QString ETranscoder::doTranscode(const char* text, unsigned int length) const
{
    Locker lock(&m_mutex);
    // Without a converter, and for text it cannot convert, the text is read up to its NUL whatever
    // length says: applications hand in NUL-terminated buffers and rely on that.
    if (!m_converter)
        return QString::fromUtf8(text);
    if (const char16_t* table = m_converter->utf16_table(); table && text && length < directLimit)
        return decodeSingleByte(table, text, length);
    const unsigned outsize = m_converter->get_outsize(text, length);
    if (outsize == 0)
        return QString::fromUtf8(text);
    std::unique_ptr<char[]> converted(new char[outsize]);
    m_converter->convert_safe(text, length, converted.get(), outsize);
    return QString::fromUtf8(converted.get());
}
