#include "IconFigures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

// Every picture is drawn on a 32 x 32 grid: a rounded badge in the colour of its group with a
// white figure on it, so the set reads alike at 16 pixels and stays sharp when scaled.

namespace {

using Picture = IconArt::Picture;

const QColor ink(0xff, 0xff, 0xff);

QColor badgeColour(Picture picture)
{
    switch (picture) {
    case Picture::Welcome:
    case Picture::Info:
        return QColor(0x1e, 0x6f, 0xc8);
    case Picture::NothingDue:
        return QColor(0x2e, 0x8b, 0x3e);
    case Picture::OpenTrips:
        return QColor(0xe0, 0x86, 0x00);
    case Picture::DistanceOverdue:
    case Picture::DaysOverdue:
        return QColor(0xc6, 0x28, 0x28);
    case Picture::Backup:
    case Picture::Restore:
        return QColor(0x00, 0x83, 0x7a);
    case Picture::Fuel:
        return QColor(0xe8, 0x6a, 0x10);
    case Picture::OpenTrip:
    case Picture::ClosedTrip:
        return QColor(0x3f, 0x51, 0xb5);
    default:
        return QColor(0x4f, 0x63, 0x70); // the repairs share one slate colour
    }
}

QPen strokePen(qreal width, const QColor &colour = ink)
{
    QPen pen(colour, width);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

void drawBadge(QPainter &p, const QColor &colour)
{
    QPainterPath badge;
    badge.addRoundedRect(QRectF(1, 1, 30, 30), 7, 7);
    QLinearGradient fill(0, 1, 0, 31);
    fill.setColorAt(0.0, colour.lighter(118));
    fill.setColorAt(1.0, colour.darker(110));
    p.fillPath(badge, fill);
    p.setPen(QPen(colour.darker(150), 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawPath(badge);
}

QPainterPath circle(QPointF c, qreal r)
{
    QPainterPath path;
    path.addEllipse(c, r, r);
    return path;
}

QPainterPath roundRect(qreal x, qreal y, qreal w, qreal h, qreal r)
{
    QPainterPath path;
    path.addRoundedRect(QRectF(x, y, w, h), r, r);
    return path;
}

QPainterPath polygon(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
    path.closeSubpath();
    return path;
}

void fill(QPainter &p, const QPainterPath &path, const QColor &colour = ink)
{
    p.fillPath(path, colour);
}

void line(QPainter &p, QPointF a, QPointF b, qreal width, const QColor &colour = ink)
{
    p.setPen(strokePen(width, colour));
    p.drawLine(a, b);
}

void arrowHead(QPainter &p, QPointF tip, qreal angleDegrees, qreal size)
{
    // A filled triangle pointing along the angle (0 = right, 90 = down).
    const qreal a = qDegreesToRadians(angleDegrees);
    const QPointF dir(std::cos(a), std::sin(a));
    const QPointF normal(-dir.y(), dir.x());
    const QPointF back = tip - dir * size;
    fill(p, polygon({ tip, back + normal * size * 0.75, back - normal * size * 0.75 }));
}

void car(QPainter &p, const QColor &bg)
{
    QPainterPath body = roundRect(4.5, 15, 23, 8, 2.5);
    body = body.united(polygon({ { 8.5, 16 }, { 11.5, 9 }, { 20.5, 9 }, { 24, 16 } }));
    fill(p, body);
    fill(p, polygon({ { 11.2, 15 }, { 12.9, 10.9 }, { 15.4, 10.9 }, { 15.4, 15 } }), bg);
    fill(p, polygon({ { 16.8, 15 }, { 16.8, 10.9 }, { 19.4, 10.9 }, { 21.4, 15 } }), bg);
    for (qreal x : { 10.0, 22.0 }) {
        fill(p, circle({ x, 23 }, 3.6), bg);
        fill(p, circle({ x, 23 }, 2.7));
        fill(p, circle({ x, 23 }, 1.0), bg);
    }
}

void info(QPainter &p)
{
    fill(p, circle({ 16, 8.5 }, 2.4));
    fill(p, roundRect(13.8, 13, 4.4, 12, 1.2));
    fill(p, roundRect(11.5, 13, 6, 2.6, 1));
    fill(p, roundRect(11.5, 22.8, 9, 2.6, 1));
}

void check(QPainter &p)
{
    p.setPen(strokePen(3.8));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({ { 8, 16.5 }, { 13.5, 22 }, { 24.5, 10 } }));
}

void mapPin(QPainter &p, const QColor &bg, QPointF top, qreal r)
{
    QPainterPath pin;
    pin.moveTo(top.x(), top.y() + r * 2.6);
    pin.cubicTo(top.x() - r * 0.3, top.y() + r * 1.8, top.x() - r, top.y() + r * 1.3, top.x() - r, top.y());
    pin.arcTo(QRectF(top.x() - r, top.y() - r, 2 * r, 2 * r), 180, -180);
    pin.cubicTo(top.x() + r, top.y() + r * 1.3, top.x() + r * 0.3, top.y() + r * 1.8, top.x(),
                top.y() + r * 2.6);
    fill(p, pin);
    fill(p, circle(top, r * 0.42), bg);
}

void openTrip(QPainter &p, const QColor &bg)
{
    // A pin at the start of a road that has no end yet.
    mapPin(p, bg, { 11, 10.5 }, 5.5);
    p.setPen(strokePen(2.2));
    p.setBrush(Qt::NoBrush);
    QPainterPath road;
    road.moveTo(11, 26);
    road.cubicTo(18, 26, 16, 18, 23, 18);
    QPen dashed = strokePen(2.2);
    dashed.setDashPattern({ 1.0, 1.6 });
    p.setPen(dashed);
    p.drawPath(road);
    arrowHead(p, { 27.5, 18 }, 0, 4);
}

void checkeredFlag(QPainter &p)
{
    line(p, { 8, 5.5 }, { 8, 27 }, 2.4);
    const QRectF flag(9, 6, 16, 11);
    fill(p, QPainterPath([&] {
             QPainterPath path;
             path.addRect(flag);
             return path;
         }()));
    // Dark squares cut into the white flag.
    const qreal cw = flag.width() / 4.0, ch = flag.height() / 3.0;
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 4; ++col)
            if ((row + col) % 2)
                p.fillRect(QRectF(flag.left() + col * cw, flag.top() + row * ch, cw, ch),
                           QColor(0x1a, 0x23, 0x5e));
}

void flag(QPainter &p)
{
    line(p, { 9, 5.5 }, { 9, 27 }, 2.4);
    fill(p, polygon({ { 9.5, 6 }, { 25, 6 }, { 21, 11 }, { 25, 16 }, { 9.5, 16 } }));
}

void road(QPainter &p)
{
    fill(p, polygon({ { 4, 27 }, { 13.5, 5 }, { 18.5, 5 }, { 28, 27 } }));
    QPen dashed = strokePen(1.8, badgeColour(Picture::DistanceOverdue));
    dashed.setCapStyle(Qt::FlatCap);
    dashed.setDashPattern({ 2.0, 1.6 });
    p.setPen(dashed);
    p.drawLine(QPointF(16, 7), QPointF(16, 26));
}

void calendar(QPainter &p, const QColor &bg)
{
    fill(p, roundRect(6, 8, 20, 18, 2.5));
    fill(p, QPainterPath([] {
             QPainterPath path;
             path.addRect(QRectF(8, 13.5, 16, 10.5));
             return path;
         }()),
         bg);
    line(p, { 11, 5.5 }, { 11, 10 }, 2.2);
    line(p, { 21, 5.5 }, { 21, 10 }, 2.2);
    // An exclamation on the page: the date has gone by.
    fill(p, roundRect(14.9, 14.8, 2.2, 5.2, 1));
    fill(p, circle({ 16, 22 }, 1.2));
}

void tray(QPainter &p)
{
    p.setPen(strokePen(2.6));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({ { 6, 19 }, { 6, 25.5 }, { 26, 25.5 }, { 26, 19 } }));
}

void backup(QPainter &p)
{
    tray(p);
    line(p, { 16, 5.5 }, { 16, 15 }, 3);
    arrowHead(p, { 16, 21.5 }, 90, 7);
}

void restore(QPainter &p)
{
    tray(p);
    line(p, { 16, 21 }, { 16, 12 }, 3);
    arrowHead(p, { 16, 4.5 }, -90, 7);
}

void fuelPump(QPainter &p, const QColor &bg)
{
    fill(p, roundRect(7, 6, 12, 21, 2));
    fill(p, roundRect(9.3, 8.5, 7.4, 5.5, 1), bg);
    fill(p, roundRect(5, 25, 16, 3, 1));
    // The hose and nozzle hanging on the side.
    p.setPen(strokePen(2.0));
    p.setBrush(Qt::NoBrush);
    QPainterPath hose;
    hose.moveTo(19, 12);
    hose.lineTo(22, 12);
    hose.quadTo(24.5, 12, 24.5, 15);
    hose.lineTo(24.5, 21);
    hose.quadTo(24.5, 23.5, 22.5, 23.5);
    hose.quadTo(20.5, 23.5, 20.5, 21);
    hose.lineTo(20.5, 17);
    p.drawPath(hose);
    fill(p, polygon({ { 22.5, 6.5 }, { 26, 9 }, { 26, 12 }, { 23, 12 } }));
}

QPainterPath wrenchShape()
{
    QPainterPath head = circle({ 0, -9 }, 6);
    QPainterPath shape = head.united(roundRect(-2.4, -9, 4.8, 20.5, 2.4));
    QPainterPath jaw;
    jaw.addRect(QRectF(-2.2, -16, 4.4, 7));
    return shape.subtracted(jaw);
}

void wrench(QPainter &p)
{
    QTransform t;
    t.translate(16, 16.5);
    t.rotate(45);
    fill(p, t.map(wrenchShape()));
}

void oilCan(QPainter &p)
{
    QPainterPath can = roundRect(7, 15, 14, 10, 2);
    can = can.united(polygon({ { 10, 15.5 }, { 12.5, 11.5 }, { 17.5, 11.5 }, { 19.5, 15.5 } }));
    can = can.united(polygon({ { 20, 16 }, { 28, 11.5 }, { 28.6, 12.6 }, { 21, 20 } }));
    fill(p, can);
    fill(p, roundRect(13.5, 9.5, 3, 2.5, 0.8));
    p.setPen(strokePen(2.0));
    p.setBrush(Qt::NoBrush);
    QPainterPath handle;
    handle.moveTo(7.5, 16.5);
    handle.cubicTo(2.5, 16.5, 2.5, 23.5, 7.5, 23.5);
    p.drawPath(handle);
    // A drop falling from the spout, in oil amber.
    QPainterPath drop;
    drop.moveTo(27.8, 15);
    drop.cubicTo(29.8, 18.5, 29.8, 20.5, 27.8, 20.5);
    drop.cubicTo(25.8, 20.5, 25.8, 18.5, 27.8, 15);
    fill(p, drop, QColor(0xff, 0xc1, 0x07));
}

void sparkPlug(QPainter &p, const QColor &bg)
{
    QTransform t;
    t.translate(16, 16);
    t.rotate(30);
    t.translate(-16, -16);
    QPainterPath plug = roundRect(14.5, 2.5, 3, 3.5, 0.8);
    plug = plug.united(roundRect(12.8, 5.5, 6.4, 9, 2.2));
    plug = plug.united(roundRect(10.5, 14.5, 11, 4.5, 1));
    plug = plug.united(roundRect(13, 18.5, 6, 5, 0.6));
    fill(p, t.map(plug));
    // Ribs on the insulator.
    QPainterPath ribs;
    for (qreal y : { 8.5, 11.5 }) {
        ribs.moveTo(12.8, y);
        ribs.lineTo(19.2, y);
    }
    p.setPen(strokePen(1.1, bg));
    p.drawPath(t.map(ribs));
    QPainterPath electrode;
    electrode.moveTo(16, 23.5);
    electrode.lineTo(16, 27);
    electrode.moveTo(13.5, 23.5);
    electrode.lineTo(13.5, 28.8);
    electrode.lineTo(16.5, 28.8);
    p.setPen(strokePen(1.5));
    p.setBrush(Qt::NoBrush);
    p.drawPath(t.map(electrode));
    // The spark, in yellow.
    const QPointF spark = t.map(QPointF(18.5, 27.5));
    p.setPen(strokePen(1.6, QColor(0xff, 0xd5, 0x4f)));
    for (int i = 0; i < 3; ++i) {
        const qreal a = qDegreesToRadians(-20.0 + i * 50.0);
        const QPointF dir(std::cos(a), std::sin(a));
        p.drawLine(spark + dir * 1.2, spark + dir * 3.6);
    }
}

QPainterPath gearShape(QPointF c, qreal r, int teeth, qreal hole)
{
    QPainterPath gear = circle(c, r);
    for (int i = 0; i < teeth; ++i) {
        QTransform t;
        t.translate(c.x(), c.y());
        t.rotate(i * 360.0 / teeth);
        gear = gear.united(t.map(roundRect(-r * 0.22, -r - r * 0.38, r * 0.44, r * 0.6, 0.8)));
    }
    return gear.subtracted(circle(c, hole));
}

void gear(QPainter &p)
{
    fill(p, gearShape({ 16, 16 }, 8.5, 8, 3.4));
}

void thermometer(QPainter &p, const QColor &bg)
{
    fill(p, roundRect(9, 4.5, 6, 18, 3));
    fill(p, circle({ 12, 22.5 }, 4.6));
    fill(p, roundRect(11, 9, 2, 12, 1), bg);
    fill(p, circle({ 12, 22.5 }, 2.4), QColor(0x4f, 0xc3, 0xf7));
    fill(p, roundRect(11.2, 11, 1.6, 11, 0.8), QColor(0x4f, 0xc3, 0xf7));
    p.setPen(strokePen(2.0, QColor(0x81, 0xd4, 0xfa)));
    p.setBrush(Qt::NoBrush);
    for (qreal y : { 12.0, 18.0, 24.0 }) {
        QPainterPath wave;
        wave.moveTo(18, y);
        wave.cubicTo(20, y - 2.2, 21.5, y - 2.2, 23, y);
        wave.cubicTo(24.5, y + 2.2, 26, y + 2.2, 28, y);
        p.drawPath(wave);
    }
}

void battery(QPainter &p, const QColor &bg)
{
    fill(p, roundRect(5, 11, 22, 15, 2));
    fill(p, roundRect(8, 7.5, 5, 4, 1));
    fill(p, roundRect(19, 7.5, 5, 4, 1));
    line(p, { 8.5, 18.5 }, { 13.5, 18.5 }, 2, bg);
    line(p, { 11, 16 }, { 11, 21 }, 2, bg);
    line(p, { 18.5, 18.5 }, { 23.5, 18.5 }, 2, bg);
}

void brakes(QPainter &p, const QColor &bg)
{
    fill(p, circle({ 14.5, 17.5 }, 10));
    fill(p, circle({ 14.5, 17.5 }, 3.2), bg);
    for (int i = 0; i < 5; ++i) {
        const qreal a = qDegreesToRadians(-90.0 + i * 72.0);
        fill(p, circle(QPointF(14.5 + 6.2 * std::cos(a), 17.5 + 6.2 * std::sin(a)), 1.1), bg);
    }
    // The calliper gripping the disc, in amber.
    p.setPen(QPen(bg, 7.5, Qt::SolidLine, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    const QRectF arc(14.5 - 10.5, 17.5 - 10.5, 21, 21);
    p.drawArc(arc, 5 * 16, 70 * 16);
    p.setPen(QPen(QColor(0xff, 0xb3, 0x00), 5.0, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(arc, 10 * 16, 60 * 16);
}

void airFilter(QPainter &p, const QColor &bg)
{
    fill(p, roundRect(5, 8, 22, 16, 2.5));
    p.setPen(strokePen(1.6, bg));
    p.setBrush(Qt::NoBrush);
    QPolygonF pleats;
    for (int i = 0; i <= 8; ++i)
        pleats << QPointF(7.5 + i * 2.125, i % 2 ? 21.5 : 10.5);
    p.drawPolyline(pleats);
}

void spring(QPainter &p)
{
    // A suspension coil between its two seats.
    fill(p, roundRect(8, 4.5, 16, 3, 1.2));
    fill(p, roundRect(8, 24.5, 16, 3, 1.2));
    p.setPen(strokePen(2.3));
    p.setBrush(Qt::NoBrush);
    QPolygonF coil;
    coil << QPointF(11, 8);
    for (int i = 0; i < 4; ++i) {
        coil << QPointF(22, 9.5 + i * 4.0) << QPointF(10, 11.5 + i * 4.0);
    }
    coil << QPointF(21, 24);
    p.drawPolyline(coil);
}

void lights(QPainter &p)
{
    QPainterPath lamp;
    lamp.moveTo(15, 7);
    lamp.cubicTo(3, 7, 3, 25, 15, 25);
    lamp.closeSubpath();
    fill(p, lamp);
    for (qreal y : { 9.5, 16.0, 22.5 })
        line(p, { 18.5, y }, { 27, y + (y - 16.0) * 0.25 }, 2.3);
}

void exhaust(QPainter &p)
{
    // Pipe in, silencer, tail pipe, and a puff of smoke.
    line(p, { 3, 22 }, { 6, 22 }, 2.6);
    fill(p, roundRect(5, 16, 15, 10, 4));
    line(p, { 19, 19.5 }, { 25, 19.5 }, 3.0);
    p.setPen(strokePen(1.8));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(26, 12.5), 2.4, 2.4);
    p.drawEllipse(QPointF(21.5, 9), 1.8, 1.8);
    p.drawEllipse(QPointF(26.5, 5.5), 1.3, 1.3);
}

void clipboard(QPainter &p, const QColor &bg)
{
    fill(p, roundRect(7, 6, 18, 22, 2.5));
    fill(p, roundRect(9.5, 9.5, 13, 16, 1), bg);
    fill(p, roundRect(11.5, 4, 9, 5, 1.5));
    p.setPen(strokePen(2.4));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({ { 12, 17.5 }, { 15, 20.5 }, { 20.5, 13.5 } }));
}

void wash(QPainter &p, const QColor &bg)
{
    QPainterPath drop;
    drop.moveTo(13, 4.5);
    drop.cubicTo(20, 13, 22, 17, 22, 20);
    drop.cubicTo(22, 25, 18, 28, 13, 28);
    drop.cubicTo(8, 28, 4, 25, 4, 20);
    drop.cubicTo(4, 17, 6, 13, 13, 4.5);
    fill(p, drop);
    p.setPen(strokePen(1.6, bg));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(7.5, 16, 8, 8), 180 * 16, 80 * 16);
    p.setPen(strokePen(1.6));
    p.drawEllipse(QPointF(25, 10), 2.6, 2.6);
    p.drawEllipse(QPointF(26, 19), 1.7, 1.7);
}

void snowflake(QPainter &p)
{
    const QPointF c(16, 16);
    p.setPen(strokePen(2.0));
    for (int i = 0; i < 6; ++i) {
        const qreal a = qDegreesToRadians(-90.0 + i * 60.0);
        const QPointF dir(std::cos(a), std::sin(a));
        p.drawLine(c, c + dir * 11.0);
        for (qreal side : { -1.0, 1.0 }) {
            const qreal b = a + side * qDegreesToRadians(40.0);
            const QPointF from = c + dir * 7.0;
            p.drawLine(from, from + QPointF(std::cos(b), std::sin(b)) * 3.8);
        }
    }
}

void tireAt(QPainter &p, const QColor &bg, QPointF c, qreal r)
{
    // A tyre with slanted tread grooves around a rim with its wheel nuts.
    fill(p, circle(c, r));
    p.setPen(QPen(bg, qMax(0.8, r * 0.1), Qt::SolidLine, Qt::FlatCap));
    for (int i = 0; i < 14; ++i) {
        const qreal a = qDegreesToRadians(i * 360.0 / 14);
        const qreal b = a + qDegreesToRadians(14.0);
        p.drawLine(c + QPointF(std::cos(a), std::sin(a)) * (r + 0.5),
                   c + QPointF(std::cos(b), std::sin(b)) * (r * 0.8));
    }
    fill(p, circle(c, r * 0.62), bg);
    fill(p, circle(c, r * 0.5));
    for (int i = 0; i < 5; ++i) {
        const qreal a = qDegreesToRadians(-90.0 + i * 72.0);
        fill(p, circle(c + QPointF(std::cos(a), std::sin(a)) * (r * 0.3), r * 0.07), bg);
    }
}

void tire(QPainter &p, const QColor &bg)
{
    tireAt(p, bg, { 16, 16 }, 11.5);
}

void rotateTires(QPainter &p, const QColor &bg)
{
    tireAt(p, bg, { 16, 16 }, 7);
    p.setPen(strokePen(2.2));
    p.setBrush(Qt::NoBrush);
    const QRectF ring(4, 4, 24, 24);
    p.drawArc(ring, 110 * 16, 110 * 16);
    p.drawArc(ring, 290 * 16, 110 * 16);
    // Heads at the ends of the two arcs, turning the same way round.
    auto at = [](qreal degrees) {
        const qreal a = qDegreesToRadians(degrees);
        return QPointF(16 + 12 * std::cos(a), 16 - 12 * std::sin(a));
    };
    // The tangent of a counter-clockwise turn at angle a points along -a - 90 on screen.
    arrowHead(p, at(226), -226 - 90, 4.5);
    arrowHead(p, at(46), -46 - 90, 4.5);
}

void drawFigure(QPainter &p, Picture picture, const QColor &bg)
{
    switch (picture) {
    case Picture::Welcome:
        car(p, bg);
        break;
    case Picture::Info:
        info(p);
        break;
    case Picture::NothingDue:
        check(p);
        break;
    case Picture::OpenTrips:
        flag(p);
        break;
    case Picture::DistanceOverdue:
        road(p);
        break;
    case Picture::DaysOverdue:
        calendar(p, bg);
        break;
    case Picture::Backup:
        backup(p);
        break;
    case Picture::Restore:
        restore(p);
        break;
    case Picture::Fuel:
        fuelPump(p, bg);
        break;
    case Picture::Repair:
        wrench(p);
        break;
    case Picture::OilChange:
        oilCan(p);
        break;
    case Picture::TuneUp:
        sparkPlug(p, bg);
        break;
    case Picture::Transmission:
        gear(p);
        break;
    case Picture::Coolant:
        thermometer(p, bg);
        break;
    case Picture::Battery:
        battery(p, bg);
        break;
    case Picture::Brakes:
        brakes(p, bg);
        break;
    case Picture::AirFilter:
        airFilter(p, bg);
        break;
    case Picture::Suspension:
        spring(p);
        break;
    case Picture::Lights:
        lights(p);
        break;
    case Picture::Exhaust:
        exhaust(p);
        break;
    case Picture::Inspection:
        clipboard(p, bg);
        break;
    case Picture::Wash:
        wash(p, bg);
        break;
    case Picture::AirConditioning:
        snowflake(p);
        break;
    case Picture::Tire:
        tire(p, bg);
        break;
    case Picture::RotateTires:
        rotateTires(p, bg);
        break;
    case Picture::OpenTrip:
        openTrip(p, bg);
        break;
    case Picture::ClosedTrip:
        checkeredFlag(p);
        break;
    }
}

} // namespace

void IconFigures::draw(QPainter &p, IconArt::Picture picture)
{
    const QColor bg = badgeColour(picture);
    drawBadge(p, bg);
    drawFigure(p, picture, bg);
}
