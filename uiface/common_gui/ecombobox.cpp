// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "ecombobox.h"

#include "ebox.h"
#include "esettings.h"

#include <QKeyEvent>
#include <QMetaObject>
#include <QResizeEvent>

#include <algorithm>
#include <cstdlib>

namespace {

// qsort comparison of two EBoxItem* by text, ignoring case.
int ii_compare(const void* a, const void* b)
{
    const EBoxItem* first = *static_cast<EBoxItem* const*>(a);
    const EBoxItem* second = *static_cast<EBoxItem* const*>(b);
    return QString::compare(first->text(), second->text(), Qt::CaseInsensitive);
}

const Qt::MatchFlags exactText = Qt::MatchExactly | Qt::MatchCaseSensitive;

// More than this many remembered texts are never read or written.
constexpr int rememberedLimit = 64;

} // namespace

// ---------------------------------------------------------------- EEnumerator

EEnumerator::~EEnumerator() = default;

// ---------------------------------------------------------------- EComboBoxListView

EComboBoxListView::EComboBoxListView(QWidget* parent)
    : QListView(parent)
{
}

EComboBoxListView::~EComboBoxListView() = default;

// ---------------------------------------------------------------- EComboBox

EComboBox::EComboBox(QWidget* parent)
    : QComboBox(parent)
{
    listView = new EComboBoxListView;
    listView->setObjectName(QStringLiteral("comboList"));
    listView->setWordWrap(false);
    listView->setWrapping(false);
    setView(listView);
    // After setView, which turns the bar off: long entries scroll sideways.
    listView->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    listModel = new EBoxModel(listView);
    setModel(listModel);
    listView->installEventFilter(this);
}

EComboBox::~EComboBox()
{
    listView->removeEventFilter(this);
    delete listModel;
}

void EComboBox::fixWidth(int w)
{
    w = std::max(w, 0);
    setFixedWidth(w);
    listView->setFixedWidth(w);
    listView->updateGeometries();
}

void EComboBox::showPopup()
{
    QComboBox::showPopup();
    // Some styles widen the popup to the longest entry; the list keeps the combo's width instead,
    // plus whatever frame the popup needs around it.
    QWidget* popup = listView->window();
    if (popup == window())
        return;
    const int target = std::max(width(), popup->minimumSizeHint().width());
    if (popup->width() <= target)
        return;
    const QPoint origin = mapToGlobal(QPoint(0, 0));
    const int left = layoutDirection() == Qt::RightToLeft ? origin.x() + width() - target : origin.x();
    popup->setGeometry(left, popup->y(), target, popup->height());
}

void EComboBox::setCurrentIndex(int i)
{
    index = i;
    QComboBox::setCurrentIndex(i);
}

int EComboBox::setCurrentId(int id)
{
    const int i = listModel->findId(id);
    setCurrentIndex(i);
    return i;
}

int EComboBox::setCurrentData(const void* data)
{
    const int i = listModel->findData(data);
    if (i >= 0)
        setCurrentIndex(i);
    return i;
}

int EComboBox::setCurrentText(const QString& text)
{
    const int i = findText(text, exactText);
    if (i < 0 && isEditable()) {
        QComboBox::setEditText(text);
        return -1;
    }
    setCurrentIndex(i);
    return i;
}

int EComboBox::getId(int i) const
{
    const EBoxItem* item = listModel->item(i);
    return item ? item->id() : -1;
}

void EComboBox::setId(int i, int id)
{
    if (EBoxItem* item = listModel->item(i))
        item->setId(id);
}

void* EComboBox::getData(int i) const
{
    const EBoxItem* item = listModel->item(i);
    return item ? const_cast<void*>(item->data()) : nullptr;
}

void EComboBox::setData(int i, void* data)
{
    if (EBoxItem* item = listModel->item(i))
        item->setData(data);
}

int EComboBox::getCurrentId() const
{
    return currentIndex() < 0 ? -1 : getId(currentIndex());
}

void* EComboBox::getCurrentData() const
{
    return currentIndex() < 0 ? nullptr : getData(currentIndex());
}

void EComboBox::add(EEnumerator& e, bool sort)
{
    fill(e, sort, false);
}

void EComboBox::addId(EEnumerator& e, bool sort)
{
    fill(e, sort, true);
}

