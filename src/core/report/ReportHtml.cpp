#include "ReportHtml.h"

#include <QSaveFile>

#include <algorithm>
#include <cmath>

#include "calc/Units.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"

using namespace Qt::StringLiterals;

namespace {

const char *const styleSheet = R"(body{font-family:sans-serif;font-size:10pt;color:#111;margin:1.5em}
h1{font-size:16pt;margin:0 0 .3em}h2{font-size:12.5pt;border-bottom:1px solid #888;margin:1.2em 0 .4em}
table{border-collapse:collapse;margin:.3em 0 .8em}th,td{border:1px solid #bbb;padding:2px 6px;text-align:left}
th{background:#eee}td.n,th.n{text-align:right}tbody.total td{font-weight:bold;background:#f6f6f6}
dl{display:grid;grid-template-columns:max-content auto;gap:1px 1em;margin:.3em 0}dt{color:#444}dd{margin:0}
.empty{font-style:italic}svg{max-width:100%;height:auto}svg text{font-family:sans-serif;font-size:10px}
@page{margin:15mm 12mm}
@media print{body{margin:0;font-size:9pt}
tr,dl,svg{page-break-inside:avoid;break-inside:avoid}thead{display:table-header-group}h2{page-break-after:avoid;break-after:avoid}}
)";

struct Writer
{
    const SummaryReport &r;
    const LocaleFormats &locale;
    QString out;

    QString money(double value) const
    {
        return ReportHtml::escape(CVCItem::moneyText(value, locale, false).trimmed());
    }
    QString date(quint32 time) const
    {
        return ReportHtml::escape(locale.shortDate(DeviceTime::toLocal(time)));
    }
    QString time(quint32 t) const
    {
        return t == 0 ? QString() : ReportHtml::escape(locale.shortTime(DeviceTime::toLocal(t)));
    }
    QString number(double value, int decimals = 0) const { return QString::number(value, 'f', decimals); }
    QString unitWord() const { return r.vehicle.distanceUnit == Units::Kilometres ? u"km"_s : u"mile"_s; }
    QString liquidWord() const
    {
        return r.vehicle.liquidUnit == Units::Litres         ? u"litres"_s
            : r.vehicle.liquidUnit == Units::ImperialGallons ? u"imp. gallons"_s
                                                             : u"gallons"_s;
    }
    QString economyUnit() const { return CVCItem::economyUnitName(r.vehicle.economyUnit); }

    void pair(const QString &label, const QString &value)
    {
        out += u"<dt>"_s + label + u"</dt><dd>"_s + value + u"</dd>\n"_s;
    }
    void head(std::initializer_list<QString> cells, const char *align)
    {
        out += u"<thead><tr>"_s;
        int i = 0;
        for (const QString &cell : cells)
            out += (align[i++] == 'n' ? u"<th class=\"n\">"_s : u"<th>"_s) + cell + u"</th>"_s;
        out += u"</tr></thead>\n"_s;
    }
    void row(std::initializer_list<QString> cells, const char *align)
    {
        out += u"<tr>"_s;
        int i = 0;
        const QString open = u"td"_s;
        for (const QString &cell : cells)
            out += u'<' + open + (align[i++] == 'n' ? u" class=\"n\">"_s : u">"_s) + cell + u"</"_s + open
                + u'>';
        out += u"</tr>\n"_s;
    }
    static QString e(const QString &text) { return ReportHtml::escape(text); }

    void header();
    void fuel();
    void maintenance();
    void trips();
    void running();
    QString monthlyChart() const;
    QString economyChart() const;
};

void Writer::header()
{
    const QString name = r.vehicle.name.isEmpty() ? u"UnKnown"_s : r.vehicle.name;
    out += u"<h1>Vehicle report: "_s + e(name) + u"</h1>\n<dl>\n"_s;
    pair(u"Vehicle"_s, e(QStringList { r.vehicle.make, r.vehicle.model }.join(u' ').trimmed()));
    pair(u"Year"_s, r.vehicle.year > 0 ? QString::number(r.vehicle.year) : QString());
    pair(u"Plate"_s, e(r.vehicle.plate));
    pair(u"VIN"_s, e(r.vehicle.vin));
    pair(u"Period"_s, e(locale.shortDate(r.from)) + u" &ndash; "_s + e(locale.shortDate(r.to)));
    pair(u"Odometer"_s, number(r.startOdometer) + u" &ndash; "_s + number(r.endOdometer));
    pair(u"Distance driven"_s,
         number(r.distance) + u' '
             + (r.vehicle.distanceUnit == Units::Kilometres ? u"km"_s
                    : r.distance == 1                       ? u"mile"_s
                                                            : u"miles"_s));
    pair(u"Report date"_s, e(locale.shortDate(r.reportDate)));
    out += u"</dl>\n"_s;
    if (r.empty)
        out += u"<p class=\"empty\">No entries were logged in this period.</p>\n"_s;
}

void Writer::fuel()
{
    out += u"<h2>Fuel</h2>\n"_s;
    if (r.fillUps.empty()) {
        out += u"<p class=\"empty\">No fill-ups in this period.</p>\n"_s;
        return;
    }
    out += u"<dl>\n"_s;
    pair(u"Fill-ups"_s, QString::number(r.fillUps.size()));
    pair(u"Quantity"_s, number(r.fuelQuantity, 3) + u' ' + liquidWord());
    pair(u"Cost"_s, money(r.fuelCost));
    pair(u"Average price"_s,
         e(cformat("%s%.3f", locale.currencySymbol().toUtf8().constData(), r.averagePrice)));
    pair(u"Lowest / highest price"_s,
         e(cformat("%s%.3f / %s%.3f", locale.currencySymbol().toUtf8().constData(), r.lowestPrice,
                   locale.currencySymbol().toUtf8().constData(), r.highestPrice)));
    pair(u"Average economy"_s,
         r.economyCount > 0 ? number(r.averageEconomy, 2) + u' ' + economyUnit() + u" ("
                 + QString::number(r.economyCount) + u" full fill-ups)"_s
                            : u"not enough full fill-ups"_s);
    pair(u"Fuel cost per "_s + unitWord(),
         e(cformat("%s%.3f", locale.currencySymbol().toUtf8().constData(), r.fuelCostPerDistance)));
    out += u"</dl>\n<table>\n"_s;
    head({ u"Date"_s, u"Station"_s, u"Odometer"_s, u"Quantity"_s, u"Price"_s, u"Cost"_s, u"Economy"_s },
         "ttnnnnn");
    out += u"<tbody>\n"_s;
    for (const CVCItem &f : r.fillUps)
        row({ date(f.entryDate), e(f.station), number(f.odometer),
              number(f.fuelQuantity, 3) + u' ' + e(f.fuelMeasure),
              e(cformat("%s%.3f", locale.currencySymbol().toUtf8().constData(), f.unitPrice)),
              money(f.amount), f.notFull != 0 ? u"partial"_s : number(f.economy, 2) },
            "ttnnnnn");
    out += u"</tbody>\n<tbody class=\"total\">\n"_s;
    row({ u"Total"_s, QString(), QString(), number(r.fuelQuantity, 3), QString(), money(r.fuelCost),
          QString() },
        "ttnnnnn");
    out += u"</tbody>\n</table>\n"_s;
}

void Writer::maintenance()
{
    out += u"<h2>Maintenance</h2>\n"_s;
    if (r.jobs.empty()) {
        out += u"<p class=\"empty\">No maintenance in this period.</p>\n"_s;
        return;
    }
    out += u"<table>\n"_s;
    head({ u"Date"_s, u"Service"_s, u"Location"_s, u"Invoice"_s, u"Odometer"_s, u"Cost"_s, u"Note"_s },
         "ttttnnt");
    out += u"<tbody>\n"_s;
    for (const CVCItem &j : r.jobs)
        row({ date(j.entryDate), e(j.typeText), e(j.station), e(j.invoice), number(j.odometer),
              money(j.amount), e(j.notes) },
            "ttttnnt");
    out += u"</tbody>\n<tbody class=\"total\">\n"_s;
    row({ u"Total"_s, QString(), QString(), QString(), QString(), money(r.maintenanceTotal), QString() },
        "ttttnnt");
    out += u"</tbody>\n</table>\n<table>\n"_s;
    head({ u"Service"_s, u"Jobs"_s, u"Total"_s }, "tnn");
    out += u"<tbody>\n"_s;
    for (const SummaryReport::ServiceTotal &s : r.services)
        row({ e(s.name), QString::number(s.count), money(s.total) }, "tnn");
    out += u"</tbody>\n</table>\n"_s;
    if (!r.reminderResets.empty()) {
        out += u"<p>Reminders reset in this period:</p>\n<table>\n"_s;
        head({ u"Reminder"_s, u"Date"_s, u"Odometer"_s }, "ttn");
        out += u"<tbody>\n"_s;
        for (const SummaryReport::ReminderReset &reset : r.reminderResets)
            row({ e(reset.reminder), date(reset.date), number(reset.odometer) }, "ttn");
        out += u"</tbody>\n</table>\n"_s;
    }
}

void Writer::trips()
{
    out += u"<h2>Trips</h2>\n"_s;
    if (r.trips.empty() && r.openTrips.empty()) {
        out += u"<p class=\"empty\">No trips in this period.</p>\n"_s;
        return;
    }
    out += u"<p>Rate: "_s
        + e(cformat("%s%.3f", locale.currencySymbol().toUtf8().constData(), r.vehicle.costPerMile))
        + u" per "_s + unitWord() + u"; claim = distance &times; rate + tolls + parking.</p>\n<table>\n"_s;
    head({ u"Purpose"_s, u"Trips"_s, u"Distance"_s, u"Tolls"_s, u"Parking"_s, u"Claim"_s }, "tnnnnn");
    out += u"<tbody>\n"_s;
    for (const SummaryReport::PurposeTotal &p : r.purposes)
        row({ e(p.purpose), QString::number(p.count), number(p.distance), money(p.tolls), money(p.parking),
              money(p.claim) },
            "tnnnnn");
    out += u"</tbody>\n<tbody class=\"total\">\n"_s;
    for (const SummaryReport::PurposeTotal *p : { &r.business, &r.personal, &r.allTrips })
        row({ e(p->purpose), QString::number(p->count), number(p->distance), money(p->tolls),
              money(p->parking), money(p->claim) },
            "tnnnnn");
    out += u"</tbody>\n</table>\n"_s;
    const auto tripTable = [this](const std::vector<CVCItem> &list, bool claimed) {
        out += u"<table>\n"_s;
        head({ u"Date"_s, u"Depart"_s, u"Arrive"_s, u"From"_s, u"To"_s, u"Distance"_s, u"Purpose"_s,
               u"Destination"_s, u"Contact"_s, u"Claim"_s },
             "tttnnntttn");
        out += u"<tbody>\n"_s;
        for (const CVCItem &t : list)
            row({ date(SummaryReport::countingTime(t)), time(t.departTime),
                  claimed ? time(t.arriveTime) : QString(), number(t.odometer),
                  claimed ? number(t.endOdometer) : QString(), claimed ? number(t.tripDistance()) : QString(),
                  e(t.purpose), e(t.destination), e(t.contact),
                  claimed ? money(SummaryReport::claim(t, r.vehicle.costPerMile)) : u"open"_s },
                "tttnnntttn");
        out += u"</tbody>\n"_s;
        if (claimed) {
            out += u"<tbody class=\"total\">\n"_s;
            row({ u"Total"_s, QString(), QString(), QString(), QString(), number(r.allTrips.distance),
                  QString(), QString(), QString(), money(r.allTrips.claim) },
                "tttnnntttn");
            out += u"</tbody>\n"_s;
        }
        out += u"</table>\n"_s;
    };
    if (!r.trips.empty())
        tripTable(r.trips, true);
    if (!r.openTrips.empty()) {
        out += u"<p>Open trips (not claimed):</p>\n"_s;
        tripTable(r.openTrips, false);
    }
}

// Bars of fuel and maintenance cost, stacked, one per month.
QString Writer::monthlyChart() const
{
    const int w = 640, h = 220, left = 56, bottom = 30, top = 10;
    double highest = 0;
    for (const SummaryReport::Month &m : r.monthly)
        highest = std::max(highest, m.fuel + m.maintenance);
    if (highest <= 0)
        return {};
    const double plotH = h - bottom - top;
    const double slot = double(w - left - 10) / double(r.monthly.size());
    QString svg
        = u"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%2\" viewBox=\"0 0 %1 %2\" role=\"img\" aria-label=\"Monthly running cost\">\n"_s
              .arg(w)
              .arg(h);
    svg += u"<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%2\" stroke=\"#444\"/>\n"_s.arg(left)
               .arg(h - bottom)
               .arg(w - 10);
    svg += u"<text x=\"%1\" y=\"%2\" text-anchor=\"end\">%3</text>\n"_s.arg(left - 4).arg(top + 8).arg(
        money(highest));
    svg += u"<text x=\"%1\" y=\"%2\" text-anchor=\"end\">%3</text>\n"_s.arg(left - 4)
               .arg(h - bottom)
               .arg(money(0));
    for (size_t i = 0; i < r.monthly.size(); ++i) {
        const SummaryReport::Month &m = r.monthly[i];
        const double x = left + slot * double(i) + slot * 0.15;
        const double fuelH = m.fuel / highest * plotH, maintH = m.maintenance / highest * plotH;
        svg += u"<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" fill=\"#3b78c2\"/>"_s.arg(x, 0, 'f', 1)
                   .arg(h - bottom - fuelH, 0, 'f', 1)
                   .arg(slot * 0.7, 0, 'f', 1)
                   .arg(fuelH, 0, 'f', 1);
        svg += u"<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" fill=\"#d9822b\"/>\n"_s.arg(x, 0, 'f', 1)
                   .arg(h - bottom - fuelH - maintH, 0, 'f', 1)
                   .arg(slot * 0.7, 0, 'f', 1)
                   .arg(maintH, 0, 'f', 1);
        svg += u"<text x=\"%1\" y=\"%2\" text-anchor=\"middle\">%3</text>\n"_s.arg(x + slot * 0.35, 0, 'f', 1)
                   .arg(h - bottom + 14)
                   .arg(m.month.toString(u"MM/yy"_s));
    }
    svg += u"<rect x=\"%1\" y=\"%2\" width=\"10\" height=\"10\" fill=\"#3b78c2\"/><text x=\"%3\" y=\"%4\">Fuel</text>"_s
               .arg(left)
               .arg(h - 12)
               .arg(left + 14)
               .arg(h - 3);
    svg += u"<rect x=\"%1\" y=\"%2\" width=\"10\" height=\"10\" fill=\"#d9822b\"/><text x=\"%3\" y=\"%4\">Maintenance</text>\n"_s
               .arg(left + 60)
               .arg(h - 12)
               .arg(left + 74)
               .arg(h - 3);
    return svg + u"</svg>\n"_s;
}

// The economy of each full fill-up, joined in date order.
QString Writer::economyChart() const
{
    if (r.economyPoints.size() < 2)
        return {};
    const int w = 640, h = 200, left = 56, bottom = 24, top = 10;
    auto points = r.economyPoints;
    std::stable_sort(points.begin(), points.end(),
                     [](const auto &a, const auto &b) { return a.date < b.date; });
    double low = points.front().economy, high = low;
    for (const auto &p : points) {
        low = std::min(low, p.economy);
        high = std::max(high, p.economy);
    }
    if (high - low < 1e-9) {
        low -= 1;
        high += 1;
    }
    const double first = points.front().date, span = std::max(1.0, double(points.back().date) - first);
    QString line;
    QString dots;
    for (const auto &p : points) {
        const double x = left + (double(p.date) - first) / span * (w - left - 16) + 4;
        const double y = top + (high - p.economy) / (high - low) * (h - bottom - top);
        line += u"%1,%2 "_s.arg(x, 0, 'f', 1).arg(y, 0, 'f', 1);
        dots += u"<circle cx=\"%1\" cy=\"%2\" r=\"3\" fill=\"#2a8a3e\"/>"_s.arg(x, 0, 'f', 1)
                    .arg(y, 0, 'f', 1);
    }
    QString svg
        = u"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%2\" viewBox=\"0 0 %1 %2\" role=\"img\" aria-label=\"Economy\">\n"_s
              .arg(w)
              .arg(h);
    svg += u"<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%2\" stroke=\"#444\"/>\n"_s.arg(left)
               .arg(h - bottom)
               .arg(w - 10);
    svg += u"<text x=\"%1\" y=\"%2\" text-anchor=\"end\">%3</text>\n"_s.arg(left - 4).arg(top + 8).arg(
        number(high, 2));
    svg += u"<text x=\"%1\" y=\"%2\" text-anchor=\"end\">%3</text>\n"_s.arg(left - 4)
               .arg(h - bottom)
               .arg(number(low, 2));
    svg += u"<text x=\"%1\" y=\"%2\">%3 &ndash; %4 (%5)</text>\n"_s.arg(left).arg(h - 6).arg(
        date(points.front().date), date(points.back().date), economyUnit());
    svg += u"<polyline fill=\"none\" stroke=\"#2a8a3e\" stroke-width=\"2\" points=\""_s + line.trimmed()
        + u"\"/>\n"_s + dots;
    return svg + u"\n</svg>\n"_s;
}

void Writer::running()
{
    out += u"<h2>Running cost</h2>\n<dl>\n"_s;
    pair(u"Fuel + maintenance"_s, money(r.runningCost));
    pair(u"Per "_s + unitWord(),
         e(cformat("%s%.3f", locale.currencySymbol().toUtf8().constData(), r.runningCostPerDistance)));
    pair(u"Per month ("_s + QString::number(r.months) + u" months)"_s, money(r.runningCostPerMonth));
    out += u"</dl>\n"_s;
    const QString monthly = monthlyChart(), economy = economyChart();
    if (!monthly.isEmpty())
        out += u"<p>Monthly cost</p>\n"_s + monthly;
    if (!economy.isEmpty())
        out += u"<p>Economy</p>\n"_s + economy;
}

} // namespace

QString ReportHtml::fileName(const QString &vehicleName)
{
    return cformat("%s-Report.htm", vehicleName.toUtf8().constData());
}

QString ReportHtml::escape(const QString &text)
{
    QString escaped = text.toHtmlEscaped(); // & < > "
    escaped.replace(u'\'', u"&#39;"_s);
    return escaped;
}

QString ReportHtml::page(const SummaryReport &report, const LocaleFormats &locale)
{
    Writer w { report, locale, {} };
    const QString name = report.vehicle.name.isEmpty() ? u"UnKnown"_s : report.vehicle.name;
    w.out = u"<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>"_s + escape(name)
        + u" report "_s + escape(locale.shortDate(report.from)) + u" &ndash; "_s
        + escape(locale.shortDate(report.to)) + u"</title>\n<style>\n"_s + QString::fromLatin1(styleSheet)
        + u"</style>\n</head>\n<body>\n"_s;
    w.header();
    w.fuel();
    w.maintenance();
    w.trips();
    w.running();
    w.out += u"</body>\n</html>\n"_s;
    return w.out;
}

bool ReportHtml::save(const QString &path, const SummaryReport &report, const LocaleFormats &locale,
                      QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const QByteArray bytes = page(report, locale).toUtf8();
    if (file.write(bytes) != bytes.size()) {
        if (error)
            *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
