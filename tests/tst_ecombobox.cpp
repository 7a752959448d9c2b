// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebox.h"
#include "ecombobox.h"
#include "edialog.h"
#include "edirs.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace {

struct Element
{
    QString text;
    int id = 0;
    void* data = nullptr;
};

// Hands out its elements and records which operations were called, in order.
class ListEnumerator : public EEnumerator
{
public:
    explicit ListEnumerator(QVector<Element> elements)
        : elements(std::move(elements))
    {
    }
    const QPixmap* getIcon() override { record("icon"); return nullptr; }
    QString getText() override { record("text"); return elements.at(at).text; }
    void* getData() override { record("data"); return elements.at(at).data; }
    int getId() override { record("id"); return elements.at(at).id; }
    bool next() override { return ++at < elements.size(); }
    QString getListText() override { return QStringLiteral("several"); }

    QStringList calls;

private:
    void record(const char* call) { calls << QLatin1String(call); }
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
        list.append({name, 100 + int(list.size()), nullptr});
    return list;
}

QString settingsFile()
{
    return EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"));
}

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
    void fillingKeepsOldEntriesInFront_data();
    void fillingKeepsOldEntriesInFront();
    void entryChosenInsideABatchSurvivesTheReset();
    void settersAnswerUnknownValuesDifferently_data();
    void settersAnswerUnknownValuesDifferently();
    void idAndDataOfMissingEntries();
    void userChangeConnectorIgnoresProgrammaticChanges();
    void escapeClosesOnlyThePopup();
    void popupIsNeverWiderThanTheCombo();
    void enterEmitsActivateTextAndRemembers();
    void mostRecentFirstWithoutDuplicatesAtMost64();
    void rememberedTextsSurviveRecreation();
    void damagedRememberedArrayKeepsEveryText_data();
    void damagedRememberedArrayKeepsEveryText();
};

void TestEComboBox::fillingKeepsOldEntriesInFront_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("sort");
    QTest::addColumn<bool>("ids");
    QTest::addColumn<QStringList>("expected");

    const QStringList names{QStringLiteral("Delta"), QStringLiteral("alpha"), QStringLiteral("Charlie")};
    QTest::newRow("add, sorted") << names << true << false
                                 << QStringList{QStringLiteral("b"), QStringLiteral("alpha"), QStringLiteral("Charlie"),
                                                QStringLiteral("Delta")};
    QTest::newRow("addId, as given") << names << false << true << (QStringList{QStringLiteral("b")} + names);
    QTest::newRow("empty enumerator, still one batch") << QStringList() << true << true
                                                       << QStringList{QStringLiteral("b")};
}

void TestEComboBox::fillingKeepsOldEntriesInFront()
{
    QFETCH(QStringList, names);
    QFETCH(bool, sort);
    QFETCH(bool, ids);
    QFETCH(QStringList, expected);

    QVector<Element> elements = elementsOf(names);
    for (Element& element : elements)
        element.data = &element;
    EComboBox combo;
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("b"), 77));
    int resets = 0;
    int others = 0;
    connect(combo.model(), &QAbstractItemModel::modelReset, this, [&resets] { ++resets; });
    for (auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(combo.model(), change, this, [&others] { ++others; });
    ListEnumerator e(elements);
    if (ids)
        combo.addId(e, sort);
    else
        combo.add(e, sort);
    QCOMPARE(texts(combo), expected);
    QCOMPARE(resets, 1);
    QCOMPARE(others, 0);
    if (!names.isEmpty())
        QCOMPARE(e.calls.mid(0, 3), (QStringList{"icon", "text", ids ? "id" : "data"}));

    // Each entry carries the word of its own element.
    QCOMPARE(combo.getId(0), 77);
    for (const Element& element : elements) {
        const int at = combo.findText(element.text);
        QVERIFY(ids ? combo.getId(at) == element.id : combo.getData(at) == element.data);
    }
}

