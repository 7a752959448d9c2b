// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// EPlainTextEdit beside the stock QPlainTextEdit: loading a 20 MiB text, painting the gutter while the
// cursor moves in a short and a very long document, and a search for an absent text.
#include "benchutil.h"

#include "eplaintextedit.h"

#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTimer>

namespace {

/// The find dialog remembers its texts in the user's settings: keep them out of the real ones.
void privateSettings()
{
    static QTemporaryDir dir;
    if (qEnvironmentVariableIsEmpty("CG_USER_DIR"))
        qputenv("CG_USER_DIR", dir.path().toUtf8());
}

/// About \a bytes of UTF-16 text in lines of some 60 characters.
QString textOf(qint64 bytes)
{
    QString text;
    text.reserve(int(bytes / 2) + 128);
    for (int i = 1; text.size() * 2 < bytes; ++i)
        text += QStringLiteral("rule %1 allow tcp from 10.0.%2.0/24 to host-%3.example.net\n")
                    .arg(i, 7, 10, QLatin1Char('0'))
                    .arg(i & 255)
                    .arg(i % 1000);
    return text;
}

QString linesOf(int n)
{
    QString text;
    text.reserve(n * 12);
    for (int i = 1; i <= n; ++i)
        text += QStringLiteral("line %1\n").arg(i);
    return text;
}

qint64 loadBytes()
{
    return CgBench::smoke() ? qint64(64) << 10 : qint64(20) << 20;
}

template <typename Editor>
void show(Editor& editor)
{
    editor.resize(800, 600);
    editor.show();
    QApplication::processEvents();
}

// ------------------------------------------------------------------------------------------ load

void BM_Load_EPlainTextEdit_setText(benchmark::State& state)
{
    privateSettings();
    const QString text = textOf(loadBytes());
    EPlainTextEdit editor(false);
    show(editor);
    for (auto _ : state) {
        editor.setText(text);
        QApplication::processEvents(); // the gutter and the highlight paint here
    }
    state.counters["MiB"] = double(loadBytes()) / (1 << 20);
}
BENCHMARK(BM_Load_EPlainTextEdit_setText)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Load_QPlainTextEdit_setPlainText(benchmark::State& state)
{
    const QString text = textOf(loadBytes());
    QPlainTextEdit editor;
    show(editor);
    for (auto _ : state) {
        editor.setPlainText(text);
        QApplication::processEvents();
    }
    state.counters["MiB"] = double(loadBytes()) / (1 << 20);
}
BENCHMARK(BM_Load_QPlainTextEdit_setPlainText)->Unit(benchmark::kMillisecond)->Iterations(3);

// ------------------------------------------------------------------------- gutter and cursor

void lineCounts(benchmark::internal::Benchmark* b)
{
    if (CgBench::smoke()) {
        b->Arg(1000);
        return;
    }
    b->Arg(1000)->Arg(1000000);
}

/// One step of the cursor in the middle of the document (down, then back up) and the repaint it
/// causes; for ours the gutter is repainted too.
template <typename Editor>
void runCursor(benchmark::State& state, Editor& editor, QWidget* gutter)
{
    editor.setPlainText(linesOf(int(state.range(0))));
    show(editor);
    QTextCursor middle(editor.document()->findBlockByNumber(int(state.range(0)) / 2));
    editor.setTextCursor(middle);
    editor.centerCursor();
    QApplication::processEvents();
    bool down = true;
    for (auto _ : state) {
        editor.moveCursor(down ? QTextCursor::Down : QTextCursor::Up);
        down = !down;
        editor.viewport()->repaint();
        if (gutter)
            gutter->repaint();
    }
}

void BM_Cursor_EPlainTextEdit_withGutter(benchmark::State& state)
{
    privateSettings();
    EPlainTextEdit editor(false);
    runCursor(state, editor, editor.findChild<QWidget*>(QStringLiteral("lineNumberArea")));
}
BENCHMARK(BM_Cursor_EPlainTextEdit_withGutter)->Apply(lineCounts)->Unit(benchmark::kMicrosecond);

void BM_Cursor_QPlainTextEdit(benchmark::State& state)
{
    QPlainTextEdit editor;
    runCursor(state, editor, nullptr);
}
BENCHMARK(BM_Cursor_QPlainTextEdit)->Apply(lineCounts)->Unit(benchmark::kMicrosecond);

// -------------------------------------------------------------------------------------- find

/// Answers every modal box with its Escape button (Cancel for the restart question) as soon as it shows.
class Decliner : public QObject
{
public:
    Decliner()
    {
        connect(&timer, &QTimer::timeout, this, [] {
            if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                box->reject();
        });
        timer.start(0);
    }

private:
    QTimer timer;
};

void BM_FindAbsent_EPlainTextEdit_find(benchmark::State& state)
{
    privateSettings();
    EPlainTextEdit editor(false);
    editor.setText(textOf(loadBytes()));
    show(editor);
    editor.getFindDialog()->findChild<QComboBox*>(QStringLiteral("Find_what"))->setEditText(QStringLiteral("absent"));
    const QTextCursor middle(editor.document()->findBlockByNumber(editor.blockCount() / 2));
    Decliner decline;
    for (auto _ : state) {
        editor.setTextCursor(middle);
        if (editor.find()) // searches to the end, asks whether to restart, is told no
            state.SkipWithError("found a text that is not there");
    }
}
BENCHMARK(BM_FindAbsent_EPlainTextEdit_find)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_FindAbsent_QTextDocument_find(benchmark::State& state)
{
    QTextDocument document;
    document.setPlainText(textOf(loadBytes()));
    const QTextCursor middle(document.findBlockByNumber(document.blockCount() / 2));
    for (auto _ : state) {
        if (!document.find(QStringLiteral("absent"), middle).isNull())
            state.SkipWithError("found a text that is not there");
    }
}
BENCHMARK(BM_FindAbsent_QTextDocument_find)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
