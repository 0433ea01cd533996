#include "VehicleLog.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include "LogArchive.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
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
    if (!isSafeVin(name)) {
        reporter.error(openError(path));
        return false;
    }

    bool loaded = true;
    if (QFileInfo::exists(path)) {
        QString failure;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            failure = openError(path);
        } else {
            LogArchive archive;
            if (!archive.read(&file, m_entries, path))
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
        if (!archive.write(path, EntryList())) {
            reporter.error(openError(path));
            loaded = false;
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
    if (m_fresh)
        m_entries.clear();
    LogArchive archive;
    if (!archive.write(path, m_entries)) {
        reporter.error(QString::fromUtf8(SaveError105));
        return false;
    }
    m_fresh = false;
    return true;
}

bool VehicleLog::save(QIODevice *device, Reporter &reporter)
{
    if (m_fresh)
        m_entries.clear();
    LogArchive archive;
    if (!archive.write(device, m_entries)) {
        reporter.error(QString::fromUtf8(SaveError105));
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
            for (int r = 0; r < 10; ++r) {
                // Oil changes are recognised anywhere in the name, the others only at its start;
                // an unnamed custom reminder matches nothing.
                const bool match = r == 0 ? item.typeText.contains(builtin[0])
                    : r < 5               ? item.typeText.startsWith(builtin[size_t(r)])
                                          : !settings.customNames[size_t(r - 5)].isEmpty()
                        && item.typeText.startsWith(settings.customNames[size_t(r - 5)]);
                if (!match)
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
