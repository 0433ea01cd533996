#pragma once

#include "Command.h"

// tarvane-cli import-app FILE... [VEHICLE] [--from APP] [--date-order ORDER] [--source-vehicle NAME]
// [--dry-run] [--json]:
// brings another vehicle-log app's exported history into a vehicle's log.
class ImportAppCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("import-app"); }
    QString synopsis() const override
    {
        return QStringLiteral(
            "FILE... [VEHICLE] [--from "
            "auto|fuelly|fuelio|lubelogger|spritmonitor|roadtrip|drivvo|acar] [--date-order "
            "mdy|dmy|ymd] [--source-vehicle NAME] "
            "[--dry-run] [--json]");
    }
    QString description() const override
    {
        return QStringLiteral(
            "Imports the history exported by another vehicle-log app into a vehicle's log.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
