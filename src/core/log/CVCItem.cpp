#include "CVCItem.h"

#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"

using namespace Qt::StringLiterals;

QString CVCItem::typeName(qint32 entryType)
{
    switch (entryType) {
    case Fuel:
        return u"Fuel"_s;
    case Maintenance:
        return u"Maint."_s;
    case Trip:
        return u"Trip"_s;
    default:
        return QString();
    }
}

QString CVCItem::tripDurationText() const
{
    if (!hasTripDuration())
        return QString();
    // Kept exactly as the log has always shown it: each unit from the total, by integer division.
    const qint64 seconds = qint64(arriveTime) - qint64(departTime);
    const int days = int(seconds / 86400);
    const int hours = int(seconds / 3600 - days * 24);
    const int minutes = int(seconds / 60 - hours * 60);
    return cformat("%d Days %d Hours %d Min", days, hours, minutes);
}

QString CVCItem::odometerText(bool leftAligned) const
{
    return leftAligned ? cformat("%-7.0f", odometer) : cformat("%7.0f", odometer);
}

QString CVCItem::endOdometerText(bool leftAligned) const
{
    return leftAligned ? cformat("%-7.0f", endOdometer) : cformat("%7.0f", endOdometer);
}

QString CVCItem::priceText(const LocaleFormats &locale, bool leftAligned) const
{
    const QByteArray symbol = locale.currencySymbol().toUtf8();
    return leftAligned ? cformat("%s%-3.3f", symbol.constData(), unitPrice)
                       : cformat("%s%3.3f", symbol.constData(), unitPrice);
}

QString CVCItem::quantityText(bool leftAligned) const
{
    return leftAligned ? cformat("%-3.3f", fuelQuantity) : cformat("%3.3f", fuelQuantity);
}

QString CVCItem::economyUnitName(double economyUnit)
{
    if (!(economyUnit > 0)) // NaN too
        return u"MPG"_s;
    if (economyUnit >= 4)
        return u"KPL"_s;
    if (economyUnit == 1)
        return u"MPL"_s;
    if (economyUnit == 2)
        return u"L/100km"_s;
    if (economyUnit == 3)
        return u"MPGi"_s;
    // A fractional code between the known ones: the whole part decides, as an int cast would.
    return economyUnitName(double(int(economyUnit)));
}

QString CVCItem::economyText() const
{
    return cformat("%-3.2f %s", economy, economyUnitName(economyUnit).toUtf8().constData());
}

QString CVCItem::temperatureText() const
{
    return cformat("%3.1d", temperature);
}

QString CVCItem::moneyText(double value, const LocaleFormats &locale, bool leftAligned)
{
    const QByteArray symbol = locale.currencySymbol().toUtf8();
    return leftAligned ? cformat("%s%-3.2f", symbol.constData(), value)
                       : cformat("%s%3.2f", symbol.constData(), value);
}

QString CVCItem::amountText(const LocaleFormats &locale, bool leftAligned) const
{
    return moneyText(amount, locale, leftAligned);
}

QString CVCItem::parkingText(const LocaleFormats &locale, bool leftAligned) const
{
    return moneyText(parking, locale, leftAligned);
}

QString CVCItem::mileageCostText(const LocaleFormats &locale) const
{
    return cformat("%s%3.3f", locale.currencySymbol().toUtf8().constData(), unitPrice);
}

QString CVCItem::dateTimeText(quint32 seconds, const LocaleFormats &locale)
{
    const QDateTime local = DeviceTime::toLocal(seconds);
    return cformat("%s %s", locale.shortDate(local).toUtf8().constData(),
                   locale.shortTime(local).toUtf8().constData());
}

QString CVCItem::entryDateTimeText(const LocaleFormats &locale) const
{
    return dateTimeText(entryDate, locale);
}

// A million-entry log keeps a million of these: a field added here costs a megabyte per 8 bytes.
static_assert(sizeof(void *) != 8 || sizeof(CVCItem) == 184, "the entry record grew");
