// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "common_core.h"

#include "paths.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// ---------------------------------------------------------------- TTT

TTT::TTT() = default;

TTT::TTT(std::string message)
{
    m_messages.push_back(std::move(message));
}

TTT& TTT::add(std::string message)
{
    m_messages.push_back(std::move(message));
    return *this;
}

const std::vector<std::string>& TTT::messages() const
{
    return m_messages;
}

bool TTT::empty() const
{
    return m_messages.empty();
}

void TTT::makeMulti(std::string& out) const
{
    out.clear();
    for (auto it = m_messages.rbegin(); it != m_messages.rend(); ++it) {
        if (it != m_messages.rbegin())
            out += '\n';
        out += *it;
    }
}

// ---------------------------------------------------------------- Loc::Module

namespace {

struct FileCloser
{
    void operator()(FILE* file) const { std::fclose(file); }
};

// strerror() is not thread-safe; the GNU strerror_r returns the text it chose.
std::string systemReason(int errorNumber)
{
    char buffer[256] = {};
    return std::string(::strerror_r(errorNumber, buffer, sizeof buffer));
}

const char* loaderReason(int code)
{
    switch (code) {
    case 2: return "not a localization file";
    case 3: return "unsupported file version";
    case 4: return "unsupported text unit";
    case 5: return "the file belongs to another set of texts";
    case 6: return "the file ends early";
    case 7: return "out of memory";
    default: return "the file could not be read";
    }
}

} // namespace

namespace Loc {

Module::Module(std::string name, Table* table)
    : name(std::move(name)), table(table)
{
}

Module::~Module() = default;

int Module::loadFile(FILE*)
{
    throw -1;
}

int Module::load(const char* language, std::string* error)
{
    const std::string leaf = "/translations/" + name + '_' + (language ? language : "") + ".lcl";
    std::string fileName = std::string(agentEtcDir()) + leaf;
    // The language comes from lang.ini; it must not lead out of the translations directory.
    if (!language || !*language || std::strchr(language, '/')) {
        makeError(error, fileName, -EINVAL);
        return 0;
    }

    errno = 0;
    std::unique_ptr<FILE, FileCloser> file(std::fopen(fileName.c_str(), "rb"));
    // An application with a product name of its own has its own resource directory; the library's
    // translations stay in the library's data directory.
    if (!file && errno == ENOENT && std::strcmp(libraryDataDir(), agentEtcDir()) != 0) {
        const std::string libraryFile = std::string(libraryDataDir()) + leaf;
        file.reset(std::fopen(libraryFile.c_str(), "rb"));
        if (file)
            fileName = libraryFile;
        else
            errno = ENOENT;   // report the application's own file name and reason
    }
    if (!file) {
        // -1 means "not loaded" to makeError, so EPERM (which fopen does not give for reading)
        // cannot be told apart; every real reason has a larger number.
        makeError(error, fileName, errno > 1 ? -errno : -1);
        return 0;
    }
    // fopen happily opens a directory for reading; the loader would then see an empty file.
    struct stat st;
    if (::fstat(::fileno(file.get()), &st) == 0 && S_ISDIR(st.st_mode)) {
        makeError(error, fileName, -EISDIR);
        return 0;
    }

    int code = 0;
    try {
        code = loadFile(file.get());
    } catch (int thrown) {
        code = thrown;
    }
    if (code != 0) {
        makeError(error, fileName, code);
        return 0;
    }
    return 1;
}

void Module::makeError(std::string* error, const std::string& fileName, int code)
{
    if (!error)
        return;
    std::string reason;
    if (code < -1 && code > -4096)   // the range of errno values, and safe to negate
        reason = systemReason(-code);
    else if (code < 0)
        reason = "the file could not be loaded";
    else
        reason = loaderReason(code);
    *error = "Cannot load the localization file \"" + fileName + "\": " + reason + " (code "
        + std::to_string(code) + ")";
}

} // namespace Loc

// ---------------------------------------------------------------- Bag, streq

Bag::Bag(const void* data, size_t size)
{
    append(data, size);
}

Bag::Bag(const std::string& bytes)
{
    append(bytes);
}

const char* Bag::data() const
{
    static const char empty = 0;
    return m_bytes.empty() ? &empty : m_bytes.data();
}

