#include "VehicleProfile.h"

#include "IniFile.h"
#include "LenientNumber.h"
#include "platform/CFormat.h"
#include "platform/Reporter.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

const std::array<QString, 2> distanceWords = { u"Mile"_s, u"Kilometer"_s };
const std::array<QString, 5> economyWords = { u"MPG"_s, u"MPL"_s, u"L/100km"_s, u"MPiG"_s, u"KPL"_s };
const std::array<QString, 3> liquidWords = { u"US"_s, u"Imp"_s, u"Litre"_s };

template<size_t N> QString wordFor(const std::array<QString, N> &words, int code)
{
    return words[size_t(qBound(0, code, int(N) - 1))];
}

template<size_t N> int codeFor(const std::array<QString, N> &words, const QString &text)
{
    // Hand-edited files may carry spaces after the word.
    const QString word = text.trimmed();
    for (size_t i = 0; i < N; ++i) {
        if (words[i] == word)
            return int(i);
    }
    return 0;
}

QString distanceText(double value)
{
    return cformat("%-7.0f", value);
}

QString daysText(qint32 value)
{
    return cformat("%-4.0d", value);
}

// Times are 32-bit; they go through "%d" as the signed value with the same bits, which the
// lenient reader turns back into the same unsigned value.
QString dateText(quint32 seconds)
{
    return cformat("%-10.10d", static_cast<qint32>(seconds));
}

quint32 dateFromText(const QString &text)
{
    return static_cast<quint32>(LenientNumber::toInteger(text));
}

QString yesNo(bool value)
{
    return value ? u"Yes"_s : u"No"_s;
}

QString numbered(const char *format, int n)
{
    return cformat(format, n);
}

// Where each interval key's value lives, by reminder index.
struct IntervalKey
{
    const char *days;
    const char *distance;
    int index;
};

const std::array<IntervalKey, 5> standardIntervals = { {
    { "OilDays", "OilDistance", OilChangeReminder },
    { "CoolDays", "CoolDistance", CoolantFlushReminder },
    { "TransDays", "TransDistance", TransmissionReminder },
    { "TuneDays", "TuneDistance", TuneUpReminder },
    { "TireDays", "TireDistance", TireRotationReminder },
} };

} // namespace

QString VehicleProfile::vehicleKey(int slot)
{
    return numbered("Vehicle%d", slot);
}

VehicleProfile::VehicleList VehicleProfile::readVehicleList(const IniFile &ini, const QString &currentName)
{
    VehicleList list;
    for (int n = 0;; ++n) {
        QString name;
        if (!ini.GetString(vehicleListSection(), vehicleKey(n), name))
            break;
        if (!name.isEmpty())
            list.names.append(name);
    }
    list.currentIndex = int(list.names.indexOf(currentName));
    return list;
}

void VehicleProfile::loadTripSettings(const IniFile &ini, TripSettings &trip)
{
    const QString section = tripSettingsSection();
    const auto readFlag = [&](const QString &key, bool &flag) {
        QString text;
        if (ini.GetString(section, key, text))
            flag = text.contains(u"Yes"_s);
    };
    readFlag(u"Detailed"_s, trip.detailed);
    readFlag(u"CompanyName"_s, trip.companyName);
    readFlag(u"HomeAddress"_s, trip.homeAddress);
    readFlag(u"UseContacts"_s, trip.useContacts);

    QString sort;
    if (ini.GetString(section, u"SortListBy"_s, sort)) {
        // A text naming none of the three orders leaves the order as it was.
        if (sort.contains(u"Date"_s))
            trip.sortListBy = 0;
        else if (sort.contains(u"Purpose"_s))
            trip.sortListBy = 1;
        else if (sort.contains(u"Contact"_s))
            trip.sortListBy = 2;
    }
}

void VehicleProfile::resetToDefaults(VehicleSettings &settings)
{
    const QString name = settings.name;
    settings = VehicleSettings();
    settings.name = name;
}

