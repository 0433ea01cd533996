#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "log/LogArchive.h"
#include "log/VehicleLog.h"
#include "log_helper.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(EntryList)

namespace {

CVCItem fuel(double odometer, double economy, int notFull = 0)
{
    CVCItem f;
    f.entryType = CVCItem::Fuel;
    f.odometer = odometer;
    f.economy = economy;
    f.notFull = notFull;
    return f;
}

CVCItem trip(double start, double end)
{
    CVCItem t;
    t.entryType = CVCItem::Trip;
    t.odometer = start;
    t.endOdometer = end;
    return t;
}

CVCItem job(const QString &name, double odometer, quint32 date)
{
    CVCItem m;
    m.entryType = CVCItem::Maintenance;
    m.typeText = name;
    m.odometer = odometer;
    m.entryDate = date;
    return m;
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

// 2024-01-02 03:04:05 UTC; the tests run with TZ=UTC so local time is the same.
constexpr quint32 Now = 1704164645;

} // namespace

class TestVehicleLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void openCreatesEmptyFile_data();
    void openCreatesEmptyFile();
    void openReadsEntriesAndIgnoresStaleTail();
    void damagedFileMovedAside_data();
    void damagedFileMovedAside();
    void unsafeVinTouchesNothing_data();
    void unsafeVinTouchesNothing();
    void saveWritesExactlyTheArchive();
    void saveFreshDatabase();
    void saveFailures();
    void scan_data();
    void scan();
    void reminderMatching();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_data;
};

void TestVehicleLog::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_data = m_dir->path() + u"/Tarvane Files/"_s;
    QVERIFY(QDir().mkpath(m_data));
}

void TestVehicleLog::openCreatesEmptyFile_data()
{
    QTest::addColumn<QString>("vin");
    QTest::addColumn<QString>("file");
    QTest::newRow("named") << u"1FTX123"_s << u"1FTX123.vcb"_s;
    QTest::newRow("empty VIN") << QString() << u"UnKnown.vcb"_s;
}

void TestVehicleLog::openCreatesEmptyFile()
{
    QFETCH(QString, vin);
    QFETCH(QString, file);
    VehicleLog log;
    log.entries() = { sampleFuel() };
    RecordingReporter reporter;
    FixedClock clock(Now);
    QVERIFY(log.open(m_data, vin, LogScanSettings { 250.0, {} }, reporter, clock));
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE(filesIn(m_data), QStringList { file });
    QCOMPARE(fileBytes(m_data + file), hex("00000000"));
    QVERIFY(log.entries().empty());
    QCOMPARE(log.scan().lastOdometer, 250.0);
}

void TestVehicleLog::openReadsEntriesAndIgnoresStaleTail()
{
    // What an old in-place save left: a short archive followed by the rest of a longer one.
    const QByteArray longer = LogArchive::encode({ sampleFuel(), sampleMaintenance(), sampleTrip() });
    QByteArray bytes = LogArchive::encode({ sampleMaintenance(), sampleFuel() });
    bytes += longer.mid(bytes.size());
    QVERIFY(writeBytes(m_data + u"CAR.vcb"_s, bytes));
    VehicleLog log;
    RecordingReporter reporter;
    FixedClock clock(Now);
    QVERIFY(log.open(m_data, u"CAR"_s, {}, reporter, clock));
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE(log.entries().size(), size_t(2));
    QCOMPARE(log.entries()[0].typeText, u"Oil Change"_s);
    QCOMPARE(log.entries()[1].listPosition, 1);
    QCOMPARE(fileBytes(m_data + u"CAR.vcb"_s), bytes); // opening never rewrites a good file
    // Saving writes the archive alone: the tail is gone.
    QVERIFY(log.save(m_data, u"CAR"_s, reporter));
    CVCItem second = sampleFuel();
    second.listPosition = 1; // written by the scan
    QCOMPARE(fileBytes(m_data + u"CAR.vcb"_s), LogArchive::encode({ sampleMaintenance(), second }));
}

void TestVehicleLog::damagedFileMovedAside_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("asFolder");
    QTest::addColumn<QString>("problem");
    const QByteArray good = LogArchive::encode({ sampleFuel() });
    QTest::newRow("truncated")
        << good.left(good.size() - 3) << false
        << u"The log file %1 is damaged: the file ends too early (at byte 169, 1 more bytes needed)."_s;
    QTest::newRow("not a log")
        << QByteArray("hello, world") << false
        << u"The log file %1 is damaged: it claims 25960 entries but only 10 bytes follow."_s;
    QTest::newRow("unreadable") << QByteArray() << true << u"ERROR 100! Unable to open database %1"_s;
}

