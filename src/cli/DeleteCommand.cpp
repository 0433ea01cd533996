#include "DeleteCommand.h"

#include "CliSupport.h"
#include "HistoryAccess.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

int DeleteCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    if (!CliSupport::parse(parser, name(), arguments, 2, synopsis(), env))
        return 2;
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty()) {
        env.err << u"Usage: tarvane-cli delete "_s << synopsis() << u'\n';
        return 2;
    }
    HistoryAccess access;
    int position = -1;
    if (!access.open(env, positional.size() == 2 ? positional.first() : QString())
        || !access.position(positional.last(), &position, env.err))
        return 1;
    if (!access.log->remove(position, env.app.reporter))
        return 1;
    env.out << cformat("Deleted the entry at position %d.", position) << u'\n';
    return 0;
}

int DeleteAllCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    if (!CliSupport::parse(parser, name(), arguments, 1, synopsis(), env))
        return 2;
    HistoryAccess access;
    if (!access.open(env, parser.positionalArguments().value(0)))
        return 1;
    const size_t count = access.log->entries().size();
    if (!access.log->removeAll(env.app.reporter))
        return 1;
    env.out << cformat("Deleted %d entries; the old log is in %s.", int(count),
                       access.log->backupPath().toUtf8().constData())
            << u'\n';
    return 0;
}
