// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "edirs.h"
#include "emenuitem.h"
#include "epopupmenu.h"
#include "esettings.h"
#include "etoolbar.h"

#include <QFile>
#include <QKeySequence>
#include <QMainWindow>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QToolButton>

#include <iterator>
#include <memory>
#include <vector>

namespace {

enum Command { CmdOpen = 10, CmdSave = 11, CmdFind = 12, CmdLock = 13, CmdMore = 50, CmdExport = 51, CmdImport = 52 };

/// Presses \a keys, one by one, in whatever popup is active when each key comes: a real menu
/// opened by exec() and then its sub-menus. Keep the timer until exec() has returned.
std::unique_ptr<QTimer> pressInPopup(const QList<Qt::Key>& keys)
{
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [remaining = keys]() mutable {
        QWidget* popup = QApplication::activePopupWidget();
        if (popup && popup->isVisible() && !remaining.isEmpty())
            QTest::keyClick(popup, remaining.takeFirst());
    });
    timer->start(20);
    return timer;
}

/// The receiver of a toolbar: every slot records the command it stands for.
class Commands : public QObject
{
    Q_OBJECT
public:
    QList<int> called;
public slots:
    void open() { called << CmdOpen; }
    void save() { called << CmdSave; }
    void find() { called << CmdFind; }
    void lock() { called << CmdLock; }
};

const QString openText = QStringLiteral("Open");
const QString saveText = QStringLiteral("Save");
const QString findText = QStringLiteral("Find");
const QString lockText = QStringLiteral("Lock");
const QString saveTip = QStringLiteral("Save the policy");
const QKeySequence findKeys(QStringLiteral("Ctrl+F"));

/// A main toolbar's table: separators, an unknown icon id, a null text and a null tool tip.
EToolBarItemData table[] = {
    {CmdOpen, 13, &openText, SLOT(open()), nullptr, nullptr},
    {0, -1, nullptr, nullptr, nullptr, nullptr},
    {CmdSave, 5000, &saveText, SLOT(save()), &saveTip, nullptr},
    {CmdFind, 8, nullptr, SLOT(find()), nullptr, &findKeys},
    {-1, -1, &lockText, SLOT(lock()), &saveTip, nullptr},
    {CmdLock, 47, &lockText, SLOT(lock()), nullptr, nullptr},
};

QList<int> loaded;
QIcon recordingLoader(int id)
{
    loaded << id;
    QPixmap p(8, 8);
    p.fill(Qt::blue);
    return QIcon(p);
}

void writeSettings(const QByteArray& group)
{
    QFile f(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini")));
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(group);
}

} // namespace

class TestEMenu : public QObject
{
    Q_OBJECT
private slots:
    void execReturnsTheIdChosenByKeyboard_data();
    void execReturnsTheIdChosenByKeyboard();
    void findItemSearchesSubMenusDepthFirst_data();
    void findItemSearchesSubMenusDepthFirst();
    void toolBarIsFilledFromItsTable();
    void clickedButtonsCallTheirSlots();
    void toolBarLookFollowsTheSavedOptions_data();
    void toolBarLookFollowsTheSavedOptions();
    void iconLoaderCanBeReplaced();
};

void TestEMenu::execReturnsTheIdChosenByKeyboard_data()
{
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<int>("chosen");
    QTest::newRow("first entry") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Return} << int(CmdOpen);
    QTest::newRow("entry without an id") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return} << -1;
    QTest::newRow("the disabled entry is skipped")
        << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return} << int(CmdImport);
    QTest::newRow("into the sub-menu")
        << QList<Qt::Key>{Qt::Key_Up, Qt::Key_Right, Qt::Key_Down, Qt::Key_Return} << int(CmdExport);
    QTest::newRow("Escape") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Escape} << -1;
    QTest::newRow("accelerator") << QList<Qt::Key>{Qt::Key_S} << int(CmdSave);
}

