#include <QtTest>

#include "forms/FuelForm.h"
#include "forms/MaintenanceForm.h"
#include "forms/TripForm.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

// 2024-03-01 08:30:00 UTC: the program's start-up.
constexpr quint32 Startup = 1709281800;
// 2024-03-05 12:00:00 UTC: the clock when a trip form opens.
constexpr quint32 Now = 1709640000;

const QString FuelNote = u"This entry has an odometer less than the last entry.\nData should be entered in "
                         "numerical order by odometer.  See \"Inserting data\" in the manual."_s;
const QString RepairNote = u"This entry has an odometer reading less than the last entry.\nData should be "
                           "entered in numerical order by odometer.  See \"Inserting data\" in the manual."_s;

EntryFormContext context(const FixedClock *clock = nullptr)
{
    EntryFormContext c;
    c.highestOdometer = 12000;
    c.startupTime = Startup;
    c.clock = clock;
    c.vehicleName = u"Blue Van"_s;
    c.startOdometer = 10000;
    c.lastFullFillOdometer = 11700;
    c.costPerMile = 0.345;
    return c;
}

CVCItem newRecord(CVCItem::EntryType type)
{
    CVCItem item;
    item.entryType = type;
    item.odometer = 12000;
    item.entryDate = Now;
    item.newEntryMark = CVCItem::NewEntryMark;
    item.iconIndex = type == CVCItem::Trip ? 19 : 0;
    return item;
}

// A record with every field set to something a form must overwrite.
CVCItem cluttered()
{
    CVCItem item;
    item.iconIndex = 3;
    item.entryType = 2;
    item.economyUnit = 3;
    item.distanceUnit = 1;
    item.typeText = u"junk"_s;
    item.fuelMeasure = u"junk"_s;
    item.station = u"junk"_s;
    item.invoice = u"junk"_s;
    item.purpose = u"junk"_s;
    item.destination = u"junk"_s;
    item.contact = u"junk"_s;
    item.departTime = 5;
    item.arriveTime = 6;
    item.reservedTime = 7;
    item.temperature = 8;
    item.newEntryMark = 99;
    item.reserved1 = 9;
    item.reserved2 = 10;
    item.notFull = 1;
    item.listPosition = 11;
    item.fuelQuantity = 12;
    item.unitPrice = 13;
    item.endOdometer = 14;
    item.economy = 15;
    item.parking = 16;
    return item;
}

} // namespace

class TestEntryForms : public QObject
{
    Q_OBJECT

private slots:
    void fuelLiveComputation_data();
    void fuelLiveComputation();
    void fuelUnitChangeKeepsEconomy();
    void fuelOpening_data();
    void fuelOpening();
    void fuelSaveWritesEveryField_data();
    void fuelSaveWritesEveryField();
    void odometerWarning_data();
    void odometerWarning();

    void repairIcon_data();
    void repairIcon();
    void iconButtons_data();
    void iconButtons();
    void customTypeAfterPredefinedResetsIcon();
    void maintenanceOpening_data();
    void maintenanceOpening();
    void maintenanceSaveWritesEveryField();

    void tripNewDefaults();
    void tripSave_data();
    void tripSave();
    void tripLoading_data();
    void tripLoading();
    void tripButtons();

    void numberFields_data();
    void numberFields();
};

