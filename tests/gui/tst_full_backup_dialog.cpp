#include "gui_helper.h"
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStringDecoder>
#include <QTreeWidget>
#include <QtTest>

#include "app/VehicleSelector.h"
#include "log/LogArchive.h"
#include "storage/FullBackupDialog.h"
#include "storage/SafeCopy.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Now = 1709640000; // 2024-03-05 12:00:00 UTC

struct BackupSandbox : Sandbox
{
    BackupSandbox()
        : Sandbox(Now)
    {
        options.createKey(u"Options"_s);
        put(data() + u"VAN1.vcb"_s, TestFiles::logBytes(12000));
        installTemplates();
        QDir().mkpath(root() + u"Storage Card"_s);
    }
    QString root() const { return context.paths.root(); }
    QString preference(const QString &key) const
    {
        return context.preferences().getString(u"ListAttributes"_s, key, u"<unset>"_s);
    }
};

// Runs the action, then drives the modal dialog it opens: the run button, then Abort if still open.
void triggerAndRun(QAction *action)
{
    QTimer::singleShot(0, [] {
        auto *dialog = qobject_cast<FullBackupDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->runButton()->click();
        if (dialog->isVisible())
            dialog->abortButton()->click();
    });
    action->trigger();
}

} // namespace

class TestFullBackupDialog : public QObject
{
    Q_OBJECT

private slots:
    void backupToRememberedDrive();
    void backupWithFailureStaysOpen();
    void restoreListsFilesAndStaysOpen();
    void mainScreenRecordsAndReloads();
};

void TestFullBackupDialog::backupToRememberedDrive()
{
    BackupSandbox s;
    s.context.preferences().writeString(u"ListAttributes"_s, u"LastBackup"_s, u"Storage Card"_s);
    FullBackupDialog dialog(FullBackup::Kind::Backup, s.context);
    QCOMPARE(dialog.windowTitle(), u"FULL BACKUP"_s);
    QCOMPARE(items(dialog.locationBox()), (QStringList { u"Main Memory"_s, u"Storage Card"_s }));
    QCOMPARE(dialog.locationBox()->currentText(), u"Storage Card"_s);
    QCOMPARE(dialog.runButton()->text(), u"Backup"_s);
    QCOMPARE(dialog.filesList()->headerItem()->text(0), u"FILES COPIED"_s);
    shoot(&dialog, u"full-backup-open"_s);

    // No leaves everything as it was.
    dialog.runButton()->click();
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFileInfo::exists(s.root() + u"Storage Card/Tarvane Backup"_s));

    s.reporter.setNextAnswer(true);
    dialog.runButton()->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(column(dialog.filesList()), (QStringList { u"VAN1.vcb"_s, u"Lists.ini"_s, u"Velcora.ini"_s }));
    QCOMPARE(readAll(s.root() + u"Storage Card/Tarvane Backup/Tarvane Data Files/VAN1.vcb"_s),
             TestFiles::logBytes(12000));
    const QString question = FullBackup::backupQuestion();
    QCOMPARE(s.reporter.texts(), (QStringList { question, question, u"Backup Complete"_s }));
    QCOMPARE(s.reporter.messages().first().title, u"FULL BACKUP"_s);
    QCOMPARE(s.preference(u"LastBackup"_s), u"Storage Card"_s);
    QCOMPARE(s.preference(u"LastBackupDate"_s), u"3/5/2024 12:00 PM"_s);
}

void TestFullBackupDialog::backupWithFailureStaysOpen()
{
    BackupSandbox s;
    const auto failing = [](const QString &source, const QString &target, QString *error) {
        if (source.endsWith(u"Lists.ini"_s)) {
            *error = u"No space left on device"_s;
            return false;
        }
        return SafeCopy::copy(source, target, error);
    };
    FullBackupDialog dialog(FullBackup::Kind::Backup, s.context, nullptr, {}, failing);
    dialog.show();
    s.reporter.setNextAnswer(true);
    dialog.runButton()->click();
    QVERIFY(dialog.isVisible());
    QCOMPARE(
        column(dialog.filesList()),
        (QStringList { u"VAN1.vcb"_s, u"Lists.ini: failed (No space left on device)"_s, u"Velcora.ini"_s }));
    QVERIFY(s.reporter.texts().last().startsWith(u"Backup incomplete: 1 of 3 files could not be copied."_s));
    QCOMPARE(s.preference(u"LastBackupDate"_s), u"<unset>"_s);
    dialog.resize(480, 640);
    shoot(&dialog, u"full-backup-failed-480x640"_s);
}

