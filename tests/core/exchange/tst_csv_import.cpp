#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "core/files_helper.h"
#include "exchange/CsvImport.h"
#include "log/LogArchive.h"
#include "log/VehicleLog.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

quint32 day(int year, int month, int dayOfMonth, int hour = 0, int minute = 0)
{
    return DeviceTime::fromLocal(QDateTime(QDate(year, month, dayOfMonth), QTime(hour, minute)));
}

CVCItem fuel(double odometer, quint32 date, const QString &station, double quantity, double price,
             double amount, double economy, const QString &notes)
{
    CVCItem item;
    item.typeText = u"Fuel"_s;
    item.odometer = odometer;
    item.entryDate = date;
    item.station = station;
    item.fuelMeasure = u"Gallons"_s;
    item.fuelQuantity = quantity;
    item.unitPrice = price;
    item.amount = amount;
    item.economy = economy;
    item.notes = notes;
    return item;
}

CVCItem repair(double odometer, quint32 date, const QString &name, int icon, const QString &invoice,
               double amount, const QString &location, const QString &notes)
{
    CVCItem item;
    item.entryType = CVCItem::Maintenance;
    item.iconIndex = icon;
    item.typeText = name;
    item.odometer = odometer;
    item.entryDate = date;
    item.invoice = invoice;
    item.amount = amount;
    item.station = location;
    item.notes = notes;
    return item;
}

CVCItem trip(double start, double end, quint32 depart, quint32 arrive, const QString &purpose,
             const QString &destination, const QString &contact, double tolls, double parking, double mileage,
             const QString &notes)
{
    CVCItem item;
    item.entryType = CVCItem::Trip;
    item.iconIndex = end > start ? 19 : 18;
    item.typeText = u"Trip"_s;
    item.odometer = start;
    item.endOdometer = end;
    item.entryDate
        = day(DeviceTime::toLocal(depart).date().year(), DeviceTime::toLocal(depart).date().month(),
              DeviceTime::toLocal(depart).date().day());
    item.departTime = depart;
    item.arriveTime = arrive;
    item.purpose = purpose;
    item.destination = destination;
    item.contact = contact;
    item.amount = tolls;
    item.parking = parking;
    item.unitPrice = mileage;
    item.notes = notes;
    return item;
}

QByteArray header()
{
    return "Type,Odometer,Date,Qty,Notes\r\n";
}

ImportMap smallMap()
{
    ImportMap map(u"Small"_s);
    map.assign(ImportMap::EntryType, 0);
    map.assign(ImportMap::Odometer, 1);
    map.assign(ImportMap::Date, 2);
    map.assign(ImportMap::FuelQty, 3);
    map.assign(ImportMap::Notes, 4);
    return map;
}

} // namespace

class TestCsvImport : public QObject
{
    Q_OBJECT

private slots:
    void roundTripThroughTheBuiltInMap()
    {
        QTemporaryDir dir;
        const QString folder = dir.path() + u'/';
        CsvConversionSettings settings;
        settings.costPerMile = 0.345;
        settings.now = day(2024, 4, 1);
        VehicleLog log;
        RecordingReporter reporter;
        CsvImport import(ImportMap::builtIn(), settings);
        QVERIFY(import.begin(QStringLiteral(TARVANE_TEST_DATA "/exchange/round-trip/Truck.csv"), reporter));
        QVERIFY(import.finish(log, folder, u"TRUCK"_s, reporter));
        QCOMPARE(reporter.texts(), QStringList { u"Import Complete!\nImported 4 lines\nSkipped 0 Lines"_s });

        const EntryList expected = {
            fuel(12000, day(2024, 1, 5), u"Shell"_s, 10.5, 3.199, 33.59, 0.0, u"first fill"_s),
            fuel(12300, day(2024, 1, 20), u"Costco"_s, 11.25, 2.999, 33.74, 26.667, QString()),
            repair(12350, day(2024, 2, 1), u"Oil Change"_s, 4, u"INV-7"_s, 49.99, u"Quick Lube"_s,
                   u"synthetic"_s),
            repair(12400, day(2024, 2, 2), u"Brake pads"_s, 1, QString(), 120.0, u"Midas"_s, u"front pads"_s),
            trip(12500, 12650, day(2024, 3, 1, 8, 0), day(2024, 3, 1, 17, 30), u"Client visit"_s,
                 u"Chicago"_s, u"Ann Lee"_s, 2.5, 5.0, 51.75, QString()),
            trip(12700, 12700, day(2024, 3, 2, 9, 15), day(2024, 3, 2, 9, 15), u"Delivery"_s, u"Boston"_s,
                 QString(), 0.0, 0.0, 0.0, u"back door"_s),
        };
        QCOMPARE(log.entries().size(), expected.size());
        for (size_t i = 0; i < expected.size(); ++i)
            QCOMPARE(log.entries()[i], expected[i]);
        // Saved once, as the list stands.
        EntryList onDisk;
        LogArchive archive;
        QVERIFY(archive.read(folder + u"TRUCK.vcb"_s, onDisk));
        QVERIFY(onDisk == expected);
    }

