#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "core/context_helper.h"
#include "core/files_helper.h"
#include "log/LogArchive.h"
#include "platform/AppContext.h"
#include "storage/BackupLocations.h"
#include "storage/FullBackup.h"
#include "storage/SafeCopy.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Now = 1709640000; // 2024-03-05 12:00:00 UTC

using Files = QMap<QString, QByteArray>;
using TestFiles::logBytes;
using TestFiles::put;
using TestFiles::read;
using TestFiles::snapshot;

// Gives the first `good` bytes, then fails, as a card pulled half way through a read would.
class FailingSource : public QBuffer
{
public:
    FailingSource(const QByteArray &bytes, qint64 good)
        : m_good(good)
    {
        setData(bytes);
        open(QIODevice::ReadOnly);
    }

protected:
    qint64 readData(char *data, qint64 max) override
    {
        if (pos() >= m_good) {
            setErrorString(u"Input/output error"_s);
            return -1;
        }
        return QBuffer::readData(data, std::min(max, m_good - pos()));
    }

private:
    qint64 m_good;
};

struct Sandbox : TestContext
{
    Sandbox()
        : TestContext(Now)
    { }

    QString root() const { return context.paths.root(); }
    QString data() const { return context.paths.dataFolder(); }
    QString mainBackup() const { return root() + u"Tarvane Backup/"_s; }
    QString preference(const QString &key) const
    {
        return context.preferences().getString(u"ListAttributes"_s, key, u"<unset>"_s);
    }
};

QStringList texts(const FullCopyResult &result)
{
    QStringList lines;
    for (const FullCopyStep &step : result.steps)
        lines.append(step.text());
    return lines;
}

} // namespace

class TestFullBackup : public QObject
{
    Q_OBJECT

private slots:
    void removableDrives_data();
    void removableDrives();
    void sandboxLocations();
    void failedEnumerationLeavesMainMemory();
    void driveNamedMainMemoryIsMainMemory();
    void backupWithoutLogsCopiesSettings();
    void secondBackupReplacesSameNamesKeepsOthers();
    void failedCopyIsListedAndDateKept();
    void backupToVanishedDriveWritesNothing();
    void restoreFromEmptyLocation();
    void restoreKeepsReplacedFilesAndSkipsDamagedLog();
    void declinedRestoreChangesNothing();
    void safeCopyFailureLeavesTargetWhole();
    void safeCopyReplacesLargeFile();
};

void TestFullBackup::removableDrives_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("offered");
    QTest::newRow("usb stick") << u"/media/anna/USB STICK"_s << true << false << true;
    QTest::newRow("run media") << u"/run/media/anna/SD"_s << true << false << true;
    QTest::newRow("mnt") << u"/mnt/card/"_s << true << false << true;
    QTest::newRow("not ready") << u"/media/anna/CD"_s << false << false << false;
    QTest::newRow("read-only") << u"/media/anna/DVD"_s << true << true << false;
    QTest::newRow("root") << u"/"_s << true << false << false;
    QTest::newRow("home file system") << u"/mnt/home"_s << true << false << false;
    QTest::newRow("system mount") << u"/srv/data"_s << true << false << false;
    QTest::newRow("bare /media") << u"/media/"_s << true << false << false;
}

void TestFullBackup::removableDrives()
{
    QFETCH(QString, root);
    QFETCH(bool, ready);
    QFETCH(bool, readOnly);
    QFETCH(bool, offered);
    QCOMPARE(BackupLocations::isRemovableDrive({ root, ready, readOnly }, u"/"_s, u"/mnt/home"_s), offered);
}

void TestFullBackup::sandboxLocations()
{
    Sandbox s;
    QVERIFY(QDir().mkpath(s.root() + u"Storage Card 2"_s));
    QVERIFY(QDir().mkpath(s.root() + u"Storage Card"_s));
    QVERIFY(QDir().mkpath(s.root() + u"Other"_s));
    put(s.root() + u"Storage Card.txt"_s, "not a folder");

    const QList<BackupLocation> locations
        = BackupLocations::list(s.reporter, BackupLocations::systemDrives(s.context.paths));
    const QList<BackupLocation> expected { { u"Main Memory"_s, QString() },
                                           { u"Storage Card"_s, s.root() + u"Storage Card/"_s },
                                           { u"Storage Card 2"_s, s.root() + u"Storage Card 2/"_s } };
    QCOMPARE(locations, expected);
    QCOMPARE(BackupLocations::backupFolder(s.context.paths, locations[2]),
             s.root() + u"Storage Card 2/Tarvane Backup/"_s);
    QCOMPARE(s.reporter.texts(), QStringList());
}