void TestVehicleLog::damagedFileMovedAside()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, asFolder);
    QFETCH(QString, problem);
    const QString path = m_data + u"VIN9.vcb"_s;
    if (asFolder)
        QVERIFY(QDir().mkdir(path)); // exists, yet can't be read as a file
    else
        QVERIFY(writeBytes(path, bytes));
    VehicleLog log;
    RecordingReporter reporter;
    FixedClock clock(Now);
    QVERIFY(!log.open(m_data, u"VIN9"_s, {}, reporter, clock));

    const QString aside = path + u".damaged-20240102-030405"_s;
    QCOMPARE(log.movedAsidePath(), aside);
    QCOMPARE(reporter.texts(),
             QStringList {
                 problem.arg(path)
                 + u"\nThe file was moved to %1 and the vehicle starts with an empty log."_s.arg(aside) });
    QCOMPARE(reporter.messages().at(0).kind, RecordingReporter::Kind::Error);
    QCOMPARE(filesIn(m_data), (QStringList { u"VIN9.vcb"_s, u"VIN9.vcb.damaged-20240102-030405"_s }));
    if (!asFolder)
        QCOMPARE(fileBytes(aside), bytes);
    QCOMPARE(fileBytes(path), hex("00000000"));
    QVERIFY(log.entries().empty());

    // The same failure again in the same second does not overwrite the first one moved aside.
    if (!asFolder) {
        QVERIFY(writeBytes(path, bytes));
        QVERIFY(!log.open(m_data, u"VIN9"_s, {}, reporter, clock));
        QCOMPARE(log.movedAsidePath(), aside + u"-1"_s);
        QCOMPARE(fileBytes(aside), bytes);
    }
}

void TestVehicleLog::unsafeVinTouchesNothing_data()
{
    QTest::addColumn<QString>("vin");
    QTest::addColumn<QString>("shown");
    QTest::newRow("slash") << u"../x"_s << u"../x"_s;
    QTest::newRow("backslash") << u"a\\b"_s << u"a\\b"_s;
    QTest::newRow("dot") << u"."_s << u"."_s;
    QTest::newRow("dot dot") << u".."_s << u".."_s;
    // The message is formatted by the C library, which stops at the NUL.
    QTest::newRow("nul") << QString(u"AB\0CD"_s) << u"AB"_s;
}

void TestVehicleLog::unsafeVinTouchesNothing()
{
    QFETCH(QString, vin);
    QFETCH(QString, shown);
    QVERIFY(!VehicleLog::isSafeVin(vin));
    VehicleLog log;
    RecordingReporter reporter;
    FixedClock clock(Now);
    QVERIFY(!log.open(m_data, vin, {}, reporter, clock));
    log.entries() = { sampleFuel() };
    QVERIFY(!log.save(m_data, vin, reporter));
    QCOMPARE(reporter.texts(),
             (QStringList { u"ERROR 100! Unable to open database "_s + m_data + shown + u".vcb"_s,
                            u"Save ERROR 105!\nUnable to save database"_s }));
    QCOMPARE(filesIn(m_data), QStringList());
    QCOMPARE(filesIn(m_dir->path()), QStringList { u"Tarvane Files"_s });
}

void TestVehicleLog::saveWritesExactlyTheArchive()
{
    VehicleLog log;
    log.entries() = { sampleFuel(), sampleMaintenance(), sampleTrip() };
    RecordingReporter reporter;
    QVERIFY(writeBytes(m_data + u"UnKnown.vcb"_s, QByteArray(4000, '\x7f')));
    QVERIFY(log.save(m_data, QString(), reporter));
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE(fileBytes(m_data + u"UnKnown.vcb"_s),
             hex("0300") + hex(ClassHeaderHex) + hex(FuelHex) + hex("0180") + hex(MaintenanceHex)
                 + hex("0180") + hex(TripHex) + hex("0000"));
    QCOMPARE(log.entries().size(), size_t(3));
}

void TestVehicleLog::saveFreshDatabase()
{
    VehicleLog log;
    log.entries() = { sampleFuel() };
    log.setFreshDatabase(true);
    RecordingReporter reporter;
    QVERIFY(log.save(m_data, u"NEW"_s, reporter));
    QCOMPARE(fileBytes(m_data + u"NEW.vcb"_s), hex("00000000"));
    QVERIFY(log.entries().empty());
    QVERIFY(!log.freshDatabase());
    // Lowered: the next save writes what the list holds.
    log.entries() = { sampleTrip() };
    QVERIFY(log.save(m_data, u"NEW"_s, reporter));
    QCOMPARE(fileBytes(m_data + u"NEW.vcb"_s),
             hex("0100") + hex(ClassHeaderHex) + hex(TripHex) + hex("0000"));
}

void TestVehicleLog::saveFailures()
{
    VehicleLog log;
    log.entries() = { sampleFuel() };
    RecordingReporter reporter;
    // A data folder that does not exist, and a device that fills up half-way.
    QVERIFY(!log.save(m_data + u"missing/"_s, u"CAR"_s, reporter));
    FailingBuffer buffer(100);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(!log.save(&buffer, reporter));
    FailingBuffer roomy(1000);
    QVERIFY(roomy.open(QIODevice::WriteOnly));
    QVERIFY(log.save(&roomy, reporter));
    QCOMPARE(reporter.texts(),
             (QStringList { u"Save ERROR 105!\nUnable to save database"_s,
                            u"Save ERROR 105!\nUnable to save database"_s }));
    QCOMPARE(roomy.data(), LogArchive::encode({ sampleFuel() }));
    QCOMPARE(log.entries().size(), size_t(1)); // the list in memory is kept
    QCOMPARE(QString::fromUtf8(VehicleLog::SaveError205), u"Save ERROR 205!\nUnable save database"_s);
}

