#include "gui_helper.h"
#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QtTest>

#include "app/AboutDialog.h"
#include "app/VehicleSelector.h"
#include "log/LogArchive.h"
#include "widgets/TileCounter.h"

using namespace Qt::StringLiterals;

namespace {

// 2024-03-01 00:00:00 UTC.
constexpr quint32 Now = 1709251200;
constexpr quint32 Day = 86400;

class CountingHelp : public HelpLauncher
{
public:
    bool showHelp(QWidget *, const QString &section) override
    {
        sections.append(section);
        return true;
    }
    QStringList sections;
};

CVCItem record(CVCItem::EntryType type, int icon, const QString &text, double odometer, quint32 date)
{
    return { .iconIndex = icon,
             .entryType = type,
             .odometer = odometer,
             .entryDate = date,
             .typeText = text,
             .endOdometer = type == CVCItem::Trip ? odometer : 0 };
}

CVCItem fuel(double odometer, double gallons, double economy, quint32 date)
{
    return { .odometer = odometer,
             .entryDate = date,
             .typeText = u"Fuel"_s,
             .fuelMeasure = u"Gallons"_s,
             .fuelQuantity = gallons,
             .economy = economy };
}

// The log of the van: three full fill-ups (0, 30 and 25 MPG), an oil change 200 days ago and an
// open trip that carries the odometer to 12345.6.
EntryList vanLog()
{
    return { fuel(10000, 10, 0, Now - 300 * Day), fuel(10300, 10, 30.0, Now - 250 * Day),
             record(CVCItem::Maintenance, 4, u"Oil Change"_s, 10350, Now - 200 * Day),
             fuel(10600, 12, 25.0, Now - 150 * Day),
             record(CVCItem::Trip, 18, u"Trip"_s, 12345.6, Now - 10 * Day) };
}

QString vehicleSection(const QString &name, const QString &vin, int startOdometer, int oilDays,
                       int oilDistance)
{
    QString s = u"\r\n[%1]\r\nDirectory=My Documents\\Tarvane Files\\\r\nVIN=%2\r\n"_s.arg(name, vin);
    s += u"Make=Ford\r\nModel=Transit\r\nYear=2015\r\nPlate=V1\r\nStart Odometer=%1\r\n"_s.arg(startOdometer);
    s += u"OilDays=%1\r\nOilDistance=%2\r\n"_s.arg(oilDays).arg(oilDistance);
    for (const char *key : { "CoolDays", "CoolDistance", "TransDays", "TransDistance", "TuneDays",
                             "TuneDistance", "TireDays", "TireDistance" })
        s += QString::fromLatin1(key) + u"=0\r\n"_s;
    return s + u"Distance=Mile\r\nEcono=MPG\r\nLiquid=US\r\n"_s;
}

// Two vehicles: the van with its log, and a bike that has never been opened.
void prepareTwoVehicles(const QString &dataFolder)
{
    QDir().mkpath(dataFolder);
    QString ini = u"\r\n[VehicleList]\r\nVehicle0=Van\r\nVehicle1=Bike\r\n"_s;
    ini += vehicleSection(u"Van"_s, u"VAN1"_s, 10000, 180, 3000);
    ini += vehicleSection(u"Bike"_s, u"BIKE7"_s, 500, 0, 0);
    ini += u"\r\n[TripSettings]\r\nSortListBy=Date\r\n"_s;
    put(dataFolder + u"Velcora.ini"_s, TestFiles::utf16(ini));
    put(dataFolder + u"Lists.ini"_s, readAll(u":/install/Lists.ini"_s));
    QVERIFY(LogArchive().write(dataFolder + u"VAN1.vcb"_s, vanLog()));
}

// The reminder lines as "icon: text", top to bottom.
QStringList rows(const QListWidget *list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out.append(u"%1: %2"_s.arg(list->item(i)->data(Qt::UserRole).toInt()).arg(list->item(i)->text()));
    return out;
}

// Nothing logged and nothing due: the welcome lines over the last-backup line.
const QStringList WelcomeRows { u"0: Welcome to Tarvane Mobile"_s, u"2: No reminders due"_s,
                                u"6: Last Backup: Unknown"_s };

QStringList menuTexts(const QMenu *menu)
{
    QStringList texts;
    for (QAction *action : menu->actions())
        if (!action->isSeparator())
            texts.append(action->text().remove(u'&'));
    return texts;
}

} // namespace

