#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "core/files_helper.h"
#include "log/LogArchive.h"
#include "platform/Reporter.h"
#include "stats/ChartLog.h"
#include "stats/StatisticsCharts.h"

Q_DECLARE_METATYPE(EntryList)

using namespace Qt::StringLiterals;

namespace {

using TestFiles::at;

CVCItem fuel(quint32 date, double odometer, double economy, double price, double amount, int notFull = 0)
{
    CVCItem item;
    item.entryType = CVCItem::Fuel;
    item.typeText = u"Fuel"_s;
    item.entryDate = date;
    item.odometer = odometer;
    item.economy = economy;
    item.unitPrice = price;
    item.amount = amount;
    item.notFull = notFull;
    return item;
}

CVCItem repair(quint32 date, double odometer, const QString &name, double amount)
{
    CVCItem item;
    item.entryType = CVCItem::Maintenance;
    item.iconIndex = 4;
    item.typeText = name;
    item.entryDate = date;
    item.odometer = odometer;
    item.amount = amount;
    return item;
}

// Two years of a car: 2025 and, up to "today" 2026-03-15, 2026.
EntryList carLog()
{
    CVCItem trip;
    trip.entryType = CVCItem::Trip;
    trip.iconIndex = 19;
    trip.typeText = u"Trip"_s;
    trip.entryDate = at(2026, 3, 10);
    trip.departTime = at(2026, 3, 10, 8);
    trip.arriveTime = at(2026, 3, 11, 9);
    trip.odometer = 5300;
    trip.endOdometer = 5350;
    trip.amount = 5.00; // tolls are no running cost here
    return { fuel(at(2025, 1, 10), 1000, 0, 3.000, 30.00),
             fuel(at(2025, 2, 10), 1300, 30.0, 3.200, 32.00),
             repair(at(2025, 2, 20), 1400, u"Oil Change"_s, 45.50),
             fuel(at(2025, 3, 10), 1600, 25.0, 2.900, 29.00),
             repair(at(2025, 6, 1), 2000, u"Tires"_s, 400.00),
             fuel(at(2026, 2, 3), 4800, 28.0, 3.100, 31.00),
             repair(at(2026, 2, 23), 5100, u"Wipers"_s, 0),
             fuel(at(2026, 3, 5), 5300, 32.0, 3.300, 16.50, 1),
             trip,
             repair(at(2026, 3, 12), 5360, u"Brakes"_s, 120.25) };
}

const quint32 Today = at(2026, 3, 15);

// The whole chart as text: one line per field, points as "x:y" per line.
QString describe(const ChartSeries &s)
{
    QStringList out { u"title "_s + s.title };
    if (!s.enoughData)
        return (out << u"short "_s + s.shortDataMessage).join(u'\n');
    for (int i = 0; i < 4; ++i)
        out << s.labels[i] + u" ["_s + s.values[i] + u']';
    out << u"x %1..%2/%3 %4"_s.arg(s.xLower).arg(s.xUpper).arg(s.xDecimals).arg(s.xTitle);
    out << u"y %1..%2/%3 %4"_s.arg(s.yLower).arg(s.yUpper).arg(s.yDecimals).arg(s.yTitle);
    out << u"colours %1 %2"_s.arg(s.background.rgb(), 6, 16, QChar(u'0'))
               .arg(s.grid.rgb(), 6, 16, QChar(u'0'));
    for (const ChartLine &line : s.lines) {
        QStringList points;
        for (const QPointF &p : line.points)
            points << u"%1:%2"_s.arg(p.x()).arg(p.y());
        out << u"line %1 "_s.arg(line.colour.rgb(), 6, 16, QChar(u'0')) + points.join(u' ');
    }
    return out.join(u'\n');
}

} // namespace

class TestStatisticsCharts : public QObject
{
    Q_OBJECT

private slots:
    void charts_data();
    void charts();
    void shortData_data();
    void shortData();
    void unitTexts();
    void logReading();
};

