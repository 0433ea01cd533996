#include "ReportCommand.h"

#include <QJsonDocument>

#include "CliSupport.h"
#include "platform/CFormat.h"
#include "report/ReportHtml.h"
#include "report/SummaryReport.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

void printText(const SummaryReport &r, QTextStream &out)
{
    out << u"Report: "_s << r.vehicle.name << u' ' << r.from.toString(Qt::ISODate) << u" to "_s
        << r.to.toString(Qt::ISODate) << u'\n';
    if (r.empty)
        out << u"No entries were logged in this period.\n"_s;
    out << cformat("Odometer: %.0f - %.0f (%.0f)\n", r.startOdometer, r.endOdometer, r.distance);
    out << cformat("Fuel: %d fill-ups, %.3f, cost %.2f, average price %.3f, economy %.2f %s\n",
                   int(r.fillUps.size()), r.fuelQuantity, r.fuelCost, r.averagePrice, r.averageEconomy,
                   CVCItem::economyUnitName(r.vehicle.economyUnit).toUtf8().constData());
    out << cformat("Maintenance: %d jobs, total %.2f\n", int(r.jobs.size()), r.maintenanceTotal);
    for (const SummaryReport::PurposeTotal *p : { &r.business, &r.personal, &r.allTrips })
        out << p->purpose
            << cformat(": %d trips, distance %.0f, tolls %.2f, parking %.2f, claim %.2f\n", p->count,
                       p->distance, p->tolls, p->parking, p->claim);
    out << cformat("Open trips: %d\n", int(r.openTrips.size()));
    out << cformat("Running cost: %.2f, %.3f per distance unit, %.2f per month\n", r.runningCost,
                   r.runningCostPerDistance, r.runningCostPerMonth);
}

} // namespace

int ReportCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(CliSupport::jsonOption());
    parser.addOption(QCommandLineOption(u"from"_s, QString(), u"DATE"_s));
    parser.addOption(QCommandLineOption(u"to"_s, QString(), u"DATE"_s));
    parser.addOption(QCommandLineOption(u"out"_s, QString(), u"FILE"_s));
    if (!CliSupport::parse(parser, name(), arguments, 1, synopsis(), env))
        return 2;
    const QDate from = QDate::fromString(parser.value(u"from"_s), u"yyyy-MM-dd"_s);
    const QDate to = QDate::fromString(parser.value(u"to"_s), u"yyyy-MM-dd"_s);
    if (!from.isValid() || !to.isValid()) {
        env.err << u"report needs --from YYYY-MM-DD and --to YYYY-MM-DD\nUsage: tarvane-cli "_s << name()
                << u' ' << synopsis() << u'\n';
        return 2;
    }
    if (to < from) {
        env.err << u"The end date is before the start date.\n"_s;
        return 2;
    }
    auto session = CliSupport::startSession(env, parser.positionalArguments().value(0), true);
    if (!session)
        return 1;
    VehicleSettings vehicle = session->vehicle();
    if (vehicle.name.isEmpty())
        vehicle.name = session->currentVehicleName();
    const SummaryReport report
        = SummaryReport::build(session->entries(), vehicle, from, to, env.app.clock.now());
    const QString out = parser.value(u"out"_s);
    if (!out.isEmpty()) {
        QString error;
        if (!ReportHtml::save(out, report, env.app.locale, &error)) {
            env.err << u"Unable to write the report to "_s << out << u": "_s << error << u'\n';
            return 1;
        }
    }
    if (parser.isSet(u"json"_s))
        env.out << QString::fromUtf8(QJsonDocument(report.toJson()).toJson());
    else
        printText(report, env.out);
    return 0;
}
