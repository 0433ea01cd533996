#pragma once

#include "log/CVCItem.h"

class QWidget;
class Reporter;
class VehicleSession;

// How the main screen runs the three forms: a new record marked 99 at the last odometer, the
// form, and on Save the record kept (odometer at least 1), appended, saved and the log reopened.
namespace EntryFormRunner {

// Runs the Fuel, Maintenance or Trips dialog on an existing record (the data view's way); true
// after Save, with the record rewritten.
bool edit(VehicleSession &session, CVCItem &record, Reporter &reporter, QWidget *parent);

// A new entry from the main screen; true when it was added to the log.
bool addNew(VehicleSession &session, CVCItem::EntryType type, Reporter &reporter, QWidget *parent);

} // namespace EntryFormRunner
