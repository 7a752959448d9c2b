// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "etranscoder.h"

#include <QTextCodec>

#include <thread>
#include <vector>

namespace {

QByteArray encode(const char* codecName, const QString& text)
{
    QTextCodec* codec = QTextCodec::codecForName(codecName);
    return codec ? codec->fromUnicode(text) : QByteArray();
}

} // namespace

class TestETranscoder : public QObject
{
    Q_OBJECT
private slots:
    void decodesEveryCodePage_data();
    void decodesEveryCodePage();
    void lengthAndNulRules_data();
    void lengthAndNulRules();
    void sharedByThreadsGivesWhatOneThreadGives_data();
    void sharedByThreadsGivesWhatOneThreadGives();
};

void TestETranscoder::decodesEveryCodePage_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("qtName");
    QTest::addColumn<QString>("text");
    const QString russian = QString::fromUtf8("Съешь же ещё этих мягких французских булок, да выпей чаю. ЁЖ №5");
    QTest::newRow("Windows-1251") << CP_WINDOWS1251 << QByteArray("windows-1251") << russian + QString::fromUtf8(" «Ђђ» —");
    QTest::newRow("KOI8-R") << CP_KOI8R << QByteArray("KOI8-R") << russian.left(40) + QString::fromUtf8(" ─│┌");
    QTest::newRow("KOI8-U") << CP_KOI8U << QByteArray("KOI8-U") << QString::fromUtf8("Ґанок, їжак, єнот");
    QTest::newRow("CP866") << CP_IBM866 << QByteArray("IBM866") << russian;
    QTest::newRow("ISO-8859-5") << CP_ISO8859_5 << QByteArray("ISO-8859-5") << russian;
    QTest::newRow("Windows-1252") << CP_WINDOWS1252 << QByteArray("windows-1252") << QString::fromUtf8("Ça coûte 5 € — déjà");
    QTest::newRow("ISO-8859-1") << CP_ISO8859_1 << QByteArray("ISO-8859-1") << QString::fromUtf8("naïve façade ÿ");
    QTest::newRow("UTF-16LE") << CP_UTF16LE << QByteArray("UTF-16LE") << QString::fromUtf8("Ёж 😀 中文");
    QTest::newRow("UTF-8") << CP_UTF8 << QByteArray("UTF-8") << QString::fromUtf8("Ёж 😀 中文");
    QTest::newRow("long") << CP_WINDOWS1251 << QByteArray("windows-1251") << russian.repeated(5000);
}

void TestETranscoder::decodesEveryCodePage()
{
    QFETCH(int, page);
    QFETCH(QByteArray, qtName);
    QFETCH(QString, text);
    const QByteArray bytes = encode(qtName.constData(), text);
    QVERIFY(!bytes.isEmpty());
    ETranscoder transcoder;
    transcoder.setEncoding(page);
    QCOMPARE(transcoder.doTranscode(bytes.constData(), unsigned(bytes.size())), text);
}

void TestETranscoder::lengthAndNulRules_data()
{
    QTest::addColumn<QList<int>>("encodings");   // set one after the other
    QTest::addColumn<QByteArray>("bytes");       // a NUL follows them
    QTest::addColumn<uint>("length");
    QTest::addColumn<QString>("expected");
    const QList<int> cp1251{CP_WINDOWS1251};
    const QByteArray abv("\xc0\xc1\xc2");        // "АБВ" in Windows-1251
    QTest::newRow("UTF-8 ignores the length") << QList<int>{} << QByteArray("abc") << 1u << QStringLiteral("abc");
    QTest::newRow("UTF-8, length past the NUL") << QList<int>{} << QByteArray("ab\0cd", 5) << 5u << QStringLiteral("ab");
    QTest::newRow("a code page takes the length") << cp1251 << abv << 2u << QString::fromUtf8("АБ");
    QTest::newRow("length 0") << cp1251 << abv << 0u << QString();
    QTest::newRow("a NUL inside the length ends it") << cp1251 << QByteArray("\xc0\0\xc1", 3) << 3u << QString::fromUtf8("А");
    // 0x98 is no character of Windows-1251: the text comes back as if it were UTF-8.
    QTest::newRow("cannot convert: UTF-8 to the NUL") << cp1251 << QByteArray("ab\x98 \xd0\xaf") << 6u << QString::fromUtf8("ab\xef\xbf\xbd Я");
    QTest::newRow("back to UTF-8 drops the converter") << QList<int>{CP_WINDOWS1251, CP_UTF8} << QByteArray("\xd0\xaf\xd0\xaf") << 2u
                                                       << QString::fromUtf8("ЯЯ");
    QTest::newRow("the latest code page counts") << QList<int>{CP_WINDOWS1251, CP_KOI8R} << abv << 3u << QString::fromUtf8("юаб");
    QTest::newRow("unknown code page: UTF-8") << QList<int>{999} << QByteArray("\xd0\xaf\xc0") << 1u << QString::fromUtf8("Я\xef\xbf\xbd");
    QTest::newRow("UTF-16LE takes the length") << QList<int>{CP_UTF16LE} << QByteArray("A\0B\0", 4) << 2u << QStringLiteral("A");
}

void TestETranscoder::lengthAndNulRules()
{
    QFETCH(QList<int>, encodings);
    QFETCH(QByteArray, bytes);
    QFETCH(uint, length);
    ETranscoder transcoder;
    for (const int encoding : encodings)
        transcoder.setEncoding(encoding);
    QTEST(transcoder.doTranscode(bytes.constData(), length), "expected");   // QByteArray ends with NUL
}

void TestETranscoder::sharedByThreadsGivesWhatOneThreadGives_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("qtName");
    QTest::newRow("Windows-1251, by table") << CP_WINDOWS1251 << QByteArray("windows-1251");
    QTest::newRow("UTF-16LE, through iconv") << CP_UTF16LE << QByteArray("UTF-16LE");
}

void TestETranscoder::sharedByThreadsGivesWhatOneThreadGives()
{
    QFETCH(int, page);
    QFETCH(QByteArray, qtName);
    // Texts of different lengths, so that conversions overlap in every way.
    std::vector<QByteArray> inputs;
    for (int i = 0; i < 16; ++i)
        inputs.push_back(encode(qtName.constData(), QString::fromUtf8("Строка %1: съешь же ещё этих булок. ").arg(i).repeated(1 + i * 37)));
    ETranscoder transcoder;
    transcoder.setEncoding(page);
    std::vector<QString> expected;
    for (const QByteArray& input : inputs)
        expected.push_back(transcoder.doTranscode(input.constData(), unsigned(input.size())));

    const int threadCount = 4;
    const int rounds = 50;
    std::vector<int> mismatches(threadCount, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&, t] {
            for (int round = 0; round < rounds; ++round) {
                const size_t i = size_t(t * 7 + round) % inputs.size();
                // Setting the code page it already has must not disturb the others' conversions.
                transcoder.setEncoding(page);
                if (transcoder.doTranscode(inputs[i].constData(), unsigned(inputs[i].size())) != expected[i])
                    ++mismatches[size_t(t)];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(mismatches, std::vector<int>(threadCount, 0));
    QVERIFY(expected[3].startsWith(QString::fromUtf8("Строка 3: съешь")));
}

CG_TEST_MAIN(TestETranscoder)
#include "tst_etranscoder.moc"
