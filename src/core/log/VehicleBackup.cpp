#include "VehicleBackup.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "LogArchive.h"
#include "VehicleLog.h"
#include "platform/CFormat.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

// Lowers the busy flag however the backup ends.
class BusyGuard
{
public:
    explicit BusyGuard(bool &busy)
        : m_busy(busy)
    {
        m_busy = true;
    }
    ~BusyGuard() { m_busy = false; }
    BusyGuard(const BusyGuard &) = delete;
    BusyGuard &operator=(const BusyGuard &) = delete;

private:
    bool &m_busy;
};

QString withSeparator(const QString &folder)
{
    if (folder.isEmpty() || folder.endsWith(u'/') || folder.endsWith(u'\\'))
        return folder;
    return folder + u'/';
}

// Copies the log as it is on disk, through a temporary file, so a failed copy leaves the
// previous copy whole.
bool keepCopy(const QString &source, const QString &target)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = in.readAll();
    if (in.error() != QFileDevice::NoError)
        return false;
    QSaveFile out(target);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
}

} // namespace

QString VehicleBackup::beforeRestorePath(const QString &databasePath)
{
    return databasePath + u".before-restore"_s;
}

QString VehicleBackup::backupPath(const QString &folder, const QString &vin)
{
    return cformat("%s%s.bak", withSeparator(folder).toUtf8().constData(),
                   VehicleLog::effectiveVin(vin).toUtf8().constData());
}

QString VehicleBackup::proposedRestoreName(const QString &vin)
{
    return cformat("%s.bak", VehicleLog::effectiveVin(vin).toUtf8().constData());
}

bool VehicleBackup::backup(const EntryList &entries, const QString &folder, const QString &vin,
                           Reporter &reporter, bool &busy)
{
    BusyGuard guard(busy);
    const QString name = VehicleLog::effectiveVin(vin);
    LogArchive archive;
    if (!VehicleLog::isSafeVin(name) || !archive.write(backupPath(folder, name), entries)) {
        // The system's text, then which file and why when the write itself failed.
        const QString reason = archive.errorString();
        reporter.error(u"Backup ERROR 107!\nUnable to backup database"_s
                       + (reason.isEmpty() ? QString() : u'\n' + reason));
        return false;
    }
    reporter.info(cformat("Current vehicle backed up to\n%s", folder.toUtf8().constData()));
    return true;
}

bool VehicleBackup::restore(VehicleLog &log, const QString &file, const QString &vehicleName,
                            const QString &dataFolder, const QString &vin, Reporter &reporter)
{
    const QString failed = cformat("ERROR 106! Unable to restore %s", vehicleName.toUtf8().constData());
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        reporter.error(failed);
        return false;
    }
    EntryList restored;
    LogArchive archive;
    if (!archive.read(&in, restored, file)) {
        reporter.error(failed + u'\n' + archive.errorString());
        return false;
    }
    in.close();
    // What the restore replaces is kept (one generation), so restoring the wrong file can be undone.
    const QString database = VehicleLog::databasePath(dataFolder, vin);
    if (QFileInfo::exists(database) && !keepCopy(database, beforeRestorePath(database))) {
        reporter.error(failed
                       + u"\nThe current log could not be kept as %1, so nothing was restored."_s.arg(
                           beforeRestorePath(database)));
        return false;
    }
    log.setEntries(std::move(restored));
    // The restored entries are the log now, even for a vehicle created a moment ago.
    log.setFreshDatabase(false);
    if (!log.save(dataFolder, vin, reporter))
        return false;
    reporter.info(cformat("Backup restored for %s", vehicleName.toUtf8().constData()));
    return true;
}
