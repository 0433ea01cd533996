#include "gui_helper.h"
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimeEdit>
#include <QToolButton>
#include <QtTest>

#include "forms/EditListDialog.h"
#include "forms/EntryFormRunner.h"
#include "forms/FuelDialog.h"
#include "forms/MaintenanceDialog.h"
#include "forms/TripDialog.h"
#include "platform/CFormat.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/PickLists.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Startup = 1709281800; // 2024-03-01 08:30 UTC
constexpr quint32 Now = 1709640000; // 2024-03-05 12:00 UTC

const QString InstallFolder = u"\\Program Files\\Tarvane\\"_s;

const QString FuelNote = u"This entry has an odometer less than the last entry.\nData should be entered in "
                         "numerical order by odometer.  See \"Inserting data\" in the manual."_s;

CVCItem newRecord(CVCItem::EntryType type)
{
    return { .iconIndex = type == CVCItem::Trip ? 19 : 0,
             .entryType = type,
             .odometer = 12000,
             .entryDate = Startup,
             .newEntryMark = CVCItem::NewEntryMark };
}

// The key=value lines of a section, in file order.
QStringList sectionLines(const QString &path, const QString &section)
{
    IniFile ini;
    ini.setSaveOnDestroy(false);
    if (!ini.Load(path))
        return { u"<unreadable>"_s };
    QStringList lines;
    for (const QString &key : ini.keys(section)) {
        QString value;
        ini.GetString(section, key, value);
        lines.append(key + u'=' + value);
    }
    return lines;
}

} // namespace

class TestForms : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void fuelNewFillUp();
    void fuelOdometerWarning_data();
    void fuelOdometerWarning();
    void fuelStaysOpen();
    void fuelStationListRefills();

    void maintenanceIcons_data();
    void maintenanceIcons();
    void maintenanceStoredIconDropped();

    void tripClosedAndOpen();
    void tripButtons();

    void editList();

    void newEntryKeptOrDropped_data();
    void newEntryKeptOrDropped();

    void screenshots();

private:
    EntryFormContext context() const;

    QTemporaryDir m_root;
    DevicePaths m_paths;
    QString m_lists;
    FixedClock m_clock { Now };
    RecordingReporter m_reporter;
};

EntryFormContext TestForms::context() const
{
    return { .highestOdometer = 12000,
             .startupTime = Startup,
             .clock = &m_clock,
             .vehicleName = u"Blue Van"_s,
             .startOdometer = 10000,
             .lastFullFillOdometer = 11700,
             .costPerMile = 0.345 };
}

void TestForms::init()
{
    QVERIFY(m_root.isValid());
    m_paths = DevicePaths(m_root.path());
    QVERIFY(QDir().mkpath(m_paths.dataFolder()));
    m_lists = PickLists::listsPath(m_paths);
    QFile::remove(m_lists);
    const QList<QPair<QString, QStringList>> lists {
        { PickLists::fuelStationList(), { u"Truck Stop"_s, QString(), u"Corner Station"_s } },
        { PickLists::repairList(), { u"Oil Change"_s, u"Brakes"_s, u"Rotate Tires"_s } },
        { PickLists::repairLocation(), { u"Dealer"_s } },
        { PickLists::purposeList(), { u"Sales"_s } },
        { PickLists::contactList(), { u"Acme"_s } },
        { PickLists::destinationList(), { u"Springfield"_s } }
    };
    IniFile ini;
    for (const auto &[section, lines] : lists)
        for (int i = 0; i < lines.size(); ++i)
            ini.SetString(section, PickLists::lineKey(i), lines.at(i));
    QVERIFY(ini.Save(m_lists));
    m_reporter.clear();
    m_clock.set(Now);
}

