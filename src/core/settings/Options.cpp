#include "Options.h"

#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"
#include "platform/SettingsStore.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {
// A string value is read into a buffer of 512 bytes: 255 UTF-16 characters and the NUL.
constexpr qsizetype maxStringLength = 512 / 2 - 1;

// Only a stored string (REG_SZ) counts; a number in its place is a mistyped value.
bool queryText(const SettingsStore &store, const QString &key, const QString &name, QString *out)
{
    const QVariant value = store.value(key, name);
    if (value.typeId() != QMetaType::QString)
        return false;
    const QString text = value.toString();
    if (text.size() > maxStringLength)
        return false;
    *out = text;
    return true;
}
} // namespace

Options::Options(SettingsStore &store, Reporter &reporter, const Clock &clock)
    : m_store(store)
    , m_reporter(reporter)
    , m_clock(clock)
{ }

bool Options::load(bool report)
{
    quint32 r5Value = 0;
    quint32 r6Value = 0;
    quint32 start = 0;
    quint32 end = m_clock.now();
    r5 = 0.0;
    r6 = 0.0;
    startDate = 0.0;
    endDate = end;

    if (!m_store.keyExists(key())) {
        if (report)
            m_reporter.plain(loadErrorMessage());
        return false;
    }
    m_store.queryDword(key(), u"R5"_s, &r5Value);
    m_store.queryDword(key(), u"R6"_s, &r6Value);
    m_store.queryDword(key(), u"StartDate"_s, &start);
    m_store.queryDword(key(), u"EndDate"_s, &end);

    if (!queryText(m_store, key(), u"Name"_s, &name))
        name = defaultName();
    if (!queryText(m_store, key(), u"Path"_s, &path))
        path = defaultPath();

    r5 = r5Value;
    r6 = r6Value;
    startDate = start;
    endDate = end;
    if (path.size() < 5)
        path = shortPathReplacement();
    return true;
}

bool Options::save(const VehicleSettings &vehicle, double currentOdometer)
{
    if (!m_store.createKey(key())) {
        m_reporter.plain(saveErrorMessage());
        return false;
    }
    const auto reminders = reminderValues(vehicle, currentOdometer);

    bool ok = true;
    const auto setDword = [&](const QString &valueName, double value) {
        ok = m_store.setValue(key(), valueName, QVariant::fromValue<uint>(toDword(value))) && ok;
    };
    const auto setText = [&](const QString &valueName, const QString &value) {
        ok = m_store.setValue(key(), valueName, value) && ok;
    };

    setDword(u"LastMileage"_s, currentOdometer);
    setText(u"Name"_s, name);
    setDword(u"R5"_s, r5);
    setDword(u"R6"_s, r6);
    setText(u"Path"_s, path);
    for (int i = 0; i < ReminderCount; ++i)
        setDword(cformat("Reminder%d", i + 1), reminders[size_t(i)]);
    setDword(u"StartDate"_s, startDate);
    setDword(u"EndDate"_s, endDate);
    return m_store.sync() && ok;
}

quint32 Options::toDword(double value)
{
    if (std::isnan(value) || value <= 0.0)
        return 0;
    if (value >= 4294967295.0)
        return 4294967295u;
    return static_cast<quint32>(value);
}

quint32 Options::reminderValue(double interval, double lastDone, double currentOdometer)
{
    const double due = interval + lastDone;
    if (due < currentOdometer && interval > 0.0)
        return toDword(due);
    return 0;
}

std::array<quint32, ReminderCount> Options::reminderValues(const VehicleSettings &vehicle,
                                                           double currentOdometer)
{
    // Reminder1..Reminder10 follow the LastR indexes one to one: oil 0, coolant 1,
    // transmission 2, tune-up 3, tires 4, custom 5..9.
    std::array<quint32, ReminderCount> values {};
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = reminderValue(vehicle.intervalDistance[i], vehicle.lastMileage[i], currentOdometer);
    return values;
}
