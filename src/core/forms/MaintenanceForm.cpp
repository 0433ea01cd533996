#include "MaintenanceForm.h"

#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

int MaintenanceForm::buttonIcon(int button)
{
    if (button <= 0 || button >= IconButtonCount)
        return 1;
    return 7 + button;
}

int MaintenanceForm::buttonPicture(int button)
{
    if (button <= 0 || button >= IconButtonCount)
        return DefaultPicture;
    return FirstChoicePicture + button - 1;
}

bool MaintenanceForm::isPredefinedRepair(const QString &repairType)
{
    return repairType.contains(u"Oil Change"_s) || repairType.startsWith(u"Coolant Flush"_s)
        || repairType.startsWith(u"Rotate Tires"_s) || repairType.startsWith(u"Tune-Up"_s)
        || repairType.startsWith(u"Transmission Service"_s);
}

int MaintenanceForm::predefinedIcon(const QString &repairType)
{
    int icon = 1;
    if (repairType.contains(u"Oil Change"_s))
        icon = 4;
    if (repairType.startsWith(u"Tune-Up"_s))
        icon = 5;
    if (repairType.startsWith(u"Transmission Service"_s))
        icon = 6;
    if (repairType.startsWith(u"Coolant Flush"_s))
        icon = 7;
    if (repairType.startsWith(u"Rotate Tires"_s))
        icon = 17;
    return icon;
}

int MaintenanceForm::predefinedPicture(const QString &repairType)
{
    int picture = DefaultPicture;
    if (repairType.contains(u"Oil Change"_s))
        picture = OilChangePicture;
    if (repairType.startsWith(u"Tune-Up"_s))
        picture = TuneUpPicture;
    if (repairType.startsWith(u"Transmission Service"_s))
        picture = TransmissionPicture;
    if (repairType.startsWith(u"Coolant Flush"_s))
        picture = CoolantPicture;
    // Shares icon 17 with "I10" but keeps a picture of its own.
    if (repairType.startsWith(u"Rotate Tires"_s))
        picture = RotateTiresPicture;
    return picture;
}

MaintenanceForm::MaintenanceForm(const EntryFormContext &context, const CVCItem &record)
    : m_context(context)
{
    if (!record.typeText.isEmpty()) {
        values.odometer = record.odometer;
        values.cost = record.amount;
        values.location = record.station;
        values.invoice = record.invoice;
        values.repairType = record.typeText;
        values.date = DeviceTime::toLocal(record.entryDate);
        values.note = record.notes;
        // Icons 2..7 leave the picture that was there before: the default one.
        if (record.iconIndex >= 8 && record.iconIndex <= 17)
            m_picture = buttonPicture(record.iconIndex - 7);
    } else {
        resetAsNew(CVCItem::typeName(CVCItem::Maintenance));
    }
    // The stored icon is dropped on purpose: an edited entry keeps it only when picked again.
    m_icon = 1;
    if (values.odometer == 0.0)
        resetAsNew(QString());
}

void MaintenanceForm::resetAsNew(const QString &repairType)
{
    values = MaintenanceFormValues();
    values.repairType = repairType;
    values.date = DeviceTime::toLocal(m_context.startupTime);
    values.odometer = m_context.highestOdometer;
}

void MaintenanceForm::repairTypeChanged(const QString &repairType)
{
    values.repairType = repairType;
    if (!isPredefinedRepair(repairType)) {
        m_buttonsEnabled = true;
        m_icon = 1;
        m_picture = DefaultPicture;
        return;
    }
    m_buttonsEnabled = false;
    m_icon = predefinedIcon(repairType);
    m_picture = predefinedPicture(repairType);
}

void MaintenanceForm::iconButtonClicked(int button)
{
    m_icon = buttonIcon(button);
    m_picture = buttonPicture(button);
}

QString MaintenanceForm::odometerWarning(qint32 newEntryMark) const
{
    if (EntryForms::odometerWarningApplies(m_context.highestOdometer, values.odometer, newEntryMark))
        return EntryForms::maintenanceOdometerWarningText();
    return QString();
}

void MaintenanceForm::writeRecord(CVCItem &record) const
{
    CVCItem item;
    item.iconIndex = m_icon;
    item.entryType = CVCItem::Maintenance;
    item.odometer = values.odometer;
    item.entryDate = DeviceTime::fromLocal(values.date);
    item.typeText = values.repairType;
    item.notes = values.note;
    item.station = values.location;
    item.invoice = values.invoice;
    item.amount = values.cost;
    record = item;
}

void MaintenanceForm::save(CVCItem &record, Reporter &reporter) const
{
    const QString warning = odometerWarning(record.newEntryMark);
    if (!warning.isEmpty())
        reporter.ask(warning, EntryForms::warningTitle(), Reporter::Buttons::Ok);
    writeRecord(record);
}