void TestForms::fuelNewFillUp()
{
    CVCItem record = newRecord(CVCItem::Fuel);
    FuelDialog dialog(context(), record, m_lists, m_reporter);
    dialog.show();
    QCOMPARE(dialog.odometerEdit()->text(), u"12000"_s);
    QCOMPARE(dialog.unitCombo()->currentText(), u"Gallons"_s);
    QCOMPARE(dialog.priceUnitLabel()->text(), u"/ Gallon"_s);
    QCOMPARE(dialog.dateEdit()->date(), QDate(2024, 3, 1));
    // The station list is sorted and skips the empty line.
    QCOMPARE(dialog.stationCombo()->count(), 2);
    QCOMPARE(dialog.stationCombo()->itemText(0), u"Corner Station"_s);

    retype(dialog.odometerEdit(), u"12300"_s);
    QTest::keyClicks(dialog.quantityEdit(), u"10"_s);
    // 600 miles since the last full fill-up on 10 gallons: 60 MPG, shown while typing.
    QCOMPARE(dialog.economyEdit()->text(), u"60.00"_s);
    QCOMPARE(dialog.totalEdit()->text(), u"0.00"_s);
    // Money in cents while typing; the entry keeps the exact product.
    QTest::keyClicks(dialog.priceEdit(), u"3.4591"_s);
    QCOMPARE(dialog.totalEdit()->text(), u"34.59"_s);
    QCOMPARE(dialog.economyEdit()->text(), u"60.00"_s);
    dialog.stationCombo()->setFocus();
    QTest::keyClicks(dialog.stationCombo(), u"Main St"_s);
    QTest::mouseClick(dialog.notFullBox(), Qt::LeftButton);
    retype(dialog.temperatureEdit(), u"-5"_s);
    QTest::keyClicks(dialog.noteEdit(), u"cold"_s);
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);

    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(m_reporter.messages().isEmpty());
    const CVCItem expected { .odometer = 12300,
                             .entryDate = Startup,
                             .typeText = u"Fuel"_s,
                             .notes = u"cold"_s,
                             .fuelMeasure = u"Gallons"_s,
                             .station = u"Main St"_s,
                             .temperature = -5,
                             .notFull = 1,
                             .amount = 10 * 3.4591,
                             .fuelQuantity = 10,
                             .unitPrice = 3.4591,
                             .economy = record.economy };
    QCOMPARE(cformat("%.2f", record.economy), u"60.00"_s);
    QVERIFY(record == expected);
}

// Which entries warn is the form's rule, tested in the core; here the dialog shows the warning and saves.
void TestForms::fuelOdometerWarning_data()
{
    QTest::addColumn<QString>("odometer");

    QTest::newRow("new, lower") << u"11000"_s;
    // Saved all the same; the caller then drops it for its odometer below 1.
    QTest::newRow("new, zero") << u"0"_s;
}

void TestForms::fuelOdometerWarning()
{
    QFETCH(QString, odometer);

    CVCItem record = newRecord(CVCItem::Fuel);
    FuelDialog dialog(context(), record, m_lists, m_reporter);
    dialog.show();
    retype(dialog.odometerEdit(), odometer);
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(m_reporter.messages(),
             (QList<RecordingReporter::Message> { { Reporter::Kind::Question, FuelNote, u"NOTE"_s } }));
    QCOMPARE(record.odometer, odometer.toDouble());
}

void TestForms::fuelStaysOpen()
{
    {
        // A litre vehicle's new entry names its price unit from the start.
        EntryFormContext litres = context();
        litres.liquidUnit = 2;
        CVCItem fresh = newRecord(CVCItem::Fuel);
        FuelDialog dialog(litres, fresh, m_lists, m_reporter);
        QCOMPARE(dialog.unitCombo()->currentText(), u"Litres"_s);
        QCOMPARE(dialog.priceUnitLabel()->text(), u"/ Litre"_s);
    }
    CVCItem record = newRecord(CVCItem::Fuel);
    const CVCItem before = record;
    FuelDialog dialog(context(), record, m_lists, m_reporter);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    dialog.activateWindow();
    // Enter moves on rather than saving.
    dialog.odometerEdit()->setFocus();
    QTest::keyClick(dialog.odometerEdit(), Qt::Key_Return);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Enter);
    QVERIFY(dialog.isVisible());
    QVERIFY(dialog.odometerEdit() != dialog.focusWidget());

    // An empty number field is refused; letters never reach one.
    retype(dialog.odometerEdit(), QString());
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(dialog.isVisible());
    QCOMPARE(m_reporter.texts(), QStringList { u"Please enter a number."_s });
    QTest::keyClicks(dialog.odometerEdit(), u"12a5"_s);
    QCOMPARE(dialog.odometerEdit()->text(), u"125"_s);
    QTest::mouseClick(dialog.cancelButton(), Qt::LeftButton);
    QVERIFY(record == before);

    // Ctrl+S saves as the Save button does.
    FuelDialog again(context(), record, m_lists, m_reporter);
    again.show();
    QVERIFY(QTest::qWaitForWindowExposed(&again));
    again.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&again));
    QTest::keyClick(again.odometerEdit(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(again.result(), int(QDialog::Accepted));
    QCOMPARE(record.odometer, 12000.0);
}

void TestForms::fuelStationListRefills()
{
    CVCItem record = newRecord(CVCItem::Fuel);
    FuelDialog dialog(context(), record, m_lists, m_reporter);
    dialog.show();
    bool seen = false;
    QTimer::singleShot(0, this, [&] {
        auto *list = qobject_cast<EditListDialog *>(QApplication::activeModalWidget());
        QVERIFY(list);
        seen = true;
        QCOMPARE(list->windowTitle(), u"Edit List"_s);
        QTest::keyClicks(list->newItemEdit(), u"Airport Fuel"_s);
        QTest::mouseClick(list->addButton(), Qt::LeftButton);
        QTest::mouseClick(list->saveButton(), Qt::LeftButton);
    });
    QTest::mouseClick(dialog.stationButton(), Qt::LeftButton);
    QVERIFY(seen);
    QCOMPARE(items(dialog.stationCombo()),
             (QStringList { u"Airport Fuel"_s, u"Corner Station"_s, u"Truck Stop"_s }));
}

void TestForms::maintenanceIcons_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("button"); // clicked after typing, -1 for none
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("icon");

    QTest::newRow("oil change") << u"Oil Change"_s << -1 << false << 4;
    QTest::newRow("rotate tires") << u"Rotate Tires"_s << -1 << false << 17;
    QTest::newRow("custom keeps default") << u"Brakes"_s << -1 << true << 1;
    QTest::newRow("custom with I5") << u"Brakes"_s << 5 << true << 12;
    QTest::newRow("custom with I10") << u"Wash"_s << 10 << true << 17;
    QTest::newRow("tune-up not at start") << u"Big Tune-Up"_s << 1 << true << 8;
}

