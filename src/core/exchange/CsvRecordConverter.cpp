#include "CsvRecordConverter.h"

#include <cmath>

#include "ImportValues.h"
#include "calc/Units.h"
#include "forms/MaintenanceForm.h"
#include "platform/Clock.h"

using namespace Qt::StringLiterals;

namespace {

// The reminder engine's own test: such a name already resets its reminder and is kept as it is.
bool namesReminder(const QString &text, const std::array<QString, 5> &customNames)
{
    if (text.contains(u"Oil Change"_s))
        return true;
    for (const QString &name :
         { u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s, u"Rotate Tires"_s })
        if (text.startsWith(name))
            return true;
    for (const QString &name : customNames)
        if (!name.isEmpty() && text.startsWith(name))
            return true;
    return false;
}

QString serviceFor(const QString &word)
{
    struct Alias
    {
        const char16_t *service;
        std::initializer_list<const char16_t *> words;
    };
    static const Alias aliases[] = {
        { u"Oil Change", { u"OIL CHANGE", u"OIL" } },
        { u"Tune-Up", { u"TUNE", u"TUNE-UP", u"TUNE UP", u"TUNEUP" } },
        { u"Transmission Service", { u"TRANS", u"TRANSMISSION", u"TRANSMISSION SERVICE" } },
        { u"Coolant Flush", { u"COOL", u"COOLANT", u"COOLANT FLUSH" } },
        { u"Rotate Tires", { u"TIRE", u"TIRES", u"ROTATE TIRES", u"TIRE ROTATION" } },
        { u"Maint.", { u"OTHER", u"MAINT.", u"MAINT", u"MAINTENANCE", u"REPAIR", u"SERVICE" } },
    };
    for (const Alias &alias : aliases)
        for (const char16_t *candidate : alias.words)
            if (word == QStringView(candidate))
                return QString::fromUtf16(alias.service);
    return QString();
}

double cents(double value)
{
    return std::round(value * 100.0) / 100.0;
}

} // namespace

CsvRecordConverter::Kind CsvRecordConverter::classify(const QString &typeText,
                                                      const std::array<QString, 5> &customNames)
{
    Kind kind;
    const QString word = typeText.simplified().toUpper();
    if (word.isEmpty())
        return kind;
    if (word == u"FUEL"_s || word == u"GAS"_s || word == u"GASOLINE"_s || word == u"PETROL"_s
        || word == u"DIESEL"_s) {
        kind.known = Kind::Fuel;
    } else if (word == u"TRIP"_s || word == u"* OPEN TRIP"_s || word == u"OPEN TRIP"_s) {
        kind.known = Kind::Trip;
    } else if (word == u"BUSINESS"_s || word == u"PERSONAL"_s) {
        kind.known = Kind::Trip;
        kind.purpose = word.left(1) + word.mid(1).toLower();
    } else if (namesReminder(typeText, customNames)) {
        kind.known = Kind::Maintenance;
        kind.typeText = typeText;
    } else if (const QString service = serviceFor(word); !service.isEmpty()) {
        kind.known = Kind::Maintenance;
        kind.typeText = service;
    } else {
        for (const QString &name : customNames) {
            if (!name.isEmpty() && name.compare(typeText.trimmed(), Qt::CaseInsensitive) == 0) {
                kind.known = Kind::Maintenance;
                kind.typeText = name;
            }
        }
        if (kind.known == Kind::Unknown)
            kind.typeText = typeText; // a repair of the user's own naming, unless the row says otherwise
    }
    return kind;
}

CsvRecordConverter::CsvRecordConverter(const ImportMap &map, const CsvConversionSettings &settings)
    : m_map(map)
    , m_settings(settings)
{ }

QString CsvRecordConverter::text(const CsvRecord &record, int field) const
{
    return record.text(m_map.column(field));
}

double CsvRecordConverter::number(const CsvRecord &record, int field) const
{
    return ImportValues::number(text(record, field));
}

quint32 CsvRecordConverter::time(const CsvRecord &record, int field) const
{
    const ImportValues::DateTime value = ImportValues::dateTime(text(record, field), m_settings.dateOrder);
    if (!value.isValid())
        return 0;
    const QTime time = value.time.isValid() ? value.time : QTime(0, 0);
    // Local time conversions are slow; a file's dates repeat, so each hour's start is worked out once.
    const qint64 hourKey = value.date.toJulianDay() * 24 + time.hour();
    auto start = m_hourStarts.constFind(hourKey);
    if (start == m_hourStarts.cend())
        start = m_hourStarts.insert(hourKey, QDateTime(value.date, QTime(time.hour(), 0)).toSecsSinceEpoch());
    const qint64 seconds = *start + time.minute() * 60 + time.second();
    return seconds >= 0 && seconds <= 0xFFFFFFFFLL ? quint32(seconds) : 0;
}

