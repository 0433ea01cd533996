#include "SummaryReport.h"

#include <QJsonArray>

#include <algorithm>
#include <array>
#include <cmath>

#include "calc/Units.h"
#include "dataview/DataViewFilter.h"

using namespace Qt::StringLiterals;

namespace {

const std::array<QString, 5> builtinServices
    = { u"Oil Change"_s, u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s, u"Rotate Tires"_s };

// The reminder a job resets, matched by its name as the load-time scan matches it: an oil change
// anywhere in the name, the others at its start; -1 for none.
int reminderOf(const QString &typeText, const VehicleSettings &vehicle)
{
    if (typeText.contains(builtinServices[0]))
        return 0;
    for (int r = 1; r < 5; ++r)
        if (typeText.startsWith(builtinServices[size_t(r)]))
            return r;
    for (int c = 0; c < 5; ++c) {
        const QString &name = vehicle.customNames[size_t(c)];
        if (!name.isEmpty() && typeText.startsWith(name))
            return 5 + c;
    }
    return -1;
}

// A fill-up's quantity in the vehicle's liquid unit; a record whose unit text is unknown is
// taken to be in the vehicle's unit already.
double quantityInVehicleUnit(const CVCItem &item, int vehicleLiquid)
{
    const int unit = Units::liquidUnitFromText(item.fuelMeasure);
    if (unit < 0 || unit == vehicleLiquid)
        return item.fuelQuantity;
    const double litres = Units::toLitres(item.fuelQuantity, unit);
    switch (vehicleLiquid) {
    case Units::UsGallons:
        return litres / Units::LitresPerUsGallon;
    case Units::ImperialGallons:
        return litres / Units::LitresPerImperialGallon;
    default:
        return litres;
    }
}

void addTrip(SummaryReport::PurposeTotal &total, const CVCItem &trip, double rate)
{
    ++total.count;
    total.distance += trip.tripDistance();
    total.tolls += trip.amount;
    total.parking += trip.parking;
    total.claim += SummaryReport::claim(trip, rate);
}

SummaryReport::Month &monthOf(std::vector<SummaryReport::Month> &months, quint32 time)
{
    const QDate date = DataViewFilter::localDate(time);
    const QDate first(date.year(), date.month(), 1);
    for (SummaryReport::Month &month : months)
        if (month.month == first)
            return month;
    return months.front(); // not reached: every month of the period is listed
}

double cents(double value)
{
    return std::round(value * 100.0) / 100.0;
}

} // namespace

double SummaryReport::claim(const CVCItem &trip, double rate)
{
    return trip.tripDistance() * rate + trip.amount + trip.parking;
}

bool SummaryReport::isBusinessPurpose(const QString &purpose)
{
    return !purpose.contains(u"personal"_s, Qt::CaseInsensitive);
}

quint32 SummaryReport::countingTime(const CVCItem &item)
{
    return item.entryType == CVCItem::Trip && item.departTime != 0 ? item.departTime : item.entryDate;
}

SummaryReport SummaryReport::build(const EntryList &entries, const VehicleSettings &vehicle,
                                   const QDate &from, const QDate &to, quint32 now)
{
    SummaryReport r;
    r.vehicle = vehicle;
    r.from = from;
    r.to = to;
    r.reportDate = DataViewFilter::localDate(now);
    r.business.purpose = u"Business"_s;
    r.personal.purpose = u"Personal"_s;
    r.personal.business = false;
    r.allTrips.purpose = u"All trips"_s;
    for (QDate month(from.year(), from.month(), 1); month <= to; month = month.addMonths(1))
        r.monthly.push_back({ month, 0.0, 0.0 });
    r.months = int(r.monthly.size());

    const qint64 start = DataViewFilter::midnight(from);
    const qint64 end = DataViewFilter::midnight(to.addDays(1));
    const double rate = vehicle.costPerMile;
    r.startOdometer = vehicle.startOdometer;
    double highestInPeriod = 0.0;
    bool anyPrice = false;

    for (const CVCItem &item : entries) {
        const qint64 time = countingTime(item);
        const double reading
            = item.entryType == CVCItem::Trip ? std::max(item.odometer, item.endOdometer) : item.odometer;
        if (time < start) {
            r.startOdometer = std::max(r.startOdometer, reading);
            continue;
        }
        if (time >= end)
            continue;
        r.empty = false;
        highestInPeriod = std::max(highestInPeriod, reading);
        if (item.entryType == CVCItem::Fuel) {
            r.fillUps.push_back(item);
            r.fuelQuantity += quantityInVehicleUnit(item, vehicle.liquidUnit);
            r.fuelCost += item.amount;
            if (item.unitPrice > 0) {
                r.lowestPrice = anyPrice ? std::min(r.lowestPrice, item.unitPrice) : item.unitPrice;
                r.highestPrice = std::max(r.highestPrice, item.unitPrice);
                anyPrice = true;
            }
            if (item.notFull == 0 && item.economy > 0) {
                r.averageEconomy += item.economy;
                ++r.economyCount;
                r.economyPoints.push_back({ item.entryDate, item.economy });
            }
            monthOf(r.monthly, quint32(time)).fuel += item.amount;
        } else if (item.entryType == CVCItem::Maintenance) {
            r.jobs.push_back(item);
            r.maintenanceTotal += item.amount;
            auto service = std::find_if(r.services.begin(), r.services.end(),
                                        [&](const ServiceTotal &s) { return s.name == item.typeText; });
            if (service == r.services.end())
                service = r.services.insert(r.services.end(), { item.typeText, 0, 0.0 });
            ++service->count;
            service->total += item.amount;
            const int reminder = reminderOf(item.typeText, vehicle);
            if (reminder >= 0)
                r.reminderResets.push_back({ reminder < 5 ? builtinServices[size_t(reminder)]
                                                          : vehicle.customNames[size_t(reminder - 5)],
                                             item.entryDate, item.odometer });
            monthOf(r.monthly, quint32(time)).maintenance += item.amount;
        } else if (item.entryType == CVCItem::Trip) {
            if (item.odometer >= item.endOdometer) {
                r.openTrips.push_back(item);
                continue;
            }
            r.trips.push_back(item);
            auto purpose = std::find_if(r.purposes.begin(), r.purposes.end(),
                                        [&](const PurposeTotal &p) { return p.purpose == item.purpose; });
            if (purpose == r.purposes.end()) {
                PurposeTotal fresh;
                fresh.purpose = item.purpose;
                fresh.business = isBusinessPurpose(item.purpose);
                purpose = r.purposes.insert(r.purposes.end(), fresh);
            }
            addTrip(*purpose, item, rate);
            addTrip(purpose->business ? r.business : r.personal, item, rate);
            addTrip(r.allTrips, item, rate);
        }
    }

    r.endOdometer = std::max(r.startOdometer, highestInPeriod);
    r.distance = r.endOdometer - r.startOdometer;
    if (r.fuelQuantity > 0)
        r.averagePrice = r.fuelCost / r.fuelQuantity;
    if (r.economyCount > 0)
        r.averageEconomy /= r.economyCount;
    r.runningCost = r.fuelCost + r.maintenanceTotal;
    if (r.distance > 0) {
        r.fuelCostPerDistance = r.fuelCost / r.distance;
        r.runningCostPerDistance = r.runningCost / r.distance;
    }
    if (r.months > 0)
        r.runningCostPerMonth = r.runningCost / r.months;
    return r;
}

