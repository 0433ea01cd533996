#include <QtTest>

#include "core/files_helper.h"
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
    return { .highestOdometer = 12000,
             .startupTime = Startup,
             .clock = clock,
             .vehicleName = u"Blue Van"_s,
             .startOdometer = 10000,
             .lastFullFillOdometer = 11700,
             .costPerMile = 0.345 };
}

QDateTime at(quint32 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds);
}

using TestFiles::json;
constexpr auto entry = &TestFiles::record;

CVCItem newRecord(CVCItem::EntryType type)
{
    CVCItem item = entry("'odometer': 12000, 'entryDate': 1709640000, 'newEntryMark': 99");
    item.entryType = type;
    item.iconIndex = type == CVCItem::Trip ? 19 : 0;
    return item;
}

// A record with every field set to something a form must overwrite.
CVCItem cluttered()
{
    return entry(
        "'iconIndex': 3, 'entryType': 2, 'economyUnit': 3, 'distanceUnit': 1, 'typeText': 'junk', "
        "'fuelMeasure': 'junk', 'station': 'junk', 'invoice': 'junk', 'purpose': 'junk', "
        "'destination': 'junk', 'contact': 'junk', 'departTime': 5, 'arriveTime': 6, 'reservedTime': 7, "
        "'temperature': 8, 'newEntryMark': 99, 'reserved1': 9, 'reserved2': 10, 'notFull': 1, "
        "'listPosition': 11, 'fuelQuantity': 12, 'unitPrice': 13, 'endOdometer': 14, 'economy': 15, "
        "'parking': 16");
}

// Typed one character at a time, as the user would.
template<typename Changed> void type(QString &field, const QString &text, Changed changed)
{
    for (qsizetype i = 1; i <= text.size(); ++i) {
        field = text.left(i);
        changed();
    }
}

// Opens a form on the record, sets some of its values and saves.
template<typename Form, typename Set>
void saveWith(const EntryFormContext &c, CVCItem &record, Reporter &r, Set set)
{
    Form form(c, record);
    set(form.values);
    form.save(record, r);
}

struct FuelCase
{
    int distanceUnit, economyUnit;
    double startOdometer, odometer;
    const char *unit, *quantity, *price, *economy; // economy "%.2f", after the quantity
    double total; // after the price
};

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

    void maintenanceIcon_data();
    void maintenanceIcon();
    void maintenanceOpening_data();
    void maintenanceOpening();
    void maintenanceSaveWritesEveryField();

    void tripOpening_data();
    void tripOpening();
    void tripSave_data();
    void tripSave();

    void numberFields();
};

// The formulas have their own tests; these rows show that the form hands them the units and
// odometers of the vehicle and the texts as they are typed.
void TestEntryForms::fuelLiveComputation_data()
{
    QTest::addColumn<FuelCase>("c");
    // 300 miles since the last full fill-up at 11700 on 10 gallons: 30.00 MPG.
    QTest::newRow("MPG") << FuelCase { 0, 0, 10000, 12000, "Gallons", "10", "3.459", "30.00", 34.59 };
    // 37.8541 l / 482.8032 km x 100 = 7.84.
    QTest::newRow("L/100km") << FuelCase { 0, 2, 10000, 12000, "Gallons", "10", "2", "7.84", 20 };
    // 300 km on 40 litres.
    QTest::newRow("km and litres, KPL") << FuelCase { 1, 4, 10000, 12000, "Litres", "40", "1.5", "7.50", 60 };
    QTest::newRow("first fill after start")
        << FuelCase { 0, 0, 11700, 12000, "Gallons", "10", "2", "0.00", 20 };
    QTest::newRow("quantity not a number")
        << FuelCase { 0, 0, 10000, 12000, "Gallons", "abc", "2", "0.00", 0 };
    QTest::newRow("negative price") << FuelCase { 0, 0, 10000, 12000, "Gallons", "10", "-2", "30.00", 0 };
}

