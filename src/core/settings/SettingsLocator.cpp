#include "SettingsLocator.h"

#include "IniFile.h"
#include "SettingsMessages.h"
#include "platform/AtomicFile.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

SettingsLocator::SettingsLocator(const DevicePaths &paths, Reporter &reporter)
    : m_paths(paths)
    , m_reporter(reporter)
{ }

QString SettingsLocator::settingsDevicePath()
{
    return u"\\My Documents\\Tarvane Files\\Velcora.ini"_s;
}

QString SettingsLocator::listsDevicePath()
{
    return u"\\My Documents\\Tarvane Files\\Lists.ini"_s;
}

QString SettingsLocator::dataFolderDevicePath()
{
    return u"\\My Documents\\Tarvane Files\\"_s;
}

QString SettingsLocator::normaliseInstallFolder(const QString &installFolder)
{
    if (installFolder.isEmpty())
        return u"\\Program Files\\Tarvane\\"_s;
    if (installFolder.lastIndexOf(u'\\') != installFolder.size() - 1)
        return installFolder + u'\\';
    return installFolder;
}

QString SettingsLocator::templateFolder(const QString &installFolder) const
{
    QString folder = m_paths.hostPath(normaliseInstallFolder(installFolder));
    if (!folder.endsWith(u'/'))
        folder += u'/';
    if (QFileInfo(folder + u"Velcora.ini"_s).isFile() && QFileInfo(folder + u"Lists.ini"_s).isFile())
        return folder;
    return DevicePaths::builtinInstallFolder();
}

bool SettingsLocator::copyReplacing(const QString &source, const QString &target)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    if (!AtomicFile::writeFile(target, in.readAll()))
        return false;
    // The copy gets ordinary permissions, whatever the template or the file it replaced had.
    QFile::setPermissions(target,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser
                              | QFileDevice::WriteUser | QFileDevice::ReadGroup | QFileDevice::ReadOther);
    return true;
}

bool SettingsLocator::locate(QString &installFolder, IniFile &settings)
{
    const QString settingsFile = m_paths.hostPath(settingsDevicePath());
    const QString listsFile = m_paths.hostPath(listsDevicePath());
    QDir().mkpath(m_paths.dataFolder());

    settings.Load(settingsFile);

    if (!QFileInfo::exists(listsFile)) {
        installFolder = normaliseInstallFolder(installFolder);
        const QString from = templateFolder(installFolder);
        // A missing Lists.ini is restored alone: the user's vehicles in an existing Velcora.ini
        // are never replaced by the template's sample vehicle.
        if (!QFileInfo::exists(settingsFile))
            copyReplacing(from + u"Velcora.ini"_s, settingsFile);
        copyReplacing(from + u"Lists.ini"_s, listsFile);
        installFolder = dataFolderDevicePath();
    }

    if (!QFileInfo::exists(settingsFile)) {
        installFolder = normaliseInstallFolder(installFolder);
        m_reporter.info(SettingsMessages::lookingForConfig());
        const QString from = templateFolder(installFolder);
        // Copied twice in a row, as the program always has.
        copyReplacing(from + u"Velcora.ini"_s, settingsFile);
        copyReplacing(from + u"Velcora.ini"_s, settingsFile);
        installFolder = dataFolderDevicePath();
    }

    if (!settings.Load(m_paths.hostPath(u"My Documents\\Tarvane Files\\Velcora.ini"_s))) {
        // A file that is there but can't be read is kept untouched; the user is told which and why.
        const QString reason
            = settings.loadFailed() ? u"\n%1: %2"_s.arg(settings.path(), settings.errorString()) : QString();
        m_reporter.error(SettingsMessages::startupLoadFailed() + reason);
        return false;
    }
    return true;
}

bool SettingsLocator::reload(IniFile &settings)
{
    if (!settings.Load(settings.path())) {
        m_reporter.error(SettingsMessages::reloadFailed());
        return false;
    }
    return true;
}
