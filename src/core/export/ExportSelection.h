#pragma once

#include "Exporter.h"

// The entries each export writes, chosen with the History screen's filter, in log order.
namespace ExportSelection {

// Every entry, for the HTML page.
EntrySelection all(const EntryList &entries);

// The CSV writes the entries the list shows; the page every entry; the workbook the entries of
// the period whatever the type filter (it keeps the fuel ones itself). now is "now" in seconds.
EntrySelection forFormat(Exporter::Format format, const EntryList &entries, const DataViewFilter &filter,
                         quint32 now);

} // namespace ExportSelection