void TestEntryForms::fuelLiveComputation()
{
    QFETCH(FuelCase, c);
    EntryFormContext context = ::context();
    context.distanceUnit = c.distanceUnit;
    context.economyUnit = c.economyUnit;
    context.startOdometer = c.startOdometer;
    FuelForm form(context, newRecord(CVCItem::Fuel));
    form.values.odometer = c.odometer;
    form.values.unitText = QString::fromLatin1(c.unit);
    // The quantity alone gives no total; the price changes the total only.
    type(form.values.quantityText, QString::fromLatin1(c.quantity), [&] { form.quantityChanged(); });
    QCOMPARE(QString::number(form.values.economy, 'f', 2), QString::fromLatin1(c.economy));
    QCOMPARE(form.values.amount, 0.0);
    const double economy = form.values.economy;
    type(form.values.priceText, QString::fromLatin1(c.price), [&] { form.priceChanged(); });
    QCOMPARE(form.values.economy, economy);
    QCOMPARE(form.values.amount, c.total);
}

void TestEntryForms::fuelUnitChangeKeepsEconomy()
{
    FuelForm form(context(), newRecord(CVCItem::Fuel));
    type(form.values.quantityText, u"10"_s, [&] { form.quantityChanged(); });
    type(form.values.priceText, u"2.5"_s, [&] { form.priceChanged(); });
    const double economy = form.values.economy;
    form.values.unitText = u"Litres"_s;
    form.unitChanged();
    QCOMPARE(form.values.economy, economy);
    QCOMPARE(form.values.amount, 25.0);
    // Editing the quantity again now computes in litres: 300 miles on 10 litres = 113.56 MPG, cleared.
    type(form.values.quantityText, u"10.0"_s, [&] { form.quantityChanged(); });
    QCOMPARE(form.values.economy, 0.0);
}

void TestEntryForms::fuelOpening_data()
{
    QTest::addColumn<CVCItem>("record");
    QTest::addColumn<int>("liquidUnit");
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<FuelFormValues>("expected");

    const FuelFormValues fresh { 12000, at(Startup), {}, u"Litres"_s };
    QTest::newRow("new entry, litres") << newRecord(CVCItem::Fuel) << 2 << true << fresh;
    // A stored entry with no quantity opens as a new one: its fields are forgotten.
    QTest::newRow("stored, no quantity")
        << entry("'odometer': 5000, 'station': 'Corner', 'amount': 10") << 1 << true
        << FuelFormValues { 12000, at(Startup), {}, u"Imp. Gallons"_s };
    QTest::newRow("stored entry")
        << entry(
               "'odometer': 11800, 'entryDate': 1708413300, 'notes': 'trip north', 'fuelMeasure': 'Gallons', "
               "'station': 'Corner', 'temperature': -4, 'notFull': 1, 'amount': 40.5, 'fuelQuantity': 12.5, "
               "'unitPrice': 3.24, 'economy': 28.4")
        << 2 << false
        << FuelFormValues { 11800,       at(1708413300), u"Corner"_s, u"Gallons"_s, u"trip north"_s,
                            u"12.500"_s, u"3.240"_s,     40.5,        28.4,         -4,
                            true };
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
    QVERIFY(form.values == expected);
}

void TestEntryForms::fuelSaveWritesEveryField_data()
{
    QTest::addColumn<QString>("price");
    QTest::addColumn<bool>("priceFirst");
    QTest::addColumn<double>("amount");

    QTest::newRow("price before and after quantity") << u"3.459"_s << true << 34.59;
    // Typed after the quantity only and not clamped on save; the total was clamped to 0.
    QTest::newRow("negative price") << u"-2"_s << false << 0.0;
}

