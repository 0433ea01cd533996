#pragma once

#include <QString>

#include "platform/Clock.h"

// What an entry form knows about the program and the open vehicle besides the record it edits.
// The session fills it; tests build it by hand.
struct EntryFormContext
{
    double highestOdometer = 0.0; // the last odometer of the load-time scan
    quint32 startupTime = 0; // the program's start-up time: new fuel and repair entries take it
    const Clock *clock = nullptr; // "now" of the trip form
    QString vehicleName;
    int distanceUnit = 0;
    int economyUnit = 0;
    int liquidUnit = 0;
    double startOdometer = 0.0;
    double lastFullFillOdometer = 0.0;
    double costPerMile = 0.0;

    quint32 now() const { return clock ? clock->now() : startupTime; }
};

// Rules shared by the three forms.
namespace EntryForms {

inline QString warningTitle()
{
    return QStringLiteral("NOTE");
}
// The fuel and trip forms' wording.
inline QString odometerWarningText()
{
    return QStringLiteral("This entry has an odometer less than the last entry.\nData should be entered in "
                          "numerical order by odometer.  See \"Inserting data\" in the manual.");
}
// The maintenance form says "reading".
inline QString maintenanceOdometerWarningText()
{
    return QStringLiteral("This entry has an odometer reading less than the last entry.\nData should be "
                          "entered in numerical order by odometer.  See \"Inserting data\" in the manual.");
}

// Only a brand-new entry from the main screen is warned about; edits of stored entries never are.
bool odometerWarningApplies(double highestOdometer, double enteredOdometer, qint32 newEntryMark);

// The number fields of the forms. Shown with up to fifteen significant digits so that what is
// read back is what was shown.
QString numberText(double value);
// A whole field that holds one number (blanks around it allowed); false for anything else,
// the empty text included.
bool parseNumber(const QString &text, double *value);
bool parseInteger(const QString &text, int *value);
// The requests of a number field that does not hold one.
inline QString numberRequest()
{
    return QStringLiteral("Please enter a number.");
}
inline QString integerRequest()
{
    return QStringLiteral("Please enter an integer.");
}

} // namespace EntryForms
