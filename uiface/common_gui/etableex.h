// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include "ecombobox.h"
#include "espinbox.h"
#include "etable.h"

#include <QColor>
#include <QItemDelegate>

class EEditBox;

/// An editable table model whose cells each have a kind (getCellType()): the application answers
/// the kind and the editors' questions and receives the edited values.
class COMMON_GUI_EXPORT ETableModelEx : public ETableModel
{
    Q_OBJECT
public:
    /// Cell kinds; a table's cell-type mask is the OR of the kinds that occur in it.
    enum CellType {
        Text = 1,       ///< not editable
        CheckBox = 2,   ///< user-checkable
        ComboBox = 4,   ///< editor open while the cell is current
        EditBox = 8,    ///< line-edit editor
        ProgressBar = 16,
        SpinBox = 32
    };

    /// \a titles holds one title pointer per column (not copied, not owned); it may be null.
    explicit ETableModelEx(int columns = 0, const QString** titles = nullptr, QObject* parent = nullptr);
    ~ETableModelEx() override;

    /// No rows and columns below a cell: a flat table, whatever ETableModel answers for a parent.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    int getColumnCount() const override;
    /// The column's title; empty for a column out of range or without a title.
    QString getHeader(int column) const override;

    /// The kind of the cell, one CellType value.
    virtual int getCellType(int row, int column) const = 0;
    virtual void setCheckBox(int row, int column, bool checked);
    virtual bool getCheckBox(int row, int column) const;
    /// Fills a new combo editor with the cell's choices.
    virtual void fillComboBox(int row, int column, EComboBox* combo);
    /// Takes over the value chosen in the combo editor.
    virtual void setComboBox(int row, int column, EComboBox* combo);
    virtual void setEditBox(int row, int column, EEditBox* edit, const QString& text);
    /// Sets up a new spin editor (range, step).
    virtual void fillSpinBox(int row, int column, ESpinBox* spin);
    /// Takes over a spin cell's new value, as decimal text.
    virtual void setSpinBox(int row, int column, ESpinBox* spin, const QString& text);
    /// The percentage of a progress cell; \a color receives the bar colour (invalid by default).
    virtual int getProgress(int row, int column, QColor& color) const;

    /// Check-box cells answer Qt::CheckStateRole from getCheckBox(); everything else as ETableModel.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Qt::CheckStateRole on a check-box cell goes to setCheckBox() and repaints the cell; anything
    /// else is refused.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    /// Check boxes are user-checkable; combo, edit and spin cells editable.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

protected:
    int columns = 0;
    const QString** titles = nullptr;
};

/// The delegate of ETableEx: creates, fills, reads back and paints each cell by its kind.
class COMMON_GUI_EXPORT ETableDelegateEx : public QItemDelegate
{
    Q_OBJECT
public:
    explicit ETableDelegateEx(QObject* parent = nullptr);
    ~ETableDelegateEx() override;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// Hands the editor's value to the model's set... operation for the kind and repaints the cell.
    /// \note Cells of other kinds get the model's value put back into the editor: nothing is written.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    /// Editors of every kind but plain text cover exactly the cell.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Draws a progress cell in \a rect: the bar in the model's colour with a border of half its
    /// brightness, white for the rest, and the percentage (clamped to 0 … 100) centred in black with
    /// a white shadow. The selection is not drawn.
    void paintProgressBar(int row, int column, QPainter* painter, const QRect& rect, const QModelIndex& index) const;
    /// Commits \a editor's value (emits commitData).
    void commitCell(QWidget* editor) const;
};

/// The combo editor of ETableEx: a choice made with the mouse is committed at once, stepping
/// through the choices with the keyboard is not.
class COMMON_GUI_EXPORT ETableComboBox : public EComboBox
{
    Q_OBJECT
public:
    ETableComboBox(const ETableDelegateEx* delegate, QWidget* parent = nullptr);
    ~ETableComboBox() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void onActivated(int index);

private:
    const ETableDelegateEx* delegate = nullptr;
    bool keyPress = false;
};

/// The spin editor of ETableEx: every change the user makes is committed at once.
class COMMON_GUI_EXPORT ETableSpinBox : public ESpinBox
{
    Q_OBJECT
public:
    ETableSpinBox(const ETableDelegateEx* delegate, QWidget* parent = nullptr);
    ~ETableSpinBox() override;

private slots:
    void onChanged();

private:
    const ETableDelegateEx* delegate = nullptr;
};

/// An ETable whose cells are edited by kind: check boxes, combo boxes (open while the cell is
/// current), edit boxes, spin boxes, and painted progress bars.
///
/// \code
/// auto* table = new ETableEx(ETableModelEx::CheckBox | ETableModelEx::ComboBox | ETableModelEx::ProgressBar,
///                            new JobModel(this), true, this);
/// table->setWideColumn(0, true);
/// \endcode
class COMMON_GUI_EXPORT ETableEx : public ETable
{
    Q_OBJECT
public:
    ETableEx(int cellTypeMask, ETableModelEx* model, bool ownModel, QWidget* parent = nullptr);
    ETableEx(int cellTypeMask, QWidget* parent = nullptr);
    ~ETableEx() override;

    /// Makes rows high enough for the editors of the kinds in \a mask (at least 20 with progress
    /// bars); a mask without editors or progress bars leaves the row height as it is.
    void adjustForCellTypeMask(int mask);

protected:
    /// Closes the combo editor of the cell left and opens one on a combo cell that becomes current.
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void install(int cellTypeMask);
    int cellType(const QModelIndex& index) const;
};
