// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "estatedialog.h"

#include <QString>

#include <functional>

class ECodeEditor;
class EPlainTextEdit;
class QAction;
class QActionGroup;
class QCloseEvent;
class QMenu;
class QMenuBar;

/// A window for a file that declares its own encoding: an ECodeEditor under the menus chosen by the
/// flags: File (Open Ctrl+O; Save Ctrl+S, Save as), View (Find Ctrl+F, Find Next F3, Go to Line
/// Ctrl+G) and Encoding (Auto, Windows-1251, UTF-8: view the same bytes in another encoding). The
/// title shows the file name and "*" while there are unsaved edits; closing with unsaved edits asks
/// whether to save them. Its geometry is kept under the name "ETextEditor".
///
/// \code
/// auto* window = new ETextEditor(this, tr("Script"), ETextEditor::AllMenus);
/// if (window->openFile(path))
///     window->show();
/// \endcode
///
/// The Encoding menu is disabled while there are unsaved edits: choosing an encoding decodes the
/// file's bytes again and would drop them. Saving writes in the encoding the first line declares.
class COMMON_GUI_EXPORT ETextEditor : public EStateDialog
{
    Q_OBJECT
public:
    /// The menus a window gets, for the constructor's \a flags.
    enum Menus {
        OpenMenu = 1,     ///< File menu with Open
        SaveMenu = 2,     ///< File menu with Save and Save as
        ViewMenu = 4,     ///< View menu
        EncodingMenu = 8, ///< Encoding menu
        AllMenus = 15,
    };

    /// Builds the window with the editor of makeEditor() and the menus of \a flags (Menus bits).
    ETextEditor(QWidget* parent, const QString& title, int flags);

    /// Loads \a path; on success it becomes the window's file. On failure the title is the bare base
    /// title.
    bool openFile(const QString& path);
    /// Saves to \a path; on success it becomes the window's file and the text counts as saved. The
    /// Encoding menu shows Auto again either way.
    bool saveFile(const QString& path);
    /// Saves to the window's file, or asks for one as saveData() does.
    bool saveFile();
    /// Asks for a file and opens it (unsaved edits are not asked about).
    virtual bool openData();
    /// Asks for a file and saves to it; the caption names the declared encoding when the text is
    /// viewed in another one.
    virtual bool saveData();
    /// Base title, " - " and the file name when there is one, "*" while modified or not up to date;
    /// the Encoding menu is enabled exactly while nothing is unsaved.
    void updateTitle();
    /// Shows file contents given in memory (ECodeEditor::setText).
    void setPlainText(const char* data, unsigned int length);
    void setReadOnly(bool readOnly);

    ECodeEditor* getEditor() const { return editor; }
    /// The file opened or saved last; empty before.
    QString getFileName() const { return fileName; }

public slots:
    bool doOpen();
    bool doSave();
    bool doSaveAs();
    /// Follows the document's modified flag and declaration changes in the title.
    void modified();
    /// "Auto" goes back to the declared encoding, any other entry views the text in its encoding.
    void encodingChanged(QAction* act);
    /// Escape asks about unsaved edits as closing does.
    void reject() override;

protected:
    /// For subclasses that override makeEditor(): a virtual call in a constructor reaches only this
    /// class, so this constructor builds nothing and the subclass's constructor calls build().
    struct BuildLater {};
    ETextEditor(QWidget* parent, const QString& title, int flags, BuildLater);
    /// Builds the editor (makeEditor()), the layout and the menus, and restores the geometry.
    void build();
    /// The editor the window shows; by default an ECodeEditor without shortcuts of its own.
    virtual ECodeEditor* makeEditor();

    void closeEvent(QCloseEvent* event) override;

private:
    ECodeEditor* editor = nullptr;
    QString fileName;
    QString baseTitle;
    QMenuBar* menuBar = nullptr;
    QMenu* fileMenu = nullptr;
    QMenu* viewMenu = nullptr;
    QMenu* encodingMenu = nullptr;
    QActionGroup* encodingGroup = nullptr;
    int menuFlags = 0;
    bool closing = false; // the close question was answered already
};

/// Pieces both editor windows are made of; not part of the library's interface.
namespace EEditorWindow {
/// The window flags of both windows.
Qt::WindowFlags windowFlags();
/// The menu bar, set into a new root layout of \a window above \a editor.
QMenuBar* layOut(QWidget* window, QWidget* editor);
/// The View menu of \a editor (Find, Find Next, Go to Line).
QMenu* addViewMenu(QMenuBar* bar, EPlainTextEdit* editor);
/// "base - file*" as the windows show it.
QString title(const QString& base, const QString& file, bool unsaved);
/// The close question: true to go on (nothing unsaved, No, or Yes and \a save succeeded).
bool askToSave(QWidget* window, bool modified, const std::function<bool()>& save);
/// The open and save file dialogs with the library's captions and text filters; \a filter is the
/// window class's remembered filter.
QString askFile(QWidget* window, bool save, const QString& caption, const QString& start, QString* filter);
} // namespace EEditorWindow
