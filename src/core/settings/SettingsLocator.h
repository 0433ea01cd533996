#pragma once

#include <QString>

class DevicePaths;
class IniFile;
class Reporter;

// Finds Velcora.ini and Lists.ini at start-up, putting the install folder's templates in
// place when they are missing, and reloads the settings after Setup.
class SettingsLocator
{
public:
    SettingsLocator(const DevicePaths &paths, Reporter &reporter);

    // Device paths of the two files and of the data folder.
    static QString settingsDevicePath();
    static QString listsDevicePath();
    static QString dataFolderDevicePath();

    // Empty becomes "\Program Files\Tarvane\"; a missing trailing "\" is added.
    static QString normaliseInstallFolder(const QString &installFolder);

    // The host folder (ending in "/") the templates are copied from: the install folder when it
    // holds both Velcora.ini and Lists.ini, else the built-in templates.
    QString templateFolder(const QString &installFolder) const;

    // The start-up steps. installFolder is the registry Path value; it comes back normalised,
    // or as the data folder once templates were copied. Loads settings from the data folder;
    // false (after "ERROR 100") when that fails, leaving settings empty.
    bool locate(QString &installFolder, IniFile &settings);

    // Reloads settings from its own path after Setup; false (after "ERROR 106") on failure.
    bool reload(IniFile &settings);

    // Copies source over target through QSaveFile, leaving target writable. Failures are only
    // returned, never reported.
    static bool copyReplacing(const QString &source, const QString &target);

private:
    const DevicePaths &m_paths;
    Reporter &m_reporter;
};