void TestFullBackup::failedEnumerationLeavesMainMemory()
{
    Sandbox s;
    const auto failing = []() -> std::optional<QList<BackupLocation>> {
        return std::nullopt;
    };
    const QList<BackupLocation> expected { { u"Main Memory"_s, QString() } };
    QCOMPARE(BackupLocations::list(s.reporter, failing), expected);
    QCOMPARE(s.reporter.texts(), QStringList { u"ERROR: Memory allocation failure., returning..."_s });
}

void TestFullBackup::driveNamedMainMemoryIsMainMemory()
{
    Sandbox s;
    const BackupLocation stick { u"My Main Memory Stick"_s, u"/media/anna/My Main Memory Stick/"_s };
    QCOMPARE(BackupLocations::driveName(stick.mountPoint), stick.name);
    const std::optional<BackupLocation> found = BackupLocations::find({ stick }, stick.name);
    QVERIFY(found.has_value());
    QCOMPARE(BackupLocations::backupFolder(s.context.paths, *found), s.mainBackup());
    QCOMPARE(BackupLocations::backupFolder(s.context.paths, stick), s.mainBackup());
    QVERIFY(!BackupLocations::find({ stick }, u"USB"_s).has_value());
}

void TestFullBackup::backupWithoutLogsCopiesSettings()
{
    Sandbox s;
    put(s.data() + u"Velcora.ini"_s, "settings");
    put(s.data() + u"Lists.ini"_s, "lists");
    put(s.data() + u"notes.txt"_s, "not copied");
    put(s.data() + u"VAN1.vcb.damaged-20240101-000000"_s, "not copied either");

    FullBackup backup(s.context);
    QList<FullCopyStep> seen;
    s.reporter.setNextAnswer(true);
    const auto result = backup.run(FullBackup::Kind::Backup, { u"Main Memory"_s, QString() },
                                   [&seen](const FullCopyStep &step) { seen.append(step); });
    QVERIFY(result.has_value());
    QCOMPARE(texts(*result), (QStringList { u"Lists.ini"_s, u"Velcora.ini"_s }));
    QCOMPARE(seen, result->steps);
    QCOMPARE(snapshot(s.mainBackup()),
             (Files { { u"Tarvane Setup Files/Lists.ini"_s, "lists" },
                      { u"Tarvane Setup Files/Velcora.ini"_s, "settings" } }));
    QVERIFY(QFileInfo(s.mainBackup() + u"Tarvane Data Files"_s).isDir());
    QCOMPARE(s.reporter.texts(), (QStringList { FullBackup::backupQuestion(), u"Backup Complete"_s }));
    QCOMPARE(s.preference(u"LastBackupDate"_s), u"3/5/2024 12:00 PM"_s);
}

void TestFullBackup::secondBackupReplacesSameNamesKeepsOthers()
{
    Sandbox s;
    const QString card = s.root() + u"Storage Card/Tarvane Backup/"_s;
    put(card + u"Tarvane Data Files/VAN1.vcb"_s, "old van");
    put(card + u"Tarvane Data Files/SOLD.vcb"_s, "a vehicle since deleted");
    put(card + u"Tarvane Setup Files/Velcora.ini"_s, "old settings");
    put(s.data() + u"VAN1.vcb"_s, logBytes(12000));
    put(s.data() + u"BIKE7.vcb"_s, logBytes(500));
    put(s.data() + u"Velcora.ini"_s, "new settings");

    FullBackup backup(s.context);
    const FullCopyResult result = backup.backup(card);
    QCOMPARE(texts(result), (QStringList { u"BIKE7.vcb"_s, u"VAN1.vcb"_s, u"Velcora.ini"_s }));
    QCOMPARE(snapshot(card),
             (Files { { u"Tarvane Data Files/BIKE7.vcb"_s, logBytes(500) },
                      { u"Tarvane Data Files/SOLD.vcb"_s, "a vehicle since deleted" },
                      { u"Tarvane Data Files/VAN1.vcb"_s, logBytes(12000) },
                      { u"Tarvane Setup Files/Velcora.ini"_s, "new settings" } }));
}

