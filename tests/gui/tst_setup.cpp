#include "gui_helper.h"
#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

#include "app/VehicleSelector.h"
#include "log/LogArchive.h"
#include "settings/PickLists.h"
#include "setup/CSetuppage1.h"
#include "setup/CSetuppage3.h"
#include "setup/CSetuppage4.h"
#include "setup/CSetuppage5.h"
#include "setup/CSetuppage_2.h"
#include "setup/NewVehicleDialog.h"
#include "setup/SetupDialog.h"
#include "setup/SetupSheet.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Now = 1709251200; // 2024-03-01

} // namespace

// The template's car with one fill-up in its log, the main window open on it.
struct CarSandbox : Sandbox
{
    CarSandbox()
        : Sandbox(Now)
    {
        QDir().mkpath(data());
        CVCItem fill { .odometer = 1200, .entryDate = Now, .fuelMeasure = u"Gallons"_s, .fuelQuantity = 10 };
        LogArchive().write(carLog(), { fill });
        startSession().selectVehicle(u"My Car"_s);
        startWindow();
        // A fresh sandbox has no options yet; that note is not what is under test.
        reporter.clear();
    }

    QString carLog() const { return data() + u"MYCAR0001.vcb"_s; }
};

class TestSetup : public QObject
{
    Q_OBJECT

private slots:
    void createEditAndDeleteThroughTheScreens();

private:
    // A PNG of the dialog as a 480x640 screen shows it.
    void shoot(QWidget *dialog, const QString &name, bool fullScreen = true);
    bool m_shotsFit = true;
};

void TestSetup::shoot(QWidget *dialog, const QString &name, bool fullScreen)
{
    if (dialog->minimumSizeHint().width() > 480 || dialog->minimumSizeHint().height() > 640
        || dialog->width() > 480 || dialog->height() > 640) {
        qWarning() << name << "does not fit 480x640:" << dialog->size() << dialog->minimumSizeHint();
        m_shotsFit = false;
    }
    if (fullScreen)
        dialog->resize(480, 640);
    QApplication::processEvents();
    dialog->grab().save(screenshotFolder() + u"/setup-"_s + name + u".png"_s);
}

