#include "SetupPages.h"

#include "settings/VehicleSettings.h"

using namespace Qt::StringLiterals;

namespace SetupPages {

QString generalInfoTitle()
{
    return u"General Info."_s;
}
QString measurementsTitle()
{
    return u"Measurements"_s;
}
QString intervalsTitle()
{
    return u"Int."_s;
}
QString customTitle()
{
    return u"Cust."_s;
}
QString tripsTitle()
{
    return u"Trips"_s;
}

QString generalInfoHint()
{
    return u"Enter the vehicle information here."_s;
}

QString vinNote()
{
    return u"NOTE:  The data is stored by VIN number.  Changing the VIN number can result in data loss."_s;
}

QString measurementsHint()
{
    return u"Enter the starting odometer reading and select the measurments standards"_s;
}

QString intervalsHint()
{
    return u"Enter the Mileage between intervals, Days between intervals or 0 to disable. Do not enter "
           "10ths.  Whole units only."_s;
}

QString customHint()
{
    return u"Enter any custom reminder intervals here. A 0 (zero) value disables the feature. IE Insurance 0 "
           "Mileage  365 Days would set a reminder for Insurance every 365 days and ignore any miles traveled."_s;
}

QString tripsHint()
{
    return u"Select your Trip recording options here"_s;
}

QStringList intervalRows()
{
    return { u"Oil Change:"_s, u"Tune-Up:"_s, u"Trans.:"_s, u"Coolant:"_s, u"Rotate Tires"_s };
}

int rowReminder(int row)
{
    static constexpr std::array<int, 5> reminders = { OilChangeReminder, TuneUpReminder, TransmissionReminder,
                                                      CoolantFlushReminder, TireRotationReminder };
    return reminders[size_t(qBound(0, row, 4))];
}

QStringList distanceCaptions()
{
    return { u"Miles"_s, u"Kilometers"_s };
}

QStringList liquidCaptions()
{
    return { u"US Gal."_s, u"Imp. Gal."_s, u"Litre"_s };
}

QStringList economyCaptions()
{
    return { u"MPG"_s, u"MPL"_s, u"L/100km"_s, u"MPG Imperial"_s, u"KPL"_s };
}

QStringList sortCaptions()
{
    return { u"Date"_s, u"Purpose"_s, u"Contact"_s };
}

QString upperCaseEdit(const QString &typed, int maxLength)
{
    const QString upper = typed.toUpper();
    return maxLength > 0 ? upper.left(maxLength) : upper;
}

namespace {
bool allDigits(const QString &text)
{
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}
} // namespace

bool digitsOnly(const QString &text, double *value)
{
    if (!allDigits(text))
        return false;
    *value = text.isEmpty() ? 0.0 : text.toDouble();
    return true;
}

bool digitsOnly(const QString &text, qint32 *value)
{
    if (!allDigits(text))
        return false;
    bool ok = true;
    const qint32 number = text.isEmpty() ? 0 : text.toInt(&ok);
    if (!ok)
        return false;
    *value = number;
    return true;
}

QString numberText(double value)
{
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text;
}

} // namespace SetupPages
