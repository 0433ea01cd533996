#pragma once

#include <QDate>
#include <QString>
#include <QTime>

#include "platform/LocaleFormats.h"

// How the import reads the texts of a spreadsheet: numbers, dates, unit words and durations.
namespace ImportValues {

// The leading number of a text. Blanks, a currency sign and an opening parenthesis (a negative
// amount in accounts) may come before it; commas between groups of three digits are thousands
// separators. Text without a number reads as 0.
double number(QStringView text);

struct DateTime
{
    QDate date;
    QTime time; // invalid when the text gives none
    bool isValid() const { return date.isValid(); }
};

// A date in the locale's order or as yyyy-MM-dd (a four-digit first number is always a year),
// with "/", "-", "." or blanks between the parts, an English month name or abbreviation in
// place of the month's number, a two-digit year (below 70 is 20xx), and an optional time of day
// after it ("14:05", "2:05 PM", "14:05:30"). A day-month order that gives no valid date is
// tried the other way round. Dates before 1970 or after 2105 don't fit the log and are invalid.
DateTime dateTime(QStringView text, LocaleFormats::DateOrder order);

// "Gallons", "Imp. Gallons" or "Litres" for a unit word ("gal", "Imp.Gallons", "Litre", "L"...),
// empty for one not recognised.
QString measure(QStringView text);

// Seconds of a duration text such as "2 Days 3 Hours 15 Min" (the export's) or "3h 15m";
// -1 when the text holds no number.
qint64 durationSeconds(QStringView text);

} // namespace ImportValues
