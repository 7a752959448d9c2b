// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <cstdio>
#include <cstdlib>

/// A property every input must keep; a broken one is reported like a crash, so libFuzzer saves
/// the input and the replay test names the line.
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: property broken: %s\n", __FILE__, __LINE__, #condition);  \
            std::abort();                                                                          \
        }                                                                                          \
    } while (0)

namespace FuzzSupport {

/// Loads \a bytes as a localization file of the library's set of texts into \a texts (one per
/// slot, left as they are on refusal). The bytes go through a real file, so the loader sees its
/// size as it would on disk. Returns the loader's code.
int loadLocalization(const QByteArray& bytes, QVector<QString>& texts);

} // namespace FuzzSupport
