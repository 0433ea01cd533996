#include "HelpLauncher.h"

#include "platform/AtomicFile.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

QString HelpLauncher::resourcePath()
{
    return u":/help/velcora_help.htm"_s;
}

QString HelpLauncher::extractTo(const QString &folder)
{
    QFile source(resourcePath());
    if (!source.open(QIODevice::ReadOnly) || !QDir().mkpath(folder))
        return QString();
    const QString target = QDir(folder).filePath(u"velcora_help.htm"_s);
    if (!AtomicFile::writeFile(target, source.readAll()))
        return QString();
    return target;
}

DesktopHelpLauncher::DesktopHelpLauncher(const QString &folder)
    : m_folder(folder)
{
    if (m_folder.isEmpty())
        m_folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/help"_s;
}

bool DesktopHelpLauncher::showHelp(QWidget *)
{
    // Refreshed on every call so the page always matches the running program.
    const QString page = extractTo(m_folder);
    return !page.isEmpty() && QDesktopServices::openUrl(QUrl::fromLocalFile(page));
}
