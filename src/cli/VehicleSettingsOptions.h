#pragma once

#include <QCommandLineParser>
#include <QTextStream>

#include <array>
#include <optional>

class SetupForm;

// The SETTINGS of "vehicle new" and "vehicle set": one option per control of the setup pages.
// They are checked as the controls would take them and applied as a user would type them into
// the pages before pressing OK.
class VehicleSettingsOptions
{
public:
    static QString usage();
    static void declare(QCommandLineParser &parser);

    // Reads the options; false after a message on err when one of them can't be taken.
    bool read(const QCommandLineParser &parser, QTextStream &err);

    bool changesVehicleInfo() const { return m_vehicleInfo; }
    bool changesTrips() const { return m_cost.has_value() || m_detailed.has_value(); }
    // The VIN as the upper-case, 20-character edit takes it, when given.
    std::optional<QString> vin() const;

    // Fills the pages from the form, changes what the options name and confirms the pages of
    // "Edit Vehicle Info" in page order / the "Trips" page.
    void applyVehicleInfo(SetupForm &form) const;
    void applyTrips(SetupForm &form) const;

private:
    struct Interval
    {
        double distance = 0.0;
        qint32 days = 0;
    };
    struct Custom
    {
        QString name;
        Interval interval;
    };

    bool m_vehicleInfo = false;
    std::optional<QString> m_vin, m_make, m_model, m_plate;
    std::optional<qint32> m_year;
    std::optional<double> m_startOdometer;
    std::optional<int> m_distance, m_liquid, m_economy;
    std::array<std::optional<Interval>, 5> m_intervals; // rows of the "Int." page
    std::array<std::optional<Custom>, 5> m_custom;
    std::optional<double> m_cost;
    std::optional<bool> m_detailed;
};