void TestEntryForms::fuelLiveComputation_data()
{
    QTest::addColumn<int>("distanceUnit");
    QTest::addColumn<int>("economyUnit");
    QTest::addColumn<double>("startOdometer");
    QTest::addColumn<double>("odometer");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("price");
    QTest::addColumn<QString>("economyAfterQuantity"); // "%.2f"
    QTest::addColumn<double>("totalAfterQuantity");
    QTest::addColumn<double>("totalAfterPrice");

    // 300 miles since the last full fill-up at 11700 on 10 gallons: 30.00 MPG.
    QTest::newRow("MPG") << 0 << 0 << 10000.0 << 12000.0 << u"Gallons"_s << u"10"_s << u"3.459"_s
                         << u"30.00"_s << 0.0 << 34.59;
    // 37.8541 l / 482.8032 km x 100 = 7.84; 482.8032 / 37.8541 = 12.75.
    QTest::newRow("L/100km") << 0 << 2 << 10000.0 << 12000.0 << u"Gallons"_s << u"10"_s << u"2"_s << u"7.84"_s
                             << 0.0 << 20.0;
    QTest::newRow("KPL") << 0 << 4 << 10000.0 << 12000.0 << u"Gallons"_s << u"10"_s << u"2"_s << u"12.75"_s
                         << 0.0 << 20.0;
    // MPG follows the gallon the fuel was bought in.
    QTest::newRow("imperial under MPG") << 0 << 0 << 10000.0 << 12000.0 << u"Imp. Gallons"_s << u"10"_s
                                        << u"2"_s << u"30.00"_s << 0.0 << 20.0;
    QTest::newRow("MPiG from US gallons")
        << 0 << 3 << 10000.0 << 12000.0 << u"Gallons"_s << u"10"_s << u"2"_s << u"36.03"_s << 0.0 << 20.0;
    // 300 km on 40 litres.
    QTest::newRow("km and litres, KPL")
        << 1 << 4 << 10000.0 << 12000.0 << u"Litres"_s << u"40"_s << u"1.5"_s << u"7.50"_s << 0.0 << 60.0;
    // 150 MPG is out of the form's range.
    QTest::newRow("over 100 cleared")
        << 0 << 0 << 10000.0 << 12000.0 << u"Gallons"_s << u"2"_s << u"3"_s << u"0.00"_s << 0.0 << 6.0;
    // Not beyond the last full fill-up: the quantity edit changes nothing, the price edit the total.
    QTest::newRow("odometer at last full")
        << 0 << 0 << 10000.0 << 11700.0 << u"Gallons"_s << u"10"_s << u"2"_s << u"0.00"_s << 0.0 << 20.0;
    QTest::newRow("first fill after start")
        << 0 << 0 << 11700.0 << 12000.0 << u"Gallons"_s << u"10"_s << u"2"_s << u"0.00"_s << 0.0 << 20.0;
    QTest::newRow("quantity not a number")
        << 0 << 0 << 10000.0 << 12000.0 << u"Gallons"_s << u"abc"_s << u"2"_s << u"0.00"_s << 0.0 << 0.0;
    QTest::newRow("negative price") << 0 << 0 << 10000.0 << 12000.0 << u"Gallons"_s << u"10"_s << u"-2"_s
                                    << u"30.00"_s << 0.0 << 0.0;
}

void TestEntryForms::fuelLiveComputation()
{
    QFETCH(int, distanceUnit);
    QFETCH(int, economyUnit);
    QFETCH(double, startOdometer);
    QFETCH(double, odometer);
    QFETCH(QString, unit);
    QFETCH(QString, quantity);
    QFETCH(QString, price);
    QFETCH(QString, economyAfterQuantity);
    QFETCH(double, totalAfterQuantity);
    QFETCH(double, totalAfterPrice);

    EntryFormContext c = context();
    c.distanceUnit = distanceUnit;
    c.economyUnit = economyUnit;
    c.startOdometer = startOdometer;
    FuelForm form(c, newRecord(CVCItem::Fuel));
    form.values.odometer = odometer;
    form.values.unitText = unit;
    // Typed one character at a time, as the user would.
    for (qsizetype i = 1; i <= quantity.size(); ++i) {
        form.values.quantityText = quantity.left(i);
        form.quantityChanged();
    }
    QCOMPARE(QString::number(form.values.economy, 'f', 2), economyAfterQuantity);
    QCOMPARE(form.values.amount, totalAfterQuantity);

    const double economy = form.values.economy;
    for (qsizetype i = 1; i <= price.size(); ++i) {
        form.values.priceText = price.left(i);
        form.priceChanged();
    }
    QCOMPARE(form.values.economy, economy);
    QCOMPARE(form.values.amount, totalAfterPrice);
}

