#include "SetupForm.h"

#include <QFile>

#include "VehicleNames.h"
#include "log/VehicleLog.h"
#include "platform/CFormat.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/PickLists.h"
#include "settings/SettingsLocator.h"
#include "settings/SettingsMessages.h"
#include "settings/VehicleProfile.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray utf8(const QString &text)
{
    return text.toUtf8();
}

QString fileName(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

} // namespace

SetupPaths SetupPaths::of(const DevicePaths &paths)
{
    return { paths.hostPath(SettingsLocator::settingsDevicePath()), PickLists::listsPath(paths),
             paths.dataFolder() };
}

SetupForm::SetupForm(const SetupPaths &paths, const QString &currentName, const VehicleSettings &vehicle,
                     const TripSettings &trip, double highestOdometer)
    : m_paths(paths)
    , m_ini(std::make_unique<IniFile>())
    , m_name(currentName)
    , m_vehicle(vehicle)
    , m_trip(trip)
    , m_highestOdometer(highestOdometer)
{
    // Setup writes the file at the moments it chooses, never on the way out.
    m_ini->setSaveOnDestroy(false);
    m_vehicle.name = currentName;
}

SetupForm::~SetupForm() = default;

QString SetupForm::deleteQuestion(const QString &logFile)
{
    return cformat("DELETE THIS VEHICLE?\nARE YOU SURE?\n\nIts log \"%s\" stays in the data folder.",
                   utf8(logFile).constData());
}

QString SetupForm::cannotDelete()
{
    return u"Sorry, Can not delete.\nYou must have at least 1 vehicle,\nadd another vehicle before deleting this one."_s;
}

QString SetupForm::distanceWord(int distanceUnit)
{
    return distanceUnit == 1 ? u"km"_s : u"mi"_s;
}

QString SetupForm::economyWord(int economyUnit)
{
    // Miles per litre reads "MPGi" on this screen, unlike the lists' "MPL".
    if (economyUnit >= 4)
        return u"KPL"_s;
    switch (economyUnit) {
    case 1:
    case 3:
        return u"MPGi"_s;
    case 2:
        return u"L/100km"_s;
    default:
        return u"MPG"_s;
    }
}

bool SetupForm::loadSettings()
{
    m_loaded = m_ini->Load(m_paths.settingsFile);
    return m_loaded;
}

bool SetupForm::open()
{
    return loadSettings();
}

bool SetupForm::writeSettings(Reporter &reporter)
{
    if (!m_loaded)
        return false;
    if (m_ini->Save(m_paths.settingsFile))
        return true;
    reporter.errorWithDetail(IniFile::saveFailedText(m_paths.settingsFile),
                             m_paths.settingsFile + u"\n"_s + m_ini->errorString());
    return false;
}

QStringList SetupForm::vehicleNames() const
{
    return VehicleProfile::readVehicleList(*m_ini, m_name).names;
}

int SetupForm::listSlot(const QString &name) const
{
    for (int n = 0;; ++n) {
        QString value;
        if (!m_ini->GetString(VehicleProfile::vehicleListSection(), VehicleProfile::vehicleKey(n), value))
            return -1;
        if (!name.isEmpty() && value == name)
            return n;
    }
}

bool SetupForm::hasListedVehicle() const
{
    return listSlot(m_name) >= 0;
}

SetupDisplay SetupForm::display() const
{
    SetupDisplay d;
    d.vehicleId = m_name;
    d.odometer = cformat("%-7.0f", m_highestOdometer);
    d.make = m_vehicle.make;
    d.model = m_vehicle.model;
    d.year = cformat("%-4.0d", m_vehicle.year);
    d.plate = m_vehicle.plate;
    d.vin = m_vehicle.vin;
    d.economy = economyWord(m_vehicle.economyUnit);
    d.oilDistance = cformat("%-8.0f", m_vehicle.intervalDistance[OilChangeReminder]);
    d.distanceWord = distanceWord(m_vehicle.distanceUnit);
    d.oilDays = cformat("%-4.0d", m_vehicle.intervalDays[OilChangeReminder]);
    d.showDetails = m_trip.detailed ? u"Yes"_s : u"No"_s;
    d.sortBy = VehicleProfile::sortListByText(m_trip.sortListBy);
    return d;
}

