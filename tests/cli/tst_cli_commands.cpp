#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

using CliFiles::readAll;
using CliFiles::snapshot;

namespace {

// Midnight UTC of the day.
quint32 utc(int y, int m, int d)
{
    return TestFiles::at(y, m, d, 0);
}

CVCItem repair(double odometer, const QString &type, quint32 date)
{
    CVCItem item;
    item.entryType = CVCItem::Maintenance;
    item.iconIndex = 4;
    item.odometer = odometer;
    item.typeText = type;
    item.entryDate = date;
    return item;
}

CVCItem openTrip(double odometer, quint32 date)
{
    CVCItem item;
    item.entryType = CVCItem::Trip;
    item.iconIndex = 18;
    item.odometer = odometer;
    item.endOdometer = odometer;
    item.typeText = u"Trip"_s;
    item.entryDate = date;
    return item;
}

CVCItem fuel(double odometer, double quantity, double price, double economy, quint32 date)
{
    CVCItem item;
    item.entryType = CVCItem::Fuel;
    item.odometer = odometer;
    item.typeText = u"Fuel"_s;
    item.fuelMeasure = u"Gallons"_s;
    item.fuelQuantity = quantity;
    item.unitPrice = price;
    item.amount = quantity * price;
    item.economy = economy;
    item.entryDate = date;
    return item;
}

} // namespace

class TestCliCommands : public QObject
{
    Q_OBJECT

private slots:
    void firstStartCreatesDataFolderFromTemplates();
    void missingListsKeepsTheUsersVehicles();
    void addToNamedVehicleOpensOnlyThat();
    void statusShowsTheWholeReminderList();
    void readingCommandsChangeNothing_data();
    void readingCommandsChangeNothing();
    void logOfDamagedFileFails();
    void unknownVehicleAndUsage_data();
    void unknownVehicleAndUsage();
    void backupAndRestore();
    void reconcileRecomputesAndSaves();
    void realBinaryRuns();
};

void TestCliCommands::missingListsKeepsTheUsersVehicles()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    QCOMPARE(cli.run({ u"vehicles"_s }).exitCode, 0);
    // After any first run of the program the options name the data folder as the install folder.
    cli.options.createKey(u"Options"_s);
    cli.options.setValue(u"Options"_s, u"Path"_s, u"\\My Documents\\Tarvane Files\\"_s);
    {
        IniFile ini;
        QVERIFY(ini.Load(cli.dataFolder() + u"Velcora.ini"_s));
        ini.SetString(u"VehicleList"_s, u"Vehicle0"_s, u"Truck"_s);
        ini.SetString(u"Truck"_s, u"VIN"_s, u"TRUCK1"_s);
    }
    QVERIFY(QFile::remove(cli.dataFolder() + u"Lists.ini"_s));

    const CliResult r = cli.run({ u"vehicles"_s });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.out, u"Truck\tTRUCK1\n"_s);
    QCOMPARE(readAll(cli.dataFolder() + u"Lists.ini"_s), readAll(u":/install/Lists.ini"_s));
}

void TestCliCommands::addToNamedVehicleOpensOnlyThat()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    QCOMPARE(cli.run({ u"vehicles"_s }).exitCode, 0);
    {
        IniFile ini;
        QVERIFY(ini.Load(cli.dataFolder() + u"Velcora.ini"_s));
        ini.SetString(u"VehicleList"_s, u"Vehicle1"_s, u"Car B"_s);
        ini.SetString(u"Car B"_s, u"VIN"_s, u"CARB"_s);
        ini.SetString(u"Car B"_s, u"OilDistance"_s, u"1000"_s);
    }
    // My Car was used last and its log is damaged.
    cli.options.createKey(u"Options"_s);
    cli.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    const QByteArray damaged("\x05\x00", 2);
    CliFiles::put(cli.dataFolder() + u"MYCAR0001.vcb"_s, damaged);

    const CliResult r = cli.run(
        { u"add"_s, u"repair"_s, u"Car B"_s, u"--odometer"_s, u"2000"_s, u"--type"_s, u"Brakes"_s });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(readAll(cli.dataFolder() + u"MYCAR0001.vcb"_s), damaged);
    QCOMPARE(QDir(cli.dataFolder()).entryList(QDir::Files),
             (QStringList { u"CARB.vcb"_s, u"Lists.ini"_s, u"MYCAR0001.vcb"_s, u"Velcora.ini"_s }));
    // Car B is the current vehicle now, with its own odometer and the oil change due at 1000.
    QCOMPARE(cli.options.value(u"Options"_s, u"Name"_s).toString(), u"Car B"_s);
    QCOMPARE(cli.options.value(u"Options"_s, u"LastMileage"_s).toUInt(), 2000u);
    QCOMPARE(cli.options.value(u"Options"_s, u"Reminder1"_s).toUInt(), 1000u);
}

