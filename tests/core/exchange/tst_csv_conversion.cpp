#include <QBuffer>
#include <QtTest>

#include "exchange/CsvRecordConverter.h"
#include "exchange/ImportValues.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"

using namespace Qt::StringLiterals;

namespace {

using Order = LocaleFormats::DateOrder;

// A spreadsheet's columns: Type, Odometer, Date, Qty, Unit, Price, Amount, Station, Invoice, End,
// Purpose, Destination, Notes, Economy, Depart, Arrive, Parking, Tolls, Trip cost, Distance.
ImportMap sheetMap()
{
    ImportMap map(u"Sheet"_s);
    const int fields[]
        = { ImportMap::EntryType, ImportMap::Odometer,       ImportMap::Date,       ImportMap::FuelQty,
            ImportMap::Measure,   ImportMap::FuelPrice,      ImportMap::Amount,     ImportMap::Station,
            ImportMap::Invoice,   ImportMap::EndOdo,         ImportMap::Purpose,    ImportMap::Destination,
            ImportMap::Notes,     ImportMap::Economy,        ImportMap::DepartDate, ImportMap::ArriveDate,
            ImportMap::Parking,   ImportMap::TollsMaintCost, ImportMap::TripCost,   ImportMap::Distance };
    int column = 0;
    for (const int field : fields)
        map.assign(field, column++);
    return map;
}

QString when(quint32 seconds)
{
    return DeviceTime::toLocal(seconds).toString(u"yyyy-MM-dd HH:mm"_s);
}

// The fields a conversion set, in record order, leaving out those still at their defaults.
QString describe(const CVCItem &item)
{
    QStringList out { cformat("type=%d icon=%d text=%s odo=%.1f date=%s", item.entryType, item.iconIndex,
                              item.typeText->toUtf8().constData(), item.odometer,
                              when(item.entryDate).toUtf8().constData()) };
    auto text = [&](const char *name, const QString &value) {
        if (!value.isEmpty())
            out.append(QString::fromLatin1(name) + u'=' + value);
    };
    auto number = [&](const char *name, double value, const char *format) {
        if (value != 0.0)
            out.append(QString::fromLatin1(name) + u'=' + cformat(format, value));
    };
    text("notes", item.notes);
    text("measure", item.fuelMeasure);
    text("station", item.station);
    text("invoice", item.invoice);
    text("purpose", item.purpose);
    text("dest", item.destination);
    if (item.departTime)
        out.append(u"depart="_s + when(item.departTime));
    if (item.arriveTime)
        out.append(u"arrive="_s + when(item.arriveTime));
    number("amount", item.amount, "%.2f");
    number("qty", item.fuelQuantity, "%.3f");
    number("price", item.unitPrice, "%.3f");
    number("end", item.endOdometer, "%.1f");
    number("economy", item.economy, "%.2f");
    number("parking", item.parking, "%.2f");
    return out.join(u' ');
}

CsvRecord record(const QByteArray &line)
{
    QBuffer buffer;
    buffer.setData(line);
    buffer.open(QIODevice::ReadOnly);
    CsvTokenizer tokenizer(&buffer, 0);
    CsvRecord out;
    tokenizer.next(out);
    return out;
}

} // namespace

