#pragma once

#include <QtGlobal>

#include <array>

// The figures the load-time scan derives from a vehicle's entry list.
struct LogScan
{
    double lastOdometer = 0.0;
    int openTrips = 0;
    double lastFullFillOdometer = 0.0;
    double currentEconomy = 0.0; // economy of the last full fill-up
    double economySum = 0.0; // positive economies of full fill-ups
    int economyCount = 0;
    double averageEconomy = 0.0; // economySum / economyCount, 0 when there is none
    bool hasFullFill = false;
    // Per reminder (0..9, see ReminderIndex): the last matching maintenance entry.
    std::array<double, 10> lastServiceOdometer {};
    std::array<quint32, 10> lastServiceDate {};
};
