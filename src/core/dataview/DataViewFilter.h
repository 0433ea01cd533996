#pragma once

#include <QDate>
#include <QtGlobal>

#include <vector>

#include "log/CVCItem.h"

class Options;

// Which entries the History list shows: a type filter, a period filter and, for the period
// "list by date", a range of dates. The exports and the report read the same filter, so what
// they write is what the user sees listed.
//
//   DataViewFilter filter = DataViewFilter::fromOptions(session.options());
//   if (filter.lists(item, clock.now())) ...
//   for (int position : filter.listedPositions(entries, clock.now())) ...
//
// The filter is kept for the whole run in the program's options (R5 type, R6 period, StartDate,
// EndDate), which are written back at exit, so the screen reopens with the filter last used.
class DataViewFilter
{
public:
    // The codes are those of the radio buttons, left to right.
    enum Type { Fuel = 0, Maintenance = 1, Trips = 2, AllTypes = 3 };
    enum Period { Week = 0, Month = 1, Year = 2, AllPeriods = 3, ByDate = 4 };

    Type type = AllTypes;
    Period period = AllPeriods;
    // The range of "list by date", both ends included, in local dates.
    QDate startDate;
    QDate endDate;

    // Whether the list shows the record when "now" (seconds since 1970) is the given time.
    bool lists(const CVCItem &item, quint32 now) const;
    // The positions in the list of the records shown, in list order.
    std::vector<int> listedPositions(const EntryList &entries, quint32 now) const;

    // The period as a half-open span of record times [from, to): every period is one, which
    // keeps a refill of a large log to two comparisons a record. Empty (from == to) when the
    // period lists nothing, as the week does on a Sunday.
    struct Span
    {
        qint64 from = 0;
        qint64 to = 0;
        bool everything = false;
        bool contains(quint32 time) const { return everything || (time >= from && time < to); }
    };
    Span span(quint32 now) const;
    bool typeMatches(const CVCItem &item) const { return type == AllTypes || item.entryType == type; }

    // From the options' R5/R6/StartDate/EndDate. R5 and R6 hold the filter's code plus one, so a
    // fresh store (0) opens on ALL entries of ALL periods; codes out of range read the same way.
    // A StartDate of 0 gives 1 January of the year of now; an EndDate of 0 gives now's date.
    static DataViewFilter fromOptions(const Options &options, quint32 now);
    void toOptions(Options &options) const;

    // A local date as the 32-bit time of its midnight, and back.
    static quint32 midnight(const QDate &date);
    static QDate localDate(quint32 time);

    bool operator==(const DataViewFilter &other) const = default;
};
