// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The readable form of a localization: one line per slot, "LCQT__Name<TAB>text", in which a line
/// break is written \n, a backslash \\ (and \r, \t for those characters). Lines starting with '#'
/// and blank lines are comments.
namespace LocFile {

/// Parses \a source (UTF-8 bytes) into the texts of all slots, in slot order. On failure returns
/// false and appends one "fileName:line: error: ..." message per problem to \a errors.
bool parse(const QByteArray& source, const QString& fileName, QStringList& texts, QStringList& errors);

/// The binary localization file for \a texts (one per slot, slot order): little-endian "LCLR".
QByteArray compile(const QStringList& texts);

/// The readable form of \a texts, every slot on its own line in slot order.
QByteArray toSource(const QStringList& texts);

/// Escapes one text for a source line.
QByteArray escape(const QString& text);

/// Replaces \a fileName with \a data through a temporary file. On failure (a full disk, say) the
/// old file stays as it was, and \a error holds the system's reason.
bool writeFile(const QString& fileName, const QByteArray& data, QString& error);

} // namespace LocFile
