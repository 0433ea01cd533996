#include "CsvSessionImport.h"

#include "session/VehicleSession.h"

namespace CsvSessionImport {

CsvConversionSettings settings(const VehicleSession &session, const LocaleFormats &locale)
{
    const VehicleSettings &vehicle = session.vehicle();
    CsvConversionSettings settings;
    settings.distanceUnit = vehicle.distanceUnit;
    settings.economyUnit = vehicle.economyUnit;
    settings.liquidUnit = vehicle.liquidUnit;
    settings.startOdometer = vehicle.startOdometer;
    settings.costPerMile = vehicle.costPerMile;
    settings.customNames = vehicle.customNames;
    settings.dateOrder = locale.dateOrder();
    settings.now = session.programNow();
    return settings;
}

} // namespace CsvSessionImport
