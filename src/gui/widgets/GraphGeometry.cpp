#include "GraphGeometry.h"

#include <algorithm>
#include <cmath>

#include "platform/CFormat.h"

namespace {
constexpr int MaxDigits = 15;
} // namespace

GraphGeometry::GraphGeometry()
{
    update();
}

void GraphGeometry::setClientSize(int width, int height)
{
    m_clientRight = width;
    m_clientBottom = height;
    update();
}

void GraphGeometry::setRange(double lower, double upper, int decimals)
{
    m_lower = lower;
    m_upper = upper;
    m_yDecimals = decimals;
    update();
}

void GraphGeometry::setXRange(double lower, double upper, int decimals)
{
    m_xLower = lower;
    m_xUpper = upper;
    m_xDecimals = decimals;
    update();
}

int GraphGeometry::digitCount(double limit)
{
    if (limit == 0 || !std::isfinite(limit))
        return 0;
    const double digits = std::fabs(std::trunc(std::log10(std::fabs(limit))));
    return digits > MaxDigits ? MaxDigits : int(digits);
}

QString GraphGeometry::labelText(double value, int decimals)
{
    return cformat("%.*lf", decimals, value);
}

void GraphGeometry::update()
{
    // The plot keeps 10 pixels on the right and 25 below for the horizontal labels; the left
    // margin is widened to fit the longer of the two vertical limits.
    m_plotTop = 10;
    m_plotRight = m_clientRight - 10;
    m_plotBottom = m_clientBottom - 25;
    const int d = std::max(digitCount(m_upper), digitCount(m_lower));
    m_plotLeft = (m_yDecimals + d + 4) * CharacterWidth;
}

double GraphGeometry::verticalFactor() const
{
    const double r = range();
    return r != 0 && std::isfinite(r) ? plotHeight() / r : 0.0;
}

double GraphGeometry::horizontalFactor() const
{
    const double r = xRange();
    return r != 0 && std::isfinite(r) ? plotWidth() / r : 0.0;
}

QPointF GraphGeometry::map(double x, double y) const
{
    const double hf = horizontalFactor();
    const double vf = verticalFactor();
    const double px = hf != 0 ? m_plotLeft + (x - m_xLower) * hf : (m_plotLeft + m_plotRight) / 2.0;
    const double py = vf != 0 ? m_plotBottom - (y - m_lower) * vf : (m_plotTop + m_plotBottom) / 2.0;
    return QPointF(px, py);
}

QPoint GraphGeometry::mapToPixel(double x, double y) const
{
    const QPointF p = map(x, y);
    return QPoint(int(std::lround(p.x())), int(std::lround(p.y())));
}

GraphGeometry::Label GraphGeometry::verticalLabel(double value, int y) const
{
    Label label;
    label.text = labelText(value, m_yDecimals);
    int x = m_plotLeft - CharacterWidth * int(label.text.size());
    if (x < 0)
        x = m_plotLeft - 36;
    label.position = QPoint(x, y);
    // Only two-decimal axes carry their limits; others show the title alone.
    label.visible = m_yDecimals == 2;
    return label;
}

GraphGeometry::Label GraphGeometry::upperLabel() const
{
    return verticalLabel(m_upper, m_plotTop);
}

GraphGeometry::Label GraphGeometry::lowerLabel() const
{
    return verticalLabel(m_lower, m_plotBottom - 10);
}

GraphGeometry::Label GraphGeometry::xLowerLabel() const
{
    return { labelText(m_xLower, m_xDecimals), QPoint(m_plotLeft, m_plotBottom + 4), true };
}

GraphGeometry::Label GraphGeometry::xUpperLabel() const
{
    const QString text = labelText(m_xUpper, m_xDecimals);
    return { text, QPoint(m_plotRight - CharacterWidth * int(text.size()), m_plotBottom + 4), true };
}

QPoint GraphGeometry::xTitlePosition() const
{
    return QPoint((m_plotRight + m_plotLeft) / 2 - 30, m_plotBottom + 6);
}

QPoint GraphGeometry::yTitlePosition() const
{
    return QPoint(m_plotLeft / 2 - 15, (m_plotBottom + m_plotTop) / 2 + 38);
}
