#pragma once

#include "Command.h"

// tarvane-cli stats MODE [VEHICLE] [--json] [--png FILE]: one statistics chart's figures and
// points, and the chart itself as a picture.
class StatsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("stats"); }
    QString synopsis() const override { return QStringLiteral("MODE [VEHICLE] [--json] [--png FILE]"); }
    QString description() const override
    {
        return QStringLiteral(
            "Shows a statistics chart (MODE 0-7: fuel economy, fuel cost, repair cost, running "
            "cost, 31 day usage, and the two-year running cost, economy and fuel cost); "
            "--png FILE also draws it (.svg for SVG).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
