#include "ExportSelection.h"

EntrySelection ExportSelection::all(const EntryList &entries)
{
    EntrySelection selected;
    selected.reserve(entries.size());
    for (const CVCItem &item : entries)
        selected.push_back(&item);
    return selected;
}

EntrySelection ExportSelection::forFormat(Exporter::Format format, const EntryList &entries,
                                          const DataViewFilter &filter, quint32 now)
{
    if (format == Exporter::Format::Html)
        return all(entries);
    DataViewFilter chosen = filter;
    if (format == Exporter::Format::Xml)
        chosen.type = DataViewFilter::AllTypes;
    EntrySelection selected;
    for (int position : chosen.listedPositions(entries, now))
        selected.push_back(&entries[size_t(position)]);
    return selected;
}