void EComboBox::fill(EEnumerator& e, bool sort, bool ids)
{
    beginChanges();
    ObjectVector<EBoxItem> fresh;
    while (e.next()) {
        // Enumerators may compute lazily: ask in the documented order, icon, text, word.
        const QPixmap* icon = e.getIcon();
        const QString text = e.getText();
        EBoxItem* item = ids ? new EBoxItem(icon, text, e.getId()) : new EBoxItem(icon, text, e.getData());
        if (sort)
            fresh.append(item);
        else
            listModel->items().append(item);
    }
    // Only the new entries are sorted: those already there keep their places in front.
    if (fresh.count() >= 2)
        std::qsort(fresh.data(), size_t(fresh.count()), sizeof(EBoxItem*), ii_compare);
    fresh.moveAllTo(listModel->items());
    endChanges();
}

void EComboBox::beginChanges()
{
    index = -2;
    listModel->beginChanges();
}

void EComboBox::endChanges()
{
    if (listModel->changeDepth() == 0) // a stray call must not touch the current entry
        return;
    listModel->endChanges();
    // The reset forgets the current entry; bring back the one asked for inside the batch.
    if (listModel->changeDepth() == 0 && index != -2)
        setCurrentIndex(index);
}

bool EComboBox::setSlotForChangeSelection(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    return connect(this, SIGNAL(currentIndexChanged(int)), receiver, slot);
}

bool EComboBox::setSlotForUserChangeSelection(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    return connect(this, SIGNAL(activated(int)), receiver, slot);
}

bool EComboBox::setSlotForChangeText(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    return connect(this, SIGNAL(editTextChanged(const QString&)), receiver, slot);
}

bool EComboBox::eventFilter(QObject* watched, QEvent* event)
{
    // Taking Escape as a shortcut override keeps it from the dialog's Escape shortcut: it closes
    // the list, and only a second Escape closes the dialog.
    if (watched == listView && event->type() == QEvent::ShortcutOverride
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        hidePopup();
        event->accept();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

void EComboBox::resizeEvent(QResizeEvent* event)
{
    QComboBox::resizeEvent(event);
    // Long entries are cut by the list rather than widening it past the combo.
    listView->setFixedWidth(event->size().width());
    listView->updateGeometries();
}

// ---------------------------------------------------------------- EComboState

EComboState::EComboState(QWidget* owner, const QString& name)
    : EComboBox(nullptr)
    , group(QStringLiteral("EComboStatePair_")
            + (owner ? QString::fromLatin1(owner->metaObject()->className()) : QString()))
    , name(name)
{
    setMaxCount(rememberedLimit);
    setEditable(true);
    // Enter is ours (activateText); Qt must not insert texts behind our back either.
    setInsertPolicy(QComboBox::NoInsert);

    // Without a name there is no array of our own: an empty array name would address the
    // whole group and wipe the lists of the owner's other combos.
    if (name.isEmpty())
        return;
    QStringList texts;
    {
        ESettings s(group);
        ESettingsReadArray array(s, name);
        const int size = std::min(array.getSize(), rememberedLimit);
        while (array.getIndex() < size) {
            const QVariant v = array.read();
            // One damaged element (missing, a list, bytes) must not cost the whole history: it is
            // skipped, and the destructor writes back only what was kept.
            if (v.userType() != QMetaType::QString)
                continue;
            const QString text = v.toString();
            if (!text.isEmpty() && !texts.contains(text))
                texts << text;
        }
    }
    for (const QString& text : qAsConst(texts))
        boxModel()->append(new EBoxItem(nullptr, text, 0));
}

EComboState::~EComboState()
{
    if (name.isEmpty())
        return;
    ESettings s(group);
    ESettingsWriteArray array(s, name);
    const int n = std::min(count(), rememberedLimit);
    for (int i = 0; i < n; ++i)
        array.write(itemText(i));
}

void EComboState::setEditText(const QString& text)
{
    if (maxCount() == 0 || text.isEmpty()) {
        QComboBox::setEditText(text);
        return;
    }
    const int p = findText(text, exactText);
    if (p > 0) {
        boxModel()->remove(p);
        boxModel()->insert(0, new EBoxItem(nullptr, text, 0));
    } else if (p < 0) {
        boxModel()->insert(0, new EBoxItem(nullptr, text, 0));
        while (count() > maxCount())
            boxModel()->remove(count() - 1);
    }
    setCurrentIndex(0);
}

bool EComboState::setSlotForActivateText(QObject* receiver, const char* slot)
{
    if (!receiver || !slot)
        return false;
    return connect(this, SIGNAL(activateText()), receiver, slot);
}

void EComboState::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit activateText();
        return;
    }
    QComboBox::keyPressEvent(event);
}

void EComboState::showEvent(QShowEvent* event)
{
    QComboBox::showEvent(event);
}