bool VehicleProfile::load(const IniFile &ini, const QString &vehicleName, VehicleSettings &s)
{
    s.name = vehicleName;
    const QString &section = vehicleName;
    const bool found = ini.hasSection(section);

    const auto readText = [&](const QString &key, QString &out) {
        ini.GetString(section, key, out);
    };
    const auto readDouble = [&](const QString &key, double &out) {
        QString text;
        if (ini.GetString(section, key, text))
            out = LenientNumber::toDouble(text);
    };
    const auto readInt = [&](const QString &key, qint32 &out) {
        QString text;
        if (ini.GetString(section, key, text))
            out = LenientNumber::toInt32(text);
    };
    const auto readDate = [&](const QString &key, quint32 &out) {
        QString text;
        if (ini.GetString(section, key, text))
            out = dateFromText(text);
    };
    const auto readUnit = [&](const QString &key, qint32 &out, int (*toCode)(const QString &)) {
        QString text;
        if (ini.GetString(section, key, text))
            out = toCode(text);
    };

    readText(u"Directory"_s, s.directory);
    if (s.directory.isEmpty())
        s.directory = defaultDirectory();
    readText(u"VIN"_s, s.vin);
    readText(u"Make"_s, s.make);
    readText(u"Model"_s, s.model);
    readInt(u"Year"_s, s.year);
    readText(u"Plate"_s, s.plate);
    readDouble(u"Start Odometer"_s, s.startOdometer);
    for (const IntervalKey &k : standardIntervals) {
        readInt(QString::fromLatin1(k.days), s.intervalDays[size_t(k.index)]);
        readDouble(QString::fromLatin1(k.distance), s.intervalDistance[size_t(k.index)]);
    }
    for (int c = 0; c < 5; ++c) {
        const size_t index = size_t(FirstCustomReminder + c);
        readText(numbered("Custom%d", c + 1), s.customNames[size_t(c)]);
        readInt(numbered("C%dDays", c + 1), s.intervalDays[index]);
        readDouble(numbered("C%dMiles", c + 1), s.intervalDistance[index]);
    }
    readDouble(u"CostPerMile"_s, s.costPerMile);
    readUnit(u"Distance"_s, s.distanceUnit, &VehicleProfile::distanceUnitCode);
    readUnit(u"Econo"_s, s.economyUnit, &VehicleProfile::economyUnitCode);
    readUnit(u"Liquid"_s, s.liquidUnit, &VehicleProfile::liquidUnitCode);
    readDate(u"SetupDate"_s, s.setupDate);
    for (int r = 0; r < ReminderCount; ++r) {
        readDouble(numbered("LastR%dMileage", r), s.lastMileage[size_t(r)]);
        readDate(numbered("LastR%dDate", r), s.lastDate[size_t(r)]);
    }
    return found;
}

