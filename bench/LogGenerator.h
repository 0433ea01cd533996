#pragma once

#include <QString>

#include <cmath>
#include <random>

#include "log/CVCItem.h"

// Builds logs that look like years of real use: mostly fill-ups, a service now and then,
// some trips, short texts, odometer and dates always rising. Seeded, so runs compare.
class LogGenerator
{
public:
    explicit LogGenerator(unsigned seed = 20240101)
        : m_random(seed)
    { }

    EntryList generate(size_t count)
    {
        static const QString stations[] = { QStringLiteral("Shell"), QStringLiteral("Esso Main St"),
                                            QStringLiteral("BP"), QStringLiteral("Costco") };
        static const QString jobs[]
            = { QStringLiteral("Oil Change"), QStringLiteral("Rotate Tires"), QStringLiteral("Tune-Up"),
                QStringLiteral("Brakes"), QStringLiteral("Coolant Flush") };
        static const QString purposes[]
            = { QStringLiteral("Client visit"), QStringLiteral("Conference"), QStringLiteral("Delivery") };
        EntryList entries;
        entries.reserve(count);
        double odometer = 12000;
        quint32 date = 1500000000;
        std::uniform_int_distribution<int> kind(0, 99);
        std::uniform_real_distribution<double> step(5, 400);
        for (size_t i = 0; i < count; ++i) {
            CVCItem item;
            odometer += step(m_random);
            date += 86400 + quint32(kind(m_random)) * 600;
            item.odometer = std::floor(odometer);
            item.entryDate = date;
            const int k = kind(m_random);
            if (k < 70) {
                item.entryType = CVCItem::Fuel;
                item.typeText = QStringLiteral("Fuel");
                item.fuelMeasure = QStringLiteral("Gallons");
                item.station = stations[i % 4];
                item.fuelQuantity = 8 + k / 10.0;
                item.unitPrice = 3.199;
                item.amount = item.fuelQuantity * item.unitPrice;
                item.economy = 20 + k / 7.0;
                item.notFull = k < 5 ? 1 : 0;
                item.temperature = k % 30;
            } else if (k < 85) {
                item.entryType = CVCItem::Maintenance;
                item.iconIndex = 4 + k % 10;
                item.typeText = jobs[i % 5];
                item.station = QStringLiteral("Dealer");
                item.invoice = QString::number(100000 + i);
                item.amount = 49.95 + k;
            } else {
                item.entryType = CVCItem::Trip;
                item.iconIndex = 19;
                item.typeText = QStringLiteral("Trip");
                item.purpose = purposes[i % 3];
                item.destination = QStringLiteral("Springfield");
                item.endOdometer = item.odometer + 40 + k;
                item.departTime = date;
                item.arriveTime = date + 7200;
                item.unitPrice = (item.endOdometer - item.odometer) * 0.55;
                odometer = item.endOdometer;
            }
            if (k % 9 == 0)
                item.notes = QStringLiteral("checked tyres");
            entries.push_back(std::move(item));
        }
        return entries;
    }

private:
    std::mt19937 m_random;
};
