#include <QTest>

#include "calc/ReminderEngine.h"
#include "platform/Clock.h"
#include "platform/Preferences.h"
#include "platform/SettingsStore.h"

using namespace Qt::StringLiterals;

namespace {

const quint32 Now = 1717200000; // 2024-06-01 00:00 UTC
const qint64 Day = 86400;

CVCItem entry(const QString &type, double odometer, qint64 daysAgo, qint32 icon = 1)
{
    CVCItem item;
    item.entryType = type.startsWith(u"Trip") ? CVCItem::Trip : CVCItem::Maintenance;
    item.typeText = type;
    item.odometer = odometer;
    item.entryDate = static_cast<quint32>(Now - daysAgo * Day);
    item.iconIndex = icon;
    return item;
}

CVCItem trip(qint32 icon, const QString &type = u"Trip"_s)
{
    return entry(type, 100, 3, icon);
}

// Intervals in the profile's numbering: 0 oil, 1 coolant, 2 transmission, 3 tune-up, 4 tires,
// 5..9 the custom reminders.
VehicleSettings vehicle(std::initializer_list<std::tuple<int, qint32, double>> intervals,
                        int distanceUnit = 0, const std::array<QString, 5> &customNames = {})
{
    VehicleSettings s;
    s.distanceUnit = distanceUnit;
    s.customNames = customNames;
    for (const auto &[reminder, days, distance] : intervals) {
        s.intervalDays[reminder] = days;
        s.intervalDistance[reminder] = distance;
    }
    return s;
}

QStringList lineTexts(const QList<ReminderLine> &lines)
{
    QStringList out;
    for (const ReminderLine &line : lines)
        out << QString::number(line.icon) + u'|' + line.text;
    return out;
}

// The eleven "Today" values, Oil..Tune, Trips, C1M..C5M, given only where set.
QStringList today(std::initializer_list<std::pair<int, QString>> set)
{
    QStringList values(11);
    for (const auto &[index, value] : set)
        values[index] = value;
    return values;
}

const QString Backup = u"6|Last Backup: 5/1/2024"_s;
const QStringList NothingDue { u"0|Welcome to Tarvane Mobile"_s, u"2|No reminders due"_s, Backup };

// The lines due, the backup line after them.
QStringList due(QStringList lines)
{
    return lines << Backup;
}

} // namespace

Q_DECLARE_METATYPE(EntryList)
Q_DECLARE_METATYPE(VehicleSettings)

class TestReminderEngine : public QObject
{
    Q_OBJECT

private slots:
    void lists_data();
    void lists();
    void prefixMatching_data();
    void prefixMatching();
    void runWritesToday_data();
    void runWritesToday();
    void todayWriteFailure();
};

