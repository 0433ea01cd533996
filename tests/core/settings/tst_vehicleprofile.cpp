#include <QTest>

#include "core/files_helper.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/VehicleProfile.h"

#include <memory>

using namespace Qt::StringLiterals;
using TestFiles::lines;
using TestFiles::written;

namespace {

std::unique_ptr<IniFile> iniFrom(const QString &text)
{
    auto ini = std::make_unique<IniFile>();
    ini->parse(TestFiles::utf16(text));
    return ini;
}

// A vehicle with a value in every field, rounding and empty-day cases included.
VehicleSettings blueVan()
{
    VehicleSettings v;
    v.name = u"Blue Van"_s;
    v.vin = u"1FTRX"_s;
    v.make = u"Ford"_s;
    v.model = u"Ranger"_s;
    v.year = 1999;
    v.plate = u"ABC 123"_s;
    v.startOdometer = 12345.6;
    v.intervalDays = { 90, 730, 0, 365, 180, 60 };
    v.intervalDistance = { 3000, 30000, 0, 15000.4, 7499.7, 12000 };
    v.customNames[0] = u"Brakes"_s;
    v.costPerMile = 0.55;
    v.distanceUnit = 1;
    v.economyUnit = 4;
    v.liquidUnit = 2;
    return v;
}

// Its keys after Directory: distances "%-7.0f", days "%-4.0d" (zero prints nothing), cost "%-3.3f".
const QStringList blueVanKeys = lines(
    u"VIN=1FTRX|Make=Ford|Model=Ranger|Year=1999|Plate=ABC 123|Start Odometer=12346  |CoolDays=730 |"
    u"CoolDistance=30000  |OilDays=90  |TuneDistance=15000  |TuneDays=365 |OilDistance=3000   |"
    u"TransDays=    |TransDistance=0      |TireDays=180 |TireDistance=7500   |Custom1=Brakes|Custom2=|"
    u"Custom3=|Custom4=|Custom5=|C1Days=60  |C2Days=    |C3Days=    |C4Days=    |C5Days=    |"
    u"C1Miles=12000  |C2Miles=0      |C3Miles=0      |C4Miles=0      |C5Miles=0      |"
    u"CostPerMile=0.550|Distance=Kilometer|Econo=KPL|Liquid=Litre"_s);
const QStringList tripKeys
    = lines(u"[TripSettings]|Detailed=Yes|CompanyName=No|HomeAddress=No|UseContacts=No|SortListBy=Purpose"_s);

} // namespace

class TestVehicleProfile : public QObject
{
    Q_OBJECT

private slots:
    void saveNewVehicle_data();
    void saveNewVehicle();
    void saveWithEmptyVin();
    void unitWords_data();
    void unitWords();
    void saveLastServices();
    void loadNumbers_data();
    void loadNumbers();
    void loadMissingKeysKeepValues();
    void loadHandWrittenFile();
    void vehicleList_data();
    void vehicleList();
    void tripSettings_data();
    void tripSettings();
};

void TestVehicleProfile::saveNewVehicle_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("new vehicle entered in slot 0")
        << 0 << QString()
        << QStringList { u"[Blue Van]"_s, u"Directory=\\My Documents\\Tarvane Files\\"_s } + blueVanKeys
            + lines(u"[VehicleList]|Vehicle0=Blue Van"_s) + tripKeys;
    QTest::newRow("no list slot, own directory")
        << -1 << u"\\Storage Card\\Van\\"_s
        << QStringList { u"[Blue Van]"_s, u"Directory=\\Storage Card\\Van\\"_s } + blueVanKeys + tripKeys;
}

void TestVehicleProfile::saveNewVehicle()
{
    QFETCH(int, slot);
    QFETCH(QString, directory);
    QFETCH(QStringList, expected);

    VehicleSettings v = blueVan();
    v.directory = directory;
    TripSettings trip;
    trip.detailed = true;
    trip.sortListBy = 1;
    RecordingReporter reporter;
    IniFile ini;
    QVERIFY(VehicleProfile::save(ini, v, trip, slot, reporter));
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE(ini.serialize(), written(expected));
}

