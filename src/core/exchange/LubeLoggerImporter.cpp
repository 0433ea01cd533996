#include "LubeLoggerImporter.h"

#include "PeerCsvReader.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

namespace {

const QStringList dateNames = { u"date"_s, u"fuelup_date"_s };
const QStringList odometerNames = { u"odometer"_s, u"odo"_s };
const QStringList quantityNames = { u"fuelconsumed"_s, u"gallons"_s,  u"liters"_s, u"litres"_s,
                                    u"consumption"_s,  u"quantity"_s, u"qty"_s };
const QStringList totalNames = { u"cost"_s, u"total cost"_s, u"totalcost"_s, u"total price"_s };
const QStringList partialNames = { u"partial_fuelup"_s, u"partial tank"_s, u"partial_fill"_s };
const QStringList fullNames = { u"isfilltofull"_s, u"filled up"_s };
const QStringList missedNames
    = { u"missedfuelup"_s, u"missed_fuelup"_s, u"missed fill up"_s, u"missed_fill"_s };
const QStringList noteNames = { u"notes"_s, u"note"_s };

} // namespace

int LubeLoggerImporter::detect(const QString &, const QByteArray &head) const
{
    const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(head.left(head.indexOf('\n')), u',');
    if (rows.empty())
        return 0;
    const Columns columns(rows.front().fields);
    if (columns.find(fullNames) >= 0 && columns.find({ u"fuelconsumed"_s }) >= 0)
        return 85;
    if (columns.find(dateNames) >= 0 && columns.find({ u"description"_s }) >= 0
        && columns.find(totalNames) >= 0)
        return 50;
    if (columns.find(dateNames) >= 0 && columns.find(odometerNames) >= 0 && columns.find(quantityNames) >= 0)
        return 30;
    return 0;
}

PeerImportResult LubeLoggerImporter::read(const std::vector<PeerFile> &files,
                                          const PeerImportOptions &options) const
{
    PeerImportResult result;
    for (const PeerFile &file : files) {
        const std::vector<PeerCsvRow> rows
            = PeerCsvReader::parse(file.bytes, PeerCsvReader::detectSeparator(file.bytes));
        if (rows.empty())
            continue;
        const Columns columns(rows.front().fields);
        const int date = columns.find(dateNames);
        const int odometer = columns.find(odometerNames);
        const int quantity = columns.find(quantityNames);
        const int description = columns.find({ u"description"_s });
        if (date < 0 || (quantity < 0 && description < 0)) {
            result.error
                = u"%1: neither a fuel nor a service file (no date, quantity or description column)"_s.arg(
                    file.name);
            return result;
        }
        const bool fuel = quantity >= 0;
        const int total = columns.find(totalNames);
        const int price = columns.find({ u"price"_s });
        const int partial = columns.find(partialNames);
        const int full = columns.find(fullNames);
        const int missed = columns.find(missedNames);
        const int notes = columns.find(noteNames);

        // The server's locale: its date order from the whole column, and dotted dates go with a
        // decimal comma.
        QStringList dates;
        for (size_t r = 1; r < rows.size(); ++r)
            dates.append(field(rows[r].fields, date));
        const DateOrder order = settleOrder(result, file.name, options.dateOrder, dates);
        const bool dotted = !dates.isEmpty() && dates.first().contains(u'.');
        const QChar mark = dotted ? u',' : u'.';

        for (size_t r = 1; r < rows.size(); ++r) {
            const PeerCsvRow &row = rows[r];
            if (row.isBlank())
                continue;
            PeerEntry entry;
            entry.line = row.line;
            entry.date = parseDate(field(row.fields, date), order);
            entry.odometer = number(field(row.fields, odometer), mark);
            entry.notes = field(row.fields, notes);
            if (fuel) {
                entry.kind = PeerEntry::FillUp;
                entry.quantity = number(field(row.fields, quantity), mark);
                entry.total = total >= 0 ? number(field(row.fields, total), mark)
                                         : entry.quantity * number(field(row.fields, price), mark);
                if (full >= 0)
                    entry.partial = !flag(field(row.fields, full));
                else
                    entry.partial = flag(field(row.fields, partial));
                entry.missed = flag(field(row.fields, missed));
            } else {
                entry.kind = PeerEntry::Service;
                entry.total = number(field(row.fields, total), mark);
                entry.name = serviceName(field(row.fields, description));
            }
            if (!entry.date.isValid())
                skip(result, file.name, row.line, u"unreadable date \"%1\""_s.arg(field(row.fields, date)));
            else if (odometer < 0 || !(entry.odometer >= 1.0))
                skip(result, file.name, row.line, u"no odometer reading"_s);
            else if (fuel && !(entry.quantity > 0))
                skip(result, file.name, row.line, u"no fuel quantity"_s);
            else
                result.entries.push_back(entry);
        }
    }
    // The files carry no units: the vehicle's own are taken.
    result.description = describe(title(), result.entries, QString());
    return result;
}