GeneralInfoValues SetupForm::generalInfo() const
{
    return { m_vehicle.vin, m_vehicle.make, m_vehicle.model, m_vehicle.year, m_vehicle.plate };
}

void SetupForm::confirm(const GeneralInfoValues &values)
{
    // The edits take upper case only, and the VIN edit no more than 20 characters.
    m_vehicle.vin = SetupPages::upperCaseEdit(values.vin, SetupPages::VinLength);
    m_vehicle.make = values.make;
    m_vehicle.model = values.model;
    m_vehicle.year = values.year;
    m_vehicle.plate = SetupPages::upperCaseEdit(values.plate);
}

MeasurementsValues SetupForm::measurements() const
{
    return { m_vehicle.startOdometer, m_vehicle.distanceUnit, m_vehicle.liquidUnit, m_vehicle.economyUnit };
}

void SetupForm::confirm(const MeasurementsValues &values)
{
    // Stored entries keep their units; the data view's recalculation converts them on request.
    m_vehicle.startOdometer = values.startOdometer;
    m_vehicle.distanceUnit = values.distanceUnit;
    m_vehicle.economyUnit = values.economyUnit;
    m_vehicle.liquidUnit = values.liquidUnit;
}

IntervalsValues SetupForm::intervals() const
{
    IntervalsValues values;
    for (int row = 0; row < 5; ++row) {
        const size_t reminder = size_t(SetupPages::rowReminder(row));
        values.distance[size_t(row)] = m_vehicle.intervalDistance[reminder];
        values.days[size_t(row)] = m_vehicle.intervalDays[reminder];
    }
    return values;
}

void SetupForm::confirm(const IntervalsValues &values)
{
    for (int row = 0; row < 5; ++row) {
        const size_t reminder = size_t(SetupPages::rowReminder(row));
        m_vehicle.intervalDistance[reminder] = values.distance[size_t(row)];
        m_vehicle.intervalDays[reminder] = values.days[size_t(row)];
    }
}

CustomValues SetupForm::custom() const
{
    CustomValues values;
    for (size_t c = 0; c < 5; ++c) {
        values.names[c] = m_vehicle.customNames[c];
        values.mileage[c] = m_vehicle.intervalDistance[FirstCustomReminder + c];
        values.days[c] = m_vehicle.intervalDays[FirstCustomReminder + c];
    }
    return values;
}

void SetupForm::confirm(const CustomValues &values)
{
    for (size_t c = 0; c < 5; ++c) {
        m_vehicle.customNames[c] = values.names[c];
        m_vehicle.intervalDistance[FirstCustomReminder + c] = values.mileage[c];
        m_vehicle.intervalDays[FirstCustomReminder + c] = values.days[c];
    }
    // A custom name becomes a repair type, which is how a maintenance entry resets its reminder.
    // A pick-list file that can't be read is left alone, silently.
    PickLists::seedRepairList(m_paths.listsFile, m_vehicle.customNames);
}

TripsValues SetupForm::trips() const
{
    return { m_trip.detailed,    m_vehicle.costPerMile, m_trip.useContacts,
             m_trip.homeAddress, m_trip.companyName,    m_trip.sortListBy };
}

void SetupForm::confirm(const TripsValues &values)
{
    m_trip.detailed = values.detailed;
    m_vehicle.costPerMile = values.costPerMile;
    m_trip.useContacts = values.useContacts;
    m_trip.homeAddress = values.homeAddress;
    m_trip.companyName = values.companyName;
    m_trip.sortListBy = values.sortListBy;
}

