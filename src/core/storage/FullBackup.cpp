#include "FullBackup.h"

#include <QDir>
#include <QFileInfo>

#include "SafeCopy.h"
#include "log/LogArchive.h"
#include "platform/AppContext.h"
#include "platform/CFormat.h"
#include "settings/PreferenceSections.h"

using namespace Qt::StringLiterals;

namespace {

QString locationKey(FullBackup::Kind kind)
{
    return kind == FullBackup::Kind::Backup ? u"LastBackup"_s : u"LastRestore"_s;
}

QString dateKey(FullBackup::Kind kind)
{
    return kind == FullBackup::Kind::Backup ? u"LastBackupDate"_s : u"LastRestoreDate"_s;
}

// The files of one group, in name order; none when the folder is missing.
QStringList filesIn(const QString &folder, const QString &pattern)
{
    return QDir(folder).entryList({ pattern }, QDir::Files | QDir::Hidden, QDir::Name);
}

bool loadsAsLog(const QString &path, QString *reason)
{
    EntryList entries;
    LogArchive archive;
    if (archive.read(path, entries))
        return true;
    *reason = archive.errorString();
    return false;
}

} // namespace

QString FullCopyStep::text() const
{
    switch (outcome) {
    case Outcome::Copied:
        return name;
    case Outcome::Damaged:
        return name + u": skipped, damaged"_s;
    case Outcome::Failed:
        break;
    }
    if (reason.isEmpty())
        return name + u": failed"_s;
    return name + u": failed ("_s + reason + u')';
}

int FullCopyResult::count(FullCopyStep::Outcome outcome) const
{
    return static_cast<int>(std::count_if(steps.cbegin(), steps.cend(),
                                          [outcome](const FullCopyStep &s) { return s.outcome == outcome; }));
}

bool FullCopyResult::complete() const
{
    return count(FullCopyStep::Outcome::Copied) == steps.size();
}

FullBackup::FullBackup(AppContext &context, Copier copier)
    : m_context(context)
    , m_copier(std::move(copier))
{ }

QString FullBackup::backupQuestion()
{
    return u"This function will replace any previous backup with the current database.\nConinue?"_s;
}

QString FullBackup::restoreQuestion(const QString &keptFolder)
{
    // The note on the kept files goes before the question itself, which stays the last line.
    return u"This function will replace all vehicle data with the last restore, any data entered since the "
           "last restore will be lost.\nThe files it replaces are kept in the folder\n"_s
        + QDir::toNativeSeparators(keptFolder) + u"\nConinue?"_s;
}

QString FullBackup::title(Kind kind)
{
    return kind == Kind::Backup ? u"FULL BACKUP"_s : u"FULL RESTORE"_s;
}

QString FullBackup::beforeRestoreFolder() const
{
    const QString stamp = m_context.clock.nowLocal().toString(u"yyyyMMdd-HHmmss"_s);
    const QString base = m_context.paths.dataFolder() + u"Before restore "_s + stamp;
    QString folder = base;
    for (int n = 2; QFileInfo::exists(folder); ++n)
        folder = base + u'-' + QString::number(n);
    return folder + u'/';
}

bool FullBackup::copyFile(const QString &source, const QString &target, QString *error) const
{
    return m_copier ? m_copier(source, target, error) : SafeCopy::copy(source, target, error);
}

FullCopyResult FullBackup::backup(const QString &backupFolder, const Progress &progress)
{
    FullCopyResult result;
    const QString data = m_context.paths.dataFolder();
    const struct
    {
        QString folder;
        QString pattern;
    } groups[] = { { BackupLocations::dataFilesFolder(backupFolder), u"*.vcb"_s },
                   { BackupLocations::setupFilesFolder(backupFolder), u"*.ini"_s } };
    // A drive pulled out after it was listed leaves its mount point behind, or nothing: the backup
    // must not quietly land on the system disk under that name.
    const QString location = QFileInfo(QDir::cleanPath(backupFolder)).path();
    const bool present = QFileInfo(location).isDir();
    for (const auto &group : groups) {
        const bool made = present && QDir().mkpath(group.folder);
        for (const QString &name : filesIn(data, group.pattern)) {
            FullCopyStep step { name, FullCopyStep::Outcome::Copied, QString() };
            if (!present)
                step.reason
                    = u"the location "_s + QDir::toNativeSeparators(location) + u" is not available"_s;
            else if (!made)
                step.reason = u"unable to create the folder "_s + QDir::toNativeSeparators(group.folder);
            if (!made || !copyFile(data + name, group.folder + name, &step.reason))
                step.outcome = FullCopyStep::Outcome::Failed;
            result.steps.append(step);
            if (progress)
                progress(step);
        }
    }
    if (result.complete())
        storeDate(Kind::Backup);
    return result;
}

