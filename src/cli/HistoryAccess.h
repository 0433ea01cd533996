#pragma once

#include <QString>

#include <memory>

#include "CliSupport.h"
#include "Command.h"
#include "dataview/DataViewLog.h"
#include "session/VehicleSession.h"

// What the commands that change a log through the History screen's rules share: the vehicle
// opened without touching its files, and the screen's own copy of its log.
struct HistoryAccess
{
    CliSupport::Session session;
    std::unique_ptr<DataViewLog> log;

    // VEHICLE empty means the current vehicle. False after the message: an unknown vehicle, a
    // log that can't be opened or is damaged (the file is then left exactly as it is).
    bool open(CliEnvironment &env, const QString &vehicle);
    // A 0-based position of an entry of the log; false after the message.
    bool position(const QString &text, int *position, QTextStream &err) const;
};
