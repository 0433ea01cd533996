#pragma once

#include <QString>

#include <array>

// The ten reminders, in the order of the LastR0..LastR9 keys.
enum ReminderIndex : int {
    OilChangeReminder = 0,
    CoolantFlushReminder = 1,
    TransmissionReminder = 2,
    TuneUpReminder = 3,
    TireRotationReminder = 4,
    FirstCustomReminder = 5,
    ReminderCount = 10
};

// The current vehicle's profile: one section of Velcora.ini, named after the vehicle.
struct VehicleSettings
{
    QString name; // the vehicle's name, also its section's name
    QString directory; // Directory
    QString vin; // VIN
    QString make; // Make
    QString model; // Model
    qint32 year = 0; // Year
    QString plate; // Plate
    double startOdometer = 0.0; // Start Odometer

    // Service intervals by reminder index: 0 OilDays/OilDistance, 1 CoolDays/CoolDistance,
    // 2 TransDays/TransDistance, 3 TuneDays/TuneDistance, 4 TireDays/TireDistance,
    // 5..9 C1Days/C1Miles .. C5Days/C5Miles.
    std::array<qint32, ReminderCount> intervalDays {};
    std::array<double, ReminderCount> intervalDistance {};
    std::array<QString, 5> customNames; // Custom1..Custom5

    double costPerMile = 0.0; // CostPerMile
    qint32 distanceUnit = 0; // Distance: 0 miles, 1 kilometres
    qint32 economyUnit = 0; // Econo: 0 MPG, 1 MPL, 2 L/100km, 3 MPiG, 4 KPL
    qint32 liquidUnit = 0; // Liquid: 0 US gallons, 1 imperial gallons, 2 litres
    quint32 setupDate = 0; // SetupDate

    // LastR0Mileage..LastR9Mileage and LastR0Date..LastR9Date.
    std::array<double, ReminderCount> lastMileage {};
    std::array<quint32, ReminderCount> lastDate {};
};

// The TripSettings section.
struct TripSettings
{
    bool detailed = false;
    bool companyName = false;
    bool homeAddress = false;
    bool useContacts = false;
    int sortListBy = 0; // 0 Date, 1 Purpose, 2 Contact
};
