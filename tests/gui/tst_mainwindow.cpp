#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

#include "app/AboutDialog.h"
#include "app/FileChooser.h"
#include "app/HelpLauncher.h"
#include "app/MainWindow.h"
#include "app/VehicleSelector.h"
#include "log/LogArchive.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"
#include "widgets/TileCounter.h"

using namespace Qt::StringLiterals;

namespace {

// 2024-03-01 00:00:00 UTC.
constexpr quint32 Now = 1709251200;
constexpr quint32 Day = 86400;

class CountingHelp : public HelpLauncher
{
public:
    bool showHelp(QWidget *) override
    {
        ++calls;
        return true;
    }
    int calls = 0;
};

QByteArray utf16File(const QString &text)
{
    QByteArray bytes("\xFF\xFE", 2);
    for (QChar c : text) {
        bytes.append(char(c.unicode() & 0xFF));
        bytes.append(char(c.unicode() >> 8));
    }
    return bytes;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

CVCItem fuel(double odometer, double gallons, double economy, quint32 date)
{
    CVCItem item;
    item.entryType = CVCItem::Fuel;
    item.iconIndex = 0;
    item.typeText = u"Fuel"_s;
    item.odometer = odometer;
    item.fuelQuantity = gallons;
    item.fuelMeasure = u"Gallons"_s;
    item.economy = economy;
    item.entryDate = date;
    return item;
}

CVCItem repair(const QString &name, double odometer, quint32 date)
{
    CVCItem item;
    item.entryType = CVCItem::Maintenance;
    item.iconIndex = 4;
    item.typeText = name;
    item.odometer = odometer;
    item.entryDate = date;
    return item;
}

CVCItem openTrip(double odometer, quint32 date)
{
    CVCItem item;
    item.entryType = CVCItem::Trip;
    item.iconIndex = 18;
    item.typeText = u"Trip"_s;
    item.odometer = odometer;
    item.endOdometer = odometer;
    item.entryDate = date;
    return item;
}

// The log of the van: three full fill-ups (0, 30 and 25 MPG), an oil change 200 days ago and an
// open trip that carries the odometer to 12345.6.
EntryList vanLog()
{
    return { fuel(10000, 10, 0, Now - 300 * Day), fuel(10300, 10, 30.0, Now - 250 * Day),
             repair(u"Oil Change"_s, 10350, Now - 200 * Day), fuel(10600, 12, 25.0, Now - 150 * Day),
             openTrip(12345.6, Now - 10 * Day) };
}

QString vehicleSection(const QString &name, const QString &vin, int startOdometer, int oilDays,
                       int oilDistance)
{
    QString s = u"\r\n["_s + name + u"]\r\n"_s;
    s += u"Directory=My Documents\\Tarvane Files\\\r\nVIN="_s + vin + u"\r\n"_s;
    s += u"Make=Ford\r\nModel=Transit\r\nYear=2015\r\nPlate=V1\r\n"_s;
    s += u"Start Odometer="_s + QString::number(startOdometer) + u"\r\n"_s;
    s += u"OilDays="_s + QString::number(oilDays) + u"\r\nOilDistance="_s + QString::number(oilDistance)
        + u"\r\n"_s;
    for (const char *key : { "CoolDays", "CoolDistance", "TransDays", "TransDistance", "TuneDays",
                             "TuneDistance", "TireDays", "TireDistance" })
        s += QString::fromLatin1(key) + u"=0\r\n"_s;
    s += u"Distance=Mile\r\nEcono=MPG\r\nLiquid=US\r\n"_s;
    return s;
}

// Two vehicles: the van with its log, and a bike that has never been opened.
void prepareTwoVehicles(const QString &dataFolder)
{
    QDir().mkpath(dataFolder);
    QString ini = u"\r\n[VehicleList]\r\nVehicle0=Van\r\nVehicle1=Bike\r\n"_s;
    ini += vehicleSection(u"Van"_s, u"VAN1"_s, 10000, 180, 3000);
    ini += vehicleSection(u"Bike"_s, u"BIKE7"_s, 500, 0, 0);
    ini += u"\r\n[TripSettings]\r\nSortListBy=Date\r\n"_s;
    QVERIFY(writeBytes(dataFolder + u"Velcora.ini"_s, utf16File(ini)));
    QVERIFY(writeBytes(dataFolder + u"Lists.ini"_s, fileBytes(u":/install/Lists.ini"_s)));
    QVERIFY(LogArchive().write(dataFolder + u"VAN1.vcb"_s, vanLog()));
}

QList<int> tiles(std::initializer_list<int> base, int offset)
{
    QList<int> out;
    for (int digit : base)
        out.append(offset + digit);
    return out;
}

struct ReminderRow
{
    QString text;
    int icon;
    bool operator==(const ReminderRow &) const = default;
};

QList<ReminderRow> rows(const QListWidget *list)
{
    QList<ReminderRow> out;
    for (int i = 0; i < list->count(); ++i)
        out.append({ list->item(i)->text(), list->item(i)->data(Qt::UserRole).toInt() });
    return out;
}

QString stripMnemonic(QString text)
{
    return text.remove(u'&');
}

} // namespace

QT_BEGIN_NAMESPACE
namespace QTest {
template<> char *toString(const ReminderRow &row)
{
    return qstrdup(QStringLiteral("(%1, %2)").arg(row.text).arg(row.icon).toUtf8().constData());
}
} // namespace QTest
QT_END_NAMESPACE

// Everything one run of the program needs, on a sandbox folder.
struct Sandbox
{
    explicit Sandbox(const QString &root)
        : context { DevicePaths(root), reporter, clock, locale, options, preferences }
    { }