bool VehicleProfile::save(IniFile &ini, const VehicleSettings &s, const TripSettings &trip, int listSlot,
                          Reporter &reporter)
{
    if (s.vin.isEmpty()) {
        reporter.warning(vinEmptyMessage());
        return false;
    }
    const QString &section = s.name;
    const auto set = [&](const QString &key, const QString &value) {
        ini.SetString(section, key, value);
    };
    const auto days = [&](int index) {
        return daysText(s.intervalDays[size_t(index)]);
    };
    const auto distance = [&](int index) {
        return distanceText(s.intervalDistance[size_t(index)]);
    };

    set(u"Directory"_s, s.directory.isEmpty() ? defaultDirectory() : s.directory);
    if (listSlot >= 0)
        ini.SetString(vehicleListSection(), vehicleKey(listSlot), s.name);
    set(u"VIN"_s, s.vin);
    set(u"Make"_s, s.make);
    set(u"Model"_s, s.model);
    ini.SetInt(section, u"Year"_s, s.year);
    set(u"Plate"_s, s.plate);
    set(u"Start Odometer"_s, distanceText(s.startOdometer));
    // This order, tune-up distance before its days and the oil distance after them, is the
    // order older files have; a new vehicle's section lists its keys so.
    set(u"CoolDays"_s, days(CoolantFlushReminder));
    set(u"CoolDistance"_s, distance(CoolantFlushReminder));
    set(u"OilDays"_s, days(OilChangeReminder));
    set(u"TuneDistance"_s, distance(TuneUpReminder));
    set(u"TuneDays"_s, days(TuneUpReminder));
    set(u"OilDistance"_s, distance(OilChangeReminder));
    set(u"TransDays"_s, days(TransmissionReminder));
    set(u"TransDistance"_s, distance(TransmissionReminder));
    set(u"TireDays"_s, days(TireRotationReminder));
    set(u"TireDistance"_s, distance(TireRotationReminder));
    for (int c = 0; c < 5; ++c)
        set(numbered("Custom%d", c + 1), s.customNames[size_t(c)]);
    for (int c = 0; c < 5; ++c)
        set(numbered("C%dDays", c + 1), days(FirstCustomReminder + c));
    for (int c = 0; c < 5; ++c)
        set(numbered("C%dMiles", c + 1), distance(FirstCustomReminder + c));
    set(u"CostPerMile"_s, cformat("%-3.3f", s.costPerMile));
    set(u"Distance"_s, distanceUnitText(s.distanceUnit));
    set(u"Econo"_s, economyUnitText(s.economyUnit));
    set(u"Liquid"_s, liquidUnitText(s.liquidUnit));

    const QString tripSection = tripSettingsSection();
    ini.SetString(tripSection, u"Detailed"_s, yesNo(trip.detailed));
    ini.SetString(tripSection, u"CompanyName"_s, yesNo(trip.companyName));
    ini.SetString(tripSection, u"HomeAddress"_s, yesNo(trip.homeAddress));
    ini.SetString(tripSection, u"UseContacts"_s, yesNo(trip.useContacts));
    ini.SetString(tripSection, u"SortListBy"_s, sortListByText(trip.sortListBy));
    return true;
}

void VehicleProfile::saveLastServices(IniFile &ini, const VehicleSettings &s)
{
    const QString &section = s.name;
    ini.SetString(section, u"Directory"_s, s.directory.isEmpty() ? defaultDirectory() : s.directory);
    // SetupDate is written like the LastR dates ("%-10.10d" seconds since 1970), so one lenient
    // reader serves all the dates of a section.
    ini.SetString(section, u"SetupDate"_s, dateText(s.setupDate));
    for (int r = 0; r < ReminderCount; ++r) {
        ini.SetString(section, numbered("LastR%dMileage", r), distanceText(s.lastMileage[size_t(r)]));
        ini.SetString(section, numbered("LastR%dDate", r), dateText(s.lastDate[size_t(r)]));
    }
    ini.SetString(versionsSection(), u"PPC"_s, versionText());
}

QString VehicleProfile::distanceUnitText(int code)
{
    return wordFor(distanceWords, code);
}

QString VehicleProfile::economyUnitText(int code)
{
    return wordFor(economyWords, code);
}

QString VehicleProfile::liquidUnitText(int code)
{
    return wordFor(liquidWords, code);
}

int VehicleProfile::distanceUnitCode(const QString &text)
{
    return codeFor(distanceWords, text);
}

int VehicleProfile::economyUnitCode(const QString &text)
{
    return codeFor(economyWords, text);
}

int VehicleProfile::liquidUnitCode(const QString &text)
{
    return codeFor(liquidWords, text);
}

QString VehicleProfile::sortListByText(int sortListBy)
{
    if (sortListBy <= 0)
        return u"Date"_s;
    if (sortListBy == 1)
        return u"Purpose"_s;
    return u"Contact"_s;
}
