// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "fuzzsupport.h"

#include "common_gui_loc.h"
#include "qt_loc_loader.h"

#include <sys/mman.h>
#include <unistd.h>

namespace FuzzSupport {

int loadLocalization(const QByteArray& bytes, QVector<QString>& texts)
{
    const int fd = ::memfd_create("localization", MFD_CLOEXEC);
    FUZZ_CHECK(fd >= 0);
    FUZZ_CHECK(::write(fd, bytes.constData(), size_t(bytes.size())) == bytes.size());
    FUZZ_CHECK(::lseek(fd, 0, SEEK_SET) == 0);
    FILE* file = ::fdopen(fd, "rb");
    FUZZ_CHECK(file);

    texts.resize(LCQT_info.count);
    QVector<QString*> pointers;
    for (QString& text : texts)
        pointers.append(&text);
    QTLocLoader::Localization table = LCQT_info;
    table.slotTable = pointers.data();
    const int code = QTLocLoader().load(file, table);
    std::fclose(file);
    return code;
}

} // namespace FuzzSupport
