// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "common_gui_loc.h"

QString LCQT__Auto = QStringLiteral("Auto");
QString LCQT__Back = QStringLiteral("< &Back");
QString LCQT__Cancel = QStringLiteral("&Cancel");
QString LCQT__Close = QStringLiteral("Close");
QString LCQT__Confirm_password = QStringLiteral("Confirm password:");
QString LCQT__Direction = QStringLiteral("Direction");
QString LCQT__Down = QStringLiteral("&Down");
QString LCQT__Encoding = QStringLiteral("Encoding");
QString LCQT__Error = QStringLiteral("Error");
QString LCQT__File = QStringLiteral("File");
QString LCQT__File_loading_error = QStringLiteral("File loading error");
QString LCQT__File_saving_error = QStringLiteral("File saving error");
QString LCQT__File_was_modified_Do_you_want = QStringLiteral("File was modified. Do you want save it?");
QString LCQT__Find = QStringLiteral("Find...");
QString LCQT__Find__0 = QStringLiteral("Find");
QString LCQT__Find__1 = QStringLiteral("Find");
QString LCQT__Find_Next = QStringLiteral("Find Next");
QString LCQT__Find_Next__0 = QStringLiteral("Find &Next");
QString LCQT__Find_in_all_columns = QStringLiteral("F&ind in all columns");
QString LCQT__Find_what = QStringLiteral("Find what: ");
QString LCQT__Finish = QStringLiteral("&Finish");
QString LCQT__Go_to_Line = QStringLiteral("Go to Line...");
QString LCQT__Help = QStringLiteral("Help");
QString LCQT__Help_file_not_found = QStringLiteral("Help file not found: ");
QString LCQT__High = QStringLiteral("High");
QString LCQT__Information = QStringLiteral("Information");
QString LCQT__Load_from_file = QStringLiteral("Load from file...");
QString LCQT__Low = QStringLiteral("Low");
QString LCQT__Match_case = QStringLiteral("Match cas&e");
QString LCQT__Match_whole_word_only = QStringLiteral("Match &whole word only");
QString LCQT__Medium = QStringLiteral("Medium");
QString LCQT__Next = QStringLiteral("&Next >");
QString LCQT__Not_enough_memory = QStringLiteral("Not enough memory");
QString LCQT__OK = QStringLiteral("&OK");
QString LCQT__Open = QStringLiteral("Open...");
QString LCQT__Open_file = QStringLiteral("Open file...");
QString LCQT__Parameter = QStringLiteral("Parameter");
QString LCQT__Password = QStringLiteral("Password:");
QString LCQT__Password_is_not_strong_enough = QStringLiteral("Password is not strong enough");
QString LCQT__Password_strength = QStringLiteral("Password strength:");
QString LCQT__Passwords_do_not_match = QStringLiteral("Passwords do not match");
QString LCQT__Question = QStringLiteral("Question");
QString LCQT__Save = QStringLiteral("&Save");
QString LCQT__Save__0 = QStringLiteral("Save");
QString LCQT__Save_as = QStringLiteral("Save as...");
QString LCQT__Save_to_file = QStringLiteral("Save to file...");
QString LCQT__Show_password = QStringLiteral("Show password");
QString LCQT__Specify_line_number_from_1 = QStringLiteral("Specify line number (from 1)");
QString LCQT__Text_Files_txt_All_Files_All = QStringLiteral("Text Files (*.txt);;All Files (*.*);;All Files (*)");
QString LCQT__Text_not_found = QStringLiteral("Text not found");
QString LCQT__Text_not_found_above_this_point = QStringLiteral("Text not found above this point.\nDo you want restart search from end of document?");
QString LCQT__Text_not_found_below_this_point = QStringLiteral("Text not found below this point.\nDo you want restart search from begin of document?");
QString LCQT__UTF_8_will_be_used = QStringLiteral(", UTF-8 will be used");
QString LCQT__Unknown_encoding = QStringLiteral("Unknown encoding: ");
QString LCQT__Up = QStringLiteral("&Up");
QString LCQT__Value = QStringLiteral("Value");
QString LCQT__View = QStringLiteral("View");
QString LCQT__Warning = QStringLiteral("Warning");
QString LCQT__Zero = QStringLiteral("Zero");

namespace {

QString* slotTable[] = {
    &LCQT__Auto,
    &LCQT__Back,
    &LCQT__Cancel,
    &LCQT__Close,
    &LCQT__Confirm_password,
    &LCQT__Direction,
    &LCQT__Down,
    &LCQT__Encoding,
    &LCQT__Error,
    &LCQT__File,
    &LCQT__File_loading_error,
    &LCQT__File_saving_error,
    &LCQT__File_was_modified_Do_you_want,
    &LCQT__Find,
    &LCQT__Find__0,
    &LCQT__Find__1,
    &LCQT__Find_Next,
    &LCQT__Find_Next__0,
    &LCQT__Find_in_all_columns,
    &LCQT__Find_what,
    &LCQT__Finish,
    &LCQT__Go_to_Line,
    &LCQT__Help,
    &LCQT__Help_file_not_found,
    &LCQT__High,
    &LCQT__Information,
    &LCQT__Load_from_file,
    &LCQT__Low,
    &LCQT__Match_case,
    &LCQT__Match_whole_word_only,
    &LCQT__Medium,
    &LCQT__Next,
    &LCQT__Not_enough_memory,
    &LCQT__OK,
    &LCQT__Open,
    &LCQT__Open_file,
    &LCQT__Parameter,
    &LCQT__Password,
    &LCQT__Password_is_not_strong_enough,
    &LCQT__Password_strength,
    &LCQT__Passwords_do_not_match,
    &LCQT__Question,
    &LCQT__Save,
    &LCQT__Save__0,
    &LCQT__Save_as,
    &LCQT__Save_to_file,
    &LCQT__Show_password,
    &LCQT__Specify_line_number_from_1,
    &LCQT__Text_Files_txt_All_Files_All,
    &LCQT__Text_not_found,
    &LCQT__Text_not_found_above_this_point,
    &LCQT__Text_not_found_below_this_point,
    &LCQT__UTF_8_will_be_used,
    &LCQT__Unknown_encoding,
    &LCQT__Up,
    &LCQT__Value,
    &LCQT__View,
    &LCQT__Warning,
    &LCQT__Zero,
};

} // namespace

QTLocLoader::Localization LCQT_info = {
    static_cast<int>(sizeof slotTable / sizeof slotTable[0]),
    8,
    0x109E601Au,
    slotTable,
};
