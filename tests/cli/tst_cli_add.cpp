#include <QtTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

namespace {

// --now of every run: 2024-03-01 08:30 UTC.
constexpr quint32 Now = 1709281800;

const QString FuelNote = u"This entry has an odometer less than the last entry.\nData should be entered in "
                         "numerical order by odometer.  See \"Inserting data\" in the manual."_s;
const QString RepairNote = u"This entry has an odometer reading less than the last entry.\nData should be "
                           "entered in numerical order by odometer.  See \"Inserting data\" in the manual."_s;

using Commands = QList<QStringList>;

CVCItem fuel(double odometer, double quantity, double price, double amount)
{
    CVCItem item;
    item.odometer = odometer;
    item.entryDate = Now;
    item.typeText = u"Fuel"_s;
    item.fuelMeasure = u"Gallons"_s;
    item.fuelQuantity = quantity;
    item.unitPrice = price;
    item.amount = amount;
    return item;
}

// The options as a previous run leaves them, with the template's vehicle selected.
void selectTemplateVehicle(CliRunner &runner)
{
    runner.options.createKey(u"Options"_s);
    runner.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
}

} // namespace

class TestCliAdd : public QObject
{
    Q_OBJECT

private slots:
    void addsEntry_data();
    void addsEntry();
    void refused_data();
    void refused();
};

// Each row runs its commands on a fresh sandbox with the template vehicle "My Car" (miles, US
// gallons, MPG, start odometer 0, CostPerMile 0.500) and checks the last record of its log whole.
void TestCliAdd::addsEntry_data()
{
    QTest::addColumn<Commands>("commands");
    QTest::addColumn<CVCItem>("expected");
    QTest::addColumn<QString>("economy"); // "%.2f"
    QTest::addColumn<QString>("err");

    const QStringList firstFill = { u"add"_s,        u"fuel"_s, u"--odometer"_s, u"12000"_s,
                                    u"--quantity"_s, u"12"_s,   u"--price"_s,    u"3"_s };

    QTest::newRow("first fill-up") << Commands { firstFill } << fuel(12000, 12, 3, 36) << u"0.00"_s
                                   << QString();

    CVCItem second = fuel(12300, 10, 3.459, 34.59);
    second.station = u"Corner Station"_s;
    second.temperature = 21;
    second.notes = u"road trip"_s;
    QTest::newRow("fill-up with economy")
        << Commands { firstFill,
                      { u"add"_s, u"fuel"_s, u"My Car"_s, u"--odometer"_s, u"12300"_s, u"--quantity"_s,
                        u"10"_s, u"--price"_s, u"3.459"_s, u"--station"_s, u"Corner Station"_s, u"--temp"_s,
                        u"21"_s, u"--note"_s, u"road trip"_s } }
        << second << u"30.00"_s << QString();

    // 300 miles on 40 litres under MPG (US gallons for litres): 28.39. The date keeps the time.
    CVCItem litres = fuel(12300, 40, 1.25, 50);
    litres.fuelMeasure = u"Litres"_s;
    litres.notFull = 1;
    litres.entryDate = 1708417800;
    QTest::newRow("litres, not full, dated") << Commands {
        firstFill,
        { u"add"_s, u"fuel"_s, u"--odometer"_s, u"12300"_s, u"--unit"_s, u"Litres"_s, u"--quantity"_s,
          u"40"_s, u"--price"_s, u"1.25"_s, u"--not-full"_s, u"--date"_s, u"2024-02-20"_s }
    } << litres << u"28.39"_s << QString();

    CVCItem lower = fuel(11900, 5, 2, 10);
    QTest::newRow("fuel below the last odometer") << Commands {
        firstFill,
        { u"add"_s, u"fuel"_s, u"--odometer"_s, u"11900"_s, u"--quantity"_s, u"5"_s, u"--price"_s, u"2"_s }
    } << lower << u"0.00"_s << FuelNote + u'\n';

    CVCItem oil;
    oil.iconIndex = 4;
    oil.entryType = 1;
    oil.odometer = 12100;
    oil.entryDate = Now;
    oil.typeText = u"Oil Change"_s;
    oil.station = u"Quick Lube"_s;
    oil.invoice = u"A-17"_s;
    oil.amount = 39.95;
    QTest::newRow("oil change") << Commands {
        { u"add"_s, u"repair"_s, u"--odometer"_s, u"12100"_s, u"--type"_s, u"Oil Change"_s, u"--cost"_s,
          u"39.95"_s, u"--invoice"_s, u"A-17"_s, u"--location"_s, u"Quick Lube"_s }
    } << oil << u"0.00"_s << QString();

    CVCItem brakes;
    brakes.iconIndex = 12;
    brakes.entryType = 1;
    brakes.odometer = 11000;
    brakes.entryDate = 1708450800;
    brakes.typeText = u"Brakes"_s;
    brakes.notes = u"pads"_s;
    QTest::newRow("custom repair with I5, lower odometer")
        << Commands { firstFill,
                      { u"add"_s, u"repair"_s, u"--odometer"_s, u"11000"_s, u"--type"_s, u"Brakes"_s,
                        u"--icon"_s, u"5"_s, u"--date"_s, u"2024-02-20T17:40"_s, u"--note"_s, u"pads"_s } }
        << brakes << u"0.00"_s << RepairNote + u'\n';

    // 150 miles at 0.500.
    CVCItem closed;
    closed.iconIndex = 19;
    closed.entryType = 2;
    closed.odometer = 12000;
    closed.entryDate = 1708413300;
    closed.typeText = u"Trip"_s;
    closed.purpose = u"Sales"_s;
    closed.destination = u"Springfield"_s;
    closed.contact = u"Acme"_s;
    closed.departTime = 1708413300;
    closed.arriveTime = 1708450800;
    closed.amount = 4.5;
    closed.unitPrice = 75;
    closed.endOdometer = 12150;
    closed.parking = 12;
    QTest::newRow("closed trip") << Commands { { u"add"_s,           u"trip"_s,
                                                 u"--start"_s,       u"12000"_s,
                                                 u"--end"_s,         u"12150"_s,
                                                 u"--depart"_s,      u"2024-02-20T07:15"_s,
                                                 u"--arrive"_s,      u"2024-02-20T17:40"_s,
                                                 u"--purpose"_s,     u"Sales"_s,
                                                 u"--destination"_s, u"Springfield"_s,
                                                 u"--contact"_s,     u"Acme"_s,
                                                 u"--tolls"_s,       u"4.5"_s,
                                                 u"--parking"_s,     u"12"_s } }
                                 << closed << u"0.00"_s << QString();

    CVCItem open;
    open.iconIndex = 18;
    open.entryType = 2;
    open.odometer = 12000;
    open.entryDate = Now;
    open.typeText = u"Trip"_s;
    open.purpose = u"Select"_s;
    open.destination = QString(40, u'D');
    open.contact = u"None"_s;
    open.departTime = Now;
    open.arriveTime = Now;
    open.endOdometer = 12000;
    QTest::newRow("open trip, defaults, long destination") << Commands {
        { u"add"_s, u"trip"_s, u"--start"_s, u"12000"_s, u"--destination"_s, QString(45, u'D') }
    } << open << u"0.00"_s << QString();
}

