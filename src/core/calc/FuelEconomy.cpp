#include "FuelEconomy.h"

#include <cmath>

#include "Units.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

namespace FuelEconomy {

namespace {

double nonNegative(double value)
{
    return value < 0 ? 0.0 : value;
}

// The range tests also clear a NaN (0 / 0), which would otherwise pass both comparisons and
// show as text instead of the 0 the user expects.
double clamp(double value, double low, double high)
{
    if (std::isnan(value) || value > high || value < low)
        return 0.0;
    return value;
}

Units::Gallon gallonOf(int liquidUnit)
{
    switch (liquidUnit) {
    case Units::UsGallons:
    case Units::Litres:
        return Units::Gallon::Us;
    case Units::ImperialGallons:
        return Units::Gallon::Imperial;
    default:
        return Units::Gallon::Unknown;
    }
}

} // namespace

FillUpResult computeFillUp(const FillUpInput &input)
{
    FillUpResult result { input.economy, input.amount, input.liquidUnit };
    if (input.quantityText.isEmpty())
        return result;

    const double quantity = nonNegative(Units::parseLenient(input.quantityText));
    const double price = nonNegative(Units::parseLenient(input.priceText));

    if (!(input.odometer > input.lastFullFillOdometer))
        return result;
    if (!(input.lastFullFillOdometer > input.startOdometer))
        return result;

    const int liquidUnit = Units::liquidUnitFromText(input.liquidText);
    if (liquidUnit >= 0)
        result.liquidUnit = liquidUnit;
    const double litres = Units::toLitres(quantity, liquidUnit);
    const double km = Units::toKilometres(input.odometer - input.lastFullFillOdometer, input.distanceUnit);

    const double economy = Units::economy(km, litres, input.economyUnit, gallonOf(liquidUnit), input.economy);
    result.amount = price * quantity;
    result.economy = clamp(economy, 0.01, 100.0);
    return result;
}

double fillUpTotal(const QString &quantityText, const QString &priceText)
{
    return nonNegative(Units::parseLenient(priceText)) * nonNegative(Units::parseLenient(quantityText));
}

double reconcile(EntryList &entries, int distanceUnit, int economyUnit)
{
    double previousKm = 0.0;
    double highest = 0.0;
    for (CVCItem &item : entries) {
        if (item.odometer >= highest)
            highest = item.odometer;

        if (item.entryType == CVCItem::Trip) {
            item.fuelQuantity = 0.0;
            item.unitPrice = 0.0;
            continue;
        }
        if (item.entryType != CVCItem::Fuel)
            continue;

        // The recalculation tests the stored text with its own, slightly different prefixes.
        const QString &measure = item.fuelMeasure;
        double litres = 0.0;
        if (measure.startsWith(u"Gallons"))
            litres = item.fuelQuantity * Units::LitresPerUsGallon;
        else if (measure.startsWith(u"Imp"))
            litres = item.fuelQuantity * Units::LitresPerImperialGallon;
        else if (measure.startsWith(u"Li"))
            litres = item.fuelQuantity;

        Units::Gallon gallon = Units::Gallon::Unknown;
        if (measure.startsWith(u"Gallons") || measure.startsWith(u"Lit"))
            gallon = Units::Gallon::Us;
        else if (measure.startsWith(u"Imp"))
            gallon = Units::Gallon::Imperial;

        if (item.distanceUnit != Units::Miles && item.distanceUnit != Units::Kilometres)
            item.distanceUnit = distanceUnit;
        const double km = Units::toKilometres(item.odometer, item.distanceUnit);
        if (previousKm < 0)
            previousKm = 0.0;

        double economy = Units::economy(km - previousKm, litres, economyUnit, gallon, item.economy);
        item.amount = item.unitPrice * item.fuelQuantity;
        item.economyUnit = economyUnit;
        previousKm = km;

        economy = clamp(economy, 0.0, 200.0);
        if (item.odometer == 0.0)
            economy = 0.0;
        item.economy = economy;
    }
    return highest;
}

Figures figures(const EntryList &entries)
{
    Figures result;
    for (const CVCItem &item : entries) {
        if (item.entryType != CVCItem::Fuel || item.notFull != 0)
            continue;
        result.last = item.economy;
        if (item.economy > 0) {
            result.sum += item.economy;
            ++result.count;
        }
    }
    if (result.count > 0)
        result.average = result.sum / result.count;
    return result;
}

QString economyLine(double last, double average)
{
    return cformat("Fuel Economy: %3.2f - %3.2f Avg", last, average);
}

QString shortEconomyLine(double last, double average)
{
    if (average > 0)
        return cformat("Economy:%3.2f - %3.2fAvg", last, average);
    return cformat("Economy:%3.2f", last);
}

} // namespace FuelEconomy
