#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include "stats/ChartSeries.h"

class GraphRenderer;

// Puts a statistics chart on the graph (ranges, titles, colours, then each line's points) and
// writes it out as a picture. The dialog, "Save Chart..." and the command line share these.
namespace GraphChart {

// The size a chart is drawn at when there is no window to take it from.
inline constexpr QSize DefaultSize { 460, 300 };

void show(GraphRenderer &graph, const ChartSeries &series);

// The chart at size (logical pixels) rendered scale times as fine.
QImage image(const ChartSeries &series, const QSize &size, qreal scale);

// Written atomically: a failure leaves an existing file as it was and says why in *error.
// The format follows the suffix: ".svg" gives SVG, anything else PNG.
bool save(const ChartSeries &series, const QSize &size, qreal scale, const QString &path, QString *error);

} // namespace GraphChart
