// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eplaintextedit.h"

#include "common_gui_loc.h"
#include "eintdialog.h"
#include "emessage.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QTextBlock>

#include <algorithm>

namespace {

/// Lines longer than this are wrapped anywhere rather than at word boundaries.
constexpr int longLineLength = 16384;

bool hasLongLine(const QString& text)
{
    if (text.size() <= longLineLength)
        return false;
    const QChar* begin = text.constData();
    const QChar* const end = begin + text.size();
    while (end - begin > longLineLength) {
        const QChar* lineEnd = std::find(begin, begin + longLineLength + 1, QLatin1Char('\n'));
        if (lineEnd - begin > longLineLength)
            return true;
        begin = lineEnd + 1;
    }
    return false;
}

} // namespace

EPlainTextEdit::EPlainTextEdit(bool shortcuts)
    : QPlainTextEdit(nullptr)
    , EFindOwner("EPlainTextEdit")
{
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect r = screen->geometry();
        preferredSize = QSize((2 * r.width()) / 3, (2 * r.height()) / 3);
    }
    lineNumberArea = new LineNumberArea(this);
    lineNumberArea->setObjectName(QStringLiteral("lineNumberArea"));

    connect(this, &QPlainTextEdit::blockCountChanged, this, &EPlainTextEdit::updateLineNumberAreaWidth);
    connect(this, &QPlainTextEdit::updateRequest, this, &EPlainTextEdit::updateLineNumberArea);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &EPlainTextEdit::highlightCurrentLine);
    updateLineNumberAreaWidth(0);
    highlightCurrentLine();

    if (shortcuts) {
        auto* next = new QShortcut(QKeySequence(Qt::Key_F3), this, nullptr, nullptr, Qt::WindowShortcut);
        next->setObjectName(QStringLiteral("findNextShortcut"));
        connect(next, &QShortcut::activated, this, &EPlainTextEdit::findNext);
        auto* first = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this, nullptr, nullptr, Qt::WindowShortcut);
        first->setObjectName(QStringLiteral("findShortcut"));
        connect(first, &QShortcut::activated, this, &EPlainTextEdit::findFirst);
        connect(first, &QShortcut::activatedAmbiguously, this, &EPlainTextEdit::findFirst);
        auto* line = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_G), this, nullptr, nullptr, Qt::WindowShortcut);
        line->setObjectName(QStringLiteral("goToLineShortcut"));
        connect(line, &QShortcut::activated, this, &EPlainTextEdit::goToLine);
        connect(line, &QShortcut::activatedAmbiguously, this, &EPlainTextEdit::goToLine);
    }

    makeFindDialog(this, EFind::MatchCase | EFind::WholeWord | EFind::Direction, nullptr);
}

QSize EPlainTextEdit::sizeHint() const
{
    return preferredSize;
}

void EPlainTextEdit::setText(const QString& text)
{
    // Texts read whole from a file may carry the terminating NUL of a C string.
    const bool nulEnded = !text.isEmpty() && text.at(text.size() - 1) == QChar(0);
    // Word wrapping looks for a word boundary from every break to the end of a line, so a long
    // line without blanks (a base64 blob) would take minutes to lay out: break such lines anywhere.
    // The mode changes while the long line is not in the document, or it would be laid out again.
    const bool longLine = hasLongLine(text);
    if (longLine && wordWrapMode() != QTextOption::WrapAnywhere) {
        wrapModeBeforeLongLine = int(wordWrapMode());
        setPlainText(QString());
        setWordWrapMode(QTextOption::WrapAnywhere);
    }
    setPlainText(nulEnded ? text.left(text.size() - 1) : text);
    if (!longLine && wrapModeBeforeLongLine >= 0) {
        setWordWrapMode(QTextOption::WrapMode(wrapModeBeforeLongLine));
        wrapModeBeforeLongLine = -1;
    }
    // Editor windows take their titles from modificationChanged. Emptying an empty document sends
    // no such signal, or a stray "modified" one, hence the detour through "modified": also for a
    // lone NUL, which shows as an empty text too.
    if (text.isEmpty() || (nulEnded && text.size() == 1))
        document()->setModified(true);
    document()->setModified(false);
}

bool EPlainTextEdit::isModified() const
{
    return document()->isModified();
}

