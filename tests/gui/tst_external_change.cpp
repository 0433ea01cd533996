// The program open while another program (the CLI, a cron job) writes the same files: the window
// reads them again before its next change, so nothing the other program wrote is saved over.
#include "gui_helper.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <csignal>
#include <memory>
#include <sys/resource.h>

#include "GuiReporter.h"
#include "app/FileChooser.h"
#include "app/MainWindow.h"
#include "app/VehicleSelector.h"
#include "dataview/EntryTableModel.h"
#include "dataview/HistoryDialog.h"
#include "forms/EntryDialog.h"
#include "log/LogArchive.h"
#include "log/VehicleLog.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"
#include "widgets/TileCounter.h"

using namespace Qt::StringLiterals;

namespace {

// 2024-03-01 00:00:00 UTC.
constexpr quint32 Now = 1709251200;
constexpr quint32 Day = 86400;

CVCItem fuel(double odometer, quint32 date)
{
    return { .odometer = odometer,
             .entryDate = date,
             .typeText = u"Fuel"_s,
             .fuelMeasure = u"Gallons"_s,
             .fuelQuantity = 10 };
}

// The van with two fill-ups, opened in the main window; `boxes` shows real message boxes.
struct VanSandbox
{
    explicit VanSandbox(bool boxes = false)
        : context { DevicePaths(dir.path()),
                    boxes ? static_cast<Reporter &>(gui) : recorder,
                    clock,
                    locale,
                    options,
                    preferences }
    {
        const QString folder = dataFolder();
        QDir().mkpath(folder);
        const QString ini
            = u"\r\n[VehicleList]\r\nVehicle0=Van\r\n\r\n[Van]\r\nVIN=VAN1\r\nStart Odometer=10000\r\n"
              "Distance=Mile\r\nEcono=MPG\r\nLiquid=US\r\n"_s;
        put(folder + u"Velcora.ini"_s, TestFiles::utf16(ini));
        put(folder + u"Lists.ini"_s, readAll(u":/install/Lists.ini"_s));
        LogArchive().write(log(), { fuel(10000, Now - 20 * Day), fuel(10300, Now - 10 * Day) });
        options.setValue(u"Options"_s, u"Name"_s, u"Van"_s);
        session = std::make_unique<VehicleSession>(context);
        session->start();
        session->saveAfterStartup();
        window = std::make_unique<MainWindow>(*session, chooser, help);
    }

    QString dataFolder() const { return context.paths.dataFolder(); }
    QString log() const { return dataFolder() + u"VAN1.vcb"_s; }

    // What `tarvane-cli add` does: its own copy of the log, appended under the file's lock.
    void addBehindItsBack(double odometer)
    {
        VehicleLog other;
        NullReporter quiet;
        other.open(dataFolder(), u"VAN1"_s, {}, quiet, clock);
        QVERIFY(other.append(dataFolder(), u"VAN1"_s, fuel(odometer, Now - Day), quiet));
    }

    QTemporaryDir dir;
    RecordingReporter recorder;
    GuiReporter gui;
    FixedClock clock { Now };
    TestLocaleFormats locale;
    MemorySettingsStore options;
    MemorySettingsStore preferences;
    AppContext context;
    ScriptedFileChooser chooser;
    NoHelp help;
    std::unique_ptr<VehicleSession> session;
    std::unique_ptr<MainWindow> window;
};

} // namespace

class TestExternalChange : public QObject
{
    Q_OBJECT

private slots:
    void mainWindow_data();
    void mainWindow();
    void history_data();
    void history();
    void settingsFile();
    void failedSettingsSave();
};

// "watcher": the event loop runs between the two writers, so the file watcher reloads at once.
// "fingerprint": the GUI's change comes first, so only the check before the change can notice.
void TestExternalChange::mainWindow_data()
{
    QTest::addColumn<bool>("watcher");
    QTest::newRow("watcher") << true;
    QTest::newRow("fingerprint") << false;
}

void TestExternalChange::mainWindow()
{
    QFETCH(bool, watcher);
    VanSandbox box;
    MainWindow &w = *box.window;
    QCOMPARE(w.odometerCounter()->text(), u"10300"_s);

    box.addBehindItsBack(20000);
    if (watcher)
        QTRY_COMPARE(w.odometerCounter()->text(), u"20000"_s);
    withForm([&] { w.addEntry(CVCItem::Fuel); }, [](EntryDialog *form) { fillAndSave(form, u"20500"_s); });
    QCOMPARE(odometers(box.log()), (QList<double> { 10000, 10300, 20000, 20500 }));
    QCOMPARE(w.odometerCounter()->text(), u"20500"_s);
    QCOMPARE(box.recorder.texts(), QStringList());
}

