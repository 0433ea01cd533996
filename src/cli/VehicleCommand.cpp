#include "VehicleCommand.h"

#include "CliSupport.h"
#include "ProfileOutput.h"
#include "VehicleSettingsOptions.h"
#include "log/VehicleLog.h"
#include "session/VehicleSession.h"
#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int Usage = 2;

QString usageText()
{
    const QString settings = VehicleSettingsOptions::usage();
    return u"Usage: tarvane-cli vehicle new NAME "_s + settings + u" [--json]\n"_s
        + u"       tarvane-cli vehicle set [VEHICLE] "_s + settings + u" [--json]\n"_s
        + u"       tarvane-cli vehicle delete VEHICLE   (asks; give --yes to confirm)\n"_s;
}

// The Setup screen's form over the vehicle the session has open.
std::unique_ptr<SetupForm> setupForm(VehicleSession &session)
{
    auto form
        = std::make_unique<SetupForm>(SetupPaths::of(session.context().paths), session.currentVehicleName(),
                                      session.vehicle(), session.tripSettings(), session.scan().lastOdometer);
    form->open();
    return form;
}

bool checkVin(const SetupForm &form, const VehicleSettingsOptions &settings, QTextStream &err)
{
    const auto vin = settings.vin();
    const QString problem = vin ? form.vinProblem(*vin) : QString();
    if (!problem.isEmpty())
        err << problem << u'\n';
    return problem.isEmpty();
}

int newVehicle(const QString &name, const VehicleSettingsOptions &settings, bool json, CliEnvironment &env)
{
    Reporter &reporter = env.app.reporter;
    auto session = CliSupport::startSession(env, QString(), false);
    if (!session)
        return 1;
    auto form = setupForm(*session);
    if (!form->beginNewVehicle(reporter) || !form->acceptNewName(true, name, reporter))
        return 1;
    if (!checkVin(*form, settings, env.err))
        return 1;
    settings.applyVehicleInfo(*form);
    if (settings.changesTrips())
        settings.applyTrips(*form);
    if (!form->finishNewVehicle(reporter))
        return 1;
    // The new vehicle becomes the current one, as it does on the screen.
    session->reloadAfterSetup(form->currentName());
    session->saveOptions();
    ProfileOutput::print(session->currentVehicleName(), session->vehicle(), json, env.out);
    return 0;
}

int setVehicle(const QString &vehicle, const VehicleSettingsOptions &settings, bool json, CliEnvironment &env)
{
    auto session = CliSupport::startSession(env, vehicle, false);
    if (!session)
        return 1;
    auto form = setupForm(*session);
    if (!form->hasListedVehicle()) {
        env.err << u"No vehicle is selected.\n"_s;
        return 1;
    }
    if (!checkVin(*form, settings, env.err))
        return 1;
    form->beginEdit();
    if (settings.changesVehicleInfo())
        settings.applyVehicleInfo(*form);
    if (settings.changesTrips())
        settings.applyTrips(*form);
    if (!form->finishEdit(env.app.reporter))
        return 1;
    session->reloadAfterSetup(form->currentName());
    ProfileOutput::print(session->currentVehicleName(), session->vehicle(), json, env.out);
    return 0;
}

int deleteVehicle(const QString &vehicle, CliEnvironment &env)
{
    auto session = CliSupport::startSession(env, vehicle, false);
    if (!session)
        return 1;
    auto form = setupForm(*session);
    const QString log = VehicleLog::databasePath(session->dataFolder(), session->vehicle().vin);
    switch (form->deleteVehicle(env.app.reporter)) {
    case SetupForm::DeleteResult::Refused:
        return 1;
    case SetupForm::DeleteResult::Kept:
        env.err << u"Not deleted.\n"_s;
        return 1;
    case SetupForm::DeleteResult::Deleted:
        break;
    }
    // As on the screen, the vehicle switched to becomes the current one.
    session->reloadAfterSetup(form->currentName());
    session->saveOptions();
    env.out << u"Deleted \""_s << vehicle << u"\"; its log "_s << log
            << u" stays on disk. Current vehicle: \""_s << form->currentName() << u"\".\n"_s;
    return 0;
}

} // namespace

QString VehicleCommand::synopsis() const
{
    return u"new NAME [SETTINGS] | set [VEHICLE] SETTINGS | delete VEHICLE"_s;
}

QString VehicleCommand::description() const
{
    return u"Creates, changes or deletes a vehicle as the Setup screen does (see vehicle --help)."_s;
}

int VehicleCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    const QString action = arguments.value(0);
    if (action == u"--help"_s) {
        env.out << usageText();
        return 0;
    }
    if (action != u"new"_s && action != u"set"_s && action != u"delete"_s) {
        env.err << usageText();
        return Usage;
    }

    QCommandLineParser parser;
    parser.addOption(CliSupport::jsonOption());
    if (action != u"delete"_s)
        VehicleSettingsOptions::declare(parser);
    if (!parser.parse(QStringList { u"vehicle"_s } + arguments.mid(1))) {
        env.err << parser.errorText() << u'\n' << usageText();
        return Usage;
    }
    const QStringList positional = parser.positionalArguments();
    const bool needsName = action != u"set"_s;
    if (positional.size() > 1 || (needsName && positional.size() != 1)
        || (needsName && positional.first().isEmpty())) {
        env.err << usageText();
        return Usage;
    }
    const QString name = positional.value(0);
    if (action == u"delete"_s)
        return deleteVehicle(name, env);

    VehicleSettingsOptions settings;
    if (!settings.read(parser, env.err))
        return Usage;
    const bool json = parser.isSet(u"json"_s);
    if (action == u"new"_s)
        return newVehicle(name, settings, json, env);
    if (!settings.changesVehicleInfo() && !settings.changesTrips()) {
        env.err << u"Nothing to set.\n"_s << usageText();
        return Usage;
    }
    return setVehicle(name, settings, json, env);
}
