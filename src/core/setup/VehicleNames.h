#pragma once

#include <QString>
#include <QStringList>

// What a vehicle name or a VIN may be. A name becomes a section of the settings file and a VIN
// the name of the vehicle's log file, so neither may break the file nor reach outside the data
// folder. Each check returns the message for the user, or an empty string when all is well.
namespace VehicleNames {

// A new vehicle's name: no path separator, NUL or control character, no "[" or "]", not "."
// or "..", no blanks at either end, not a section the settings file uses itself, and not a
// name already in the list (in any letter case). An empty name passes: it creates nothing.
QString nameProblem(const QString &name, const QStringList &existingNames);

// A VIN: the same characters refused, and those no file name may hold on any system. An
// empty VIN passes here; saving the profile refuses it.
QString vinProblem(const QString &vin);

} // namespace VehicleNames
