#include "RoadTripImporter.h"

#include <QRegularExpression>

#include "PeerCsvReader.h"
#include "calc/Units.h"

using namespace Qt::StringLiterals;
using namespace PeerText;

namespace {

const QRegularExpression &declaration()
{
    static const QRegularExpression pattern(u"^\\s*ROAD TRIP CSV\\s*\"(.)(.)\""_s);
    return pattern;
}

int liquidOf(const QString &unit, int fallback)
{
    const QString text = unit.toLower();
    if (text.startsWith(u"imp"_s))
        return Units::ImperialGallons;
    if (text.startsWith(u"gal"_s))
        return Units::UsGallons;
    if (text.startsWith(u"l"_s))
        return Units::Litres;
    return fallback;
}

} // namespace

int RoadTripImporter::detect(const QString &, const QByteArray &head) const
{
    return declaration().match(QString::fromUtf8(head.left(64))).hasMatch() ? 95 : 0;
}

PeerImportResult RoadTripImporter::read(const std::vector<PeerFile> &files,
                                        const PeerImportOptions &options) const
{
    PeerImportResult result;
    int distanceUnit = -1;
    for (const PeerFile &file : files) {
        const QString text = QString::fromUtf8(file.bytes);
        const QRegularExpressionMatch declared = declaration().match(text.left(64));
        if (!declared.hasMatch()) {
            result.error = u"%1: no \"ROAD TRIP CSV\" first line"_s.arg(file.name);
            return result;
        }
        const QChar separator = declared.captured(1).at(0);
        const QChar mark = declared.captured(2).at(0);
        const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(text, separator);
        // A section is a title line after a blank line, then its header, then its rows.
        size_t r = 0;
        while (r < rows.size()) {
            if (!rows[r].isBlank()) {
                ++r;
                continue;
            }
            while (r < rows.size() && rows[r].isBlank())
                ++r;
            if (r + 1 >= rows.size())
                break;
            const Columns columns(rows[r + 1].fields);
            r += 2;
            const int odometer = columns.findPrefix(u"Odometer"_s);
            const int amount = columns.find({ u"Fill Amount"_s });
            const int description = columns.find({ u"Description"_s });
            const bool fuel = amount >= 0;
            if (odometer < 0 || (!fuel && description < 0))
                continue;
            const QString odometerName = columns.headerName(odometer);
            if (odometerName.contains(u"(mi"_s))
                distanceUnit = Units::Miles;
            else if (odometerName.contains(u"(km"_s))
                distanceUnit = Units::Kilometres;
            const int date = columns.find({ u"Date"_s });
            const int units = columns.find({ u"Fill Units"_s });
            const int total = columns.find({ fuel ? u"Total Price"_s : u"Cost"_s });
            const int unitPrice = columns.find({ u"Price per Unit"_s });
            const int partial = columns.find({ u"Partial Fill"_s });
            const int reset = columns.find({ u"Reset"_s });
            const int note = columns.find({ u"Note"_s });
            const int location = columns.find({ u"Location"_s });
            const int type = columns.find({ u"Type"_s });
            // One order for the section's dates: the user's, else the one the column shows.
            QStringList dates;
            for (size_t d = r; d < rows.size() && !rows[d].isBlank(); ++d)
                dates.append(field(rows[d].fields, date));
            const DateOrder order = settleOrder(result, file.name, options.dateOrder, dates);
            for (; r < rows.size() && !rows[r].isBlank(); ++r) {
                const QStringList &f = rows[r].fields;
                PeerEntry entry;
                entry.line = rows[r].line;
                entry.date = parseDate(field(f, date), order);
                entry.odometer = number(field(f, odometer), mark);
                entry.distanceUnit = distanceUnit;
                entry.notes = field(f, note);
                entry.station = field(f, location);
                entry.total = number(field(f, total), mark);
                if (fuel) {
                    entry.quantity = number(field(f, amount), mark);
                    entry.liquidUnit = liquidOf(field(f, units), Units::UsGallons);
                    if (!(entry.total > 0))
                        entry.total = entry.quantity * number(field(f, unitPrice), mark);
                    entry.partial = !field(f, partial).isEmpty();
                    entry.missed = !field(f, reset).isEmpty();
                } else {
                    entry.kind = field(f, type).compare(u"Expense"_s, Qt::CaseInsensitive) == 0
                        ? PeerEntry::Expense
                        : PeerEntry::Service;
                    entry.name = serviceName(field(f, description));
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
    if (distanceUnit >= 0)
        unitText = distanceUnit == Units::Miles ? u"mi"_s : u"km"_s;
    result.description = describe(title(), result.entries, unitText);
    return result;
}
