// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "platform/platform_export.h"

/// \file
/// Code-page conversion over the C library's iconv.
///
/// | value | constant          | code page (iconv name) |
/// |-------|-------------------|------------------------|
/// | 1     | `CP_IBM866`       | CP866 (DOS Cyrillic)   |
/// | 2     | `CP_WINDOWS1251`  | Windows-1251           |
/// | 3     | `CP_KOI8R`        | KOI8-R                 |
/// | 4     | `CP_ISO8859_5`    | ISO-8859-5             |
/// | 5     | `CP_WINDOWS1252`  | Windows-1252           |
/// | 6     | `CP_UTF8`         | UTF-8                  |
/// | 7     | `CP_UTF16LE`      | UTF-16LE (no byte-order mark) |
/// | 8     | `CP_UTF16BE`      | UTF-16BE (no byte-order mark) |
/// | 9     | `CP_ISO8859_1`    | ISO-8859-1             |
/// | 10    | `CP_ASCII`        | US-ASCII               |
/// | 11    | `CP_KOI8U`        | KOI8-U                 |
///
/// Every other value is unknown: a converter from or to it converts nothing.
///
/// The single-byte code pages CP866, Windows-1251/1252, KOI8-R/U and ISO-8859-1/5 are decoded into
/// UTF-8 by table, many times faster than iconv and with the same results; everything else goes
/// through iconv.

typedef int codepage_t;

constexpr codepage_t CP_IBM866 = 1;
constexpr codepage_t CP_WINDOWS1251 = 2;
constexpr codepage_t CP_KOI8R = 3;
constexpr codepage_t CP_ISO8859_5 = 4;
constexpr codepage_t CP_WINDOWS1252 = 5;
constexpr codepage_t CP_UTF8 = 6;
constexpr codepage_t CP_UTF16LE = 7;
constexpr codepage_t CP_UTF16BE = 8;
constexpr codepage_t CP_ISO8859_1 = 9;
constexpr codepage_t CP_ASCII = 10;
constexpr codepage_t CP_KOI8U = 11;

/// Converts text from one code page to another. One object belongs to one thread at a time.
///
/// \code
/// convi toUtf8(CP_WINDOWS1251, CP_UTF8);
/// unsigned need = toUtf8.get_outsize(text, length);     // 0: cannot convert
/// std::vector<char> out(need);
/// if (need)
///     toUtf8.convert_safe(text, length, out.data(), need);
/// \endcode
class CG_PLATFORM_EXPORT convi
{
public:
    convi(codepage_t from, codepage_t to);
    ~convi();
    convi(const convi&) = delete;
    convi& operator=(const convi&) = delete;

    /// The bytes that \a srcLength bytes of \a src need in the target code page, the terminating NUL
    /// included (two bytes for UTF-16). 0 when the text cannot be converted: an unknown code page,
    /// bytes that are invalid in the source, or a character the target does not have.
    unsigned get_outsize(const char* src, unsigned srcLength);

    /// Converts into \a dst, writing at most \a dstSize bytes, and always terminates the result with
    /// NUL (when \a dstSize > 0). Stops at the first character that does not fit or cannot be
    /// converted; characters are never cut in half.
    void convert_safe(const char* src, unsigned srcLength, char* dst, unsigned dstSize);

    /// For a converter that decodes a single-byte code page into UTF-8 by table: the UTF-16 code
    /// unit of every byte value, 0xFFFF where the code page has no character. Null otherwise.
    const char16_t* utf16_table() const;

private:
    void* m_handle = nullptr;   ///< the iconv descriptor; null when a code page is unknown
    const void* m_table = nullptr;  ///< a single-byte code page's tables, used instead of iconv
    unsigned m_nulSize = 1;     ///< bytes of the target's NUL character
};
