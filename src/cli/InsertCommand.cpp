#include "InsertCommand.h"

#include <QCommandLineParser>

#include "AddCommand.h"
#include "HistoryAccess.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

int InsertCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    const QString kind = arguments.value(0);
    const int type = AddCommand::entryType(kind);
    if (kind == u"--help"_s) {
        env.out << AddCommand::usage(name());
        return 0;
    }
    QCommandLineParser parser;
    AddCommand::addOptions(parser, type);
    if (type < 0 || !parser.parse(QStringList { name() } + arguments.mid(1))
        || parser.positionalArguments().size() > 1) {
        if (type >= 0)
            env.err << parser.errorText() << u'\n';
        env.err << AddCommand::usage(name());
        return 2;
    }
    if (!AddCommand::checkRequired(parser, type, env.err)) {
        env.err << AddCommand::usage(name());
        return 2;
    }

    HistoryAccess access;
    if (!access.open(env, parser.positionalArguments().value(0)))
        return 1;
    if (access.log->entries().empty()) {
        env.err << u"The log is empty: there is nothing to insert into (use add).\n"_s;
        return 1;
    }
    const VehicleSession &session = *access.session;
    CVCItem record
        = DataViewLog::newRecord(CVCItem::EntryType(type), session.scan().lastOdometer, env.app.clock.now());
    if (const int code
        = AddCommand::applyOptions(parser, session.formContext(), record, env.app.reporter, env.err))
        return code;
    if (DataViewLog::insertionPoint(access.log->entries(), record.odometer) < 0) {
        env.err << cformat("Entry discarded: the log's only entry has an odometer below %s.",
                           record.odometerText().trimmed().toUtf8().constData())
                << u'\n';
        return 1;
    }
    const int position = access.log->insert(record, env.app.reporter);
    if (position < 0)
        return 1;
    env.out << cformat("Inserted %s entry at position %d.", record.typeText->toUtf8().constData(), position)
            << u'\n';
    return 0;
}
