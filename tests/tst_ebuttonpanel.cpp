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
#include <QLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

Q_DECLARE_METATYPE(EButtonPanel::Buttons)

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
    QLayout* row = panel.layout();
    for (int i = 0; i < row->count(); ++i)
        if (auto* b = qobject_cast<QPushButton*>(row->itemAt(i)->widget()))
            list.append(b);
    return list;
}

QStringList captions(const QList<QPushButton*>& buttons)
{
    QStringList list;
    for (QPushButton* b : buttons)
        list.append(b->text());
    return list;
}

/// A dialog whose slots the panel connects to by name.
class Owner : public QDialog
{
    Q_OBJECT
public slots:
    void okPressed() { ++oks; }
    void cancelPressed() { ++cancels; }

public:
    int oks = 0;
    int cancels = 0;
};

/// Counts the panel's four signals; fired() spells what came, e.g. "okcancel".
struct Signals
{
    explicit Signals(EButtonPanel& p)
        : ok(&p, &EButtonPanel::ok), cancel(&p, &EButtonPanel::cancel), help(&p, &EButtonPanel::help),
          back(&p, &EButtonPanel::back)
    {
    }
    QString fired() const
    {
        return QStringLiteral("ok").repeated(ok.count()) + QStringLiteral("cancel").repeated(cancel.count())
               + QStringLiteral("help").repeated(help.count()) + QStringLiteral("back").repeated(back.count());
    }
    QSignalSpy ok, cancel, help, back;
};

/// The input dialog's field as it came up.
struct Field
{
    QString caption;
    QString text;
};

/// Answers an input dialog: records its field, types \a typed over the selected text (a backspace erases
/// it) and finishes with a key ("Return", "Escape") or a button ("ok", "cancel").
ModalAnswer typeAndFinish(Field& field, const QString& typed, const QString& finish)
{
    return ModalAnswer::call([&field, typed, finish](QWidget* box) {
        QWidget* input = box->findChild<QAbstractSpinBox*>();
        if (!input)
            input = box->findChild<QLineEdit*>();
        auto* label = box->findChild<QLabel*>();
        if (!input || !label)
            return void(box->close());
        field.caption = label->text();
        field.text = input->property("text").toString();
        input->setFocus();
        if (typed == QLatin1String("\b"))
            QTest::keyClick(input, Qt::Key_Backspace);
        else
            QTest::keyClicks(input, typed);
        if (finish == QLatin1String("Return"))
            QTest::keyClick(input, Qt::Key_Return);
        else if (finish == QLatin1String("Escape"))
            QTest::keyClick(input, Qt::Key_Escape);
        else
            QTest::mouseClick(box->findChild<QPushButton*>(finish + QStringLiteral("Button")), Qt::LeftButton);
    });
}

} // namespace

class TestEButtonPanel : public QObject
{
    Q_OBJECT
private slots:
    void buttonsComeInTheFixedOrder_data();
    void buttonsComeInTheFixedOrder();
    void eachButtonReportsItsSignal_data();
    void eachButtonReportsItsSignal();
    void slotsOfTheParentAreConnectedByName();
    void enableOKActsOnTheLastConfirmingButton();
    void addButtonAppendsAtTheEnd_data();
    void addButtonAppendsAtTheEnd();
    void clearEmptiesTheRowButKeepsTheButtons();

    void intDialogWritesBackOnlyOnOk_data();
    void intDialogWritesBackOnlyOnOk();
    void strDialogUpdatesTheStringOnlyAfterAccepted_data();
    void strDialogUpdatesTheStringOnlyAfterAccepted();
};

