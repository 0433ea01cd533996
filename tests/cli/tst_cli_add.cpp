#include <QJsonDocument>
#include <QProcess>
#include <QtTest>

#include "CliRunner_helper.h"
#include "log/CVCItemJson.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

using CliFiles::record;
using TestFiles::json;

namespace {

const QString FuelNote = u"This entry has an odometer less than the last entry.\nData should be entered in "
                         "numerical order by odometer.  See \"Inserting data\" in the manual.\n"_s;
const QString RepairNote
    = u"This entry has an odometer reading less than the last entry.\nData should be "
      "entered in numerical order by odometer.  See \"Inserting data\" in the manual.\n"_s;
const QString FirstFill = u"add fuel --odometer 12000 --quantity 12 --price 3"_s;

CVCItem fuel(const char *fields)
{
    return record("'entryDate': 1709281800, 'typeText': 'Fuel', 'fuelMeasure': 'Gallons', "
                  + QByteArray(fields));
}

} // namespace

class TestCliAdd : public QObject
{
    Q_OBJECT

private slots:
    void add_data();
    void add();
};

// Each row runs its command lines on a fresh sandbox with the template vehicle "My Car" selected
// (miles, US gallons, MPG, start odometer 0, CostPerMile 0.500). When the last one succeeds, the
// last record of the log is checked whole; when it fails, nothing of it is left in the log.
void TestCliAdd::add_data()
{
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("err"); // the whole error output, or its start when it does not end a line
    QTest::addColumn<CVCItem>("expected");
    QTest::addColumn<QString>("economy"); // "%.2f"

    const auto added = [](const char *name, const QStringList &commands, const QString &err,
                          const CVCItem &expected, const QString &economy = u"0.00"_s) {
        QTest::newRow(name) << commands << 0 << err << expected << economy;
    };
    added("fill-up with economy",
          { FirstFill,
            u"add fuel \"My Car\" --odometer 12300 --quantity 10 --price 3.459 --station \"Corner Station\" "
            "--temp 21 --note \"road trip\""_s },
          {},
          fuel("'odometer': 12300, 'notes': 'road trip', 'station': 'Corner Station', 'temperature': 21, "
               "'amount': 34.59, 'fuelQuantity': 10, 'unitPrice': 3.459"),
          u"30.00"_s);
    // 300 miles on 40 litres under MPG (US gallons for litres): 28.39. The date keeps the time.
    added(
        "litres, not full, dated",
        { FirstFill,
          u"add fuel --odometer 12300 --unit Litres --quantity 40 --price 1.25 --not-full --date 2024-02-20"_s },
        {},
        record("'odometer': 12300, 'entryDate': 1708417800, 'typeText': 'Fuel', 'fuelMeasure': 'Litres', "
               "'notFull': 1, 'amount': 50, 'fuelQuantity': 40, 'unitPrice': 1.25"),
        u"28.39"_s);
    added("fuel below the last odometer",
          { FirstFill, u"add fuel --odometer 11900 --quantity 5 --price 2"_s }, FuelNote,
          fuel("'odometer': 11900, 'amount': 10, 'fuelQuantity': 5, 'unitPrice': 2"));
    added("oil change",
          { u"add repair --odometer 12100 --type \"Oil Change\" --cost 39.95 --invoice A-17 "
            "--location \"Quick Lube\""_s },
          {},
          record("'iconIndex': 4, 'entryType': 1, 'odometer': 12100, 'entryDate': 1709281800, "
                 "'typeText': 'Oil Change', 'station': 'Quick Lube', 'invoice': 'A-17', 'amount': 39.95"));
    added("custom repair with I5, lower odometer",
          { FirstFill,
            u"add repair --odometer 11000 --type Brakes --icon 5 --date 2024-02-20T17:40 --note pads"_s },
          RepairNote,
          record("'iconIndex': 12, 'entryType': 1, 'odometer': 11000, 'entryDate': 1708450800, "
                 "'typeText': 'Brakes', 'notes': 'pads'"));
    // 150 miles at 0.500.
    added("closed trip",
          { u"add trip --start 12000 --end 12150 --depart 2024-02-20T07:15 --arrive 2024-02-20T17:40 "
            "--purpose Sales --destination Springfield --contact Acme --tolls 4.5 --parking 12"_s },
          {},
          record("'iconIndex': 19, 'entryType': 2, 'odometer': 12000, 'entryDate': 1708413300, "
                 "'typeText': 'Trip', 'purpose': 'Sales', 'destination': 'Springfield', 'contact': 'Acme', "
                 "'departTime': 1708413300, 'arriveTime': 1708450800, 'amount': 4.5, 'unitPrice': 75, "
                 "'endOdometer': 12150, 'parking': 12"));
    CVCItem open = record("'iconIndex': 18, 'entryType': 2, 'odometer': 12000, 'entryDate': 1709281800, "
                          "'typeText': 'Trip', 'contact': 'None', 'departTime': 1709281800, "
                          "'arriveTime': 1709281800, 'endOdometer': 12000");
    // Only the destination stops at 40 characters.
    open.destination = QString(40, u'D');
    open.purpose = QString(45, u'P');
    added("open trip, defaults, long destination and purpose",
          { u"add trip --start 12000 --destination "_s + QString(45, u'D') + u" --purpose "_s
            + QString(45, u'P') },
          {}, open);

    const auto refused = [](const char *name, const QString &command, int exitCode, const QString &err) {
        QTest::newRow(name) << QStringList { command } << exitCode << err << CVCItem() << QString();
    };
    refused("odometer below 1", u"add fuel --odometer 0.5 --quantity 3 --price 1"_s, 1,
            u"Entry not saved: its odometer 0.5 is below 1.\n"_s);
    refused("trip from 0", u"add trip --start 0"_s, 1, u"Entry not saved: its odometer 0 is below 1.\n"_s);
    refused("odometer not a number", u"add repair --odometer 12k --type Brakes"_s, 2,
            u"--odometer: Please enter a number.\n"_s);
    refused("temperature not whole", u"add fuel --odometer 5 --quantity 3 --price 1 --temp 2.5"_s, 2,
            u"--temp: Please enter an integer.\n"_s);
    refused("missing price", u"add fuel --odometer 5 --quantity 3"_s, 2,
            u"Missing --price\nUsage: tarvane-cli add"_s);
    refused("icon with a predefined type", u"add repair --odometer 5 --type Tune-Up --icon 3"_s, 2,
            u"--icon: the icon buttons are disabled for a predefined repair type\n"_s);
    refused("unknown vehicle", u"add trip Bus --start 5"_s, 1,
            u"No vehicle named \"Bus\" in the vehicle list.\n"_s);
    refused("unknown kind", u"add boat"_s, 2, u"Usage: tarvane-cli add"_s);
    // Values no user can have meant: a 32-bit date would wrap, infinities spoil every figure.
    const QString range = u": the date must lie between 1970-01-01 and 2106-02-07\n"_s;
    const QString number = u": not a number that can be stored (it must be finite and below 10^12)\n"_s;
    refused("date after 2106", u"add fuel --odometer 5 --quantity 3 --price 1 --date 2200-01-01"_s, 2,
            u"--date"_s + range);
    refused("date before 1970", u"add repair --odometer 5 --type Brakes --date 1900-01-01"_s, 2,
            u"--date"_s + range);
    refused("depart before 1970", u"add trip --start 5 --depart 1969-12-31T23:59"_s, 2,
            u"--depart"_s + range);
    refused("odometer inf", u"add fuel --odometer inf --quantity 3 --price 1"_s, 2, u"--odometer"_s + number);
    refused("quantity nan", u"add fuel --odometer 5 --quantity nan --price 1"_s, 2, u"--quantity"_s + number);
    refused("price 1e308", u"add fuel --odometer 5 --quantity 3 --price 1e308"_s, 2, u"--price"_s + number);
    refused("price beyond double", u"add fuel --odometer 5 --quantity 3 --price 1e400x"_s, 2,
            u"--price"_s + number);
    refused("tolls -inf", u"add trip --start 5 --tolls -inf"_s, 2, u"--tolls"_s + number);
    refused("parking 1e308", u"add trip --start 5 --parking 1e308"_s, 2, u"--parking"_s + number);
}

