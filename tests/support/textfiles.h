// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTextCodec>
#include <QtTest>

/// Small file and encoding helpers for the tests of the text editors.
namespace TextFiles {

/// \a text in the Qt codec \a codec.
inline QByteArray encoded(const char* codec, const QString& text)
{
    return QTextCodec::codecForName(codec)->fromUnicode(text);
}

/// The whole file, or "<unreadable>".
inline QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

/// Creates or replaces the file with \a bytes; a failure fails the calling test.
inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

} // namespace TextFiles
