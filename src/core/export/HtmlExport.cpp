#include "HtmlExport.h"

#include "ExportStream.h"
#include "LocalTimeCache.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

struct Column
{
    const char *title;
    int width; // W
    int widthValue; // A
};

constexpr Column Columns[23] = {
    { "Type", 186, 3803 },          { "Odometer", 75, 2560 },       { "Entry Date", 82, 2633 },
    { "Invoice Number", 90, 3949 }, { "Amount", 54, 2048 },         { "Filling Station", 186, 3547 },
    { "Fuel Qty.", 80, 0 },         { "Fuel Price", 80, 2633 },     { "Economy", 80, 2377 },
    { "Fuel Cost", 80, 2413 },      { "Purpose", 250, 5924 },       { "Destination", 250, 5339 },
    { "Contact", 250, 6217 },       { "Start Odometer", 70, 3840 }, { "End Odometer", 70, 3620 },
    { "Distance", 70, 3510 },       { "Departure Date", 82, 5010 }, { "Arrival Date", 82, 5485 },
    { "Duration", 150, 1353 },      { "Tolls", 80, 2048 },          { "Parking", 60, 2304 },
    { "Trip Cost", 80, 6180 },      { "Notes", 250, 250 },
};

const char RowOpen[] = "<tr height=\"17\" style=\"height:12.75pt\">";
const char ShadedRowOpen[] = "<tr height=\"17\" style=\"height:12.75pt\" bgcolor=\"#99FF99\">";

// The openings of every column's cells, plain and shaded, made once per export: the rows then
// need a printf call only for their numbers.
struct CellOpenings
{
    CellOpenings()
    {
        for (int n = 1; n <= 23; ++n) {
            const int width = Columns[n - 1].width;
            plainText[n] = cformat("<td width=\"%d\">", width).toLatin1();
            shadedText[n]
                = cformat("<td class=\"xl23\"  width=\"%d\" bgcolor=\"#99FF99\">", width).toLatin1();
            plainNumber[n] = cformat("<td align=\"right\" x:num width=\"%d\">", width).toLatin1();
            // In a shaded row the three odometer cells of columns 14 to 16 carry no class.
            shadedNumber[n]
                = (n >= 14 ? cformat("<td align=\"right\" x:num width=\"%d\" bgcolor=\"#99FF99\">", width)
                           : cformat("<td class=\"xl23\"  align=\"right\" x:num width=\"%d\" "
                                     "bgcolor=\"#99FF99\">",
                                     width))
                      .toLatin1();
        }
    }
    QByteArray plainText[24], shadedText[24], plainNumber[24], shadedNumber[24];
};

// The cells of one row, plain or shaded; column numbers count from 1.
class HtmlRow
{
public:
    HtmlRow(ExportStream &out, const CellOpenings &openings, bool shaded)
        : m_out(out)
        , m_text(shaded ? openings.shadedText : openings.plainText)
        , m_number(shaded ? openings.shadedNumber : openings.plainNumber)
        , m_shaded(shaded)
    { }

    void first(const QString &value)
    {
        m_out.literal(m_shaded ? "<td class=\"xl23\"  height=\"17\" style=\"height: 12.75pt\" width=\"186\" "
                                 "bgcolor=\"#99FF99\">"
                               : "<td height=\"17\" style=\"height: 12.75pt\" width=\"186\">");
        m_out.text(value);
        m_out.literal("</td>", 5);
    }
    void text(int column, const QString &value)
    {
        open(column);
        m_out.text(value);
        m_out.literal("</td>", 5);
    }
    void literal(int column, const char *value)
    {
        open(column);
        m_out.literal(value);
        m_out.literal("</td>", 5);
    }
    // A text cell holding a printf number, after an optional currency symbol.
    void formatted(int column, const QString &prefix, const char *format, double value)
    {
        open(column);
        m_out.text(prefix);
        m_out.format(format, value);
        m_out.literal("</td>", 5);
    }
    // The whole-number odometer cells.
    void odometer(int column, double value)
    {
        m_out.literal(m_number[column].constData(), m_number[column].size());
        m_out.format("%7.0f", value);
        m_out.literal("</td>", 5);
    }

private:
    void open(int column) { m_out.literal(m_text[column].constData(), m_text[column].size()); }

    ExportStream &m_out;
    const QByteArray *m_text;
    const QByteArray *m_number;
    bool m_shaded;
};

// "%d%s%d%s%d" in the locale's order of day, month and year. A time of 0 is "not set": empty.
QString dateText(quint32 seconds, const LocaleFormats &locale, LocalTimeCache &times)
{
    if (seconds == 0)
        return QString();
    const QDate date = times.toLocal(seconds).date;
    const QByteArray sep = locale.dateSeparator().left(1).toUtf8();
    switch (locale.dateOrder()) {
    case LocaleFormats::DateOrder::DayMonthYear:
        return cformat("%d%s%d%s%d", date.day(), sep.constData(), date.month(), sep.constData(), date.year());
    case LocaleFormats::DateOrder::YearMonthDay:
        return cformat("%d%s%d%s%d", date.year(), sep.constData(), date.month(), sep.constData(), date.day());
    case LocaleFormats::DateOrder::MonthDayYear:
        break;
    }
    return cformat("%d%s%d%s%d", date.month(), sep.constData(), date.day(), sep.constData(), date.year());
}

} // namespace

QString HtmlExport::warningText()
{
    return u"Displaying this HTML file may cause some older CE explorers to hang.\nthere is no problem with "
           u"Desktop explorer or newer windows CE second edition.\nContinue?"_s;
}

bool HtmlExport::confirm(Reporter &reporter) const
{
    return reporter.ask(warningText(), u"WARNING"_s, Reporter::Buttons::OkCancel);
}