void TestCliAdd::add()
{
    QFETCH(QStringList, commands);
    QFETCH(int, exitCode);
    QFETCH(QString, err);
    QFETCH(CVCItem, expected);
    QFETCH(QString, economy);

    QTemporaryDir root;
    QVERIFY(root.isValid());
    CliRunner runner(root.path());
    runner.options.createKey(u"Options"_s);
    runner.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    CliResult result;
    for (const QString &command : commands) {
        result
            = runner.run(QStringList { u"--now"_s, u"2024-03-01T08:30"_s } + QProcess::splitCommand(command));
        if (&command != &commands.last())
            QCOMPARE(result.exitCode, 0);
    }
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.err.startsWith(err), qPrintable(result.err));
    if (err.isEmpty() || err.endsWith(u'\n'))
        QCOMPARE(result.err, err);

    EntryList entries;
    LogArchive archive;
    const QString log = root.filePath(u"My Documents/Tarvane Files/MYCAR0001.vcb"_s);
    if (QFile::exists(log))
        QVERIFY(archive.read(log, entries));
    QCOMPARE(entries.size(), size_t(commands.size() - (exitCode == 0 ? 0 : 1)));
    if (exitCode != 0) {
        QCOMPARE(result.out, QString());
        return;
    }
    CVCItem saved = entries.back();
    QCOMPARE(QString::number(saved.economy, 'f', 2), economy);
    expected.economy = saved.economy;
    expected.listPosition = saved.listPosition;
    QCOMPARE(json(saved), json(expected));
}

QTEST_GUILESS_MAIN(TestCliAdd)
#include "tst_cli_add.moc"
