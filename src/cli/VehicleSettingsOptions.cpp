#include "VehicleSettingsOptions.h"

#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

namespace {

// The "Int." page's rows, in screen order, by option name.
const std::array<QString, 5> intervalOptions = { u"oil"_s, u"tune"_s, u"trans"_s, u"coolant"_s, u"tires"_s };

// Words for the radio groups, in code order.
const QStringList distanceWords { u"miles"_s, u"km"_s };
const QStringList liquidWords { u"us"_s, u"imp"_s, u"litre"_s };
const QStringList economyWords { u"mpg"_s, u"mpl"_s, u"l100km"_s, u"mpgi"_s, u"kpl"_s };

class Reader
{
public:
    Reader(const QCommandLineParser &parser, QTextStream &err)
        : m_parser(parser)
        , m_err(err)
    { }

    bool ok() const { return m_ok; }
    bool isSet(const QString &name) const { return m_parser.isSet(name); }

    void fail(const QString &name, const QString &expected)
    {
        if (m_ok)
            m_err << u"--"_s << name << u": expected "_s << expected << u'\n';
        m_ok = false;
    }

    std::optional<QString> text(const QString &name) const
    {
        if (!m_parser.isSet(name))
            return std::nullopt;
        return m_parser.value(name);
    }

    template<typename T> std::optional<T> digits(const QString &name)
    {
        if (!m_parser.isSet(name))
            return std::nullopt;
        T value {};
        if (!SetupPages::digitsOnly(m_parser.value(name), &value)) {
            fail(name, u"digits only"_s);
            return std::nullopt;
        }
        return value;
    }

    std::optional<int> choice(const QString &name, const QStringList &words)
    {
        if (!m_parser.isSet(name))
            return std::nullopt;
        const qsizetype index = words.indexOf(m_parser.value(name).toLower());
        if (index < 0) {
            fail(name, words.join(u'|'));
            return std::nullopt;
        }
        return int(index);
    }

    // "DIST,DAYS", both digits only.
    template<typename Interval> std::optional<Interval> interval(const QString &name, const QString &text)
    {
        const QStringList parts = text.split(u',');
        Interval value;
        if (parts.size() != 2 || !SetupPages::digitsOnly(parts.at(0), &value.distance)
            || !SetupPages::digitsOnly(parts.at(1), &value.days)) {
            fail(name, u"DIST,DAYS in digits"_s);
            return std::nullopt;
        }
        return value;
    }

private:
    const QCommandLineParser &m_parser;
    QTextStream &m_err;
    bool m_ok = true;
};

} // namespace

QString VehicleSettingsOptions::usage()
{
    return u"[--vin V] [--make M] [--model M] [--year N] [--plate P] [--start-odometer N] [--distance "
           u"miles|km] "
           "[--liquid us|imp|litre] [--economy mpg|mpl|l100km|mpgi|kpl] [--oil DIST,DAYS] [--coolant "
           "DIST,DAYS] "
           "[--trans DIST,DAYS] [--tune DIST,DAYS] [--tires DIST,DAYS] [--custom N:NAME,DIST,DAYS]... "
           "[--cost-per-mile X] [--detailed-trips yes|no]"_s;
}

void VehicleSettingsOptions::declare(QCommandLineParser &parser)
{
    for (const char *name :
         { "vin", "make", "model", "year", "plate", "start-odometer", "distance", "liquid", "economy", "oil",
           "coolant", "trans", "tune", "tires", "custom", "cost-per-mile", "detailed-trips" })
        parser.addOption(QCommandLineOption(QString::fromLatin1(name), QString(), u"value"_s));
}