    void start()
    {
        session = std::make_unique<VehicleSession>(context);
        session->start();
        session->saveAfterStartup();
        window = std::make_unique<MainWindow>(*session, chooser, help);
    }

    QString dataFolder() const { return context.paths.dataFolder(); }

    RecordingReporter reporter;
    FixedClock clock { Now };
    TestLocaleFormats locale;
    MemorySettingsStore options;
    MemorySettingsStore preferences;
    AppContext context;
    ScriptedFileChooser chooser;
    CountingHelp help;
    std::unique_ptr<VehicleSession> session;
    std::unique_ptr<MainWindow> window;
};

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void emptySandboxShowsTemplateVehicle();
    void preparedLogCounters();
    void preparedLogReminderLines();
    void changeVehicle();
    void vehicleBackup_data();
    void vehicleBackup();
    void vehicleRestore_data();
    void vehicleRestore();
    void menuItemsAndShortcuts();
    void aboutShowsVersionAndDataFolder();
    void helpRequestAndPage();
    void geometryRemembered();

private:
    void shoot(QWidget *widget, const QString &name);
    void startPrepared();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Sandbox> m_box;
    QString m_screenshots;
};

void TestMainWindow::initTestCase()
{
    m_screenshots = qEnvironmentVariable("TARVANE_SCREENSHOTS");
    if (m_screenshots.isEmpty())
        m_screenshots = QStringLiteral(TARVANE_BINARY_DIR) + u"/screenshots"_s;
    QVERIFY(QDir().mkpath(m_screenshots));
}

void TestMainWindow::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_box = std::make_unique<Sandbox>(m_dir->path());
}

void TestMainWindow::cleanup()
{
    m_box.reset();
    m_dir.reset();
}

void TestMainWindow::shoot(QWidget *widget, const QString &name)
{
    widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(widget));
    QCoreApplication::processEvents();
    QVERIFY(widget->grab().save(m_screenshots + u'/' + name + u".png"_s));
}

void TestMainWindow::startPrepared()
{
    prepareTwoVehicles(m_box->dataFolder());
    m_box->options.setValue(u"Options"_s, u"Name"_s, u"Van"_s);
    m_box->start();
}

