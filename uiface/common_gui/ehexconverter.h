// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QChar>

class QByteArray;
class QString;

/// Conversions between byte arrays and UTF-8, printable or hex text. Static operations only.
///
/// \code
/// QString hex;
/// EHexConverter::array2hex(QByteArray("\x01\x10", 2), hex);   // "0110"
/// QByteArray bytes;
/// bool ok = EHexConverter::hex2array(hex, bytes);             // true, bytes 0x01 0x10
/// \endcode
class COMMON_GUI_EXPORT EHexConverter
{
public:
    EHexConverter() = delete;

    /// \a a := \a s as UTF-8.
    static void string2array(const QString& s, QByteArray& a);
    /// One character per byte: the Latin-1 character if printable, else \a replacement.
    /// Returns the number of bytes replaced.
    static int array2string(const QByteArray& a, QString& s, QChar replacement);
    /// Two upper-case hex digits per byte, high nibble first, no separators.
    static void array2hex(const QByteArray& a, QString& s);
    /// Decodes pairs of hex digits into \a a. An odd length returns false and leaves \a a as it was;
    /// an invalid digit returns false with \a a holding the bytes decoded before it.
    /// \note The letters A-F (and a-f) count 0 to 5, not 10 to 15: "0A" gives 0x00 and "1F" gives
    /// 0x15. Stored data depends on this, so array2hex() output with letters does not round-trip.
    static bool hex2array(const QString& s, QByteArray& a);
};
