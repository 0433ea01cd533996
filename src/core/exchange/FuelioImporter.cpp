#include "FuelioImporter.h"

#include <QHash>
#include <QRegularExpression>

#include <map>

#include "PeerCsvReader.h"
#include "calc/Units.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

namespace {

// "## Log" and the older "## Log,,,," as one name: "log".
QString sectionName(const PeerCsvRow &row)
{
    if (row.fields.isEmpty() || !row.fields.first().trimmed().startsWith(u"##"_s))
        return QString();
    return row.fields.first().trimmed().mid(2).trimmed().toLower();
}

int liquidFromWords(const QString &header, int fallback)
{
    const QString text = header.toLower();
    if (text.contains(u"imp"_s))
        return Units::ImperialGallons;
    if (text.contains(u"gal"_s))
        return Units::UsGallons;
    if (text.contains(u"lit"_s))
        return Units::Litres;
    return fallback;
}

int distanceFromWords(const QString &header, int fallback)
{
    const QString text = header.toLower();
    if (text.contains(u"(mi"_s))
        return Units::Miles;
    if (text.contains(u"(km"_s))
        return Units::Kilometres;
    return fallback;
}

} // namespace

int FuelioImporter::detect(const QString &fileName, const QByteArray &head) const
{
    if (head.contains("## Vehicle") || head.contains("## Log"))
        return 95;
    if (QRegularExpression(u"^vehicle-.*-sync\\.csv$"_s).match(fileName.section(u'/', -1)).hasMatch())
        return 60;
    return 0;
}

PeerImportResult FuelioImporter::read(const std::vector<PeerFile> &files, const PeerImportOptions &) const
{
    PeerImportResult result;
    int distanceUnit = -1;
    int liquidUnit = -1;
    for (const PeerFile &file : files) {
        const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(file.bytes, u',');
        // Sections by name: the header row and the data rows after it.
        std::map<QString, std::vector<const PeerCsvRow *>> sections;
        QString current;
        for (const PeerCsvRow &row : rows) {
            const QString name = sectionName(row);
            if (!name.isEmpty())
                current = name.section(u',', 0, 0).trimmed();
            else if (!current.isEmpty() && !row.isBlank())
                sections[current].push_back(&row);
        }
        if (!sections.count(u"log"_s) && !sections.count(u"costs"_s)) {
            result.error = u"%1: no \"## Log\" or \"## Costs\" section"_s.arg(file.name);
            return result;
        }
        settled(result, file.name, DateOrder::Ymd); // the app writes its dates one way
        if (const auto &vehicle = sections[u"vehicle"_s]; vehicle.size() >= 2) {
            const Columns columns(vehicle[0]->fields);
            const QString dist = field(vehicle[1]->fields, columns.find({ u"DistUnit"_s }));
            const QString fuel = field(vehicle[1]->fields, columns.find({ u"FuelUnit"_s }));
            if (!dist.isEmpty())
                distanceUnit = dist == u"1"_s ? Units::Miles : Units::Kilometres;
            if (!fuel.isEmpty())
                liquidUnit = fuel == u"1"_s ? Units::UsGallons
                    : fuel == u"2"_s        ? Units::ImperialGallons
                                            : Units::Litres;
        }
        if (const auto &log = sections[u"log"_s]; !log.empty()) {
            const Columns columns(log[0]->fields);
            const int odo = columns.findPrefix(u"odo"_s);
            const int fuel = columns.findPrefix(u"fuel ("_s);
            distanceUnit = distanceFromWords(columns.headerName(odo), distanceUnit);
            liquidUnit = liquidFromWords(columns.headerName(fuel), liquidUnit);
            const int date = columns.find({ u"Data"_s, u"Date"_s });
            const int full = columns.find({ u"Full"_s });
            const int price = columns.find({ u"Price (optional)"_s, u"Price"_s });
            const int volumePrice = columns.find({ u"VolumePrice"_s });
            const int missed = columns.find({ u"Missed"_s });
            const int notes = columns.find({ u"Notes (optional)"_s, u"Notes"_s });
            const int city = columns.find({ u"City (optional)"_s, u"City"_s });
            for (size_t r = 1; r < log.size(); ++r) {
                const QStringList &f = log[r]->fields;
                PeerEntry entry;
                entry.line = log[r]->line;
                entry.date = parseDate(field(f, date), DateOrder::Ymd);
                entry.odometer = number(field(f, odo), u'.');
                entry.distanceUnit = distanceUnit;
                entry.quantity = number(field(f, fuel), u'.');
                entry.liquidUnit = liquidUnit;
                entry.total = number(field(f, price), u'.');
                if (!(entry.total > 0))
                    entry.total = entry.quantity * number(field(f, volumePrice), u'.');
                entry.partial = field(f, full) == u"0"_s;
                entry.missed = flag(field(f, missed));
                entry.notes = field(f, notes);
                entry.station = field(f, city);
                if (!entry.date.isValid())
                    skip(result, file.name, entry.line, u"no date"_s);
                else if (!(entry.odometer >= 1.0))
                    skip(result, file.name, entry.line, u"no odometer reading"_s);
                else if (!(entry.quantity > 0))
                    skip(result, file.name, entry.line, u"no fuel quantity"_s);
                else
                    result.entries.push_back(entry);
            }
        }
        QHash<QString, QString> categories = { { u"1"_s, u"Service"_s }, { u"2"_s, u"Maintenance"_s } };
        if (const auto &rowsOfCategories = sections[u"costcategories"_s]; !rowsOfCategories.empty()) {
            const Columns columns(rowsOfCategories[0]->fields);
            for (size_t r = 1; r < rowsOfCategories.size(); ++r)
                categories.insert(field(rowsOfCategories[r]->fields, columns.find({ u"CostTypeID"_s })),
                                  field(rowsOfCategories[r]->fields, columns.find({ u"Name"_s })));
        }
        if (const auto &costs = sections[u"costs"_s]; !costs.empty()) {
            const Columns columns(costs[0]->fields);
            for (size_t r = 1; r < costs.size(); ++r) {
                const QStringList &f = costs[r]->fields;
                PeerEntry entry;
                entry.line = costs[r]->line;
                if (flag(field(f, columns.find({ u"isTemplate"_s })))
                    || flag(field(f, columns.find({ u"isIncome"_s })))) {
                    skip(result, file.name, entry.line, u"a template or an income, not a cost"_s);
                    continue;
                }
                const QString typeId = field(f, columns.find({ u"CostTypeID"_s }));
                const QString category = categories.value(typeId);
                entry.kind = typeId == u"1"_s || typeId == u"2"_s ? PeerEntry::Service : PeerEntry::Expense;
                entry.date = parseDate(field(f, columns.find({ u"Date"_s })), DateOrder::Ymd);
                entry.odometer = number(field(f, columns.find({ u"Odo"_s })), u'.');
                entry.distanceUnit = distanceUnit;
                entry.total = number(field(f, columns.find({ u"Cost"_s })), u'.');
                entry.notes = field(f, columns.find({ u"Notes"_s }));
                const QString title = field(f, columns.find({ u"CostTitle"_s }));
                entry.name = serviceName(title.isEmpty() ? category : title);
                if (!entry.date.isValid())
                    skip(result, file.name, entry.line, u"no date"_s);
                else if (!(entry.odometer >= 1.0))
                    skip(result, file.name, entry.line, u"no odometer reading"_s);
                else
                    result.entries.push_back(entry);
            }
        }
    }
    const QString unitText = unitsText(distanceUnit, liquidUnit);
    result.description = describe(title(), result.entries, unitText);
    return result;
}
