#pragma once

#include "Command.h"

// tarvane-cli due [VEHICLE] [--json] [--ics FILE]: when each service falls due, as the reminder
// screens show it, or the due dates written as a calendar file.
class DueCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("due"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] [--json | --ics FILE]"); }
    QString description() const override
    {
        return QStringLiteral("Shows when each service falls due by date and by reading, or saves the due "
                              "dates as an iCalendar file.");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