char* Bag::data()
{
    static char empty = 0;
    if (m_bytes.empty()) {
        empty = 0;
        return &empty;
    }
    return m_bytes.data();
}

size_t Bag::size() const
{
    return m_bytes.size();
}

bool Bag::empty() const
{
    return m_bytes.empty();
}

void Bag::append(const void* data, size_t size)
{
    if (!data || size == 0)
        return;
    const char* bytes = static_cast<const char*>(data);
    m_bytes.insert(m_bytes.end(), bytes, bytes + size);
}

void Bag::append(const std::string& bytes)
{
    append(bytes.data(), bytes.size());
}

void Bag::clear()
{
    m_bytes.clear();
}

bool Bag::operator==(const Bag& other) const
{
    return m_bytes == other.m_bytes;
}

bool streq(const char* a, const char* b)
{
    if (!a || !b)
        return a == b;
    return std::strcmp(a, b) == 0;
}

// ---------------------------------------------------------------- UTF8File

namespace {

std::string quoted(const char* path)
{
    return std::string("\"") + (path ? path : "") + '"';
}

[[noreturn]] void fail(const char* what, const char* path, int errorNumber)
{
    throw TTT(std::string(what) + ' ' + quoted(path) + ": " + systemReason(errorNumber));
}

// Follows symbolic links one by one (realpath refuses a link whose target does not exist yet);
// a loop or a link that cannot be read ends the walk at the name reached so far.
std::string linkTarget(const char* path)
{
    std::string target = path;
    struct stat st;
    for (int hops = 0; hops < 40 && ::lstat(target.c_str(), &st) == 0 && S_ISLNK(st.st_mode); ++hops) {
        std::string link(PATH_MAX, '\0');
        const ssize_t n = ::readlink(target.c_str(), &link[0], link.size());
        if (n <= 0 || size_t(n) >= link.size())
            break;
        link.resize(size_t(n));
        const std::string::size_type slash = target.rfind('/');
        target = link[0] == '/' || slash == std::string::npos ? link : target.substr(0, slash + 1) + link;
    }
    return target;
}

class Descriptor
{
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return m_fd; }
    /// Closes now and reports the result, which for a written file can carry a late write error.
    int close() { return ::close(std::exchange(m_fd, -1)); }

private:
    int m_fd;
};

