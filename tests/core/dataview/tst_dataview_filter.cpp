#include <QtTest>

#include "core/files_helper.h"
#include "dataview/DataViewFilter.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"
#include "platform/SettingsStore.h"
#include "settings/Options.h"

using namespace Qt::StringLiterals;

namespace {

// Tests run in UTC, so these are also the local times the filter sees.
using TestFiles::utc;

CVCItem dated(const char *iso, qint32 type = CVCItem::Fuel)
{
    return { .entryType = type, .entryDate = utc(iso) };
}

} // namespace

class TestDataViewFilter : public QObject
{
    Q_OBJECT

private slots:
    void periods_data();
    void periods();
    void types();
    void options_data();
    void options();
};

void TestDataViewFilter::periods_data()
{
    QTest::addColumn<QString>("now");
    QTest::addColumn<int>("period");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("listed");

    // November 2026 starts on a Sunday; the 23rd is a Monday.
    const struct
    {
        const char *name, *now;
        int period;
        const char *entry;
        bool listed;
    } rows[] = {
        { "week monday: today", "2026-11-23T12:00:00", 0, "2026-11-23T00:00:00", true },
        { "week monday: sunday before", "2026-11-23T12:00:00", 0, "2026-11-22T23:59:59", false },
        { "week monday: later this month", "2026-11-23T12:00:00", 0, "2026-11-30T18:00:00", true },
        { "week monday: next month", "2026-11-23T12:00:00", 0, "2026-12-01T00:00:00", false },
        { "week wednesday: monday", "2026-11-04T09:00:00", 0, "2026-11-02T08:00:00", true },
        { "week wednesday: sunday", "2026-11-04T09:00:00", 0, "2026-11-01T08:00:00", false },
        { "week saturday: monday", "2026-11-28T09:00:00", 0, "2026-11-23T00:00:00", true },
        { "week saturday: sunday", "2026-11-28T09:00:00", 0, "2026-11-22T12:00:00", false },
        { "week sunday: today", "2026-11-29T12:00:00", 0, "2026-11-29T10:00:00", false },
        { "week sunday: later this month", "2026-11-29T12:00:00", 0, "2026-11-30T10:00:00", false },
        { "week sunday: friday", "2026-11-29T12:00:00", 0, "2026-11-27T10:00:00", false },
        { "week tuesday 1st: monday in last month", "2026-12-01T12:00:00", 0, "2026-11-30T12:00:00", false },
        { "week tuesday 1st: today", "2026-12-01T12:00:00", 0, "2026-12-01T12:00:00", true },
        { "week tuesday 1st: month end", "2026-12-01T12:00:00", 0, "2026-12-31T23:59:59", true },
        { "week tuesday 1st: a year ago", "2026-12-01T12:00:00", 0, "2025-12-01T12:00:00", false },
        { "month: first second", "2026-11-23T12:00:00", 1, "2026-11-01T00:00:00", true },
        { "month: last second", "2026-11-23T12:00:00", 1, "2026-11-30T23:59:59", true },
        { "month: before", "2026-11-23T12:00:00", 1, "2026-10-31T23:59:59", false },
        { "month: after", "2026-11-23T12:00:00", 1, "2026-12-01T00:00:00", false },
        { "year: first second", "2026-11-23T12:00:00", 2, "2026-01-01T00:00:00", true },
        { "year: last second", "2026-11-23T12:00:00", 2, "2026-12-31T23:59:59", true },
        { "year: last year", "2026-11-23T12:00:00", 2, "2025-12-31T23:59:59", false },
        { "year: next year", "2026-11-23T12:00:00", 2, "2027-01-01T00:00:00", false },
        { "all: unset date", "2026-11-23T12:00:00", 3, "1970-01-01T00:00:00", true },
        { "all: far future", "2026-11-23T12:00:00", 3, "2100-01-01T00:00:00", true },
        // list by date runs from 2026-11-10 to 2026-11-20, both days whole.
        { "dates: start midnight", "2026-11-23T12:00:00", 4, "2026-11-10T00:00:00", true },
        { "dates: day before start", "2026-11-23T12:00:00", 4, "2026-11-09T23:59:59", false },
        { "dates: end day, late", "2026-11-23T12:00:00", 4, "2026-11-20T23:59:59", true },
        { "dates: day after end", "2026-11-23T12:00:00", 4, "2026-11-21T00:00:00", false },
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << QString::fromLatin1(row.now) << row.period
                                << QString::fromLatin1(row.entry) << row.listed;
}

void TestDataViewFilter::periods()
{
    QFETCH(QString, now);
    QFETCH(int, period);
    QFETCH(QString, entry);
    QFETCH(bool, listed);

    DataViewFilter filter;
    filter.period = DataViewFilter::Period(period);
    filter.startDate = QDate(2026, 11, 10);
    filter.endDate = QDate(2026, 11, 20);
    const quint32 nowTime = utc(now.toLatin1().constData());
    const CVCItem item = dated(entry.toLatin1().constData());
    QCOMPARE(filter.lists(item, nowTime), listed);
    // The bulk path lists the same.
    QCOMPARE(filter.listedPositions(EntryList { item }, nowTime).size(), listed ? 1u : 0u);
}

void TestDataViewFilter::types()
{
    const quint32 now = utc("2026-11-23T12:00:00");
    const EntryList entries = {
        dated("2026-11-23T08:00:00", CVCItem::Fuel),        dated("2026-11-02T08:00:00", CVCItem::Trip),
        dated("2026-11-23T09:00:00", CVCItem::Maintenance), dated("2026-11-24T08:00:00", CVCItem::Trip),
        dated("2025-11-24T08:00:00", CVCItem::Fuel),
    };
    const struct
    {
        DataViewFilter::Type type;
        DataViewFilter::Period period;
        std::vector<int> positions;
    } cases[] = {
        { DataViewFilter::AllTypes, DataViewFilter::AllPeriods, { 0, 1, 2, 3, 4 } },
        { DataViewFilter::Fuel, DataViewFilter::AllPeriods, { 0, 4 } },
        { DataViewFilter::Maintenance, DataViewFilter::AllPeriods, { 2 } },
        { DataViewFilter::Trips, DataViewFilter::AllPeriods, { 1, 3 } },
        { DataViewFilter::Trips, DataViewFilter::Week, { 3 } },
        { DataViewFilter::AllTypes, DataViewFilter::Week, { 0, 2, 3 } },
        { DataViewFilter::Fuel, DataViewFilter::Year, { 0 } },
        { DataViewFilter::AllTypes, DataViewFilter::ByDate, { 1 } },
    };
    for (const auto &c : cases) {
        DataViewFilter filter;
        filter.type = c.type;
        filter.period = c.period;
        filter.startDate = QDate(2026, 11, 2);
        filter.endDate = QDate(2026, 11, 2);
        QCOMPARE(filter.listedPositions(entries, now), c.positions);
    }
}

void TestDataViewFilter::options_data()
{
    QTest::addColumn<double>("r5");
    QTest::addColumn<double>("r6");
    QTest::addColumn<double>("startDate");
    QTest::addColumn<double>("endDate");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("period");
    QTest::addColumn<QDate>("start");
    QTest::addColumn<QDate>("end");

    // now is 2026-11-23 12:00; 1762732800 is 2025-11-10 00:00, 1763596800 is 2025-11-20 00:00.
    QTest::newRow("fresh store") << 0.0 << 0.0 << 0.0 << 0.0 << 3 << 3 << QDate(2026, 1, 1)
                                 << QDate(2026, 11, 23);
    QTest::newRow("fuel, week") << 1.0 << 1.0 << 1762732800.0 << 1763596800.0 << 0 << 0 << QDate(2025, 11, 10)
                                << QDate(2025, 11, 20);
    QTest::newRow("trips, by date") << 3.0 << 5.0 << 1762732800.0 << 1763596800.0 << 2 << 4
                                    << QDate(2025, 11, 10) << QDate(2025, 11, 20);
    QTest::newRow("out of range") << 9.0 << 6.0 << 0.0 << 1763596800.0 << 3 << 3 << QDate(2026, 1, 1)
                                  << QDate(2025, 11, 20);
}

void TestDataViewFilter::options()
{
    QFETCH(double, r5);
    QFETCH(double, r6);
    QFETCH(double, startDate);
    QFETCH(double, endDate);

    MemorySettingsStore store;
    NullReporter reporter;
    FixedClock clock(utc("2026-11-23T12:00:00"));
    Options options(store, reporter, clock);
    options.r5 = r5;
    options.r6 = r6;
    options.startDate = startDate;
    options.endDate = endDate;

    const DataViewFilter filter = DataViewFilter::fromOptions(options, clock.now());
    QTEST(int(filter.type), "type");
    QTEST(int(filter.period), "period");
    QTEST(filter.startDate, "start");
    QTEST(filter.endDate, "end");

    // Written back and read again, the filter is the same.
    Options again(store, reporter, clock);
    filter.toOptions(again);
    QCOMPARE(DataViewFilter::fromOptions(again, clock.now()), filter);
}

QTEST_GUILESS_MAIN(TestDataViewFilter)
#include "tst_dataview_filter.moc"
