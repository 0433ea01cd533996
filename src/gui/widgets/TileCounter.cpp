#include "TileCounter.h"

#include "TileArt.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

using namespace Qt::StringLiterals;

TileCounter::TileCounter(QWidget *parent)
    : TileCounter(QList<int>(), parent)
{ }

TileCounter::TileCounter(const QList<int> &tiles, QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setTiles(tiles);
}

QString TileCounter::noDataText()
{
    return u"No Data"_s;
}

QString TileCounter::textOf(const QList<int> &tiles)
{
    // A month over a day reads as "JAN 14"; figures and points join up as they stand.
    QString text;
    for (int id : tiles) {
        const QString part = TileArt::tileText(id);
        if (TileArt::kind(id) == TileArt::Kind::Day && !text.isEmpty())
            text += u' ';
        text += part;
    }
    return text;
}

void TileCounter::setTiles(const QList<int> &tiles, const QString &text)
{
    const QSize before = sizeHint();
    m_tiles = tiles;
    m_text = text.isEmpty() ? textOf(tiles) : text;
    m_noData = false;
    updateDescription();
    if (sizeHint() != before)
        updateGeometry();
    update();
}

void TileCounter::setNoData()
{
    m_noData = true;
    updateDescription();
    update();
}

QString TileCounter::text() const
{
    return m_noData ? noDataText() : m_text;
}

void TileCounter::setOrientation(Qt::Orientation orientation)
{
    if (orientation == m_orientation)
        return;
    m_orientation = orientation;
    updateGeometry();
    update();
}

void TileCounter::setFrameWidth(int width)
{
    width = qMax(0, width);
    if (width == m_frameWidth)
        return;
    m_frameWidth = width;
    updateGeometry();
    update();
}

void TileCounter::updateDescription()
{
    setAccessibleName(text());
    setToolTip(text());
}

QSize TileCounter::tilesSize() const
{
    QSize total(0, 0);
    for (int id : m_tiles) {
        const QSize s = TileArt::tileSize(id);
        if (m_orientation == Qt::Horizontal)
            total = QSize(total.width() + s.width(), qMax(total.height(), s.height()));
        else
            total = QSize(qMax(total.width(), s.width()), total.height() + s.height());
    }
    return total;
}

QSize TileCounter::sizeHint() const
{
    const QSize tiles = tilesSize();
    if (tiles.isEmpty())
        return QSize(0, 0);
    return tiles + QSize(2 * m_frameWidth, 2 * m_frameWidth);
}

QSize TileCounter::minimumSizeHint() const
{
    return sizeHint();
}

QList<QRect> TileCounter::tileRects() const
{
    // Tiles are centred across the row (or column) and in the widget, at their own size: never
    // stretched, so they stay crisp.
    QList<QRect> rects;
    const QSize content = tilesSize();
    QPoint origin((width() - content.width()) / 2, (height() - content.height()) / 2);
    for (int id : m_tiles) {
        const QSize s = TileArt::tileSize(id);
        if (m_orientation == Qt::Horizontal) {
            rects.append(QRect(QPoint(origin.x(), origin.y() + (content.height() - s.height()) / 2), s));
            origin.rx() += s.width();
        } else {
            rects.append(QRect(QPoint(origin.x() + (content.width() - s.width()) / 2, origin.y()), s));
            origin.ry() += s.height();
        }
    }
    return rects;
}

void TileCounter::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    const QList<QRect> rects = tileRects();
    if (rects.isEmpty())
        return;
    QRect bounds;
    for (const QRect &r : rects)
        bounds |= r;

    if (m_frameWidth > 0) {
        // A machined bezel: dark inside, a lighter lip outside.
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF outer = QRectF(bounds).adjusted(-m_frameWidth + 0.5, -m_frameWidth + 0.5,
                                                     m_frameWidth - 0.5, m_frameWidth - 0.5);
        QLinearGradient lip(outer.topLeft(), outer.bottomLeft());
        lip.setColorAt(0.0, QColor(0x7a, 0x7f, 0x87));
        lip.setColorAt(1.0, QColor(0x2c, 0x2f, 0x34));
        p.setPen(QPen(QColor(0x1c, 0x1d, 0x20), 1.0));
        p.setBrush(lip);
        p.drawRoundedRect(outer, m_frameWidth + 1.0, m_frameWidth + 1.0);
        p.fillRect(bounds.adjusted(-1, -1, 1, 1), QColor(0x08, 0x08, 0x0a));
        p.setRenderHint(QPainter::Antialiasing, false);
    }

    const qreal dpr = devicePixelRatioF();
    for (int i = 0; i < rects.size(); ++i) {
        const int id = m_tiles.at(i);
        p.drawPixmap(rects.at(i).topLeft(),
                     m_noData ? TileArt::blankPixmap(id, dpr) : TileArt::pixmap(id, dpr));
    }

    if (m_noData) {
        QFont font(u"Arial"_s);
        font.setBold(true);
        font.setPixelSize(qBound(9, bounds.height() / 2, 13));
        if (QFontMetrics(font).horizontalAdvance(noDataText()) > bounds.width() - 4)
            font.setPixelSize(qMax(6,
                                   font.pixelSize() * (bounds.width() - 4)
                                       / QFontMetrics(font).horizontalAdvance(noDataText())));
        p.setFont(font);
        p.setRenderHint(QPainter::TextAntialiasing);
        p.setPen(QColor(0xf3, 0xef, 0xe4));
        p.drawText(bounds, Qt::AlignCenter, noDataText());
    }
}