QString HtmlExport::successMessage(const QString &) const
{
    return cformat("Export to HTML completed.\nMy Documents\\%s.htm",
                   m_data.effectiveName().toUtf8().constData());
}

bool HtmlExport::write(QIODevice *device)
{
    ExportStream out(device);
    const LocaleFormats &locale = *m_data.locale;
    const QString currency = locale.currencySymbol().left(2);
    LocalTimeCache times;
    const CellOpenings openings;

    out.literal("<html>\n<head>\n<meta http-equiv=\"Content-Language\" content=\"en-ca\">\n<meta "
                "http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">");
    out.literal("<meta name=\"GENERATOR\" content=\"Tarvane 1.1.1\">\n<meta name=\"ProgId\" "
                "content=\"Quellar.Export.Document\">\n<title>QUELLAR</title>");
    out.literal("</head>\n<body>\n<p align=\"center\"><b>TARVANE by QUELLAR</b></p>\n");
    out.literal("<hr>\n<p align=\"left\"></p>");
    out.literal("<table width=\"3044\"><col width=\"64\" span=\"23\" style=\"width:48pt\"><tr height=\"17\" "
                "style=\"height:12.75pt\"><td height=\"17\" width=\"168\">");
    out.literal("<p><b>Vehicle:");
    out.text(m_data.effectiveName());
    out.literal("</p>");
    out.literal("<p>Trip Rate:");
    out.text(currency);
    out.format("%4.2f</p>", m_data.tripRate);
    out.literal("<p>Data Export Date:");
    out.text(dateText(m_data.clock->now(), locale, times));
    out.literal("</p>");
    out.format("<p>Last odometer reading: :%7.1f</p>", m_data.lastOdometer);
    out.literal("<hr>");
    out.literal("<p></b>&nbsp;</p>");
    out.literal("<table width=\"2800\">");

    for (int n = 1; n <= 23; ++n) {
        const Column &c = Columns[n - 1];
        if (n == 7)
            out.literal("<col width=\"80\" style=\"width:80pt\">");
        else
            out.format("<col width=\"%d\" style=\"mso-width-source:userset;mso-width-alt:%d;width:%dpt\">",
                       c.width, c.widthValue, c.width);
    }

    out.literal("  ");
    out.literal(RowOpen);
    out.literal("<td height=\"17\" class=\"xl22\" width=\"186\" style=\"height: 12.75pt\"><b>Type</b></td>");
    for (int n = 2; n <= 22; ++n)
        out.format("<td class=\"xl22\" width=\"%d\"><b>%s</b></td>", Columns[n - 1].width,
                   Columns[n - 1].title);
    out.literal("<td class=\"xl22\" width=\"250\"><b>Notes</b></td>\n</tr>");

    out.literal(RowOpen);
    double previousOdometer = 0.0;
    const auto &entries = m_data.entries;
    for (size_t i = 0; i < entries.size(); ++i) {
        const CVCItem &item = *entries[i];
        const bool shaded = i % 2 == 1;
        // The row openings are written only between a plain row and the shaded one after it.
        if (shaded) {
            out.literal(RowOpen);
            out.literal("\n");
            out.literal(ShadedRowOpen);
            out.literal("\n");
        }
        HtmlRow row(out, openings, shaded);
        const bool fuel = item.entryType == CVCItem::Fuel;
        const bool maintenance = item.entryType == CVCItem::Maintenance;
        const bool trip = item.entryType == CVCItem::Trip;

        row.first(item.typeText);
        row.odometer(2, item.odometer);
        row.text(3, dateText(item.entryDate, locale, times));
        row.text(4, item.invoice);
        if (maintenance)
            row.formatted(5, currency, "%6.2f", item.amount);
        else
            row.literal(5, " ");
        row.text(6, item.station);
        row.formatted(7, QString(), "%6.2f", item.fuelQuantity);
        row.formatted(8, currency, "%4.3f", item.unitPrice);
        if (fuel)
            row.formatted(9, QString(), "%4.3f", item.economy);
        else
            row.literal(9, "  ");
        if (fuel)
            row.formatted(10, currency, "%6.2f", item.amount);
        else
            row.literal(10, shaded ? "   " : " ");
        row.text(11, item.purpose);
        row.text(12, item.destination);
        row.text(13, item.contact);
        row.odometer(14, fuel ? previousOdometer : item.odometer);
        row.odometer(15, trip ? item.endOdometer : item.odometer);
        row.odometer(16, trip ? item.endOdometer - item.odometer : item.odometer - previousOdometer);
        row.text(17, dateText(item.departTime, locale, times));
        row.text(18, dateText(item.arriveTime, locale, times));
        if (trip) {
            // Whole days are dropped from the hours, as the page has always shown them.
            const qint64 s = qint64(item.arriveTime) - qint64(item.departTime);
            row.text(
                19,
                cformat("%d Hrs.%d Min.", int(s / 3600 - (s / 86400) * 24), int(s / 60 - (s / 3600) * 60)));
            row.formatted(20, currency, "%4.2f", item.amount);
            row.formatted(21, QString(), "%4.2f", item.parking);
        } else {
            row.literal(19, "  ");
            row.literal(20, " ");
            row.literal(21, "  ");
        }
        double tripCost = item.parking + item.amount;
        if (item.endOdometer > item.odometer)
            tripCost += (item.endOdometer - item.odometer) * m_data.tripRate;
        row.formatted(22, currency, "%4.2f", tripCost);
        row.text(23, item.notes);
        out.literal("</tr>\n");
        if (!trip)
            previousOdometer = item.odometer;
    }

    out.literal("</table>\n");
    out.literal("</body>\n</html>\n");
    return finish(out);
}
