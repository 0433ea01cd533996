#include "StatisticsCharts.h"

#include <algorithm>

#include "StatisticsChartsSupport.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

qsizetype ChartSeries::pointCount() const
{
    qsizetype count = 0;
    for (const ChartLine &line : lines)
        count += line.points.size();
    return count;
}

namespace ChartText {

QString shortFuel()
{
    return u"Sorry, Could not find enough fuel to calculate...\nPlease check your data.\n3 or more entries "
           "required to chart."_s;
}

QString shortRepairs()
{
    return u"Sorry, Could not find enough repair costs to calculate...\nPlease check your data.\n3 or more "
           "entries required to chart."_s;
}

QString shortData()
{
    return u"Sorry, Could not find enough data to calculate...\nPlease check your data.\n3 or more entries "
           "required to chart."_s;
}

QString shortUsage()
{
    return u"Sorry, Could not find enough data calculate...\n3 or more entries required to chart."_s;
}

QString shortCompare()
{
    return u"Sorry, Could not find enough data to compare...\n3 or more entries required to chart."_s;
}

} // namespace ChartText

namespace ChartBuild {

ChartSeries start(ChartMode mode, ChartColour background, ChartColour grid)
{
    ChartSeries series;
    series.mode = mode;
    series.title = StatisticsCharts::title(mode);
    series.background = background;
    series.grid = grid;
    return series;
}

void setLabels(ChartSeries &series, std::array<QString, 4> labels, std::array<QString, 4> values)
{
    series.labels = std::move(labels);
    series.values = std::move(values);
}

void lowestHighest(const QList<QPointF> &points, double *lowest, double *highest)
{
    *lowest = points.isEmpty() ? 0.0 : points.first().y();
    *highest = *lowest;
    for (const QPointF &point : points) {
        *lowest = std::min(*lowest, point.y());
        *highest = std::max(*highest, point.y());
    }
}

// Modes 1 to 3: one point per entry at x = 0, 1, 2 ... on an x range of 0 to the count, as the
// fuel economy chart has it.
ChartSeries perEntry(ChartSeries series, const QList<double> &values, ChartColour plot,
                     const QString &message, double *lowest, double *highest)
{
    if (values.size() < StatisticsCharts::MinimumEntries) {
        series.shortDataMessage = message;
        return series;
    }
    series.enoughData = true;
    ChartLine line { plot, {}, QString() };
    for (qsizetype i = 0; i < values.size(); ++i)
        line.points.append(QPointF(double(i), values.at(i)));
    lowestHighest(line.points, lowest, highest);
    series.xLower = 0;
    series.xUpper = double(values.size());
    series.xDecimals = 0;
    series.yLower = *lowest;
    series.yUpper = *highest;
    series.yDecimals = 2;
    series.lines.append(line);
    return series;
}

} // namespace ChartBuild

QString StatisticsCharts::title(ChartMode mode)
{
    switch (mode) {
    case ChartMode::FuelEconomy:
        return u"FUEL ECONOMY"_s;
    case ChartMode::FuelCost:
    case ChartMode::CompareFuelCost:
        return u"FUEL COST"_s;
    case ChartMode::RepairCost:
        return u"REPAIR COST"_s;
    case ChartMode::RunningCost:
        return u"TOTAL RUNNING COST"_s;
    case ChartMode::Usage31Days:
        return u"31 DAY USAGE GRAPH"_s;
    case ChartMode::CompareRunningCost:
        return QString();
    case ChartMode::CompareEconomy:
        return u"FUEL ECONOMY LAST 2 YEARS"_s;
    }
    return QString();
}

QString StatisticsCharts::economyAxisTitle(int economyUnit)
{
    if (economyUnit <= 0)
        return u"MPG"_s;
    if (economyUnit == 1)
        return u"MPL"_s;
    if (economyUnit == 2)
        return u"L/100Km"_s;
    if (economyUnit == 3)
        return u"MPGi"_s;
    return u"KPL"_s;
}

QString StatisticsCharts::fuelEconomyAxisTitle(int economyUnit)
{
    return u"FUEL "_s + economyAxisTitle(economyUnit);
}

QList<OdometerReading> StatisticsCharts::odometerReadings(const EntryList &entries)
{
    QList<OdometerReading> readings;
    for (const CVCItem &item : entries) {
        if (item.entryType == CVCItem::Trip) {
            if (item.odometer >= 1.0)
                readings.append({ item.departTime ? item.departTime : item.entryDate, item.odometer });
            if (item.endOdometer > item.odometer && item.endOdometer >= 1.0)
                readings.append({ item.arriveTime ? item.arriveTime : item.entryDate, item.endOdometer });
        } else if (item.odometer >= 1.0) {
            readings.append({ item.entryDate, item.odometer });
        }
    }
    return readings;
}

ChartSeries StatisticsCharts::build(ChartMode mode, const EntryList &entries, const ChartInput &input)
{
    switch (mode) {
    case ChartMode::FuelEconomy:
        return fuelEconomy(entries, input);
    case ChartMode::FuelCost:
        return fuelCost(entries, input);
    case ChartMode::RepairCost:
        return repairCost(entries, input);
    case ChartMode::RunningCost:
        return runningCost(entries, input);
    case ChartMode::Usage31Days:
        return usage31Days(entries, input);
    case ChartMode::CompareRunningCost:
        return compareRunningCost(entries, input);
    case ChartMode::CompareEconomy:
        return compareEconomy(entries, input);
    case ChartMode::CompareFuelCost:
        return compareFuelCost(entries, input);
    }
    return ChartSeries();
}

