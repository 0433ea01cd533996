#pragma once

#include <QList>
#include <QString>

#include "ChartSeries.h"
#include "log/CVCItem.h"

// What the charts need to know besides the log: the vehicle's units and today's date.
struct ChartInput
{
    int distanceUnit = 0; // 0 miles, 1 kilometres
    int economyUnit = 0; // 0 MPG .. 4 KPL
    quint32 now = 0; // "today" of the 31-day and the two-year charts (local calendar)
};

// An odometer reading of the log with its time: fill-ups, repairs, trip starts and trip ends.
struct OdometerReading
{
    quint32 time = 0;
    double odometer = 0.0;
};

// The series and figures of the statistics charts, worked out from a vehicle's entry list.
// Modes 0..3 follow the log entry by entry, mode 4 the last 31 days, modes 5..7 the calendar
// months of this year against last year.
class StatisticsCharts
{
public:
    static constexpr int ModeCount = 8;
    // At least this many usable entries make a chart.
    static constexpr int MinimumEntries = 3;

    static ChartSeries build(ChartMode mode, const EntryList &entries, const ChartInput &input);

    // The title a mode's chart carries (empty for the running cost comparison, which has none).
    static QString title(ChartMode mode);
    // "FUEL MPG", "FUEL MPL", "FUEL L/100Km", "FUEL MPGi", "FUEL KPL"; 0 or less is MPG, 4 or more KPL.
    static QString fuelEconomyAxisTitle(int economyUnit);
    // The same without "FUEL ".
    static QString economyAxisTitle(int economyUnit);

    // Every reading of at least 1.0 in list order; a trip gives its start and, when it is
    // longer, its end (departure and arrival times, else the entry date).
    static QList<OdometerReading> odometerReadings(const EntryList &entries);

    // The individual builders, public for the tests.
    static ChartSeries fuelEconomy(const EntryList &entries, const ChartInput &input);
    static ChartSeries fuelCost(const EntryList &entries, const ChartInput &input);
    static ChartSeries repairCost(const EntryList &entries, const ChartInput &input);
    static ChartSeries runningCost(const EntryList &entries, const ChartInput &input);
    static ChartSeries usage31Days(const EntryList &entries, const ChartInput &input);
    static ChartSeries compareRunningCost(const EntryList &entries, const ChartInput &input);
    static ChartSeries compareEconomy(const EntryList &entries, const ChartInput &input);
    static ChartSeries compareFuelCost(const EntryList &entries, const ChartInput &input);
};
