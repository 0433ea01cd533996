#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"
#include "log/VehicleLog.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray Sheet = "Date,Kind,Odo,Gallons,Cost,Where,Note\r\n"
                         "1/5/2024,Fuel,12000,10,$30.00,Shell,\r\n"
                         "1/20/2024,Fuel,12300,10,$31.00,Shell,\r\n"
                         "2/1/2024,OIL CHANGE,12350,,$49.99,Quick Lube,synthetic\r\n"
                         "2/2/2024,PERSONAL,12400,,,,\r\n"
                         ",Fuel,,5,,,no odometer\r\n";

struct Sandbox
{
    QTemporaryDir root;
    CliRunner runner { root.path() };

    Sandbox()
    {
        runner.options.createKey(u"Options"_s);
        runner.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    }
    CliResult run(const QString &command)
    {
        return runner.run(QStringList { u"--now"_s, u"2024-03-01T08:30"_s }
                          + QProcess::splitCommand(command));
    }
    QString file(const QString &name, const QByteArray &bytes)
    {
        QFile out(root.filePath(name));
        if (out.open(QIODevice::WriteOnly))
            out.write(bytes);
        return out.fileName();
    }
    EntryList log()
    {
        EntryList entries;
        LogArchive archive;
        archive.read(root.filePath(u"My Documents/Tarvane Files/MYCAR0001.vcb"_s), entries);
        return entries;
    }
};

} // namespace

class TestCliImport : public QObject
{
    Q_OBJECT

private slots:
    void mapsThenImport()
    {
        Sandbox box;
        const QString sheet = box.file(u"sheet.csv"_s, Sheet);
        CliResult result
            = box.run(u"map set Sheet odometer=Odo EntryType=kind \"Fuel Qty=4\" Date=1 Amount=Cost "
                      "Station=Where Notes=Note --file "_s
                      + sheet);
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        // Clearing one again, by number, without a file.
        result = box.run(u"map set Sheet Notes= Invoice=9"_s);
        QCOMPARE(result.exitCode, 0);
        result = box.run(u"map show Sheet"_s);
        QCOMPARE(result.out,
                 u"Sheet\n"
                 "  EntryType            2\n  Odometer             3\n  Date                 1\n"
                 "  Invoice              9\n  Amount               5\n  Station              6\n"
                 "  Fuel Qty             4\n  Measure              -\n  Fuel Price           -\n"
                 "  Economy              -\n  Fuel Cost            -\n  Purpose              -\n"
                 "  Destination          -\n  Contact              -\n  Start Odo            -\n"
                 "  End Odo              -\n  Distance             -\n  Depart Date          -\n"
                 "  Arrive Date          -\n  Duration             -\n  Tolls & Maint cost   -\n"
                 "  Parking              -\n  Trip Cost            -\n  Notes                -\n"_s);
        result = box.run(u"map show Sheet --json"_s);
        QVERIFY(result.out.contains(u"\"F1\": 3"_s));
        QVERIFY(result.out.contains(u"\"Fuel Qty\": 4"_s));
        QVERIFY(result.out.contains(u"\"Notes\": null"_s));
        result = box.run(u"map list"_s);
        QCOMPARE(result.out, u"  DefaultMap\n* Sheet\n  Tarvane CSV\n"_s);
        QCOMPARE(box.runner.preferences.value(u"ListAttributes"_s, u"Map1"_s).toString(), u"Sheet"_s);

        result = box.run(u"import "_s + sheet + u" \"My Car\""_s); // the last map: Sheet
        QCOMPARE(result.err, QString());
        QCOMPARE(result.out, u"Import Complete!\nImported 3 lines\nSkipped 1 Lines\n"_s);
        QCOMPARE(result.exitCode, 0);
        const EntryList entries = box.log();
        QStringList got;
        for (const CVCItem &item : entries)
            got.append(u"%1 %2 %3"_s.arg(item.entryType).arg(item.typeText).arg(item.odometer));
        QCOMPARE(got,
                 QStringList(
                     { u"0 Fuel 12000"_s, u"0 Fuel 12300"_s, u"1 Oil Change 12350"_s, u"2 Trip 12400"_s }));
        QVERIFY(qAbs(entries[1].economy - 30.0) < 1e-6); // 300 miles on 10 gallons, as the fuel form does
        QCOMPARE(entries[3].purpose, u"Personal"_s);
        // The oil change resets its reminder.
        EntryList scanned = entries;
        QCOMPARE(VehicleLog::scanEntries(scanned, LogScanSettings()).lastServiceOdometer[0], 12350.0);
    }

    void builtInMap()
    {
        Sandbox box;
        const CliResult result
            = box.run(u"import \"" TARVANE_TEST_DATA "/exchange/round-trip/Truck.csv\" --map "
                      "\"Tarvane CSV\""_s);
        QCOMPARE(result.err, QString());
        QCOMPARE(result.out, u"Import Complete!\nImported 4 lines\nSkipped 0 Lines\n"_s);
        QCOMPARE(box.log().size(), size_t(6));
    }

    void errors_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("err");
        QTest::newRow("odometer not mapped") << u"import %1 --map DefaultMap"_s << 1
                                             << u"WARNING! The Odometer field must be mapped.  All imported "
                                                u"data must have a mileage entry to be "
                                                "valid.\n"_s;
        QTest::newRow("no file") << u"import %1.missing --map \"Tarvane CSV\""_s << 1
                                 << u"ERROR 401: Error opening CSV file\n"_s;
        QTest::newRow("no map") << u"import %1 --map Nope"_s << 1 << u"No import map named \"Nope\".\n"_s;
        QTest::newRow("show unknown") << u"map show Nope"_s << 1 << u"No import map named \"Nope\".\n"_s;
        QTest::newRow("bad field")
            << u"map set M Fuel=3"_s << 2
            << u"Not a FIELD=COLUMN of the import fields: Fuel=3\nFields: EntryType, "_s;
        QTest::newRow("bad title") << u"map set M Odometer=Miles --file %1"_s << 1
                                   << u"No column \"Miles\" in the file's first line.\n"_s;
        QTest::newRow("reserved name")
            << u"map set Today Odometer=1"_s << 1 << u"\"Today\" can't name a map"_s;
        QTest::newRow("no command") << u"map"_s << 2 << u"Usage: tarvane-cli map list"_s;
    }
    void errors()
    {
        QFETCH(QString, command);
        QFETCH(int, exitCode);
        QFETCH(QString, err);
        Sandbox box;
        const QString sheet = box.file(u"sheet.csv"_s, Sheet);
        const CliResult result = box.run(command.contains(u"%1"_s) ? command.arg(sheet) : command);
        QVERIFY2(result.err.startsWith(err), qPrintable(result.err));
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY(box.log().empty());
    }
};

QTEST_GUILESS_MAIN(TestCliImport)
#include "tst_cli_import.moc"
