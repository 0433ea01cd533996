#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"

using namespace Qt::StringLiterals;

namespace {

CliResult runCli(const QStringList &arguments)
{
    QTemporaryDir root;
    return CliRunner(root.path()).run(arguments);
}

const QString Fixture = QStringLiteral(TARVANE_TEST_DATA "/log/three-kinds.vcb");
const QString Truncated = QStringLiteral(TARVANE_TEST_DATA "/log/truncated.vcb");

} // namespace

class TestCliDump : public QObject
{
    Q_OBJECT

private slots:
    void plain();
    void json();
    void failures_data();
    void failures();
};

void TestCliDump::plain()
{
    const CliResult r = runCli({ u"dump"_s, Fixture });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.exitCode, 0);
    const QStringList expected {
        u"0    Fuel   11/14/23 10:13 PM  Odometer 1000"_s,
        u"    Type: Fuel"_s,
        u"    Quantity: 10.000 L"_s,
        u"    Price: $3.250"_s,
        u"    Total: $32.50"_s,
        u"    Economy: 25.50 L/100km"_s,
        u"    Temp: -5"_s,
        u"    Not Full: yes"_s,
        u"    Notes: Hi"_s,
        u"1    Maint. 1/1/70 12:00 AM  Odometer 1500"_s,
        u"    Type: Oil Change"_s,
        u"    Cost: $10.00"_s,
        u"    Location: Shop"_s,
        u"    Invoice: A1"_s,
        u"2    Trip   1/1/70 12:00 AM  Odometer 2"_s,
        u"    Type: Trip"_s,
        u"    End Odometer: 10"_s,
        u"    Distance: 8"_s,
        u"    Departure: 1/1/70 12:00 AM"_s,
        u"    Arrival: 1/1/70 1:08 AM"_s,
        u"    Duration: 0 Days 1 Hours 8 Min"_s,
        u"    Purpose: Biz"_s,
        u"    Destination: X"_s,
        u"    Parking: $3.25"_s,
        u"    Mileage Cost: $2.000"_s,
        QString(),
    };
    QCOMPARE(r.out.split(u'\n'), expected);
}

void TestCliDump::json()
{
    const CliResult r = runCli({ u"dump"_s, Fixture, u"--json"_s });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.exitCode, 0);
    QJsonParseError error;
    const QJsonArray array = QJsonDocument::fromJson(r.out.toUtf8(), &error).array();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(array.size(), 3);
    const QJsonObject trip = array.at(2).toObject();
    QCOMPARE(trip.size(), 29);
    QCOMPARE(trip.value(u"iconIndex"_s).toInteger(), 19);
    QCOMPARE(trip.value(u"entryType"_s).toInteger(), 2);
    QCOMPARE(trip.value(u"departTime"_s).toInteger(), 16);
    QCOMPARE(trip.value(u"arriveTime"_s).toInteger(), 4096);
    QCOMPARE(trip.value(u"purpose"_s).toString(), u"Biz"_s);
    QCOMPARE(trip.value(u"parking"_s).toDouble(), 3.25);
    QCOMPARE(trip.value(u"listPosition"_s).toInteger(), 2);
    const QJsonObject fuel = array.at(0).toObject();
    QCOMPARE(fuel.value(u"entryDate"_s).toInteger(), 1700000000);
    QCOMPARE(fuel.value(u"temperature"_s).toInteger(), -5);
    QCOMPARE(fuel.value(u"typeText"_s).toString(), u"Fuel"_s);
    QCOMPARE(array.at(1).toObject().value(u"typeText"_s).toString(), u"Oil Change"_s);
}

void TestCliDump::failures_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("err");
    QTest::newRow("truncated")
        << QStringList { u"dump"_s, Truncated } << 1
        << u"The log file %1 is damaged: it claims 3 entries but only 198 bytes follow.\n"_s.arg(Truncated);
    QTest::newRow("truncated, json")
        << QStringList { u"dump"_s, Truncated, u"--json"_s } << 1
        << u"The log file %1 is damaged: it claims 3 entries but only 198 bytes follow.\n"_s.arg(Truncated);
    const QString missing = QStringLiteral(TARVANE_TEST_DATA "/log/none.vcb");
    QTest::newRow("missing") << QStringList { u"dump"_s, missing } << 1
                             << u"Unable to open the log file %1: No such file or directory.\n"_s.arg(
                                    missing);
    QTest::newRow("no file") << QStringList { u"dump"_s } << 2
                             << u"Usage: tarvane-cli dump FILE [--json]\n"_s;
    QTest::newRow("two files") << QStringList { u"dump"_s, Fixture, Fixture } << 2
                               << u"Usage: tarvane-cli dump FILE [--json]\n"_s;
}

void TestCliDump::failures()
{
    QFETCH(QStringList, arguments);
    const CliResult r = runCli(arguments);
    QTEST(r.exitCode, "code");
    QTEST(r.err, "err");
    QCOMPARE(r.out, QString());
}

QTEST_GUILESS_MAIN(TestCliDump)
#include "tst_cli_dump.moc"
