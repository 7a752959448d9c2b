// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "elsptextedit.h"

#include "common_core.h"
#include "emessage.h"
#include "eutils.h"

#include <QTextCodec>

#include <new>

const QString ELSPTextEdit::defaultEncodingForLSP = QStringLiteral("Windows-1251");
const QString ELSPTextEdit::defaultEncodingForFile = QStringLiteral("utf-8");
const QString ELSPTextEdit::defaultEncodingForCustomLSP = QStringLiteral("utf-8");
const QString ELSPTextEdit::defaultEncodingForDescriptor = QStringLiteral("utf-8");
const QString ELSPTextEdit::defaultEncodingForCertificate = QStringLiteral("utf-8");

namespace {

bool isBlank(char c)
{
    return static_cast<unsigned char>(c) <= 32;
}

bool isNameChar(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

/// The declaration scan over any sequence of bytes: \a at(i) gives byte i of \a length. Saving
/// scans the document text through its Latin-1 view without building that copy.
template <typename ByteAt>
QString detectIn(ByteAt at, int length, const QString& defaultEncoding)
{
    if (length < 10)
        return defaultEncoding;
    const auto startsWord = [&](int i, const char* word, int size) {
        if (length - i < size)
            return false;
        for (int k = 0; k < size; ++k) {
            if (at(i + k) != word[k])
                return false;
        }
        return true;
    };

    int i = 0;
    if (at(0) == '#') {
        i = 1;
        while (i < length && isBlank(at(i)))
            ++i;
        if (!startsWord(i, "encoding", 8))
            return defaultEncoding;
        i += 8;
        while (i < length && (at(i) == ':' || at(i) == '=' || isBlank(at(i))))
            ++i;
        if (i >= length)
            return defaultEncoding;
    } else {
        if (!startsWord(0, "<?xml", 5))
            return defaultEncoding;
        // The declaration must come before the first '>'.
        for (i = 5;; ++i) {
            if (i >= length || at(i) == '>')
                return defaultEncoding;
            if (startsWord(i, "encoding", 8))
                break;
        }
        i += 8;
        while (i < length && (at(i) == '=' || at(i) == '"' || isBlank(at(i))))
            ++i;
    }

    QString name;
    while (i < length && isNameChar(at(i)))
        name += QLatin1Char(at(i++));
    return name.isEmpty() ? defaultEncoding : name;
}

QTextCodec* codecFor(const QString& name)
{
    return name.isEmpty() ? nullptr : QTextCodec::codecForName(name.toUtf8());
}

/// Shows the busy cursor for as long as it lives, also when an exception leaves the scope.
class BusyCursor
{
public:
    BusyCursor() { EUtils::waitCursor(true); }
    ~BusyCursor() { EUtils::waitCursor(false); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

/// Runs \a work under the busy cursor; the core library's errors are shown and give false.
template <typename Work>
bool withFileErrorsShown(QWidget* editor, Work work)
{
    BusyCursor busy;
    try {
        work();
        return true;
    } catch (const std::bad_alloc& e) {
        EMessage::erro(editor, e);
    } catch (const TTT& e) {
        EMessage::erro(editor, e);
    }
    return false;
}

} // namespace

ELSPTextEdit::ELSPTextEdit(bool shortcuts)
    : EPlainTextEdit(shortcuts)
{
}

QString ELSPTextEdit::detectEncoding(const char* data, int length, const QString& defaultEncoding)
{
    if (!data)
        return defaultEncoding;
    return detectIn([data](int i) { return data[i]; }, length, defaultEncoding);
}

void ELSPTextEdit::setText(const char* data, int length, const QString& defaultEncoding)
{
    if (!data || length < 0)
        length = 0;
    const QString encoding = detectEncoding(data, length, defaultEncoding);
    if (QTextCodec* codec = codecFor(encoding))
        EPlainTextEdit::setText(codec->toUnicode(data, length));
    else
        EPlainTextEdit::setText(QString::fromUtf8(data, length));
}

void ELSPTextEdit::setText(const QByteArray& data, const QString& defaultEncoding)
{
    if (data.isEmpty())
        EPlainTextEdit::setText(QString());
    else
        setText(data.constData(), data.size(), defaultEncoding);
}

void ELSPTextEdit::setText(const Bag& data, const QString& defaultEncoding)
{
    if (data.empty())
        EPlainTextEdit::setText(QString());
    else
        setText(data.data(), int(data.size()), defaultEncoding);
}

bool ELSPTextEdit::loadFromFile(const QString& path, const QString& defaultEncoding)
{
    return withFileErrorsShown(this, [&] {
        ArrayHolder<char> buffer;
        const unsigned int size = UTF8File::load(path.toUtf8().constData(), buffer, maxFileSize, false);
        if (size != 0)
            setText(buffer.get(), int(size), defaultEncoding);
    });
}

void ELSPTextEdit::getText(QByteArray& out, const QString& defaultEncoding)
{
    const QString text = toPlainText();
    // toLatin1() writes '?' for what Latin-1 cannot hold; the scan sees the same bytes.
    const QChar* chars = text.constData();
    const QString encoding = detectIn(
        [chars](int i) {
            const ushort u = chars[i].unicode();
            return u < 0x100 ? char(u) : '?';
        },
        text.size(), defaultEncoding);
    if (QTextCodec* codec = codecFor(encoding))
        out = codec->fromUnicode(text);
    else
        out = text.toUtf8();
}

bool ELSPTextEdit::saveToFile(const QString& path, const QString& defaultEncoding)
{
    return withFileErrorsShown(this, [&] {
        QByteArray bytes;
        getText(bytes, defaultEncoding);
        UTF8File::save(path.toUtf8().constData(), bytes.constData(), unsigned(bytes.size()));
        document()->setModified(false);
    });
}
