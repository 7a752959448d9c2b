// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Built against an installed common_gui, through CMake and through pkg-config. Exits with the
// number of failed checks.
#include "cg_loc_modules.h"
#include "common_gui_loc.h"
#include "edirs.h"
#include "esettings.h"
#include "platform/common_core.h"
#include "platform/convi.h"
#include "platform/paths.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

int failures = 0;

void check(bool ok, const char* what)
{
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    if (!ok)
        ++failures;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: consumer <install prefix>\n");
        return 100;
    }
    const QString prefix = QFileInfo(QString::fromUtf8(argv[1])).canonicalFilePath();

    // The flags the package handed out compiled this program against the Qt the library runs on.
    check(QT_VERSION_MAJOR == CG_EXPECT_QT_MAJOR && std::atoi(qVersion()) == CG_EXPECT_QT_MAJOR,
          "compiled and running on the library's Qt major");

    // With no CG_RESOURCE_DIR the library finds the data directory of its own install.
    const QString resources = QString::fromUtf8(EDirs::c_resourceDir());
    check(resources == prefix + QStringLiteral("/share/common_gui"), "resource dir is the install's");
    const QString headers = prefix + QStringLiteral("/include/common_gui/");
    check(QFileInfo::exists(headers + QStringLiteral("platform/paths.h"))
              && !QFileInfo::exists(headers + QStringLiteral("paths.h")),
          "platform headers installed in a directory of their own");
    check(productName() && *productName(), "the paths layer answers through its own header");
    check(QFileInfo::exists(resources + QStringLiteral("/translations/common_gui_rus.lcl")),
          "the Russian localization file is installed");

    // The installed localization is where the module base looks for it.
    const QString english = LCQT__Cancel;
    Loc::GUIModule texts;
    std::string error;
    check(texts.load("rus", &error) == 1, "the Russian texts load from the install");
    check(LCQT__Cancel != english, "the text slots are replaced");
    check(texts.load("xx", &error) == 0 && error.find("common_gui_xx.lcl") != std::string::npos,
          "a missing language is reported with its file name");

    EDirs::setLanguage("rus");
    check(streq(EDirs::getLanguage(), "rus"), "language stored in lang.ini and read back");

    {
        ESettings settings(QStringLiteral("Consumer"));
        settings.setValue(QStringLiteral("Answer"), 42);
    }
    {
        ESettings settings(QStringLiteral("Consumer"));
        check(settings.value(QStringLiteral("Answer")).toInt() == 42, "settings written and read");
    }

    const std::string file = std::string(EDirs::c_settingsDir()) + "/bytes.bin";
    UTF8File::save(file.c_str(), "\xcf\xf0\xe8\xe2\xe5\xf2", 6);   // "Привет" in Windows-1251
    ArrayHolder<char> buffer;
    const unsigned size = UTF8File::load(file.c_str(), buffer, 100, false);
    check(size == 6, "UTF8File round trip");

    convi toUtf8(CP_WINDOWS1251, CP_UTF8);
    const unsigned need = toUtf8.get_outsize(buffer.get(), size);
    std::string text(need, '\0');
    if (need)
        toUtf8.convert_safe(buffer.get(), size, &text[0], need);
    check(need == 13 && std::strcmp(text.c_str(), "\xd0\x9f\xd1\x80\xd0\xb8\xd0\xb2\xd0\xb5\xd1\x82") == 0,
          "Windows-1251 converted to UTF-8");

    return failures;
}
