#include "CliSupport.h"

#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace CliSupport {

bool parse(QCommandLineParser &parser, const QString &command, const QStringList &arguments,
           qsizetype maxPositional, const QString &usage, CliEnvironment &env)
{
    if (!parser.parse(QStringList { command } + arguments)) {
        env.err << parser.errorText() << u"\nUsage: tarvane-cli "_s << command << u' ' << usage << u'\n';
        return false;
    }
    if (parser.positionalArguments().size() > maxPositional) {
        env.err << u"Too many arguments.\nUsage: tarvane-cli "_s << command << u' ' << usage << u'\n';
        return false;
    }
    return true;
}

std::unique_ptr<VehicleSession> startSession(CliEnvironment &env, const QString &vehicle, bool readOnly)
{
    auto session = std::make_unique<VehicleSession>(env.app);
    if (!session->start(readOnly, vehicle))
        return nullptr;
    return session;
}

QCommandLineOption jsonOption()
{
    return QCommandLineOption(u"json"_s, u"Machine-readable output."_s);
}

std::unique_ptr<VehicleSession> openForReading(QCommandLineParser &parser, const Command &command,
                                               const QStringList &arguments, CliEnvironment &env,
                                               int *exitCode)
{
    parser.addOption(jsonOption());
    if (!parse(parser, command.name(), arguments, 1, command.synopsis(), env)) {
        *exitCode = 2;
        return nullptr;
    }
    auto session = startSession(env, parser.positionalArguments().value(0), true);
    if (!session)
        *exitCode = 1;
    return session;
}

} // namespace CliSupport
