// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "eplaintextedit.h"

#include <QByteArray>
#include <QString>

/// A plain-text editor for configuration files and scripts that name their own encoding in their
/// first non-blank line, as a comment (`# -*- encoding: KOI8-R -*-`) or an XML declaration
/// (`<?xml version="1.0" encoding="UTF-8"?>`). It keeps the file's bytes beside the text, so another
/// encoding can be tried for viewing without touching them, and it saves in the declared encoding.
///
/// \code
/// auto* editor = new ECodeEditor(true);
/// if (editor->loadFromFile(path)) {          // "File loading error" was shown otherwise
///     editor->setEncoding(QStringLiteral("UTF-8"));   // view the same bytes as UTF-8
///     editor->setEncoding(QString());                  // back to what the file declares
/// }
/// editor->saveToFile(path);                   // encoded as the first line declares now
/// \endcode
///
/// Without a declaration the text is taken as "Windows-1251". A name Qt has no codec for is never an
/// error: the bytes are read or written as UTF-8 and getEncoding() holds a fixed English note instead
/// of a name.
class COMMON_GUI_EXPORT ECodeEditor : public EPlainTextEdit
{
    Q_OBJECT
public:
    /// \a flag is handed to EPlainTextEdit: true gives the editor its own find and go-to shortcuts.
    explicit ECodeEditor(bool flag);

    /// The encoding declared in the first non-blank line of \a data, else "Windows-1251". Blank
    /// characters are space, tab, CR and LF. *headerLength receives the length in bytes of that line
    /// (0 for empty or all-blank data), also when the default is returned.
    static QString detectEncoding(const char* data, int length, int* headerLength);

    /// Decodes the kept bytes again as \a name and keeps the scroll position; an empty name goes
    /// back to the detected encoding. The bytes themselves stay as they are.
    void setEncoding(const QString& name);

    /// Shows a text made in memory; its bytes become the text in the encoding it declares.
    void setText(const QString& text);
    /// Shows file contents: keeps a copy of the \a length bytes and decodes them as they declare
    /// (or as the encoding chosen with setEncoding()). A null \a data counts as no bytes.
    void setText(const char* data, int length);

    /// Encodes the document as its first line declares now and returns the kept bytes. The
    /// declaration wins over an encoding chosen for viewing: getEncoding() follows it again.
    QByteArray& getTextRef();
    /// Copies getTextRef() into \a out.
    void getText(QByteArray& out);

    /// Reads the whole file; on failure shows "File loading error" and leaves the editor empty.
    bool loadFromFile(const QString& path);
    /// Writes getTextRef() to \a path and marks the document unmodified. The old file is replaced
    /// only once the new bytes are all on disk (its permissions kept, a symbolic link followed); on
    /// failure "File saving error" is shown, the file and the modified state stay as they were.
    bool saveToFile(const QString& path);

    /// The encoding the text is shown in: the detected one, the one chosen with setEncoding(), or
    /// after a codec failure one of the notes "Unknown encoding, using UTF-8..." .
    QString getEncoding() const { return currentEncoding; }
    /// The encoding the text declares, as the last detection found it.
    QString getDetectedEncoding() const { return detectedEncoding; }
    /// The length in bytes of the first non-blank line, as the last detection found it.
    int getHeaderLength() const { return headerLength; }

    /// Set to false by an application to flag a text that still has to be saved; the editor window
    /// shows its unsaved mark then. Nothing in this class changes it.
    bool upToDate = true;

signals:
    /// The declaration in the first line was edited: the text will be saved in another encoding than
    /// it was loaded with. Emitted once per change of the declared name.
    void saveWithEncodingChanged();

private slots:
    void onContentsChange(int position, int charsRemoved, int charsAdded);

private:
    void takeBytes(QByteArray bytes);
    QString detectInDocument();
    void showDecoded(const QString& text);
    /// Decodes the raw text as the current encoding, or as UTF-8 with \a unknownNote in its place.
    void showRawText(const char* unknownNote, bool upToNul);

    QString detectedEncoding;
    QString currentEncoding;
    QByteArray rawText;
    int headerLength = 0;
    bool userChoice = false;
    bool replacing = false; // the editor itself is replacing the whole text
};
