#pragma once

#include "Command.h"

// "insert fuel|repair|trip [VEHICLE] OPTIONS": a new entry made with the add options and placed
// by the History screen's insertion rule instead of appended.
class InsertCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("insert"); }
    QString synopsis() const override { return QStringLiteral("fuel|repair|trip [VEHICLE] OPTIONS"); }
    QString description() const override
    {
        return QStringLiteral("Inserts an entry where the History screen would (the options of add).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
