// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The binary localization loader on any bytes: a refused file changes no text slot, and the texts
// of an accepted one survive the compiler's own encoding unchanged.
#include "fuzzsupport.h"

#include "common_gui_loc.h"
#include "locfile.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString untouched = QStringLiteral("\u2400 untouched");
    QVector<QString> texts(LCQT_info.count, untouched);
    const int code = FuzzSupport::loadLocalization(QByteArray(reinterpret_cast<const char*>(data), int(size)), texts);
    FUZZ_CHECK(code == 0 || (code >= 2 && code <= 7));
    FUZZ_CHECK(texts.size() == LCQT_info.count);
    if (code != 0) {
        for (const QString& text : qAsConst(texts))
            FUZZ_CHECK(text == untouched);
        return 0;
    }
    QVector<QString> again(LCQT_info.count);
    FUZZ_CHECK(FuzzSupport::loadLocalization(LocFile::compile(QStringList(texts.begin(), texts.end())), again) == 0);
    FUZZ_CHECK(again == texts);
    return 0;
}
