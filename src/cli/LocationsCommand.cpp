#include "LocationsCommand.h"

#include <QDir>

#include "CliSupport.h"
#include "storage/BackupLocations.h"

using namespace Qt::StringLiterals;

int LocationsCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    if (!CliSupport::parse(parser, name(), arguments, 0, synopsis(), env))
        return 2;
    const DevicePaths &paths = env.app.paths;
    const QList<BackupLocation> locations
        = BackupLocations::list(env.app.reporter, BackupLocations::systemDrives(paths));
    for (const BackupLocation &location : locations)
        env.out << location.name << u'\t'
                << QDir::toNativeSeparators(BackupLocations::backupFolder(paths, location)) << u'\n';
    return 0;
}
