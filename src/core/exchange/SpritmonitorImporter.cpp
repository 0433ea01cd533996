#include "SpritmonitorImporter.h"

#include "PeerCsvReader.h"
#include "calc/Units.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

namespace {

// The cost types; a change of oil carries the reminder's name.
QString costTypeName(const QString &code)
{
    static const QHash<QString, QString> names = {
        { u"1"_s, u"Maintenance"_s }, { u"2"_s, u"Repair"_s },       { u"3"_s, u"Change Tires"_s },
        { u"4"_s, u"Oil Change"_s },  { u"5"_s, u"Insurance"_s },    { u"6"_s, u"Tax"_s },
        { u"19"_s, u"Toll"_s },       { u"20"_s, u"Spare Parts"_s },
    };
    return names.value(code);
}

bool isServiceType(const QString &code)
{
    return code == u"1"_s || code == u"2"_s || code == u"3"_s || code == u"4"_s || code == u"20"_s;
}

} // namespace

int SpritmonitorImporter::detect(const QString &, const QByteArray &head) const
{
    const QByteArray firstLine = head.left(head.indexOf('\n')).toLower();
    if (!firstLine.contains(';'))
        return 0;
    if (firstLine.contains("km-stand") || firstLine.contains("tankart") || firstLine.contains("kostenart"))
        return 85;
    if (firstLine.contains("odometer") && (firstLine.contains("quantity") || firstLine.contains("cost type")))
        return 60;
    return 0;
}

PeerImportResult SpritmonitorImporter::read(const std::vector<PeerFile> &files,
                                            const PeerImportOptions &options) const
{
    PeerImportResult result;
    const DateOrder order = options.dateOrder == DateOrder::Auto ? DateOrder::Dmy : options.dateOrder;
    for (const PeerFile &file : files) {
        const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(file.bytes, u';');
        if (rows.empty())
            continue;
        const Columns columns(rows.front().fields);
        if (rows.size() > 1)
            settled(result, file.name, order);
        const int date = columns.find({ u"Datum"_s, u"Date"_s });
        const int odometer = columns.find({ u"Km-Stand"_s, u"Odometer"_s });
        const int quantity = columns.find({ u"Spritmenge"_s, u"Quantity"_s });
        const int total = columns.find({ u"Kosten"_s, u"Total price"_s, u"Costs"_s, u"Cost"_s });
        const int type = columns.find({ u"Tankart"_s, u"Type"_s });
        const int costType = columns.find({ u"Kostenart"_s, u"Cost type"_s });
        const int title = columns.find({ u"Bezeichnung"_s, u"Name"_s, u"Description"_s, u"Title"_s });
        const int note = columns.find({ u"Bemerkung"_s, u"Note"_s, u"Notes"_s });
        const int station = columns.find({ u"Tankstelle"_s, u"Gas station"_s });
        const bool fuel = quantity >= 0;
        if (date < 0 || (!fuel && costType < 0)) {
            result.error = u"%1: neither a Spritmonitor fuelings nor a costs file"_s.arg(file.name);
            return result;
        }
        for (size_t r = 1; r < rows.size(); ++r) {
            const PeerCsvRow &row = rows[r];
            if (row.isBlank())
                continue;
            PeerEntry entry;
            entry.line = row.line;
            entry.date = parseDate(field(row.fields, date), order);
            entry.odometer = number(field(row.fields, odometer), u',');
            entry.distanceUnit = Units::Kilometres;
            entry.total = number(field(row.fields, total), u',');
            entry.notes = field(row.fields, note);
            entry.station = field(row.fields, station);
            if (fuel) {
                entry.kind = PeerEntry::FillUp;
                entry.quantity = number(field(row.fields, quantity), u',');
                entry.liquidUnit = Units::Litres;
                const QString kind = field(row.fields, type);
                if (kind == u"0"_s) {
                    skip(result, file.name, row.line, u"marked invalid"_s);
                    continue;
                }
                entry.partial = kind == u"2"_s;
            } else {
                const QString code = field(row.fields, costType);
                const QString typeName = costTypeName(code);
                const QString name = field(row.fields, title);
                entry.kind = isServiceType(code) ? PeerEntry::Service : PeerEntry::Expense;
                if (typeName.isEmpty())
                    entry.name = name.isEmpty() ? u"Cost"_s : serviceName(name);
                else
                    entry.name = name.isEmpty() ? typeName : typeName + u": "_s + name;
            }
            if (!entry.date.isValid())
                skip(result, file.name, row.line, u"no date"_s);
            else if (!(entry.odometer >= 1.0))
                skip(result, file.name, row.line, u"no odometer reading"_s);
            else if (fuel && !(entry.quantity > 0))
                skip(result, file.name, row.line, u"no fuel quantity"_s);
            else
                result.entries.push_back(entry);
        }
    }
    result.description = describe(title(), result.entries, u"km / litres"_s);
    return result;
}
