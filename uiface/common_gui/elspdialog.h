// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "estatedialog.h"

#include <QString>

class Bag;
class ELSPTextEdit;
class QCloseEvent;
class QMenu;
class QMenuBar;

/// A window for viewing and editing a policy text: an ELSPTextEdit under a File menu (Open Ctrl+O,
/// Save Ctrl+S, Save as) and a View menu (Find Ctrl+F, Find Next F3, Go to Line Ctrl+G). The title
/// shows the file name and "*" while there are unsaved edits; closing with unsaved edits asks
/// whether to save them. Its geometry is kept under the name "ELSPDialog".
///
/// \code
/// auto* window = new ELSPDialog(this, tr("Policy"));
/// window->setText(policyBytes, ELSPTextEdit::defaultEncodingForLSP);   // or openFile(path)
/// window->exec();
/// \endcode
///
/// Files opened and saved through the window use ELSPTextEdit::defaultEncodingForFile ("utf-8")
/// unless they declare their encoding.
class COMMON_GUI_EXPORT ELSPDialog : public EStateDialog
{
    Q_OBJECT
public:
    /// Shows \a editor, or a new ELSPTextEdit without shortcuts of its own (the menus have them).
    /// The editor becomes a child of the window.
    ELSPDialog(QWidget* parent, const QString& title, ELSPTextEdit* editor = nullptr);

    /// True when the window may close: nothing unsaved, or the user answered No, or Yes and the
    /// save succeeded. Cancel gives false.
    bool canClose();
    /// Base title, " - " and the file name when there is one, "*" while modified.
    void updateTitle();
    /// Loads \a path; on success it becomes the window's file.
    bool openFile(const QString& path);
    /// Saves to \a path; on success it becomes the window's file and the text counts as saved.
    bool saveFile(const QString& path);

    /// Forwarded to the editor; the file name and the title stay as they are.
    void setText(const Bag& data, const QString& defaultEncoding);
    void setText(const char* data, unsigned int length, const QString& defaultEncoding);
    void setText(const QString& text);
    void setReadOnly(bool readOnly);

    ELSPTextEdit* getEditor() const { return editor; }
    /// The file opened or saved last; empty before.
    QString getFileName() const { return fileName; }

public slots:
    /// Asks whether to save unsaved edits, then for a file to open.
    virtual bool doOpen();
    /// Saves to the window's file, or asks for one as doSaveAs() does.
    virtual bool doSave();
    /// Asks for a file and saves to it.
    virtual bool doSaveAs();
    /// Follows the document's modified flag in the title.
    void modified();
    /// Escape asks about unsaved edits as closing does.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    ELSPTextEdit* editor = nullptr;
    QString fileName;
    QString baseTitle;
    QMenuBar* menuBar = nullptr;
    QMenu* fileMenu = nullptr;
    QMenu* viewMenu = nullptr;
    bool closing = false; // the close question was answered already
};
