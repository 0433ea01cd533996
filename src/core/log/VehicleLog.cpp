#include "VehicleLog.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include "LogArchive.h"
#include "TextMemo.h"
#include "platform/AtomicFile.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/FileLock.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

const char *const VehicleLog::SaveError105 = "Save ERROR 105!\nUnable to save database";
const char *const VehicleLog::SaveError205 = "Save ERROR 205!\nUnable save database";

namespace {

QString openError(const QString &path)
{
    return cformat("ERROR 100! Unable to open database %s", path.toUtf8().constData());
}

// Where the damaged file goes; a second failure in the same second gets a counter.
QString freeDamagedPath(const QString &path, quint32 now)
{
    const QString base = VehicleLog::damagedPath(path, now);
    QString candidate = base;
    for (int n = 1; QFileInfo::exists(candidate) && n < 1000; ++n)
        candidate = base + u'-' + QString::number(n);
    return candidate;
}

} // namespace

QString VehicleLog::effectiveVin(const QString &vin)
{
    return vin.isEmpty() ? u"UnKnown"_s : vin;
}

bool VehicleLog::isSafeVin(const QString &vin)
{
    return !(vin.contains(u'/') || vin.contains(u'\\') || vin.contains(QChar(0)) || vin == u"."_s
             || vin == u".."_s);
}

QString VehicleLog::databasePath(const QString &dataFolder, const QString &vin)
{
    return cformat("%s%s.vcb", dataFolder.toUtf8().constData(), effectiveVin(vin).toUtf8().constData());
}

QString VehicleLog::damagedPath(const QString &path, quint32 now)
{
    return path + u".damaged-"_s + DeviceTime::toLocal(now).toString(u"yyyyMMdd-HHmmss"_s);
}

bool VehicleLog::open(const QString &dataFolder, const QString &vin, const LogScanSettings &settings,
                      Reporter &reporter, const Clock &clock)
{
    const QString name = effectiveVin(vin);
    const QString path = databasePath(dataFolder, name);
    m_entries.clear();
    m_scan = LogScan();
    m_movedAside.clear();
    m_blockedPath.clear();
    m_disk = FileFingerprint();
    if (!isSafeVin(name)) {
        reporter.error(openError(path));
        return false;
    }

    bool loaded = true;
    if (QFileInfo::exists(path)) {
        QString failure;
        QString reason;
        QFile file(path);
        if (!AtomicFile::checkReadable(path, LogArchive::MaxFileSize, &reason)) {
            failure = openError(path) + u"\n"_s + reason;
        } else if (!file.open(QIODevice::ReadOnly)) {
            failure = openError(path);
        } else {
            LogArchive archive;
            if (!archive.read(&file, m_entries, path, &m_disk))
                failure = archive.errorString();
            file.close();
        }
        if (!failure.isEmpty()) {
            // Whatever failed to load is kept out of the way of the next save.
            loaded = false;
            const QString aside = freeDamagedPath(path, clock.now());
            if (QFile::rename(path, aside)) {
                m_movedAside = aside;
                reporter.error(
                    failure
                    + u"\nThe file was moved to %1 and the vehicle starts with an empty log."_s.arg(aside));
            } else {
                m_blockedPath = path;
                reporter.error(
                    failure
                    + u"\nThe file could not be moved aside, so the log will not be saved over it."_s);
                m_scan = scanEntries(m_entries, settings);
                return false;
            }
        }
    }
    if (!QFileInfo::exists(path)) {
        LogArchive archive;
        const QByteArray empty = LogArchive::encode(EntryList());
        if (!archive.writeEncoded(path, empty)) {
            reporter.error(openError(path) + u'\n' + archive.errorString());
            loaded = false;
        } else {
            m_disk = FileFingerprint(path, empty);
        }
    }
    m_scan = scanEntries(m_entries, settings);
    return loaded;
}

bool VehicleLog::save(const QString &dataFolder, const QString &vin, Reporter &reporter)
{
    const QString name = effectiveVin(vin);
    const QString path = databasePath(dataFolder, name);
    if (!isSafeVin(name) || path == m_blockedPath) {
        reporter.error(QString::fromUtf8(SaveError105));
        return false;
    }
    FileLock lock(path);
    if (!lock.lock()) {
        reporter.error(QString::fromUtf8(SaveError105) + u'\n' + FileLock::busyMessage(path));
        return false;
    }
    if (m_fresh)
        m_entries.clear();
    if (changedOnDisk(path)) {
        // Nothing of ours to write: the newer file stays and is read at the next open.
        if (!m_fresh && m_disk.matches(LogArchive::encode(m_entries)))
            return true;
        reporter.error(QString::fromUtf8(SaveError105) + u'\n' + changedMessage(path));
        return false;
    }
    return writeLocked(path, reporter);
}

