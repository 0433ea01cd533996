#pragma once

#include "Command.h"

// "import FILE [VEHICLE] [--map NAME]": imports a CSV file into a vehicle's log through a saved
// import map (the last one used when none is named), as the IMPORT screen does.
class ImportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("import"); }
    QString synopsis() const override { return QStringLiteral("FILE [VEHICLE] [--map NAME]"); }
    QString description() const override;
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
