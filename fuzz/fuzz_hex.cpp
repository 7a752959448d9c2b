// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The hex and text conversions on any bytes, each against a plain model of what it must give.
#include "fuzzsupport.h"

#include "ehexconverter.h"

#include <QRegularExpression>

#include <cstddef>
#include <cstdint>

namespace {

// Letters count from 'A' without adding 10, as the stored files have it.
int digit(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'A' && u <= 'F')
        return u - 'A';
    if (u >= 'a' && u <= 'f')
        return u - 'a';
    return -1;
}

void checkHexToArray(const QString& hex)
{
    const QByteArray before("before");
    QByteArray bytes = before;
    const bool ok = EHexConverter::hex2array(hex, bytes);
    if (hex.size() % 2 != 0) {
        FUZZ_CHECK(!ok && bytes == before);
        return;
    }
    QByteArray expected;
    bool valid = true;
    for (int i = 0; valid && i < hex.size(); i += 2) {
        const int high = digit(hex.at(i)), low = digit(hex.at(i + 1));
        valid = high >= 0 && low >= 0;
        if (valid)
            expected.append(char(high * 16 + low));
    }
    FUZZ_CHECK(ok == valid);
    FUZZ_CHECK(bytes == expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));

    QString hex;
    EHexConverter::array2hex(bytes, hex);
    FUZZ_CHECK(hex.size() == 2 * bytes.size());
    for (int i = 0; i < bytes.size(); ++i) {
        const uchar b = uchar(bytes.at(i));
        FUZZ_CHECK(hex.at(2 * i) == QLatin1Char("0123456789ABCDEF"[b >> 4]));
        FUZZ_CHECK(hex.at(2 * i + 1) == QLatin1Char("0123456789ABCDEF"[b & 15]));
    }
    // Without letters the hex text reads back as the bytes; any text reads as the model says.
    if (!hex.contains(QRegularExpression(QStringLiteral("[A-F]")))) {
        QByteArray back;
        FUZZ_CHECK(EHexConverter::hex2array(hex, back) && back == bytes);
    }
    checkHexToArray(QString::fromLatin1(bytes));
    checkHexToArray(QString::fromUtf8(bytes));

    QString text;
    const QChar replacement(0x2022);
    const int replaced = EHexConverter::array2string(bytes, text, replacement);
    FUZZ_CHECK(text.size() == bytes.size());
    int counted = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        const QChar c = QChar::fromLatin1(bytes.at(i));
        FUZZ_CHECK(text.at(i) == (c.isPrint() ? c : replacement));
        counted += c.isPrint() ? 0 : 1;
    }
    FUZZ_CHECK(replaced == counted);

    QByteArray utf8;
    const QString decoded = QString::fromUtf8(bytes);
    EHexConverter::string2array(decoded, utf8);
    FUZZ_CHECK(utf8 == decoded.toUtf8());
    FUZZ_CHECK(QString::fromUtf8(utf8) == decoded);
    return 0;
}
