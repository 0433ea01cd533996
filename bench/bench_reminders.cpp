// Times the reminder engine, and the "Reconcile Data" recalculation, over a log of a million
// entries built in memory.
#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

#include "calc/FuelEconomy.h"
#include "calc/ReminderEngine.h"

using namespace Qt::StringLiterals;

namespace {

EntryList makeLog(int count, quint32 now)
{
    const QString repairs[]
        = { u"Oil Change"_s,   u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s,
            u"Rotate Tires"_s, u"Brake Pads"_s,    u"Wiper Blades"_s,         u"Car Wash"_s };
    EntryList log;
    log.reserve(static_cast<size_t>(count));
    double odometer = 1000;
    for (int i = 0; i < count; ++i) {
        CVCItem item;
        item.odometer = odometer;
        item.entryDate = now - static_cast<quint32>(count - i) * 600u;
        switch (i % 4) {
        case 0:
        case 1:
            item.entryType = CVCItem::Fuel;
            item.typeText = u"Fuel"_s;
            item.fuelMeasure = u"Gallons"_s;
            item.fuelQuantity = 10;
            item.unitPrice = 3.1;
            break;
        case 2:
            item.entryType = CVCItem::Maintenance;
            item.typeText = repairs[(i / 4) % 8];
            break;
        default:
            item.entryType = CVCItem::Trip;
            item.typeText = u"Trip"_s;
            item.endOdometer = odometer + 20;
            item.iconIndex = (i % 100 == 3) ? 18 : 19;
            break;
        }
        log.push_back(std::move(item));
        odometer += 75;
    }
    return log;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int count = 1000000;
    const quint32 now = 1717200000;
    const EntryList log = makeLog(count, now);

    VehicleSettings settings;
    for (int i = 0; i < ReminderCount; ++i) {
        settings.intervalDays[i] = 90;
        settings.intervalDistance[i] = 3000;
    }
    settings.customNames = { u"Brake Pads"_s, u"Wiper"_s, QString(), QString(), QString() };
    LogScan scan;
    scan.lastOdometer = log.back().odometer;

    const int runs = 5;
    QElapsedTimer timer;
    timer.start();
    qsizetype lines = 0;
    for (int r = 0; r < runs; ++r)
        lines += ReminderEngine::evaluate({ settings, scan, log, now, u"Unknown"_s }).lines.size();
    const double reminderMs = double(timer.nsecsElapsed()) / 1e6 / runs;
    std::printf("reminder engine, %d entries: %.1f ms per run (%lld lines)\n", count, reminderMs,
                static_cast<long long>(lines / runs));

    EntryList copy = log;
    timer.restart();
    const double highest = FuelEconomy::reconcile(copy, 0, 0);
    std::printf("reconcile, %d entries: %.1f ms (highest %.0f)\n", count, double(timer.nsecsElapsed()) / 1e6,
                highest);
    return 0;
}
