#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

#include "calc/MainScreenStatus.h"
#include "calc/ReminderEngine.h"
#include "forms/EntryFormContext.h"
#include "log/CVCItem.h"
#include "log/LogScan.h"
#include "log/VehicleLog.h"
#include "platform/AppContext.h"
#include "settings/VehicleSettings.h"

class IniFile;
class Options;

// One line of the main screen's reminder list: its text and its small icon (0..7).
using ReminderListLine = ReminderLine;

// A counter of the main screen: the tile numbers it shows, or "No Data".
struct CounterState
{
    QList<int> tiles;
    bool noData = true;
    QString text; // the reading as text, for tooltips and accessibility ("12346", "30.00")
};

// What the main screen shows for the open vehicle.
struct MainScreenFigures
{
    CounterState odometer; // seven whole-number tiles
    CounterState currentEconomy; // decimal tiles, alert set when the average is greater
    CounterState averageEconomy;
    bool economyAlert = false;
    QString openTripText; // "There are %d open trips."
};

// The program's state between start-up and exit: options, settings file, the current vehicle's
// profile and log, the scan figures and the reminder list. The main window and the CLI drive it;
// every rule of start-up, vehicle change, new entries and vehicle backup lives here.
class VehicleSession
{
public:
    explicit VehicleSession(AppContext &context);
    ~VehicleSession();
    VehicleSession(const VehicleSession &) = delete;
    VehicleSession &operator=(const VehicleSession &) = delete;

    // Start-up: options, settings location (templates copied when missing), vehicle list,
    // profile, database open with scan and reminders. Read-only sessions (the CLI's reading
    // commands) create what is missing but never rewrite an existing file. A vehicle name given
    // here is opened instead of the options' current vehicle (saveOptions() then makes it the
    // current one); false (after a message) when the settings file has no such vehicle, and
    // nothing is opened.
    bool start(bool readOnly = false, const QString &vehicle = QString());
    // The last start-up step: save the database, the last-done values, SetupDate and Versions.
    void saveAfterStartup();
    // Exit: write the options.
    bool saveOptions();
    // Writes the settings file now (it is written again when the session ends); a failure is
    // reported with the file and the system's reason. A file that did not load is left alone.
    bool saveSettings();
    // Before a change: when another program (the CLI, a cron job) changed the open vehicle's log
    // or the settings file, both are read again so that nothing is saved over what it wrote.
    // True when anything was read again.
    bool reloadIfChanged();
    // The options of the run; the History screen keeps its filter in them until exit.
    Options &options() { return *m_options; }

    QStringList vehicleNames() const { return m_vehicleNames; }
    int currentVehicleIndex() const;
    QString currentVehicleName() const { return m_currentName; }
    // The vehicle selector's selection changed.
    void selectVehicle(const QString &name);
    // The selector's drop-down opened / closed (the non-standard data folder case).
    void dropDownOpened();
    void dropDownClosed();
    // Reopen the database: read, scan, counters, reminders.
    void reopen();
    // False when the last open could not read the log as it is on disk (the list is then empty).
    bool logLoaded() const { return m_logLoaded; }
    // Replaces the list (after a recalculation), saves it and reopens.
    bool replaceEntries(EntryList entries);

    const VehicleSettings &vehicle() const { return m_vehicle; }
    const TripSettings &tripSettings() const { return m_tripSettings; }
    const EntryList &entries() const { return m_log.entries(); }
    // The open log itself, for services that change and save it on their own (then reopen()).
    VehicleLog &log() { return m_log; }
    const LogScan &scan() const { return m_log.scan(); }
    const MainScreenFigures &figures() const { return m_figures; }
    // The figures, texts and reminder run of the last open.
    const MainScreenStatus &status() const { return m_status; }
    // Top to bottom.
    const QList<ReminderListLine> &reminders() const { return m_reminders; }

    // A record for the Fuel / Repairs / Trips commands, marked new (99), at the last odometer
    // and the program's current time.
    CVCItem newEntry(CVCItem::EntryType type) const;
    // What the entry forms need to know of the open vehicle.
    EntryFormContext formContext() const;
    // The install folder (the options' Path, normalised at start-up).
    QString installPath() const { return m_installPath; }
    // After the form's OK: kept only when its odometer is at least 1.0; appended, saved, reopened.
    bool addEntry(const CVCItem &item);

    // Vehicle backup to a folder / restore from a file; messages through the reporter.
    bool backupVehicle(const QString &folder);
    bool restoreVehicle(const QString &file);
    bool isBusy() const { return m_busy; }
    // The "Full Backup: %s" / "Full Restore: %s" lines after a full backup / restore.
    void addFullBackupLine();
    void addFullRestoreLine();
    // After Setup: reload the settings file ("ERROR 106" on failure), the vehicle list and the
    // profile of currentName, then save the log when it is still this vehicle's file, and reopen.
    void reloadAfterSetup(const QString &currentName);

    // The host data folder (ends with "/").
    QString dataFolder() const;
    // The file of the current vehicle's log.
    QString databasePath() const;
    // Raised by Setup when it creates a vehicle: the next save writes an empty log.
    void setFreshDatabase(bool fresh) { m_log.setFreshDatabase(fresh); }
    // Saves the current vehicle's database (the list in memory); false after the message.
    bool saveDatabase();
    quint32 programNow() const { return m_now; }
    AppContext &context() { return m_context; }
    IniFile &settings();

private:
    void loadProfile();
    void refreshFigures();
    void resetCounters();
    void saveLastServices();
    bool hasProfile() const;
    bool profileFolderIsElsewhere() const;
    LogScanSettings scanSettings() const;
    bool openReadOnly();

    AppContext &m_context;
    std::unique_ptr<IniFile> m_settings;
    std::unique_ptr<Options> m_options;
    bool m_readOnly = false;
    bool m_busy = false;
    bool m_logLoaded = false;
    quint32 m_now = 0;
    QString m_installPath;
    QString m_currentName;
    QStringList m_vehicleNames;
    VehicleSettings m_vehicle;
    TripSettings m_tripSettings;
    VehicleLog m_log;
    MainScreenFigures m_figures;
    MainScreenStatus m_status;
    QList<ReminderListLine> m_reminders;
};
