#pragma once

#include <QList>
#include <QPointF>
#include <QString>

#include <array>

// The eight charts of the statistics screen, in the order of their buttons and menu items.
enum class ChartMode : int {
    FuelEconomy = 0,
    FuelCost = 1,
    RepairCost = 2,
    RunningCost = 3,
    Usage31Days = 4,
    CompareRunningCost = 5,
    CompareEconomy = 6,
    CompareFuelCost = 7
};

// A colour as three 0..255 components; the core knows no QColor.
struct ChartColour
{
    int red = 0;
    int green = 0;
    int blue = 0;

    // 0xRRGGBB, what the graph control takes.
    quint32 rgb() const { return quint32(red) << 16 | quint32(green) << 8 | quint32(blue); }
    bool operator==(const ChartColour &other) const = default;
};

// One series of the chart, drawn in its own colour as a line through its points in order.
struct ChartLine
{
    ChartColour colour;
    QList<QPointF> points;
    QString name; // the year of a two-year chart's line, else empty
    bool operator==(const ChartLine &other) const = default;
};

// Everything one chart shows: title, the four figures, the axes and the points. When the log
// holds too little for the chart, enoughData is false and only the title and the message are set.
struct ChartSeries
{
    ChartMode mode = ChartMode::FuelEconomy;
    QString title;
    bool enoughData = false;
    QString shortDataMessage;
    std::array<QString, 4> labels;
    std::array<QString, 4> values;

    QString xTitle;
    QString yTitle;
    double xLower = 0.0;
    double xUpper = 0.0;
    int xDecimals = 0;
    double yLower = 0.0;
    double yUpper = 0.0;
    int yDecimals = 2;

    ChartColour background;
    ChartColour grid;
    QList<ChartLine> lines;

    // Number of points over all lines.
    qsizetype pointCount() const;
};
