#pragma once

#include "VehicleSettings.h"

#include <QString>

#include <array>

class Clock;
class Reporter;
class SettingsStore;

// The program-wide values kept in the options store (key "Options"): the last vehicle's name,
// the install folder, the History date range, two data view settings, and, for readers outside
// the program, the last odometer and the readings at which services fell due.
class Options
{
public:
    Options(SettingsStore &store, Reporter &reporter, const Clock &clock);

    static QString key() { return QStringLiteral("Options"); }
    static QString defaultName() { return QStringLiteral("Select Vehicle"); }
    static QString defaultPath() { return QStringLiteral("\\Program Files\\Tarvane"); }
    static QString shortPathReplacement() { return QStringLiteral("\\My Documents"); }
    static QString loadErrorMessage()
    {
        return QStringLiteral("REGKEY_OPTIONS error detected, Attempting to correct.");
    }
    static QString saveErrorMessage() { return QStringLiteral("Unable to update REGKEY_OPTIONS"); }

    // Reads the values; false (after a message) when the key doesn't exist, and then only the
    // date range and R5/R6 have been reset to their defaults. A reader that will never save
    // corrects nothing, so it passes report = false and nothing is said.
    bool load(bool report = true);
    // Writes every value, creating the key when needed. currentOdometer gives LastMileage and
    // decides which Reminder values are non-zero.
    bool save(const VehicleSettings &vehicle, double currentOdometer);

    // A reading as a DWORD: the fraction cut; below 0 (and NaN) gives 0, above 4294967295 gives
    // 4294967295, since a reading too large for the store is best kept as the largest it holds.
    static quint32 toDword(double value);
    // interval + last done when that is below the odometer and the interval is above 0, else 0.
    static quint32 reminderValue(double interval, double lastDone, double currentOdometer);
    // Reminder1..Reminder10 in order: oil, coolant, transmission, tune-up, tires, custom 1..5.
    static std::array<quint32, ReminderCount> reminderValues(const VehicleSettings &vehicle,
                                                             double currentOdometer);

    QString name = defaultName(); // Name: the current vehicle
    QString path = defaultPath(); // Path: the install folder
    double r5 = 0.0; // R5, R6: two data view settings
    double r6 = 0.0;
    double startDate = 0.0; // StartDate, EndDate: seconds since 1970
    double endDate = 0.0;

private:
    SettingsStore &m_store;
    Reporter &m_reporter;
    const Clock &m_clock;
};
