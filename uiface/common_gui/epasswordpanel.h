// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QChar>
#include <QString>
#include <QValidator>
#include <QWidget>

class ECheckBox;
class EEditPair;
class QLabel;

/// True when at least one character of \a s passes \a test (false for the empty string).
COMMON_GUI_EXPORT bool QString_constraint_(const QString& s, bool (QChar::*test)() const);

/// The strength of a password, 0 (Zero) to 3 (High): one point for more than 8 characters and one
/// each for a digit, a letter, a lower-case letter, an upper-case letter and a punctuation
/// character. Length 6 or more with 6 points is High, with 4 or 5 Medium; any other non-empty
/// text is Low.
/// \note Symbols that are not punctuation to QChar ('+', '$', '€') add nothing.
COMMON_GUI_EXPORT int getStrength(QString& s);

/// The panel for choosing a new password: the password and its confirmation (masked), a live
/// strength level in colour, and a "Show password" box that reveals both fields for three seconds
/// with a visible countdown. The caller's OK widget is enabled only while the password reaches the
/// minimum strength.
///
/// \code
/// QString secret;
/// auto* panel = new EPasswordPanel(dialog, &secret, EPasswordPanel::Medium, buttons->okButton);
/// // in the dialog's accept(): if (panel->accept()) QDialog::accept();   // secret now holds it
/// \endcode
class COMMON_GUI_EXPORT EPasswordPanel : public QWidget
{
    Q_OBJECT
public:
    /// The levels, ordered.
    enum Strength { Zero = 0, Low = 1, Medium = 2, High = 3 };

    /// \a password (may be null) pre-fills both fields and receives the accepted password;
    /// \a okWidget (may be null) follows the password's strength against \a minimum.
    EPasswordPanel(QWidget* parent, QString* password, EPasswordPanel::Strength minimum, QWidget* okWidget);

    /// Checks the entry: a mismatch, then a password below the minimum, each reported in a message
    /// box (false, nothing stored). Otherwise stores the password into the caller's variable; true.
    bool accept();
    /// The text of the password field.
    QString getPassword() const;
    /// Puts \a s into both fields.
    void setPassword(const QString& s);
    /// Empties both fields.
    void clearPassword();
    /// Replaces the password's caption; the three captions stay aligned.
    void setPasswordPrompt(const QString& text);

public slots:
    /// Unmasks both fields while the box is checked (masks them when not) and starts the countdown.
    void showPassword();
    /// One step of the countdown: shows the seconds left in the box's caption, or unchecks the box
    /// (masking both fields) when the count is over or the box was unchecked meanwhile.
    void hidePassword();

public:
    QString* password = nullptr;        ///< the caller's variable, or null
    EEditPair* passwordPair = nullptr;  ///< "Password:"
    EEditPair* confirmPair = nullptr;   ///< "Confirm password:"
    ECheckBox* showCheck = nullptr;     ///< "Show password"
    QLabel* strengthLabel = nullptr;    ///< the level, in its colour
    int countdown = 0;                  ///< seconds left before the fields are masked again

private:
    int minimumStrength() const;
};

/// Shows the strength of the text in a label (Zero and Low red, Medium dark yellow, High dark
/// green) and enables an OK widget only from the minimum level up. It never blocks typing.
class COMMON_GUI_EXPORT EPasswordPowerValidator : public QValidator
{
    Q_OBJECT
public:
    EPasswordPowerValidator(QObject* parent, QLabel* label, QWidget* okWidget, int minimum);

    /// Updates the label and the OK widget; always Acceptable, \a s and \a pos untouched.
    QValidator::State validate(QString& s, int& pos) const override;

    QLabel* label = nullptr;        ///< the strength label
    QWidget* okWidget = nullptr;    ///< enabled only from minimum up; may be null
    int minimum = 0;                ///< the minimum EPasswordPanel::Strength
};
