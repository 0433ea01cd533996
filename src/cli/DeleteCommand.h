#pragma once

#include "Command.h"

// "delete [VEHICLE] POSITION": one entry, after "DELETE! ARE YOU SURE?" (answered by --yes).
class DeleteCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("delete"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] POSITION"); }
    QString description() const override
    {
        return QStringLiteral("Deletes the entry at a position of the log (asks; --yes answers Yes).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};

// "delete-all [VEHICLE]": the whole log, copied first to <VIN>.bak in the data folder.
class DeleteAllCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("delete-all"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE]"); }
    QString description() const override
    {
        return QStringLiteral(
            "Deletes every entry after saving the log to <VIN>.bak (asks; --yes answers Yes).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
