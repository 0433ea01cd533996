#include <QTest>

#include "calc/FuelEconomy.h"
#include "calc/Units.h"
#include "platform/CFormat.h"

using namespace Qt::StringLiterals;

namespace {

CVCItem fuel(double odometer, const QString &measure, double quantity, double price, qint32 distanceUnit = 0,
             qint32 notFull = 0, double oldEconomy = 0.0)
{
    CVCItem item;
    item.entryType = CVCItem::Fuel;
    item.typeText = u"Fuel"_s;
    item.odometer = odometer;
    item.fuelMeasure = measure;
    item.fuelQuantity = quantity;
    item.unitPrice = price;
    item.distanceUnit = distanceUnit;
    item.notFull = notFull;
    item.economy = oldEconomy;
    item.economyUnit = 2;
    return item;
}

CVCItem other(qint32 type, double odometer, double quantity, double price, double amount)
{
    CVCItem item;
    item.entryType = type;
    item.odometer = odometer;
    item.fuelQuantity = quantity;
    item.unitPrice = price;
    item.amount = amount;
    item.endOdometer = type == CVCItem::Trip ? odometer + 100 : 0.0;
    return item;
}

// One line per record with every field the recalculation may touch.
QStringList summary(const EntryList &entries)
{
    QStringList lines;
    for (const CVCItem &r : entries)
        lines << cformat("%d %.0f e=%.2f a=%.2f u=%.0f d=%d q=%.4f p=%.3f", r.entryType, r.odometer,
                         r.economy, r.amount, r.economyUnit, r.distanceUnit, r.fuelQuantity, r.unitPrice);
    return lines;
}

} // namespace

Q_DECLARE_METATYPE(EntryList)
Q_DECLARE_METATYPE(FuelEconomy::FillUpInput)

class TestFuelEconomy : public QObject
{
    Q_OBJECT

private slots:
    void fillUp_data();
    void fillUp();
    void reconcile_data();
    void reconcile();
    void economyText();
    void mainScreenLines_data();
    void mainScreenLines();
};

// One fill-up as the form hands it over. The form starts with economy 12.34, total 5.00 and
// liquid index 0, so a stop shows as those values kept. Most rows measure in miles from the last
// full fill-up at 1000, start 500. Expected: economy, total and liquid index.
static void fillUpRow(const char *name, double odometer, const QString &quantity, const QString &price,
                      const QString &liquid, int economyUnit, const char *expected, int distanceUnit = 0,
                      double start = 500.0, double lastFull = 1000.0)
{
    QTest::newRow(name) << FuelEconomy::FillUpInput {
        odometer, quantity, price, liquid, distanceUnit, economyUnit, start, lastFull, 12.34, 5.0, 0
    } << QString::fromLatin1(expected);
}

