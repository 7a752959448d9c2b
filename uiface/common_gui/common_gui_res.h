// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

/// Number of entries in common_gui_resource_paths.
constexpr int common_gui_resource_count = 82;

/// The library's icon table: resource paths indexed by icon id (":/tb_log.png" is id 0).
/// The images themselves come from a resource file the application registers with Resource::load.
extern COMMON_GUI_EXPORT const char* const common_gui_resource_paths[common_gui_resource_count];

/// Named icon ids, so callers need not spell the positions of the table.
/// \code
/// QPixmap* lock = Resource::getPixmap(CgIcon::Lock);   // ":/lock.png"
/// \endcode
namespace CgIcon {
enum Id : int {
    TbLog = 0,
    TbLog16 = 1,
    TbMonitor = 2,
    TbActivate = 3,
    TbHelp = 4,
    TbSettings = 5,
    TbCertificates = 6,
    TbAddCertificate = 7,
    TbFind = 8,
    TbDelete = 9,
    TbFilter = 10,
    TbInspector = 11,
    TbShowAll = 12,
    TbOpen = 13,
    TbOpenLive = 14,
    TbLevel = 15,
    Import = 16,
    Importkey = 17,
    Export = 18,
    Request = 19,
    TbPlugin = 20,
    TbToken = 21,
    TbPolicy = 22,
    Agent = 23,
    Initial = 24,
    Agent16 = 25,
    Agent24 = 26,
    Agent32 = 27,
    Agent48 = 28,
    ActionComplete16 = 29,
    ActionError16 = 30,
    ActionWarning16 = 31,
    DeleteAll25 = 32,
    Stat25 = 33,
    Satree25 = 34,
    Blacklist25 = 35,
    Filters25 = 36,
    Algproxy25 = 37,
    Ikecfg25 = 38,
    Rri25 = 39,
    Ha25 = 40,
    Back = 41,
    Next = 42,
    Home = 43,
    User = 44,
    Sys = 45,
    Clock = 46,
    Lock = 47,
    Lock1 = 48,
    Lock2 = 49,
    Lock3 = 50,
    Send = 51,
    Recv = 52,
    Connect = 53,
    Star = 54,
    Excl = 55,
    Cross = 56,
    ClockNew = 57,
    LockNew = 58,
    Lock1New = 59,
    Lock2New = 60,
    Lock3New = 61,
    SendNew = 62,
    RecvNew = 63,
    ConnectNew = 64,
    StarNew = 65,
    ExclNew = 66,
    CrossNew = 67,
    Cert = 68,
    CertCross = 69,
    Update16_1 = 70,
    Update16_2 = 71,
    Update16_3 = 72,
    Update16_4 = 73,
    Update16Error = 74,
    Update16Success = 75,
    Update50_1 = 76,
    Update50_2 = 77,
    Update50_3 = 78,
    Update50_4 = 79,
    Update50Error = 80,
    Update50Success = 81,
};
} // namespace CgIcon
