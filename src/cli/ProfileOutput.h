#pragma once

#include <QString>
#include <QTextStream>

#include "settings/VehicleSettings.h"

// A vehicle's profile as the profile command prints it: every key in the order the settings file
// writes them, as "key=value" lines under "[name]" or as a JSON object.
namespace ProfileOutput {

void print(const QString &name, const VehicleSettings &vehicle, bool json, QTextStream &out);

} // namespace ProfileOutput
