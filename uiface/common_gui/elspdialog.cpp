// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "elspdialog.h"

#include "cg_qtcompat.h"
#include "common_gui_loc.h"
#include "elsptextedit.h"
#include "etexteditor.h"

#include <QCloseEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QTextDocument>

#include <algorithm>
#include <climits>

namespace {

/// The filter last chosen in a file dialog of any ELSPDialog.
QString rememberedFilter;

} // namespace

ELSPDialog::ELSPDialog(QWidget* parent, const QString& title, ELSPTextEdit* editor)
    : EStateDialog(parent, "ELSPDialog", EEditorWindow::windowFlags())
    , editor(editor ? editor : new ELSPTextEdit(false))
    , baseTitle(title)
{
    if (this->editor->objectName().isEmpty())
        this->editor->setObjectName(QStringLiteral("editor"));
    setWindowTitle(baseTitle);
    menuBar = EEditorWindow::layOut(this, this->editor);

    fileMenu = menuBar->addMenu(LCQT__File);
    fileMenu->setObjectName(QStringLiteral("fileMenu"));
    CgQt::addAction(fileMenu, LCQT__Open, this, &ELSPDialog::doOpen, QKeySequence(QStringLiteral("Ctrl+O")))
        ->setObjectName(QStringLiteral("openAction"));
    CgQt::addAction(fileMenu, LCQT__Save__0, this, &ELSPDialog::doSave, QKeySequence(QStringLiteral("Ctrl+S")))
        ->setObjectName(QStringLiteral("saveAction"));
    fileMenu->addAction(LCQT__Save_as, this, &ELSPDialog::doSaveAs)->setObjectName(QStringLiteral("saveAsAction"));
    viewMenu = EEditorWindow::addViewMenu(menuBar, this->editor);

    EState::loadState();
    connect(this->editor->document(), &QTextDocument::modificationChanged, this, &ELSPDialog::modified);
}

bool ELSPDialog::canClose()
{
    return EEditorWindow::askToSave(this, editor->document()->isModified(), [this] { return doSave(); });
}

void ELSPDialog::updateTitle()
{
    setWindowTitle(EEditorWindow::title(baseTitle, fileName, editor->document()->isModified()));
}

bool ELSPDialog::openFile(const QString& path)
{
    if (!editor->loadFromFile(path, ELSPTextEdit::defaultEncodingForFile))
        return false;
    fileName = path;
    updateTitle();
    return true;
}

bool ELSPDialog::saveFile(const QString& path)
{
    if (!editor->saveToFile(path, ELSPTextEdit::defaultEncodingForFile))
        return false;
    fileName = path;
    editor->document()->setModified(false);
    updateTitle();
    return true;
}

void ELSPDialog::setText(const Bag& data, const QString& defaultEncoding)
{
    editor->setText(data, defaultEncoding);
}

void ELSPDialog::setText(const char* data, unsigned int length, const QString& defaultEncoding)
{
    editor->setText(data, int(std::min<unsigned int>(length, INT_MAX)), defaultEncoding);
}

void ELSPDialog::setText(const QString& text)
{
    editor->EPlainTextEdit::setText(text);
}

void ELSPDialog::setReadOnly(bool readOnly)
{
    editor->setReadOnly(readOnly);
}

bool ELSPDialog::doOpen()
{
    if (!canClose())
        return false;
    const QString path = EEditorWindow::askFile(this, false, LCQT__Load_from_file, fileName, &rememberedFilter);
    return !path.isEmpty() && openFile(path);
}

bool ELSPDialog::doSave()
{
    return fileName.isEmpty() ? doSaveAs() : saveFile(fileName);
}

bool ELSPDialog::doSaveAs()
{
    const QString path = EEditorWindow::askFile(this, true, LCQT__Save_to_file, fileName, &rememberedFilter);
    return !path.isEmpty() && saveFile(path);
}

void ELSPDialog::modified()
{
    updateTitle();
}

void ELSPDialog::closeEvent(QCloseEvent* event)
{
    if (!closing && !canClose()) {
        event->ignore();
        return;
    }
    // QDialog's own close handling goes through reject(): the question was answered already.
    closing = true;
    EStateDialog::closeEvent(event);
    closing = false;
}

void ELSPDialog::reject()
{
    if (!closing && !canClose())
        return;
    EStateDialog::reject();
}