void TestCliAdd::addsEntry()
{
    QFETCH(Commands, commands);
    QFETCH(CVCItem, expected);
    QFETCH(QString, economy);
    QFETCH(QString, err);

    QTemporaryDir root;
    QVERIFY(root.isValid());
    CliRunner runner(root.path());
    selectTemplateVehicle(runner);
    CliResult result;
    for (const QStringList &command : commands) {
        result = runner.run(QStringList { u"--now"_s, u"2024-03-01T08:30"_s } + command);
        QCOMPARE(result.exitCode, 0);
    }
    QCOMPARE(result.err, err);

    EntryList entries;
    LogArchive archive;
    QVERIFY(archive.read(root.filePath(u"My Documents/Tarvane Files/MYCAR0001.vcb"_s), entries));
    QCOMPARE(entries.size(), size_t(commands.size()));
    CVCItem saved = entries.back();
    QCOMPARE(QString::number(saved.economy, 'f', 2), economy);
    expected.economy = saved.economy;
    expected.listPosition = saved.listPosition;
    QCOMPARE(saved.typeText, expected.typeText);
    QCOMPARE(saved.iconIndex, expected.iconIndex);
    QCOMPARE(saved.entryDate, expected.entryDate);
    QCOMPARE(saved.amount, expected.amount);
    QVERIFY(saved == expected);
}

void TestCliAdd::refused_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("errStart");

    QTest::newRow("odometer below 1")
        << QStringList { u"fuel"_s, u"--odometer"_s, u"0.5"_s, u"--quantity"_s, u"3"_s, u"--price"_s, u"1"_s }
        << 1 << u"Entry not saved: its odometer 0.5 is below 1.\n"_s;
    QTest::newRow("trip from 0") << QStringList { u"trip"_s, u"--start"_s, u"0"_s } << 1
                                 << u"Entry not saved: its odometer 0 is below 1.\n"_s;
    QTest::newRow("odometer not a number")
        << QStringList { u"repair"_s, u"--odometer"_s, u"12k"_s, u"--type"_s, u"Brakes"_s } << 2
        << u"--odometer: Please enter a number.\n"_s;
    QTest::newRow("temperature not whole")
        << QStringList { u"fuel"_s,    u"--odometer"_s, u"5"_s,      u"--quantity"_s, u"3"_s,
                         u"--price"_s, u"1"_s,          u"--temp"_s, u"2.5"_s }
        << 2 << u"--temp: Please enter an integer.\n"_s;
    QTest::newRow("missing price") << QStringList { u"fuel"_s, u"--odometer"_s, u"5"_s, u"--quantity"_s,
                                                    u"3"_s }
                                   << 2 << u"Missing --price\n"_s;
    QTest::newRow("icon with a predefined type") << QStringList {
        u"repair"_s, u"--odometer"_s, u"5"_s, u"--type"_s, u"Tune-Up"_s, u"--icon"_s, u"3"_s
    } << 2 << u"--icon: the icon buttons are disabled for a predefined repair type\n"_s;
    QTest::newRow("unknown vehicle") << QStringList { u"trip"_s, u"Bus"_s, u"--start"_s, u"5"_s } << 1
                                     << u"Unknown vehicle: Bus\n"_s;
    QTest::newRow("unknown kind") << QStringList { u"boat"_s } << 2 << u"Usage: tarvane-cli add"_s;
}

void TestCliAdd::refused()
{
    QFETCH(QStringList, command);
    QFETCH(int, exitCode);
    QFETCH(QString, errStart);

    QTemporaryDir root;
    QVERIFY(root.isValid());
    CliRunner runner(root.path());
    selectTemplateVehicle(runner);
    const CliResult result = runner.run(QStringList { u"add"_s } + command);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.err.startsWith(errStart), qPrintable(result.err));
    QCOMPARE(result.out, QString());
    // Nothing was added: the log holds no entry (it may not even exist yet).
    EntryList entries;
    LogArchive archive;
    const QString log = root.filePath(u"My Documents/Tarvane Files/MYCAR0001.vcb"_s);
    if (QFile::exists(log))
        QVERIFY(archive.read(log, entries));
    QCOMPARE(entries.size(), size_t(0));
}

QTEST_GUILESS_MAIN(TestCliAdd)
#include "tst_cli_add.moc"
