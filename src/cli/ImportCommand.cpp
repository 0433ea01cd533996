#include "ImportCommand.h"

#include "CliSupport.h"
#include "exchange/CsvImport.h"
#include "exchange/CsvSessionImport.h"
#include "exchange/ImportMapStore.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

QString ImportCommand::description() const
{
    return u"Imports the entries of a CSV file through an import map (see map), placed by odometer; prints "
           "the counts."_s;
}

int ImportCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"map"_s, u"The import map."_s, u"NAME"_s));
    if (!CliSupport::parse(parser, name(), arguments, 2, synopsis(), env))
        return 2;
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty()) {
        env.err << u"Usage: tarvane-cli import "_s << synopsis() << u'\n';
        return 2;
    }
    ImportMapStore store(env.app.preferenceStore);
    const QString mapName = parser.isSet(u"map"_s) ? parser.value(u"map"_s) : store.lastMapName();
    if (!store.selectorNames().contains(mapName)) {
        env.err << u"No import map named \"%1\".\n"_s.arg(mapName);
        return 1;
    }
    auto session = CliSupport::startSession(env, positional.value(1), false);
    if (!session)
        return 1;
    if (session->currentVehicleIndex() < 0) {
        env.err << u"No vehicle is selected.\n"_s;
        return 1;
    }
    CsvImport import(store.load(mapName), CsvSessionImport::settings(*session, env.app.locale));
    if (!import.begin(positional.first(), env.app.reporter))
        return 1;
    const bool done
        = import.finish(session->log(), session->dataFolder(), session->vehicle().vin, env.app.reporter);
    session->reopen();
    return done ? 0 : 1;
}