void TestStatisticsCharts::charts_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");

    // Four positive economies (the "Not Full" one too): 115 / 4 = 28.75.
    QTest::newRow("0 fuel economy") << 0
                                    << u"title FUEL ECONOMY\n"
                                       "Number of times fueled: [4]\nHighest fuel economy: [32.000]\n"
                                       "Lowest fuel economy: [25.000]\nAverage fuel economy: [28.750]\n"
                                       "x 0..4/0 TIMES FUELED\ny 25..32/2 FUEL MPG\ncolours 00004b c0c0ff\n"
                                       "line 00ff00 0:30 1:25 2:28 3:32"_s;
    // Prices 3.0 3.2 2.9 3.1 3.3: 15.5 / 5 = 3.1.
    QTest::newRow("1 fuel cost") << 1
                                 << u"title FUEL COST\n"
                                    "Number price samples: [5]\nHighest fuel price: [3.300]\n"
                                    "Lowest fuel price: [2.900]\nAverage fuel price: [3.100]\n"
                                    "x 0..5/0 TIMES FUELED\ny 2.9..3.3/2 PRICE\ncolours 003020 a0ffd0\n"
                                    "line ffff00 0:3 1:3.2 2:2.9 3:3.1 4:3.3"_s;
    // The free wiper job is no repair cost: 45.50 + 400 + 120.25 = 565.75.
    QTest::newRow("2 repair cost") << 2
                                   << u"title REPAIR COST\n"
                                      "Number of repairs: [3]\nMost expensive: [400.00]\n"
                                      "Least expensive: [ 45.50]\nTotal repair cost: [565.75]\n"
                                      "x 0..3/0 REPAIRS\ny 45.5..400/2 COST\ncolours 400000 ffc0c0\n"
                                      "line ffa000 0:45.5 1:400 2:120.25"_s;
    // Fuel and repairs in log order, 704.25 in all over 5360 - 1000 = 4360 miles: 0.1615.
    QTest::newRow("3 running cost") << 3
                                    << u"title TOTAL RUNNING COST\n"
                                       "Number of samples: [8]\nMost expensive: [400.00]\n"
                                       "Least expensive: [ 16.50]\nCost per Mile: [  0.16]\n"
                                       "x 0..8/0 ENTRIES\ny 16.5..400/2 COST\ncolours 202020 d0d0d0\n"
                                       "line 00e0ff 0:30 1:32 2:45.5 3:29 4:400 5:31 6:16.5 7:120.25"_s;
    // Feb 13 .. Mar 15. 4800 on Feb 3 to 5100 on Feb 23 is 15 a day (11 days in the window),
    // then 20 a day up to 5300 on Mar 5 (10 days), nothing until the trip's end on Mar 11 (50),
    // the brakes on Mar 12 (10), nothing since. Five readings inside, one before.
    QTest::newRow("4 usage")
        << 4
        << u"title 31 DAY USAGE GRAPH\n"
           "Number of entries: [6]\nMost distance: [     50.0]\n"
           "Least diatance: [      0.0]\nTotal distance: [    425.0]\n"
           "x -30..0/0 \ny 0..50/2 MILES\ncolours 280040 e0c0ff\n"
           "line ff80ff -30:15 -29:15 -28:15 -27:15 -26:15 -25:15 -24:15 -23:15 -22:15 "
           "-21:15 -20:15 -19:20 -18:20 -17:20 -16:20 -15:20 -14:20 -13:20 -12:20 -11:20 "
           "-10:20 -9:0 -8:0 -7:0 -6:0 -5:0 -4:50 -3:10 -2:0 -1:0 0:0"_s;
    // 2025: 536.50 over 2000 - 1000 miles; 2026: 167.75 over 5360 - 2000.
    QTest::newRow("5 compare running cost")
        << 5
        << u"title \n"
           "Number of samples: [8]\n2025 Cost per Mile: [  0.54]\n2026 Cost per Mile: [  0.05]\n"
           "Red=2025 Green=2026 []\n"
           "x 1..12/0 MONTHS\ny 0..400/2 COST\ncolours 000000 c0c0c0\n"
           "line ff0000 1:30 2:77.5 3:29 4:0 5:0 6:400 7:0 8:0 9:0 10:0 11:0 12:0\n"
           "line 00ff00 1:0 2:31 3:136.75"_s;
    QTest::newRow("6 compare economy") << 6
                                       << u"title FUEL ECONOMY LAST 2 YEARS\n"
                                          "Number of samples: [4]\n2025 Fuel Economy: [27.500]\n"
                                          "2026 Fuel Economy: [30.000]\nRed=2025 Green=2026 []\n"
                                          "x 1..12/0 MONTHS\ny 25..32/2 MPG\ncolours 000000 c0c0c0\n"
                                          "line ff0000 2:30 3:25\nline 00ff00 2:28 3:32"_s;
    QTest::newRow("7 compare fuel cost")
        << 7
        << u"title FUEL COST\n"
           "Number price samples: [5]\nHighest fuel price: [3.300]\n"
           "Lowest fuel price: [2.900]\nRed=2025 Green=2026 []\n"
           "x 1..12/0 TIMES FUELED\ny 2.9..3.3/2 PRICE\ncolours 000000 c0c0c0\n"
           "line ff0000 1:3 2:3.2 3:2.9\nline 00ff00 2:3.1 3:3.3"_s;
}

