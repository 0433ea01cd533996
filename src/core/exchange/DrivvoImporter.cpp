#include "DrivvoImporter.h"

#include "PeerCsvReader.h"
#include "calc/Units.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

int DrivvoImporter::detect(const QString &, const QByteArray &head) const
{
    const QByteArray text = head.toLower();
    if (text.startsWith("##") || text.startsWith("\xef\xbb\xbf##") || text.contains("\n##refuelling"))
        return text.contains("odometer") || text.contains("##refuelling") ? 80 : 40;
    return 0;
}

PeerImportResult DrivvoImporter::read(const std::vector<PeerFile> &files,
                                      const PeerImportOptions &options) const
{
    PeerImportResult result;
    int distanceUnit = -1;
    int liquidUnit = -1;
    for (const PeerFile &file : files) {
        const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(file.bytes, u',');
        size_t r = 0;
        while (r < rows.size()) {
            // A section title ("##Refuelling", "#Servicio"), then its header and rows.
            if (rows[r].isBlank() || !rows[r].fields.first().trimmed().startsWith(u'#')
                || r + 1 >= rows.size()) {
                ++r;
                continue;
            }
            const Columns columns(rows[r + 1].fields);
            r += 2;
            const int odometer = columns.findPrefix(u"Odometer"_s);
            const QList<int> volumes = columns.findAll(u"Volume"_s);
            const QList<int> totals = columns.findAll(u"Total cost"_s);
            const int expenseType = columns.find({ u"Type of expense"_s });
            const int serviceType = columns.find({ u"Type of service"_s });
            const bool fuel = !volumes.isEmpty();
            if (odometer < 0 || (!fuel && expenseType < 0 && serviceType < 0))
                continue;
            const QString odometerName = columns.headerName(odometer);
            distanceUnit = odometerName.contains(u"(mi"_s) ? Units::Miles : Units::Kilometres;
            if (fuel) {
                const QString priceName = columns.headerName(columns.findPrefix(u"Price /"_s));
                liquidUnit = priceName.contains(u"gal"_s) ? Units::UsGallons : Units::Litres;
            }
            const int date = columns.find({ u"Date"_s });
            const int full = columns.find({ u"Filled tank completely"_s });
            const int station = columns.find({ u"Gas station"_s, u"Local expense"_s, u"Local service"_s });
            const int notes = columns.find({ u"Notes"_s });
            // One order for the section's dates: the user's, else the one the column shows.
            QStringList dates;
            for (size_t d = r;
                 d < rows.size() && !rows[d].isBlank() && !rows[d].fields.first().trimmed().startsWith(u'#');
                 ++d)
                dates.append(field(rows[d].fields, date));
            const DateOrder order = settleOrder(result, file.name, options.dateOrder, dates);
            for (; r < rows.size() && !rows[r].isBlank(); ++r) {
                const QStringList &f = rows[r].fields;
                if (f.first().trimmed().startsWith(u'#'))
                    break;
                PeerEntry entry;
                entry.line = rows[r].line;
                entry.date = parseDate(field(f, date), order);
                entry.odometer = number(field(f, odometer), u'.');
                entry.distanceUnit = distanceUnit;
                entry.station = field(f, station);
                entry.notes = field(f, notes);
                // A mixed fill-up lists its second and third fuel in repeated columns.
                for (const int column : totals)
                    entry.total += number(field(f, column), u'.');
                if (fuel) {
                    for (const int column : volumes)
                        entry.quantity += number(field(f, column), u'.');
                    entry.liquidUnit = liquidUnit;
                    entry.partial = !flag(field(f, full));
                } else {
                    entry.kind = serviceType >= 0 ? PeerEntry::Service : PeerEntry::Expense;
                    entry.name = serviceName(field(f, serviceType >= 0 ? serviceType : expenseType));
                }
                if (!entry.date.isValid())
                    skip(result, file.name, entry.line, u"no date"_s);
                else if (!(entry.odometer >= 1.0))
                    skip(result, file.name, entry.line, u"no odometer reading"_s);
                else if (fuel && !(entry.quantity > 0))
                    skip(result, file.name, entry.line, u"no fuel quantity"_s);
                else
                    result.entries.push_back(entry);
            }
        }
    }
    QString unitText;
    if (distanceUnit >= 0 && liquidUnit >= 0)
        unitText = (distanceUnit == Units::Miles ? u"mi / "_s : u"km / "_s)
            + (liquidUnit == Units::Litres ? u"litres"_s : u"gal"_s);
    result.description = describe(title(), result.entries, unitText);
    return result;
}
