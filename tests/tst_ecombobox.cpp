// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebox.h"
#include "ecombobox.h"
#include "edialog.h"
#include "edirs.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <memory>

namespace {

struct Element
{
    QString text;
    int id = 0;
    void* data = nullptr;
};

class ListEnumerator : public EEnumerator
{
public:
    explicit ListEnumerator(QVector<Element> elements)
        : elements(std::move(elements))
    {
    }
    const QPixmap* getIcon() override
    {
        calls << QStringLiteral("icon");
        return nullptr;
    }
    QString getText() override
    {
        calls << QStringLiteral("text");
        return elements.at(at).text;
    }
    void* getData() override
    {
        calls << QStringLiteral("data");
        return elements.at(at).data;
    }
    int getId() override
    {
        calls << QStringLiteral("id");
        return elements.at(at).id;
    }
    bool next() override { return ++at < elements.size(); }
    QString getListText() override { return QStringLiteral("several"); }

    QStringList calls;

private:
    QVector<Element> elements;
    int at = -1;
};

QStringList texts(const QComboBox& combo)
{
    QStringList list;
    for (int i = 0; i < combo.count(); ++i)
        list << combo.itemText(i);
    return list;
}

QVector<Element> elementsOf(const QStringList& names)
{
    QVector<Element> list;
    for (const QString& name : names)
        list.append({name, 100 + list.size(), nullptr});
    return list;
}

QString settingsFile()
{
    return EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"));
}

// Counts every notification a model can send.
struct ModelSpy
{
    explicit ModelSpy(QAbstractItemModel* m)
        : aboutToReset(m, &QAbstractItemModel::modelAboutToBeReset)
        , reset(m, &QAbstractItemModel::modelReset)
        , aboutToInsert(m, &QAbstractItemModel::rowsAboutToBeInserted)
        , inserted(m, &QAbstractItemModel::rowsInserted)
        , aboutToRemove(m, &QAbstractItemModel::rowsAboutToBeRemoved)
        , removed(m, &QAbstractItemModel::rowsRemoved)
        , changed(m, &QAbstractItemModel::dataChanged)
        , layout(m, &QAbstractItemModel::layoutChanged)
    {
    }
    int others() const
    {
        return aboutToInsert.count() + inserted.count() + aboutToRemove.count() + removed.count() + changed.count()
               + layout.count();
    }
    QSignalSpy aboutToReset, reset, aboutToInsert, inserted, aboutToRemove, removed, changed, layout;
};

} // namespace

class FindOwner : public QWidget
{
    Q_OBJECT
public:
    EComboState* combo = nullptr;
    QStringList searched;

public slots:
    void findNext()
    {
        const QString text = combo->currentText();
        combo->setEditText(text);
        searched << text;
    }
};

class TestEComboBox : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void fillingKeepsOldEntriesInFront_data();
    void fillingKeepsOldEntriesInFront();
    void batchSendsOneResetAndNothingElse_data();
    void batchSendsOneResetAndNothingElse();
    void entryChosenInsideABatchSurvivesTheReset();
    void settersAnswerUnknownValuesDifferently_data();
    void settersAnswerUnknownValuesDifferently();
    void idAndDataOfMissingEntries();
    void userChangeConnectorIgnoresProgrammaticChanges();
    void escapeClosesOnlyThePopup();
    void popupIsNeverWiderThanTheCombo();
    void enterEmitsActivateTextAndRemembers();
    void mostRecentFirstWithoutDuplicatesAtMost64();
    void emptyTextIsShownButNotRemembered();
    void rememberedTextsSurviveRecreation();
    void moreThan64EntriesSaveTheFirst64();
    void damagedRememberedArrayReadsAsNothing_data();
    void damagedRememberedArrayReadsAsNothing();
};

void TestEComboBox::initTestCase()
{
    qRegisterMetaType<QList<QPersistentModelIndex>>();
    qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
}

void TestEComboBox::fillingKeepsOldEntriesInFront_data()
{
    QTest::addColumn<bool>("sort");
    QTest::addColumn<bool>("ids");
    QTest::addColumn<QStringList>("expected");

    const QStringList sorted{QStringLiteral("b"), QStringLiteral("alpha"), QStringLiteral("Charlie"),
                             QStringLiteral("Delta")};
    const QStringList unsorted{QStringLiteral("b"), QStringLiteral("Delta"), QStringLiteral("alpha"),
                               QStringLiteral("Charlie")};
    QTest::newRow("add, sorted") << true << false << sorted;
    QTest::newRow("addId, sorted") << true << true << sorted;
    QTest::newRow("add, as given") << false << false << unsorted;
    QTest::newRow("addId, as given") << false << true << unsorted;
}

