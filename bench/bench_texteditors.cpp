// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The code and policy editors against what an application would write with stock Qt: read the
// file, decode it with QTextCodec and QPlainTextEdit::setPlainText it; encode with QTextCodec and
// fwrite it.
//
// Peak memory is the growth of the resident set while one load runs into a fresh widget: the peak
// (VmHWM) is reset through /proc/self/clear_refs before the load, and the heap is trimmed first, so
// it counts the buffers, the decoded text and the document that exist at the same time.
#include "benchutil.h"

#include "ecodeeditor.h"
#include "elsptextedit.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTextCodec>

#include <cstdio>
#include <cstring>
#include <functional>
#include <malloc.h>
#include <memory>

namespace {

/// 20 MiB, or 256 KiB in a smoke run.
qint64 bigSize()
{
    return CgBench::smoke() ? 256 * 1024 : 20 * 1024 * 1024;
}

QTemporaryDir& workDir()
{
    static QTemporaryDir dir;
    return dir;
}

/// A Windows-1251 policy-like text of about \a size bytes, lines of 60-odd characters.
QByteArray cyrillicText(qint64 size)
{
    const QByteArray line = QTextCodec::codecForName("Windows-1251")
                                ->fromUnicode(QString::fromUtf8("    Name = \"Правило фильтрации номер %1 для шлюза\"\n"));
    QByteArray text;
    text.reserve(int(size + line.size()));
    for (int i = 0; text.size() < size; ++i)
        text += QByteArray(line).replace("%1", QByteArray::number(i));
    return text;
}

QString bigFile()
{
    static QString path;
    if (path.isEmpty()) {
        path = workDir().filePath(QStringLiteral("big-1251.txt"));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(cyrillicText(bigSize()));
    }
    return path;
}

long statusField(const char* name)
{
    long value = 0;
    if (FILE* f = std::fopen("/proc/self/status", "r")) {
        char line[256];
        const size_t length = std::strlen(name);
        while (std::fgets(line, sizeof line, f)) {
            if (std::strncmp(line, name, length) == 0) {
                value = std::atol(line + length) * 1024;
                break;
            }
        }
        std::fclose(f);
    }
    return value;
}

/// The resident growth while \a work runs, in MiB; 0 where the kernel cannot reset the peak.
double peakMiB(const std::function<void()>& work)
{
    malloc_trim(0);
    FILE* clear = std::fopen("/proc/self/clear_refs", "w");
    if (!clear)
        return 0;
    std::fputs("5", clear);
    std::fclose(clear);
    const long before = statusField("VmRSS:");
    work();
    return double(statusField("VmHWM:") - before) / (1024.0 * 1024.0);
}

void stockLoad(QPlainTextEdit& edit, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.readAll();
    edit.setPlainText(QTextCodec::codecForName("Windows-1251")->toUnicode(bytes));
}

/// Times \a load of the big file into a widget made by \a make, and reports the peak memory of
/// one load into a fresh widget.
template <typename Widget>
void runLoad(benchmark::State& state, const std::function<Widget*()>& make,
             const std::function<void(Widget&, const QString&)>& load)
{
    const QString path = bigFile();
    state.counters["peak_MiB"] = peakMiB([&] {
        std::unique_ptr<Widget> fresh(make());
        load(*fresh, path);
    });
    std::unique_ptr<Widget> widget(make());
    for (auto _ : state)
        load(*widget, path);
    state.SetBytesProcessed(state.iterations() * bigSize());
}

void BM_Load_StockQt(benchmark::State& state)
{
    runLoad<QPlainTextEdit>(state, [] { return new QPlainTextEdit; }, stockLoad);
}

void BM_Load_ECodeEditor(benchmark::State& state)
{
    runLoad<ECodeEditor>(state, [] { return new ECodeEditor(false); },
                         [](ECodeEditor& e, const QString& path) { e.loadFromFile(path); });
}

void BM_Load_ELSPTextEdit(benchmark::State& state)
{
    runLoad<ELSPTextEdit>(state, [] { return new ELSPTextEdit(false); }, [](ELSPTextEdit& e, const QString& path) {
        e.loadFromFile(path, ELSPTextEdit::defaultEncodingForLSP);
    });
}

/// One character typed into the first line (after its declaration) and taken back with
/// Backspace, in a document of range(0) lines (0: the big file).
template <typename Widget>
void runTyping(benchmark::State& state, Widget& edit)
{
    QByteArray text = QByteArray("# encoding: Windows-1251\n");
    if (state.range(0) == 0)
        text += cyrillicText(bigSize());
    else
        text += cyrillicText(1).repeated(int(state.range(0)));
    edit.setPlainText(QTextCodec::codecForName("Windows-1251")->toUnicode(text));
    edit.resize(600, 400);
    edit.show();
    QApplication::processEvents();
    QTextCursor cursor = edit.textCursor();
    cursor.setPosition(2);
    edit.setTextCursor(cursor);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QKeyEvent back(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
    for (auto _ : state) {
        QApplication::sendEvent(&edit, &letter);
        QApplication::sendEvent(&edit, &back);
    }
    state.SetItemsProcessed(state.iterations() * 2);
}

void BM_TypeFirstLine_StockQt(benchmark::State& state)
{
    QPlainTextEdit edit;
    runTyping(state, edit);
}

void BM_TypeFirstLine_ECodeEditor(benchmark::State& state)
{
    ECodeEditor edit(false);
    runTyping(state, edit);
}

void typingSizes(benchmark::internal::Benchmark* b)
{
    b->ArgName("lines")->Arg(20)->Arg(0);
}

/// Times saving the big text; the stock contender encodes and fwrites it.
void BM_Save_StockQt(benchmark::State& state)
{
    QPlainTextEdit edit;
    stockLoad(edit, bigFile());
    const QByteArray out = QFile::encodeName(workDir().filePath(QStringLiteral("out-stock.txt")));
    for (auto _ : state) {
        const QByteArray bytes = QTextCodec::codecForName("Windows-1251")->fromUnicode(edit.toPlainText());
        if (FILE* f = std::fopen(out.constData(), "wb")) {
            std::fwrite(bytes.constData(), 1, size_t(bytes.size()), f);
            std::fclose(f);
        }
    }
    state.SetBytesProcessed(state.iterations() * bigSize());
}

void BM_Save_ECodeEditor(benchmark::State& state)
{
    ECodeEditor edit(false);
    edit.loadFromFile(bigFile());
    const QString out = workDir().filePath(QStringLiteral("out-code.txt"));
    for (auto _ : state)
        edit.saveToFile(out);
    state.SetBytesProcessed(state.iterations() * bigSize());
}

void BM_Save_ELSPTextEdit(benchmark::State& state)
{
    ELSPTextEdit edit(false);
    edit.loadFromFile(bigFile(), ELSPTextEdit::defaultEncodingForLSP);
    const QString out = workDir().filePath(QStringLiteral("out-lsp.txt"));
    for (auto _ : state)
        edit.saveToFile(out, ELSPTextEdit::defaultEncodingForLSP);
    state.SetBytesProcessed(state.iterations() * bigSize());
}

} // namespace

BENCHMARK(BM_Load_StockQt)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Load_ECodeEditor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Load_ELSPTextEdit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TypeFirstLine_StockQt)->Apply(typingSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TypeFirstLine_ECodeEditor)->Apply(typingSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Save_StockQt)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save_ECodeEditor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save_ELSPTextEdit)->Unit(benchmark::kMillisecond);
