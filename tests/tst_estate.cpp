// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "common_gui_res.h"
#include "edialog.h"
#include "edirs.h"
#include "eresource.h"
#include "esettings.h"
#include "esplitter.h"
#include "estatedialog.h"
#include "estatewindow.h"

#include <QContextMenuEvent>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QString iniFile()
{
    return EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"));
}

QByteArray iniText()
{
    QFile f(iniFile());
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A dialog as applications write them: contents first, then loadState().
class TestDialog : public EStateDialog
{
public:
    explicit TestDialog(const char* name)
        : EStateDialog(nullptr, name)
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QLabel(QStringLiteral("contents"), this));
        loadState();
    }
};

class TestWindow : public EStateWindow
{
public:
    explicit TestWindow(const char* name, int icon = -1, int icon2 = -1)
        : EStateWindow(nullptr, name, QStringLiteral("Test window"), icon, icon2)
    {
        setCentralWidget(new QTextEdit(this));
        loadState();
    }
    using EStateWindow::loadState;
    using EStateWindow::saveState;
    void saveState(QSettings& s) override { saveLayout(s); }
    void loadState(QSettings& s) override { loadLayout(s); }
};

// Applications keep more than the geometry (a splitter, a column) by extending the window's layout.
class ExtendedWindow : public TestWindow
{
public:
    using TestWindow::TestWindow;
    void saveLayout(QSettings& s) override
    {
        TestWindow::saveLayout(s);
        s.setValue(QStringLiteral("Extra"), 42);
    }
    void loadLayout(QSettings& s) override
    {
        TestWindow::loadLayout(s);
        extra = s.value(QStringLiteral("Extra")).toInt();
    }
    int extra = 0;
};

class HintWidget : public QWidget
{
public:
    QSize sizeHint() const override { return QSize(301, 201); }
};

QPoint centredPos(const QSize& size)
{
    const QRect r = QGuiApplication::primaryScreen()->geometry();
    return QPoint((r.left() + r.right()) / 2 - (size.width() - 1) / 2, (r.top() + r.bottom()) / 2 - (size.height() - 1) / 2);
}

bool showActive(QWidget* w)
{
    w->show();
    w->activateWindow();
    return QTest::qWaitForWindowActive(w);
}

void closeWith(QWidget* w, const QString& how)
{
    auto* dialog = qobject_cast<QDialog*>(w);
    if (how == QLatin1String("accept"))
        dialog->accept();
    else if (how == QLatin1String("reject"))
        dialog->reject();
    else if (how == QLatin1String("done"))
        dialog->done(7);
    else if (how == QLatin1String("escape"))
        QTest::keyClick(w, Qt::Key_Escape);
    else if (how == QLatin1String("close"))
        w->close();
}

// A geometry from a real save, so that "truncated" is the start of valid bytes.
QByteArray realGeometry()
{
    QWidget w;
    w.setGeometry(50, 60, 320, 240);
    return w.saveGeometry();
}

bool near(const QColor& a, const QColor& b, int tolerance = 8)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance
        && qAbs(a.blue() - b.blue()) <= tolerance;
}

QList<int> storedList(const char* group, const char* name)
{
    ESettings s(QString::fromLatin1(group));
    QList<int> list;
    ESettings::getList(name, list, s);
    return list;
}

} // namespace

class TestEState : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void dialogIsModalWithTitleAndEscapeCloses_data();
    void dialogIsModalWithTitleAndEscapeCloses();
    void everyWayOfEndingAStateDialogSaves_data();
    void everyWayOfEndingAStateDialogSaves();
    void reopenedDialogComesBackWhereItWas();
    void layoutKeysAreSizePosAndGeometry();
    void loadLayoutFallsBackOnBadOrMissingValues_data();
    void loadLayoutFallsBackOnBadOrMissingValues();

    void stateWindowSignalsBeforeSavingThenDeletesItself();
    void escapeClosesStateWindow();
    void reopenedWindowComesBackWithItsExtendedLayout();
    void stateWindowOffersNoContextMenu();
    void stateWindowIconsComeFromTheTable_data();
    void stateWindowIconsComeFromTheTable();

    void splitterSavesItsSizesFromBeforeHiding();
    void splitterWithoutSizesKeepsTheStoredList();
    void splitterLoadsOnlyListsOfTwoOrMore_data();
    void splitterLoadsOnlyListsOfTwoOrMore();
    void splitterHandleIsALightToDarkGradient_data();
    void splitterHandleIsALightToDarkGradient();
};