bool VehicleLog::append(const QString &dataFolder, const QString &vin, const CVCItem &item,
                        Reporter &reporter)
{
    const QString name = effectiveVin(vin);
    const QString path = databasePath(dataFolder, name);
    if (!isSafeVin(name) || path == m_blockedPath) {
        reporter.error(QString::fromUtf8(SaveError105));
        return false;
    }
    FileLock lock(path);
    if (!lock.lock()) {
        reporter.error(QString::fromUtf8(SaveError105) + u'\n' + FileLock::busyMessage(path));
        return false;
    }
    // Under the lock the file is read again, so an entry another program added meanwhile stays.
    if (changedOnDisk(path)) {
        EntryList current;
        // A file that is gone holds nothing, as a new log would.
        FileFingerprint disk(path, QByteArray());
        LogArchive archive;
        QString reason;
        QFile file(path);
        if (QFileInfo::exists(path)) {
            if (!AtomicFile::checkReadable(path, LogArchive::MaxFileSize, &reason)
                || !file.open(QIODevice::ReadOnly) || !archive.read(&file, current, path, &disk)) {
                const QString why = reason.isEmpty() ? archive.errorString() : reason;
                reporter.error(QString::fromUtf8(SaveError105) + u'\n'
                               + (why.isEmpty() ? openError(path) : why));
                return false;
            }
        }
        m_entries = std::move(current);
        m_disk = disk;
    }
    if (m_fresh)
        m_entries.clear();
    m_entries.push_back(item);
    if (writeLocked(path, reporter))
        return true;
    m_entries.pop_back();
    return false;
}

bool VehicleLog::writeLocked(const QString &path, Reporter &reporter)
{
    LogArchive archive;
    FileFingerprint written;
    if (!archive.write(path, m_entries, &written)) {
        // The system's text first, then which file and why.
        reporter.error(QString::fromUtf8(SaveError105) + u'\n' + archive.errorString());
        return false;
    }
    m_disk = written;
    m_fresh = false;
    return true;
}

bool VehicleLog::changedOnDisk() const
{
    return m_disk.changedOnDisk(LogArchive::MaxFileSize);
}

bool VehicleLog::changedOnDisk(const QString &path) const
{
    // Only the file this log was read from or written to can have been changed behind its back.
    return path == m_disk.path() && m_disk.changedOnDisk(LogArchive::MaxFileSize);
}

QString VehicleLog::changedMessage(const QString &path)
{
    return u"The log file %1 was changed by another program since it was read. Nothing was saved over it; "
           "open the vehicle again to see the changes."_s.arg(path);
}

bool VehicleLog::save(QIODevice *device, Reporter &reporter)
{
    if (m_fresh)
        m_entries.clear();
    LogArchive archive;
    if (!archive.write(device, m_entries)) {
        reporter.error(QString::fromUtf8(SaveError105) + u'\n' + archive.errorString());
        return false;
    }
    m_fresh = false;
    return true;
}

LogScan VehicleLog::scanEntries(EntryList &entries, const LogScanSettings &settings)
{
    static const std::array<QString, 5> builtin
        = { u"Oil Change"_s, u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s, u"Rotate Tires"_s };
    LogScan scan;
    TextMemo<quint16> reminders; // which reminders a maintenance type names
    scan.lastOdometer = settings.startOdometer;
    qint32 position = 0;
    for (CVCItem &item : entries) {
        item.listPosition = position;
        if (item.entryType == CVCItem::Fuel && item.notFull == 0) {
            scan.lastFullFillOdometer = item.odometer;
            scan.currentEconomy = item.economy;
            if (item.economy > 0) {
                scan.economySum += item.economy;
                ++scan.economyCount;
            }
            scan.hasFullFill = true;
        } else if (item.entryType == CVCItem::Trip && item.odometer >= scan.lastOdometer) {
            if (item.odometer >= item.endOdometer)
                ++scan.openTrips;
            if (item.endOdometer > scan.lastOdometer)
                scan.lastOdometer = item.endOdometer;
        } else if (item.entryType == CVCItem::Maintenance && item.odometer >= scan.lastOdometer
                   && item.odometer >= settings.startOdometer) {
            const quint16 matches = reminders.get(item.typeText, [&](const QString &type) {
                quint16 mask = 0;
                for (int r = 0; r < 10; ++r) {
                    // Oil changes are recognised anywhere in the name, the others only at its
                    // start; an unnamed custom reminder matches nothing.
                    const bool match = r == 0 ? type.contains(builtin[0])
                        : r < 5               ? type.startsWith(builtin[size_t(r)])
                                              : !settings.customNames[size_t(r - 5)].isEmpty()
                            && type.startsWith(settings.customNames[size_t(r - 5)]);
                    if (match)
                        mask |= quint16(1u << r);
                }
                return mask;
            });
            for (int r = 0; r < 10; ++r) {
                if (!(matches & (1u << r)))
                    continue;
                scan.lastServiceOdometer[size_t(r)] = item.odometer;
                if (item.entryDate != 0)
                    scan.lastServiceDate[size_t(r)] = item.entryDate;
            }
        }
        if (item.odometer > scan.lastOdometer)
            scan.lastOdometer = item.odometer;
        ++position;
    }
    if (scan.economySum > 0)
        scan.averageEconomy = scan.economySum / scan.economyCount;
    return scan;
}
