#pragma once

#include "Command.h"

// "vehicle new|set|delete": what the Setup screen does, headless. The settings go through the
// setup pages' confirm steps, so the rules (upper-case VIN, the RepairList seeding, the profile
// save) are the screen's own; new and set print the resulting profile as "profile" does.
class VehicleCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("vehicle"); }
    QString synopsis() const override;
    QString description() const override;
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
