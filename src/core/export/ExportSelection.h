#pragma once

#include <QDate>

#include "Exporter.h"

// The entries the exports write, chosen by the History screen's filters (type filter and
// period filter of ExportData, and its date range), in log order.
namespace ExportSelection {

// today is the local date of "now"; from and to matter only for the period ByDate, where both
// ends are inclusive whole days.
EntrySelection select(const EntryList &entries, int typeFilter, int periodFilter, const QDate &from,
                      const QDate &to, const QDate &today);

// Every entry, for the HTML page.
EntrySelection all(const EntryList &entries);

// What each format writes: the CSV the entries of both filters, the page every entry, the
// workbook the entries of the date range (whatever the type filter; it keeps the fuel ones).
EntrySelection forFormat(Exporter::Format format, const EntryList &entries, int typeFilter, int periodFilter,
                         const QDate &from, const QDate &to, const QDate &today);

} // namespace ExportSelection
