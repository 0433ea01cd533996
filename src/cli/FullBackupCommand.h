#pragma once

#include "Command.h"

// tarvane-cli full-backup [--location NAME]: every log and settings file to "Tarvane Backup".
class FullBackupCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("full-backup"); }
    QString synopsis() const override { return QStringLiteral("[--location NAME]"); }
    QString description() const override
    {
        return QStringLiteral("Copies every vehicle log and settings file to the location's backup folder "
                              "(asks first; --yes).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};

// tarvane-cli full-restore [--location NAME]: the same files back into the data folder.
class FullRestoreCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("full-restore"); }
    QString synopsis() const override { return QStringLiteral("[--location NAME]"); }
    QString description() const override
    {
        return QStringLiteral("Copies the location's backup back into the data folder, keeping the files it "
                              "replaces in \"Before restore <time>\" (asks first; --yes).");
    }
    int run(const QStringList &arguments, CliEnvironment &env) override;
};
