// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "edialog.h"

#include <QString>

class EButton;
class ECheckBox;
class EComboState;
class EFind;
class ESettings;
class QRadioButton;

/// The base of a widget that searches its own content with a find dialog. Mix it into the
/// widget class and implement find(); the dialog collects the text and the options and calls
/// find() back.
///
/// \code
/// class TablePage : public QWidget, public EFindOwner      // from the gallery's table page
/// {
/// public:
///     TablePage() : EFindOwner("GalleryTable")
///     {
///         makeFindDialog(this, EFind::MatchCase | EFind::WholeWord | EFind::AllColumns | EFind::Direction,
///                        "find.html");
///         connect(findButton, &QPushButton::clicked, findDialog, &EFind::findFirst);   // "Find..."
///         connect(nextButton, &QPushButton::clicked, findDialog, &EFind::findNext);    // F3
///     }
///     bool find() override
///     {
///         return table->find(findDialog->getText(), findDialog->getCaseSensitive() ? Qt::CaseSensitive
///                            : Qt::CaseInsensitive, findDialog->getWholeWord(), findDialog->getAllColumns(),
///                            findDialog->getDirection(), false);   // plus the restart question
///     }
/// };
/// \endcode
class COMMON_GUI_EXPORT EFindOwner
{
public:
    /// \a name is kept as given, not copied: pass a literal. It names the dialog's own settings group.
    explicit EFindOwner(const char* name);
    /// Deletes the find dialog if there is one.
    ~EFindOwner();
    EFindOwner(const EFindOwner&) = delete;
    EFindOwner& operator=(const EFindOwner&) = delete;

    /// Creates the find dialog (hidden) unless it exists; a second call changes nothing.
    /// \a flags: 1 match case, 2 whole word, 4 all columns, 8 direction; \a help: the F1 page (null: index).
    void makeFindDialog(QWidget* parent, int flags, const char* help);

    /// Searches with the dialog's options; true when a match was found and selected. The owner
    /// asks about wrapping around and reports "not found" itself.
    virtual bool find() = 0;

    /// The find dialog, null until makeFindDialog().
    EFind* getFindDialog() const { return findDialog; }

protected:
    EFind* findDialog = nullptr; ///< owned; cleared by the dialog's destructor
    const char* name = nullptr;  ///< not owned

    friend class EFind;
};

/// The modeless "Find" dialog. It holds no search logic: it remembers the search texts (an
/// EComboState) and the options (in the owner's settings group and in the shared group
/// "EFindOwner") and calls its owner's find().
///
/// Options whose control was not built report fixed values: direction 1 (down), case-sensitive,
/// not whole words, all columns.
class COMMON_GUI_EXPORT EFind : public EDialog
{
    Q_OBJECT
public:
    enum Flag { MatchCase = 1, WholeWord = 2, AllColumns = 4, Direction = 8 };

    /// Builds the controls chosen by \a flags (see Flag). \a name becomes the object name and the
    /// settings group; \a help is the F1 page (null: the index page).
    EFind(EFindOwner* owner, QWidget* parent, int flags, const char* name, const char* help);
    /// Saves the options if the dialog is still shown, and clears the owner's pointer to it.
    ~EFind() override;

    /// -1 when Up is checked, else 1.
    int getDirection() const;
    /// The match-case box; true when there is no such box.
    bool getCaseSensitive() const;
    /// The whole-word box; false when there is no such box.
    bool getWholeWord() const;
    /// The all-columns box; true when there is no such box.
    bool getAllColumns() const;
    /// The text in the search combo.
    QString getText() const;

    /// Reads the options of the existing controls from \a s's group, then selects the search text.
    /// \note A group without "Column" unchecks the all-columns box, although it starts checked.
    void loadState(ESettings& s);
    /// Writes "Direction", "Case", "Word", "Column" and "Text" into \a s's group.
    /// \note Without a match-case box "Case" is 0 although the searches are case-sensitive.
    void saveState(ESettings& s);

    /// Showing loads the options first; hiding a shown dialog saves them first.
    void setVisible(bool visible) override;

public slots:
    /// The owner's "Find..." command: label "Find", show, focus on the search text.
    void findFirst();
    /// The owner's "find next" command (F3), also while hidden: reload the saved options and search.
    void findNext();
    /// Find button or Enter: remember the text and search.
    void findClick();
    /// Reads the owner's own group, or the shared group "EFindOwner" if the own group was never saved.
    void loadState();
    /// Writes the owner's own group and the shared group "EFindOwner".
    void saveState();

protected slots:
    /// Enables Find for a non-empty text and relabels it "Find": a new text starts a new search.
    void textChanged(const QString& text);

private:
    void setFindLabel(const QString& text);

    EComboState* findWhat = nullptr;
    QRadioButton* up = nullptr;
    QRadioButton* down = nullptr;
    ECheckBox* allColumns = nullptr;
    ECheckBox* matchCase = nullptr;
    ECheckBox* wholeWord = nullptr;
    EButton* findButton = nullptr;
    EFindOwner* owner = nullptr;
};
