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

/// Every slot with its English text, in file order. This list is the only place that names the slots:
/// the variables, LCQT_info, LCQT_names and the localization tools are all made from it.
#define LCQT_SLOT_LIST(X) \
    X(LCQT__Auto, "Auto") \
    X(LCQT__Back, "< &Back") \
    X(LCQT__Cancel, "&Cancel") \
    X(LCQT__Close, "Close") \
    X(LCQT__Confirm_password, "Confirm password:") \
    X(LCQT__Direction, "Direction") \
    X(LCQT__Down, "&Down") \
    X(LCQT__Encoding, "Encoding") \
    X(LCQT__Error, "Error") \
    X(LCQT__File, "File") \
    X(LCQT__File_loading_error, "File loading error") \
    X(LCQT__File_saving_error, "File saving error") \
    X(LCQT__File_was_modified_Do_you_want, "File was modified. Do you want save it?") \
    X(LCQT__Find, "Find...") \
    X(LCQT__Find__0, "Find") \
    X(LCQT__Find__1, "Find") \
    X(LCQT__Find_Next, "Find Next") \
    X(LCQT__Find_Next__0, "Find &Next") \
    X(LCQT__Find_in_all_columns, "F&ind in all columns") \
    X(LCQT__Find_what, "Find what: ") \
    X(LCQT__Finish, "&Finish") \
    X(LCQT__Go_to_Line, "Go to Line...") \
    X(LCQT__Help, "Help") \
    X(LCQT__Help_file_not_found, "Help file not found: ") \
    X(LCQT__High, "High") \
    X(LCQT__Information, "Information") \
    X(LCQT__Load_from_file, "Load from file...") \
    X(LCQT__Low, "Low") \
    X(LCQT__Match_case, "Match cas&e") \
    X(LCQT__Match_whole_word_only, "Match &whole word only") \
    X(LCQT__Medium, "Medium") \
    X(LCQT__Next, "&Next >") \
    X(LCQT__Not_enough_memory, "Not enough memory") \
    X(LCQT__OK, "&OK") \
    X(LCQT__Open, "Open...") \
    X(LCQT__Open_file, "Open file...") \
    X(LCQT__Parameter, "Parameter") \
    X(LCQT__Password, "Password:") \
    X(LCQT__Password_is_not_strong_enough, "Password is not strong enough") \
    X(LCQT__Password_strength, "Password strength:") \
    X(LCQT__Passwords_do_not_match, "Passwords do not match") \
    X(LCQT__Question, "Question") \
    X(LCQT__Save, "&Save") \
    X(LCQT__Save__0, "Save") \
    X(LCQT__Save_as, "Save as...") \
    X(LCQT__Save_to_file, "Save to file...") \
    X(LCQT__Show_password, "Show password") \
    X(LCQT__Specify_line_number_from_1, "Specify line number (from 1)") \
    X(LCQT__Text_Files_txt_All_Files_All, "Text Files (*.txt);;All Files (*.*);;All Files (*)") \
    X(LCQT__Text_not_found, "Text not found") \
    X(LCQT__Text_not_found_above_this_point, "Text not found above this point.\nDo you want restart search from end of document?") \
    X(LCQT__Text_not_found_below_this_point, "Text not found below this point.\nDo you want restart search from begin of document?") \
    X(LCQT__UTF_8_will_be_used, ", UTF-8 will be used") \
    X(LCQT__Unknown_encoding, "Unknown encoding: ") \
    X(LCQT__Up, "&Up") \
    X(LCQT__Value, "Value") \
    X(LCQT__View, "View") \
    X(LCQT__Warning, "Warning") \
    X(LCQT__Zero, "Zero")

#define LCQT_DECLARE_SLOT(name, english) extern COMMON_GUI_EXPORT QString name;
LCQT_SLOT_LIST(LCQT_DECLARE_SLOT)
#undef LCQT_DECLARE_SLOT

/// The table of all 59 slots in file order, identifier 0x109E601A.
extern COMMON_GUI_EXPORT QTLocLoader::Localization LCQT_info;

/// The slot names ("LCQT__Auto", ...) in file order, LCQT_info.count of them. The localization
/// compiler and dump use them to read and write the text sources.
extern COMMON_GUI_EXPORT const char* const LCQT_names[];
