#include "CliSupport.h"

#include "session/VehicleSession.h"

#include <vector>

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

void LeftToExit::operator()(VehicleSession *session) const
{
    // Reachable from here until the process ends, so leak checkers do not count it as lost.
    static auto *kept = new std::vector<VehicleSession *>;
    if (session && session->entries().size() >= LargeLog)
        kept->push_back(session);
    else
        delete session;
}

Session startSession(CliEnvironment &env, const QString &vehicle, bool readOnly)
{
    Session session(new VehicleSession(env.app));
    if (!session->start(readOnly, vehicle))
        return nullptr;
    return session;
}

QCommandLineOption jsonOption()
{
    return QCommandLineOption(u"json"_s, u"Machine-readable output."_s);
}

Session openForReading(QCommandLineParser &parser, const Command &command, const QStringList &arguments,
                       CliEnvironment &env, int *exitCode)
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