void TestCliCommands::firstStartCreatesDataFolderFromTemplates()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    const CliResult r = cli.run({ u"vehicles"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out, u"My Car\tMYCAR0001\n"_s);
    // No options yet, but a reading command corrects nothing, so it says nothing about them.
    QCOMPARE(r.err, QString());
    QCOMPARE(readAll(cli.dataFolder() + u"Velcora.ini"_s), readAll(u":/install/Velcora.ini"_s));
    QCOMPARE(readAll(cli.dataFolder() + u"Lists.ini"_s), readAll(u":/install/Lists.ini"_s));
    QVERIFY(QFileInfo(cli.dataFolder() + u"Velcora.ini"_s).isWritable());
    // Reading commands create no log.
    QCOMPARE(QDir(cli.dataFolder()).entryList(QDir::Files),
             (QStringList { u"Lists.ini"_s, u"Velcora.ini"_s }));

    // The template's vehicle as JSON: the list's fields, then its whole profile.
    const QJsonObject car { { u"name"_s, u"My Car"_s },  { u"VIN"_s, u"MYCAR0001"_s },
                            { u"Make"_s, u"Generic"_s }, { u"Model"_s, u"Sedan"_s },
                            { u"Year"_s, 2004 },         { u"Plate"_s, u"ABC123"_s } };
    QCOMPARE(QJsonDocument::fromJson(cli.run({ u"vehicles"_s, u"--json"_s }).out.toUtf8()).array(),
             QJsonArray { car });
    const CliResult profile = cli.run({ u"profile"_s, u"My Car"_s, u"--json"_s });
    QCOMPARE(profile.exitCode, 0);
    const QJsonObject p = QJsonDocument::fromJson(profile.out.toUtf8()).object();
    // Oil every 5000 miles or 180 days, tires every 7500, 0.500 a mile; units as their codes: miles,
    // MPG, US gallons.
    QStringList values;
    for (const char *key : { "OilDistance", "OilDays", "TireDistance", "CostPerMile", "Distance", "Econo",
                             "Liquid", "Directory" })
        values.append(p.value(QString::fromLatin1(key)).toVariant().toString());
    QCOMPARE(values,
             (QStringList { u"5000"_s, u"180"_s, u"7500"_s, u"0.5"_s, u"0"_s, u"0"_s, u"0"_s,
                            u"\\My Documents\\Tarvane Files\\"_s }));
    QVERIFY(p.contains(u"LastR9Date"_s));
    QVERIFY(p.contains(u"Start Odometer"_s));
    // 1 name + 38 profile keys + SetupDate + 20 last-service keys.
    QCOMPARE(p.size(), 1 + 6 + 1 + 10 + 15 + 4 + 1 + 20);
}

