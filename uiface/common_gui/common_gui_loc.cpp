// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "common_gui_loc.h"

#define LCQT_DEFINE_SLOT(name, english) QString name = QStringLiteral(english);
LCQT_SLOT_LIST(LCQT_DEFINE_SLOT)
#undef LCQT_DEFINE_SLOT

namespace {

#define LCQT_SLOT_POINTER(name, english) &name,
QString* allSlots[] = {LCQT_SLOT_LIST(LCQT_SLOT_POINTER)};
#undef LCQT_SLOT_POINTER

} // namespace

#define LCQT_SLOT_NAME(name, english) #name,
const char* const LCQT_names[] = {LCQT_SLOT_LIST(LCQT_SLOT_NAME)};
#undef LCQT_SLOT_NAME

static_assert(sizeof allSlots / sizeof allSlots[0] == 59, "a localization file carries exactly 59 texts");
static_assert(sizeof LCQT_names / sizeof LCQT_names[0] == sizeof allSlots / sizeof allSlots[0],
              "one name per slot");

QTLocLoader::Localization LCQT_info = {
    static_cast<int>(sizeof allSlots / sizeof allSlots[0]),
    8,
    0x109E601Au,
    allSlots,
};