void TestEComboBox::entryChosenInsideABatchSurvivesTheReset()
{
    EComboBox combo;
    ListEnumerator e(elementsOf({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
                                 QStringLiteral("e")}));
    combo.addId(e, false);
    combo.setCurrentIndex(4);

    combo.beginChanges();
    combo.beginChanges();
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("f"), 0));
    combo.endChanges();
    combo.setCurrentIndex(3);
    combo.endChanges();
    QCOMPARE(combo.currentIndex(), 3);

    // Nothing asked for inside the batch: the reset decides (Qt makes the first entry current).
    combo.beginChanges();
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("g"), 0));
    combo.endChanges();
    QCOMPARE(combo.currentIndex(), 0);

    // A stray endChanges without a batch leaves the entry the user chose alone.
    combo.setCurrentIndex(2);
    QTest::keyClick(&combo, Qt::Key_Down);
    combo.endChanges();
    QCOMPARE(combo.currentIndex(), 3);
}

void TestEComboBox::settersAnswerUnknownValuesDifferently_data()
{
    QTest::addColumn<QString>("setter");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("current"); // the combo starts with entry 1 current
    QTest::addColumn<QString>("editText");

    QTest::newRow("known id") << "id" << "12" << false << 2 << 2 << "Gamma";
    QTest::newRow("unknown id clears") << "id" << "99" << false << -1 << -1 << "";
    QTest::newRow("known data") << "data" << "0" << false << 0 << 0 << "Alpha";
    QTest::newRow("unknown data keeps") << "data" << "-1" << false << -1 << 1 << "Beta";
    QTest::newRow("text differs in case") << "text" << "gamma" << false << -1 << -1 << "";
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

    int words[3] = {};
    EComboBox combo;
    combo.setEditable(editable);
    for (const char* name : {"Alpha", "Beta", "Gamma"}) {
        const int i = combo.count();
        combo.boxModel()->append(new EBoxItem(nullptr, QString::fromLatin1(name), &words[i]));
        if (setter != QLatin1String("data"))
            combo.setId(i, 10 + i);
    }
    combo.setCurrentIndex(1);

    int got = -100;
    if (setter == QLatin1String("id"))
        got = combo.setCurrentId(value.toInt());
    else if (setter == QLatin1String("data"))
        got = combo.setCurrentData(value.toInt() >= 0 ? static_cast<const void*>(&words[value.toInt()]) : &got);
    else
        got = combo.setCurrentText(value);
    QCOMPARE(got, result);
    QCOMPARE(combo.currentIndex(), current);
    QCOMPARE(combo.currentText(), editText);
}

void TestEComboBox::idAndDataOfMissingEntries()
{
    EComboBox combo;
    QCOMPARE(combo.getCurrentId(), -1);
    combo.setId(5, 1);
    combo.setData(-3, &combo);
    QCOMPARE(combo.count(), 0);

    // One word holds either the id or the data: setting one replaces the other.
    combo.boxModel()->append(new EBoxItem(nullptr, QStringLiteral("only"), 7));
    combo.setCurrentIndex(0);
    combo.setData(0, &combo);
    combo.setId(0, 8);
    QCOMPARE(combo.getCurrentId(), 8);
    QCOMPARE(combo.getCurrentData(), reinterpret_cast<void*>(std::intptr_t(8)));
}