void TestReminderEngine::lists_data()
{
    QTest::addColumn<VehicleSettings>("settings");
    QTest::addColumn<double>("odometer");
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("today");

    const QString oilOverdue = u"Oil change OVERDUE"_s;
    const QStringList none = today({});
    const QStringList oilDue = today({ { 0, oilOverdue } });
    const VehicleSettings oil = vehicle({ { 0, 100, 3000 } }); // 100 days or 3000 miles
    const auto oilAt = [](double odometer, qint64 daysAgo) {
        return EntryList { entry(u"Oil Change"_s, odometer, daysAgo) };
    };

    QTest::newRow("empty log") << VehicleSettings() << 0.0 << EntryList {} << NothingDue << none;
    QTest::newRow("never logged: whole reading against the interval")
        << vehicle({ { 0, 0, 3000 } }) << 50000.0 << EntryList {}
        << due({ u"4|Oil change OVERDUE by: 47000   Miles"_s }) << oilDue;
    QTest::newRow("never logged: day rule cannot fire")
        << vehicle({ { 0, 100, 0 } }) << 50000.0 << EntryList {} << NothingDue << none;
    QTest::newRow("days overdue") << oil << 12000.0 << oilAt(10000, 112)
                                  << due({ u"5|Oil change OVERDUE by: 12   days"_s }) << oilDue;
    QTest::newRow("distance exactly at interval, days not due")
        << oil << 13000.0 << oilAt(10000, 10) << NothingDue << none;
    QTest::newRow("days exactly at interval") << oil << 12000.0 << oilAt(10000, 100) << NothingDue << none;
    QTest::newRow("distance exactly at interval, days due: distance line on top")
        << oil << 13000.0 << oilAt(10000, 112)
        << due({ u"4|Oil change OVERDUE by: 0       Miles"_s, u"5|Oil change OVERDUE by: 12   days"_s })
        << oilDue;
    QTest::newRow("zero day interval shows no days line")
        << vehicle({ { 0, 0, 3000 } }) << 11000.0 << oilAt(10000, 500) << NothingDue << none;
    QTest::newRow("zero distance interval shows no distance line")
        << vehicle({ { 0, 0, 0 } }) << 90000.0 << oilAt(0, 5) << NothingDue << none;
    QTest::newRow("future-dated entry")
        << oil << 10000.0 << oilAt(10000, -1) << due({ u"5|Oil change OVERDUE by: 49609 days"_s }) << oilDue;
    QTest::newRow("last entry in list order wins")
        << vehicle({ { 0, 0, 3000 } }) << 50000.0
        << EntryList { entry(u"Oil Change"_s, 47000, 5), entry(u"Oil Change"_s, 40000, 20) }
        << due({ u"4|Oil change OVERDUE by: 7000    Miles"_s }) << oilDue;
    QTest::newRow("kilometres") << vehicle({ { 1, 0, 40000 } }, 1) << 50000.0 << EntryList {}
                                << due({ u"4|Coolant flush OVERDUE by: 10000   Km"_s })
                                << today({ { 1, u"Coolant Flush OVERDUE"_s } });
    QTest::newRow("odd distance unit reads as miles")
        << vehicle({ { 2, 0, 40000 } }, 5) << 50000.0 << EntryList {}
        << due({ u"4|Trans. service OVERDUE by: 10000   Miles"_s })
        << today({ { 2, u"Trans. Service OVERDUE"_s } });
    QTest::newRow("one open trip") << VehicleSettings() << 0.0 << EntryList { trip(18), trip(19) }
                                   << due({ u"3|Found 1    open trip"_s })
                                   << today({ { 5, u"Found 1    open trip"_s } });
    QTest::newRow("two open trips") << VehicleSettings() << 0.0
                                    << EntryList { trip(18), trip(19), trip(18, u"Trip to the coast"_s),
                                                   trip(18, u"trip"_s) }
                                    << due({ u"3|Found 2    open trips"_s })
                                    << today({ { 5, u"Found 2    open trips"_s } });
    QTest::newRow("custom days") << vehicle({ { 5, 30, 0 } }, 0, { u"Brake Pads"_s }) << 1000.0
                                 << EntryList { entry(u"Brake Pads front"_s, 900, 40) }
                                 << due({ u"5|Brake Pads OVERDUE by: 10   days"_s })
                                 << today({ { 6, u"Brake Pads OVERDUE"_s } });
    // An empty name matches nothing, not even an entry with an empty repair name.
    QTest::newRow("empty custom name")
        << vehicle({ { 6, 0, 1000 } }) << 50000.0 << EntryList { entry(QString(), 49900, 1) }
        << due({ u"4| OVERDUE by: 49000   Miles"_s }) << today({ { 7, u" OVERDUE"_s } });

    // Everything at once: lines stand in reverse order of evaluation.
    const VehicleSettings all = vehicle({ { 0, 100, 5000 },
                                          { 1, 0, 40000 },
                                          { 4, 180, 0 },
                                          { 3, 0, 30000 },
                                          { 5, 30, 0 },
                                          { 7, 365, 50000 },
                                          { 9, 0, 10000 } },
                                        1, { u"Brakes"_s, QString(), u"Belt"_s, QString(), u"Wipers"_s });
    const EntryList entries({ entry(u"Oil Change"_s, 54000, 120), entry(u"Coolant Flush"_s, 10000, 400),
                              entry(u"Rotate Tires"_s, 58000, 200), entry(u"Tune-Up"_s, 25000, 50), trip(18),
                              trip(18), entry(u"Brakes rear"_s, 59000, 45), entry(u"Belt"_s, 59000, 1) });
    QTest::newRow("everything due")
        << all << 60000.0 << entries
        << due({ u"4|Wipers OVERDUE by: 50000   Km"_s, u"5|Brakes OVERDUE by: 15   days"_s,
                 u"3|Found 2    open trips"_s, u"4|Tune-up OVERDUE by: 5000    Km"_s,
                 u"5|Tire rotate OVERDUE by: 20   days"_s, u"4|Coolant flush OVERDUE by: 10000   Km"_s,
                 u"4|Oil change OVERDUE by: 1000    Km"_s, u"5|Oil change OVERDUE by: 20   days"_s })
        << QStringList({ oilOverdue, u"Coolant Flush OVERDUE"_s, QString(), u"Tire Rotate OVERDUE"_s,
                         u"Tuneup OVERDUE"_s, u"Found 2    open trips"_s, u"Brakes OVERDUE"_s, QString(),
                         QString(), QString(), u"Wipers OVERDUE"_s });
}

void TestReminderEngine::lists()
{
    QFETCH(VehicleSettings, settings);
    QFETCH(double, odometer);
    QFETCH(EntryList, entries);
    LogScan scan;
    scan.lastOdometer = odometer;

    const ReminderReport report = ReminderEngine::evaluate({ settings, scan, entries, Now, u"5/1/2024"_s });
    QTEST(lineTexts(report.lines), "lines");
    QTEST(QStringList(report.today.begin(), report.today.end()), "today");
    QCOMPARE(report.now, Now);
}

