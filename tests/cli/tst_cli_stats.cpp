#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

using CliFiles::at;

namespace {

CVCItem fuel(quint32 date, double odometer, double price, double economy)
{
    CVCItem item;
    item.entryType = CVCItem::Fuel;
    item.typeText = u"Fuel"_s;
    item.entryDate = date;
    item.odometer = odometer;
    item.unitPrice = price;
    item.amount = price * 10;
    item.economy = economy;
    return item;
}

// The template's "My Car" with three fill-ups, two last year and one this year.
void prepare(CliRunner &cli)
{
    const EntryList log { fuel(at(2025, 5, 2), 1300, 3.250, 30), fuel(at(2025, 5, 20), 1600, 2.750, 25),
                          fuel(at(2026, 2, 1), 1900, 3.500, 32) };
    cli.prepare(log);
}

} // namespace

class TestCliStats : public QObject
{
    Q_OBJECT

private slots:
    void text();
    void json();
    void picture();
    void failures_data();
    void failures();
};

void TestCliStats::text()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const CliResult r = cli.run({ u"--now"_s, u"2026-03-15"_s, u"stats"_s, u"0"_s });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.exitCode, 0);
    // (30 + 25 + 32) / 3 = 29.
    QCOMPARE(r.out,
             u"FUEL ECONOMY\nVehicle Analyzed: My Car\nNumber of times fueled: 3\n"
             "Highest fuel economy: 32.000\nLowest fuel economy: 25.000\nAverage fuel economy: 29.000\n"
             "Points:\n  0\t30\n  1\t25\n  2\t32\n"_s);
}

void TestCliStats::json()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const CliResult r
        = cli.run({ u"--now"_s, u"2026-03-15"_s, u"stats"_s, u"7"_s, u"My Car"_s, u"--json"_s });
    QCOMPARE(r.exitCode, 0);
    const QJsonObject chart = QJsonDocument::fromJson(r.out.toUtf8()).object();
    // May 2025 averages 3.25 and 2.75 to 3.0; February 2026 is 3.5.
    // A point is wrapped in QJsonValue: clang would take a lone inner array for a copy of the outer.
    const QJsonObject expected {
        { u"mode"_s, 7 },
        { u"title"_s, u"FUEL COST"_s },
        { u"vehicle"_s, u"My Car"_s },
        { u"figures"_s,
          QJsonArray {
              QJsonObject { { u"label"_s, u"Number price samples:"_s }, { u"value"_s, u"3"_s } },
              QJsonObject { { u"label"_s, u"Highest fuel price:"_s }, { u"value"_s, u"3.500"_s } },
              QJsonObject { { u"label"_s, u"Lowest fuel price:"_s }, { u"value"_s, u"2.750"_s } },
              QJsonObject { { u"label"_s, u"Red=2025 Green=2026"_s }, { u"value"_s, QString() } } } },
        { u"xTitle"_s, u"TIMES FUELED"_s },
        { u"yTitle"_s, u"PRICE"_s },
        { u"xRange"_s, QJsonArray { 1, 12 } },
        { u"yRange"_s, QJsonArray { 3, 3.5 } },
        { u"lines"_s,
          QJsonArray { QJsonObject { { u"name"_s, u"2025"_s },
                                     { u"colour"_s, u"#ff0000"_s },
                                     { u"points"_s, QJsonArray { QJsonValue(QJsonArray { 5, 3 }) } } },
                       QJsonObject { { u"name"_s, u"2026"_s },
                                     { u"colour"_s, u"#00ff00"_s },
                                     { u"points"_s, QJsonArray { QJsonValue(QJsonArray { 2, 3.5 }) } } } } }
    };
    QCOMPARE(chart, expected);
}

void TestCliStats::picture()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const QString png = root.path() + u"/economy.png"_s;
    const CliResult r
        = cli.run({ u"--now"_s, u"2026-03-15"_s, u"stats"_s, u"0"_s, u"My Car"_s, u"--png"_s, png });
    QCOMPARE(r.exitCode, 0);
    QVERIFY(r.out.startsWith(u"FUEL ECONOMY\n"_s));
    // The chart at twice its 460 x 300, in the fuel economy colours.
    const QImage picture(png);
    QCOMPARE(picture.size(), QSize(920, 600));
    QCOMPARE(picture.pixel(2, 2), qRgb(0, 0, 75));
}

void TestCliStats::failures_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("err");
    QTest::newRow("no repairs")
        << QStringList { u"stats"_s, u"2"_s, u"My Car"_s } << 1
        << u"Sorry, Could not find enough repair costs to calculate...\nPlease check your "
           "data.\n3 or more entries required to chart.\n"_s;
    QTest::newRow("mode out of range")
        << QStringList { u"stats"_s, u"8"_s } << 2
        << u"MODE must be a number from 0 to 7.\nUsage: tarvane-cli stats MODE [VEHICLE] [--json] [--png FILE]\n"_s;
    QTest::newRow("picture into a missing folder")
        << QStringList { u"stats"_s, u"0"_s, u"My Car"_s, u"--png"_s, u"/nonexistent/folder/x.png"_s } << 1
        << u"Unable to save the chart to /nonexistent/folder/x.png: "_s;
}

void TestCliStats::failures()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, err);
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const CliResult r = cli.run(arguments);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY2(r.err.startsWith(err), qPrintable(r.err));
    QCOMPARE(r.out, QString());
}

QTEST_MAIN(TestCliStats)
#include "tst_cli_stats.moc"
