// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "edirs.h"
#include "esettings.h"

#include <QTemporaryDir>
#include <QWidget>

static QVariant stored(const QString& key, const QString& file = QStringLiteral("common_gui.ini"))
{
    return QSettings(EDirs::getSettingsDir().filePath(file), QSettings::IniFormat).value(key);
}

class TestESettings : public QObject
{
    Q_OBJECT
private slots:
    void fileNamesPickTheFile();
    void listsUseItemKeysAndDropTheOldTail();
    void arrayHelpersKeepTheirPlaceInTheGroup();
    void geometryRoundTripsAndBadValuesLeaveTheWidget();
    void arraysReadOnlyWhatTheFileHolds_data();
    void arraysReadOnlyWhatTheFileHolds();
    void emptyArrayNameTouchesNothing();
};

static void writeIni(const QByteArray& text, const QString& file = QStringLiteral("common_gui.ini"))
{
    QFile f(EDirs::getSettingsDir().filePath(file));
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(f.write(text), qint64(text.size()));
}

void TestESettings::fileNamesPickTheFile()
{
    QTemporaryDir elsewhere;
    const QString absolute = elsewhere.filePath(QStringLiteral("absolute.ini"));
    static QStringList warnings;
    const QtMessageHandler previous = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtWarningMsg)
            warnings.append(text);
    });
    ESettings(QString{}).setValue(QStringLiteral("Top"), 1); // no group: no unmatched endGroup()
    qInstallMessageHandler(previous);
    QCOMPARE(warnings, QStringList());
    ESettings("mine.ini", QStringLiteral("G")).setValue(QStringLiteral("Key"), 7);
    ESettings(absolute.toLatin1().constData(), QStringLiteral("A")).setValue(QStringLiteral("Key"), 1);
    ESettings(QDir(elsewhere.path()), "beside.ini", QStringLiteral("B")).setValue(QStringLiteral("Key"), 2);
    QCOMPARE(stored(QStringLiteral("Top")).toInt(), 1);
    QCOMPARE(stored(QStringLiteral("G/Key"), QStringLiteral("mine.ini")).toInt(), 7);
    QCOMPARE(QSettings(absolute, QSettings::IniFormat).value(QStringLiteral("A/Key")).toInt(), 1);
    QCOMPARE(stored(QStringLiteral("B/Key"), elsewhere.filePath(QStringLiteral("beside.ini"))).toInt(), 2);
    QVERIFY(!QFile::exists(EDirs::getSettingsDir().filePath(QStringLiteral("beside.ini"))));
}

void TestESettings::listsUseItemKeysAndDropTheOldTail()
{
    for (const QList<int>& cols : {QList<int>{1, 2, 3, 4, 5}, QList<int>{10, 20}}) {
        ESettings s(QStringLiteral("T"));
        ESettings::setList("Cols", cols, s);
        ESettings::setList("W", {}, s);
    }
    QCOMPARE(stored(QStringLiteral("T/Cols/size")).toInt(), 2);
    QCOMPARE(stored(QStringLiteral("T/Cols/1/Item")).toInt(), 10);
    QVERIFY(!stored(QStringLiteral("T/Cols/3/Item")).isValid());
    QCOMPARE(stored(QStringLiteral("T/W/size")), QVariant(QStringLiteral("0")));

    ESettings s(QStringLiteral("T"));
    QList<int> list{1, 2};
    ESettings::getList("Cols", list, s);
    QCOMPARE(list, (QList<int>{10, 20}));
    ESettings::getList("Absent", list, s);
    QVERIFY(list.isEmpty());

    // A damaged file reads as defaults.
    QFile f(EDirs::getSettingsDir().filePath(QStringLiteral("garbage.ini")));
    QVERIFY(f.open(QIODevice::WriteOnly) && f.write("\x01\x02[[[=\xff\xfe\nCols\\size=banana\n\0\0\0", 25) == 25);
    f.close();
    ESettings garbage("garbage.ini", QStringLiteral("X"));
    list = {3};
    ESettings::getList("Cols", list, garbage);
    QVERIFY(list.isEmpty());
    QCOMPARE(garbage.value(QStringLiteral("Key"), 42).toInt(), 42);
}

