#include "StatusCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "calc/FuelEconomy.h"
#include "platform/CFormat.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

int StatusCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    int exitCode = 0;
    auto session = CliSupport::openForReading(parser, *this, arguments, env, &exitCode);
    if (!session)
        return exitCode;

    const MainScreenStatus &status = session->status();
    if (parser.isSet(u"json"_s)) {
        QJsonArray reminders;
        for (const ReminderLine &line : status.reminders.lines)
            reminders.append(QJsonObject { { u"text"_s, line.text }, { u"icon"_s, line.icon } });
        const QJsonObject object { { u"vehicle"_s, session->currentVehicleName() },
                                   { u"VIN"_s, session->vehicle().vin },
                                   { u"lastOdometer"_s, status.lastOdometer },
                                   { u"openTrips"_s, status.openTrips },
                                   { u"currentEconomy"_s, status.currentEconomy },
                                   { u"averageEconomy"_s, status.averageEconomy },
                                   { u"economyLine"_s, status.economyLine },
                                   { u"openTripsText"_s, status.openTripsText },
                                   { u"reminders"_s, reminders } };
        env.out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
        return 0;
    }
    env.out << u"Vehicle: "_s << session->currentVehicleName() << u" (VIN "_s << session->vehicle().vin
            << u")\n"_s;
    env.out << u"Last odometer: "_s << status.lastOdometerText.trimmed() << u'\n';
    env.out << status.openTripsText << u'\n';
    env.out << status.economyLine << u'\n';
    env.out << u"Reminders:\n"_s;
    for (const ReminderLine &line : status.reminders.lines)
        env.out << u"  ["_s << line.icon << u"] "_s << line.text << u'\n';
    return 0;
}

int ReconcileCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    if (!CliSupport::parse(parser, name(), arguments, 1, synopsis(), env))
        return 2;
    auto session = CliSupport::startSession(env, parser.positionalArguments().value(0), false);
    if (!session)
        return 1;

    EntryList entries = session->entries();
    const double highest
        = FuelEconomy::reconcile(entries, session->vehicle().distanceUnit, session->vehicle().economyUnit);
    const qsizetype count = std::count_if(
        entries.begin(), entries.end(), [](const CVCItem &item) { return item.entryType == CVCItem::Fuel; });
    if (!session->replaceEntries(std::move(entries)))
        return 1;
    env.out << cformat("Reconciled %lld fuel entries; highest odometer %-7.0f", static_cast<long long>(count),
                       highest)
                   .trimmed()
            << u'\n';
    return 0;
}
