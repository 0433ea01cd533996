#pragma once

#include <QList>
#include <QString>

#include <array>

#include "log/CVCItem.h"
#include "log/LogScan.h"
#include "settings/VehicleSettings.h"

class Clock;
class Preferences;

// One line of the main screen's reminder list.
struct ReminderLine
{
    QString text;
    int icon = 0; // 0 welcome, 2 nothing due, 3 open trips, 4 distance overdue, 5 days overdue, 6 last backup

    bool operator==(const ReminderLine &other) const = default;
};

// Everything one run reads. The engine walks the entry list itself; of the scan it takes only
// the current odometer reading.
struct ReminderInputs
{
    const VehicleSettings &settings; // intervals, custom names, distance unit
    const LogScan &scan; // lastOdometer is the current reading
    const EntryList &entries;
    quint32 now = 0;
    QString lastBackupDate; // ListAttributes/LastBackupDate, "Unknown" when absent
};

// The result of a run: the list top to bottom and the eleven "Today" values.
struct ReminderReport
{
    // Oil, Cool, Trans, Tire, Tune, Trips, C1M..C5M: the order the keys are reset in.
    static constexpr int TodayKeyCount = 11;
    static const std::array<QString, TodayKeyCount> &todayKeys();

    quint32 now = 0; // the time the run took as "now"
    QList<ReminderLine> lines;
    std::array<QString, TodayKeyCount> today; // empty where nothing is overdue
    bool anyLineAdded = false;
};

namespace ReminderEngine {

inline constexpr const char *TodaySection = "Today";

// Decides what is due. Pure: reads the inputs, writes nothing.
ReminderReport evaluate(const ReminderInputs &inputs);

// Writes the "Today" section: first all eleven keys emptied in order, then the values found.
// False when a write failed (the run's list is still good).
bool writeToday(Preferences &preferences, const ReminderReport &report);

// A whole run as the program does it when a log has been loaded: now from the clock, the last
// backup date from the preferences, the "Today" keys written.
ReminderReport run(const VehicleSettings &settings, const LogScan &scan, const EntryList &entries,
                   const Clock &clock, Preferences &preferences);

} // namespace ReminderEngine
