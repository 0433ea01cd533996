// The reader of other apps' CSV files, their importers and the merge into a log, against sample
// files and records worked out by hand.
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include "exchange/PeerCsvReader.h"
#include "exchange/PeerImportFiles.h"
#include "exchange/PeerLogMerge.h"
#include "log/CVCItemJson.h"

using namespace Qt::StringLiterals;

using Rows = QList<QStringList>;
Q_DECLARE_METATYPE(Rows)

namespace {

QString dataPath(const QString &name)
{
    return QStringLiteral(TARVANE_TEST_DATA "/import/") + name;
}

Rows fieldsOf(const std::vector<PeerCsvRow> &rows)
{
    Rows out;
    for (const PeerCsvRow &row : rows)
        out.append(row.fields);
    return out;
}

} // namespace

class TestPeerImport : public QObject
{
    Q_OBJECT

private slots:
    void csv_data();
    void csv();
    void csvLines();
    void numbers_data();
    void numbers();
    void dates_data();
    void dates();
    void importers_data();
    void importers();
    void visitKeptAndDetected();
};

void TestPeerImport::csv_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Rows>("expected");
    QTest::newRow("plain LF") << "a,b\n1,2\n"_ba << Rows { { u"a"_s, u"b"_s }, { u"1"_s, u"2"_s } };
    QTest::newRow("CR LF, no last line end")
        << "a,b\r\n1,2"_ba << Rows { { u"a"_s, u"b"_s }, { u"1"_s, u"2"_s } };
    QTest::newRow("BOM") << "\xEF\xBB\xBFx,y\n"_ba << Rows { { u"x"_s, u"y"_s } };
    QTest::newRow("semicolons") << "Datum;Km-Stand\n\"01.02.2024\";\"1,5\"\n"_ba
                                << Rows { { u"Datum"_s, u"Km-Stand"_s }, { u"01.02.2024"_s, u"1,5"_s } };
    QTest::newRow("doubled quote, separator and newline inside quotes")
        << "\"say \"\"hi\"\"\",\"a,b\",\"l1\r\nl2\"\n"_ba
        << Rows { { u"say \"hi\""_s, u"a,b"_s, u"l1\r\nl2"_s } };
    QTest::newRow("empty fields and blank line")
        << ",,\n\n\"\"\n"_ba << Rows { { u""_s, u""_s, u""_s }, {}, { u""_s } };
    QTest::newRow("text after closing quote") << "\"Filled\" 2,x\n"_ba << Rows { { u"Filled 2"_s, u"x"_s } };
    QTest::newRow("quote inside unquoted field") << "5\" tyre,x\n"_ba << Rows { { u"5\" tyre"_s, u"x"_s } };
    QTest::newRow("blanks before opening quote") << "\"a\", \"b, c\"\n"_ba << Rows { { u"a"_s, u"b, c"_s } };
    QTest::newRow("unterminated quote runs to the end") << "a,\"b\nc"_ba << Rows { { u"a"_s, u"b\nc"_s } };
}

void TestPeerImport::csv()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Rows, expected);
    const QChar separator = PeerCsvReader::detectSeparator(bytes);
    QCOMPARE(fieldsOf(PeerCsvReader::parse(bytes, separator)), expected);
}

void TestPeerImport::csvLines()
{
    // A row's line is where it starts, counting the lines inside quoted fields.
    const auto rows = PeerCsvReader::parse("h\n\"a\nb\"\r\nc\n"_ba, u',');
    QCOMPARE(rows.size(), size_t(3));
    QCOMPARE(rows[1].line, 2);
    QCOMPARE(rows[2].line, 4);
}

void TestPeerImport::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("mark");
    QTest::addColumn<double>("expected");
    QTest::newRow("point") << u"3.969"_s << QChar(u'.') << 3.969;
    QTest::newRow("dollar and thousands") << u"$1,019.50"_s << QChar(u'.') << 1019.5;
    QTest::newRow("euro, no-break space") << u"1.234,50\u00a0€"_s << QChar(u',') << 1234.5;
    QTest::newRow("guess: grouped thousands") << u"106,421"_s << QChar() << 106421.0;
    QTest::newRow("guess: decimal comma") << u"40,5"_s << QChar() << 40.5;
    QTest::newRow("guess: both marks") << u"1.234,5"_s << QChar() << 1234.5;
    QTest::newRow("negative") << u"-2.5"_s << QChar(u'.') << -2.5;
}

void TestPeerImport::numbers()
{
    QFETCH(QString, text);
    QFETCH(QChar, mark);
    QFETCH(double, expected);
    double value = 0;
    QVERIFY(PeerText::parseNumber(text, mark, &value));
    QCOMPARE(value, expected);
}

