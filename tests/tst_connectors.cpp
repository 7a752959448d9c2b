// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The compile-time checked connectors: each connects the same signal with the same set-up as its
// slot-string twin, to a member function or to a functor, and fires on what the user does.
#include "cgtest.h"

#include "ebox.h"
#include "ebutton.h"
#include "echeckbox.h"
#include "ecombobox.h"
#include "edatetimebox.h"
#include "eeditbox.h"
#include "eiconbutton.h"
#include "eradiogroup.h"
#include "espinbox.h"
#include "etable.h"
#include "etimebox.h"

#include <QContextMenuEvent>
#include <QRadioButton>

#include <functional>

namespace {

class Receiver : public QObject
{
    Q_OBJECT
public:
    int calls = 0;
public slots:
    void hit() { ++calls; }
};

class Rows : public ETableModel
{
public:
    int getRowCount() const override { return 3; }
    int getColumnCount() const override { return 2; }
    QString getCell(int row, int column) const override { return QStringLiteral("%1/%2").arg(row).arg(column); }
    QString getHeader(int) const override { return QString(); }
};

// What a person does to the widget after the connection; programmatic changes first, so a
// user-change connector that also heard them would count too many.
using Scenario = std::function<bool(Receiver*, bool functor, QWidget* window)>;

} // namespace

Q_DECLARE_METATYPE(Scenario)

namespace {

// Builds the widget, shows it in the window, connects it to Receiver::hit or to a lambda through
// \a connect, and lets \a act drive it; true when the connection was made.
template <typename Make, typename Connect, typename Act>
Scenario scenario(Make make, Connect connect, Act act)
{
    return [=](Receiver* r, bool functor, QWidget* window) {
        auto* w = make(window);
        w->setParent(window);
        window->show();
        w->show();
        w->setFocus();
        QCoreApplication::processEvents();
        const bool ok = functor ? connect(w, r, [r] { ++r->calls; }) : connect(w, r, &Receiver::hit);
        return act(w) && ok;
    };
}

#define CONNECTOR(name) [](auto* w, auto* r, auto s) { return w->name(r, s); }

template <typename W, typename... Args>
auto make(Args... args)
{
    return [=](QWidget*) { return new W(args...); };
}

template <typename Combo>
Combo* filled(Combo* combo)
{
    for (const char* text : {"a", "b", "c"})
        combo->boxModel()->append(new EBoxItem(QString::fromLatin1(text)));
    return combo;
}

QPoint cell(QAbstractItemView* view, int row)
{
    return view->visualRect(view->model()->index(row, 0)).center();
}

bool click(QAbstractItemView* view, int row, bool twice = false)
{
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cell(view, row));
    if (twice)
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cell(view, row));
    return true;
}

bool contextMenu(QAbstractItemView* view)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, cell(view, 0), view->viewport()->mapToGlobal(cell(view, 0)));
    QCoreApplication::sendEvent(view->viewport(), &event);
    return view->contextMenuPolicy() == Qt::CustomContextMenu;
}

template <typename View>
void addViewRows(const QByteArray& kind, std::function<View*(QWidget*)> fill)
{
    QTest::newRow(kind + " double click") << scenario(fill, CONNECTOR(setSlotForDoubleClick), [](View* v) { return click(v, 1, true); }) << 1;
    QTest::newRow(kind + " change current") << scenario(fill, CONNECTOR(setSlotForChangeCurrent), [](View* v) { return click(v, 1) && click(v, 2); }) << 2;
    QTest::newRow(kind + " change selection") << scenario(fill, CONNECTOR(setSlotForChangeSelection), [](View* v) { return click(v, 2); }) << 1;
    QTest::newRow(kind + " context menu") << scenario(fill, CONNECTOR(setSlotForContextMenu), contextMenu) << 1;
}

} // namespace

class TestConnectors : public QObject
{
    Q_OBJECT
private slots:
    void connectsAndFiresOnWhatTheUserDoes_data();
    void connectsAndFiresOnWhatTheUserDoes();
    void nullReceiverIsRefusedLikeTheStringForm();
};

