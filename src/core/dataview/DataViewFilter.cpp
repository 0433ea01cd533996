#include "DataViewFilter.h"

#include <QDateTime>

#include "platform/Clock.h"
#include "settings/Options.h"

namespace {

qint64 localMidnight(const QDate &date)
{
    return QDateTime(date, QTime(0, 0)).toSecsSinceEpoch();
}

} // namespace

quint32 DataViewFilter::midnight(const QDate &date)
{
    const qint64 seconds = localMidnight(date);
    return seconds < 0 ? 0u : quint32(std::min<qint64>(seconds, 0xFFFFFFFFLL));
}

QDate DataViewFilter::localDate(quint32 time)
{
    return DeviceTime::toLocal(time).date();
}

DataViewFilter::Span DataViewFilter::span(quint32 now) const
{
    Span span;
    const QDate today = localDate(now);
    const QDate monthStart(today.year(), today.month(), 1);
    switch (period) {
    case Week: {
        // The week as it has always been counted: this month's days from (weekday - 1) days ago
        // onwards, Sunday being 0. So a Sunday lists nothing, days of this week that fell in the
        // previous month never show, and entries dated later this month always do.
        const int weekday = today.dayOfWeek() % 7;
        if (weekday == 0)
            return span;
        const QDate first = today.addDays(-(weekday - 1));
        span.from = localMidnight(std::max(first, monthStart));
        span.to = localMidnight(monthStart.addMonths(1));
        return span;
    }
    case Month:
        span.from = localMidnight(monthStart);
        span.to = localMidnight(monthStart.addMonths(1));
        return span;
    case Year:
        span.from = localMidnight(QDate(today.year(), 1, 1));
        span.to = localMidnight(QDate(today.year() + 1, 1, 1));
        return span;
    case ByDate:
        // Both ends are whole days: an entry at any time of the end date is listed.
        if (startDate.isValid() && endDate.isValid() && startDate <= endDate) {
            span.from = localMidnight(startDate);
            span.to = localMidnight(endDate.addDays(1));
        }
        return span;
    case AllPeriods:
        break;
    }
    span.everything = true;
    return span;
}

bool DataViewFilter::lists(const CVCItem &item, quint32 now) const
{
    return typeMatches(item) && span(now).contains(item.entryDate);
}

std::vector<int> DataViewFilter::listedPositions(const EntryList &entries, quint32 now) const
{
    const Span s = span(now);
    std::vector<int> positions;
    positions.reserve(entries.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        if (typeMatches(entries[i]) && s.contains(entries[i].entryDate))
            positions.push_back(int(i));
    }
    return positions;
}

DataViewFilter DataViewFilter::fromOptions(const Options &options, quint32 now)
{
    DataViewFilter filter;
    const int type = int(options.r5) - 1;
    const int period = int(options.r6) - 1;
    filter.type = type >= Fuel && type <= AllTypes ? Type(type) : AllTypes;
    filter.period = period >= Week && period <= ByDate ? Period(period) : AllPeriods;
    const QDate today = localDate(now);
    filter.startDate
        = options.startDate >= 1.0 ? localDate(quint32(options.startDate)) : QDate(today.year(), 1, 1);
    filter.endDate = options.endDate >= 1.0 ? localDate(quint32(options.endDate)) : today;
    return filter;
}

void DataViewFilter::toOptions(Options &options) const
{
    options.r5 = double(type + 1);
    options.r6 = double(period + 1);
    options.startDate = startDate.isValid() ? double(midnight(startDate)) : 0.0;
    options.endDate = endDate.isValid() ? double(midnight(endDate)) : 0.0;
}
