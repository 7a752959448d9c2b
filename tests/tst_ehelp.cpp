// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "ebrowser.h"
#include "edirs.h"
#include "ehelpbutton.h"
#include "emessage.h"
#include "paths.h"

#include <QDesktopServices>
#include <QFile>
#include <QPointer>
#include <QShortcut>
#include <QUrl>
#include <QWidget>

/// Stands in for the desktop's browser: collects every URL the library asks to open.
class UrlCatcher : public QObject
{
    Q_OBJECT
public slots:
    void open(const QUrl& url) { urls.append(url); }

public:
    QList<QUrl> urls;
};

class TestEHelp : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void helpOpensTheLanguagePageElseTheRussianOne_data();
    void helpOpensTheLanguagePageElseTheRussianOne();
    void missingPageIsCollectedInCumulativeMode();
    void f1AndHelpButtonOpenTheirPage_data();
    void f1AndHelpButtonOpenTheirPage();
    void linkDiesWithItsWidget();
    void productNameIsReadOnceAndCached();

private:
    QString helpBase() const;
    void install(const QString& relative);
    UrlCatcher catcher;
};

QString TestEHelp::helpBase() const
{
    return EDirs::getResourceDir().canonicalPath() + QStringLiteral("/help/");
}

void TestEHelp::install(const QString& relative)
{
    const QString path = helpBase() + relative;
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("<html><body>help</body></html>");
}

void TestEHelp::initTestCase()
{
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    QDesktopServices::setUrlHandler(QStringLiteral("http"), &catcher, "open");
}

void TestEHelp::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("http"));
}

void TestEHelp::init()
{
    catcher.urls.clear();
    QDir(EDirs::getResourceDir().filePath(QStringLiteral("help"))).removeRecursively();
    EDirs::setLanguage("eng");
}

void TestEHelp::helpOpensTheLanguagePageElseTheRussianOne_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QStringList>("installed"); // relative to help/
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("opened");        // relative to help/; empty: the message instead
    QTest::addColumn<QString>("reported");      // relative to help/: the missing file

    const QStringList both{QStringLiteral("eng/index.html"), QStringLiteral("rus/index.html"),
                           QStringLiteral("rus/only.html")};
    QTest::newRow("own language") << QByteArray("eng") << both << QStringLiteral("index.html")
                                  << QStringLiteral("eng/index.html") << QString();
    QTest::newRow("russian") << QByteArray("rus") << both << QStringLiteral("index.html")
                             << QStringLiteral("rus/index.html") << QString();
    QTest::newRow("uninstalled language falls back") << QByteArray("deu") << both << QStringLiteral("index.html")
                                                     << QStringLiteral("rus/index.html") << QString();
    QTest::newRow("page in a subdirectory") << QByteArray("eng") << QStringList{QStringLiteral("eng/sub/a.html")}
                                            << QStringLiteral("sub/a.html") << QStringLiteral("eng/sub/a.html")
                                            << QString();
    QTest::newRow("no fallback for a single page") << QByteArray("eng") << both << QStringLiteral("only.html")
                                                   << QString() << QStringLiteral("eng/only.html");
    QTest::newRow("nothing installed") << QByteArray("deu") << QStringList() << QStringLiteral("index.html")
                                       << QString() << QStringLiteral("rus/index.html");
    QTest::newRow("an existing directory is opened as well") << QByteArray("eng")
                                                             << QStringList{QStringLiteral("eng/d/x.html")}
                                                             << QStringLiteral("d") << QStringLiteral("eng/d")
                                                             << QString();
}

void TestEHelp::helpOpensTheLanguagePageElseTheRussianOne()
{
    QFETCH(QByteArray, language);
    QFETCH(QStringList, installed);
    QFETCH(QString, page);
    QFETCH(QString, opened);
    QFETCH(QString, reported);
    for (const QString& file : installed)
        install(file);
    EDirs::setLanguage(language.constData());

    if (!opened.isEmpty()) {
        EBrowser::help(page);
        QCOMPARE(catcher.urls, QList<QUrl>{QUrl::fromLocalFile(helpBase() + opened)});
        return;
    }
    ModalAnswerer answer(QMessageBox::Ok);
    EBrowser::help(page);
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.count(), 1);
    QCOMPARE(answer.seen().title, LCQT__Error);
    QCOMPARE(answer.seen().text, QStringLiteral("Help file not found: ") + helpBase() + reported + QStringLiteral("."));
    QVERIFY(catcher.urls.isEmpty());
}

