// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QString>

#include <new>
#include <string>

class QWidget;
class TTT;

/// The library's message boxes: each operation shows one modal QMessageBox with a fixed icon, title,
/// button set and default button, and returns what was pressed. Static operations only.
///
/// Errors can also be collected instead of shown, for operations that may fail many times in a row:
/// \code
/// EMessage::setCumulativeErrorMode();
/// EMessage::erro(nullptr, QStringLiteral("a.cer: the file is empty"));      // collected, no box
/// EMessage::erro(nullptr, std::string("b.cer: the certificate has expired"));
/// EMessage::erro(nullptr, TTT("c.cer: unknown format"));
/// const QString all = EMessage::getCumulativeError();   // "a.cer...\r\nb.cer...\r\nc.cer...", mode off
/// EMessage::erro(this, all);                            // one box with all three
/// \endcode
///
/// The \a parent argument of every box is not used to place it: the box's parent is always
/// getTopWidget(). Titles come from the library's text slots; button captions are Qt's own.
class COMMON_GUI_EXPORT EMessage
{
public:
    EMessage() = delete;

    /// Information box, OK only.
    static void info(QWidget* parent, const QString& text);
    /// Critical box, OK only; in cumulative mode the text is collected and no box is shown.
    static void erro(QWidget* parent, const QString& text);
    /// As erro(QWidget*, const QString&), with \a text decoded as UTF-8.
    static void erro(QWidget* parent, const std::string& text);
    /// As erro(QWidget*, const QString&), with \a text decoded as UTF-8; spares callers the choice
    /// between the QString and std::string overloads for a plain literal.
    static void erro(QWidget* parent, const char* text);
    /// Shows every message of \a error, as TTT::makeMulti joins them.
    static void erro(QWidget* parent, const TTT& error);
    /// Shows "Not enough memory" in the current language.
    static void erro(QWidget* parent, const std::bad_alloc&);
    /// Warning box with OK and Cancel; true only if OK was pressed.
    /// \note Cancel is the default, so a warning confirmed with Enter does not go ahead.
    static bool warn(QWidget* parent, const QString& text);
    /// Question with Yes and No (Yes default); true only if Yes was pressed.
    static bool ask(QWidget* parent, const QString& text);
    /// Question with Yes, No and Cancel; returns the QMessageBox::StandardButton pressed.
    static int ync(QWidget* parent, const QString& text);
    /// Question with Yes, No and No to All; returns the QMessageBox::StandardButton pressed.
    static int asknoall(QWidget* parent, const QString& text);
    /// Question with Yes, Yes to All and No; returns the QMessageBox::StandardButton pressed.
    static int askyesall(QWidget* parent, const QString& text);
    /// Question with Yes, Yes to All, No and No to All; returns the QMessageBox::StandardButton pressed.
    static int askall(QWidget* parent, const QString& text);

    /// The application's active modal widget, else its active window, else null. The argument is ignored.
    static QWidget* getTopWidget(QWidget* parent);

    /// Turns the cumulative mode on and discards anything collected before.
    static void setCumulativeErrorMode();
    /// Turns the cumulative mode off and returns the collected errors joined by CR LF
    /// (a null string if erro() was not called in between).
    static QString getCumulativeError();

private:
    static bool cumulativeErrorMode;
    static QString cumulativeError;
};
