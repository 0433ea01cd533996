#pragma once

#include <QString>

// Maps the device's folders ("\My Documents\Tarvane Files\", "\Program Files\Tarvane\",
// "\Tarvane Backup") onto this machine. With a root (--root or TARVANE_ROOT) everything,
// the settings stores included, lives below that folder.
class DevicePaths
{
public:
    // No root: the user's home and documents folders, and the native settings stores.
    DevicePaths();
    explicit DevicePaths(const QString &root);

    // The --root option wins over TARVANE_ROOT; neither gives the unsandboxed paths.
    static DevicePaths fromEnvironment(const QString &rootOption = QString());

    bool isSandboxed() const { return m_sandboxed; }
    // Host folders, always ending in "/".
    QString root() const { return m_root; }
    QString myDocuments() const { return m_myDocuments; }
    QString dataFolder() const { return m_myDocuments + QStringLiteral("Tarvane Files/"); }
    QString mainMemoryBackupFolder() const { return m_root + QStringLiteral("Tarvane Backup/"); }
    // Where the two settings stores keep their INI files in a sandbox.
    QString registryFolder() const { return m_root + QStringLiteral("Registry/"); }
    // The built-in templates of Velcora.ini and Lists.ini.
    static QString builtinInstallFolder() { return QStringLiteral(":/install/"); }

    // A device path ("\My Documents\Tarvane Files\Velcora.ini", "My Documents\...",
    // "\Program Files\Tarvane\Lists.ini") as a path on this machine. Host paths pass unchanged.
    QString hostPath(const QString &devicePath) const;

    QString dataFile(const QString &name) const { return dataFolder() + name; }

private:
    QString m_root;
    QString m_myDocuments;
    bool m_sandboxed = false;
};
