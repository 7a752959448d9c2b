// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Both editor windows: ETextEditor and ELSPDialog.
#include "cgtest.h"
#include "modalhelper.h"
#include "textfiles.h"

#include "ecodeeditor.h"
#include "elspdialog.h"
#include "elsptextedit.h"
#include "esettings.h"
#include "etexteditor.h"

#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include <memory>

using namespace TextFiles;

namespace {

/// Enters \a answer in Qt's file dialog (Escape for a null answer), after noting its caption in
/// \a title and its proposed filter in \a filter, and choosing the filter \a choose if given.
ModalAnswer fileAnswer(const QString& answer, QString* title = nullptr, QString* filter = nullptr,
                       const QString& choose = QString())
{
    return ModalAnswer::call([=](QWidget* box) {
        auto* dialog = qobject_cast<QFileDialog*>(box);
        auto* edit = box->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (title)
            *title = box->windowTitle();
        if (filter)
            *filter = dialog->selectedNameFilter();
        if (!choose.isEmpty())
            dialog->selectNameFilter(choose);
        if (!answer.isNull())
            edit->setText(answer);
        QTest::keyClick(edit, answer.isNull() ? Qt::Key_Escape : Qt::Key_Return);
    });
}

/// Either window, behind one face for what they share.
struct Window
{
    std::unique_ptr<QDialog> dialog;
    QPlainTextEdit* editor = nullptr;
    std::function<bool(const QString&)> open;
    std::function<bool()> save;
    std::function<QString()> fileName;

    explicit Window(bool lsp)
    {
        if (lsp) {
            auto* d = new ELSPDialog(nullptr, QStringLiteral("Base"));
            dialog.reset(d);
            editor = d->getEditor();
            open = [d](const QString& path) { return d->openFile(path); };
            save = [d] { return d->doSave(); };
            fileName = [d] { return d->getFileName(); };
        } else {
            auto* d = new ETextEditor(nullptr, QStringLiteral("Base"), ETextEditor::AllMenus);
            dialog.reset(d);
            editor = d->getEditor();
            open = [d](const QString& path) { return d->openFile(path); };
            save = [d] { return d->doSave(); };
            fileName = [d] { return d->getFileName(); };
        }
    }
};

void bothWindows()
{
    QTest::addColumn<bool>("lsp");
    QTest::newRow("ELSPDialog") << true;
    QTest::newRow("ETextEditor") << false;
}

#define ANSWERED(answerer) QVERIFY2((answerer).done(), qPrintable((answerer).error()))

} // namespace

class TestETextEditor : public QObject
{
    Q_OBJECT

private slots:
    void titleFollowsFileAndEdits_data() { bothWindows(); }
    void titleFollowsFileAndEdits();
    void closeQuestion_data();
    void closeQuestion();
    void menusFollowTheFlags_data();
    void menusFollowTheFlags();
    void encodingMenuReinterpretsTheSameBytes();
    void shortcutsAndRememberedFilter();
    void subclassKeepsGeometryAndSuppliesItsEditor();
};

void TestETextEditor::titleFollowsFileAndEdits()
{
    QFETCH(bool, lsp);
    Window w(lsp);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.txt"));

    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Base"));
    QTest::keyClicks(w.editor, QStringLiteral("hello"));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Base*"));

    // Save without a file asks for one; cancelling changes nothing.
    QString caption;
    {
        ModalAnswerer answer(fileAnswer(QString(), &caption));
        QVERIFY(!w.save());
        ANSWERED(answer);
    }
    QCOMPARE(caption, QStringLiteral("Save to file..."));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Base*"));
    {
        ModalAnswerer answer(fileAnswer(path));
        QVERIFY(w.save());
        ANSWERED(answer);
    }
    QCOMPARE(readAll(path), QByteArray("hello"));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Base - ") + path);
    QTest::keyClicks(w.editor, QStringLiteral("y"));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Base - ") + path + QLatin1Char('*'));

    // A failed open reports and keeps the window's file.
    ModalAnswerer answer(QMessageBox::Ok);
    QVERIFY(!w.open(dir.filePath(QStringLiteral("vanished.txt"))));
    ANSWERED(answer);
    QCOMPARE(w.fileName(), path);
}