void TestMainWindow::emptySandboxShowsTemplateVehicle()
{
    m_box->start();
    MainWindow &w = *m_box->window;
    QCOMPARE(w.windowTitle(), u"Tarvane"_s);
    QVERIFY(QFile::exists(m_box->dataFolder() + u"Velcora.ini"_s));
    QVERIFY(QFile::exists(m_box->dataFolder() + u"Lists.ini"_s));

    // The template's vehicle is offered; none is chosen yet.
    QCOMPARE(w.vehicleSelector()->count(), 1);
    QCOMPARE(w.vehicleSelector()->itemText(0), u"My Car"_s);
    QCOMPARE(w.vehicleSelector()->currentIndex(), -1);
    QCOMPARE(w.vehicleSelector()->placeholderText(), u"Select Vehicle"_s);

    // Nothing logged and nothing due: the welcome lines over the last-backup line.
    const QList<ReminderRow> expected { { u"Welcome to Tarvane Mobile"_s, 0 },
                                        { u"No reminders due"_s, 2 },
                                        { u"Last Backup: Unknown"_s, 6 } };
    QCOMPARE(rows(w.reminderList()), expected);
    QVERIFY(w.noRemindersLabel()->isHidden());

    // The counters show what the session holds, "No Data" included.
    const MainScreenFigures &figures = m_box->session->figures();
    QCOMPARE(w.odometerCounter()->isNoData(), figures.odometer.noData);
    QCOMPARE(w.currentEconomyCounter()->isNoData(), figures.currentEconomy.noData);
    QCOMPARE(w.averageEconomyCounter()->isNoData(), figures.averageEconomy.noData);
    if (!figures.odometer.noData)
        QCOMPARE(w.odometerCounter()->tiles(), figures.odometer.tiles);
    // A counter without a reading keeps its drums, so the screen does not jump.
    QCOMPARE(w.odometerCounter()->tiles().size(), 7);
    QCOMPARE(w.currentEconomyCounter()->tiles().size(), 6);
    QCOMPARE(w.averageEconomyCounter()->tiles().size(), 6);
    // A fresh machine has no options yet: said once, then the first exit creates them.
    const QStringList fresh { u"REGKEY_OPTIONS error detected, Attempting to correct."_s };
    QCOMPARE(m_box->reporter.texts(), fresh);
    QVERIFY(!m_box->options.keyExists(u"Options"_s));

    w.resize(480, 640);
    shoot(&w, u"mainwindow-empty-480x640"_s);

    // Choosing it opens its (new, empty) log.
    w.vehicleSelector()->setCurrentIndex(0);
    QCOMPARE(m_box->session->currentVehicleName(), u"My Car"_s);
    QCOMPARE(fileBytes(m_box->dataFolder() + u"MYCAR0001.vcb"_s), QByteArray(4, '\0'));
    QCOMPARE(rows(w.reminderList()), expected);
    shoot(&w, u"mainwindow-template-480x640"_s);

    w.close();
    QCOMPARE(m_box->options.value(u"Options"_s, u"Name"_s).toString(), u"My Car"_s);
    QCOMPARE(m_box->reporter.texts(), fresh);
}

void TestMainWindow::preparedLogCounters()
{
    startPrepared();
    MainWindow &w = *m_box->window;
    QCOMPARE(w.vehicleSelector()->currentText(), u"Van"_s);
    QCOMPARE(m_box->reporter.texts(), QStringList());

    // The open trip carries the odometer to 12345.6: 0012346.
    QVERIFY(!w.odometerCounter()->isNoData());
    QCOMPARE(w.odometerCounter()->tiles(), tiles({ 0, 0, 1, 2, 3, 4, 6 }, 198));
    // Current 25.00 under an average of (30 + 25) / 2 = 27.50: the current one in the alert set.
    QVERIFY(!w.currentEconomyCounter()->isNoData());
    QCOMPARE(w.currentEconomyCounter()->tiles(), (QList<int> { 300, 302, 305, 310, 300, 300 }));
    QCOMPARE(w.averageEconomyCounter()->tiles(), (QList<int> { 235, 237, 242, 245, 240, 235 }));

    w.resize(480, 640);
    shoot(&w, u"mainwindow-log-480x640"_s);
    w.resize(1024, 768);
    shoot(&w, u"mainwindow-log-1024x768"_s);
}

void TestMainWindow::preparedLogReminderLines()
{
    startPrepared();
    // Oil every 180 days, done 200 days ago; 1995.6 miles since, under the 3000 interval.
    // The newest line stands on top.
    const QList<ReminderRow> expected { { u"Found 1    open trip"_s, 3 },
                                        { u"Oil change OVERDUE by: 20   days"_s, 5 },
                                        { u"Last Backup: Unknown"_s, 6 } };
    QCOMPARE(rows(m_box->window->reminderList()), expected);
    QVERIFY(m_box->window->noRemindersLabel()->isHidden());
}

