#pragma once

#include "Command.h"

// tarvane-cli log [VEHICLE] [--json]: the records of a vehicle's log.
class LogCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("log"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] [--json]"); }
    QString description() const override
    {
        return QStringLiteral(
            "Lists the records of a vehicle's log (the current vehicle when none is named).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
