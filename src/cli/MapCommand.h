#pragma once

#include "Command.h"

// "map list | show NAME [--json] | set NAME FIELD=COLUMN ... [--file FILE]": the CSV import
// maps kept in the preferences, as the IMPORT screen lists, shows and saves them.
class MapCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("map"); }
    QString synopsis() const override;
    QString description() const override;
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
