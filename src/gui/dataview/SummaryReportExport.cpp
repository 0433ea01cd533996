#include "SummaryReportExport.h"

#include <QDesktopServices>
#include <QMenu>
#include <QUrl>

#include "report/ReportHtml.h"
#include "report/SummaryReport.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

QAction *SummaryReportExport::addMenuItem(QMenu *exportHtml, QWidget *parent, VehicleSession &session,
                                          DateRange range)
{
    QAction *action = exportHtml->addAction(u"&Between 2 dates"_s);
    action->setObjectName(u"summaryReport"_s);
    QObject::connect(action, &QAction::triggered, parent, [&session, range = std::move(range)] {
        const auto [from, to] = range();
        run(session, from, to);
    });
    return action;
}

QString SummaryReportExport::run(VehicleSession &session, const QDate &from, const QDate &to)
{
    AppContext &context = session.context();
    Reporter &reporter = context.reporter;
    const QString title = u"Export HTML"_s;
    if (!from.isValid() || !to.isValid() || to < from) {
        reporter.warning(u"Pick a start date on or before the end date first."_s, title);
        return {};
    }
    VehicleSettings vehicle = session.vehicle();
    if (vehicle.name.isEmpty())
        vehicle.name = session.currentVehicleName();
    const QString name = ReportHtml::fileName(vehicle.name.isEmpty() ? u"UnKnown"_s : vehicle.name);
    const QString period = context.locale.shortDate(from) + u" to "_s + context.locale.shortDate(to);
    if (!reporter.ask(u"Write the summary report from %1 into\nMy Documents\\%2?"_s.arg(period, name), title,
                      Reporter::Buttons::OkCancel))
        return {};
    const QString path = context.paths.myDocuments() + name;
    const SummaryReport report
        = SummaryReport::build(session.entries(), vehicle, from, to, context.clock.now());
    QString error;
    if (!ReportHtml::save(path, report, context.locale, &error)) {
        reporter.error(u"Unable to write the report file\nMy Documents\\%1\n%2"_s.arg(name, error), title);
        return {};
    }
    if (reporter.ask(u"Report written to\nMy Documents\\%1\nOpen it now?"_s.arg(name), title))
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    return path;
}
