#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

using CliFiles::odometers;
using CliFiles::readAll;
using CliFiles::snapshot;
using CliFiles::utc;

namespace {

CVCItem record(qint32 type, double odometer, const char *date, const QString &typeText)
{
    CVCItem item { .entryType = type, .odometer = odometer, .entryDate = utc(date), .typeText = typeText };
    if (type == CVCItem::Fuel) {
        item.fuelMeasure = u"Gallons"_s;
        item.fuelQuantity = 10;
        item.unitPrice = 3;
        item.amount = 30;
    } else if (type == CVCItem::Trip) {
        item.iconIndex = 18;
        item.endOdometer = odometer;
    }
    return item;
}

// Fuel at 12000 (Nov 2), a tune-up at 12100 (Nov 10), an open trip at 12200 (Nov 20), 2026.
EntryList threeEntries()
{
    EntryList list = { record(CVCItem::Fuel, 12000, "2026-11-02T09:00:00", u"Fuel"_s),
                       record(CVCItem::Maintenance, 12100, "2026-11-10T09:00:00", u"Tune-Up"_s),
                       record(CVCItem::Trip, 12200, "2026-11-20T09:00:00", u"Trip"_s) };
    list[1].amount = 120;
    list[1].station = u"Garage"_s;
    return list;
}

} // namespace

class TestCliHistory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void logTable();
    void logJson();
    void insert();
    void edit();
    void deleteOne();
    void deleteAll();
    void failures_data();
    void failures();

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<CliRunner> m_cli;
    QString vcb() const { return m_cli->dataFolder() + u"MYCAR0001.vcb"_s; }
    void writeLog(const EntryList &list) { QVERIFY(LogArchive().write(vcb(), list)); }
    CliResult run(const QStringList &arguments) { return m_cli->run(arguments); }
};

void TestCliHistory::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    m_cli = std::make_unique<CliRunner>(m_root->path());
    m_cli->options.createKey(u"Options"_s);
    m_cli->prepare(threeEntries());
}

void TestCliHistory::logTable()
{
    const CliResult maint = run({ u"log"_s, u"--type"_s, u"maint"_s });
    QCOMPARE(maint.err, QString());
    QCOMPARE(maint.out,
             u"#  Repair   Mileage  Date      Cost     Invoice  Location  Note\n"
             "1  Tune-Up  12100    11/10/26  $120.00           Garage\n"_s);
    // The week of Friday 2026-11-20 runs from Monday the 16th: only the trip.
    const CliResult week
        = run({ u"--now"_s, u"2026-11-20"_s, u"log"_s, u"My Car"_s, u"--period"_s, u"week"_s });
    QCOMPARE(week.exitCode, 0);
    QCOMPARE(week.out.split(u'\n').size(), 3);
    QVERIFY2(week.out.split(u'\n').at(1).startsWith(u"2  Trip "_s), qPrintable(week.out));
}

void TestCliHistory::logJson()
{
    const CliResult r = run({ u"log"_s, u"--type"_s, u"fuel"_s, u"--from"_s, u"2026-11-01"_s, u"--to"_s,
                              u"2026-11-02"_s, u"--json"_s });
    QCOMPARE(r.exitCode, 0);
    const QJsonObject document = QJsonDocument::fromJson(r.out.toUtf8()).object();
    QCOMPARE(document.value(u"columns"_s).toArray().size(), 12);
    const QJsonArray rows = document.value(u"rows"_s).toArray();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0][u"position"_s].toInt(), 0);
    QCOMPARE(rows[0][u"cells"_s].toArray().toVariantList(),
             QVariantList({ u""_s, u"Fuel"_s, u"12000  "_s, u"11/2/26"_s, u"$3.000"_s, u"10.000"_s,
                            u"0.00 MPG"_s, u"Gallons"_s, u"  0"_s, u"$30.00"_s, u""_s, u""_s }));
    QCOMPARE(rows[0][u"record"_s][u"odometer"_s].toDouble(), 12000.0);

    const CliResult bad = run({ u"log"_s, u"--period"_s, u"dates"_s, u"--from"_s, u"2026-11-01"_s });
    QCOMPARE(bad.exitCode, 2);
    QVERIFY(bad.err.startsWith(u"--period dates needs --from YYYY-MM-DD and --to YYYY-MM-DD\n"_s));
}

void TestCliHistory::insert()
{
    // Placed before the first entry whose odometer is not lower: between fuel and tune-up.
    const CliResult r = run({ u"insert"_s, u"repair"_s, u"--odometer"_s, u"12050"_s, u"--type"_s, u"Wipers"_s,
                              u"--cost"_s, u"9"_s });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.out, u"Inserted Wipers entry at position 1.\n"_s);
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(odometers(vcb()), (QList<double> { 12000, 12050, 12100, 12200 }));

    // Below the last entry but above the others: after the last one, never compared.
    QCOMPARE(run({ u"insert"_s, u"trip"_s, u"--start"_s, u"12150"_s }).exitCode, 0);
    QCOMPARE(odometers(vcb()), (QList<double> { 12000, 12050, 12100, 12200, 12150 }));

    // One entry below the new record: the record is discarded.
    writeLog({ record(CVCItem::Fuel, 500, "2026-11-02T09:00:00", u"Fuel"_s) });
    const QByteArray before = readAll(vcb());
    const CliResult discarded = run(
        { u"insert"_s, u"fuel"_s, u"--odometer"_s, u"600"_s, u"--quantity"_s, u"1"_s, u"--price"_s, u"1"_s });
    QCOMPARE(discarded.exitCode, 1);
    QCOMPARE(discarded.err, u"Entry discarded: the log's only entry has an odometer below 600.\n"_s);
    QCOMPARE(readAll(vcb()), before);
}

