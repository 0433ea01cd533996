#include "TileArt.h"

#include <QFont>
#include <QHash>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

struct DrumColours
{
    QColor edge, middle, glyph;
};

// Dark graphite drums with warm white figures; the alert set is a red drum with white figures.
DrumColours drumColours(bool alert)
{
    if (alert)
        return { QColor(0x4a, 0x06, 0x06), QColor(0xd3, 0x2f, 0x2f), QColor(0xff, 0xfb, 0xf5) };
    return { QColor(0x0b, 0x0c, 0x0e), QColor(0x45, 0x48, 0x4e), QColor(0xf3, 0xef, 0xe4) };
}

QFont tileFont(qreal pixelSize, bool condensed = true)
{
    QFont font(u"Arial"_s);
    font.setStyleHint(QFont::SansSerif, QFont::PreferAntialias);
    font.setPixelSize(qMax(1, qRound(pixelSize)));
    font.setWeight(QFont::Bold);
    if (condensed)
        font.setStretch(QFont::SemiCondensed);
    return font;
}

// Outline of the text scaled so that the reference glyph is the given height, centred on the
// point. Scaling by a reference rather than each text's own box keeps every tile of a set on one
// baseline and one size (a "J" that dips below the line does not shrink "JAN").
// Texts too wide for the tile are narrowed to fit by the widest of the set they belong to, so the
// whole set keeps one size.
QPainterPath centredText(const QString &text, const QFont &font, QPointF centre, qreal height, qreal maxWidth,
                         const QString &reference, const QStringList &set = QStringList())
{
    QPainterPath path;
    path.addText(0, 0, font, text);
    QPainterPath ref;
    ref.addText(0, 0, font, reference);
    const QRectF box = path.boundingRect();
    const QRectF refBox = ref.boundingRect();
    if (box.isEmpty() || refBox.isEmpty())
        return path;
    qreal widest = box.width();
    for (const QString &member : set) {
        QPainterPath other;
        other.addText(0, 0, font, member);
        widest = qMax(widest, other.boundingRect().width());
    }
    qreal scale = height / refBox.height();
    if (widest * scale > maxWidth)
        scale = maxWidth / widest;
    QTransform t;
    t.translate(centre.x(), centre.y());
    t.scale(scale, scale);
    t.translate(-box.center().x(), -refBox.center().y());
    return t.map(path);
}

// The shading that makes a flat strip look like a turning cylinder: dark at the top and bottom
// edges where the drum curves away, a soft highlight just above the middle.
void shadeCylinder(QPainter &p, const QRectF &r)
{
    QLinearGradient shade(r.topLeft(), r.bottomLeft());
    shade.setColorAt(0.0, QColor(0, 0, 0, 200));
    shade.setColorAt(0.22, QColor(0, 0, 0, 60));
    shade.setColorAt(0.40, QColor(255, 255, 255, 28));
    shade.setColorAt(0.50, QColor(255, 255, 255, 10));
    shade.setColorAt(0.78, QColor(0, 0, 0, 60));
    shade.setColorAt(1.0, QColor(0, 0, 0, 210));
    p.fillRect(r, shade);
}

void drawDrum(QPainter &p, const QSizeF &size, bool alert, const QString &glyph, qreal glyphHeight)
{
    const DrumColours c = drumColours(alert);
    const QRectF r(QPointF(0, 0), size);
    QLinearGradient base(r.topLeft(), r.bottomLeft());
    base.setColorAt(0.0, c.edge);
    base.setColorAt(0.45, c.middle);
    base.setColorAt(1.0, c.edge);
    p.fillRect(r, base);

    if (!glyph.isEmpty()) {
        const QPainterPath path = centredText(glyph, tileFont(glyphHeight * 1.3), r.center(), glyphHeight,
                                              size.width() - 3.0, u"0"_s);
        p.fillPath(path, c.glyph);
    }
    shadeCylinder(p, r);

    // The gaps between neighbouring drums: a dark slot on each side and a faint lit rim inside it.
    p.fillRect(QRectF(0, 0, 1, size.height()), QColor(0, 0, 0, 230));
    p.fillRect(QRectF(size.width() - 1, 0, 1, size.height()), QColor(0, 0, 0, 230));
    p.fillRect(QRectF(1, 0, 0.75, size.height()), QColor(255, 255, 255, 34));
    p.fillRect(QRectF(size.width() - 1.75, 0, 0.75, size.height()), QColor(0, 0, 0, 90));
}

