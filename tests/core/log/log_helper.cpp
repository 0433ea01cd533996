#include "log_helper.h"

using namespace Qt::StringLiterals;

CVCItem sampleFuel()
{
    CVCItem f;
    f.entryType = CVCItem::Fuel;
    f.odometer = 1000.0;
    f.entryDate = 1700000000;
    f.economyUnit = 2.0;
    f.distanceUnit = 1;
    f.notes = u"Hi"_s;
    f.fuelMeasure = u"L"_s;
    f.typeText = u"Fuel"_s;
    f.temperature = -5;
    f.notFull = 1;
    f.amount = 32.5;
    f.fuelQuantity = 10.0;
    f.unitPrice = 3.25;
    f.economy = 25.5;
    return f;
}

CVCItem sampleMaintenance()
{
    CVCItem m;
    m.iconIndex = 4;
    m.entryType = CVCItem::Maintenance;
    m.odometer = 1500.0;
    m.station = u"Shop"_s;
    m.invoice = u"A1"_s;
    m.typeText = u"Oil Change"_s;
    m.amount = 10.0;
    return m;
}

CVCItem sampleTrip()
{
    CVCItem t;
    t.iconIndex = 19;
    t.entryType = CVCItem::Trip;
    t.odometer = 2.0;
    t.entryDate = 1;
    t.purpose = u"Biz"_s;
    t.destination = u"X"_s;
    t.typeText = u"Trip"_s;
    t.departTime = 0x10;
    t.arriveTime = 0x1000;
    t.listPosition = 2;
    t.unitPrice = 2.0;
    t.endOdometer = 10.0;
    t.parking = 3.25;
    return t;
}

const char *const ClassHeaderHex = "FFFF 0100 0700 43564349 74656D";

// Field by field, in file order: icon, type, odometer, date, economy unit, distance unit,
// notes, measure, station, invoice, purpose, destination, contact, type text, three times,
// six ints, six doubles.
const char *const FuelHex = "00000000 00000000 0000000000408F40 00F15365 0000000000000040 01000000"
                            " FFFEFF02 48006900  FFFEFF01 4C00  FFFEFF00 FFFEFF00 FFFEFF00 FFFEFF00 FFFEFF00"
                            " FFFEFF04 46007500 65006C00"
                            " 00000000 00000000 00000000"
                            " FBFFFFFF 00000000 00000000 00000000 01000000 00000000"
                            " 0000000000404040 0000000000002440 0000000000000A40 0000000000000000"
                            " 0000000000803940 0000000000000000";

const char *const MaintenanceHex = "04000000 01000000 0000000000709740 00000000 0000000000000000 00000000"
                                   " FFFEFF00 FFFEFF00 FFFEFF04 53006800 6F007000 FFFEFF02 41003100"
                                   " FFFEFF00 FFFEFF00 FFFEFF00"
                                   " FFFEFF0A 4F006900 6C002000 43006800 61006E00 67006500"
                                   " 00000000 00000000 00000000"
                                   " 00000000 00000000 00000000 00000000 00000000 00000000"
                                   " 0000000000002440 0000000000000000 0000000000000000 0000000000000000"
                                   " 0000000000000000 0000000000000000";

const char *const TripHex = "13000000 02000000 0000000000000040 01000000 0000000000000000 00000000"
                            " FFFEFF00 FFFEFF00 FFFEFF00 FFFEFF00 FFFEFF03 42006900 7A00 FFFEFF01 5800"
                            " FFFEFF00"
                            " FFFEFF04 54007200 69007000"
                            " 10000000 00100000 00000000"
                            " 00000000 00000000 00000000 00000000 00000000 02000000"
                            " 0000000000000000 0000000000000000 0000000000000040 0000000000002440"
                            " 0000000000000000 0000000000000A40";

QByteArray archiveOf(std::initializer_list<const char *> records)
{
    QByteArray out(2, '\0');
    out[0] = char(records.size()); // no test writes more than 255 records this way
    for (const char *record : records)
        out += hex(out.size() == 2 ? ClassHeaderHex : "0180") + hex(record);
    return out + hex("0000");
}
