// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include "etable.h"

class ETableWidgetModel;
class QPixmap;

/// A table that stores its cells itself, for simple lists of values filled cell by cell. With no
/// titles it is a two-column "Parameter" / "Value" table.
///
/// \code
/// auto* table = new ETableWidget(nullptr, 2, nullptr);   // "Parameter", "Value"
/// ETableWidgetModel* model = table->widgetModel();
/// model->addRows(2);
/// table->setCell(0, 0, QStringLiteral("Address"), nullptr, nullptr);
/// table->setCell(0, 1, QStringLiteral("10.0.0.1"), nullptr, nullptr);
/// model->cell(0, 1)->setToolTip(QStringLiteral("Gateway of the lab network"));
/// layout->addWidget(table);                                // the layout gives it its parent
/// \endcode
class COMMON_GUI_EXPORT ETableWidget : public ETable
{
    Q_OBJECT
public:
    /// A table with \a columns columns titled by \a titles (one pointer per column, kept, not
    /// copied; "Parameter" and "Value" when null, no titles for a null with more than 2 columns).
    /// With exactly 2 columns the second one takes the
    /// free width and the first one follows its contents.
    /// \note \a parent is not used: the widget gets its parent from the layout or the caller.
    ETableWidget(QWidget* parent, unsigned int columns, const QString** titles);
    ~ETableWidget() override;

    /// The model the table owns.
    ETableWidgetModel* widgetModel() const;

    /// Replaces the model by an empty one with these columns and titles (null titles stay null).
    void resetModel(unsigned int columns, const QString** titles);
    /// Sets the text, icon and data of an existing cell and keeps its tool tip. No notification is
    /// sent: fill before showing, or refresh the view. A cell that does not exist is ignored.
    void setCell(int row, int column, const QString& text, QPixmap* icon, void* data);
    /// The same, taking the text over without copying it.
    void setCell(int row, int column, QString&& text, QPixmap* icon, void* data);
};
