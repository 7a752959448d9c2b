// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cg_loc_modules.h"

#include "cg_qtcompat.h"
#include "common_gui_loc.h"
#include "edirs.h"

#include <QCoreApplication>
#include <QDir>
#include <QTranslator>

#include <cstring>
#include <memory>

namespace Loc {

// ---------------------------------------------------------------- QTModule

QTModule::QTModule(std::string name, QTLocLoader::Localization* table)
    : Module(std::move(name), table)
{
}

int QTModule::loadFile(FILE* file)
{
    // A module without slots has nothing a file could go into.
    if (!table)
        return -1;
    return loader.load(file, *table);
}

// ---------------------------------------------------------------- GUIModule

GUIModule::GUIModule()
    : QTModule("common_gui", &LCQT_info)
{
}

// ---------------------------------------------------------------- QTLibModule

QTLibModule::QTLibModule() = default;

int QTLibModule::load(const char* language, std::string* error)
{
    if (!language || std::strcmp(language, "rus") != 0)
        return 1;

    const QString fileName = QStringLiteral("qt_ru");
    const QString resourceDir = EDirs::getResourceDir().canonicalPath();
    QCoreApplication* app = QCoreApplication::instance();
    // Owned here until it is installed, so a failed load leaves no stray translator in the application.
    std::unique_ptr<QTranslator> translator(new QTranslator(app));
    bool loaded = translator->load(fileName, CgQt::qtTranslationsPath());
    // An empty canonical path means the directory does not exist; "" would search the working directory.
    if (!loaded && !resourceDir.isEmpty())
        loaded = translator->load(fileName, resourceDir);
    if (!loaded || !app) {
        makeError(error, (resourceDir + QDir::separator() + fileName).toUtf8().toStdString(), -1);
        return 0;
    }
    QCoreApplication::installTranslator(translator.release());
    return 1;
}

} // namespace Loc
