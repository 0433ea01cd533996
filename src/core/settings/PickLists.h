#pragma once

#include <QString>
#include <QStringList>

#include <array>

class DevicePaths;
class IniFile;
class Reporter;

// The pick lists of Lists.ini: one section per list, items under Line0, Line1, ... read up to
// the first missing key.
class PickLists
{
public:
    static QString fuelStationList() { return QStringLiteral("FuelStationList"); }
    static QString repairList() { return QStringLiteral("RepairList"); }
    static QString repairLocation() { return QStringLiteral("RepairLocation"); }
    static QString purposeList() { return QStringLiteral("PurposeList"); }
    static QString contactList() { return QStringLiteral("ContactList"); }
    static QString destinationList() { return QStringLiteral("DestinationList"); }

    static QString fileName() { return QStringLiteral("Lists.ini"); }
    // The host path of the data folder's Lists.ini.
    static QString listsPath(const DevicePaths &paths);
    static QString tripLoadErrorMessage()
    {
        return QStringLiteral(
            "ERROR 400:Cannot load ini file.\nPlease check your documentation\nfor possible "
            "causes.");
    }
    // The repair types every vehicle has, in the order they are added to RepairList.
    static QStringList standardRepairs();

    // "Line%d"
    static QString lineKey(int index);

    // The items of a section: empty values are skipped, the first missing key ends the list.
    static QStringList items(const IniFile &ini, const QString &section);
    // Loads the file at hostPath and returns a section's items; nothing when it can't be loaded.
    static QStringList loadItems(const QString &hostPath, const QString &section);

    // Adds the non-empty custom reminder names, then the standard repair types, to RepairList
    // unless it already holds exactly that text, and rewrites the list as Line0.. . False when
    // the file can't be loaded (nothing is added then) or saved.
    static bool seedRepairList(const QString &hostPath, const std::array<QString, 5> &customNames);

    // The Trip form's loader: the data folder's Lists.ini, or else the install folder's copy
    // (installFolder followed directly by "Lists.ini"), which is then saved as the user's copy.
    // When neither loads, ERROR 400 is reported and false returned.
    static bool loadForTrip(IniFile &ini, const DevicePaths &paths, const QString &installFolder,
                            Reporter &reporter);
};