void TestPeerImport::dates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("order");
    QTest::addColumn<QString>("expected");
    QTest::newRow("ymd with time") << u"2023-2-3 18:39"_s << int(PeerText::DateOrder::Auto)
                                   << u"2023-02-03T18:39:00"_s;
    QTest::newRow("mdy") << u"3/7/2025"_s << int(PeerText::DateOrder::Mdy) << u"2025-03-07T00:00:00"_s;
    QTest::newRow("dmy") << u"3/7/2025"_s << int(PeerText::DateOrder::Dmy) << u"2025-07-03T00:00:00"_s;
    QTest::newRow("dotted, pm") << u"24.02.2024 1:05 PM"_s << int(PeerText::DateOrder::Auto)
                                << u"2024-02-24T13:05:00"_s;
    QTest::newRow("no such day") << u"2/30/2024"_s << int(PeerText::DateOrder::Mdy) << QString();
}

void TestPeerImport::dates()
{
    QFETCH(QString, text);
    QFETCH(int, order);
    QFETCH(QString, expected);
    const QDateTime date = PeerText::parseDate(text, PeerText::DateOrder(order));
    QCOMPARE(date.isValid() ? date.toString(Qt::ISODate) : QString(), expected);
    QCOMPARE(PeerText::inferDateOrder({ u"1/2/2024"_s, u"13/2/2024"_s }), PeerText::DateOrder::Dmy);
    QCOMPARE(PeerText::inferDateOrder({ u"1/2/2024"_s, u"2/20/2024"_s }), PeerText::DateOrder::Mdy);
}

void TestPeerImport::importers_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("app");
    QTest::addColumn<QString>("expected");
    // What the dialog shows beside an "Auto" date order.
    QTest::addColumn<QString>("dates");
    const QString ymd = u"dates read as year-month-day"_s;
    const QString dmy = u"dates read as day/month/year"_s;
    QTest::newRow("fuelly, newest first, into miles")
        << QStringList { u"fuelly/services.csv"_s, u"fuelly/fuelups.csv"_s } << u"fuelly"_s
        << u"fuelly/expected.json"_s << ymd;
    QTest::newRow("fuelly into km and litres")
        << QStringList { u"fuelly/fuelups.csv"_s, u"fuelly/services.csv"_s } << u"fuelly"_s
        << u"fuelly/expected_km.json"_s << ymd;
    QTest::newRow("fuelio sections") << QStringList { u"fuelio/vehicle-1-sync.csv"_s } << u"fuelio"_s
                                     << u"fuelio/expected.json"_s << ymd;
    QTest::newRow("lubelogger, German fuel and US services")
        << QStringList { u"lubelogger/fuel.csv"_s, u"lubelogger/service.csv"_s } << u"lubelogger"_s
        << u"lubelogger/expected.json"_s
        << u"dates read as day/month/year in fuel.csv, month/day/year in service.csv"_s;
    QTest::newRow("spritmonitor, costs file first")
        << QStringList { u"spritmonitor/123_costs.csv"_s, u"spritmonitor/123_fuelings.csv"_s }
        << u"spritmonitor"_s << u"spritmonitor/expected.json"_s << dmy;
    QTest::newRow("road trip, declared separator, a reset fill-up")
        << QStringList { u"roadtrip/roadtrip.csv"_s } << u"roadtrip"_s << u"roadtrip/expected.json"_s << ymd;
    QTest::newRow("drivvo, mixed fill-up and one visit's two services")
        << QStringList { u"drivvo/drivvo.csv"_s } << u"drivvo"_s << u"drivvo/expected.json"_s << ymd;
    QTest::newRow("acar, one of two vehicles, declared d/M, trips and a short event row")
        << QStringList { u"acar/acar.csv"_s } << u"acar"_s << u"acar/expected.json"_s << dmy;
}

void TestPeerImport::importers()
{
    QFETCH(QStringList, files);
    QFETCH(QString, app);
    QFETCH(QString, expected);
    QFETCH(QString, dates);
    QFile file(dataPath(expected));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject want = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonObject target = want.value(u"target"_s).toObject();
    PeerTarget vehicle;
    vehicle.distanceUnit = target.value(u"distanceUnit"_s).toInt();
    vehicle.liquidUnit = target.value(u"liquidUnit"_s).toInt();
    vehicle.economyUnit = target.value(u"economyUnit"_s).toInt();
    vehicle.costPerMile = target.value(u"costPerMile"_s).toDouble();
    PeerImportOptions options;
    options.sourceVehicle = want.value(u"sourceVehicle"_s).toString();

    QStringList paths;
    for (const QString &name : files)
        paths.append(dataPath(name));
    const auto importers = allPeerImporters();
    // Recognised without being named.
    const PeerImportRun run = PeerImportFiles::read(importers, paths, u"auto"_s, options);
    QCOMPARE(run.result.error, QString());
    QCOMPARE(run.importer->id(), app);
    QCOMPARE(run.result.description, want.value(u"description"_s).toString());
    QCOMPARE(run.result.skipped, want.value(u"skipped"_s).toInt());
    QCOMPARE(dateOrderText(run.result), dates);

    const PeerMergeResult merged = PeerLogMerge::merge({}, run.result.entries, vehicle);
    const QJsonArray records = want.value(u"records"_s).toArray();
    QCOMPARE(merged.entries.size(), size_t(records.size()));
    QCOMPARE(merged.added, int(records.size()));
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QJsonObject got = cvcItemToJson(merged.entries[size_t(i)]);
        const QJsonObject record = records.at(i).toObject();
        for (auto it = record.begin(); it != record.end(); ++it) {
            const QString where = u"record %1 %2"_s.arg(i).arg(it.key());
            if (it.value().isDouble()) {
                const double diff = std::abs(got.value(it.key()).toDouble() - it.value().toDouble());
                if (diff > 0.0015)
                    QFAIL(qPrintable(where
                                     + u": %1, expected %2"_s.arg(got.value(it.key()).toDouble())
                                           .arg(it.value().toDouble())));
            } else {
                QVERIFY2(got.value(it.key()) == it.value(),
                         qPrintable(where + u": "_s + got.value(it.key()).toString()));
            }
        }
    }

    // The same files again change nothing.
    const PeerMergeResult again = PeerLogMerge::merge(merged.entries, run.result.entries, vehicle);
    QCOMPARE(again.added, 0);
    QCOMPARE(again.duplicates, int(records.size()));
    QVERIFY(again.entries == merged.entries);
}

