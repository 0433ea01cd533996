#pragma once

#include <QHash>
#include <QString>

#include <array>

#include "CsvTokenizer.h"
#include "ImportMap.h"
#include "log/CVCItem.h"
#include "platform/LocaleFormats.h"

// What the conversion needs of the open vehicle and the program.
struct CsvConversionSettings
{
    int distanceUnit = 0;
    int economyUnit = 0;
    int liquidUnit = 0; // the unit of fill-ups that name none
    double startOdometer = 0.0;
    double costPerMile = 0.0; // the trip rate, for trips whose file gives no trip cost
    std::array<QString, 5> customNames; // the custom reminders' names
    LocaleFormats::DateOrder dateOrder = LocaleFormats::DateOrder::MonthDayYear;
    quint32 now = 0; // the date of an entry whose file gives none
};

// Turns one CSV record into a log entry, through a map, the way the entry forms would have
// made it. The rules are described for users in the help page's import section.
class CsvRecordConverter
{
public:
    // A fill-up whose file gives no economy carries this until the import computes it from the
    // fill-up before it in the log.
    static constexpr double EconomyToCompute = -1.0;

    // The kind of entry a type text names.
    struct Kind
    {
        enum Known { Unknown, Fuel, Maintenance, Trip } known = Unknown;
        QString typeText; // a maintenance entry's service name
        QString purpose; // "Business" / "Personal" for those type words
    };
    static Kind classify(const QString &typeText, const std::array<QString, 5> &customNames);

    CsvRecordConverter(const ImportMap &map, const CsvConversionSettings &settings);

    // False when the record has no usable odometer (below 1): it is skipped.
    bool convert(const CsvRecord &record, CVCItem *item) const;

private:
    QString text(const CsvRecord &record, int field) const;
    double number(const CsvRecord &record, int field) const;
    quint32 time(const CsvRecord &record, int field) const;
    void fillFuel(const CsvRecord &record, CVCItem *item) const;
    void fillMaintenance(const CsvRecord &record, const QString &typeText, CVCItem *item) const;
    void fillTrip(const CsvRecord &record, const QString &purpose, CVCItem *item) const;

    ImportMap m_map;
    CsvConversionSettings m_settings;
    mutable QHash<qint64, qint64> m_hourStarts; // local hour (Julian day * 24 + hour) -> its seconds
};