void TestCliCommands::statusShowsTheWholeReminderList()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    // Oil changed at 10000 on Jan 1st, an open trip at 16000; now is Nov 21st: 324 days later.
    cli.prepare({ repair(10000, u"Oil Change"_s, utc(2026, 1, 1)), fuel(15700, 10, 3, 30, utc(2026, 5, 1)),
                  openTrip(16000, utc(2026, 6, 1)) },
                false);
    const CliResult r = cli.run({ u"--now"_s, u"2026-11-21"_s, u"status"_s, u"My Car"_s, u"--json"_s });
    QCOMPARE(r.exitCode, 0);
    // Oil: 324 - 180 = 144 days and 16000 - 10000 - 5000 = 1000 miles past due; tires never
    // rotated: 16000 - 7500 = 8500. Each line is added on top of the ones before it.
    const auto line = [](const QString &text, int icon) {
        return QJsonObject { { u"text"_s, text }, { u"icon"_s, icon } };
    };
    const QJsonObject expected { { u"vehicle"_s, u"My Car"_s },
                                 { u"VIN"_s, u"MYCAR0001"_s },
                                 { u"lastOdometer"_s, 16000 },
                                 { u"openTrips"_s, 1 },
                                 { u"currentEconomy"_s, 30 },
                                 { u"averageEconomy"_s, 30 },
                                 { u"economyLine"_s, u"Fuel Economy: 30.00 - 30.00 Avg"_s },
                                 { u"openTripsText"_s, u"There are 1 open trips."_s },
                                 { u"reminders"_s,
                                   QJsonArray { line(u"Found 1    open trip"_s, 3),
                                                line(u"Tire rotate OVERDUE by: 8500    Miles"_s, 4),
                                                line(u"Oil change OVERDUE by: 1000    Miles"_s, 4),
                                                line(u"Oil change OVERDUE by: 144  days"_s, 5),
                                                line(u"Last Backup: Unknown"_s, 6) } } };
    QCOMPARE(QJsonDocument::fromJson(r.out.toUtf8()).object(), expected);

    const CliResult plain = cli.run({ u"--now"_s, u"2026-11-21"_s, u"status"_s, u"My Car"_s });
    QCOMPARE(plain.out,
             u"Vehicle: My Car (VIN MYCAR0001)\nLast odometer: 16000\nThere are 1 open trips.\n"
             "Fuel Economy: 30.00 - 30.00 Avg\nReminders:\n  [3] Found 1    open trip\n"
             "  [4] Tire rotate OVERDUE by: 8500    Miles\n  [4] Oil change OVERDUE by: 1000    Miles\n"
             "  [5] Oil change OVERDUE by: 144  days\n  [6] Last Backup: Unknown\n"_s);
}

void TestCliCommands::readingCommandsChangeNothing_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("vehicles") << QStringList { u"vehicles"_s, u"--json"_s };
    QTest::newRow("profile") << QStringList { u"profile"_s, u"My Car"_s };
    QTest::newRow("log") << QStringList { u"log"_s, u"My Car"_s, u"--json"_s };
    QTest::newRow("status") << QStringList { u"status"_s, u"My Car"_s };
    QTest::newRow("status of current vehicle") << QStringList { u"status"_s };
}

void TestCliCommands::readingCommandsChangeNothing()
{
    QFETCH(QStringList, arguments);
    QTemporaryDir root;
    CliRunner cli(root.path());
    cli.prepare({ repair(10000, u"Oil Change"_s, utc(2026, 1, 1)) }, false);
    const auto before = snapshot(root.path());
    const CliResult r = cli.run(arguments);
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(snapshot(root.path()), before);
    QVERIFY(!cli.options.keyExists(u"Options"_s));
    QVERIFY(cli.preferences.valueNames(u"Today"_s).isEmpty());
}

void TestCliCommands::logOfDamagedFileFails()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    cli.prepare({}, false);
    const QString path = cli.dataFolder() + u"MYCAR0001.vcb"_s;
    CliFiles::put(path, QByteArray("\x02\x00\xff\xff\x01\x00\x07\x00CVC", 11));
    const auto before = snapshot(root.path());
    const CliResult r = cli.run({ u"log"_s, u"My Car"_s });
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(path), qPrintable(r.err));
    QCOMPARE(r.out, QString());
    // A reading command leaves even a damaged file where it is.
    QCOMPARE(snapshot(root.path()), before);
}

void TestCliCommands::unknownVehicleAndUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("errorStart");
    QTest::newRow("unknown vehicle") << QStringList { u"status"_s, u"Bus"_s } << 1
                                     << u"No vehicle named \"Bus\" in the vehicle list."_s;
    QTest::newRow("backup without folder")
        << QStringList { u"backup"_s } << 2 << u"Usage: tarvane-cli backup"_s;
    QTest::newRow("restore without file")
        << QStringList { u"restore"_s } << 2 << u"Usage: tarvane-cli restore"_s;
    QTest::newRow("two vehicles") << QStringList { u"log"_s, u"A"_s, u"B"_s } << 2
                                  << u"Too many arguments."_s;
    QTest::newRow("unknown option") << QStringList { u"vehicles"_s, u"--xml"_s } << 2 << u"Unknown option"_s;
    QTest::newRow("unknown command") << QStringList { u"fly"_s } << 2 << u"Unknown command: fly"_s;
    QTest::newRow("bad --now") << QStringList { u"--now"_s, u"yesterday"_s, u"status"_s } << 2
                               << u"Invalid --now value: yesterday"_s;
}

