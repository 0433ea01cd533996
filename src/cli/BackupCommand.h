#pragma once

#include "Command.h"

// tarvane-cli backup [VEHICLE] --to DIR: the vehicle backup to "<DIR>/<VIN>.bak".
class BackupCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("backup"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] --to DIR"); }
    QString description() const override
    {
        return QStringLiteral("Backs up a vehicle's log to DIR/<VIN>.bak.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};

// tarvane-cli restore [VEHICLE] --from FILE: replaces a vehicle's log with a backup.
class RestoreCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("restore"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] --from FILE"); }
    QString description() const override
    {
        return QStringLiteral("Replaces a vehicle's log with the entries of a backup file.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
