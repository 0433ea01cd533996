#include "ACarImporter.h"

#include <map>

#include "PeerCsvReader.h"
#include "calc/Units.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

namespace {

const QStringList &sectionTitles()
{
    static const QStringList titles
        = { u"metadata"_s, u"vehicles"_s, u"fill-up records"_s, u"event records"_s, u"trip records"_s };
    return titles;
}

// A section: its header and its rows, in file order.
struct Section
{
    QStringList header;
    std::vector<const PeerCsvRow *> rows;
};

std::map<QString, Section> sectionsOf(const std::vector<PeerCsvRow> &rows)
{
    std::map<QString, Section> sections;
    Section *current = nullptr;
    bool wantHeader = false;
    for (const PeerCsvRow &row : rows) {
        const QString title = row.fields.size() == 1 ? Columns::fold(row.fields.first()) : QString();
        if (sectionTitles().contains(title)) {
            current = &sections[title];
            wantHeader = true;
        } else if (row.isBlank() || !current) {
            continue;
        } else if (wantHeader) {
            current->header = row.fields;
            wantHeader = false;
        } else {
            current->rows.push_back(&row);
        }
    }
    return sections;
}

// "M/d/yyyy", "dd.MM.yyyy", "yyyy-MM-dd" ...: the order of day, month and year.
DateOrder declaredOrder(const QString &format)
{
    const qsizetype year = format.indexOf(u'y');
    const qsizetype month = format.indexOf(u'M');
    const qsizetype day = format.indexOf(u'd');
    if (year < 0 || month < 0 || day < 0)
        return DateOrder::Auto;
    if (year < month && year < day)
        return DateOrder::Ymd;
    return month < day ? DateOrder::Mdy : DateOrder::Dmy;
}

int distanceOf(const QString &unit, int fallback)
{
    const QString text = unit.trimmed().toLower();
    if (text.startsWith(u"mi"_s))
        return Units::Miles;
    if (text.startsWith(u"k"_s))
        return Units::Kilometres;
    return fallback;
}

int liquidOf(const QString &unit, int fallback)
{
    const QString text = unit.trimmed().toLower();
    if (text.contains(u"imp"_s))
        return Units::ImperialGallons;
    if (text.contains(u"gal"_s))
        return Units::UsGallons;
    if (text.startsWith(u"l"_s))
        return Units::Litres;
    return fallback;
}

// The event header names "Place City" twice while the rows have one value fewer: for such a row
// the repeated name is dropped, so the columns after it line up again.
Columns columnsFor(const QStringList &header, const QStringList &fields)
{
    if (fields.size() + 1 != header.size())
        return Columns(header);
    QStringList names;
    QStringList seen;
    bool dropped = false;
    for (const QString &name : header) {
        const QString folded = Columns::fold(name);
        if (!dropped && seen.contains(folded)) {
            dropped = true;
            continue;
        }
        seen.append(folded);
        names.append(name);
    }
    return Columns(names);
}

// One file's rows and the sections that point into them.
struct ParsedFile
{
    std::vector<PeerCsvRow> rows;
    std::map<QString, Section> sections;
};

// Adds the vehicles a file names, in its Vehicles section or its records, that are not listed
// yet, with the units its Vehicles section gives them.
void collectVehicles(std::map<QString, Section> &sections, QStringList &names,
                     QHash<QString, std::pair<int, int>> &units)
{
    const Section &vehicles = sections[u"vehicles"_s];
    const Columns vehicleColumns(vehicles.header);
    for (const PeerCsvRow *row : vehicles.rows) {
        const QString name = field(row->fields, vehicleColumns.find({ u"Name"_s }));
        if (name.isEmpty() || names.contains(name))
            continue;
        names.append(name);
        units.insert(name,
                     { distanceOf(field(row->fields, vehicleColumns.find({ u"Distance Unit"_s })), -1),
                       liquidOf(field(row->fields, vehicleColumns.find({ u"Volume Unit"_s })), -1) });
    }
    for (const QString &title : { u"fill-up records"_s, u"event records"_s, u"trip records"_s }) {
        const Section &section = sections[title];
        const int column = Columns(section.header).find({ u"Vehicle"_s });
        for (const PeerCsvRow *row : section.rows) {
            const QString name = field(row->fields, column);
            if (!name.isEmpty() && !names.contains(name))
                names.append(name);
        }
    }
}

QString dateText(const QStringList &f, const Columns &c, const QString &date, const QString &time)
{
    return QString(field(f, c.find({ date })) + u' ' + field(f, c.find({ time }))).trimmed();
}

} // namespace