void TestFullBackup::failedCopyIsListedAndDateKept()
{
    Sandbox s;
    put(s.data() + u"VAN1.vcb"_s, logBytes(12000));
    put(s.data() + u"Lists.ini"_s, "new lists");
    put(s.data() + u"Velcora.ini"_s, "new settings");
    put(s.mainBackup() + u"Tarvane Setup Files/Lists.ini"_s, "old lists");

    // The drive fills up at Lists.ini: the real copier is used for the others.
    FullBackup backup(s.context, [](const QString &source, const QString &target, QString *error) {
        if (source.endsWith(u"Lists.ini"_s)) {
            *error = u"No space left on device"_s;
            return false;
        }
        return SafeCopy::copy(source, target, error);
    });
    s.reporter.setNextAnswer(true);
    const auto result = backup.run(FullBackup::Kind::Backup, { u"Main Memory"_s, QString() });
    QVERIFY(result.has_value());
    QCOMPARE(
        texts(*result),
        (QStringList { u"VAN1.vcb"_s, u"Lists.ini: failed (No space left on device)"_s, u"Velcora.ini"_s }));
    QCOMPARE(read(s.mainBackup() + u"Tarvane Setup Files/Lists.ini"_s), QByteArray("old lists"));
    QCOMPARE(s.reporter.texts(),
             (QStringList { FullBackup::backupQuestion(),
                            u"Backup incomplete: 1 of 3 files could not be copied.\n"
                            "Earlier copies of the files not copied were left as they were."_s }));
    QCOMPARE(s.reporter.messages().last().kind, Reporter::Kind::Error);
    QCOMPARE(s.preference(u"LastBackupDate"_s), u"<unset>"_s);
}

void TestFullBackup::backupToVanishedDriveWritesNothing()
{
    Sandbox s;
    put(s.data() + u"Velcora.ini"_s, "settings");
    const BackupLocation pulled { u"USB"_s, s.root() + u"media/USB/"_s };
    const FullCopyResult result = FullBackup(s.context).backup(FullBackup(s.context).backupFolder(pulled));
    QCOMPARE(texts(result),
             QStringList { u"Velcora.ini: failed (the location "_s
                           + QDir::toNativeSeparators(s.root() + u"media/USB"_s) + u" is not available)"_s });
    QVERIFY(!QFileInfo::exists(s.root() + u"media"_s));
}

void TestFullBackup::restoreFromEmptyLocation()
{
    Sandbox s;
    put(s.data() + u"VAN1.vcb"_s, logBytes(12000));
    const Files before = snapshot(s.root());
    s.reporter.setNextAnswer(true);
    const auto result = FullBackup(s.context).run(FullBackup::Kind::Restore, { u"Main Memory"_s, QString() });
    QVERIFY(result.has_value());
    QVERIFY(result->steps.isEmpty());
    QCOMPARE(snapshot(s.root()), before);
    QCOMPARE(s.reporter.texts().last(), u"Restore Complete"_s);
    QCOMPARE(s.preference(u"LastRestoreDate"_s), u"3/5/2024 12:00 PM"_s);
}

