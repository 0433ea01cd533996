#include <QTest>

#include "calc/MainScreenStatus.h"

using namespace Qt::StringLiterals;

class TestMainScreenStatus : public QObject
{
    Q_OBJECT

private slots:
    void status_data();
    void status();
};

void TestMainScreenStatus::status_data()
{
    QTest::addColumn<double>("lastOdometer");
    QTest::addColumn<int>("openTrips");
    QTest::addColumn<double>("current");
    QTest::addColumn<double>("sum");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QList<int>>("odometerTiles");
    QTest::addColumn<QList<int>>("currentTiles");
    QTest::addColumn<QList<int>>("averageTiles");

    // The current economy turns red when the average beats it.
    QTest::newRow("below average") << 12345.6 << 2 << 25.0 << 60.0 << 2
                                   << QStringList { u"12346  "_s, u"There are 2 open trips."_s,
                                                    u"Fuel Economy: 25.00 - 30.00 Avg"_s,
                                                    u"Economy:25.00 - 30.00Avg"_s }
                                   << QList<int> { 198, 198, 199, 200, 201, 202, 204 }
                                   << QList<int> { 300, 302, 305, 310, 300, 300 }
                                   << QList<int> { 235, 238, 235, 245, 235, 235 };
    QTest::newRow("no economy yet") << 500.0 << 0 << 0.0 << 0.0 << 0
                                    << QStringList { u"500    "_s, u"There are 0 open trips."_s,
                                                     u"Fuel Economy: 0.00 - 0.00 Avg"_s, u"Economy:0.00"_s }
                                    << QList<int> { 198, 198, 198, 198, 203, 198, 198 }
                                    << QList<int> { 235, 235, 235, 245, 235, 235 }
                                    << QList<int> { 235, 235, 235, 245, 235, 235 };
}

void TestMainScreenStatus::status()
{
    QFETCH(double, lastOdometer);
    QFETCH(int, openTrips);
    QFETCH(double, current);
    QFETCH(double, sum);
    QFETCH(int, count);

    LogScan scan;
    scan.lastOdometer = lastOdometer;
    scan.openTrips = openTrips;
    scan.currentEconomy = current;
    scan.economySum = sum;
    scan.economyCount = count;
    const MainScreenStatus s = MainScreen::status(VehicleSettings(), scan, EntryList {}, 0, u"Unknown"_s);

    QTEST((QStringList { s.lastOdometerText, s.openTripsText, s.economyLine, s.shortEconomyLine }), "texts");
    QTEST(s.odometerTiles, "odometerTiles");
    QTEST(s.currentEconomyTiles, "currentTiles");
    QTEST(s.averageEconomyTiles, "averageTiles");
    QCOMPARE(s.reminders.lines.size(), 3);
    QCOMPARE(s.reminders.lines.constLast().text, u"Last Backup: Unknown"_s);
}

QTEST_GUILESS_MAIN(TestMainScreenStatus)
#include "tst_main_screen_status.moc"
