// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "eplaintextedit.h"

#include <QByteArray>
#include <QString>

class Bag;

/// A plain-text editor for policy texts and their relatives (files, custom policies, descriptors,
/// certificates). It keeps no bytes and no encoding: every load, set and save finds the encoding
/// afresh in the text's own declaration, else takes the default the caller passes for that kind of
/// text.
///
/// \code
/// auto* editor = new ELSPTextEdit(true);
/// editor->setText(policyBytes, ELSPTextEdit::defaultEncodingForLSP);   // Windows-1251 unless declared
/// if (editor->saveToFile(path, ELSPTextEdit::defaultEncodingForLSP))  // an error box otherwise
///     ...
/// \endcode
///
/// \note The declaration is looked for only at the very first byte: "#" then blanks then the word
/// "encoding" (separated from the name by any of ":", "=" and blanks), or "<?xml" with the word
/// "encoding" before the first ">". Leading blank lines hide a declaration.
class COMMON_GUI_EXPORT ELSPTextEdit : public EPlainTextEdit
{
    Q_OBJECT
public:
    /// Policy texts: "Windows-1251".
    static const QString defaultEncodingForLSP;
    /// Other files: "utf-8".
    static const QString defaultEncodingForFile;
    /// Custom policies: "utf-8".
    static const QString defaultEncodingForCustomLSP;
    /// Descriptors: "utf-8".
    static const QString defaultEncodingForDescriptor;
    /// Certificates: "utf-8".
    static const QString defaultEncodingForCertificate;

    /// Files read or written larger than this are refused.
    static constexpr unsigned int maxFileSize = 100000000;

    /// \a shortcuts is handed to EPlainTextEdit: true gives the editor its own find and go-to keys.
    explicit ELSPTextEdit(bool shortcuts);

    /// The encoding that \a data declares at its start, else \a defaultEncoding (always for fewer
    /// than 10 bytes). The name is the run of letters, digits, "_" and "-" after the word.
    static QString detectEncoding(const char* data, int length, const QString& defaultEncoding);

    /// Shows \a data decoded as it declares (else as \a defaultEncoding; UTF-8 when Qt has no such
    /// codec). The document is left unmodified.
    void setText(const char* data, int length, const QString& defaultEncoding);
    /// As above; an empty array shows an empty text.
    void setText(const QByteArray& data, const QString& defaultEncoding);
    /// As above; an empty bag shows an empty text.
    void setText(const Bag& data, const QString& defaultEncoding);

    /// Reads the file (at most maxFileSize bytes) with the busy cursor shown. An empty file keeps
    /// the current text. On failure an error box says why and false is returned.
    bool loadFromFile(const QString& path, const QString& defaultEncoding);

    /// The document encoded as it declares, else as \a defaultEncoding (UTF-8 for an unknown name).
    void getText(QByteArray& out, const QString& defaultEncoding);

    /// Writes getText() to \a path and marks the document unmodified. The old file is replaced only
    /// once all new bytes are on disk. On failure an error box says why, false is returned and the
    /// modified state stays.
    bool saveToFile(const QString& path, const QString& defaultEncoding);
};