void TestConnectors::connectsAndFiresOnWhatTheUserDoes_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<int>("expected"); // calls of the receiver
    const auto clickAndSpace = [](QAbstractButton* b) { QTest::mouseClick(b, Qt::LeftButton); QTest::keyClick(b, Qt::Key_Space); return true; };
    const auto setAndSpace = [](QCheckBox* c) { c->setChecked(true); QTest::keyClick(c, Qt::Key_Space); return true; };
    const auto setAndType = [](QLineEdit* e) { e->setText(QStringLiteral("x")); QTest::keyClicks(e, QStringLiteral("ab")); return true; };
    // The widgets' own setters: those are the ones that must not reach user-change receivers.
    const auto setSpin = [](ESpinBox* b) { b->setValue(5); QTest::keyClick(b, Qt::Key_Up); return true; };
    const auto setDateTime = [](EDateTimeBox* b) {
        b->setDateTime(QDateTime(QDate(2020, 5, 5), QTime(10, 0)));
        QTest::keyClick(b, Qt::Key_Up);
        return true;
    };
    const auto setTime = [](ETimeBox* b) { b->setTime(QTime(10, 0)); QTest::keyClick(b, Qt::Key_Up); return true; };
    const auto setAndKeyDown = [](QComboBox* c) { c->setCurrentIndex(1); QTest::keyClick(c, Qt::Key_Down); return true; };
    const auto label = QStringLiteral("b");

    QTest::newRow("EButton click") << scenario(make<EButton>(label), CONNECTOR(setSlotForClick), clickAndSpace) << 2;
    QTest::newRow("EIconButton click") << scenario(make<EIconButton>(QIcon()), CONNECTOR(setSlotForClick), clickAndSpace) << 2;
    QTest::newRow("ECheckBox toggle") << scenario(make<ECheckBox>(label), CONNECTOR(setSlotForToggle), setAndSpace) << 2;
    QTest::newRow("ECheckBox user toggle") << scenario(make<ECheckBox>(label), CONNECTOR(setSlotForUserToggle), setAndSpace) << 1;
    QTest::newRow("EEditBox change text") << scenario(make<EEditBox>(), CONNECTOR(setSlotForChangeText), setAndType) << 3;
    QTest::newRow("EEditBox user change text") << scenario(make<EEditBox>(), CONNECTOR(setSlotForUserChangeText), setAndType) << 2;
    QTest::newRow("ESpinBox change value") << scenario(make<ESpinBox>(0, 10, 1), CONNECTOR(setSlotForChangeValue), setSpin) << 2;
    QTest::newRow("ESpinBox user change value") << scenario(make<ESpinBox>(0, 10, 1), CONNECTOR(setSlotForUserChangeValue), setSpin) << 1;
    QTest::newRow("EDateTimeBox change value") << scenario(make<EDateTimeBox>(), CONNECTOR(setSlotForChangeValue), setDateTime) << 2;
    QTest::newRow("EDateTimeBox user change value") << scenario(make<EDateTimeBox>(), CONNECTOR(setSlotForUserChangeValue), setDateTime) << 1;
    QTest::newRow("ETimeBox change value") << scenario(make<ETimeBox>(), CONNECTOR(setSlotForChangeValue), setTime) << 2;
    QTest::newRow("ETimeBox user change value") << scenario(make<ETimeBox>(), CONNECTOR(setSlotForUserChangeValue), setTime) << 1;
    const auto combo = [](QWidget*) { return filled(new EComboBox); };
    QTest::newRow("EComboBox change selection") << scenario(combo, CONNECTOR(setSlotForChangeSelection), setAndKeyDown) << 2;
    QTest::newRow("EComboBox user change selection") << scenario(combo, CONNECTOR(setSlotForUserChangeSelection), setAndKeyDown) << 1;
    const auto editable = [](QWidget*) { auto* c = new EComboBox; c->setEditable(true); return c; };
    QTest::newRow("EComboBox change text") << scenario(editable, CONNECTOR(setSlotForChangeText),
                                                       [](EComboBox* c) { QTest::keyClicks(c->lineEdit(), QStringLiteral("xy")); return true; }) << 2;
    QTest::newRow("EComboState activate text") << scenario([](QWidget* owner) { return new EComboState(owner, QStringLiteral("Probe")); },
                                                           CONNECTOR(setSlotForActivateText), [](EComboState* c) {
                                                               QTest::keyClicks(c, QStringLiteral("find me"));
                                                               QTest::keyClick(c, Qt::Key_Return);
                                                               return true;
                                                           }) << 1;
    const auto radios = [](QWidget*) {
        auto* g = new ERadioGroup(QStringLiteral("g"));
        g->addButton(QStringLiteral("zero"), 0);
        g->addButton(QStringLiteral("one"), 1);
        return g;
    };
    QTest::newRow("ERadioGroup user toggle") << scenario(radios, CONNECTOR(setSlotForUserToggle), [](ERadioGroup* g) {
        g->setId(0);
        QTest::mouseClick(g->getButton(1), Qt::LeftButton);
        return g->getId() == 1;
    }) << 1;
    addViewRows<EBox>("EBox", [](QWidget*) { return filled(new EBox); });
    addViewRows<ETable>("ETable", [](QWidget*) { return new ETable(new Rows, true); });
}

void TestConnectors::connectsAndFiresOnWhatTheUserDoes()
{
    QFETCH(Scenario, scenario);
    QFETCH(int, expected);
    for (bool functor : {false, true}) {
        QWidget window;
        window.resize(300, 200);
        Receiver receiver;
        QVERIFY(scenario(&receiver, functor, &window));
        QCOMPARE(receiver.calls, expected);
    }
}

void TestConnectors::nullReceiverIsRefusedLikeTheStringForm()
{
    Receiver* none = nullptr;
    EBox box;
    ETable table(new Rows, true);
    EComboBox combo;
    QVERIFY(!box.setSlotForDoubleClick(none, &Receiver::hit));
    QVERIFY(!table.setSlotForChangeSelection(none, &Receiver::hit));
    QVERIFY(!combo.setSlotForUserChangeSelection(none, &Receiver::hit));
    QVERIFY(!table.setSlotForContextMenu(none, &Receiver::hit));
    QCOMPARE(table.contextMenuPolicy(), Qt::CustomContextMenu);   // the string form sets it first, too
    QCOMPARE(box.contextMenuPolicy(), Qt::DefaultContextMenu);
}

CG_TEST_MAIN(TestConnectors)
#include "tst_connectors.moc"
