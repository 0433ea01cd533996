#include "GraphChart.h"

#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>

#include "GraphRenderer.h"

using namespace Qt::StringLiterals;

namespace GraphChart {

void show(GraphRenderer &graph, const ChartSeries &series)
{
    graph.reset();
    graph.setXRange(series.xLower, series.xUpper, series.xDecimals);
    graph.setRange(series.yLower, series.yUpper, series.yDecimals);
    graph.setXTitle(series.xTitle);
    graph.setYTitle(series.yTitle);
    graph.setBackgroundColour(0xff000000 | series.background.rgb());
    graph.setGridColour(0xff000000 | series.grid.rgb());
    for (const ChartLine &line : series.lines) {
        graph.reset();
        graph.setPlotColour(0xff000000 | line.colour.rgb());
        for (const QPointF &point : line.points)
            graph.addPoint(point.x(), point.y());
    }
}

QImage image(const ChartSeries &series, const QSize &size, qreal scale)
{
    GraphRenderer graph;
    graph.resize(size, scale);
    show(graph, series);
    return graph.composed();
}

bool save(const ChartSeries &series, const QSize &size, qreal scale, const QString &path, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    if (path.endsWith(u".svg"_s, Qt::CaseInsensitive)) {
        GraphRenderer graph;
        graph.resize(size, 1.0);
        show(graph, series);
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(0, 0), size));
        svg.setTitle(series.title);
        QPainter painter;
        if (!painter.begin(&svg)) {
            *error = u"The SVG writer could not start."_s;
            file.cancelWriting();
            return false;
        }
        graph.paintVector(painter);
        painter.end();
    } else {
        QImage picture = image(series, size, scale);
        // The PNG carries the resolution the scale stands for, so a printer keeps its size.
        picture.setDotsPerMeterX(int(3780 * scale));
        picture.setDotsPerMeterY(int(3780 * scale));
        if (!picture.save(&file, "PNG")) {
            *error = file.errorString().isEmpty() ? u"The PNG writer failed."_s : file.errorString();
            file.cancelWriting();
            return false;
        }
    }
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

} // namespace GraphChart