void TestForms::maintenanceIcons()
{
    QFETCH(QString, typed);
    QFETCH(int, button);
    QFETCH(bool, enabled);
    QFETCH(int, icon);

    CVCItem record = newRecord(CVCItem::Maintenance);
    MaintenanceDialog dialog(context(), record, m_lists, m_reporter);
    dialog.show();
    QCOMPARE(dialog.repairCombo()->currentText(), u"Maint."_s);
    QVERIFY(dialog.iconButton(3)->isEnabled());
    dialog.repairCombo()->setFocus();
    dialog.repairCombo()->lineEdit()->selectAll();
    QTest::keyClicks(dialog.repairCombo()->lineEdit(), typed);
    QCOMPARE(dialog.repairButton()->isEnabled(), enabled);
    for (int i = 0; i <= 10; ++i)
        QCOMPARE(dialog.iconButton(i)->isEnabled(), enabled);
    if (button >= 0)
        QTest::mouseClick(dialog.iconButton(button), Qt::LeftButton);
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(record.iconIndex, icon);
    QCOMPARE(record.typeText, typed);
    QCOMPARE(record.entryType, 1);
    QCOMPARE(record.entryDate, Startup);
}

void TestForms::maintenanceStoredIconDropped()
{
    CVCItem record { .iconIndex = 12,
                     .entryType = 1,
                     .odometer = 11500,
                     .entryDate = Startup,
                     .typeText = u"Brakes"_s,
                     .amount = 180.25 };
    MaintenanceDialog dialog(context(), record, m_lists, m_reporter);
    dialog.show();
    QCOMPARE(dialog.costEdit()->text(), u"180.25"_s);
    QCOMPARE(dialog.form().pictureResource(), 361);
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
    QCOMPARE(record.iconIndex, 1);
    QCOMPARE(record.amount, 180.25);
    QVERIFY(m_reporter.messages().isEmpty());
}

