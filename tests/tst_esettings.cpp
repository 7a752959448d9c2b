// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "edirs.h"
#include "esettings.h"

#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

namespace {

QStringList warnings;

void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg)
        warnings.append(text);
}

} // namespace

class TestESettings : public QObject
{
    Q_OBJECT
private slots:
    void relativeNamesLandInTheSettingsDirectory();
    void absoluteNamesAndDirectoriesAreUsedAsGiven();
    void arraysUseTheItemKeyAndDropTheOldTail();
    void arrayHelpersKeepTheirPlaceInTheGroup();
    void emptyListStoresSizeZero();
    void getListClearsItsOutputFirst();
    void loadGeometryWithoutValueLeavesTheWidget();
    void geometryRoundTrips();
    void garbageFileReadsAsDefaults();
};

void TestESettings::relativeNamesLandInTheSettingsDirectory()
{
    {
        ESettings s("mine.ini", QStringLiteral("G"));
        s.setValue(QStringLiteral("Key"), 7);
    }
    const QString file = EDirs::getSettingsDir().filePath(QStringLiteral("mine.ini"));
    QVERIFY(QFile::exists(file));
    QSettings raw(file, QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("G/Key")).toInt(), 7);

    // No group opened, none closed: QSettings would warn about an unmatched endGroup().
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(collectWarnings);
    {
        ESettings s(QString{});
        s.setValue(QStringLiteral("Top"), 1);
        QCOMPARE(s.group(), QString());
    }
    qInstallMessageHandler(previous);
    QCOMPARE(warnings, QStringList());
    QSettings def(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
    QCOMPARE(def.value(QStringLiteral("Top")).toInt(), 1);
}

void TestESettings::absoluteNamesAndDirectoriesAreUsedAsGiven()
{
    QTemporaryDir elsewhere;
    const QString absolute = elsewhere.filePath(QStringLiteral("absolute.ini"));
    {
        ESettings s(absolute.toLatin1().constData(), QStringLiteral("A"));
        s.setValue(QStringLiteral("Key"), 1);
    }
    {
        ESettings s(QDir(elsewhere.path()), "beside.ini", QStringLiteral("B"));
        s.setValue(QStringLiteral("Key"), 2);
    }
    QCOMPARE(QSettings(absolute, QSettings::IniFormat).value(QStringLiteral("A/Key")).toInt(), 1);
    QCOMPARE(QSettings(elsewhere.filePath(QStringLiteral("beside.ini")), QSettings::IniFormat)
                 .value(QStringLiteral("B/Key")).toInt(), 2);
    QVERIFY(!QFile::exists(EDirs::getSettingsDir().filePath(QStringLiteral("beside.ini"))));
}

void TestESettings::arraysUseTheItemKeyAndDropTheOldTail()
{
    {
        ESettings s(QStringLiteral("T"));
        ESettings::setList("Cols", {1, 2, 3, 4, 5}, s);
    }
    {
        ESettings s(QStringLiteral("T"));
        ESettings::setList("Cols", {10, 20}, s);
    }
    QSettings raw(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("T/Cols/size")).toInt(), 2);
    QCOMPARE(raw.value(QStringLiteral("T/Cols/1/Item")).toInt(), 10);
    QCOMPARE(raw.value(QStringLiteral("T/Cols/2/Item")).toInt(), 20);
    QVERIFY(!raw.contains(QStringLiteral("T/Cols/3/Item")));

    ESettings s(QStringLiteral("T"));
    QList<int> list;
    ESettings::getList("Cols", list, s);
    QCOMPARE(list, (QList<int>{10, 20}));
}

void TestESettings::arrayHelpersKeepTheirPlaceInTheGroup()
{
    {
        ESettings s(QStringLiteral("S"));
        {
            ESettingsWriteArray names(s, QStringLiteral("Names"));
            names.write(QStringLiteral("one"));
            names.write(QStringLiteral("two"));
        }
        // The array is closed again: later keys land in the group, not in the array.
        s.setValue(QStringLiteral("After"), 1);
    }
    QSettings raw(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("S/Names/2/Item")).toString(), QStringLiteral("two"));
    QCOMPARE(raw.value(QStringLiteral("S/After")).toInt(), 1);

    ESettings s(QStringLiteral("S"));
    {
        ESettingsReadArray names(s, QStringLiteral("Names"));
        QCOMPARE(names.getSize(), 2);
        QCOMPARE(names.read().toString(), QStringLiteral("one"));
        QCOMPARE(names.read().toString(), QStringLiteral("two"));
        // read() leaves the bound to its caller: past the end come invalid values.
        QVERIFY(!names.read().isValid());
        QCOMPARE(names.getIndex(), 3);
    }
    QCOMPARE(s.group(), QStringLiteral("S"));
    QCOMPARE(s.value(QStringLiteral("After")).toInt(), 1);
}

void TestESettings::emptyListStoresSizeZero()
{
    {
        ESettings s(QStringLiteral("E"));
        ESettings::setList("W", {}, s);
    }
    QSettings raw(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
    QVERIFY(raw.contains(QStringLiteral("E/W/size")));
    QCOMPARE(raw.value(QStringLiteral("E/W/size")).toInt(), 0);
}

void TestESettings::getListClearsItsOutputFirst()
{
    ESettings s(QStringLiteral("Nothing"));
    QList<int> list{1, 2};
    ESettings::getList("Absent", list, s);
    QVERIFY(list.isEmpty());
}

void TestESettings::loadGeometryWithoutValueLeavesTheWidget()
{
    QWidget w;
    w.setGeometry(10, 20, 300, 200);
    ESettings s(QStringLiteral("NoGeometry"));
    QVERIFY(!s.loadGeometry(&w));
    QCOMPARE(w.geometry(), QRect(10, 20, 300, 200));

    s.setValue(QStringLiteral("Geometry"), QByteArray("not a geometry"));
    QVERIFY(!s.loadGeometry(&w));
    QCOMPARE(w.geometry(), QRect(10, 20, 300, 200));
}

void TestESettings::geometryRoundTrips()
{
    QWidget w;
    w.setGeometry(40, 50, 320, 240);
    {
        ESettings s(QStringLiteral("Geo"));
        s.saveGeometry(&w);
    }
    // The key is relative to the group.
    QSettings raw(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")), QSettings::IniFormat);
    QVERIFY(!raw.value(QStringLiteral("Geo/Geometry")).toByteArray().isEmpty());

    QWidget other;
    ESettings s(QStringLiteral("Geo"));
    QVERIFY(s.loadGeometry(&other));
    QCOMPARE(other.size(), QSize(320, 240));
}

void TestESettings::garbageFileReadsAsDefaults()
{
    QFile f(EDirs::getSettingsDir().filePath(QStringLiteral("garbage.ini")));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("\x01\x02[[[=\xff\xfe\nCols\\size=banana\n\0\0\0", 25);
    f.close();
    ESettings s("garbage.ini", QStringLiteral("X"));
    QList<int> list{3};
    ESettings::getList("Cols", list, s);
    QVERIFY(list.isEmpty());
    QCOMPARE(s.value(QStringLiteral("Key"), 42).toInt(), 42);
}

CG_TEST_MAIN(TestESettings)
#include "tst_esettings.moc"
