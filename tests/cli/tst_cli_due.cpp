#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

using CliFiles::readAll;

namespace {

const QString CaseFolder = QStringLiteral(TARVANE_TEST_DATA "/calc/due-calendar/");

// The case's "My Car" (see its Velcora.ini) has services in every state: oil overdue by reading,
// coolant never done, transmission overdue by date, tune-up never done with a day interval, a
// named custom service ahead and one overdue by both rules. The log adds a tire rotation at the
// last reading, 12346, which the settings file does not know yet.
void prepare(CliRunner &cli)
{
    // 2024-01-01 and 2024-02-20.
    cli.prepare(
        { CliFiles::record("'odometer': 12000, 'entryDate': 1704067200, 'typeText': 'Fuel'"),
          CliFiles::record("'iconIndex': 4, 'entryType': 1, 'odometer': 12346, 'entryDate': 1708387200, "
                           "'typeText': 'Rotate Tires'") });
    const QString ini = cli.dataFolder() + u"Velcora.ini"_s;
    QVERIFY(QFile::remove(ini));
    QVERIFY(QFile::copy(CaseFolder + u"Velcora.ini"_s, ini));
}

} // namespace

class TestCliDue : public QObject
{
    Q_OBJECT

private slots:
    void calendarFile();
    void textListing();
    void json();
    void failures();
};

void TestCliDue::calendarFile()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const QString ics = root.filePath(u"car.ics"_s);
    const CliResult r = cli.run({ u"--now"_s, u"2024-03-01"_s, u"due"_s, u"My Car"_s, u"--ics"_s, ics });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out, u"Saved 5 due dates to %1\n"_s.arg(ics));
    QCOMPARE(readAll(ics), readAll(CaseFolder + u"expected.ics"_s));
}

void TestCliDue::textListing()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const CliResult r = cli.run({ u"--now"_s, u"2024-03-01"_s, u"due"_s });
    QCOMPARE(r.exitCode, 0);
    QString expected = uR"(Vehicle: My Car (VIN MYCAR0001)
Current reading: 12346 Miles

Lube, Oil and Filter Change
  interval     3000 Miles, 90 days
  last done    9000 Miles, 2024-01-16
  due date     2024-04-15
  due reading  12000 Miles
  overdue      by reading

Coolant Flush
  interval     30000 Miles, 0 days
  last done    0 Miles, no date
  due date     none
  due reading  30000 Miles
  overdue      no

Transmission Service
  interval     0 Miles, 365 days
  last done    5000 Miles, 2023-02-01
  due date     2024-02-01
  due reading  none
  overdue      by date

Engine Tune-Up
  interval     0 Miles, 30 days
  last done    0 Miles, no date
  due date     1970-01-31
  due reading  none
  overdue      no

Tire Rotate & Balance
  interval     6000 Miles, 180 days
  last done    12346 Miles, 2024-02-20
  due date     2024-08-18
  due reading  18346 Miles
  overdue      no

Cabin filter, Größe M; front
  interval     15000 Miles, 365 days
  last done    10000 Miles, 2024-02-01
  due date     2025-01-31
  due reading  25000 Miles
  overdue      no

Wax
  interval     5000 Miles, 10 days
  last done    6000 Miles, 2024-01-01
  due date     2024-01-11
  due reading  11000 Miles
  overdue      by date and by reading
)"_s;
    for (int n = 3; n <= 5; ++n)
        expected += uR"(
REMINDER %1  NOT SET
  interval     0 Miles, 0 days
  last done    0 Miles, no date
  due date     none
  due reading  none
  overdue      no
)"_s.arg(n);
    QCOMPARE(r.out, expected);
}

void TestCliDue::json()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const CliResult r = cli.run({ u"--now"_s, u"2024-03-01"_s, u"due"_s, u"--json"_s });
    QCOMPARE(r.exitCode, 0);
    const QJsonObject object = QJsonDocument::fromJson(r.out.toUtf8()).object();
    QCOMPARE(object.value(u"currentReading"_s).toDouble(), 12346.0);
    const QJsonArray services = object.value(u"services"_s).toArray();
    QCOMPARE(services.size(), 10);
    const QJsonObject wax = services.at(6).toObject();
    const QJsonObject expected { { u"reminder"_s, 6 },
                                 { u"label"_s, u"Wax"_s },
                                 { u"intervalDistance"_s, 5000 },
                                 { u"intervalDays"_s, 10 },
                                 { u"lastMileage"_s, 6000 },
                                 { u"lastDate"_s, u"2024-01-01"_s },
                                 { u"dueDate"_s, u"2024-01-11"_s },
                                 { u"dueReading"_s, 11000 },
                                 { u"shownReading"_s, 11000 },
                                 { u"overdueByDate"_s, true },
                                 { u"overdueByReading"_s, true } };
    QCOMPARE(wax, expected);
    // No distance interval: the counter shows 0; no day interval: no date at all.
    const QJsonObject coolant = services.at(1).toObject();
    QCOMPARE(coolant.value(u"dueDate"_s), QJsonValue(QJsonValue::Null));
    QCOMPARE(coolant.value(u"lastDate"_s), QJsonValue(QJsonValue::Null));
    QCOMPARE(services.at(2).toObject().value(u"shownReading"_s).toDouble(), 0.0);
}

void TestCliDue::failures()
{
    QTemporaryDir root;
    CliRunner cli(root.path());
    prepare(cli);
    const QString missing = root.filePath(u"no/such/car.ics"_s);
    CliResult r = cli.run({ u"due"_s, u"--ics"_s, missing });
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.startsWith(u"Unable to write the calendar file "_s + missing), qPrintable(r.err));
    QVERIFY(!QFile::exists(missing));

    r = cli.run({ u"due"_s, u"--ics"_s, root.filePath(u"a.ics"_s), u"--json"_s });
    QCOMPARE(r.exitCode, 2);
    QCOMPARE(r.err, u"Usage: tarvane-cli due [VEHICLE] [--json | --ics FILE]\n"_s);

    // The screens' own message when the settings file cannot be read; the listing still comes.
    QVERIFY(QFile::remove(cli.dataFolder() + u"Velcora.ini"_s));
    QVERIFY(QDir().mkpath(cli.dataFolder() + u"Velcora.ini"_s));
    r = cli.run({ u"due"_s });
    QVERIFY2(r.err.contains(u"ERROR 600:Cannot load ini file."_s), qPrintable(r.err));
}

QTEST_GUILESS_MAIN(TestCliDue)
#include "tst_cli_due.moc"
