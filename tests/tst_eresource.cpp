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

class TestEResource : public QObject
{
    Q_OBJECT

private slots:
    // Order matters: the icon cache and the registered resources live for the whole process.
    void loadRefusesWhatIsNotAResourceFile_data();
    void loadRefusesWhatIsNotAResourceFile();
    void loadRefusesADirectory();
    void loadRegistersABinaryResourceFile();
    void getPixmapLoadsOnceAndKeepsThePixmap();
    void pathThatDoesNotLoadGivesCachedNullPixmap_data();
    void pathThatDoesNotLoadGivesCachedNullPixmap();
    void idOutsideTheTableGivesNullPixmap_data();
    void idOutsideTheTableGivesNullPixmap();
    void defaultIconLoaderWrapsThePixmap();
    void tableHoldsThePathsInIdOrder_data();
    void tableHoldsThePathsInIdOrder();

private:
    QTemporaryDir scratch;
};

void TestEResource::loadRefusesWhatIsNotAResourceFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("create");

    QFile real(rccFile("early"));
    QVERIFY(real.open(QIODevice::ReadOnly));
    const QByteArray bytes = real.readAll();
    QVERIFY(bytes.startsWith("qres"));

    QTest::newRow("missing file") << QByteArray() << false;
    QTest::newRow("empty file") << QByteArray() << true;
    QTest::newRow("text") << QByteArray("not a resource file\n") << true;
    QTest::newRow("magic only") << QByteArray("qres") << true;
    QTest::newRow("truncated") << bytes.left(bytes.size() / 2) << true;
    QTest::newRow("header only") << bytes.left(20) << true;
    QTest::newRow("last bytes missing") << bytes.left(bytes.size() - 3) << true;
    QByteArray longData = bytes;
    const quint32 data = qFromBigEndian<quint32>(bytes.constData() + 12);
    longData[int(data) + 1] = char(0x7f); // the first file claims more bytes than there are
    QTest::newRow("data length past the end") << longData << true;
    QByteArray future = bytes;
    future[7] = char(9);
    QTest::newRow("unknown format version") << future << true;
}

void TestEResource::loadRefusesWhatIsNotAResourceFile()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, create);
    const QString file = scratch.filePath(QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('_')));
    if (create) {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        QCOMPARE(f.write(content), qint64(content.size()));
    }
    QVERIFY(!Resource::load(file));
    QVERIFY(!QFile::exists(QStringLiteral(":/tb_log.png")));
}

void TestEResource::loadRefusesADirectory()
{
    QVERIFY(!Resource::load(scratch.path()));
}

void TestEResource::loadRegistersABinaryResourceFile()
{
    QVERIFY(!QFile::exists(QStringLiteral(":/tb_log.png")));
    QVERIFY(Resource::load(rccFile("early")));
    QVERIFY(QFile::exists(QStringLiteral(":/tb_log.png")));
    QVERIFY(!QFile::exists(QStringLiteral(":/tb_log_16.png")));
}

void TestEResource::getPixmapLoadsOnceAndKeepsThePixmap()
{
    QPixmap* first = Resource::getPixmap(CgIcon::TbLog);
    QVERIFY(first);
    QVERIFY(!first->isNull());
    QCOMPARE(first->size(), QSize(24, 24));
    QCOMPARE(first->toImage().pixel(12, 12), blue);
    QCOMPARE(Resource::getPixmap(CgIcon::TbLog), first);
}

void TestEResource::pathThatDoesNotLoadGivesCachedNullPixmap_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("path not in the resources") << int(CgIcon::TbLog16);
    QTest::newRow("resource that is no image") << int(CgIcon::Lock);
}

void TestEResource::pathThatDoesNotLoadGivesCachedNullPixmap()
{
    QFETCH(int, id);
    QPixmap* pixmap = Resource::getPixmap(id);
    QVERIFY(pixmap);
    QVERIFY(pixmap->isNull());
    QCOMPARE(Resource::getPixmap(id), pixmap);

    // Once looked for, an icon is not looked for again, even when its image turns up later.
    static const bool lateLoaded = Resource::load(rccFile("late"));
    QVERIFY(lateLoaded);
    QVERIFY(!QPixmap(QStringLiteral(":/tb_log_16.png")).isNull());
    QCOMPARE(Resource::getPixmap(id), pixmap);
    QVERIFY(pixmap->isNull());
}

