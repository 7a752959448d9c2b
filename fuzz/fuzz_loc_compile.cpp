// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The localization source compiler on any text: errors exactly when it refuses, each one placed at
// a line of the file; an accepted source compiles into a file the loader reads back text for text,
// and its dump parses into the same texts again.
#include "fuzzsupport.h"

#include "common_gui_loc.h"
#include "locfile.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray source(reinterpret_cast<const char*>(data), int(size));
    QStringList texts;
    QStringList errors;
    const bool accepted = LocFile::parse(source, QStringLiteral("fuzz.txt"), texts, errors);
    FUZZ_CHECK(accepted == errors.isEmpty());
    FUZZ_CHECK(texts.size() == LCQT_info.count);
    const int lines = source.count('\n') + 1;
    for (const QString& error : qAsConst(errors)) {
        FUZZ_CHECK(error.startsWith(QStringLiteral("fuzz.txt:")));
        const int end = error.indexOf(QStringLiteral(": error: "));
        FUZZ_CHECK(end > 9);
        bool ok = false;
        const int line = error.mid(9, end - 9).toInt(&ok);
        FUZZ_CHECK(ok && line >= 1 && line <= lines);
        FUZZ_CHECK(!error.contains(QChar(0)));
    }
    if (!accepted)
        return 0;

    QVector<QString> loaded;
    FUZZ_CHECK(FuzzSupport::loadLocalization(LocFile::compile(texts), loaded) == 0);
    FUZZ_CHECK(QStringList(loaded.begin(), loaded.end()) == texts);

    QStringList again;
    QStringList againErrors;
    FUZZ_CHECK(LocFile::parse(LocFile::toSource(texts), QStringLiteral("dump.txt"), again, againErrors));
    FUZZ_CHECK(again == texts);
    return 0;
}