QJsonObject SummaryReport::toJson() const
{
    const auto purposeJson = [](const PurposeTotal &p) {
        return QJsonObject { { u"purpose"_s, p.purpose },    { u"business"_s, p.business },
                             { u"count"_s, p.count },        { u"distance"_s, p.distance },
                             { u"tolls"_s, cents(p.tolls) }, { u"parking"_s, cents(p.parking) },
                             { u"claim"_s, cents(p.claim) } };
    };
    QJsonArray services;
    for (const ServiceTotal &s : this->services)
        services.append(
            QJsonObject { { u"name"_s, s.name }, { u"count"_s, s.count }, { u"total"_s, cents(s.total) } });
    QJsonArray resets;
    for (const ReminderReset &reset : reminderResets)
        resets.append(
            QJsonObject { { u"reminder"_s, reset.reminder },
                          { u"date"_s, DataViewFilter::localDate(reset.date).toString(Qt::ISODate) },
                          { u"odometer"_s, reset.odometer } });
    QJsonArray purposeList;
    for (const PurposeTotal &p : purposes)
        purposeList.append(purposeJson(p));
    QJsonArray monthList;
    for (const Month &m : monthly)
        monthList.append(QJsonObject { { u"month"_s, m.month.toString(u"yyyy-MM"_s) },
                                       { u"fuel"_s, cents(m.fuel) },
                                       { u"maintenance"_s, cents(m.maintenance) } });
    return QJsonObject {
        { u"vehicle"_s, vehicle.name },
        { u"from"_s, from.toString(Qt::ISODate) },
        { u"to"_s, to.toString(Qt::ISODate) },
        { u"empty"_s, empty },
        { u"odometer"_s,
          QJsonObject {
              { u"start"_s, startOdometer }, { u"end"_s, endOdometer }, { u"distance"_s, distance } } },
        { u"fuel"_s,
          QJsonObject { { u"fillUps"_s, int(fillUps.size()) },
                        { u"quantity"_s, std::round(fuelQuantity * 1000.0) / 1000.0 },
                        { u"cost"_s, cents(fuelCost) },
                        { u"averagePrice"_s, std::round(averagePrice * 1000.0) / 1000.0 },
                        { u"lowestPrice"_s, lowestPrice },
                        { u"highestPrice"_s, highestPrice },
                        { u"averageEconomy"_s, cents(averageEconomy) },
                        { u"economyUnit"_s, CVCItem::economyUnitName(vehicle.economyUnit) },
                        { u"costPerDistance"_s, std::round(fuelCostPerDistance * 1000.0) / 1000.0 } } },
        { u"maintenance"_s,
          QJsonObject { { u"jobs"_s, int(jobs.size()) },
                        { u"total"_s, cents(maintenanceTotal) },
                        { u"services"_s, services },
                        { u"reminderResets"_s, resets } } },
        { u"trips"_s,
          QJsonObject { { u"closed"_s, int(trips.size()) },
                        { u"open"_s, int(openTrips.size()) },
                        { u"rate"_s, vehicle.costPerMile },
                        { u"purposes"_s, purposeList },
                        { u"business"_s, purposeJson(business) },
                        { u"personal"_s, purposeJson(personal) },
                        { u"total"_s, purposeJson(allTrips) } } },
        { u"runningCost"_s,
          QJsonObject { { u"total"_s, cents(runningCost) },
                        { u"perDistance"_s, std::round(runningCostPerDistance * 1000.0) / 1000.0 },
                        { u"months"_s, months },
                        { u"perMonth"_s, cents(runningCostPerMonth) },
                        { u"monthly"_s, monthList } } },
    };
}
