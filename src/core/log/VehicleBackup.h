#pragma once

#include <QString>

#include "CVCItem.h"

class Reporter;
class VehicleLog;

// Copying one vehicle's log to "<folder><VIN>.bak" and loading such a file back. The backup
// has the byte format of the log itself. The file choice happens in the caller.
namespace VehicleBackup {

// "%s%s.bak" with the folder (given a trailing separator when it lacks one) and the VIN
// ("UnKnown" when empty).
QString backupPath(const QString &folder, const QString &vin);
// The name proposed when choosing the file to restore: "%s.bak".
QString proposedRestoreName(const QString &vin);

// Writes the list to backupPath(folder, vin) and tells the user. busy is raised while the
// backup runs and lowered on every path. Returns false (with "Backup ERROR 107!...") when the
// file can't be written or the VIN is not a safe file name.
bool backup(const EntryList &entries, const QString &folder, const QString &vin, Reporter &reporter,
            bool &busy);

// "<database>.before-restore": the log as it was before the last restore.
QString beforeRestorePath(const QString &databasePath);

// Replaces the log's list with the file's records and saves the vehicle's database at once,
// after copying the database file it replaces to beforeRestorePath(). A file that can't be opened
// or read, or a copy that fails, leaves the list and the database untouched.
bool restore(VehicleLog &log, const QString &file, const QString &vehicleName, const QString &dataFolder,
             const QString &vin, Reporter &reporter);

} // namespace VehicleBackup
