#include "VehicleSession.h"

#include <QDir>
#include <QFile>

#include "calc/CounterTiles.h"
#include "calc/MainScreenStatus.h"
#include "log/LogArchive.h"
#include "log/VehicleBackup.h"
#include "platform/AtomicFile.h"
#include "platform/CFormat.h"
#include "settings/IniFile.h"
#include "settings/Options.h"
#include "settings/PreferenceSections.h"
#include "settings/SettingsLocator.h"
#include "settings/VehicleProfile.h"

using namespace Qt::StringLiterals;

namespace {

CounterState counter(const QList<int> &tiles, const QString &text)
{
    CounterState state;
    state.tiles = tiles;
    state.noData = false;
    state.text = text;
    return state;
}

CounterState noData(const QList<int> &tiles)
{
    CounterState state;
    state.tiles = tiles;
    state.noData = true;
    return state;
}

} // namespace

namespace {

// Older than any write of ours can take, so never the temporary of a save under way.
constexpr qint64 StaleTemporarySeconds = 600;

bool isDataFileName(const QString &name)
{
    return name.endsWith(u".vcb"_s) || name == u"Velcora.ini"_s || name == u"Lists.ini"_s;
}

} // namespace

VehicleSession::VehicleSession(AppContext &context)
    : m_context(context)
    , m_settings(std::make_unique<IniFile>())
    , m_options(std::make_unique<Options>(context.optionsStore, context.reporter, context.clock))
{
    resetCounters();
}

VehicleSession::~VehicleSession() = default;

IniFile &VehicleSession::settings()
{
    return *m_settings;
}

QString VehicleSession::dataFolder() const
{
    return m_context.paths.dataFolder();
}

QString VehicleSession::databasePath() const
{
    return VehicleLog::databasePath(dataFolder(), m_vehicle.vin);
}

int VehicleSession::currentVehicleIndex() const
{
    return m_vehicleNames.indexOf(m_currentName);
}

bool VehicleSession::hasProfile() const
{
    return m_settings->hasSection(m_currentName);
}

LogScanSettings VehicleSession::scanSettings() const
{
    LogScanSettings settings;
    settings.startOdometer = m_vehicle.startOdometer;
    settings.customNames = m_vehicle.customNames;
    return settings;
}

bool VehicleSession::start(bool readOnly, const QString &vehicle)
{
    m_readOnly = readOnly;
    m_settings->setSaveOnDestroy(!readOnly);
    m_now = m_context.clock.now();

    m_options->load(!readOnly);
    m_currentName = vehicle.isEmpty() ? m_options->name : vehicle;
    m_installPath = m_options->path;

    SettingsLocator locator(m_context.paths, m_context.reporter);
    if (locator.locate(m_installPath, *m_settings)) {
        const VehicleProfile::VehicleList list = VehicleProfile::readVehicleList(*m_settings, m_currentName);
        m_vehicleNames = list.names;
        VehicleProfile::loadTripSettings(*m_settings, m_tripSettings);
    }
    if (!readOnly) {
        // A write killed before its rename leaves a full-size temporary that nothing else removes.
        AtomicFile::removeStaleTemporaries(dataFolder(), isDataFileName, StaleTemporarySeconds);
    }
    if (!vehicle.isEmpty() && !m_vehicleNames.contains(vehicle)) {
        m_context.reporter.error(u"No vehicle named \"%1\" in the vehicle list."_s.arg(vehicle));
        return false;
    }
    VehicleProfile::resetToDefaults(m_vehicle);
    loadProfile();
    reopen();
    return true;
}

void VehicleSession::loadProfile()
{
    m_vehicle.name = m_currentName;
    VehicleProfile::load(*m_settings, m_currentName, m_vehicle);
}

bool VehicleSession::openReadOnly()
{
    // Reading tools look at the file as it is: nothing is created, moved or rewritten.
    EntryList entries;
    const QString path = databasePath();
    bool loaded = true;
    if (!VehicleLog::isSafeVin(VehicleLog::effectiveVin(m_vehicle.vin))) {
        m_context.reporter.error(VehicleLog::openErrorFormat().arg(path));
        loaded = false;
    } else if (QFile::exists(path)) {
        LogArchive archive;
        if (!archive.read(path, entries)) {
            m_context.reporter.error(archive.errorString());
            entries.clear();
            loaded = false;
        }
    }
    m_log.setEntries(std::move(entries));
    m_log.rescan(scanSettings());
    return loaded;
}

void VehicleSession::reopen()
{
    m_logLoaded = m_readOnly
        ? openReadOnly()
        : m_log.open(dataFolder(), m_vehicle.vin, scanSettings(), m_context.reporter, m_context.clock);
    refreshFigures();
}

