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
/// | `agentEtcDir()`              | `CG_RESOURCE_DIR` | `<bin>/../share/<product>` when it exists, else the data directory beside the library's own directory (`<libdir>/../share/<product>`), else `<install prefix>/share/<product>` |
/// | `userDataDirForWrite_utf8()` | `CG_USER_DIR`     | `$XDG_CONFIG_HOME/<product>` (`~/.config/<product>`) |
/// | `userDataCommonDir_utf8()`   | `CG_COMMON_DIR`   | first entry of `$XDG_CONFIG_DIRS` (`/etc/xdg`) + `/<product>` |
/// | `productName()`              | `CG_PRODUCT_NAME` | the name given to `setProductName()`, else "common_gui" |
/// | `libraryDataDir()`           | (`CG_RESOURCE_DIR` while the product is "common_gui") | the library's own `share/common_gui`, found as for `agentEtcDir()` |
///
/// An application names its product once, first thing in `main()`; from then on its settings, its
/// language file and its resource directory (help pages, icons) are its own:
/// \code
/// QApplication app(argc, argv);
/// setProductName("hostlist");   // ~/.config/hostlist, /etc/xdg/hostlist, <prefix>/share/hostlist
/// \endcode

CG_PLATFORM_EXPORT const char* agentBinDir();
CG_PLATFORM_EXPORT const char* agentEtcDir();
CG_PLATFORM_EXPORT const char* userDataDirForWrite_utf8();
CG_PLATFORM_EXPORT const char* userDataCommonDir_utf8();
CG_PLATFORM_EXPORT const char* productName();

/// Names the product in code; call it before anything else of the library (the help browser keeps
/// the name it saw first). CG_PRODUCT_NAME, when set to an acceptable name, still wins. Returns false
/// and keeps the previous name for a name that could lead out of the configuration directories or
/// make no sense as a directory name: null, empty, ".", containing '/' or "..", a control character,
/// or longer than `maxProductNameLength` bytes. The same rule applies to CG_PRODUCT_NAME (ignored
/// when refused).
CG_PLATFORM_EXPORT bool setProductName(const char* name);
constexpr int maxProductNameLength = 64;

/// The library's own data directory (its translations and its default icon set), which stays the
/// same whatever name the product has.
CG_PLATFORM_EXPORT const char* libraryDataDir();
