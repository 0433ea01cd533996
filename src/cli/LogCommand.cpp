#include "LogCommand.h"

#include "CliSupport.h"
#include "EntryOutput.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

int LogCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    int exitCode = 0;
    auto session = CliSupport::openForReading(parser, *this, arguments, env, &exitCode);
    if (!session)
        return exitCode;
    // A damaged log is an error here, not an empty list.
    if (!session->logLoaded())
        return 1;
    printEntries(env.out, session->entries(), env.app.locale, parser.isSet(u"json"_s));
    return 0;
}