void TestVehicleProfile::saveWithEmptyVin()
{
    const QString text = u"\r\n[Van]\r\nVIN=\r\nMake=Ford\r\n"_s;
    auto ini = iniFrom(text);
    VehicleSettings v = blueVan();
    v.name = u"Van"_s;
    v.vin.clear();
    RecordingReporter reporter;
    QVERIFY(!VehicleProfile::save(*ini, v, TripSettings(), 0, reporter));
    QCOMPARE(reporter.texts(), QStringList { u"VIN is empty Skipping save"_s });
    QCOMPARE(ini->serialize(), TestFiles::utf16(text));
    QVERIFY(!ini->isModified());
}

void TestVehicleProfile::unitWords_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("words"); // by code

    QTest::newRow("distance") << u"Distance"_s << lines(u"Mile|Kilometer"_s);
    QTest::newRow("economy") << u"Econo"_s << lines(u"MPG|MPL|L/100km|MPiG|KPL"_s);
    QTest::newRow("liquid") << u"Liquid"_s << lines(u"US|Imp|Litre"_s);
}

void TestVehicleProfile::unitWords()
{
    QFETCH(QString, key);
    QFETCH(QStringList, words);

    qint32 VehicleSettings::*field = key == u"Distance"_s ? &VehicleSettings::distanceUnit
        : key == u"Econo"_s                               ? &VehicleSettings::economyUnit
                                                          : &VehicleSettings::liquidUnit;
    for (int code = 0; code < words.size(); ++code) {
        VehicleSettings v;
        v.name = u"V"_s;
        v.vin = u"X"_s;
        v.*field = code;
        IniFile ini;
        NullReporter reporter;
        QVERIFY(VehicleProfile::save(ini, v, TripSettings(), -1, reporter));
        QString word;
        QVERIFY(ini.GetString(u"V"_s, key, word));
        QCOMPARE(word, words[code]);

        // And back, with the trailing blanks a hand edit may leave.
        ini.SetString(u"V"_s, key, word + u"  "_s);
        VehicleSettings loaded;
        loaded.*field = 99;
        VehicleProfile::load(ini, u"V"_s, loaded);
        QCOMPARE(loaded.*field, code);
    }
}

void TestVehicleProfile::saveLastServices()
{
    VehicleSettings v;
    v.name = u"Van"_s;
    v.setupDate = 1000000000;
    v.lastMileage = { 3000.4, 0, 0, 0, 123456.5001, 0, 0, 0, 0, 7 };
    v.lastDate = { 86400, 0, 0, 0, 1234567890, 0, 0, 0, 0, 4294967295u };
    IniFile ini;
    VehicleProfile::saveLastServices(ini, v);

    QStringList mileage(10, u"0      "_s), dates(10, u"0000000000"_s);
    mileage[0] = u"3000   "_s, mileage[4] = u"123457 "_s, mileage[9] = u"7      "_s;
    dates[0] = u"0000086400"_s, dates[4] = u"1234567890"_s, dates[9] = u"-0000000001"_s;
    QStringList expected = lines(u"[Van]|Directory=\\My Documents\\Tarvane Files\\|SetupDate=1000000000"_s);
    for (int r = 0; r < 10; ++r)
        expected << u"LastR%1Mileage="_s.arg(r) + mileage[r] << u"LastR%1Date="_s.arg(r) + dates[r];
    QCOMPARE(ini.serialize(), written(expected + lines(u"[Versions]|PPC=Version 2.2.2 Build 76"_s)));

    // The dates come back as the same 32-bit values, the largest included.
    VehicleSettings back;
    VehicleProfile::load(ini, u"Van"_s, back);
    QCOMPARE(back.setupDate, 1000000000u);
    QCOMPARE(back.lastDate, v.lastDate);
    QCOMPARE(back.lastMileage[TireRotationReminder], 123457.0);
}

