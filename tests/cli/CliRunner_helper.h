#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

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

// A file's bytes, or "<missing>" so a comparison says what went wrong.
QByteArray readAll(const QString &path);

// Every file below a folder with its bytes, to see that a command changed nothing.
QMap<QString, QByteArray> snapshot(const QString &folder);

// Writes a file whole; fails the running test otherwise.
void put(const QString &path, const QByteArray &bytes);

// The odometers of a log file in their order, {-1} when it does not read.
QList<double> odometers(const QString &path);

// A record from the JSON of the fields that are set, written with single quotes; the rest are 0.
CVCItem record(const QByteArray &fields);

// "2026-11-02T09:00:00" UTC, and a day at noon UTC, as the log's seconds.
quint32 utc(const char *iso);
quint32 at(int year, int month, int day);

} // namespace CliFiles
