#pragma once

#include "Command.h"

// "add fuel|repair|trip [VEHICLE] ...": a new log entry made the way the entry forms make one,
// as if the user opened the form from the main screen, typed the options in screen order and
// saved.
class AddCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("add"); }
    QString synopsis() const override;
    QString description() const override;
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