void TestStatisticsCharts::charts()
{
    QFETCH(int, mode);
    QFETCH(QString, expected);
    const ChartSeries series = StatisticsCharts::build(ChartMode(mode), carLog(), { 0, 0, Today });
    QCOMPARE(describe(series), expected);
}

void TestStatisticsCharts::shortData_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<quint32>("now");
    QTest::addColumn<QString>("expected");

    const QString fuelShort = u"title FUEL ECONOMY\nshort Sorry, Could not find enough fuel to calculate...\n"
                              "Please check your data.\n3 or more entries required to chart."_s;
    // The first fill-up and a partial one without economy are neither counted nor plotted.
    QTest::newRow("two fill-ups with economy")
        << 0
        << EntryList { fuel(at(2025, 1, 1), 100, 0, 3, 30), fuel(at(2025, 1, 8), 400, 30, 3, 30),
                       fuel(at(2025, 1, 9), 450, 0, 3, 5, 1), fuel(at(2025, 1, 15), 700, 31, 3, 30) }
        << Today << fuelShort;
    // Every economy above 100: the lowest stays at its starting 100.
    QTest::newRow("all above 100") << 0
                                   << EntryList { fuel(at(2025, 1, 8), 400, 120, 3, 30),
                                                  fuel(at(2025, 1, 9), 450, 150, 3, 5),
                                                  fuel(at(2025, 1, 15), 700, 130, 3, 30) }
                                   << Today
                                   << u"title FUEL ECONOMY\n"
                                      "Number of times fueled: [3]\nHighest fuel economy: [150.000]\n"
                                      "Lowest fuel economy: [100.000]\nAverage fuel economy: [133.333]\n"
                                      "x 0..3/0 TIMES FUELED\ny 100..150/2 FUEL MPG\ncolours 00004b c0c0ff\n"
                                      "line 00ff00 0:120 1:150 2:130"_s;
    const EntryList car = carLog();
    QTest::newRow("two repairs")
        << 2 << EntryList(car.begin(), car.begin() + 5) << Today
        << u"title REPAIR COST\nshort Sorry, Could not find enough repair costs to "
           "calculate...\nPlease check your data.\n3 or more entries required to chart."_s;
    QTest::newRow("running cost of nothing")
        << 3 << EntryList {} << Today
        << u"title TOTAL RUNNING COST\nshort Sorry, Could not find enough data to calculate...\nPlease "
           "check your data.\n3 or more entries required to chart."_s;
    // A year on, only the last reading before the 31 days is left.
    QTest::newRow("usage a year later")
        << 4 << carLog() << at(2027, 3, 15)
        << u"title 31 DAY USAGE GRAPH\nshort Sorry, Could not find enough data calculate...\n3 or more "
           "entries required to chart."_s;
    QTest::newRow("compare long after")
        << 5 << carLog() << at(2030, 1, 1)
        << u"title \nshort Sorry, Could not find enough data to compare...\n3 "
           "or more entries required to chart."_s;
    QTest::newRow("compare economy long after") << 6 << carLog() << at(2030, 1, 1)
                                                << u"title FUEL ECONOMY LAST 2 YEARS\nshort Sorry, Could not "
                                                   u"find enough data to compare...\n3 or more "
                                                   "entries required to chart."_s;
    QTest::newRow("compare fuel cost long after")
        << 7 << carLog() << at(2030, 1, 1)
        << u"title FUEL COST\nshort Sorry, Could not find enough data calculate...\n3 or more entries "
           "required to chart."_s;
}