void TestEButtonPanel::buttonsComeInTheFixedOrder_data()
{
    QTest::addColumn<EButtonPanel::Buttons>("flags");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QString>("okCaption"); // the confirming button; empty: none

    const QString back = padded(LCQT__Back), save = padded(LCQT__Save), ok = padded(LCQT__OK),
                  next = padded(LCQT__Next), finish = padded(LCQT__Finish), cancel = padded(LCQT__Cancel),
                  close = padded(LCQT__Close), help = padded(LCQT__Help);
    QTest::newRow("OK|Cancel|Help|Back") << (P::OK | P::Cancel | P::Help | P::Back)
                                         << QStringList{back, ok, cancel, help} << ok;
    QTest::newRow("Back|Help|Cancel|OK") << (P::Back | P::Help | P::Cancel | P::OK)
                                         << QStringList{back, ok, cancel, help} << ok;
    QTest::newRow("all eight") << (P::Close | P::Help | P::Finish | P::Next | P::Cancel | P::Save | P::OK | P::Back)
                               << QStringList{back, save, ok, next, finish, cancel, close, help} << finish;
    QTest::newRow("Save|Finish") << (P::Finish | P::Save) << QStringList{save, finish} << finish;
    QTest::newRow("wizard page") << (P::Cancel | P::Next | P::Back) << QStringList{back, next, cancel} << next;
    QTest::newRow("Close|Help") << (P::Help | P::Close) << QStringList{close, help} << QString();
    QTest::newRow("none") << EButtonPanel::Buttons() << QStringList() << QString();
}

void TestEButtonPanel::buttonsComeInTheFixedOrder()
{
    QFETCH(EButtonPanel::Buttons, flags);
    QFETCH(QStringList, expected);
    QFETCH(QString, okCaption);

    // The last confirming button is the only default one, in a dialog and on any other widget.
    QDialog dialog;
    QWidget page;
    for (QWidget* host : {static_cast<QWidget*>(&dialog), &page}) {
        EButtonPanel panel(host, flags);
        const QList<QPushButton*> buttons = rowButtons(panel);
        QCOMPARE(captions(buttons), expected);
        QCOMPARE(panel.okButton ? panel.okButton->text() : QString(), okCaption);
        for (QPushButton* b : buttons) {
            QCOMPARE(b->isDefault(), b == panel.okButton);
            QCOMPARE(b->parent(), &panel);
        }
        QCOMPARE(panel.layout()->alignment(), Qt::AlignHCenter | Qt::AlignBottom);
    }
}

void TestEButtonPanel::eachButtonReportsItsSignal_data()
{
    QTest::addColumn<EButtonPanel::Buttons>("flag");
    QTest::addColumn<QString>("fired");
    QTest::newRow("OK") << EButtonPanel::Buttons(P::OK) << QStringLiteral("ok");
    QTest::newRow("Save") << EButtonPanel::Buttons(P::Save) << QStringLiteral("ok");
    QTest::newRow("Next") << EButtonPanel::Buttons(P::Next) << QStringLiteral("ok");
    QTest::newRow("Finish") << EButtonPanel::Buttons(P::Finish) << QStringLiteral("ok");
    QTest::newRow("Cancel") << EButtonPanel::Buttons(P::Cancel) << QStringLiteral("cancel");
    QTest::newRow("Close") << EButtonPanel::Buttons(P::Close) << QStringLiteral("cancel");
    QTest::newRow("Back") << EButtonPanel::Buttons(P::Back) << QStringLiteral("back");
    QTest::newRow("Help") << EButtonPanel::Buttons(P::Help) << QStringLiteral("help");
}

void TestEButtonPanel::eachButtonReportsItsSignal()
{
    QFETCH(EButtonPanel::Buttons, flag);
    QFETCH(QString, fired);

    QDialog dialog;
    EButtonPanel panel(&dialog, flag, "panel-topic.html");
    Signals spies(panel);
    const QList<QPushButton*> buttons = rowButtons(panel);
    QCOMPARE(buttons.size(), 1);

    // The Help button also opens its page; no page is installed, so the error is collected.
    EMessage::setCumulativeErrorMode();
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    const QString error = EMessage::getCumulativeError();
    QCOMPARE(spies.fired(), fired);
    if (flag == P::Help) {
        QVERIFY(qobject_cast<EHelpButton*>(buttons.first()));
        QVERIFY(error.endsWith(QStringLiteral("panel-topic.html.")));
    } else {
        QVERIFY(error.isNull());
    }
}