void TestPeerImport::visitKeptAndDetected()
{
    const auto importers = allPeerImporters();
    // Two equal services of one visit are both kept, and both absorbed by a second import.
    PeerEntry service;
    service.kind = PeerEntry::Service;
    service.odometer = 5000;
    service.date = QDateTime(QDate(2024, 1, 2), QTime(9, 0));
    service.name = u"Wiper Blade"_s;
    service.total = 12.5;
    const std::vector<PeerEntry> entries { service, service };
    const PeerMergeResult first = PeerLogMerge::merge({}, entries, {});
    QCOMPARE(first.added, 2);
    const PeerMergeResult second = PeerLogMerge::merge(first.entries, entries, {});
    QCOMPARE(second.added, 0);
    QCOMPARE(second.duplicates, 2);

    // A file of two vehicles asks for one; the dates follow the user's order over the file's.
    PeerImportOptions options;
    PeerImportRun acar
        = PeerImportFiles::read(importers, { dataPath(u"acar/acar.csv"_s) }, u"acar"_s, options);
    QCOMPARE(acar.result.error, u"acar.csv holds 2 vehicles (Civic, Miata); choose one."_s);
    QCOMPARE(acar.result.vehicles, QStringList({ u"Civic"_s, u"Miata"_s }));
    options.sourceVehicle = u"Miata"_s;
    options.dateOrder = PeerText::DateOrder::Mdy;
    acar = PeerImportFiles::read(importers, { dataPath(u"acar/acar.csv"_s) }, u"acar"_s, options);
    QCOMPARE(acar.result.entries.size(), size_t(2));
    QCOMPARE(acar.result.entries[0].date, QDateTime(QDate(2024, 9, 2), QTime(8, 0)));

    // Two aCar files: the vehicles of both, in the order they first appear; the one chosen is
    // taken from each file, its dates read in that file's own declared order.
    const QStringList two = { dataPath(u"acar/acar.csv"_s), dataPath(u"acar/acar2.csv"_s) };
    acar = PeerImportFiles::read(importers, two, u"auto"_s, {});
    QCOMPARE(acar.result.error, u"The files hold 3 vehicles (Civic, Miata, Jeep); choose one."_s);
    QCOMPARE(acar.result.vehicles, QStringList({ u"Civic"_s, u"Miata"_s, u"Jeep"_s }));
    options.dateOrder = PeerText::DateOrder::Auto;
    acar = PeerImportFiles::read(importers, two, u"auto"_s, options);
    QCOMPARE(acar.result.description, u"aCar export (Miata): 2 fill-ups, 1 trip, units mi / gal"_s);
    QList<QDateTime> dates;
    for (const PeerEntry &entry : acar.result.entries)
        dates.append(entry.date);
    QCOMPARE(dates,
             QList<QDateTime>({ QDateTime(QDate(2024, 2, 9), QTime(8, 0)),
                                QDateTime(QDate(2024, 2, 4), QTime(7, 0)),
                                QDateTime(QDate(2024, 2, 20), QTime(18, 0)) }));
    QCOMPARE(dateOrderText(acar.result),
             u"dates read as day/month/year in acar.csv, month/day/year in acar2.csv"_s);
    options.sourceVehicle = u"Beetle"_s;
    acar = PeerImportFiles::read(importers, two, u"auto"_s, options);
    QCOMPARE(acar.result.error, u"The files have no vehicle \"Beetle\"; they hold Civic, Miata, Jeep."_s);

    // A file nobody recognises is named as such.
    QCOMPARE(detectPeerImporter(importers, { u"x.csv"_s, "a,b\n1,2\n"_ba }), nullptr);
}

QTEST_GUILESS_MAIN(TestPeerImport)
#include "tst_peer_import.moc"
