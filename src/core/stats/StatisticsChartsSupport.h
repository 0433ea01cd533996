#pragma once

#include "ChartSeries.h"

// Pieces the chart builders share across their source files.
namespace ChartText {
QString shortFuel();
QString shortRepairs();
QString shortData();
QString shortUsage();
QString shortCompare();
} // namespace ChartText

namespace ChartBuild {
// A series of the mode with its title and colours.
ChartSeries start(ChartMode mode, ChartColour background, ChartColour grid);
void setLabels(ChartSeries &series, std::array<QString, 4> labels, std::array<QString, 4> values);
// Smallest and largest y of the points (0 and 0 for none).
void lowestHighest(const QList<QPointF> &points, double *lowest, double *highest);
// One point per value; too few values leave the series short with the message.
ChartSeries perEntry(ChartSeries series, const QList<double> &values, ChartColour plot,
                     const QString &message, double *lowest, double *highest);
} // namespace ChartBuild
