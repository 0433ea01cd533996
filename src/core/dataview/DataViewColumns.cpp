#include "DataViewColumns.h"

#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"
#include "platform/Preferences.h"
#include "settings/PreferenceSections.h"

using namespace Qt::StringLiterals;

namespace DataViewColumns {

namespace {

using F = Field;

QList<Column> allView()
{
    return { { u" "_s, 18, F::Icon },
             { u"Entry Type"_s, 80, F::TypeText },
             { u"Mileage"_s, 80, F::Mileage },
             { u"Date"_s, 80, F::Date },
             { u"Price"_s, 80, F::Price },
             { u"Qty"_s, 40, F::Quantity },
             { u"Measure"_s, 40, F::Measure },
             { u"Location"_s, 80, F::Station },
             { u"Invoice"_s, 90, F::Invoice },
             { u"Purpose"_s, 90, F::Purpose },
             { u"Destination"_s, 90, F::Destination },
             { u"Start Date/Time"_s, 120, F::StartTime },
             { u"End Date/Time"_s, 120, F::EndTime },
             { u"End Mileage"_s, 80, F::EndMileage },
             { u"Duration"_s, 140, F::Duration },
             { u"Distance"_s, 80, F::Distance },
             { u"Note"_s, 140, F::Note } };
}

QList<Column> fuelView()
{
    return { { u" "_s, 18, F::Icon },           { u"Entry Type"_s, 80, F::TypeText },
             { u"Mileage"_s, 80, F::Mileage },  { u"Date"_s, 90, F::Date },
             { u"Price"_s, 60, F::FuelPrice },  { u"Qty"_s, 60, F::Quantity },
             { u"Economy"_s, 60, F::Economy },  { u"Measure"_s, 60, F::Measure },
             { u"Temp"_s, 60, F::Temperature }, { u"Total"_s, 80, F::Total },
             { u"Station"_s, 80, F::Station },  { u"Note"_s, 160, F::Note } };
}

QList<Column> maintenanceView()
{
    return { { u" "_s, 18, F::Icon },           { u"Repair"_s, 80, F::TypeText },
             { u"Mileage"_s, 80, F::Mileage },  { u"Date"_s, 90, F::Date },
             { u"Cost"_s, 50, F::Cost },        { u"Invoice"_s, 80, F::Invoice },
             { u"Location"_s, 80, F::Station }, { u"Note"_s, 160, F::Note } };
}

QList<Column> tripView()
{
    return { { u" "_s, 18, F::Icon },
             { u"Purpose"_s, 80, F::Purpose },
             { u"Mileage"_s, 80, F::Mileage },
             { u"Date"_s, 80, F::Date },
             { u"Destination"_s, 80, F::Destination },
             { u"Start Date/Time"_s, 50, F::StartTime },
             { u"End Date/Time"_s, 50, F::EndTime },
             { u"End Mileage"_s, 90, F::EndMileage },
             { u"Duration"_s, 90, F::Duration },
             { u"Distance"_s, 90, F::Distance },
             { u"Tolls"_s, 90, F::Tolls },
             { u"Parking"_s, 50, F::Parking },
             { u"Travel"_s, 50, F::Travel },
             { u"Note"_s, 160, F::Note } };
}

QString timeText(quint32 seconds, const LocaleFormats &locale)
{
    return seconds == 0 ? QString() : CVCItem::dateTimeText(seconds, locale);
}

QString tripText(const CVCItem &item, Field field, const LocaleFormats &locale)
{
    switch (field) {
    case F::Purpose:
        return item.purpose;
    case F::Destination:
        return item.destination;
    case F::StartTime:
        return timeText(item.departTime, locale);
    case F::EndTime:
        return timeText(item.arriveTime, locale);
    case F::EndMileage:
        return item.endOdometerText();
    case F::Duration:
        return item.tripDurationText();
    case F::Distance:
        return item.tripDistance() > 0 ? cformat("%-7.0f", item.tripDistance()) : QString();
    case F::Tolls:
        return item.amountText(locale);
    case F::Parking:
        return item.parkingText(locale);
    case F::Price:
    case F::Travel:
        return item.mileageCostText(locale);
    default:
        return QString();
    }
}

QString fuelText(const CVCItem &item, Field field, const LocaleFormats &locale)
{
    switch (field) {
    case F::Price:
    case F::FuelPrice:
        return item.priceText(locale);
    case F::Quantity:
        return item.quantityText();
    case F::Measure:
        return item.fuelMeasure;
    case F::Economy:
        return item.economyText();
    case F::Temperature:
        return item.temperatureText();
    case F::Total:
        return item.amountText(locale);
    case F::Station:
        return item.station;
    default:
        return QString();
    }
}

QString maintenanceText(const CVCItem &item, Field field, const LocaleFormats &locale)
{
    switch (field) {
    case F::Price:
    case F::Cost:
        return item.amountText(locale);
    case F::Invoice:
        return item.invoice;
    case F::Station:
        return item.station;
    default:
        return QString();
    }
}

} // namespace

const QList<Column> &layout(DataViewFilter::Type type)
{
    static const QList<Column> views[] = { fuelView(), maintenanceView(), tripView(), allView() };
    return views[type >= DataViewFilter::Fuel && type <= DataViewFilter::AllTypes ? type
                                                                                  : DataViewFilter::AllTypes];
}

QString cellText(const CVCItem &item, Field field, const LocaleFormats &locale)
{
    switch (field) {
    case F::Icon:
        return QString();
    case F::TypeText:
        return item.typeText;
    case F::Mileage:
        return item.odometerText();
    case F::Date:
        return item.entryDate == 0 ? QString() : locale.shortDate(DeviceTime::toLocal(item.entryDate));
    case F::Note:
        return item.notes;
    default:
        break;
    }
    switch (item.entryType) {
    case CVCItem::Fuel:
        return fuelText(item, field, locale);
    case CVCItem::Maintenance:
        return maintenanceText(item, field, locale);
    case CVCItem::Trip:
        return tripText(item, field, locale);
    default:
        return QString();
    }
}

QStringList rowTexts(const CVCItem &item, const QList<Column> &columns, const LocaleFormats &locale)
{
    QStringList texts;
    texts.reserve(columns.size());
    for (const Column &column : columns)
        texts.append(cellText(item, column.field, locale));
    return texts;
}

QStringList headers(const QList<Column> &columns)
{
    QStringList texts;
    for (const Column &column : columns)
        texts.append(column.header);
    return texts;
}

QString widthKey(int column)
{
    return cformat("ColNumber%d", column);
}

QList<int> readWidths(const Preferences &preferences, const QList<Column> &columns)
{
    QList<int> widths;
    for (int i = 0; i < columns.size(); ++i)
        widths.append(
            preferences.getInt(PreferenceSections::listAttributes(), widthKey(i), columns[i].defaultWidth));
    return widths;
}

void writeWidths(Preferences &preferences, const QList<int> &widths)
{
    for (int i = 0; i < widths.size(); ++i)
        preferences.writeInt(PreferenceSections::listAttributes(), widthKey(i), widths[i]);
}

} // namespace DataViewColumns
