#pragma once

#include <QString>

#include "LogText.h"

#include <vector>

class LocaleFormats;

// One log entry: a fuel fill-up, a maintenance job or a trip. One record class serves all
// three; entryType says which, and each kind fills only its own fields.
class CVCItem
{
public:
    enum EntryType : qint32 { Fuel = 0, Maintenance = 1, Trip = 2 };

    // Marks a record created from the main screen while its form is open.
    static constexpr qint32 NewEntryMark = 99;

    qint32 iconIndex = 0;
    qint32 entryType = 0;
    double odometer = 0.0;
    quint32 entryDate = 0;
    // Ahead of economyUnit (unlike the file's order) so the two 32-bit fields share 8 bytes:
    // a million-entry log keeps a million of these.
    qint32 distanceUnit = 0;
    double economyUnit = 0.0;
    LogText typeText;
    LogText notes;
    LogText fuelMeasure;
    LogText station;
    LogText invoice;
    LogText purpose;
    LogText destination;
    LogText contact;
    quint32 departTime = 0;
    quint32 arriveTime = 0;
    quint32 reservedTime = 0;
    qint32 temperature = 0;
    qint32 newEntryMark = 0;
    qint32 reserved1 = 0;
    qint32 reserved2 = 0;
    qint32 notFull = 0;
    qint32 listPosition = 0;
    double amount = 0.0;
    double fuelQuantity = 0.0;
    double unitPrice = 0.0;
    double endOdometer = 0.0;
    double economy = 0.0;
    double parking = 0.0;

    bool HasOdometer() const { return odometer >= 1.0; }
    bool isOpenTrip() const { return entryType == Trip && endOdometer == odometer; }

    // "Fuel", "Maint.", "Trip"; empty for any other code.
    static QString typeName(qint32 entryType);
    QString typeName() const { return typeName(entryType); }

    // A trip's distance; worth showing only when positive.
    double tripDistance() const { return endOdometer - odometer; }
    bool hasTripDuration() const { return departTime != 0 && arriveTime != 0; }
    // "%d Days %d Hours %d Min", empty unless both trip times are set.
    QString tripDurationText() const;

    // Column texts. leftAligned picks the main list's "%-..." form over the "%..." one.
    QString odometerText(bool leftAligned = true) const;
    QString endOdometerText(bool leftAligned = true) const;
    QString priceText(const LocaleFormats &locale, bool leftAligned = true) const;
    QString quantityText(bool leftAligned = true) const;
    QString economyText() const;
    QString temperatureText() const;
    QString amountText(const LocaleFormats &locale, bool leftAligned = true) const;
    QString parkingText(const LocaleFormats &locale, bool leftAligned = true) const;
    QString mileageCostText(const LocaleFormats &locale) const;
    QString entryDateTimeText(const LocaleFormats &locale) const;

    // Shared by the columns: money "%s%-3.2f" / "%s%3.2f", and a 32-bit time as "%s %s".
    static QString moneyText(double value, const LocaleFormats &locale, bool leftAligned = true);
    static QString dateTimeText(quint32 seconds, const LocaleFormats &locale);
    // The economy unit's label: MPG, MPL, L/100km, MPGi, KPL (out-of-range codes clamp).
    static QString economyUnitName(double economyUnit);

    bool operator==(const CVCItem &other) const = default;
};

// The open vehicle's entries in list order.
using EntryList = std::vector<CVCItem>;
