// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"
#include "modalhelper.h"

#include "common_gui_loc.h"
#include "ebrowser.h"
#include "edirs.h"
#include "ehelpbutton.h"

#include <QDesktopServices>
#include <QFile>
#include <QPointer>
#include <QShortcut>
#include <QUrl>

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
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    void init();
    void helpOpensTheLanguagePageElseTheRussianOne_data();
    void helpOpensTheLanguagePageElseTheRussianOne();
    void helpButtonAndF1OpenTheirPageAndTheLinkDiesWithItsWidget();

private:
    QString helpBase() const { return EDirs::getResourceDir().canonicalPath() + QStringLiteral("/help/"); }
    QList<QUrl> page(const QString& relative) const { return {QUrl::fromLocalFile(helpBase() + relative)}; }
    void install(const QString& relative)
    {
        QDir().mkpath(QFileInfo(helpBase() + relative).path());
        QFile f(helpBase() + relative);
        QVERIFY(f.open(QIODevice::WriteOnly));
    }
    UrlCatcher catcher;
};

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
    QTest::addColumn<QString>("opened");   // relative to help/; empty: the message instead
    QTest::addColumn<QString>("reported"); // relative to help/: the missing file

    const QStringList both{QStringLiteral("eng/index.html"), QStringLiteral("rus/index.html"),
                           QStringLiteral("rus/only.html")};
    QTest::newRow("own language") << QByteArray("eng") << both << "index.html" << "eng/index.html" << "";
    QTest::newRow("uninstalled language falls back") << QByteArray("deu") << both << "index.html"
                                                     << "rus/index.html" << "";
    QTest::newRow("no fallback for a single page") << QByteArray("eng") << both << "only.html" << ""
                                                   << "eng/only.html";
    QTest::newRow("nothing installed") << QByteArray("deu") << QStringList() << "index.html" << ""
                                       << "rus/index.html";
    QTest::newRow("an existing directory is opened as well") << QByteArray("eng") << QStringList{"eng/d/x.html"}
                                                             << "d" << "eng/d" << "";
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

    ModalAnswerer answer(QMessageBox::Ok, opened.isEmpty() ? ModalAnswerer::defaultTimeout : 0);
    EBrowser::help(page);
    if (!opened.isEmpty()) {
        QCOMPARE(catcher.urls, this->page(opened));
        QCOMPARE(answer.count(), 0);
        return;
    }
    QVERIFY2(answer.done(), qPrintable(answer.error()));
    QCOMPARE(answer.seen().title, LCQT__Error);
    QCOMPARE(answer.seen().text, QStringLiteral("Help file not found: ") + helpBase() + reported + QStringLiteral("."));
    QVERIFY(catcher.urls.isEmpty());
}

void TestEHelp::helpButtonAndF1OpenTheirPageAndTheLinkDiesWithItsWidget()
{
    install(QStringLiteral("eng/index.html"));
    install(QStringLiteral("eng/keys.html"));
    auto* window = new QWidget;
    auto* help = new EHelpButton(window, nullptr);
    QCOMPARE(help->text(), QLatin1Char(' ') + LCQT__Help + QLatin1Char(' '));
    QTest::mouseClick(help, Qt::LeftButton); // no page: the index
    QVERIFY(EBrowser::setHelp(window, "keys.html"));
    window->show();
    QApplication::setActiveWindow(window);
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(help, Qt::Key_F1);
    QCOMPARE(catcher.urls, page(QStringLiteral("eng/index.html")) + page(QStringLiteral("eng/keys.html")));

    // The link has no parent to be found through: catch it when its deletion is posted.
    struct DeletionWatch : QObject
    {
        int posted = 0;
        QPointer<QObject> link;
        bool eventFilter(QObject* object, QEvent* event) override
        {
            if (event->type() == QEvent::DeferredDelete && qobject_cast<EHelpLink*>(object)) {
                ++posted;
                link = object;
            }
            return false;
        }
    } watch;
    qApp->installEventFilter(&watch);
    QVERIFY(window->findChild<QShortcut*>(QStringLiteral("helpShortcut")));
    QTest::qWait(20);
    QCOMPARE(watch.posted, 0); // still there while its widget lives
    delete window;
    QTRY_COMPARE(watch.posted, 1);
    QTRY_VERIFY(watch.link.isNull());
    qApp->removeEventFilter(&watch);
    QVERIFY(!EBrowser::setHelp(nullptr, "a.html"));
}

CG_TEST_MAIN(TestEHelp)
#include "tst_ehelp.moc"
