// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etexteditor.h"

#include "cg_qtcompat.h"
#include "common_gui_loc.h"
#include "ecodeeditor.h"
#include "eboxlayout.h"
#include "efiledialog.h"
#include "emessage.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTextCodec>
#include <QTextDocument>

#include <algorithm>
#include <climits>

namespace {

/// The filter last chosen in a file dialog of any ETextEditor.
QString rememberedFilter;

} // namespace

// ---------------------------------------------------------------------------------------------------

Qt::WindowFlags EEditorWindow::windowFlags()
{
    return Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint
           | Qt::WindowCloseButtonHint;
}

QMenuBar* EEditorWindow::layOut(QWidget* window, QWidget* editor)
{
    auto* layout = new EVBoxLayout(window, 0, 0);
    auto* bar = new QMenuBar(window);
    bar->setObjectName(QStringLiteral("menuBar"));
    layout->addWidget(bar, 0);
    layout->addWidget(editor, 1);
    return bar;
}

QMenu* EEditorWindow::addViewMenu(QMenuBar* bar, EPlainTextEdit* editor)
{
    QMenu* menu = bar->addMenu(LCQT__View);
    menu->setObjectName(QStringLiteral("viewMenu"));
    CgQt::addAction(menu, LCQT__Find, editor, &EPlainTextEdit::findFirst, QKeySequence(QStringLiteral("Ctrl+F")))
        ->setObjectName(QStringLiteral("findAction"));
    CgQt::addAction(menu, LCQT__Find_Next, editor, &EPlainTextEdit::findNext, QKeySequence(Qt::Key_F3))
        ->setObjectName(QStringLiteral("findNextAction"));
    CgQt::addAction(menu, LCQT__Go_to_Line, editor, &EPlainTextEdit::goToLine, QKeySequence(QStringLiteral("Ctrl+G")))
        ->setObjectName(QStringLiteral("goToLineAction"));
    return menu;
}

QString EEditorWindow::title(const QString& base, const QString& file, bool unsaved)
{
    QString text = base;
    if (!file.isEmpty())
        text += QLatin1String(" - ") + file;
    if (unsaved)
        text += QLatin1Char('*');
    return text;
}

bool EEditorWindow::askToSave(QWidget* window, bool modified, const std::function<bool()>& save)
{
    if (!modified)
        return true;
    switch (EMessage::ync(window, LCQT__File_was_modified_Do_you_want)) {
    case QMessageBox::Yes:
        return save();
    case QMessageBox::No:
        return true;
    default:
        return false;
    }
}

QString EEditorWindow::askFile(QWidget* window, bool save, const QString& caption, const QString& start,
                               QString* filter)
{
    QString file = start; // the dialog writes the canonical path back; the window's name stays
    return save ? EFileDialog::save(window, caption, LCQT__Text_Files_txt_All_Files_All, &file, filter)
                : EFileDialog::open(window, caption, LCQT__Text_Files_txt_All_Files_All, &file, filter);
}

// ---------------------------------------------------------------------------------------------------

ETextEditor::ETextEditor(QWidget* parent, const QString& title, int flags)
    : ETextEditor(parent, title, flags, BuildLater())
{
    build();
}

ETextEditor::ETextEditor(QWidget* parent, const QString& title, int flags, BuildLater)
    : EStateDialog(parent, "ETextEditor", EEditorWindow::windowFlags())
    , baseTitle(title)
    , menuFlags(flags)
{
}

ECodeEditor* ETextEditor::makeEditor()
{
    return new ECodeEditor(false);
}

void ETextEditor::build()
{
    if (editor)
        return;
    editor = makeEditor();
    if (editor->objectName().isEmpty())
        editor->setObjectName(QStringLiteral("editor"));
    setWindowTitle(baseTitle);
    menuBar = EEditorWindow::layOut(this, editor);

    if (menuFlags & (OpenMenu | SaveMenu)) {
        fileMenu = menuBar->addMenu(LCQT__File);
        fileMenu->setObjectName(QStringLiteral("fileMenu"));
        if (menuFlags & OpenMenu) {
            CgQt::addAction(fileMenu, LCQT__Open, this, &ETextEditor::doOpen, QKeySequence(QStringLiteral("Ctrl+O")))
                ->setObjectName(QStringLiteral("openAction"));
        }
        if (menuFlags & SaveMenu) {
            CgQt::addAction(fileMenu, LCQT__Save__0, this, &ETextEditor::doSave, QKeySequence(QStringLiteral("Ctrl+S")))
                ->setObjectName(QStringLiteral("saveAction"));
            fileMenu->addAction(LCQT__Save_as, this, &ETextEditor::doSaveAs)
                ->setObjectName(QStringLiteral("saveAsAction"));
        }
    }
    if (menuFlags & ViewMenu)
        viewMenu = EEditorWindow::addViewMenu(menuBar, editor);
    if (menuFlags & EncodingMenu) {
        encodingMenu = menuBar->addMenu(LCQT__Encoding);
        encodingMenu->setObjectName(QStringLiteral("encodingMenu"));
        encodingGroup = new QActionGroup(this);
        encodingGroup->setExclusive(true);
        for (const QString& name : {LCQT__Auto, QStringLiteral("Windows-1251"), QStringLiteral("UTF-8")}) {
            QAction* act = encodingMenu->addAction(name);
            act->setCheckable(true);
            encodingGroup->addAction(act);
        }
        encodingGroup->actions().constFirst()->setChecked(true);
        connect(encodingGroup, &QActionGroup::triggered, this, &ETextEditor::encodingChanged);
    }

    EState::loadState();
    connect(editor->document(), &QTextDocument::modificationChanged, this, &ETextEditor::modified);
    connect(editor, &ECodeEditor::saveWithEncodingChanged, this, &ETextEditor::modified);
}