void TestFullBackupDialog::restoreListsFilesAndStaysOpen()
{
    BackupSandbox s;
    const QString backup = s.root() + u"Tarvane Backup/"_s;
    put(backup + u"Tarvane Data Files/VAN1.vcb"_s, TestFiles::logBytes(15000));
    put(backup + u"Tarvane Data Files/BROKEN.vcb"_s, "not a log");
    put(backup + u"Tarvane Setup Files/Lists.ini"_s, readAll(u":/install/Lists.ini"_s));
    const auto noDrives = [] {
        return std::optional<QList<BackupLocation>>(QList<BackupLocation>());
    };
    FullBackupDialog dialog(FullBackup::Kind::Restore, s.context, nullptr, noDrives);
    QCOMPARE(dialog.windowTitle(), u"FULL RESTORE"_s);
    QCOMPARE(items(dialog.locationBox()), QStringList { u"Main Memory"_s });
    QCOMPARE(dialog.runButton()->text(), u"Restore"_s);
    dialog.show();
    s.reporter.setNextAnswer(true);
    dialog.runButton()->click();
    QVERIFY(dialog.isVisible());
    QVERIFY(dialog.hasRun());
    QCOMPARE(column(dialog.filesList()),
             (QStringList { u"BROKEN.vcb: skipped, damaged"_s, u"VAN1.vcb"_s, u"Lists.ini"_s }));
    QCOMPARE(readAll(s.data() + u"VAN1.vcb"_s), TestFiles::logBytes(15000));
    QCOMPARE(readAll(s.data() + u"Before restore 20240305-120000/VAN1.vcb"_s), TestFiles::logBytes(12000));
    QVERIFY(s.reporter.texts().first().endsWith(u"Before restore 20240305-120000/\nConinue?"_s));
    dialog.resize(480, 640);
    shoot(&dialog, u"full-restore-480x640"_s);
    dialog.abortButton()->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(s.preference(u"LastRestore"_s), u"Main Memory"_s);
}

void TestFullBackupDialog::mainScreenRecordsAndReloads()
{
    BackupSandbox s;
    s.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    s.startSession().saveAfterStartup();
    MainWindow &window = s.startWindow();
    QMenu *storage = window.menuBar()->actions().first()->menu()->actions().last()->menu();
    QAction *fullBackup = storage->actions().at(3);
    QAction *fullRestore = storage->actions().at(4);
    QCOMPARE(fullBackup->text(), u"FULL Backup"_s);
    QCOMPARE(fullRestore->text(), u"FULL Restore"_s);
    auto topRow = [&window] {
        const QListWidgetItem *item = window.reminderList()->item(0);
        return u"%1: %2"_s.arg(item->data(Qt::UserRole).toInt()).arg(item->text());
    };

    s.reporter.setNextAnswer(true);
    triggerAndRun(fullBackup);
    QCOMPARE(topRow(), u"6: Full Backup: 3/5/2024 12:00 PM"_s);

    // The backup's settings name the vehicle differently: after the restore the selector shows it.
    const QString ini = QStringDecoder(QStringDecoder::Utf16)(readAll(s.data() + u"Velcora.ini"_s));
    QString renamed = ini;
    renamed.replace(u"My Car"_s, u"Old Car"_s);
    put(s.root() + u"Tarvane Backup/Tarvane Setup Files/Velcora.ini"_s, TestFiles::utf16(renamed));
    s.clock.set(Now + 3600);
    s.reporter.setNextAnswer(true);
    triggerAndRun(fullRestore);
    QCOMPARE(window.vehicleSelector()->itemText(0), u"Old Car"_s);
    QCOMPARE(topRow(), u"7: Full Restore: 3/5/2024 1:00 PM"_s);
    window.resize(480, 640);
    shoot(&window, u"mainwindow-after-full-restore"_s);
}

QTEST_MAIN(TestFullBackupDialog)
#include "tst_full_backup_dialog.moc"