void TestExternalChange::history_data()
{
    QTest::addColumn<int>("when"); // 0 watcher, 1 fingerprint, 2 while the form is open
    QTest::newRow("watcher") << 0;
    QTest::newRow("fingerprint") << 1;
    QTest::newRow("during the form") << 2;
}

void TestExternalChange::history()
{
    QFETCH(int, when);
    VanSandbox box;
    HistoryDialog dialog(*box.session, box.recorder);
    dialog.show();
    const auto *model = dialog.findChild<EntryTableModel *>();
    QVERIFY(model);
    QCOMPARE(model->rowCount(), 2);

    if (when != 2)
        box.addBehindItsBack(20000);
    if (when == 0)
        QTRY_COMPARE(model->rowCount(), 3);
    // A fill-up inserted between the two of the log ("Is this a Fuel Entry?" answered Yes).
    box.recorder.setNextAnswer(true);
    withForm([&] { dialog.insertFuelOrRepair(); },
             [&](EntryDialog *form) {
                 if (when == 2)
                     box.addBehindItsBack(20000);
                 fillAndSave(form, u"10200"_s);
             });
    QStringList messages { u"Is this a Fuel Entry?\nNo=Maintenance entry."_s };
    if (when == 2) {
        // Written while the form was open: the save is refused and the list shows the file.
        messages.append(DataViewLog::saveErrorText() + u'\n' + VehicleLog::changedMessage(box.log()));
        QCOMPARE(odometers(box.log()), (QList<double> { 10000, 10300, 20000 }));
    } else {
        QCOMPARE(odometers(box.log()), (QList<double> { 10000, 10200, 10300, 20000 }));
    }
    QCOMPARE(box.recorder.texts(), messages);
    QCOMPARE(model->rowCount(), when == 2 ? 3 : 4);
    QVERIFY(saveScreenshot(&dialog, u"external-change-history-%1"_s.arg(when)));
}

// Another program adds a vehicle: the selector offers it without a restart, and the window's own
// settings save keeps it.
void TestExternalChange::settingsFile()
{
    VanSandbox box;
    const QString path = box.dataFolder() + u"Velcora.ini"_s;
    {
        IniFile other;
        QVERIFY(other.Load(path));
        other.SetString(u"VehicleList"_s, u"Vehicle1"_s, u"Bike"_s);
        other.SetString(u"Bike"_s, u"VIN"_s, u"BIKE7"_s);
        QVERIFY(other.Save());
        other.setSaveOnDestroy(false);
    }
    QTRY_COMPARE(box.window->vehicleSelector()->count(), 2);
    QCOMPARE(box.window->vehicleSelector()->itemText(1), u"Bike"_s);
    QVERIFY(box.session->saveSettings());
    IniFile after;
    QVERIFY(after.Load(path));
    QString vin;
    QVERIFY(after.GetString(u"Bike"_s, u"VIN"_s, vin));
    QCOMPARE(vin, u"BIKE7"_s);
    after.setSaveOnDestroy(false);
}

// Closing the window on a full disk (files can't grow past 64 bytes, as in tst_full_disk): a box
// with the system's text, the file and the reason under its details; the file stays as it was.
void TestExternalChange::failedSettingsSave()
{
    VanSandbox box(true);
    const QString path = box.dataFolder() + u"Velcora.ini"_s;
    const QByteArray before = readAll(path);
    QString text;
    QString detail;
    QImage picture;
    QTimer::singleShot(0, [&] {
        auto *message = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(message);
        text = message->text();
        detail = message->detailedText();
        picture = message->grab().toImage();
        message->accept();
    });
    rlimit old {};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit tight = old;
    tight.rlim_cur = 64;
    setrlimit(RLIMIT_FSIZE, &tight);
    box.window->close();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);

    QCOMPARE(text, u"The settings file %1 could not be saved; it is left as it was."_s.arg(path));
    QCOMPARE(detail, path + u"\nFile too large"_s);
    QCOMPARE(readAll(path), before);
    QVERIFY(picture.save(screenshotFolder() + u"/external-change-settings-save-failed.png"_s));
}

QTEST_MAIN(TestExternalChange)
#include "tst_external_change.moc"
