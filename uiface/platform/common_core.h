// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "platform/platform_export.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

class QString;

/// \file
/// The core services of the product family: error objects, localization modules, whole-file access
/// by UTF-8 path, and two small containers.

/// An error object holding one or more English messages. Low-level code throws it with the detail
/// ("Cannot open file ...: No such file or directory"); callers that catch it may add() the context
/// ("Cannot load the policy") and throw it on.
class CG_PLATFORM_EXPORT TTT
{
public:
    TTT();
    explicit TTT(std::string message);

    /// Appends a message, normally one that is more general than those already held.
    TTT& add(std::string message);
    /// The messages in the order they were added.
    const std::vector<std::string>& messages() const;
    bool empty() const;

    /// Replaces \a out with all messages, one per line and no trailing line break, the most general
    /// first: that is the reverse of the order of adding, so the last context added heads the text and
    /// the original cause comes last.
    void makeMulti(std::string& out) const;

private:
    std::vector<std::string> m_messages;
};

namespace Loc {

/// A set of text slots and the identifier that a file for it must carry (the library's
/// QTLocLoader::Localization is this type).
struct Table
{
    int count = 0;                  ///< number of slots
    int unit = 8;                   ///< always 8; not consulted by the loader
    unsigned int id = 0;            ///< identifier of this exact set of texts
    QString** slotTable = nullptr;  ///< \c count pointers to the slot variables, in file order
                                    ///< (not "slots": that is a Qt keyword)
};

/// The base of localization modules. A module has a name; its file for a language is
/// `<resource dir>/translations/<name>_<language>.lcl`.
class CG_PLATFORM_EXPORT Module
{
public:
    std::string name;
    /// Free for the module's own use; the base never changes it.
    int state = 0;
    /// The text slots the module fills; null for modules without slots.
    Table* table = nullptr;

    virtual ~Module();

    /// Opens the module's file for \a language (translations/<name>_<language>.lcl in the resource
    /// directory, else in the library's data directory), reads it with loadFile() and closes it. Returns 1 on
    /// success. On a missing or unreadable file, a non-zero code from loadFile() or an int thrown by
    /// it, fills *error (when \a error is not null) through makeError() and returns 0. A null or
    /// empty language, or one with a '/', is refused the same way without touching the disk.
    virtual int load(const char* language, std::string* error);
    /// Reads an opened file; 0 on success, else an error code. The base's version throws the int -1:
    /// modules that use the base's load() must override it.
    virtual int loadFile(FILE* file);

protected:
    Module(std::string name = {}, Table* table = nullptr);

    /// Composes an English error text naming \a fileName and \a code into *error (nothing when
    /// \a error is null). A code from -2 to -4095 is a system error whose errno is -code and the text
    /// adds the system's reason; -1 (or any other negative code) means the file could not be loaded; a
    /// positive code is the loader's (the library's QTLocLoader::load) and the text says what it means.
    static void makeError(std::string* error, const std::string& fileName, int code);
};

} // namespace Loc

/// Owns an array made with `new T[]` together with its length. Move-only.
template <class T>
class ArrayHolder
{
public:
    ArrayHolder() = default;
    ArrayHolder(T* data, size_t size) : m_data(data), m_size(data ? size : 0) {}
    ~ArrayHolder() { delete[] m_data; }

    ArrayHolder(const ArrayHolder&) = delete;
    ArrayHolder& operator=(const ArrayHolder&) = delete;
    ArrayHolder(ArrayHolder&& other) noexcept : m_data(other.m_data), m_size(other.m_size)
    {
        other.m_data = nullptr;
        other.m_size = 0;
    }
    ArrayHolder& operator=(ArrayHolder&& other) noexcept
    {
        if (this != &other) {
            delete[] m_data;
            m_data = std::exchange(other.m_data, nullptr);
            m_size = std::exchange(other.m_size, size_t(0));
        }
        return *this;
    }

    T* get() const { return m_data; }
    /// The number of elements as given to the constructor or reset().
    size_t size() const { return m_size; }
    T& operator[](size_t i) const { return m_data[i]; }

    /// Frees the held array and takes \a data (may be null) instead.
    void reset(T* data = nullptr, size_t size = 0)
    {
        if (data != m_data)
            delete[] m_data;
        m_data = data;
        m_size = data ? size : 0;
    }
    /// Gives up ownership; the caller frees the returned array with delete[].
    T* release()
    {
        m_size = 0;
        return std::exchange(m_data, nullptr);
    }

private:
    T* m_data = nullptr;
    size_t m_size = 0;
};

/// A growable container of bytes. data() is never null, so it can be handed to C functions as is.
class CG_PLATFORM_EXPORT Bag
{
public:
    Bag() = default;
    Bag(const void* data, size_t size);
    explicit Bag(const std::string& bytes);

    const char* data() const;
    char* data();
    size_t size() const;
    bool empty() const;

    void append(const void* data, size_t size);
    void append(const std::string& bytes);
    void clear();

    bool operator==(const Bag& other) const;
    bool operator!=(const Bag& other) const { return !(*this == other); }

private:
    std::vector<char> m_bytes;
};

/// Plain byte equality of two NUL-terminated strings; a null pointer equals only a null pointer.
CG_PLATFORM_EXPORT bool streq(const char* a, const char* b);

/// Whole-file access by a UTF-8 path. Failures throw TTT (whose text names the file and the system's
/// reason) or std::bad_alloc.
class CG_PLATFORM_EXPORT UTF8File
{
public:
    UTF8File() = delete;

    /// Reads the whole regular file \a path into a new array owned by \a buffer (its size is the byte
    /// count + 1; a NUL follows the data) and returns the byte count. Throws TTT for a missing or
    /// unreadable file, a directory or another non-regular file, or a file larger than \a maxSize
    /// bytes; \a buffer is left as it was then. \a flag is reserved and has no effect.
    static unsigned int load(const char* path, ArrayHolder<char>& buffer, unsigned int maxSize, bool flag);

    /// Replaces the file \a path with \a size bytes, atomically: the bytes go to a temporary file in
    /// the same directory, are flushed to disk, and the temporary file is renamed over the target. An
    /// existing target keeps its permission bits (and owner, where allowed); a symbolic link is
    /// followed, so the file it names is replaced and the link stays. On any failure the temporary
    /// file is removed, the old file is left byte for byte, and TTT is thrown.
    static void save(const char* path, const void* data, unsigned int size);
};
