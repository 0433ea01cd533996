#pragma once

#include "Command.h"

// tarvane-cli export csv|html|xml [VEHICLE] [--type ...] [--period ...] [--from D --to D] [--out DIR]:
// the History screen's exports, with its filters given as options.
class ExportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("export"); }
    QString synopsis() const override
    {
        return QStringLiteral("csv|html|xml [VEHICLE] [--type fuel|maint|trips|all] "
                              "[--period week|month|year|all|dates] [--from YYYY-MM-DD] [--to YYYY-MM-DD] "
                              "[--out FOLDER]");
    }
    QString description() const override
    {
        return QStringLiteral("Exports a vehicle's log as CSV, as an HTML page or as a spreadsheet XML "
                              "workbook into FOLDER (default: My Documents), named after the vehicle.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