void TestStatisticsCharts::shortData()
{
    QFETCH(int, mode);
    QFETCH(EntryList, entries);
    QFETCH(quint32, now);
    QFETCH(QString, expected);
    const ChartSeries series = StatisticsCharts::build(ChartMode(mode), entries, { 0, 0, now });
    QCOMPARE(describe(series), expected);
    QCOMPARE(series.pointCount() == 0, !series.enoughData);
}

void TestStatisticsCharts::unitTexts()
{
    // Kilometres and L/100km change the distance words and the economy axes.
    const ChartInput metric { 1, 2, Today };
    QCOMPARE(StatisticsCharts::fuelEconomy(carLog(), metric).yTitle, u"FUEL L/100Km"_s);
    QCOMPARE(StatisticsCharts::compareEconomy(carLog(), metric).yTitle, u"L/100Km"_s);
    QCOMPARE(StatisticsCharts::runningCost(carLog(), metric).labels[3], u"Cost per Kilometer:"_s);
    QCOMPARE(StatisticsCharts::usage31Days(carLog(), metric).yTitle, u"KILOMETERS"_s);
    const ChartSeries compare = StatisticsCharts::compareRunningCost(carLog(), metric);
    QCOMPARE(compare.labels[1], u"2025 Cost per Km:"_s);
    QCOMPARE(compare.labels[2], u"2026 Cost per Km:"_s);
    const QStringList names { u"FUEL MPG"_s,  u"FUEL MPG"_s, u"FUEL MPL"_s, u"FUEL L/100Km"_s,
                              u"FUEL MPGi"_s, u"FUEL KPL"_s, u"FUEL KPL"_s };
    for (int unit = -1; unit <= 5; ++unit)
        QCOMPARE(StatisticsCharts::fuelEconomyAxisTitle(unit), names.at(unit + 1));
}

void TestStatisticsCharts::logReading()
{
    QTemporaryDir dir;
    const QString folder = dir.path() + u'/';
    RecordingReporter reporter;
    EntryList entries { fuel(1, 1, 1, 1, 1) };
    // No log yet: nothing to chart, and nothing said (the chart then says it needs more).
    QVERIFY(ChartLog::read(folder, u"CAR1"_s, entries, reporter));
    QVERIFY(entries.empty());
    QVERIFY(!QFile::exists(folder + u"CAR1.vcb"_s));
    // The log as it is on disk; an empty VIN reads UnKnown.vcb.
    QVERIFY(LogArchive().write(folder + u"UnKnown.vcb"_s, carLog()));
    QVERIFY(ChartLog::read(folder, QString(), entries, reporter));
    QCOMPARE(entries, carLog());
    QCOMPARE(reporter.texts(), QStringList());
    // A damaged log, and a VIN that would leave the folder.
    TestFiles::put(folder + u"BAD.vcb"_s, QByteArray("\x03\x00\xff", 3));
    QVERIFY(!ChartLog::read(folder, u"BAD"_s, entries, reporter));
    QVERIFY(entries.empty());
    QVERIFY(!ChartLog::read(folder, u".."_s, entries, reporter));
    QCOMPARE(reporter.texts(),
             (QStringList { u"ERROR 100! Unable to open database "_s + folder + u"BAD.vcb"_s,
                            u"ERROR 100! Unable to open database "_s + folder + u"...vcb"_s }));
    QCOMPARE(TestFiles::read(folder + u"BAD.vcb"_s), QByteArray("\x03\x00\xff", 3));
}

QTEST_GUILESS_MAIN(TestStatisticsCharts)
#include "tst_statistics_charts.moc"
