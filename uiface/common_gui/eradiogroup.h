// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "egroupbox.h"

#include <QButtonGroup>

#include <type_traits>

class QAbstractButton;
class QRadioButton;

/// A group box of exclusive radio buttons addressed by id.
///
/// \code
/// auto* direction = new ERadioGroup(LCQT__Direction);
/// direction->addButton(LCQT__Up, 0);
/// direction->addButton(LCQT__Down, 1);
/// direction->setId(1);                                    // does not reach the receiver below
/// direction->setSlotForUserToggle(this, SLOT(directionChosen(int)));
/// \endcode
class COMMON_GUI_EXPORT ERadioGroup : public EGroupBox
{
    Q_OBJECT
public:
    explicit ERadioGroup(const QString& title = QString(), QLayout* layout = nullptr,
                         QWidget* parent = nullptr);

    /// Creates a radio button, registers it under \a id and appends it to the box's layout.
    QRadioButton* addButton(const QString& text, int id);
    /// Registers an existing button under \a id only; the caller places it.
    void addButton(QRadioButton* b, int id);

    /// The id of the checked button, -1 when none is checked.
    int getId() const;
    /// Checks the button registered under \a id; an unknown id does nothing.
    void setId(int id);
    /// Enables or disables the button registered under \a id; an unknown id does nothing.
    void setEnabled(int id, bool enabled);
    using EGroupBox::setEnabled;
    /// The button registered under \a id, or null.
    QAbstractButton* getButton(int id) const;

    /// Connects the clicks of the user (never setId()) to \a slot, which receives the id:
    /// SLOT(chosen(int)). Returns whether the connection was made.
    bool setSlotForUserToggle(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserToggle(const Receiver* receiver, Slot slot)
    {
        return bool(QObject::connect(group, &QButtonGroup::idClicked, receiver, slot));
    }

    QButtonGroup* group = nullptr; ///< exclusive group, a child of the box
};
