#include "ProfileOutput.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// The profile keys in the order the settings file writes them, with their values as read:
// numbers as numbers, unit settings as their codes.
QList<QPair<QString, QJsonValue>> profileValues(const VehicleSettings &v)
{
    QList<QPair<QString, QJsonValue>> values = {
        { u"Directory"_s, v.directory },
        { u"VIN"_s, v.vin },
        { u"Make"_s, v.make },
        { u"Model"_s, v.model },
        { u"Year"_s, v.year },
        { u"Plate"_s, v.plate },
        { u"Start Odometer"_s, v.startOdometer },
        { u"CoolDays"_s, v.intervalDays[CoolantFlushReminder] },
        { u"CoolDistance"_s, v.intervalDistance[CoolantFlushReminder] },
        { u"OilDays"_s, v.intervalDays[OilChangeReminder] },
        { u"TuneDistance"_s, v.intervalDistance[TuneUpReminder] },
        { u"TuneDays"_s, v.intervalDays[TuneUpReminder] },
        { u"OilDistance"_s, v.intervalDistance[OilChangeReminder] },
        { u"TransDays"_s, v.intervalDays[TransmissionReminder] },
        { u"TransDistance"_s, v.intervalDistance[TransmissionReminder] },
        { u"TireDays"_s, v.intervalDays[TireRotationReminder] },
        { u"TireDistance"_s, v.intervalDistance[TireRotationReminder] },
    };
    for (int i = 0; i < 5; ++i)
        values.append({ u"Custom%1"_s.arg(i + 1), v.customNames[i] });
    for (int i = 0; i < 5; ++i)
        values.append({ u"C%1Days"_s.arg(i + 1), v.intervalDays[FirstCustomReminder + i] });
    for (int i = 0; i < 5; ++i)
        values.append({ u"C%1Miles"_s.arg(i + 1), v.intervalDistance[FirstCustomReminder + i] });
    values.append({ u"CostPerMile"_s, v.costPerMile });
    values.append({ u"Distance"_s, v.distanceUnit });
    values.append({ u"Econo"_s, v.economyUnit });
    values.append({ u"Liquid"_s, v.liquidUnit });
    values.append({ u"SetupDate"_s, static_cast<qint64>(v.setupDate) });
    for (int i = 0; i < ReminderCount; ++i) {
        values.append({ u"LastR%1Mileage"_s.arg(i), v.lastMileage[i] });
        values.append({ u"LastR%1Date"_s.arg(i), static_cast<qint64>(v.lastDate[i]) });
    }
    return values;
}

QString plainValue(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    return QString::number(value.toDouble(), 'g', 15);
}

} // namespace

namespace ProfileOutput {

void print(const QString &name, const VehicleSettings &vehicle, bool json, QTextStream &out)
{
    const auto values = profileValues(vehicle);
    if (json) {
        QJsonObject object;
        object.insert(u"name"_s, name);
        for (const auto &[key, value] : values)
            object.insert(key, value);
        out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
    } else {
        out << u"["_s << name << u"]\n"_s;
        for (const auto &[key, value] : values)
            out << key << u'=' << plainValue(value) << u'\n';
    }
}

} // namespace ProfileOutput
