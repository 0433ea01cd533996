#pragma once

#include <QList>
#include <QtGlobal>

// Turns readings into the numbered tiles of the mechanical-counter look. The screens keep the
// lists and draw the tiles left to right; the numbers are those of the tile artwork.
namespace CounterTiles {

enum Style : int { Normal = 1, Alert = 2 }; // any other style draws as Normal

inline constexpr int WholeDigitBase = 198;
inline constexpr int WholeAlertDigitBase = 211;
inline constexpr int DecimalDigitBase = 235;
inline constexpr int DecimalPoint = 245;
inline constexpr int DecimalAlertDigitBase = 300;
inline constexpr int DecimalAlertPoint = 310;
inline constexpr int NoDateMonth = 248;
inline constexpr int MonthBase = 249; // + month index, 0 = January
inline constexpr int DayBase = 260; // + day of month
inline constexpr int NoDateDay = 292;

// Seven tiles: the value rounded to a whole number, zero-filled on the left. Values of eight
// digits or more show only their first seven digits.
QList<int> wholeNumber(double value, int style = Normal);

// Six tiles: three digits, the point, two decimals. A value of four whole digits keeps its
// first three, and the point and first decimal fill the two decimal places (1234.5 -> 123.05).
QList<int> decimal(double value, int style = Normal);

// Month and day tiles of the date a service falls due: last done + dayInterval days, in local
// time. A day interval below 1 gives the no-date tiles.
QList<int> dueDate(quint32 lastDoneDate, qint32 dayInterval);

// The counter of a service's due reading: interval + last done, red once the current reading
// has passed it; a service without a distance interval shows 0.
QList<int> dueReading(double interval, double lastDone, double current);

} // namespace CounterTiles
