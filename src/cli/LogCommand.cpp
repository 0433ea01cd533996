#include "LogCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "dataview/DataViewColumns.h"
#include "log/CVCItemJson.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

// The filter the options name; false after a message.
bool readFilter(const QCommandLineParser &parser, DataViewFilter *filter, QTextStream &err)
{
    static const QStringList types = { u"fuel"_s, u"maint"_s, u"trips"_s, u"all"_s };
    static const QStringList periods = { u"week"_s, u"month"_s, u"year"_s, u"all"_s, u"dates"_s };
    const qsizetype type = types.indexOf(parser.value(u"type"_s));
    // Dates alone mean a list by date.
    const bool dates = parser.isSet(u"from"_s) || parser.isSet(u"to"_s);
    const qsizetype period = parser.isSet(u"period"_s) ? periods.indexOf(parser.value(u"period"_s))
        : dates                                        ? qsizetype(DataViewFilter::ByDate)
                                                       : qsizetype(DataViewFilter::AllPeriods);
    if (type < 0) {
        err << u"--type: expected fuel, maint, trips or all\n"_s;
        return false;
    }
    if (period < 0) {
        err << u"--period: expected week, month, year, all or dates\n"_s;
        return false;
    }
    filter->type = DataViewFilter::Type(type);
    filter->period = DataViewFilter::Period(period);
    filter->startDate = QDate::fromString(parser.value(u"from"_s), u"yyyy-MM-dd"_s);
    filter->endDate = QDate::fromString(parser.value(u"to"_s), u"yyyy-MM-dd"_s);
    if (filter->period == DataViewFilter::ByDate
        && (!filter->startDate.isValid() || !filter->endDate.isValid())) {
        err << u"--period dates needs --from YYYY-MM-DD and --to YYYY-MM-DD\n"_s;
        return false;
    }
    return true;
}

void printTable(QTextStream &out, const QStringList &headers, const QList<QStringList> &rows,
                const QList<int> &positions)
{
    // Column 0 holds the row's picture on screen; here it holds the position.
    QList<QStringList> lines;
    lines.append(QStringList { u"#"_s } + headers.mid(1));
    for (qsizetype r = 0; r < rows.size(); ++r) {
        QStringList cells { QString::number(positions[r]) };
        for (qsizetype c = 1; c < rows[r].size(); ++c)
            cells.append(rows[r][c].trimmed().replace(u'\n', u' '));
        lines.append(cells);
    }
    QList<qsizetype> widths(headers.size(), 0);
    for (const QStringList &cells : lines) {
        for (qsizetype c = 0; c < cells.size(); ++c)
            widths[c] = std::max(widths[c], cells[c].size());
    }
    for (const QStringList &cells : lines) {
        QString line;
        for (qsizetype c = 0; c < cells.size(); ++c)
            line += cells[c].leftJustified(widths[c] + 2);
        out << line.trimmed() << u'\n';
    }
}

} // namespace

int LogCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"type"_s, QString(), u"TYPE"_s, u"all"_s));
    parser.addOption(QCommandLineOption(u"period"_s, QString(), u"PERIOD"_s));
    parser.addOption(QCommandLineOption(u"from"_s, QString(), u"DATE"_s));
    parser.addOption(QCommandLineOption(u"to"_s, QString(), u"DATE"_s));
    int exitCode = 0;
    auto session = CliSupport::openForReading(parser, *this, arguments, env, &exitCode);
    if (!session)
        return exitCode;
    DataViewFilter filter;
    if (!readFilter(parser, &filter, env.err)) {
        env.err << u"Usage: tarvane-cli log "_s << synopsis() << u'\n';
        return 2;
    }
    // A damaged log is an error here, not an empty list.
    if (!session->logLoaded())
        return 1;

    const EntryList &entries = session->entries();
    const QList<DataViewColumns::Column> &columns = DataViewColumns::layout(filter.type);
    const QStringList headers = DataViewColumns::headers(columns);
    QList<QStringList> rows;
    QList<int> positions;
    for (int position : filter.listedPositions(entries, env.app.clock.now())) {
        positions.append(position);
        rows.append(DataViewColumns::rowTexts(entries[size_t(position)], columns, env.app.locale));
    }

    if (!parser.isSet(u"json"_s)) {
        printTable(env.out, headers, rows, positions);
        return 0;
    }
    QJsonArray jsonRows;
    for (qsizetype r = 0; r < rows.size(); ++r) {
        jsonRows.append(QJsonObject { { u"position"_s, positions[r] },
                                      { u"cells"_s, QJsonArray::fromStringList(rows[r]) },
                                      { u"record"_s, cvcItemToJson(entries[size_t(positions[r])]) } });
    }
    const QJsonObject document { { u"columns"_s, QJsonArray::fromStringList(headers) },
                                 { u"rows"_s, jsonRows } };
    env.out << QString::fromUtf8(QJsonDocument(document).toJson(QJsonDocument::Indented));
    return 0;
}