struct WindowSandbox : Sandbox
{
    WindowSandbox()
        : Sandbox(Now)
    {
        help = &counting;
    }
    void start()
    {
        startSession().saveAfterStartup();
        startWindow();
    }
    QByteArray log() const { return readAll(data() + u"VAN1.vcb"_s); }

    CountingHelp counting;
};

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptySandboxShowsTemplateVehicle();
    void preparedLog();
    void changeVehicle();
    void backupAndRestore_data();
    void backupAndRestore();
    void menuItemsAndShortcuts();
    void aboutShowsVersionAndDataFolder();
    void helpRequestAndPage();
    void geometryRemembered();

private:
    void startPrepared();

    std::unique_ptr<WindowSandbox> m_box;
};

void TestMainWindow::init()
{
    m_box = std::make_unique<WindowSandbox>();
    QVERIFY(m_box->dir.isValid());
}

void TestMainWindow::cleanup()
{
    m_box.reset();
}

void TestMainWindow::startPrepared()
{
    prepareTwoVehicles(m_box->data());
    m_box->options.setValue(u"Options"_s, u"Name"_s, u"Van"_s);
    m_box->start();
}

void TestMainWindow::emptySandboxShowsTemplateVehicle()
{
    m_box->start();
    MainWindow &w = *m_box->window;
    QCOMPARE(w.windowTitle(), u"Tarvane"_s);
    QVERIFY(QFile::exists(m_box->data() + u"Velcora.ini"_s));
    QVERIFY(QFile::exists(m_box->data() + u"Lists.ini"_s));

    // The template's vehicle is offered; none is chosen yet.
    QCOMPARE(w.vehicleSelector()->count(), 1);
    QCOMPARE(w.vehicleSelector()->itemText(0), u"My Car"_s);
    QCOMPARE(w.vehicleSelector()->currentIndex(), -1);
    QCOMPARE(w.vehicleSelector()->placeholderText(), u"Select Vehicle"_s);
    QCOMPARE(rows(w.reminderList()), WelcomeRows);
    QVERIFY(w.noRemindersLabel()->isHidden());

    // A counter without a reading keeps its drums, so the screen does not jump.
    QCOMPARE(w.odometerCounter()->tiles().size(), 7);
    QCOMPARE(w.currentEconomyCounter()->tiles().size(), 6);
    QCOMPARE(w.averageEconomyCounter()->tiles().size(), 6);
    // A fresh machine has no options yet: said once, then the first exit creates them.
    const QStringList fresh { u"REGKEY_OPTIONS error detected, Attempting to correct."_s };
    QCOMPARE(m_box->reporter.texts(), fresh);
    QVERIFY(!m_box->options.keyExists(u"Options"_s));

    // Nothing can be logged before a vehicle is chosen, and the window says so.
    for (QAction *action : { w.fuelAction(), w.repairsAction(), w.tripsAction() })
        QVERIFY(!action->isEnabled());
    QVERIFY(!w.chooseVehicleHint()->isHidden());
    w.addEntry(CVCItem::Fuel);
    QCOMPARE(readAll(m_box->data() + u"UnKnown.vcb"_s), QByteArray(4, '\0'));

    w.resize(480, 640);
    shoot(&w, u"mainwindow-empty-480x640"_s);

    // Choosing it opens its (new, empty) log.
    w.vehicleSelector()->setCurrentIndex(0);
    QCOMPARE(m_box->session->currentVehicleName(), u"My Car"_s);
    QCOMPARE(readAll(m_box->data() + u"MYCAR0001.vcb"_s), QByteArray(4, '\0'));
    QCOMPARE(rows(w.reminderList()), WelcomeRows);
    for (QAction *action : { w.fuelAction(), w.repairsAction(), w.tripsAction() })
        QVERIFY(action->isEnabled());
    QVERIFY(w.chooseVehicleHint()->isHidden());
    shoot(&w, u"mainwindow-template-480x640"_s);

    w.close();
    QCOMPARE(m_box->options.value(u"Options"_s, u"Name"_s).toString(), u"My Car"_s);
    QCOMPARE(m_box->reporter.texts(), fresh);
}

