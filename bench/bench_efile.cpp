// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Reading a file byte by byte through EFileCharStream against the plain C ways (fread into a 64 KiB
// buffer, fgetc) and QFile::getChar; ETranscoder against iconv + QString::fromUtf8 and QTextCodec.
// The file is 20 MiB of Windows-1251 text (256 KiB in a smoke run), read from the page cache.
#include "benchutil.h"

#include "efile.h"
#include "etranscoder.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <cstdio>
#include <iconv.h>
#include <memory>
#include <vector>

namespace {

constexpr long pieceSize = 64 * 1024;

int fileBytes()
{
    return CgBench::smoke() ? 256 * 1024 : 20 * 1024 * 1024;
}

// Russian prose in Windows-1251 with line breaks, the kind of text the editors open.
const QByteArray& windows1251Text()
{
    static QByteArray text;
    if (text.isEmpty()) {
        const QByteArray line = QTextCodec::codecForName("windows-1251")->fromUnicode(
            QString::fromUtf8("Съешь же ещё этих мягких французских булок, да выпей чаю. Строка №%1 — «ёжик».\n"));
        text.reserve(fileBytes() + line.size() + 16);
        for (int i = 0; text.size() < fileBytes(); ++i)
            text += line;
        text.truncate(fileBytes());
    }
    return text;
}

// The text as a file in a temporary directory that lives as long as the process.
const QString& textFile()
{
    static QTemporaryDir dir;
    static QString name;
    if (name.isEmpty()) {
        name = dir.filePath(QStringLiteral("text.txt"));
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(windows1251Text()) != windows1251Text().size())
            std::abort();
    }
    return name;
}

void bytesProcessed(benchmark::State& state, long sum)
{
    state.counters["sum"] = double(sum);   // the same for every contender, or one of them misreads
    state.SetBytesProcessed(int64_t(state.iterations()) * fileBytes());
}

// ------------------------------------------------------------------------------ byte by byte

void BM_ReadBytes_EFileCharStream(benchmark::State& state)
{
    const QString& name = textFile();
    long sum = 0;
    for (auto _ : state) {
        EFileCharStream stream(name);
        stream.open(EFile::ReadOnly);
        stream.openStream(0, pieceSize);
        sum = 0;
        for (int c; (c = stream.getChar()) >= 0;)
            sum += c;
        benchmark::DoNotOptimize(sum);
    }
    bytesProcessed(state, sum);
}
BENCHMARK(BM_ReadBytes_EFileCharStream)->Unit(benchmark::kMillisecond);

// fread into a 64 KiB buffer, each buffer summed by \a sumOf.
template <typename SumOf>
void freadLoop(benchmark::State& state, SumOf sumOf)
{
    const QByteArray name = QFile::encodeName(textFile());
    std::vector<unsigned char> buffer(pieceSize);
    long sum = 0;
    for (auto _ : state) {
        FILE* file = std::fopen(name.constData(), "rb");
        sum = 0;
        for (size_t n; (n = std::fread(buffer.data(), 1, buffer.size(), file)) > 0;)
            sum += sumOf(buffer.data(), n);
        std::fclose(file);
        benchmark::DoNotOptimize(sum);
    }
    bytesProcessed(state, sum);
}

void BM_ReadBytes_fread64KiB(benchmark::State& state)
{
    freadLoop(state, [](const unsigned char* bytes, size_t n) {
        long sum = 0;
        for (size_t i = 0; i < n; ++i)
            sum += bytes[i];
        return sum;
    });
}
BENCHMARK(BM_ReadBytes_fread64KiB)->Unit(benchmark::kMillisecond);

// The same with the sum kept one byte at a time, as the compiler cannot vectorize the stream's
// loop either: shows how much of the gap to the loop above is the summing rather than the stream.
#if defined(__GNUC__) && !defined(__clang__)
__attribute__((optimize("no-tree-vectorize")))
#endif
long scalarSum(const unsigned char* bytes, size_t n)
{
    long sum = 0;
    for (size_t i = 0; i < n; ++i)
        sum += bytes[i];
    return sum;
}

