#pragma once

#include "VehicleSettings.h"

#include <QString>
#include <QStringList>

class IniFile;
class Reporter;

// Reading and writing the vehicle list, one vehicle's section and the trip settings of
// Velcora.ini. The key names, their order and the number formats are those the file has
// always had, so older files and outside readers keep working.
class VehicleProfile
{
public:
    // The names of the VehicleList section, and the entry equal to the current vehicle.
    struct VehicleList
    {
        QStringList names;
        int currentIndex = -1; // index into names; -1 when no entry matches exactly
    };

    static QString vehicleListSection() { return QStringLiteral("VehicleList"); }
    static QString tripSettingsSection() { return QStringLiteral("TripSettings"); }
    static QString versionsSection() { return QStringLiteral("Versions"); }
    static QString versionText() { return QStringLiteral("Version 2.2.2 Build 76"); }
    static QString defaultDirectory() { return QStringLiteral("\\My Documents\\Tarvane Files\\"); }
    static QString vinEmptyMessage() { return QStringLiteral("VIN is empty Skipping save"); }
    // "Vehicle%d"
    static QString vehicleKey(int slot);

    // Vehicle0, Vehicle1, ... up to the first missing key; empty values are skipped.
    static VehicleList readVehicleList(const IniFile &ini, const QString &currentName);

    // The five TripSettings values; a missing key leaves its value as it was.
    static void loadTripSettings(const IniFile &ini, TripSettings &trip);

    // The values of a vehicle whose section lacks keys: zero, empty, miles, MPG, US gallons.
    // The name is kept.
    static void resetToDefaults(VehicleSettings &settings);

    // Reads the section named vehicleName into settings (whose name becomes vehicleName).
    // Keys that are missing leave their values as they were; false when there is no section.
    // An empty directory becomes the default data folder.
    static bool load(const IniFile &ini, const QString &vehicleName, VehicleSettings &settings);

    // Writes the profile into the section named settings.name, and the trip settings. With
    // listSlot >= 0 the name is also entered as VehicleList/"Vehicle<listSlot>". An empty VIN
    // is reported and nothing is written (false).
    static bool save(IniFile &ini, const VehicleSettings &settings, const TripSettings &trip, int listSlot,
                     Reporter &reporter);

    // Directory, SetupDate, LastR0Mileage, LastR0Date .. LastR9Date, then Versions/PPC.
    static void saveLastServices(IniFile &ini, const VehicleSettings &settings);

    // Unit words of the file. Codes out of range are written as the nearest end of the range.
    static QString distanceUnitText(int code);
    static QString economyUnitText(int code);
    static QString liquidUnitText(int code);
    // Words back to codes; a word that is none of the known ones reads as code 0.
    static int distanceUnitCode(const QString &text);
    static int economyUnitCode(const QString &text);
    static int liquidUnitCode(const QString &text);

    // "Date", "Purpose" or "Contact" (2 and above).
    static QString sortListByText(int sortListBy);
};