void TestEComboBox::fillingKeepsOldEntriesInFront()
{
    QFETCH(bool, sort);
    QFETCH(bool, ids);
    QFETCH(QStringList, expected);

    int words[3] = {};
    QVector<Element> elements{{QStringLiteral("Delta"), 4, &words[0]},
                              {QStringLiteral("alpha"), 1, &words[1]},
                              {QStringLiteral("Charlie"), 3, &words[2]}};
    EComboBox combo;
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("b"), 77));
    ListEnumerator e(elements);
    if (ids)
        combo.addId(e, sort);
    else
        combo.add(e, sort);
    QCOMPARE(texts(combo), expected);
    QCOMPARE(e.calls.mid(0, 3), (QStringList{QStringLiteral("icon"), QStringLiteral("text"),
                                             ids ? QStringLiteral("id") : QStringLiteral("data")}));

    // Each entry carries the word of its own element.
    QCOMPARE(combo.getId(0), 77);
    for (int i = 1; i < combo.count(); ++i) {
        const auto it = std::find_if(elements.begin(), elements.end(),
                                     [&](const Element& el) { return el.text == combo.itemText(i); });
        QVERIFY(it != elements.end());
        if (ids)
            QCOMPARE(combo.getId(i), it->id);
        else
            QCOMPARE(combo.getData(i), it->data);
    }
}

void TestEComboBox::batchSendsOneResetAndNothingElse_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("sort");

    QTest::newRow("sorted") << QStringList{QStringLiteral("e"), QStringLiteral("c"), QStringLiteral("a"),
                                           QStringLiteral("d"), QStringLiteral("b")}
                            << true;
    QTest::newRow("as given") << QStringList{QStringLiteral("x"), QStringLiteral("y")} << false;
    QTest::newRow("empty enumerator") << QStringList{} << true;
}

void TestEComboBox::batchSendsOneResetAndNothingElse()
{
    QFETCH(QStringList, names);
    QFETCH(bool, sort);

    EComboBox combo;
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("first"), 1));
    ModelSpy spy(combo.model());
    ListEnumerator e(elementsOf(names));
    combo.addId(e, sort);
    QCOMPARE(spy.aboutToReset.count(), 1);
    QCOMPARE(spy.reset.count(), 1);
    QCOMPARE(spy.others(), 0);
    QCOMPARE(combo.count(), names.size() + 1);

    // Nested batches from the caller still end in one reset.
    combo.beginChanges();
    combo.beginChanges();
    combo.boxModel()->insert(0, QStringList{QStringLiteral("p"), QStringLiteral("q")});
    combo.boxModel()->remove(combo.count() - 1);
    combo.endChanges();
    QCOMPARE(spy.reset.count(), 1);
    combo.endChanges();
    QCOMPARE(spy.aboutToReset.count(), 2);
    QCOMPARE(spy.reset.count(), 2);
    QCOMPARE(spy.others(), 0);
    QCOMPARE(combo.count(), names.size() + 2);
}

void TestEComboBox::entryChosenInsideABatchSurvivesTheReset()
{
    EComboBox combo;
    ListEnumerator e(elementsOf({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
                                 QStringLiteral("e")}));
    combo.addId(e, false);
    combo.setCurrentIndex(4);

    combo.beginChanges();
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("f"), 0));
    combo.setCurrentIndex(3);
    combo.endChanges();
    QCOMPARE(combo.currentIndex(), 3);
    QCOMPARE(combo.currentText(), QStringLiteral("d"));

    // Nothing asked for inside the batch: the reset decides (Qt makes the first entry current).
    combo.beginChanges();
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("g"), 0));
    combo.endChanges();
    QCOMPARE(combo.currentIndex(), 0);

    // A stray endChanges without a batch leaves the current entry alone.
    combo.setCurrentIndex(2);
    combo.endChanges();
    QCOMPARE(combo.currentIndex(), 2);
}

void TestEComboBox::settersAnswerUnknownValuesDifferently_data()
{
    QTest::addColumn<QString>("setter");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("current"); // the combo starts with entry 1 current
    QTest::addColumn<QString>("editText");

    const QString none;
    QTest::newRow("known id") << "id" << "12" << false << 2 << 2 << none;
    QTest::newRow("unknown id clears") << "id" << "99" << false << -1 << -1 << none;
    QTest::newRow("known data") << "data" << "0" << false << 0 << 0 << none;
    QTest::newRow("unknown data keeps") << "data" << "-1" << false << -1 << 1 << none;
    QTest::newRow("known text") << "text" << "Gamma" << false << 2 << 2 << none;
    QTest::newRow("text differs in case") << "text" << "gamma" << false << -1 << -1 << none;
    QTest::newRow("unknown text clears a fixed combo") << "text" << "Omega" << false << -1 << -1 << none;
    QTest::newRow("unknown text only edits an editable combo") << "text" << "Omega" << true << -1 << 1 << "Omega";
    QTest::newRow("known text in an editable combo") << "text" << "Alpha" << true << 0 << 0 << "Alpha";
}

