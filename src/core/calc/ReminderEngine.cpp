#include "ReminderEngine.h"

#include "Units.h"
#include "log/TextMemo.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/Preferences.h"
#include "platform/SettingsStore.h"

using namespace Qt::StringLiterals;

namespace {

// The fixed services in the order they are evaluated (tire rotation before tune-up here, unlike
// the profile's reminder numbering).
struct FixedService
{
    const char16_t *prefix;
    int reminder; // index into the profile's intervals
    int todayKey; // index into ReminderReport::todayKeys()
    const char *daysLine;
    const char *distanceLine;
    const char *todayValue;
};

constexpr FixedService fixedServices[] = {
    { u"Oil Change", OilChangeReminder, 0, "Oil change OVERDUE by: %-4.0d days",
      "Oil change OVERDUE by: %-7.0f %s", "Oil change OVERDUE" },
    { u"Cool", CoolantFlushReminder, 1, "Coolant flush OVERDUE by: %-4.0d days",
      "Coolant flush OVERDUE by: %-7.0f %s", "Coolant Flush OVERDUE" },
    { u"Transmission", TransmissionReminder, 2, "Trans. service OVERDUE by: %-4.0d days",
      "Trans. service OVERDUE by: %-7.0f %s", "Trans. Service OVERDUE" },
    { u"Rotate", TireRotationReminder, 3, "Tire rotate OVERDUE by: %-4.0d days",
      "Tire rotate OVERDUE by: %-7.0f %s", "Tire Rotate OVERDUE" },
    { u"Tune", TuneUpReminder, 4, "Tune-up OVERDUE by: %-4.0d days", "Tune-up OVERDUE by: %-7.0f %s",
      "Tuneup OVERDUE" },
};

constexpr int TripsTodayKey = 5;
constexpr int FirstCustomTodayKey = 6;

constexpr qint32 OpenTripIcon = 18;
constexpr int WelcomeIcon = 0;
constexpr int NothingDueIcon = 2;
constexpr int TripsIcon = 3;
constexpr int DistanceIcon = 4;
constexpr int DaysIcon = 5;
constexpr int BackupIcon = 6;

struct Last
{
    double reading = 0.0;
    qint32 daysSince = 0;
};

// The list as the main screen builds it: a clear puts the last-backup line back first, and
// every new line goes on top.
class LineList
{
public:
    LineList(QList<ReminderLine> &lines, const QString &lastBackup)
        : m_lines(lines)
        , m_lastBackup(lastBackup)
    { }

    void add(const QString &text, bool clearFirst, int icon)
    {
        if (clearFirst) {
            m_lines.clear();
            m_lines.prepend({ cformat("Last Backup: %s", m_lastBackup.toUtf8().constData()), BackupIcon });
        }
        if (!text.isEmpty())
            m_lines.prepend({ text, icon });
    }

private:
    QList<ReminderLine> &m_lines;
    const QString &m_lastBackup;
};

} // namespace

const std::array<QString, ReminderReport::TodayKeyCount> &ReminderReport::todayKeys()
{
    static const std::array<QString, TodayKeyCount> keys
        = { u"Oil"_s, u"Cool"_s, u"Trans"_s, u"Tire"_s, u"Tune"_s, u"Trips"_s,
            u"C1M"_s, u"C2M"_s,  u"C3M"_s,   u"C4M"_s,  u"C5M"_s };
    return keys;
}

