#include "VehiclesCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"
#include "settings/VehicleProfile.h"

using namespace Qt::StringLiterals;

int VehiclesCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(CliSupport::jsonOption());
    if (!CliSupport::parse(parser, name(), arguments, 0, synopsis(), env))
        return 2;
    auto session = CliSupport::startSession(env, QString(), true);
    if (!session)
        return 1;

    QJsonArray array;
    for (const QString &vehicle : session->vehicleNames()) {
        VehicleSettings profile;
        VehicleProfile::resetToDefaults(profile);
        VehicleProfile::load(session->settings(), vehicle, profile);
        if (parser.isSet(u"json"_s)) {
            array.append(QJsonObject { { u"name"_s, vehicle },
                                       { u"VIN"_s, profile.vin },
                                       { u"Make"_s, profile.make },
                                       { u"Model"_s, profile.model },
                                       { u"Year"_s, profile.year },
                                       { u"Plate"_s, profile.plate } });
        } else {
            env.out << vehicle << u'\t' << profile.vin << u'\n';
        }
    }
    if (parser.isSet(u"json"_s))
        env.out << QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented));
    return 0;
}