void TestMainWindow::preparedLog()
{
    startPrepared();
    MainWindow &w = *m_box->window;
    QCOMPARE(w.vehicleSelector()->currentText(), u"Van"_s);
    QCOMPARE(m_box->reporter.texts(), QStringList());

    // The open trip carries the odometer to 12345.6: 0012346.
    QVERIFY(!w.odometerCounter()->isNoData());
    QCOMPARE(w.odometerCounter()->tiles(), whole("0012346"));
    // Current 25.00 under an average of (30 + 25) / 2 = 27.50: the current one in the alert set.
    QVERIFY(!w.currentEconomyCounter()->isNoData());
    QCOMPARE(w.currentEconomyCounter()->tiles(), (QList<int> { 300, 302, 305, 310, 300, 300 }));
    QCOMPARE(w.averageEconomyCounter()->tiles(), (QList<int> { 235, 237, 242, 245, 240, 235 }));

    // Oil every 180 days, done 200 days ago; 1995.6 miles since, under the 3000 interval.
    // The newest line stands on top.
    QCOMPARE(rows(w.reminderList()),
             (QStringList { u"3: Found 1    open trip"_s, u"5: Oil change OVERDUE by: 20   days"_s,
                            u"6: Last Backup: Unknown"_s }));
    QVERIFY(w.noRemindersLabel()->isHidden());

    w.resize(480, 640);
    shoot(&w, u"mainwindow-log-480x640"_s);
    w.resize(1024, 768);
    shoot(&w, u"mainwindow-log-1024x768"_s);
}

void TestMainWindow::changeVehicle()
{
    startPrepared();
    MainWindow &w = *m_box->window;
    QCOMPARE(w.vehicleSelector()->count(), 2);
    QVERIFY(!QFile::exists(m_box->data() + u"BIKE7.vcb"_s));

    w.vehicleSelector()->setCurrentIndex(1);
    QCOMPARE(m_box->session->currentVehicleName(), u"Bike"_s);

    // A vehicle without a log gets an empty one and shows its start odometer.
    QCOMPARE(readAll(m_box->data() + u"BIKE7.vcb"_s), QByteArray(4, '\0'));
    QCOMPARE(w.odometerCounter()->tiles(), whole("0000500"));
    // An opened vehicle without a full fill-up shows 0 economy, not "No Data".
    for (TileCounter *counter : { w.currentEconomyCounter(), w.averageEconomyCounter() }) {
        QVERIFY(!counter->isNoData());
        QCOMPARE(counter->tiles(), (QList<int> { 235, 235, 235, 245, 235, 235 }));
    }
    QCOMPARE(rows(w.reminderList()), WelcomeRows);
    shoot(&w, u"mainwindow-bike-480x640"_s);

    // And back: the van's figures return.
    w.vehicleSelector()->setCurrentIndex(0);
    QCOMPARE(w.odometerCounter()->tiles(), whole("0012346"));
    QCOMPARE(w.reminderList()->count(), 3);

    // Closing the window writes the options with the vehicle last chosen.
    w.vehicleSelector()->setCurrentIndex(1);
    w.close();
    QCOMPARE(m_box->options.value(u"Options"_s, u"Name"_s).toString(), u"Bike"_s);
    QCOMPARE(m_box->reporter.texts(), QStringList());
}

void TestMainWindow::backupAndRestore_data()
{
    QTest::addColumn<bool>("restore");
    QTest::addColumn<QString>("answer"); // relative to the sandbox; "-" cancels
    QTest::addColumn<QString>("message"); // %1 stands for the sandbox
    QTest::addColumn<bool>("done");

    QTest::newRow("backup into a folder")
        << false << u"backups"_s << u"Current vehicle backed up to\n%1/backups/"_s << true;
    QTest::newRow("backup cancelled") << false << u"-"_s << QString() << false;
    QTest::newRow("backup folder missing") << false << u"no such folder"_s
                                           << u"Backup ERROR 107!\nUnable to backup database\nUnable to "
                                              u"write the log file %1/no such folder/VAN1.bak: "
                                              "No such file or directory."_s
                                           << false;
    QTest::newRow("restore another vehicle's backup")
        << true << u"saved/OTHER.bak"_s << u"Backup restored for Van"_s << true;
    QTest::newRow("restore cancelled") << true << u"-"_s << QString() << false;
    QTest::newRow("restore file missing")
        << true << u"saved/GONE.bak"_s << u"ERROR 106! Unable to restore Van"_s << false;
}

