#pragma once

class QWidget;
class Reporter;
class VehicleSession;

// The main screen's "Setup / Edit": the Setup screen over the open vehicle, then the session
// reloads the settings and reopens the vehicle that is current afterwards.
namespace SetupRunner {

void run(VehicleSession &session, Reporter &reporter, QWidget *parent);

} // namespace SetupRunner
