#include "CsvExport.h"

#include "ExportStream.h"
#include "LocalTimeCache.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"

using namespace Qt::StringLiterals;

namespace {

const char HeaderAll[]
    = "\"Type\",\"Odometer\",\"Entry Date\",\"Invoice Number\",\"Amount\",\"Filling Station\",\"Fuel Qty.\","
      "\"Fuel Price\",\"Economy\",\"Fuel Cost\",\"Purpose\",\"Destination\",\"Contact\",\"Start Odometer\","
      "\"End Odometer\",\"Distance\",\"Departure Date\",\"Arrival Date\",\"Duration\",\"Tolls\",\"Parking\","
      "\"Trip Cost\",\"Notes\"\r\n";
const char HeaderTrips[]
    = "\"Type\",\"Odometer\",\"Entry Date\",\"Purpose\",\"Destination\",\"Contact\","
      "\"Start Odometer\",\"End Odometer\",\"Distance\",\"Departure Date\",\"Arrival Date\","
      "\"Duration\",\"Tolls\",\"Parking\",\"Trip Cost\",\"Notes\"\r\n";
const char HeaderMaintenance[]
    = "\"Type\",\"Odometer\",\"Entry Date\",\"Invoice Number\",\"Amount\",\"Notes\"\r\n";
const char HeaderFuel[]
    = "\"Type\",\"Odometer\",\"Entry Date\",\"Filling Station\",\"Fuel Qty.\",\"Fuel Price\","
      "\"Economy\",\"Fuel Cost\",\"Notes\"\r\n";

// One line's fields: each is the value in quotes followed by a comma, the last one included.
class CsvLine
{
public:
    explicit CsvLine(ExportStream &out)
        : m_out(out)
    { }
    void text(const QString &value)
    {
        m_out.literal("\"", 1);
        m_out.text(value);
        m_out.literal("\",", 2);
    }
    void number(const char *format, double value)
    {
        m_out.literal("\"", 1);
        m_out.format(format, value);
        m_out.literal("\",", 2);
    }
    void blank() { m_out.literal("\" \",", 4); }
    // The blank some layouts write with one further space after its comma.
    void spacedBlank() { m_out.literal("\" \", ", 5); }
    void end() { m_out.literal("\r\n", 2); }

private:
    ExportStream &m_out;
};

// The date and time texts of one export run. A time of 0 is "not set" and, like a time the
// locale cannot show, becomes " ". Consecutive entries often share a day, so the last date's
// text is kept.
class DateTexts
{
public:
    explicit DateTexts(const LocaleFormats &locale)
        : m_locale(locale)
    { }
    QString shortDate(quint32 seconds)
    {
        if (seconds == 0)
            return u" "_s;
        return dateText(m_times.toLocal(seconds).date);
    }
    QString dateTime(quint32 seconds)
    {
        if (seconds == 0)
            return u"   "_s;
        const LocalTimeCache::Local local = m_times.toLocal(seconds);
        return dateText(local.date) + u' ' + m_locale.shortTime(local.time);
    }

private:
    QString dateText(const QDate &date)
    {
        if (date != m_lastDate) {
            m_lastDate = date;
            m_lastText = date.isValid() ? m_locale.shortDate(date) : u" "_s;
        }
        return m_lastText;
    }
    const LocaleFormats &m_locale;
    LocalTimeCache m_times;
    QDate m_lastDate;
    QString m_lastText;
};

// Unlike the list's duration, hours and minutes here are the remainders of the span.
QString durationText(const CVCItem &item)
{
    if (item.departTime == 0 || item.arriveTime == 0)
        return u" "_s;
    const qint64 seconds = qint64(item.arriveTime) - qint64(item.departTime);
    return cformat("%d Days %d Hours %d Min", int(seconds / 86400), int(seconds / 3600 % 24),
                   int(seconds / 60 % 60));
}

double fuelCost(const CVCItem &item)
{
    return item.unitPrice * item.fuelQuantity;
}

double tripCost(const CVCItem &item, double rate)
{
    const double distance = item.endOdometer - item.odometer;
    return distance >= 0 ? distance * rate + item.parking + item.amount : item.parking + item.amount;
}

QString typeColumn(const CVCItem &item)
{
    return item.isOpenTrip() ? u"* OPEN TRIP"_s : item.typeText.text();
}

} // namespace

