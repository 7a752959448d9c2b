// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etableex.h"

#include "eeditbox.h"

#include <QHeaderView>
#include <QItemEditorFactory>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <memory>

// ---------------------------------------------------------------- ETableModelEx

ETableModelEx::ETableModelEx(int columns, const QString** titles, QObject* parent)
    : ETableModel(parent)
    , columns(columns)
    , titles(titles)
{
}

ETableModelEx::~ETableModelEx() = default;

int ETableModelEx::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : getRowCount();
}

int ETableModelEx::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : getColumnCount();
}

int ETableModelEx::getColumnCount() const
{
    return columns;
}

QString ETableModelEx::getHeader(int column) const
{
    if (!titles || column < 0 || column >= columns || !titles[column])
        return QString();
    return *titles[column];
}

void ETableModelEx::setCheckBox(int, int, bool)
{
}

bool ETableModelEx::getCheckBox(int, int) const
{
    return false;
}

void ETableModelEx::fillComboBox(int, int, EComboBox*)
{
}

void ETableModelEx::setComboBox(int, int, EComboBox*)
{
}

void ETableModelEx::setEditBox(int, int, EEditBox*, const QString&)
{
}

void ETableModelEx::fillSpinBox(int, int, ESpinBox*)
{
}

void ETableModelEx::setSpinBox(int, int, ESpinBox*, const QString&)
{
}

int ETableModelEx::getProgress(int, int, QColor&) const
{
    return 0;
}

QVariant ETableModelEx::data(const QModelIndex& index, int role) const
{
    if (role == Qt::CheckStateRole) {
        if (!index.isValid())
            return QVariant();
        if (getCellType(index.row(), index.column()) == CheckBox)
            return getCheckBox(index.row(), index.column()) ? Qt::Checked : Qt::Unchecked;
    }
    return ETableModel::data(index, role);
}

bool ETableModelEx::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role == Qt::CheckStateRole && index.isValid() && getCellType(index.row(), index.column()) == CheckBox) {
        setCheckBox(index.row(), index.column(), value.toBool());
        emit dataChanged(index, index);
        return true;
    }
    return QAbstractItemModel::setData(index, value, role);
}

Qt::ItemFlags ETableModelEx::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsEnabled;
    Qt::ItemFlags f = QAbstractItemModel::flags(index);
    const int type = getCellType(index.row(), index.column());
    if (type == Text)
        return f;
    if (type == CheckBox)
        return f | Qt::ItemIsUserCheckable;
    if (type & (ComboBox | EditBox | SpinBox))
        f |= Qt::ItemIsEditable;
    return f;
}

// ---------------------------------------------------------------- ETableDelegateEx

namespace {

// Text cells are edited in an EEditBox, so the model's setEditBox receives the type it names.
class EditBoxCreator : public QItemEditorCreatorBase
{
public:
    QWidget* createWidget(QWidget* parent) const override
    {
        auto* edit = new EEditBox(parent);
        edit->setFrame(false);
        return edit;
    }
    QByteArray valuePropertyName() const override { return QByteArrayLiteral("text"); }
};

const QItemEditorFactory* editorFactory()
{
    static const std::unique_ptr<QItemEditorFactory> factory = [] {
        auto* f = new QItemEditorFactory;
        f->registerEditor(QMetaType::QString, new EditBoxCreator);
        return std::unique_ptr<QItemEditorFactory>(f);
    }();
    return factory.get();
}

int kindOf(const QModelIndex& index, const ETableModelEx** model)
{
    *model = qobject_cast<const ETableModelEx*>(index.model());
    return *model && index.isValid() ? (*model)->getCellType(index.row(), index.column()) : 0;
}

} // namespace

ETableDelegateEx::ETableDelegateEx(QObject* parent)
    : QItemDelegate(parent)
{
    setItemEditorFactory(const_cast<QItemEditorFactory*>(editorFactory()));
}

ETableDelegateEx::~ETableDelegateEx() = default;

