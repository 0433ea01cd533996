#include <QTemporaryDir>
#include <QTest>

#include "core/files_helper.h"
#include "platform/Clock.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"
#include "platform/SettingsStore.h"
#include "settings/IniFile.h"
#include "settings/Options.h"
#include "settings/VehicleProfile.h"

using namespace Qt::StringLiterals;

namespace {
const quint32 now = 1700000000;
const QString optionsKey = u"Options"_s;
} // namespace

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void loadWithoutKey();
    void loadValues_data();
    void loadValues();
    void saveOrderAndTypes();
    void saveFailure();
    void reminderValue_data();
    void reminderValue();
    void remindersFollowProfileKeys();
    void toDword_data();
    void toDword();
    void roundTripThroughSandboxStore();
};

void TestOptions::loadWithoutKey()
{
    MemorySettingsStore store;
    RecordingReporter reporter;
    FixedClock clock(now);
    Options options(store, reporter, clock);
    options.startDate = 5;
    options.r5 = 3;
    // A reader that never saves has nothing to correct and says nothing.
    QVERIFY(!options.load(false));
    QCOMPARE(reporter.texts(), QStringList());
    QVERIFY(!options.load());
    // A plain box with OK, no warning icon.
    QCOMPARE(
        reporter.messages(),
        (QList<RecordingReporter::Message> {
            { Reporter::Kind::Plain, u"REGKEY_OPTIONS error detected, Attempting to correct."_s, {} } }));
    QCOMPARE(options.name, u"Select Vehicle"_s);
    QCOMPARE(options.path, u"\\Program Files\\Tarvane"_s);
    QCOMPARE(options.startDate, 0.0);
    QCOMPARE(options.endDate, double(now));
    QCOMPARE(options.r5, 0.0);
    QVERIFY(!store.keyExists(optionsKey));

    // The next save brings the key back.
    QVERIFY(options.save(VehicleSettings(), 0));
    QVERIFY(store.keyExists(optionsKey));
    reporter.clear();
    QVERIFY(options.load());
    QCOMPARE(reporter.texts(), QStringList());
}

void TestOptions::loadValues_data()
{
    QTest::addColumn<QString>("valueName");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QStringList>("loaded"); // name, path, R5, R6, StartDate, EndDate

    // The defaults with one of them replaced.
    const auto with = [](int index, const QString &text) {
        QStringList values = { u"Select Vehicle"_s, u"\\Program Files\\Tarvane"_s, u"0"_s, u"0"_s, u"0"_s,
                               QString::number(now) };
        if (index >= 0)
            values[index] = text;
        return values;
    };
    QTest::newRow("empty key") << QString() << QVariant() << with(-1, QString());
    QTest::newRow("name") << u"Name"_s << QVariant(u"Blue Van"_s) << with(0, u"Blue Van"_s);
    QTest::newRow("name as number") << u"Name"_s << QVariant(5) << with(-1, QString());
    QTest::newRow("name too long") << u"Name"_s << QVariant(QString(256, u'n')) << with(-1, QString());
    QTest::newRow("path of four") << u"Path"_s << QVariant(u"\\abc"_s) << with(1, u"\\My Documents"_s);
    QTest::newRow("path of five") << u"Path"_s << QVariant(u"\\abcd"_s) << with(1, u"\\abcd"_s);
    QTest::newRow("r5") << u"R5"_s << QVariant(3u) << with(2, u"3"_s);
    QTest::newRow("r5 as text") << u"R5"_s << QVariant(u"abc"_s) << with(-1, QString());
    QTest::newRow("end date") << u"EndDate"_s << QVariant(4000000000u) << with(5, u"4000000000"_s);
}

void TestOptions::loadValues()
{
    QFETCH(QString, valueName);
    QFETCH(QVariant, stored);
    QFETCH(QStringList, loaded);

    MemorySettingsStore store;
    QVERIFY(store.createKey(optionsKey));
    if (!valueName.isEmpty())
        QVERIFY(store.setValue(optionsKey, valueName, stored));
    RecordingReporter reporter;
    FixedClock clock(now);
    Options options(store, reporter, clock);
    QVERIFY(options.load());
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE((QStringList { options.name, options.path, QString::number(options.r5, 'g', 17),
                            QString::number(options.r6, 'g', 17), QString::number(options.startDate, 'g', 17),
                            QString::number(options.endDate, 'g', 17) }),
             loaded);
}

void TestOptions::saveOrderAndTypes()
{
    MemorySettingsStore store;
    NullReporter reporter;
    FixedClock clock(now);
    Options options(store, reporter, clock);
    options.name = u"Van"_s;
    options.path = u"\\Program Files\\Tarvane\\"_s;
    options.r5 = 2.9;
    options.r6 = 1;
    options.startDate = 86400;
    options.endDate = 4000000000.0;
    VehicleSettings vehicle;
    vehicle.intervalDistance[OilChangeReminder] = 3000;
    vehicle.lastMileage[OilChangeReminder] = 10000.75;
    QVERIFY(options.save(vehicle, 20000.9));

    QStringList order = { u"LastMileage"_s, u"Name"_s, u"R5"_s, u"R6"_s, u"Path"_s };
    for (int i = 1; i <= 10; ++i)
        order << u"Reminder%1"_s.arg(i);
    order << u"StartDate"_s << u"EndDate"_s;
    QCOMPARE(store.writeOrder(optionsKey), order);

    // Every value as stored, its type included: DWORDs for the numbers, text for the name and path.
    QStringList stored;
    for (const QString &name : order) {
        const QVariant value = store.value(optionsKey, name);
        stored << QString::fromLatin1(value.typeName()) + u':' + value.toString();
    }
    QStringList expected = TestFiles::lines(u"uint:20000|QString:Van|uint:2|uint:1|"
                                            u"QString:\\Program Files\\Tarvane\\|uint:13000"_s);
    for (int i = 2; i <= 10; ++i)
        expected << u"uint:0"_s;
    QCOMPARE(stored, expected << u"uint:86400"_s << u"uint:4000000000"_s);
}

