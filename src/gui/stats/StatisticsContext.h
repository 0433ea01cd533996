#pragma once

#include <QString>

#include <functional>

class Clock;
class QWidget;
class Reporter;
class VehicleSession;

// What the statistics screens need of the program: the open vehicle, where its log lives, the
// clock, where messages go, and how a picture's file name is asked for.
struct StatisticsContext
{
    QString vehicleName;
    QString dataFolder; // ends with "/"
    QString vin;
    int distanceUnit = 0;
    int economyUnit = 0;
    const Clock *clock = nullptr;
    Reporter *reporter = nullptr;
    // Asks where to save a chart (proposed is a full path); empty for a cancel. When unset, the
    // platform's file dialog asks.
    std::function<QString(QWidget *parent, const QString &proposed)> chooseSavePath;

    static StatisticsContext fromSession(VehicleSession &session);
};

// The "Statistics" menu for the open vehicle, modal over parent: what the main screen's
// "Statistics" and the data view's "Fuel Statistics" commands run.
void showStatisticsMenu(QWidget *parent, VehicleSession &session);
