#include "GraphRenderer.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {
constexpr int PlotPenWidth = 2;
} // namespace

GraphRenderer::GraphRenderer()
    // A new control looks like the fuel economy chart until it is told otherwise.
    : m_background(qRgb(0, 0, 75))
    , m_grid(qRgb(192, 192, 255))
    , m_plot(qRgb(0, 255, 0))
{ }

QFont GraphRenderer::labelFont()
{
    QFont font(u"Arial"_s);
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(12);
    font.setWeight(QFont::Light);
    return font;
}

QImage GraphRenderer::newLayer() const
{
    const QSize pixels = (QSizeF(m_size) * m_ratio).toSize();
    QImage layer(pixels.expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    layer.setDevicePixelRatio(m_ratio);
    layer.fill(m_background);
    return layer;
}

void GraphRenderer::resize(const QSize &size, qreal devicePixelRatio)
{
    m_size = size;
    m_ratio = devicePixelRatio > 0 ? devicePixelRatio : 1.0;
    m_geometry.setClientSize(size.width(), size.height());
    m_gridLayer = QImage();
    m_plotLayer = QImage();
    const QList<Point> points = m_points;
    redrawFrame();
    m_points = points;
    replayPoints();
}

void GraphRenderer::setRange(double lower, double upper, int decimals)
{
    m_geometry.setRange(lower, upper, decimals);
    redrawFrame();
}

void GraphRenderer::setXRange(double lower, double upper, int decimals)
{
    m_geometry.setXRange(lower, upper, decimals);
    redrawFrame();
}

void GraphRenderer::setGridColour(QRgb colour)
{
    m_grid = colour;
    redrawFrame();
}

void GraphRenderer::setBackgroundColour(QRgb colour)
{
    m_background = colour;
    redrawFrame();
}

void GraphRenderer::setPlotColour(QRgb colour)
{
    m_plot = colour;
}

void GraphRenderer::setXTitle(const QString &title)
{
    m_xTitle = title;
    if (m_gridLayer.isNull())
        return;
    QPainter painter(&m_gridLayer);
    drawGrid(painter);
}

void GraphRenderer::setYTitle(const QString &title)
{
    m_yTitle = title;
    setXTitle(m_xTitle);
}

void GraphRenderer::reset()
{
    m_currentX = 0;
    m_newLine = true;
}

void GraphRenderer::redrawFrame()
{
    m_gridLayer = newLayer();
    {
        QPainter painter(&m_gridLayer);
        drawGrid(painter);
    }
    m_plotLayer = newLayer();
    m_points.clear();
    m_currentX = 0;
    m_newLine = true;
}

void GraphRenderer::drawGrid(QPainter &painter) const
{
    const GraphGeometry &g = m_geometry;
    painter.fillRect(QRect(QPoint(0, 0), m_size), QColor(m_background));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QColor(m_grid), 1));
    // The frame stands one pixel outside the plot on the right and at the bottom.
    const QPoint corners[] = { QPoint(g.plotLeft(), g.plotTop()), QPoint(g.plotRight() + 1, g.plotTop()),
                               QPoint(g.plotRight() + 1, g.plotBottom() + 1),
                               QPoint(g.plotLeft(), g.plotBottom() + 1), QPoint(g.plotLeft(), g.plotTop()) };
    painter.drawPolyline(corners, 5);
    painter.drawLine(QPoint(g.plotLeft(), g.middleLineY()), QPoint(g.plotRight() + 1, g.middleLineY()));

    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setFont(labelFont());
    const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip;
    for (const GraphGeometry::Label &label :
         { g.upperLabel(), g.lowerLabel(), g.xLowerLabel(), g.xUpperLabel() }) {
        if (!label.visible)
            continue;
        // The places are reckoned at 6 pixels a character; a wider face is narrowed to keep
        // the numbers off the frame.
        const int room = GraphGeometry::CharacterWidth * int(label.text.size());
        const int width = painter.fontMetrics().horizontalAdvance(label.text);
        painter.save();
        if (width > room && width > 0) {
            painter.translate(label.position);
            painter.scale(double(room) / width, 1.0);
            painter.drawText(QRect(QPoint(0, 0), QSize(1, 1)), flags, label.text);
        } else {
            painter.drawText(QRect(label.position, QSize(1, 1)), flags, label.text);
        }
        painter.restore();
    }
    painter.drawText(QRect(g.xTitlePosition(), QSize(1, 1)), flags, m_xTitle);
    painter.save();
    painter.translate(g.yTitlePosition());
    painter.rotate(-90);
    painter.drawText(QRect(0, 0, 1, 1), flags, m_yTitle);
    painter.restore();
}

void GraphRenderer::drawPoint(QPainter &painter, qsizetype index, QRgb colour) const
{
    const Point &point = m_points.at(index);
    const QPoint here = m_geometry.mapToPixel(point.x, point.y);
    if (point.startsLine || index == 0) {
        // A dot of the pen's width, covering the point's pixel and the ones above and left of it.
        painter.fillRect(QRect(here - QPoint(1, 1), QSize(PlotPenWidth, PlotPenWidth)), QColor(colour));
        return;
    }
    const Point &before = m_points.at(index - 1);
    painter.setPen(QPen(QColor(colour), PlotPenWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawLine(m_geometry.mapToPixel(before.x, before.y), here);
}

void GraphRenderer::addPoint(double x, double y)
{
    if (m_plotLayer.isNull())
        m_plotLayer = newLayer();
    m_points.append({ x, y, m_plot, m_newLine });
    m_newLine = false;
    QPainter painter(&m_plotLayer);
    painter.setRenderHint(QPainter::Antialiasing, false);
    drawPoint(painter, m_points.size() - 1, m_plot);
    m_currentX = m_geometry.mapToPixel(x, y).x();
}

void GraphRenderer::replayPoints()
{
    if (m_points.isEmpty())
        return;
    QPainter painter(&m_plotLayer);
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (qsizetype i = 0; i < m_points.size(); ++i)
        drawPoint(painter, i, m_points.at(i).colour);
    m_currentX = m_geometry.mapToPixel(m_points.last().x, m_points.last().y).x();
    m_newLine = false;
}

QImage GraphRenderer::composed() const
{
    if (m_gridLayer.isNull())
        return QImage();
    QImage result = m_gridLayer.copy();
    result.setDevicePixelRatio(m_ratio);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::RasterOp_SourceOrDestination);
    painter.drawImage(QPoint(0, 0), m_plotLayer);
    return result;
}

void GraphRenderer::paintVector(QPainter &painter) const
{
    painter.save();
    drawGrid(painter);
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (qsizetype i = 0; i < m_points.size(); ++i)
        drawPoint(painter, i, m_points.at(i).colour | m_background);
    painter.restore();
}
