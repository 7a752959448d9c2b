// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "locfile.h"

#include "common_gui_loc.h"

#include <QHash>
#include <QSaveFile>
#include <QTextCodec>
#include <QtEndian>

namespace LocFile {

namespace {

QString location(const QString& fileName, int line)
{
    return fileName + QLatin1Char(':') + QString::number(line) + QStringLiteral(": error: ");
}

// The length of the valid UTF-8 character that starts at \a i, or 0 when the bytes there are not one.
int characterLength(const QByteArray& bytes, int i)
{
    const uchar lead = uchar(bytes.at(i));
    const int length = lead < 0x80 ? 1 : lead >= 0xC2 && lead <= 0xDF ? 2 : lead >= 0xE0 && lead <= 0xEF ? 3
                                   : lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
    if (length == 0 || i + length > bytes.size())
        return 0;
    const QByteArray character = bytes.mid(i, length);
    // Decoding and encoding again refuses stray continuation bytes, overlong forms and surrogates.
    const QString decoded = QString::fromUtf8(character);
    return decoded.size() <= 2 && decoded.toUtf8() == character ? length : 0;
}

// \a bytes as a person can read them in a message: NUL and other control bytes, and bytes that
// are not UTF-8, are written as escapes; every other character as itself.
QString shown(const QByteArray& bytes)
{
    QString out;
    for (int i = 0; i < bytes.size();) {
        const uchar c = uchar(bytes.at(i));
        const int length = characterLength(bytes, i);
        if (length == 0 || c < 0x20 || c == 0x7F) {
            out += c == 0 ? QStringLiteral("\\0") : QStringLiteral("\\x%1").arg(c, 2, 16, QLatin1Char('0'));
            ++i;
            continue;
        }
        out += QString::fromUtf8(bytes.constData() + i, length);
        i += length;
    }
    return out;
}

// Returns false for an escape the format does not know or a backslash at the end of the line.
bool unescape(const QByteArray& text, QByteArray& result, QString& problem)
{
    result.clear();
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const char c = text.at(i);
        if (c != '\\') {
            result.append(c);
            continue;
        }
        if (++i == text.size()) {
            problem = QStringLiteral("backslash at the end of the line (write \\\\ for a backslash)");
            return false;
        }
        switch (text.at(i)) {
        case 'n': result.append('\n'); break;
        case 'r': result.append('\r'); break;
        case 't': result.append('\t'); break;
        case '\\': result.append('\\'); break;
        default:
            const int length = characterLength(text, i);
            const QString escaped = length > 0 && uchar(text.at(i)) >= 0x20 && text.at(i) != '\x7f'
                                        ? QLatin1Char('\\') + QString::fromUtf8(text.constData() + i, length)
                                        : QStringLiteral("(backslash, then the byte %1)").arg(shown(text.mid(i, 1)));
            problem = QStringLiteral("unknown escape %1 (known: \\n \\r \\t \\\\)").arg(escaped);
            return false;
        }
    }
    return true;
}

void appendInt(QByteArray& out, quint32 value)
{
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

} // namespace

bool parse(const QByteArray& source, const QString& fileName, QStringList& texts, QStringList& errors)
{
    const int count = LCQT_info.count;
    QHash<QByteArray, int> slotOf;
    for (int i = 0; i < count; ++i)
        slotOf.insert(QByteArray(LCQT_names[i]), i);

    QVector<int> lineOf(count, 0);
    texts = QStringList();
    for (int i = 0; i < count; ++i)
        texts.append(QString());

    QByteArray data = source;
    if (data.startsWith("\xEF\xBB\xBF"))
        data.remove(0, 3);
    QList<QByteArray> lines = data.split('\n');
    // A final line break does not start another line.
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();

    QTextCodec* utf8 = QTextCodec::codecForName("UTF-8");
    const int errorsBefore = errors.size();
    for (int n = 0; n < lines.size(); ++n) {
        QByteArray line = lines.at(n);
        const int lineNumber = n + 1;
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith('#'))
            continue;

        const int tab = line.indexOf('\t');
        if (tab <= 0) {
            errors.append(location(fileName, lineNumber)
                          + QStringLiteral("malformed line: expected a slot name, a tab and the text"));
            continue;
        }
        const QByteArray name = line.left(tab);
        const auto slot = slotOf.constFind(name);
        if (slot == slotOf.constEnd()) {
            errors.append(location(fileName, lineNumber) + QStringLiteral("unknown slot name \"%1\"").arg(shown(name)));
            continue;
        }
        if (lineOf[*slot] != 0) {
            errors.append(location(fileName, lineNumber)
                          + QStringLiteral("duplicate slot name \"%1\" (first given on line %2)")
                                .arg(shown(name))
                                .arg(lineOf[*slot]));
            continue;
        }
        lineOf[*slot] = lineNumber;

        QByteArray text;
        QString problem;
        if (!unescape(line.mid(tab + 1), text, problem)) {
            errors.append(location(fileName, lineNumber) + QStringLiteral("malformed line: ") + problem);
            continue;
        }
        if (text.contains('\0')) {
            errors.append(location(fileName, lineNumber) + QStringLiteral("malformed line: the text holds a NUL byte"));
            continue;
        }
        QTextCodec::ConverterState state(QTextCodec::ConvertInvalidToNull);
        const QString decoded = utf8->toUnicode(text.constData(), text.size(), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0) {
            errors.append(location(fileName, lineNumber) + QStringLiteral("malformed line: the text is not valid UTF-8"));
            continue;
        }
        texts[*slot] = decoded;
    }

