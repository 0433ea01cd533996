#include <QtTest>

#include "core/files_helper.h"
#include "dataview/DataViewColumns.h"
#include "dataview/EntryTableModel.h"
#include "dataview/ListAppearance.h"
#include "platform/LocaleFormats.h"
#include "platform/Preferences.h"
#include "platform/SettingsStore.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;

namespace {

using TestFiles::record;
using TestFiles::utc;

// Dates: 2026-11-23 08:30, 2026-11-24 10:00, and a trip from 2026-11-20 08:15 to 2026-11-21 10:45.
CVCItem fuel()
{
    return record("'odometer': 12345, 'entryDate': 1795422600, 'typeText': 'Fuel', 'notes': 'Full tank', "
                  "'fuelMeasure': 'Gallons', 'station': 'Shell', 'temperature': 7, 'amount': 34.13, "
                  "'fuelQuantity': 10.5, 'unitPrice': 3.25, 'economy': 28.5");
}

CVCItem repair()
{
    return record(
        "'iconIndex': 4, 'entryType': 1, 'odometer': 12400, 'entryDate': 1795514400, "
        "'typeText': 'Oil Change', 'notes': '5W-30', 'station': 'Joe\\u0027s Garage', 'invoice': 'INV-7', "
        "'amount': 49.95");
}

CVCItem trip()
{
    return record(
        "'iconIndex': 19, 'entryType': 2, 'odometer': 12000, 'entryDate': 1795162500, "
        "'typeText': 'Trip', 'purpose': 'Client visit', 'destination': 'Springfield', 'contact': 'Ann', "
        "'departTime': 1795162500, 'arriveTime': 1795257900, 'amount': 4.5, 'unitPrice': 51.75, "
        "'endOdometer': 12150, 'parking': 12");
}

QStringList split(const char *cells)
{
    return QString::fromUtf8(cells).split(u'|');
}

} // namespace

class TestDataViewColumns : public QObject
{
    Q_OBJECT

private slots:
    void headers();
    void cells_data();
    void cells();
    void sharedWidths();
    void model();
    void appearance();
};

void TestDataViewColumns::headers()
{
    using namespace DataViewColumns;
    QCOMPARE(DataViewColumns::headers(layout(DataViewFilter::AllTypes)),
             split(" |Entry Type|Mileage|Date|Price|Qty|Measure|Location|Invoice|Purpose|Destination|"
                   "Start Date/Time|End Date/Time|End Mileage|Duration|Distance|Note"));
    QCOMPARE(DataViewColumns::headers(layout(DataViewFilter::Fuel)),
             split(" |Entry Type|Mileage|Date|Price|Qty|Economy|Measure|Temp|Total|Station|Note"));
    QCOMPARE(DataViewColumns::headers(layout(DataViewFilter::Maintenance)),
             split(" |Repair|Mileage|Date|Cost|Invoice|Location|Note"));
    QCOMPARE(DataViewColumns::headers(layout(DataViewFilter::Trips)),
             split(" |Purpose|Mileage|Date|Destination|Start Date/Time|End Date/Time|End Mileage|Duration|"
                   "Distance|Tolls|Parking|Travel|Note"));
}

