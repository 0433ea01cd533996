#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "log/LogArchive.h"
#include "log/VehicleBackup.h"
#include "log/VehicleLog.h"
#include "log_helper.h"
#include "platform/Reporter.h"

Q_DECLARE_METATYPE(EntryList)

using namespace Qt::StringLiterals;

namespace {

// Notes whether the busy flag was up when the closing message came.
struct BusyWatcher : RecordingReporter
{
    void info(const QString &t, const QString &h) override
    {
        seen = *busy;
        RecordingReporter::info(t, h);
    }
    void error(const QString &t, const QString &h) override
    {
        seen = *busy;
        RecordingReporter::error(t, h);
    }
    const bool *busy = nullptr;
    bool seen = false;
};

} // namespace

class TestVehicleBackup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void names_data();
    void names();
    void backup_data();
    void backup();
    void restore_data();
    void restore();

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

void TestVehicleBackup::backup_data()
{
    QTest::addColumn<QString>("folder"); // empty: the card
    QTest::addColumn<QString>("vin");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("failure"); // after the system's text
    QTest::newRow("written over an older one") << QString() << QString() << true << QString();
    QTest::newRow("missing folder")
        << u"/no/such/folder/"_s << u"VIN1"_s << false
        << u"\nUnable to write the log file /no/such/folder/VIN1.bak: No such file or directory."_s;
    QTest::newRow("unsafe VIN") << QString() << u"../VIN1"_s << false << QString();
}

void TestVehicleBackup::backup()
{
    QFETCH(QString, folder);
    QFETCH(QString, vin);
    QFETCH(bool, ok);
    QFETCH(QString, failure);
    if (folder.isEmpty())
        folder = m_cards;
    const QByteArray older(900, 'o');
    QVERIFY(writeBytes(m_cards + u"/UnKnown.bak"_s, older));
    bool busy = false;
    BusyWatcher reporter;
    reporter.busy = &busy;
    QCOMPARE(VehicleBackup::backup({ sampleTrip() }, folder, vin, reporter, busy), ok);
    QVERIFY(reporter.seen);
    QVERIFY(!busy);
    QCOMPARE(reporter.texts(),
             QStringList { ok ? u"Current vehicle backed up to\n"_s + m_cards
                              : u"Backup ERROR 107!\nUnable to backup database"_s + failure });
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    QCOMPARE(QDir(m_cards).entryList(QDir::Files), QStringList { u"UnKnown.bak"_s });
    QCOMPARE(fileBytes(m_cards + u"/UnKnown.bak"_s), ok ? archiveOf({ TripHex }) : older);
}

void TestVehicleBackup::restore_data()
{
    QTest::addColumn<QByteArray>("backup"); // null: no file at all
    QTest::addColumn<EntryList>("entries"); // the list afterwards
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("copyBlocked"); // a folder in the way of the kept copy
    QTest::newRow("two entries") << archiveOf({ MaintenanceHex, FuelHex })
                                 << EntryList { sampleMaintenance(), sampleFuel() }
                                 << u"Backup restored for My Car"_s << false;
    QTest::newRow("empty backup") << hex("00000000") << EntryList() << u"Backup restored for My Car"_s
                                  << false;
    QTest::newRow("missing file") << QByteArray() << EntryList { sampleTrip() }
                                  << u"ERROR 106! Unable to restore My Car"_s << false;
    QTest::newRow("truncated")
        << LogArchive::encode({ sampleFuel() }).chopped(2) << EntryList { sampleTrip() }
        << u"ERROR 106! Unable to restore My Car\nThe log file %1 is damaged: the file "
           "ends too early (at byte 177, 2 more bytes needed)."_s
        << false;
    QTest::newRow("current log can't be kept")
        << hex("00000000") << EntryList { sampleTrip() }
        << u"ERROR 106! Unable to restore My Car\nThe current log could not be kept as %2, so nothing "
           "was restored."_s
        << true;
}

void TestVehicleBackup::restore()
{
    QFETCH(QByteArray, backup);
    QFETCH(EntryList, entries);
    QFETCH(QString, message);
    QFETCH(bool, copyBlocked);
    const QString file = m_cards + u"/VIN7.bak"_s;
    const QString kept = m_data + u"VIN7.vcb.before-restore"_s;
    if (copyBlocked)
        QVERIFY(QDir().mkpath(kept));
    if (!backup.isNull())
        QVERIFY(writeBytes(file, backup));
    const QByteArray before = archiveOf({ TripHex });
    QVERIFY(writeBytes(m_data + u"VIN7.vcb"_s, before));
    VehicleLog log;
    log.entries() = { sampleTrip() };
    log.setFreshDatabase(true); // a vehicle created a moment ago still takes the backup
    RecordingReporter reporter;
    const bool ok = message.startsWith(u"Backup restored"_s);
    QCOMPARE(VehicleBackup::restore(log, file, u"My Car"_s, m_data, u"VIN7"_s, reporter), ok);
    QCOMPARE(reporter.texts(), QStringList { message.replace(u"%1"_s, file).replace(u"%2"_s, kept) });
    // A failed restore keeps the list and the database; a bad backup is left where it is. What a
    // restore replaced is kept beside the log.
    QVERIFY(log.entries() == entries);
    QCOMPARE(fileBytes(m_data + u"VIN7.vcb"_s), ok ? backup : before);
    if (!copyBlocked)
        QCOMPARE(fileBytes(kept), ok ? before : QByteArray("<missing>"));
    QCOMPARE(fileBytes(file), backup.isNull() ? QByteArray("<missing>") : backup);
}

QTEST_GUILESS_MAIN(TestVehicleBackup)
#include "tst_vehicle_backup.moc"