void TestEMenu::execReturnsTheIdChosenByKeyboard()
{
    QFETCH(QList<Qt::Key>, keys);
    QFETCH(int, chosen);
    EPopupMenu menu(nullptr, QStringLiteral("Policy"), QString());
    menu.insertItem(new EMenuItem(&menu, CmdOpen, nullptr, QStringLiteral("Open"), QString()));
    menu.insertItem(new EMenuItem(&menu, nullptr, QStringLiteral("About"), QString()));
    auto* save = new EMenuItem(&menu, CmdSave, nullptr, QStringLiteral("&Save"), QString());
    menu.insertItem(save);
    menu.setItemEnabled(CmdSave, false);
    menu.insertItem(new EMenuItem(&menu, CmdImport, nullptr, QStringLiteral("Import"), QString()));
    auto* more = new EPopupMenu(CmdMore, nullptr, QStringLiteral("More"), QStringLiteral("More commands"));
    more->setParent(&menu, more->windowFlags());
    more->insertItem(new EMenuItem(more, CmdImport + 100, nullptr, QStringLiteral("Import key"), QString()));
    more->insertItem(new EMenuItem(more, CmdExport, nullptr, QStringLiteral("Export"), QString()));
    menu.insertItem(more);
    if (QTest::currentDataTag() == QByteArray("accelerator"))
        save->setEnabled(true);

    const auto typing = pressInPopup(keys);
    QCOMPARE(menu.exec(QPoint(40, 40)), chosen);
    QVERIFY(!menu.isVisible());
}

void TestEMenu::findItemSearchesSubMenusDepthFirst_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("found");
    QTest::newRow("top level") << int(CmdOpen) << QStringLiteral("Open");
    QTest::newRow("two levels down") << int(CmdExport) << QStringLiteral("Export");
    QTest::newRow("the first of two equal ids, depth first") << int(CmdImport) << QStringLiteral("Import (nested)");
    QTest::newRow("after a sub-menu without it") << int(CmdLock) << QStringLiteral("Lock");
    QTest::newRow("only a sub-menu's own id") << int(CmdMore) << QString();
    QTest::newRow("unknown") << 999 << QString();
    QTest::newRow("-1: the first entry made without an id") << -1 << QStringLiteral("No id");
}

void TestEMenu::findItemSearchesSubMenusDepthFirst()
{
    QFETCH(int, id);
    QFETCH(QString, found);
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    EPopupMenu menu(1, nullptr, QStringLiteral("Root"), QString());
    menu.insertItem(new EMenuItem(&menu, CmdOpen, nullptr, QStringLiteral("Open"), QString()));
    EPopupMenu more(CmdMore, &pixmap, QStringLiteral("More"), QStringLiteral("More commands"));
    EPopupMenu deeper(CmdMore + 1, nullptr, QStringLiteral("Deeper"), QString());
    deeper.insertItem(new EMenuItem(&deeper, CmdExport, nullptr, QStringLiteral("Export"), QString()));
    deeper.insertItem(new EMenuItem(&deeper, CmdImport, nullptr, QStringLiteral("Import (nested)"), QString()));
    more.insertItem(&deeper);
    EPopupMenu empty(CmdLock + 100, nullptr, QStringLiteral("Empty"), QString());
    menu.insertItem(&more);
    menu.insertItem(&empty);
    menu.insertItem(new EMenuItem(&menu, CmdImport, nullptr, QStringLiteral("Import"), QString()));
    menu.insertItem(new EMenuItem(&menu, nullptr, QStringLiteral("No id"), QString()));
    menu.insertItem(new EMenuItem(&menu, CmdLock, nullptr, QStringLiteral("Lock"), QString()));

    // A sub-menu shows its own id, icon, text and tool tip.
    QAction* moreAction = more.menuAction();
    QCOMPARE(moreAction->data().toInt(), int(CmdMore));
    QCOMPARE(moreAction->text(), QStringLiteral("More"));
    QCOMPARE(moreAction->toolTip(), QStringLiteral("More commands"));
    QVERIFY(!moreAction->icon().isNull());
    QCOMPARE(menu.actions().at(1), moreAction);

    QAction* action = menu.findItem(id);
    QCOMPARE(action ? action->text() : QString(), found);

    // Checking and enabling go to the same entry; an unknown id changes nothing anywhere.
    QList<QAction*> all = menu.findChildren<QAction*>() + more.findChildren<QAction*>() + deeper.findChildren<QAction*>();
    for (QAction* a : all)
        a->setCheckable(true);
    menu.setItemChecked(id, true);
    menu.setItemEnabled(id, false);
    for (QAction* a : all) {
        QCOMPARE(a->isChecked(), a == action);
        QCOMPARE(a->isEnabled(), a != action);
    }
}

