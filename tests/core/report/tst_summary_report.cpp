#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include "core/files_helper.h"
#include "platform/LocaleFormats.h"
#include "report/ReportHtml.h"
#include "report/SummaryReport.h"

using namespace Qt::StringLiterals;

namespace {

using TestFiles::at;

CVCItem fuel(quint32 date, double odometer, double gallons, double price, bool full, double economy)
{
    CVCItem item;
    item.entryType = CVCItem::Fuel;
    item.typeText = u"Fuel"_s;
    item.entryDate = date;
    item.odometer = odometer;
    item.fuelQuantity = gallons;
    item.fuelMeasure = u"Gallons"_s;
    item.unitPrice = price;
    item.amount = gallons * price;
    item.notFull = full ? 0 : 1;
    item.economy = economy;
    return item;
}

CVCItem job(quint32 date, double odometer, const QString &service, double cost)
{
    CVCItem item;
    item.entryType = CVCItem::Maintenance;
    item.iconIndex = 1;
    item.typeText = service;
    item.entryDate = date;
    item.odometer = odometer;
    item.amount = cost;
    return item;
}

CVCItem trip(quint32 depart, quint32 arrive, double from, double to, const QString &purpose, double tolls,
             double parking)
{
    CVCItem item;
    item.entryType = CVCItem::Trip;
    item.typeText = u"Trip"_s;
    item.iconIndex = to > from ? 19 : 18;
    item.entryDate = depart;
    item.departTime = depart;
    item.arriveTime = arrive;
    item.odometer = from;
    item.endOdometer = to;
    item.purpose = purpose;
    item.destination = u"Springfield"_s;
    item.contact = u"J. Doe"_s;
    item.amount = tolls;
    item.parking = parking;
    return item;
}

// Miles, US gallons, MPG, 50 cents a mile, started at 1000.
VehicleSettings vehicle()
{
    VehicleSettings v;
    v.name = u"Work car"_s;
    v.vin = u"VIN123"_s;
    v.make = u"Make"_s;
    v.model = u"Model"_s;
    v.year = 2019;
    v.plate = u"ABC 123"_s;
    v.startOdometer = 1000;
    v.costPerMile = 0.5;
    return v;
}

// A year of entries with neighbours on both sides of it.
EntryList yearLog()
{
    return {
        fuel(at(2024, 12, 20), 1100, 10, 3.0, true, 25), // before the period
        fuel(at(2024, 12, 28), 1200, 4, 3.1, false, 0), // a partial fill just before it
        trip(at(2024, 12, 30, 8), at(2024, 12, 30, 9), 1200, 1250, u"Client visit"_s, 2, 0),
        fuel(at(2025, 1, 10), 1500, 10, 3.2, true, 30),
        job(at(2025, 2, 3), 1600, u"Oil Change & filter"_s, 45.5),
        trip(at(2025, 3, 1, 9), at(2025, 3, 1, 11), 1600, 1700, u"Client visit"_s, 3.5, 4),
        trip(at(2025, 3, 5, 9), at(2025, 3, 5, 10), 1700, 1730, u"Personal"_s, 0, 0),
        fuel(at(2025, 3, 20), 1800, 5, 3.3, false, 0), // a partial fill inside
        fuel(at(2025, 4, 2), 2000, 12, 3.0, true, 26), job(at(2025, 6, 15), 2100, u"Rotate Tires"_s, 20),
        job(at(2025, 7, 1), 2400, u"Oil Change"_s, 39.99),
        trip(at(2025, 11, 11, 9), 0, 2450, 2450, u"Client visit"_s, 9, 9), // open
        // Leaves on the last evening and arrives next year: counted on its start date.
        trip(at(2025, 12, 31, 22), at(2026, 1, 1, 1), 2500, 2600, u"Client visit"_s, 0, 1.25),
        fuel(at(2026, 1, 5), 2700, 10, 3.5, true, 28), // after the period
    };
}

} // namespace

class TestSummaryReport : public QObject
{
    Q_OBJECT

private slots:
    void figures_data();
    void figures();
    void html();
    void saveFailureWritesNothing();
};

