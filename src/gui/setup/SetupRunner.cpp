#include "SetupRunner.h"

#include "SetupDialog.h"
#include "session/VehicleSession.h"
#include "setup/SetupForm.h"

namespace SetupRunner {

void run(VehicleSession &session, Reporter &reporter, QWidget *parent)
{
    SetupForm form(SetupPaths::of(session.context().paths), session.currentVehicleName(), session.vehicle(),
                   session.tripSettings(), session.scan().lastOdometer);
    {
        SetupDialog dialog(form, reporter, parent);
        dialog.exec();
    }
    session.reloadAfterSetup(form.currentName());
}

} // namespace SetupRunner
