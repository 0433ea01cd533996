#include "PeerLogMerge.h"

#include <algorithm>
#include <cmath>

#include "calc/FuelEconomy.h"
#include "calc/Units.h"
#include "forms/EntryFormContext.h"
#include "forms/MaintenanceForm.h"
#include "forms/TripForm.h"
#include "platform/Clock.h"

using namespace Qt::StringLiterals;

namespace PeerLogMerge {

namespace {

double convertDistance(double value, int from, int to)
{
    if (from < 0 || from == to)
        return value;
    const double converted
        = to == Units::Kilometres ? value * Units::KilometresPerMile : value * Units::MilesPerKilometre;
    return std::round(converted * 10.0) / 10.0;
}

double convertLiquid(double value, int from, int to)
{
    if (from < 0 || from == to)
        return value;
    const double litres = Units::toLitres(value, from);
    const double converted = to == Units::Litres ? litres
        : to == Units::ImperialGallons           ? litres * Units::ImperialGallonsPerLitre
                                                 : litres * Units::UsGallonsPerLitre;
    return std::round(converted * 1000.0) / 1000.0;
}

bool sameEntry(const CVCItem &a, const CVCItem &b)
{
    return a.entryType == b.entryType && std::abs(a.odometer - b.odometer) < 0.05
        && a.entryDate == b.entryDate && a.typeText == b.typeText && std::abs(a.amount - b.amount) < 0.005;
}

} // namespace

CVCItem toRecord(const PeerEntry &entry, const PeerTarget &target)
{
    CVCItem item;
    item.odometer = convertDistance(entry.odometer, entry.distanceUnit, target.distanceUnit);
    item.entryDate = entry.date.isValid() ? DeviceTime::fromLocal(entry.date) : 0;
    item.notes = entry.notes;
    item.station = entry.station;
    item.amount = std::round(entry.total * 100.0) / 100.0;
    if (entry.kind == PeerEntry::FillUp) {
        item.entryType = CVCItem::Fuel;
        item.iconIndex = 0;
        item.typeText = CVCItem::typeName(CVCItem::Fuel);
        item.economyUnit = target.economyUnit;
        item.distanceUnit = target.distanceUnit;
        item.fuelMeasure = Units::liquidComboText(target.liquidUnit);
        item.fuelQuantity = convertLiquid(entry.quantity, entry.liquidUnit, target.liquidUnit);
        item.unitPrice
            = item.fuelQuantity > 0 ? std::round(item.amount / item.fuelQuantity * 1000.0) / 1000.0 : 0.0;
        item.notFull = entry.partial ? 1 : 0;
    } else if (entry.kind == PeerEntry::Trip) {
        // The trip form's record: times to the minute, "Select" and "None" where nothing was
        // chosen, an open trip when the arrival is not beyond the departure.
        TripFormValues values;
        values.departDate = entry.date;
        values.departTime = entry.date;
        values.arriveDate = entry.arrival.isValid() ? entry.arrival : entry.date;
        values.arriveTime = values.arriveDate;
        values.departOdometer = item.odometer;
        values.arriveOdometer = qMax(
            item.odometer, convertDistance(entry.endOdometer, entry.distanceUnit, target.distanceUnit));
        values.purpose = entry.purpose.isEmpty() ? TripForm::selectText() : entry.purpose;
        values.contact = entry.contact.isEmpty() ? TripForm::noneText() : entry.contact;
        values.destination = entry.destination.isEmpty() ? TripForm::selectText()
                                                         : entry.destination.left(TripForm::ComboTextLimit);
        values.note = entry.notes.left(TripForm::NoteLimit);
        values.tolls = item.amount;
        EntryFormContext context;
        context.costPerMile = target.costPerMile;
        TripForm form(context, CVCItem());
        form.values = values;
        form.writeRecord(item);
    } else {
        item.entryType = CVCItem::Maintenance;
        item.typeText = entry.name.isEmpty() ? CVCItem::typeName(CVCItem::Maintenance) : entry.name;
        item.iconIndex = MaintenanceForm::predefinedIcon(item.typeText);
    }
    return item;
}

PeerMergeResult merge(const EntryList &log, const std::vector<PeerEntry> &entries, const PeerTarget &target)
{
    PeerMergeResult result;
    result.entries = log;
    std::vector<bool> absorbed(log.size(), false);
    struct Fresh
    {
        CVCItem item;
        bool missed = false;
    };
    std::vector<Fresh> fresh;
    for (const PeerEntry &entry : entries) {
        CVCItem item = toRecord(entry, target);
        if (!item.HasOdometer()) {
            ++result.unusable;
            result.warnings.append(u"line %1: no odometer reading"_s.arg(entry.line));
            continue;
        }
        bool duplicate = false;
        for (size_t i = 0; i < log.size() && !duplicate; ++i) {
            if (!absorbed[i] && sameEntry(log[i], item)) {
                absorbed[i] = true;
                duplicate = true;
            }
        }
        if (duplicate) {
            ++result.duplicates;
            continue;
        }
        fresh.push_back({ item, entry.missed });
    }
    // Files written newest first are put in order; equal readings keep their date order.
    std::stable_sort(fresh.begin(), fresh.end(), [](const Fresh &a, const Fresh &b) {
        if (a.item.odometer != b.item.odometer)
            return a.item.odometer < b.item.odometer;
        return a.item.entryDate < b.item.entryDate;
    });

    EntryList &list = result.entries;
    std::vector<bool> isNew(list.size(), false);
    std::vector<bool> isMissed(list.size(), false);
    for (const Fresh &f : fresh) {
        size_t at = list.size();
        while (at > 0 && list[at - 1].odometer > f.item.odometer)
            --at;
        list.insert(list.begin() + qsizetype(at), f.item);
        isNew.insert(isNew.begin() + qsizetype(at), true);
        isMissed.insert(isMissed.begin() + qsizetype(at), f.missed);
        ++result.added;
    }

    for (size_t i = 0; i < isNew.size(); ++i) {
        if (isNew[i])
            result.addedAt.push_back(i);
    }

    double lastFull = 0.0;
    for (size_t i = 0; i < list.size(); ++i) {
        CVCItem &item = list[i];
        if (item.entryType != CVCItem::Fuel)
            continue;
        if (isNew[i] && !isMissed[i]) {
            FuelEconomy::FillUpInput input;
            input.odometer = item.odometer;
            input.quantityText = EntryForms::numberText(item.fuelQuantity);
            input.priceText = EntryForms::numberText(item.unitPrice);
            input.liquidText = item.fuelMeasure;
            input.distanceUnit = target.distanceUnit;
            input.economyUnit = target.economyUnit;
            input.startOdometer = target.startOdometer;
            input.lastFullFillOdometer = lastFull;
            input.liquidUnit = target.liquidUnit;
            item.economy = FuelEconomy::computeFillUp(input).economy;
        }
        // A missed fill-up breaks the distance: the next economy counts from this reading.
        if (item.notFull == 0 || (isNew[i] && isMissed[i]))
            lastFull = item.odometer;
    }
    return result;
}

} // namespace PeerLogMerge