bool VehicleSettingsOptions::read(const QCommandLineParser &parser, QTextStream &err)
{
    Reader r(parser, err);
    m_vin = r.text(u"vin"_s);
    m_make = r.text(u"make"_s);
    m_model = r.text(u"model"_s);
    m_plate = r.text(u"plate"_s);
    if (r.isSet(u"year"_s)) {
        bool ok = false;
        m_year = parser.value(u"year"_s).toInt(&ok);
        if (!ok)
            r.fail(u"year"_s, u"a whole number"_s);
    }
    m_startOdometer = r.digits<double>(u"start-odometer"_s);
    m_distance = r.choice(u"distance"_s, distanceWords);
    m_liquid = r.choice(u"liquid"_s, liquidWords);
    m_economy = r.choice(u"economy"_s, economyWords);
    for (size_t row = 0; row < intervalOptions.size(); ++row) {
        if (r.isSet(intervalOptions[row]))
            m_intervals[row] = r.interval<Interval>(intervalOptions[row], parser.value(intervalOptions[row]));
    }
    for (const QString &value : parser.values(u"custom"_s)) {
        // N:NAME,DIST,DAYS; the name itself may hold commas, so the numbers are taken from the end.
        const qsizetype colon = value.indexOf(u':');
        const int number = colon > 0 ? value.left(colon).toInt() : 0;
        const QString rest = value.mid(colon + 1);
        const qsizetype daysComma = rest.lastIndexOf(u',');
        const qsizetype distanceComma = daysComma > 0 ? rest.lastIndexOf(u',', daysComma - 1) : -1;
        if (number < 1 || number > 5 || distanceComma < 0) {
            r.fail(u"custom"_s, u"N:NAME,DIST,DAYS with N from 1 to 5"_s);
            continue;
        }
        const auto interval = r.interval<Interval>(u"custom"_s, rest.mid(distanceComma + 1));
        if (interval)
            m_custom[size_t(number - 1)] = Custom { rest.left(distanceComma), *interval };
    }
    if (r.isSet(u"cost-per-mile"_s)) {
        bool ok = false;
        m_cost = parser.value(u"cost-per-mile"_s).toDouble(&ok);
        if (!ok || *m_cost < 0)
            r.fail(u"cost-per-mile"_s, u"a number"_s);
    }
    if (const auto detailed = r.choice(u"detailed-trips"_s, { u"no"_s, u"yes"_s }))
        m_detailed = *detailed == 1;

    m_vehicleInfo = m_vin || m_make || m_model || m_plate || m_year || m_startOdometer || m_distance
        || m_liquid || m_economy || parser.isSet(u"custom"_s);
    for (const auto &interval : m_intervals)
        m_vehicleInfo = m_vehicleInfo || interval.has_value();
    return r.ok();
}

std::optional<QString> VehicleSettingsOptions::vin() const
{
    if (!m_vin)
        return std::nullopt;
    return SetupPages::upperCaseEdit(*m_vin, SetupPages::VinLength);
}

void VehicleSettingsOptions::applyVehicleInfo(SetupForm &form) const
{
    GeneralInfoValues general = form.generalInfo();
    general.vin = m_vin.value_or(general.vin);
    general.make = m_make.value_or(general.make);
    general.model = m_model.value_or(general.model);
    general.year = m_year.value_or(general.year);
    general.plate = m_plate.value_or(general.plate);
    form.confirm(general);

    MeasurementsValues units = form.measurements();
    units.startOdometer = m_startOdometer.value_or(units.startOdometer);
    units.distanceUnit = m_distance.value_or(units.distanceUnit);
    units.liquidUnit = m_liquid.value_or(units.liquidUnit);
    units.economyUnit = m_economy.value_or(units.economyUnit);
    form.confirm(units);

    IntervalsValues intervals = form.intervals();
    for (size_t row = 0; row < 5; ++row) {
        if (m_intervals[row]) {
            intervals.distance[row] = m_intervals[row]->distance;
            intervals.days[row] = m_intervals[row]->days;
        }
    }
    form.confirm(intervals);

    CustomValues custom = form.custom();
    for (size_t c = 0; c < 5; ++c) {
        if (m_custom[c]) {
            custom.names[c] = m_custom[c]->name;
            custom.mileage[c] = m_custom[c]->interval.distance;
            custom.days[c] = m_custom[c]->interval.days;
        }
    }
    form.confirm(custom);
}

void VehicleSettingsOptions::applyTrips(SetupForm &form) const
{
    TripsValues trips = form.trips();
    trips.costPerMile = m_cost.value_or(trips.costPerMile);
    trips.detailed = m_detailed.value_or(trips.detailed);
    form.confirm(trips);
}