void BM_ReadBytes_fread64KiBScalarSum(benchmark::State& state)
{
    freadLoop(state, scalarSum);
}
BENCHMARK(BM_ReadBytes_fread64KiBScalarSum)->Unit(benchmark::kMillisecond);

void BM_ReadBytes_fgetc(benchmark::State& state)
{
    const QByteArray name = QFile::encodeName(textFile());
    long sum = 0;
    for (auto _ : state) {
        FILE* file = std::fopen(name.constData(), "rb");
        sum = 0;
        for (int c; (c = std::fgetc(file)) != EOF;)
            sum += c;
        std::fclose(file);
        benchmark::DoNotOptimize(sum);
    }
    bytesProcessed(state, sum);
}
BENCHMARK(BM_ReadBytes_fgetc)->Unit(benchmark::kMillisecond);

void BM_ReadBytes_QFileGetChar(benchmark::State& state)
{
    const QString& name = textFile();
    long sum = 0;
    for (auto _ : state) {
        QFile file(name);
        file.open(QIODevice::ReadOnly);
        sum = 0;
        for (char c; file.getChar(&c);)
            sum += static_cast<unsigned char>(c);
        benchmark::DoNotOptimize(sum);
    }
    bytesProcessed(state, sum);
}
BENCHMARK(BM_ReadBytes_QFileGetChar)->Unit(benchmark::kMillisecond);

// ---------------------------------------------------------------------- Windows-1251 to QString

void BM_Decode1251_ETranscoder(benchmark::State& state)
{
    const QByteArray& text = windows1251Text();   // QByteArray keeps a NUL after its bytes
    ETranscoder transcoder;
    transcoder.setEncoding(CP_WINDOWS1251);
    int length = 0;
    for (auto _ : state) {
        const QString s = transcoder.doTranscode(text.constData(), unsigned(text.size()));
        length = s.size();
        benchmark::DoNotOptimize(length);
    }
    state.counters["chars"] = length;
    state.SetBytesProcessed(int64_t(state.iterations()) * text.size());
}
BENCHMARK(BM_Decode1251_ETranscoder)->Unit(benchmark::kMillisecond);

void BM_Decode1251_iconvThenFromUtf8(benchmark::State& state)
{
    const QByteArray& text = windows1251Text();
    iconv_t cd = ::iconv_open("UTF-8", "WINDOWS-1251");
    int length = 0;
    for (auto _ : state) {
        std::unique_ptr<char[]> out(new char[size_t(text.size()) * 3]);
        char* in = const_cast<char*>(text.constData());
        size_t inLeft = size_t(text.size());
        char* o = out.get();
        size_t outLeft = size_t(text.size()) * 3;
        ::iconv(cd, nullptr, nullptr, nullptr, nullptr);
        ::iconv(cd, &in, &inLeft, &o, &outLeft);
        const QString s = QString::fromUtf8(out.get(), int(o - out.get()));
        length = s.size();
        benchmark::DoNotOptimize(length);
    }
    ::iconv_close(cd);
    state.counters["chars"] = length;
    state.SetBytesProcessed(int64_t(state.iterations()) * text.size());
}
BENCHMARK(BM_Decode1251_iconvThenFromUtf8)->Unit(benchmark::kMillisecond);

void BM_Decode1251_QTextCodec(benchmark::State& state)
{
    const QByteArray& text = windows1251Text();
    QTextCodec* codec = QTextCodec::codecForName("windows-1251");
    int length = 0;
    for (auto _ : state) {
        const QString s = codec->toUnicode(text);
        length = s.size();
        benchmark::DoNotOptimize(length);
    }
    state.counters["chars"] = length;
    state.SetBytesProcessed(int64_t(state.iterations()) * text.size());
}
BENCHMARK(BM_Decode1251_QTextCodec)->Unit(benchmark::kMillisecond);

} // namespace
