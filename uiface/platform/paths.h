// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "platform/platform_export.h"

/// \file
/// Where the product lives on disk. Each function returns UTF-8 text owned by this layer; the text
/// stays valid for the life of the process. Every directory is read afresh on each call and can be
/// redirected by an environment variable:
///
/// | function                     | variable          | default                                          |
/// |------------------------------|-------------------|--------------------------------------------------|
/// | `agentBinDir()`              | `CG_BIN_DIR`      | the directory of the running executable          |
/// | `agentEtcDir()`              | `CG_RESOURCE_DIR` | `<bin>/../share/common_gui` when it exists, else the data directory beside the library's own directory (`<libdir>/../share/common_gui`), else the configured install data directory |
/// | `userDataDirForWrite_utf8()` | `CG_USER_DIR`     | `$XDG_CONFIG_HOME/<product>` (`~/.config/<product>`) |
/// | `userDataCommonDir_utf8()`   | `CG_COMMON_DIR`   | first entry of `$XDG_CONFIG_DIRS` (`/etc/xdg`) + `/<product>` |
/// | `productName()`              | `CG_PRODUCT_NAME` | "common_gui"                                     |

CG_PLATFORM_EXPORT const char* agentBinDir();
CG_PLATFORM_EXPORT const char* agentEtcDir();
CG_PLATFORM_EXPORT const char* userDataDirForWrite_utf8();
CG_PLATFORM_EXPORT const char* userDataCommonDir_utf8();
CG_PLATFORM_EXPORT const char* productName();
