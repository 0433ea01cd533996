#pragma once

#include "Command.h"

// tarvane-cli profile [VEHICLE] [--json]: every key of a vehicle's profile as read.
class ProfileCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("profile"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] [--json]"); }
    QString description() const override
    {
        return QStringLiteral("Shows a vehicle's profile (the current vehicle when none is named).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