void TestETextEditor::closeQuestion_data()
{
    QTest::addColumn<bool>("lsp");
    QTest::addColumn<bool>("escape");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<QByteArray>("onDisk");

    for (bool lsp : {true, false}) {
        const char* name = lsp ? "ELSPDialog" : "ETextEditor";
        QTest::addRow("%s, Yes", name) << lsp << false << int(QMessageBox::Yes) << true << QByteArray("edited old");
        QTest::addRow("%s, No", name) << lsp << false << int(QMessageBox::No) << true << QByteArray("old");
        QTest::addRow("%s, Cancel", name) << lsp << false << int(QMessageBox::Cancel) << false << QByteArray("old");
        QTest::addRow("%s, Escape, Cancel", name) << lsp << true << int(QMessageBox::Cancel) << false << QByteArray("old");
        QTest::addRow("%s, Escape, No", name) << lsp << true << int(QMessageBox::No) << true << QByteArray("old");
    }
}

void TestETextEditor::closeQuestion()
{
    QFETCH(bool, lsp);
    QFETCH(bool, escape);
    QFETCH(int, button);
    QFETCH(bool, closed);
    QFETCH(QByteArray, onDisk);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file.txt"));
    writeFile(path, "old");
    Window w(lsp);
    QVERIFY(w.open(path));
    w.dialog->show();
    QVERIFY(w.dialog->close()); // nothing unsaved: no question
    w.dialog->show();

    QTest::keyClicks(w.editor, QStringLiteral("edited "));
    ModalAnswerer answer{QMessageBox::StandardButton(button)};
    if (escape)
        QTest::keyClick(w.editor, Qt::Key_Escape);
    else
        w.dialog->close();
    ANSWERED(answer);
    QCOMPARE(answer.count(), 1);
    QCOMPARE(answer.seen().text, QStringLiteral("File was modified. Do you want save it?"));
    QCOMPARE(w.dialog->isVisible(), !closed);
    QCOMPARE(readAll(path), onDisk);

    // Yes with a save that fails keeps the window open.
    if (!closed) {
        QVERIFY(QFile::remove(path) && QDir(dir.path()).mkdir(QStringLiteral("file.txt")));
        ModalAnswerer failing({ModalAnswer::button(QMessageBox::Yes), ModalAnswer::button(QMessageBox::Ok)});
        QVERIFY(!w.dialog->close());
        ANSWERED(failing);
        QVERIFY(w.dialog->isVisible());
    }
}

void TestETextEditor::menusFollowTheFlags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("save") << 2 << QStringList{QStringLiteral("File: Save, Save as...")};
    QTest::newRow("view and encoding") << 12
                                       << QStringList{QStringLiteral("View: Find..., Find Next, Go to Line..."),
                                                      QStringLiteral("Encoding: Auto, Windows-1251, UTF-8")};
    QTest::newRow("all") << 15
                         << QStringList{QStringLiteral("File: Open..., Save, Save as..."),
                                        QStringLiteral("View: Find..., Find Next, Go to Line..."),
                                        QStringLiteral("Encoding: Auto, Windows-1251, UTF-8")};
}

void TestETextEditor::menusFollowTheFlags()
{
    QFETCH(int, flags);
    QFETCH(QStringList, entries);

    ETextEditor window(nullptr, QStringLiteral("Base"), flags);
    QStringList shown;
    const auto menus = window.findChild<QMenuBar*>()->actions();
    for (const QAction* menu : menus) {
        QStringList names;
        const auto actions = menu->menu()->actions();
        for (const QAction* act : actions)
            names << act->text();
        shown << menu->text() + QStringLiteral(": ") + names.join(QStringLiteral(", "));
    }
    QCOMPARE(shown, entries);
}