void TestForms::tripClosedAndOpen()
{
    CVCItem record = newRecord(CVCItem::Trip);
    {
        TripDialog dialog(context(), record, m_paths, InstallFolder, m_reporter);
        dialog.show();
        QCOMPARE(dialog.vehicleLabel()->text(), u"Blue Van"_s);
        QCOMPARE(dialog.purposeCombo()->currentText(), u"Select"_s);
        QCOMPARE(dialog.contactCombo()->currentText(), u"None"_s);
        QCOMPARE(dialog.destinationCombo()->currentText(), u"Select"_s);
        QCOMPARE(dialog.departOdometerEdit()->text(), u"12000"_s);
        QCOMPARE(dialog.arriveOdometerEdit()->text(), u"12000"_s);
        QVERIFY(dialog.contactCombo()->hasFocus() || !dialog.isActiveWindow());
        // An open trip first: saved as it opened.
        QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }
    QCOMPARE(record.iconIndex, 18);
    QCOMPARE(record.unitPrice, 0.0);
    QCOMPARE(record.endOdometer, 12000.0);
    QCOMPARE(record.purpose, u"Select"_s);
    QCOMPARE(record.contact, u"None"_s);
    QCOMPARE(record.departTime, Now);
    QCOMPARE(record.arriveTime, Now);

    // Completed an hour and a half later: the arrival time shows now, 150 miles at 0.345.
    m_clock.set(Now + 5400);
    TripDialog dialog(context(), record, m_paths, InstallFolder, m_reporter);
    dialog.show();
    QCOMPARE(dialog.arriveTimeEdit()->time(), QTime(13, 30));
    QCOMPARE(dialog.departTimeEdit()->time(), QTime(12, 0));
    retype(dialog.arriveOdometerEdit(), u"12150"_s);
    retype(dialog.tollsEdit(), u"2.5"_s);
    dialog.purposeCombo()->setCurrentIndex(0);
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
    QCOMPARE(record.iconIndex, 19);
    QCOMPARE(cformat("%.2f", record.unitPrice), u"51.75"_s);
    QCOMPARE(record.endOdometer, 12150.0);
    QCOMPARE(record.amount, 2.5);
    QCOMPARE(record.purpose, u"Sales"_s);
    QCOMPARE(record.arriveTime, Now + 5400);
    QCOMPARE(record.departTime, Now);
    QVERIFY(m_reporter.messages().isEmpty());
}

void TestForms::tripButtons()
{
    CVCItem record = newRecord(CVCItem::Trip);
    TripDialog dialog(context(), record, m_paths, InstallFolder, m_reporter);
    dialog.show();
    QTest::mouseClick(dialog.button(u"au"_s), Qt::LeftButton);
    QTest::mouseClick(dialog.button(u"au"_s), Qt::LeftButton);
    QTest::mouseClick(dialog.button(u"dd"_s), Qt::LeftButton);
    QCOMPARE(dialog.arriveOdometerEdit()->text(), u"12002"_s);
    QCOMPARE(dialog.departOdometerEdit()->text(), u"11999"_s);
    // "T" moves only the arrival.
    m_clock.set(Now + 7200);
    QTest::mouseClick(dialog.button(u"T"_s), Qt::LeftButton);
    QCOMPARE(dialog.arriveTimeEdit()->time(), QTime(14, 0));
    QCOMPARE(dialog.departTimeEdit()->time(), QTime(12, 0));
    // A note stops at 256 characters, a destination at 40.
    dialog.noteEdit()->setPlainText(QString(300, u'n'));
    QCOMPARE(dialog.noteEdit()->toPlainText().size(), 256);
    dialog.destinationCombo()->lineEdit()->selectAll();
    QTest::keyClicks(dialog.destinationCombo()->lineEdit(), QString(45, u'd'));
    QCOMPARE(dialog.destinationCombo()->currentText().size(), 40);
    QTest::mouseClick(dialog.saveButton(), Qt::LeftButton);
    // Departure 11999 below the last 12000 on a new trip.
    QCOMPARE(m_reporter.messages(),
             (QList<RecordingReporter::Message> { { Reporter::Kind::Question, FuelNote, u"NOTE"_s } }));
    QCOMPARE(record.odometer, 11999.0);
    QCOMPARE(record.endOdometer, 12002.0);
    QCOMPARE(cformat("%.3f", record.unitPrice), u"1.035"_s);
}

