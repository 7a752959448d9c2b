// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include <QDir>
#include <QDirIterator>

#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace CgTest {

namespace {

void setEnv(const char* name, const QString& value)
{
    qputenv(name, value.toUtf8());
}

// Directories that a test made read-only must not stop the clean-up.
bool removeTree(const QString& path)
{
    QDirIterator it(path, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    ::chmod(path.toUtf8().constData(), 0700);
    while (it.hasNext())
        ::chmod(it.next().toUtf8().constData(), 0700);
    return QDir(path).removeRecursively();
}

} // namespace

Environment::Environment()
{
    QByteArray pattern = QDir::tempPath().toUtf8() + "/cgtest-XXXXXX";
    if (!::mkdtemp(pattern.data())) {
        std::perror("mkdtemp");
        std::abort();
    }
    m_root = QString::fromUtf8(pattern);
    for (const char* sub : {"bin", "resource", "user", "common", "home", "home/.config"})
        QDir().mkpath(path(sub));
    setEnv("CG_BIN_DIR", path("bin"));
    setEnv("CG_RESOURCE_DIR", path("resource"));
    setEnv("CG_USER_DIR", path("user"));
    setEnv("CG_COMMON_DIR", path("common"));
    setEnv("HOME", path("home"));
    setEnv("XDG_CONFIG_HOME", path("home/.config"));
}

Environment::~Environment()
{
    removeTree(m_root);
}

void Environment::useBuildResources()
{
    setEnv("CG_RESOURCE_DIR", buildResourceDir());
}

int run(int argc, char** argv, QObject* (*make)())
{
    Environment env;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    std::unique_ptr<QObject> test(make());
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(test.get(), argc, argv);
}

} // namespace CgTest