void TestEntryForms::fuelSaveWritesEveryField()
{
    QFETCH(QString, price);
    QFETCH(bool, priceFirst);
    QFETCH(double, amount);

    EntryFormContext c = context();
    c.economyUnit = 2;
    FuelForm form(c, newRecord(CVCItem::Fuel));
    form.values = { 12300, at(Startup), u"Corner"_s, u"Gallons"_s, u"full"_s, {}, {}, 0, 0, 21, true };
    if (priceFirst)
        type(form.values.priceText, price, [&] { form.priceChanged(); });
    type(form.values.quantityText, u"10"_s, [&] { form.quantityChanged(); });
    type(form.values.priceText, price, [&] { form.priceChanged(); });

    CVCItem record = cluttered();
    RecordingReporter reporter;
    form.save(record, reporter);
    QVERIFY(reporter.messages().isEmpty());
    // 600 miles since 11700 on 37.8541 litres: 3.92 L/100km.
    QCOMPARE(QString::number(record.economy, 'f', 2), u"3.92"_s);
    CVCItem expected
        = entry("'odometer': 12300, 'entryDate': 1709281800, 'economyUnit': 2, 'typeText': 'Fuel', "
                "'notes': 'full', 'fuelMeasure': 'Gallons', 'station': 'Corner', 'temperature': 21, "
                "'notFull': 1, 'fuelQuantity': 10");
    expected.amount = amount;
    expected.unitPrice = price.toDouble();
    expected.economy = record.economy;
    QCOMPARE(json(record), json(expected));
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
    QTest::newRow("repair lower, new") << 1 << 11000.0 << 99 << RepairNote;
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
    if (kind == 0)
        saveWith<FuelForm>(c, record, reporter, [&](auto &values) { values.odometer = odometer; });
    else if (kind == 1)
        saveWith<MaintenanceForm>(c, record, reporter, [&](auto &values) { values.odometer = odometer; });
    else
        saveWith<TripForm>(c, record, reporter, [&](auto &values) {
            values.departOdometer = odometer;
            values.arriveOdometer = odometer;
        });
    QList<RecordingReporter::Message> expected;
    if (!warning.isEmpty())
        expected.append({ Reporter::Kind::Question, warning, u"NOTE"_s });
    QCOMPARE(reporter.messages(), expected);
    // The warning never stops the save.
    QCOMPARE(record.odometer, odometer);
    QCOMPARE(record.newEntryMark, 0);
}

// An icon button clicked, then repair types chosen one after the other.
void TestEntryForms::maintenanceIcon_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("picture");
    QTest::addColumn<bool>("buttonsEnabled");

    QTest::newRow("I0") << 0 << QStringList() << 1 << 356 << true;
    QTest::newRow("I10") << 10 << QStringList() << 17 << 366 << true;
    QTest::newRow("Oil Change") << 5 << QStringList { u"Oil Change"_s } << 4 << 408 << false;
    QTest::newRow("oil change after words")
        << 5 << QStringList { u"Synthetic Oil Change"_s } << 4 << 408 << false;
    QTest::newRow("Tune-Up") << 5 << QStringList { u"Tune-Up"_s } << 5 << 409 << false;
    QTest::newRow("tune-up after words") << 5 << QStringList { u"Major Tune-Up"_s } << 1 << 356 << true;
    QTest::newRow("Transmission") << 5 << QStringList { u"Transmission Service 2"_s } << 6 << 410 << false;
    QTest::newRow("Rotate Tires") << 5 << QStringList { u"Rotate Tires"_s } << 17 << 412 << false;
    QTest::newRow("later test wins") << 5 << QStringList { u"Coolant Flush and Oil Change"_s } << 7 << 411
                                     << false;
    QTest::newRow("case matters") << 5 << QStringList { u"oil change"_s } << 1 << 356 << true;
    QTest::newRow("custom after predefined")
        << 3 << QStringList { u"Rotate Tires"_s, u"Brakes"_s } << 1 << 356 << true;
}

void TestEntryForms::maintenanceIcon()
{
    QFETCH(int, button);
    QFETCH(QStringList, types);
    QFETCH(int, icon);
    QFETCH(int, picture);
    QFETCH(bool, buttonsEnabled);

    MaintenanceForm form(context(), newRecord(CVCItem::Maintenance));
    form.iconButtonClicked(button);
    for (const QString &type : types)
        form.repairTypeChanged(type);
    QCOMPARE(form.iconIndex(), icon);
    QCOMPARE(form.pictureResource(), picture);
    QCOMPARE(form.iconButtonsEnabled(), buttonsEnabled);
    CVCItem record;
    form.writeRecord(record);
    QCOMPARE(record.iconIndex, icon);
    QCOMPARE(record.typeText, types.isEmpty() ? u"Maint."_s : types.last());
}

