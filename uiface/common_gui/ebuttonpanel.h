// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QFlags>
#include <QWidget>

class QBoxLayout;
class QPushButton;

/// The row of standard buttons at the foot of a dialog. The buttons always come in the order
/// Back, Save, OK, Next, Finish, Cancel, Close, Help, whatever order the flags were combined in.
/// Save, OK, Next and Finish confirm (default button, signal ok()); Close reports as Cancel.
///
/// \code
/// // "this" is the dialog: the panel connects its ok() and cancel() to the dialog's slots.
/// auto* panel = new EButtonPanel(this, EButtonPanel::OK | EButtonPanel::Cancel | EButtonPanel::Help,
///                                "dialogs.html", SLOT(accept()), SLOT(reject()));
/// root->addWidget(panel);
/// \endcode
class COMMON_GUI_EXPORT EButtonPanel : public QWidget
{
    Q_OBJECT
public:
    enum Button {
        OK = 1,
        Cancel = 2,
        Help = 4,
        Back = 8,
        Save = 16,
        Next = 32,
        Finish = 64,
        Close = 128,
    };
    Q_DECLARE_FLAGS(Buttons, Button)

    /// A panel for the dialog \a parent. \a helpId is the Help button's page and must outlive it;
    /// \a okSlot and \a cancelSlot, when not null, are SLOT() strings of \a parent.
    explicit EButtonPanel(QWidget* parent, QFlags<Button> buttons = QFlags<Button>(OK) | Cancel,
                          const char* helpId = nullptr, const char* okSlot = nullptr,
                          const char* cancelSlot = nullptr);

    /// Appends one button per flag in the fixed order, then connects ok() and cancel() to the
    /// parent's slots. A second call appends a second set.
    void addButtons(QFlags<Button> buttons, const char* helpId, const char* okSlot, const char* cancelSlot);
    /// Appends a button at the end of the row. A default button becomes the confirming one and
    /// reports ok(); any other is left unconnected for the caller.
    QPushButton* addButton(const QString& text, bool isDefault);
    /// Enables or disables the confirming button (the last one created); nothing without one.
    void enableOK(bool enabled);
    /// Takes every button out of the row. The buttons are not deleted and stay children of the
    /// panel, and okButton keeps pointing at the old confirming button.
    void clear();

    /// The confirming button, or null.
    QPushButton* okButton = nullptr;

signals:
    void cancel();
    void help();
    void ok();
    void back();

public slots:
    void buttonCancelPressed();
    void buttonHelpPressed();
    void buttonOKPressed();
    void buttonBackPressed();

private:
    QPushButton* makeButton(const QString& text, const char* name, bool confirms);
    QBoxLayout* row = nullptr;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(EButtonPanel::Buttons)
