#include "ProfileCommand.h"

#include "CliSupport.h"
#include "ProfileOutput.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

int ProfileCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    int exitCode = 0;
    auto session = CliSupport::openForReading(parser, *this, arguments, env, &exitCode);
    if (!session)
        return exitCode;
    if (!session->settings().hasSection(session->currentVehicleName())) {
        env.err << u"No profile for \""_s << session->currentVehicleName() << u"\" in the settings file.\n"_s;
        return 1;
    }

    ProfileOutput::print(session->currentVehicleName(), session->vehicle(), parser.isSet(u"json"_s), env.out);
    return 0;
}
