#pragma once

#include "Command.h"

// "edit [VEHICLE] POSITION OPTIONS": the entry's form opened on the entry at that position, the
// options typed into it as a user would (those of add for the entry's kind), and saved.
class EditCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("edit"); }
    QString synopsis() const override { return QStringLiteral("[VEHICLE] POSITION OPTIONS"); }
    QString description() const override
    {
        return QStringLiteral("Edits the entry at a position of the log (the options of add for its kind).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