QWidget* ETableDelegateEx::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
    const ETableModelEx* model = nullptr;
    const int type = kindOf(index, &model);
    auto* m = const_cast<ETableModelEx*>(model);
    if (type == ETableModelEx::ComboBox) {
        auto* combo = new ETableComboBox(this, parent);
        combo->setFrame(false);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
        m->fillComboBox(index.row(), index.column(), combo);
        return combo;
    }
    if (type == ETableModelEx::SpinBox) {
        auto* spin = new ETableSpinBox(this, parent);
        m->fillSpinBox(index.row(), index.column(), spin);
        return spin;
    }
    return QItemDelegate::createEditor(parent, option, index);
}

void ETableDelegateEx::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const ETableModelEx* model = nullptr;
    const int type = kindOf(index, &model);
    const QString text = index.data(Qt::EditRole).toString();
    if (type == ETableModelEx::ComboBox) {
        if (auto* combo = dynamic_cast<EComboBox*>(editor)) {
            combo->setCurrentText(text);
            return;
        }
    } else if (type == ETableModelEx::SpinBox) {
        if (auto* spin = qobject_cast<ESpinBox*>(editor)) {
            spin->setValue(text.toInt()); // 0 when not a number
            return;
        }
    }
    QItemDelegate::setEditorData(editor, index);
}

void ETableDelegateEx::setModelData(QWidget* editor, QAbstractItemModel* abstractModel, const QModelIndex& index) const
{
    const ETableModelEx* constModel = nullptr;
    const int type = kindOf(index, &constModel);
    auto* model = const_cast<ETableModelEx*>(constModel);
    if (!model || model != abstractModel) {
        QItemDelegate::setModelData(editor, abstractModel, index);
        return;
    }
    const int row = index.row();
    const int column = index.column();
    auto* edit = dynamic_cast<EEditBox*>(editor);
    auto* spin = qobject_cast<ESpinBox*>(editor);
    auto* combo = dynamic_cast<EComboBox*>(editor);
    if (type == ETableModelEx::EditBox && edit) {
        model->setEditBox(row, column, edit, edit->text());
    } else if (type == ETableModelEx::SpinBox && spin) {
        model->setSpinBox(row, column, spin, QString::number(spin->value()));
    } else if (type == ETableModelEx::ComboBox && combo) {
        model->setData(index, combo->currentText(), Qt::EditRole);
        model->setComboBox(row, column, combo);
    } else {
        // Other kinds write nothing back: the editor is only refreshed from the model.
        QItemDelegate::setEditorData(editor, index);
    }
    const QModelIndex cell = model->index(row, column);
    emit model->dataChanged(cell, cell);
}

void ETableDelegateEx::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const
{
    const ETableModelEx* model = nullptr;
    if (kindOf(index, &model) == ETableModelEx::Text)
        QItemDelegate::updateEditorGeometry(editor, option, index);
    else
        editor->setGeometry(option.rect);
}

void ETableDelegateEx::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const ETableModelEx* model = nullptr;
    if (kindOf(index, &model) == ETableModelEx::ProgressBar)
        paintProgressBar(index.row(), index.column(), painter, option.rect, index);
    else
        QItemDelegate::paint(painter, option, index);
}

