#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

using CliFiles::readAll;
using TestFiles::logBytes;

namespace {

const QString BackupQuestion
    = u"This function will replace any previous backup with the current database.\nConinue?"_s;

} // namespace

class TestCliFullBackup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void locations();
    void backupThenRestore();
    void restoreWithoutYesChangesNothing();
    void unknownLocation();
    void failedCopiesExitOne();

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<CliRunner> m_cli;
    QString m_data;
};

void TestCliFullBackup::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    m_cli = std::make_unique<CliRunner>(m_root->path());
    m_data = m_root->path() + u"/My Documents/Tarvane Files/"_s;
    // Options as the program leaves them after a first run, so no start-up warning mixes in.
    m_cli->options.createKey(u"Options"_s);
    QCOMPARE(m_cli->run({ u"vehicles"_s }).exitCode, 0);
    CliFiles::put(m_data + u"MYCAR0001.vcb"_s, logBytes(12000));
    QVERIFY(QDir().mkpath(m_root->path() + u"/Storage Card"_s));
}

void TestCliFullBackup::locations()
{
    const CliResult r = m_cli->run({ u"locations"_s });
    QCOMPARE(r.exitCode, 0);
    const QString root = QDir::toNativeSeparators(m_root->path() + u'/');
    QCOMPARE(r.out,
             u"Main Memory\t%1Tarvane Backup/\nStorage Card\t%1Storage Card/Tarvane Backup/\n"_s.arg(root));
    QCOMPARE(r.err, QString());
}

void TestCliFullBackup::backupThenRestore()
{
    CliResult r = m_cli->run({ u"--now"_s, u"2024-03-05T14:30"_s, u"--yes"_s, u"full-backup"_s,
                               u"--location"_s, u"Storage Card"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out, u"MYCAR0001.vcb\nLists.ini\nVelcora.ini\nBackup Complete\n"_s);
    QCOMPARE(r.err, BackupQuestion + u" [Yes]\n"_s);
    const QString card = m_root->path() + u"/Storage Card/Tarvane Backup/"_s;
    QCOMPARE(readAll(card + u"Tarvane Data Files/MYCAR0001.vcb"_s), logBytes(12000));
    QCOMPARE(readAll(card + u"Tarvane Setup Files/Velcora.ini"_s), readAll(m_data + u"Velcora.ini"_s));
    QCOMPARE(m_cli->preferences.value(u"ListAttributes"_s, u"LastBackupDate"_s).toString(),
             u"3/5/24 2:30 PM"_s);
    QCOMPARE(m_cli->preferences.value(u"ListAttributes"_s, u"LastBackup"_s).toString(), u"Storage Card"_s);

    // A mistake after the backup, undone by the restore; the restore remembers its own location.
    CliFiles::put(m_data + u"MYCAR0001.vcb"_s, logBytes(99999));
    r = m_cli->run({ u"--now"_s, u"2024-03-06T08:00"_s, u"--yes"_s, u"full-restore"_s, u"--location"_s,
                     u"Storage Card"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out, u"MYCAR0001.vcb\nLists.ini\nVelcora.ini\nRestore Complete\n"_s);
    QCOMPARE(readAll(m_data + u"MYCAR0001.vcb"_s), logBytes(12000));
    QCOMPARE(readAll(m_data + u"Before restore 20240306-080000/MYCAR0001.vcb"_s), logBytes(99999));
    QCOMPARE(m_cli->preferences.value(u"ListAttributes"_s, u"LastRestoreDate"_s).toString(),
             u"3/6/24 8:00 AM"_s);

    r = m_cli->run({ u"--yes"_s, u"full-restore"_s });
    QCOMPARE(r.exitCode, 0);
    QVERIFY(r.out.startsWith(u"MYCAR0001.vcb\n"_s)); // from "Storage Card" again, not main memory
}

void TestCliFullBackup::restoreWithoutYesChangesNothing()
{
    QCOMPARE(m_cli->run({ u"--yes"_s, u"full-backup"_s }).exitCode, 0);
    CliFiles::put(m_data + u"MYCAR0001.vcb"_s, logBytes(99999));
    const CliResult r = m_cli->run({ u"full-restore"_s });
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(r.out, QString());
    QVERIFY(r.err.endsWith(u"\nConinue? [No]\n"_s));
    QCOMPARE(readAll(m_data + u"MYCAR0001.vcb"_s), logBytes(99999));
    QCOMPARE(QDir(m_data).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList());
}

void TestCliFullBackup::unknownLocation()
{
    const CliResult r = m_cli->run({ u"--yes"_s, u"full-backup"_s, u"--location"_s, u"USB"_s });
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(r.err,
             u"The location \"USB\" is not available; tarvane-cli locations lists those that are.\n"_s);
    QVERIFY(!QFileInfo::exists(m_root->path() + u"/Tarvane Backup"_s));
}

void TestCliFullBackup::failedCopiesExitOne()
{
    // A file where the backup folder should be: no folder can be made, nothing can be copied.
    CliFiles::put(m_root->path() + u"/Tarvane Backup"_s, "in the way");
    const CliResult r = m_cli->run({ u"--yes"_s, u"full-backup"_s });
    QCOMPARE(r.exitCode, 1);
    const QString reason = u"unable to create the folder "_s
        + QDir::toNativeSeparators(m_root->path() + u"/Tarvane Backup/Tarvane "_s);
    QCOMPARE(r.out,
             u"MYCAR0001.vcb: failed (%1Data Files/)\nLists.ini: failed (%1Setup Files/)\n"
             "Velcora.ini: failed (%1Setup Files/)\n"_s.arg(reason));
    QVERIFY(r.err.endsWith(u"Backup incomplete: 3 of 3 files could not be copied.\n"
                           "Earlier copies of the files not copied were left as they were.\n"_s));
    QVERIFY(!m_cli->preferences.value(u"ListAttributes"_s, u"LastBackupDate"_s).isValid());
}

QTEST_GUILESS_MAIN(TestCliFullBackup)
#include "tst_cli_full_backup.moc"