void TestMainWindow::changeVehicle()
{
    startPrepared();
    MainWindow &w = *m_box->window;
    QCOMPARE(w.vehicleSelector()->count(), 2);
    QVERIFY(!QFile::exists(m_box->dataFolder() + u"BIKE7.vcb"_s));

    w.vehicleSelector()->setCurrentIndex(1);
    QCOMPARE(m_box->session->currentVehicleName(), u"Bike"_s);

    // A vehicle without a log gets an empty one and shows its start odometer.
    QCOMPARE(fileBytes(m_box->dataFolder() + u"BIKE7.vcb"_s), QByteArray(4, '\0'));
    QCOMPARE(w.odometerCounter()->tiles(), tiles({ 0, 0, 0, 0, 5, 0, 0 }, 198));
    for (TileCounter *counter : { w.currentEconomyCounter(), w.averageEconomyCounter() }) {
        if (!counter->isNoData())
            QCOMPARE(counter->tiles(), (QList<int> { 235, 235, 235, 245, 235, 235 }));
    }
    const QList<ReminderRow> expected { { u"Welcome to Tarvane Mobile"_s, 0 },
                                        { u"No reminders due"_s, 2 },
                                        { u"Last Backup: Unknown"_s, 6 } };
    QCOMPARE(rows(w.reminderList()), expected);
    shoot(&w, u"mainwindow-bike-480x640"_s);

    // And back: the van's figures return.
    w.vehicleSelector()->setCurrentIndex(0);
    QCOMPARE(w.odometerCounter()->tiles(), tiles({ 0, 0, 1, 2, 3, 4, 6 }, 198));
    QCOMPARE(w.reminderList()->count(), 3);

    // Closing the window writes the options with the vehicle last chosen.
    w.vehicleSelector()->setCurrentIndex(1);
    w.close();
    QCOMPARE(m_box->options.value(u"Options"_s, u"Name"_s).toString(), u"Bike"_s);
    QCOMPARE(m_box->reporter.texts(), QStringList());
}

void TestMainWindow::vehicleBackup_data()
{
    QTest::addColumn<QString>("answer"); // relative to the sandbox; "-" cancels
    QTest::addColumn<bool>("written");
    QTest::addColumn<QStringList>("messages");

    QTest::newRow("into a folder") << u"backups"_s << true
                                   << QStringList { u"Current vehicle backed up to\n%1/backups/"_s };
    QTest::newRow("cancelled") << u"-"_s << false << QStringList();
    QTest::newRow("folder missing") << u"no such folder"_s << false
                                    << QStringList { u"Backup ERROR 107!\nUnable to backup database"_s };
}

void TestMainWindow::vehicleBackup()
{
    QFETCH(QString, answer);
    QFETCH(bool, written);
    QFETCH(QStringList, messages);

    startPrepared();
    const QString root = m_dir->path();
    QVERIFY(QDir(root).mkpath(u"backups"_s));
    if (answer == u"-"_s)
        m_box->chooser.enqueueCancel();
    else
        m_box->chooser.enqueue(root + u'/' + answer);
    const QByteArray log = fileBytes(m_box->dataFolder() + u"VAN1.vcb"_s);

    m_box->window->backupAction()->trigger();

    QCOMPARE(m_box->chooser.requests(), QStringList { u"folder "_s + m_box->context.paths.root() });
    const QString backup = root + u'/' + answer + u"/VAN1.bak"_s;
    QCOMPARE(QFile::exists(backup), written);
    if (written) {
        // The backup is the log, byte for byte.
        QCOMPARE(fileBytes(backup), log);
    }
    for (QString &message : messages)
        message.replace(u"%1"_s, root);
    QCOMPARE(m_box->reporter.texts(), messages);
    QVERIFY(!m_box->session->isBusy());
    // Nothing of the vehicle changed.
    QCOMPARE(fileBytes(m_box->dataFolder() + u"VAN1.vcb"_s), log);
    QCOMPARE(m_box->window->reminderList()->count(), 3);
}

void TestMainWindow::vehicleRestore_data()
{
    QTest::addColumn<QString>("answer"); // relative to the sandbox; "-" cancels
    QTest::addColumn<bool>("restored");
    QTest::addColumn<QStringList>("messages");

    QTest::newRow("another vehicle's backup")
        << u"saved/OTHER.bak"_s << true << QStringList { u"Backup restored for Van"_s };
    QTest::newRow("cancelled") << u"-"_s << false << QStringList();
    QTest::newRow("file missing") << u"saved/GONE.bak"_s << false
                                  << QStringList { u"ERROR 106! Unable to restore Van"_s };
}

