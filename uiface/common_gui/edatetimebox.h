// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QDateTimeEdit>
#include <type_traits>

/// A date-time editor that tells the user's changes (typing, arrows, wheel, calendar) from values
/// set by code.
///
/// \code
/// auto* until = new EDateTimeBox(this);
/// until->setDateTime(long(certificate.notAfter));             // Unix time, shown in local time
/// until->setSlotForUserChangeValue(this, SLOT(untilEdited()));
/// \endcode
class COMMON_GUI_EXPORT EDateTimeBox : public QDateTimeEdit
{
    Q_OBJECT
public:
    explicit EDateTimeBox(QWidget* parent = nullptr);

    /// Every change of the value. Returns whether the connection was made.
    bool setSlotForChangeValue(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeValue(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &QDateTimeEdit::dateTimeChanged, receiver, slot));
    }
    /// Changes not made through setDateTime() or setCurrentDateTime().
    bool setSlotForUserChangeValue(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserChangeValue(const Receiver* receiver, Slot slot)
    {
        return bool(connect(this, &EDateTimeBox::userChanged, receiver, slot));
    }

public slots:
    /// Sets the value without a user change.
    void setDateTime(const QDateTime& dt);
    /// Shows the Unix time \a t (seconds) in local time, without a user change.
    void setDateTime(long t);
    /// Shows the current time, at whole-second resolution, without a user change.
    void setCurrentDateTime();

signals:
    void userChanged();

private slots:
    void catchChanged();

private:
    bool settingValue = false;
};
