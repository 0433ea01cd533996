#pragma once

#include <QList>
#include <QString>

#include "ReminderEngine.h"

// What the main screen shows for an open vehicle: its figures, their texts and tiles, and the
// reminder list. The screen and the CLI's status command only display it.
struct MainScreenStatus
{
    double lastOdometer = 0.0;
    int openTrips = 0; // the load-time scan's count
    double currentEconomy = 0.0;
    double averageEconomy = 0.0;

    QString lastOdometerText; // "%-7.0f"
    QString openTripsText; // "There are %d open trips."
    QString economyLine; // "Fuel Economy: %3.2f - %3.2f Avg"
    QString shortEconomyLine; // "Economy:%3.2f - %3.2fAvg" or "Economy:%3.2f"

    QList<int> odometerTiles; // seven, normal style
    QList<int> currentEconomyTiles; // alert style when the average beats the current value
    QList<int> averageEconomyTiles;

    ReminderReport reminders;
};

namespace MainScreen {

// Builds the status from the scan's figures and runs the reminder engine over the entries.
// Pure: the caller decides whether to write the "Today" keys (ReminderEngine::writeToday).
MainScreenStatus status(const VehicleSettings &settings, const LogScan &scan, const EntryList &entries,
                        quint32 now, const QString &lastBackupDate);

} // namespace MainScreen
