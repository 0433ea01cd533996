#pragma once

#include <QString>

#include <array>

#include "CVCItem.h"
#include "LogScan.h"
#include "platform/FileFingerprint.h"

class Clock;
class QIODevice;
class Reporter;

// What the load-time scan needs of the vehicle's profile.
struct LogScanSettings
{
    double startOdometer = 0.0; // Start Odometer
    std::array<QString, 5> customNames; // Custom1..Custom5, reminders 5..9
};

// The open vehicle's log document: the entry list (and the file's second collection, which is
// always empty and so is not kept), the figures of the last scan, and opening and saving.
class VehicleLog
{
public:
    static QString openErrorFormat() { return QStringLiteral("ERROR 100! Unable to open database %1"); }
    // The texts of the system, for the savers that report on their own.
    static const char *const SaveError105;
    static const char *const SaveError205;

    // An empty VIN names the file "UnKnown".
    static QString effectiveVin(const QString &vin);
    // False for a VIN that would reach outside the data folder: a path separator, a NUL,
    // "." or "..".
    static bool isSafeVin(const QString &vin);
    // "<dataFolder><VIN>.vcb"; dataFolder is expected to end with a separator.
    static QString databasePath(const QString &dataFolder, const QString &vin);
    // "<path>.damaged-<yyyyMMdd-HHmmss>" in local time.
    static QString damagedPath(const QString &path, quint32 now);

    // Opens "<dataFolder><VIN>.vcb", creating an empty one when there is none, and runs the
    // load-time scan. A file that fails to load is moved aside (see damagedPath) and the log
    // goes on empty. Returns false when the list could not be loaded as it is on disk.
    bool open(const QString &dataFolder, const QString &vin, const LogScanSettings &settings,
              Reporter &reporter, const Clock &clock);
    // Writes the list atomically to "<dataFolder><VIN>.vcb" ("Save ERROR 105!..." on failure).
    // With the fresh-database flag raised, the list is cleared first and the flag lowered. Holds
    // the file's lock, and never writes over a file another program changed since it was read
    // (when the list holds nothing new, that is no failure: the newer file stays).
    bool save(const QString &dataFolder, const QString &vin, Reporter &reporter);
    // Appends one entry and saves, holding the file's lock: when another program changed the file
    // since it was read, its entries are read again first so that none of them is lost.
    bool append(const QString &dataFolder, const QString &vin, const CVCItem &item, Reporter &reporter);
    // The same onto an open device (which is not closed).
    bool save(QIODevice *device, Reporter &reporter);

    // The load-time scan: writes listPosition into every record and derives the figures.
    static LogScan scanEntries(EntryList &entries, const LogScanSettings &settings);
    void rescan(const LogScanSettings &settings) { m_scan = scanEntries(m_entries, settings); }

    EntryList &entries() { return m_entries; }
    const EntryList &entries() const { return m_entries; }
    void setEntries(EntryList entries) { m_entries = std::move(entries); }
    const LogScan &scan() const { return m_scan; }

    // Raised when a new vehicle is created: its first save writes an empty log.
    bool freshDatabase() const { return m_fresh; }
    void setFreshDatabase(bool fresh) { m_fresh = fresh; }

    // Another program changed (or wrote) the log file since this log last read or wrote it: what
    // is in memory is no longer the whole log, and the next change must start from the file.
    bool changedOnDisk() const;

    // "The log file ... was changed by another program since it was read. ..."
    static QString changedMessage(const QString &path);

    // Where the last open moved a damaged file, empty when it did not.
    QString movedAsidePath() const { return m_movedAside; }

private:
    bool writeLocked(const QString &path, Reporter &reporter);
    bool changedOnDisk(const QString &path) const;

    EntryList m_entries;
    // The file last read or written and what it held, to notice another program's save.
    FileFingerprint m_disk;
    LogScan m_scan;
    bool m_fresh = false;
    // A damaged file that could not be moved aside must never be saved over.
    QString m_blockedPath;
    QString m_movedAside;
};
