#pragma once

#include "Command.h"

// tarvane-cli report [VEHICLE] --from YYYY-MM-DD --to YYYY-MM-DD [--out FILE] [--json]: the
// summary report of fuel, maintenance and trips between two dates.
class ReportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("report"); }
    QString synopsis() const override
    {
        return QStringLiteral("[VEHICLE] --from YYYY-MM-DD --to YYYY-MM-DD [--out FILE] [--json]");
    }
    QString description() const override
    {
        return QStringLiteral("Sums up fuel, maintenance, trip claims and running cost between two dates "
                              "(both included); --out FILE writes the printable HTML report, --json prints "
                              "the figures.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
