// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "convi.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iconv.h>

namespace {

const char* iconvName(codepage_t page)
{
    switch (page) {
    case CP_IBM866: return "CP866";
    case CP_WINDOWS1251: return "WINDOWS-1251";
    case CP_KOI8R: return "KOI8-R";
    case CP_ISO8859_5: return "ISO-8859-5";
    case CP_WINDOWS1252: return "WINDOWS-1252";
    case CP_UTF8: return "UTF-8";
    case CP_UTF16LE: return "UTF-16LE";
    case CP_UTF16BE: return "UTF-16BE";
    case CP_ISO8859_1: return "ISO-8859-1";
    case CP_ASCII: return "ASCII";
    case CP_KOI8U: return "KOI8-U";
    default: return nullptr;
    }
}

iconv_t descriptor(void* handle)
{
    return static_cast<iconv_t>(handle);
}

// Brings the descriptor back to its initial shift state so that one call never inherits another's.
void resetState(iconv_t cd)
{
    ::iconv(cd, nullptr, nullptr, nullptr, nullptr);
}

} // namespace

convi::convi(codepage_t from, codepage_t to)
{
    const char* fromName = iconvName(from);
    const char* toName = iconvName(to);
    if (!fromName || !toName)
        return;
    iconv_t cd = ::iconv_open(toName, fromName);
    if (cd == reinterpret_cast<iconv_t>(-1))
        return;
    m_handle = cd;
    m_nulSize = (to == CP_UTF16LE || to == CP_UTF16BE) ? 2 : 1;
}

convi::~convi()
{
    if (m_handle)
        ::iconv_close(descriptor(m_handle));
}

unsigned convi::get_outsize(const char* src, unsigned srcLength)
{
    if (!m_handle || (!src && srcLength > 0))
        return 0;
    iconv_t cd = descriptor(m_handle);
    resetState(cd);

    char* in = const_cast<char*>(src);   // iconv's prototype is not const-correct
    size_t inLeft = srcLength;
    unsigned long long total = 0;
    char scratch[1024];
    for (;;) {
        char* out = scratch;
        size_t outLeft = sizeof scratch;
        // After the input is used up, one call with no input writes any closing shift sequence.
        const bool flushing = inLeft == 0;
        const size_t result = flushing ? ::iconv(cd, nullptr, nullptr, &out, &outLeft)
                                       : ::iconv(cd, &in, &inLeft, &out, &outLeft);
        total += sizeof scratch - outLeft;
        if (result != static_cast<size_t>(-1)) {
            if (flushing)
                break;
            continue;
        }
        if (errno != E2BIG)
            return 0;   // EILSEQ: invalid or unrepresentable character; EINVAL: text ends mid-character
    }
    total += m_nulSize;
    return total > 0xFFFFFFFFull ? 0 : static_cast<unsigned>(total);
}

void convi::convert_safe(const char* src, unsigned srcLength, char* dst, unsigned dstSize)
{
    if (!dst || dstSize == 0)
        return;
    const unsigned nul = std::min(m_nulSize, dstSize);
    size_t written = 0;
    if (m_handle && (src || srcLength == 0)) {
        iconv_t cd = descriptor(m_handle);
        resetState(cd);
        char* in = const_cast<char*>(src);
        size_t inLeft = srcLength;
        char* out = dst;
        size_t outLeft = dstSize - nul;
        // iconv converts whole characters only, so what stands in dst on any error is valid text.
        if (inLeft == 0 || ::iconv(cd, &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1))
            ::iconv(cd, nullptr, nullptr, &out, &outLeft);
        written = static_cast<size_t>(out - dst);
    }
    std::memset(dst + written, 0, nul);
}
