#pragma once

#include <QString>
#include <QStringList>

#include <memory>

#include "SetupPages.h"
#include "settings/VehicleSettings.h"

class DevicePaths;
class IniFile;
class Reporter;

// Where Setup reads and writes: Velcora.ini, Lists.ini and the folder of the logs (host paths).
struct SetupPaths
{
    QString settingsFile;
    QString listsFile;
    QString dataFolder; // ends with "/"

    // The data folder's files.
    static SetupPaths of(const DevicePaths &paths);
};

// The read-only texts of the "Setup" screen, one per label.
struct SetupDisplay
{
    QString vehicleId; // "Vehicle ID:"
    QString odometer; // "Odometer:", "%-7.0f"
    QString make;
    QString model;
    QString year; // "%-4.0d"
    QString plate;
    QString vin; // "VIN #:"
    QString economy; // "Economy:"
    QString oilDistance; // "Oil Change every " ...
    QString distanceWord; // "mi" / "km"
    QString oilDays; // ... "or" ... "days"
    QString showDetails; // "Show Deails:" "Yes" / "No"
    QString sortBy; // the hidden "Sort By:"
    bool operator==(const SetupDisplay &) const = default;
};

// The Setup screen without its widgets: the current vehicle's values that the pages edit, its
// own copy of the settings file, and the rules of creating, editing and deleting vehicles. The
// screen's pages are views of this one form.
class SetupForm
{
public:
    enum class DeleteResult { Refused, Kept, Deleted };

    // The form starts from the vehicle the program has open.
    SetupForm(const SetupPaths &paths, const QString &currentName, const VehicleSettings &vehicle,
              const TripSettings &trip, double highestOdometer);
    ~SetupForm();
    SetupForm(const SetupForm &) = delete;
    SetupForm &operator=(const SetupForm &) = delete;

    static QString title() { return QStringLiteral("Setup"); }
    static QString editSheetTitle() { return QStringLiteral("Edit Vehicle Info"); }
    static QString tripSheetTitle() { return QStringLiteral("Edit Trip Info"); }
    static QString newVehicleCancelled()
    {
        return QStringLiteral("ERROR 202! Unable to create new vehicle record");
    }
    static QString deleteQuestion(const QString &logFile);
    static QString cannotDelete();
    // "mi" / "km" and the economy words of the screen ("MPGi" for both 1 and 3).
    static QString distanceWord(int distanceUnit);
    static QString economyWord(int economyUnit);

    // Reads the settings file the screen works on. False when it can't be read: nothing is
    // written then, ever.
    bool open();
    QString settingsPath() const { return m_paths.settingsFile; }
    bool isOpen() const { return m_loaded; }

    QString currentName() const { return m_name; }
    const VehicleSettings &vehicle() const { return m_vehicle; }
    const TripSettings &trip() const { return m_trip; }
    double highestOdometer() const { return m_highestOdometer; }
    bool isNewVehicle() const { return m_new; }
    // The vehicle names of the settings file, in list order.
    QStringList vehicleNames() const;
    // The current vehicle has a place in the vehicle list (Edit and Delete need one).
    bool hasListedVehicle() const;
    SetupDisplay display() const;

    // The pages: filled from the vehicle, confirmed back into it.
    GeneralInfoValues generalInfo() const;
    void confirm(const GeneralInfoValues &values);
    MeasurementsValues measurements() const;
    void confirm(const MeasurementsValues &values);
    IntervalsValues intervals() const;
    void confirm(const IntervalsValues &values);
    CustomValues custom() const;
    // Also puts the custom names and the standard repair types into RepairList of Lists.ini.
    void confirm(const CustomValues &values);
    TripsValues trips() const;
    void confirm(const TripsValues &values);
    // What is wrong with a VIN the first page would confirm (empty when it may be used).
    QString vinProblem(const QString &vin) const;

    // "Edit Vehicle Info" / "Edit Trip Info": call begin before the sheet opens and finish after
    // it closes, whatever closed it. Finish offers to rename the log when the VIN changed, saves
    // the profile and writes the settings file.
    void beginEdit();
    bool finishEdit(Reporter &reporter);

    // "New Vehicle", in three steps around the name dialog and the sheet. begin reloads the
    // settings file and finds the first empty list place (false after "ERROR 300").
    bool beginNewVehicle(Reporter &reporter);
    int newVehicleSlot() const { return m_newSlot; }
    // What is wrong with a typed name (empty when it may be used; an empty name may).
    QString newNameProblem(const QString &name) const;
    // The dialog's end: Cancel reports "ERROR 202"; an empty name becomes the current name and
    // stops; a name that can't be used is reported. True when the sheet should follow, with the
    // profile reset for the new vehicle.
    bool acceptNewName(bool created, const QString &name, Reporter &reporter);
    // After the sheet: saves the new vehicle into its list place. Without a VIN nothing is saved
    // and the vehicle open before stays the current one.
    bool finishNewVehicle(Reporter &reporter);

    // "Delete Vehicle". The log file stays on disk.
    DeleteResult deleteVehicle(Reporter &reporter);

    // "Save" / "Save && Exit": the profile, then the settings file.
    bool saveAndExit(Reporter &reporter);

private:
    bool loadSettings();
    bool writeSettings(Reporter &reporter);
    // The list place holding exactly this name, -1 when none does.
    int listSlot(const QString &name) const;
    bool saveProfile(int slot, Reporter &reporter);
    void offerLogRename(Reporter &reporter);

    SetupPaths m_paths;
    std::unique_ptr<IniFile> m_ini;
    bool m_loaded = false;
    QString m_name;
    VehicleSettings m_vehicle;
    TripSettings m_trip;
    double m_highestOdometer = 0.0;
    bool m_new = false;
    int m_newSlot = -1;
    QString m_editVin;
    // What was open before a new vehicle, for a new vehicle that is not saved.
    QString m_previousName;
    VehicleSettings m_previousVehicle;
    double m_previousOdometer = 0.0;
};