void TestCliCommands::unknownVehicleAndUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, errorStart);
    QTemporaryDir root;
    CliRunner cli(root.path());
    cli.options.createKey(u"Options"_s); // no "REGKEY_OPTIONS" line in front of the error
    const CliResult r = cli.run(arguments);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY2(r.err.startsWith(errorStart), qPrintable(r.err));
}

void TestCliCommands::backupAndRestore()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    cli.options.createKey(u"Options"_s);
    cli.prepare({ repair(10000, u"Oil Change"_s, utc(2026, 1, 1)) }, false);
    const QString vcb = cli.dataFolder() + u"MYCAR0001.vcb"_s;
    const QString folder = root.path() + u"/Tarvane Backup"_s;
    QVERIFY(QDir().mkpath(folder));

    CliResult r = cli.run({ u"backup"_s, u"My Car"_s, u"--to"_s, folder });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out, u"Current vehicle backed up to\n"_s + folder + u'\n');
    QCOMPARE(r.err, QString());
    const QString bak = folder + u"/MYCAR0001.bak"_s;
    QCOMPARE(readAll(bak), readAll(vcb));

    // A backup that is not there: the message, and the log as it was.
    r = cli.run({ u"restore"_s, u"My Car"_s, u"--from"_s, root.path() + u"/none.bak"_s });
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(r.out, QString());
    QVERIFY2(r.err.startsWith(u"ERROR 106! Unable to restore My Car"_s), qPrintable(r.err));
    QCOMPARE(readAll(vcb), readAll(bak));

    // Any backup can be restored into the vehicle: the list is replaced, not merged.
    const EntryList other { openTrip(20000, utc(2026, 2, 2)), openTrip(20500, utc(2026, 2, 3)) };
    const QString otherFile = root.path() + u"/other.bak"_s;
    QVERIFY(LogArchive().write(otherFile, other));
    r = cli.run({ u"restore"_s, u"My Car"_s, u"--from"_s, otherFile });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out, u"Backup restored for My Car\n"_s);
    // Saved at once, as read: the vehicle's log is now the backup, byte for byte.
    QCOMPARE(readAll(vcb), readAll(otherFile));
}

void TestCliCommands::reconcileRecomputesAndSaves()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    cli.options.createKey(u"Options"_s);
    // The second fill-up: 300 miles on 10 US gallons = 30 MPG, stored wrongly as 12.
    CVCItem first = fuel(1000, 10, 3, 0, utc(2026, 3, 1));
    CVCItem second = fuel(1300, 10, 3, 12, utc(2026, 3, 8));
    cli.prepare({ first, second }, false);
    const CliResult r = cli.run({ u"reconcile"_s, u"My Car"_s });
    QCOMPARE(r.exitCode, 0);
    EntryList saved;
    QVERIFY(LogArchive().read(cli.dataFolder() + u"MYCAR0001.vcb"_s, saved));
    QCOMPARE(saved.size(), size_t(2));
    QVERIFY2(qAbs(saved[1].economy - 30.0) < 1e-9, qPrintable(QString::number(saved[1].economy, 'g', 17)));
    QCOMPARE(r.out, u"Reconciled 2 fuel entries; highest odometer 1300\n"_s);
}

void TestCliCommands::realBinaryRuns()
{
    QTemporaryDir root;
    QProcess process;
    process.start(QStringLiteral(TARVANE_BINARY_DIR "/src/cli/tarvane-cli"),
                  { u"--root"_s, root.path(), u"vehicles"_s });
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(), QByteArray("My Car\tMYCAR0001\n"));
    QVERIFY(QFile::exists(root.path() + u"/My Documents/Tarvane Files/Velcora.ini"_s));
    QVERIFY(QFile::exists(root.path() + u"/Registry"_s));
}

QTEST_GUILESS_MAIN(TestCliCommands)
#include "tst_cli_commands.moc"
