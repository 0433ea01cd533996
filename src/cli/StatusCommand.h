#pragma once

#include "Command.h"

// tarvane-cli status [VEHICLE] [--json]: what the main screen shows after opening a vehicle.
class StatusCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("status"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] [--json]"); }
    QString description() const override
    {
        return QStringLiteral("Shows the last odometer, open trips, economy and reminders of a vehicle.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};

// tarvane-cli reconcile [VEHICLE]: recomputes every fill-up of the log and saves it.
class ReconcileCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("reconcile"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE]"); }
    QString description() const override
    {
        return QStringLiteral("Runs \"Reconcile Data\" over a vehicle's log and saves it.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