void TestMainWindow::backupAndRestore()
{
    QFETCH(bool, restore);
    QFETCH(QString, answer);
    QFETCH(QString, message);
    QFETCH(bool, done);

    startPrepared();
    const QString root = m_box->dir.path();
    // A short log to restore: one fill-up at 20000 miles.
    const EntryList other { fuel(20000, 9, 0, Now - Day) };
    QVERIFY(QDir(root).mkpath(u"backups"_s) && QDir(root).mkpath(u"saved"_s));
    QVERIFY(LogArchive().write(root + u"/saved/OTHER.bak"_s, other));
    if (answer == u"-"_s)
        m_box->chooser.enqueueCancel();
    else
        m_box->chooser.enqueue(root + u'/' + answer);
    const QByteArray log = m_box->log();
    MainWindow &w = *m_box->window;

    (restore ? w.restoreAction() : w.backupAction())->trigger();

    const QString paths = m_box->context.paths.root();
    QCOMPARE(m_box->chooser.requests(),
             QStringList { restore ? QString(u"file "_s + paths + u" VAN1.bak"_s)
                                   : QString(u"folder "_s + paths) });
    QCOMPARE(m_box->reporter.texts(),
             message.isEmpty() ? QStringList() : QStringList { message.replace(u"%1"_s, root) });
    QVERIFY(!m_box->session->isBusy());
    // A backup is the log, byte for byte.
    QCOMPARE(readAll(root + u"/backups/VAN1.bak"_s), done && !restore ? log : QByteArray("<missing>"));
    QCOMPARE(QFile::exists(root + u'/' + answer + u"/VAN1.bak"_s), done && !restore);
    if (done && restore) {
        // The saved log starts with the restored archive; the screen shows it at once.
        QCOMPARE(m_box->log().left(LogArchive::encode(other).size()), LogArchive::encode(other));
        EntryList reread;
        QVERIFY(LogArchive().read(m_box->data() + u"VAN1.vcb"_s, reread));
        QCOMPARE(reread.size(), size_t(1));
        QCOMPARE(m_box->session->entries().size(), size_t(1));
        QCOMPARE(w.odometerCounter()->tiles(), whole("0020000"));
        shoot(&w, u"mainwindow-restored-480x640"_s);
    } else {
        // Nothing of the vehicle changed.
        QCOMPARE(m_box->log(), log);
        QCOMPARE(m_box->session->entries().size(), vanLog().size());
        QCOMPARE(w.odometerCounter()->tiles(), whole("0012346"));
        QCOMPARE(w.reminderList()->count(), 3);
    }
}

void TestMainWindow::menuItemsAndShortcuts()
{
    m_box->start();
    MainWindow &w = *m_box->window;
    const QList<QAction *> top = w.menuBar()->actions();
    QCOMPARE(top.size(), 1);
    QCOMPARE(top.first()->text().remove(u'&'), u"TOOLS"_s);
    QMenu *tools = top.first()->menu();
    QCOMPARE(
        menuTexts(tools),
        (QStringList { u"Fuel"_s, u"Repairs"_s, u"Trips"_s, u"Reminders"_s, u"View Data"_s, u"Setup / Edit"_s,
                       u"Help"_s, u"About"_s, u"Statistics"_s, u"Backup / Restore"_s }));
    QMenu *storage = tools->actions().last()->menu();
    QVERIFY(storage);
    QCOMPARE(
        menuTexts(storage),
        (QStringList { u"Vehicle Backup"_s, u"Vehicle Restore"_s, u"FULL Backup"_s, u"FULL Restore"_s }));

    // Every command has its own key.
    QSet<QKeySequence> keys;
    for (QAction *action : { w.helpAction(), w.aboutAction(), w.backupAction(), w.restoreAction(),
                             w.fuelAction(), w.repairsAction(), w.tripsAction(), w.viewDataAction() }) {
        QVERIFY2(!action->shortcut().isEmpty(), qPrintable(action->text()));
        keys.insert(action->shortcut());
    }
    QCOMPARE(keys.size(), 8);
    QCOMPARE(w.helpAction()->shortcut(), QKeySequence(QKeySequence::HelpContents));
    QCOMPARE(w.quitAction()->shortcut(), QKeySequence(u"Ctrl+Q"_s));
    QVERIFY(w.actions().contains(w.quitAction()));

    // The toolbar keeps the commands used most, so none hides behind its overflow on a small screen.
    QStringList bar;
    for (QAction *action : w.findChild<QToolBar *>(u"toolsBar"_s)->actions())
        if (!action->isSeparator())
            bar.append(action->iconText());
    QCOMPARE(bar, (QStringList { u"Fuel"_s, u"Repairs"_s, u"Trips"_s, u"View Data"_s, u"Help"_s }));
}

