#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

#include "BackupLocations.h"

struct AppContext;
class Reporter;

// One file of a full backup or restore, as the status list shows it.
struct FullCopyStep
{
    enum class Outcome { Copied, Failed, Damaged };
    QString name; // the file name, without folder
    Outcome outcome = Outcome::Copied;
    QString reason; // why a file was not copied
    // The list line: the name alone when copied, else the name with what happened.
    QString text() const;
    bool operator==(const FullCopyStep &other) const = default;
};

struct FullCopyResult
{
    QList<FullCopyStep> steps;
    // Restore only: where the data folder's replaced files were kept; empty when none was replaced.
    QString keptFolder;
    int count(FullCopyStep::Outcome outcome) const;
    // Every file was copied (a location without a backup is complete too).
    bool complete() const;
};

// The full backup of every log and settings file of the data folder to "Tarvane Backup" on main
// memory or a drive, and the full restore from there. Each copy goes through SafeCopy (or the
// copier a test hands in), so a failed copy leaves its target as it was; failures are listed and
// counted, and the last backup / restore date is stored only when every file was copied.
class FullBackup
{
public:
    enum class Kind { Backup, Restore };
    using Copier = std::function<bool(const QString &source, const QString &target, QString *error)>;
    using Progress = std::function<void(const FullCopyStep &step)>;

    // An empty copier means SafeCopy::copy.
    explicit FullBackup(AppContext &context, Copier copier = {});

    // The Yes/No questions asked before each operation.
    static QString backupQuestion();
    // keptFolder is the folder that will hold the files the restore replaces.
    static QString restoreQuestion(const QString &keptFolder);
    // "FULL BACKUP" / "FULL RESTORE".
    static QString title(Kind kind);

    // "<data folder>/Before restore <yyyyMMdd-HHmmss>/" for a restore started now (a number is
    // added if such a folder exists already).
    QString beforeRestoreFolder() const;

    // Copies every "*.vcb" of the data folder to "<backup>/Tarvane Data Files/" and every "*.ini"
    // to "<backup>/Tarvane Setup Files/", replacing copies of the same name and leaving other
    // files there alone. Stores LastBackupDate when complete.
    FullCopyResult backup(const QString &backupFolder, const Progress &progress = {});
    // The same in reverse. A log in the backup that does not load is skipped; before a file of
    // the data folder is replaced it is copied into keptFolder. Stores LastRestoreDate when
    // complete.
    FullCopyResult restore(const QString &backupFolder, const QString &keptFolder,
                           const Progress &progress = {});

    // Asks the question (No gives nothing), runs the operation on the location and reports the
    // closing message: what the CLI does in one go.
    std::optional<FullCopyResult> run(Kind kind, const BackupLocation &location,
                                      const Progress &progress = {});

    // "Backup Complete" / "Restore Complete", or an error telling how many files were not copied.
    void reportResult(Kind kind, const FullCopyResult &result);
    static QString resultText(Kind kind, const FullCopyResult &result);

    // The stored location names (LastBackup / LastRestore, "Main Memory" by default) and dates.
    QString lastLocation(Kind kind) const;
    void storeLocation(Kind kind, const QString &name);
    QString lastDate(Kind kind) const;

    // The backup folder of a location on this machine.
    QString backupFolder(const BackupLocation &location) const;

private:
    bool copyFile(const QString &source, const QString &target, QString *error) const;
    void storeDate(Kind kind);

    AppContext &m_context;
    Copier m_copier;
};
