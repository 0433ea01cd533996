#pragma once

#include <QDate>
#include <QJsonObject>
#include <QString>

#include <vector>

#include "log/CVCItem.h"
#include "settings/VehicleSettings.h"

// The figures of the summary report between two dates: fuel, maintenance, trips and running
// cost of one vehicle, for the entries dated from `from` to `to`, both days included. Trips
// count on the day they started, so a trip crossing the period's end belongs to the period it
// left in. Open trips are listed apart and never claimed.
//
//   SummaryReport report = SummaryReport::build(entries, vehicle, from, to, clock.now());
//   QString page = ReportHtml::page(report, locale);
struct SummaryReport
{
    struct ServiceTotal
    {
        QString name;
        int count = 0;
        double total = 0.0;
    };
    // A maintenance job of the period that resets one of the reminders.
    struct ReminderReset
    {
        QString reminder; // "Oil Change" ... or the custom service's name
        quint32 date = 0;
        double odometer = 0.0;
    };
    struct PurposeTotal
    {
        QString purpose;
        bool business = true;
        int count = 0;
        double distance = 0.0;
        double tolls = 0.0;
        double parking = 0.0;
        double claim = 0.0;
    };
    struct Month
    {
        QDate month; // its first day
        double fuel = 0.0;
        double maintenance = 0.0;
    };
    struct EconomyPoint
    {
        quint32 date = 0;
        double economy = 0.0;
    };

    VehicleSettings vehicle;
    QDate from;
    QDate to;
    QDate reportDate;
    bool empty = true; // no entry of any kind in the period

    double startOdometer = 0.0; // the highest reading before the period (the start odometer if none)
    double endOdometer = 0.0; // the highest reading by the period's end
    double distance = 0.0;

    // Fuel; quantities in the vehicle's liquid unit.
    std::vector<CVCItem> fillUps;
    double fuelQuantity = 0.0;
    double fuelCost = 0.0;
    double averagePrice = 0.0; // cost / quantity
    double lowestPrice = 0.0;
    double highestPrice = 0.0;
    double averageEconomy = 0.0; // over the positive economies of the full fill-ups
    int economyCount = 0;
    double fuelCostPerDistance = 0.0;

    // Maintenance.
    std::vector<CVCItem> jobs;
    double maintenanceTotal = 0.0;
    std::vector<ServiceTotal> services; // in order of first appearance
    std::vector<ReminderReset> reminderResets;

    // Trips.
    std::vector<CVCItem> trips; // closed trips, in list order
    std::vector<CVCItem> openTrips;
    std::vector<PurposeTotal> purposes; // in order of first appearance
    PurposeTotal business; // totals of the business purposes
    PurposeTotal personal;
    PurposeTotal allTrips;

    // Running cost.
    double runningCost = 0.0; // fuel + maintenance
    double runningCostPerDistance = 0.0;
    int months = 0; // calendar months the period touches
    double runningCostPerMonth = 0.0;
    std::vector<Month> monthly;
    std::vector<EconomyPoint> economyPoints;

    // A trip's claim: distance x the trip rate + tolls + parking.
    static double claim(const CVCItem &trip, double rate);
    // A purpose is personal when its text holds "personal" in any case; all others are business.
    static bool isBusinessPurpose(const QString &purpose);
    // The day a record counts on: a trip's departure, any other record's entry date.
    static quint32 countingTime(const CVCItem &item);

    static SummaryReport build(const EntryList &entries, const VehicleSettings &vehicle, const QDate &from,
                               const QDate &to, quint32 now);

    // The figures for `tarvane-cli report --json`; money rounded to the cent.
    QJsonObject toJson() const;
};
