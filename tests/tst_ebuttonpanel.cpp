// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "ebuttonpanel.h"
#include "ehelpbutton.h"
#include "eintdialog.h"
#include "emessage.h"
#include "estrdialog.h"

#include <QAbstractSpinBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

#include <memory>

namespace {

using P = EButtonPanel;

QString padded(const QString& caption)
{
    return QLatin1Char(' ') + caption + QLatin1Char(' ');
}

/// The buttons of the row, left to right, as the layout holds them.
QList<QPushButton*> rowButtons(EButtonPanel& panel)
{
    QList<QPushButton*> list;
    for (int i = 0; i < panel.layout()->count(); ++i)
        if (auto* b = qobject_cast<QPushButton*>(panel.layout()->itemAt(i)->widget()))
            list.append(b);
    return list;
}

QStringList captions(EButtonPanel& panel)
{
    QStringList list;
    for (QPushButton* b : rowButtons(panel))
        list.append(b->text());
    return list;
}

/// Names the panel's signals in the order they come.
void record(EButtonPanel& panel, QStringList& fired)
{
    QObject::connect(&panel, &P::ok, [&fired] { fired << QStringLiteral("ok"); });
    QObject::connect(&panel, &P::cancel, [&fired] { fired << QStringLiteral("cancel"); });
    QObject::connect(&panel, &P::help, [&fired] { fired << QStringLiteral("help"); });
    QObject::connect(&panel, &P::back, [&fired] { fired << QStringLiteral("back"); });
}

/// Answers an input dialog: records its label and field, types \a typed over the selected text
/// (a backspace erases it) and finishes with Enter ("Return") or a button ("ok", "cancel").
ModalAnswer typeAndFinish(QStringList& field, const QString& typed, const QString& finish)
{
    return ModalAnswer::call([&field, typed, finish](QWidget* box) {
        QWidget* input = box->findChild<QAbstractSpinBox*>();
        if (!input)
            input = box->findChild<QLineEdit*>();
        field = QStringList{box->findChild<QLabel*>()->text(), input->property("text").toString()};
        input->setFocus();
        QTest::keyClicks(input, typed);
        if (finish == QLatin1String("Return"))
            QTest::keyClick(input, Qt::Key_Return);
        else
            QTest::mouseClick(box->findChild<QPushButton*>(finish + QStringLiteral("Button")), Qt::LeftButton);
    });
}

} // namespace

class TestEButtonPanel : public QObject
{
    Q_OBJECT
private slots:
    void buttonsComeInTheFixedOrderAndReportTheirSignals();
    void addButtonEnableOKAndClear();
    void inputDialogsWriteBackOnlyAfterAccepted_data();
    void inputDialogsWriteBackOnlyAfterAccepted();
};

void TestEButtonPanel::buttonsComeInTheFixedOrderAndReportTheirSignals()
{
    QStringList expected;
    for (const QString* text : {&LCQT__Back, &LCQT__Save, &LCQT__OK, &LCQT__Next, &LCQT__Finish, &LCQT__Cancel,
                                &LCQT__Close, &LCQT__Help})
        expected.append(padded(*text));
    QDialog dialog;
    QWidget page;
    QSignalSpy accepted(&dialog, &QDialog::accepted), rejected(&dialog, &QDialog::rejected);
    for (QWidget* host : {static_cast<QWidget*>(&dialog), &page}) {
        // The dialog's slots are connected by name; the page has none.
        const bool named = host == &dialog;
        EButtonPanel panel(host, P::Close | P::Help | P::Finish | P::Next | P::Cancel | P::Save | P::OK | P::Back,
                           "panel-topic.html", named ? SLOT(accept()) : nullptr, named ? SLOT(reject()) : nullptr);
        QCOMPARE(captions(panel), expected);
        // The last confirming button is the only default one, in a dialog and on any other widget.
        QCOMPARE(panel.okButton->text(), padded(LCQT__Finish));
        for (QPushButton* b : rowButtons(panel))
            QCOMPARE(b->isDefault(), b == panel.okButton);
        QCOMPARE(panel.layout()->alignment(), Qt::AlignHCenter | Qt::AlignBottom);

        // Help also opens its page; none is installed, so the error is collected.
        QStringList fired;
        record(panel, fired);
        EMessage::setCumulativeErrorMode();
        for (QPushButton* b : rowButtons(panel))
            QTest::mouseClick(b, Qt::LeftButton);
        QVERIFY(EMessage::getCumulativeError().endsWith(QStringLiteral("panel-topic.html.")));
        QCOMPARE(fired.join(QLatin1Char(' ')), QStringLiteral("back ok ok ok ok cancel cancel help"));
        QVERIFY(qobject_cast<EHelpButton*>(rowButtons(panel).last()));
    }
    QCOMPARE(accepted.count(), 4);
    QCOMPARE(rejected.count(), 2);
    QVERIFY(!EButtonPanel(&page, P::Help | P::Close).okButton);
    EButtonPanel orphan(nullptr, P::OK, nullptr, SLOT(accept()), SLOT(reject())); // nothing to connect to, no crash
}

