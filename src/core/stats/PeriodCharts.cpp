// The charts over calendar periods: the last 31 days, and the months of two years.
#include "StatisticsCharts.h"

#include <QDateTime>
#include <QMap>

#include <algorithm>

#include "StatisticsChartsSupport.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int UsageDays = 31;

QDate localDate(quint32 time)
{
    return QDateTime::fromSecsSinceEpoch(time).date();
}

// The odometer at the end of each day that has readings, never going down: a reading below
// an earlier one (an entry out of order) does not make the distance negative.
QMap<QDate, double> dailyOdometer(const QList<OdometerReading> &readings)
{
    QMap<QDate, double> days;
    for (const OdometerReading &reading : readings) {
        if (reading.time == 0)
            continue;
        const QDate date = localDate(reading.time);
        auto it = days.find(date);
        if (it == days.end())
            days.insert(date, reading.odometer);
        else
            *it = std::max(*it, reading.odometer);
    }
    double highest = 0.0;
    for (auto it = days.begin(); it != days.end(); ++it) {
        highest = std::max(highest, *it);
        *it = highest;
    }
    return days;
}

// The odometer at the end of a day: the day's own reading, else a straight line between the
// readings around it; after the last reading it stays put, before the first it is the first.
double odometerAt(const QMap<QDate, double> &days, const QDate &date)
{
    if (days.isEmpty())
        return 0.0;
    auto next = days.upperBound(date);
    if (next == days.begin())
        return next.value();
    auto previous = std::prev(next);
    if (previous.key() == date || next == days.end())
        return previous.value();
    const double span = double(previous.key().daysTo(next.key()));
    const double part = double(previous.key().daysTo(date));
    return previous.value() + (next.value() - previous.value()) * part / span;
}

// Distance driven in a calendar year: its highest reading less the highest before the year
// (or, for the log's first year, less its lowest reading).
double yearDistance(const QList<OdometerReading> &readings, int year)
{
    bool inYear = false;
    bool before = false;
    double highest = 0.0;
    double lowest = 0.0;
    double highestBefore = 0.0;
    for (const OdometerReading &reading : readings) {
        if (reading.time == 0)
            continue;
        const int readingYear = localDate(reading.time).year();
        if (readingYear == year) {
            highest = inYear ? std::max(highest, reading.odometer) : reading.odometer;
            lowest = inYear ? std::min(lowest, reading.odometer) : reading.odometer;
            inYear = true;
        } else if (readingYear < year) {
            highestBefore = before ? std::max(highestBefore, reading.odometer) : reading.odometer;
            before = true;
        }
    }
    if (!inYear)
        return 0.0;
    return highest - (before ? highestBefore : lowest);
}

// Values collected per month of last year (index 0) and this year (index 1).
struct TwoYears
{
    int lastYear = 0;
    int thisYear = 0;
    int thisMonth = 0;
    std::array<std::array<QList<double>, 12>, 2> months;
    int samples = 0;

    // False for entries outside the two years (or without a date).
    bool add(quint32 time, double value)
    {
        if (time == 0)
            return false;
        const QDate date = localDate(time);
        if (date.year() != lastYear && date.year() != thisYear)
            return false;
        months[date.year() == thisYear ? 1 : 0][date.month() - 1].append(value);
        ++samples;
        return true;
    }
    QList<double> year(int index) const
    {
        QList<double> all;
        for (const QList<double> &month : months[index])
            all += month;
        return all;
    }
};

TwoYears twoYears(quint32 now)
{
    TwoYears years;
    const QDate today = localDate(now);
    years.thisYear = today.year();
    years.lastYear = today.year() - 1;
    years.thisMonth = today.month();
    return years;
}

double sum(const QList<double> &values)
{
    double total = 0.0;
    for (double value : values)
        total += value;
    return total;
}

double average(const QList<double> &values)
{
    return values.isEmpty() ? 0.0 : sum(values) / double(values.size());
}

// Last year in red over all twelve months, this year in green up to the current month. A month
// without values is left out (sums count it as 0 instead when zeroMonths is set).
ChartSeries monthlyLines(ChartSeries series, const TwoYears &years, bool averages, bool zeroMonths)
{
    const std::array<ChartColour, 2> colours { ChartColour { 255, 0, 0 }, ChartColour { 0, 255, 0 } };
    for (int index = 0; index < 2; ++index) {
        ChartLine line { colours[index], {}, QString::number(index == 0 ? years.lastYear : years.thisYear) };
        const int months = index == 0 ? 12 : years.thisMonth;
        for (int month = 0; month < months; ++month) {
            const QList<double> &values = years.months[index][month];
            if (values.isEmpty() && !zeroMonths)
                continue;
            line.points.append(QPointF(month + 1, averages ? average(values) : sum(values)));
        }
        series.lines.append(line);
    }
    QList<QPointF> all;
    for (const ChartLine &line : series.lines)
        all += line.points;
    ChartBuild::lowestHighest(all, &series.yLower, &series.yUpper);
    series.yDecimals = 2;
    series.xLower = 1;
    series.xUpper = 12;
    series.xDecimals = 0;
    series.xTitle = u"MONTHS"_s;
    series.enoughData = true;
    return series;
}

QString yearsLabel(const TwoYears &years)
{
    return cformat("Red=%d Green=%d", years.lastYear, years.thisYear);
}

} // namespace

