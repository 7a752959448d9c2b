// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QString>

#include <cstdio>

/// Thrown by a failing EFile operation when the file object has throwOnError set. It carries no
/// message: the caller knows what it was doing and chooses the words.
class COMMON_GUI_EXPORT EFileException
{
};

/// A file opened through the C library's stdio, named by a QString (given to the system as UTF-8).
/// Each object chooses how it fails: operations return false, or, with throwOnError set, throw
/// EFileException.
///
/// \code
/// QByteArray readWhole(const QString& fileName)    // throws EFileException
/// {
///     EFile file(fileName);
///     file.throwOnError = true;                     // a short read throws instead of returning true
///     file.open(EFile::ReadOnly);
///     QByteArray bytes(int(file.size()), Qt::Uninitialized);
///     if (!bytes.isEmpty())                         // reading an empty file fails
///         file.read(bytes.data(), unsigned(bytes.size()));
///     file.close();
///     return bytes;
/// }
/// \endcode
class COMMON_GUI_EXPORT EFile
{
public:
    /// How open() opens the file: "rb", "wb" (creates or truncates), "rb+" (the file must exist).
    /// Any value other than ReadOnly and WriteOnly opens for reading and writing.
    enum OpenMode : int { ReadOnly = 0, WriteOnly = 1, ReadWrite = 2 };

    EFile();
    explicit EFile(const QString& fileName);
    /// Closes the file. With throwOnError set, a failing close (buffered data that cannot be
    /// written, a full disk) throws out of the destructor, so the caller still learns of it.
    virtual ~EFile() noexcept(false);
    EFile(const EFile&) = delete;
    EFile& operator=(const EFile&) = delete;

    /// Closes any open file, then opens the named one and takes its size. Fails for an empty name,
    /// for a file that cannot be opened and for a directory.
    bool open(EFile::OpenMode mode);
    /// Closes the file; true when there was none. The object is closed afterwards even on failure.
    bool close();
    /// fseek(): \a whence is SEEK_SET, SEEK_CUR or SEEK_END. Fails when no file is open.
    bool seek(long offset, int whence);
    /// ftell(): the position, or a negative value on failure (-1 when no file is open).
    long pos();
    /// Reads exactly \a size bytes. Fails when no file is open or the size taken at open is below 1,
    /// even for \a size 0.
    /// \note Without throwOnError a read that comes up short (past the end, or a failing device)
    /// still returns true; past the end the position is left at the end of the file. Callers that
    /// must know turn on throwOnError.
    bool read(void* buffer, unsigned int size);
    /// Writes exactly \a size bytes; false (or EFileException) when they could not all be written.
    bool write(const void* buffer, unsigned int size);
    /// True when the position equals the size taken at open or by the last size() call, not a
    /// fresh one: after writing past that size, call size() first. True when no file is open.
    bool atEnd() const;
    /// The current size of the open file, written data included, which is also remembered for
    /// atEnd() and read(). -1 when the file has been deleted while open (the remembered size stays).
    /// Without an open file, the remembered size: -1 if no file was ever opened. Never throws.
    long size();

    /// When true, every failing operation throws EFileException instead of returning its failure
    /// value (size() and atEnd() never throw). False after construction.
    bool throwOnError = false;

protected:
    /// Throws EFileException when throwOnError is set; otherwise returns false.
    bool fail();

    enum LastOperation { NoOperation = 0, ReadOperation = 1, WriteOperation = 2 };
    /// Clears errno and seeks in place unless the last transfer was \a operation too.
    void beginTransfer(int operation);

    FILE* m_stream = nullptr;
    long m_size = -1;                   ///< taken by open() and refreshed by size()
    int m_lastOperation = NoOperation;  ///< stdio needs a seek between a read and a write
    QString m_fileName;
};

/// An EFile read through one buffer of a fixed size (a "piece"), with random positioning and a
/// step back by one byte. Pieces start at multiples of the piece size. The file itself is opened
/// and closed with the EFile operations; the stream operations only manage the buffer.
///
/// \code
/// EFileCharStream stream(fileName);
/// if (stream.open(EFile::ReadOnly) && stream.openStream(0, 64 * 1024)) {
///     char c;
///     while (stream.getChar(c))
///         count += c == '\n';
/// }
/// \endcode
class COMMON_GUI_EXPORT EFileCharStream : public EFile
{
public:
    using EFile::EFile;
    /// Frees the buffer; the EFile destructor closes the file.
    ~EFileCharStream() override;

    /// Allocates a buffer of \a pieceSize bytes (freeing an earlier one), takes the file's size and
    /// positions the stream at \a start. Nothing is read yet. False when the buffer cannot be had
    /// (a piece size below 1 or too large) or the position is refused.
    bool openStream(long start, long pieceSize);
    /// Frees the buffer; the file stays open.
    void closeStream();
    /// Loads the piece that holds the current position. False at or past the end of the file (the
    /// end-of-stream flag is set then) and when the file cannot be read as far as its size said it
    /// could: it shrank or failed after openStream().
    bool load();
    /// Moves the current position past the bytes of the buffer and loads the piece there.
    bool readNextPiece();
    /// Steps back one byte, loading the previous piece when needed. False at position 0.
    bool ungetChar();
    /// Moves to \a position. Inside the loaded piece no file access happens; otherwise the buffer is
    /// emptied and the next read loads the piece. False for a negative position or a failing seek.
    bool seekStream(long position);

    /// Takes the next byte into \a c and advances; false at the end of the file or when the next
    /// piece cannot be read (atStreamEnd() tells which).
    bool getChar(char& c)
    {
        if (Q_UNLIKELY(m_current == m_end) && !readNextPiece())
            return false;
        c = *m_current++;
        return true;
    }
    /// The next byte as 0..255, or -1 at the end of the file or when the next piece cannot be read.
    int getChar()
    {
        if (Q_UNLIKELY(m_current == m_end) && !readNextPiece())
            return -1;
        return static_cast<unsigned char>(*m_current++);
    }
    /// The position of the next byte in the file.
    long streamPos() const { return m_pieceStart + (m_current - m_begin); }
    /// True after a read or load ran into the end of the file; cleared by seekStream().
    bool atStreamEnd() const { return m_endOfStream; }

private:
    long m_pieceStart = 0;       ///< file offset of the buffer's first byte
    long m_pieceSize = 0;        ///< buffer capacity
    char* m_begin = nullptr;     ///< the buffer; null when there is none
    char* m_current = nullptr;   ///< the next byte
    char* m_end = nullptr;       ///< past the valid bytes
    bool m_endOfStream = false;
};