QString CsvExport::successMessage(const QString &filePath) const
{
    return cformat("Export to %s is complete.", filePath.toUtf8().constData());
}

bool CsvExport::write(QIODevice *device)
{
    ExportStream out(device);
    DateTexts dates(*m_data.locale);
    const bool allPeriods = m_data.periodFilter == DataViewFilter::AllPeriods;
    CsvLine line(out);

    switch (m_data.typeFilter) {
    case DataViewFilter::Fuel:
        out.literal(HeaderFuel);
        break;
    case DataViewFilter::Maintenance:
        out.literal(HeaderMaintenance);
        break;
    case DataViewFilter::Trips:
        out.literal(HeaderTrips);
        break;
    default:
        out.literal(HeaderAll);
        break;
    }

    for (const CVCItem *entry : m_data.entries) {
        const CVCItem &item = *entry;
        switch (m_data.typeFilter) {
        case DataViewFilter::Fuel:
            if (item.entryType != CVCItem::Fuel)
                continue;
            line.text(item.typeText);
            line.number("%6.1f", item.odometer);
            line.text(dates.shortDate(item.entryDate));
            line.text(item.station);
            line.number("%3.3f", item.fuelQuantity);
            line.number("%3.3f", item.unitPrice);
            if (item.economy > 0)
                line.number("%3.3f", item.economy);
            else
                line.spacedBlank();
            if (fuelCost(item) > 0)
                line.number("%6.2f", fuelCost(item));
            else
                line.blank();
            break;
        case DataViewFilter::Maintenance:
            if (item.entryType != CVCItem::Maintenance)
                continue;
            line.text(item.typeText);
            line.number("%6.1f", item.odometer);
            line.text(dates.shortDate(item.entryDate));
            line.text(item.invoice);
            line.number("%6.2f", item.amount);
            break;
        case DataViewFilter::Trips: {
            if (item.entryType != CVCItem::Trip)
                continue;
            const double distance = item.endOdometer - item.odometer;
            line.text(typeColumn(item));
            line.number("%6.1f", item.odometer);
            line.text(dates.shortDate(item.entryDate));
            line.text(item.purpose);
            line.text(item.destination);
            line.text(item.contact);
            line.number("%6.1f", item.odometer);
            line.number("%6.1f", item.endOdometer);
            line.number(allPeriods ? "%6.3f" : "%6.1f", distance > 0 ? distance : 0.0);
            line.text(dates.dateTime(item.departTime));
            line.text(dates.dateTime(item.arriveTime));
            line.text(durationText(item));
            line.number("%3.2f", item.amount);
            line.number("%3.2f", item.parking);
            line.number("%6.2f", tripCost(item, m_data.tripRate));
            break;
        }
        default: {
            const bool trip = item.entryType == CVCItem::Trip;
            const double distance = item.endOdometer - item.odometer;
            line.text(typeColumn(item));
            line.number("%6.1f", item.odometer);
            line.text(dates.shortDate(item.entryDate));
            line.text(item.invoice);
            if (trip)
                line.blank();
            else
                line.number("%3.2f", item.amount);
            line.text(item.station);
            if (allPeriods && !(item.fuelQuantity > 0))
                line.blank();
            else
                line.number("%3.3f", item.fuelQuantity);
            if (allPeriods && !(item.unitPrice > 0))
                line.blank();
            else
                line.number("%3.3f", item.unitPrice);
            if (item.economy > 0)
                line.number("%3.3f", item.economy);
            else if (allPeriods)
                line.blank();
            else
                line.spacedBlank();
            if (fuelCost(item) > 0)
                line.number("%4.2f", fuelCost(item));
            else
                line.blank();
            line.text(item.purpose);
            line.text(item.destination);
            line.text(item.contact);
            line.number("%6.1f", item.odometer);
            line.number("%6.1f", item.endOdometer);
            line.number("%6.1f", (allPeriods ? distance >= 0 : distance > 0) ? distance : 0.0);
            line.text(dates.dateTime(item.departTime));
            line.text(dates.dateTime(item.arriveTime));
            line.text(durationText(item));
            if (trip)
                line.number("%3.2f", item.amount);
            else
                line.blank();
            line.number("%3.2f", item.parking);
            line.number("%6.2f", tripCost(item, m_data.tripRate));
            break;
        }
        }
        line.text(item.notes);
        line.end();
    }
    return finish(out);
}