QString SetupForm::vinProblem(const QString &vin) const
{
    const QString problem = VehicleNames::vinProblem(vin);
    if (!problem.isEmpty() || vin.isEmpty())
        return problem;
    // Two vehicles of one VIN would write one log file.
    for (const QString &name : vehicleNames()) {
        QString other;
        if (name != m_name && m_ini->GetString(name, u"VIN"_s, other)
            && other.compare(vin, Qt::CaseInsensitive) == 0)
            return u"The vehicle \"%1\" has the VIN %2 already. Each vehicle needs a VIN of its own, since "
                   u"its "
                   "log is stored by VIN."_s.arg(name, other);
    }
    return QString();
}

bool SetupForm::saveProfile(int slot, Reporter &reporter)
{
    m_vehicle.name = m_name;
    return VehicleProfile::save(*m_ini, m_vehicle, m_trip, slot, reporter);
}

void SetupForm::beginEdit()
{
    m_editVin = m_vehicle.vin;
}

void SetupForm::offerLogRename(Reporter &reporter)
{
    const QString oldVin = m_editVin;
    m_editVin = m_vehicle.vin;
    if (oldVin.isEmpty() || m_vehicle.vin.isEmpty() || oldVin == m_vehicle.vin)
        return;
    const QString oldLog = VehicleLog::databasePath(m_paths.dataFolder, oldVin);
    const QString newLog = VehicleLog::databasePath(m_paths.dataFolder, m_vehicle.vin);
    if (!QFile::exists(oldLog))
        return;
    const QByteArray oldName = utf8(fileName(oldLog));
    const QByteArray newName = utf8(fileName(newLog));
    if (!reporter.ask(cformat("The log of this vehicle is stored by its VIN, as \"%s\".\nRename it to \"%s\" "
                              "so that its entries stay with the vehicle?",
                              oldName.constData(), newName.constData())))
        return;
    if (QFile::exists(newLog)) {
        reporter.error(cformat("\"%s\" exists already, so \"%s\" was not renamed.", newName.constData(),
                               oldName.constData()));
        return;
    }
    if (!QFile::rename(oldLog, newLog)) {
        reporter.error(
            cformat("\"%s\" could not be renamed to \"%s\".", oldName.constData(), newName.constData()));
        return;
    }
    // The vehicle backup in the data folder follows its log, unless it would replace another.
    const QString oldBackup = m_paths.dataFolder + oldVin + u".bak"_s;
    const QString newBackup = m_paths.dataFolder + m_vehicle.vin + u".bak"_s;
    if (QFile::exists(oldBackup) && !QFile::exists(newBackup))
        QFile::rename(oldBackup, newBackup);
}

bool SetupForm::finishEdit(Reporter &reporter)
{
    offerLogRename(reporter);
    const int slot = listSlot(m_name);
    if (!m_loaded || slot < 0)
        return false;
    if (!saveProfile(slot, reporter))
        return false;
    return writeSettings(reporter);
}

bool SetupForm::beginNewVehicle(Reporter &reporter)
{
    m_newSlot = -1;
    if (!loadSettings()) {
        // Nothing is created over a file that can't be read.
        reporter.error(SettingsMessages::setupLoadFailed(m_paths.settingsFile));
        return false;
    }
    for (int i = 0;; ++i) {
        QString value;
        m_ini->GetString(VehicleProfile::vehicleListSection(), VehicleProfile::vehicleKey(i), value);
        if (value.trimmed().isEmpty()) {
            m_newSlot = i;
            return true;
        }
    }
}

QString SetupForm::newNameProblem(const QString &name) const
{
    return VehicleNames::nameProblem(name, vehicleNames());
}