namespace ReminderEngine {

ReminderReport evaluate(const ReminderInputs &in)
{
    ReminderReport report;
    report.now = in.now;
    LineList list(report.lines, in.lastBackupDate);
    list.add(QString(), true, WelcomeIcon);

    const QByteArray unitWord = Units::reminderUnitWord(in.settings.distanceUnit).toUtf8();
    const VehicleSettings &settings = in.settings;

    // Working state by reminder index (0..4 fixed, 5..9 custom).
    std::array<Last, ReminderCount> last {};
    int openTrips = 0;

    // The span is taken modulo 2^32 and divided unsigned, so an entry dated in the future counts
    // as about 49709 days ago.
    auto daysSince = [&](const CVCItem &item) {
        return static_cast<qint32>(static_cast<quint32>(in.now - item.entryDate) / 86400u);
    };

    // Per type text: bit r for each reminder r whose prefix it starts with, bit TripBit for "Trip".
    constexpr int TripBit = ReminderCount;
    TextMemo<quint16> prefixes;
    for (const CVCItem &item : in.entries) {
        const quint16 matches = prefixes.get(item.typeText, [&](const QString &type) {
            quint16 mask = type.startsWith(u"Trip") ? quint16(1u << TripBit) : 0;
            for (const FixedService &service : fixedServices) {
                if (type.startsWith(service.prefix))
                    mask |= quint16(1u << service.reminder);
            }
            for (int c = 0; c < 5; ++c) {
                const QString &name = settings.customNames[c];
                if (!name.isEmpty() && type.startsWith(name))
                    mask |= quint16(1u << (FirstCustomReminder + c));
            }
            return mask;
        });
        if (!matches)
            continue;
        if ((matches & (1u << TripBit)) && item.iconIndex == OpenTripIcon)
            ++openTrips;
        for (int r = 0; r < ReminderCount; ++r) {
            if (matches & (1u << r))
                last[size_t(r)] = { item.odometer, daysSince(item) };
        }
    }

    const double reading = in.scan.lastOdometer;
    // One service: the days line first, then the distance line, each on top of the list.
    auto check
        = [&](int reminder, int todayKey, const QString &todayValue, auto formatDays, auto formatDistance) {
              const qint32 dayInterval = settings.intervalDays[reminder];
              const double distanceInterval = settings.intervalDistance[reminder];
              const double travelled = reading - last[reminder].reading;
              // 32-bit arithmetic as the counters are kept, without the overflow being undefined.
              const qint32 daysOver
                  = static_cast<qint32>(static_cast<qint64>(last[reminder].daysSince) - dayInterval);
              if (distanceInterval >= travelled && !(daysOver > 0))
                  return;
              if (daysOver > 0 && dayInterval > 0) {
                  list.add(formatDays(daysOver), false, DaysIcon);
                  report.anyLineAdded = true;
                  report.today[todayKey] = todayValue;
              }
              const double over = travelled - distanceInterval;
              if (over >= 0 && distanceInterval > 0) {
                  list.add(formatDistance(over), false, DistanceIcon);
                  report.anyLineAdded = true;
                  report.today[todayKey] = todayValue;
              }
          };

    for (const FixedService &service : fixedServices) {
        check(
            service.reminder, service.todayKey, QString::fromLatin1(service.todayValue),
            [&](qint32 days) { return cformat(service.daysLine, days); },
            [&](double over) { return cformat(service.distanceLine, over, unitWord.constData()); });
    }

    if (openTrips > 0) {
        const QString text = openTrips == 1 ? cformat("Found %-4.0d open trip", 1)
                                            : cformat("Found %-4.0d open trips", openTrips);
        list.add(text, false, TripsIcon);
        report.anyLineAdded = true;
        report.today[TripsTodayKey] = text;
    }

    for (int c = 0; c < 5; ++c) {
        const QByteArray name = settings.customNames[c].toUtf8();
        check(
            FirstCustomReminder + c, FirstCustomTodayKey + c, cformat("%s OVERDUE", name.constData()),
            [&](qint32 days) { return cformat("%s OVERDUE by: %-4.0d days", name.constData(), days); },
            [&](double over) {
                return cformat("%s OVERDUE by: %-7.0f %s", name.constData(), over, unitWord.constData());
            });
    }

    if (!report.anyLineAdded) {
        list.add(u"No reminders due"_s, true, NothingDueIcon);
        list.add(u"Welcome to Tarvane Mobile"_s, false, WelcomeIcon);
    }
    return report;
}

bool writeToday(Preferences &preferences, const ReminderReport &report)
{
    // Every key gets its new value (empty clears a stale one) and the store is synced once, and
    // not at all when nothing changed: each sync rewrites the whole store on disk.
    const QString section = QString::fromLatin1(TodaySection);
    const auto &keys = ReminderReport::todayKeys();
    SettingsStore &store = preferences.store();
    bool ok = true;
    bool changed = false;
    for (int i = 0; i < ReminderReport::TodayKeyCount; ++i) {
        QString stored;
        if (store.queryString(section, keys[i], &stored) && stored == report.today[i])
            continue;
        ok = store.setValue(section, keys[i], report.today[i]) && ok;
        changed = true;
    }
    if (changed)
        ok = store.sync() && ok;
    return ok;
}

ReminderReport run(const VehicleSettings &settings, const LogScan &scan, const EntryList &entries,
                   const Clock &clock, Preferences &preferences)
{
    const QString backup = preferences.getString(u"ListAttributes"_s, u"LastBackupDate"_s, u"Unknown"_s);
    const ReminderReport report = evaluate({ settings, scan, entries, clock.now(), backup });
    writeToday(preferences, report);
    return report;
}

} // namespace ReminderEngine
