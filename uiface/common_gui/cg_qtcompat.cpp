// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cg_qtcompat.h"

#include <QGuiApplication>
#include <QLibraryInfo>

#if QT_VERSION_MAJOR >= 6
#include <QtGui/qguiapplication_platform.h>
#else
#include <QX11Info>
#endif

#include <X11/Xlib.h>

namespace CgQt {

QString qtTranslationsPath()
{
#if QT_VERSION_MAJOR >= 6
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

_XDisplay* x11Display()
{
    if (!qGuiApp || QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
#if QT_VERSION_MAJOR >= 6
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->display() : nullptr;
#else
    return QX11Info::display();
#endif
}

unsigned long x11RootWindow()
{
    Display* display = x11Display();
    return display ? XDefaultRootWindow(display) : 0;
}

} // namespace CgQt