void TestESettings::arrayHelpersKeepTheirPlaceInTheGroup()
{
    {
        ESettings s(QStringLiteral("S"));
        ESettingsWriteArray(s, QStringLiteral("Names")).write(QStringLiteral("one"));
        s.setValue(QStringLiteral("After"), 1); // in the group, not in the array
    }
    QCOMPARE(stored(QStringLiteral("S/Names/1/Item")).toString(), QStringLiteral("one"));
    QCOMPARE(stored(QStringLiteral("S/After")).toInt(), 1);

    ESettings s(QStringLiteral("S"));
    {
        ESettingsReadArray names(s, QStringLiteral("Names"));
        QCOMPARE(names.getSize(), 1);
        QCOMPARE(names.read().toString(), QStringLiteral("one"));
        QVERIFY(!names.read().isValid()); // the bound is the caller's business
        QCOMPARE(names.getIndex(), 2);
    }
    QCOMPARE(s.value(QStringLiteral("After")).toInt(), 1);
}

void TestESettings::geometryRoundTripsAndBadValuesLeaveTheWidget()
{
    QWidget w, other;
    w.setGeometry(40, 50, 320, 240);
    ESettings(QStringLiteral("Geo")).saveGeometry(&w);
    QVERIFY(!stored(QStringLiteral("Geo/Geometry")).toByteArray().isEmpty()); // relative to the group
    QVERIFY(ESettings(QStringLiteral("Geo")).loadGeometry(&other));
    QCOMPARE(other.size(), QSize(320, 240));

    ESettings s(QStringLiteral("NoGeometry"));
    QVERIFY(!s.loadGeometry(&w));
    s.setValue(QStringLiteral("Geometry"), QByteArray("not a geometry"));
    QVERIFY(!s.loadGeometry(&w));
    QCOMPARE(w.geometry(), QRect(40, 50, 320, 240));
}

void TestESettings::arraysReadOnlyWhatTheFileHolds_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<int>("size"); // what the array reader reports
    QTest::addColumn<QList<int>>("list");
    QTest::newRow("two billion claimed, none there") << QByteArray("[A]\nL\\size=2147483647\n") << 0 << QList<int>();
    QTest::newRow("300000 claimed, none there") << QByteArray("[A]\nL\\size=300000\n") << 0 << QList<int>();
    QTest::newRow("huge claim, two there")
        << QByteArray("[A]\nL\\size=2147483647\nL\\1\\Item=7\nL\\2\\Item=8\n") << 2 << QList<int>{7, 8};
    QTest::newRow("hole ends the list")
        << QByteArray("[A]\nL\\size=5\nL\\1\\Item=7\nL\\3\\Item=9\n") << 3 << QList<int>{7};
    QTest::newRow("elements past the size are not read")
        << QByteArray("[A]\nL\\size=1\nL\\1\\Item=7\nL\\2\\Item=8\n") << 1 << QList<int>{7};
    QTest::newRow("negative size") << QByteArray("[A]\nL\\size=-4\nL\\1\\Item=7\n") << 0 << QList<int>();
    QTest::newRow("odd element names") << QByteArray("[A]\nL\\size=9\nL\\01\\Item=7\nL\\x\\Item=8\n") << 0 << QList<int>();
}

void TestESettings::arraysReadOnlyWhatTheFileHolds()
{
    QFETCH(QByteArray, ini);
    QFETCH(int, size);
    QFETCH(QList<int>, list);
    // A file of its own per row: QSettings keeps what it read while the size and time look alike.
    const QByteArray file = "rows" + QByteArray::number(qHash(QTest::currentDataTag())) + ".ini";
    writeIni(ini, QString::fromLatin1(file));
    ESettings s(file.constData(), QStringLiteral("A"));
    QCOMPARE(ESettingsReadArray(s, QStringLiteral("L")).getSize(), size);
    QList<int> read{99};
    ESettings::getList("L", read, s);
    QCOMPARE(read, list);
}

void TestESettings::emptyArrayNameTouchesNothing()
{
    writeIni("[Win]\nGeometry=@ByteArray(abc)\nSize=@Size(300 200)\nL\\size=1\nL\\1\\Item=4\n");
    {
        ESettings s(QStringLiteral("Win"));
        ESettings::setList("", {1, 2}, s);
        ESettingsWriteArray(s, QString()).write(5);
        QCOMPARE(ESettingsReadArray(s, QString()).getSize(), 0);
        QList<int> list{3};
        ESettings::getList("", list, s);
        QVERIFY(list.isEmpty());
    }
    ESettings s(QStringLiteral("Win"));
    QCOMPARE(s.allKeys(), (QStringList{QStringLiteral("Geometry"), QStringLiteral("L/1/Item"),
                                       QStringLiteral("L/size"), QStringLiteral("Size")}));
    QCOMPARE(s.value(QStringLiteral("Size")).toSize(), QSize(300, 200));
}

CG_TEST_MAIN(TestESettings)
#include "tst_esettings.moc"
