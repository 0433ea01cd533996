#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "log/LogArchive.h"
#include "log/VehicleLog.h"
#include "log_helper.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(EntryList)
Q_DECLARE_METATYPE(LogScanSettings)

// Designated initializers leave the fields not named at their defaults.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace {

CVCItem fuel(double odometer, double economy, int notFull = 0)
{
    return CVCItem {
        .entryType = CVCItem::Fuel, .odometer = odometer, .notFull = notFull, .economy = economy
    };
}

CVCItem trip(double start, double end)
{
    return CVCItem { .entryType = CVCItem::Trip, .odometer = start, .endOdometer = end };
}

CVCItem job(const QString &name, double odometer, quint32 date)
{
    return CVCItem {
        .entryType = CVCItem::Maintenance, .odometer = odometer, .entryDate = date, .typeText = name
    };
}

// Every figure of a scan on one line; a reminder as "r<index>=<odometer>@<date>" once a job was found.
QString scanText(const LogScan &s)
{
    QString text = cformat("last=%.17g open=%d full=%.17g cur=%.17g sum=%.17g n=%d avg=%.17g has=%d",
                           s.lastOdometer, s.openTrips, s.lastFullFillOdometer, s.currentEconomy,
                           s.economySum, s.economyCount, s.averageEconomy, int(s.hasFullFill));
    for (size_t i = 0; i < s.lastServiceOdometer.size(); ++i)
        if (s.lastServiceOdometer[i] != 0 || s.lastServiceDate[i] != 0)
            text += cformat(" r%d=%.17g@%u", int(i), s.lastServiceOdometer[i], s.lastServiceDate[i]);
    return text;
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

// 2024-01-02 03:04:05 UTC; the tests run with TZ=UTC so local time is the same.
constexpr quint32 Now = 1704164645;

const QString SaveError = u"Save ERROR 105!\nUnable to save database"_s;

} // namespace

class TestVehicleLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void openCreatesEmptyFile_data();
    void openCreatesEmptyFile();
    void openAndSave();
    void damagedFileMovedAside_data();
    void damagedFileMovedAside();
    void unsafeVinTouchesNothing_data();
    void unsafeVinTouchesNothing();
    void saveFailures();
    void scan_data();
    void scan();

private:
    bool open(VehicleLog &log, const QString &vin, const LogScanSettings &settings = {})
    {
        return log.open(m_data, vin, settings, m_reporter, m_clock);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_data;
    RecordingReporter m_reporter;
    FixedClock m_clock { Now };
};

void TestVehicleLog::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_data = m_dir->path() + u"/Tarvane Files/"_s;
    QVERIFY(QDir().mkpath(m_data));
    m_reporter.clear();
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
    QVERIFY(open(log, vin, LogScanSettings { 250.0, {} }));
    QCOMPARE(m_reporter.texts(), QStringList());
    QCOMPARE(filesIn(m_data), QStringList { file });
    QCOMPARE(fileBytes(m_data + file), hex("00000000"));
    QVERIFY(log.entries().empty());
    QCOMPARE(log.scan().lastOdometer, 250.0);
}

void TestVehicleLog::openAndSave()
{
    // What an old in-place save left: a short archive followed by the rest of a longer one.
    const QString path = m_data + u"CAR.vcb"_s;
    const QByteArray longer = LogArchive::encode({ sampleFuel(), sampleMaintenance(), sampleTrip() });
    QByteArray bytes = LogArchive::encode({ sampleMaintenance(), sampleFuel() });
    bytes += longer.mid(bytes.size());
    QVERIFY(writeBytes(path, bytes));
    VehicleLog log;
    QVERIFY(open(log, u"CAR"_s));
    CVCItem second = sampleFuel();
    second.listPosition = 1; // written by the scan
    QVERIFY(log.entries() == (EntryList { sampleMaintenance(), second }));
    QCOMPARE(fileBytes(path), bytes); // opening never rewrites a good file
    // Saving writes the archive alone: the tail is gone.
    QVERIFY(log.save(m_data, u"CAR"_s, m_reporter));
    QCOMPARE(fileBytes(path), LogArchive::encode({ sampleMaintenance(), second }));
    // A fresh database is saved empty whatever the list holds, and the flag is lowered.
    log.setFreshDatabase(true);
    QVERIFY(log.save(m_data, u"CAR"_s, m_reporter));
    QCOMPARE(fileBytes(path), hex("00000000"));
    QVERIFY(log.entries().empty());
    QVERIFY(!log.freshDatabase());
    log.entries() = { sampleFuel(), sampleMaintenance(), sampleTrip() };
    QVERIFY(log.save(m_data, u"CAR"_s, m_reporter));
    QCOMPARE(m_reporter.texts(), QStringList());
    QCOMPARE(fileBytes(path), archiveOf({ FuelHex, MaintenanceHex, TripHex }));
}