void TestSummaryReport::figures_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<QString>("expected");

    // Worked by hand. Readings before the period reach 1250 (the trip of 30 Dec), the last one
    // inside is the late trip's arrival, 2600. Fuel: 10 + 5 + 12 gal for 32.00 + 16.50 + 36.00;
    // 84.50 / 27 = 3.1296; economy (30 + 26) / 2, the partial fill left out. Claims at 0.50 a
    // mile: 100 x 0.5 + 3.50 + 4.00 = 57.50 and 100 x 0.5 + 1.25 = 51.25 for business, 15.00
    // personal. Running cost 84.50 + 105.49 = 189.99, / 1350 = 0.1407, / 12 = 15.83.
    QTest::newRow("year") << QDate(2025, 1, 1) << QDate(2025, 12, 31) << uR"({
 "vehicle": "Work car", "from": "2025-01-01", "to": "2025-12-31", "empty": false,
 "odometer": {"start": 1250, "end": 2600, "distance": 1350},
 "fuel": {"fillUps": 3, "quantity": 27, "cost": 84.5, "averagePrice": 3.13, "lowestPrice": 3,
          "highestPrice": 3.3, "averageEconomy": 28, "economyUnit": "MPG", "costPerDistance": 0.063},
 "maintenance": {"jobs": 3, "total": 105.49,
   "services": [{"name": "Oil Change & filter", "count": 1, "total": 45.5},
                {"name": "Rotate Tires", "count": 1, "total": 20},
                {"name": "Oil Change", "count": 1, "total": 39.99}],
   "reminderResets": [{"reminder": "Oil Change", "date": "2025-02-03", "odometer": 1600},
                      {"reminder": "Rotate Tires", "date": "2025-06-15", "odometer": 2100},
                      {"reminder": "Oil Change", "date": "2025-07-01", "odometer": 2400}]},
 "trips": {"closed": 3, "open": 1, "rate": 0.5,
   "purposes": [{"purpose": "Client visit", "business": true, "count": 2, "distance": 200, "tolls": 3.5,
                 "parking": 5.25, "claim": 108.75},
                {"purpose": "Personal", "business": false, "count": 1, "distance": 30, "tolls": 0,
                 "parking": 0, "claim": 15}],
   "business": {"purpose": "Business", "business": true, "count": 2, "distance": 200, "tolls": 3.5,
                "parking": 5.25, "claim": 108.75},
   "personal": {"purpose": "Personal", "business": false, "count": 1, "distance": 30, "tolls": 0,
                "parking": 0, "claim": 15},
   "total": {"purpose": "All trips", "business": true, "count": 3, "distance": 230, "tolls": 3.5,
             "parking": 5.25, "claim": 123.75}},
 "runningCost": {"total": 189.99, "perDistance": 0.141, "months": 12, "perMonth": 15.83,
   "monthly": [{"month": "2025-01", "fuel": 32, "maintenance": 0}, {"month": "2025-02", "fuel": 0, "maintenance": 45.5},
               {"month": "2025-03", "fuel": 16.5, "maintenance": 0}, {"month": "2025-04", "fuel": 36, "maintenance": 0},
               {"month": "2025-05", "fuel": 0, "maintenance": 0}, {"month": "2025-06", "fuel": 0, "maintenance": 20},
               {"month": "2025-07", "fuel": 0, "maintenance": 39.99}, {"month": "2025-08", "fuel": 0, "maintenance": 0},
               {"month": "2025-09", "fuel": 0, "maintenance": 0}, {"month": "2025-10", "fuel": 0, "maintenance": 0},
               {"month": "2025-11", "fuel": 0, "maintenance": 0}, {"month": "2025-12", "fuel": 0, "maintenance": 0}]}
})"_s;

    // Nothing logged: the odometer stays at the vehicle's start and every figure is zero.
    QTest::newRow("empty") << QDate(2023, 2, 1) << QDate(2023, 3, 31) << uR"({
 "vehicle": "Work car", "from": "2023-02-01", "to": "2023-03-31", "empty": true,
 "odometer": {"start": 1000, "end": 1000, "distance": 0},
 "fuel": {"fillUps": 0, "quantity": 0, "cost": 0, "averagePrice": 0, "lowestPrice": 0,
          "highestPrice": 0, "averageEconomy": 0, "economyUnit": "MPG", "costPerDistance": 0},
 "maintenance": {"jobs": 0, "total": 0, "services": [], "reminderResets": []},
 "trips": {"closed": 0, "open": 0, "rate": 0.5, "purposes": [],
   "business": {"purpose": "Business", "business": true, "count": 0, "distance": 0, "tolls": 0, "parking": 0, "claim": 0},
   "personal": {"purpose": "Personal", "business": false, "count": 0, "distance": 0, "tolls": 0, "parking": 0, "claim": 0},
   "total": {"purpose": "All trips", "business": true, "count": 0, "distance": 0, "tolls": 0, "parking": 0, "claim": 0}},
 "runningCost": {"total": 0, "perDistance": 0, "months": 2, "perMonth": 0,
   "monthly": [{"month": "2023-02", "fuel": 0, "maintenance": 0}, {"month": "2023-03", "fuel": 0, "maintenance": 0}]}
})"_s;
}

