#include "AddCommand.h"

#include <QCommandLineParser>

#include <cmath>
#include <cstdint>

#include "calc/Units.h"
#include "forms/FuelForm.h"
#include "forms/MaintenanceForm.h"
#include "forms/TripForm.h"
#include "platform/CFormat.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int Usage = 2;

QString usageText(const QString &command = u"add"_s)
{
    return (u"Usage: tarvane-cli add fuel [VEHICLE] --odometer N --quantity Q --price P [--unit UNIT] "
            "[--not-full] [--date YYYY-MM-DD[THH:MM]] [--station S] [--temp T] [--note S]\n"
            "       tarvane-cli add repair [VEHICLE] --odometer N --type TYPE [--cost C] [--invoice S] "
            "[--location S] [--date YYYY-MM-DD[THH:MM]] [--icon 0..10] [--note S]\n"
            "       tarvane-cli add trip [VEHICLE] --start N [--end N] [--depart DATETIME] [--arrive "
            "DATETIME] "
            "[--purpose S] [--destination S] [--contact S] [--tolls X] [--parking X] [--note S]\n"_s)
        .replace(u" add "_s, u' ' + command + u' ');
}

// A date picker changes the day and keeps the time of day; a time given with it sets both.
bool applyDateTime(const QString &text, QDateTime *value)
{
    const QDate date = QDate::fromString(text, u"yyyy-MM-dd"_s);
    if (date.isValid()) {
        *value = QDateTime(date, value->time());
        return true;
    }
    for (const QString &format : { u"yyyy-MM-ddTHH:mm"_s, u"yyyy-MM-ddTHH:mm:ss"_s }) {
        const QDateTime dateTime = QDateTime::fromString(text, format);
        if (dateTime.isValid()) {
            *value = dateTime;
            return true;
        }
    }
    return false;
}

// Past this no odometer, amount or price is real; such values (and infinities and NaN) would
// spoil every figure computed from the log afterwards.
constexpr double LargestNumber = 1e12;

bool plausible(double value)
{
    return std::isfinite(value) && std::fabs(value) < LargestNumber;
}

// Dates are kept as 32-bit seconds since 1970: anything outside would wrap to another date.
bool storable(const QDateTime &value)
{
    const qint64 seconds = value.toSecsSinceEpoch();
    return seconds >= 0 && seconds <= qint64(UINT32_MAX);
}

// Reads the options of one kind of entry and reports what is wrong with them.
class OptionReader
{
public:
    OptionReader(QCommandLineParser &parser, QTextStream &err)
        : m_parser(parser)
        , m_err(err)
    { }

    bool ok() const { return m_ok; }
    bool isSet(const QString &name) const { return m_parser.isSet(name); }
    QString text(const QString &name) const { return m_parser.value(name); }

    void require(const QString &name)
    {
        if (!m_parser.isSet(name))
            fail(u"Missing --"_s + name);
    }
    // A number field of a form: the whole text must be a number.
    void number(const QString &name, double *value)
    {
        if (m_parser.isSet(name) && !EntryForms::parseNumber(m_parser.value(name), value))
            fail(u"--"_s + name + u": "_s + EntryForms::numberRequest());
        else if (m_parser.isSet(name) && !plausible(*value))
            fail(outOfRange(name));
    }
    // A text a form reads leniently: whatever number it starts with must still be a real one.
    void typedNumber(const QString &name)
    {
        double value = 0.0;
        if (m_parser.isSet(name)
            && (!plausible(Units::parseLenient(m_parser.value(name)))
                || (EntryForms::parseNumber(m_parser.value(name), &value) && !plausible(value))))
            fail(outOfRange(name));
    }
    static QString outOfRange(const QString &name)
    {
        return u"--"_s + name + u": not a number that can be stored (it must be finite and below 10^12)"_s;
    }
    void integer(const QString &name, int *value)
    {
        if (m_parser.isSet(name) && !EntryForms::parseInteger(m_parser.value(name), value))
            fail(u"--"_s + name + u": "_s + EntryForms::integerRequest());
    }
    void dateTime(const QString &name, QDateTime *value)
    {
        if (m_parser.isSet(name) && !applyDateTime(m_parser.value(name), value))
            fail(u"--"_s + name + u": expected YYYY-MM-DD[THH:MM]"_s);
        else if (m_parser.isSet(name) && !storable(*value))
            fail(u"--"_s + name + u": the date must lie between 1970-01-01 and 2106-02-07"_s);
    }
    // What the control would take: text beyond its limit can't be typed.
    void limitedText(const QString &name, int limit, QString *value)
    {
        if (m_parser.isSet(name))
            *value = m_parser.value(name).left(limit);
    }
    void fail(const QString &message)
    {
        if (m_ok)
            m_err << message << u'\n';
        m_ok = false;
    }

private:
    QCommandLineParser &m_parser;
    QTextStream &m_err;
    bool m_ok = true;
};