void TestVehicleLog::damagedFileMovedAside_data()
{
    QTest::addColumn<QByteArray>("bytes"); // null: a folder in the file's place, which can't be read
    QTest::addColumn<QString>("problem");
    const QByteArray good = LogArchive::encode({ sampleFuel() });
    QTest::newRow("truncated") << good.left(
        good.size()
        - 3) << u"The log file %1 is damaged: the file ends too early (at byte 169, 1 more bytes needed)."_s;
    QTest::newRow("not a log") << QByteArray(
        "hello, world") << u"The log file %1 is damaged: it claims 25960 entries but only 10 bytes follow."_s;
    QTest::newRow("unreadable") << QByteArray()
                                << u"ERROR 100! Unable to open database %1\nNot a regular file"_s;
}

void TestVehicleLog::damagedFileMovedAside()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, problem);
    const QString path = m_data + u"VIN9.vcb"_s;
    QVERIFY(bytes.isNull() ? QDir().mkdir(path) : writeBytes(path, bytes));
    VehicleLog log;
    QVERIFY(!open(log, u"VIN9"_s));
    const QString aside = path + u".damaged-20240102-030405"_s;
    QCOMPARE(log.movedAsidePath(), aside);
    QCOMPARE(m_reporter.texts(),
             QStringList {
                 problem.arg(path)
                 + u"\nThe file was moved to %1 and the vehicle starts with an empty log."_s.arg(aside) });
    QCOMPARE(m_reporter.messages().at(0).kind, RecordingReporter::Kind::Error);
    QCOMPARE(filesIn(m_data), (QStringList { u"VIN9.vcb"_s, u"VIN9.vcb.damaged-20240102-030405"_s }));
    QCOMPARE(fileBytes(path), hex("00000000"));
    QVERIFY(log.entries().empty());
    if (bytes.isNull())
        return;
    QCOMPARE(fileBytes(aside), bytes);
    // The same failure again in the same second does not overwrite the first one moved aside.
    QVERIFY(writeBytes(path, bytes));
    QVERIFY(!open(log, u"VIN9"_s));
    QCOMPARE(log.movedAsidePath(), aside + u"-1"_s);
    QCOMPARE(fileBytes(aside), bytes);
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
    QVERIFY(!open(log, vin));
    log.entries() = { sampleFuel() };
    QVERIFY(!log.save(m_data, vin, m_reporter));
    QCOMPARE(
        m_reporter.texts(),
        (QStringList { u"ERROR 100! Unable to open database "_s + m_data + shown + u".vcb"_s, SaveError }));
    QCOMPARE(filesIn(m_data), QStringList());
    QCOMPARE(filesIn(m_dir->path()), QStringList { u"Tarvane Files"_s });
}