void TestVehicleProfile::loadNumbers_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<double>>("values"); // start odometer, year, oil days, cost per mile

    // Each row sets one key; the others stay missing and keep the values 0.
    QTest::newRow("padded odometer") << u"Start Odometer=12345  "_s << QList<double> { 12345, 0, 0, 0 };
    QTest::newRow("odometer with junk") << u"Start Odometer=12.5km"_s << QList<double> { 12.5, 0, 0, 0 };
    QTest::newRow("odometer not a number") << u"Start Odometer=abc"_s << QList<double> { 0, 0, 0, 0 };
    QTest::newRow("odometer exponent") << u"Start Odometer=1e3"_s << QList<double> { 1000, 0, 0, 0 };
    QTest::newRow("year junk") << u"Year=nineteen"_s << QList<double> { 0, 0, 0, 0 };
    QTest::newRow("year fraction cut") << u"Year=2001.9"_s << QList<double> { 0, 2001, 0, 0 };
    QTest::newRow("negative days") << u"OilDays=-3x"_s << QList<double> { 0, 0, -3, 0 };
    QTest::newRow("days too large") << u"OilDays=99999999999"_s << QList<double> { 0, 0, 2147483647, 0 };
    QTest::newRow("cost leading point") << u"CostPerMile=.5"_s << QList<double> { 0, 0, 0, 0.5 };
}

void TestVehicleProfile::loadNumbers()
{
    QFETCH(QString, line);
    QFETCH(QList<double>, values);

    VehicleSettings v;
    QVERIFY(VehicleProfile::load(*iniFrom(u"[Van]\r\n"_s + line + u"\r\n"_s), u"Van"_s, v));
    QCOMPARE((QList<double> { v.startOdometer, double(v.year), double(v.intervalDays[OilChangeReminder]),
                              v.costPerMile }),
             values);
}

void TestVehicleProfile::loadMissingKeysKeepValues()
{
    auto ini = iniFrom(u"[Van]\r\nMake=Ford\r\nTuneDays=30\r\nLastR3Mileage=500\r\n"_s);
    VehicleSettings v = blueVan();
    v.directory = u"\\Old\\"_s;
    QVERIFY(VehicleProfile::load(*ini, u"Van"_s, v));
    QCOMPARE(v.name, u"Van"_s);
    QCOMPARE(v.make, u"Ford"_s);
    QCOMPARE(v.intervalDays[TuneUpReminder], 30);
    QCOMPARE(v.lastMileage[TuneUpReminder], 500.0);
    // Everything else is as it was.
    QCOMPARE(v.directory, u"\\Old\\"_s);
    QCOMPARE(v.vin, u"1FTRX"_s);
    QCOMPARE(v.intervalDistance, blueVan().intervalDistance);
    QCOMPARE(v.customNames[0], u"Brakes"_s);
    QCOMPARE(v.economyUnit, 4);

    // A reset first gives a hand-written section the plain defaults.
    VehicleProfile::resetToDefaults(v);
    QCOMPARE(v.name, u"Van"_s);
    QVERIFY(VehicleProfile::load(*ini, u"Van"_s, v));
    QCOMPARE(v.directory, u"\\My Documents\\Tarvane Files\\"_s);
    QCOMPARE(v.vin, QString());
    QCOMPARE(v.intervalDistance, VehicleSettings().intervalDistance);
    QCOMPARE(v.customNames[0], QString());
    QCOMPARE((QList<int> { v.distanceUnit, v.economyUnit, v.liquidUnit }), (QList<int> { 0, 0, 0 }));

    // No section at all: reported, nothing but the name and folder changed.
    VehicleSettings other = blueVan();
    QVERIFY(!VehicleProfile::load(*ini, u"Truck"_s, other));
    QCOMPARE(other.vin, u"1FTRX"_s);
    QCOMPARE(other.name, u"Truck"_s);
}

