#include "EntryOutput.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "log/CVCItemJson.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

namespace {

void field(QTextStream &out, const QString &label, const QString &value)
{
    if (!value.isEmpty())
        out << u"    "_s << label << u": "_s << value << u'\n';
}

void printRecord(QTextStream &out, int position, const CVCItem &item, const LocaleFormats &locale)
{
    out << cformat("%-4d %-6s %s  Odometer %s\n", position, item.typeName().toUtf8().constData(),
                   CVCItem::dateTimeText(item.entryDate, locale).toUtf8().constData(),
                   item.odometerText().trimmed().toUtf8().constData());
    const auto money = [&](double value) {
        return value != 0 ? CVCItem::moneyText(value, locale) : QString();
    };
    const auto time = [&](quint32 t) {
        return t != 0 ? CVCItem::dateTimeText(t, locale) : QString();
    };
    switch (item.entryType) {
    case CVCItem::Fuel:
        field(out, u"Type"_s, item.typeText);
        field(out, u"Quantity"_s, QString(item.quantityText() + u' ' + item.fuelMeasure).trimmed());
        field(out, u"Price"_s, item.priceText(locale));
        field(out, u"Total"_s, money(item.amount));
        field(out, u"Economy"_s, item.economyText());
        field(out, u"Temp"_s, item.temperature != 0 ? item.temperatureText().trimmed() : QString());
        field(out, u"Not Full"_s, item.notFull != 0 ? u"yes"_s : QString());
        field(out, u"Station"_s, item.station);
        break;
    case CVCItem::Maintenance:
        field(out, u"Type"_s, item.typeText);
        field(out, u"Cost"_s, money(item.amount));
        field(out, u"Location"_s, item.station);
        field(out, u"Invoice"_s, item.invoice);
        break;
    default:
        field(out, u"Type"_s, item.isOpenTrip() ? u"* OPEN TRIP"_s : item.typeText.text());
        field(out, u"End Odometer"_s, item.endOdometerText().trimmed());
        field(out, u"Distance"_s,
              item.tripDistance() > 0 ? cformat("%-7.0f", item.tripDistance()).trimmed() : QString());
        field(out, u"Departure"_s, time(item.departTime));
        field(out, u"Arrival"_s, time(item.arriveTime));
        field(out, u"Duration"_s, item.tripDurationText());
        field(out, u"Purpose"_s, item.purpose);
        field(out, u"Destination"_s, item.destination);
        field(out, u"Contact"_s, item.contact);
        field(out, u"Tolls"_s, money(item.amount));
        field(out, u"Parking"_s, money(item.parking));
        field(out, u"Mileage Cost"_s, item.unitPrice != 0 ? item.mileageCostText(locale) : QString());
        break;
    }
    field(out, u"Notes"_s, item.notes);
}

} // namespace

void printEntries(QTextStream &out, const EntryList &entries, const LocaleFormats &locale, bool json)
{
    if (json) {
        QJsonArray array;
        for (const CVCItem &item : entries)
            array.append(cvcItemToJson(item));
        out << QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented));
        return;
    }
    int position = 0;
    for (const CVCItem &item : entries)
        printRecord(out, position++, item, locale);
}