void TestOptions::saveFailure()
{
    MemorySettingsStore store;
    store.setFailWrites(true);
    RecordingReporter reporter;
    FixedClock clock(now);
    Options options(store, reporter, clock);
    QVERIFY(!options.save(VehicleSettings(), 100));
    QCOMPARE(reporter.messages(),
             (QList<RecordingReporter::Message> {
                 { Reporter::Kind::Plain, u"Unable to update REGKEY_OPTIONS"_s, {} } }));
    QVERIFY(!store.keyExists(optionsKey));
    QCOMPARE(store.writeOrder(optionsKey), QStringList());
}

void TestOptions::reminderValue_data()
{
    QTest::addColumn<double>("interval");
    QTest::addColumn<double>("lastDone");
    QTest::addColumn<double>("odometer");
    QTest::addColumn<uint>("expected");

    QTest::newRow("overdue") << 3000.0 << 10000.0 << 14000.0 << 13000u;
    QTest::newRow("exactly due") << 3000.0 << 10000.0 << 13000.0 << 0u;
    QTest::newRow("not yet due") << 3000.0 << 10000.0 << 12999.0 << 0u;
    QTest::newRow("fraction cut") << 3000.9 << 10000.5 << 14000.0 << 13001u;
    QTest::newRow("interval 0") << 0.0 << 10000.0 << 99999.0 << 0u;
    QTest::newRow("negative interval") << -5.0 << 10000.0 << 99999.0 << 0u;
    QTest::newRow("beyond a DWORD") << 1.0 << 4294967300.0 << 5e9 << 4294967295u;
}

void TestOptions::reminderValue()
{
    QFETCH(double, interval);
    QFETCH(double, lastDone);
    QFETCH(double, odometer);
    QFETCH(uint, expected);
    QCOMPARE(Options::reminderValue(interval, lastDone, odometer), expected);
}

void TestOptions::remindersFollowProfileKeys()
{
    // Each service gets its own interval and last reading, all overdue at 100000.
    IniFile ini;
    const QStringList keys = TestFiles::lines(
        u"OilDistance|CoolDistance|TransDistance|TuneDistance|TireDistance|C1Miles|C2Miles|C3Miles|C4Miles|C5Miles"_s);
    QStringList lines = { u"[Van]"_s };
    for (int i = 0; i < 10; ++i)
        lines << keys[i] + u"=%1"_s.arg(i < 9 ? (i + 1) * 1000 : 0)
              << u"LastR%1Mileage=%2"_s.arg(i).arg((i + 1) * 10);
    ini.parse(TestFiles::written(lines));
    VehicleSettings vehicle;
    QVERIFY(VehicleProfile::load(ini, u"Van"_s, vehicle));

    MemorySettingsStore store;
    NullReporter reporter;
    FixedClock clock(now);
    Options options(store, reporter, clock);
    QVERIFY(options.save(vehicle, 100000));
    const QList<uint> expected = { 1010, 2020, 3030, 4040, 5050, 6060, 7070, 8080, 9090, 0 };
    QList<uint> actual;
    for (int i = 1; i <= 10; ++i)
        actual << store.value(optionsKey, u"Reminder%1"_s.arg(i)).toUInt();
    QCOMPARE(actual, expected);
}

void TestOptions::toDword_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<uint>("expected");

    QTest::newRow("fraction cut") << 12.99 << 12u;
    QTest::newRow("largest") << 4294967295.0 << 4294967295u;
    QTest::newRow("one beyond") << 4294967296.0 << 4294967295u;
    QTest::newRow("negative") << -5.0 << 0u;
    QTest::newRow("not a number") << qQNaN() << 0u;
}

void TestOptions::toDword()
{
    QFETCH(double, value);
    QFETCH(uint, expected);
    QCOMPARE(Options::toDword(value), expected);
}

void TestOptions::roundTripThroughSandboxStore()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const DevicePaths paths(dir.path());
    FixedClock clock(now);
    NullReporter reporter;
    {
        QSettingsStore store(paths, u"Quellar"_s, u"Velcora"_s);
        Options options(store, reporter, clock);
        options.name = u"Blue Van"_s;
        options.path = u"\\Storage Card\\Tarvane\\"_s;
        options.r6 = 4;
        options.startDate = 3000000000.0;
        options.endDate = 4000000000.0;
        QVERIFY(options.save(VehicleSettings(), 4294967296.0));
    }
    QSettingsStore store(paths, u"Quellar"_s, u"Velcora"_s);
    Options options(store, reporter, clock);
    QVERIFY(options.load());
    QCOMPARE(options.name, u"Blue Van"_s);
    QCOMPARE(options.path, u"\\Storage Card\\Tarvane\\"_s);
    QCOMPARE(options.r5, 0.0);
    QCOMPARE(options.r6, 4.0);
    QCOMPARE(options.startDate, 3000000000.0);
    QCOMPARE(options.endDate, 4000000000.0);
    quint32 lastMileage = 0;
    QVERIFY(store.queryDword(optionsKey, u"LastMileage"_s, &lastMileage));
    QCOMPARE(lastMileage, 4294967295u);
}

QTEST_GUILESS_MAIN(TestOptions)
#include "tst_options.moc"
