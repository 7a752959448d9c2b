// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QApplication>
#include <QByteArray>
#include <QString>
#include <QtTest>

namespace CgTest {

/// Redirects every product directory into a fresh temporary directory, removed at the end.
/// Sets CG_BIN_DIR, CG_RESOURCE_DIR, CG_USER_DIR, CG_COMMON_DIR, HOME and XDG_CONFIG_HOME.
class Environment
{
public:
    Environment();
    ~Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    /// The temporary root; subdirectories bin, resource, user and common exist.
    QString root() const { return m_root; }
    QString path(const char* sub) const { return m_root + QLatin1Char('/') + QLatin1String(sub); }

    /// The build's resource tree (compiled localization files and the like).
    static QString buildResourceDir() { return QString::fromUtf8(CG_BUILD_DATADIR); }
    /// Points CG_RESOURCE_DIR at the build's resource tree.
    static void useBuildResources();

private:
    QString m_root;
};

/// Runs a test object in a fresh environment; used by CG_TEST_MAIN.
int run(int argc, char** argv, QObject* (*make)());

} // namespace CgTest

/// Like QTEST_MAIN, with the product directories redirected and the offscreen platform by default.
#define CG_TEST_MAIN(TestObject)                                                                   \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return CgTest::run(argc, argv, []() -> QObject* { return new TestObject; });              \
    }