void TestFuelEconomy::fillUp_data()
{
    QTest::addColumn<FuelEconomy::FillUpInput>("input");
    QTest::addColumn<QString>("expected");
    // 300 miles on 10 US gallons: 482.8032 km, 37.8541 l.
    fillUpRow("MPG US gallons", 1300, u"10"_s, u"3.000"_s, u"Gallons"_s, 0, "30.00 30.00 0");
    fillUpRow("MPL", 1300, u"10"_s, u"3"_s, u"Gallons"_s, 1, "7.93 30.00 0");
    fillUpRow("L/100km", 1300, u"10"_s, u"3"_s, u"Gallons"_s, 2, "7.84 30.00 0");
    fillUpRow("MPiG from US gallons", 1300, u"10"_s, u"3"_s, u"Gallons"_s, 3, "36.03 30.00 0");
    fillUpRow("KPL", 1300, u"10"_s, u"3"_s, u"Gallons"_s, 4, "12.75 30.00 0");
    // MPG follows the gallon the fuel was bought in: imperial here, not 24.98.
    fillUpRow("MPG imperial gallons", 1300, u"10"_s, u"1.5"_s, u"Imp. Gallons"_s, 0, "30.00 15.00 1");
    fillUpRow("MPG litres use the US gallon", 1300, u"37.8541"_s, u"1"_s, u"Litres"_s, 0, "30.00 37.85 2");
    fillUpRow("kilometres KPL", 1500, u"40"_s, u"1.25"_s, u"Litres"_s, 4, "12.50 50.00 2", 1, 0.5);
    fillUpRow("kilometres L/100km", 1500, u"40"_s, u"1"_s, u"Litres"_s, 2, "8.00 40.00 2", 1, 0.0);
    // A partial fill gets its own economy from the form; the next full one still measures from
    // the last full fill-up (1000), as the first row does.
    fillUpRow("partial fill", 1150, u"5"_s, u"3"_s, u"Gallons"_s, 0, "30.00 15.00 0");
    fillUpRow("odometer at last full", 1000, u"10"_s, u"3"_s, u"Gallons"_s, 0, "12.34 5.00 0");
    fillUpRow("last full at start", 1300, u"10"_s, u"3"_s, u"Litres"_s, 0, "12.34 5.00 0", 0, 1000);
    fillUpRow("last full below start", 1300, u"10"_s, u"3"_s, u"Litres"_s, 0, "12.34 5.00 0", 0, 1200);
    fillUpRow("empty quantity", 1300, QString(), u"3"_s, u"Litres"_s, 0, "12.34 5.00 0");
    fillUpRow("150 MPG cleared", 1300, u"2"_s, u"3"_s, u"Gallons"_s, 0, "0.00 6.00 0");
    fillUpRow("exactly 100 kept", 1100, u"1"_s, u"2"_s, u"Litres"_s, 4, "100.00 2.00 2", 1);
    fillUpRow("below 0.01 cleared", 1001, u"200"_s, u"1"_s, u"Litres"_s, 4, "0.00 200.00 2", 1);
    fillUpRow("text quantity MPG", 1300, u"abc"_s, u"3"_s, u"Gallons"_s, 0, "0.00 0.00 0");
    fillUpRow("text quantity L/100km", 1300, u"abc"_s, u"3"_s, u"Gallons"_s, 2, "0.00 0.00 0");
    fillUpRow("negatives read as 0", 1300, u"-10"_s, u"-3"_s, u"Litres"_s, 4, "0.00 0.00 2");
    fillUpRow("number with trailing text", 1300, u" 10 gal"_s, u"3$"_s, u"Gallons"_s, 0, "30.00 30.00 0");
    // An unknown unit text, as the case of a known one counts, gives no litres; MPG then keeps
    // the previous value, other units clear it.
    fillUpRow("unknown unit MPG keeps", 1300, u"10"_s, u"2"_s, u"Barrels"_s, 0, "12.34 20.00 0");
    fillUpRow("unknown unit KPL clears", 1300, u"10"_s, u"2"_s, u"Barrels"_s, 4, "0.00 20.00 0");
    fillUpRow("lower-case unit unknown", 1300, u"10"_s, u"2"_s, u"gallons"_s, 1, "0.00 20.00 0");
}

void TestFuelEconomy::fillUp()
{
    QFETCH(FuelEconomy::FillUpInput, input);
    const FuelEconomy::FillUpResult r = FuelEconomy::computeFillUp(input);
    QTEST(cformat("%.2f %.2f %d", r.economy, r.amount, r.liquidUnit), "expected");
}

void TestFuelEconomy::reconcile_data()
{
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<int>("distanceUnit");
    QTest::addColumn<int>("economyUnit");
    QTest::addColumn<double>("highest");
    QTest::addColumn<QStringList>("expected");

    // Miles and MPG. Each fuel record measures from the fuel record before it, partial or not.
    QTest::newRow("miles MPG") << EntryList {
        fuel(3000, u"Gallons"_s, 10, 3, 0, 0, 99), // 3000 miles from 0 on 10 gal: 300, cleared
        fuel(3300, u"Gallons"_s, 10, 3), // 300 / 10
        other(CVCItem::Maintenance, 3400, 5, 2, 45), // untouched
        fuel(3450, u"Gallons"_s, 5, 3.2, 0, 1), // partial: 150 / 5
        other(CVCItem::Trip, 3500, 7, 0.5, 2), // quantity and price cleared, tolls kept
        fuel(3800, u"Imp. Gallons"_s, 10, 1), // 350 / 10 imperial
        fuel(3200, u"Gallons"_s, 10, 0), // backwards: negative, cleared
        fuel(3350, u"Gallons"_s, 1, 4, 7), // unit 7 repaired; 150 MPG kept here
        fuel(3650, u"Litres"_s, 37.8541, 1), // 300 / 10 US gallons
        fuel(3700, u"Barrels"_s, 5, 2, 0, 0, 12.5), // unknown unit keeps its economy under MPG
    } << 0 << 0 << 3800.0
                               << QStringList {
                                      u"0 3000 e=0.00 a=30.00 u=0 d=0 q=10.0000 p=3.000"_s,
                                      u"0 3300 e=30.00 a=30.00 u=0 d=0 q=10.0000 p=3.000"_s,
                                      u"1 3400 e=0.00 a=45.00 u=0 d=0 q=5.0000 p=2.000"_s,
                                      u"0 3450 e=30.00 a=16.00 u=0 d=0 q=5.0000 p=3.200"_s,
                                      u"2 3500 e=0.00 a=2.00 u=0 d=0 q=0.0000 p=0.000"_s,
                                      u"0 3800 e=35.00 a=10.00 u=0 d=0 q=10.0000 p=1.000"_s,
                                      u"0 3200 e=0.00 a=0.00 u=0 d=0 q=10.0000 p=0.000"_s,
                                      u"0 3350 e=150.00 a=4.00 u=0 d=0 q=1.0000 p=4.000"_s,
                                      u"0 3650 e=30.00 a=37.85 u=0 d=0 q=37.8541 p=1.000"_s,
                                      u"0 3700 e=12.50 a=10.00 u=0 d=0 q=5.0000 p=2.000"_s,
                                  };

    // Kilometres and L/100km: the first record's value from 0 km stays.
    QTest::newRow("km L/100km") << EntryList {
        fuel(500, u"Litres"_s, 40, 1.5, 1), // 40 l over 500 km
        fuel(1000, u"Litres"_s, 35, 1, 7), // unit 7 becomes 1: 35 l over 500 km
        fuel(1000, u"Litres"_s, 0, 1, 1), // 0 l over 0 km: cleared
        fuel(0, u"Litres"_s, 10, 1, 1), // odometer 0: cleared
        fuel(400, u"Gallons"_s, 10, 0, 0), // miles record: 37.8541 l over 643.7376 km from 0
    } << 1 << 2 << 1000.0
                                << QStringList {
                                       u"0 500 e=8.00 a=60.00 u=2 d=1 q=40.0000 p=1.500"_s,
                                       u"0 1000 e=7.00 a=35.00 u=2 d=1 q=35.0000 p=1.000"_s,
                                       u"0 1000 e=0.00 a=0.00 u=2 d=1 q=0.0000 p=1.000"_s,
                                       u"0 0 e=0.00 a=10.00 u=2 d=1 q=10.0000 p=1.000"_s,
                                       u"0 400 e=5.88 a=0.00 u=2 d=0 q=10.0000 p=0.000"_s,
                                   };

    QTest::newRow("empty") << EntryList {} << 0 << 0 << 0.0 << QStringList {};
}