FullCopyResult FullBackup::restore(const QString &backupFolder, const QString &keptFolder,
                                   const Progress &progress)
{
    FullCopyResult result;
    const QString data = m_context.paths.dataFolder();
    QDir().mkpath(data);
    const struct
    {
        QString folder;
        QString pattern;
        bool isLog;
    } groups[] = { { BackupLocations::dataFilesFolder(backupFolder), u"*.vcb"_s, true },
                   { BackupLocations::setupFilesFolder(backupFolder), u"*.ini"_s, false } };
    for (const auto &group : groups) {
        for (const QString &name : filesIn(group.folder, group.pattern)) {
            FullCopyStep step { name, FullCopyStep::Outcome::Copied, QString() };
            const QString source = group.folder + name;
            const QString target = data + name;
            if (group.isLog && !loadsAsLog(source, &step.reason)) {
                step.outcome = FullCopyStep::Outcome::Damaged;
            } else if (QFileInfo::exists(target)
                       && !(QDir().mkpath(keptFolder) && copyFile(target, keptFolder + name, &step.reason))) {
                // Nothing is replaced that could not be kept first.
                step.outcome = FullCopyStep::Outcome::Failed;
                step.reason = u"unable to keep the old file: "_s + step.reason;
            } else {
                if (QFileInfo::exists(target))
                    result.keptFolder = keptFolder;
                if (!copyFile(source, target, &step.reason))
                    step.outcome = FullCopyStep::Outcome::Failed;
            }
            result.steps.append(step);
            if (progress)
                progress(step);
        }
    }
    if (result.complete())
        storeDate(Kind::Restore);
    return result;
}

std::optional<FullCopyResult> FullBackup::run(Kind kind, const BackupLocation &location,
                                              const Progress &progress)
{
    const QString folder = backupFolder(location);
    if (kind == Kind::Backup) {
        if (!m_context.reporter.ask(backupQuestion(), title(kind)))
            return std::nullopt;
        const FullCopyResult result = backup(folder, progress);
        reportResult(kind, result);
        return result;
    }
    const QString kept = beforeRestoreFolder();
    if (!m_context.reporter.ask(restoreQuestion(kept), title(kind)))
        return std::nullopt;
    const FullCopyResult result = restore(folder, kept, progress);
    reportResult(kind, result);
    return result;
}

QString FullBackup::resultText(Kind kind, const FullCopyResult &result)
{
    if (result.complete())
        return kind == Kind::Backup ? u"Backup Complete"_s : u"Restore Complete"_s;
    const int failed = result.count(FullCopyStep::Outcome::Failed);
    const int damaged = result.count(FullCopyStep::Outcome::Damaged);
    const int total = static_cast<int>(result.steps.size());
    QString text = kind == Kind::Backup
        ? cformat("Backup incomplete: %d of %d files could not be copied.", failed, total)
        : cformat("Restore incomplete: %d of %d files were not restored.", failed + damaged, total);
    if (damaged > 0)
        text += cformat("\n%d damaged vehicle logs in the backup were skipped.", damaged);
    text += kind == Kind::Backup ? u"\nEarlier copies of the files not copied were left as they were."_s
                                 : u"\nThe data folder keeps its own copies of the files not restored."_s;
    if (!result.keptFolder.isEmpty())
        text += u"\nThe files replaced are kept in\n"_s + QDir::toNativeSeparators(result.keptFolder);
    return text;
}

void FullBackup::reportResult(Kind kind, const FullCopyResult &result)
{
    if (result.complete())
        m_context.reporter.info(resultText(kind, result));
    else
        m_context.reporter.error(resultText(kind, result));
}

QString FullBackup::lastLocation(Kind kind) const
{
    return m_context.preferences().getString(PreferenceSections::listAttributes(), locationKey(kind),
                                             BackupLocations::mainMemoryName());
}

void FullBackup::storeLocation(Kind kind, const QString &name)
{
    m_context.preferences().writeString(PreferenceSections::listAttributes(), locationKey(kind), name);
}

QString FullBackup::lastDate(Kind kind) const
{
    return m_context.preferences().getString(PreferenceSections::listAttributes(), dateKey(kind),
                                             u"Unknown"_s);
}

void FullBackup::storeDate(Kind kind)
{
    const QDateTime now = m_context.clock.nowLocal();
    const QString text = cformat("%s %s", m_context.locale.shortDate(now).toUtf8().constData(),
                                 m_context.locale.shortTime(now).toUtf8().constData());
    m_context.preferences().writeString(PreferenceSections::listAttributes(), dateKey(kind), text);
}

QString FullBackup::backupFolder(const BackupLocation &location) const
{
    return BackupLocations::backupFolder(m_context.paths, location);
}