void ETableDelegateEx::paintProgressBar(int row, int column, QPainter* painter, const QRect& rect,
                                        const QModelIndex& index) const
{
    const auto* model = qobject_cast<const ETableModelEx*>(index.model());
    if (!model || !painter)
        return;
    QColor colour;
    int percent = model->getProgress(row, column, colour);
    const int x = rect.left();
    const int w = rect.right() - rect.left();
    const int top = rect.top();
    const int h = rect.bottom() - rect.top();
    int filled = 0;
    if (percent < 0) {
        percent = 0;
    } else {
        percent = std::min(percent, 100);
        filled = w * percent / 100;
    }
    if (w <= 0 || h < 1)
        return;
    const QColor black(0, 0, 0, 255);
    const QColor white(255, 255, 255, 255);
    const QColor border(colour.red() / 2, colour.green() / 2, colour.blue() / 2, 255);

    painter->save();
    painter->setPen(border);
    painter->setBrush(QBrush(colour, Qt::SolidPattern));
    painter->drawRect(x, top, filled, h);
    if (filled < w) {
        painter->setBrush(QBrush(white, Qt::SolidPattern));
        painter->drawRect(x + filled, top, w - filled, h);
    }
    const QString text = QString::number(percent) + QLatin1Char('%');
    painter->setPen(white);
    painter->drawText(QRect(x + 1, top + 1, w - 1, h - 1), Qt::AlignHCenter | Qt::AlignVCenter, text);
    painter->setPen(black);
    painter->drawText(QRect(x, top, w - 1, h - 1), Qt::AlignHCenter | Qt::AlignVCenter, text);
    painter->restore();
}

void ETableDelegateEx::commitCell(QWidget* editor) const
{
    emit const_cast<ETableDelegateEx*>(this)->commitData(editor);
}

// ---------------------------------------------------------------- ETableComboBox

ETableComboBox::ETableComboBox(const ETableDelegateEx* delegate, QWidget* parent)
    : EComboBox(parent)
    , delegate(delegate)
{
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &ETableComboBox::onActivated);
}

ETableComboBox::~ETableComboBox() = default;

void ETableComboBox::onActivated(int)
{
    if (!keyPress && delegate)
        delegate->commitCell(this);
}

void ETableComboBox::keyPressEvent(QKeyEvent* event)
{
    keyPress = true;
    QComboBox::keyPressEvent(event);
    keyPress = false;
}

// ---------------------------------------------------------------- ETableSpinBox

ETableSpinBox::ETableSpinBox(const ETableDelegateEx* delegate, QWidget* parent)
    : ESpinBox(parent)
    , delegate(delegate)
{
    setSlotForUserChangeValue(this, SLOT(onChanged()));
}

ETableSpinBox::~ETableSpinBox() = default;

void ETableSpinBox::onChanged()
{
    if (delegate)
        delegate->commitCell(this);
}

// ---------------------------------------------------------------- ETableEx

ETableEx::ETableEx(int cellTypeMask, ETableModelEx* model, bool ownModel, QWidget* parent)
    : ETable(model, ownModel, parent)
{
    install(cellTypeMask);
}

ETableEx::ETableEx(int cellTypeMask, QWidget* parent)
    : ETable(parent)
{
    install(cellTypeMask);
}

ETableEx::~ETableEx() = default;

void ETableEx::install(int cellTypeMask)
{
    adjustForCellTypeMask(cellTypeMask);
    setItemDelegate(new ETableDelegateEx(this));
}

void ETableEx::adjustForCellTypeMask(int mask)
{
    int height = -1;
    auto measure = [&height](QWidget* w) {
        height = std::max(height, w->sizeHint().height());
        delete w;
    };
    if (mask & ETableModelEx::ComboBox)
        measure(new EComboBox);
    if (mask & ETableModelEx::EditBox)
        measure(new EEditBox);
    if (mask & ETableModelEx::SpinBox)
        measure(new ESpinBox);
    if (mask & ETableModelEx::ProgressBar)
        height = std::max(height, 20);
    else if (height < 1)
        return;
    // The table keeps rows at least one text line high; bars and editors may ask for less.
    if (height < verticalHeader()->minimumSectionSize())
        verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

int ETableEx::cellType(const QModelIndex& index) const
{
    const ETableModelEx* model = nullptr;
    return index.model() == this->model() ? kindOf(index, &model) : 0;
}

void ETableEx::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    if (previous.isValid() && cellType(previous) == ETableModelEx::ComboBox)
        closePersistentEditor(previous);
    if (current.isValid() && cellType(current) == ETableModelEx::ComboBox)
        openPersistentEditor(current);
    ETable::currentChanged(current, previous);
}
