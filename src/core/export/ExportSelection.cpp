#include "ExportSelection.h"

#include "platform/Clock.h"

namespace {

bool inPeriod(const QDate &date, int periodFilter, const QDate &from, const QDate &to, const QDate &today)
{
    switch (periodFilter) {
    case ExportData::Week:
        // The week rule counts the weekday from Sunday = 0, so that "today minus the entry's day
        // is at most weekday - 1" selects nothing on a Sunday; counted from Sunday = 1 the same
        // bound reads "weekday - 2", which is the same set of days.
        return date.year() == today.year() && date.month() == today.month()
            && today.day() - date.day() <= today.dayOfWeek() % 7 - 1;
    case ExportData::Month:
        return date.year() == today.year() && date.month() == today.month();
    case ExportData::Year:
        return date.year() == today.year();
    case ExportData::ByDate:
        return date >= from && date <= to;
    default:
        return true;
    }
}

} // namespace

EntrySelection ExportSelection::select(const EntryList &entries, int typeFilter, int periodFilter,
                                       const QDate &from, const QDate &to, const QDate &today)
{
    EntrySelection selected;
    for (const CVCItem &item : entries) {
        if (typeFilter != ExportData::AllTypes && item.entryType != typeFilter)
            continue;
        if (periodFilter != ExportData::AllPeriods
            && !inPeriod(DeviceTime::toLocal(item.entryDate).date(), periodFilter, from, to, today))
            continue;
        selected.push_back(&item);
    }
    return selected;
}

EntrySelection ExportSelection::all(const EntryList &entries)
{
    EntrySelection selected;
    selected.reserve(entries.size());
    for (const CVCItem &item : entries)
        selected.push_back(&item);
    return selected;
}

EntrySelection ExportSelection::forFormat(Exporter::Format format, const EntryList &entries, int typeFilter,
                                          int periodFilter, const QDate &from, const QDate &to,
                                          const QDate &today)
{
    switch (format) {
    case Exporter::Format::Html:
        return all(entries);
    case Exporter::Format::Xml:
        return select(entries, ExportData::AllTypes, periodFilter, from, to, today);
    case Exporter::Format::Csv:
        break;
    }
    return select(entries, typeFilter, periodFilter, from, to, today);
}
