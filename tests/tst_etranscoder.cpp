// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "etranscoder.h"

#include <QTextCodec>

#include <random>
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
    void decodesText_data();
    void decodesText();
    void singleBytePagesMatchTheWayThroughUtf8_data();
    void singleBytePagesMatchTheWayThroughUtf8();
    void lengthAndNulRules_data();
    void lengthAndNulRules();
    void sharedByThreadsGivesWhatOneThreadGives_data();
    void sharedByThreadsGivesWhatOneThreadGives();
};

void TestETranscoder::decodesText_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("qtName");
    QTest::addColumn<QString>("text");
    // By table and through iconv; convi's own tests go through every code page.
    const QString russian = QString::fromUtf8("Съешь же ещё этих мягких французских булок, да выпей чаю. ЁЖ №5 «Ђђ» —");
    QTest::newRow("Windows-1251, long") << CP_WINDOWS1251 << QByteArray("windows-1251") << russian.repeated(5000);
    QTest::newRow("KOI8-U") << CP_KOI8U << QByteArray("KOI8-U") << QString::fromUtf8("Ґанок, їжак, єнот");
    QTest::newRow("UTF-16LE") << CP_UTF16LE << QByteArray("UTF-16LE") << QString::fromUtf8("Ёж 😀 中文");
    QTest::newRow("UTF-8") << CP_UTF8 << QByteArray("UTF-8") << QString::fromUtf8("Ёж 😀 中文");
}

void TestETranscoder::decodesText()
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

void TestETranscoder::singleBytePagesMatchTheWayThroughUtf8_data()
{
    QTest::addColumn<int>("page");
    for (const int page : {CP_IBM866, CP_WINDOWS1251, CP_WINDOWS1252, CP_KOI8R, CP_KOI8U, CP_ISO8859_1, CP_ISO8859_5})
        QTest::addRow("code page %d", page) << page;
}

void TestETranscoder::singleBytePagesMatchTheWayThroughUtf8()
{
    QFETCH(int, page);
    // The conversion as convi's interface offers it: size in UTF-8, convert, read up to the NUL.
    convi converter(page, CP_UTF8);
    auto throughUtf8 = [&](const QByteArray& bytes) {
        const unsigned outsize = converter.get_outsize(bytes.constData(), unsigned(bytes.size()));
        if (outsize == 0)
            return QString::fromUtf8(bytes.constData());
        QByteArray utf8(int(outsize), '\x7f');
        converter.convert_safe(bytes.constData(), unsigned(bytes.size()), utf8.data(), outsize);
        return QString::fromUtf8(utf8.constData());
    };
    std::vector<QByteArray> inputs;
    QByteArray all;
    for (int b = 0; b < 256; ++b) {
        inputs.push_back(QByteArray(1, char(b)));
        inputs.push_back("ab" + QByteArray(1, char(b)) + '\0' + "\xc0");   // after a NUL
        inputs.push_back(QByteArray("\xc0\0", 2) + char(b));                // a NUL, then this byte
        all += char(b);
    }
    inputs.push_back(all);
    inputs.push_back(all.mid(1));
    std::mt19937 random(7);
    for (int i = 0; i < 50; ++i) {
        QByteArray bytes(int(random() % 300), '\0');
        for (char& c : bytes)
            c = char(0x80 + random() % 128);
        inputs.push_back(bytes);
    }
    ETranscoder transcoder;
    transcoder.setEncoding(page);
    for (const QByteArray& bytes : inputs) {
        const QString result = transcoder.doTranscode(bytes.constData(), unsigned(bytes.size()));
        if (result != throughUtf8(bytes))
            QFAIL(qPrintable(QStringLiteral("differs for %1").arg(QString::fromLatin1(bytes.toHex()))));
    }
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
