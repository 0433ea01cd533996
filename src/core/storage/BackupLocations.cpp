#include "BackupLocations.h"

#include <QDir>
#include <QStorageInfo>

#include "platform/DevicePaths.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

QString withSlash(QString path)
{
    if (!path.endsWith(u'/'))
        path += u'/';
    return path;
}

QString stripSlash(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

// Two drives mounted under different parents may share a last folder name; the later ones get a
// number so that every name in the list picks one drive.
void addDrive(QList<BackupLocation> &drives, const QString &mountPoint)
{
    const QString base = BackupLocations::driveName(mountPoint);
    if (base.isEmpty())
        return;
    QString name = base;
    for (int n = 2;; ++n) {
        const bool taken = std::any_of(drives.cbegin(), drives.cend(),
                                       [&name](const BackupLocation &d) { return d.name == name; });
        if (!taken)
            break;
        name = u"%1 (%2)"_s.arg(base).arg(n);
    }
    drives.append({ name, withSlash(mountPoint) });
}

std::optional<QList<BackupLocation>> sandboxDrives(const QString &root)
{
    QDir dir(root);
    if (!dir.exists())
        return std::nullopt;
    QList<BackupLocation> drives;
    const QStringList names
        = dir.entryList({ u"Storage Card*"_s }, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names)
        addDrive(drives, dir.filePath(name));
    return drives;
}

std::optional<QList<BackupLocation>> mountedDrives()
{
    const QString systemRoot = QStorageInfo::root().rootPath();
    const QString homeRoot = QStorageInfo(QDir::homePath()).rootPath();
    QList<BackupLocation> drives;
    const QList<QStorageInfo> volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo &volume : volumes) {
        const BackupLocations::Volume v { volume.rootPath(), volume.isValid() && volume.isReady(),
                                          volume.isReadOnly() };
        if (BackupLocations::isRemovableDrive(v, systemRoot, homeRoot))
            addDrive(drives, volume.rootPath());
    }
    return drives;
}

} // namespace

QString BackupLocations::mainMemoryName()
{
    return u"Main Memory"_s;
}

bool BackupLocations::isMainMemory(const QString &name)
{
    return name.contains(mainMemoryName());
}

QString BackupLocations::driveName(const QString &mountPoint)
{
    const QString path = stripSlash(QDir::fromNativeSeparators(mountPoint));
    const qsizetype slash = path.lastIndexOf(u'/');
    // A Windows drive root ("E:") has no folder name: the letter names it.
    return slash < 0 ? path : path.mid(slash + 1);
}

bool BackupLocations::isRemovableDrive(const Volume &volume, const QString &systemRoot,
                                       const QString &homeRoot)
{
    if (!volume.ready || volume.readOnly || volume.rootPath.isEmpty())
        return false;
    const QString path = stripSlash(QDir::fromNativeSeparators(volume.rootPath));
    const auto same = [&path](const QString &other) {
        return !other.isEmpty()
            && path.compare(stripSlash(QDir::fromNativeSeparators(other)), Qt::CaseInsensitive) == 0;
    };
    if (path == u"/"_s || same(systemRoot) || same(homeRoot))
        return false;
#if defined(Q_OS_WIN)
    // Any other drive letter.
    return path.size() == 2 && path.at(1) == u':';
#else
    for (const QString &prefix : { u"/media/"_s, u"/run/media/"_s, u"/mnt/"_s })
        if (path.startsWith(prefix) && path.size() > prefix.size())
            return true;
    return false;
#endif
}

BackupLocations::DriveEnumerator BackupLocations::systemDrives(const DevicePaths &paths)
{
    if (paths.isSandboxed()) {
        const QString root = paths.root();
        return [root] {
            return sandboxDrives(root);
        };
    }
    return [] {
        return mountedDrives();
    };
}

QList<BackupLocation> BackupLocations::list(Reporter &reporter, const DriveEnumerator &drives)
{
    QList<BackupLocation> locations { { mainMemoryName(), QString() } };
    const std::optional<QList<BackupLocation>> found = drives ? drives() : std::nullopt;
    if (!found) {
        reporter.error(u"ERROR: Memory allocation failure., returning..."_s);
        return locations;
    }
    locations += *found;
    return locations;
}

std::optional<BackupLocation> BackupLocations::find(const QList<BackupLocation> &locations,
                                                    const QString &name)
{
    if (isMainMemory(name))
        return BackupLocation { name, QString() };
    for (const BackupLocation &location : locations)
        if (location.name == name)
            return location;
    return std::nullopt;
}

QString BackupLocations::backupFolder(const DevicePaths &paths, const BackupLocation &location)
{
    if (isMainMemory(location.name) || location.mountPoint.isEmpty())
        return paths.mainMemoryBackupFolder();
    return withSlash(location.mountPoint) + u"Tarvane Backup/"_s;
}

QString BackupLocations::dataFilesFolder(const QString &backupFolder)
{
    return withSlash(backupFolder) + u"Tarvane Data Files/"_s;
}

QString BackupLocations::setupFilesFolder(const QString &backupFolder)
{
    return withSlash(backupFolder) + u"Tarvane Setup Files/"_s;
}
