#include "MapCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "exchange/CsvHeader.h"
#include "exchange/ImportMapStore.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

namespace {

void printMap(const ImportMap &map, QTextStream &out)
{
    out << map.name << u'\n';
    for (int slot = 0; slot < ImportMap::SlotCount; ++slot) {
        if (slot >= ImportMap::FieldCount && !map.isMapped(slot))
            continue;
        const QString field
            = slot < ImportMap::FieldCount ? ImportMap::fieldName(slot) : u"(slot %1)"_s.arg(slot);
        const QString column = map.isMapped(slot) ? QString::number(map.column(slot) + 1) : u"-"_s;
        out << cformat("  %-20s %s", field.toUtf8().constData(), column.toUtf8().constData()) << u'\n';
    }
}

QJsonObject mapJson(const ImportMap &map)
{
    QJsonObject object { { u"name"_s, map.name } };
    QJsonObject fields;
    for (int slot = 0; slot < ImportMap::FieldCount; ++slot)
        fields.insert(ImportMap::fieldName(slot),
                      map.isMapped(slot) ? QJsonValue(map.column(slot) + 1) : QJsonValue(QJsonValue::Null));
    object.insert(u"fields"_s, fields);
    // The stored keys: each slot's column counting from 1, 0 for none.
    for (int slot = 0; slot < ImportMap::SlotCount; ++slot)
        object.insert(u"F"_s + QString::number(slot), map.column(slot) + 1);
    return object;
}

// A column by its number counting from 1, or by its title in the file's first line.
bool columnOf(const QString &text, const QStringList &titles, int *column)
{
    bool number = false;
    const int value = text.toInt(&number);
    if (number) {
        *column = value - 1;
        return value >= 1 && value <= 256;
    }
    for (Qt::CaseSensitivity cs : { Qt::CaseSensitive, Qt::CaseInsensitive }) {
        for (int i = 0; i < titles.size(); ++i) {
            if (!titles[i].isEmpty() && titles[i].compare(text.trimmed(), cs) == 0) {
                *column = i;
                return true;
            }
        }
    }
    return false;
}

int usage(const Command &command, CliEnvironment &env)
{
    env.err << u"Usage: tarvane-cli map "_s << command.synopsis() << u'\n';
    return 2;
}

} // namespace

QString MapCommand::synopsis() const
{
    return u"list | show NAME [--json] | set NAME FIELD=COLUMN ... [--file FILE]"_s;
}

QString MapCommand::description() const
{
    return u"Lists, shows or changes the CSV import maps; COLUMN counts from 1 or is a title of --file, "
           "FIELD= clears."_s;
}

int MapCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    const QString verb = arguments.value(0);
    QCommandLineParser parser;
    parser.addOption(CliSupport::jsonOption());
    parser.addOption(
        QCommandLineOption(u"file"_s, u"A CSV file whose titles name the columns."_s, u"FILE"_s));
    if (!parser.parse(QStringList { name() } + arguments.mid(1))) {
        env.err << parser.errorText() << u'\n';
        return usage(*this, env);
    }
    const QStringList positional = parser.positionalArguments();
    ImportMapStore store(env.app.preferenceStore);

    if (verb == u"list"_s && positional.isEmpty()) {
        const QString last = store.lastMapName();
        for (const QString &map : store.selectorNames())
            env.out << (map == last ? u"* "_s : u"  "_s) << map << u'\n';
        return 0;
    }
    if (verb == u"show"_s && positional.size() == 1) {
        if (!store.selectorNames().contains(positional.first())) {
            env.err << u"No import map named \"%1\".\n"_s.arg(positional.first());
            return 1;
        }
        const ImportMap map = store.load(positional.first());
        if (parser.isSet(u"json"_s))
            env.out << QString::fromUtf8(QJsonDocument(mapJson(map)).toJson(QJsonDocument::Indented));
        else
            printMap(map, env.out);
        return 0;
    }
    if (verb != u"set"_s || positional.size() < 2)
        return usage(*this, env);

    const QString mapName = positional.first();
    if (const QString error = ImportMapStore::nameError(mapName); !error.isEmpty()) {
        env.err << error << u'\n';
        return 1;
    }
    QStringList titles;
    if (parser.isSet(u"file"_s)) {
        CsvHeader header;
        const CsvHeader::Status status = CsvHeader::read(parser.value(u"file"_s), &header);
        if (status != CsvHeader::Status::Ok) {
            env.err << CsvHeader::message(status) << u'\n';
            return 1;
        }
        titles = header.titles;
    }
    ImportMap map = store.load(mapName);
    for (const QString &assignment : positional.mid(1)) {
        const qsizetype equals = assignment.indexOf(u'=');
        const int field = equals < 0 ? -1 : ImportMap::fieldFromName(assignment.left(equals));
        if (field < 0) {
            env.err << u"Not a FIELD=COLUMN of the import fields: "_s << assignment << u"\nFields: "_s
                    << ImportMap::fieldNames().join(u", "_s) << u'\n';
            return 2;
        }
        const QString value = assignment.mid(equals + 1);
        int column = ImportMap::None;
        if (!value.trimmed().isEmpty() && !columnOf(value, titles, &column)) {
            env.err << (titles.isEmpty() ? u"Not a column number (1 to 256): %1\n"_s
                                         : u"No column \"%1\" in the file's first line.\n"_s)
                           .arg(value);
            return 1;
        }
        map.assign(field, column);
    }
    if (!store.save(map)) {
        env.err << u"The map \"%1\" could not be saved in the preferences.\n"_s.arg(mapName);
        return 1;
    }
    printMap(map, env.out);
    return 0;
}
