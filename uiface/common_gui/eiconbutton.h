// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QPushButton>
#include <type_traits>

class QIcon;

/// A square push button that shows only an icon: its width is fixed to its height.
///
/// \code
/// auto* browse = new EIconButton(style()->standardIcon(QStyle::SP_DirOpenIcon), this);
/// browse->setSlotForClick(this, SLOT(browse()));
/// \endcode
class COMMON_GUI_EXPORT EIconButton : public QPushButton
{
public:
    explicit EIconButton(const QIcon& icon, QWidget* parent = nullptr);

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