class TestCsvConversion : public QObject
{
    Q_OBJECT

private slots:
    void numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("plain") << u"12.5"_s << 12.5;
        QTest::newRow("currency and thousands") << u"$1,234.56"_s << 1234.56;
        QTest::newRow("millions") << u"1,234,567"_s << 1234567.0;
        QTest::newRow("decimal comma stops") << u"12,5"_s << 12.0;
        QTest::newRow("sign before currency") << u" -$3.50"_s << -3.5;
        QTest::newRow("accounts negative") << u"(12.00)"_s << -12.0;
        QTest::newRow("pound") << u"\u00a35"_s << 5.0;
        QTest::newRow("euro of the code page") << u"\u0080"
                                                  "9.99"_s
                                               << 9.99;
        QTest::newRow("unit after") << u"45 mi"_s << 45.0;
        QTest::newRow("second point stops") << u"1.2.3"_s << 1.2;
        QTest::newRow("words") << u"n/a"_s << 0.0;
        QTest::newRow("empty") << QString() << 0.0;
    }
    void numbers()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QCOMPARE(ImportValues::number(text), value);
    }

    void dates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("order");
        QTest::addColumn<QString>("expected");
        const int mdy = int(Order::MonthDayYear);
        const int dmy = int(Order::DayMonthYear);
        const int ymd = int(Order::YearMonthDay);
        QTest::newRow("M/d/yyyy") << u"1/5/2024"_s << mdy << u"2024-01-05"_s;
        QTest::newRow("d/M/yyyy") << u"1/5/2024"_s << dmy << u"2024-05-01"_s;
        QTest::newRow("day first in a month-first locale") << u"13/5/2024"_s << mdy << u"2024-05-13"_s;
        QTest::newRow("ISO") << u"2024-01-05"_s << dmy << u"2024-01-05"_s;
        QTest::newRow("ISO with time") << u"2024-01-05 14:05"_s << mdy << u"2024-01-05 14:05"_s;
        QTest::newRow("ISO T") << u"2024-01-05T07:30:15"_s << mdy << u"2024-01-05 07:30:15"_s;
        QTest::newRow("dots, two-digit year") << u"5.1.24"_s << dmy << u"2024-01-05"_s;
        QTest::newRow("yy/MM/dd locale") << u"24/03/05"_s << ymd << u"2024-03-05"_s;
        QTest::newRow("month abbreviation first") << u"Jan 5, 2024"_s << dmy << u"2024-01-05"_s;
        QTest::newRow("d-MMM-yy") << u"5-JAN-99"_s << mdy << u"1999-01-05"_s;
        QTest::newRow("month name") << u"05 January 2001"_s << mdy << u"2001-01-05"_s;
        QTest::newRow("Sept") << u"Sept 30 2023"_s << mdy << u"2023-09-30"_s;
        QTest::newRow("weekday passed over") << u"Mon, 4 Mar 2024"_s << mdy << u"2024-03-04"_s;
        QTest::newRow("export date and time") << u"3/5/2024 2:05 PM"_s << mdy << u"2024-03-05 14:05"_s;
        QTest::newRow("midnight AM") << u"3/5/2024 12:10 AM"_s << mdy << u"2024-03-05 00:10"_s;
        QTest::newRow("no such day") << u"2/30/2024"_s << mdy << u"invalid"_s;
        QTest::newRow("a number") << u"12.5"_s << mdy << u"invalid"_s;
        QTest::newRow("before 1970") << u"1/1/1969"_s << mdy << u"invalid"_s;
        QTest::newRow("empty") << QString() << mdy << u"invalid"_s;
    }
    void dates()
    {
        QFETCH(QString, text);
        QFETCH(int, order);
        QFETCH(QString, expected);
        const ImportValues::DateTime value = ImportValues::dateTime(text, Order(order));
        QString got = u"invalid"_s;
        if (value.isValid()) {
            got = value.date.toString(u"yyyy-MM-dd"_s);
            if (value.time.isValid())
                got += value.time.toString(value.time.second() ? u" HH:mm:ss"_s : u" HH:mm"_s);
        }
        QCOMPARE(got, expected);
    }

    void measuresAndDurations()
    {
        const QStringList words = { u"Gallons"_s, u"Imp.Gallons"_s, u"Litre"_s,        u"litres"_s, u"L"_s,
                                    u"gal"_s,     u"US gal"_s,      u"Imp. Gallons"_s, u"kg"_s };
        QStringList got;
        for (const QString &word : words)
            got.append(ImportValues::measure(word));
        QCOMPARE(got,
                 QStringList({ u"Gallons"_s, u"Imp. Gallons"_s, u"Litres"_s, u"Litres"_s, u"Litres"_s,
                               u"Gallons"_s, u"Gallons"_s, u"Imp. Gallons"_s, QString() }));
        QCOMPARE(ImportValues::durationSeconds(u"2 Days 3 Hours 15 Min"_s), 184500);
        QCOMPARE(ImportValues::durationSeconds(u"0 Days 0 Hours 0 Min"_s), 0);
        QCOMPARE(ImportValues::durationSeconds(u"3h 15m"_s), 11700);
        QCOMPARE(ImportValues::durationSeconds(u" "_s), -1);
    }

    void entryTypes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("Fuel") << u"Fuel"_s << u"fuel"_s;
        QTest::newRow("gas") << u"gas"_s << u"fuel"_s;
        QTest::newRow("TRIP") << u"TRIP"_s << u"trip"_s;
        QTest::newRow("open trip") << u"* OPEN TRIP"_s << u"trip"_s;
        QTest::newRow("business") << u"business"_s << u"trip Business"_s;
        QTest::newRow("PERSONAL") << u"PERSONAL"_s << u"trip Personal"_s;
        QTest::newRow("OIL CHANGE") << u"OIL CHANGE"_s << u"maint Oil Change"_s;
        QTest::newRow("oil") << u"oil"_s << u"maint Oil Change"_s;
        QTest::newRow("TUNE") << u"TUNE"_s << u"maint Tune-Up"_s;
        QTest::newRow("trans") << u"trans"_s << u"maint Transmission Service"_s;
        QTest::newRow("COOL") << u"COOL"_s << u"maint Coolant Flush"_s;
        QTest::newRow("Tires") << u"Tires"_s << u"maint Rotate Tires"_s;
        QTest::newRow("OTHER") << u"OTHER"_s << u"maint Maint."_s;
        QTest::newRow("Maint.") << u"Maint."_s << u"maint Maint."_s;
        QTest::newRow("reminder name kept") << u"Oil Change and Filter"_s << u"maint Oil Change and Filter"_s;
        QTest::newRow("custom reminder") << u"brakes"_s << u"maint Brakes"_s;
        QTest::newRow("own name") << u"Tire repair"_s << u"unknown Tire repair"_s;
        QTest::newRow("blank") << u" "_s << u"unknown "_s;
    }
    void entryTypes()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const CsvRecordConverter::Kind kind
            = CsvRecordConverter::classify(text, { u"Brakes"_s, QString(), QString(), QString(), QString() });
        static const char *const names[] = { "unknown", "fuel", "maint", "trip" };
        QString got = QString::fromLatin1(names[kind.known]);
        if (kind.known != CsvRecordConverter::Kind::Fuel && kind.known != CsvRecordConverter::Kind::Trip)
            got += u' ' + kind.typeText.trimmed();
        else if (!kind.purpose.isEmpty())
            got += u' ' + kind.purpose;
        QCOMPARE(got, expected);
    }

    void records_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("expected");
        QTest::newRow("fill-up")
            << QByteArray("FUEL,\"12,345\",1/5/2024,10.5,Litre,$1.459,,Shell,,,,,full tank\n")
            << u"type=0 icon=0 text=Fuel odo=12345.0 date=2024-01-05 00:00 notes=full tank measure=Litres "
               "station=Shell amount=15.32 qty=10.500 price=1.459 economy=-1.00"_s;
        QTest::newRow("quantity with its unit, no type")
            << QByteArray(",12400,2024-01-20,11 gal,,3.00,33.00\n")
            << u"type=0 icon=0 text=Fuel odo=12400.0 date=2024-01-20 00:00 measure=Gallons amount=33.00 "
               "qty=11.000 price=3.000 economy=-1.00"_s;
        QTest::newRow("price from the amount, economy given")
            << QByteArray("Gas,12500,1/25/2024,10,,,\"$30.50\",,,,,,,25.5\n")
            << u"type=0 icon=0 text=Fuel odo=12500.0 date=2024-01-25 00:00 measure=Gallons amount=30.50 "
               "qty=10.000 price=3.050 economy=25.50"_s;
        QTest::newRow("oil change")
            << QByteArray("oil,12600,\"Feb 1, 2024\",,,,$49.99,Quick Lube,INV-7\n")
            << u"type=1 icon=4 text=Oil Change odo=12600.0 date=2024-02-01 00:00 station=Quick Lube "
               "invoice=INV-7 amount=49.99"_s;
        QTest::newRow("own repair, cost in the tolls column")
            << QByteArray("Brake pads,12700,2/2/2024,,,,,,,,,,,,,,,120\n")
            << u"type=1 icon=1 text=Brake pads odo=12700.0 date=2024-02-02 00:00 amount=120.00"_s;
        QTest::newRow("tires") << QByteArray("TIRES,12800,2/3/2024\n")
                               << u"type=1 icon=17 text=Rotate Tires odo=12800.0 date=2024-02-03 00:00"_s;
        QTest::newRow("business trip")
            << QByteArray("BUSINESS,13000,3/1/2024,,,,,,,13150,,Chicago,,,3/1/2024 8:00 AM,3/1/2024 5:30 PM,"
                          "5,2.50\n")
            << u"type=2 icon=19 text=Trip odo=13000.0 date=2024-03-01 00:00 purpose=Business dest=Chicago "
               "depart=2024-03-01 08:00 arrive=2024-03-01 17:30 amount=2.50 price=75.000 end=13150.0 "
               "parking=5.00"_s;
        QTest::newRow("open trip") << QByteArray("Trip,13200,3/2/2024,,,,,,,,Client\n")
                                   << u"type=2 icon=18 text=Trip odo=13200.0 date=2024-03-02 00:00 "
                                      "purpose=Client depart=2024-03-02 00:00 end=13200.0"_s;
        QTest::newRow("trip by its distance")
            << QByteArray(",13300,3/3/2024,,,,,,,,Visit,Boston,,,,,,,,42\n")
            << u"type=2 icon=19 text=Trip odo=13300.0 date=2024-03-03 00:00 purpose=Visit dest=Boston "
               "depart=2024-03-03 00:00 price=21.000 end=13342.0"_s;
        QTest::newRow("trip cost from the file")
            << QByteArray("Trip,13400,3/4/2024,,,,,,,13500,,,,,,,5,2.50,60\n")
            << u"type=2 icon=19 text=Trip odo=13400.0 date=2024-03-04 00:00 depart=2024-03-04 00:00 "
               "amount=2.50 price=52.500 end=13500.0 parking=5.00"_s;
        QTest::newRow("no date: the program's time")
            << QByteArray("Fuel,13600,,5\n")
            << u"type=0 icon=0 text=Fuel odo=13600.0 date=2023-11-14 22:13 measure=Gallons qty=5.000 "
               "economy=-1.00"_s;
        QTest::newRow("no odometer") << QByteArray("Fuel,,1/1/2024,10\n") << u"skipped"_s;
        QTest::newRow("odometer below 1") << QByteArray("Oil,0.5,1/1/2024\n") << u"skipped"_s;
    }
    void records()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, expected);
        CsvConversionSettings settings;
        settings.costPerMile = 0.5;
        settings.now = 1700000000;
        settings.customNames[0] = u"Brakes"_s;
        const CsvRecordConverter converter(sheetMap(), settings);
        CVCItem item;
        QCOMPARE(converter.convert(record(line), &item) ? describe(item) : u"skipped"_s, expected);
    }
};

QTEST_GUILESS_MAIN(TestCsvConversion)
#include "tst_csv_conversion.moc"
