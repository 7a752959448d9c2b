// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "estate.h"

#include "esettings.h"
#include "eutils.h"

#include <QDataStream>
#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QSettings>
#include <QWidget>

#include <climits>

namespace {

const QString sizeKey()
{
    return QStringLiteral("Size");
}

const QString posKey()
{
    return QStringLiteral("Pos");
}

const QString geometryKey()
{
    return QStringLiteral("Geometry");
}

// A saved window that no screen could show is damaged data. Sizes past every screen together
// once made windows of 16777215 x 16777215 pixels whose first paint aborted, and positions near
// the int limit wrap round, so the sums are taken in 64 bits.
bool someScreenShows(const QPoint& pos, const QSize& size)
{
    if (!size.isValid() || size.isEmpty())
        return false;
    QRect desktop;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        desktop |= screen->geometry();
    if (size.width() > desktop.width() || size.height() > desktop.height())
        return false;
    for (const QScreen* screen : screens) {
        const QRect g = screen->geometry();
        const qint64 left = std::max<qint64>(pos.x(), g.x());
        const qint64 top = std::max<qint64>(pos.y(), g.y());
        const qint64 right = std::min<qint64>(qint64(pos.x()) + size.width(), qint64(g.x()) + g.width());
        const qint64 bottom = std::min<qint64>(qint64(pos.y()) + size.height(), qint64(g.y()) + g.height());
        if (left < right && top < bottom)
            return true;
    }
    return false;
}

// A rectangle read from a file may span more than an int: QRect::size() would overflow.
bool someScreenShows(const QRect& rect)
{
    const qint64 width = qint64(rect.right()) - rect.left() + 1;
    const qint64 height = qint64(rect.bottom()) - rect.top() + 1;
    if (width <= 0 || height <= 0 || width > INT_MAX || height > INT_MAX)
        return false;
    return someScreenShows(rect.topLeft(), QSize(int(width), int(height)));
}

// QWidget::restoreGeometry reads whatever is there and accepts a cut-off record, which places
// the window at random (a 1 x 1 window is typical). Read the fields of the record (Qt 5.15 and
// Qt 6 both write version 3.0; 1.0 and 2.0 come from older Qt and lack the later fields) and
// refuse the bytes unless they are all present and describe a window of some size.
bool geometryIsComplete(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_0);
    quint32 magic = 0;
    quint16 major = 0;
    quint16 minor = 0;
    QRect frame;
    QRect normal;
    qint32 screen = 0;
    quint8 maximized = 0;
    quint8 fullScreen = 0;
    stream >> magic >> major >> minor >> frame >> normal >> screen >> maximized >> fullScreen;
    if (major > 1) {
        qint32 screenWidth = 0;
        stream >> screenWidth;
    }
    // Qt 5 restores this one for a window that is neither maximized nor full screen.
    QRect geometry = normal;
    if (major > 2)
        stream >> geometry;
    return stream.status() == QDataStream::Ok && magic == 0x1D9D0CB && normal.isValid()
           && someScreenShows(frame) && someScreenShows(normal) && someScreenShows(geometry);
}

} // namespace

EState::EState(const char* name)
    : name(QString::fromLatin1(name))
{
}

EState::~EState() = default;

void EState::saveState()
{
    ESettings s(name);
    saveState(s);
}

void EState::loadState()
{
    ESettings s(name);
    loadState(s);
}

void EState::saveLayout(QSettings& s, QWidget* w)
{
    s.setValue(sizeKey(), w->size());
    s.setValue(posKey(), w->pos());
    s.setValue(geometryKey(), w->saveGeometry());
}

void EState::loadLayout(QSettings& s, QWidget* w)
{
    const QVariant geometry = s.value(geometryKey());
    const QByteArray bytes = geometry.canConvert<QByteArray>() ? geometry.toByteArray() : QByteArray();
    if (geometryIsComplete(bytes) && w->restoreGeometry(bytes))
        return;
    // "Size" and "Pos" serve files written before "Geometry" existed, and bytes Qt refuses.
    // A size or position that is not one (a hand-edited or foreign value) counts as absent: a
    // window of no size, or one off every screen, cannot be found again.
    const QSize size = s.value(sizeKey()).toSize();
    const QPoint pos = s.value(posKey()).toPoint();
    if (s.contains(sizeKey()) && someScreenShows(pos, size)) {
        w->resize(size);
        w->move(pos);
        return;
    }
    EUtils::center(w);
}
