// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QBoxLayout>
#include <QSize>
#include <QString>
#include <QWidget>

class EBind;
class QLabel;

/// A caption and one input widget in one small widget. Pairs of one form can be bound so that all
/// their captions take the size of the largest one and the fields line up without a grid.
///
/// \code
/// auto* name = new EEditPair(QStringLiteral("&Name:"), this);
/// auto* port = new ESpinPair(QStringLiteral("&Port:"), 1, 65535, 1, this);
/// name->bind(port);                   // both captions now have the same fixed size
/// \endcode
class COMMON_GUI_EXPORT EPair : public QWidget
{
public:
    /// Builds the caption and the pair's layout. With QBoxLayout::LeftToRight the caption sits
    /// right-aligned 4 pixels left of the field; any other direction puts it 8 pixels away,
    /// aligned to the top left.
    explicit EPair(QWidget* parent = nullptr, QBoxLayout::Direction dir = QBoxLayout::LeftToRight);
    ~EPair() override;

    QString getLabelText() const;
    /// Sets the caption and re-sizes it: the whole group when bound, else to its own size hint.
    void setLabelText(const QString& text);

    /// Installs \a w as the input widget (stretch 1) and the caption's buddy. The previous widget
    /// leaves the layout and is deleted when \a deleteOld is true; installing the current widget
    /// again changes nothing.
    void setWidget(QWidget* w, bool deleteOld);

    /// Puts this pair and \a other into one alignment group, merging whole groups, and gives every
    /// caption of the group the common size. A null \a other does nothing.
    void bind(EPair* other);

    /// True exactly for a pair built with QBoxLayout::LeftToRight.
    /// \note The word describes the column of such pairs in a form, not the pair itself.
    bool isVertical() const;

    /// Shows the pair when \a b is true, hides it otherwise; the caption is not touched.
    void setLabelIgnored(bool b);

    /// The common caption size of the pair's group; an empty size when the pair is not bound.
    QSize getGreatestCommonSize();

    /// Fixes the input widget's width to \a w; the field stays at the start of its column.
    virtual void fixWidth(int w);

    QLabel* label = nullptr;     ///< the caption, a child of the pair
    QWidget* widget = nullptr;   ///< the input widget; null until setWidget()
    /// The alignment group, or null. Kept by EBind; named apart from bind() which C++ would not
    /// allow beside a member of the same name.
    EBind* bindGroup = nullptr;

protected:
    /// Keeps a narrower field at the start of its column, so it stays under the captions bound to it.
    void keepFieldAtStart();
};
