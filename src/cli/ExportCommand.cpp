#include "ExportCommand.h"

#include "CliSupport.h"
#include "export/ExportSelection.h"
#include "export/Exporter.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

struct ExportRequest
{
    Exporter::Format format = Exporter::Format::Csv;
    DataViewFilter filter;
};

// The options as the History screen's filter; false after a usage message.
bool readRequest(const QCommandLineParser &parser, ExportRequest &request, QString *problem)
{
    static const QStringList formats { u"csv"_s, u"html"_s, u"xml"_s };
    static const QStringList types { u"fuel"_s, u"maint"_s, u"trips"_s, u"all"_s };
    static const QStringList periods { u"week"_s, u"month"_s, u"year"_s, u"all"_s, u"dates"_s };
    const QString format = parser.positionalArguments().value(0);
    if (!formats.contains(format)) {
        *problem = format.isEmpty() ? u"Name the format: csv, html or xml."_s
                                    : u"Unknown export format \"%1\": use csv, html or xml."_s.arg(format);
        return false;
    }
    request.format = Exporter::Format(formats.indexOf(format));
    if (parser.isSet(u"type"_s)) {
        const qsizetype type = types.indexOf(parser.value(u"type"_s));
        if (type < 0) {
            *problem
                = u"Unknown --type \"%1\": use fuel, maint, trips or all."_s.arg(parser.value(u"type"_s));
            return false;
        }
        request.filter.type = DataViewFilter::Type(type);
    }
    if (parser.isSet(u"period"_s)) {
        const qsizetype period = periods.indexOf(parser.value(u"period"_s));
        if (period < 0) {
            *problem = u"Unknown --period \"%1\": use week, month, year, all or dates."_s.arg(
                parser.value(u"period"_s));
            return false;
        }
        request.filter.period = DataViewFilter::Period(period);
    }
    const bool byDate = request.filter.period == DataViewFilter::ByDate;
    if (byDate != (parser.isSet(u"from"_s) && parser.isSet(u"to"_s))
        || (!byDate && (parser.isSet(u"from"_s) || parser.isSet(u"to"_s)))) {
        *problem = u"--period dates needs --from and --to, and they go with it only."_s;
        return false;
    }
    if (byDate) {
        request.filter.startDate = QDate::fromString(parser.value(u"from"_s), u"yyyy-MM-dd"_s);
        request.filter.endDate = QDate::fromString(parser.value(u"to"_s), u"yyyy-MM-dd"_s);
        if (!request.filter.startDate.isValid() || !request.filter.endDate.isValid()) {
            *problem = u"--from and --to take dates as YYYY-MM-DD."_s;
            return false;
        }
    }
    return true;
}

} // namespace

int ExportCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"type"_s, u"Type filter."_s, u"TYPE"_s));
    parser.addOption(QCommandLineOption(u"period"_s, u"Period filter."_s, u"PERIOD"_s));
    parser.addOption(QCommandLineOption(u"from"_s, u"First day of --period dates."_s, u"DATE"_s));
    parser.addOption(QCommandLineOption(u"to"_s, u"Last day of --period dates."_s, u"DATE"_s));
    parser.addOption(QCommandLineOption(u"out"_s, u"Folder of the export file."_s, u"FOLDER"_s));
    if (!CliSupport::parse(parser, name(), arguments, 2, synopsis(), env))
        return 2;
    ExportRequest request;
    QString problem;
    if (!readRequest(parser, request, &problem)) {
        env.err << problem << u"\nUsage: tarvane-cli export "_s << synopsis() << u'\n';
        return 2;
    }

    // Exporting reads the log; it never rewrites it.
    auto session = CliSupport::startSession(env, parser.positionalArguments().value(1), true);
    if (!session || !session->logLoaded())
        return 1;

    ExportData data;
    data.vehicleName = session->currentVehicleName();
    data.tripRate = session->vehicle().costPerMile;
    data.lastOdometer = session->scan().lastOdometer;
    data.typeFilter = request.filter.type;
    data.periodFilter = request.filter.period;
    data.locale = &env.app.locale;
    data.clock = &env.app.clock;
    data.entries
        = ExportSelection::forFormat(request.format, session->entries(), request.filter, env.app.clock.now());

    auto exporter = createExporter(request.format, data);
    Reporter &reporter = env.app.reporter;
    if (!exporter->confirm(reporter))
        return 1;
    // The chosen folder; the page's fixed place is My Documents, which is also the chooser's start.
    const QString folder = parser.isSet(u"out"_s) ? parser.value(u"out"_s) : env.app.paths.myDocuments();
    return ExportRun::toFolder(*exporter, folder, reporter) ? 0 : 1;
}