void TestETextEditor::encodingMenuReinterpretsTheSameBytes()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("run.sh"));
    const QString text = QStringLiteral("# -*- encoding: KOI8-R -*-\necho ") + QString::fromUtf8("Сценарий\n");
    const QByteArray bytes = encoded("KOI8-R", text);
    writeFile(path, bytes);

    ETextEditor window(nullptr, QStringLiteral("Base"), ETextEditor::AllMenus);
    QVERIFY(window.openFile(path));
    ECodeEditor* editor = window.getEditor();
    auto* menu = window.findChild<QMenu*>(QStringLiteral("encodingMenu"));
    const QList<QAction*> entries = menu->actions();
    QVERIFY(entries.at(0)->isChecked());

    entries.at(2)->trigger(); // UTF-8
    QVERIFY(entries.at(2)->isChecked());
    QCOMPARE(editor->toPlainText(), QString::fromUtf8(bytes));
    QVERIFY(!editor->isModified());
    QString caption;
    {
        ModalAnswerer answer(fileAnswer(QString(), &caption));
        QVERIFY(!window.doSaveAs());
        ANSWERED(answer);
    }
    QCOMPARE(caption, QStringLiteral("Save to file... [KOI8-R]"));
    entries.at(0)->trigger(); // Auto
    QCOMPARE(editor->toPlainText(), text);
    QCOMPARE(readAll(path), bytes);

    // Unsaved edits lock the menu; saving unlocks it and shows Auto again without decoding anew.
    entries.at(1)->trigger();
    editor->moveCursor(QTextCursor::End);
    QTest::keyClicks(editor, QStringLiteral("exit"));
    QVERIFY(!menu->isEnabled());
    QVERIFY(window.saveFile(path));
    QVERIFY(menu->isEnabled());
    QVERIFY(entries.at(0)->isChecked());
    QCOMPARE(editor->getEncoding(), QStringLiteral("KOI8-R"));

    // A declaration without a codec is named as such; a flag from the application shows "*".
    const QByteArray martian = "# encoding: martian\nhello";
    window.setPlainText(martian.constData(), unsigned(martian.size()));
    entries.at(1)->trigger();
    {
        ModalAnswerer answer(fileAnswer(QString(), &caption));
        QVERIFY(!window.doSaveAs());
        ANSWERED(answer);
    }
    QCOMPARE(caption, QStringLiteral("Save to file... [Unknown encoding: martian, UTF-8 will be used]"));
    editor->upToDate = false;
    window.modified();
    QCOMPARE(window.windowTitle(), QStringLiteral("Base - ") + path + QLatin1Char('*'));
}

void TestETextEditor::shortcutsAndRememberedFilter()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("keys.txt"));
    writeFile(path, "one\ntwo\nthree\n");
    const QString allFiles = QStringLiteral("All Files (*)");
    {
        ETextEditor window(nullptr, QStringLiteral("Base"), ETextEditor::AllMenus);
        QVERIFY(window.openFile(path));
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        ECodeEditor* editor = window.getEditor();
        editor->setFocus();
        QTest::keyClicks(editor, QStringLiteral("zero "));
        QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(readAll(path), QByteArray("zero one\ntwo\nthree\n"));

        ModalAnswerer open(fileAnswer(path, nullptr, nullptr, allFiles));
        QTest::keyClick(editor, Qt::Key_O, Qt::ControlModifier);
        ANSWERED(open);
    }
    // The next window of the same class proposes the filter chosen last; the other class its own.
    QString proposed;
    ETextEditor second(nullptr, QStringLiteral("Base"), ETextEditor::OpenMenu);
    ModalAnswerer again(fileAnswer(QString(), nullptr, &proposed));
    QVERIFY(!second.doOpen());
    ANSWERED(again);
    QCOMPARE(proposed, allFiles);
    ELSPDialog other(nullptr, QStringLiteral("Policy"));
    ModalAnswerer lsp(fileAnswer(QString(), nullptr, &proposed));
    QVERIFY(!other.doOpen());
    ANSWERED(lsp);
    QCOMPARE(proposed, QStringLiteral("Text Files (*.txt)"));
}

namespace {

class Viewer : public ETextEditor
{
public:
    Viewer()
        : ETextEditor(nullptr, QStringLiteral("Viewer"), ViewMenu, BuildLater())
    {
        build();
    }

protected:
    ECodeEditor* makeEditor() override
    {
        auto* editor = new ECodeEditor(false);
        editor->setObjectName(QStringLiteral("viewerEditor"));
        return editor;
    }
};

} // namespace

void TestETextEditor::subclassKeepsGeometryAndSuppliesItsEditor()
{
    {
        Viewer viewer;
        QCOMPARE(viewer.getEditor()->objectName(), QStringLiteral("viewerEditor"));
        QCOMPARE(viewer.getEditor()->parentWidget(), &viewer);
        QVERIFY(!viewer.findChild<QMenu*>(QStringLiteral("fileMenu")));
        viewer.show();
        viewer.resize(420, 310);
        QVERIFY(viewer.close());
    }
    QVERIFY(!ESettings(QStringLiteral("ETextEditor")).value(QStringLiteral("Size")).isNull());
    QCOMPARE(ETextEditor(nullptr, QStringLiteral("Base"), 0).size(), QSize(420, 310));
}

CG_TEST_MAIN(TestETextEditor)
#include "tst_etexteditor.moc"
