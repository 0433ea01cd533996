#pragma once

#include "Command.h"

// tarvane-cli vehicles [--json]: the vehicle list in its order.
class VehiclesCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("vehicles"); }
    QString synopsis() const override { return QStringLiteral("[--json]"); }
    QString description() const override
    {
        return QStringLiteral("Lists the vehicles of the settings file: name and VIN.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