void TestEntryForms::fuelUnitChangeKeepsEconomy()
{
    FuelForm form(context(), newRecord(CVCItem::Fuel));
    form.values.quantityText = u"10"_s;
    form.quantityChanged();
    form.values.priceText = u"2.5"_s;
    form.priceChanged();
    const double economy = form.values.economy;
    form.values.unitText = u"Litres"_s;
    form.unitChanged();
    QCOMPARE(form.values.economy, economy);
    QCOMPARE(form.values.amount, 25.0);
    // Editing the quantity again now computes in litres: 300 miles on 10 litres = 113.56 MPG, cleared.
    form.values.quantityText = u"10.0"_s;
    form.quantityChanged();
    QCOMPARE(form.values.economy, 0.0);
}

void TestEntryForms::fuelOpening_data()
{
    QTest::addColumn<CVCItem>("record");
    QTest::addColumn<int>("liquidUnit");
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<FuelFormValues>("expected");

    FuelFormValues fresh;
    fresh.odometer = 12000;
    fresh.date = QDateTime::fromSecsSinceEpoch(Startup);
    fresh.unitText = u"Litres"_s;
    QTest::newRow("new entry, litres") << newRecord(CVCItem::Fuel) << 2 << true << fresh;

    FuelFormValues imperial = fresh;
    imperial.unitText = u"Imp. Gallons"_s;
    // A stored entry with no quantity opens as a new one: its fields are forgotten.
    CVCItem zero = newRecord(CVCItem::Fuel);
    zero.newEntryMark = 0;
    zero.odometer = 5000;
    zero.station = u"Corner"_s;
    zero.amount = 10;
    QTest::newRow("stored, no quantity") << zero << 1 << true << imperial;

    CVCItem stored;
    stored.odometer = 11800;
    stored.entryDate = 1708413300;
    stored.fuelMeasure = u"Gallons"_s;
    stored.station = u"Corner"_s;
    stored.notes = u"trip north"_s;
    stored.temperature = -4;
    stored.notFull = 1;
    stored.amount = 40.5;
    stored.fuelQuantity = 12.5;
    stored.unitPrice = 3.24;
    stored.economy = 28.4;
    FuelFormValues loaded;
    loaded.odometer = 11800;
    loaded.date = QDateTime::fromSecsSinceEpoch(1708413300);
    loaded.station = u"Corner"_s;
    loaded.unitText = u"Gallons"_s;
    loaded.note = u"trip north"_s;
    loaded.quantityText = u"12.500"_s;
    loaded.priceText = u"3.240"_s;
    loaded.amount = 40.5;
    loaded.economy = 28.4;
    loaded.temperature = -4;
    loaded.notFull = true;
    QTest::newRow("stored entry") << stored << 2 << false << loaded;
}

void TestEntryForms::fuelOpening()
{
    QFETCH(CVCItem, record);
    QFETCH(int, liquidUnit);
    QFETCH(bool, isNew);
    QFETCH(FuelFormValues, expected);

    EntryFormContext c = context();
    c.liquidUnit = liquidUnit;
    const FuelForm form(c, record);
    QCOMPARE(form.isNewEntry(), isNew);
    QCOMPARE(form.values.odometer, expected.odometer);
    QCOMPARE(form.values.date, expected.date);
    QCOMPARE(form.values.unitText, expected.unitText);
    QCOMPARE(form.values.quantityText, expected.quantityText);
    QCOMPARE(form.values.priceText, expected.priceText);
    QVERIFY(form.values == expected);
}

void TestEntryForms::fuelSaveWritesEveryField_data()
{
    QTest::addColumn<QString>("price");
    QTest::addColumn<double>("storedPrice");
    QTest::addColumn<double>("storedAmount");

    QTest::newRow("price before quantity") << u"3.459"_s << 3.459 << 34.59;
    // Typed after the last quantity edit and not clamped on save; the total was clamped to 0.
    QTest::newRow("negative price") << u"-2"_s << -2.0 << 0.0;
}

