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

// Connects through \a connector either to Receiver::hit or to a lambda, as the row asks.
template <typename Widget, typename Connector>
bool wire(Widget* w, Receiver* r, bool functor, Connector connector)
{
    return functor ? connector(w, r, [r] { ++r->calls; }) : connector(w, r, &Receiver::hit);
}

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

template <typename W>
W* shown(W* w, QWidget* window)
{
    w->setParent(window);
    window->show();
    w->show();
    w->setFocus();
    QCoreApplication::processEvents();
    return w;
}

void keys(QWidget* w, const QString& text)
{
    QTest::keyClicks(w, text);
}

QPoint cell(QAbstractItemView* view, int row)
{
    return view->visualRect(view->model()->index(row, 0)).center();
}

template <typename View>
View* filledView(QWidget* window);

template <>
EBox* filledView<EBox>(QWidget* window)
{
    auto* box = new EBox;
    for (const char* text : {"a", "b", "c"})
        box->boxModel()->append(new EBoxItem(QString::fromLatin1(text)));
    return shown(box, window);
}

template <>
ETable* filledView<ETable>(QWidget* window)
{
    return shown(new ETable(new Rows, true), window);
}

template <typename View>
void addViewRows()
{
    const QByteArray kind = std::is_same<View, EBox>::value ? "EBox " : "ETable ";
    QTest::newRow(kind + "double click") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* v = filledView<View>(window);
        const bool ok = wire(v, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForDoubleClick(rc, s); });
        QTest::mouseClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, cell(v, 1));
        QTest::mouseDClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, cell(v, 1));
        return ok;
    }) << 1;
    QTest::newRow(kind + "change current") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* v = filledView<View>(window);
        const bool ok = wire(v, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeCurrent(rc, s); });
        QTest::mouseClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, cell(v, 1));
        QTest::mouseClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, cell(v, 2));
        return ok;
    }) << 2;
    QTest::newRow(kind + "change selection") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* v = filledView<View>(window);
        const bool ok = wire(v, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeSelection(rc, s); });
        QTest::mouseClick(v->viewport(), Qt::LeftButton, Qt::NoModifier, cell(v, 2));
        return ok;
    }) << 1;
    QTest::newRow(kind + "context menu") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* v = filledView<View>(window);
        const bool ok = wire(v, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForContextMenu(rc, s); });
        QContextMenuEvent event(QContextMenuEvent::Mouse, cell(v, 0), v->viewport()->mapToGlobal(cell(v, 0)));
        QCoreApplication::sendEvent(v->viewport(), &event);
        return ok && v->contextMenuPolicy() == Qt::CustomContextMenu;
    }) << 1;
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
    QTest::newRow("EButton click") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new EButton(QStringLiteral("b")), window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForClick(rc, s); });
        QTest::mouseClick(b, Qt::LeftButton);
        QTest::keyClick(b, Qt::Key_Space);
        return ok;
    }) << 2;
    QTest::newRow("EIconButton click") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new EIconButton(QIcon()), window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForClick(rc, s); });
        QTest::mouseClick(b, Qt::LeftButton);
        return ok;
    }) << 1;
    QTest::newRow("ECheckBox toggle") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* c = shown(new ECheckBox(QStringLiteral("c")), window);
        const bool ok = wire(c, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForToggle(rc, s); });
        c->setChecked(true);
        QTest::keyClick(c, Qt::Key_Space);
        return ok;
    }) << 2;
    QTest::newRow("ECheckBox user toggle") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* c = shown(new ECheckBox(QStringLiteral("c")), window);
        const bool ok = wire(c, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserToggle(rc, s); });
        c->setChecked(true);
        QTest::keyClick(c, Qt::Key_Space);
        return ok;
    }) << 1;
    QTest::newRow("EEditBox change text") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* e = shown(new EEditBox, window);
        const bool ok = wire(e, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeText(rc, s); });
        e->setText(QStringLiteral("x"));
        keys(e, QStringLiteral("ab"));
        return ok;
    }) << 3;
    QTest::newRow("EEditBox user change text") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* e = shown(new EEditBox, window);
        const bool ok = wire(e, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserChangeText(rc, s); });
        e->setText(QStringLiteral("x"));
        keys(e, QStringLiteral("ab"));
        return ok;
    }) << 2;
    QTest::newRow("ESpinBox change value") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new ESpinBox(0, 10, 1), window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeValue(rc, s); });
        b->setValue(5);
        QTest::keyClick(b, Qt::Key_Up);
        return ok;
    }) << 2;
    QTest::newRow("ESpinBox user change value") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new ESpinBox(0, 10, 1), window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserChangeValue(rc, s); });
        b->setValue(5);
        QTest::keyClick(b, Qt::Key_Up);
        return ok;
    }) << 1;
    QTest::newRow("EDateTimeBox change value") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new EDateTimeBox, window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeValue(rc, s); });
        b->setDateTime(QDateTime(QDate(2020, 5, 5), QTime(10, 0)));
        QTest::keyClick(b, Qt::Key_Up);
        return ok;
    }) << 2;
    QTest::newRow("EDateTimeBox user change value") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new EDateTimeBox, window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserChangeValue(rc, s); });
        b->setDateTime(QDateTime(QDate(2020, 5, 5), QTime(10, 0)));
        QTest::keyClick(b, Qt::Key_Up);
        return ok;
    }) << 1;
    QTest::newRow("ETimeBox change value") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new ETimeBox, window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeValue(rc, s); });
        b->setTime(QTime(10, 0));
        QTest::keyClick(b, Qt::Key_Up);
        return ok;
    }) << 2;
    QTest::newRow("ETimeBox user change value") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* b = shown(new ETimeBox, window);
        const bool ok = wire(b, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserChangeValue(rc, s); });
        b->setTime(QTime(10, 0));
        QTest::keyClick(b, Qt::Key_Up);
        return ok;
    }) << 1;
    QTest::newRow("EComboBox change selection") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* c = shown(new EComboBox, window);
        for (const char* text : {"a", "b", "c"})
            c->boxModel()->append(new EBoxItem(QString::fromLatin1(text)));
        const bool ok = wire(c, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeSelection(rc, s); });
        c->setCurrentIndex(1);
        QTest::keyClick(c, Qt::Key_Down);
        return ok;
    }) << 2;
    QTest::newRow("EComboBox user change selection") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* c = shown(new EComboBox, window);
        for (const char* text : {"a", "b", "c"})
            c->boxModel()->append(new EBoxItem(QString::fromLatin1(text)));
        const bool ok = wire(c, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserChangeSelection(rc, s); });
        c->setCurrentIndex(1);
        QTest::keyClick(c, Qt::Key_Down);
        return ok;
    }) << 1;
    QTest::newRow("EComboBox change text") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* c = shown(new EComboBox, window);
        c->setEditable(true);
        const bool ok = wire(c, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForChangeText(rc, s); });
        keys(c->lineEdit(), QStringLiteral("xy"));
        return ok;
    }) << 2;
    QTest::newRow("EComboState activate text") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* c = shown(new EComboState(window, QStringLiteral("Probe")), window);
        const bool ok = wire(c, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForActivateText(rc, s); });
        keys(c, QStringLiteral("find me"));
        QTest::keyClick(c, Qt::Key_Return);
        return ok;
    }) << 1;
    QTest::newRow("ERadioGroup user toggle") << Scenario([](Receiver* r, bool f, QWidget* window) {
        auto* g = new ERadioGroup(QStringLiteral("g"));
        g->addButton(QStringLiteral("zero"), 0);
        QRadioButton* one = g->addButton(QStringLiteral("one"), 1);
        shown(g, window);
        const bool ok = wire(g, r, f, [](auto* w, auto* rc, auto s) { return w->setSlotForUserToggle(rc, s); });
        g->setId(0);
        QTest::mouseClick(one, Qt::LeftButton);
        return ok && g->getId() == 1;
    }) << 1;
    addViewRows<EBox>();
    addViewRows<ETable>();
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