void TestEMenu::toolBarIsFilledFromItsTable()
{
    Commands commands;
    QPointer<QAction> open;
    {
        QMainWindow window;
        auto* bar = new EToolBar(&window, EToolBar::Main);
        window.addToolBar(bar);
        bar->fill(&commands, table, int(std::size(table)));
        QCOMPARE(bar->count, 6);
        QCOMPARE(int(bar->entries.size()), 6);
        QCOMPARE(bar->actions().size(), 6);
        QVERIFY(bar->actions().at(1)->isSeparator());
        QVERIFY(bar->actions().at(4)->isSeparator()); // icon -1 wins over everything else of the record
        QVERIFY(!bar->find(-1));                      // the first id -1 is a separator

        open = bar->find(CmdOpen);
        QCOMPARE(open->text(), openText);
        QVERIFY(bar->find(CmdFind)->text().isEmpty());
        QCOMPARE(bar->find(CmdFind)->shortcut(), findKeys);
        QCOMPARE(bar->find(CmdSave)->toolTip(), saveTip);
        QVERIFY(bar->find(CmdSave)->icon().isNull()); // unknown icon id
        QCOMPARE(bar->find(CmdLock)->toolTip(), lockText); // Qt's default: the text

        QVERIFY(!bar->isMovable());
        QVERIFY(!bar->isFloatable());
        QCOMPARE(bar->styleSheet(), QStringLiteral("QToolBar { border: 0px none black; }"));
        window.show();
        QCOMPARE(bar->size(), bar->sizeHint());
        QCOMPARE(bar->minimumSize(), bar->maximumSize());
    }
    QVERIFY(!open);
}

void TestEMenu::clickedButtonsCallTheirSlots()
{
    Commands commands;
    QMainWindow window;
    auto* bar = new EToolBar(&window, EToolBar::Small);
    window.addToolBar(bar);
    bar->fill(&commands, table, int(std::size(table)));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto click = [bar](int id) { QTest::mouseClick(bar->widgetForAction(bar->find(id)), Qt::LeftButton); };

    for (const int id : {CmdSave, CmdOpen, CmdLock, CmdFind})
        click(id);
    QCOMPARE(commands.called, (QList<int>{CmdSave, CmdOpen, CmdLock, CmdFind}));

    // The shortcut of a record triggers its slot too; a disabled button calls nothing.
    commands.called.clear();
    QTest::keySequence(&window, findKeys);
    QVERIFY(bar->isButtonEnabled(CmdOpen));
    bar->enableButton(CmdOpen, false);
    QVERIFY(!bar->isButtonEnabled(CmdOpen));
    click(CmdOpen);
    QCOMPARE(commands.called, QList<int>{CmdFind});

    // Checking makes a button checkable; a click then toggles it and still calls the slot.
    auto* lock = qobject_cast<QToolButton*>(bar->widgetForAction(bar->find(CmdLock)));
    QVERIFY(!lock->isCheckable());
    bar->checkButton(CmdLock, true);
    QVERIFY(lock->isCheckable() && lock->isChecked());
    click(CmdLock);
    QVERIFY(!lock->isChecked());
    QCOMPARE(commands.called, (QList<int>{CmdFind, CmdLock}));

    // Unknown ids and the separators' -1 change nothing and read as disabled.
    for (const int id : {999, -1}) {
        QVERIFY(!bar->isButtonEnabled(id));
        bar->enableButton(id, false);
        bar->checkButton(id, true);
    }
    for (const EToolBar::Entry& e : bar->entries)
        if (e.action && e.id != CmdLock && e.id != CmdOpen)
            QVERIFY(e.action->isEnabled() && !e.action->isCheckable());
}

