#include "ImportMap.h"

using namespace Qt::StringLiterals;

namespace {

const char *const Names[ImportMap::FieldCount] = {
    "EntryType", "Odometer",   "Date",     "Invoice",     "Amount",      "Station",     "Fuel Qty",
    "Measure",   "Fuel Price", "Economy",  "Fuel Cost",   "Purpose",     "Destination", "Contact",
    "Start Odo", "End Odo",    "Distance", "Depart Date", "Arrive Date", "Duration",    "Tolls & Maint cost",
    "Parking",   "Trip Cost",  "Notes",
};

QString squeezed(const QString &text)
{
    QString out;
    for (const QChar c : text)
        if (!c.isSpace())
            out.append(c.toLower());
    return out;
}

} // namespace

QString ImportMap::fieldName(int field)
{
    return field >= 0 && field < FieldCount ? QString::fromLatin1(Names[field]) : QString();
}

QStringList ImportMap::fieldNames()
{
    QStringList names;
    for (int i = 0; i < FieldCount; ++i)
        names.append(fieldName(i));
    return names;
}

int ImportMap::fieldFromName(const QString &name)
{
    const QString wanted = squeezed(name);
    for (int i = 0; i < FieldCount; ++i)
        if (squeezed(fieldName(i)) == wanted)
            return i;
    return -1;
}

void ImportMap::assign(int slot, int column)
{
    if (slot >= 0 && slot < SlotCount)
        columns[size_t(slot)] = column < 0 ? None : column;
}

ImportMap ImportMap::builtIn()
{
    // The export's columns: Type, Odometer, Entry Date, Invoice Number, Amount, Filling Station,
    // Fuel Qty., Fuel Price, Economy, Fuel Cost, Purpose, Destination, Contact, Start Odometer,
    // End Odometer, Distance, Departure Date, Arrival Date, Duration, Tolls, Parking, Trip Cost,
    // Notes. It has no measure column: fill-ups take the vehicle's liquid unit.
    ImportMap map(builtInName());
    const int fields[]
        = { EntryType,  Odometer,   Date,     Invoice,        Amount,  Station,  FuelQty, FuelPrice,
            Economy,    FuelCost,   Purpose,  Destination,    Contact, StartOdo, EndOdo,  Distance,
            DepartDate, ArriveDate, Duration, TollsMaintCost, Parking, TripCost, Notes };
    int column = 0;
    for (const int field : fields)
        map.assign(field, column++);
    return map;
}
