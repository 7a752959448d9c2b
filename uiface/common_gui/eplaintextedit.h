// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "efind.h"

#include <QPlainTextEdit>
#include <QSize>

class LineNumberArea;

/// A plain-text editor with line numbers, a highlighted current line, a find dialog that offers to
/// wrap around, and Go to Line. With \a shortcuts it answers Ctrl+F (find), F3 (find next) and
/// Ctrl+G (go to line) itself; without, the application binds findFirst(), findNext() and
/// goToLine() to its own commands. The find dialog keeps its options in the group "EPlainTextEdit".
///
/// \code
/// auto* editor = new EPlainTextEdit(true);       // Ctrl+F, F3 and Ctrl+G work at once
/// editor->setText(text);                         // unmodified afterwards
/// layout->addWidget(editor);
/// connect(editor->document(), &QTextDocument::modificationChanged, this, &Window::updateTitle);
/// \endcode
class COMMON_GUI_EXPORT EPlainTextEdit : public QPlainTextEdit, public EFindOwner
{
    Q_OBJECT
public:
    /// Builds the editor without a parent; \a shortcuts adds F3, Ctrl+F and Ctrl+G.
    explicit EPlainTextEdit(bool shortcuts);

    /// Two thirds of the primary screen in either direction.
    QSize sizeHint() const override;

    /// Shows \a text, without its last character when that is a NUL, and marks the document
    /// unmodified. modificationChanged is emitted even when an empty text replaces an empty one.
    /// A text with a line over 16,384 characters is wrapped anywhere, not at word boundaries.
    void setText(const QString& text);
    /// The document's modified flag.
    bool isModified() const;

    /// Searches with the find dialog's options. When nothing is found from the cursor on, asks
    /// whether to restart from the other end; says "Text not found" when there is nothing at all.
    bool find() override;
    using QPlainTextEdit::find;

    /// The gutter's width: 3 pixels plus one digit width per digit of the line count.
    int lineNumberAreaWidth();
    /// Paints the numbers of the visible lines into the gutter.
    void lineNumberAreaPaintEvent(QPaintEvent* event);

public slots:
    /// Shows the find dialog (Ctrl+F).
    void findFirst();
    /// Searches again with the saved options, also while the dialog is hidden (F3).
    void findNext();
    /// Asks for a line number (1 to the line count) and selects that line (Ctrl+G).
    void goToLine();

protected:
    void resizeEvent(QResizeEvent* event) override;

    LineNumberArea* lineNumberArea = nullptr; ///< the gutter, a child of the editor
    QSize preferredSize = QSize(-1, -1);

private:
    /// The wrap mode to go back to once no line is long enough to need WrapAnywhere; -1: none.
    int wrapModeBeforeLongLine = -1;

private slots:
    void updateLineNumberAreaWidth(int newBlockCount);
    void highlightCurrentLine();
    void updateLineNumberArea(const QRect& rect, int dy);
};

/// The line-number gutter of an EPlainTextEdit; the editor paints it.
class COMMON_GUI_EXPORT LineNumberArea : public QWidget
{
public:
    explicit LineNumberArea(EPlainTextEdit* editor);

    /// The editor's gutter width, height 0.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    EPlainTextEdit* codeEditor = nullptr;
};
