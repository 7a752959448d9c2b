// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"
#include "textfiles.h"

#include "common_core.h"
#include "ecodeeditor.h"
#include "elspdialog.h"
#include "elsptextedit.h"
#include "esettings.h"
#include "etexteditor.h"

#include <QAction>
#include <QActionGroup>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTextCodec>

#include <memory>

using namespace TextFiles;

namespace {

const QString russian = QString::fromUtf8("Сценарий запуска");
const QString question = QStringLiteral("File was modified. Do you want save it?");

/// Enters \a answer as the file name of Qt's file dialog (Escape for a null answer); \a title
/// receives the dialog's caption, \a filter the filter it proposed. A non-empty \a choose is
/// selected as the filter first.
ModalAnswer fileAnswer(const QString& answer, QString* title = nullptr, QString* filter = nullptr,
                       const QString& choose = QString())
{
    return ModalAnswer::call([answer, title, filter, choose](QWidget* box) {
        auto* edit = box->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        auto* dialog = qobject_cast<QFileDialog*>(box);
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

/// Both windows behind one face, so the behaviour they share is tested once for each.
struct Window
{
    std::unique_ptr<QDialog> dialog;
    QPlainTextEdit* editor = nullptr;
    std::function<bool(const QString&)> open;
    std::function<bool()> save;

    static Window make(bool lsp)
    {
        Window w;
        if (lsp) {
            auto* d = new ELSPDialog(nullptr, QStringLiteral("Policy"));
            w.dialog.reset(d);
            w.editor = d->getEditor();
            w.open = [d](const QString& path) { return d->openFile(path); };
            w.save = [d] { return d->doSave(); };
        } else {
            auto* d = new ETextEditor(nullptr, QStringLiteral("Policy"), ETextEditor::AllMenus);
            w.dialog.reset(d);
            w.editor = d->getEditor();
            w.open = [d](const QString& path) { return d->openFile(path); };
            w.save = [d] { return d->doSave(); };
        }
        return w;
    }
};

void addWindowColumn()
{
    QTest::addColumn<bool>("lsp");
}

} // namespace

class TestETextEditor : public QObject
{
    Q_OBJECT

private slots:
    void titleShowsFileAndUnsavedMark_data();
    void titleShowsFileAndUnsavedMark();
    void notUpToDateShowsTheMarkToo();
    void menusFollowTheFlags_data();
    void menusFollowTheFlags();
    void encodingMenuReinterpretsTheSameBytes();
    void saveAsCaptionNamesTheDeclaredEncoding();
    void saveWithoutAFileAsksForOne_data();
    void saveWithoutAFileAsksForOne();
    void closeQuestion_data();
    void closeQuestion();
    void failedSaveOnClosingKeepsTheWindow();
    void escapeAsksLikeClosing();
    void shortcutsReachTheWindowAndTheEditor();
    void openAsksAboutUnsavedEditsFirst();
    void fileDialogFilterIsRememberedPerClass();
    void geometryIsKeptUnderTheWindowName_data();
    void geometryIsKeptUnderTheWindowName();
    void subclassSuppliesItsOwnEditor();
    void policyTextGivenInMemory();
};

void TestETextEditor::titleShowsFileAndUnsavedMark_data()
{
    addWindowColumn();
    QTest::newRow("ELSPDialog") << true;
    QTest::newRow("ETextEditor") << false;
}

void TestETextEditor::titleShowsFileAndUnsavedMark()
{
    QFETCH(bool, lsp);
    Window w = Window::make(lsp);
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy"));
    QTest::keyClicks(w.editor, QStringLiteral("x"));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy*"));

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.txt"));
    writeFile(path, "text");
    QVERIFY(w.open(path));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy - ") + path);
    QTest::keyClicks(w.editor, QStringLiteral("y"));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy - ") + path + QLatin1Char('*'));
    QVERIFY(w.save());
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy - ") + path);
    QCOMPARE(readAll(path), QByteArray("ytext"));

    // A failed open reports and keeps the window's file.
    ModalAnswerer answer(QMessageBox::Ok);
    QVERIFY(!w.open(dir.filePath(QStringLiteral("gone.txt"))));
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(lsp ? static_cast<ELSPDialog*>(w.dialog.get())->getFileName()
                 : static_cast<ETextEditor*>(w.dialog.get())->getFileName(),
             path);
}

void TestETextEditor::notUpToDateShowsTheMarkToo()
{
    ETextEditor window(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
    window.getEditor()->upToDate = false;
    window.modified();
    QCOMPARE(window.windowTitle(), QStringLiteral("Script*"));
    // Not modified: the encoding may still be changed.
    QVERIFY(window.findChild<QMenu*>(QStringLiteral("encodingMenu"))->isEnabled());
}

void TestETextEditor::menusFollowTheFlags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("menus");
    QTest::addColumn<QStringList>("fileEntries");

    QTest::newRow("open only") << 1 << QStringList{QStringLiteral("File")} << QStringList{QStringLiteral("Open...")};
    QTest::newRow("save only") << 2 << QStringList{QStringLiteral("File")}
                               << QStringList{QStringLiteral("Save"), QStringLiteral("Save as...")};
    QTest::newRow("view only") << 4 << QStringList{QStringLiteral("View")} << QStringList();
    QTest::newRow("view and encoding") << 12 << QStringList{QStringLiteral("View"), QStringLiteral("Encoding")}
                                       << QStringList();
    QTest::newRow("all") << 15
                         << QStringList{QStringLiteral("File"), QStringLiteral("View"), QStringLiteral("Encoding")}
                         << QStringList{QStringLiteral("Open..."), QStringLiteral("Save"), QStringLiteral("Save as...")};
}

void TestETextEditor::menusFollowTheFlags()
{
    QFETCH(int, flags);
    QFETCH(QStringList, menus);
    QFETCH(QStringList, fileEntries);

    ETextEditor window(nullptr, QStringLiteral("Script"), flags);
    QStringList shown;
    const auto barActions = window.findChild<QMenuBar*>()->actions();
    for (const QAction* act : barActions)
        shown << act->text();
    QCOMPARE(shown, menus);

    QStringList entries;
    if (auto* file = window.findChild<QMenu*>(QStringLiteral("fileMenu"))) {
        const auto actions = file->actions();
        for (const QAction* act : actions)
            entries << act->text();
    }
    QCOMPARE(entries, fileEntries);

    if (auto* encoding = window.findChild<QMenu*>(QStringLiteral("encodingMenu"))) {
        QStringList names;
        const auto actions = encoding->actions();
        for (const QAction* act : actions)
            names << act->text() + (act->isChecked() ? QStringLiteral(" (checked)") : QString());
        QCOMPARE(names, (QStringList{QStringLiteral("Auto (checked)"), QStringLiteral("Windows-1251"),
                                     QStringLiteral("UTF-8")}));
    }
}

void TestETextEditor::encodingMenuReinterpretsTheSameBytes()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("run.sh"));
    const QString text = QStringLiteral("# -*- encoding: KOI8-R -*-\necho ") + russian + QLatin1Char('\n');
    const QByteArray bytes = QTextCodec::codecForName("KOI8-R")->fromUnicode(text);
    writeFile(path, bytes);

    ETextEditor window(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
    QVERIFY(window.openFile(path));
    ECodeEditor* editor = window.getEditor();
    QCOMPARE(editor->toPlainText(), text);
    auto* menu = window.findChild<QMenu*>(QStringLiteral("encodingMenu"));
    const QList<QAction*> entries = menu->actions();

    entries.at(1)->trigger(); // Windows-1251
    QCOMPARE(editor->toPlainText(), QTextCodec::codecForName("Windows-1251")->toUnicode(bytes));
    QVERIFY(entries.at(1)->isChecked());
    entries.at(2)->trigger(); // UTF-8
    QCOMPARE(editor->getEncoding(), QStringLiteral("UTF-8"));
    QCOMPARE(editor->toPlainText(), QString::fromUtf8(bytes));
    QVERIFY(!editor->isModified());
    entries.at(0)->trigger(); // Auto
    QCOMPARE(editor->toPlainText(), text);
    QCOMPARE(readAll(path), bytes);

    // Unsaved edits lock the menu; saving unlocks it and shows Auto again.
    entries.at(2)->trigger();
    editor->moveCursor(QTextCursor::End);
    QTest::keyClicks(editor, QStringLiteral("exit"));
    QVERIFY(!menu->isEnabled());
    QVERIFY(window.saveFile(path));
    QVERIFY(menu->isEnabled());
    QVERIFY(entries.at(0)->isChecked());
    QCOMPARE(editor->getEncoding(), QStringLiteral("KOI8-R"));
}

void TestETextEditor::saveAsCaptionNamesTheDeclaredEncoding()
{
    ETextEditor window(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
    const QByteArray bytes = QByteArray("# encoding: KOI8-R\n") + QTextCodec::codecForName("KOI8-R")->fromUnicode(russian);
    window.setPlainText(bytes.constData(), unsigned(bytes.size()));
    QString title;
    {
        ModalAnswerer answer(fileAnswer(QString(), &title));
        QVERIFY(!window.doSaveAs());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(title, QStringLiteral("Save to file..."));

    window.findChild<QMenu*>(QStringLiteral("encodingMenu"))->actions().at(2)->trigger();
    {
        ModalAnswerer answer(fileAnswer(QString(), &title));
        QVERIFY(!window.doSaveAs());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(title, QStringLiteral("Save to file... [KOI8-R]"));

    const QByteArray unknown = "# encoding: martian\nhello";
    window.setPlainText(unknown.constData(), unsigned(unknown.size()));
    window.findChild<QMenu*>(QStringLiteral("encodingMenu"))->actions().at(1)->trigger();
    {
        ModalAnswerer answer(fileAnswer(QString(), &title));
        QVERIFY(!window.doSaveAs());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(title, QStringLiteral("Save to file... [Unknown encoding: martian, UTF-8 will be used]"));
}

void TestETextEditor::saveWithoutAFileAsksForOne_data()
{
    addWindowColumn();
    QTest::newRow("ELSPDialog") << true;
    QTest::newRow("ETextEditor") << false;
}

void TestETextEditor::saveWithoutAFileAsksForOne()
{
    QFETCH(bool, lsp);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("new.txt"));
    Window w = Window::make(lsp);
    QTest::keyClicks(w.editor, QStringLiteral("hello"));

    QString title;
    {
        ModalAnswerer answer(fileAnswer(QString(), &title));
        QVERIFY(!w.save());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(title, QStringLiteral("Save to file..."));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy*"));
    QVERIFY(!QFile::exists(path));

    {
        ModalAnswerer answer(fileAnswer(path));
        QVERIFY(w.save());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(readAll(path), QByteArray("hello"));
    QCOMPARE(w.dialog->windowTitle(), QStringLiteral("Policy - ") + path);
}

void TestETextEditor::closeQuestion_data()
{
    addWindowColumn();
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<QByteArray>("onDisk");

    for (bool lsp : {true, false}) {
        const char* name = lsp ? "ELSPDialog" : "ETextEditor";
        QTest::addRow("%s, Yes", name) << lsp << int(QMessageBox::Yes) << true << QByteArray("edited old");
        QTest::addRow("%s, No", name) << lsp << int(QMessageBox::No) << true << QByteArray("old");
        QTest::addRow("%s, Cancel", name) << lsp << int(QMessageBox::Cancel) << false << QByteArray("old");
    }
}

void TestETextEditor::closeQuestion()
{
    QFETCH(bool, lsp);
    QFETCH(int, button);
    QFETCH(bool, closed);
    QFETCH(QByteArray, onDisk);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file.txt"));
    writeFile(path, "old");
    Window w = Window::make(lsp);
    QVERIFY(w.open(path));
    w.dialog->show();

    // An unmodified window closes without a question.
    QVERIFY(w.dialog->close());
    w.dialog->show();

    QTest::keyClicks(w.editor, QStringLiteral("edited "));
    ModalAnswerer answer{QMessageBox::StandardButton(button)};
    const bool result = w.dialog->close();
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.count(), 1);
    QCOMPARE(answer.seen().text, question);
    QCOMPARE(result, closed);
    QCOMPARE(w.dialog->isVisible(), !closed);
    QCOMPARE(readAll(path), onDisk);
}

void TestETextEditor::failedSaveOnClosingKeepsTheWindow()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("sub/file.txt"));
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("sub")));
    writeFile(path, "old");
    ETextEditor window(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
    QVERIFY(window.openFile(path));
    window.show();
    QTest::keyClicks(window.getEditor(), QStringLiteral("x"));
    // The directory goes away: saving into it fails.
    QVERIFY(QDir(dir.filePath(QStringLiteral("sub"))).removeRecursively());

    ModalAnswerer answer({ModalAnswer::button(QMessageBox::Yes), ModalAnswer::button(QMessageBox::Ok)});
    QVERIFY(!window.close());
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen(1).text, QStringLiteral("File saving error"));
    QVERIFY(window.isVisible());
    QVERIFY(window.getEditor()->isModified());
}

void TestETextEditor::escapeAsksLikeClosing()
{
    ELSPDialog window(nullptr, QStringLiteral("Policy"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::keyClicks(window.getEditor(), QStringLiteral("x"));
    {
        ModalAnswerer answer(QMessageBox::Cancel);
        QTest::keyClick(window.getEditor(), Qt::Key_Escape);
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QVERIFY(window.isVisible());
    {
        ModalAnswerer answer(QMessageBox::No);
        QTest::keyClick(window.getEditor(), Qt::Key_Escape);
        QVERIFY2(answer.done(), qPrintable(answer.error()));
        QCOMPARE(answer.count(), 1);
    }
    QVERIFY(!window.isVisible());
}

void TestETextEditor::shortcutsReachTheWindowAndTheEditor()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("keys.txt"));
    writeFile(path, "one\ntwo\nthree\n");
    ETextEditor window(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
    QVERIFY(window.openFile(path));
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    ECodeEditor* editor = window.getEditor();
    editor->setFocus();

    QTest::keyClicks(editor, QStringLiteral("zero "));
    QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(readAll(path), QByteArray("zero one\ntwo\nthree\n"));

    // Ctrl+G asks for a line; Enter on 3 selects the third line.
    ModalAnswerer answer(ModalAnswer::call([](QWidget* box) {
        auto* edit = box->findChild<QLineEdit*>();
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("3"));
        QTest::keyClick(edit, Qt::Key_Return);
    }));
    QTest::keyClick(editor, Qt::Key_G, Qt::ControlModifier);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(editor->textCursor().selectedText(), QStringLiteral("three"));
}

void TestETextEditor::openAsksAboutUnsavedEditsFirst()
{
    QTemporaryDir dir;
    const QString first = dir.filePath(QStringLiteral("first.txt"));
    const QString second = dir.filePath(QStringLiteral("second.txt"));
    writeFile(first, "first");
    writeFile(second, "second");
    ELSPDialog window(nullptr, QStringLiteral("Policy"));
    QVERIFY(window.openFile(first));
    QTest::keyClicks(window.getEditor(), QStringLiteral("x"));
    {
        ModalAnswerer answer(QMessageBox::Cancel);
        QVERIFY(!window.doOpen());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(window.getEditor()->toPlainText(), QStringLiteral("xfirst"));
    QString title;
    {
        ModalAnswerer answer({ModalAnswer::button(QMessageBox::No), fileAnswer(second, &title)});
        QVERIFY(window.doOpen());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(title, QStringLiteral("Load from file..."));
    QCOMPARE(window.getEditor()->toPlainText(), QStringLiteral("second"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Policy - ") + second);
    QCOMPARE(readAll(first), QByteArray("first"));
}

void TestETextEditor::fileDialogFilterIsRememberedPerClass()
{
    QTemporaryDir dir;
    const QString allFiles = QStringLiteral("All Files (*)");
    {
        ETextEditor first(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
        QTest::keyClicks(first.getEditor(), QStringLiteral("x"));
        ModalAnswerer answer(fileAnswer(dir.filePath(QStringLiteral("saved")), nullptr, nullptr, allFiles));
        QVERIFY(first.doSaveAs());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QString proposed;
    {
        ETextEditor second(nullptr, QStringLiteral("Script"), ETextEditor::AllMenus);
        ModalAnswerer answer(fileAnswer(QString(), nullptr, &proposed));
        QVERIFY(!second.doOpen());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(proposed, allFiles);
    {
        ELSPDialog other(nullptr, QStringLiteral("Policy"));
        ModalAnswerer answer(fileAnswer(QString(), nullptr, &proposed));
        QVERIFY(!other.doOpen());
        QVERIFY2(answer.done(), qPrintable(answer.error()));
    }
    QCOMPARE(proposed, QStringLiteral("Text Files (*.txt)"));
}

void TestETextEditor::geometryIsKeptUnderTheWindowName_data()
{
    QTest::addColumn<bool>("lsp");
    QTest::addColumn<QString>("group");
    QTest::newRow("ELSPDialog") << true << QStringLiteral("ELSPDialog");
    QTest::newRow("ETextEditor") << false << QStringLiteral("ETextEditor");
}

void TestETextEditor::geometryIsKeptUnderTheWindowName()
{
    QFETCH(bool, lsp);
    QFETCH(QString, group);
    {
        Window w = Window::make(lsp);
        w.dialog->show();
        w.dialog->resize(420, 310);
        QVERIFY(w.dialog->close());
    }
    QVERIFY(!ESettings(group).value(QStringLiteral("Size")).isNull());
    Window again = Window::make(lsp);
    QCOMPARE(again.dialog->size(), QSize(420, 310));
}

namespace {

class ReadOnlyEditor : public ECodeEditor
{
public:
    ReadOnlyEditor()
        : ECodeEditor(false)
    {
        setReadOnly(true);
    }
};

class Viewer : public ETextEditor
{
public:
    Viewer()
        : ETextEditor(nullptr, QStringLiteral("Viewer"), ViewMenu, BuildLater())
    {
        build();
    }

protected:
    ECodeEditor* makeEditor() override { return new ReadOnlyEditor; }
};

} // namespace

void TestETextEditor::subclassSuppliesItsOwnEditor()
{
    Viewer viewer;
    QVERIFY(dynamic_cast<ReadOnlyEditor*>(viewer.getEditor()));
    QCOMPARE(viewer.getEditor()->parentWidget(), &viewer);
    QVERIFY(!viewer.findChild<QMenu*>(QStringLiteral("fileMenu")));
    QVERIFY(viewer.findChild<QMenu*>(QStringLiteral("viewMenu")));
}

void TestETextEditor::policyTextGivenInMemory()
{
    ELSPDialog window(nullptr, QStringLiteral("Policy"));
    const QByteArray bytes = QTextCodec::codecForName("Windows-1251")->fromUnicode(russian);
    window.setText(bytes.constData(), unsigned(bytes.size()), ELSPTextEdit::defaultEncodingForLSP);
    QCOMPARE(window.getEditor()->toPlainText(), russian);
    QCOMPARE(window.windowTitle(), QStringLiteral("Policy"));
    window.setText(Bag(bytes.constData(), size_t(bytes.size())), ELSPTextEdit::defaultEncodingForFile);
    QCOMPARE(window.getEditor()->toPlainText(), QString::fromUtf8(bytes));
    window.setReadOnly(true);
    QVERIFY(window.getEditor()->isReadOnly());
}

CG_TEST_MAIN(TestETextEditor)
#include "tst_etexteditor.moc"