bool ETextEditor::openFile(const QString& path)
{
    setWindowTitle(baseTitle);
    if (!editor->loadFromFile(path))
        return false;
    fileName = path;
    updateTitle();
    return true;
}

bool ETextEditor::saveFile(const QString& path)
{
    setWindowTitle(baseTitle);
    const bool saved = editor->saveToFile(path);
    if (saved) {
        fileName = path;
        editor->document()->setModified(false);
        updateTitle();
    }
    if (encodingGroup) {
        // Saving re-detects the encoding: show Auto without decoding the text again.
        disconnect(encodingGroup, &QActionGroup::triggered, this, &ETextEditor::encodingChanged);
        encodingGroup->actions().constFirst()->setChecked(true);
        connect(encodingGroup, &QActionGroup::triggered, this, &ETextEditor::encodingChanged);
    }
    return saved;
}

bool ETextEditor::saveFile()
{
    return fileName.isEmpty() ? saveData() : saveFile(fileName);
}

bool ETextEditor::openData()
{
    const QString path = EEditorWindow::askFile(this, false, LCQT__Load_from_file, fileName, &rememberedFilter);
    return !path.isEmpty() && openFile(path);
}

bool ETextEditor::saveData()
{
    QString caption = LCQT__Save_to_file;
    const QString detected = editor->getDetectedEncoding();
    if (editor->getEncoding() != detected) {
        // The file is written in the declared encoding, not in the one being viewed: say which.
        const bool known = !detected.isEmpty() && QTextCodec::codecForName(detected.toUtf8());
        const QString name = known ? detected : LCQT__Unknown_encoding + detected + LCQT__UTF_8_will_be_used;
        caption += QLatin1String(" [") + name + QLatin1Char(']');
    }
    const QString path = EEditorWindow::askFile(this, true, caption, fileName, &rememberedFilter);
    return !path.isEmpty() && saveFile(path);
}

void ETextEditor::updateTitle()
{
    const bool modifiedNow = editor->document()->isModified();
    setWindowTitle(EEditorWindow::title(baseTitle, fileName, modifiedNow || !editor->upToDate));
    if (encodingMenu)
        encodingMenu->setEnabled(!modifiedNow);
}

void ETextEditor::setPlainText(const char* data, unsigned int length)
{
    editor->setText(data, int(std::min<unsigned int>(length, INT_MAX)));
}

void ETextEditor::setReadOnly(bool readOnly)
{
    editor->setReadOnly(readOnly);
}

bool ETextEditor::doOpen()
{
    return openData();
}

bool ETextEditor::doSave()
{
    return saveFile();
}

bool ETextEditor::doSaveAs()
{
    return saveData();
}

void ETextEditor::modified()
{
    updateTitle();
}

void ETextEditor::encodingChanged(QAction* act)
{
    if (!act || !act->actionGroup())
        return;
    if (act == act->actionGroup()->actions().constFirst())
        editor->setEncoding(QString());
    else
        editor->setEncoding(act->text());
}

void ETextEditor::closeEvent(QCloseEvent* event)
{
    if (!closing && !EEditorWindow::askToSave(this, editor->document()->isModified(), [this] { return doSave(); })) {
        event->ignore();
        return;
    }
    // QDialog's own close handling goes through reject(): the question was answered already.
    closing = true;
    EStateDialog::closeEvent(event);
    closing = false;
}

void ETextEditor::reject()
{
    if (!closing && !EEditorWindow::askToSave(this, editor->document()->isModified(), [this] { return doSave(); }))
        return;
    EStateDialog::reject();
}
