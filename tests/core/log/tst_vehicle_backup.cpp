#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "log/LogArchive.h"
#include "log/VehicleBackup.h"
#include "log/VehicleLog.h"
#include "log_helper.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"

Q_DECLARE_METATYPE(EntryList)

using namespace Qt::StringLiterals;

namespace {

// Notes whether the busy flag was up when the closing message came.
class BusyWatcher : public RecordingReporter
{
public:
    explicit BusyWatcher(const bool &busy)
        : m_busy(busy)
    { }
    void info(const QString &text, const QString &title) override
    {
        busyAtMessage = m_busy;
        RecordingReporter::info(text, title);
    }
    void error(const QString &text, const QString &title) override
    {
        busyAtMessage = m_busy;
        RecordingReporter::error(text, title);
    }
    bool busyAtMessage = false;

private:
    const bool &m_busy;
};

} // namespace

class TestVehicleBackup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void names_data();
    void names();
    void backup();
    void backupFailures_data();
    void backupFailures();
    void restore_data();
    void restore();
    void restoreFailures_data();
    void restoreFailures();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_data;
    QString m_cards;
};

void TestVehicleBackup::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_data = m_dir->path() + u"/Tarvane Files/"_s;
    m_cards = m_dir->path() + u"/Card"_s;
    QVERIFY(QDir().mkpath(m_data));
    QVERIFY(QDir().mkpath(m_cards));
}

void TestVehicleBackup::names_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("vin");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("proposed");
    QTest::newRow("separator added") << u"/media/card"_s << u"VIN1"_s << u"/media/card/VIN1.bak"_s
                                     << u"VIN1.bak"_s;
    QTest::newRow("separator kept") << u"/media/card/"_s << u"VIN1"_s << u"/media/card/VIN1.bak"_s
                                    << u"VIN1.bak"_s;
    QTest::newRow("device folder") << u"\\Storage Card\\"_s << u"X"_s << u"\\Storage Card\\X.bak"_s
                                   << u"X.bak"_s;
    QTest::newRow("empty VIN") << u"/b/"_s << QString() << u"/b/UnKnown.bak"_s << u"UnKnown.bak"_s;
}

void TestVehicleBackup::names()
{
    QFETCH(QString, folder);
    QFETCH(QString, vin);
    QTEST(VehicleBackup::backupPath(folder, vin), "path");
    QTEST(VehicleBackup::proposedRestoreName(vin), "proposed");
}

void TestVehicleBackup::backup()
{
    bool busy = false;
    BusyWatcher reporter(busy);
    QVERIFY(writeBytes(m_cards + u"/UnKnown.bak"_s, QByteArray(900, 'o'))); // replaced whole
    QVERIFY(VehicleBackup::backup({ sampleTrip() }, m_cards, QString(), reporter, busy));
    QVERIFY(reporter.busyAtMessage);
    QVERIFY(!busy);
    QCOMPARE(reporter.texts(), QStringList { u"Current vehicle backed up to\n"_s + m_cards });
    QCOMPARE(fileBytes(m_cards + u"/UnKnown.bak"_s),
             hex("0100") + hex(ClassHeaderHex) + hex(TripHex) + hex("0000"));

    // The backup, copied under the database's name, opens as the vehicle's log.
    QVERIFY(QFile::copy(m_cards + u"/UnKnown.bak"_s, m_data + u"CAR.vcb"_s));
    VehicleLog log;
    FixedClock clock(0);
    QVERIFY(log.open(m_data, u"CAR"_s, {}, reporter, clock));
    QCOMPARE(log.entries().size(), size_t(1));
    QCOMPARE(log.entries()[0].purpose, u"Biz"_s);
}

void TestVehicleBackup::backupFailures_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("vin");
    QTest::newRow("missing folder") << u"/no/such/folder/"_s << u"VIN1"_s;
    QTest::newRow("unsafe VIN") << QString() << u"../VIN1"_s;
}

void TestVehicleBackup::backupFailures()
{
    QFETCH(QString, folder);
    QFETCH(QString, vin);
    if (folder.isEmpty())
        folder = m_cards;
    bool busy = false;
    BusyWatcher reporter(busy);
    QVERIFY(!VehicleBackup::backup({ sampleFuel() }, folder, vin, reporter, busy));
    QVERIFY(reporter.busyAtMessage);
    QVERIFY(!busy);
    QCOMPARE(reporter.texts(), QStringList { u"Backup ERROR 107!\nUnable to backup database"_s });
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    QCOMPARE(QDir(m_cards).entryList(QDir::Files), QStringList());
}

void TestVehicleBackup::restore_data()
{
    QTest::addColumn<EntryList>("backup");
    QTest::addColumn<QByteArray>("database");
    QTest::newRow("two entries") << EntryList { sampleMaintenance(), sampleFuel() }
                                 << hex("0200") + hex(ClassHeaderHex) + hex(MaintenanceHex) + hex("0180")
            + hex(FuelHex) + hex("0000");
    QTest::newRow("empty backup") << EntryList() << hex("00000000");
}

void TestVehicleBackup::restore()
{
    QFETCH(EntryList, backup);
    QFETCH(QByteArray, database);
    const QString file = m_cards + u"/OTHER.bak"_s;
    QVERIFY(LogArchive().write(file, backup));
    VehicleLog log;
    log.entries() = { sampleTrip(), sampleTrip(), sampleTrip() };
    log.setFreshDatabase(true);
    RecordingReporter reporter;
    QVERIFY(VehicleBackup::restore(log, file, u"My Car"_s, m_data, u"VIN7"_s, reporter));
    QCOMPARE(reporter.texts(), QStringList { u"Backup restored for My Car"_s });
    QCOMPARE(log.entries().size(), backup.size());
    QCOMPARE(fileBytes(m_data + u"VIN7.vcb"_s), database);
}

void TestVehicleBackup::restoreFailures_data()
{
    QTest::addColumn<QByteArray>("content"); // empty: no file at all
    QTest::addColumn<QString>("detail");
    QTest::newRow("missing file") << QByteArray() << QString();
    const QByteArray good = LogArchive::encode({ sampleFuel() });
    QTest::newRow("truncated")
        << good.left(good.size() - 2)
        << u"\nThe log file %1 is damaged: the file ends too early (at byte 177, 2 more bytes needed)."_s;
}

void TestVehicleBackup::restoreFailures()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, detail);
    const QString file = m_cards + u"/VIN7.bak"_s;
    if (!content.isEmpty())
        QVERIFY(writeBytes(file, content));
    const QByteArray before = LogArchive::encode({ sampleTrip() });
    QVERIFY(writeBytes(m_data + u"VIN7.vcb"_s, before));
    VehicleLog log;
    log.entries() = { sampleTrip() };
    RecordingReporter reporter;
    QVERIFY(!VehicleBackup::restore(log, file, u"My Car"_s, m_data, u"VIN7"_s, reporter));
    QCOMPARE(reporter.texts(), QStringList { u"ERROR 106! Unable to restore My Car"_s + detail.arg(file) });
    QCOMPARE(log.entries().size(), size_t(1));
    QVERIFY(log.entries()[0] == sampleTrip());
    QCOMPARE(fileBytes(m_data + u"VIN7.vcb"_s), before);
    if (!content.isEmpty())
        QCOMPARE(fileBytes(file), content); // a bad backup is left where it is
}

QTEST_GUILESS_MAIN(TestVehicleBackup)
#include "tst_vehicle_backup.moc"