void TestEState::initTestCase()
{
    QVERIFY(Resource::load(QStringLiteral(CG_ERESOURCE_RCC_DIR "/eresource_early.rcc")));
}

void TestEState::init()
{
    QFile::remove(iniFile());
}

void TestEState::dialogIsModalWithTitleAndEscapeCloses_data()
{
    QTest::addColumn<int>("flags");
    QTest::newRow("default") << int(Qt::WindowFlags());
    QTest::newRow("tool") << int(Qt::Tool);
    QTest::newRow("close button") << int(Qt::WindowCloseButtonHint);
    // Qt adds a title by itself unless the window is frameless: the one case where ours shows.
    QTest::newRow("frameless") << int(Qt::FramelessWindowHint);
}

void TestEState::dialogIsModalWithTitleAndEscapeCloses()
{
    QFETCH(int, flags);
    EDialog dialog(nullptr, Qt::WindowFlags(flags));
    QVERIFY(dialog.isModal());
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowTitleHint));
    QCOMPARE(dialog.windowFlags() & Qt::WindowFlags(flags), Qt::WindowFlags(flags));
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QVERIFY(showActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(rejected.count(), 1);
}

void TestEState::everyWayOfEndingAStateDialogSaves_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("result");
    QTest::newRow("accept") << QStringLiteral("accept") << int(QDialog::Accepted);
    QTest::newRow("reject") << QStringLiteral("reject") << int(QDialog::Rejected);
    QTest::newRow("done") << QStringLiteral("done") << 7;
    QTest::newRow("escape") << QStringLiteral("escape") << int(QDialog::Rejected);
    QTest::newRow("close button") << QStringLiteral("close") << int(QDialog::Rejected);
}

void TestEState::everyWayOfEndingAStateDialogSaves()
{
    QFETCH(QString, how);
    QFETCH(int, result);
    TestDialog dialog("EndingDialog");
    QVERIFY(showActive(&dialog));
    dialog.resize(345, 234);
    dialog.move(31, 42);
    closeWith(&dialog, how);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), result);

    ESettings s(QStringLiteral("EndingDialog"));
    QCOMPARE(s.value(QStringLiteral("Size")).toSize(), QSize(345, 234));
    QCOMPARE(s.value(QStringLiteral("Pos")).toPoint(), QPoint(31, 42));
    QVERIFY(!s.value(QStringLiteral("Geometry")).toByteArray().isEmpty());
}

void TestEState::reopenedDialogComesBackWhereItWas()
{
    {
        TestDialog first("ReopenDialog");
        QVERIFY(showActive(&first));
        first.setGeometry(70, 80, 410, 290);
        first.accept();
    }
    TestDialog second("ReopenDialog");
    QCOMPARE(second.geometry(), QRect(70, 80, 410, 290));
    // Another name is another window: it is centred.
    TestDialog other("OtherDialog");
    QCOMPARE(other.size(), other.sizeHint());
    QCOMPARE(other.pos(), centredPos(other.size()));
}

void TestEState::layoutKeysAreSizePosAndGeometry()
{
    QWidget w;
    w.setGeometry(20, 30, 200, 100);
    {
        ESettings s(QStringLiteral("KeyNames"));
        EState::saveLayout(s, &w);
    }
    // QSettings sorts the keys of a group, so the file shows the names, not the writing order.
    const QByteArray text = iniText();
    QVERIFY2(text.startsWith("[KeyNames]\nGeometry=@ByteArray(\\x1\\xd9\\xd0\\xcb"), text.constData());
    QVERIFY2(text.contains("\nPos=@Point(20 30)\nSize=@Size(200 100)\n"), text.constData());
    QCOMPARE(text.count('='), 3);
}

