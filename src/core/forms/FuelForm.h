#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "EntryFormContext.h"
#include "log/CVCItem.h"

class Reporter;

// The "Fuel" form's values, one per control.
struct FuelFormValues
{
    double odometer = 0.0;
    QDateTime date; // local; the date picker changes the day, the time of day stays
    QString station;
    QString unitText; // the editable unit box
    QString note;
    QString quantityText;
    QString priceText;
    double amount = 0.0; // "Total Cost"
    double economy = 0.0; // "Econ.", display only
    int temperature = 0; // "Cell Temp."
    bool notFull = false;

    bool operator==(const FuelFormValues &) const = default;
};

// The rules of the fuel form without its widgets: opening on a new or a stored record, the live
// total and economy, the odometer warning and what Save writes.
class FuelForm
{
public:
    FuelForm(const EntryFormContext &context, const CVCItem &record);

    static QString title() { return QStringLiteral("Fuel"); }
    static QString hintText();
    // The unit box's items: "Gallons", "Imp. Gallons", "Litres".
    static QStringList unitItems();
    // The label beside the price: "/ Litre" for litres, "/ Gallon" for either gallon.
    static QString priceUnitText(const QString &unitText);

    // A record with no quantity opens as a new entry, even a stored one.
    bool isNewEntry() const { return m_newEntry; }

    FuelFormValues values;

    // The quantity text changed: economy and total over the distance since the last full fill-up.
    void quantityChanged();
    // The price text changed: the total only.
    void priceChanged();
    // A whole text at once, as pasted into the box: one change instead of one per character.
    void setQuantityText(const QString &text)
    {
        values.quantityText = text;
        quantityChanged();
    }
    void setPriceText(const QString &text)
    {
        values.priceText = text;
        priceChanged();
    }
    // The unit text changed: the total from the numbers parsed last.
    void unitChanged();

    // The "NOTE" text when Save should show it, else empty. The mark is the record's.
    QString odometerWarning(qint32 newEntryMark) const;
    // Every field of the record as Save leaves it.
    void writeRecord(CVCItem &record) const;
    // Save: the warning (a question box with OK only; it never stops the save), then the record.
    void save(CVCItem &record, Reporter &reporter) const;

private:
    EntryFormContext m_context;
    bool m_newEntry = false;
    double m_quantity = 0.0; // the numbers parsed by the last quantity or price edit
    double m_price = 0.0;
    int m_liquidUnit = 0;
};
