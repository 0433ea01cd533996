#include "DataViewLog.h"

#include <QFile>
#include <QFileInfo>

#include "calc/FuelEconomy.h"
#include "log/LogArchive.h"
#include "log/VehicleBackup.h"
#include "log/VehicleLog.h"
#include "platform/AtomicFile.h"
#include "platform/FileLock.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

DataViewLog::DataViewLog(const QString &dataFolder, const QString &vin)
    : m_folder(dataFolder)
    , m_vin(VehicleLog::effectiveVin(vin))
{ }

QString DataViewLog::databasePath() const
{
    return VehicleLog::databasePath(m_folder, m_vin);
}

QString DataViewLog::backupPath() const
{
    return VehicleBackup::backupPath(m_folder, m_vin);
}

bool DataViewLog::load(Reporter &reporter)
{
    m_entries.clear();
    m_loaded = false;
    m_disk = FileFingerprint();
    const QString path = databasePath();
    if (!VehicleLog::isSafeVin(m_vin) || !QFileInfo(path).isFile()) {
        reporter.error(VehicleLog::openErrorFormat().arg(path));
        return false;
    }
    QString reason;
    QFile file(path);
    if (!AtomicFile::checkReadable(path, LogArchive::MaxFileSize, &reason)
        || !file.open(QIODevice::ReadOnly)) {
        reporter.error(u"Unable to open the log file %1: %2."_s.arg(
            path, reason.isEmpty() ? file.errorString() : reason));
        return false;
    }
    // One read gives the entries and the fingerprint: both must describe the same file.
    LogArchive archive;
    EntryList entries;
    FileFingerprint disk;
    if (!archive.read(&file, entries, path, &disk)) {
        reporter.error(archive.errorString());
        return false;
    }
    m_entries = std::move(entries);
    m_loaded = true;
    m_disk = disk;
    return true;
}

bool DataViewLog::save(Reporter &reporter)
{
    const QString path = databasePath();
    if (!m_loaded || !VehicleLog::isSafeVin(m_vin) || !QFileInfo(path).isFile()) {
        reporter.error(saveErrorText());
        return false;
    }
    FileLock lock(path);
    if (!lock.lock()) {
        reporter.error(saveErrorText() + u'\n' + FileLock::busyMessage(path));
        return false;
    }
    if (changedOnDisk()) {
        reporter.error(saveErrorText() + u'\n' + VehicleLog::changedMessage(path));
        return false;
    }
    LogArchive archive;
    FileFingerprint written;
    if (!archive.write(path, m_entries, &written)) {
        // The system's text first, then which file and why.
        reporter.error(saveErrorText() + u'\n' + archive.errorString());
        return false;
    }
    m_disk = written;
    return true;
}

bool DataViewLog::changedOnDisk() const
{
    return m_disk.changedOnDisk(LogArchive::MaxFileSize);
}

bool DataViewLog::reloadIfChanged(Reporter &reporter)
{
    if (!m_loaded || !changedOnDisk())
        return false;
    load(reporter);
    return true;
}

CVCItem DataViewLog::newRecord(CVCItem::EntryType type, double odometer, quint32 now)
{
    static const char *const names[] = { "Fuel", "Maintenance", "Trip" };
    CVCItem item;
    item.entryType = type;
    item.typeText = QString::fromLatin1(names[type >= CVCItem::Fuel && type <= CVCItem::Trip ? type : 0]);
    item.odometer = odometer;
    item.entryDate = now;
    return item;
}

int DataViewLog::insertionPoint(const EntryList &entries, double odometer)
{
    const int count = int(entries.size());
    if (count == 0)
        return -1;
    if (count == 1)
        return entries[0].odometer < odometer ? -1 : 0;
    for (int i = 0; i < count - 1; ++i) {
        if (!(entries[size_t(i)].odometer < odometer))
            return i;
    }
    return count;
}

int DataViewLog::insert(const CVCItem &item, Reporter &reporter)
{
    const int position = insertionPoint(m_entries, item.odometer);
    if (position < 0)
        return -1;
    m_entries.insert(m_entries.begin() + position, item);
    return save(reporter) ? position : -1;
}

bool DataViewLog::replace(int position, const CVCItem &item, Reporter &reporter)
{
    if (position < 0 || position >= int(m_entries.size()))
        return false;
    m_entries[size_t(position)] = item;
    return save(reporter);
}

bool DataViewLog::remove(int position, Reporter &reporter)
{
    if (position < 0 || position >= int(m_entries.size()))
        return false;
    if (!reporter.ask(deleteQuestion()))
        return false;
    m_entries.erase(m_entries.begin() + position);
    return save(reporter);
}

bool DataViewLog::removeAll(Reporter &reporter)
{
    if (!reporter.ask(deleteAllQuestion()))
        return false;
    // The copy comes first: the log is emptied only when the whole list is safe in the backup.
    LogArchive archive;
    if (!m_loaded || !VehicleLog::isSafeVin(m_vin) || !archive.write(backupPath(), m_entries)) {
        reporter.error(QStringLiteral("Backup ERROR 107!\nUnable to backup database"));
        return false;
    }
    m_entries.clear();
    return save(reporter);
}

bool DataViewLog::reconcile(int distanceUnit, int economyUnit, Reporter &reporter)
{
    FuelEconomy::reconcile(m_entries, distanceUnit, economyUnit);
    return save(reporter);
}
