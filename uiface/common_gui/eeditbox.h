// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QLineEdit>
#include <type_traits>

/// A line edit with connectors for every change of its text and for the user's edits only.
///
/// \code
/// auto* name = new EEditBox(this);
/// name->setSlotForUserChangeText(this, SLOT(nameEdited()));   // typing, never setText()
/// \endcode
class COMMON_GUI_EXPORT EEditBox : public QLineEdit
{
public:
    explicit EEditBox(QWidget* parent = nullptr);

    /// Every change, setText() included. Returns whether the connection was made.
    bool setSlotForChangeText(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeText(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QLineEdit::textChanged, receiver, slot));
    }
    /// Changes typed by the user only. Returns whether the connection was made.
    bool setSlotForUserChangeText(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserChangeText(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QLineEdit::textEdited, receiver, slot));
    }
};