void TestEState::loadLayoutFallsBackOnBadOrMissingValues_data()
{
    QTest::addColumn<QVariant>("geometry");
    QTest::addColumn<QVariant>("size");
    QTest::addColumn<QVariant>("pos");
    QTest::addColumn<QRect>("expected"); // a null rect: centred at the size hint

    const QByteArray good = realGeometry();
    const QVariant none;
    const QVariant size = QSize(280, 190);
    const QVariant pos = QPoint(15, 25);
    const QRect fromSizePos(15, 25, 280, 190);

    QTest::newRow("geometry wins") << QVariant(good) << size << pos << QRect(50, 60, 320, 240);
    QTest::newRow("size and pos only (old file)") << none << size << pos << fromSizePos;
    QTest::newRow("empty geometry") << QVariant(QByteArray()) << size << pos << fromSizePos;
    QTest::newRow("garbage geometry") << QVariant(QByteArray("\x01\xd9\xd0\xcb garbage", 12)) << size << pos << fromSizePos;
    QTest::newRow("truncated geometry") << QVariant(good.left(good.size() / 2)) << size << pos << fromSizePos;
    QTest::newRow("geometry as text") << QVariant(QStringLiteral("hello")) << size << pos << fromSizePos;
    QTest::newRow("size without pos") << none << size << none << QRect(0, 0, 280, 190);
    QTest::newRow("nothing stored") << none << none << none << QRect();
    QTest::newRow("garbage geometry alone") << QVariant(QByteArray("xyz")) << none << none << QRect();
    QTest::newRow("size that is text") << none << QVariant(QStringLiteral("big")) << pos << QRect();
    QTest::newRow("negative size") << none << QVariant(QSize(-5, 100)) << pos << QRect();
    QTest::newRow("pos that is text") << none << size << QVariant(QStringLiteral("left")) << QRect(0, 0, 280, 190);
}

void TestEState::loadLayoutFallsBackOnBadOrMissingValues()
{
    QFETCH(QVariant, geometry);
    QFETCH(QVariant, size);
    QFETCH(QVariant, pos);
    QFETCH(QRect, expected);
    {
        ESettings s(QStringLiteral("Fallback"));
        if (geometry.isValid())
            s.setValue(QStringLiteral("Geometry"), geometry);
        if (size.isValid())
            s.setValue(QStringLiteral("Size"), size);
        if (pos.isValid())
            s.setValue(QStringLiteral("Pos"), pos);
    }
    HintWidget w;
    {
        ESettings s(QStringLiteral("Fallback"));
        EState::loadLayout(s, &w);
    }
    if (expected.isNull())
        expected = QRect(centredPos(QSize(301, 201)), QSize(301, 201));
    QCOMPARE(w.geometry(), expected);
}

void TestEState::stateWindowSignalsBeforeSavingThenDeletesItself()
{
    QPointer<TestWindow> window = new TestWindow("ClosingWindow");
    QVERIFY(window->testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(window->windowTitle(), QStringLiteral("Test window"));
    QVERIFY(showActive(window));
    window->setGeometry(40, 50, 500, 300);

    EStateWindow* announced = nullptr;
    QByteArray fileDuringSignal = "not called";
    connect(window.data(), &EStateWindow::stateWindowClosed, this, [&](EStateWindow* w) {
        announced = w;
        fileDuringSignal = iniText();
    });
    QVERIFY(window->close());
    QCOMPARE(announced, window.data());
    QVERIFY2(!fileDuringSignal.contains("[ClosingWindow]"), fileDuringSignal.constData());
    QVERIFY(iniText().contains("[ClosingWindow]"));
    QTRY_VERIFY(window.isNull());
}

void TestEState::escapeClosesStateWindow()
{
    QPointer<TestWindow> window = new TestWindow("EscapeWindow");
    QSignalSpy closed(window.data(), &EStateWindow::stateWindowClosed);
    QVERIFY(showActive(window));
    QTest::keyClick(window, Qt::Key_Escape);
    QCOMPARE(closed.count(), 1);
    QTRY_VERIFY(window.isNull());
    QVERIFY(iniText().contains("[EscapeWindow]"));
}

void TestEState::reopenedWindowComesBackWithItsExtendedLayout()
{
    QPointer<ExtendedWindow> first = new ExtendedWindow("ReopenWindow");
    QVERIFY(showActive(first));
    first->setGeometry(90, 60, 520, 330);
    first->close();
    QTRY_VERIFY(first.isNull());

    ExtendedWindow second("ReopenWindow");
    second.setAttribute(Qt::WA_DeleteOnClose, false);
    QCOMPARE(second.geometry(), QRect(90, 60, 520, 330));
    // The base constructor loaded before the subclass existed; a finished window loads all of it.
    QCOMPARE(second.extra, 0);
    second.loadState();
    QCOMPARE(second.extra, 42);
    QCOMPARE(second.geometry(), QRect(90, 60, 520, 330));
}

void TestEState::stateWindowOffersNoContextMenu()
{
    TestWindow window("MenuWindow");
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    QToolBar* bar = window.addToolBar(QStringLiteral("Tools"));
    bar->addAction(QStringLiteral("Run"));
    QVERIFY(showActive(&window));
    QVERIFY(!window.createPopupMenu());
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), bar->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(bar, &event);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(window.findChildren<QMenu*>().isEmpty());
}

