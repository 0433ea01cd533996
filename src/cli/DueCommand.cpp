#include "DueCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "calc/DueCalendar.h"
#include "calc/ServiceDue.h"
#include "calc/Units.h"
#include "platform/CFormat.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

namespace {

QString isoDate(const QDate &date)
{
    return date.isValid() ? date.toString(Qt::ISODate) : QString();
}

QJsonValue jsonDate(const QDate &date)
{
    return date.isValid() ? QJsonValue(isoDate(date)) : QJsonValue(QJsonValue::Null);
}

QDate lastDoneDate(const ServiceDue &service)
{
    return service.lastDate ? DeviceTime::toLocal(service.lastDate).date() : QDate();
}

QString overdueText(const ServiceDue &service)
{
    if (service.overdueByDate && service.overdueByReading)
        return u"by date and by reading"_s;
    if (service.overdueByDate)
        return u"by date"_s;
    return service.overdueByReading ? u"by reading"_s : u"no"_s;
}

void printText(QTextStream &out, const VehicleSession &session, double reading,
               const QList<ServiceDue> &services)
{
    const QString unit = Units::reminderUnitWord(session.vehicle().distanceUnit);
    const auto distance = [&unit](double value) {
        QString text = cformat("%.0f ", value);
        text += unit;
        return text;
    };
    out << "Vehicle: " << session.currentVehicleName() << " (VIN " << session.vehicle().vin << ")\n";
    out << "Current reading: " << distance(reading) << '\n';
    for (const ServiceDue &s : services) {
        const QDate last = lastDoneDate(s);
        QString lastText = u"no date"_s;
        if (last.isValid())
            lastText = isoDate(last);
        QString dueText = u"none"_s;
        if (s.hasDueDate)
            dueText = isoDate(s.dueDate);
        QString readingText = u"none"_s;
        if (s.intervalDistance != 0)
            readingText = distance(s.dueReading);
        out << '\n' << s.displayLabel() << '\n';
        out << "  interval     " << distance(s.intervalDistance) << ", " << s.intervalDays << " days\n";
        out << "  last done    " << distance(s.lastMileage) << ", " << lastText << '\n';
        out << "  due date     " << dueText << '\n';
        out << "  due reading  " << readingText << '\n';
        out << "  overdue      " << overdueText(s) << '\n';
    }
}

QJsonObject json(const VehicleSession &session, double reading, const QList<ServiceDue> &services)
{
    QJsonArray list;
    for (const ServiceDue &s : services) {
        list.append(QJsonObject { { u"reminder"_s, s.index },
                                  { u"label"_s, s.displayLabel() },
                                  { u"intervalDistance"_s, s.intervalDistance },
                                  { u"intervalDays"_s, s.intervalDays },
                                  { u"lastMileage"_s, s.lastMileage },
                                  { u"lastDate"_s, jsonDate(lastDoneDate(s)) },
                                  { u"dueDate"_s, s.hasDueDate ? jsonDate(s.dueDate) : QJsonValue() },
                                  { u"dueReading"_s, s.dueReading },
                                  { u"shownReading"_s, s.shownReading },
                                  { u"overdueByDate"_s, s.overdueByDate },
                                  { u"overdueByReading"_s, s.overdueByReading } });
    }
    return QJsonObject { { u"vehicle"_s, session.currentVehicleName() },
                         { u"VIN"_s, session.vehicle().vin },
                         { u"currentReading"_s, reading },
                         { u"services"_s, list } };
}

} // namespace

int DueCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(QCommandLineOption(u"ics"_s, u"Save the due dates as an iCalendar file."_s, u"FILE"_s));
    int exitCode = 0;
    auto session = CliSupport::openForReading(parser, *this, arguments, env, &exitCode);
    if (!session)
        return exitCode;
    const bool toCalendar = parser.isSet(u"ics"_s);
    if (toCalendar && (parser.value(u"ics"_s).isEmpty() || parser.isSet(u"json"_s))) {
        env.err << u"Usage: tarvane-cli due "_s << synopsis() << u'\n';
        return 2;
    }

    // What the screens read: the settings file as it is on disk, brought up to date with the log.
    const double reading = session->scan().lastOdometer;
    const LastServices last
        = ServiceDueDates::loadForScreen(ServiceDueDates::Screen::Fixed, session->settings().path(),
                                         session->currentVehicleName(), session->scan(), env.app.reporter);
    const QList<ServiceDue> services
        = ServiceDueDates::all(session->vehicle(), last, reading, env.app.clock.now());

    if (toCalendar) {
        const QString file = parser.value(u"ics"_s);
        DueCalendar calendar(
            { session->currentVehicleName(), session->vehicle().vin, session->vehicle().distanceUnit },
            env.app.clock.now());
        if (!calendar.write(file, services)) {
            env.app.reporter.error(calendar.errorString());
            return 1;
        }
        env.out << u"Saved %1 due dates to %2\n"_s.arg(DueCalendar::eventCount(services)).arg(file);
        return 0;
    }
    if (parser.isSet(u"json"_s))
        env.out << QString::fromUtf8(
            QJsonDocument(json(*session, reading, services)).toJson(QJsonDocument::Indented));
    else
        printText(env.out, *session, reading, services);
    return 0;
}