void TestVehicleProfile::loadHandWrittenFile()
{
    IniFile ini;
    QVERIFY(ini.Load(QStringLiteral(TARVANE_TEST_DATA "/settings/handwritten.ini")));
    VehicleSettings v;
    QVERIFY(VehicleProfile::load(ini, u"Old Truck"_s, v));
    QCOMPARE(v.directory, u"\\My Documents\\Tarvane Files\\"_s);
    QCOMPARE(v.vin, u"OT-77"_s);
    QCOMPARE(v.year, 1987);
    QCOMPARE(v.startOdometer, 150000.0);
    QCOMPARE(v.intervalDistance, (std::array<double, ReminderCount> { 3500, 0, 0, 0, 0, 0, 2000 }));
    QCOMPARE(v.intervalDays[OilChangeReminder], 0);
    QCOMPARE(v.customNames[1], u"Wax "_s);
    QCOMPARE(v.costPerMile, 0.31);
    QCOMPARE(v.distanceUnit, 1);
    QCOMPARE(v.economyUnit, 0); // "mpg" is not a word the file uses
    QCOMPARE(v.liquidUnit, 1);
    QCOMPARE(v.lastMileage[TransmissionReminder], 140000.0);
    QCOMPARE(v.lastDate[TransmissionReminder], 946684800u);

    const VehicleProfile::VehicleList list = VehicleProfile::readVehicleList(ini, u"Old Truck"_s);
    QCOMPARE(list.names, (QStringList { u"Old Truck"_s, u"Scooter"_s }));
    QCOMPARE(list.currentIndex, 0);
}

void TestVehicleProfile::vehicleList_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("index");

    QTest::newRow("empty value skipped")
        << u"Vehicle0=A\r\nVehicle1=\r\nVehicle2=B\r\n"_s << u"B"_s << lines(u"A|B"_s) << 1;
    QTest::newRow("missing key stops") << u"Vehicle0=A\r\nVehicle2=B\r\n"_s << u"B"_s << lines(u"A"_s) << -1;
    QTest::newRow("exact case only") << u"Vehicle0=Van\r\nVehicle1=van\r\n"_s << u"van"_s
                                     << lines(u"Van|van"_s) << 1;
    QTest::newRow("no match") << u"Vehicle0=Van\r\n"_s << u"Van "_s << lines(u"Van"_s) << -1;
    QTest::newRow("keys out of order") << u"Vehicle1=B\r\nVehicle0=A\r\n"_s << u"A"_s << lines(u"A|B"_s) << 0;
    QTest::newRow("no list") << QString() << u"Select Vehicle"_s << QStringList() << -1;
}

void TestVehicleProfile::vehicleList()
{
    QFETCH(QString, section);
    QFETCH(QString, current);
    QFETCH(QStringList, names);
    QFETCH(int, index);

    auto ini = iniFrom(section.isEmpty() ? QString()
                                         : u"[VehicleList]\r\n"_s + section + u"[Other]\r\nVehicle9=Z\r\n"_s);
    const VehicleProfile::VehicleList list = VehicleProfile::readVehicleList(*ini, current);
    QCOMPARE(list.names, names);
    QCOMPARE(list.currentIndex, index);
}

void TestVehicleProfile::tripSettings_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<bool>("detailed");
    QTest::addColumn<int>("sort");

    // The values start out as detailed = true and sort = 1.
    QTest::newRow("plain") << u"Detailed=Yes\r\nSortListBy=Date"_s << true << 0;
    QTest::newRow("no") << u"Detailed=No\r\nSortListBy=Contact"_s << false << 2;
    QTest::newRow("lower case is not yes") << u"Detailed=yes\r\nSortListBy=Purpose"_s << false << 1;
    QTest::newRow("contained") << u"Detailed=  Yes please\r\nSortListBy=By Contact name"_s << true << 2;
    QTest::newRow("unknown order keeps") << u"Detailed=YES\r\nSortListBy=Mileage"_s << false << 1;
    QTest::newRow("missing keys keep") << QString() << true << 1;
}

void TestVehicleProfile::tripSettings()
{
    QFETCH(QString, keys);
    QFETCH(bool, detailed);
    QFETCH(int, sort);

    TripSettings trip;
    trip.detailed = true;
    trip.sortListBy = 1;
    VehicleProfile::loadTripSettings(*iniFrom(u"[TripSettings]\r\nUseContacts=Yes\r\n"_s + keys), trip);
    QCOMPARE(trip.detailed, detailed);
    QCOMPARE(trip.sortListBy, sort);
    QCOMPARE(trip.useContacts, true);
    QCOMPARE(trip.companyName, false);
}

QTEST_GUILESS_MAIN(TestVehicleProfile)
#include "tst_vehicleprofile.moc"
