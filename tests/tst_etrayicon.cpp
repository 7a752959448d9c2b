// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "cg_qtcompat.h"
#include "etrayicon.h"

#include <QMenu>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QSystemTrayIcon>

#include <X11/Xlib.h>

#include <memory>

namespace {

/// An icon with one pixmap of \a edge pixels, so that its actual size is known.
QIcon squareIcon(int edge, Qt::GlobalColor colour)
{
    QPixmap p(edge, edge);
    p.fill(colour);
    return QIcon(p);
}

/// The X geometry of a window and the window that embeds it (its parent), as the server has them.
struct Embedding
{
    bool embedded = false;
    QSize window;
    QSize slot;
};

Embedding embeddingOf(QWidget* w)
{
    Embedding e;
    Display* display = CgQt::x11Display();
    Window root = 0, parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(display, Window(w->winId()), &root, &parent, &children, &count))
        return e;
    if (children)
        XFree(children);
    XWindowAttributes own, outer;
    if (parent == root || !XGetWindowAttributes(display, Window(w->winId()), &own)
        || !XGetWindowAttributes(display, parent, &outer))
        return e;
    e.embedded = true;
    e.window = QSize(own.width, own.height);
    e.slot = QSize(outer.width, outer.height);
    return e;
}

/// The top-level widgets that Qt made for tray icons, by the tool tip they carry.
QWidget* trayWidget(const QString& toolTip)
{
    QWidget* found = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->objectName() == QLatin1String("QSystemTrayIconSys") && w->toolTip() == toolTip) {
            if (found)
                return nullptr; // two with one tool tip: not told apart
            found = w;
        }
    }
    return found;
}

/// Empty when the tray widget with \a toolTip fills its tray slot: embedded, the same size as the
/// embedding window on the server and in Qt, with the slot's larger edge as its minimum and its
/// layout in place; else what is wrong. Qt may replace the widget, so it is looked up every time.
QString slotProblem(const QString& toolTip)
{
    QWidget* w = trayWidget(toolTip);
    if (!w)
        return QStringLiteral("no single tray widget with the tool tip");
    if (!dynamic_cast<ETrayLayout*>(w->layout()))
        return QStringLiteral("no tray layout");
    const Embedding e = embeddingOf(w);
    if (!e.embedded)
        return QStringLiteral("not embedded yet");
    const auto text = [](const QSize& s) { return QStringLiteral("%1x%2").arg(s.width()).arg(s.height()); };
    if (e.window != e.slot)
        return QStringLiteral("window %1 in slot %2").arg(text(e.window), text(e.slot));
    if (w->size() != e.slot)
        return QStringLiteral("Qt's size %1 in slot %2").arg(text(w->size()), text(e.slot));
    const int edge = std::max(e.slot.width(), e.slot.height());
    if (w->minimumSize() != QSize(edge, edge))
        return QStringLiteral("minimum %1 in slot %2").arg(text(w->minimumSize()), text(e.slot));
    return QString();
}

int trayWidgetCount()
{
    int n = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        n += w->objectName() == QLatin1String("QSystemTrayIconSys") ? 1 : 0;
    return n;
}

/// Qt's warnings and criticals since the last installWarnings().
QStringList warnings;
void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        warnings << text;
}
void installWarnings()
{
    warnings.clear();
    qInstallMessageHandler(collectWarnings);
}

} // namespace

class TestETrayIcon : public QObject
{
    Q_OBJECT
private slots:
    void layoutKeepsTheWidgetAsLargeAsTheIcon_data();
    void layoutKeepsTheWidgetAsLargeAsTheIcon();
    void withoutATrayShowOnlyShowsTheIcon();
    void iconFillsItsTraySlot();
    void twoIconsAreToldApart();
    void hideThenShowStillFillsTheSlot();
    void nullIconIsNotShown();
    void cleanupTestCase();

private:
    /// Starts the tray host once and waits until it owns the tray selection; false (and a skip)
    /// where there is no X11 or no tray host.
    bool startTray();

    std::unique_ptr<QProcess> tray;
    QByteArray trayError; // every later tray test fails at once with it
};