void TestFullBackup::restoreKeepsReplacedFilesAndSkipsDamagedLog()
{
    Sandbox s;
    const QString backupFolder = s.root() + u"Storage Card/Tarvane Backup/"_s;
    put(backupFolder + u"Tarvane Data Files/VAN1.vcb"_s, logBytes(15000));
    put(backupFolder + u"Tarvane Data Files/BIKE7.vcb"_s, logBytes(800));
    put(backupFolder + u"Tarvane Data Files/CAR3.vcb"_s, QByteArray("\x05\x00\x00\x00garbage", 11));
    put(backupFolder + u"Tarvane Setup Files/Velcora.ini"_s, "restored settings");
    put(s.data() + u"VAN1.vcb"_s, logBytes(12000));
    put(s.data() + u"CAR3.vcb"_s, logBytes(3000));
    put(s.data() + u"TRUCK.vcb"_s, logBytes(90000));
    put(s.data() + u"Velcora.ini"_s, "settings of today");

    FullBackup restore(s.context);
    const QString kept = restore.beforeRestoreFolder();
    QCOMPARE(kept, s.data() + u"Before restore 20240305-120000/"_s);
    s.reporter.setNextAnswer(true);
    const auto result
        = restore.run(FullBackup::Kind::Restore, { u"Storage Card"_s, s.root() + u"Storage Card/"_s });
    QVERIFY(result.has_value());
    QCOMPARE(
        texts(*result),
        (QStringList { u"BIKE7.vcb"_s, u"CAR3.vcb: skipped, damaged"_s, u"VAN1.vcb"_s, u"Velcora.ini"_s }));
    QCOMPARE(result->keptFolder, kept);
    QCOMPARE(snapshot(s.data()),
             (Files { { u"BIKE7.vcb"_s, logBytes(800) },
                      { u"CAR3.vcb"_s, logBytes(3000) },
                      { u"TRUCK.vcb"_s, logBytes(90000) },
                      { u"VAN1.vcb"_s, logBytes(15000) },
                      { u"Velcora.ini"_s, "restored settings" },
                      { u"Before restore 20240305-120000/VAN1.vcb"_s, logBytes(12000) },
                      { u"Before restore 20240305-120000/Velcora.ini"_s, "settings of today" } }));
    const QString nativeKept = QDir::toNativeSeparators(kept);
    QCOMPARE(
        s.reporter.texts(),
        (QStringList { u"This function will replace all vehicle data with the last restore, any data "
                       "entered since the last restore will be lost.\nThe files it replaces are kept in "
                       "the folder\n"_s
                           + nativeKept + u"\nConinue?"_s,
                       u"Restore incomplete: 1 of 4 files were not restored.\n1 damaged vehicle logs in the "
                       "backup were skipped.\nThe data folder keeps its own copies of the files not "
                       "restored.\nThe files replaced are kept in\n"_s
                           + nativeKept }));
    QCOMPARE(s.preference(u"LastRestoreDate"_s), u"<unset>"_s);
    // A second restore in the same second keeps its files apart.
    QCOMPARE(restore.beforeRestoreFolder(), s.data() + u"Before restore 20240305-120000-2/"_s);
}

void TestFullBackup::declinedRestoreChangesNothing()
{
    Sandbox s;
    put(s.mainBackup() + u"Tarvane Data Files/VAN1.vcb"_s, logBytes(15000));
    put(s.data() + u"VAN1.vcb"_s, logBytes(12000));
    const Files before = snapshot(s.root());
    QVERIFY(!FullBackup(s.context).run(FullBackup::Kind::Restore, { u"Main Memory"_s, QString() }));
    QCOMPARE(snapshot(s.root()), before);
    QCOMPARE(s.reporter.texts().size(), 1);
}

void TestFullBackup::safeCopyFailureLeavesTargetWhole()
{
    QTemporaryDir dir;
    const QString target = dir.filePath(u"VAN1.vcb"_s);
    put(target, "the good old log");
    FailingSource source(QByteArray(300 * 1024, 'x'), 100 * 1024);
    QString error;
    QVERIFY(!SafeCopy::copy(source, target, &error));
    QCOMPARE(error, u"Input/output error"_s);
    QCOMPARE(snapshot(dir.path()), (Files { { u"VAN1.vcb"_s, "the good old log" } }));

    QVERIFY(!SafeCopy::copy(target, dir.filePath(u"missing/VAN1.vcb"_s), &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!SafeCopy::copy(dir.filePath(u"nothing.vcb"_s), target, &error));
    QCOMPARE(snapshot(dir.path()), (Files { { u"VAN1.vcb"_s, "the good old log" } }));
}

void TestFullBackup::safeCopyReplacesLargeFile()
{
    QTemporaryDir dir;
    QByteArray big;
    for (int i = 0; i < 200000; ++i)
        big.append(char(i * 7));
    put(dir.filePath(u"source.vcb"_s), big);
    put(dir.filePath(u"target.vcb"_s), "old");
    QVERIFY(SafeCopy::copy(dir.filePath(u"source.vcb"_s), dir.filePath(u"target.vcb"_s)));
    QCOMPARE(snapshot(dir.path()), (Files { { u"source.vcb"_s, big }, { u"target.vcb"_s, big } }));
}

QTEST_GUILESS_MAIN(TestFullBackup)
#include "tst_full_backup.moc"
