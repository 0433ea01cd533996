#pragma once

#include <QDateTime>
#include <QString>

#include "EntryFormContext.h"
#include "log/CVCItem.h"

class Reporter;

// The "Trips" form's values, one per control. The date pickers keep the time of day they were
// given and the time pickers the day; Save joins the date of one with the time of the other.
struct TripFormValues
{
    QDateTime departDate;
    QDateTime departTime;
    QDateTime arriveDate;
    QDateTime arriveTime;
    double departOdometer = 0.0;
    double arriveOdometer = 0.0;
    QString purpose;
    QString contact;
    QString destination;
    QString note;
    double tolls = 0.0;
    double parking = 0.0;
    QString vehicleLabel;

    bool operator==(const TripFormValues &) const = default;
};

// The rules of the trip form without its widgets: a new trip's defaults, loading an open or a
// closed trip, the odometer and time buttons, the trip cost and what Save writes.
class TripForm
{
public:
    static constexpr int OpenTripIcon = 18;
    static constexpr int ClosedTripIcon = 19;
    static constexpr int ComboTextLimit = 40; // the destination's; contact and purpose have none
    static constexpr int NoteLimit = 256;

    TripForm(const EntryFormContext &context, const CVCItem &record);

    static QString title() { return QStringLiteral("Trips"); }
    static QString selectText() { return QStringLiteral("Select"); }
    static QString noneText() { return QStringLiteral("None"); }

    bool isNewTrip() const { return m_newTrip; }

    TripFormValues values;
    int iconIndex() const { return m_icon; }

    // "du" / "dd" / "au" / "ad".
    void departUp() { values.departOdometer += 1.0; }
    void departDown() { values.departOdometer -= 1.0; }
    void arriveUp() { values.arriveOdometer += 1.0; }
    void arriveDown() { values.arriveOdometer -= 1.0; }
    // "T": arrival date and time become now.
    void arriveNow();

    // Distance x CostPerMile when the arrival is beyond the departure, else 0.
    double tripCost() const;
    // 19 for a completed trip, 18 for an open one.
    int iconForSave() const;
    // A date's day with a time's hour and minute, seconds 0, local time.
    static quint32 combine(const QDateTime &date, const QDateTime &time);

    QString odometerWarning(qint32 newEntryMark) const;
    void writeRecord(CVCItem &record) const;
    void save(CVCItem &record, Reporter &reporter) const;

private:
    EntryFormContext m_context;
    bool m_newTrip = false;
    int m_icon = ClosedTripIcon;
};
