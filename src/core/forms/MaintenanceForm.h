#pragma once

#include <QDateTime>
#include <QString>

#include "EntryFormContext.h"
#include "log/CVCItem.h"

class Reporter;

// The "Maintenance" form's values, one per control.
struct MaintenanceFormValues
{
    double odometer = 0.0;
    QDateTime date; // local
    QString repairType;
    QString invoice;
    double cost = 0.0;
    QString location;
    QString note;

    bool operator==(const MaintenanceFormValues &) const = default;
};

// The rules of the maintenance form without its widgets: opening, the icon that follows the
// repair type or the icon buttons, the odometer warning and what Save writes.
class MaintenanceForm
{
public:
    // Pictures by resource number: the default, "I1".."I10", then the five predefined repairs.
    static constexpr int DefaultPicture = 356;
    static constexpr int FirstChoicePicture = 357;
    static constexpr int OilChangePicture = 408;
    static constexpr int TuneUpPicture = 409;
    static constexpr int TransmissionPicture = 410;
    static constexpr int CoolantPicture = 411;
    static constexpr int RotateTiresPicture = 412;
    static constexpr int IconButtonCount = 11; // "I0".."I10"

    MaintenanceForm(const EntryFormContext &context, const CVCItem &record);

    static QString title() { return QStringLiteral("Maintenance"); }
    static QString hintText()
    {
        return QStringLiteral("Select from the Repair Types or add a new repair type.");
    }

    // "I0" gives 1, "I1".."I10" give 8..17.
    static int buttonIcon(int button);
    static int buttonPicture(int button);
    // "Oil Change" anywhere, or a text that begins with one of the other four standard repairs.
    static bool isPredefinedRepair(const QString &repairType);
    // The icon and picture of a predefined repair; later tests override earlier ones.
    static int predefinedIcon(const QString &repairType);
    static int predefinedPicture(const QString &repairType);

    MaintenanceFormValues values;
    int iconIndex() const { return m_icon; }
    int pictureResource() const { return m_picture; }
    // The eleven icon buttons and "REPAIR" are disabled while a predefined repair is chosen.
    bool iconButtonsEnabled() const { return m_buttonsEnabled; }

    // A repair type was chosen from the list or typed.
    void repairTypeChanged(const QString &repairType);
    // One of "I0".."I10".
    void iconButtonClicked(int button);

    QString odometerWarning(qint32 newEntryMark) const;
    void writeRecord(CVCItem &record) const;
    void save(CVCItem &record, Reporter &reporter) const;

private:
    void resetAsNew(const QString &repairType);

    EntryFormContext m_context;
    int m_icon = 1;
    int m_picture = DefaultPicture;
    bool m_buttonsEnabled = true;
};
