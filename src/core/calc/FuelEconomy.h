#pragma once

#include <QString>

#include "log/CVCItem.h"

// The fill-up economy of the fuel form, the whole-log "Reconcile Data" recalculation and the
// economy figures and texts of the main screen.
namespace FuelEconomy {

// What the fuel form knows when its quantity text changes.
struct FillUpInput
{
    double odometer = 0.0; // the entered odometer, in the vehicle's distance unit
    QString quantityText;
    QString priceText;
    QString liquidText; // the unit box: "Gallons", "Imp. Gallons", "Litres" (editable)
    int distanceUnit = 0; // the vehicle's units
    int economyUnit = 0;
    double startOdometer = 0.0;
    double lastFullFillOdometer = 0.0; // from the load-time scan
    // The form's values before the change; the form keeps them where the computation stops.
    double economy = 0.0;
    double amount = 0.0;
    int liquidUnit = 0;
};

struct FillUpResult
{
    double economy = 0.0;
    double amount = 0.0; // total cost = price x quantity in its own unit
    int liquidUnit = 0; // 0/1/2 as found in the unit text; unchanged for an unknown text
};

// The form's economy over the distance since the last full fill-up. Stops, leaving economy and
// total as they were, for an empty quantity, an odometer not beyond the last full fill-up, and
// a last full fill-up not beyond the start odometer. Results outside 0.01..100 become 0.
FillUpResult computeFillUp(const FillUpInput &input);

// Total cost after a price or unit change (no economy is recomputed then). Negative numbers
// count as 0.
double fillUpTotal(const QString &quantityText, const QString &priceText);

// "Reconcile Data": recomputes every fuel record from the fuel record before it in list order
// (partial fills and the start odometer play no part here), in the vehicle's current economy
// unit, keeps results in 0..200, repairs odd distance-unit codes and clears the quantity and
// price of trips. Returns the highest odometer, raw, over all records. Saving is the caller's.
double reconcile(EntryList &entries, int distanceUnit, int economyUnit);

// The main screen's economy figures, over the full fill-ups (notFull == 0) in list order.
struct Figures
{
    double last = 0.0; // economy of the last full fill-up, a zero one included
    double sum = 0.0; // of the positive economies
    int count = 0;
    double average = 0.0; // sum / count, 0 when there is none
};
Figures figures(const EntryList &entries);

// "Fuel Economy: %3.2f - %3.2f Avg" (last, average).
QString economyLine(double last, double average);
// "Economy:%3.2f - %3.2fAvg", or "Economy:%3.2f" when the average is not positive.
QString shortEconomyLine(double last, double average);

} // namespace FuelEconomy
