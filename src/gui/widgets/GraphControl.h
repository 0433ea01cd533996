#pragma once

#include <QWidget>

#include "GraphRenderer.h"

// The statistics charts' plot: a framed area with its limits and axis titles over a background
// colour, and the points drawn in the plot colour. The state and both layers are the renderer's;
// this widget sizes them to itself (sharp on high-DPI screens) and shows their OR merge.
class GraphControl : public QWidget
{
    Q_OBJECT
public:
    explicit GraphControl(QWidget *parent = nullptr);

    GraphRenderer &graph() { return m_graph; }
    const GraphRenderer &graph() const { return m_graph; }

    void setRange(double lower, double upper, int decimals);
    void setXRange(double lower, double upper, int decimals);
    void setGridColour(QRgb colour);
    void setPlotColour(QRgb colour);
    void setBackgroundColour(QRgb colour);
    void setXTitle(const QString &title);
    void setYTitle(const QString &title);
    void reset();
    void addPoint(double x, double y);

    QSize sizeHint() const override { return QSize(460, 300); }
    QSize minimumSizeHint() const override { return QSize(200, 150); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void changed();

    GraphRenderer m_graph;
};