void TestEntryForms::maintenanceOpening_data()
{
    QTest::addColumn<CVCItem>("record");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("picture");
    QTest::addColumn<MaintenanceFormValues>("expected");

    const CVCItem fresh = newRecord(CVCItem::Maintenance);
    QTest::newRow("new") << fresh << 12000.0 << 356
                         << MaintenanceFormValues { 12000, at(Startup), u"Maint."_s };
    // An empty log: the odometer shown is 0, so the form starts over without a repair type.
    QTest::newRow("new, empty log") << fresh << 0.0 << 356 << MaintenanceFormValues { 0, at(Startup) };

    CVCItem stored
        = entry("'iconIndex': 12, 'entryType': 1, 'odometer': 11500, 'entryDate': 1708413300, "
                "'typeText': 'Brakes', 'notes': 'front pads', 'station': 'Garage', 'invoice': 'A-17', "
                "'amount': 180.25");
    const MaintenanceFormValues loaded { 11500,  at(1708413300), u"Brakes"_s,    u"A-17"_s,
                                         180.25, u"Garage"_s,    u"front pads"_s };
    QTest::newRow("stored with I5's icon") << stored << 12000.0 << 361 << loaded;
    stored.iconIndex = 5;
    QTest::newRow("stored with a predefined icon") << stored << 12000.0 << 356 << loaded;
    // A stored entry at odometer 0 is reset as well; nothing of it survives.
    stored.odometer = 0;
    QTest::newRow("stored at odometer 0")
        << stored << 12000.0 << 356 << MaintenanceFormValues { 12000, at(Startup) };
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
    QVERIFY(form.values == expected);
    QCOMPARE(form.pictureResource(), picture);
    // The stored icon is dropped on opening.
    QCOMPARE(form.iconIndex(), 1);
    QVERIFY(form.iconButtonsEnabled());
}

void TestEntryForms::maintenanceSaveWritesEveryField()
{
    MaintenanceForm form(context(), newRecord(CVCItem::Maintenance));
    form.values = { 12100, at(Startup), {}, u"INV-9"_s, 39.95, u"Quick Lube"_s, u"5W-30"_s };
    form.repairTypeChanged(u"Oil Change"_s);
    CVCItem record = cluttered();
    RecordingReporter reporter;
    form.save(record, reporter);
    QVERIFY(reporter.messages().isEmpty());
    QCOMPARE(
        json(record),
        json(entry("'iconIndex': 4, 'entryType': 1, 'odometer': 12100, 'entryDate': 1709281800, 'typeText': "
                   "'Oil Change', 'notes': '5W-30', 'station': 'Quick Lube', 'invoice': 'INV-9', "
                   "'amount': 39.95")));
}

void TestEntryForms::tripSave_data()
{
    QTest::addColumn<double>("arrive");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("cost"); // "%.2f"

    QTest::newRow("closed") << 12150.0 << 0.345 << 19 << u"51.75"_s;
    QTest::newRow("open") << 12000.0 << 0.345 << 18 << u"0.00"_s;
    QTest::newRow("arrival below departure") << 11900.0 << 0.345 << 18 << u"0.00"_s;
    QTest::newRow("no rate") << 12150.0 << 0.0 << 19 << u"0.00"_s;
}