void TestEResource::idOutsideTheTableGivesNullPixmap_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("-1") << -1;
    QTest::newRow("count") << common_gui_resource_count;
    QTest::newRow("INT_MAX") << INT_MAX;
    QTest::newRow("INT_MIN") << INT_MIN;
}

void TestEResource::idOutsideTheTableGivesNullPixmap()
{
    QFETCH(int, id);
    QPixmap* pixmap = Resource::getPixmap(id);
    QVERIFY(pixmap);
    QVERIFY(pixmap->isNull());
}

void TestEResource::defaultIconLoaderWrapsThePixmap()
{
    const QIcon icon = defaultIconLoader(CgIcon::TbLog);
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.pixmap(24, 24).toImage().pixel(3, 3), blue);
    QVERIFY(defaultIconLoader(CgIcon::Lock).isNull());
    QVERIFY(defaultIconLoader(-1).isNull());
}

void TestEResource::tableHoldsThePathsInIdOrder_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("position");
    QCOMPARE(common_gui_resource_count, 82);
    QTest::newRow(":/tb_log.png") << int(CgIcon::TbLog) << 0;
    QTest::newRow(":/tb_log_16.png") << int(CgIcon::TbLog16) << 1;
    QTest::newRow(":/tb_monitor.png") << int(CgIcon::TbMonitor) << 2;
    QTest::newRow(":/tb_activate.png") << int(CgIcon::TbActivate) << 3;
    QTest::newRow(":/tb_help.png") << int(CgIcon::TbHelp) << 4;
    QTest::newRow(":/tb_settings.png") << int(CgIcon::TbSettings) << 5;
    QTest::newRow(":/tb_certificates.png") << int(CgIcon::TbCertificates) << 6;
    QTest::newRow(":/tb_add_certificate.png") << int(CgIcon::TbAddCertificate) << 7;
    QTest::newRow(":/tb_find.png") << int(CgIcon::TbFind) << 8;
    QTest::newRow(":/tb_delete.png") << int(CgIcon::TbDelete) << 9;
    QTest::newRow(":/tb_filter.png") << int(CgIcon::TbFilter) << 10;
    QTest::newRow(":/tb_inspector.png") << int(CgIcon::TbInspector) << 11;
    QTest::newRow(":/tb_show_all.png") << int(CgIcon::TbShowAll) << 12;
    QTest::newRow(":/tb_open.png") << int(CgIcon::TbOpen) << 13;
    QTest::newRow(":/tb_open_live.png") << int(CgIcon::TbOpenLive) << 14;
    QTest::newRow(":/tb_level.png") << int(CgIcon::TbLevel) << 15;
    QTest::newRow(":/import.png") << int(CgIcon::Import) << 16;
    QTest::newRow(":/importkey.png") << int(CgIcon::Importkey) << 17;
    QTest::newRow(":/export.png") << int(CgIcon::Export) << 18;
    QTest::newRow(":/request.png") << int(CgIcon::Request) << 19;
    QTest::newRow(":/tb_plugin.png") << int(CgIcon::TbPlugin) << 20;
    QTest::newRow(":/tb_token.png") << int(CgIcon::TbToken) << 21;
    QTest::newRow(":/tb_policy.png") << int(CgIcon::TbPolicy) << 22;
    QTest::newRow(":/agent.png") << int(CgIcon::Agent) << 23;
    QTest::newRow(":/initial.png") << int(CgIcon::Initial) << 24;
    QTest::newRow(":/agent_16.png") << int(CgIcon::Agent16) << 25;
    QTest::newRow(":/agent_24.png") << int(CgIcon::Agent24) << 26;
    QTest::newRow(":/agent_32.png") << int(CgIcon::Agent32) << 27;
    QTest::newRow(":/agent_48.png") << int(CgIcon::Agent48) << 28;
    QTest::newRow(":/action_complete_16.png") << int(CgIcon::ActionComplete16) << 29;
    QTest::newRow(":/action_error_16.png") << int(CgIcon::ActionError16) << 30;
    QTest::newRow(":/action_warning_16.png") << int(CgIcon::ActionWarning16) << 31;
    QTest::newRow(":/delete_all_25.png") << int(CgIcon::DeleteAll25) << 32;
    QTest::newRow(":/stat_25.png") << int(CgIcon::Stat25) << 33;
    QTest::newRow(":/satree_25.png") << int(CgIcon::Satree25) << 34;
    QTest::newRow(":/blacklist_25.png") << int(CgIcon::Blacklist25) << 35;
    QTest::newRow(":/filters_25.png") << int(CgIcon::Filters25) << 36;
    QTest::newRow(":/algproxy_25.png") << int(CgIcon::Algproxy25) << 37;
    QTest::newRow(":/ikecfg_25.png") << int(CgIcon::Ikecfg25) << 38;
    QTest::newRow(":/rri_25.png") << int(CgIcon::Rri25) << 39;
    QTest::newRow(":/ha_25.png") << int(CgIcon::Ha25) << 40;
    QTest::newRow(":/back.png") << int(CgIcon::Back) << 41;
    QTest::newRow(":/next.png") << int(CgIcon::Next) << 42;
    QTest::newRow(":/home.png") << int(CgIcon::Home) << 43;
    QTest::newRow(":/user.png") << int(CgIcon::User) << 44;
    QTest::newRow(":/sys.png") << int(CgIcon::Sys) << 45;
    QTest::newRow(":/clock.png") << int(CgIcon::Clock) << 46;
    QTest::newRow(":/lock.png") << int(CgIcon::Lock) << 47;
    QTest::newRow(":/lock1.png") << int(CgIcon::Lock1) << 48;
    QTest::newRow(":/lock2.png") << int(CgIcon::Lock2) << 49;
    QTest::newRow(":/lock3.png") << int(CgIcon::Lock3) << 50;
    QTest::newRow(":/send.png") << int(CgIcon::Send) << 51;
    QTest::newRow(":/recv.png") << int(CgIcon::Recv) << 52;
    QTest::newRow(":/connect.png") << int(CgIcon::Connect) << 53;
    QTest::newRow(":/star.png") << int(CgIcon::Star) << 54;
    QTest::newRow(":/excl.png") << int(CgIcon::Excl) << 55;
    QTest::newRow(":/cross.png") << int(CgIcon::Cross) << 56;
    QTest::newRow(":/clock_new.png") << int(CgIcon::ClockNew) << 57;
    QTest::newRow(":/lock_new.png") << int(CgIcon::LockNew) << 58;
    QTest::newRow(":/lock1_new.png") << int(CgIcon::Lock1New) << 59;
    QTest::newRow(":/lock2_new.png") << int(CgIcon::Lock2New) << 60;
    QTest::newRow(":/lock3_new.png") << int(CgIcon::Lock3New) << 61;
    QTest::newRow(":/send_new.png") << int(CgIcon::SendNew) << 62;
    QTest::newRow(":/recv_new.png") << int(CgIcon::RecvNew) << 63;
    QTest::newRow(":/connect_new.png") << int(CgIcon::ConnectNew) << 64;
    QTest::newRow(":/star_new.png") << int(CgIcon::StarNew) << 65;
    QTest::newRow(":/excl_new.png") << int(CgIcon::ExclNew) << 66;
    QTest::newRow(":/cross_new.png") << int(CgIcon::CrossNew) << 67;
    QTest::newRow(":/cert.png") << int(CgIcon::Cert) << 68;
    QTest::newRow(":/cert_cross.png") << int(CgIcon::CertCross) << 69;
    QTest::newRow(":/update16-1.png") << int(CgIcon::Update16_1) << 70;
    QTest::newRow(":/update16-2.png") << int(CgIcon::Update16_2) << 71;
    QTest::newRow(":/update16-3.png") << int(CgIcon::Update16_3) << 72;
    QTest::newRow(":/update16-4.png") << int(CgIcon::Update16_4) << 73;
    QTest::newRow(":/update16-error.png") << int(CgIcon::Update16Error) << 74;
    QTest::newRow(":/update16-success.png") << int(CgIcon::Update16Success) << 75;
    QTest::newRow(":/update50-1.png") << int(CgIcon::Update50_1) << 76;
    QTest::newRow(":/update50-2.png") << int(CgIcon::Update50_2) << 77;
    QTest::newRow(":/update50-3.png") << int(CgIcon::Update50_3) << 78;
    QTest::newRow(":/update50-4.png") << int(CgIcon::Update50_4) << 79;
    QTest::newRow(":/update50-error.png") << int(CgIcon::Update50Error) << 80;
    QTest::newRow(":/update50-success.png") << int(CgIcon::Update50Success) << 81;
}

void TestEResource::tableHoldsThePathsInIdOrder()
{
    QFETCH(int, id);
    QFETCH(int, position);
    QCOMPARE(id, position);
    QCOMPARE(QLatin1String(common_gui_resource_paths[position]), QLatin1String(QTest::currentDataTag()));
}

CG_TEST_MAIN(TestEResource)
#include "tst_eresource.moc"