void TestMainWindow::aboutShowsVersionAndDataFolder()
{
    m_box->start();
    QStringList texts;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<AboutDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        for (const QString &name : { u"aboutVersion"_s, u"aboutDataFolder"_s })
            texts.append(dialog->findChild<QLabel *>(name)->text());
        shoot(dialog, u"about"_s);
        dialog->accept();
    });
    m_box->window->aboutAction()->trigger();
    QCOMPARE(texts, (QStringList { u"Version 2.2.2 Build 76"_s, QDir::toNativeSeparators(m_box->data()) }));
}

void TestMainWindow::helpRequestAndPage()
{
    m_box->start();
    m_box->window->helpAction()->trigger();

    // F1 in any dialog asks for that dialog's section.
    HelpKeyFilter filter(m_box->counting);
    qApp->installEventFilter(&filter);
    QDialog dialog(m_box->window.get());
    dialog.setWindowTitle(u"Edit List"_s);
    auto *edit = new QLineEdit(&dialog);
    QTest::keyClick(edit, Qt::Key_F1);
    dialog.setProperty("helpSection", u"fuel"_s);
    QTest::keyClick(edit, Qt::Key_F1);
    qApp->removeEventFilter(&filter);
    QCOMPARE(m_box->counting.sections, (QStringList { QString(), u"edit-list"_s, u"fuel"_s }));

    // The page is shown inside the program, from the resources; every dialog's section is there.
    QFile resource(HelpLauncher::resourcePath());
    QVERIFY(resource.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(resource.readAll());
    for (const QString &needle :
         { u"<title>Tarvane Help</title>"_s, u"Velcora.ini"_s, u"Lists.ini"_s, u".vcb"_s, u".bak"_s,
           u"tarvane-cli"_s, u"No Reminders Due"_s, u".before-restore"_s, u"id=\"inserting-data\""_s,
           u"id=\"fuel\""_s, u"id=\"maintenance\""_s, u"id=\"trips\""_s, u"id=\"edit-list\""_s,
           u"id=\"about\""_s, u"id=\"tarvane\""_s, u"</body>"_s })
        QVERIFY2(text.contains(needle), qPrintable(needle));

    HelpDialog viewer(u"trips"_s, m_box->window.get());
    QCOMPARE(viewer.browser()->source().fragment(), u"trips"_s);
    QVERIFY(viewer.browser()->toPlainText().contains(u"Choose a vehicle to start logging"_s));
    viewer.resize(480, 600);
    shoot(&viewer, u"help-viewer"_s);
}

void TestMainWindow::geometryRemembered()
{
    m_box->start();
    QVERIFY(!m_box->window->restoreWindowGeometry());
    m_box->window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_box->window.get()));
    m_box->window->resize(700, 820);
    QCoreApplication::processEvents();
    m_box->window->close();
    QVERIFY(!m_box->preferences.value(MainWindow::preferenceSection(), u"Geometry"_s).toString().isEmpty());

    MainWindow again(*m_box->session, m_box->chooser, *m_box->help);
    QVERIFY(again.restoreWindowGeometry());
    QCOMPARE(again.size(), QSize(700, 820));
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