int ACarImporter::detect(const QString &, const QByteArray &head) const
{
    const QByteArray start = head.left(16).trimmed();
    const bool metadata = start.startsWith("Metadata") || start.startsWith("\xEF\xBB\xBFMetadata");
    if (metadata && (head.contains("Date Format") || head.contains("Fill-Up Records")))
        return 95;
    if (head.contains("\nFill-Up Records") || head.contains("\nEvent Records"))
        return 70;
    return metadata ? 50 : 0;
}

PeerImportResult ACarImporter::read(const std::vector<PeerFile> &files,
                                    const PeerImportOptions &options) const
{
    PeerImportResult result;
    // Every file is read first: the vehicles to choose from are those of all files together, in
    // the order they first appear, and the one chosen is taken from each file. Sized once, so the
    // sections' row pointers stay valid.
    std::vector<ParsedFile> parsed(files.size());
    QStringList names;
    QHash<QString, std::pair<int, int>> units;
    for (size_t i = 0; i < files.size(); ++i) {
        ParsedFile &one = parsed[i];
        one.rows = PeerCsvReader::parse(files[i].bytes, u',');
        one.sections = sectionsOf(one.rows);
        if (one.sections[u"fill-up records"_s].header.isEmpty()
            && one.sections[u"event records"_s].header.isEmpty()
            && one.sections[u"trip records"_s].header.isEmpty()) {
            result.error = u"%1: no \"Fill-Up Records\", \"Event Records\" or \"Trip Records\" section"_s.arg(
                files[i].name);
            return result;
        }
        collectVehicles(one.sections, names, units);
    }
    result.vehicles = names;
    QString vehicle = options.sourceVehicle;
    if (vehicle.isEmpty() && names.size() == 1)
        vehicle = names.first();
    const bool single = files.size() == 1;
    if (vehicle.isEmpty() && names.size() > 1) {
        result.vehicleNeeded = true;
        result.error = u"%1 %2 vehicles (%3); choose one."_s.arg(
            single ? files.front().name + u" holds"_s : u"The files hold"_s, QString::number(names.size()),
            names.join(u", "_s));
        return result;
    }
    if (!vehicle.isEmpty() && !names.isEmpty() && !names.contains(vehicle)) {
        result.vehicleNeeded = true;
        result.error = u"%1 no vehicle \"%2\"; %3 %4."_s.arg(
            single ? files.front().name + u" has"_s : u"The files have"_s, vehicle,
            single ? u"it holds"_s : u"they hold"_s, names.join(u", "_s));
        return result;
    }
    const auto [vehicleDistance, vehicleLiquid] = units.value(vehicle, { -1, -1 });
    int shownDistance = vehicleDistance;
    int shownLiquid = vehicleLiquid;

    for (size_t i = 0; i < files.size(); ++i) {
        const PeerFile &file = files[i];
        std::map<QString, Section> &sections = parsed[i].sections;
        const Section &fills = sections[u"fill-up records"_s];
        const Section &events = sections[u"event records"_s];
        const Section &trips = sections[u"trip records"_s];
        // Rows of another vehicle are left out quietly; only this vehicle's rows count.
        auto ours = [&](const QStringList &f, const Columns &c) {
            const QString name = field(f, c.find({ u"Vehicle"_s }));
            return name.isEmpty() || name == vehicle;
        };

        // The date order: the user's choice, else the file's Metadata, else the dates themselves.
        DateOrder order = options.dateOrder;
        const Section &meta = sections[u"metadata"_s];
        if (order == DateOrder::Auto && !meta.rows.empty())
            order = declaredOrder(
                field(meta.rows.front()->fields, Columns(meta.header).find({ u"Date Format"_s })));
        QStringList dates;
        for (const Section *section : { &fills, &events, &trips }) {
            const Columns c(section->header);
            for (const PeerCsvRow *row : section->rows)
                dates.append(field(row->fields, c.find({ u"Date"_s, u"Start Date"_s })));
        }
        order = settleOrder(result, file.name, order, dates);

        const Columns fillColumns(fills.header);
        for (const PeerCsvRow *row : fills.rows) {
            const QStringList &f = row->fields;
            const Columns &c = fillColumns;
            if (!ours(f, c))
                continue;
            PeerEntry entry;
            entry.line = row->line;
            entry.date = parseDate(dateText(f, c, u"Date"_s, u"Time"_s), order);
            entry.odometer = number(field(f, c.find({ u"Odometer Reading"_s })), QChar());
            entry.distanceUnit = distanceOf(field(f, c.find({ u"Distance Unit"_s })), vehicleDistance);
            entry.quantity = number(field(f, c.find({ u"Volume"_s })), QChar());
            entry.liquidUnit = liquidOf(field(f, c.find({ u"Volume Unit"_s })), vehicleLiquid);
            entry.total = number(field(f, c.find({ u"Total Cost"_s })), QChar());
            if (!(entry.total > 0))
                entry.total = entry.quantity * number(field(f, c.find({ u"Price per Unit"_s })), QChar());
            entry.partial = flag(field(f, c.find({ u"Partial Fill-Up?"_s })));
            entry.missed = flag(field(f, c.find({ u"Previously Missed Fill-Ups?"_s })));
            entry.station = field(f, c.find({ u"Fuel Brand"_s }));
            entry.notes = field(f, c.find({ u"Notes"_s }));
            shownDistance = entry.distanceUnit;
            shownLiquid = entry.liquidUnit;
            if (!entry.date.isValid())
                skip(result, file.name, entry.line, u"no date"_s);
            else if (!(entry.odometer >= 1.0))
                skip(result, file.name, entry.line, u"no odometer reading"_s);
            else if (!(entry.quantity > 0))
                skip(result, file.name, entry.line, u"no fuel quantity"_s);
            else
                result.entries.push_back(entry);
        }

        for (const PeerCsvRow *row : events.rows) {
            const QStringList &f = row->fields;
            const Columns c = columnsFor(events.header, f);
            if (!ours(f, c))
                continue;
            PeerEntry entry;
            entry.line = row->line;
            entry.date = parseDate(dateText(f, c, u"Date"_s, u"Time"_s), order);
            entry.odometer = number(field(f, c.find({ u"Odometer Reading"_s })), QChar());
            entry.distanceUnit = distanceOf(field(f, c.find({ u"Distance Unit"_s })), vehicleDistance);
            entry.total = number(field(f, c.find({ u"Total Cost"_s })), QChar());
            entry.station = field(f, c.find({ u"Place Name"_s }));
            entry.notes = field(f, c.find({ u"Notes"_s }));
            const QString type = field(f, c.find({ u"Type"_s }));
            const QString subTypes = serviceNames(field(f, c.find({ u"Sub Types"_s })));
            entry.kind = type.compare(u"Service"_s, Qt::CaseInsensitive) == 0 ? PeerEntry::Service
                                                                              : PeerEntry::Expense;
            entry.name = !subTypes.isEmpty() ? subTypes : serviceName(type.isEmpty() ? u"Service"_s : type);
            if (!entry.date.isValid())
                skip(result, file.name, entry.line, u"no date"_s);
            else if (!(entry.odometer >= 1.0))
                skip(result, file.name, entry.line, u"no odometer reading"_s);
            else
                add(result, entry);
        }

        const Columns tripColumns(trips.header);
        for (const PeerCsvRow *row : trips.rows) {
            const QStringList &f = row->fields;
            const Columns &c = tripColumns;
            if (!ours(f, c))
                continue;
            PeerEntry entry;
            entry.kind = PeerEntry::Trip;
            entry.line = row->line;
            entry.date = parseDate(dateText(f, c, u"Start Date"_s, u"Start Time"_s), order);
            entry.arrival = parseDate(dateText(f, c, u"End Date"_s, u"End Time"_s), order);
            entry.odometer = number(field(f, c.find({ u"Start Odometer Reading"_s })), QChar());
            entry.endOdometer = number(field(f, c.find({ u"End Odometer Reading"_s })), QChar());
            entry.distanceUnit = distanceOf(field(f, c.find({ u"Distance Unit"_s })), vehicleDistance);
            // A trip without its end reading still has its distance.
            if (!(entry.endOdometer > entry.odometer))
                entry.endOdometer = entry.odometer + number(field(f, c.find({ u"Distance"_s })), QChar());
            const QString purpose = field(f, c.find({ u"Purpose"_s }));
            entry.purpose = purpose.isEmpty() ? field(f, c.find({ u"Type"_s })) : purpose;
            entry.contact = field(f, c.find({ u"Client"_s }));
            entry.destination = field(f, c.find({ u"End Location"_s }));
            entry.notes = field(f, c.find({ u"Notes"_s }));
            if (!entry.date.isValid())
                skip(result, file.name, entry.line, u"no start date"_s);
            else if (!(entry.odometer >= 1.0))
                skip(result, file.name, entry.line, u"no start odometer reading"_s);
            else
                result.entries.push_back(entry);
        }
    }
    const QString unitText = unitsText(shownDistance, shownLiquid);
    result.description = describe(vehicle.isEmpty() ? title() : u"%1 (%2)"_s.arg(title(), vehicle),
                                  result.entries, unitText);
    return result;
}
