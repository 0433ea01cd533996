#pragma once

#include <QFont>
#include <QImage>
#include <QList>
#include <QRgb>
#include <QSize>

#include "GraphGeometry.h"

class QPainter;

// The graph control's state and its two layers, without a widget, so the chart dialog, the
// picture export and the command line draw the same chart. The grid layer holds the frame,
// the middle line, the limits and the titles; the plot layer the points. Both are images of
// the client size times the device pixel ratio and are merged by a bitwise OR of the plot
// layer over the grid layer, so the points stay visible where they cross the grid.
class GraphRenderer
{
public:
    // One entry of the point table: the values, the colour it was drawn in and whether it
    // starts a new line (the first point after a reset is a dot, not joined to the one before).
    struct Point
    {
        double x = 0.0;
        double y = 0.0;
        QRgb colour = 0;
        bool startsLine = true;
        bool operator==(const Point &other) const = default;
    };

    GraphRenderer();

    // A size change makes new layers and draws the point table again.
    void resize(const QSize &size, qreal devicePixelRatio = 1.0);
    QSize size() const { return m_size; }
    qreal devicePixelRatio() const { return m_ratio; }

    // These redraw the frame, which clears the chart (the point table too).
    void setRange(double lower, double upper, int decimals);
    void setXRange(double lower, double upper, int decimals);
    void setGridColour(QRgb colour);
    void setBackgroundColour(QRgb colour);
    // The pen of the points to come: solid, width 2.
    void setPlotColour(QRgb colour);
    // The titles only redraw the grid layer; the points stay.
    void setXTitle(const QString &title);
    void setYTitle(const QString &title);

    // The current x position goes back to 0 and the next point starts a new line.
    void reset();
    // Stores the point and draws it: a line from the current point, or a dot for the first.
    void addPoint(double x, double y);

    const GraphGeometry &geometry() const { return m_geometry; }
    const QList<Point> &points() const { return m_points; }
    // The pixel x of the current point; 0 after a reset or a new frame.
    int currentX() const { return m_currentX; }
    QRgb backgroundColour() const { return m_background; }
    QRgb gridColour() const { return m_grid; }
    QRgb plotColour() const { return m_plot; }
    QString xTitle() const { return m_xTitle; }
    QString yTitle() const { return m_yTitle; }

    const QImage &gridLayer() const { return m_gridLayer; }
    const QImage &plotLayer() const { return m_plotLayer; }
    // The grid layer with the plot layer ORed over it: what the control shows.
    QImage composed() const;
    // The same chart drawn as shapes (for SVG): the points in the colours the OR gives them over
    // the background.
    void paintVector(QPainter &painter) const;

    // "Arial", 14 pixels of cell height (12 of em), weight 300; turned 90 degrees for the y title.
    static QFont labelFont();

private:
    void redrawFrame();
    void drawGrid(QPainter &painter) const;
    void drawPoint(QPainter &painter, qsizetype index, QRgb colour) const;
    void replayPoints();
    QImage newLayer() const;

    GraphGeometry m_geometry;
    QSize m_size;
    qreal m_ratio = 1.0;
    QRgb m_background;
    QRgb m_grid;
    QRgb m_plot;
    QString m_xTitle;
    QString m_yTitle;
    QList<Point> m_points;
    bool m_newLine = true;
    int m_currentX = 0;
    QImage m_gridLayer;
    QImage m_plotLayer;
};
