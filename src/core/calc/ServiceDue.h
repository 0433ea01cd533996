#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include <array>

#include "log/LogScan.h"
#include "settings/VehicleSettings.h"

class IniFile;
class Reporter;

// The last service of each of the ten reminders as the settings file keeps them
// (LastR0Mileage .. LastR9Mileage, LastR0Date .. LastR9Date).
struct LastServices
{
    std::array<double, ReminderCount> mileage {};
    std::array<quint32, ReminderCount> date {};

    // The vehicle's section; a missing key or empty text gives 0.
    static LastServices read(const IniFile &ini, const QString &vehicleName);
    // What the program writes back after it has scanned the log: a reminder the log matched takes
    // the log's values, the others keep the file's. Showing this keeps the screens up to date with
    // an entry logged since the last save of the settings.
    void takeScan(const LogScan &scan);

    bool operator==(const LastServices &) const = default;
};

// When one service falls due, by date and by reading, and how its tiles look.
struct ServiceDue
{
    int index = 0; // 0..9, the digit of its LastR keys
    QString label; // the screen's caption ("Tire Rotate && Balance" shows one ampersand)
    qint32 intervalDays = 0;
    double intervalDistance = 0.0;
    double lastMileage = 0.0;
    quint32 lastDate = 0;

    bool hasDueDate = false; // a day interval of at least 1
    quint32 dueTime = 0; // last done + days x 86400, seconds since 1970
    QDate dueDate; // its local date; invalid without a due date
    QList<int> dateTiles; // month over day, or the no-date tiles

    double dueReading = 0.0; // interval + last done
    double shownReading = 0.0; // what the counter reads: 0 without a distance interval
    bool overdueByReading = false; // red: the reading has passed the due reading
    QList<int> readingTiles;
    bool overdueByDate = false; // the due date lies before today

    // The caption as it reads on screen: "&&" shows as "&", the trailing blank dropped.
    QString displayLabel() const;
};

// The rules of the "Reminders" and "Custom Reminders" screens, shared with the CLI and the
// calendar writer.
namespace ServiceDueDates {

enum class Screen { Fixed, Custom };

// "Lube, Oil and Filter Change" .. "Tire Rotate && Balance" for 0..4; a custom service's name, or
// "REMINDER n  NOT SET" when it has none, for 5..9.
QString label(int index, const VehicleSettings &settings);

// One service. now decides overdueByDate (local calendar days).
ServiceDue evaluate(int index, const QString &label, qint32 intervalDays, double intervalDistance,
                    double lastMileage, quint32 lastDate, double currentReading, quint32 now);

// The ten services in screen order: the five fixed, then custom 1..5.
QList<ServiceDue> all(const VehicleSettings &settings, const LastServices &last, double currentReading,
                      quint32 now);

// The five rows of one screen.
QList<ServiceDue> rows(Screen screen, const QList<ServiceDue> &all);

// What a screen does on opening: loads the settings file at settingsPath and reads the last
// services of the vehicle from it, brought up to date with the scan. When the file cannot be
// loaded the screen's "ERROR 600" ("ERROR 601" for the custom screen) goes to the reporter and
// every last service reads 0.
LastServices loadForScreen(Screen screen, const QString &settingsPath, const QString &vehicleName,
                           const LogScan &scan, Reporter &reporter);

QString overdueNote();

} // namespace ServiceDueDates