void TestEButtonPanel::slotsOfTheParentAreConnectedByName()
{
    Owner owner;
    auto* panel = new EButtonPanel(&owner, P::Save | P::Cancel | P::Close, nullptr, SLOT(okPressed()),
                                   SLOT(cancelPressed()));
    for (QPushButton* b : rowButtons(*panel))
        QTest::mouseClick(b, Qt::LeftButton);
    QCOMPARE(owner.oks, 1);
    QCOMPARE(owner.cancels, 2);

    // Without slot strings nothing is connected; without a parent nothing can be.
    Owner quiet;
    auto* plain = new EButtonPanel(&quiet, P::OK | P::Cancel);
    for (QPushButton* b : rowButtons(*plain))
        QTest::mouseClick(b, Qt::LeftButton);
    QCOMPARE(quiet.oks + quiet.cancels, 0);
    EButtonPanel orphan(nullptr, P::OK, nullptr, SLOT(okPressed()), SLOT(cancelPressed()));
    QVERIFY(orphan.okButton);
}

void TestEButtonPanel::enableOKActsOnTheLastConfirmingButton()
{
    QDialog dialog;
    EButtonPanel panel(&dialog, P::Save | P::Finish | P::Cancel);
    QPushButton* save = panel.findChild<QPushButton*>(QStringLiteral("saveButton"));
    QPushButton* finish = panel.findChild<QPushButton*>(QStringLiteral("finishButton"));
    QVERIFY(save && finish);
    QCOMPARE(panel.okButton, finish);

    panel.enableOK(false);
    QVERIFY(!finish->isEnabled());
    QVERIFY(save->isEnabled());
    Signals spies(panel);
    QTest::mouseClick(save, Qt::LeftButton);
    QTest::mouseClick(finish, Qt::LeftButton); // disabled: no click
    QCOMPARE(spies.fired(), QStringLiteral("ok"));
    panel.enableOK(true);
    QTest::mouseClick(finish, Qt::LeftButton);
    QCOMPARE(spies.fired(), QStringLiteral("okok"));

    // Without a confirming button there is nothing to switch.
    EButtonPanel dismissing(&dialog, P::Cancel | P::Close | P::Back);
    QVERIFY(!dismissing.okButton);
    dismissing.enableOK(false);
    for (QPushButton* b : rowButtons(dismissing))
        QVERIFY(b->isEnabled());
}

void TestEButtonPanel::addButtonAppendsAtTheEnd_data()
{
    QTest::addColumn<bool>("isDefault");
    QTest::addColumn<QString>("fired");
    QTest::newRow("default button confirms") << true << QStringLiteral("ok");
    QTest::newRow("other button is left to the caller") << false << QString();
}

void TestEButtonPanel::addButtonAppendsAtTheEnd()
{
    QFETCH(bool, isDefault);
    QFETCH(QString, fired);

    QDialog dialog;
    EButtonPanel panel(&dialog, P::OK | P::Help);
    QPushButton* ok = panel.okButton;
    QPushButton* extra = panel.addButton(QStringLiteral("&Apply"), isDefault);
    QCOMPARE(captions(rowButtons(panel)),
             (QStringList{padded(LCQT__OK), padded(LCQT__Help), QStringLiteral(" &Apply ")}));
    QCOMPARE(extra->isDefault(), isDefault);
    QCOMPARE(panel.okButton, isDefault ? extra : ok);

    Signals spies(panel);
    QTest::mouseClick(extra, Qt::LeftButton);
    QCOMPARE(spies.fired(), fired);
    panel.enableOK(false);
    QCOMPARE(extra->isEnabled(), !isDefault);
}

