// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_res.h"
#include "edirs.h"
#include "eresource.h"
#include "esettings.h"
#include "esplitter.h"
#include "estatedialog.h"
#include "estatewindow.h"

#include <QFile>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTextEdit>

namespace {

QByteArray iniText()
{
    QFile f(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

class TestDialog : public EStateDialog
{
public:
    explicit TestDialog(const char* name) : EStateDialog(nullptr, name) { loadState(); }
    QSize sizeHint() const override { return QSize(301, 201); }
};

// Applications keep more than the geometry by extending the window's layout.
class TestWindow : public EStateWindow
{
public:
    explicit TestWindow(const char* name) : EStateWindow(nullptr, name, QStringLiteral("Test window"))
    {
        setCentralWidget(new QTextEdit(this));
        EState::loadState();
    }
    void saveState(QSettings& s) override { saveLayout(s); }
    void loadState(QSettings& s) override { loadLayout(s); }
    void saveLayout(QSettings& s) override
    {
        EStateWindow::saveLayout(s);
        s.setValue(QStringLiteral("Extra"), 42);
    }
    void loadLayout(QSettings& s) override
    {
        EStateWindow::loadLayout(s);
        extra = s.value(QStringLiteral("Extra")).toInt();
    }
    int extra = 0;
};

bool showActive(QWidget* w)
{
    w->show();
    w->activateWindow();
    return QTest::qWaitForWindowActive(w);
}

} // namespace

class TestEState : public QObject
{
    Q_OBJECT

private slots:
    void init() { QFile::remove(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"))); }

    void everyWayOfEndingAStateDialogSaves_data()
    {
        QTest::addColumn<int>("how"); // a result for done(), -1 Escape, -2 the close button
        QTest::newRow("done") << 7;
        QTest::newRow("escape") << -1;
        QTest::newRow("close button") << -2;
    }

    void everyWayOfEndingAStateDialogSaves()
    {
        QFETCH(int, how);
        {
            TestDialog dialog("EndingDialog");
            QVERIFY(showActive(&dialog));
            dialog.setGeometry(31, 42, 345, 234);
            if (how == -1)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else if (how == -2)
                dialog.close();
            else
                dialog.done(how);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(dialog.result(), how < 0 ? int(QDialog::Rejected) : how);
        }
        // The layout keys, which QSettings writes sorted.
        const QByteArray text = iniText();
        QVERIFY2(text.startsWith("[EndingDialog]\nGeometry=@ByteArray(\\x1\\xd9\\xd0\\xcb"), text.constData());
        QVERIFY2(text.contains("\nPos=@Point(") && text.contains(")\nSize=@Size(345 234)\n"), text.constData());
        TestDialog second("EndingDialog");
        QCOMPARE(second.geometry(), QRect(31, 42, 345, 234));
    }

    void loadLayoutFallsBackOnBadOrMissingValues_data()
    {
        QTest::addColumn<QVariantList>("stored"); // Geometry, Size, Pos; an invalid value is not stored
        QTest::addColumn<QRect>("expected"); // a null rect: centred at the size hint
        QWidget donor;
        donor.setGeometry(50, 60, 320, 240);
        const QByteArray good = donor.saveGeometry();
        const QVariant none, size = QSize(280, 190), pos = QPoint(15, 25);
        QTest::newRow("geometry wins") << QVariantList{good, size, pos} << QRect(50, 60, 320, 240);
        QTest::newRow("truncated geometry") << QVariantList{good.left(good.size() / 2), size, pos} << QRect(15, 25, 280, 190);
        QTest::newRow("size without pos") << QVariantList{none, size, none} << QRect(0, 0, 280, 190);
        QTest::newRow("nothing stored") << QVariantList{none, none, none} << QRect();
        QTest::newRow("negative size") << QVariantList{none, QSize(-5, 100), pos} << QRect();
        QTest::newRow("size no screen holds") << QVariantList{none, QSize(INT_MAX, INT_MAX), pos} << QRect();
        QTest::newRow("pos that wraps round") << QVariantList{none, size, QPoint(INT_MAX - 10, INT_MAX - 10)} << QRect();
        QTest::newRow("pos off every screen") << QVariantList{none, size, QPoint(-5000, 40)} << QRect();
        QWidget huge;
        huge.setGeometry(0, 0, 20000, 20000);
        QTest::newRow("geometry no screen holds") << QVariantList{huge.saveGeometry(), size, pos} << QRect(15, 25, 280, 190);
        // Qt restores the last rectangle of the record (right edge at byte 58) for a normal window.
        QByteArray wide = good;
        QCOMPARE(wide.mid(4, 2), QByteArray("\0\3", 2));
        wide.replace(58, 4, QByteArray("\x7f\xff\0\0", 4));
        QTest::newRow("geometry restoring a rectangle no screen holds") << QVariantList{wide, size, pos} << QRect(15, 25, 280, 190);
    }

    void loadLayoutFallsBackOnBadOrMissingValues()
    {
        QFETCH(QVariantList, stored);
        QFETCH(QRect, expected);
        {
            ESettings s(QStringLiteral("Fallback"));
            const QStringList keys{QStringLiteral("Geometry"), QStringLiteral("Size"), QStringLiteral("Pos")};
            for (int i = 0; i < 3; ++i) {
                if (stored.at(i).isValid())
                    s.setValue(keys.at(i), stored.at(i));
            }
        }
        TestDialog w("Fallback");
        const QPoint centred = QGuiApplication::primaryScreen()->geometry().center() - QPoint(150, 100);
        QCOMPARE(w.geometry(), expected.isNull() ? QRect(centred, QSize(301, 201)) : expected);
    }

    void stateWindowSignalsBeforeSavingThenDeletesItself_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("close") << false;
        QTest::newRow("escape") << true;
    }

    void stateWindowSignalsBeforeSavingThenDeletesItself()
    {
        QFETCH(bool, escape);
        QPointer<TestWindow> window = new TestWindow("ClosingWindow");
        QVERIFY(showActive(window));
        window->setGeometry(90, 60, 520, 330);
        QByteArray fileDuringSignal = "not called";
        connect(window.data(), &EStateWindow::stateWindowClosed, this, [&](EStateWindow* w) {
            QCOMPARE(w, window.data());
            fileDuringSignal = iniText();
        });
        if (escape)
            QTest::keyClick(window, Qt::Key_Escape);
        else
            QVERIFY(window->close());
        QVERIFY2(!fileDuringSignal.contains("[ClosingWindow]"), fileDuringSignal.constData());
        QTRY_VERIFY(window.isNull());

        TestWindow second("ClosingWindow");
        second.setAttribute(Qt::WA_DeleteOnClose, false);
        QCOMPARE(second.geometry(), QRect(90, 60, 520, 330));
        QCOMPARE(second.extra, 42);
    }

    void splitterSavesWhatTheUserLeftAndLoadsOnlyUsableLists()
    {
        ESettings s(QStringLiteral("Splitter"));
        ESplitter splitter;
        splitter.addWidget(new QTextEdit(&splitter));
        splitter.addWidget(new QTextEdit(&splitter));
        splitter.setHandleWidth(20);
        splitter.resize(620, 200);
        splitter.show();
        QVERIFY(QTest::qWaitForWindowExposed(&splitter));
        splitter.setSizes({100, 500});
        splitter.hide();
        // Sizes set while hidden were never on screen: what is saved is what the user left.
        splitter.setSizes({500, 100});
        splitter.saveState(s, "Sizes");
        QList<int> stored;
        ESettings::getList("Sizes", stored, s);
        QCOMPARE(stored, (QList<int>{100, 500}));
        ESettings::setList("Sizes", {150}, s);
        splitter.loadState(s, "Sizes");
        QCOMPARE(splitter.sizes(), (QList<int>{500, 100}));
        ESettings::setList("Sizes", {150, 450}, s);
        splitter.loadState(s, "Sizes");
        QCOMPARE(splitter.sizes(), (QList<int>{150, 450}));
    }

    void windowIconComesFromTheTable()
    {
        QVERIFY(Resource::load(QStringLiteral(CG_ERESOURCE_RCC_DIR "/eresource_early.rcc")));
        EStateWindow window(nullptr, "IconWindow", QStringLiteral("Icons"), int(CgIcon::TbLog));
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        const QIcon shown = window.windowIcon();
        QCOMPARE(shown.availableSizes(), QList<QSize>{QSize(24, 24)});
        QCOMPARE(shown.pixmap(24, 24).toImage().pixel(12, 12), qRgb(0x20, 0x60, 0xc0));
    }

    void splitterHandleIsALightToDarkGradient()
    {
        for (Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
            ESplitter splitter(orientation);
            QPalette palette = splitter.palette();
            palette.setColor(QPalette::Light, QColor(250, 0, 0));
            palette.setColor(QPalette::Dark, QColor(0, 0, 250));
            splitter.setPalette(palette);
            splitter.setHandleWidth(40);
            splitter.addWidget(new QLabel(&splitter));
            splitter.addWidget(new QLabel(&splitter));
            splitter.resize(200, 200);
            const QImage image = splitter.handle(1)->grab().toImage();
            const int w = image.width() - 1;
            const int h = image.height() - 1;
            // The gradient runs along one axis: the other is uniform.
            const bool across = orientation == Qt::Horizontal;
            const QColor first = image.pixelColor(across ? QPoint(0, 2) : QPoint(w - 2, 0));
            const QColor last = image.pixelColor(across ? QPoint(w, h - 2) : QPoint(2, h));
            QVERIFY2(first.red() > 240 && first.blue() < 10, qPrintable(first.name()));
            QVERIFY2(last.blue() > 240 && last.red() < 10, qPrintable(last.name()));
        }
    }
};

CG_TEST_MAIN(TestEState)
#include "tst_estate.moc"