void TestEntryForms::fuelSaveWritesEveryField()
{
    QFETCH(QString, price);
    QFETCH(double, storedPrice);
    QFETCH(double, storedAmount);

    EntryFormContext c = context();
    c.economyUnit = 2;
    c.distanceUnit = 0;
    CVCItem record = cluttered();
    FuelForm form(c, newRecord(CVCItem::Fuel));
    form.values.odometer = 12300;
    form.values.station = u"Corner"_s;
    form.values.note = u"full"_s;
    form.values.temperature = 21;
    form.values.notFull = true;
    if (storedAmount != 0.0) {
        form.values.priceText = price;
        form.priceChanged();
    }
    form.values.quantityText = u"10"_s;
    form.quantityChanged();
    form.values.priceText = price;
    form.priceChanged();

    RecordingReporter reporter;
    form.save(record, reporter);
    QVERIFY(reporter.messages().isEmpty());

    CVCItem expected;
    expected.entryType = 0;
    expected.odometer = 12300;
    expected.entryDate = Startup;
    expected.economyUnit = 2;
    expected.distanceUnit = 0;
    expected.typeText = u"Fuel"_s;
    expected.notes = u"full"_s;
    expected.fuelMeasure = u"Gallons"_s;
    expected.station = u"Corner"_s;
    expected.temperature = 21;
    expected.notFull = 1;
    expected.amount = storedAmount;
    expected.fuelQuantity = 10;
    expected.unitPrice = storedPrice;
    // 600 miles since 11700 on 37.8541 litres: 3.92 L/100km.
    expected.economy = 10 * 3.78541 / (600 * 1.609344 * 0.01);
    QCOMPARE(QString::number(record.economy, 'f', 2), u"3.92"_s);
    expected.economy = record.economy;
    QCOMPARE(record.amount, expected.amount);
    QVERIFY(record == expected);
}

void TestEntryForms::odometerWarning_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("odometer");
    QTest::addColumn<int>("mark");
    QTest::addColumn<QString>("warning");

    QTest::newRow("fuel lower, new") << 0 << 11999.0 << 99 << FuelNote;
    QTest::newRow("fuel lower, edited") << 0 << 11000.0 << 0 << QString();
    QTest::newRow("fuel equal, new") << 0 << 12000.0 << 99 << QString();
    QTest::newRow("fuel higher, new") << 0 << 12500.0 << 99 << QString();
    QTest::newRow("repair lower, new") << 1 << 11000.0 << 99 << RepairNote;
    QTest::newRow("repair lower, edited") << 1 << 11000.0 << 0 << QString();
    QTest::newRow("trip lower, new") << 2 << 11000.0 << 99 << FuelNote;
    QTest::newRow("trip lower, other mark") << 2 << 11000.0 << 98 << QString();
}

void TestEntryForms::odometerWarning()
{
    QFETCH(int, kind);
    QFETCH(double, odometer);
    QFETCH(int, mark);
    QFETCH(QString, warning);

    FixedClock clock(Now);
    const EntryFormContext c = context(&clock);
    CVCItem record = newRecord(CVCItem::EntryType(kind));
    record.newEntryMark = mark;
    RecordingReporter reporter;
    if (kind == 0) {
        FuelForm form(c, record);
        form.values.odometer = odometer;
        form.save(record, reporter);
    } else if (kind == 1) {
        MaintenanceForm form(c, record);
        form.values.odometer = odometer;
        form.save(record, reporter);
    } else {
        TripForm form(c, record);
        form.values.departOdometer = odometer;
        form.values.arriveOdometer = odometer;
        form.save(record, reporter);
    }
    QList<RecordingReporter::Message> expected;
    if (!warning.isEmpty())
        expected.append({ Reporter::Kind::Question, warning, u"NOTE"_s });
    QCOMPARE(reporter.messages(), expected);
    // The warning never stops the save.
    QCOMPARE(record.odometer, odometer);
    QCOMPARE(record.newEntryMark, 0);
}

