// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QBoxLayout>

/// A QBoxLayout built with the house spacing and margins. The subclasses below fix them for the
/// four uses of the library: nested rows, nested columns, a dialog's root and a group box.
///
/// \code
/// auto* root = new EVRootBoxLayout(dialog);          // margins 8, spacing 8
/// auto* row = new EHBoxLayout(nullptr);              // margins 0, spacing 8
/// root->addLayout(row);
/// \endcode
class COMMON_GUI_EXPORT EBoxLayout : public QBoxLayout
{
public:
    /// The same \a margin on all four sides.
    EBoxLayout(QBoxLayout::Direction dir, QWidget* parent, int spacing, int margin);
    EBoxLayout(QBoxLayout::Direction dir, QWidget* parent, int spacing, int left, int top, int right,
               int bottom);

    /// Removes and deletes every item, nested layout and widget of the layout, at once
    /// (not deleteLater). The layout stays installed, empty.
    void clear();

    /// clear() for any layout, used for the nested layouts too.
    static void clearLayout(QLayout* layout);
};

/// A nested row: left to right, spacing 8, no margins.
class COMMON_GUI_EXPORT EHBoxLayout : public EBoxLayout
{
public:
    explicit EHBoxLayout(QWidget* parent = nullptr);
};

/// A nested column: top to bottom, spacing 8, no margins unless asked for.
class COMMON_GUI_EXPORT EVBoxLayout : public EBoxLayout
{
public:
    explicit EVBoxLayout(QWidget* parent = nullptr, int spacing = 8, int margin = 0);
};

/// The root layout of a dialog: top to bottom, spacing 8, margins 8.
class COMMON_GUI_EXPORT EVRootBoxLayout : public EBoxLayout
{
public:
    explicit EVRootBoxLayout(QWidget* parent = nullptr);
};

/// The layout of a group box: top to bottom, spacing 8, margins 8, 4, 8, 8 (the title sits above
/// the smaller top margin).
class COMMON_GUI_EXPORT EVGroupBoxLayout : public EBoxLayout
{
public:
    explicit EVGroupBoxLayout(QWidget* parent = nullptr);
};