void TestEComboBox::userChangeConnectorIgnoresProgrammaticChanges()
{
    EComboBox combo;
    ListEnumerator e(elementsOf({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    combo.addId(e, false);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));

    QLineEdit all;
    QLineEdit user;
    all.setText(QStringLiteral("untouched"));
    user.setText(QStringLiteral("untouched"));
    QVERIFY(combo.setSlotForChangeSelection(&all, SLOT(clear())));
    QVERIFY(combo.setSlotForUserChangeSelection(&user, SLOT(clear())));
    QVERIFY(!combo.setSlotForChangeText(nullptr, SLOT(clear())));

    combo.setCurrentId(102);
    QVERIFY(all.text().isEmpty());
    QCOMPARE(user.text(), QStringLiteral("untouched"));
    QTest::keyClick(&combo, Qt::Key_Up);
    QCOMPARE(combo.currentIndex(), 1);
    QVERIFY(user.text().isEmpty());
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
    QCOMPARE(finished.count(), 0);

    // With the list closed, Escape is the dialog's again.
    QTRY_VERIFY(combo->hasFocus());
    QTest::keyClick(combo, Qt::Key_Escape);
    QTRY_VERIFY(!dialog.isVisible());
}

void TestEComboBox::popupIsNeverWiderThanTheCombo()
{
    EComboBox combo;
    combo.boxModel()->append(new EBoxItem(nullptr, QString(300, QLatin1Char('W')), 1));
    combo.resize(180, combo.sizeHint().height());
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    combo.showPopup();
    QTRY_VERIFY(combo.view()->isVisible());
    // The popup frame adds a few pixels at most; the 300-letter entry is cut, not shown whole.
    QCOMPARE(combo.view()->width(), 180);
    QVERIFY(combo.view()->window()->width() <= 180 + 8);
    // ... and the rest of it is reached with the horizontal scroll bar.
    QCOMPARE(combo.view()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QTRY_VERIFY(combo.view()->horizontalScrollBar()->isVisible());
    QVERIFY(combo.view()->horizontalScrollBar()->maximum() > 0);
    combo.hidePopup();

    combo.fixWidth(240);
    QCOMPARE(combo.width(), 240);
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
    QSignalSpy okClicked(ok, &QPushButton::clicked);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    combo->setFocus();
    // The keys reach the line edit, which has the focus, and only Enter goes on to the combo.
    QLineEdit* edit = combo->lineEdit();
    QTRY_VERIFY(edit->hasFocus());

    for (const char* text : {"alpha", "gamma", "alpha"}) {
        edit->clear();
        QTest::keyClicks(edit, QString::fromLatin1(text));
        QTest::keyClick(edit, text[0] == 'g' ? Qt::Key_Enter : Qt::Key_Return);
    }
    QCOMPARE(owner.searched, (QStringList{QStringLiteral("alpha"), QStringLiteral("gamma"), QStringLiteral("alpha")}));
    QCOMPARE(texts(*combo), (QStringList{QStringLiteral("alpha"), QStringLiteral("gamma")}));
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(okClicked.count(), 0);
}

void TestEComboBox::mostRecentFirstWithoutDuplicatesAtMost64()
{
    QWidget owner;
    {
        EComboState combo(&owner, QStringLiteral("Limit"));
        for (int i = 0; i <= 64; ++i)
            combo.setEditText(QStringLiteral("t%1").arg(i));
        QCOMPARE(combo.count(), 64);
        QCOMPARE(combo.itemText(0), QStringLiteral("t64"));
        QCOMPARE(combo.itemText(63), QStringLiteral("t1"));

        combo.setEditText(QStringLiteral("t30"));
        QCOMPARE(combo.count(), 64);
        QCOMPARE(texts(combo).mid(0, 2), (QStringList{QStringLiteral("t30"), QStringLiteral("t64")}));
        QCOMPARE(texts(combo).count(QStringLiteral("t30")), 1);
        QCOMPARE(combo.currentIndex(), 0);

        // An empty text is only shown.
        combo.setEditText(QString());
        QCOMPARE(combo.itemText(0), QStringLiteral("t30"));
        QCOMPARE(combo.currentText(), QString());

        // With a raised maximum the list grows, but only the first 64 entries are saved.
        combo.setMaxCount(100);
        for (int i = 100; i < 116; ++i)
            combo.setEditText(QStringLiteral("t%1").arg(i));
        QCOMPARE(combo.count(), 80);
    }
    EComboState again(&owner, QStringLiteral("Limit"));
    QCOMPARE(again.count(), 64);
    QCOMPARE(again.itemText(0), QStringLiteral("t115"));
    QCOMPARE(again.itemText(63), QStringLiteral("t17"));
}

void TestEComboBox::rememberedTextsSurviveRecreation()
{
    QLineEdit owner;
    {
        EComboState combo(&owner, QStringLiteral("Find"));
        for (const char* t : {"first", "second", "third"})
            combo.setEditText(QString::fromLatin1(t));
    }
    QSettings raw(settingsFile(), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("EComboStatePair_QLineEdit/Find/1/Item")).toString(), QStringLiteral("third"));
    {
        // Without a name nothing is read or written, and the owner's other lists stay, although
        // this combo is destroyed after them.
        EComboState nameless(&owner, QString());
        nameless.setEditText(QStringLiteral("forgotten"));
        EComboState again(&owner, QStringLiteral("Find"));
        QCOMPARE(texts(again), (QStringList{QStringLiteral("third"), QStringLiteral("second"), QStringLiteral("first")}));
        again.setEditText(QStringLiteral("first"));
        // Another owner class is another list.
        QWidget otherOwner;
        EComboState other(&otherOwner, QStringLiteral("Find"));
        QCOMPARE(other.count(), 0);
    }
    EComboState last(&owner, QStringLiteral("Find"));
    QCOMPARE(texts(last), (QStringList{QStringLiteral("first"), QStringLiteral("third"), QStringLiteral("second")}));
}


void TestEComboBox::damagedRememberedArrayKeepsEveryText_data()
{
    QTest::addColumn<QString>("ini");
    QTest::addColumn<QStringList>("expected");

    const QString a = QStringLiteral("a"), b = QStringLiteral("b"), c = QStringLiteral("c");
    QTest::newRow("huge size, two elements") << "size=2000000000\n1\\Item=a\n2\\Item=b\n" << QStringList{a, b};
    QTest::newRow("element missing") << "size=3\n1\\Item=a\n3\\Item=c\n" << QStringList{a, c};
    QTest::newRow("element is a list") << "size=3\n1\\Item=a\n2\\Item=x, y\n3\\Item=c\n" << QStringList{a, c};
    QTest::newRow("element is bytes") << "size=2\n1\\Item=@ByteArray(q)\n2\\Item=b\n" << QStringList{b};
    QTest::newRow("element is a size") << "size=2\n1\\Item=a\n2\\Item=@Size(1 2)\n" << QStringList{a};
    QTest::newRow("duplicates and empty texts are dropped") << "size=4\n1\\Item=a\n2\\Item=\n3\\Item=b\n4\\Item=a\n"
                                                            << QStringList{QStringLiteral("a"), QStringLiteral("b")};
    QTest::newRow("sound") << "size=2\n1\\Item=\"x, y\"\n2\\Item=z\n" << QStringList{QStringLiteral("x, y"), QStringLiteral("z")};
}

void TestEComboBox::damagedRememberedArrayKeepsEveryText()
{
    QFETCH(QString, ini);
    QFETCH(QStringList, expected);

    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[EComboStatePair_QWidget]\n");
    for (const QString& line : ini.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        file.write("Damaged\\" + line.toUtf8() + '\n');
    // QSettings rereads a cached file only when its size or time changed, and the previous row's
    // file can have the same size and the same millisecond.
    QVERIFY(file.flush());
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    file.close();

    QWidget owner;
    {
        EComboState combo(&owner, QStringLiteral("Damaged"));
        QCOMPARE(texts(combo), expected);
    }
    // What was kept is saved again, and read back as it is.
    EComboState again(&owner, QStringLiteral("Damaged"));
    QCOMPARE(texts(again), expected);
}

CG_TEST_MAIN(TestEComboBox)
#include "tst_ecombobox.moc"
