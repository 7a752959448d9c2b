// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QCheckBox>
#include <type_traits>

/// A check box with connectors for every toggle and for the user's clicks only.
///
/// \code
/// auto* wrap = new ECheckBox(QStringLiteral("&Wrap lines"), this);
/// wrap->setSlotForUserToggle(this, SLOT(wrapToggled(bool)));  // clicks and Space, not setChecked()
/// \endcode
class COMMON_GUI_EXPORT ECheckBox : public QCheckBox
{
public:
    explicit ECheckBox(const QString& text = QString(), QWidget* parent = nullptr);

    /// Every change of the state, setChecked() included. Returns whether the connection was made.
    bool setSlotForToggle(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForToggle(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QAbstractButton::toggled, receiver, slot));
    }
    /// The user's clicks only. Returns whether the connection was made.
    bool setSlotForUserToggle(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserToggle(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QAbstractButton::clicked, receiver, slot));
    }
};
