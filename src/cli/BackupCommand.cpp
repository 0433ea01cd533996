#include "BackupCommand.h"

#include "CliSupport.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

int BackupCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"to"_s, u"Folder of the backup file."_s, u"DIR"_s));
    if (!CliSupport::parse(parser, name(), arguments, 1, synopsis(), env))
        return 2;
    if (!parser.isSet(u"to"_s) || parser.value(u"to"_s).isEmpty()) {
        env.err << u"Usage: tarvane-cli backup "_s << synopsis() << u'\n';
        return 2;
    }
    auto session = CliSupport::startSession(env, parser.positionalArguments().value(0), false);
    if (!session)
        return 1;
    return session->backupVehicle(parser.value(u"to"_s)) ? 0 : 1;
}

int RestoreCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"from"_s, u"The backup file."_s, u"FILE"_s));
    if (!CliSupport::parse(parser, name(), arguments, 1, synopsis(), env))
        return 2;
    if (!parser.isSet(u"from"_s) || parser.value(u"from"_s).isEmpty()) {
        env.err << u"Usage: tarvane-cli restore "_s << synopsis() << u'\n';
        return 2;
    }
    auto session = CliSupport::startSession(env, parser.positionalArguments().value(0), false);
    if (!session)
        return 1;
    return session->restoreVehicle(parser.value(u"from"_s)) ? 0 : 1;
}