void TestETrayIcon::layoutKeepsTheWidgetAsLargeAsTheIcon_data()
{
    QTest::addColumn<QSize>("iconSize");
    QTest::addColumn<QSize>("minimum");
    QTest::newRow("48 x 48") << QSize(48, 48) << QSize(48, 48);
    QTest::newRow("wide") << QSize(40, 30) << QSize(40, 30);
    QTest::newRow("invalid size of a null icon") << QSize() << QSize(0, 0);
    QTest::newRow("negative") << QSize(-5, 12) << QSize(0, 12);
}

void TestETrayIcon::layoutKeepsTheWidgetAsLargeAsTheIcon()
{
    QFETCH(QSize, iconSize);
    QFETCH(QSize, minimum);
    // A window of its own, never embedded: the icon's size is the minimum on every layout pass.
    QWidget w;
    auto* layout = new ETrayLayout(&w, iconSize);
    QCOMPARE(w.layout(), layout);
    QCOMPARE(layout->iconSize, minimum);
    w.setMinimumSize(1, 1);
    w.show();
    layout->setGeometry(QRect(0, 0, 10, 10));
    QCOMPARE(w.minimumSize(), minimum);
    w.setMinimumSize(1, 1);
    w.resize(200, 100);
    QApplication::processEvents();
    QCOMPARE(w.minimumSize(), minimum);
}

void TestETrayIcon::withoutATrayShowOnlyShowsTheIcon()
{
    // Runs before the tray host is started (and on the offscreen platform, which has no tray).
    QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
    QWidget owner;
    ESystemTrayIcon icon(&owner);
    QVERIFY(!icon.parent());
    QCOMPARE(icon.getTrayIcon()->parent(), &owner);
    icon.setIcon(squareIcon(48, Qt::darkGreen));
    icon.trayIcon->setToolTip(QStringLiteral("Agent: offline"));
    const int before = QApplication::topLevelWidgets().size();
    icon.show();
    QVERIFY(icon.trayIcon->isVisible());
    QCOMPARE(QApplication::topLevelWidgets().size(), before);
    icon.hide();
    QVERIFY(!icon.trayIcon->isVisible());

    // The inner icon belongs to the wrapper: deleting the wrapper deletes it.
    QPointer<QSystemTrayIcon> inner;
    {
        ESystemTrayIcon scoped(nullptr);
        inner = scoped.trayIcon;
    }
    QVERIFY(!inner);
}

bool TestETrayIcon::startTray()
{
    if (!trayError.isEmpty()) {
        QTest::qFail(trayError.constData(), __FILE__, __LINE__);
        return false;
    }
    if (tray)
        return true;
    if (!CgQt::x11Display()) {
        QTest::qSkip("the tray needs X11: run under a virtual X server (see tests/etrayicon.cmake)", __FILE__, __LINE__);
        return false;
    }
    const QString trayer = QStandardPaths::findExecutable(QStringLiteral("trayer"));
    if (trayer.isEmpty()) {
        QTest::qSkip("no tray host: install trayer", __FILE__, __LINE__);
        return false;
    }
    tray = std::make_unique<QProcess>();
    tray->setProcessChannelMode(QProcess::MergedChannels);
    tray->start(trayer, {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--height"),
                         QStringLiteral("32"), QStringLiteral("--SetDockType"), QStringLiteral("false")});
    // trayer takes the tray selection once GTK is up; Qt notices the tray's MANAGER message.
    if (!tray->waitForStarted(10000))
        trayError = "trayer did not start";
    else if (!QTest::qWaitFor([] { return QSystemTrayIcon::isSystemTrayAvailable(); }, 30000))
        trayError = "no system tray appeared within 30 s; trayer said: " + tray->readAll();
    return startTray();
}