void TestEHelp::missingPageIsCollectedInCumulativeMode()
{
    EMessage::setCumulativeErrorMode();
    EBrowser::help(QStringLiteral("missing.html"));
    QVERIFY(!ModalAnswerer::currentModal());
    const QString collected = EMessage::getCumulativeError();
    QCOMPARE(collected, LCQT__Help_file_not_found + helpBase() + QStringLiteral("rus/missing.html."));
    QVERIFY(catcher.urls.isEmpty());
}

void TestEHelp::f1AndHelpButtonOpenTheirPage_data()
{
    QTest::addColumn<bool>("button");
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QString>("opened");
    QTest::newRow("F1, named page") << false << QByteArray("keys.html") << QStringLiteral("eng/keys.html");
    QTest::newRow("F1, no page") << false << QByteArray() << QStringLiteral("eng/index.html");
    QTest::newRow("button, named page") << true << QByteArray("keys.html") << QStringLiteral("eng/keys.html");
    QTest::newRow("button, no page") << true << QByteArray() << QStringLiteral("eng/index.html");
}

void TestEHelp::f1AndHelpButtonOpenTheirPage()
{
    QFETCH(bool, button);
    QFETCH(QByteArray, page);
    QFETCH(QString, opened);
    install(QStringLiteral("eng/index.html"));
    install(QStringLiteral("eng/keys.html"));
    const char* topic = page.isNull() ? nullptr : page.constData();

    QWidget window;
    auto* help = new EHelpButton(&window, topic);
    QCOMPARE(help->text(), QLatin1Char(' ') + LCQT__Help + QLatin1Char(' '));
    if (button) {
        QTest::mouseClick(help, Qt::LeftButton);
    } else {
        QVERIFY(EBrowser::setHelp(&window, topic));
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        help->setFocus();
        QTest::keyClick(help, Qt::Key_F2);
        QVERIFY(catcher.urls.isEmpty());
        QTest::keyClick(help, Qt::Key_F1);
    }
    QCOMPARE(catcher.urls, QList<QUrl>{QUrl::fromLocalFile(helpBase() + opened)});
}

void TestEHelp::linkDiesWithItsWidget()
{
    auto* widget = new QWidget;
    QVERIFY(EBrowser::setHelp(widget, "a.html"));
    auto* shortcut = widget->findChild<QShortcut*>(QStringLiteral("helpShortcut"));
    QVERIFY(shortcut);
    QCOMPARE(shortcut->key(), QKeySequence(Qt::Key_F1));
    QPointer<QObject> link = shortcut->property("helpLink").value<QObject*>();
    QVERIFY(qobject_cast<EHelpLink*>(link.data()));
    QVERIFY(!link->parent());

    QTest::qWait(20);
    QVERIFY(link); // still there while its widget lives
    delete widget;
    QTRY_VERIFY(link.isNull());

    QVERIFY(!EBrowser::setHelp(nullptr, "a.html"));
}

void TestEHelp::productNameIsReadOnceAndCached()
{
    qputenv("CG_PRODUCT_NAME", "Alpha");
    QCOMPARE(QString::fromLatin1(productName()), QStringLiteral("Alpha"));
    QString& first = EBrowser::getProductName();
    QCOMPARE(first, QStringLiteral("Alpha"));
    qputenv("CG_PRODUCT_NAME", "Beta");
    QCOMPARE(EBrowser::getProductName(), QStringLiteral("Alpha"));
    QCOMPARE(&EBrowser::getProductName(), &first);
    qunsetenv("CG_PRODUCT_NAME");
}

CG_TEST_MAIN(TestEHelp)
#include "tst_ehelp.moc"
