#include "GraphControl.h"

#include <QPaintEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

GraphControl::GraphControl(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(u"graph"_s);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(u"Chart"_s);
    m_graph.resize(size(), devicePixelRatioF());
}

void GraphControl::changed()
{
    // The picture is locked in pixels; say in words what it shows.
    const GraphGeometry &g = m_graph.geometry();
    setAccessibleDescription(u"%1 from %2 to %3, %4 from %5 to %6, %7 points"_s.arg(
        m_graph.yTitle(), GraphGeometry::labelText(g.lowerLimit(), g.yDecimals()),
        GraphGeometry::labelText(g.upperLimit(), g.yDecimals()), m_graph.xTitle(),
        GraphGeometry::labelText(g.xLower(), g.xDecimals()),
        GraphGeometry::labelText(g.xUpper(), g.xDecimals()), QString::number(m_graph.points().size())));
    update();
}

void GraphControl::setRange(double lower, double upper, int decimals)
{
    m_graph.setRange(lower, upper, decimals);
    changed();
}

void GraphControl::setXRange(double lower, double upper, int decimals)
{
    m_graph.setXRange(lower, upper, decimals);
    changed();
}

void GraphControl::setGridColour(QRgb colour)
{
    m_graph.setGridColour(colour);
    changed();
}

void GraphControl::setPlotColour(QRgb colour)
{
    m_graph.setPlotColour(colour);
}

void GraphControl::setBackgroundColour(QRgb colour)
{
    m_graph.setBackgroundColour(colour);
    changed();
}

void GraphControl::setXTitle(const QString &title)
{
    m_graph.setXTitle(title);
    changed();
}

void GraphControl::setYTitle(const QString &title)
{
    m_graph.setYTitle(title);
    changed();
}

void GraphControl::reset()
{
    m_graph.reset();
}

void GraphControl::addPoint(double x, double y)
{
    m_graph.addPoint(x, y);
    changed();
}

void GraphControl::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_graph.resize(size(), devicePixelRatioF());
}

void GraphControl::paintEvent(QPaintEvent *event)
{
    // A move to a screen of another pixel ratio needs layers of that ratio.
    if (m_graph.devicePixelRatio() != devicePixelRatioF() || m_graph.size() != size())
        m_graph.resize(size(), devicePixelRatioF());
    QPainter painter(this);
    const QImage picture = m_graph.composed();
    painter.drawImage(event->rect(), picture,
                      QRectF(QPointF(event->rect().topLeft()) * picture.devicePixelRatio(),
                             QSizeF(event->rect().size()) * picture.devicePixelRatio()));
}
