// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Start-up of an application on common_gui, in the order the library needs: product name,
// language, the library's texts and Qt's, the application's own texts, icons, then windows.
// `hostlist --self-test [png]` runs the main paths headless and exits with the number of failures.
#include "hostlist.h"

#include "cg_loc_modules.h"
#include "common_gui_res.h"
#include "platform/common_core.h"
#include "ectrlc.h"
#include "edirs.h"
#include "eresource.h"
#include "platform/paths.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QTemporaryDir>
#include <QTranslator>

#include <cstdio>
#include <cstring>

namespace {

QString hostsFile() { return EDirs::getSettingsDir().filePath(QStringLiteral("hosts.txt")); }

int failures = 0;
void check(bool ok, const char* what)
{
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    failures += ok ? 0 : 1;
}

int selfTest(HostWindow& window, HostModel& model)
{
    QTemporaryDir dir;
    const QString in = dir.filePath(QStringLiteral("in.hosts")), out = dir.filePath(QStringLiteral("out.hosts"));
    const QByteArray sample("alpha;10.0.0.1;22;first\nbroken line\nbeta;gw.example.org;443;\xd1\x88\xd0\xbb\xd1\x8e\xd0\xb7\n");
    UTF8File::save(in.toUtf8().constData(), sample.constData(), unsigned(sample.size()));
    int added = 0;
    const int before = model.getRowCount();
    const QString errors = window.importFile(in, &added);
    check(added == 2 && model.getRowCount() == before + 2, "two hosts imported");
    check(errors.contains(QStringLiteral("Line 2")) && !errors.contains(QStringLiteral("Line 1")),
          "the refused line is reported once, with its number");
    check(window.findNext(QStringLiteral("GW.EXAMPLE"), false) && window.findNext(QStringLiteral("10.0"), false)
              && !window.findNext(QStringLiteral("GW.EXAMPLE"), true), "find wraps to the top and can match case");
    QFile written(out);
    check(model.save(out).isNull() && written.open(QIODevice::ReadOnly) && written.readAll() == model.toText(),
          "the export holds every host");
    check(!model.save(dir.filePath(QStringLiteral("missing/dir/x.hosts"))).isNull(), "a failed export is reported");
    EDirs::setLanguage("rus");
    check(std::strcmp(EDirs::getLanguage(), "rus") == 0, "the chosen language sticks");
    check(QString::fromUtf8(EDirs::c_settingsDir()).endsWith(QStringLiteral("/hostlist")), "the settings folder is our own");
    check(QFileInfo::exists(EDirs::getResourceDir().filePath(QStringLiteral("help/rus/index.html"))), "our help pages are found");
    check(!Resource::getPixmap(CgIcon::Agent32)->isNull(), "the library's default icons are loaded");
    return failures;
}

} // namespace

int main(int argc, char** argv)
{
    const bool test = argc > 1 && std::strcmp(argv[1], "--self-test") == 0;
    if (test && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Before anything else of the library: settings, lang.ini and share/hostlist are ours.
    setProductName("hostlist");
    QApplication app(argc, argv);
    ECtrlC ctrlC;   // Ctrl+C and SIGTERM end exec() below without closing the window

    const char* language = EDirs::getLanguage();
    Loc::GUIModule libraryTexts;
    Loc::QTLibModule qtTexts;
    std::string error;
    if (!libraryTexts.load(language, &error) || !qtTexts.load(language, &error))
        std::fprintf(stderr, "hostlist: %s\n", error.c_str());
    // The application's own texts: Qt's translator, compiled with lrelease from hostlist_ru.ts.
    QTranslator ownTexts;
    if (std::strcmp(language, "rus") == 0) {
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));   // dates and numbers
        if (ownTexts.load(QStringLiteral("hostlist_ru"), EDirs::getResourceDir().filePath(QStringLiteral("translations"))))
            app.installTranslator(&ownTexts);
    }
    Resource::loadDefaultIcons();

    HostModel model;
    QFile saved(hostsFile());
    QStringList refused;   // a damaged list of our own is read as far as it goes
    if (saved.open(QIODevice::ReadOnly))
        model.replaceAll(HostModel::fromText(saved.readAll(), refused));
    QPointer<HostWindow> window = new HostWindow(&model);
    if (test) {
        const int failed = selfTest(*window, model);
        window->show();
        if (argc > 2)   // --self-test <png>: how the window looks after the test
            window->grab().save(QString::fromLocal8Bit(argv[2]));
        delete window;
        return failed;
    }
    window->show();
    const int result = app.exec();

    // A window closed by the user has saved its layout; after Ctrl+C or SIGTERM it is still open.
    if (window && window->isVisible())
        window->EState::saveState();
    QDir().mkpath(EDirs::getSettingsDir().path());
    const QString failure = model.save(hostsFile());
    if (!failure.isNull())
        std::fprintf(stderr, "hostlist: %s\n", qUtf8Printable(failure));
    return result;
}
