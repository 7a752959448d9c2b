// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QSpinBox>
#include <type_traits>

/// A spin box that tells the user's changes from values set by code.
///
/// \code
/// auto* port = new ESpinBox(1, 65535, 1, this);
/// port->setValue(443);                                       // raises valueChanged only
/// port->setSlotForUserChangeValue(this, SLOT(portEdited())); // typing, arrows, wheel
/// \endcode
class COMMON_GUI_EXPORT ESpinBox : public QSpinBox
{
    Q_OBJECT
public:
    explicit ESpinBox(QWidget* parent = nullptr);
    /// A box with the range \a min..\a max stepping by \a step.
    ESpinBox(int min, int max, int step, QWidget* parent = nullptr);

    /// Every change of the value. Returns whether the connection was made.
    bool setSlotForChangeValue(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeValue(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, qOverload<int>(&QSpinBox::valueChanged), receiver, slot));
    }
    /// Changes not made through setValue(). Returns whether the connection was made.
    bool setSlotForUserChangeValue(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserChangeValue(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &ESpinBox::userChanged, receiver, slot));
    }

public slots:
    /// Sets the value without a user change.
    /// \note QSpinBox::setValue() called directly counts as a user change.
    void setValue(int v);

signals:
    void userChanged();

private slots:
    void catchChanged();

private:
    bool settingValue = false;
};
