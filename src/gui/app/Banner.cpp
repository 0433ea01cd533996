#include "Banner.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

using namespace Qt::StringLiterals;

Banner::Banner(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(u"Tarvane"_s);
}

QSize Banner::sizeHint() const
{
    return { 480, 64 };
}

QSize Banner::minimumSizeHint() const
{
    return { 200, 64 };
}

void Banner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paint(painter, rect(), u"Vehicle log"_s);
}

void Banner::paint(QPainter &painter, const QRect &rect, const QString &subtitle)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(rect);

    const qreal h = rect.height();
    const qreal right = rect.right() + 1;

    // Dusk sky.
    QLinearGradient sky(rect.topLeft(), rect.bottomLeft());
    sky.setColorAt(0.0, QColor(0x1b, 0x2a, 0x41));
    sky.setColorAt(1.0, QColor(0x32, 0x4a, 0x6d));
    painter.fillRect(rect, sky);
    // Last light on the horizon behind the road.
    QRadialGradient glow(QPointF(right - h * 2.4, rect.top() + h * 0.42), h * 2.2);
    glow.setColorAt(0.0, QColor(0xf2, 0xa6, 0x4e, 150));
    glow.setColorAt(1.0, QColor(0xf2, 0xa6, 0x4e, 0));
    painter.fillRect(rect, glow);

    // The road: a trapezoid from the bottom edge to a vanishing point on the right.
    const QPointF vanish(right - h * 2.4, rect.top() + h * 0.42);
    const qreal baseHalf = h * 1.9;
    const QPointF baseCentre(right - h * 1.2, rect.bottom() + 1);

    QPainterPath land;
    land.moveTo(rect.left(), vanish.y());
    land.lineTo(right, vanish.y());
    land.lineTo(right, rect.bottom() + 1);
    land.lineTo(rect.left(), rect.bottom() + 1);
    land.closeSubpath();
    QLinearGradient ground(QPointF(0, vanish.y()), QPointF(0, rect.bottom() + 1));
    ground.setColorAt(0.0, QColor(0x24, 0x3b, 0x2c));
    ground.setColorAt(1.0, QColor(0x17, 0x26, 0x1c));
    painter.fillPath(land, ground);

    QPainterPath road;
    road.moveTo(vanish);
    road.lineTo(baseCentre.x() + baseHalf, baseCentre.y());
    road.lineTo(baseCentre.x() - baseHalf, baseCentre.y());
    road.closeSubpath();
    painter.fillPath(road, QColor(0x3a, 0x3d, 0x42));

    // Centre dashes, shrinking with distance.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xf2, 0xc1, 0x4e));
    for (qreal t = 0.12; t < 1.0; t += 0.22) {
        const qreal t2 = qMin(1.0, t + 0.11);
        auto at = [&](qreal s, qreal halfWidth) {
            const QPointF p = vanish + (baseCentre - vanish) * s;
            return QPointF(p.x() + halfWidth * s, p.y());
        };
        const qreal w = h * 0.06;
        QPolygonF dash;
        dash << at(t, -w) << at(t, w) << at(t2, w) << at(t2, -w);
        painter.drawPolygon(dash);
    }

    // Name and subtitle on the left.
    QFont name(u"Arial"_s);
    name.setBold(true);
    name.setPixelSize(qMax(12, int(h * 0.42)));
    painter.setFont(name);
    const QRectF textRect(rect.left() + h * 0.25, rect.top(), rect.width(), h * 0.62);
    painter.setPen(QColor(0, 0, 0, 110));
    painter.drawText(textRect.translated(1.5, 1.5), Qt::AlignLeft | Qt::AlignBottom, u"Tarvane"_s);
    painter.setPen(QColor(0xf5, 0xf1, 0xe6));
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignBottom, u"Tarvane"_s);

    QFont small(u"Tahoma"_s);
    small.setPixelSize(qMax(9, int(h * 0.2)));
    painter.setFont(small);
    painter.setPen(QColor(0xf2, 0xc1, 0x4e));
    painter.drawText(QRectF(textRect.left() + 2, textRect.bottom() + 2, rect.width(), h * 0.3),
                     Qt::AlignLeft | Qt::AlignTop, subtitle);
    painter.restore();
}