void TestEntryForms::tripSave()
{
    QFETCH(double, arrive);
    QFETCH(double, rate);
    QFETCH(int, icon);
    QFETCH(QString, cost);

    FixedClock clock(Now);
    EntryFormContext c = context(&clock);
    c.costPerMile = rate;
    TripForm form(c, newRecord(CVCItem::Trip));
    // Each time is the day of its date picker with the hour and minute of its time picker:
    // departure 2024-02-20 17:40 and 2024-03-01 07:15:33, arrival 2024-03-05 08:30 and 2024-02-20 14:35.
    form.values = { at(1708450800), at(1709277333), at(1709627400),   at(1708439700),    12000, arrive,
                    u"Sales"_s,     u"Acme"_s,      u"Springfield"_s, u"client visit"_s, 4.5,   12 };

    CVCItem record = cluttered();
    RecordingReporter reporter;
    form.save(record, reporter);
    QVERIFY(reporter.messages().isEmpty());
    QCOMPARE(QString::number(record.unitPrice, 'f', 2), cost);
    // Departure 2024-02-20 07:15:00, arrival 2024-03-05 14:35:00.
    CVCItem expected
        = entry("'entryType': 2, 'odometer': 12000, 'entryDate': 1708450800, 'typeText': 'Trip', "
                "'notes': 'client visit', 'purpose': 'Sales', 'destination': 'Springfield', "
                "'contact': 'Acme', 'departTime': 1708413300, 'arriveTime': 1709649300, "
                "'amount': 4.5, 'parking': 12");
    expected.iconIndex = icon;
    expected.endOdometer = arrive;
    expected.unitPrice = record.unitPrice;
    QCOMPARE(json(record), json(expected));
}

void TestEntryForms::tripOpening_data()
{
    QTest::addColumn<CVCItem>("record");
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<int>("icon");
    QTest::addColumn<TripFormValues>("expected");
    QTest::addColumn<quint32>("savedArriveTime"); // after the arrival odometer is set to 12150

    QTest::newRow("new") << newRecord(CVCItem::Trip) << true << 19
                         << TripFormValues { at(Now), at(Now),     at(Now),      at(Now),     12000,
                                             12000,   u"Select"_s, u"None"_s,    u"Select"_s, {},
                                             0,       0,           u"Blue Van"_s }
                         << Now;
    CVCItem stored
        = entry("'iconIndex': 18, 'entryType': 2, 'odometer': 12000, 'notes': 'n', 'purpose': 'Sales', "
                "'destination': 'Springfield', 'contact': 'Acme', 'departTime': 1708413300, "
                "'arriveTime': 1709627400, 'amount': 3, 'endOdometer': 12150, 'parking': 7");
    TripFormValues loaded { at(1708413300), at(1708413300), at(1709627400),   at(1709627400), 12000, 12150,
                            u"Sales"_s,     u"Acme"_s,      u"Springfield"_s, u"n"_s,         3,     7,
                            u"Blue Van"_s };
    QTest::newRow("closed") << stored << false << 18 << loaded << quint32(1709627400);
    // The arrival time of an open trip becomes now; the arrival date stays. Completing it later
    // saves 2024-03-05 (kept) at 12:00 (now).
    stored.endOdometer = 12000;
    loaded.arriveOdometer = 12000;
    loaded.arriveTime = at(Now);
    QTest::newRow("open") << stored << false << 18 << loaded << Now;
    stored.endOdometer = 11000;
    QTest::newRow("end below start") << stored << false << 18 << loaded << Now;
}

void TestEntryForms::tripOpening()
{
    QFETCH(CVCItem, record);
    QFETCH(bool, isNew);
    QFETCH(int, icon);
    QFETCH(TripFormValues, expected);
    QFETCH(quint32, savedArriveTime);

    FixedClock clock(Now);
    TripForm form(context(&clock), record);
    QCOMPARE(form.isNewTrip(), isNew);
    QVERIFY(form.values == expected);
    QCOMPARE(form.iconIndex(), icon);

    form.values.arriveOdometer = 12150;
    NullReporter reporter;
    form.save(record, reporter);
    QCOMPARE(record.iconIndex, 19);
    QCOMPARE(record.arriveTime, savedArriveTime);
}

void TestEntryForms::numberFields()
{
    double parsed = 0.0;
    QVERIFY(EntryForms::parseNumber(u" 12.5 "_s, &parsed));
    QCOMPARE(parsed, 12.5);
    for (const QString &text : { QString(), u"12abc"_s, u"1,5"_s }) {
        double rejected = 0.0;
        QVERIFY(!EntryForms::parseNumber(text, &rejected));
        QCOMPARE(rejected, 0.0);
    }
    QCOMPARE(EntryForms::numberText(51.75), u"51.75"_s);
    QCOMPARE(EntryForms::numberText(12000), u"12000"_s);
}

QTEST_GUILESS_MAIN(TestEntryForms)
#include "tst_entry_forms.moc"
