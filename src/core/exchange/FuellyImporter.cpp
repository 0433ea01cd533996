#include "FuellyImporter.h"

#include "PeerCsvReader.h"
#include "calc/Units.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

namespace {

struct Units2
{
    int distance = -1;
    int liquid = -1;
};

// The fuel-ups header names the units: "miles" or "km", "gallons" or "litres".
Units2 unitsOf(const Columns &columns)
{
    Units2 units;
    if (columns.find({ u"miles"_s }) >= 0)
        units.distance = Units::Miles;
    else if (columns.find({ u"km"_s, u"kilometers"_s, u"kilometres"_s }) >= 0)
        units.distance = Units::Kilometres;
    if (columns.find({ u"gallons"_s }) >= 0)
        units.liquid = Units::UsGallons;
    else if (columns.find({ u"litres"_s, u"liters"_s }) >= 0)
        units.liquid = Units::Litres;
    return units;
}

} // namespace

int FuellyImporter::detect(const QString &, const QByteArray &head) const
{
    const QByteArray firstLine = head.left(head.indexOf('\n')).toLower();
    if (firstLine.contains("car_name")
        && (firstLine.contains("fuelup_date") || firstLine.contains("service_date")))
        return 90;
    return 0;
}

PeerImportResult FuellyImporter::read(const std::vector<PeerFile> &files, const PeerImportOptions &) const
{
    PeerImportResult result;
    Units2 units;
    // The fuel-ups file first: its header tells the units the services file leaves unsaid.
    std::vector<const PeerFile *> ordered;
    for (const PeerFile &file : files) {
        if (file.bytes.left(file.bytes.indexOf('\n')).contains("fuelup_date"))
            ordered.insert(ordered.begin(), &file);
        else
            ordered.push_back(&file);
    }
    for (const PeerFile *file : ordered) {
        const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(file->bytes, u',');
        if (rows.empty())
            continue;
        const Columns columns(rows.front().fields);
        const bool fuel = columns.find({ u"fuelup_date"_s }) >= 0;
        if (!fuel && columns.find({ u"service_date"_s }) < 0) {
            result.error = u"%1: not a Fuelly fuel-ups or services file"_s.arg(file->name);
            return result;
        }
        if (fuel)
            units = unitsOf(columns);
        if (rows.size() > 1)
            settled(result, file->name, DateOrder::Ymd); // the app writes its dates one way
        const int odometer = columns.find({ u"odometer"_s });
        const int date = columns.find({ fuel ? u"fuelup_date"_s : u"service_date"_s });
        const int volume = columns.find({ u"gallons"_s, u"litres"_s, u"liters"_s });
        const int price = columns.find({ u"price"_s });
        const int notes = columns.find({ u"notes"_s });
        const int partial = columns.find({ u"partial_fuelup"_s });
        const int missed = columns.find({ u"missed_fuelup"_s });
        const int brand = columns.find({ u"brand"_s });
        const int type = columns.find({ u"service_type"_s });
        const int subTypes = columns.find({ u"sub_service_types"_s });
        const int tags = columns.find({ u"tags"_s });
        for (size_t r = 1; r < rows.size(); ++r) {
            const PeerCsvRow &row = rows[r];
            if (row.isBlank())
                continue;
            PeerEntry entry;
            entry.line = row.line;
            entry.date = parseDate(field(row.fields, date), DateOrder::Ymd);
            if (!entry.date.isValid()) {
                skip(result, file->name, row.line, u"no date"_s);
                continue;
            }
            entry.odometer = number(field(row.fields, odometer), u'.');
            entry.distanceUnit = units.distance;
            entry.notes = field(row.fields, notes);
            if (fuel) {
                entry.kind = PeerEntry::FillUp;
                entry.quantity = number(field(row.fields, volume), u'.');
                entry.liquidUnit = units.liquid;
                entry.total = entry.quantity * number(field(row.fields, price), u'.');
                entry.partial = flag(field(row.fields, partial));
                entry.missed = flag(field(row.fields, missed));
                entry.station = field(row.fields, brand);
                if (!(entry.quantity > 0)) {
                    skip(result, file->name, row.line, u"no fuel quantity"_s);
                    continue;
                }
            } else {
                const QString kind = field(row.fields, type).toLower();
                entry.kind = kind == u"service"_s ? PeerEntry::Service : PeerEntry::Expense;
                entry.total = number(field(row.fields, price), u'.');
                entry.name = serviceNames(field(row.fields, subTypes));
                if (entry.name.isEmpty())
                    entry.name
                        = field(row.fields, tags).isEmpty() ? slugWords(kind) : field(row.fields, tags);
            }
            if (!(entry.odometer >= 1.0)) {
                skip(result, file->name, row.line, u"no odometer reading"_s);
                continue;
            }
            add(result, entry);
        }
    }
    QString unitText;
    if (units.distance >= 0 && units.liquid >= 0)
        unitText = (units.distance == Units::Miles ? u"mi / "_s : u"km / "_s)
            + (units.liquid == Units::Litres ? u"litres"_s : u"gal"_s);
    result.description = describe(title(), result.entries, unitText);
    return result;
}