void TestEComboBox::settersAnswerUnknownValuesDifferently()
{
    QFETCH(QString, setter);
    QFETCH(QString, value);
    QFETCH(bool, editable);
    QFETCH(int, result);
    QFETCH(int, current);
    QFETCH(QString, editText);

    static int words[3];
    EComboBox combo;
    combo.setEditable(editable);
    const char* names[] = {"Alpha", "Beta", "Gamma"};
    for (int i = 0; i < 3; ++i) {
        combo.boxModel()->append(new EBoxItem(nullptr, QString::fromLatin1(names[i]), 10 + i));
        combo.setData(i, &words[i]);
        if (setter != QLatin1String("data"))
            combo.setId(i, 10 + i);
    }
    combo.setCurrentIndex(1);

    int got = -100;
    if (setter == QLatin1String("id")) {
        got = combo.setCurrentId(value.toInt());
    } else if (setter == QLatin1String("data")) {
        const int which = value.toInt();
        got = combo.setCurrentData(which >= 0 ? static_cast<const void*>(&words[which]) : static_cast<const void*>(&got));
    } else {
        got = combo.setCurrentText(value);
    }
    QCOMPARE(got, result);
    QCOMPARE(combo.currentIndex(), current);
    if (!editText.isNull())
        QCOMPARE(combo.currentText(), editText);
}

void TestEComboBox::idAndDataOfMissingEntries()
{
    EComboBox combo;
    QCOMPARE(combo.getCurrentId(), -1);
    QCOMPARE(combo.getCurrentData(), static_cast<void*>(nullptr));
    QCOMPARE(combo.getId(0), -1);
    QCOMPARE(combo.getData(-1), static_cast<void*>(nullptr));
    combo.setId(5, 1);
    combo.setData(-3, &combo);
    QCOMPARE(combo.count(), 0);

    // One word holds either the id or the data: setting one replaces the other.
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("only"), 7));
    combo.setCurrentIndex(0);
    QCOMPARE(combo.getCurrentId(), 7);
    combo.setData(0, &combo);
    QCOMPARE(combo.getCurrentData(), static_cast<void*>(&combo));
    combo.setId(0, 8);
    QCOMPARE(combo.getCurrentData(), reinterpret_cast<void*>(std::intptr_t(8)));
}

