// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "ecombobox.h"
#include "edirs.h"
#include "efind.h"
#include "esettings.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

namespace {

/// What the owner saw of the dialog when it was asked to search.
struct Search
{
    QString text;
    int direction = 0;
    bool caseSensitive = false;
    bool wholeWord = false;
    bool allColumns = false;
};

/// A widget that owns a find dialog and answers find() with a scripted result.
class RecordingOwner : public QWidget, public EFindOwner
{
public:
    explicit RecordingOwner(const char* name, int flags = 15, const char* help = "find.html")
        : EFindOwner(name)
    {
        makeFindDialog(this, flags, help);
    }

    bool find() override
    {
        EFind* d = getFindDialog();
        searches.append({d->getText(), d->getDirection(), d->getCaseSensitive(), d->getWholeWord(),
                         d->getAllColumns()});
        return found;
    }

    QVector<Search> searches;
    bool found = true;
};

QString settingsFile()
{
    return EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"));
}

/// The five keys of one group as "Direction Case Word Column Text"; "-" for a missing key.
QString savedGroup(const QString& group)
{
    QSettings s(settingsFile(), QSettings::IniFormat);
    s.beginGroup(group);
    QStringList values;
    for (const char* key : {"Direction", "Case", "Word", "Column", "Text"})
        values << s.value(QLatin1String(key), QStringLiteral("-")).toString();
    return values.join(QLatin1Char(' '));
}

void writeGroup(const QString& group, const QVariantMap& values)
{
    QSettings s(settingsFile(), QSettings::IniFormat);
    s.remove(group);
    s.beginGroup(group);
    for (auto it = values.begin(); it != values.end(); ++it)
        s.setValue(it.key(), it.value());
}

template <typename T>
T* child(EFind* d, const char* name)
{
    return d->findChild<T*>(QLatin1String(name));
}

QString label(EFind* d)
{
    return child<QPushButton>(d, "find")->text();
}

QString padded(const QString& text)
{
    return QLatin1Char(' ') + text + QLatin1Char(' ');
}

/// Shows the dialog as Ctrl+F would and waits until it has the keyboard.
void open(EFind* d)
{
    d->findFirst();
    QApplication::setActiveWindow(d);
    QVERIFY(QTest::qWaitForWindowActive(d));
}

} // namespace

class TestEFind : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void absentControlsReportFixedValuesAndSaveZero_data();
    void absentControlsReportFixedValuesAndSaveZero();
    void typingEnterAndTheFindButtonDriveTheOwner();
    void optionsComeFromTheOwnGroupOnceSavedElseFromTheSharedOne();
    void ownerAndDialogLiveAndDieTogether();
    void f1OpensTheOwnersHelpTopic();
};

void TestEFind::init()
{
    QFile::remove(settingsFile());
}

void TestEFind::absentControlsReportFixedValuesAndSaveZero_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("controls");
    // Direction, case, word and columns: of a new dialog, then shown over a shared group that holds
    // Up and every box checked; then the five keys saved when it is hidden.
    QTest::addColumn<QString>("built");
    QTest::addColumn<QString>("loaded");
    QTest::addColumn<QString>("saved");
    QTest::newRow("none") << 0 << QStringList() << "1 1 0 1" << "1 1 0 1" << "1 0 0 0 seek";
    QTest::newRow("match case") << 1 << QStringList{"matchCase"} << "1 0 0 1" << "1 1 0 1" << "1 1 0 0 seek";
    QTest::newRow("whole word") << 2 << QStringList{"wholeWord"} << "1 1 0 1" << "1 1 1 1" << "1 0 1 0 seek";
    QTest::newRow("all columns") << 4 << QStringList{"allColumns"} << "1 1 0 1" << "1 1 0 1" << "1 0 0 1 seek";
    QTest::newRow("direction") << 8 << QStringList{"up", "down"} << "1 1 0 1" << "-1 1 0 1" << "-1 0 0 0 seek";
    QTest::newRow("editor's set") << 11 << QStringList{"matchCase", "wholeWord", "up", "down"} << "1 0 0 1"
                                  << "-1 1 1 1" << "-1 1 1 0 seek";
}