    // A missing slot has no line of its own: it is reported at the end of the file.
    const int lastLine = qMax(1, lines.size());
    for (int i = 0; i < count; ++i) {
        if (lineOf[i] == 0)
            errors.append(location(fileName, lastLine)
                          + QStringLiteral("missing slot name \"%1\"").arg(QString::fromUtf8(LCQT_names[i])));
    }
    return errors.size() == errorsBefore;
}

QByteArray compile(const QStringList& texts)
{
    QByteArray block;
    QVector<quint32> offsets;
    for (const QString& text : texts) {
        offsets.append(static_cast<quint32>(block.size()));
        block.append(text.toUtf8());
        block.append('\0');
    }

    QByteArray out;
    appendInt(out, 0);                  // reserved
    out.append("LCLR", 4);              // the magic, little-endian
    appendInt(out, 1);                  // version
    appendInt(out, 8);                  // unit
    appendInt(out, LCQT_info.id);
    appendInt(out, static_cast<quint32>(texts.size()));
    appendInt(out, static_cast<quint32>(block.size()));
    for (quint32 offset : offsets)
        appendInt(out, offset);
    out.append(block);
    return out;
}

QByteArray escape(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    QByteArray out;
    out.reserve(bytes.size());
    for (char c : bytes) {
        switch (c) {
        case '\\': out.append("\\\\"); break;
        case '\n': out.append("\\n"); break;
        case '\r': out.append("\\r"); break;
        case '\t': out.append("\\t"); break;
        default: out.append(c); break;
        }
    }
    return out;
}

QByteArray toSource(const QStringList& texts)
{
    QByteArray out;
    for (int i = 0; i < texts.size() && i < LCQT_info.count; ++i) {
        out.append(LCQT_names[i]);
        out.append('\t');
        out.append(escape(texts.at(i)));
        out.append('\n');
    }
    return out;
}

bool writeFile(const QString& fileName, const QByteArray& data, QString& error)
{
    QSaveFile output(fileName);
    // Unbuffered: each write reaches the system at once and fails with its reason. Qt's buffer
    // would keep a small file until commit(), which renames even when that last flush failed.
    if (output.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && output.write(data) == data.size()
        && output.flush() && output.commit())
        return true;
    error = output.errorString();
    return false;
}

} // namespace LocFile