void VehicleSession::refreshFigures()
{
    Preferences preferences = m_context.preferences();
    const QString lastBackup
        = preferences.getString(PreferenceSections::listAttributes(), u"LastBackupDate"_s, u"Unknown"_s);
    m_status
        = MainScreen::status(m_vehicle, m_log.scan(), m_log.entries(), m_context.clock.now(), lastBackup);
    const MainScreenStatus &status = m_status;
    // The reminder run's time is the program's current time until the next run.
    m_now = status.reminders.now;
    m_reminders = status.reminders.lines;
    if (!m_readOnly)
        ReminderEngine::writeToday(preferences, status.reminders);

    // "No Data" is for the moment before a vehicle is chosen; an opened vehicle shows its
    // figures, an economy of 0 when its log holds no full fill-up yet.
    const bool open = hasProfile();
    m_figures.odometer = open ? counter(status.odometerTiles, status.lastOdometerText.trimmed())
                              : noData(status.odometerTiles);
    m_figures.currentEconomy = open
        ? counter(status.currentEconomyTiles, cformat("%3.2f", status.currentEconomy))
        : noData(status.currentEconomyTiles);
    m_figures.averageEconomy = open
        ? counter(status.averageEconomyTiles, cformat("%3.2f", status.averageEconomy))
        : noData(status.averageEconomyTiles);
    m_figures.economyAlert = status.averageEconomy > status.currentEconomy;
    m_figures.openTripText = status.openTripsText;
}

void VehicleSession::resetCounters()
{
    m_figures.odometer = noData(CounterTiles::wholeNumber(m_vehicle.startOdometer));
    m_figures.currentEconomy = noData(CounterTiles::decimal(0.0));
    m_figures.averageEconomy = noData(CounterTiles::decimal(0.0));
    m_figures.economyAlert = false;
    m_figures.openTripText.clear();
}

bool VehicleSession::saveDatabase()
{
    if (m_readOnly)
        return false;
    return m_log.save(dataFolder(), m_vehicle.vin, m_context.reporter);
}

void VehicleSession::saveLastServices()
{
    if (m_readOnly || !hasProfile())
        return;
    // The scan's figures are saved as they are (0 when no entry matched), so the reminder lines
    // and the reminder screens, which read these keys, agree after an entry is deleted.
    const LogScan &scan = m_log.scan();
    for (int i = 0; i < ReminderCount; ++i) {
        m_vehicle.lastMileage[i] = scan.lastServiceOdometer[i];
        m_vehicle.lastDate[i] = scan.lastServiceDate[i];
    }
    VehicleProfile::saveLastServices(*m_settings, m_vehicle);
}

void VehicleSession::saveAfterStartup()
{
    if (m_readOnly)
        return;
    saveDatabase();
    saveLastServices();
}

bool VehicleSession::saveOptions()
{
    if (m_readOnly)
        return false;
    m_options->name = m_currentName;
    m_options->path = m_installPath;
    return m_options->save(m_vehicle, m_log.scan().lastOdometer);
}

bool VehicleSession::saveSettings()
{
    // A file that did not load was reported at start-up and is never written over.
    if (m_readOnly || m_settings->path().isEmpty() || m_settings->loadFailed())
        return false;
    if (m_settings->Save())
        return true;
    m_context.reporter.errorWithDetail(IniFile::saveFailedText(m_settings->path()),
                                       m_settings->path() + u'\n' + m_settings->errorString());
    return false;
}

bool VehicleSession::reloadIfChanged()
{
    if (m_readOnly)
        return false;
    bool reloaded = false;
    if (m_settings->changedOnDisk()) {
        // Save takes the other program's file, with our own unsaved changes made again over it.
        if (saveSettings()) {
            m_vehicleNames = VehicleProfile::readVehicleList(*m_settings, m_currentName).names;
            VehicleProfile::loadTripSettings(*m_settings, m_tripSettings);
            loadProfile();
        }
        reloaded = true;
    }
    if (reloaded || m_log.changedOnDisk()) {
        reopen();
        reloaded = true;
    }
    return reloaded;
}

void VehicleSession::selectVehicle(const QString &name)
{
    m_currentName = name;
    m_options->name = name;
    m_reminders.clear();
    loadProfile();
    resetCounters();
    reopen();
    // Written once the vehicle is open, so LastMileage and the Reminder values are its own.
    if (!m_readOnly)
        m_options->save(m_vehicle, m_log.scan().lastOdometer);
}

bool VehicleSession::profileFolderIsElsewhere() const
{
    // The drop-down used to move a vehicle kept in another folder back to the data folder. Here
    // every spelling of the data folder is the same host folder, so only a profile that names
    // another folder still needs it; otherwise opening the list would rewrite the log each time.
    const QString folder
        = m_vehicle.directory.isEmpty() ? dataFolder() : m_context.paths.hostPath(m_vehicle.directory);
    return QDir(folder).absolutePath() != QDir(dataFolder()).absolutePath();
}