ChartSeries StatisticsCharts::fuelEconomy(const EntryList &entries, const ChartInput &input)
{
    ChartSeries series = ChartBuild::start(ChartMode::FuelEconomy, { 0, 0, 75 }, { 192, 192, 255 });
    // The lowest starts at 100 rather than at the first value, so a log whose every economy is
    // above 100 reports 100 as its lowest; the chart has always done so.
    int count = 0;
    double sum = 0.0;
    double lowest = 100.0;
    double highest = 0.0;
    ChartLine line { { 0, 255, 0 }, {}, QString() };
    for (const CVCItem &item : entries) {
        if (item.entryType != CVCItem::Fuel || !(item.economy > 0))
            continue;
        line.points.append(QPointF(double(count), item.economy));
        ++count;
        sum += item.economy;
        lowest = std::min(lowest, item.economy);
        highest = std::max(highest, item.economy);
    }
    if (count < MinimumEntries) {
        series.shortDataMessage = ChartText::shortFuel();
        return series;
    }
    series.enoughData = true;
    ChartBuild::setLabels(series,
                          { u"Number of times fueled:"_s, u"Highest fuel economy:"_s,
                            u"Lowest fuel economy:"_s, u"Average fuel economy:"_s },
                          { cformat("%d", count), cformat("%3.3f", highest), cformat("%3.3f", lowest),
                            cformat("%3.3f", sum / count) });
    series.xLower = 0;
    series.xUpper = count;
    series.xDecimals = 0;
    series.yLower = lowest;
    series.yUpper = highest;
    series.yDecimals = 2;
    series.yTitle = fuelEconomyAxisTitle(input.economyUnit);
    series.xTitle = u"TIMES FUELED"_s;
    series.lines.append(line);
    return series;
}

ChartSeries StatisticsCharts::fuelCost(const EntryList &entries, const ChartInput &)
{
    QList<double> prices;
    for (const CVCItem &item : entries)
        if (item.entryType == CVCItem::Fuel && item.unitPrice > 0)
            prices.append(item.unitPrice);
    double lowest = 0.0;
    double highest = 0.0;
    ChartSeries series
        = ChartBuild::perEntry(ChartBuild::start(ChartMode::FuelCost, { 0, 48, 32 }, { 160, 255, 208 }),
                               prices, { 255, 255, 0 }, ChartText::shortFuel(), &lowest, &highest);
    if (!series.enoughData)
        return series;
    double sum = 0.0;
    for (double price : prices)
        sum += price;
    ChartBuild::setLabels(series,
                          { u"Number price samples:"_s, u"Highest fuel price:"_s, u"Lowest fuel price:"_s,
                            u"Average fuel price:"_s },
                          { cformat("%d", int(prices.size())), cformat("%3.3f", highest),
                            cformat("%3.3f", lowest), cformat("%3.3f", sum / double(prices.size())) });
    series.xTitle = u"TIMES FUELED"_s;
    series.yTitle = u"PRICE"_s;
    return series;
}

ChartSeries StatisticsCharts::repairCost(const EntryList &entries, const ChartInput &)
{
    QList<double> costs;
    for (const CVCItem &item : entries)
        if (item.entryType == CVCItem::Maintenance && item.amount > 0)
            costs.append(item.amount);
    double lowest = 0.0;
    double highest = 0.0;
    ChartSeries series
        = ChartBuild::perEntry(ChartBuild::start(ChartMode::RepairCost, { 64, 0, 0 }, { 255, 192, 192 }),
                               costs, { 255, 160, 0 }, ChartText::shortRepairs(), &lowest, &highest);
    if (!series.enoughData)
        return series;
    double total = 0.0;
    for (double cost : costs)
        total += cost;
    ChartBuild::setLabels(
        series,
        { u"Number of repairs:"_s, u"Most expensive:"_s, u"Least expensive:"_s, u"Total repair cost:"_s },
        { cformat("%d", int(costs.size())), cformat("%6.2f", highest), cformat("%6.2f", lowest),
          cformat("%6.2f", total) });
    series.xTitle = u"REPAIRS"_s;
    series.yTitle = u"COST"_s;
    return series;
}

ChartSeries StatisticsCharts::runningCost(const EntryList &entries, const ChartInput &input)
{
    // Fuel and repair costs entry by entry; the distance is the span of the log's readings.
    QList<double> costs;
    for (const CVCItem &item : entries)
        if ((item.entryType == CVCItem::Fuel || item.entryType == CVCItem::Maintenance) && item.amount > 0)
            costs.append(item.amount);
    double lowest = 0.0;
    double highest = 0.0;
    ChartSeries series
        = ChartBuild::perEntry(ChartBuild::start(ChartMode::RunningCost, { 32, 32, 32 }, { 208, 208, 208 }),
                               costs, { 0, 224, 255 }, ChartText::shortData(), &lowest, &highest);
    if (!series.enoughData)
        return series;
    double total = 0.0;
    for (double cost : costs)
        total += cost;
    const QList<OdometerReading> readings = odometerReadings(entries);
    double first = readings.isEmpty() ? 0.0 : readings.first().odometer;
    double last = first;
    for (const OdometerReading &reading : readings) {
        first = std::min(first, reading.odometer);
        last = std::max(last, reading.odometer);
    }
    const double distance = last - first;
    ChartBuild::setLabels(series,
                          { u"Number of samples:"_s, u"Most expensive:"_s, u"Least expensive:"_s,
                            input.distanceUnit == 1 ? u"Cost per Kilometer:"_s : u"Cost per Mile:"_s },
                          { cformat("%d", int(costs.size())), cformat("%6.2f", highest),
                            cformat("%6.2f", lowest),
                            cformat("%6.2f", distance > 0 ? total / distance : 0.0) });
    series.xTitle = u"ENTRIES"_s;
    series.yTitle = u"COST"_s;
    return series;
}