void TestEMenu::toolBarLookFollowsTheSavedOptions_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<int>("iconSize");
    QTest::addColumn<int>("style");
    const int under = Qt::ToolButtonTextUnderIcon;
    QTest::newRow("nothing saved") << QByteArray() << 25 << under;
    QTest::newRow("small icons beside text") << QByteArray("[EToolBar]\nIconSize=16\nButtonStyle=2\n") << 16 << 2;
    QTest::newRow("icons only") << QByteArray("[EToolBar]\nIconSize=32\nButtonStyle=0\n") << 32 << 0;
    QTest::newRow("not numbers") << QByteArray("[EToolBar]\nIconSize=big\nButtonStyle=@Variant(\\0)\n") << 25 << under;
    QTest::newRow("negative size, unknown style") << QByteArray("[EToolBar]\nIconSize=-16\nButtonStyle=9\n") << 25 << under;
    QTest::newRow("absurd size, negative style") << QByteArray("[EToolBar]\nIconSize=100000\nButtonStyle=-1\n") << 25 << under;
    QTest::newRow("a list instead of a number") << QByteArray("[EToolBar]\nIconSize=16, 16\nButtonStyle=1\n") << 25 << 1;
    QTest::newRow("garbage file") << QByteArray("\x01\xff[[[EToolBar\n=\n\n\x00zz", 18) << 25 << under;
}

void TestEMenu::toolBarLookFollowsTheSavedOptions()
{
    QFETCH(QByteArray, ini);
    QFETCH(int, iconSize);
    QFETCH(int, style);
    writeSettings(ini);

    const EToolBarOptions options = EToolBarOptions::load();
    QCOMPARE(options.iconSize, iconSize);
    QCOMPARE(options.buttonStyle, style);
    EToolBar main(nullptr, EToolBar::Main);
    QCOMPARE(main.iconSize(), QSize(iconSize, iconSize));
    QCOMPARE(int(main.toolButtonStyle()), style);
    // The small toolbar ignores the options.
    EToolBar small(nullptr, EToolBar::Small);
    QCOMPARE(small.iconSize(), QSize(24, 24));
    QCOMPARE(small.toolButtonStyle(), Qt::ToolButtonIconOnly);

    // Saved options reach toolbars made later, and a toolbar told to apply them; not running ones.
    EToolBarOptions changed{EToolBarOptions::SMALL_ICON_SIZE, Qt::ToolButtonTextBesideIcon};
    changed.save();
    {
        ESettings s(QStringLiteral("EToolBar"));
        QCOMPARE(s.value(QStringLiteral("IconSize")).toInt(), 16);
        QCOMPARE(s.value(QStringLiteral("ButtonStyle")).toInt(), int(Qt::ToolButtonTextBesideIcon));
    }
    QCOMPARE(main.iconSize(), QSize(iconSize, iconSize));
    QCOMPARE(EToolBar(nullptr, EToolBar::Main).iconSize(), QSize(16, 16));
    main.setOptions(EToolBarOptions::load());
    QCOMPARE(main.iconSize(), QSize(16, 16));
    QCOMPARE(main.toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QCOMPARE(main.size(), main.sizeHint());
}

void TestEMenu::iconLoaderCanBeReplaced()
{
    loaded.clear();
    EToolBar::setIconLoader(recordingLoader);
    EToolBar bar(nullptr, EToolBar::Small);
    bar.fill(nullptr, table, int(std::size(table)));
    QCOMPARE(loaded, (QList<int>{13, 5000, 8, 47}));
    QVERIFY(!bar.find(CmdSave)->icon().isNull());
    // A null loader brings the library's table back: id 5000 is not in it.
    EToolBar::setIconLoader(nullptr);
    EToolBar plain(nullptr, EToolBar::Small);
    plain.fill(nullptr, table, int(std::size(table)));
    QCOMPARE(loaded.size(), 4);
    QVERIFY(plain.find(CmdSave)->icon().isNull());
    // No table at all is an empty toolbar.
    EToolBar none(nullptr, EToolBar::Small);
    none.fill(nullptr, nullptr, 3);
    none.fill(nullptr, table, -2);
    QCOMPARE(none.count, 0);
    QVERIFY(none.actions().isEmpty());
}

CG_TEST_MAIN(TestEMenu)
#include "tst_emenu.moc"
