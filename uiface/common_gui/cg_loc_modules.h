// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "platform/common_core.h"
#include "qt_loc_loader.h"

#include <cstdio>
#include <string>

/// The library's localization modules. An application loads them once, before it builds windows:
///
/// \code
/// const char* language = EDirs::getLanguage();
/// static Loc::GUIModule texts;                  // common_gui_<language>.lcl into the LCQT__ slots
/// static Loc::QTLibModule qtTexts;              // Qt's own "qt_ru" for "rus"
/// std::string error;
/// if (!texts.load(language, &error) || !qtTexts.load(language, &error))
///     std::fprintf(stderr, "%s\n", error.c_str());   // the texts stay English
/// \endcode
namespace Loc {

/// A module whose file is a localization file ("LCLR") read into its table of text slots.
class COMMON_GUI_EXPORT QTModule : public Module
{
public:
    /// Reads \a file into the module's table; the result codes are those of QTLocLoader::load.
    int loadFile(FILE* file) override;

protected:
    QTModule(std::string name = {}, QTLocLoader::Localization* table = nullptr);

    QTLocLoader loader;
};

/// The library's own texts: module "common_gui", table LCQT_info.
class COMMON_GUI_EXPORT GUIModule : public QTModule
{
public:
    GUIModule();
};

/// Qt's own translation. For "rus" it installs a translator with "qt_ru" into the application, looked
/// for in Qt's translations directory and then in the product's resource directory; for every other
/// language it does nothing and succeeds.
class COMMON_GUI_EXPORT QTLibModule : public Module
{
public:
    QTLibModule();

    /// Returns 1 on success; 0 when "qt_ru" is found in neither place (\a error names the resource
    /// directory's candidate, code -1) or no application object exists to install it in.
    int load(const char* language, std::string* error) override;
};

} // namespace Loc
