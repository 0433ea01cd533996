#include "XmlExport.h"

#include "ExportStream.h"
#include "LocalTimeCache.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

const char *const Prologue[] = {
    "<?xml version=\"1.0\"?>\r\n<?mso-application progid=\"Excel.Sheet\"?>\r\n",
    "<Workbook xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\"\r\n",
    "xmlns:o=\"urn:schemas-microsoft-com:office:office\"\r\n",
    "xmlns:x=\"urn:schemas-microsoft-com:office:excel\"\r\n",
    "xmlns:ss=\"urn:schemas-microsoft-com:office:spreadsheet\"\r\n",
    "xmlns:html=\"http://www.w3.org/TR/REC-html40\">\r\n",
    "<DocumentProperties xmlns=\"urn:schemas-microsoft-com:office:office\">\r\n",
    "<LastAuthor>Quellar</LastAuthor>\r\n",
};

const char *const AfterCreated[] = {
    "<Version>11.6360</Version>\r\n",
    "</DocumentProperties>\r\n",
    "<ExcelWorkbook xmlns=\"urn:schemas-microsoft-com:office:excel\">\r\n",
    "<WindowHeight>8835</WindowHeight>\r\n",
    "<WindowWidth>14220</WindowWidth>\r\n",
    "<WindowTopX>480</WindowTopX>\r\n",
    "<WindowTopY>45</WindowTopY>\r\n",
    "<ProtectStructure>False</ProtectStructure>\r\n",
    "<ProtectWindows>False</ProtectWindows>\r\n",
    "</ExcelWorkbook>\r\n",
    "<Styles>\r\n",
    "<Style ss:ID=\"Default\" ss:Name=\"Normal\">\r\n",
    "<Alignment ss:Vertical=\"Bottom\"/>\r\n",
    "<Borders/>\r\n",
    "<Font/>\r\n",
    "<Interior/>\r\n",
    "<NumberFormat/>\r\n",
    "<Protection/>\r\n",
    "</Style>\r\n",
    "<Style ss:ID=\"s21\">\r\n",
    "<NumberFormat ss:Format=\"Short Date\"/>\r\n",
    "</Style>\r\n",
    "<Style ss:ID=\"s22\">\r\n",
    "<NumberFormat ss:Format=\"General Date\"/>\r\n",
    "</Style>\r\n",
    "<Style ss:ID=\"s23\">\r\n",
};

const char *const AfterCurrency[] = {
    "</Style>\r\n",
    "<Style ss:ID=\"s24\">\r\n",
    "<NumberFormat ss:Format=\"0.0\"/>\r\n",
    "</Style>\r\n",
    "<Style ss:ID=\"s25\">\r\n",
    "<NumberFormat ss:Format=\"0.000\"/>\r\n",
    "</Style>\r\n",
    "</Styles>\r\n",
    "<Worksheet ss:Name=\"Tarvane Export\">\r\n",
    "<Table ss:ExpandedColumnCount=\"23\" ss:ExpandedRowCount=\"21\" x:FullColumns=\"1\"",
    "x:FullRows=\"1\">\r\n",
    "<Column ss:Index=\"8\" ss:Width=\"66.75\"/>\r\n",
    "<Column ss:Index=\"17\" ss:Width=\"75.75\" ss:Span=\"1\"/>\r\n",
    "<Column ss:Index=\"19\" ss:Width=\"106.5\"/>\r\n",
    "<Column ss:Index=\"23\" ss:Width=\"88.5\"/>\r\n",
};

const char *const Titles[]
    = { "Type",      "Odometer",       "Entry Date",   "Invoice Number", "Amount",         "Filling Station",
        "Fuel Qty.", "Fuel Price",     "Economy",      "Fuel Cost",      "Purpose",        "Destination",
        "Contact",   "Start Odometer", "End Odometer", "Distance",       "Departure Date", "Arrival Date",
        "Duration",  "Tolls",          "Parking",      "Trip Cost",      "Notes" };

const char *const Epilogue[] = {
    "</Table>\r\n",
    "<WorksheetOptions xmlns=\"urn:schemas-microsoft-com:office:excel\">\r\n",
    "<Selected/>\r\n",
    "<Panes>\r\n",
    "<Pane>\r\n",
    "<Number>3</Number>\r\n",
    "<ActiveRow>1</ActiveRow>\r\n",
    "<ActiveCol>1</ActiveCol>\r\n",
    "<RangeSelection>R2C2:R21C2</RangeSelection>\r\n",
    "</Pane>\r\n",
    "</Panes>\r\n",
    "<ProtectObjects>False</ProtectObjects>\r\n",
    "<ProtectScenarios>False</ProtectScenarios>\r\n",
    "</WorksheetOptions>\r\n",
    "</Worksheet>\r\n",
    "</Workbook>\r\n",
};

