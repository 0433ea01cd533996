#include "ServiceDue.h"

#include "CounterTiles.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/LenientNumber.h"
#include "settings/SettingsMessages.h"

using namespace Qt::StringLiterals;

namespace {

QString numbered(const char *format, int n)
{
    return cformat(format, n);
}

} // namespace

LastServices LastServices::read(const IniFile &ini, const QString &vehicleName)
{
    LastServices last;
    for (int r = 0; r < ReminderCount; ++r) {
        QString text;
        ini.GetString(vehicleName, numbered("LastR%dMileage", r), text);
        last.mileage[size_t(r)] = LenientNumber::toDouble(text);
        text.clear();
        ini.GetString(vehicleName, numbered("LastR%dDate", r), text);
        last.date[size_t(r)] = static_cast<quint32>(LenientNumber::toInteger(text));
    }
    return last;
}

void LastServices::takeScan(const LogScan &scan)
{
    for (size_t i = 0; i < size_t(ReminderCount); ++i) {
        if (scan.lastServiceOdometer[i] != 0.0 || scan.lastServiceDate[i] != 0) {
            mileage[i] = scan.lastServiceOdometer[i];
            date[i] = scan.lastServiceDate[i];
        }
    }
}

QString ServiceDue::displayLabel() const
{
    QString text = label;
    return text.replace(u"&&"_s, u"&"_s).trimmed();
}

namespace ServiceDueDates {

QString label(int index, const VehicleSettings &settings)
{
    static const char *const fixed[] = { "Lube, Oil and Filter Change", "Coolant Flush ",
                                         "Transmission Service", "Engine Tune-Up", "Tire Rotate && Balance" };
    if (index >= 0 && index < FirstCustomReminder)
        return QString::fromLatin1(fixed[index]);
    const int custom = index - FirstCustomReminder;
    if (custom < 0 || custom >= 5)
        return QString();
    const QString &name = settings.customNames[size_t(custom)];
    return name.isEmpty() ? cformat("REMINDER %d  NOT SET", custom + 1) : name;
}

ServiceDue evaluate(int index, const QString &label, qint32 intervalDays, double intervalDistance,
                    double lastMileage, quint32 lastDate, double currentReading, quint32 now)
{
    ServiceDue due;
    due.index = index;
    due.label = label;
    due.intervalDays = intervalDays;
    due.intervalDistance = intervalDistance;
    due.lastMileage = lastMileage;
    due.lastDate = lastDate;

    due.dateTiles = CounterTiles::dueDate(lastDate, intervalDays);
    due.hasDueDate = intervalDays >= 1;
    if (due.hasDueDate) {
        // The same 32-bit sum the tiles are drawn from.
        due.dueTime = lastDate + static_cast<quint32>(intervalDays) * 86400u;
        due.dueDate = DeviceTime::toLocal(due.dueTime).date();
        // A service never done has no date to count from: like the main screen's reminder list,
        // it is never overdue by days.
        due.overdueByDate = lastDate != 0 && due.dueDate < DeviceTime::toLocal(now).date();
    }

    due.dueReading = intervalDistance + lastMileage;
    due.shownReading = intervalDistance == 0 ? 0.0 : due.dueReading;
    due.overdueByReading = due.dueReading < currentReading && intervalDistance > 0;
    due.readingTiles = CounterTiles::dueReading(intervalDistance, lastMileage, currentReading);
    return due;
}

QList<ServiceDue> all(const VehicleSettings &settings, const LastServices &last, double currentReading,
                      quint32 now)
{
    QList<ServiceDue> services;
    for (int r = 0; r < ReminderCount; ++r) {
        const size_t i = size_t(r);
        services.append(evaluate(r, label(r, settings), settings.intervalDays[i],
                                 settings.intervalDistance[i], last.mileage[i], last.date[i], currentReading,
                                 now));
    }
    return services;
}

QList<ServiceDue> rows(Screen screen, const QList<ServiceDue> &all)
{
    return all.mid(screen == Screen::Fixed ? 0 : FirstCustomReminder, 5);
}

LastServices loadForScreen(Screen screen, const QString &settingsPath, const QString &vehicleName,
                           const LogScan &scan, Reporter &reporter)
{
    IniFile ini;
    // The screens only read: the file is never written back from here.
    ini.setSaveOnDestroy(false);
    if (!ini.Load(settingsPath)) {
        reporter.error(screen == Screen::Fixed ? SettingsMessages::reminderScreenLoadFailed()
                                               : SettingsMessages::customReminderScreenLoadFailed());
        return LastServices();
    }
    LastServices last = LastServices::read(ini, vehicleName);
    last.takeScan(scan);
    return last;
}

QString overdueNote()
{
    return u"Odometers that appear RED are overdue"_s;
}

} // namespace ServiceDueDates
