#include "ChartLog.h"

#include <QFileInfo>

#include "log/LogArchive.h"
#include "log/VehicleLog.h"
#include "platform/CFormat.h"
#include "platform/Reporter.h"

namespace ChartLog {

bool read(const QString &dataFolder, const QString &vin, EntryList &entries, Reporter &reporter)
{
    entries.clear();
    const QString name = VehicleLog::effectiveVin(vin);
    const QString path = VehicleLog::databasePath(dataFolder, name);
    // A vehicle whose log was never written simply has nothing to chart yet.
    if (VehicleLog::isSafeVin(name) && !QFileInfo::exists(path))
        return true;
    if (!VehicleLog::isSafeVin(name) || !LogArchive().read(path, entries)) {
        entries.clear();
        reporter.error(cformat("ERROR 100! Unable to open database %s", path.toUtf8().constData()));
        return false;
    }
    return true;
}

} // namespace ChartLog
