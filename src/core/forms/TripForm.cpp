#include "TripForm.h"

#include "platform/Reporter.h"

TripForm::TripForm(const EntryFormContext &context, const CVCItem &record)
    : m_context(context)
{
    values.vehicleLabel = context.vehicleName.isEmpty() ? noneText() : context.vehicleName;
    m_newTrip = !(record.endOdometer > 0.0);
    if (m_newTrip) {
        const QDateTime now = DeviceTime::toLocal(context.now());
        m_icon = ClosedTripIcon;
        values.departOdometer = context.highestOdometer;
        values.arriveOdometer = context.highestOdometer;
        values.departDate = now;
        values.departTime = now;
        values.arriveDate = now;
        values.arriveTime = now;
        values.purpose = selectText();
        values.contact = noneText();
        values.destination = selectText();
        return;
    }
    values.contact = record.contact;
    m_icon = record.iconIndex;
    values.departOdometer = record.odometer;
    values.note = record.notes;
    values.purpose = record.purpose;
    values.destination = record.destination;
    values.departDate = DeviceTime::toLocal(record.departTime);
    values.departTime = values.departDate;
    values.arriveDate = DeviceTime::toLocal(record.arriveTime);
    values.arriveTime = values.arriveDate;
    values.tolls = record.amount;
    values.parking = record.parking;
    values.arriveOdometer = qMax(record.odometer, record.endOdometer);
    // An open trip is usually completed now, so its arrival time starts there.
    if (values.arriveOdometer == values.departOdometer)
        values.arriveTime = DeviceTime::toLocal(context.now());
}

void TripForm::arriveNow()
{
    const QDateTime now = DeviceTime::toLocal(m_context.now());
    values.arriveDate = now;
    values.arriveTime = now;
}

double TripForm::tripCost() const
{
    if (values.arriveOdometer > values.departOdometer)
        return (values.arriveOdometer - values.departOdometer) * m_context.costPerMile;
    return 0.0;
}

int TripForm::iconForSave() const
{
    return values.arriveOdometer > values.departOdometer ? ClosedTripIcon : OpenTripIcon;
}

quint32 TripForm::combine(const QDateTime &date, const QDateTime &time)
{
    const QTime clock(time.time().hour(), time.time().minute(), 0);
    return DeviceTime::fromLocal(QDateTime(date.date(), clock));
}

QString TripForm::odometerWarning(qint32 newEntryMark) const
{
    if (EntryForms::odometerWarningApplies(m_context.highestOdometer, values.departOdometer, newEntryMark))
        return EntryForms::odometerWarningText();
    return QString();
}

void TripForm::writeRecord(CVCItem &record) const
{
    CVCItem item;
    item.iconIndex = iconForSave();
    item.entryType = CVCItem::Trip;
    item.odometer = values.departOdometer;
    item.entryDate = DeviceTime::fromLocal(values.departDate);
    item.typeText = CVCItem::typeName(CVCItem::Trip);
    item.notes = values.note;
    item.purpose = values.purpose;
    item.destination = values.destination;
    item.contact = values.contact;
    item.departTime = combine(values.departDate, values.departTime);
    item.arriveTime = combine(values.arriveDate, values.arriveTime);
    item.amount = values.tolls;
    item.unitPrice = tripCost();
    item.endOdometer = values.arriveOdometer;
    item.parking = values.parking;
    record = item;
}

void TripForm::save(CVCItem &record, Reporter &reporter) const
{
    const QString warning = odometerWarning(record.newEntryMark);
    if (!warning.isEmpty())
        reporter.ask(warning, EntryForms::warningTitle(), Reporter::Buttons::Ok);
    writeRecord(record);
}