QList<QCommandLineOption> valueOptions(const QStringList &names)
{
    QList<QCommandLineOption> options;
    for (const QString &name : names)
        options.append(QCommandLineOption(name, QString(), u"value"_s));
    return options;
}

} // namespace

QString AddCommand::synopsis() const
{
    return u"fuel|repair|trip [VEHICLE] OPTIONS"_s;
}

QString AddCommand::description() const
{
    return u"Adds a fill-up, a repair or a trip as the entry forms would (see add --help)."_s;
}

int AddCommand::entryType(const QString &kind)
{
    return kind == u"fuel"_s  ? CVCItem::Fuel
        : kind == u"repair"_s ? CVCItem::Maintenance
        : kind == u"trip"_s   ? CVCItem::Trip
                              : -1;
}

QString AddCommand::usage(const QString &command)
{
    return usageText(command);
}

QStringList AddCommand::optionNames(int type)
{
    if (type == CVCItem::Fuel)
        return { u"odometer"_s, u"quantity"_s, u"price"_s, u"unit"_s,
                 u"date"_s,     u"station"_s,  u"temp"_s,  u"note"_s };
    if (type == CVCItem::Maintenance)
        return { u"odometer"_s, u"type"_s, u"cost"_s, u"invoice"_s,
                 u"location"_s, u"date"_s, u"icon"_s, u"note"_s };
    if (type == CVCItem::Trip)
        return { u"start"_s,       u"end"_s,     u"depart"_s, u"arrive"_s,  u"purpose"_s,
                 u"destination"_s, u"contact"_s, u"tolls"_s,  u"parking"_s, u"note"_s };
    return {};
}

void AddCommand::addOptions(QCommandLineParser &parser, int type)
{
    if (type == CVCItem::Fuel)
        parser.addOption(QCommandLineOption(u"not-full"_s));
    parser.addOptions(valueOptions(optionNames(type)));
}

bool AddCommand::checkRequired(QCommandLineParser &parser, int type, QTextStream &err)
{
    OptionReader options(parser, err);
    if (type == CVCItem::Fuel) {
        options.require(u"odometer"_s);
        options.require(u"quantity"_s);
        options.require(u"price"_s);
    } else if (type == CVCItem::Maintenance) {
        options.require(u"odometer"_s);
        options.require(u"type"_s);
    } else {
        options.require(u"start"_s);
    }
    return options.ok();
}