bool EPlainTextEdit::find()
{
    if (!findDialog)
        return false;
    const bool upwards = findDialog->getDirection() < 0;
    QTextDocument::FindFlags flags;
    if (upwards)
        flags |= QTextDocument::FindBackward;
    if (findDialog->getCaseSensitive())
        flags |= QTextDocument::FindCaseSensitively;
    if (findDialog->getWholeWord())
        flags |= QTextDocument::FindWholeWords;

    const QString text = findDialog->getText();
    QTextCursor kept = textCursor();
    if (QPlainTextEdit::find(text, flags))
        return true;

    const bool fromTheEnd = upwards ? kept.atEnd() : kept.atStart();
    if (!fromTheEnd) {
        const QString& question = upwards ? LCQT__Text_not_found_above_this_point : LCQT__Text_not_found_below_this_point;
        if (!EMessage::warn(this, question)) {
            if (findDialog && findDialog->isVisible())
                findDialog->hide();
            return false;
        }
        kept.movePosition(upwards ? QTextCursor::End : QTextCursor::Start);
        setTextCursor(kept);
    }
    if (QPlainTextEdit::find(text, flags))
        return true;
    EMessage::erro(this, LCQT__Text_not_found);
    return false;
}

int EPlainTextEdit::lineNumberAreaWidth()
{
    int digits = 1;
    for (int n = std::max(1, blockCount()); n >= 10; n /= 10)
        ++digits;
    return 3 + digits * fontMetrics().horizontalAdvance(QLatin1Char('9'));
}

void EPlainTextEdit::lineNumberAreaPaintEvent(QPaintEvent* event)
{
    QPainter painter(lineNumberArea);
    const QRect area = event->rect();
    painter.fillRect(area, Qt::lightGray);
    painter.setPen(Qt::black);

    QTextBlock block = firstVisibleBlock();
    int number = block.blockNumber();
    int top = int(blockBoundingGeometry(block).translated(contentOffset()).top());
    int bottom = top + int(blockBoundingRect(block).height());
    const int width = lineNumberArea->width();
    const int lineHeight = fontMetrics().height();
    while (block.isValid() && top <= area.bottom()) {
        if (block.isVisible() && bottom >= area.top()) {
            // One pixel left of the gutter's edge keeps the digits clear of the text.
            painter.drawText(-1, top, width, lineHeight, Qt::AlignRight, QString::number(number + 1));
        }
        block = block.next();
        top = bottom;
        bottom = top + int(blockBoundingRect(block).height());
        ++number;
    }
}

void EPlainTextEdit::findFirst()
{
    if (findDialog)
        findDialog->findFirst();
}

void EPlainTextEdit::findNext()
{
    if (findDialog)
        findDialog->findNext();
}

void EPlainTextEdit::goToLine()
{
    // A plain-text document has one block per line, so block numbers are line numbers: no need
    // to copy the whole text and count its line feeds.
    const int current = textCursor().blockNumber() + 1;
    const int count = std::max(1, blockCount());
    int line = current;
    EIntDialog dialog(this, LCQT__Go_to_Line, LCQT__Specify_line_number_from_1, 1, count, line);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QTextBlock block = document()->findBlockByNumber(std::min(std::max(line, 1), count) - 1);
    QTextCursor cursor(document());
    cursor.setPosition(block.isValid() ? block.position() : 0);
    cursor.movePosition(QTextCursor::EndOfLine, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void EPlainTextEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    const QRect r = contentsRect();
    lineNumberArea->setGeometry(QRect(r.left(), r.top(), lineNumberAreaWidth(), r.height()));
}

void EPlainTextEdit::updateLineNumberAreaWidth(int)
{
    const int width = lineNumberAreaWidth();
    // Every full repaint comes through here: re-laying out the viewport for an unchanged margin
    // would cost a layout pass per repaint.
    if (viewportMargins().left() != width)
        setViewportMargins(width, 0, 0, 0);
}

void EPlainTextEdit::highlightCurrentLine()
{
    QList<QTextEdit::ExtraSelection> selections;
    if (!isReadOnly()) {
        QTextEdit::ExtraSelection line;
        line.format.setBackground(QColor(Qt::yellow).lighter(160));
        line.format.setProperty(QTextFormat::FullWidthSelection, true);
        line.cursor = textCursor();
        line.cursor.clearSelection();
        selections.append(line);
    }
    setExtraSelections(selections);
}

void EPlainTextEdit::updateLineNumberArea(const QRect& rect, int dy)
{
    if (dy != 0)
        lineNumberArea->scroll(0, dy);
    else
        lineNumberArea->update(0, rect.y(), lineNumberArea->width(), rect.height());
    if (rect.contains(viewport()->rect()))
        updateLineNumberAreaWidth(0);
}

// ---------------------------------------------------------------------------------------- gutter

LineNumberArea::LineNumberArea(EPlainTextEdit* editor)
    : QWidget(editor)
    , codeEditor(editor)
{
}

QSize LineNumberArea::sizeHint() const
{
    return QSize(codeEditor->lineNumberAreaWidth(), 0);
}

void LineNumberArea::paintEvent(QPaintEvent* event)
{
    codeEditor->lineNumberAreaPaintEvent(event);
}