void TestEButtonPanel::clearEmptiesTheRowButKeepsTheButtons()
{
    QDialog dialog;
    EButtonPanel panel(&dialog, P::OK | P::Help);
    panel.addButtons(P::Cancel | P::Back, nullptr, nullptr, nullptr); // a second set goes after the first
    QCOMPARE(captions(rowButtons(panel)), (QStringList{padded(LCQT__OK), padded(LCQT__Help), padded(LCQT__Back),
                                                        padded(LCQT__Cancel)}));
    const QList<QPushButton*> before = rowButtons(panel);
    QPointer<QPushButton> ok = panel.okButton;
    panel.clear();
    QCOMPARE(panel.layout()->count(), 0);
    for (QPushButton* b : before)
        QCOMPARE(b->parent(), &panel);
    QCOMPARE(panel.okButton, ok.data());

    panel.addButtons(P::Close | P::Next, nullptr, nullptr, nullptr);
    QCOMPARE(captions(rowButtons(panel)), (QStringList{padded(LCQT__Next), padded(LCQT__Close)}));
    QCOMPARE(panel.okButton->text(), padded(LCQT__Next));
}

void TestEButtonPanel::intDialogWritesBackOnlyOnOk_data()
{
    QTest::addColumn<int>("initial");
    QTest::addColumn<int>("max"); // the range starts at 0
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("finish");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("result");
    QTest::newRow("too big is clamped and written") << 50 << 10 << "" << "ok" << "10" << 10 << 1;
    QTest::newRow("too small is clamped and written") << -3 << 10 << "" << "Return" << "0" << 0 << 1;
    QTest::newRow("typed then Enter") << 5 << 10 << "7" << "Return" << "5" << 7 << 1;
    QTest::newRow("typed then OK") << 5 << 100 << "42" << "ok" << "5" << 42 << 1;
    QTest::newRow("typed then Escape") << 5 << 10 << "7" << "Escape" << "5" << 5 << 0;
    QTest::newRow("clamped but cancelled") << 50 << 10 << "" << "cancel" << "10" << 50 << 0;
}

void TestEButtonPanel::intDialogWritesBackOnlyOnOk()
{
    QFETCH(int, initial);
    QFETCH(int, max);
    QFETCH(QString, typed);
    QFETCH(QString, finish);
    QFETCH(QString, shown);
    QFETCH(int, expected);
    QFETCH(int, result);

    int value = initial;
    EIntDialog dialog(nullptr, QStringLiteral("Retries"), QStringLiteral("&Retries:"), 0, max, value);
    Field field;
    ModalAnswerer answer(typeAndFinish(field, typed, finish));
    QCOMPARE(dialog.exec(), result);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, QStringLiteral("Retries"));
    QCOMPARE(field.caption, QStringLiteral("&Retries:"));
    QCOMPARE(field.text, shown);
    QCOMPARE(value, expected);
}

void TestEButtonPanel::strDialogUpdatesTheStringOnlyAfterAccepted_data()
{
    QTest::addColumn<QString>("typed"); // replaces the selected text; a backspace clears it
    QTest::addColumn<QString>("finish");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("result");
    QTest::newRow("typed then Enter") << "relay" << "Return" << "relay" << 1;
    QTest::newRow("emptied then OK") << "\b" << "ok" << "" << 1;
    QTest::newRow("typed then Escape") << "relay" << "Escape" << "gateway" << 0;
    QTest::newRow("typed then Cancel") << "relay" << "cancel" << "gateway" << 0;
}

void TestEButtonPanel::strDialogUpdatesTheStringOnlyAfterAccepted()
{
    QFETCH(QString, typed);
    QFETCH(QString, finish);
    QFETCH(QString, expected);
    QFETCH(int, result);

    QString value = QStringLiteral("gateway");
    EStrDialog dialog(nullptr, QStringLiteral("Host"), QStringLiteral("&Host:"), value);
    QString duringAccepted;
    connect(&dialog, &QDialog::accepted, this, [&] { duringAccepted = value; });
    Field field;
    ModalAnswerer answer(typeAndFinish(field, typed, finish));
    QCOMPARE(dialog.exec(), result);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(field.caption, QStringLiteral("&Host:"));
    QCOMPARE(field.text, QStringLiteral("gateway"));
    QCOMPARE(value, expected);
    QCOMPARE(duringAccepted, result ? QStringLiteral("gateway") : QString());
}

CG_TEST_MAIN(TestEButtonPanel)
#include "tst_ebuttonpanel.moc"
