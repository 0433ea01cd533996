#pragma once

#include "Command.h"

// tarvane-cli log [VEHICLE] [--type T] [--period P] [--from D] [--to D] [--json]: the entries the
// History screen lists with that filter, in log order, with their positions and column texts.
class LogCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("log"); }
    QString synopsis() const override
    {
        return QStringLiteral("[VEHICLE] [--type fuel|maint|trips|all] [--period week|month|year|all|dates] "
                              "[--from YYYY-MM-DD] [--to YYYY-MM-DD] [--json]");
    }
    QString description() const override
    {
        return QStringLiteral("Lists a vehicle's log as the History screen does (the current vehicle when "
                              "none is named).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