template<size_t N> void writeAll(ExportStream &out, const char *const (&templates)[N])
{
    for (const char *t : templates)
        out.literal(t);
}

// A cell of one number: the printf call formats the number alone.
void numberCell(ExportStream &out, const char *open, const char *format, double value)
{
    out.literal(open);
    out.format(format, value);
    out.literal("</Data></Cell>\r\n", 16);
}

void writeFuelRow(ExportStream &out, const CVCItem &item, LocalTimeCache &times)
{
    const LocalTimeCache::Local date = times.toLocal(item.entryDate);
    const double cost = item.fuelQuantity * item.unitPrice;
    out.literal("<Row>\r\n");
    out.literal("<Cell><Data ss:Type=\"String\">Fuel</Data></Cell>\r\n");
    numberCell(out, "<Cell ss:StyleID=\"s24\"><Data ss:Type=\"Number\">", "%.0f", item.odometer);
    out.literal("<Cell ss:StyleID=\"s21\"><Data ss:Type=\"DateTime\">");
    out.format("%d-%.2d-%.2dT%.2d:%.2d:00.000", date.date.year(), date.date.month(), date.date.day(),
               date.time.hour(), date.time.minute());
    out.literal("</Data></Cell>\r\n");
    numberCell(out, "<Cell ss:Index=\"5\" ss:StyleID=\"s23\"><Data ss:Type=\"Number\">", "%4.2f", cost);
    out.literal("<Cell><Data ss:Type=\"String\">");
    out.text(item.station);
    out.literal("</Data></Cell>\r\n");
    numberCell(out, "<Cell ss:StyleID=\"s25\"><Data ss:Type=\"Number\">", "%3.3f", item.fuelQuantity);
    numberCell(out, "<Cell ss:StyleID=\"s23\"><Data ss:Type=\"Number\">", "%3.3f", item.unitPrice);
    numberCell(out, "<Cell><Data ss:Type=\"String\">", "%3.3f", item.economy);
    numberCell(out, "<Cell ss:StyleID=\"s23\"><Data ss:Type=\"Number\">", "%5.2f", cost);
    numberCell(out, "<Cell ss:Index=\"14\" ss:StyleID=\"s24\"><Data ss:Type=\"Number\">", "%7.1f",
               item.odometer);
    out.literal("<Cell ss:StyleID=\"s24\"><Data ss:Type=\"Number\">0</Data></Cell>\r\n"
                "<Cell ss:StyleID=\"s24\"><Data ss:Type=\"Number\">0</Data></Cell>\r\n"
                "<Cell><Data ss:Type=\"String\">   </Data></Cell>\r\n"
                "<Cell><Data ss:Type=\"String\">   </Data></Cell>\r\n"
                "<Cell><Data ss:Type=\"String\"> </Data></Cell>\r\n"
                "<Cell ss:StyleID=\"s23\"><Data ss:Type=\"String\"> </Data></Cell>\r\n"
                "<Cell ss:StyleID=\"s23\"><Data ss:Type=\"Number\">0</Data></Cell>\r\n");
    // The fuel cost is repeated as the trip cost on purpose.
    numberCell(out, "<Cell ss:StyleID=\"s23\"><Data ss:Type=\"Number\">", "%5.2f", cost);
    out.literal("<Cell><Data ss:Type=\"String\">");
    out.text(item.notes);
    out.literal("</Data></Cell>\r\n");
    out.literal("</Row>\r\n");
}

} // namespace

bool XmlExport::confirm(Reporter &reporter) const
{
    if (m_data.periodFilter == DataViewFilter::ByDate)
        return true;
    reporter.error(needsDateRangeMessage());
    return false;
}

QString XmlExport::successMessage(const QString &filePath) const
{
    return cformat("Excel Export completed.File Name:\n%s", filePath.toUtf8().constData());
}

bool XmlExport::write(QIODevice *device)
{
    ExportStream out(device);
    writeAll(out, Prologue);
    const QDateTime now = m_data.clock->nowLocal();
    out.format("<Created>%d-%d-%dT%d:%d:%dZ</Created>\r\n", now.date().year(), now.date().month(),
               now.date().day(), now.time().hour(), now.time().minute(), now.time().second());
    writeAll(out, AfterCreated);
    out.literal("<NumberFormat ss:Format=\"&quot;");
    out.text(m_data.locale->currencySymbol().left(2));
    out.literal("&quot;#,##0.00\"/>\r\n");
    writeAll(out, AfterCurrency);

    out.literal("<Row>\r\n");
    for (const char *title : Titles)
        out.format("<Cell><Data ss:Type=\"String\">%s</Data></Cell>\r\n", title);
    out.literal("</Row>\r\n");
    LocalTimeCache times;
    for (const CVCItem *item : m_data.entries) {
        if (item->entryType == CVCItem::Fuel)
            writeFuelRow(out, *item, times);
    }
    writeAll(out, Epilogue);
    return finish(out);
}