void TestEFind::absentControlsReportFixedValuesAndSaveZero()
{
    QFETCH(int, flags);
    QFETCH(QStringList, controls);
    QFETCH(QString, built);
    QFETCH(QString, loaded);
    QFETCH(QString, saved);

    writeGroup(QStringLiteral("EFindOwner"), {{QStringLiteral("Direction"), -1}, {QStringLiteral("Case"), 1},
                                              {QStringLiteral("Word"), 1}, {QStringLiteral("Column"), 1}});
    RecordingOwner owner("Owner", flags);
    EFind* d = owner.getFindDialog();
    QStringList present;
    for (const char* name : {"matchCase", "wholeWord", "allColumns", "up", "down"})
        if (d->findChild<QAbstractButton*>(QLatin1String(name)))
            present << QLatin1String(name);
    QCOMPARE(present, controls);
    const auto state = [d] {
        return QStringLiteral("%1 %2 %3 %4")
            .arg(d->getDirection())
            .arg(int(d->getCaseSensitive()))
            .arg(int(d->getWholeWord()))
            .arg(int(d->getAllColumns()));
    };
    QCOMPARE(state(), built);

    open(d);
    QCOMPARE(state(), loaded);
    QTest::keyClicks(child<QComboBox>(d, "Find_what"), QStringLiteral("seek"));
    QTest::keyClick(d, Qt::Key_Escape);
    QVERIFY(!d->isVisible());
    QCOMPARE(savedGroup(QStringLiteral("Owner")), saved);
    QCOMPARE(savedGroup(QStringLiteral("EFindOwner")), saved);
}

void TestEFind::typingEnterAndTheFindButtonDriveTheOwner()
{
    RecordingOwner owner("Owner");
    EFind* d = owner.getFindDialog();
    QCOMPARE(d->windowTitle(), LCQT__Find__0);
    QVERIFY(!d->isModal());
    open(d);
    auto* combo = child<EComboState>(d, "Find_what");
    auto* find = child<QPushButton>(d, "find");
    QVERIFY(combo->hasFocus() || combo->lineEdit()->hasFocus());
    QVERIFY(!find->isEnabled()); // nothing to search for yet
    QCOMPARE(label(d), padded(LCQT__Find__1));

    QTest::keyClicks(combo, QStringLiteral("alpha"));
    QVERIFY(find->isEnabled());
    QTest::mouseClick(child<QRadioButton>(d, "up"), Qt::LeftButton);
    QTest::mouseClick(child<QCheckBox>(d, "matchCase"), Qt::LeftButton);
    QTest::keyClick(combo, Qt::Key_Return);
    QCOMPARE(owner.searches.size(), 1);
    const Search& first = owner.searches.at(0);
    QCOMPARE(first.text, QStringLiteral("alpha"));
    QCOMPARE(first.direction, -1);
    // The empty shared group has no "Column": shown, the all-columns box was unchecked.
    QVERIFY(first.caseSensitive && !first.wholeWord && !first.allColumns);
    QCOMPARE(label(d), padded(LCQT__Find_Next__0));
    QCOMPARE(combo->itemText(0), QStringLiteral("alpha")); // remembered by the combo

    // A failed search leaves the label; a new text starts over with "Find".
    owner.found = false;
    QTest::mouseClick(find, Qt::LeftButton);
    QCOMPARE(owner.searches.size(), 2);
    QCOMPARE(label(d), padded(LCQT__Find_Next__0));
    QTest::keyClick(combo, Qt::Key_Backspace);
    QCOMPARE(label(d), padded(LCQT__Find__1));

    // Emptied, the button is off; one character brings it back.
    combo->lineEdit()->selectAll();
    QTest::keyClick(combo, Qt::Key_Delete);
    QVERIFY(!find->isEnabled());
    QTest::keyClicks(combo, QStringLiteral("b"));
    QVERIFY(find->isEnabled());
    owner.found = true;
    QTest::keyClick(combo, Qt::Key_Enter);
    QCOMPARE(owner.searches.last().text, QStringLiteral("b"));
    QCOMPARE(combo->itemText(0), QStringLiteral("b"));
    QCOMPARE(combo->itemText(1), QStringLiteral("alpha"));

    // Cancel hides and saves; the next Ctrl+F starts with "Find" and the options kept.
    QTest::mouseClick(child<QPushButton>(d, "cancel"), Qt::LeftButton);
    QVERIFY(!d->isVisible());
    QCOMPARE(savedGroup(QStringLiteral("Owner")), QStringLiteral("-1 1 0 0 b"));

    // F3 while hidden: the saved options and text.
    owner.searches.clear();
    d->findNext();
    QCOMPARE(owner.searches.size(), 1);
    QCOMPARE(owner.searches.at(0).text, QStringLiteral("b"));
    QVERIFY(owner.searches.at(0).caseSensitive && owner.searches.at(0).direction == -1);

    open(d);
    QCOMPARE(label(d), padded(LCQT__Find__1));
    QVERIFY(child<QRadioButton>(d, "up")->isChecked());
    QVERIFY(combo->lineEdit()->hasSelectedText());
    // Options changed in the open dialog but not saved give way to the saved ones on F3.
    QTest::mouseClick(child<QCheckBox>(d, "matchCase"), Qt::LeftButton);
    d->findNext();
    QVERIFY(owner.searches.last().caseSensitive);
    QVERIFY(child<QCheckBox>(d, "matchCase")->isChecked());
}

