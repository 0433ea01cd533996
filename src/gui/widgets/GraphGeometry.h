#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QString>

// The graph control's arithmetic, without painting: the plot rectangle inside the client area,
// the left margin that makes room for the vertical labels, the factors that turn values into
// pixels and where each label goes. Coordinates are the control's logical pixels; the client's
// right and bottom are its width and height (one past the last pixel), as the frame expects.
class GraphGeometry
{
public:
    // A label of the frame: its text, its top-left corner and whether it is drawn at all.
    struct Label
    {
        QString text;
        QPoint position;
        bool visible = true;
    };

    // Pixels per character when a label's width is reckoned.
    static constexpr int CharacterWidth = 6;

    GraphGeometry();

    void setClientSize(int width, int height);
    void setRange(double lower, double upper, int decimals);
    void setXRange(double lower, double upper, int decimals);

    int clientRight() const { return m_clientRight; }
    int clientBottom() const { return m_clientBottom; }
    int plotLeft() const { return m_plotLeft; }
    int plotTop() const { return m_plotTop; }
    int plotRight() const { return m_plotRight; }
    int plotBottom() const { return m_plotBottom; }
    int plotWidth() const { return m_plotRight - m_plotLeft; }
    int plotHeight() const { return m_plotBottom - m_plotTop; }
    // left, top, right and bottom as the rectangle's corners (both inclusive).
    QRect plotRect() const { return QRect(QPoint(m_plotLeft, m_plotTop), QPoint(m_plotRight, m_plotBottom)); }

    double lowerLimit() const { return m_lower; }
    double upperLimit() const { return m_upper; }
    double xLower() const { return m_xLower; }
    double xUpper() const { return m_xUpper; }
    int yDecimals() const { return m_yDecimals; }
    int xDecimals() const { return m_xDecimals; }
    double range() const { return m_upper - m_lower; }
    double xRange() const { return m_xUpper - m_xLower; }
    // Pixels per value unit; 0 for a range of 0 (see map()).
    double verticalFactor() const;
    double horizontalFactor() const;

    // Value to pixel: y = plot bottom - (v - lower) x vertical factor, x = plot left +
    // (x - x lower) x horizontal factor. On an axis whose range is 0 every value lies at the
    // middle of the plot, so a flat series shows as a flat line rather than vanishing.
    QPointF map(double x, double y) const;
    QPoint mapToPixel(double x, double y) const;

    // The horizontal line through the frame, at plot top + plot bottom / 2.
    int middleLineY() const { return m_plotTop + m_plotBottom / 2; }

    // Digits of a limit's whole part less one: the whole part of log10(|v|), made positive.
    // 0 and values that are not finite count as 0, and the count stops at 15.
    static int digitCount(double limit);
    // "%.*lf"
    static QString labelText(double value, int decimals);

    Label upperLabel() const;
    Label lowerLabel() const;
    Label xLowerLabel() const;
    Label xUpperLabel() const;
    // The top-left of the horizontal title and the start of the vertical one (which reads upwards).
    QPoint xTitlePosition() const;
    QPoint yTitlePosition() const;

private:
    void update();
    Label verticalLabel(double value, int y) const;

    int m_clientRight = 0;
    int m_clientBottom = 0;
    int m_plotLeft = 20;
    int m_plotTop = 10;
    int m_plotRight = 0;
    int m_plotBottom = 0;
    double m_lower = 0.0;
    double m_upper = 1.0;
    double m_xLower = 0.0;
    double m_xUpper = 1.0;
    int m_yDecimals = 0;
    int m_xDecimals = 0;
};