ChartSeries StatisticsCharts::usage31Days(const EntryList &entries, const ChartInput &input)
{
    ChartSeries series = ChartBuild::start(ChartMode::Usage31Days, { 40, 0, 64 }, { 224, 192, 255 });
    const QList<OdometerReading> readings = odometerReadings(entries);
    const QMap<QDate, double> days = dailyOdometer(readings);
    const QDate today = localDate(input.now);
    const QDate first = today.addDays(1 - UsageDays);

    // The readings inside the 31 days, and the last one before them that the first days lean on.
    int count = 0;
    bool anchored = false;
    for (const OdometerReading &reading : readings) {
        if (reading.time == 0)
            continue;
        const QDate date = localDate(reading.time);
        if (date >= first && date <= today)
            ++count;
        else if (date < first)
            anchored = true;
    }
    count += anchored ? 1 : 0;
    if (count < MinimumEntries) {
        series.shortDataMessage = ChartText::shortUsage();
        return series;
    }
    series.enoughData = true;
    ChartLine line { { 255, 128, 255 }, {}, QString() };
    double total = 0.0;
    for (int day = 0; day < UsageDays; ++day) {
        const QDate date = first.addDays(day);
        const double distance = odometerAt(days, date) - odometerAt(days, date.addDays(-1));
        line.points.append(QPointF(day - (UsageDays - 1), distance));
        total += distance;
    }
    double least = 0.0;
    double most = 0.0;
    ChartBuild::lowestHighest(line.points, &least, &most);
    ChartBuild::setLabels(
        series, { u"Number of entries:"_s, u"Most distance:"_s, u"Least diatance:"_s, u"Total distance:"_s },
        { cformat("%d", count), cformat("%9.1f", most), cformat("%9.1f", least), cformat("%9.1f", total) });
    series.xLower = 1 - UsageDays;
    series.xUpper = 0;
    series.xDecimals = 0;
    series.yLower = least;
    series.yUpper = most;
    series.yDecimals = 2;
    series.yTitle = input.distanceUnit == 1 ? u"KILOMETERS"_s : u"MILES"_s;
    series.lines.append(line);
    return series;
}

ChartSeries StatisticsCharts::compareRunningCost(const EntryList &entries, const ChartInput &input)
{
    ChartSeries series = ChartBuild::start(ChartMode::CompareRunningCost, { 0, 0, 0 }, { 192, 192, 192 });
    TwoYears years = twoYears(input.now);
    for (const CVCItem &item : entries)
        if ((item.entryType == CVCItem::Fuel || item.entryType == CVCItem::Maintenance) && item.amount > 0)
            years.add(item.entryDate, item.amount);
    if (years.samples < MinimumEntries) {
        series.shortDataMessage = ChartText::shortCompare();
        return series;
    }
    series = monthlyLines(series, years, false, true);
    series.yTitle = u"COST"_s;
    const QList<OdometerReading> readings = odometerReadings(entries);
    const char *format = input.distanceUnit == 1 ? "%d Cost per Km:" : "%d Cost per Mile:";
    auto perDistance = [&](int index, int year) {
        const double distance = yearDistance(readings, year);
        return cformat("%6.2f", distance > 0 ? sum(years.year(index)) / distance : 0.0);
    };
    ChartBuild::setLabels(series,
                          { u"Number of samples:"_s, cformat(format, years.lastYear),
                            cformat(format, years.thisYear), yearsLabel(years) },
                          { cformat("%d", years.samples), perDistance(0, years.lastYear),
                            perDistance(1, years.thisYear), QString() });
    return series;
}

ChartSeries StatisticsCharts::compareEconomy(const EntryList &entries, const ChartInput &input)
{
    ChartSeries series = ChartBuild::start(ChartMode::CompareEconomy, { 0, 0, 0 }, { 192, 192, 192 });
    TwoYears years = twoYears(input.now);
    for (const CVCItem &item : entries)
        if (item.entryType == CVCItem::Fuel && item.economy > 0)
            years.add(item.entryDate, item.economy);
    if (years.samples < MinimumEntries) {
        series.shortDataMessage = ChartText::shortCompare();
        return series;
    }
    series = monthlyLines(series, years, true, false);
    series.yTitle = economyAxisTitle(input.economyUnit);
    ChartBuild::setLabels(series,
                          { u"Number of samples:"_s, cformat("%d Fuel Economy:", years.lastYear),
                            cformat("%d Fuel Economy:", years.thisYear), yearsLabel(years) },
                          { cformat("%d", years.samples), cformat("%3.3f", average(years.year(0))),
                            cformat("%3.3f", average(years.year(1))), QString() });
    return series;
}

ChartSeries StatisticsCharts::compareFuelCost(const EntryList &entries, const ChartInput &input)
{
    ChartSeries series = ChartBuild::start(ChartMode::CompareFuelCost, { 0, 0, 0 }, { 192, 192, 192 });
    TwoYears years = twoYears(input.now);
    for (const CVCItem &item : entries)
        if (item.entryType == CVCItem::Fuel && item.unitPrice > 0)
            years.add(item.entryDate, item.unitPrice);
    if (years.samples < MinimumEntries) {
        series.shortDataMessage = ChartText::shortUsage();
        return series;
    }
    const QList<double> prices = years.year(0) + years.year(1);
    series = monthlyLines(series, years, true, false);
    series.xTitle = u"TIMES FUELED"_s;
    series.yTitle = u"PRICE"_s;
    ChartBuild::setLabels(
        series,
        { u"Number price samples:"_s, u"Highest fuel price:"_s, u"Lowest fuel price:"_s, yearsLabel(years) },
        { cformat("%d", years.samples), cformat("%3.3f", *std::max_element(prices.begin(), prices.end())),
          cformat("%3.3f", *std::min_element(prices.begin(), prices.end())), QString() });
    return series;
}