bool writeAll(int fd, const char* data, size_t size)
{
    while (size > 0) {
        ssize_t n = ::write(fd, data, size);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (n == 0) {
            errno = ENOSPC;
            return false;
        }
        data += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

// Removes the temporary file unless the save got as far as renaming it.
class TempFile
{
public:
    explicit TempFile(std::string name) : m_name(std::move(name)) {}
    ~TempFile()
    {
        if (!m_name.empty())
            ::unlink(m_name.c_str());
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const std::string& name() const { return m_name; }
    void keep() { m_name.clear(); }

private:
    std::string m_name;
};

// umask() can only be read by changing it, which races with other threads creating files, so ask
// the kernel first.
mode_t currentUmask()
{
    if (FILE* status = std::fopen("/proc/self/status", "re")) {
        std::unique_ptr<FILE, FileCloser> closer(status);
        char line[256];
        unsigned int mask = 0;
        while (std::fgets(line, sizeof line, status))
            if (std::sscanf(line, "Umask: %o", &mask) == 1)
                return static_cast<mode_t>(mask & 0777);
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return mask;
}

} // namespace

unsigned int UTF8File::load(const char* path, ArrayHolder<char>& buffer, unsigned int maxSize, bool flag)
{
    (void)flag;
    if (!path || !*path)
        fail("Cannot open file", path, ENOENT);

    Descriptor fd(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (fd.get() < 0)
        fail("Cannot open file", path, errno);
    struct stat st;
    if (::fstat(fd.get(), &st) != 0)
        fail("Cannot read file", path, errno);
    if (S_ISDIR(st.st_mode))
        fail("Cannot read file", path, EISDIR);
    if (!S_ISREG(st.st_mode))
        throw TTT("Cannot read file " + quoted(path) + ": not a regular file");
    if (st.st_size < 0 || static_cast<unsigned long long>(st.st_size) > maxSize)
        throw TTT("Cannot read file " + quoted(path) + ": " + systemReason(EFBIG) + " ("
                  + std::to_string(static_cast<long long>(st.st_size)) + " bytes, at most "
                  + std::to_string(maxSize) + " allowed)");

    // The size is only a hint: the file may grow or shrink while it is read.
    size_t capacity = static_cast<size_t>(st.st_size) + 1;
    std::unique_ptr<char[]> data(new char[capacity]);
    size_t used = 0;
    for (;;) {
        if (used + 1 == capacity) {
            if (used >= maxSize) {
                // One more byte decides whether the file has outgrown the limit.
                char probe;
                ssize_t n;
                do
                    n = ::read(fd.get(), &probe, 1);
                while (n < 0 && errno == EINTR);
                if (n < 0)
                    fail("Cannot read file", path, errno);
                if (n > 0)
                    throw TTT("Cannot read file " + quoted(path) + ": " + systemReason(EFBIG)
                              + " (more than " + std::to_string(maxSize) + " bytes)");
                break;
            }
            size_t grown = std::min<size_t>(capacity * 2, size_t(maxSize) + 1);
            std::unique_ptr<char[]> bigger(new char[grown]);
            std::memcpy(bigger.get(), data.get(), used);
            data = std::move(bigger);
            capacity = grown;
        }
        ssize_t n = ::read(fd.get(), data.get() + used, capacity - 1 - used);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            fail("Cannot read file", path, errno);
        }
        if (n == 0)
            break;
        used += static_cast<size_t>(n);
    }
    data[used] = 0;
    buffer.reset(data.release(), used + 1);
    return static_cast<unsigned int>(used);
}

void UTF8File::save(const char* path, const void* data, unsigned int size)
{
    if (!path || !*path)
        fail("Cannot save file", path, ENOENT);
    if (!data && size > 0)
        fail("Cannot save file", path, EINVAL);

    // Replace the file a symbolic link names, not the link, and create it when the link dangles.
    const std::string target = linkTarget(path);
    struct stat st;

    bool exists = false;
    mode_t mode = 0;
    if (::stat(target.c_str(), &st) == 0) {
        if (S_ISDIR(st.st_mode))
            fail("Cannot save file", path, EISDIR);
        if (!S_ISREG(st.st_mode))
            throw TTT("Cannot save file " + quoted(path) + ": not a regular file");
        exists = true;
        mode = st.st_mode & 07777;
    } else if (errno != ENOENT) {
        fail("Cannot save file", path, errno);
    } else {
        mode = 0666 & ~currentUmask();
    }

    const std::string::size_type slash = target.rfind('/');
    const std::string dir = slash == std::string::npos ? std::string(".") : target.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? target : target.substr(slash + 1);
    // The temporary name adds 8 bytes: a legal name near the limit is cut to leave room for them.
    std::string pattern = (slash == std::string::npos ? std::string() : dir) + '.'
                          + base.substr(0, std::min<std::string::size_type>(base.size(), NAME_MAX - 8)) + ".XXXXXX";

    Descriptor fd(::mkostemp(&pattern[0], O_CLOEXEC));
    if (fd.get() < 0)
        fail("Cannot save file", path, errno);
    TempFile temp(pattern);

    if (::fchmod(fd.get(), mode) != 0)
        fail("Cannot save file", path, errno);
    if (exists && (st.st_uid != ::geteuid() || st.st_gid != ::getegid())) {
        // Keeping the owner needs privileges; without them the file becomes the saver's, as with
        // any editor that saves by rename.
        if (::fchown(fd.get(), st.st_uid, st.st_gid) != 0 && errno != EPERM)
            fail("Cannot save file", path, errno);
        if (::fchmod(fd.get(), mode) != 0)
            fail("Cannot save file", path, errno);
    }
    if (!writeAll(fd.get(), static_cast<const char*>(data), size))
        fail("Cannot write file", path, errno);
    if (::fsync(fd.get()) != 0)
        fail("Cannot write file", path, errno);
    if (fd.close() != 0)
        fail("Cannot write file", path, errno);
    if (::rename(temp.name().c_str(), target.c_str()) != 0)
        fail("Cannot save file", path, errno);
    temp.keep();

    // The rename is durable only once the directory is on disk too; a failure here loses nothing.
    Descriptor dirFd(::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dirFd.get() >= 0)
        ::fsync(dirFd.get());
}
