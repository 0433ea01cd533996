#pragma once

#include <QString>

#include "log/CVCItem.h"

class Reporter;

// The chart dialog reads the vehicle's log afresh, on its own, and never writes it.
namespace ChartLog {

// Reads "<dataFolder><VIN>.vcb" ("UnKnown" for an empty VIN) into entries. A missing file is an
// empty log; one that is unreadable or damaged gives "ERROR 100! Unable to open database %s".
bool read(const QString &dataFolder, const QString &vin, EntryList &entries, Reporter &reporter);

} // namespace ChartLog