void TestReminderEngine::prefixMatching_data()
{
    QTest::addColumn<QString>("typeText");
    QTest::addColumn<QStringList>("counted"); // "Today" keys whose service the entry counts for

    QTest::newRow("Oil Change and filter") << u"Oil Change and filter"_s << QStringList { u"Oil"_s };
    QTest::newRow("small c") << u"Oil change"_s << QStringList {};
    QTest::newRow("not at the start") << u"Full Oil Change"_s << QStringList {};
    QTest::newRow("Cooling system") << u"Cooling system"_s << QStringList { u"Cool"_s };
    QTest::newRow("lower-case coolant") << u"coolant flush"_s << QStringList {};
    QTest::newRow("Transmission") << u"Transmission fluid"_s << QStringList { u"Trans"_s };
    QTest::newRow("Trans alone") << u"Trans. service"_s << QStringList {};
    QTest::newRow("Rotate Tires") << u"Rotate Tires"_s << QStringList { u"Tire"_s };
    QTest::newRow("Tire rotation") << u"Tire rotation"_s << QStringList {};
    QTest::newRow("Tuneup") << u"Tuneup"_s << QStringList { u"Tune"_s };
    QTest::newRow("leading blank") << u" Tune-Up"_s << QStringList {};
    QTest::newRow("custom name") << u"Brake pads"_s << QStringList { u"C1M"_s };
    QTest::newRow("custom name, other case") << u"brake pads"_s << QStringList {};
    // One entry can count for several services.
    QTest::newRow("two services") << u"Cooling fan belt"_s << QStringList { u"Cool"_s, u"C2M"_s };
}

void TestReminderEngine::prefixMatching()
{
    QFETCH(QString, typeText);
    QFETCH(QStringList, counted);

    VehicleSettings settings;
    for (int i = 0; i < ReminderCount; ++i)
        settings.intervalDistance[i] = 3000;
    settings.customNames = { u"Brake"_s, u"Cooling fan"_s, QString(), QString(), QString() };
    LogScan scan;
    scan.lastOdometer = 50000;
    const EntryList entries { entry(typeText, 49000, 1) };

    const ReminderReport report = ReminderEngine::evaluate({ settings, scan, entries, Now, u"x"_s });
    const QStringList overdue({ u"Oil change OVERDUE"_s, u"Coolant Flush OVERDUE"_s,
                                u"Trans. Service OVERDUE"_s, u"Tire Rotate OVERDUE"_s, u"Tuneup OVERDUE"_s,
                                QString(), u"Brake OVERDUE"_s, u"Cooling fan OVERDUE"_s, u" OVERDUE"_s,
                                u" OVERDUE"_s, u" OVERDUE"_s });
    QStringList expected;
    for (int i = 0; i < ReminderReport::TodayKeyCount; ++i)
        expected << (counted.contains(ReminderReport::todayKeys()[i]) ? QString() : overdue[i]);
    QCOMPARE(QStringList(report.today.begin(), report.today.end()), expected);
}

void TestReminderEngine::runWritesToday_data()
{
    QTest::addColumn<bool>("backupKnown");
    QTest::addColumn<QString>("backupLine");
    QTest::newRow("backup date stored") << true << u"Last Backup: 5/1/2024 9:30 AM"_s;
    QTest::newRow("no backup yet") << false << u"Last Backup: Unknown"_s;
}

void TestReminderEngine::runWritesToday()
{
    QFETCH(bool, backupKnown);
    QFETCH(QString, backupLine);

    MemorySettingsStore store;
    Preferences preferences(store);
    if (backupKnown)
        preferences.writeString(u"ListAttributes"_s, u"LastBackupDate"_s, u"5/1/2024 9:30 AM"_s);

    // A first run leaves stale values that the second one must clear.
    VehicleSettings settings = vehicle({ { 0, 0, 3000 }, { 1, 0, 3000 } });
    LogScan scan;
    scan.lastOdometer = 10000;
    FixedClock clock(Now);
    ReminderEngine::run(settings, scan, EntryList { trip(18) }, clock, preferences);
    QCOMPARE(store.writeOrder(u"Today"_s),
             QStringList(ReminderReport::todayKeys().begin(), ReminderReport::todayKeys().end()));
    QCOMPARE(preferences.getString(u"Today"_s, u"Cool"_s, u"missing"_s), u"Coolant Flush OVERDUE"_s);

    settings.intervalDistance[1] = 0;
    clock.set(Now + 7 * Day);
    const ReminderReport report = ReminderEngine::run(settings, scan, EntryList {}, clock, preferences);
    QCOMPARE(report.now, Now + 7 * Day);
    QCOMPARE(lineTexts(report.lines),
             (QStringList { u"4|Oil change OVERDUE by: 7000    Miles"_s, u"6|"_s + backupLine }));

    QStringList stored;
    for (const QString &key : ReminderReport::todayKeys())
        stored << preferences.getString(u"Today"_s, key, u"missing"_s);
    QCOMPARE(stored, today({ { 0, u"Oil change OVERDUE"_s } }));
}

void TestReminderEngine::todayWriteFailure()
{
    MemorySettingsStore store;
    store.setFailWrites(true);
    Preferences preferences(store);
    const ReminderReport report
        = ReminderEngine::evaluate({ vehicle({ { 0, 0, 3000 } }), LogScan(), EntryList {}, Now, u"x"_s });
    QVERIFY(!ReminderEngine::writeToday(preferences, report));
}

QTEST_GUILESS_MAIN(TestReminderEngine)
#include "tst_reminder_engine.moc"
