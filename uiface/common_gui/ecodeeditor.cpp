// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ecodeeditor.h"

#include "common_core.h"
#include "common_gui_loc.h"
#include "efile.h"
#include "emessage.h"

#include <QFileInfo>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCodec>
#include <QTextDocument>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

namespace {

const char* const defaultEncoding = "Windows-1251";

// Shown instead of an encoding name after a failed codec lookup; these stay English on purpose.
const char* const unknownOnView = "Unknown encoding, using UTF-8";
const char* const unknownOnOpen = "Unknown encoding, using UTF-8 to open";
const char* const unknownOnSave = "Unknown encoding, using UTF-8 to save";

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool endsLine(char c)
{
    return c == '\r' || c == '\n' || c == '\0';
}

QTextCodec* codecFor(const QString& name)
{
    return name.isEmpty() ? nullptr : QTextCodec::codecForName(name.toUtf8());
}

/// Where \a marker first occurs in [from, to), or null.
const char* findIn(const char* from, const char* to, const char* marker)
{
    const char* markerEnd = marker + std::strlen(marker);
    const char* found = std::search(from, to, marker, markerEnd);
    return found == to ? nullptr : found;
}

/// The characters QTextDocument::toPlainText() writes differently from a block's own text.
void asPlainText(QString& text)
{
    for (QChar& c : text) {
        switch (c.unicode()) {
        case 0xfdd0: // frame start and end
        case 0xfdd1:
        case QChar::ParagraphSeparator:
        case QChar::LineSeparator:
            c = QLatin1Char('\n');
            break;
        case QChar::Nbsp:
            c = QLatin1Char(' ');
            break;
        default:
            break;
        }
    }
}

bool hasNonBlank(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() > 0xff || !isBlank(char(c.unicode()));
    });
}

} // namespace

ECodeEditor::ECodeEditor(bool flag)
    : EPlainTextEdit(flag)
    , detectedEncoding(QString::fromLatin1(defaultEncoding))
    , currentEncoding(detectedEncoding)
{
    connect(document(), &QTextDocument::contentsChange, this, &ECodeEditor::onContentsChange);
}

QString ECodeEditor::detectEncoding(const char* data, int length, int* headerLength)
{
    int ignored = 0;
    if (!headerLength)
        headerLength = &ignored;
    *headerLength = 0;
    const QString fallback = QString::fromLatin1(defaultEncoding);
    if (!data || length <= 0)
        return fallback;

    const char* const end = data + length;
    const char* start = data;
    while (start < end && isBlank(*start))
        ++start;
    if (start == end)
        return fallback;

    const char* lineEnd = start + 1;
    while (lineEnd < end && !endsLine(*lineEnd))
        ++lineEnd;
    // The header length is wanted even when no declaration is found.
    *headerLength = int(lineEnd - start);

    if (*start == '#') {
        const char* marker = findIn(start, lineEnd, "encoding:");
        if (!marker)
            return fallback;
        const char* name = marker + std::strlen("encoding:");
        while (name < lineEnd && isBlank(*name))
            ++name;
        if (name == lineEnd)
            return fallback;
        const char* nameEnd = name;
        while (nameEnd < lineEnd && !isBlank(*nameEnd) && *nameEnd != '\0')
            ++nameEnd;
        return QString::fromUtf8(name, int(nameEnd - name));
    }

    static const char xmlStart[] = "<?xml ";
    if (lineEnd - start >= 6 && std::memcmp(start, xmlStart, 6) == 0) {
        const char* marker = findIn(start, lineEnd, "encoding=\"");
        if (!marker)
            return fallback;
        const char* name = marker + std::strlen("encoding=\"");
        if (name == lineEnd)
            return fallback;
        const char* quote = static_cast<const char*>(std::memchr(name, '"', size_t(lineEnd - name)));
        if (!quote)
            return fallback;
        return QString::fromUtf8(name, int(quote - name));
    }
    return fallback;
}

void ECodeEditor::setEncoding(const QString& name)
{
    const int x = horizontalScrollBar() ? horizontalScrollBar()->value() : 0;
    const int y = verticalScrollBar() ? verticalScrollBar()->value() : 0;

    if (!name.isEmpty()) {
        currentEncoding = name;
        userChoice = true;
    } else {
        currentEncoding = detectedEncoding;
        userChoice = false;
    }
    // Viewing as UTF-8 after a failed lookup stops at the first NUL, as a C string would.
    showRawText(unknownOnView, true);

    if (horizontalScrollBar())
        horizontalScrollBar()->setValue(x);
    if (verticalScrollBar())
        verticalScrollBar()->setValue(y);
}