bool SetupForm::acceptNewName(bool created, const QString &name, Reporter &reporter)
{
    if (!created) {
        reporter.error(newVehicleCancelled());
        return false;
    }
    const QString problem = newNameProblem(name);
    if (!problem.isEmpty()) {
        reporter.error(problem);
        return false;
    }
    m_previousName = m_name;
    m_previousVehicle = m_vehicle;
    m_previousOdometer = m_highestOdometer;
    // An empty name leaves no vehicle chosen and creates nothing.
    m_name = name;
    m_vehicle.name = name;
    if (name.isEmpty())
        return false;

    // The units, the year and the trip rate are kept from the vehicle open before.
    m_highestOdometer = 0.0;
    m_vehicle.make.clear();
    m_vehicle.model.clear();
    m_vehicle.plate.clear();
    m_vehicle.vin.clear();
    m_vehicle.startOdometer = 0.0;
    m_vehicle.intervalDays.fill(0);
    m_vehicle.intervalDistance.fill(0.0);
    for (QString &custom : m_vehicle.customNames)
        custom.clear();
    m_vehicle.lastMileage.fill(0.0);
    m_vehicle.lastDate.fill(0);
    m_editVin.clear();
    return true;
}

bool SetupForm::finishNewVehicle(Reporter &reporter)
{
    m_highestOdometer = m_vehicle.startOdometer;
    m_new = true;
    const QString problem = VehicleNames::vinProblem(m_vehicle.vin);
    if (!problem.isEmpty())
        reporter.error(problem);
    if (problem.isEmpty() && saveProfile(m_newSlot, reporter) && writeSettings(reporter))
        return true;
    // Nothing was saved: the vehicle open before is still the one in use.
    m_new = false;
    m_name = m_previousName;
    m_vehicle = m_previousVehicle;
    m_highestOdometer = m_previousOdometer;
    loadSettings();
    return false;
}

SetupForm::DeleteResult SetupForm::deleteVehicle(Reporter &reporter)
{
    if (!loadSettings()) {
        reporter.error(SettingsMessages::setupLoadFailed());
        reporter.error(cannotDelete());
        return DeleteResult::Refused;
    }
    // The walk counts every key it reads, the missing one that ends it included; the match is
    // exact, letter case included.
    const QString list = VehicleProfile::vehicleListSection();
    int counted = 0;
    int slot = -1;
    for (int n = 0;; ++n) {
        QString value;
        const bool found = m_ini->GetString(list, VehicleProfile::vehicleKey(n), value);
        ++counted;
        if (!found)
            break;
        if (slot < 0 && !m_name.isEmpty() && value == m_name)
            slot = n;
    }
    if (counted == 0 || slot < 0) {
        // Deleting another vehicle's list place instead would lose that vehicle.
        reporter.error(
            cformat("Sorry, Can not delete.\n\"%s\" is not in the vehicle list.", utf8(m_name).constData()));
        return DeleteResult::Refused;
    }
    QString switchTo;
    m_ini->GetString(list, VehicleProfile::vehicleKey(slot == 0 ? 1 : 0), switchTo);
    if (switchTo.isEmpty()) {
        // Saving would leave no vehicle to switch to, so nothing is deleted; say so before asking.
        reporter.error(cannotDelete());
        return DeleteResult::Refused;
    }
    const QString logFile = fileName(VehicleLog::databasePath(m_paths.dataFolder, m_vehicle.vin));
    if (!reporter.ask(deleteQuestion(logFile)))
        return DeleteResult::Kept;

    m_ini->SetString(list, VehicleProfile::vehicleKey(slot), QString());
    m_ini->DeleteSection(m_name);
    if (!writeSettings(reporter)) {
        loadSettings();
        return DeleteResult::Refused;
    }
    m_name = switchTo;
    VehicleProfile::resetToDefaults(m_vehicle);
    VehicleProfile::load(*m_ini, switchTo, m_vehicle);
    return DeleteResult::Deleted;
}

bool SetupForm::saveAndExit(Reporter &reporter)
{
    if (!m_loaded)
        return false;
    const int slot = listSlot(m_name);
    if (slot >= 0)
        saveProfile(slot, reporter);
    return writeSettings(reporter);
}
