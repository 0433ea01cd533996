#include "FullBackupCommand.h"

#include "CliSupport.h"
#include "session/VehicleSession.h"
#include "storage/FullBackup.h"

using namespace Qt::StringLiterals;

namespace {

// Both commands: the location (the one used last when none is given), the question, the copies
// listed one per line as they happen, and the closing message.
int runFull(FullBackup::Kind kind, const Command &command, const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(
        QCommandLineOption(u"location"_s, u"Main Memory or a drive (see locations)."_s, u"NAME"_s));
    if (!CliSupport::parse(parser, command.name(), arguments, 0, command.synopsis(), env))
        return 2;
    // Starts like the program, so a first run has its data folder and settings files.
    if (!CliSupport::startSession(env, QString(), true))
        return 1;

    FullBackup full(env.app);
    const QString name = parser.isSet(u"location"_s) ? parser.value(u"location"_s) : full.lastLocation(kind);
    const QList<BackupLocation> locations
        = BackupLocations::list(env.app.reporter, BackupLocations::systemDrives(env.app.paths));
    const std::optional<BackupLocation> location = BackupLocations::find(locations, name);
    if (!location) {
        env.app.reporter.error(
            u"The location \"%1\" is not available; tarvane-cli locations lists those that are."_s.arg(name));
        return 1;
    }
    const auto result = full.run(kind, *location, [&env](const FullCopyStep &step) {
        env.out << step.text() << u'\n';
        env.out.flush();
    });
    if (!result)
        return 1;
    full.storeLocation(kind, location->name);
    return result->complete() ? 0 : 1;
}

} // namespace

int FullBackupCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    return runFull(FullBackup::Kind::Backup, *this, arguments, env);
}

int FullRestoreCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    return runFull(FullBackup::Kind::Restore, *this, arguments, env);
}
