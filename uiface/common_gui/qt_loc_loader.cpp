// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "qt_loc_loader.h"

#include <QString>
#include <QVector>
#include <QtEndian>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <sys/stat.h>

namespace {

enum Result {
    Ok = 0,
    NotALocalization = 2,
    BadVersion = 3,
    BadUnit = 4,
    ForeignIdentifier = 5,
    ShortFile = 6,
    OutOfMemory = 7,
};

// The 32-bit value of the magic "LCLR" read in the writer's own byte order.
constexpr quint32 magicValue = 0x524C434Cu;

int swapInt(int& value, bool swap)
{
    if (swap)
        value = static_cast<int>(qbswap(static_cast<quint32>(value)));
    return value;
}

bool readInt(FILE* file, int& value)
{
    return std::fread(&value, sizeof value, 1, file) == 1;
}

// The bytes after the read position, or as many as an int64_t holds when the file has no size of
// its own (a pipe): then reading finds the end.
int64_t bytesLeft(FILE* file)
{
    struct stat st;
    const long position = std::ftell(file);
    if (position < 0 || ::fstat(::fileno(file), &st) != 0 || !S_ISREG(st.st_mode))
        return INT64_MAX;
    return int64_t(st.st_size) - position;
}

} // namespace

int QTLocLoader::load(FILE* file, Localization& table)
{
    if (!file)
        return ShortFile;

    int word = 0;
    if (!readInt(file, word))
        return ShortFile;
    if (word != 0)
        return NotALocalization;

    if (!readInt(file, word))
        return ShortFile;
    bool swap = false;
    if (static_cast<quint32>(word) == magicValue)
        swap = false;
    else if (static_cast<quint32>(word) == qbswap(magicValue))
        swap = true;
    else
        return NotALocalization;

    if (!readInt(file, word))
        return ShortFile;
    if (swapInt(word, swap) != 1)
        return BadVersion;

    if (!readInt(file, word))
        return ShortFile;
    if (swapInt(word, swap) != 8)
        return BadUnit;

    if (!readInt(file, word))
        return ShortFile;
    if (static_cast<unsigned int>(swapInt(word, swap)) != table.id)
        return ForeignIdentifier;

    int count = 0;
    if (!readInt(file, count))
        return ShortFile;
    if (swapInt(count, swap) != table.count)
        return NotALocalization;
    // An empty table has nothing to read.
    if (count < 1)
        return Ok;

    int dataSize = 0;
    if (!readInt(file, dataSize))
        return ShortFile;
    if (swapInt(dataSize, swap) < 1)
        return NotALocalization;

    // A damaged header may claim two gigabytes: a file that cannot hold what it claims ends early,
    // and is refused before anything that large is allocated.
    if (int64_t(count) * int64_t(sizeof(int)) + dataSize > bytesLeft(file))
        return ShortFile;

    std::unique_ptr<int[]> offsets(new (std::nothrow) int[static_cast<size_t>(count) + 1]);
    if (!offsets)
        return OutOfMemory;
    if (std::fread(offsets.get(), sizeof(int), static_cast<size_t>(count), file) != static_cast<size_t>(count))
        return ShortFile;
    for (int i = 0; i < count; ++i)
        swapInt(offsets[i], swap);
    offsets[count] = dataSize;

    // One spare 0 byte after the block, so that an entry decoded up to its terminator cannot run past
    // the end even when the last entry lacks one.
    std::unique_ptr<char[]> block(new (std::nothrow) char[static_cast<size_t>(dataSize) + 1]);
    if (!block)
        return OutOfMemory;
    if (std::fread(block.get(), 1, static_cast<size_t>(dataSize), file) != static_cast<size_t>(dataSize))
        return ShortFile;
    block[dataSize] = 0;

    // Only the differences of the offsets matter. Entries that would run backwards or past the block
    // make the file unusable; it is refused before any slot changes.
    QVector<QString> texts;
    // The decoded texts take about twice the block; Qt reports running out of that by throwing.
    try {
        texts.reserve(count);
        int64_t position = 0;
        for (int i = 0; i < count; ++i) {
            const int64_t length = int64_t(offsets[i + 1]) - int64_t(offsets[i]);
            if (length < 0 || position + length > dataSize)
                return NotALocalization;
            const char* entry = block.get() + position;
            // A zero-length entry is read up to the next terminator, as the writer of old files expected.
            texts.append(QString::fromUtf8(entry, length == 0 ? -1 : static_cast<int>(length - 1)));
            position += length;
        }
    } catch (const std::bad_alloc&) {
        return OutOfMemory;
    }

    for (int i = 0; i < count; ++i)
        *table.slotTable[i] = texts.at(i);
    return Ok;
}