void TestVehicleLog::saveFailures()
{
    VehicleLog log;
    log.entries() = { sampleFuel() };
    // A data folder that does not exist, and a device that fills up half-way.
    QVERIFY(!log.save(m_data + u"missing/"_s, u"CAR"_s, m_reporter));
    FailingBuffer buffer(100);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(!log.save(&buffer, m_reporter));
    FailingBuffer roomy(1000);
    QVERIFY(roomy.open(QIODevice::WriteOnly));
    QVERIFY(log.save(&roomy, m_reporter));
    // The system's text, then the file and the reason.
    QCOMPARE(
        m_reporter.texts(),
        (QStringList { SaveError + u"\nUnable to write the log file "_s + m_data
                           + u"missing/CAR.vcb: No such file or directory."_s,
                       SaveError + u"\nUnable to write the log file (stream): No space left on device."_s }));
    QCOMPARE(roomy.data(), LogArchive::encode({ sampleFuel() }));
    QCOMPARE(log.entries().size(), size_t(1)); // the list in memory is kept
    QCOMPARE(QString::fromUtf8(VehicleLog::SaveError205), u"Save ERROR 205!\nUnable save database"_s);
}

void TestVehicleLog::scan_data()
{
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<LogScanSettings>("settings");
    QTest::addColumn<QString>("expected");
    const QString none = u" cur=0 sum=0 n=0 avg=0 has=0"_s;

    QTest::newRow("empty") << EntryList() << LogScanSettings { 500.0, {} }
                           << u"last=500 open=0 full=0"_s + none;
    // The not-full fill-up is skipped entirely; the last full one has no economy, so current is 0.
    QTest::newRow("fill-ups") << EntryList { fuel(100, 20), fuel(200, 30, 1), fuel(300, 25), fuel(400, 0) }
                              << LogScanSettings()
                              << u"last=400 open=0 full=400 cur=0 sum=45 n=2 avg=22.5 has=1"_s;
    QTest::newRow("only not full") << EntryList { fuel(100, 20, 1) } << LogScanSettings()
                                   << u"last=100 open=0 full=0"_s + none;
    // 1000->1000 open; 1200->1500 raises the last odometer; 1400->1400 starts below 1500 and is
    // not counted; 1500->1500 is; 1500->1490 (end below start) counts as open too.
    QTest::newRow("trips") << EntryList { trip(1000, 1000), trip(1200, 1500), trip(1400, 1400),
                                          trip(1500, 1500), trip(1500, 1490) }
                           << LogScanSettings { 1000.0, {} } << u"last=1500 open=3 full=0"_s + none;
    // Below the start odometer a fill-up still counts, a trip or a job does not.
    QTest::newRow("below start") << EntryList { trip(900, 900), fuel(950, 10), job(u"Oil Change"_s, 10, 100) }
                                 << LogScanSettings { 1000.0, {} }
                                 << u"last=1000 open=0 full=950 cur=10 sum=10 n=1 avg=10 has=1"_s;
    // "Oil Change" may stand anywhere in the name, the others only at the start, case counting; a
    // job below the last odometer is ignored; one job may count for two reminders; custom names
    // are reminders 5..9 and an unnamed one matches nothing.
    QTest::newRow("reminders") << EntryList { job(u"Oil change"_s, 10, 100),
                                              job(u"Full Oil Change"_s, 20, 200),
                                              job(u"Do Coolant Flush"_s, 30, 300),
                                              job(u"Coolant Flush + hoses"_s, 40, 0),
                                              job(u"Tune-Up"_s, 50, 500),
                                              job(u"Wax car"_s, 60, 600),
                                              job(u"Oil Change"_s, 70, 0),
                                              job(u"Rotate Tires"_s, 65, 650),
                                              job(u"Rotate Tires and Oil Change"_s, 80, 800),
                                              job(u"Interior"_s, 90, 900) }
                               << LogScanSettings { 0.0, { u"Wax"_s, QString(), u"Int"_s } }
                               << u"last=90 open=0 full=0"_s + none
            + u" r0=80@800 r1=40@0 r3=50@500 r4=80@800 r5=60@600 r7=90@900"_s;
}

void TestVehicleLog::scan()
{
    QFETCH(EntryList, entries);
    QFETCH(LogScanSettings, settings);
    for (CVCItem &item : entries)
        item.listPosition = 77;
    QTEST(scanText(VehicleLog::scanEntries(entries, settings)), "expected");
    for (size_t i = 0; i < entries.size(); ++i)
        QCOMPARE(entries[i].listPosition, int(i));
}

QTEST_GUILESS_MAIN(TestVehicleLog)
#include "tst_vehicle_log.moc"