void TestEntryForms::repairIcon_data()
{
    QTest::addColumn<QString>("repairType");
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("picture");
    QTest::addColumn<bool>("buttonsEnabled");

    QTest::newRow("Oil Change") << u"Oil Change"_s << 4 << 408 << false;
    QTest::newRow("oil change after words") << u"Synthetic Oil Change"_s << 4 << 408 << false;
    QTest::newRow("Tune-Up") << u"Tune-Up"_s << 5 << 409 << false;
    QTest::newRow("tune-up after words") << u"Major Tune-Up"_s << 1 << 356 << true;
    QTest::newRow("Transmission Service") << u"Transmission Service 2"_s << 6 << 410 << false;
    QTest::newRow("transmission after words") << u"Full Transmission Service"_s << 1 << 356 << true;
    QTest::newRow("Coolant Flush") << u"Coolant Flush"_s << 7 << 411 << false;
    QTest::newRow("Rotate Tires") << u"Rotate Tires"_s << 17 << 412 << false;
    QTest::newRow("rotate after words") << u"Please Rotate Tires"_s << 1 << 356 << true;
    QTest::newRow("later test wins") << u"Coolant Flush and Oil Change"_s << 7 << 411 << false;
    QTest::newRow("tires over oil") << u"Rotate Tires, Oil Change"_s << 17 << 412 << false;
    QTest::newRow("case matters") << u"oil change"_s << 1 << 356 << true;
    QTest::newRow("custom") << u"Brakes"_s << 1 << 356 << true;
    QTest::newRow("empty") << QString() << 1 << 356 << true;
}

void TestEntryForms::repairIcon()
{
    QFETCH(QString, repairType);
    QFETCH(int, icon);
    QFETCH(int, picture);
    QFETCH(bool, buttonsEnabled);

    MaintenanceForm form(context(), newRecord(CVCItem::Maintenance));
    form.iconButtonClicked(5);
    form.repairTypeChanged(repairType);
    QCOMPARE(form.iconIndex(), icon);
    QCOMPARE(form.pictureResource(), picture);
    QCOMPARE(form.iconButtonsEnabled(), buttonsEnabled);
    CVCItem record;
    form.writeRecord(record);
    QCOMPARE(record.iconIndex, icon);
    QCOMPARE(record.typeText, repairType);
}

void TestEntryForms::iconButtons_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("picture");

    QTest::newRow("I0") << 0 << 1 << 356;
    QTest::newRow("I1") << 1 << 8 << 357;
    QTest::newRow("I5") << 5 << 12 << 361;
    QTest::newRow("I9") << 9 << 16 << 365;
    QTest::newRow("I10") << 10 << 17 << 366;
}

void TestEntryForms::iconButtons()
{
    QFETCH(int, button);
    QFETCH(int, icon);
    QFETCH(int, picture);

    MaintenanceForm form(context(), newRecord(CVCItem::Maintenance));
    form.iconButtonClicked(button);
    QCOMPARE(form.iconIndex(), icon);
    QCOMPARE(form.pictureResource(), picture);
}

void TestEntryForms::customTypeAfterPredefinedResetsIcon()
{
    MaintenanceForm form(context(), newRecord(CVCItem::Maintenance));
    form.repairTypeChanged(u"Rotate Tires"_s);
    QVERIFY(!form.iconButtonsEnabled());
    form.repairTypeChanged(u"Brakes"_s);
    QVERIFY(form.iconButtonsEnabled());
    QCOMPARE(form.iconIndex(), 1);
    form.iconButtonClicked(3);
    form.repairTypeChanged(u"Brakes and pads"_s);
    QCOMPARE(form.iconIndex(), 1);
    QCOMPARE(form.pictureResource(), 356);
}