void TestEComboBox::userChangeConnectorIgnoresProgrammaticChanges()
{
    EComboBox combo;
    ListEnumerator e(elementsOf({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    combo.addId(e, false);
    combo.resize(200, combo.sizeHint().height());
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));

    QObject receiver;
    QSignalSpy all(&combo, QOverload<int>::of(&QComboBox::currentIndexChanged));
    QSignalSpy user(&combo, QOverload<int>::of(&QComboBox::activated));
    QVERIFY(combo.setSlotForChangeSelection(&receiver, SLOT(deleteLater())));
    QVERIFY(combo.setSlotForUserChangeSelection(&receiver, SLOT(deleteLater())));
    QVERIFY(combo.setSlotForChangeText(&receiver, SLOT(deleteLater())));
    QVERIFY(!combo.setSlotForChangeSelection(nullptr, SLOT(deleteLater())));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot")));
    QVERIFY(!combo.setSlotForUserChangeSelection(&receiver, SLOT(noSuchSlot(int))));

    combo.setCurrentId(102);
    QCOMPARE(all.count(), 1);
    QCOMPARE(user.count(), 0);
    QTest::keyClick(&combo, Qt::Key_Up);
    QCOMPARE(combo.currentIndex(), 1);
    QCOMPARE(all.count(), 2);
    QCOMPARE(user.count(), 1);
}

void TestEComboBox::escapeClosesOnlyThePopup()
{
    EDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* combo = new EComboBox(&dialog);
    ListEnumerator e(elementsOf({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")}));
    combo->addId(e, false);
    layout->addWidget(combo);
    QSignalSpy finished(&dialog, &QDialog::finished);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    combo->setFocus();
    combo->showPopup();
    QTRY_VERIFY(combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_Escape);
    QTRY_VERIFY(!combo->view()->isVisible());
    QVERIFY(dialog.isVisible());
    QCOMPARE(finished.count(), 0);

    // With the list closed, Escape is the dialog's again.
    QTRY_VERIFY(combo->hasFocus());
    QTest::keyClick(combo, Qt::Key_Escape);
    QTRY_VERIFY(!dialog.isVisible());
}

void TestEComboBox::popupIsNeverWiderThanTheCombo()
{
    EComboBox combo;
    QVERIFY(dynamic_cast<EComboBoxListView*>(combo.view()));
    QVERIFY(!static_cast<QListView*>(combo.view())->wordWrap());
    combo.boxModel()->append(new EBoxItem(nullptr, QString(300, QLatin1Char('W')), 1));
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("short"), 2));
    combo.resize(180, combo.sizeHint().height());
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QCOMPARE(combo.view()->width(), 180);

    combo.showPopup();
    QTRY_VERIFY(combo.view()->isVisible());
    QCOMPARE(combo.view()->width(), 180);
    // The popup frame adds a few pixels at most; the 300-letter entry is cut, not shown whole.
    QVERIFY(combo.view()->window()->width() <= 180 + 8);
    combo.hidePopup();

    combo.fixWidth(240);
    QCOMPARE(combo.width(), 240);
    QCOMPARE(combo.minimumWidth(), 240);
    QCOMPARE(combo.maximumWidth(), 240);
    QCOMPARE(combo.view()->width(), 240);
}

void TestEComboBox::enterEmitsActivateTextAndRemembers()
{
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    FindOwner owner;
    auto* combo = new EComboState(&owner, QStringLiteral("EnterTest"));
    owner.combo = combo;
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setDefault(true);
    layout->addWidget(combo);
    layout->addWidget(ok);
    QVERIFY(combo->setSlotForActivateText(&owner, SLOT(findNext())));
    QSignalSpy activated(combo, &EComboState::activateText);
    QSignalSpy okClicked(ok, &QPushButton::clicked);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    combo->setFocus();
    // The keys reach the line edit, which has the focus, and only Enter goes on to the combo.
    QLineEdit* edit = combo->lineEdit();
    QTRY_VERIFY(edit->hasFocus());

    QTest::keyClicks(edit, QStringLiteral("alpha"));
    QTest::keyClick(edit, Qt::Key_Return);
    edit->clear();
    QTest::keyClicks(edit, QStringLiteral("gamma"));
    QTest::keyClick(edit, Qt::Key_Enter);
    edit->clear();
    QTest::keyClicks(edit, QStringLiteral("alpha"));
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(activated.count(), 3);
    QCOMPARE(owner.searched, (QStringList{QStringLiteral("alpha"), QStringLiteral("gamma"), QStringLiteral("alpha")}));
    QCOMPARE(texts(*combo), (QStringList{QStringLiteral("alpha"), QStringLiteral("gamma")}));
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(okClicked.count(), 0);
    QVERIFY(dialog.isVisible());
}

void TestEComboBox::mostRecentFirstWithoutDuplicatesAtMost64()
{
    QWidget owner;
    EComboState combo(&owner, QStringLiteral("Limit"));
    QCOMPARE(combo.maxCount(), 64);
    QVERIFY(combo.isEditable());
    for (int i = 0; i < 64; ++i)
        combo.setEditText(QStringLiteral("t%1").arg(i));
    QCOMPARE(combo.count(), 64);
    QCOMPARE(combo.itemText(0), QStringLiteral("t63"));
    QCOMPARE(combo.itemText(63), QStringLiteral("t0"));

    combo.setEditText(QStringLiteral("t64"));
    QCOMPARE(combo.count(), 64);
    QCOMPARE(combo.itemText(0), QStringLiteral("t64"));
    QCOMPARE(combo.itemText(63), QStringLiteral("t1"));
    QCOMPARE(combo.findText(QStringLiteral("t0")), -1);

    combo.setEditText(QStringLiteral("t30"));
    QCOMPARE(combo.count(), 64);
    QCOMPARE(combo.itemText(0), QStringLiteral("t30"));
    QCOMPARE(combo.itemText(1), QStringLiteral("t64"));
    QCOMPARE(texts(combo).count(QStringLiteral("t30")), 1);
    QCOMPARE(combo.currentIndex(), 0);
    QCOMPARE(combo.currentText(), QStringLiteral("t30"));

    combo.setEditText(QStringLiteral("t30"));
    QCOMPARE(combo.count(), 64);
    QCOMPARE(combo.itemText(1), QStringLiteral("t64"));
}

void TestEComboBox::emptyTextIsShownButNotRemembered()
{
    QWidget owner;
    EComboState combo(&owner, QStringLiteral("Empty"));
    combo.setEditText(QStringLiteral("kept"));
    combo.setEditText(QString());
    QCOMPARE(texts(combo), QStringList{QStringLiteral("kept")});
    QCOMPARE(combo.currentText(), QString());

    combo.setMaxCount(0);
    combo.setEditText(QStringLiteral("shown only"));
    QCOMPARE(combo.currentText(), QStringLiteral("shown only"));
    QCOMPARE(combo.findText(QStringLiteral("shown only")), -1);
}

void TestEComboBox::rememberedTextsSurviveRecreation()
{
    QLineEdit owner;
    {
        EComboState combo(&owner, QStringLiteral("Find"));
        QCOMPARE(combo.count(), 0);
        for (const char* t : {"first", "second", "third"})
            combo.setEditText(QString::fromLatin1(t));
    }
    QSettings raw(settingsFile(), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("EComboStatePair_QLineEdit/Find/size")).toInt(), 3);
    QCOMPARE(raw.value(QStringLiteral("EComboStatePair_QLineEdit/Find/1/Item")).toString(), QStringLiteral("third"));

    {
        // Without a name nothing is read or written, and the owner's other lists stay, although
        // this combo is destroyed after them.
        EComboState nameless(&owner, QString());
        nameless.setEditText(QStringLiteral("forgotten"));
        EComboState again(&owner, QStringLiteral("Find"));
        QCOMPARE(texts(again), (QStringList{QStringLiteral("third"), QStringLiteral("second"), QStringLiteral("first")}));
        again.setEditText(QStringLiteral("first"));
        // Another owner class or another name is another list.
        QWidget otherOwner;
        EComboState other(&otherOwner, QStringLiteral("Find"));
        QCOMPARE(other.count(), 0);
        EComboState otherName(&owner, QStringLiteral("Replace"));
        QCOMPARE(otherName.count(), 0);
    }
    EComboState last(&owner, QStringLiteral("Find"));
    QCOMPARE(texts(last), (QStringList{QStringLiteral("first"), QStringLiteral("third"), QStringLiteral("second")}));
}

void TestEComboBox::moreThan64EntriesSaveTheFirst64()
{
    QWidget owner;
    {
        EComboState combo(&owner, QStringLiteral("Many"));
        combo.setMaxCount(100);
        for (int i = 0; i < 80; ++i)
            combo.setEditText(QStringLiteral("t%1").arg(i));
        QCOMPARE(combo.count(), 80);
    }
    QSettings raw(settingsFile(), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("EComboStatePair_QWidget/Many/size")).toInt(), 64);
    EComboState again(&owner, QStringLiteral("Many"));
    QCOMPARE(again.count(), 64);
    QCOMPARE(again.itemText(0), QStringLiteral("t79"));
    QCOMPARE(again.itemText(63), QStringLiteral("t16"));
}

