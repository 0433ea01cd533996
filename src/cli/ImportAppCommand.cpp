#include "ImportAppCommand.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "exchange/PeerImportFiles.h"
#include "exchange/PeerLogMerge.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

int ImportAppCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    const QCommandLineOption from(u"from"_s, u"The app that wrote the files (auto)."_s, u"APP"_s, u"auto"_s);
    const QCommandLineOption dateOrder(u"date-order"_s, u"Day and month order of the dates."_s, u"ORDER"_s);
    const QCommandLineOption source(u"source-vehicle"_s, u"The vehicle to take from a file of several."_s,
                                    u"NAME"_s);
    const QCommandLineOption dryRun(u"dry-run"_s, u"Show what would be imported; write nothing."_s);
    parser.addOptions({ from, dateOrder, source, dryRun, CliSupport::jsonOption() });
    const QString usage = synopsis();
    if (!CliSupport::parse(parser, name(), arguments, 256, usage, env))
        return 2;
    QStringList files = parser.positionalArguments();
    // The last argument names the vehicle when it is not a file.
    QString vehicle;
    if (files.size() > 1 && !QFileInfo(files.last()).isFile())
        vehicle = files.takeLast();
    if (files.isEmpty()) {
        env.err << u"Usage: tarvane-cli import-app "_s << usage << u'\n';
        return 2;
    }
    PeerImportOptions options;
    if (parser.isSet(dateOrder) && !PeerText::parseDateOrder(parser.value(dateOrder), &options.dateOrder)) {
        env.err << u"Unknown date order \"%1\": use mdy, dmy or ymd."_s.arg(parser.value(dateOrder)) << u'\n';
        return 2;
    }
    options.sourceVehicle = parser.value(source);

    const auto importers = allPeerImporters();
    const PeerImportRun run = PeerImportFiles::read(importers, files, parser.value(from), options);
    const bool json = parser.isSet(CliSupport::jsonOption());
    if (!run.result.error.isEmpty()) {
        env.err << run.result.error << u'\n';
        // The vehicles to choose from, one a line; a script gets them as JSON too.
        if (run.result.vehicleNeeded) {
            for (const QString &name : run.result.vehicles)
                env.err << u"  "_s << name << u'\n';
            env.err << u"Name one with --source-vehicle NAME.\n"_s;
            if (json)
                env.out << QString::fromUtf8(
                    QJsonDocument(
                        QJsonObject { { u"error"_s, run.result.error },
                                      { u"vehicles"_s, QJsonArray::fromStringList(run.result.vehicles) } })
                        .toJson(QJsonDocument::Indented));
        }
        return 1;
    }

    const bool dry = parser.isSet(dryRun);
    auto session = CliSupport::startSession(env, vehicle, dry);
    if (!session)
        return 1;
    if (session->currentVehicleIndex() < 0) {
        env.err << u"No vehicle is selected.\n"_s;
        return 1;
    }
    // A log that did not load is never replaced by the imported entries alone.
    if (!session->logLoaded()) {
        env.err << u"The log of %1 could not be read; nothing was imported."_s.arg(
            session->currentVehicleName())
                << u'\n';
        return 1;
    }

    PeerTarget target;
    target.distanceUnit = session->vehicle().distanceUnit;
    target.liquidUnit = session->vehicle().liquidUnit;
    target.economyUnit = session->vehicle().economyUnit;
    target.startOdometer = session->vehicle().startOdometer;
    target.costPerMile = session->vehicle().costPerMile;
    PeerMergeResult merged = PeerLogMerge::merge(session->entries(), run.result.entries, target);
    const int added = merged.added;
    if (!dry && added > 0 && !session->replaceEntries(std::move(merged.entries)))
        return 1;

    QStringList warnings = run.result.warnings + merged.warnings;
    const int unusable = run.result.skipped + merged.unusable;
    if (json) {
        QJsonObject report;
        report[u"app"_s] = run.importer->id();
        report[u"recognised"_s] = run.result.description;
        report[u"vehicle"_s] = session->currentVehicleName();
        // The vehicles the files name (aCar's), empty for apps whose files hold one.
        report[u"vehicles"_s] = QJsonArray::fromStringList(run.result.vehicles);
        report[u"dryRun"_s] = dry;
        report[u"added"_s] = added;
        report[u"duplicates"_s] = merged.duplicates;
        report[u"unusable"_s] = unusable;
        report[u"warnings"_s] = QJsonArray::fromStringList(warnings);
        env.out << QString::fromUtf8(QJsonDocument(report).toJson(QJsonDocument::Indented));
        return 0;
    }
    env.out << run.result.description << u'\n';
    env.out << (dry ? u"Would add %1 entries to %2"_s : u"Added %1 entries to %2"_s)
                   .arg(added)
                   .arg(session->currentVehicleName())
            << u"; skipped %1 as duplicates, %2 as unusable."_s.arg(merged.duplicates).arg(unusable) << u'\n';
    for (const QString &warning : warnings)
        env.out << u"  "_s << warning << u'\n';
    return 0;
}