void TestForms::editList()
{
    const QString section = PickLists::fuelStationList();
    EditListDialog dialog(section, m_lists, m_reporter);
    dialog.show();
    // Opening compacts the section: the empty Line1 is gone.
    QCOMPARE(sectionLines(m_lists, section),
             (QStringList { u"Line0=Truck Stop"_s, u"Line1=Corner Station"_s }));
    QCOMPARE(dialog.list()->count(), 2);

    // Empty text adds nothing; a 41st character can't be typed.
    QTest::mouseClick(dialog.addButton(), Qt::LeftButton);
    QCOMPARE(dialog.list()->count(), 2);
    QTest::keyClicks(dialog.newItemEdit(), QString(41, u'x'));
    QCOMPARE(dialog.newItemEdit()->text().size(), 40);
    dialog.newItemEdit()->clear();
    QTest::keyClicks(dialog.newItemEdit(), u"Harbour"_s);
    QTest::mouseClick(dialog.addButton(), Qt::LeftButton);
    QCOMPARE(sectionLines(m_lists, section),
             (QStringList { u"Line0=Truck Stop"_s, u"Line1=Corner Station"_s, u"Line2=Harbour"_s }));
    QCOMPARE(dialog.newItemEdit()->text(), QString());

    // Delete with nothing selected does nothing.
    QTest::mouseClick(dialog.deleteButton(), Qt::LeftButton);
    QVERIFY(m_reporter.messages().isEmpty());
    dialog.list()->setCurrentRow(0);
    QTest::mouseClick(dialog.deleteButton(), Qt::LeftButton);
    QCOMPARE(m_reporter.texts(), QStringList { u"Truck Stop"_s });
    QCOMPARE(m_reporter.messages().first().kind, Reporter::Kind::Info);
    QCOMPARE(sectionLines(m_lists, section), (QStringList { u"Line0=Corner Station"_s, u"Line1=Harbour"_s }));
    QCOMPARE(dialog.list()->count(), 2);
    QCOMPARE(dialog.list()->item(0)->text(), u"Corner Station"_s);

    // Cancel undoes nothing: every change is in the file already.
    QTest::mouseClick(dialog.cancelButton(), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(sectionLines(m_lists, section), (QStringList { u"Line0=Corner Station"_s, u"Line1=Harbour"_s }));
}

void TestForms::newEntryKeptOrDropped_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("odometer");
    QTest::addColumn<int>("entries");

    QTest::newRow("fuel kept") << int(CVCItem::Fuel) << u"1"_s << 1;
    QTest::newRow("fuel below 1 dropped") << int(CVCItem::Fuel) << u"0.5"_s << 0;
    QTest::newRow("repair kept") << int(CVCItem::Maintenance) << u"12000"_s << 1;
    QTest::newRow("trip kept") << int(CVCItem::Trip) << u"8"_s << 1;
}

// The main screen's way: a new record through its form, kept only with an odometer of 1 or more.
void TestForms::newEntryKeptOrDropped()
{
    QFETCH(int, type);
    QFETCH(QString, odometer);
    QFETCH(int, entries);

    Sandbox box(Now);
    box.options.createKey(u"Options"_s);
    box.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    VehicleSession &session = box.startSession();
    QCOMPARE(session.entries().size(), size_t(0));

    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<EntryDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        const QStringList odometers { u"odometer"_s, u"departOdometer"_s, u"arriveOdometer"_s };
        for (QLineEdit *edit : dialog->findChildren<QLineEdit *>())
            if (odometers.contains(edit->objectName()))
                retype(edit, odometer);
        QTest::mouseClick(dialog->saveButton(), Qt::LeftButton);
    });
    const bool added = EntryFormRunner::addNew(session, CVCItem::EntryType(type), box.reporter, nullptr);
    QCOMPARE(added, entries == 1);
    QCOMPARE(session.entries().size(), size_t(entries));
    if (entries == 1) {
        QCOMPARE(session.entries().front().entryType, type);
        QCOMPARE(session.entries().front().newEntryMark, 0);
        QCOMPARE(session.scan().lastOdometer, odometer.toDouble());
    }
}

void TestForms::screenshots()
{
    const QString folder = screenshotFolder();
    const auto shoot = [&](QDialog &dialog, const QString &name) {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        // The whole form fits a 480x640 screen.
        QVERIFY2(dialog.width() <= 480 && dialog.height() <= 640, qPrintable(name));
        QVERIFY2(dialog.minimumSizeHint().width() <= 480, qPrintable(name));
        QVERIFY(dialog.grab().save(folder + u"/form-"_s + name + u".png"_s));
    };
    CVCItem fuel = newRecord(CVCItem::Fuel);
    FuelDialog fuelDialog(context(), fuel, m_lists, m_reporter);
    QTest::keyClicks(fuelDialog.quantityEdit(), u"10"_s);
    QTest::keyClicks(fuelDialog.priceEdit(), u"3.459"_s);
    shoot(fuelDialog, u"fuel"_s);

    CVCItem repair = newRecord(CVCItem::Maintenance);
    MaintenanceDialog repairDialog(context(), repair, m_lists, m_reporter);
    shoot(repairDialog, u"maintenance"_s);
    repairDialog.repairCombo()->lineEdit()->selectAll();
    QTest::keyClicks(repairDialog.repairCombo()->lineEdit(), u"Oil Change"_s);
    shoot(repairDialog, u"maintenance-oil"_s);

    CVCItem trip = newRecord(CVCItem::Trip);
    TripDialog tripDialog(context(), trip, m_paths, InstallFolder, m_reporter);
    shoot(tripDialog, u"trip"_s);

    EditListDialog listDialog(PickLists::repairList(), m_lists, m_reporter);
    shoot(listDialog, u"edit-list"_s);
}

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
