#pragma once

#include <QString>
#include <QStringList>

#include <array>

// The values of the five setup pages, one member per control. Each page is filled from the
// vehicle when it is created and copies its values back in its confirm step (SetupForm).

// CSetuppage1 "General Info."
struct GeneralInfoValues
{
    QString vin; // upper case, at most 20 characters
    QString make;
    QString model;
    qint32 year = 0;
    QString plate; // upper case
    bool operator==(const GeneralInfoValues &) const = default;
};

// CSetuppage_2 "Measurements"
struct MeasurementsValues
{
    double startOdometer = 0.0;
    int distanceUnit = 0; // "Miles", "Kilometers"
    int liquidUnit = 0; // "US Gal.", "Imp. Gal.", "Litre"
    int economyUnit = 0; // "MPG", "MPL", "L/100km", "MPG Imperial", "KPL"
    bool operator==(const MeasurementsValues &) const = default;
};

// CSetuppage3 "Int.": the standard intervals in the page's row order (see rowReminder()).
struct IntervalsValues
{
    std::array<double, 5> distance {};
    std::array<qint32, 5> days {};
    bool operator==(const IntervalsValues &) const = default;
};

// CSetuppage4 "Cust.": custom reminders 1 to 5.
struct CustomValues
{
    std::array<QString, 5> names;
    std::array<double, 5> mileage {};
    std::array<qint32, 5> days {};
    bool operator==(const CustomValues &) const = default;
};

// CSetuppage5 "Trips". The hidden options are carried through unchanged.
struct TripsValues
{
    bool detailed = false;
    double costPerMile = 0.0;
    bool useContacts = false; // hidden
    bool homeAddress = false; // hidden
    bool companyName = false; // hidden
    int sortListBy = 0; // hidden: 0 Date, 1 Purpose, 2 Contact
    bool operator==(const TripsValues &) const = default;
};

// The fixed texts of the pages and what their controls let through.
namespace SetupPages {

constexpr int VinLength = 20;

QString generalInfoTitle();
QString measurementsTitle();
QString intervalsTitle();
QString customTitle();
QString tripsTitle();
QString generalInfoHint();
QString vinNote();
QString measurementsHint();
QString intervalsHint();
QString customHint();
QString tripsHint();

// The row captions of the "Int." page, top to bottom, and the reminder index of each row.
QStringList intervalRows();
int rowReminder(int row);

// Radio captions, in code order.
QStringList distanceCaptions();
QStringList liquidCaptions();
QStringList economyCaptions();
QStringList sortCaptions();

// What an upper-case edit of the given length makes of typed text (0: no limit).
QString upperCaseEdit(const QString &typed, int maxLength = 0);
// A digits-only edit: true with the value when the text is empty (0) or only digits.
bool digitsOnly(const QString &text, double *value);
bool digitsOnly(const QString &text, qint32 *value);
// A number shown in an edit: no exponent, no trailing zeros ("12345", "0.5").
QString numberText(double value);

} // namespace SetupPages
