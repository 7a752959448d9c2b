// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "qt_loc_loader.h"

#include <QString>

/// \file
/// The library's user-visible texts, one process-wide slot each, English until a localization file
/// of the module "common_gui" replaces them all (see Loc::GUIModule). Widgets copy a slot when they are
/// built, so load the language before building windows.

extern COMMON_GUI_EXPORT QString LCQT__Auto;
extern COMMON_GUI_EXPORT QString LCQT__Back;
extern COMMON_GUI_EXPORT QString LCQT__Cancel;
extern COMMON_GUI_EXPORT QString LCQT__Close;
extern COMMON_GUI_EXPORT QString LCQT__Confirm_password;
extern COMMON_GUI_EXPORT QString LCQT__Direction;
extern COMMON_GUI_EXPORT QString LCQT__Down;
extern COMMON_GUI_EXPORT QString LCQT__Encoding;
extern COMMON_GUI_EXPORT QString LCQT__Error;
extern COMMON_GUI_EXPORT QString LCQT__File;
extern COMMON_GUI_EXPORT QString LCQT__File_loading_error;
extern COMMON_GUI_EXPORT QString LCQT__File_saving_error;
extern COMMON_GUI_EXPORT QString LCQT__File_was_modified_Do_you_want;
extern COMMON_GUI_EXPORT QString LCQT__Find;
extern COMMON_GUI_EXPORT QString LCQT__Find__0;
extern COMMON_GUI_EXPORT QString LCQT__Find__1;
extern COMMON_GUI_EXPORT QString LCQT__Find_Next;
extern COMMON_GUI_EXPORT QString LCQT__Find_Next__0;
extern COMMON_GUI_EXPORT QString LCQT__Find_in_all_columns;
extern COMMON_GUI_EXPORT QString LCQT__Find_what;
extern COMMON_GUI_EXPORT QString LCQT__Finish;
extern COMMON_GUI_EXPORT QString LCQT__Go_to_Line;
extern COMMON_GUI_EXPORT QString LCQT__Help;
extern COMMON_GUI_EXPORT QString LCQT__Help_file_not_found;
extern COMMON_GUI_EXPORT QString LCQT__High;
extern COMMON_GUI_EXPORT QString LCQT__Information;
extern COMMON_GUI_EXPORT QString LCQT__Load_from_file;
extern COMMON_GUI_EXPORT QString LCQT__Low;
extern COMMON_GUI_EXPORT QString LCQT__Match_case;
extern COMMON_GUI_EXPORT QString LCQT__Match_whole_word_only;
extern COMMON_GUI_EXPORT QString LCQT__Medium;
extern COMMON_GUI_EXPORT QString LCQT__Next;
extern COMMON_GUI_EXPORT QString LCQT__Not_enough_memory;
extern COMMON_GUI_EXPORT QString LCQT__OK;
extern COMMON_GUI_EXPORT QString LCQT__Open;
extern COMMON_GUI_EXPORT QString LCQT__Open_file;
extern COMMON_GUI_EXPORT QString LCQT__Parameter;
extern COMMON_GUI_EXPORT QString LCQT__Password;
extern COMMON_GUI_EXPORT QString LCQT__Password_is_not_strong_enough;
extern COMMON_GUI_EXPORT QString LCQT__Password_strength;
extern COMMON_GUI_EXPORT QString LCQT__Passwords_do_not_match;
extern COMMON_GUI_EXPORT QString LCQT__Question;
extern COMMON_GUI_EXPORT QString LCQT__Save;
extern COMMON_GUI_EXPORT QString LCQT__Save__0;
extern COMMON_GUI_EXPORT QString LCQT__Save_as;
extern COMMON_GUI_EXPORT QString LCQT__Save_to_file;
extern COMMON_GUI_EXPORT QString LCQT__Show_password;
extern COMMON_GUI_EXPORT QString LCQT__Specify_line_number_from_1;
extern COMMON_GUI_EXPORT QString LCQT__Text_Files_txt_All_Files_All;
extern COMMON_GUI_EXPORT QString LCQT__Text_not_found;
extern COMMON_GUI_EXPORT QString LCQT__Text_not_found_above_this_point;
extern COMMON_GUI_EXPORT QString LCQT__Text_not_found_below_this_point;
extern COMMON_GUI_EXPORT QString LCQT__UTF_8_will_be_used;
extern COMMON_GUI_EXPORT QString LCQT__Unknown_encoding;
extern COMMON_GUI_EXPORT QString LCQT__Up;
extern COMMON_GUI_EXPORT QString LCQT__Value;
extern COMMON_GUI_EXPORT QString LCQT__View;
extern COMMON_GUI_EXPORT QString LCQT__Warning;
extern COMMON_GUI_EXPORT QString LCQT__Zero;

/// The table of all 59 slots in file order, identifier 0x109E601A.
extern COMMON_GUI_EXPORT QTLocLoader::Localization LCQT_info;
