// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// cg_loc_compile SOURCE.txt OUTPUT.lcl: compiles a readable text source into the binary
// localization file of the module "common_gui".
#include "locfile.h"

#include <QFile>

#include <cstdio>

namespace {

void print(const QString& message)
{
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s SOURCE.txt OUTPUT.lcl\n", argc > 0 ? argv[0] : "cg_loc_compile");
        return 2;
    }
    const QString sourceName = QFile::decodeName(argv[1]);
    const QString outputName = QFile::decodeName(argv[2]);

    QFile source(sourceName);
    if (!source.open(QIODevice::ReadOnly)) {
        print(sourceName + QStringLiteral(": error: cannot read: ") + source.errorString());
        return 1;
    }
    QStringList texts;
    QStringList errors;
    if (!LocFile::parse(source.readAll(), sourceName, texts, errors)) {
        for (const QString& error : errors)
            print(error);
        return 1;
    }

    // Written through a temporary file: a failed run never leaves a half-written localization behind.
    QString error;
    if (!LocFile::writeFile(outputName, LocFile::compile(texts), error)) {
        print(outputName + QStringLiteral(": error: cannot write: ") + error);
        return 1;
    }
    return 0;
}
