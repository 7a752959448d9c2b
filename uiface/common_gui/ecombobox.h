// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QComboBox>
#include <QListView>
#include <QString>
#include <type_traits>

class EBoxModel;
class QPixmap;

/// The iterator through which callers hand lists of values to combo boxes and tree cells.
/// It starts before its first element: call next() first and read the element only after it
/// returned true. The library provides no implementation.
class COMMON_GUI_EXPORT EEnumerator
{
public:
    virtual ~EEnumerator();
    /// Icon of the current element, or null (not owned; must outlive the entries made from it).
    virtual const QPixmap* getIcon() = 0;
    virtual QString getText() = 0;
    /// The data word of the current element; EComboBox::add stores it.
    virtual void* getData() = 0;
    /// The id of the current element; EComboBox::addId stores it.
    virtual int getId() = 0;
    /// Advances to the next element; false when there is none.
    virtual bool next() = 0;
    /// A text that stands for the whole sequence (a tree cell holding several values shows it).
    virtual QString getListText() = 0;
};

/// The popup list of every EComboBox.
class COMMON_GUI_EXPORT EComboBoxListView : public QListView
{
public:
    explicit EComboBoxListView(QWidget* parent = nullptr);
    ~EComboBoxListView() override;

private:
    friend class EComboBox;
};

/// A drop-down list whose entries (EBoxItem: icon, text, id-or-data word) live in an EBoxModel,
/// selected by id or data instead of by position. The popup is never wider than the combo, and
/// Escape in the open popup closes only the popup, not the dialog around it.
///
/// \code
/// auto* protocol = new EComboBox(this);
/// ProtocolEnumerator protocols;            // an EEnumerator of the application
/// protocol->addId(protocols, true);        // sorted by text, one model reset
/// protocol->setCurrentId(443);             // -1 and no entry current when 443 is unknown
/// protocol->setSlotForUserChangeSelection(this, SLOT(protocolChosen(int)));
/// \endcode
class COMMON_GUI_EXPORT EComboBox : public QComboBox
{
public:
    explicit EComboBox(QWidget* parent = nullptr);
    ~EComboBox() override;

    /// The entries' model (owned by the combo).
    EBoxModel* boxModel() const { return listModel; }

    /// Fixes the width of the combo and of its popup list to \a w.
    void fixWidth(int w);
    /// Opens the list no wider than the combo: long entries are cut, not shown whole.
    void showPopup() override;
    /// Makes entry \a i current and remembers it, so that a change batch keeps it.
    void setCurrentIndex(int i);
    /// Makes the first entry with id \a id current and returns its position. An unknown id
    /// returns -1 and leaves no entry current.
    int setCurrentId(int id);
    /// Makes the first entry with data \a data current and returns its position. Unknown data
    /// returns -1 and keeps the current entry (unlike setCurrentId, on purpose).
    int setCurrentData(const void* data);
    /// Makes the entry whose text is exactly \a text (case-sensitive) current and returns its
    /// position. An unknown text on an editable combo is only put into the edit field (-1); on a
    /// fixed combo it leaves no entry current (-1).
    int setCurrentText(const QString& text);

    /// The id / data word of entry \a i; -1 / null for a position that does not exist.
    int getId(int i) const;
    void setId(int i, int id);
    void* getData(int i) const;
    void setData(int i, void* data);
    /// -1 / null when no entry is current.
    int getCurrentId() const;
    void* getCurrentData() const;

    /// Appends the enumerator's elements with their data words, sorted by text (case-insensitive)
    /// when \a sort; entries already there stay in front. One model reset.
    void add(EEnumerator& e, bool sort);
    /// The same with the elements' ids.
    void addId(EEnumerator& e, bool sort);

    /// Opens a change batch: no row notifications until endChanges(), which resets the model once.
    void beginChanges();
    /// Closes the batch; an entry made current inside it is current again after the reset.
    void endChanges();

    /// currentIndexChanged(int): every change of the current entry.
    bool setSlotForChangeSelection(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeSelection(const Receiver* receiver, Slot slot)
    {
        if (!receiver)
            return false;
        return bool(connect(this, qOverload<int>(&QComboBox::currentIndexChanged), receiver, slot));
    }
    /// activated(int): changes the user made only.
    bool setSlotForUserChangeSelection(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForUserChangeSelection(const Receiver* receiver, Slot slot)
    {
        if (!receiver)
            return false;
        return bool(connect(this, qOverload<int>(&QComboBox::activated), receiver, slot));
    }
    /// editTextChanged(const QString&).
    bool setSlotForChangeText(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForChangeText(const Receiver* receiver, Slot slot)
    {
        if (!receiver)
            return false;
        return bool(connect(this, &QComboBox::editTextChanged, receiver, slot));
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fill(EEnumerator& e, bool sort, bool ids);

    int index = -1; // -2 while a batch is open and nothing was requested in it
    EBoxModel* listModel = nullptr;
    EComboBoxListView* listView = nullptr;
};

/// An editable combo that remembers the texts entered in it, most recent first, without
/// duplicates, at most 64, from one run of the application to the next (settings group
/// "EComboStatePair_" + the owner's class name, array \a name). Enter emits activateText()
/// instead of inserting the text: the receiver reads the text, calls setEditText() to remember
/// it and acts on it.
///
/// \code
/// auto* findWhat = new EComboState(this, QStringLiteral("FindWhat"));
/// findWhat->setSlotForActivateText(this, SLOT(findNext()));
/// // in findNext(): findWhat->setEditText(findWhat->currentText()); ...
/// \endcode
class COMMON_GUI_EXPORT EComboState : public EComboBox
{
    Q_OBJECT
public:
    /// \a owner only names the settings group; the combo itself has no parent. An empty \a name
    /// remembers nothing across runs.
    EComboState(QWidget* owner, const QString& name);
    /// Saves the first 64 entries.
    ~EComboState() override;

    /// Shows \a text and records it as the most recent entry; an empty text is only shown.
    void setEditText(const QString& text);
    bool setSlotForActivateText(QObject* receiver, const char* slot);
    /// Same as the string form, checked at compile time: a member function of receiver, or a functor.
    template <typename Receiver, typename Slot,
              typename = std::enable_if_t<!std::is_convertible<Slot, const char*>::value>>
    bool setSlotForActivateText(const Receiver* receiver, Slot slot)
    {
        if (!receiver)
            return false;
        return bool(connect(this, &EComboState::activateText, receiver, slot));
    }

signals:
    /// Enter or Return was pressed in the combo.
    void activateText();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QString group;
    QString name;
};
