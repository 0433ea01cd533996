#pragma once

#include "Command.h"

// "dump FILE [--json]": the records of a log or backup file in file order.
class DumpCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("dump"); }
    QString synopsis() const override { return QStringLiteral("FILE [--json]"); }
    QString description() const override
    {
        return QStringLiteral("Print the records of a vehicle log (.vcb) or backup (.bak) file.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
