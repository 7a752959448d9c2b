// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QPushButton>
#include <type_traits>

/// A push button whose caption keeps one space from the frame on either side.
///
/// \code
/// auto* apply = new EButton(QStringLiteral("&Apply"), this, true);   // shows " &Apply "
/// apply->setSlotForClick(this, SLOT(apply()));
/// \endcode
class COMMON_GUI_EXPORT EButton : public QPushButton
{
public:
    /// Shows " " + \a text + " "; \a isDefault makes it the dialog's default button.
    explicit EButton(const QString& text, QWidget* parent = nullptr, bool isDefault = false);

    /// Returns whether the connection was made.
    bool setSlotForClick(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForClick(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QAbstractButton::clicked, receiver, slot));
    }
};
