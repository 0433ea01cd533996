#include "FuelForm.h"

#include "calc/FuelEconomy.h"
#include "calc/Units.h"
#include "platform/CFormat.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

QString FuelForm::hintText()
{
    return u"Enter all fuel purchases here. To keep fuel economy accurate, always completely fill your tank. "
           "If not filling the tank, check the box marked Not Full."_s;
}

QStringList FuelForm::unitItems()
{
    return { Units::liquidComboText(Units::UsGallons), Units::liquidComboText(Units::ImperialGallons),
             Units::liquidComboText(Units::Litres) };
}

QString FuelForm::priceUnitText(const QString &unitText)
{
    return Units::liquidUnitFromText(unitText) == Units::Litres ? u"/ Litre"_s : u"/ Gallon"_s;
}

FuelForm::FuelForm(const EntryFormContext &context, const CVCItem &record)
    : m_context(context)
{
    m_newEntry = !(record.fuelQuantity > 0.0);
    if (m_newEntry) {
        // The start-up time, not the time the form opens: entries made in one sitting share it.
        values.date = DeviceTime::toLocal(context.startupTime);
        values.odometer = context.highestOdometer;
        values.unitText = Units::liquidComboText(context.liquidUnit);
        m_liquidUnit = context.liquidUnit;
        return;
    }
    values.odometer = record.odometer;
    values.amount = record.amount;
    values.note = record.notes;
    values.unitText = record.fuelMeasure;
    values.date = DeviceTime::toLocal(record.entryDate);
    values.economy = record.economy;
    values.station = record.station;
    values.temperature = record.temperature;
    values.notFull = record.notFull != 0;
    values.quantityText = cformat("%-2.3f", record.fuelQuantity);
    values.priceText = cformat("%-2.3f", record.unitPrice);
    m_quantity = record.fuelQuantity;
    m_price = record.unitPrice;
    const int unit = Units::liquidUnitFromText(record.fuelMeasure);
    m_liquidUnit = unit >= 0 ? unit : context.liquidUnit;
}

void FuelForm::quantityChanged()
{
    if (values.quantityText.isEmpty())
        return;
    FuelEconomy::FillUpInput input;
    input.odometer = values.odometer;
    input.quantityText = values.quantityText;
    input.priceText = values.priceText;
    input.liquidText = values.unitText;
    input.distanceUnit = m_context.distanceUnit;
    input.economyUnit = m_context.economyUnit;
    input.startOdometer = m_context.startOdometer;
    input.lastFullFillOdometer = m_context.lastFullFillOdometer;
    input.economy = values.economy;
    input.amount = values.amount;
    input.liquidUnit = m_liquidUnit;
    const FuelEconomy::FillUpResult result = FuelEconomy::computeFillUp(input);
    values.economy = result.economy;
    values.amount = result.amount;
    m_liquidUnit = result.liquidUnit;
    m_quantity = qMax(0.0, Units::parseLenient(values.quantityText));
    m_price = qMax(0.0, Units::parseLenient(values.priceText));
}

void FuelForm::priceChanged()
{
    m_quantity = qMax(0.0, Units::parseLenient(values.quantityText));
    m_price = qMax(0.0, Units::parseLenient(values.priceText));
    values.amount = FuelEconomy::fillUpTotal(values.quantityText, values.priceText);
}

void FuelForm::unitChanged()
{
    values.amount = m_price * m_quantity;
}

QString FuelForm::odometerWarning(qint32 newEntryMark) const
{
    if (EntryForms::odometerWarningApplies(m_context.highestOdometer, values.odometer, newEntryMark))
        return EntryForms::odometerWarningText();
    return QString();
}

void FuelForm::writeRecord(CVCItem &record) const
{
    CVCItem item;
    item.iconIndex = 0;
    item.entryType = CVCItem::Fuel;
    item.odometer = values.odometer;
    item.entryDate = DeviceTime::fromLocal(values.date);
    item.economyUnit = m_context.economyUnit;
    item.distanceUnit = m_context.distanceUnit;
    item.typeText = CVCItem::typeName(CVCItem::Fuel);
    item.notes = values.note;
    item.fuelMeasure = values.unitText;
    item.station = values.station;
    item.temperature = values.temperature;
    item.notFull = values.notFull ? 1 : 0;
    item.amount = values.amount;
    // Parsed again without clamping: a negative price typed after the last quantity edit stays.
    item.fuelQuantity = Units::parseLenient(values.quantityText);
    item.unitPrice = Units::parseLenient(values.priceText);
    item.economy = values.economy;
    record = item;
}

void FuelForm::save(CVCItem &record, Reporter &reporter) const
{
    const QString warning = odometerWarning(record.newEntryMark);
    if (!warning.isEmpty())
        reporter.ask(warning, EntryForms::warningTitle(), Reporter::Buttons::Ok);
    writeRecord(record);
}
