// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QTimeEdit>
#include <type_traits>

/// A time-of-day editor that tells the user's changes from values set by code.
///
/// \code
/// auto* start = new ETimeBox(this);
/// start->setTime(8 * 3600 + 30 * 60);                         // 08:30:00, not a user change
/// start->setSlotForUserChangeValue(this, SLOT(startEdited()));
/// \endcode
class COMMON_GUI_EXPORT ETimeBox : public QTimeEdit
{
    Q_OBJECT
public:
    explicit ETimeBox(QWidget* parent = nullptr);

    /// Every change of the value. Returns whether the connection was made.
    bool setSlotForChangeValue(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeValue(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QDateTimeEdit::dateTimeChanged, receiver, slot));
    }
    /// Changes not made through setTime(). Returns whether the connection was made.
    bool setSlotForUserChangeValue(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserChangeValue(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &ETimeBox::userChanged, receiver, slot));
    }

public slots:
    /// Sets the time without a user change.
    void setTime(const QTime& t);
    /// Shows the time \a seconds after midnight, wrapping at 24 hours, without a user change.
    void setTime(int seconds);

signals:
    void userChanged();

private slots:
    void catchChanged();

private:
    bool settingValue = false;
};