void TestFuelEconomy::reconcile()
{
    QFETCH(EntryList, entries);
    QFETCH(int, distanceUnit);
    QFETCH(int, economyUnit);
    const double highest = FuelEconomy::reconcile(entries, distanceUnit, economyUnit);
    QTEST(summary(entries), "expected");
    QTEST(highest, "highest");
}

void TestFuelEconomy::economyText()
{
    QStringList texts;
    for (const auto &[value, unit] : { std::pair { 7.5, -1.0 },
                                       { 30.0, 0.0 },
                                       { 7.9254, 1.0 },
                                       { 7.8405, 2.0 },
                                       { 36.03, 3.0 },
                                       { 123.456, 4.0 },
                                       { 1.0, 9.0 } })
        texts << Units::economyText(value, unit);
    QCOMPARE(texts,
             QStringList({ u"7.50 MPG"_s, u"30.00 MPG"_s, u"7.93 MPL"_s, u"7.84 L/100km"_s, u"36.03 MPGi"_s,
                           u"123.46 KPL"_s, u"1.00 KPL"_s }));
}

void TestFuelEconomy::mainScreenLines_data()
{
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<QString>("longLine");
    QTest::addColumn<QString>("shortLine");

    QTest::newRow("no fuel") << EntryList { other(CVCItem::Maintenance, 10, 0, 0, 0) }
                             << u"Fuel Economy: 0.00 - 0.00 Avg"_s << u"Economy:0.00"_s;
    // Partial fills take no part; the last full one counts even with economy 0.
    QTest::newRow("last full is zero")
        << EntryList { fuel(100, {}, 0, 0, 0, 0, 30), fuel(200, {}, 0, 0, 0, 1, 50),
                       fuel(300, {}, 0, 0, 0, 0, 0) }
        << u"Fuel Economy: 0.00 - 30.00 Avg"_s << u"Economy:0.00 - 30.00Avg"_s;
    QTest::newRow("average of positives")
        << EntryList { fuel(100, {}, 0, 0, 0, 0, 25), fuel(150, {}, 0, 0, 0, 0, -4),
                       fuel(200, {}, 0, 0, 0, 1, 90), fuel(300, {}, 0, 0, 0, 0, 35),
                       fuel(400, {}, 0, 0, 0, 1, 70) }
        << u"Fuel Economy: 35.00 - 30.00 Avg"_s << u"Economy:35.00 - 30.00Avg"_s;
    QTest::newRow("negatives only") << EntryList { fuel(100, {}, 0, 0, 0, 0, -2.5) }
                                    << u"Fuel Economy: -2.50 - 0.00 Avg"_s << u"Economy:-2.50"_s;
}

void TestFuelEconomy::mainScreenLines()
{
    QFETCH(EntryList, entries);
    const FuelEconomy::Figures f = FuelEconomy::figures(entries);
    QTEST(FuelEconomy::economyLine(f.last, f.average), "longLine");
    QTEST(FuelEconomy::shortEconomyLine(f.last, f.average), "shortLine");
}

QTEST_GUILESS_MAIN(TestFuelEconomy)
#include "tst_fuel_economy.moc"