void TestEntryForms::maintenanceOpening_data()
{
    QTest::addColumn<CVCItem>("record");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("picture");
    QTest::addColumn<MaintenanceFormValues>("expected");

    MaintenanceFormValues fresh;
    fresh.odometer = 12000;
    fresh.date = QDateTime::fromSecsSinceEpoch(Startup);
    fresh.repairType = u"Maint."_s;
    QTest::newRow("new") << newRecord(CVCItem::Maintenance) << 12000.0 << 356 << fresh;

    // An empty log: the odometer shown is 0, so the form starts over without a repair type.
    MaintenanceFormValues empty = fresh;
    empty.odometer = 0;
    empty.repairType.clear();
    QTest::newRow("new, empty log") << newRecord(CVCItem::Maintenance) << 0.0 << 356 << empty;

    CVCItem stored;
    stored.entryType = 1;
    stored.iconIndex = 12;
    stored.odometer = 11500;
    stored.entryDate = 1708413300;
    stored.typeText = u"Brakes"_s;
    stored.station = u"Garage"_s;
    stored.invoice = u"A-17"_s;
    stored.notes = u"front pads"_s;
    stored.amount = 180.25;
    MaintenanceFormValues loaded;
    loaded.odometer = 11500;
    loaded.date = QDateTime::fromSecsSinceEpoch(1708413300);
    loaded.repairType = u"Brakes"_s;
    loaded.invoice = u"A-17"_s;
    loaded.cost = 180.25;
    loaded.location = u"Garage"_s;
    loaded.note = u"front pads"_s;
    QTest::newRow("stored with I5's icon") << stored << 12000.0 << 361 << loaded;

    stored.iconIndex = 5;
    QTest::newRow("stored with a predefined icon") << stored << 12000.0 << 356 << loaded;

    // A stored entry at odometer 0 is reset as well; nothing of it survives.
    stored.odometer = 0;
    MaintenanceFormValues reset;
    reset.odometer = 12000;
    reset.date = QDateTime::fromSecsSinceEpoch(Startup);
    QTest::newRow("stored at odometer 0") << stored << 12000.0 << 356 << reset;
}

void TestEntryForms::maintenanceOpening()
{
    QFETCH(CVCItem, record);
    QFETCH(double, highest);
    QFETCH(int, picture);
    QFETCH(MaintenanceFormValues, expected);

    EntryFormContext c = context();
    c.highestOdometer = highest;
    MaintenanceForm form(c, record);
    QCOMPARE(form.values.repairType, expected.repairType);
    QCOMPARE(form.values.odometer, expected.odometer);
    QVERIFY(form.values == expected);
    QCOMPARE(form.pictureResource(), picture);
    // The stored icon is dropped on opening.
    QCOMPARE(form.iconIndex(), 1);
    QVERIFY(form.iconButtonsEnabled());
}

void TestEntryForms::maintenanceSaveWritesEveryField()
{
    CVCItem record = cluttered();
    MaintenanceForm form(context(), newRecord(CVCItem::Maintenance));
    form.values.odometer = 12100;
    form.values.invoice = u"INV-9"_s;
    form.values.cost = 39.95;
    form.values.location = u"Quick Lube"_s;
    form.values.note = u"5W-30"_s;
    form.repairTypeChanged(u"Oil Change"_s);
    RecordingReporter reporter;
    form.save(record, reporter);

    CVCItem expected;
    expected.iconIndex = 4;
    expected.entryType = 1;
    expected.odometer = 12100;
    expected.entryDate = Startup;
    expected.typeText = u"Oil Change"_s;
    expected.notes = u"5W-30"_s;
    expected.station = u"Quick Lube"_s;
    expected.invoice = u"INV-9"_s;
    expected.amount = 39.95;
    QVERIFY(record == expected);
    QVERIFY(reporter.messages().isEmpty());
}

void TestEntryForms::tripNewDefaults()
{
    FixedClock clock(Now);
    const TripForm form(context(&clock), newRecord(CVCItem::Trip));
    QVERIFY(form.isNewTrip());
    TripFormValues expected;
    const QDateTime now = QDateTime::fromSecsSinceEpoch(Now);
    expected.departDate = now;
    expected.departTime = now;
    expected.arriveDate = now;
    expected.arriveTime = now;
    expected.departOdometer = 12000;
    expected.arriveOdometer = 12000;
    expected.purpose = u"Select"_s;
    expected.contact = u"None"_s;
    expected.destination = u"Select"_s;
    expected.vehicleLabel = u"Blue Van"_s;
    QVERIFY(form.values == expected);
    QCOMPARE(form.iconIndex(), 19);
}