void TestEComboBox::damagedRememberedArrayReadsAsNothing_data()
{
    QTest::addColumn<QString>("ini");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("huge size, two elements") << "size=2000000000\n1\\Item=a\n2\\Item=b\n" << QStringList{};
    QTest::newRow("element missing") << "size=3\n1\\Item=a\n3\\Item=c\n" << QStringList{};
    QTest::newRow("element is a list") << "size=2\n1\\Item=a\n2\\Item=x, y\n" << QStringList{};
    QTest::newRow("element is a rectangle") << "size=1\n1\\Item=@Rect(1 2 3 4)\n" << QStringList{};
    QTest::newRow("size is not a number") << "size=banana\n1\\Item=a\n" << QStringList{};
    QTest::newRow("negative size") << "size=-5\n1\\Item=a\n" << QStringList{};
    QTest::newRow("duplicates and empty texts are dropped") << "size=4\n1\\Item=a\n2\\Item=\n3\\Item=b\n4\\Item=a\n"
                                                            << QStringList{QStringLiteral("a"), QStringLiteral("b")};
    QTest::newRow("sound") << "size=2\n1\\Item=\"x, y\"\n2\\Item=z\n" << QStringList{QStringLiteral("x, y"), QStringLiteral("z")};
}

void TestEComboBox::damagedRememberedArrayReadsAsNothing()
{
    QFETCH(QString, ini);
    QFETCH(QStringList, expected);

    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[EComboStatePair_QWidget]\n");
    for (const QString& line : ini.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        file.write("Damaged\\" + line.toUtf8() + '\n');
    file.close();

    QWidget owner;
    EComboState combo(&owner, QStringLiteral("Damaged"));
    QCOMPARE(texts(combo), expected);
}

CG_TEST_MAIN(TestEComboBox)
#include "tst_ecombobox.moc"