int AddCommand::applyOptions(QCommandLineParser &parser, const EntryFormContext &context, CVCItem &record,
                             Reporter &reporter, QTextStream &err)
{
    OptionReader options(parser, err);
    // The "NOTE" box goes to stderr; it never stops the save.
    const auto warn = [&](const QString &warning) {
        if (!warning.isEmpty())
            reporter.warning(warning, EntryForms::warningTitle());
    };

    if (record.entryType == CVCItem::Fuel) {
        FuelForm form(context, record);
        FuelFormValues &values = form.values;
        options.number(u"odometer"_s, &values.odometer);
        options.dateTime(u"date"_s, &values.date);
        if (options.isSet(u"station"_s))
            values.station = options.text(u"station"_s);
        // The unit box sits beside the quantity; a user changes it before typing the amount.
        if (options.isSet(u"unit"_s)) {
            values.unitText = options.text(u"unit"_s);
            form.unitChanged();
        }
        if (!options.ok())
            return Usage;
        options.typedNumber(u"quantity"_s);
        options.typedNumber(u"price"_s);
        if (!options.ok())
            return Usage;
        // An edit changes only what it names; the form takes each typed text whole.
        if (options.isSet(u"quantity"_s))
            form.setQuantityText(options.text(u"quantity"_s));
        if (parser.isSet(u"not-full"_s))
            values.notFull = true;
        if (options.isSet(u"price"_s))
            form.setPriceText(options.text(u"price"_s));
        options.integer(u"temp"_s, &values.temperature);
        if (options.isSet(u"note"_s))
            values.note = options.text(u"note"_s);
        if (!options.ok())
            return Usage;
        warn(form.odometerWarning(record.newEntryMark));
        form.writeRecord(record);
    } else if (record.entryType == CVCItem::Maintenance) {
        MaintenanceForm form(context, record);
        MaintenanceFormValues &values = form.values;
        options.number(u"odometer"_s, &values.odometer);
        options.dateTime(u"date"_s, &values.date);
        if (options.isSet(u"type"_s))
            form.repairTypeChanged(options.text(u"type"_s));
        if (options.isSet(u"invoice"_s))
            values.invoice = options.text(u"invoice"_s);
        options.number(u"cost"_s, &values.cost);
        if (options.isSet(u"location"_s))
            values.location = options.text(u"location"_s);
        if (options.isSet(u"note"_s))
            values.note = options.text(u"note"_s);
        int button = 0;
        options.integer(u"icon"_s, &button);
        if (options.ok() && options.isSet(u"icon"_s)) {
            if (button < 0 || button >= MaintenanceForm::IconButtonCount)
                options.fail(u"--icon: expected 0 to 10"_s);
            else if (!form.iconButtonsEnabled())
                options.fail(u"--icon: the icon buttons are disabled for a predefined repair type"_s);
            else
                form.iconButtonClicked(button);
        }
        if (!options.ok())
            return Usage;
        warn(form.odometerWarning(record.newEntryMark));
        form.writeRecord(record);
    } else {
        const bool newTrip = record.endOdometer <= 0;
        TripForm form(context, record);
        TripFormValues &values = form.values;
        if (options.isSet(u"contact"_s))
            values.contact = options.text(u"contact"_s);
        if (options.isSet(u"purpose"_s))
            values.purpose = options.text(u"purpose"_s);
        options.limitedText(u"destination"_s, TripForm::ComboTextLimit, &values.destination);
        options.limitedText(u"note"_s, TripForm::NoteLimit, &values.note);
        options.number(u"tolls"_s, &values.tolls);
        options.number(u"parking"_s, &values.parking);
        options.number(u"start"_s, &values.departOdometer);
        // A new trip without an end stays open; an edited one keeps its end.
        if (newTrip)
            values.arriveOdometer = values.departOdometer;
        if (options.isSet(u"depart"_s)) {
            options.dateTime(u"depart"_s, &values.departDate);
            values.departTime = values.departDate;
        }
        options.number(u"end"_s, &values.arriveOdometer);
        if (options.isSet(u"arrive"_s)) {
            options.dateTime(u"arrive"_s, &values.arriveDate);
            values.arriveTime = values.arriveDate;
        }
        if (!options.ok())
            return Usage;
        warn(form.odometerWarning(record.newEntryMark));
        form.writeRecord(record);
    }

    return 0;
}

int AddCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    const QString kind = arguments.value(0);
    if (kind == u"--help"_s) {
        env.out << usageText();
        return 0;
    }
    const int type = entryType(kind);
    if (type < 0) {
        env.err << usageText();
        return Usage;
    }

    QCommandLineParser parser;
    addOptions(parser, type);
    if (!parser.parse(QStringList { u"add"_s } + arguments.mid(1))) {
        env.err << parser.errorText() << u'\n' << usageText();
        return Usage;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1) {
        env.err << usageText();
        return Usage;
    }

    if (!checkRequired(parser, type, env.err)) {
        env.err << usageText();
        return Usage;
    }

    // Only the vehicle asked for is opened: opening the last-used one first could move its
    // damaged log aside for nothing.
    const QString vehicle = positional.value(0);
    VehicleSession session(env.app);
    if (!session.start(false, vehicle))
        return 1;
    if (session.currentVehicleIndex() < 0) {
        env.err << u"No vehicle is selected.\n"_s;
        return 1;
    }

    const EntryFormContext context = session.formContext();
    CVCItem record = session.newEntry(CVCItem::EntryType(type));
    if (const int code = applyOptions(parser, context, record, env.app.reporter, env.err))
        return code;

    if (!record.HasOdometer()) {
        env.err << cformat("Entry not saved: its odometer %s is below 1.",
                           EntryForms::numberText(record.odometer).toUtf8().constData())
                << u'\n';
        return 1;
    }
    if (!session.addEntry(record))
        return 1;
    // A vehicle named here becomes the current one, with its own odometer and reminders.
    if (!vehicle.isEmpty())
        session.saveOptions();
    env.out << cformat("Added %s entry at odometer %s.", record.typeText->toUtf8().constData(),
                       EntryForms::numberText(record.odometer).toUtf8().constData())
            << u'\n';
    // The settings file would be saved on the way out anyway; saving it here lets a failure
    // (a full disk) show in the exit code.
    IniFile &settings = session.settings();
    if (!settings.Save()) {
        env.err << u"Unable to save the settings file "_s << settings.path() << u": "_s
                << settings.errorString() << u'\n';
        return 1;
    }
    return 0;
}
