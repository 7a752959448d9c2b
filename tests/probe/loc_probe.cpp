// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// A child process for the language and localization tests: what it checks is process-wide (the
// locale, the language cache, Qt's library paths) or ends the process.
//
//   cg_loc_probe language             prints EDirs::getLanguage()
//   cg_loc_probe set-language CODE    EDirs::setLanguage(CODE), prints "stored"
//   cg_loc_probe qt-library LANG      Loc::QTLibModule::load(LANG): prints result, error, and Qt's "Cancel"
//   cg_loc_probe load-limited FILE    QTLocLoader::load under an address-space limit; prints the code
//
// A qt.conf beside this executable points Qt's translations directory at a directory that does not
// exist, so "qt-library" exercises the fallback to the product's resource directory.
#include "cg_loc_modules.h"
#include "common_gui_loc.h"
#include "edirs.h"
#include "qt_loc_loader.h"

#include <QCoreApplication>
#include <QTranslator>

#include <cstdio>
#include <cstring>
#include <string>
#include <sys/resource.h>

namespace {

int qtLibrary(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    Loc::QTLibModule module;
    std::string error;
    const int result = module.load(argv[2], &error);
    std::printf("result=%d\nerror=%s\ntranslators=%d\ncancel=%s\n", result, error.c_str(),
                int(app.findChildren<QTranslator*>().size()),
                QCoreApplication::translate("QPlatformTheme", "Cancel").toUtf8().constData());
    return 0;
}

int loadLimited(const char* fileName)
{
    FILE* file = std::fopen(fileName, "rb");
    if (!file)
        return 3;
    // Leave the process its current size and a little more, far less than the file's text block asks.
    long pages = 0;
    if (FILE* statm = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(statm, "%ld", &pages) != 1)
            pages = 0;
        std::fclose(statm);
    }
    const rlim_t limit = static_cast<rlim_t>(pages) * 4096u + (64u << 20);
    const rlimit rl{limit, limit};
    if (pages == 0 || setrlimit(RLIMIT_AS, &rl) != 0)
        return 4;
    const int code = QTLocLoader().load(file, LCQT_info);
    std::fclose(file);
    std::printf("code=%d\ncancel=%s\n", code, LCQT__Cancel.toUtf8().constData());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc >= 2 && std::strcmp(argv[1], "language") == 0) {
        std::printf("%s\n", EDirs::getLanguage());
        return 0;
    }
    if (argc >= 3 && std::strcmp(argv[1], "set-language") == 0) {
        EDirs::setLanguage(argv[2]);
        std::printf("stored\n");
        return 0;
    }
    if (argc >= 3 && std::strcmp(argv[1], "qt-library") == 0)
        return qtLibrary(argc, argv);
    if (argc >= 3 && std::strcmp(argv[1], "load-limited") == 0)
        return loadLimited(argv[2]);
    std::fprintf(stderr, "usage: %s language | set-language CODE | qt-library LANG | load-limited FILE\n", argv[0]);
    return 2;
}
