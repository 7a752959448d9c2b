// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// cg_loc_dump FILE.lcl [OUTPUT.txt]: writes a binary localization file of the module "common_gui"
// back as its readable text source (to standard output without OUTPUT).
#include "locfile.h"

#include "common_gui_loc.h"
#include "qt_loc_loader.h"

#include <QFile>
#include <QVector>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

const char* describe(int code)
{
    switch (code) {
    case 2: return "not a localization file of the module common_gui";
    case 3: return "unsupported version";
    case 4: return "unsupported unit";
    case 5: return "made for another set of texts (identifier differs)";
    case 6: return "the file ends early";
    case 7: return "out of memory";
    default: return "unknown error";
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: %s FILE.lcl [OUTPUT.txt]\n", argc > 0 ? argv[0] : "cg_loc_dump");
        return 2;
    }

    // The library's own reader fills a private table of the same shape as the library's slots.
    QVector<QString> texts(LCQT_info.count);
    QVector<QString*> pointers;
    for (QString& text : texts)
        pointers.append(&text);
    QTLocLoader::Localization table = LCQT_info;
    table.slotTable = pointers.data();

    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(argv[1], "rb"), &std::fclose);
    if (!file) {
        std::fprintf(stderr, "%s: error: cannot open\n", argv[1]);
        return 1;
    }
    const int code = QTLocLoader().load(file.get(), table);
    if (code != 0) {
        std::fprintf(stderr, "%s: error %d: %s\n", argv[1], code, describe(code));
        return 1;
    }

    const QByteArray source = LocFile::toSource(QStringList(texts.begin(), texts.end()));
    if (argc == 2) {
        // stdio buffers the text: only the flush tells whether it arrived (not so on /dev/full).
        if (std::fwrite(source.constData(), 1, static_cast<size_t>(source.size()), stdout)
                != static_cast<size_t>(source.size())
            || std::fflush(stdout) != 0) {
            std::fprintf(stderr, "error: cannot write to standard output: %s\n", std::strerror(errno));
            return 1;
        }
        return 0;
    }
    QString error;
    if (!LocFile::writeFile(QFile::decodeName(argv[2]), source, error)) {
        std::fprintf(stderr, "%s: error: cannot write: %s\n", argv[2], error.toLocal8Bit().constData());
        return 1;
    }
    return 0;
}
