// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_res.h"
#include "eresource.h"

#include <QFile>
#include <QIcon>
#include <QPixmap>
#include <QTemporaryDir>
#include <QtEndian>

#include <climits>

namespace {

QString rccFile(const char* set)
{
    return QStringLiteral(CG_ERESOURCE_RCC_DIR "/eresource_%1.rcc").arg(QLatin1String(set));
}

const QRgb blue = qRgb(0x20, 0x60, 0xc0);

} // namespace

// Order matters: the icon cache and the registered resources live for the whole process.
class TestEResource : public QObject
{
    Q_OBJECT
    QTemporaryDir scratch;

private slots:
    void loadRefusesWhatIsNotAResourceFile_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file at all
        QFile real(rccFile("early"));
        QVERIFY(real.open(QIODevice::ReadOnly));
        const QByteArray bytes = real.readAll();
        QByteArray longData = bytes;
        longData[int(qFromBigEndian<quint32>(bytes.constData() + 12)) + 1] = char(0x7f); // first file too long
        QByteArray future = bytes;
        future[7] = char(9);
        QTest::newRow("missing file") << QByteArray();
        QTest::newRow("text") << QByteArray("not a resource file\n");
        QTest::newRow("magic only") << QByteArray("qres");
        QTest::newRow("header only") << bytes.left(20);
        QTest::newRow("last bytes missing") << bytes.left(bytes.size() - 3);
        QTest::newRow("data length past the end") << longData;
        QTest::newRow("unknown format version") << future;
    }

    // Under the sanitizer build these rows also catch Qt's reads past the end and its leaks.
    void loadRefusesWhatIsNotAResourceFile()
    {
        QFETCH(QByteArray, content);
        const QString file = scratch.filePath(QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('_')));
        QFile f(file);
        QVERIFY(content.isNull() || (f.open(QIODevice::WriteOnly) && f.write(content) == content.size()));
        f.close();
        QVERIFY(!Resource::load(file));
        QVERIFY(!Resource::load(scratch.path()));
        QVERIFY(!QFile::exists(QStringLiteral(":/tb_log.png")));
    }

    void loadedIconsAreCachedForTheWholeProcess()
    {
        QVERIFY(Resource::load(rccFile("early")));
        QPixmap* log = Resource::getPixmap(CgIcon::TbLog);
        QCOMPARE(log->size(), QSize(24, 24));
        QCOMPARE(log->toImage().pixel(12, 12), blue);
        QCOMPARE(Resource::getPixmap(CgIcon::TbLog), log);
        QCOMPARE(defaultIconLoader(CgIcon::TbLog).pixmap(24, 24).toImage().pixel(3, 3), blue);

        // Not in the resources, and a resource that is no image: null, and never looked for again.
        QPixmap* absent = Resource::getPixmap(CgIcon::TbLog16);
        QPixmap* noImage = Resource::getPixmap(CgIcon::Lock);
        QVERIFY(absent->isNull() && noImage->isNull());
        QVERIFY(defaultIconLoader(CgIcon::Lock).isNull());
        QVERIFY(Resource::load(rccFile("late")));
        QVERIFY(!QPixmap(QStringLiteral(":/tb_log_16.png")).isNull());
        QCOMPARE(Resource::getPixmap(CgIcon::TbLog16), absent);
        QVERIFY(absent->isNull());
        QCOMPARE(Resource::getPixmap(CgIcon::Lock), noImage);

        for (int id : {-1, common_gui_resource_count, INT_MIN})
            QVERIFY(Resource::getPixmap(id)->isNull());
        QVERIFY(defaultIconLoader(-1).isNull());
    }

    void tableHoldsThePathsInIdOrder()
    {
        const QStringList names = QStringLiteral(
            "tb_log tb_log_16 tb_monitor tb_activate tb_help tb_settings tb_certificates tb_add_certificate "
            "tb_find tb_delete tb_filter tb_inspector tb_show_all tb_open tb_open_live tb_level import importkey "
            "export request tb_plugin tb_token tb_policy agent initial agent_16 agent_24 agent_32 agent_48 "
            "action_complete_16 action_error_16 action_warning_16 delete_all_25 stat_25 satree_25 blacklist_25 "
            "filters_25 algproxy_25 ikecfg_25 rri_25 ha_25 back next home user sys clock lock lock1 lock2 lock3 "
            "send recv connect star excl cross clock_new lock_new lock1_new lock2_new lock3_new send_new recv_new "
            "connect_new star_new excl_new cross_new cert cert_cross update16-1 update16-2 update16-3 update16-4 "
            "update16-error update16-success update50-1 update50-2 update50-3 update50-4 update50-error "
            "update50-success").split(QLatin1Char(' '));
        QCOMPARE(names.size(), common_gui_resource_count);
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(QString::fromLatin1(common_gui_resource_paths[i]), QStringLiteral(":/%1.png").arg(names.at(i)));
        QCOMPARE(QLatin1String(common_gui_resource_paths[CgIcon::Importkey]), QLatin1String(":/importkey.png"));
        QCOMPARE(QLatin1String(common_gui_resource_paths[CgIcon::Update16_1]), QLatin1String(":/update16-1.png"));
        QCOMPARE(QLatin1String(common_gui_resource_paths[CgIcon::Update50Success]),
                 QLatin1String(":/update50-success.png"));
    }
};

CG_TEST_MAIN(TestEResource)
#include "tst_eresource.moc"