void TestMainWindow::vehicleRestore()
{
    QFETCH(QString, answer);
    QFETCH(bool, restored);
    QFETCH(QStringList, messages);

    startPrepared();
    const QString root = m_dir->path();
    // A short log: one fill-up at 20000 miles.
    const EntryList other { fuel(20000, 9, 0, Now - Day) };
    QVERIFY(QDir(root).mkpath(u"saved"_s));
    QVERIFY(LogArchive().write(root + u"/saved/OTHER.bak"_s, other));
    if (answer == u"-"_s)
        m_box->chooser.enqueueCancel();
    else
        m_box->chooser.enqueue(root + u'/' + answer);
    const QByteArray before = fileBytes(m_box->dataFolder() + u"VAN1.vcb"_s);

    m_box->window->restoreAction()->trigger();

    QCOMPARE(m_box->chooser.requests(),
             QStringList { u"file "_s + m_box->context.paths.root() + u" VAN1.bak"_s });
    QCOMPARE(m_box->reporter.texts(), messages);
    const QByteArray after = fileBytes(m_box->dataFolder() + u"VAN1.vcb"_s);
    MainWindow &w = *m_box->window;
    if (restored) {
        // The saved log starts with the restored archive; the screen shows it at once.
        QCOMPARE(after.left(LogArchive::encode(other).size()), LogArchive::encode(other));
        EntryList reread;
        QVERIFY(LogArchive().read(m_box->dataFolder() + u"VAN1.vcb"_s, reread));
        QCOMPARE(reread.size(), size_t(1));
        QCOMPARE(m_box->session->entries().size(), size_t(1));
        QCOMPARE(w.odometerCounter()->tiles(), tiles({ 0, 0, 2, 0, 0, 0, 0 }, 198));
        shoot(&w, u"mainwindow-restored-480x640"_s);
    } else {
        QCOMPARE(after, before);
        QCOMPARE(m_box->session->entries().size(), vanLog().size());
        QCOMPARE(w.odometerCounter()->tiles(), tiles({ 0, 0, 1, 2, 3, 4, 6 }, 198));
    }
}

void TestMainWindow::menuItemsAndShortcuts()
{
    m_box->start();
    MainWindow &w = *m_box->window;
    const QList<QAction *> top = w.menuBar()->actions();
    QCOMPARE(top.size(), 1);
    QCOMPARE(stripMnemonic(top.first()->text()), u"TOOLS"_s);

    QStringList items;
    QMenu *storage = nullptr;
    for (QAction *action : top.first()->menu()->actions()) {
        if (action->isSeparator())
            continue;
        items.append(stripMnemonic(action->text()));
        if (action->menu())
            storage = action->menu();
    }
    QCOMPARE(
        items,
        (QStringList { u"Fuel"_s, u"Repairs"_s, u"Trips"_s, u"Help"_s, u"About"_s, u"Backup / Restore"_s }));
    QVERIFY(storage);
    QStringList storageItems;
    for (QAction *action : storage->actions())
        storageItems.append(stripMnemonic(action->text()));
    QCOMPARE(storageItems, (QStringList { u"Vehicle Backup"_s, u"Vehicle Restore"_s }));

    // Every command has its own key.
    QSet<QKeySequence> keys;
    for (QAction *action : { w.helpAction(), w.aboutAction(), w.backupAction(), w.restoreAction(),
                             w.fuelAction(), w.repairsAction(), w.tripsAction() }) {
        QVERIFY2(!action->shortcut().isEmpty(), qPrintable(action->text()));
        keys.insert(action->shortcut());
    }
    QCOMPARE(keys.size(), 7);
    QCOMPARE(w.helpAction()->shortcut(), QKeySequence(QKeySequence::HelpContents));
}

void TestMainWindow::aboutShowsVersionAndDataFolder()
{
    m_box->start();
    QString version;
    QString folder;
    bool seen = false;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<AboutDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        seen = true;
        version = dialog->findChild<QLabel *>(u"aboutVersion"_s)->text();
        folder = dialog->findChild<QLabel *>(u"aboutDataFolder"_s)->text();
        shoot(dialog, u"about"_s);
        dialog->accept();
    });
    m_box->window->aboutAction()->trigger();
    QVERIFY(seen);
    QCOMPARE(version, u"Version 2.2.2 Build 76"_s);
    QCOMPARE(folder, QDir::toNativeSeparators(m_box->dataFolder()));
}

void TestMainWindow::helpRequestAndPage()
{
    m_box->start();
    m_box->window->helpAction()->trigger();
    QCOMPARE(m_box->help.calls, 1);

    const QString page = HelpLauncher::extractTo(m_dir->path() + u"/help"_s);
    QCOMPARE(page, m_dir->path() + u"/help/velcora_help.htm"_s);
    const QString text = QString::fromUtf8(fileBytes(page));
    for (const QString &needle : { u"<title>Tarvane Help</title>"_s, u"Velcora.ini"_s, u"Lists.ini"_s,
                                   u".vcb"_s, u".bak"_s, u"tarvane-cli"_s, u"No Reminders Due"_s })
        QVERIFY2(text.contains(needle), qPrintable(needle));
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

    MainWindow again(*m_box->session, m_box->chooser, m_box->help);
    QVERIFY(again.restoreWindowGeometry());
    QCOMPARE(again.size(), QSize(700, 820));
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
