// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "ecombobox.h"
#include "epair.h"

/// A caption beside an EComboBox, given or new.
///
/// \code
/// auto* encoding = new EComboPair(LCQT__Encoding, this);
/// encoding->getComboBox()->addId(encodings, true);
/// encoding->fixWidth(160);                          // the combo and its list
/// \endcode
class COMMON_GUI_EXPORT EComboPair : public EPair
{
public:
    /// Installs \a combo as the field; the pair owns it from now on.
    EComboPair(EComboBox* combo, const QString& label, QWidget* parent = nullptr);
    /// Installs a new EComboBox.
    explicit EComboPair(const QString& label, QWidget* parent = nullptr);

    /// Fixes the width of the combo and of its pop-up list (EComboBox::fixWidth).
    void fixWidth(int w) override;

    /// The pair's field; null if setWidget() installed another kind of widget.
    EComboBox* getComboBox() const;
};

/// A caption beside an EComboState, the editable combo that remembers the texts entered into it.
/// The remembered list is kept under the class name of \a parent (the form) and \a name, so give
/// the pair its form as parent at construction.
///
/// \code
/// auto* what = new EComboStatePair(LCQT__Find_what, QStringLiteral("FindWhat"), this);
/// what->getComboState()->setSlotForActivateText(this, SLOT(findNext()));
/// \endcode
class COMMON_GUI_EXPORT EComboStatePair : public EComboPair
{
public:
    EComboStatePair(const QString& label, const QString& name, QWidget* parent = nullptr)
        : EComboPair(new EComboState(parent, name), label, parent)
    {
    }

    /// The pair's field; null if setWidget() installed another kind of widget.
    EComboState* getComboState() const { return dynamic_cast<EComboState*>(widget); }
};
