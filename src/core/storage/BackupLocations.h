#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

class DevicePaths;
class Reporter;

// A place a full backup can go: main memory (the device root) or a removable drive.
struct BackupLocation
{
    QString name; // as listed: "Main Memory" or the drive's folder name
    QString mountPoint; // host folder of a drive, ending in "/"; empty for main memory
    bool operator==(const BackupLocation &other) const = default;
};

// The locations offered by the full backup and restore, and the backup folder of each.
namespace BackupLocations {

// "Main Memory".
QString mainMemoryName();
// Any text containing "Main Memory" stands for main memory, a drive named so included.
bool isMainMemory(const QString &name);

// A drive's name: the last part of its mount point ("/media/anna/USB STICK/" gives "USB STICK").
QString driveName(const QString &mountPoint);

// Whether a mounted volume is one to offer as a drive: ready and writable, never the file system
// of the root or of the home folder, and on Linux mounted under /media, /run/media or /mnt (on
// Windows any other drive letter).
struct Volume
{
    QString rootPath;
    bool ready = false;
    bool readOnly = true;
};
bool isRemovableDrive(const Volume &volume, const QString &systemRoot, const QString &homeRoot);

// The drives, or nothing when the enumeration failed. Tests and sandboxes pass their own.
using DriveEnumerator = std::function<std::optional<QList<BackupLocation>>()>;
// In a sandbox every folder "DIR/Storage Card*" is a drive (the machine's own volumes are not
// looked at); otherwise the mounted volumes that pass isRemovableDrive.
DriveEnumerator systemDrives(const DevicePaths &paths);

// "Main Memory" followed by each drive. A failed enumeration is reported with the system's
// message and leaves only "Main Memory".
QList<BackupLocation> list(Reporter &reporter, const DriveEnumerator &drives);

// The location of a name in the list: main memory for a name containing "Main Memory", else the
// drive of that name; nothing when no such drive is present.
std::optional<BackupLocation> find(const QList<BackupLocation> &locations, const QString &name);

// "<root>/Tarvane Backup/" for main memory, "<mount point>/Tarvane Backup/" for a drive.
QString backupFolder(const DevicePaths &paths, const BackupLocation &location);
// Inside it, the copies of the logs and of the settings files.
QString dataFilesFolder(const QString &backupFolder);
QString setupFilesFolder(const QString &backupFolder);

} // namespace BackupLocations