void TestEButtonPanel::addButtonEnableOKAndClear()
{
    QDialog dialog;
    EButtonPanel panel(&dialog, P::OK | P::Help);
    QPushButton* ok = panel.okButton;
    QStringList fired;
    record(panel, fired);
    QPushButton* other = panel.addButton(QStringLiteral("&Other"), false);
    QPushButton* apply = panel.addButton(QStringLiteral("&Apply"), true);
    QVERIFY(panel.okButton == apply && apply->isDefault() && !ok->isDefault());
    QTest::mouseClick(other, Qt::LeftButton); // left to the caller
    QTest::mouseClick(apply, Qt::LeftButton);
    QCOMPARE(fired, QStringList{QStringLiteral("ok")});
    panel.enableOK(false); // acts on the last confirming button only
    QVERIFY(!apply->isEnabled() && ok->isEnabled());

    panel.addButtons(P::Cancel | P::Back, nullptr, nullptr, nullptr); // a second set goes after the first
    QCOMPARE(captions(panel), (QStringList{padded(LCQT__OK), padded(LCQT__Help), QStringLiteral(" &Other "),
                                           QStringLiteral(" &Apply "), padded(LCQT__Back), padded(LCQT__Cancel)}));
    // clear() empties the row but neither deletes the buttons nor forgets the confirming one.
    panel.clear();
    QCOMPARE(panel.layout()->count(), 0);
    QCOMPARE(ok->parent(), &panel);
    QCOMPARE(panel.okButton, apply);
    panel.addButtons(P::Close | P::Next, nullptr, nullptr, nullptr);
    QCOMPARE(captions(panel), (QStringList{padded(LCQT__Next), padded(LCQT__Close)}));
    EButtonPanel(&dialog, P::Cancel).enableOK(false); // no confirming button: nothing to switch
}

void TestEButtonPanel::inputDialogsWriteBackOnlyAfterAccepted_data()
{
    QTest::addColumn<bool>("number"); // EIntDialog over 0..10, else EStrDialog
    QTest::addColumn<QString>("initial");
    QTest::addColumn<QString>("typed"); // replaces the selected text; a backspace clears it
    QTest::addColumn<QString>("finish");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("result");
    QTest::newRow("too big is clamped and written") << true << "50" << "" << "ok" << "10" << "10" << 1;
    QTest::newRow("too small is clamped and written") << true << "-3" << "" << "Return" << "0" << "0" << 1;
    QTest::newRow("clamped but cancelled") << true << "50" << "" << "cancel" << "10" << "50" << 0;
    QTest::newRow("text typed then Enter") << false << "gateway" << "relay" << "Return" << "gateway" << "relay" << 1;
    QTest::newRow("text emptied then OK") << false << "gateway" << "\b" << "ok" << "gateway" << "" << 1;
}

void TestEButtonPanel::inputDialogsWriteBackOnlyAfterAccepted()
{
    QFETCH(bool, number);
    QFETCH(QString, initial);
    QFETCH(QString, typed);
    QFETCH(QString, finish);
    QFETCH(QString, shown);
    QFETCH(QString, expected);
    QFETCH(int, result);

    int n = initial.toInt();
    QString text = initial;
    const auto value = [&] { return number ? QString::number(n) : text; };
    std::unique_ptr<QDialog> dialog;
    if (number)
        dialog.reset(new EIntDialog(nullptr, QStringLiteral("Value"), QStringLiteral("&Value:"), 0, 10, n));
    else
        dialog.reset(new EStrDialog(nullptr, QStringLiteral("Value"), QStringLiteral("&Value:"), text));
    QString duringAccepted;
    connect(dialog.get(), &QDialog::accepted, this, [&] { duringAccepted = value(); });
    QStringList field;
    ModalAnswerer answer(typeAndFinish(field, typed, finish));
    QCOMPARE(dialog->exec(), result);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, QStringLiteral("Value"));
    QCOMPARE(field, (QStringList{QStringLiteral("&Value:"), shown}));
    QCOMPARE(value(), expected);
    // The number is stored before accepted(); the text only after it, on purpose.
    QCOMPARE(duringAccepted, !result ? QString() : number ? expected : initial);
}

CG_TEST_MAIN(TestEButtonPanel)
#include "tst_ebuttonpanel.moc"