void TestSetup::createEditAndDeleteThroughTheScreens()
{
    CarSandbox box;
    MainWindow &window = *box.window;
    QCOMPARE(int(box.session->entries().size()), 1);
    const QByteArray carLog = readAll(box.carLog());
    QStringList seen;

    onModal<SetupDialog>(this, [&](SetupDialog *setup) {
        seen << setup->windowTitle() + u": "_s + setup->valueLabel(u"Vehicle ID:"_s)->text();
        shoot(setup, u"dialog"_s);

        onModal<NewVehicleDialog>(this, [&](NewVehicleDialog *named) {
            seen << named->windowTitle();
            // A name already in the list is refused and the dialog stays open.
            QTest::keyClicks(named->nameEdit(), u"my car"_s);
            QTest::mouseClick(named->createButton(), Qt::LeftButton);
            QVERIFY(named->isVisible());
            retype(named->nameEdit(), u"Blue Bike"_s);
            shoot(named, u"new-vehicle"_s, false);

            onModal<SetupSheet>(this, [&](SetupSheet *sheet) {
                seen << sheet->windowTitle();
                auto *general = sheet->page<CSetuppage1>();
                QTest::keyClicks(general->vinEdit(), u"bb-9/x"_s);
                // A VIN that can't be a file name keeps the sheet open.
                QTest::mouseClick(sheet->okButton(), Qt::LeftButton);
                QVERIFY(sheet->isVisible());
                retype(general->vinEdit(), u"bb-9"_s);
                QTest::keyClicks(general->makeEdit(), u"Trek"_s);
                retype(general->yearEdit(), u"2020"_s);
                QTest::keyClicks(general->plateEdit(), u"b 1"_s);
                shoot(sheet, u"general-info"_s);

                sheet->tabs()->setCurrentIndex(1);
                auto *units = sheet->page<CSetuppage_2>();
                retype(units->startOdometerEdit(), u"1500"_s);
                units->distanceGroup()->button(1)->click();
                units->economyGroup()->button(2)->click();
                units->liquidGroup()->button(2)->click();
                shoot(sheet, u"measurements"_s);

                sheet->tabs()->setCurrentIndex(2);
                auto *intervals = sheet->page<CSetuppage3>();
                retype(intervals->distanceEdit(0), u"5000"_s);
                retype(intervals->daysEdit(0), u"180"_s);
                shoot(sheet, u"intervals"_s);

                sheet->tabs()->setCurrentIndex(3);
                auto *custom = sheet->page<CSetuppage4>();
                QTest::keyClicks(custom->nameEdit(0), u"Insurance"_s);
                retype(custom->daysEdit(0), u"365"_s);
                shoot(sheet, u"custom"_s);
                QTest::mouseClick(sheet->okButton(), Qt::LeftButton);
            });
            QTest::mouseClick(named->createButton(), Qt::LeftButton);
        });
        setup->newVehicle();
        seen << u"after new: "_s + setup->valueLabel(u"Vehicle ID:"_s)->text() + u", "_s
                + setup->valueLabel(u"Economy:"_s)->text() + u", "_s + setup->valueLabel(u"VIN #:"_s)->text();
        shoot(setup, u"dialog-new-vehicle"_s);

        onModal<SetupSheet>(this, [&](SetupSheet *sheet) {
            seen << sheet->windowTitle() + u": "_s + sheet->tabs()->tabText(0);
            auto *trips = sheet->page<CSetuppage5>();
            trips->detailedBox()->click();
            retype(trips->costEdit(), u"0.45"_s);
            shoot(sheet, u"trips"_s);
            QTest::mouseClick(sheet->okButton(), Qt::LeftButton);
        });
        setup->editTripInfo();
        seen << u"Show Deails: "_s + setup->valueLabel(u"Show Deails:"_s)->text();
        QTest::mouseClick(setup->saveExitButton(), Qt::LeftButton);
    });
    window.setupAction()->trigger();

    QCOMPARE(seen,
             (QStringList { u"Setup: My Car"_s, u"New Vehicle"_s, u"Edit Vehicle Info"_s,
                            u"after new: Blue Bike, L/100km, BB-9"_s, u"Edit Trip Info: Trips"_s,
                            u"Show Deails: Yes"_s }));
    QCOMPARE(box.reporter.texts(),
             (QStringList { u"There is already a vehicle named \"My Car\". Select a unique name."_s,
                            u"A VIN can't contain \"/\"."_s }));
    QVERIFY(m_shotsFit);

    // The main screen reopened on the new vehicle.
    const VehicleSession &session = *box.session;
    QCOMPARE(session.vehicleNames(), (QStringList { u"My Car"_s, u"Blue Bike"_s }));
    QCOMPARE(window.vehicleSelector()->currentText(), u"Blue Bike"_s);
    const VehicleSettings &bike = session.vehicle();
    QCOMPARE(QStringList({ bike.vin, bike.make, bike.plate, QString::number(bike.year) }),
             QStringList({ u"BB-9"_s, u"Trek"_s, u"B 1"_s, u"2020"_s }));
    QCOMPARE(QList<double>({ bike.startOdometer, bike.intervalDistance[OilChangeReminder],
                             double(bike.intervalDays[OilChangeReminder]), double(bike.intervalDays[5]),
                             bike.costPerMile }),
             QList<double>({ 1500, 5000, 180, 365, 0.45 }));
    QCOMPARE(QList<int>({ bike.distanceUnit, bike.economyUnit, bike.liquidUnit }), QList<int>({ 1, 2, 2 }));
    QVERIFY(session.tripSettings().detailed);
    // The car's entries stayed in its own log; the new vehicle's log starts empty.
    QVERIFY(session.entries().empty());
    QCOMPARE(readAll(box.carLog()), carLog);
    QVERIFY(PickLists::loadItems(PickLists::listsPath(box.context.paths), PickLists::repairList())
                .contains(u"Insurance"_s));

    // Delete: confirmed, the screen closes and the vehicle in slot 0 is open again.
    box.reporter.clear();
    box.reporter.setNextAnswer(true);
    onModal<SetupDialog>(this, [&](SetupDialog *setup) { setup->deleteVehicle(); });
    window.setupAction()->trigger();
    QCOMPARE(
        box.reporter.texts(),
        QStringList {
            u"DELETE THIS VEHICLE?\nARE YOU SURE?\n\nIts log \"BB-9.vcb\" stays in the data folder."_s });
    QCOMPARE(session.vehicleNames(), QStringList { u"My Car"_s });
    QCOMPARE(window.vehicleSelector()->currentText(), u"My Car"_s);
    QVERIFY(QFile::exists(session.dataFolder() + u"BB-9.vcb"_s));
    QCOMPARE(int(session.entries().size()), 1);
    QCOMPARE(readAll(box.carLog()), carLog);
}

QTEST_MAIN(TestSetup)
#include "tst_setup.moc"