void ECodeEditor::setText(const QString& text)
{
    rawText = text.toUtf8();
    detectedEncoding = detectEncoding(rawText.constData(), rawText.size(), &headerLength);
    if (!userChoice)
        currentEncoding = detectedEncoding;
    if (QTextCodec* codec = codecFor(currentEncoding)) {
        rawText = codec->fromUnicode(text);
    } else {
        currentEncoding = QString::fromLatin1(unknownOnOpen);
        userChoice = false;
    }
    showDecoded(text);
}

void ECodeEditor::setText(const char* data, int length)
{
    takeBytes(data && length > 0 ? QByteArray(data, length) : QByteArray());
}

void ECodeEditor::takeBytes(QByteArray bytes)
{
    rawText = std::move(bytes);
    detectedEncoding = detectEncoding(rawText.constData(), rawText.size(), &headerLength);
    if (!userChoice)
        currentEncoding = detectedEncoding;
    showRawText(unknownOnOpen, false);
}

void ECodeEditor::showRawText(const char* unknownNote, bool upToNul)
{
    if (QTextCodec* codec = codecFor(currentEncoding)) {
        showDecoded(codec->toUnicode(rawText.constData(), rawText.size()));
        return;
    }
    currentEncoding = QString::fromLatin1(unknownNote);
    userChoice = false;
    showDecoded(upToNul ? QString::fromUtf8(rawText.constData()) : QString::fromUtf8(rawText.constData(), rawText.size()));
}

void ECodeEditor::showDecoded(const QString& text)
{
    // The encoding and header length were just taken from the bytes; replacing the whole text must
    // not recompute them from the decoded text.
    const bool wasReplacing = std::exchange(replacing, true);
    EPlainTextEdit::setText(text);
    replacing = wasReplacing;
}

QByteArray& ECodeEditor::getTextRef()
{
    const QString text = document()->toPlainText();
    detectedEncoding = detectInDocument();
    currentEncoding = detectedEncoding;
    userChoice = false;
    if (QTextCodec* codec = codecFor(currentEncoding)) {
        rawText = codec->fromUnicode(text);
    } else {
        currentEncoding = QString::fromLatin1(unknownOnSave);
        rawText = text.toUtf8();
    }
    return rawText;
}

void ECodeEditor::getText(QByteArray& out)
{
    out = getTextRef();
}

QString ECodeEditor::detectInDocument()
{
    // Only the leading blank lines and the first line that is not blank can declare the encoding,
    // so the rest of a large document is never looked at; the result is the one the whole plain
    // text would give.
    QString head;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QString line = block.text();
        asPlainText(line);
        head += line;
        if (hasNonBlank(line))
            break;
        if (block.next().isValid())
            head += QLatin1Char('\n');
    }
    const QByteArray bytes = head.toUtf8();
    return detectEncoding(bytes.constData(), bytes.size(), &headerLength);
}

void ECodeEditor::onContentsChange(int position, int charsRemoved, int charsAdded)
{
    if (replacing || (charsRemoved == 0 && charsAdded == 0))
        return;
    // Only an edit that starts inside the first line, or at its end, can touch the declaration.
    if (position > headerLength)
        return;
    const QString detected = detectInDocument();
    if (detected != detectedEncoding) {
        detectedEncoding = detected;
        emit saveWithEncodingChanged();
    }
}

bool ECodeEditor::loadFromFile(const QString& path)
{
    showDecoded(QString());
    try {
        EFile file(path);
        file.throwOnError = true;
        // A directory opens for reading on Linux and then fails in odd ways, and opening a FIFO
        // waits for a writer: only regular files are read.
        const QFileInfo info(path);
        if (info.exists() && !info.isFile())
            throw EFileException();
        file.open(EFile::ReadOnly);
        const long size = file.size();
        if (size < 0 || size > long(INT_MAX))
            throw EFileException();
        file.seek(0, SEEK_SET);
        if (size != 0) {
            QByteArray bytes(int(size), Qt::Uninitialized);
            file.read(bytes.data(), unsigned(size));
            file.close();
            takeBytes(std::move(bytes));
        }
        file.close();
        return true;
    } catch (const EFileException&) {
        EMessage::erro(this, LCQT__File_loading_error);
    } catch (const std::bad_alloc& e) {
        EMessage::erro(this, e);
    }
    return false;
}

bool ECodeEditor::saveToFile(const QString& path)
{
    try {
        const QByteArray& bytes = getTextRef();
        UTF8File::save(path.toUtf8().constData(), bytes.constData(), unsigned(bytes.size()));
    } catch (const TTT&) {
        EMessage::erro(this, LCQT__File_saving_error);
        return false;
    } catch (const std::bad_alloc& e) {
        EMessage::erro(this, e);
        return false;
    }
    document()->setModified(false);
    return true;
}