void TestETrayIcon::iconFillsItsTraySlot()
{
    if (!startTray())
        return;
    const QString connected = QStringLiteral("Agent: connected");
    ESystemTrayIcon icon(nullptr);
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"));
    icon.trayIcon->setContextMenu(&menu);
    icon.setIcon(squareIcon(16, Qt::darkBlue));
    icon.trayIcon->setToolTip(connected);
    icon.show();
    QVERIFY(icon.trayIcon->isVisible());
    QVERIFY(trayWidget(connected));
    QTRY_COMPARE_WITH_TIMEOUT(slotProblem(connected), QString(), 10000);
    // The slot is larger than the 16-pixel pixmap: the widget grew to the slot, not to the icon.
    const QSize slot = embeddingOf(trayWidget(connected)).slot;
    QVERIFY2(slot.width() > 16 || slot.height() > 16, "a slot as small as the pixmap proves nothing");
    QCOMPARE(static_cast<ETrayLayout*>(trayWidget(connected)->layout())->iconSize, QSize(16, 16));
}

void TestETrayIcon::twoIconsAreToldApart()
{
    if (!startTray())
        return;
    const QString firstTip = QStringLiteral("first"), secondTip = QStringLiteral("second");
    ESystemTrayIcon first(nullptr), second(nullptr);
    first.setIcon(squareIcon(16, Qt::red));
    second.setIcon(squareIcon(20, Qt::blue));
    first.trayIcon->setToolTip(QStringLiteral("first"));
    second.trayIcon->setToolTip(QStringLiteral("second"));
    first.show();
    second.show();
    QTRY_COMPARE_WITH_TIMEOUT(slotProblem(firstTip), QString(), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(slotProblem(secondTip), QString(), 10000);
    QWidget* a = trayWidget(QStringLiteral("first"));
    QWidget* b = trayWidget(QStringLiteral("second"));
    QVERIFY(a != b);
    // Each layout holds its own icon's size: the markers did not mix the widgets up.
    QCOMPARE(static_cast<ETrayLayout*>(a->layout())->iconSize, QSize(16, 16));
    QCOMPARE(static_cast<ETrayLayout*>(b->layout())->iconSize, QSize(20, 20));
}

void TestETrayIcon::hideThenShowStillFillsTheSlot()
{
    if (!startTray())
        return;
    const QString againTip = QStringLiteral("again");
    ESystemTrayIcon icon(nullptr);
    icon.setIcon(squareIcon(16, Qt::darkCyan));
    icon.trayIcon->setToolTip(QStringLiteral("again"));
    icon.show();
    QTRY_COMPARE_WITH_TIMEOUT(slotProblem(againTip), QString(), 10000);

    installWarnings();
    for (int round = 0; round < 2; ++round) {
        icon.hide();
        QVERIFY(!icon.trayIcon->isVisible());
        QTRY_COMPARE(trayWidgetCount(), 0);
        icon.show();
        QVERIFY(trayWidget(QStringLiteral("again")));
        QTRY_COMPARE_WITH_TIMEOUT(slotProblem(againTip), QString(), 10000);
    }
    // Showing an icon that is shown already keeps its one widget and layout.
    icon.show();
    QCOMPARE(trayWidgetCount(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(slotProblem(againTip), QString(), 10000);
    qInstallMessageHandler(nullptr);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

void TestETrayIcon::nullIconIsNotShown()
{
    if (!startTray())
        return;
    installWarnings();
    ESystemTrayIcon icon(nullptr);
    icon.trayIcon->setToolTip(QStringLiteral("nothing"));
    icon.show();
    QVERIFY(!icon.trayIcon->isVisible());
    QVERIFY(!trayWidget(QStringLiteral("nothing")));
    icon.setIcon(QIcon());
    icon.show();
    QVERIFY(!icon.trayIcon->isVisible());
    qInstallMessageHandler(nullptr);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
    // With an icon the same object shows.
    icon.setIcon(squareIcon(16, Qt::gray));
    icon.show();
    QVERIFY(icon.trayIcon->isVisible());
    QVERIFY(trayWidget(QStringLiteral("nothing")));
}

void TestETrayIcon::cleanupTestCase()
{
    if (tray) {
        tray->terminate();
        if (!tray->waitForFinished(5000)) {
            tray->kill();
            tray->waitForFinished(5000);
        }
        tray.reset();
    }
}

CG_TEST_MAIN(TestETrayIcon)
#include "tst_etrayicon.moc"