void TestVehicleLog::scan_data()
{
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("lastOdometer");
    QTest::addColumn<int>("openTrips");
    QTest::addColumn<double>("lastFullFill");
    QTest::addColumn<double>("current");
    QTest::addColumn<double>("sum");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("average");
    QTest::addColumn<bool>("hasFullFill");

    QTest::newRow("empty") << EntryList() << 500.0 << 500.0 << 0 << 0.0 << 0.0 << 0.0 << 0 << 0.0 << false;
    // The not-full fill-up is skipped entirely; the last full one has no economy, so current is 0.
    QTest::newRow("fill-ups") << EntryList { fuel(100, 20), fuel(200, 30, 1), fuel(300, 25), fuel(400, 0) }
                              << 0.0 << 400.0 << 0 << 400.0 << 0.0 << 45.0 << 2 << 22.5 << true;
    QTest::newRow("only not full") << EntryList { fuel(100, 20, 1) } << 0.0 << 100.0 << 0 << 0.0 << 0.0 << 0.0
                                   << 0 << 0.0 << false;
    // 1000->1000 open; 1200->1500 raises the last odometer; 1400->1400 starts below 1500 and is
    // not counted; 1500->1500 is; 1500->1490 (end below start) counts as open too.
    QTest::newRow("trips") << EntryList { trip(1000, 1000), trip(1200, 1500), trip(1400, 1400),
                                          trip(1500, 1500), trip(1500, 1490) }
                           << 1000.0 << 1500.0 << 3 << 0.0 << 0.0 << 0.0 << 0 << 0.0 << false;
    QTest::newRow("trip below start") << EntryList { trip(900, 900), fuel(950, 10) } << 1000.0 << 1000.0 << 0
                                      << 950.0 << 10.0 << 10.0 << 1 << 10.0 << true;
}

void TestVehicleLog::scan()
{
    QFETCH(EntryList, entries);
    QFETCH(double, start);
    for (CVCItem &item : entries)
        item.listPosition = 77;
    const LogScan s = VehicleLog::scanEntries(entries, LogScanSettings { start, {} });
    QTEST(s.lastOdometer, "lastOdometer");
    QTEST(s.openTrips, "openTrips");
    QTEST(s.lastFullFillOdometer, "lastFullFill");
    QTEST(s.currentEconomy, "current");
    QTEST(s.economySum, "sum");
    QTEST(s.economyCount, "count");
    QTEST(s.averageEconomy, "average");
    QTEST(s.hasFullFill, "hasFullFill");
    for (size_t i = 0; i < entries.size(); ++i)
        QCOMPARE(entries[i].listPosition, int(i));
}

void TestVehicleLog::reminderMatching()
{
    const EntryList entries {
        job(u"Oil change"_s, 10, 100), // wrong case: no reminder
        job(u"Full Oil Change"_s, 20, 200), // oil change anywhere in the name
        job(u"Do Coolant Flush"_s, 30, 300), // the others only at the start
        job(u"Coolant Flush + hoses"_s, 40, 0), // no date: odometer only
        job(u"Tune-Up"_s, 50, 500),
        job(u"Wax car"_s, 60, 600), // custom reminder 1
        job(u"Oil Change"_s, 70, 0), // later match: odometer moves, date stays
        job(u"Rotate Tires"_s, 65, 650), // below the last odometer: ignored
        job(u"Rotate Tires and Oil Change"_s, 80, 800), // two reminders at once
        job(u"Interior"_s, 90, 900), // custom reminder 2 is unnamed: no match
    };
    EntryList list = entries;
    const LogScan s
        = VehicleLog::scanEntries(list, LogScanSettings { 0.0, { u"Wax"_s, QString(), u"Int"_s } });
    const std::array<double, 10> odometers { 80, 40, 0, 50, 80, 60, 0, 90, 0, 0 };
    const std::array<quint32, 10> dates { 800, 0, 0, 500, 800, 600, 0, 900, 0, 0 };
    QCOMPARE(s.lastServiceOdometer, odometers);
    QCOMPARE(s.lastServiceDate, dates);
    QCOMPARE(s.lastOdometer, 90.0);

    // Below the start odometer nothing counts.
    EntryList early { job(u"Oil Change"_s, 10, 100) };
    const LogScan e = VehicleLog::scanEntries(early, LogScanSettings { 50.0, {} });
    QCOMPARE(e.lastServiceOdometer[0], 0.0);
    QCOMPARE(e.lastOdometer, 50.0);
}

QTEST_GUILESS_MAIN(TestVehicleLog)
#include "tst_vehicle_log.moc"