void TestEntryForms::tripSave_data()
{
    QTest::addColumn<double>("depart");
    QTest::addColumn<double>("arrive");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("cost"); // "%.2f"

    QTest::newRow("closed") << 12000.0 << 12150.0 << 0.345 << 19 << u"51.75"_s;
    QTest::newRow("open") << 12000.0 << 12000.0 << 0.345 << 18 << u"0.00"_s;
    QTest::newRow("arrival below departure") << 12000.0 << 11900.0 << 0.345 << 18 << u"0.00"_s;
    QTest::newRow("no rate") << 12000.0 << 12150.0 << 0.0 << 19 << u"0.00"_s;
}

void TestEntryForms::tripSave()
{
    QFETCH(double, depart);
    QFETCH(double, arrive);
    QFETCH(double, rate);
    QFETCH(int, icon);
    QFETCH(QString, cost);

    FixedClock clock(Now);
    EntryFormContext c = context(&clock);
    c.costPerMile = rate;
    TripForm form(c, newRecord(CVCItem::Trip));
    form.values.departOdometer = depart;
    form.values.arriveOdometer = arrive;
    form.values.contact = u"Acme"_s;
    form.values.purpose = u"Sales"_s;
    form.values.destination = u"Springfield"_s;
    form.values.note = u"client visit"_s;
    form.values.tolls = 4.5;
    form.values.parking = 12;
    // Departure day from the date picker, 07:15 from the time picker; arrival 2024-03-05 14:35.
    form.values.departDate = QDateTime::fromSecsSinceEpoch(1708450800); // 2024-02-20 17:40
    form.values.departTime = QDateTime::fromSecsSinceEpoch(1709281800 - 4500 + 33); // 2024-03-01 07:15:33
    form.values.arriveDate = QDateTime::fromSecsSinceEpoch(1709627400); // 2024-03-05 08:30
    form.values.arriveTime = QDateTime::fromSecsSinceEpoch(1708450800 - 11100); // 2024-02-20 14:35

    CVCItem record = cluttered();
    RecordingReporter reporter;
    form.save(record, reporter);
    QVERIFY(reporter.messages().isEmpty());

    CVCItem expected;
    expected.iconIndex = icon;
    expected.entryType = 2;
    expected.odometer = depart;
    expected.entryDate = 1708450800;
    expected.typeText = u"Trip"_s;
    expected.notes = u"client visit"_s;
    expected.purpose = u"Sales"_s;
    expected.destination = u"Springfield"_s;
    expected.contact = u"Acme"_s;
    expected.departTime = 1708413300; // 2024-02-20 07:15:00
    expected.arriveTime = 1709649300; // 2024-03-05 14:35:00
    expected.amount = 4.5;
    expected.endOdometer = arrive;
    expected.parking = 12;
    QCOMPARE(QString::number(record.unitPrice, 'f', 2), cost);
    expected.unitPrice = record.unitPrice;
    QCOMPARE(record.departTime, expected.departTime);
    QCOMPARE(record.arriveTime, expected.arriveTime);
    QVERIFY(record == expected);
}

void TestEntryForms::tripLoading_data()
{
    QTest::addColumn<double>("odometer");
    QTest::addColumn<double>("endOdometer");
    QTest::addColumn<double>("shownArrival");
    QTest::addColumn<quint32>("shownArriveTime");

    // The arrival time of an open trip becomes now; the arrival date stays.
    QTest::newRow("closed") << 12000.0 << 12150.0 << 12150.0 << quint32(1709627400);
    QTest::newRow("open") << 12000.0 << 12000.0 << 12000.0 << Now;
    QTest::newRow("end below start") << 12000.0 << 11000.0 << 12000.0 << Now;
}

