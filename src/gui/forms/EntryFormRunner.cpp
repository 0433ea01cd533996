#include "EntryFormRunner.h"

#include "FuelDialog.h"
#include "MaintenanceDialog.h"
#include "TripDialog.h"
#include "session/VehicleSession.h"
#include "settings/Options.h"
#include "settings/PickLists.h"

namespace EntryFormRunner {

EntryFormContext context(VehicleSession &session)
{
    EntryFormContext context;
    context.highestOdometer = session.scan().lastOdometer;
    context.startupTime = session.programNow();
    context.clock = &session.context().clock;
    context.vehicleName = session.currentVehicleName();
    context.distanceUnit = session.vehicle().distanceUnit;
    context.economyUnit = session.vehicle().economyUnit;
    context.liquidUnit = session.vehicle().liquidUnit;
    context.startOdometer = session.vehicle().startOdometer;
    context.lastFullFillOdometer = session.scan().lastFullFillOdometer;
    context.costPerMile = session.vehicle().costPerMile;
    return context;
}

bool edit(VehicleSession &session, CVCItem &record, Reporter &reporter, QWidget *parent)
{
    AppContext &app = session.context();
    const EntryFormContext formContext = context(session);
    const QString lists = PickLists::listsPath(app.paths);
    switch (record.entryType) {
    case CVCItem::Fuel: {
        FuelDialog dialog(formContext, record, lists, reporter, parent);
        return dialog.exec() == QDialog::Accepted;
    }
    case CVCItem::Maintenance: {
        MaintenanceDialog dialog(formContext, record, lists, reporter, parent);
        return dialog.exec() == QDialog::Accepted;
    }
    default: {
        // The install folder as the options hold it; a missing key just means the default.
        NullReporter quiet;
        Options options(app.optionsStore, quiet, app.clock);
        options.load();
        TripDialog dialog(formContext, record, app.paths, options.path, reporter, parent);
        return dialog.exec() == QDialog::Accepted;
    }
    }
}

bool addNew(VehicleSession &session, CVCItem::EntryType type, Reporter &reporter, QWidget *parent)
{
    CVCItem record = session.newEntry(type);
    if (!edit(session, record, reporter, parent))
        return false;
    return session.addEntry(record);
}

} // namespace EntryFormRunner