void VehicleSession::dropDownOpened()
{
    if (m_readOnly || !hasProfile() || !profileFolderIsElsewhere())
        return;
    saveDatabase();
    saveLastServices();
    loadProfile();
    reopen();
}

void VehicleSession::dropDownClosed()
{
    if (m_readOnly || !hasProfile() || !profileFolderIsElsewhere())
        return;
    saveDatabase();
    saveLastServices();
}

CVCItem VehicleSession::newEntry(CVCItem::EntryType type) const
{
    CVCItem item;
    item.entryType = type;
    item.odometer = m_log.scan().lastOdometer;
    item.entryDate = m_now;
    item.newEntryMark = CVCItem::NewEntryMark;
    if (type == CVCItem::Trip)
        item.iconIndex = 19;
    return item;
}

EntryFormContext VehicleSession::formContext() const
{
    EntryFormContext context;
    context.highestOdometer = m_log.scan().lastOdometer;
    context.startupTime = m_now;
    context.clock = &m_context.clock;
    context.vehicleName = m_currentName;
    context.distanceUnit = m_vehicle.distanceUnit;
    context.economyUnit = m_vehicle.economyUnit;
    context.liquidUnit = m_vehicle.liquidUnit;
    context.startOdometer = m_vehicle.startOdometer;
    context.lastFullFillOdometer = m_log.scan().lastFullFillOdometer;
    context.costPerMile = m_vehicle.costPerMile;
    return context;
}

bool VehicleSession::addEntry(const CVCItem &item)
{
    // A form closed on an untouched record leaves its odometer below 1: it is dropped silently.
    if (!item.HasOdometer())
        return false;
    const bool saved = !m_readOnly && m_log.append(dataFolder(), m_vehicle.vin, item, m_context.reporter);
    reopen();
    return saved;
}

bool VehicleSession::replaceEntries(EntryList entries)
{
    m_log.setEntries(std::move(entries));
    const bool saved = saveDatabase();
    reopen();
    return saved;
}

bool VehicleSession::backupVehicle(const QString &folder)
{
    if (m_vehicle.vin.isEmpty())
        m_vehicle.vin = VehicleLog::effectiveVin(m_vehicle.vin);
    return VehicleBackup::backup(m_log.entries(), folder, m_vehicle.vin, m_context.reporter, m_busy);
}

bool VehicleSession::restoreVehicle(const QString &file)
{
    if (m_readOnly)
        return false;
    const bool restored
        = VehicleBackup::restore(m_log, file, m_currentName, dataFolder(), m_vehicle.vin, m_context.reporter);
    reopen();
    return restored;
}

void VehicleSession::addFullBackupLine()
{
    const QString date = m_context.preferences().getString(PreferenceSections::listAttributes(),
                                                           u"LastBackupDate"_s, u"Unknown"_s);
    m_reminders.prepend({ u"Full Backup: "_s + date, 6 });
}

void VehicleSession::addFullRestoreLine()
{
    // Everything is reloaded from the restored files first, so the line stays visible on top.
    SettingsLocator locator(m_context.paths, m_context.reporter);
    if (locator.reload(*m_settings)) {
        const VehicleProfile::VehicleList list = VehicleProfile::readVehicleList(*m_settings, m_currentName);
        m_vehicleNames = list.names;
        VehicleProfile::loadTripSettings(*m_settings, m_tripSettings);
        loadProfile();
    }
    resetCounters();
    m_reminders.clear();
    reopen();
    const QString date = m_context.preferences().getString(PreferenceSections::listAttributes(),
                                                           u"LastRestoreDate"_s, u"Unknown"_s);
    m_reminders.prepend({ u"Full Restore: "_s + date, 7 });
}

void VehicleSession::reloadAfterSetup(const QString &currentName)
{
    SettingsLocator locator(m_context.paths, m_context.reporter);
    if (!locator.reload(*m_settings))
        return;
    // The list in memory belongs to the file it was read from: after a new vehicle, a delete or a
    // VIN change it must not be written into another vehicle's log.
    const QString openPath = databasePath();
    if (currentName != m_currentName)
        VehicleProfile::resetToDefaults(m_vehicle);
    m_currentName = currentName;
    m_vehicleNames = VehicleProfile::readVehicleList(*m_settings, m_currentName).names;
    VehicleProfile::loadTripSettings(*m_settings, m_tripSettings);
    loadProfile();
    resetCounters();
    m_reminders.clear();
    if (databasePath() == openPath)
        saveDatabase();
    reopen();
}