void TestEFind::optionsComeFromTheOwnGroupOnceSavedElseFromTheSharedOne()
{
    // The last options of any find dialog, and a group of the editor's that lacks "Column".
    writeGroup(QStringLiteral("EFindOwner"), {{QStringLiteral("Direction"), -1}, {QStringLiteral("Case"), 1},
                                              {QStringLiteral("Word"), 1}, {QStringLiteral("Column"), 1}});
    RecordingOwner fresh("Fresh");
    EFind* d = fresh.getFindDialog();
    open(d);
    QVERIFY(child<QRadioButton>(d, "up")->isChecked());
    QVERIFY(d->getCaseSensitive() && d->getWholeWord() && d->getAllColumns());
    QTest::mouseClick(child<QCheckBox>(d, "wholeWord"), Qt::LeftButton);
    d->hide();
    QCOMPARE(savedGroup(QStringLiteral("Fresh")), QStringLiteral("-1 1 0 1 "));

    // Another dialog changes the shared group; this one keeps to its own from now on.
    writeGroup(QStringLiteral("EFindOwner"), {{QStringLiteral("Direction"), 1}, {QStringLiteral("Case"), 0},
                                              {QStringLiteral("Word"), 1}, {QStringLiteral("Column"), 0}});
    open(d);
    QVERIFY(child<QRadioButton>(d, "up")->isChecked());
    QVERIFY(d->getCaseSensitive() && !d->getWholeWord() && d->getAllColumns());
    d->hide();

    // A dialog that was never shown saves nothing when hidden: the shared group keeps the user's options.
    RecordingOwner idle("Idle");
    const QString shared = savedGroup(QStringLiteral("EFindOwner"));
    idle.getFindDialog()->hide();
    QCOMPARE(savedGroup(QStringLiteral("Idle")), QStringLiteral("- - - - -"));
    QCOMPARE(savedGroup(QStringLiteral("EFindOwner")), shared);
}

void TestEFind::ownerAndDialogLiveAndDieTogether()
{
    QPointer<EFind> dialog;
    {
        RecordingOwner owner("Owner", 1);
        owner.makeFindDialog(nullptr, 15, nullptr); // ignored: there is one already
        dialog = owner.getFindDialog();
        QCOMPARE(dialog->parentWidget(), &owner);
        QVERIFY(!child<QRadioButton>(dialog, "up"));
        QCOMPARE(dialog->objectName(), QStringLiteral("Owner"));

        // Deleted by another route, the dialog leaves no dangling pointer behind.
        delete dialog;
        QVERIFY(!owner.getFindDialog());
        owner.makeFindDialog(nullptr, 8, nullptr);
        dialog = owner.getFindDialog();
        QVERIFY(child<QRadioButton>(dialog, "up"));
        QCOMPARE(dialog->parentWidget(), nullptr);

        // Closed with the dialog still open: the options are kept.
        open(dialog);
        QTest::mouseClick(child<QRadioButton>(dialog, "up"), Qt::LeftButton);
    }
    QVERIFY(dialog.isNull());
    QCOMPARE(savedGroup(QStringLiteral("Owner")), QStringLiteral("-1 0 0 0 "));
}

void TestEFind::f1OpensTheOwnersHelpTopic()
{
    RecordingOwner owner("Owner", 15, "find.html");
    EFind* d = owner.getFindDialog();
    open(d);
    ModalAnswerer answer(QMessageBox::Ok);
    QTest::keyClick(child<QComboBox>(d, "Find_what"), Qt::Key_F1);
    QVERIFY2(answer.wait(), qPrintable(answer.error()));
    QVERIFY2(answer.seen().text.endsWith(QStringLiteral("find.html.")), qPrintable(answer.seen().text));
}

CG_TEST_MAIN(TestEFind)
#include "tst_efind.moc"
