#pragma once

#include "Command.h"

// tarvane-cli locations: the places a full backup can go, each with its backup folder.
class LocationsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("locations"); }
    QString synopsis() const override { return QString(); }
    QString description() const override
    {
        return QStringLiteral("Lists the full backup locations (Main Memory and the removable drives).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
