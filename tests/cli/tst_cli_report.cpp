#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

namespace {

// The template's "My Car" (0.500 a mile): a fill-up, a job, a trip and an open trip in 2025, a
// fill-up in 2026.
void prepare(CliRunner &cli)
{
    // 2025-05-02, 06-01, 06-10 and 2026-01-03 at noon UTC.
    const CVCItem fill = CliFiles::record("'typeText': 'Fuel', 'entryDate': 1746187200, 'odometer': 1300, "
                                          "'fuelQuantity': 10, 'fuelMeasure': 'Gallons', 'unitPrice': 3.25, "
                                          "'amount': 32.5, 'economy': 30");
    const CVCItem job = CliFiles::record(
        "'entryType': 1, 'typeText': 'Oil Change', 'entryDate': 1748779200, 'odometer': 1350, 'amount': 40");
    CVCItem trip
        = CliFiles::record("'entryType': 2, 'typeText': 'Trip', 'entryDate': 1749556800, 'departTime': "
                           "1749556800, 'arriveTime': 1749556800, 'odometer': 1400, 'endOdometer': "
                           "1520, 'purpose': 'Sales', 'amount': 2, 'parking': 3");
    CVCItem open = trip;
    open.endOdometer = open.odometer = 1520;
    CVCItem later = fill;
    later.entryDate = 1767441600;
    later.odometer = 1800;
    const EntryList log { fill, job, trip, open, later };
    cli.prepare(log);
}

} // namespace

class TestCliReport : public QObject
{
    Q_OBJECT

private slots:
    void textAndFile();
    void json();
    void failures();
};

void TestCliReport::textAndFile()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const QString out = root.filePath(u"r.htm"_s);
    const CliResult r = cli.run({ u"--now"_s, u"2026-03-15"_s, u"report"_s, u"--from"_s, u"2025-01-01"_s,
                                  u"--to"_s, u"2025-12-31"_s, u"--out"_s, out });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.exitCode, 0);
    // 120 miles x 0.50 + 2 + 3 = 65.00; running cost 32.50 + 40 = 72.50 over 1520 miles and 12 months.
    QCOMPARE(r.out,
             u"Report: My Car 2025-01-01 to 2025-12-31\n"
             "Odometer: 0 - 1520 (1520)\n"
             "Fuel: 1 fill-ups, 10.000, cost 32.50, average price 3.250, economy 30.00 MPG\n"
             "Maintenance: 1 jobs, total 40.00\n"
             "Business: 1 trips, distance 120, tolls 2.00, parking 3.00, claim 65.00\n"
             "Personal: 0 trips, distance 0, tolls 0.00, parking 0.00, claim 0.00\n"
             "All trips: 1 trips, distance 120, tolls 2.00, parking 3.00, claim 65.00\n"
             "Open trips: 1\n"
             "Running cost: 72.50, 0.048 per distance unit, 6.04 per month\n"_s);
    const QByteArray html = CliFiles::readAll(out);
    QVERIFY(html.startsWith("<!DOCTYPE html>"));
    QVERIFY(html.contains("<td class=\"n\">$65.00</td>"));
}

void TestCliReport::json()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const CliResult r = cli.run({ u"--now"_s, u"2026-03-15"_s, u"report"_s, u"My Car"_s, u"--from"_s,
                                  u"2026-01-01"_s, u"--to"_s, u"2026-01-31"_s, u"--json"_s });
    QCOMPARE(r.exitCode, 0);
    const QJsonObject o = QJsonDocument::fromJson(r.out.toUtf8()).object();
    QCOMPARE(o[u"fuel"_s][u"cost"_s].toDouble(), 32.5);
    QCOMPARE(o[u"odometer"_s][u"start"_s].toDouble(), 1520.0);
    QCOMPARE(o[u"odometer"_s][u"distance"_s].toDouble(), 280.0);
    QCOMPARE(o[u"trips"_s][u"open"_s].toInt(), 0);
}

void TestCliReport::failures()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    CliResult r = cli.run({ u"report"_s, u"--from"_s, u"2025-01-01"_s });
    QCOMPARE(r.exitCode, 2);
    QVERIFY(r.err.startsWith(u"report needs --from YYYY-MM-DD and --to YYYY-MM-DD\n"_s));
    r = cli.run({ u"report"_s, u"--from"_s, u"2025-02-01"_s, u"--to"_s, u"2025-01-01"_s });
    QCOMPARE(r.exitCode, 2);
    QCOMPARE(r.err, u"The end date is before the start date.\n"_s);
    r = cli.run({ u"report"_s, u"--from"_s, u"2025-01-01"_s, u"--to"_s, u"2025-01-31"_s, u"--out"_s,
                  root.filePath(u"no/such/r.htm"_s) });
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.startsWith(u"Unable to write the report to "_s));
    QVERIFY(!QFile::exists(root.filePath(u"no/such/r.htm"_s)));
}

QTEST_GUILESS_MAIN(TestCliReport)
#include "tst_cli_report.moc"
