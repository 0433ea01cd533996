#include "CVCItemJson.h"

using namespace Qt::StringLiterals;

namespace {

// One table drives both directions so the two can never disagree on a key.
enum class Kind { Int, Time, Double, String };
struct Field
{
    QString key;
    Kind kind;
    qint32 CVCItem::*intField = nullptr;
    quint32 CVCItem::*timeField = nullptr;
    double CVCItem::*doubleField = nullptr;
    LogText CVCItem::*stringField = nullptr;
};

Field intF(const QString &key, qint32 CVCItem::*f)
{
    return { key, Kind::Int, f, nullptr, nullptr, nullptr };
}
Field timeF(const QString &key, quint32 CVCItem::*f)
{
    return { key, Kind::Time, nullptr, f, nullptr, nullptr };
}
Field doubleF(const QString &key, double CVCItem::*f)
{
    return { key, Kind::Double, nullptr, nullptr, f, nullptr };
}
Field stringF(const QString &key, LogText CVCItem::*f)
{
    return { key, Kind::String, nullptr, nullptr, nullptr, f };
}

const std::vector<Field> &fields()
{
    static const std::vector<Field> table = {
        intF(u"iconIndex"_s, &CVCItem::iconIndex),          intF(u"entryType"_s, &CVCItem::entryType),
        doubleF(u"odometer"_s, &CVCItem::odometer),         timeF(u"entryDate"_s, &CVCItem::entryDate),
        doubleF(u"economyUnit"_s, &CVCItem::economyUnit),   intF(u"distanceUnit"_s, &CVCItem::distanceUnit),
        stringF(u"typeText"_s, &CVCItem::typeText),         stringF(u"notes"_s, &CVCItem::notes),
        stringF(u"fuelMeasure"_s, &CVCItem::fuelMeasure),   stringF(u"station"_s, &CVCItem::station),
        stringF(u"invoice"_s, &CVCItem::invoice),           stringF(u"purpose"_s, &CVCItem::purpose),
        stringF(u"destination"_s, &CVCItem::destination),   stringF(u"contact"_s, &CVCItem::contact),
        timeF(u"departTime"_s, &CVCItem::departTime),       timeF(u"arriveTime"_s, &CVCItem::arriveTime),
        timeF(u"reservedTime"_s, &CVCItem::reservedTime),   intF(u"temperature"_s, &CVCItem::temperature),
        intF(u"newEntryMark"_s, &CVCItem::newEntryMark),    intF(u"reserved1"_s, &CVCItem::reserved1),
        intF(u"reserved2"_s, &CVCItem::reserved2),          intF(u"notFull"_s, &CVCItem::notFull),
        intF(u"listPosition"_s, &CVCItem::listPosition),    doubleF(u"amount"_s, &CVCItem::amount),
        doubleF(u"fuelQuantity"_s, &CVCItem::fuelQuantity), doubleF(u"unitPrice"_s, &CVCItem::unitPrice),
        doubleF(u"endOdometer"_s, &CVCItem::endOdometer),   doubleF(u"economy"_s, &CVCItem::economy),
        doubleF(u"parking"_s, &CVCItem::parking),
    };
    return table;
}

} // namespace

QJsonObject cvcItemToJson(const CVCItem &item)
{
    QJsonObject object;
    for (const Field &f : fields()) {
        switch (f.kind) {
        case Kind::Int:
            object.insert(f.key, item.*(f.intField));
            break;
        case Kind::Time:
            object.insert(f.key, qint64(item.*(f.timeField)));
            break;
        case Kind::Double:
            object.insert(f.key, item.*(f.doubleField));
            break;
        case Kind::String:
            object.insert(f.key, (item.*(f.stringField)).text());
            break;
        }
    }
    return object;
}

CVCItem cvcItemFromJson(const QJsonObject &object)
{
    CVCItem item;
    for (const Field &f : fields()) {
        const QJsonValue value = object.value(f.key);
        switch (f.kind) {
        case Kind::Int:
            item.*(f.intField) = qint32(value.toInteger());
            break;
        case Kind::Time:
            item.*(f.timeField) = quint32(value.toInteger());
            break;
        case Kind::Double:
            item.*(f.doubleField) = value.toDouble();
            break;
        case Kind::String:
            item.*(f.stringField) = value.toString();
            break;
        }
    }
    return item;
}
