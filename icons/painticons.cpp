// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Paints an image for every entry of the library's icon table and writes a resource collection
// file listing them, so the build can pack them with `rcc --binary` into icons.rcc.
//
//   cg_paint_icons OUTDIR      writes OUTDIR/<name>.png for every path and OUTDIR/icons.qrc
//
// Every glyph is drawn on a 24 x 24 grid and scaled to the size the file name asks for
// (_16, _24, _25, _32, _48, 16-, 50-; 24 otherwise).
#include "common_gui_res.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTextStream>

#include <cmath>
#include <cstdio>
#include <functional>
#include <map>

namespace {

const QColor blue(0x2f, 0x6f, 0xc0);
const QColor green(0x2e, 0x9e, 0x4a);
const QColor red(0xd0, 0x3a, 0x2f);
const QColor amber(0xf0, 0xb0, 0x20);
const QColor grey(0x60, 0x66, 0x70);
const QColor paper(0xfa, 0xfa, 0xf4);
const QColor violet(0x7a, 0x4f, 0xc0);
const QColor teal(0x1f, 0x95, 0x99);
const QColor orange(0xf0, 0x7a, 0x10);

QPen outline(const QColor& c, qreal w = 1.4)
{
    return QPen(c.darker(150), w, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// ---------------------------------------------------------------- shapes on the 24 x 24 grid

void page(QPainter& p, const QColor& c)
{
    QPainterPath path;
    path.moveTo(5, 2);
    path.lineTo(15, 2);
    path.lineTo(19, 6);
    path.lineTo(19, 22);
    path.lineTo(5, 22);
    path.closeSubpath();
    p.setPen(outline(grey));
    p.setBrush(paper);
    p.drawPath(path);
    p.setPen(QPen(c, 1.2));
    for (int y = 9; y <= 18; y += 3)
        p.drawLine(QPointF(8, y), QPointF(16, y));
}

void badge(QPainter& p, const QColor& c, const std::function<void(QPainter&)>& mark)
{
    p.setPen(outline(c, 1));
    p.setBrush(c);
    p.drawEllipse(QPointF(17.5, 17.5), 5.5, 5.5);
    p.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    mark(p);
}

void plusMark(QPainter& p)
{
    p.drawLine(QPointF(17.5, 14.5), QPointF(17.5, 20.5));
    p.drawLine(QPointF(14.5, 17.5), QPointF(20.5, 17.5));
}

void crossMark(QPainter& p, QPointF c = QPointF(17.5, 17.5), qreal r = 2.8)
{
    p.drawLine(c + QPointF(-r, -r), c + QPointF(r, r));
    p.drawLine(c + QPointF(-r, r), c + QPointF(r, -r));
}

void checkMark(QPainter& p, QPointF c = QPointF(17.5, 17.5), qreal r = 3)
{
    QPainterPath path;
    path.moveTo(c + QPointF(-r, 0));
    path.lineTo(c + QPointF(-r / 3, r * 0.8));
    path.lineTo(c + QPointF(r, -r * 0.8));
    p.drawPath(path);
}

void disc(QPainter& p, const QColor& c, const std::function<void(QPainter&)>& mark)
{
    QRadialGradient g(QPointF(9, 8), 14);
    g.setColorAt(0, c.lighter(140));
    g.setColorAt(1, c);
    p.setPen(outline(c));
    p.setBrush(g);
    p.drawEllipse(QPointF(12, 12), 10, 10);
    p.setPen(QPen(Qt::white, 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    mark(p);
}

void text(QPainter& p, const QRectF& r, const QString& s, const QColor& c, qreal size)
{
    QFont f = p.font();
    f.setBold(true);
    f.setPixelSize(int(size));
    p.setFont(f);
    p.setPen(c);
    p.drawText(r, Qt::AlignCenter, s);
}

void arrow(QPainter& p, QPointF from, QPointF to, const QColor& c, qreal w = 3)
{
    p.setPen(QPen(c, w, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawLine(from, to);
    const QLineF line(to, from);
    QLineF head1 = line;
    head1.setLength(5);
    head1.setAngle(line.angle() + 40);
    QLineF head2 = line;
    head2.setLength(5);
    head2.setAngle(line.angle() - 40);
    p.drawLine(head1);
    p.drawLine(head2);
}

void lockShape(QPainter& p, const QColor& c, bool open = false)
{
    p.setPen(QPen(grey, 2.2));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(7, open ? 1 : 3, 10, 12), 0, 180 * 16);
    p.drawLine(QPointF(7, open ? 7 : 9), QPointF(7, 11));
    if (!open)
        p.drawLine(QPointF(17, 9), QPointF(17, 11));
    QLinearGradient g(0, 10, 0, 22);
    g.setColorAt(0, c.lighter(130));
    g.setColorAt(1, c);
    p.setPen(outline(c));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(4, 10.5, 16, 11), 2, 2);
    p.setPen(Qt::NoPen);
    p.setBrush(c.darker(180));
    p.drawEllipse(QPointF(12, 15), 1.6, 1.6);
    p.drawRect(QRectF(11.4, 15, 1.2, 4));
}

void clockShape(QPainter& p, const QColor& c)
{
    p.setPen(outline(c, 1.6));
    p.setBrush(paper);
    p.drawEllipse(QPointF(12, 12), 10, 10);
    p.setPen(QPen(c.darker(130), 1));
    for (int i = 0; i < 12; ++i) {
        const qreal a = i * M_PI / 6;
        p.drawLine(QPointF(12 + 8 * std::cos(a), 12 + 8 * std::sin(a)), QPointF(12 + 9 * std::cos(a), 12 + 9 * std::sin(a)));
    }
    p.setPen(QPen(Qt::black, 1.8, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(12, 12), QPointF(12, 6));
    p.drawLine(QPointF(12, 12), QPointF(16.5, 14));
}

void star(QPainter& p, const QColor& c)
{
    QPolygonF poly;
    for (int i = 0; i < 10; ++i) {
        const qreal r = (i % 2) ? 4.2 : 10;
        const qreal a = -M_PI / 2 + i * M_PI / 5;
        poly << QPointF(12 + r * std::cos(a), 12.5 + r * std::sin(a));
    }
    p.setPen(outline(c));
    p.setBrush(c);
    p.drawPolygon(poly);
}

void shield(QPainter& p, const QColor& c)
{
    QPainterPath path;
    path.moveTo(12, 2);
    path.lineTo(21, 5);
    path.cubicTo(21, 14, 17, 19, 12, 22);
    path.cubicTo(7, 19, 3, 14, 3, 5);
    path.closeSubpath();
    QLinearGradient g(3, 2, 21, 22);
    g.setColorAt(0, c.lighter(150));
    g.setColorAt(1, c);
    p.setPen(outline(c));
    p.setBrush(g);
    p.drawPath(path);
}

void gear(QPainter& p, const QColor& c, QPointF centre = QPointF(12, 12), qreal scale = 1)
{
    QPainterPath path;
    for (int i = 0; i < 16; ++i) {
        const qreal r = ((i / 2) % 2 ? 7 : 10) * scale;
        const qreal a = i * M_PI / 8 + M_PI / 16;
        const QPointF pt(centre.x() + r * std::cos(a), centre.y() + r * std::sin(a));
        if (i == 0)
            path.moveTo(pt);
        else
            path.lineTo(pt);
    }
    path.closeSubpath();
    path.addEllipse(centre, 3 * scale, 3 * scale);
    p.setPen(outline(c));
    p.setBrush(c);
    p.drawPath(path);
}

void monitor(QPainter& p, const QColor& c)
{
    p.setPen(outline(grey));
    p.setBrush(grey.lighter(150));
    p.drawRoundedRect(QRectF(2, 3, 20, 14), 1.5, 1.5);
    p.setBrush(c);
    p.drawRect(QRectF(4, 5, 16, 10));
    p.setBrush(grey);
    p.drawRect(QRectF(10, 17, 4, 3));
    p.drawRect(QRectF(6, 20, 12, 2));
}

void folder(QPainter& p, const QColor& c)
{
    p.setPen(outline(c));
    p.setBrush(c.darker(115));
    p.drawRoundedRect(QRectF(2, 5, 9, 5), 1, 1);
    QLinearGradient g(0, 7, 0, 21);
    g.setColorAt(0, c.lighter(130));
    g.setColorAt(1, c);
    p.setBrush(g);
    p.drawRoundedRect(QRectF(2, 8, 20, 13), 1.5, 1.5);
}

void magnifier(QPainter& p, const QColor& c)
{
    p.setPen(QPen(grey.darker(120), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(15, 15), QPointF(21, 21));
    p.setPen(outline(c, 2));
    p.setBrush(c.lighter(180));
    p.drawEllipse(QPointF(10, 10), 7, 7);
}

void trash(QPainter& p, const QColor& c)
{
    p.setPen(outline(c));
    p.setBrush(c.lighter(130));
    p.drawRect(QRectF(4, 5, 16, 2.5));
    p.drawRect(QRectF(9, 2.5, 6, 2.5));
    QPolygonF body;
    body << QPointF(5.5, 8) << QPointF(18.5, 8) << QPointF(17, 22) << QPointF(7, 22);
    p.setBrush(c);
    p.drawPolygon(body);
    p.setPen(QPen(c.lighter(160), 1.2));
    for (qreal x : {9.5, 12.0, 14.5})
        p.drawLine(QPointF(x, 10), QPointF(x, 20));
}

void funnel(QPainter& p, const QColor& c)
{
    QPolygonF poly;
    poly << QPointF(2, 3) << QPointF(22, 3) << QPointF(14, 12) << QPointF(14, 20) << QPointF(10, 22) << QPointF(10, 12);
    p.setPen(outline(c));
    p.setBrush(c);
    p.drawPolygon(poly);
}

void bars(QPainter& p, const QColor& c, const QList<qreal>& heights)
{
    p.setPen(outline(c, 1));
    const qreal w = 18.0 / heights.size();
    for (int i = 0; i < heights.size(); ++i) {
        p.setBrush(i % 2 ? c.lighter(130) : c);
        p.drawRect(QRectF(3 + i * w, 21 - heights[i], w - 1.5, heights[i]));
    }
    p.setPen(QPen(grey, 1.2));
    p.drawLine(QPointF(2, 21.5), QPointF(22, 21.5));
}

void person(QPainter& p, const QColor& c)
{
    p.setPen(outline(c));
    p.setBrush(c.lighter(140));
    p.drawEllipse(QPointF(12, 7.5), 4.5, 4.5);
    QPainterPath body;
    body.moveTo(3, 22);
    body.cubicTo(3, 14, 21, 14, 21, 22);
    body.closeSubpath();
    p.setBrush(c);
    p.drawPath(body);
}

void key(QPainter& p, const QColor& c)
{
    p.setPen(outline(c));
    p.setBrush(c);
    p.drawEllipse(QPointF(7, 12), 5, 5);
    p.drawRect(QRectF(11, 10.5, 11, 3));
    p.drawRect(QRectF(17, 13, 2, 4));
    p.drawRect(QRectF(20, 13, 2, 3));
    p.setBrush(paper);
    p.drawEllipse(QPointF(6, 12), 1.6, 1.6);
}

void house(QPainter& p, const QColor& c)
{
    QPolygonF roof;
    roof << QPointF(1.5, 12) << QPointF(12, 2.5) << QPointF(22.5, 12);
    p.setPen(outline(red, 1.4));
    p.setBrush(red);
    p.drawPolygon(roof);
    p.setPen(outline(c));
    p.setBrush(c.lighter(160));
    p.drawRect(QRectF(5, 12, 14, 10));
    p.setBrush(c.darker(130));
    p.drawRect(QRectF(10, 15, 4, 7));
}

void server(QPainter& p, const QRectF& r, const QColor& c)
{
    p.setPen(outline(c));
    p.setBrush(c);
    p.drawRoundedRect(r, 1, 1);
    p.setPen(QPen(c.lighter(170), 1));
    for (qreal y = r.top() + 3; y < r.bottom() - 1; y += 3)
        p.drawLine(QPointF(r.left() + 1.5, y), QPointF(r.right() - 3, y));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x60, 0xff, 0x60));
    p.drawEllipse(QPointF(r.right() - 1.5, r.bottom() - 1.8), 0.9, 0.9);
}

void certShape(QPainter& p, const QColor& c)
{
    p.setPen(outline(grey));
    p.setBrush(paper);
    p.drawRect(QRectF(2, 3, 20, 14));
    p.setPen(QPen(grey, 1));
    p.drawLine(QPointF(5, 7), QPointF(15, 7));
    p.drawLine(QPointF(5, 10), QPointF(12, 10));
    QPolygonF ribbon;
    ribbon << QPointF(14, 15) << QPointF(14, 22) << QPointF(16, 20.5) << QPointF(18, 22) << QPointF(18, 15);
    p.setPen(outline(c, 1));
    p.setBrush(c);
    p.drawPolygon(ribbon);
    p.setBrush(amber);
    p.drawEllipse(QPointF(16, 14), 3.5, 3.5);
}

void chain(QPainter& p, const QColor& c)
{
    p.setPen(QPen(c, 2.6));
    p.setBrush(Qt::NoBrush);
    p.save();
    p.translate(12, 12);
    p.rotate(-45);
    p.drawRoundedRect(QRectF(-10, -3.5, 11, 7), 3.5, 3.5);
    p.setPen(QPen(c.darker(130), 2.6));
    p.drawRoundedRect(QRectF(-1, -3.5, 11, 7), 3.5, 3.5);
    p.restore();
}

void spinner(QPainter& p, int frame)
{
    for (int i = 0; i < 8; ++i) {
        const qreal a = -M_PI / 2 + i * M_PI / 4;
        // Frame k lights the dots two steps further round than frame k-1.
        const int age = ((i - 2 * (frame - 1)) % 8 + 8) % 8;
        QColor c = blue;
        c.setAlpha(age == 0 ? 255 : age == 7 ? 200 : age == 6 ? 150 : 70);
        p.setPen(Qt::NoPen);
        p.setBrush(c);
        p.drawEllipse(QPointF(12 + 8 * std::cos(a), 12 + 8 * std::sin(a)), 2.4, 2.4);
    }
}

// ---------------------------------------------------------------- the table of glyphs

using Glyph = std::function<void(QPainter&)>;

std::map<QString, Glyph> glyphs()
{
    std::map<QString, Glyph> g;
    auto withBadge = [](Glyph base, QColor c, std::function<void(QPainter&)> mark) {
        return [=](QPainter& p) { base(p); badge(p, c, mark); };
    };
    const Glyph cert = [](QPainter& p) { certShape(p, blue); };
    const Glyph doc = [](QPainter& p) { page(p, blue); };

    g[QStringLiteral("tb_log")] = [](QPainter& p) { page(p, teal); };
    g[QStringLiteral("tb_monitor")] = [](QPainter& p) {
        monitor(p, QColor(0x20, 0x30, 0x40));
        p.setPen(QPen(QColor(0x40, 0xf0, 0x60), 1.4));
        p.drawPolyline(QPolygonF({QPointF(5, 11), QPointF(8, 11), QPointF(10, 7), QPointF(12, 13), QPointF(14, 9), QPointF(19, 9)}));
    };
    g[QStringLiteral("tb_activate")] = [](QPainter& p) {
        p.setPen(QPen(green, 3, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawArc(QRectF(3, 4, 18, 18), 120 * 16, 300 * 16);
        p.drawLine(QPointF(12, 2), QPointF(12, 11));
    };
    g[QStringLiteral("tb_help")] = [](QPainter& p) { disc(p, blue, [](QPainter& q) { text(q, QRectF(2, 2, 20, 20), QStringLiteral("?"), Qt::white, 16); }); };
    g[QStringLiteral("tb_settings")] = [](QPainter& p) { gear(p, grey); };
    g[QStringLiteral("tb_certificates")] = [](QPainter& p) {
        p.save();
        p.translate(-1.5, -1.5);
        certShape(p, teal);
        p.restore();
        p.translate(1.5, 1.5);
        certShape(p, blue);
    };
    g[QStringLiteral("tb_add_certificate")] = withBadge(cert, green, plusMark);
    g[QStringLiteral("tb_find")] = [](QPainter& p) { magnifier(p, blue); };
    g[QStringLiteral("tb_delete")] = [](QPainter& p) {
        p.setPen(QPen(red, 4, Qt::SolidLine, Qt::RoundCap));
        crossMark(p, QPointF(12, 12), 7.5);
    };
    g[QStringLiteral("tb_filter")] = [](QPainter& p) { funnel(p, blue); };
    g[QStringLiteral("tb_inspector")] = [](QPainter& p) {
        page(p, grey);
        p.scale(0.75, 0.75);
        p.translate(7, 7);
        magnifier(p, violet);
    };
    g[QStringLiteral("tb_show_all")] = [](QPainter& p) {
        for (int i = 0; i < 4; ++i) {
            p.setPen(outline(blue, 1));
            p.setBrush(i % 2 ? blue.lighter(140) : blue);
            p.drawRect(QRectF(3, 3 + i * 5, 4, 3.5));
            p.setPen(QPen(grey, 1.6));
            p.drawLine(QPointF(9, 4.8 + i * 5), QPointF(21, 4.8 + i * 5));
        }
    };
    g[QStringLiteral("tb_open")] = [](QPainter& p) { folder(p, amber); };
    g[QStringLiteral("tb_open_live")] = withBadge([](QPainter& p) { folder(p, amber); }, green, [](QPainter& q) {
        q.setBrush(Qt::white);
        q.drawEllipse(QPointF(17.5, 17.5), 1.5, 1.5);
    });
    g[QStringLiteral("tb_level")] = [](QPainter& p) { bars(p, orange, {4, 8, 12, 16}); };
    g[QStringLiteral("import")] = [](QPainter& p) {
        folder(p, amber);
        arrow(p, QPointF(12, 1), QPointF(12, 15), green);
    };
    g[QStringLiteral("importkey")] = [](QPainter& p) {
        p.save();
        p.translate(0, 4);
        key(p, amber);
        p.restore();
        arrow(p, QPointF(16, 1), QPointF(16, 11), green, 2.4);
    };
    g[QStringLiteral("export")] = [](QPainter& p) {
        folder(p, amber);
        arrow(p, QPointF(12, 16), QPointF(12, 1), blue);
    };
    g[QStringLiteral("request")] = withBadge(doc, violet, [](QPainter& q) {
        text(q, QRectF(12, 12, 11, 11), QStringLiteral("?"), Qt::white, 9);
    });
    g[QStringLiteral("tb_plugin")] = [](QPainter& p) {
        p.setPen(outline(violet));
        p.setBrush(violet);
        p.drawRoundedRect(QRectF(5, 8, 14, 9), 2, 2);
        p.drawRect(QRectF(10, 17, 4, 5));
        p.setBrush(grey.lighter(130));
        p.drawRect(QRectF(7.5, 2, 2.5, 6));
        p.drawRect(QRectF(14, 2, 2.5, 6));
    };
    g[QStringLiteral("tb_token")] = [](QPainter& p) {
        p.setPen(outline(grey));
        p.setBrush(grey.lighter(170));
        p.drawRect(QRectF(2, 9, 6, 6));
        p.setBrush(teal);
        p.drawRoundedRect(QRectF(8, 6, 14, 12), 2, 2);
        p.setPen(Qt::NoPen);
        p.setBrush(amber);
        p.drawEllipse(QPointF(15, 12), 2.2, 2.2);
    };
    g[QStringLiteral("tb_policy")] = [](QPainter& p) {
        page(p, grey);
        p.translate(9, 9);
        p.scale(0.55, 0.55);
        shield(p, green);
    };
    g[QStringLiteral("agent")] = [](QPainter& p) { shield(p, blue); };
    g[QStringLiteral("initial")] = [](QPainter& p) {
        shield(p, grey);
        text(p, QRectF(3, 2, 18, 18), QStringLiteral("i"), Qt::white, 14);
    };
    g[QStringLiteral("action_complete")] = [](QPainter& p) { disc(p, green, [](QPainter& q) { checkMark(q, QPointF(12, 12), 5.5); }); };
    g[QStringLiteral("action_error")] = [](QPainter& p) { disc(p, red, [](QPainter& q) { crossMark(q, QPointF(12, 12), 4.5); }); };
    g[QStringLiteral("action_warning")] = [](QPainter& p) {
        QPolygonF tri;
        tri << QPointF(12, 1.5) << QPointF(23, 21.5) << QPointF(1, 21.5);
        p.setPen(outline(amber));
        p.setBrush(amber);
        p.drawPolygon(tri);
        text(p, QRectF(2, 6, 20, 16), QStringLiteral("!"), Qt::black, 15);
    };
    g[QStringLiteral("delete_all")] = withBadge([](QPainter& p) { trash(p, grey); }, red, [](QPainter& q) { crossMark(q); });
    g[QStringLiteral("stat")] = [](QPainter& p) { bars(p, blue, {10, 16, 7, 13}); };
    g[QStringLiteral("satree")] = [](QPainter& p) {
        p.setPen(QPen(grey, 1.4));
        p.drawLine(QPointF(6, 6), QPointF(6, 19));
        p.drawLine(QPointF(6, 12), QPointF(13, 12));
        p.drawLine(QPointF(6, 19), QPointF(13, 19));
        for (QPointF c : {QPointF(6, 5), QPointF(16, 12), QPointF(16, 19)}) {
            p.setPen(outline(green, 1));
            p.setBrush(c.y() < 6 ? blue : green);
            p.drawRect(QRectF(c.x() - 3.5, c.y() - 3, 7, 6));
        }
    };
    g[QStringLiteral("blacklist")] = withBadge([](QPainter& p) {
        p.setPen(outline(grey));
        p.setBrush(QColor(0x30, 0x30, 0x30));
        p.drawRect(QRectF(3, 2, 15, 20));
        p.setPen(QPen(Qt::white, 1.4));
        for (int y = 6; y <= 14; y += 4)
            p.drawLine(QPointF(6, y), QPointF(15, y));
    }, red, [](QPainter& q) { crossMark(q); });
    g[QStringLiteral("filters")] = [](QPainter& p) {
        p.save();
        p.translate(-1, -1);
        p.scale(0.8, 0.8);
        funnel(p, teal);
        p.restore();
        p.translate(4, 5);
        p.scale(0.8, 0.8);
        funnel(p, blue);
    };
    g[QStringLiteral("algproxy")] = [](QPainter& p) {
        arrow(p, QPointF(3, 8), QPointF(21, 8), teal, 2.6);
        arrow(p, QPointF(21, 16), QPointF(3, 16), violet, 2.6);
    };
    g[QStringLiteral("ikecfg")] = [](QPainter& p) {
        key(p, amber);
        p.translate(9, -3);
        p.scale(0.5, 0.5);
        gear(p, grey);
    };
    g[QStringLiteral("rri")] = [](QPainter& p) {
        p.setPen(QPen(grey, 1.8, Qt::DashLine));
        p.drawPolyline(QPolygonF({QPointF(4, 19), QPointF(10, 8), QPointF(15, 16), QPointF(20, 5)}));
        for (QPointF c : {QPointF(4, 19), QPointF(10, 8), QPointF(15, 16), QPointF(20, 5)}) {
            p.setPen(outline(orange, 1));
            p.setBrush(orange);
            p.drawEllipse(c, 2.6, 2.6);
        }
    };
    g[QStringLiteral("ha")] = [](QPainter& p) {
        server(p, QRectF(2, 3, 8, 18), grey);
        server(p, QRectF(14, 3, 8, 18), grey);
        p.setPen(QPen(green, 1.6));
        p.drawLine(QPointF(10, 12), QPointF(14, 12));
    };
    g[QStringLiteral("back")] = [](QPainter& p) { disc(p, blue, [](QPainter& q) { arrow(q, QPointF(17.5, 12), QPointF(6.5, 12), Qt::white, 2.6); }); };
    g[QStringLiteral("next")] = [](QPainter& p) { disc(p, blue, [](QPainter& q) { arrow(q, QPointF(6.5, 12), QPointF(17.5, 12), Qt::white, 2.6); }); };
    g[QStringLiteral("home")] = [](QPainter& p) { house(p, amber); };
    g[QStringLiteral("user")] = [](QPainter& p) { person(p, blue); };
    g[QStringLiteral("sys")] = [](QPainter& p) {
        monitor(p, blue);
        gear(p, paper, QPointF(12, 10), 0.42);
    };
    g[QStringLiteral("clock")] = [](QPainter& p) { clockShape(p, blue); };
    g[QStringLiteral("lock")] = [](QPainter& p) { lockShape(p, amber); };
    g[QStringLiteral("lock1")] = [](QPainter& p) { lockShape(p, green); };
    g[QStringLiteral("lock2")] = [](QPainter& p) { lockShape(p, blue); };
    g[QStringLiteral("lock3")] = [](QPainter& p) { lockShape(p, red, true); };
    g[QStringLiteral("send")] = [](QPainter& p) { arrow(p, QPointF(4, 20), QPointF(20, 4), green, 3.4); };
    g[QStringLiteral("recv")] = [](QPainter& p) { arrow(p, QPointF(20, 4), QPointF(4, 20), blue, 3.4); };
    g[QStringLiteral("connect")] = [](QPainter& p) { chain(p, teal); };
    g[QStringLiteral("star")] = [](QPainter& p) { star(p, amber); };
    g[QStringLiteral("excl")] = [](QPainter& p) { disc(p, orange, [](QPainter& q) { text(q, QRectF(2, 2, 20, 20), QStringLiteral("!"), Qt::white, 16); }); };
    g[QStringLiteral("cross")] = [](QPainter& p) { disc(p, red, [](QPainter& q) { crossMark(q, QPointF(12, 12), 4.5); }); };
    g[QStringLiteral("cert")] = cert;
    g[QStringLiteral("cert_cross")] = withBadge(cert, red, [](QPainter& q) { crossMark(q); });
    return g;
}

// "lock1_new" -> base "lock1", new; "agent_32" -> "agent", 32; "update50-3" -> spinner frame 3 at 50.
struct IconName
{
    QString base;
    int size = 24;
    bool isNew = false;
    int frame = 0;         ///< 1-4 for the update animation
    QString state;         ///< "error" or "success" for the update results
};

IconName parse(const QString& file)
{
    IconName n;
    n.base = file;
    static const QRegularExpression update(QStringLiteral("^update(\\d+)-(\\w+)$"));
    static const QRegularExpression sized(QStringLiteral("^(.*)_(\\d+)$"));
    QRegularExpressionMatch m = update.match(file);
    if (m.hasMatch()) {
        n.base = QStringLiteral("update");
        n.size = m.captured(1).toInt();
        bool number = false;
        n.frame = m.captured(2).toInt(&number);
        if (!number)
            n.state = m.captured(2);
        return n;
    }
    if (n.base.endsWith(QLatin1String("_new"))) {
        n.isNew = true;
        n.base.chop(4);
    }
    m = sized.match(n.base);
    if (m.hasMatch()) {
        n.base = m.captured(1);
        n.size = m.captured(2).toInt();
    }
    return n;
}

bool paint(const IconName& name, const std::map<QString, Glyph>& table, QImage& image)
{
    image = QImage(name.size, name.size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(name.size / 24.0, name.size / 24.0);
    if (name.base == QLatin1String("update")) {
        if (name.state == QLatin1String("error"))
            disc(p, red, [](QPainter& q) { crossMark(q, QPointF(12, 12), 4.5); });
        else if (name.state == QLatin1String("success"))
            disc(p, green, [](QPainter& q) { checkMark(q, QPointF(12, 12), 5.5); });
        else if (name.frame >= 1 && name.frame <= 4)
            spinner(p, name.frame);
        else
            return false;
        return true;
    }
    const auto it = table.find(name.base);
    if (it == table.end())
        return false;
    p.save();
    it->second(p);
    p.restore();
    return true;
}

// The "new" set is the same picture with a spark in the top right corner.
void drawNewSpark(QImage& image)
{
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(image.width() / 24.0, image.height() / 24.0);
    p.translate(15, 0);
    p.scale(0.38, 0.38);
    star(p, orange);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: cg_paint_icons OUTDIR\n");
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QDir out(QString::fromLocal8Bit(argv[1]));
    if (!QDir().mkpath(out.path())) {
        std::fprintf(stderr, "cg_paint_icons: cannot create %s\n", argv[1]);
        return 1;
    }
    const std::map<QString, Glyph> table = glyphs();
    QString qrc;
    QTextStream qrcText(&qrc);
    qrcText << "<!DOCTYPE RCC><RCC version=\"1.0\">\n<qresource>\n";
    for (const char* path : common_gui_resource_paths) {
        const QString file = QString::fromLatin1(path).mid(2); // strip ":/"
        const IconName name = parse(file.chopped(4));
        QImage image;
        if (!paint(name, table, image)) {
            std::fprintf(stderr, "cg_paint_icons: no drawing for %s\n", path);
            return 1;
        }
        if (name.isNew)
            drawNewSpark(image);
        if (!image.save(out.filePath(file), "PNG")) {
            std::fprintf(stderr, "cg_paint_icons: cannot write %s\n", qPrintable(out.filePath(file)));
            return 1;
        }
        qrcText << "  <file>" << file << "</file>\n";
    }
    qrcText << "</qresource>\n</RCC>\n";
    qrcText.flush();
    QFile qrcFile(out.filePath(QStringLiteral("icons.qrc")));
    if (!qrcFile.open(QIODevice::WriteOnly | QIODevice::Truncate) || qrcFile.write(qrc.toUtf8()) < 0) {
        std::fprintf(stderr, "cg_paint_icons: cannot write icons.qrc\n");
        return 1;
    }
    return 0;
}