void TestCliHistory::edit()
{
    const CliResult r = run({ u"edit"_s, u"1"_s, u"--cost"_s, u"80.5"_s, u"--note"_s, u"plugs"_s });
    QCOMPARE(r.err, QString());
    QCOMPARE(r.out, u"Saved the Tune-Up entry at position 1.\n"_s);
    EntryList list;
    QVERIFY(LogArchive().read(vcb(), list));
    QCOMPARE(list[1].amount, 80.5);
    QCOMPARE(list[1].notes, u"plugs"_s);
    QCOMPARE(list[1].station, u"Garage"_s);
    QCOMPARE(list[1].odometer, 12100.0);

    // Closing the open trip.
    QCOMPARE(run({ u"edit"_s, u"My Car"_s, u"2"_s, u"--end"_s, u"12290"_s }).exitCode, 0);
    QVERIFY(LogArchive().read(vcb(), list));
    QCOMPARE(list[2].endOdometer, 12290.0);
    QCOMPARE(list[2].iconIndex, 19);

    const QByteArray before = readAll(vcb());
    const CliResult wrong = run({ u"edit"_s, u"0"_s, u"--cost"_s, u"5"_s });
    QCOMPARE(wrong.exitCode, 2);
    QCOMPARE(wrong.err, u"--cost does not apply to a Fuel entry.\n"_s);
    QCOMPARE(readAll(vcb()), before);
}

void TestCliHistory::deleteOne()
{
    const QByteArray before = readAll(vcb());
    const CliResult no = run({ u"delete"_s, u"1"_s });
    QCOMPARE(no.exitCode, 1);
    QCOMPARE(no.err, u"DELETE! ARE YOU SURE? [No]\n"_s);
    QCOMPARE(readAll(vcb()), before);

    const CliResult yes = run({ u"--yes"_s, u"delete"_s, u"My Car"_s, u"1"_s });
    QCOMPARE(yes.exitCode, 0);
    QCOMPARE(yes.err, u"DELETE! ARE YOU SURE? [Yes]\n"_s);
    QCOMPARE(odometers(vcb()), (QList<double> { 12000, 12200 }));
}

void TestCliHistory::deleteAll()
{
    const QByteArray before = readAll(vcb());
    const QString bak = m_cli->dataFolder() + u"MYCAR0001.bak"_s;
    QCOMPARE(run({ u"delete-all"_s }).exitCode, 1);
    QCOMPARE(readAll(vcb()), before);
    QVERIFY(!QFile::exists(bak));

    const CliResult r = run({ u"--yes"_s, u"delete-all"_s, u"My Car"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.err, u"DELETE ALL DATA! ARE YOU SURE? [Yes]\n"_s);
    QCOMPARE(readAll(bak), before);
    QCOMPARE(readAll(vcb()), QByteArray(4, '\0'));
}

void TestCliHistory::failures_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("damaged");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("err");

    QTest::newRow("position past the end") << QStringList { u"--yes"_s, u"delete"_s, u"3"_s } << false << 1
                                           << u"No entry at position 3 (the log has 3 entries).\n"_s;
    QTest::newRow("position not a number") << QStringList { u"edit"_s, u"x"_s, u"--note"_s, u"a"_s } << false
                                           << 1 << u"No entry at position x (the log has 3 entries).\n"_s;
    QTest::newRow("unknown vehicle") << QStringList { u"--yes"_s, u"delete"_s, u"Bus"_s, u"0"_s } << false
                                     << 1 << u"No vehicle named \"Bus\" in the vehicle list.\n"_s;
    QTest::newRow("insert without odometer") << QStringList { u"insert"_s, u"repair"_s, u"--type"_s, u"X"_s }
                                             << false << 2 << u"Missing --odometer\n"_s;
    QTest::newRow("damaged: edit") << QStringList { u"edit"_s, u"0"_s, u"--note"_s, u"a"_s } << true << 1
                                   << QString();
    QTest::newRow("damaged: delete-all")
        << QStringList { u"--yes"_s, u"delete-all"_s } << true << 1 << QString();
    QTest::newRow("damaged: insert") << QStringList { u"insert"_s, u"trip"_s, u"--start"_s, u"1"_s } << true
                                     << 1 << QString();
}

void TestCliHistory::failures()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, damaged);
    QFETCH(QString, err);
    if (damaged)
        CliFiles::put(vcb(), QByteArray("\x02\x00\xff\xff\x01\x00\x07\x00CVC", 11));
    const auto before = snapshot(m_root->path());
    const CliResult r = run(arguments);
    QTEST(r.exitCode, "exitCode");
    if (damaged)
        QVERIFY2(r.err.contains(vcb()), qPrintable(r.err));
    else
        QVERIFY2(r.err.startsWith(err), qPrintable(r.err));
    QCOMPARE(snapshot(m_root->path()), before);
}

QTEST_GUILESS_MAIN(TestCliHistory)
#include "tst_cli_history.moc"