void drawPoint(QPainter &p, const QSizeF &size, bool alert, bool blank)
{
    // The point sits on the counter's frame between the drums, level with the figures' baseline.
    const QRectF r(QPointF(0, 0), size);
    QLinearGradient base(r.topLeft(), r.bottomLeft());
    const QColor frame = alert ? QColor(0x2a, 0x04, 0x04) : QColor(0x12, 0x13, 0x15);
    base.setColorAt(0.0, frame.darker(130));
    base.setColorAt(0.5, frame.lighter(140));
    base.setColorAt(1.0, frame.darker(130));
    p.fillRect(r, base);
    if (blank)
        return;
    const qreal radius = size.height() * 0.058;
    const QPointF centre(size.width() / 2.0, size.height() * (0.5 + 0.28) - radius);
    p.setPen(Qt::NoPen);
    p.setBrush(drumColours(alert).glyph);
    p.drawEllipse(centre, radius, radius);
}

const char *const monthNames[12]
    = { "JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC" };

QStringList monthList()
{
    QStringList names;
    for (const char *name : monthNames)
        names.append(QString::fromLatin1(name));
    return names;
}

void drawMonth(QPainter &p, const QSizeF &size, int month, bool blank)
{
    // A tear-off calendar leaf: a coloured binding band with two rings, the month below it.
    const bool noDate = month < 0;
    const QRectF leaf(0.5, 2.5, size.width() - 1.0, size.height() - 3.0);
    QPainterPath leafPath;
    leafPath.addRoundedRect(leaf, 3, 3);

    QLinearGradient paper(leaf.topLeft(), leaf.bottomLeft());
    paper.setColorAt(0.0, QColor(0xff, 0xff, 0xff));
    paper.setColorAt(1.0, QColor(0xdc, 0xde, 0xe2));
    p.fillPath(leafPath, paper);

    const qreal bandHeight = size.height() * 0.30;
    QPainterPath band;
    band.addRect(QRectF(leaf.left(), leaf.top(), leaf.width(), bandHeight));
    band = band.intersected(leafPath);
    const QColor bandColour = noDate ? QColor(0x78, 0x80, 0x88) : QColor(0xc6, 0x28, 0x28);
    QLinearGradient bandShade(leaf.topLeft(), QPointF(leaf.left(), leaf.top() + bandHeight));
    bandShade.setColorAt(0.0, bandColour.lighter(118));
    bandShade.setColorAt(1.0, bandColour.darker(112));
    p.fillPath(band, bandShade);

    p.setPen(QPen(QColor(0x3a, 0x3d, 0x42), 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawPath(leafPath);

    // Binding rings poking out above the band.
    p.setPen(Qt::NoPen);
    for (qreal x : { size.width() * 0.3, size.width() * 0.7 }) {
        p.setBrush(QColor(0x2b, 0x2d, 0x31));
        p.drawRoundedRect(QRectF(x - 1.5, 0.0, 3.0, 6.0), 1.4, 1.4);
        p.setBrush(QColor(0xb8, 0xbc, 0xc2));
        p.drawRect(QRectF(x - 0.5, 0.8, 1.0, 4.0));
    }

    if (blank)
        return;
    const QRectF body(leaf.left(), leaf.top() + bandHeight, leaf.width(),
                      leaf.bottom() - leaf.top() - bandHeight);
    const QString text = noDate ? u"- -"_s : QString::fromLatin1(monthNames[month]);
    const qreal glyphHeight = noDate ? body.height() * 0.12 : body.height() * 0.46;
    const QPainterPath path = centredText(text, tileFont(glyphHeight * 1.4), body.center(), glyphHeight,
                                          body.width() - 4.0, noDate ? text : u"M"_s, monthList());
    p.fillPath(path, noDate ? QColor(0x8a, 0x90, 0x96) : QColor(0x22, 0x24, 0x28));
}

void drawDay(QPainter &p, const QSizeF &size, int day, bool blank)
{
    // The day sits under the month leaf on a card of the same paper.
    const QRectF card(0.5, 0.5, size.width() - 1.0, size.height() - 1.0);
    QLinearGradient paper(card.topLeft(), card.bottomLeft());
    paper.setColorAt(0.0, QColor(0xff, 0xff, 0xff));
    paper.setColorAt(1.0, QColor(0xd6, 0xd9, 0xde));
    p.setPen(QPen(QColor(0x3a, 0x3d, 0x42), 1.0));
    p.setBrush(paper);
    p.drawRoundedRect(card, 2.5, 2.5);
    if (blank)
        return;
    const bool noDate = day <= 0;
    const QString text = noDate ? u"- -"_s : QString::number(day);
    const qreal glyphHeight = noDate ? size.height() * 0.1 : size.height() * 0.58;
    const QPainterPath path = centredText(text, tileFont(glyphHeight * 1.4), card.center(), glyphHeight,
                                          card.width() - 4.0, noDate ? text : u"0"_s);
    p.fillPath(path, noDate ? QColor(0x8a, 0x90, 0x96) : QColor(0x22, 0x24, 0x28));
}

QHash<quint64, QPixmap> &cache()
{
    static QHash<quint64, QPixmap> pixmaps;
    return pixmaps;
}

quint64 cacheKey(int id, qreal dpr, bool blank)
{
    return (quint64(quint32(id)) << 32) | (quint64(qRound(dpr * 100.0)) << 1) | (blank ? 1u : 0u);
}

QPixmap cached(int id, qreal dpr, bool blank)
{
    if (!TileArt::isTile(id) || !(dpr > 0.0))
        return QPixmap();
    const quint64 key = cacheKey(id, dpr, blank);
    auto it = cache().constFind(key);
    if (it != cache().constEnd())
        return *it;
    QPixmap pixmap = QPixmap::fromImage(TileArt::render(id, dpr, blank));
    pixmap.setDevicePixelRatio(dpr);
    cache().insert(key, pixmap);
    return pixmap;
}

} // namespace

TileArt::Kind TileArt::kind(int id)
{
    if ((id >= WholeDigit && id <= WholeDigit + 9) || (id >= WholeDigitAlert && id <= WholeDigitAlert + 9))
        return Kind::WholeDigit;
    if ((id >= DecimalDigit && id <= DecimalDigit + 9)
        || (id >= DecimalDigitAlert && id <= DecimalDigitAlert + 9))
        return Kind::DecimalDigit;
    if (id == DecimalPoint || id == DecimalPointAlert)
        return Kind::DecimalPoint;
    if (id >= MonthNoDate && id <= Month + 11)
        return Kind::Month;
    if ((id >= Day + 1 && id <= Day + 31) || id == DayNoDate)
        return Kind::Day;
    return Kind::None;
}

bool TileArt::isAlert(int id)
{
    return (id >= WholeDigitAlert && id <= WholeDigitAlert + 9)
        || (id >= DecimalDigitAlert && id <= DecimalPointAlert);
}

QSize TileArt::tileSize(int id)
{
    switch (kind(id)) {
    case Kind::WholeDigit:
        return QSize(15, 20);
    case Kind::DecimalDigit:
        return QSize(13, 31);
    case Kind::DecimalPoint:
        return QSize(9, 31);
    case Kind::Month:
        return QSize(30, 36);
    case Kind::Day:
        return QSize(22, 16);
    case Kind::None:
        break;
    }
    return QSize();
}

QString TileArt::tileText(int id)
{
    switch (kind(id)) {
    case Kind::WholeDigit:
        return QString::number(isAlert(id) ? id - WholeDigitAlert : id - WholeDigit);
    case Kind::DecimalDigit:
        return QString::number(isAlert(id) ? id - DecimalDigitAlert : id - DecimalDigit);
    case Kind::DecimalPoint:
        return u"."_s;
    case Kind::Month:
        return id == MonthNoDate ? QString() : QString::fromLatin1(monthNames[id - Month]);
    case Kind::Day:
        return id == DayNoDate ? QString() : QString::number(id - Day);
    case Kind::None:
        break;
    }
    return QString();
}

QImage TileArt::render(int id, qreal dpr, bool blank)
{
    const QSize size = tileSize(id);
    if (size.isEmpty() || !(dpr > 0.0))
        return QImage();
    QImage image(QSize(qCeil(size.width() * dpr), qCeil(size.height() * dpr)),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(dpr, dpr);
        const bool alert = isAlert(id);
        switch (kind(id)) {
        case Kind::WholeDigit:
            drawDrum(p, size, alert, blank ? QString() : tileText(id), size.height() * 0.62);
            break;
        case Kind::DecimalDigit:
            drawDrum(p, size, alert, blank ? QString() : tileText(id), size.height() * 0.56);
            break;
        case Kind::DecimalPoint:
            drawPoint(p, size, alert, blank);
            break;
        case Kind::Month:
            drawMonth(p, size, id == MonthNoDate ? -1 : id - Month, blank);
            break;
        case Kind::Day:
            drawDay(p, size, id == DayNoDate ? 0 : id - Day, blank);
            break;
        case Kind::None:
            break;
        }
    }
    image.setDevicePixelRatio(dpr);
    return image;
}

QPixmap TileArt::pixmap(int id, qreal dpr)
{
    return cached(id, dpr, false);
}

QPixmap TileArt::blankPixmap(int id, qreal dpr)
{
    return cached(id, dpr, true);
}

void TileArt::clearCache()
{
    cache().clear();
}