bool CsvRecordConverter::convert(const CsvRecord &record, CVCItem *item) const
{
    const Kind kind = classify(text(record, ImportMap::EntryType), m_settings.customNames);
    Kind::Known known = kind.known;
    if (known == Kind::Unknown) {
        // A row without a type word tells by its figures what it is.
        if (number(record, ImportMap::FuelQty) > 0)
            known = Kind::Fuel;
        else if (kind.typeText.trimmed().isEmpty()
                 && (number(record, ImportMap::EndOdo) > 0 || number(record, ImportMap::Distance) > 0
                     || !text(record, ImportMap::Destination).isEmpty()))
            known = Kind::Trip;
        else
            known = Kind::Maintenance;
    }

    *item = CVCItem();
    item->odometer = number(record, ImportMap::Odometer);
    if (known == Kind::Trip && item->odometer < 1.0)
        item->odometer = number(record, ImportMap::StartOdo);
    if (!item->HasOdometer())
        return false;
    item->entryDate = time(record, ImportMap::Date);
    item->notes = text(record, ImportMap::Notes);

    switch (known) {
    case Kind::Fuel:
        fillFuel(record, item);
        break;
    case Kind::Trip:
        fillTrip(record, kind.purpose, item);
        break;
    default: {
        const QString name = kind.typeText.trimmed().isEmpty() ? u"Maint."_s : kind.typeText;
        fillMaintenance(record, name, item);
        break;
    }
    }
    if (item->entryDate == 0)
        item->entryDate = m_settings.now;
    return true;
}

void CsvRecordConverter::fillFuel(const CsvRecord &record, CVCItem *item) const
{
    item->entryType = CVCItem::Fuel;
    item->iconIndex = 0;
    item->typeText = CVCItem::typeName(CVCItem::Fuel);
    item->economyUnit = m_settings.economyUnit;
    item->distanceUnit = m_settings.distanceUnit;
    item->station = text(record, ImportMap::Station);

    const QString quantityText = text(record, ImportMap::FuelQty);
    item->fuelQuantity = ImportValues::number(quantityText);
    item->unitPrice = number(record, ImportMap::FuelPrice);
    QString measure = ImportValues::measure(text(record, ImportMap::Measure));
    if (measure.isEmpty()) {
        // "12.5 L": the unit written after the quantity.
        qsizetype i = 0;
        while (i < quantityText.size() && !quantityText[i].isLetter())
            ++i;
        measure = ImportValues::measure(QStringView(quantityText).sliced(i));
    }
    item->fuelMeasure = measure.isEmpty() ? Units::liquidComboText(m_settings.liquidUnit) : measure;

    const double amount = number(record, ImportMap::Amount);
    const double fuelCost = number(record, ImportMap::FuelCost);
    item->amount = amount > 0 ? amount : fuelCost > 0 ? fuelCost : item->unitPrice * item->fuelQuantity;
    if (item->unitPrice <= 0 && item->fuelQuantity > 0 && item->amount > 0)
        item->unitPrice = std::round(item->amount / item->fuelQuantity * 1000.0) / 1000.0;
    const double economy = number(record, ImportMap::Economy);
    item->economy = economy > 0 ? economy : EconomyToCompute;
}

void CsvRecordConverter::fillMaintenance(const CsvRecord &record, const QString &typeText,
                                         CVCItem *item) const
{
    item->entryType = CVCItem::Maintenance;
    item->typeText = typeText;
    item->iconIndex = MaintenanceForm::predefinedIcon(typeText);
    item->invoice = text(record, ImportMap::Invoice);
    item->station = text(record, ImportMap::Station);
    const double amount = number(record, ImportMap::Amount);
    item->amount = amount > 0 ? amount : number(record, ImportMap::TollsMaintCost);
}

void CsvRecordConverter::fillTrip(const CsvRecord &record, const QString &purpose, CVCItem *item) const
{
    item->entryType = CVCItem::Trip;
    item->typeText = CVCItem::typeName(CVCItem::Trip);
    item->purpose = text(record, ImportMap::Purpose);
    if (item->purpose.isEmpty())
        item->purpose = purpose;
    item->destination = text(record, ImportMap::Destination);
    item->contact = text(record, ImportMap::Contact);

    const double end = number(record, ImportMap::EndOdo);
    const double distance = number(record, ImportMap::Distance);
    item->endOdometer = end > 0 ? end : distance > 0 ? item->odometer + distance : item->odometer;
    item->iconIndex = item->endOdometer > item->odometer ? 19 : 18;

    item->departTime = time(record, ImportMap::DepartDate);
    if (item->departTime == 0)
        item->departTime = item->entryDate;
    if (item->entryDate == 0)
        item->entryDate = item->departTime;
    item->arriveTime = time(record, ImportMap::ArriveDate);
    const qint64 duration = ImportValues::durationSeconds(text(record, ImportMap::Duration));
    if (item->arriveTime == 0 && item->departTime != 0 && duration >= 0)
        item->arriveTime = quint32(qMin<qint64>(item->departTime + duration, 0xFFFFFFFFLL));

    const double tolls = number(record, ImportMap::TollsMaintCost);
    item->amount = tolls > 0 ? tolls : number(record, ImportMap::Amount);
    item->parking = number(record, ImportMap::Parking);
    // The file's trip cost holds mileage, parking and tolls together (as the export writes it).
    const double tripCost = number(record, ImportMap::TripCost);
    const double distanceDriven = item->endOdometer - item->odometer;
    if (tripCost > 0)
        item->unitPrice = qMax(0.0, cents(tripCost - item->parking - item->amount));
    else
        item->unitPrice = distanceDriven > 0 ? distanceDriven * m_settings.costPerMile : 0.0;
}
