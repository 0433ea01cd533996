#include "Units.h"

#include <cmath>
#include <limits>

#include "platform/CFormat.h"
#include "settings/LenientNumber.h"

using namespace Qt::StringLiterals;

namespace Units {

namespace {

QString pick(int index, std::initializer_list<QString> texts)
{
    if (index < 0 || index >= static_cast<int>(texts.size()))
        return {};
    return *(texts.begin() + index);
}

// a / b with the IEEE answer for b == 0 worked out without dividing, so that no build setting
// (trapping floating point, a sanitizer) can turn the case into a fault.
double divide(double a, double b)
{
    if (b != 0.0)
        return a / b;
    if (std::isnan(a) || a == 0.0)
        return std::numeric_limits<double>::quiet_NaN();
    const bool negative = std::signbit(a) != std::signbit(b);
    return negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
}

} // namespace

QString distanceProfileWord(int unit)
{
    return pick(unit, { u"Mile"_s, u"Kilometer"_s });
}

QString liquidProfileWord(int unit)
{
    return pick(unit, { u"US"_s, u"Imp"_s, u"Litre"_s });
}

QString economyProfileWord(int unit)
{
    return pick(unit, { u"MPG"_s, u"MPL"_s, u"L/100km"_s, u"MPiG"_s, u"KPL"_s });
}

QString liquidComboText(int unit)
{
    return pick(unit, { u"Gallons"_s, u"Imp. Gallons"_s, u"Litres"_s });
}

QString economyScreenText(int unit)
{
    return pick(unit, { u"MPG"_s, u"MPL"_s, u"L/100km"_s, u"MPGi"_s, u"KPL"_s });
}

QString reminderUnitWord(int distanceUnit)
{
    return distanceUnit == Kilometres ? u"Km"_s : u"Miles"_s;
}

int liquidUnitFromText(const QString &text)
{
    if (text.startsWith(u"Gal"))
        return UsGallons;
    if (text.startsWith(u"Imp"))
        return ImperialGallons;
    if (text.startsWith(u"Lit"))
        return Litres;
    return -1;
}

double toKilometres(double distance, int distanceUnit)
{
    return distanceUnit == Kilometres ? distance : distance * KilometresPerMile;
}

double toLitres(double quantity, int liquidUnit)
{
    switch (liquidUnit) {
    case UsGallons:
        return quantity * LitresPerUsGallon;
    case ImperialGallons:
        return quantity * LitresPerImperialGallon;
    case Litres:
        return quantity;
    default:
        return 0.0;
    }
}

double economy(double km, double litres, int economyUnit, Gallon gallon, double previous)
{
    switch (economyUnit) {
    case Mpg:
        if (gallon == Gallon::Unknown)
            return previous;
        return divide(km * MilesPerKilometre,
                      litres * (gallon == Gallon::Imperial ? ImperialGallonsPerLitre : UsGallonsPerLitre));
    case Mpl:
        return divide(km * MilesPerKilometre, litres);
    case LitresPer100Km:
        return divide(litres, km * Per100Factor);
    case MpgImperial:
        return divide(km * MilesPerKilometre, litres * ImperialGallonsPerLitre);
    case Kpl:
        return divide(km, litres);
    default:
        return previous;
    }
}

QString economyText(double economyValue, double storedUnit)
{
    if (storedUnit <= 0)
        return cformat("%-3.2f MPG", economyValue);
    if (storedUnit == 1)
        return cformat("%-3.2f MPL", economyValue);
    if (storedUnit == 2)
        return cformat("%-3.2f L/100km", economyValue);
    if (storedUnit == 3)
        return cformat("%-3.2f MPGi", economyValue);
    // 4 and above; an odd stored value between the codes reads as the last unit too.
    return cformat("%-3.2f KPL", economyValue);
}

double parseLenient(const QString &text)
{
    return LenientNumber::toDouble(text);
}

} // namespace Units
