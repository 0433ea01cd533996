#include "EntryFormRunner.h"

#include "FuelDialog.h"
#include "MaintenanceDialog.h"
#include "TripDialog.h"
#include "session/VehicleSession.h"
#include "settings/PickLists.h"

namespace EntryFormRunner {

bool edit(VehicleSession &session, CVCItem &record, Reporter &reporter, QWidget *parent)
{
    AppContext &app = session.context();
    const EntryFormContext formContext = session.formContext();
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
        TripDialog dialog(formContext, record, app.paths, session.installPath(), reporter, parent);
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
