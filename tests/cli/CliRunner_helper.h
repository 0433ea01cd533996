#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include "core/files_helper.h"
#include "log/CVCItem.h"
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
    // The same with the arguments in one line, split as a shell would ("..." keeps spaces).
    CliResult runLine(const QString &line);

    // A first run makes the template's "My Car" (VIN MYCAR0001, oil every 5000 miles / 180 days,
    // tires every 7500 miles); then it gets the log and, unless told not to, becomes the current
    // vehicle in the options.
    void prepare(const EntryList &log, bool makeCurrent = true);

    // The data folder below the root, ending in a slash.
    QString dataFolder() const;

    MemorySettingsStore options;
    MemorySettingsStore preferences;

private:
    QString m_root;
};

// Files and times the command tests look at; in a namespace of their own so a test's local
// helpers of the same name stay unambiguous.
namespace CliFiles {

using TestFiles::at;
using TestFiles::odometers;
using TestFiles::put;
using TestFiles::record;
using TestFiles::snapshot;
using TestFiles::utc;
inline QByteArray readAll(const QString &path)
{
    return TestFiles::read(path);
}

} // namespace CliFiles
