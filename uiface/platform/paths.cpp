// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "paths.h"

#include <atomic>
#include <climits>
#include <cstring>
#include <dlfcn.h>
#include <cstdlib>
#include <mutex>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#ifndef CG_INSTALL_DATAROOT_ABS
#define CG_INSTALL_DATAROOT_ABS "/usr/local/share"
#endif
#ifndef CG_DATAROOT_FROM_LIBDIR
#define CG_DATAROOT_FROM_LIBDIR "../share"
#endif

namespace {

// Handed-out texts are interned so a pointer stays valid even after the environment changes.
const char* intern(const std::string& text)
{
    static std::mutex lock;
    static std::set<std::string> pool;
    std::lock_guard<std::mutex> guard(lock);
    return pool.insert(text).first->c_str();
}

const char* fromEnv(const char* name)
{
    const char* value = std::getenv(name);
    return value && *value ? value : nullptr;
}

bool isDir(const std::string& path)
{
    struct stat st;
    return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string executableDir()
{
    std::string buffer(4096, '\0');
    ssize_t n = ::readlink("/proc/self/exe", &buffer[0], buffer.size() - 1);
    if (n <= 0)
        return std::string(".");
    buffer.resize(static_cast<size_t>(n));
    std::string::size_type slash = buffer.rfind('/');
    if (slash == std::string::npos)
        return std::string(".");
    return slash == 0 ? std::string("/") : buffer.substr(0, slash);
}

// The directory this library was loaded from, so that an install moved to another prefix (or
// the build tree) still finds its own data directory.
std::string libraryDir()
{
    Dl_info info;
    if (::dladdr(reinterpret_cast<void*>(&agentEtcDir), &info) == 0 || !info.dli_fname)
        return std::string();
    std::string path = info.dli_fname;
    std::string::size_type slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string canonical(const std::string& path)
{
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) ? std::string(resolved) : path;
}

// The product name becomes one directory name under the configuration and data directories, so it
// must stay one plain component there.
bool acceptableProductName(const char* name)
{
    if (!name)
        return false;
    const size_t length = std::strlen(name);
    if (length == 0 || length > size_t(maxProductNameLength) || std::strcmp(name, ".") == 0
        || std::strchr(name, '/') || std::strstr(name, ".."))
        return false;
    for (const char* c = name; *c; ++c) {
        if (static_cast<unsigned char>(*c) < 0x20 || *c == 0x7f)
            return false;
    }
    return true;
}

const char defaultProductName[] = "common_gui";
std::atomic<const char*> productNameInCode{defaultProductName};

// The data directory of one product: beside the running program's bin/, beside the library, or
// under the configured install prefix.
std::string dataDirOf(const std::string& product)
{
    std::string besideBin = std::string(agentBinDir()) + "/../share/" + product;
    if (isDir(besideBin))
        return canonical(besideBin);
    const std::string libDir = libraryDir();
    if (!libDir.empty()) {
        std::string besideLib = libDir + "/" CG_DATAROOT_FROM_LIBDIR "/" + product;
        if (isDir(besideLib))
            return canonical(besideLib);
    }
    return std::string(CG_INSTALL_DATAROOT_ABS "/") + product;
}

std::string homeDir()
{
    if (const char* home = fromEnv("HOME"))
        return home;
    return std::string("/tmp");
}

} // namespace

const char* productName()
{
    const char* name = fromEnv("CG_PRODUCT_NAME");
    if (name && acceptableProductName(name))
        return intern(name);
    return productNameInCode.load();
}

bool setProductName(const char* name)
{
    if (!acceptableProductName(name))
        return false;
    productNameInCode.store(intern(name));
    return true;
}

const char* libraryDataDir()
{
    if (std::strcmp(productName(), defaultProductName) == 0)
        return agentEtcDir();
    return intern(dataDirOf(defaultProductName));
}

const char* agentBinDir()
{
    if (const char* dir = fromEnv("CG_BIN_DIR"))
        return intern(dir);
    return intern(executableDir());
}

const char* agentEtcDir()
{
    if (const char* dir = fromEnv("CG_RESOURCE_DIR"))
        return intern(dir);
    // A program run from the build tree (or from an install) finds share/<product> beside bin/.
    return intern(dataDirOf(productName()));
}

const char* userDataDirForWrite_utf8()
{
    if (const char* dir = fromEnv("CG_USER_DIR"))
        return intern(dir);
    std::string base;
    if (const char* xdg = fromEnv("XDG_CONFIG_HOME"))
        base = xdg;
    else
        base = homeDir() + "/.config";
    return intern(base + "/" + productName());
}

const char* userDataCommonDir_utf8()
{
    if (const char* dir = fromEnv("CG_COMMON_DIR"))
        return intern(dir);
    std::string first = "/etc/xdg";
    if (const char* dirs = fromEnv("XDG_CONFIG_DIRS")) {
        std::string all(dirs);
        std::string head = all.substr(0, all.find(':'));
        if (!head.empty())
            first = head;
    }
    return intern(first + "/" + productName());
}