void TestEState::stateWindowIconsComeFromTheTable_data()
{
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("icon2");
    QTest::addColumn<bool>("hasOwnIcon");
    QTest::newRow("none") << -1 << -1 << false;
    QTest::newRow("first") << int(CgIcon::TbLog) << -1 << true;
    QTest::newRow("second") << -1 << int(CgIcon::TbLog) << true;
    QTest::newRow("both, second missing") << int(CgIcon::TbLog) << int(CgIcon::Cross) << true;
}

void TestEState::stateWindowIconsComeFromTheTable()
{
    QFETCH(int, icon);
    QFETCH(int, icon2);
    QFETCH(bool, hasOwnIcon);
    QPixmap appPixmap(8, 8);
    appPixmap.fill(Qt::green);
    const QIcon appIcon(appPixmap);
    QApplication::setWindowIcon(appIcon);

    TestWindow window("IconWindow", icon, icon2);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    QCOMPARE(window.testAttribute(Qt::WA_SetWindowIcon), hasOwnIcon);
    if (hasOwnIcon) {
        QCOMPARE(window.windowIcon().availableSizes(), QList<QSize>{QSize(24, 24)});
        QCOMPARE(window.windowIcon().pixmap(24).toImage().pixel(12, 12), qRgb(0x20, 0x60, 0xc0));
    } else {
        QCOMPARE(window.windowIcon().cacheKey(), appIcon.cacheKey());
    }
    QApplication::setWindowIcon(QIcon());
}

void TestEState::splitterSavesItsSizesFromBeforeHiding()
{
    QWidget top;
    top.resize(640, 300);
    auto* layout = new QVBoxLayout(&top);
    auto* splitter = new ESplitter(Qt::Horizontal, &top);
    for (int i = 0; i < 3; ++i)
        splitter->addWidget(new QTextEdit(splitter));
    layout->addWidget(splitter);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    splitter->setSizes({100, 200, 300});
    const QList<int> before = splitter->sizes();
    QCOMPARE(before.size(), 3);

    splitter->hide();
    // Sizes set while hidden were never on screen: what is saved is what the user left.
    splitter->setSizes({300, 200, 100});
    QVERIFY(splitter->sizes() != before);
    {
        ESettings s(QStringLiteral("Splitter"));
        splitter->saveState(s, "Sizes");
    }
    QCOMPARE(storedList("Splitter", "Sizes"), before);

    // A new splitter (the next run) gets the stored sizes back.
    QWidget top2;
    top2.resize(640, 300);
    auto* layout2 = new QVBoxLayout(&top2);
    auto* splitter2 = new ESplitter(Qt::Horizontal, &top2);
    for (int i = 0; i < 3; ++i)
        splitter2->addWidget(new QTextEdit(splitter2));
    layout2->addWidget(splitter2);
    {
        ESettings s(QStringLiteral("Splitter"));
        splitter2->loadState(s, "Sizes");
    }
    top2.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top2));
    QCOMPARE(splitter2->sizes(), before);
}

void TestEState::splitterWithoutSizesKeepsTheStoredList()
{
    {
        ESettings s(QStringLiteral("Splitter"));
        ESettings::setList("Sizes", {11, 22}, s);
    }
    ESplitter splitter; // never shown, never hidden: nothing to say
    splitter.addWidget(new QLabel(&splitter));
    splitter.addWidget(new QLabel(&splitter));
    {
        ESettings s(QStringLiteral("Splitter"));
        splitter.saveState(s, "Sizes");
    }
    QCOMPARE(storedList("Splitter", "Sizes"), (QList<int>{11, 22}));
}

