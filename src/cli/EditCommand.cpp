#include "EditCommand.h"

#include <QCommandLineParser>

#include "AddCommand.h"
#include "HistoryAccess.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

int EditCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    // Which options apply depends on the entry, so all are accepted here and checked below.
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"not-full"_s));
    QStringList all;
    for (int type : { CVCItem::Fuel, CVCItem::Maintenance, CVCItem::Trip }) {
        for (const QString &option : AddCommand::optionNames(type)) {
            if (!all.contains(option)) {
                all.append(option);
                parser.addOption(QCommandLineOption(option, QString(), u"value"_s));
            }
        }
    }
    const QString usage = u"Usage: tarvane-cli edit "_s + synopsis() + u"\n(options: see add --help)\n"_s;
    if (!parser.parse(QStringList { name() } + arguments)) {
        env.err << parser.errorText() << u'\n' << usage;
        return 2;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty() || positional.size() > 2) {
        env.err << usage;
        return 2;
    }

    HistoryAccess access;
    int position = -1;
    if (!access.open(env, positional.size() == 2 ? positional.first() : QString())
        || !access.position(positional.last(), &position, env.err))
        return 1;
    CVCItem record = access.log->entries()[size_t(position)];
    QStringList allowed = AddCommand::optionNames(record.entryType);
    if (record.entryType == CVCItem::Fuel)
        allowed.append(u"not-full"_s);
    for (const QString &option : parser.optionNames()) {
        if (!allowed.contains(option)) {
            env.err << u"--"_s << option << u" does not apply to a "_s << record.typeName() << u" entry.\n"_s;
            return 2;
        }
    }
    if (const int code
        = AddCommand::applyOptions(parser, access.session->formContext(), record, env.app.reporter, env.err))
        return code;
    if (!access.log->replace(position, record, env.app.reporter))
        return 1;
    env.out << cformat("Saved the %s entry at position %d.", record.typeText->toUtf8().constData(), position)
            << u'\n';
    return 0;
}
