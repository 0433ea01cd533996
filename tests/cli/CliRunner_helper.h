#pragma once

#include <QString>
#include <QStringList>

#include "platform/SettingsStore.h"

// Runs tarvane-cli in-process on a sandbox root with memory settings stores, capturing both streams.
struct CliResult
{
    int exitCode = -1;
    QString out;
    QString err;
};

class CliRunner
{
public:
    explicit CliRunner(const QString &root)
        : m_root(root)
    { }

    // Arguments after the program name; --root is added in front.
    CliResult run(const QStringList &arguments);

    MemorySettingsStore options;
    MemorySettingsStore preferences;

private:
    QString m_root;
};
