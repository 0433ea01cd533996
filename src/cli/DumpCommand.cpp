#include "DumpCommand.h"

#include "EntryOutput.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

int DumpCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QString file;
    bool json = false;
    for (const QString &argument : arguments) {
        if (argument == u"--json"_s) {
            json = true;
        } else if (argument.startsWith(u"--"_s) || !file.isEmpty()) {
            env.err << u"Usage: tarvane-cli dump FILE [--json]\n"_s;
            return 2;
        } else {
            file = argument;
        }
    }
    if (file.isEmpty()) {
        env.err << u"Usage: tarvane-cli dump FILE [--json]\n"_s;
        return 2;
    }

    EntryList entries;
    LogArchive archive;
    if (!archive.read(file, entries)) {
        env.err << archive.errorString() << u'\n';
        return 1;
    }
    printEntries(env.out, entries, env.app.locale, json);
    return 0;
}
