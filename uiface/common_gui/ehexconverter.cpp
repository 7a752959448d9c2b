// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ehexconverter.h"

#include <QByteArray>
#include <QString>

namespace {

int hex2dec(QChar c)
{
    if (c.unicode() > 0xFF || c.isNull())
        return -1;
    const char ch = c.toLatin1();
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    // Letters count from 'A' without adding 10: stored files depend on it.
    if (ch >= 'A' && ch <= 'F')
        return ch - 'A';
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a';
    return -1;
}

} // namespace

void EHexConverter::string2array(const QString& s, QByteArray& a)
{
    a = s.toUtf8();
}

int EHexConverter::array2string(const QByteArray& a, QString& s, QChar replacement)
{
    s.clear();
    s.reserve(a.size());
    int replaced = 0;
    for (const char byte : a) {
        const QChar c = QChar::fromLatin1(byte);
        if (c.isPrint()) {
            s.append(c);
        } else {
            s.append(replacement);
            ++replaced;
        }
    }
    return replaced;
}

void EHexConverter::array2hex(const QByteArray& a, QString& s)
{
    static const char digits[] = "0123456789ABCDEF";
    s.clear();
    s.reserve(a.size() * 2);
    for (const char byte : a) {
        const auto value = static_cast<unsigned char>(byte);
        s.append(QLatin1Char(digits[value >> 4]));
        s.append(QLatin1Char(digits[value & 0x0F]));
    }
}

bool EHexConverter::hex2array(const QString& s, QByteArray& a)
{
    if (s.size() % 2 != 0)
        return false;
    a.clear();
    for (int i = 0; i < s.size(); i += 2) {
        const int high = hex2dec(s.at(i));
        const int low = hex2dec(s.at(i + 1));
        if (high < 0 || low < 0)
            return false;
        a.append(char(high * 16 + low));
    }
    return true;
}