void TestEState::splitterLoadsOnlyListsOfTwoOrMore_data()
{
    QTest::addColumn<QList<int>>("stored");
    QTest::addColumn<bool>("applied");
    QTest::newRow("two sizes") << QList<int>{150, 450} << true;
    QTest::newRow("one size") << QList<int>{150} << false;
    QTest::newRow("nothing") << QList<int>{} << false;
}

void TestEState::splitterLoadsOnlyListsOfTwoOrMore()
{
    QFETCH(QList<int>, stored);
    QFETCH(bool, applied);
    {
        ESettings s(QStringLiteral("Splitter"));
        ESettings::setList("Sizes", stored, s);
    }
    QWidget top;
    top.resize(620, 200);
    auto* layout = new QVBoxLayout(&top);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new ESplitter(&top);
    splitter->setHandleWidth(20);
    splitter->addWidget(new QTextEdit(splitter));
    splitter->addWidget(new QTextEdit(splitter));
    layout->addWidget(splitter);
    splitter->setSizes({300, 300});
    {
        ESettings s(QStringLiteral("Splitter"));
        splitter->loadState(s, "Sizes");
    }
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QCOMPARE(splitter->sizes(), applied ? stored : (QList<int>{300, 300}));
}

void TestEState::splitterHandleIsALightToDarkGradient_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("horizontal") << int(Qt::Horizontal) << true;
    QTest::newRow("vertical") << int(Qt::Vertical) << true;
    QTest::newRow("disabled: colours of the disabled group") << int(Qt::Horizontal) << false;
}

void TestEState::splitterHandleIsALightToDarkGradient()
{
    QFETCH(int, orientation);
    QFETCH(bool, enabled);
    ESplitter splitter{Qt::Orientation(orientation)};
    QPalette palette = splitter.palette();
    palette.setColor(QPalette::Light, QColor(250, 0, 0));
    palette.setColor(QPalette::Dark, QColor(0, 0, 250));
    palette.setColor(QPalette::Disabled, QPalette::Light, QColor(0, 250, 0));
    palette.setColor(QPalette::Disabled, QPalette::Dark, QColor(250, 250, 0));
    splitter.setPalette(palette);
    splitter.setEnabled(enabled);
    const QColor light = enabled ? QColor(250, 0, 0) : QColor(0, 250, 0);
    const QColor dark = enabled ? QColor(0, 0, 250) : QColor(250, 250, 0);
    const QColor halfway((light.red() + dark.red()) / 2, (light.green() + dark.green()) / 2,
                         (light.blue() + dark.blue()) / 2);
    splitter.setHandleWidth(40);
    splitter.addWidget(new QLabel(&splitter));
    splitter.addWidget(new QLabel(&splitter));
    splitter.resize(200, 200);
    QSplitterHandle* handle = splitter.handle(1);
    QVERIFY(qobject_cast<ESplitterHandle*>(handle));
    const QImage image = handle->grab().toImage();
    const int w = image.width();
    const int h = image.height();
    QVERIFY(w >= 40 && h >= 40);

    const bool across = orientation == Qt::Horizontal;
    const QColor first = image.pixelColor(across ? QPoint(0, h / 2) : QPoint(w / 2, 0));
    const QColor middle = image.pixelColor(QPoint(w / 2, h / 2));
    const QColor last = image.pixelColor(across ? QPoint(w - 1, h / 2) : QPoint(w / 2, h - 1));
    // Pixel centres sit half a pixel into the gradient.
    QVERIFY2(near(first, light), qPrintable(first.name()));
    QVERIFY2(near(last, dark), qPrintable(last.name()));
    QVERIFY2(near(middle, halfway, 12), qPrintable(middle.name()));
    // The gradient runs along one axis only: the other axis is uniform.
    const QColor side = image.pixelColor(across ? QPoint(w / 2, 2) : QPoint(2, h / 2));
    QCOMPARE(side, middle);
}

CG_TEST_MAIN(TestEState)
#include "tst_estate.moc"