void TestEntryForms::tripLoading()
{
    QFETCH(double, odometer);
    QFETCH(double, endOdometer);
    QFETCH(double, shownArrival);
    QFETCH(quint32, shownArriveTime);

    CVCItem stored;
    stored.entryType = 2;
    stored.iconIndex = 18;
    stored.odometer = odometer;
    stored.endOdometer = endOdometer;
    stored.contact = u"Acme"_s;
    stored.purpose = u"Sales"_s;
    stored.destination = u"Springfield"_s;
    stored.notes = u"n"_s;
    stored.departTime = 1708413300;
    stored.arriveTime = 1709627400;
    stored.amount = 3;
    stored.parking = 7;
    FixedClock clock(Now);
    TripForm form(context(&clock), stored);
    QVERIFY(!form.isNewTrip());
    QCOMPARE(form.values.departOdometer, odometer);
    QCOMPARE(form.values.arriveOdometer, shownArrival);
    QCOMPARE(form.values.departDate.toSecsSinceEpoch(), 1708413300);
    QCOMPARE(form.values.departTime.toSecsSinceEpoch(), 1708413300);
    QCOMPARE(form.values.arriveDate.toSecsSinceEpoch(), 1709627400);
    QCOMPARE(form.values.arriveTime.toSecsSinceEpoch(), qint64(shownArriveTime));
    QCOMPARE(form.values.tolls, 3.0);
    QCOMPARE(form.values.parking, 7.0);
    QCOMPARE(form.iconIndex(), 18);

    // Completing an open trip later: 2024-03-05 (kept) at 12:00 (now).
    CVCItem record = stored;
    form.values.arriveOdometer = odometer + 150;
    form.save(record, *std::make_unique<NullReporter>());
    QCOMPARE(record.iconIndex, 19);
    QCOMPARE(record.arriveTime, shownArriveTime);
}

void TestEntryForms::tripButtons()
{
    FixedClock clock(Now);
    CVCItem item = newRecord(CVCItem::Trip);
    item.odometer = 1;
    EntryFormContext c = context(&clock);
    c.highestOdometer = 1;
    TripForm form(c, item);
    form.departDown();
    form.departDown();
    QCOMPARE(form.values.departOdometer, -1.0);
    form.arriveUp();
    form.arriveUp();
    form.arriveDown();
    QCOMPARE(form.values.arriveOdometer, 2.0);
    form.departUp();
    QCOMPARE(form.values.departOdometer, 0.0);

    clock.set(Now + 3600);
    form.arriveNow();
    QCOMPARE(form.values.arriveDate.toSecsSinceEpoch(), qint64(Now + 3600));
    QCOMPARE(form.values.arriveTime.toSecsSinceEpoch(), qint64(Now + 3600));
    QCOMPARE(form.values.departTime.toSecsSinceEpoch(), qint64(Now));
}

void TestEntryForms::numberFields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<double>("value");

    QTest::newRow("whole") << u"12000"_s << true << 12000.0;
    QTest::newRow("blanks") << u" 12.5 "_s << true << 12.5;
    QTest::newRow("negative") << u"-3"_s << true << -3.0;
    QTest::newRow("empty") << QString() << false << 0.0;
    QTest::newRow("trailing text") << u"12abc"_s << false << 0.0;
    QTest::newRow("comma") << u"1,5"_s << false << 0.0;
}

void TestEntryForms::numberFields()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(double, value);

    double parsed = 0.0;
    QCOMPARE(EntryForms::parseNumber(text, &parsed), ok);
    QCOMPARE(parsed, value);
    if (ok)
        QCOMPARE(EntryForms::numberText(value).toDouble(), value);
    QCOMPARE(EntryForms::numberText(51.75), u"51.75"_s);
    QCOMPARE(EntryForms::numberText(12000), u"12000"_s);
}

QTEST_GUILESS_MAIN(TestEntryForms)
#include "tst_entry_forms.moc"