void TestSummaryReport::figures()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    QFETCH(QString, expected);
    QJsonParseError error;
    const QJsonObject want = QJsonDocument::fromJson(expected.toUtf8(), &error).object();
    QCOMPARE(error.error, QJsonParseError::NoError);
    const QJsonObject got = SummaryReport::build(yearLog(), vehicle(), from, to, at(2026, 2, 1)).toJson();
    if (got != want)
        qWarning().noquote() << QJsonDocument(got).toJson();
    QCOMPARE(got, want);
}

void TestSummaryReport::html()
{
    EntryList log = yearLog();
    log[4].station = u"Joe's <Garage> & \"Sons\""_s;
    log[4].notes = u"Filter <K&N> \"gold\""_s;
    VehicleSettings v = vehicle();
    v.name = u"Citroën"_s;
    TestLocaleFormats locale;
    const QString page = ReportHtml::page(
        SummaryReport::build(log, v, QDate(2025, 1, 1), QDate(2025, 12, 31), at(2026, 2, 1)), locale);
    QVERIFY(page.contains(u"<td>Joe&#39;s &lt;Garage&gt; &amp; &quot;Sons&quot;</td>"_s));
    QVERIFY(page.contains(u"<td>Oil Change &amp; filter</td>"_s));
    QVERIFY(page.contains(u"<td>Filter &lt;K&amp;N&gt; &quot;gold&quot;</td></tr>"_s));
    QVERIFY(!page.contains(u"<Garage>"_s));
    QVERIFY(page.contains(u"<meta charset=\"utf-8\">"_s));
    QVERIFY(page.contains(u"<h1>Vehicle report: Citroën</h1>"_s));
    QVERIFY(page.contains(u"<dt>Period</dt><dd>1/1/2025 &ndash; 12/31/2025</dd>"_s));
    // The trip log's total row and the claim of the trip that ends next year.
    QVERIFY(
        page.contains(u"<td class=\"n\">230</td><td></td><td></td><td></td><td class=\"n\">$123.75</td>"_s));
    QVERIFY(page.contains(u"<td>12/31/2025</td>"_s));
    QVERIFY(page.contains(u"<td class=\"n\">$51.25</td>"_s));
    QVERIFY(page.contains(u"@media print"_s) && page.contains(u"thead{display:table-header-group}"_s));
    QCOMPARE(page.count(u"<svg "_s), 2);
    QVERIFY(!page.contains(u"<script"_s) && !page.contains(u"src="_s) && !page.contains(u"href="_s));

    const QString empty = ReportHtml::page(
        SummaryReport::build(log, v, QDate(2023, 2, 1), QDate(2023, 3, 31), at(2026, 2, 1)), locale);
    QVERIFY(empty.contains(u"No entries were logged in this period."_s));
    QCOMPARE(empty.count(u"<svg "_s), 0);

    QTemporaryDir dir;
    const QString path = dir.filePath(ReportHtml::fileName(v.name));
    QCOMPARE(ReportHtml::fileName(v.name), u"Citroën-Report.htm"_s);
    QString error;
    QVERIFY(ReportHtml::save(
        path, SummaryReport::build(log, v, QDate(2025, 1, 1), QDate(2025, 12, 31), at(2026, 2, 1)), locale,
        &error));
    QCOMPARE(TestFiles::read(path), page.toUtf8());

    // The sample the browser check prints.
    const QString sample = QStringLiteral(TARVANE_BINARY_DIR "/report");
    QVERIFY(QDir().mkpath(sample));
    QVERIFY(
        ReportHtml::save(sample + u"/sample-Report.htm"_s,
                         SummaryReport::build(log, v, QDate(2025, 1, 1), QDate(2025, 12, 31), at(2026, 2, 1)),
                         locale, &error));
}

void TestSummaryReport::saveFailureWritesNothing()
{
    QTemporaryDir dir;
    TestLocaleFormats locale;
    const SummaryReport report
        = SummaryReport::build({}, vehicle(), QDate(2025, 1, 1), QDate(2025, 1, 31), 0);
    QString error;
    QVERIFY(!ReportHtml::save(dir.filePath(u"missing/folder/x.htm"_s), report, locale, &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
}

QTEST_GUILESS_MAIN(TestSummaryReport)
#include "tst_summary_report.moc"
