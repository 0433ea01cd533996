#include "MainScreenStatus.h"

#include "CounterTiles.h"
#include "FuelEconomy.h"
#include "platform/CFormat.h"

namespace MainScreen {

MainScreenStatus status(const VehicleSettings &settings, const LogScan &scan, const EntryList &entries,
                        quint32 now, const QString &lastBackupDate)
{
    MainScreenStatus s;
    s.lastOdometer = scan.lastOdometer;
    s.openTrips = scan.openTrips;
    s.currentEconomy = scan.currentEconomy;
    s.averageEconomy = scan.economyCount > 0 ? scan.economySum / scan.economyCount : 0.0;

    s.lastOdometerText = cformat("%-7.0f", s.lastOdometer);
    s.openTripsText = cformat("There are %d open trips.", s.openTrips);
    s.economyLine = FuelEconomy::economyLine(s.currentEconomy, s.averageEconomy);
    s.shortEconomyLine = FuelEconomy::shortEconomyLine(s.currentEconomy, s.averageEconomy);

    s.odometerTiles = CounterTiles::wholeNumber(s.lastOdometer, CounterTiles::Normal);
    const bool behind = s.averageEconomy > s.currentEconomy;
    s.currentEconomyTiles
        = CounterTiles::decimal(s.currentEconomy, behind ? CounterTiles::Alert : CounterTiles::Normal);
    s.averageEconomyTiles = CounterTiles::decimal(s.averageEconomy, CounterTiles::Normal);

    s.reminders = ReminderEngine::evaluate({ settings, scan, entries, now, lastBackupDate });
    return s;
}

} // namespace MainScreen