    void placedByOdometerWithEconomies()
    {
        EntryList log
            = { fuel(12000, 1, u"A"_s, 10, 3, 30, 25, QString()), repair(12200, 2, u"B"_s, 1, {}, 0, {}, {}),
                repair(12500, 3, u"C"_s, 1, {}, 0, {}, {}) };
        EntryList imported
            = { repair(12300, 4, u"x"_s, 1, {}, 0, {}, {}), repair(12200, 5, u"y"_s, 1, {}, 0, {}, {}),
                repair(11000, 6, u"z"_s, 1, {}, 0, {}, {}),
                fuel(12300, 7, u"w"_s, 10, 3, 30, CsvRecordConverter::EconomyToCompute, {}) };
        EntryList merged = CsvImport::merge(log, imported);
        QStringList order;
        for (const CVCItem &item : merged)
            order.append(item.typeText == u"Fuel"_s ? item.station : item.typeText);
        QCOMPARE(order.join(u' '), u"z A B y x w C"_s);

        CsvConversionSettings settings;
        settings.startOdometer = 11000;
        CsvImport::computeEconomies(merged, settings);
        // 300 miles on 10 US gallons since the full fill-up at 12000.
        QVERIFY(qAbs(merged[5].economy - 30.0) < 1e-9);
        QCOMPARE(merged[1].economy, 25.0);
    }

    void aBadLineKeepsWhatCameBefore_data()
    {
        QTest::addColumn<QByteArray>("badLine");
        QTest::addColumn<QString>("message");
        QTest::newRow("field too long") << QByteArray("Fuel,12200," + QByteArray(130, 'x') + "\r\n")
                                        << u"Error 3221:\nCSV data format bad,\nPlease refer to manual under "
                                           "Importing CSV files."_s;
        QTest::newRow("too many fields")
            << QByteArray("Fuel,12200" + QByteArray(28, ',') + "\r\n")
            << u"Error!\nToo many fields in CSV line.\nThis error is reported when "
               "the data can not be imported properly.\nPlease refer to the manual "
               "under importing data for a solution to this error."_s;
    }
    void aBadLineKeepsWhatCameBefore()
    {
        QFETCH(QByteArray, badLine);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const QString file = dir.filePath(u"in.csv"_s);
        TestFiles::put(file,
                       header() + "Fuel,12000,1/5/2024,10,a\r\n,,,\r\nOil,12100,1/6/2024,,b\r\n" + badLine
                           + "Fuel,12300,1/8/2024,10,c\r\n");
        VehicleLog log;
        RecordingReporter reporter;
        CsvImport import(smallMap(), CsvConversionSettings());
        QVERIFY(import.begin(file, reporter));
        QVERIFY(!import.finish(log, dir.path() + u'/', u"V"_s, reporter));
        QCOMPARE(reporter.texts(),
                 QStringList({ message
                                   + u"\nThe import stopped at line 5 of the file; the lines before it are "
                                     "imported."_s,
                               u"Import Complete!\nImported 1 lines\nSkipped 1 Lines"_s }));
        EntryList onDisk;
        LogArchive archive;
        QVERIFY(archive.read(dir.filePath(u"V.vcb"_s), onDisk));
        QCOMPARE(onDisk.size(), size_t(2));
        QCOMPARE(onDisk[1].typeText, u"Oil Change"_s);
    }

    void refusals()
    {
        QTemporaryDir dir;
        RecordingReporter reporter;
        ImportMap noOdometer = smallMap();
        noOdometer.clear(ImportMap::Odometer);
        QVERIFY(!CsvImport(noOdometer, {}).begin(dir.filePath(u"none.csv"_s), reporter));
        QVERIFY(!CsvImport(smallMap(), {}).begin(dir.filePath(u"none.csv"_s), reporter));
        TestFiles::put(dir.filePath(u"one.csv"_s), "Odometer\r\n12000\r\n");
        QVERIFY(!CsvImport(smallMap(), {}).begin(dir.filePath(u"one.csv"_s), reporter));
        QCOMPARE(reporter.texts().size(), 3);
        QCOMPARE(
            reporter.texts()[0],
            u"WARNING! The Odometer field must be mapped.  All imported data must have a mileage entry to be "
            "valid."_s);
        QCOMPARE(reporter.texts()[1], u"ERROR 401: Error opening CSV file"_s);
        QVERIFY(reporter.texts()[2].startsWith(u"ERROR 2201: "_s));
    }

    void aFailedSaveChangesNothing()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(u"in.csv"_s);
        TestFiles::put(file, header() + "Fuel,12000,1/5/2024,10,a\r\n");
        // A folder where the log file should be: nothing can be written there.
        QVERIFY(QDir(dir.path()).mkdir(u"V.vcb"_s));
        VehicleLog log;
        log.setEntries({ repair(11000, 1, u"Old"_s, 1, {}, 0, {}, {}) });
        RecordingReporter reporter;
        CsvImport import(smallMap(), CsvConversionSettings());
        QVERIFY(import.begin(file, reporter));
        QVERIFY(!import.finish(log, dir.path() + u'/', u"V"_s, reporter));
        QCOMPARE(reporter.texts(), QStringList { u"Save ERROR 205!\nUnable save database"_s });
        QCOMPARE(log.entries().size(), size_t(1));
        QVERIFY(QFileInfo(dir.filePath(u"V.vcb"_s)).isDir());
    }
};

QTEST_GUILESS_MAIN(TestCsvImport)
#include "tst_csv_import.moc"
