#pragma once

#include <QString>

// The three per-vehicle unit settings, the conversion constants and the economy formula.
// Economy is always worked out from kilometres and litres and then converted, never directly
// in the units the figures were entered in.
namespace Units {

enum DistanceUnit : int { Miles = 0, Kilometres = 1 };
enum LiquidUnit : int { UsGallons = 0, ImperialGallons = 1, Litres = 2 };
enum EconomyUnit : int { Mpg = 0, Mpl = 1, LitresPer100Km = 2, MpgImperial = 3, Kpl = 4 };

inline constexpr double LitresPerUsGallon = 3.78541;
inline constexpr double LitresPerImperialGallon = 4.54609;
inline constexpr double KilometresPerMile = 1.609344;
inline constexpr double MilesPerKilometre = 0.62137119223;
inline constexpr double UsGallonsPerLitre = 0.26417217685;
inline constexpr double ImperialGallonsPerLitre = 0.21996924829;
inline constexpr double Per100Factor = 0.01;

// Words written to the profile keys Distance, Liquid and Econo ("Mile", "US", "MPiG" ...).
// An index out of range gives an empty text.
QString distanceProfileWord(int unit);
QString liquidProfileWord(int unit);
QString economyProfileWord(int unit);

// The items of the fuel form's unit box, also stored in each fuel record: "Gallons",
// "Imp. Gallons", "Litres".
QString liquidComboText(int unit);

// Economy unit names as shown on screen ("MPGi" here, "MPiG" in the profile).
QString economyScreenText(int unit);

// The unit word of the reminder lines: "Km" for kilometres, "Miles" for anything else.
QString reminderUnitWord(int distanceUnit);

// Which gallon a fill-up was bought in, from the fuel form's unit text: "Gal..." US gallons,
// "Imp..." imperial gallons, "Lit..." litres; -1 for anything else (case-sensitive prefix).
int liquidUnitFromText(const QString &text);

double toKilometres(double distance, int distanceUnit);
// Quantity in litres; an unknown liquid unit gives 0.
double toLitres(double quantity, int liquidUnit);

// The gallon of the MPG formula: imperial only for fuel bought in imperial gallons.
enum class Gallon { Us, Imperial, Unknown };

// Economy of a fill-up over `km` kilometres on `litres` litres, in `economyUnit`. When the
// formula can't be applied (MPG with an unknown gallon, an unknown economy unit) `previous`
// is returned unchanged. A zero divisor never faults: it gives the IEEE result (±inf, or NaN
// for 0/0), which the callers' range tests clear.
double economy(double km, double litres, int economyUnit, Gallon gallon, double previous);

// "%-3.2f MPG", "%-3.2f MPL", "%-3.2f L/100km", "%-3.2f MPGi", "%-3.2f KPL", chosen by a
// record's stored unit: 0 or less MPG, 1 MPL, 2 L/100km, 3 MPGi, 4 or more KPL.
QString economyText(double economyValue, double storedUnit);

// Reads a number the way the program reads typed text: leading blanks skipped, parsing stops
// at the first character that can't continue the number, no number at all reads as 0.
double parseLenient(const QString &text);

} // namespace Units