void TestDataViewColumns::cells_data()
{
    QTest::addColumn<int>("view");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("cells");

    // The trip lasts 95400 s: 1 day, 26 - 24 = 2 hours, 1590 - 2 x 60 = 1470 minutes.
    const struct
    {
        const char *name;
        int view, kind;
        const char *cells;
    } rows[] = {
        { "fuel in Fuel", 0, 0,
          "|Fuel|12345  |11/23/2026|$3.250|10.500|28.50 MPG|Gallons|  7|$34.13|Shell|Full tank" },
        { "fuel in ALL", 3, 0, "|Fuel|12345  |11/23/2026|$3.250|10.500|Gallons|Shell|||||||||Full tank" },
        { "repair in Maint.", 1, 1, "|Oil Change|12400  |11/24/2026|$49.95|INV-7|Joe's Garage|5W-30" },
        { "repair in ALL", 3, 1, "|Oil Change|12400  |11/24/2026|$49.95|||Joe's Garage|INV-7||||||||5W-30" },
        { "trip in Trips", 2, 2,
          "|Client visit|12000  |11/20/2026|Springfield|11/20/2026 8:15 AM|11/21/2026 10:45 AM|12150  |"
          "1 Days 2 Hours 1470 Min|150    |$4.50|$12.00|$51.750|" },
        { "trip in ALL", 3, 2,
          "|Trip|12000  |11/20/2026|$51.750|||||Client visit|Springfield|11/20/2026 8:15 AM|"
          "11/21/2026 10:45 AM|12150  |1 Days 2 Hours 1470 Min|150    |" },
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.view << row.kind << QString::fromUtf8(row.cells);
}

void TestDataViewColumns::cells()
{
    QFETCH(int, view);
    QFETCH(int, kind);
    QFETCH(QString, cells);
    const CVCItem items[] = { fuel(), repair(), trip() };
    TestLocaleFormats locale;
    QCOMPARE(
        DataViewColumns::rowTexts(items[kind], DataViewColumns::layout(DataViewFilter::Type(view)), locale)
            .join(u'|'),
        cells);
}

void TestDataViewColumns::sharedWidths()
{
    using namespace DataViewColumns;
    MemorySettingsStore store;
    Preferences preferences(store);
    // A width changed in the Trips view: the key of column 5 is the same in every view.
    QList<int> trips = readWidths(preferences, layout(DataViewFilter::Trips));
    QCOMPARE(trips, (QList<int> { 18, 80, 80, 80, 80, 50, 50, 90, 90, 90, 90, 50, 50, 160 }));
    trips[5] = 123;
    writeWidths(preferences, trips);
    QCOMPARE(readWidths(preferences, layout(DataViewFilter::Maintenance)),
             (QList<int> { 18, 80, 80, 80, 80, 123, 50, 90 }));
    QCOMPARE(preferences.getInt(u"ListAttributes"_s, u"ColNumber13"_s, 0), 160);
}

void TestDataViewColumns::model()
{
    TestLocaleFormats locale;
    EntryTableModel model(locale);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const EntryList entries = { fuel(), trip(), repair(), fuel() };
    DataViewFilter filter;
    model.setEntries(&entries, filter, utc("2026-11-25T12:00:00"));
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.columnCount(), 17);

    filter.type = DataViewFilter::Maintenance;
    model.setEntries(&entries, filter, utc("2026-11-25T12:00:00"));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.columnCount(), 8);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), u"Repair"_s);
    QCOMPARE(model.index(0, 1).data().toString(), u"Oil Change"_s);
    QCOMPARE(model.index(0, 0).data(EntryTableModel::IconNumberRole).toInt(), 4);
    QVERIFY(!model.index(0, 1).data(EntryTableModel::IconNumberRole).isValid());
    QCOMPARE(model.index(0, 3).data(EntryTableModel::PositionRole).toInt(), 2);
    QCOMPARE(model.index(0, 3).data(EntryTableModel::RecordRole).value<const CVCItem *>(), &entries[2]);
    QCOMPARE(model.rowOf(2), 0);
    QCOMPARE(model.rowOf(1), -1);

    filter.type = DataViewFilter::Fuel;
    filter.period = DataViewFilter::Week;
    model.setEntries(&entries, filter, utc("2026-11-25T12:00:00"));
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.positionAt(1), 3);
    model.setEntries(nullptr, filter, 0);
    QCOMPARE(model.rowCount(), 0);
}

void TestDataViewColumns::appearance()
{
    MemorySettingsStore store;
    Preferences preferences(store);
    QCOMPARE(ListFont::read(preferences), (ListFont { -11, 400, 0, 0, 0, u"Tahoma"_s }));
    QVERIFY(ListAppearance::shadeAlternateRows(preferences));
    const ListFont chosen { -15, 700, 1, 0, 2, u"DejaVu Sans"_s };
    chosen.write(preferences);
    QCOMPARE(ListFont::read(preferences), chosen);
    QCOMPARE(preferences.getInt(u"MainFont"_s, u"Height"_s, 0), -15);
    ListAppearance::setShadeAlternateRows(preferences, false);
    QVERIFY(!ListAppearance::shadeAlternateRows(preferences));
    QCOMPARE(preferences.getInt(u"ListAttributes"_s, u"ShadeAlternateRows"_s, 9), 0);
}

QTEST_GUILESS_MAIN(TestDataViewColumns)
#include "tst_dataview_columns.moc"
