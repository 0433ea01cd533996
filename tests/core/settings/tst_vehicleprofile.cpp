#include <QTest>

#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/VehicleProfile.h"
#include "settingsfiles_helper.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

IniFile *iniFrom(const QString &text)
{
    auto *ini = new IniFile;
    ini->parse(SettingsFiles::utf16(text));
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
    v.intervalDays[OilChangeReminder] = 90;
    v.intervalDistance[OilChangeReminder] = 3000;
    v.intervalDays[CoolantFlushReminder] = 730;
    v.intervalDistance[CoolantFlushReminder] = 30000;
    v.intervalDays[TuneUpReminder] = 365;
    v.intervalDistance[TuneUpReminder] = 15000.4;
    v.intervalDays[TireRotationReminder] = 180;
    v.intervalDistance[TireRotationReminder] = 7499.7;
    v.customNames[0] = u"Brakes"_s;
    v.intervalDays[FirstCustomReminder] = 60;
    v.intervalDistance[FirstCustomReminder] = 12000;
    v.costPerMile = 0.55;
    v.distanceUnit = 1;
    v.economyUnit = 4;
    v.liquidUnit = 2;
    return v;
}

const QString blueVanKeys = u"Directory=\\My Documents\\Tarvane Files\\\r\n"_s;
const QString blueVanRest = u"VIN=1FTRX\r\n"
                            "Make=Ford\r\n"
                            "Model=Ranger\r\n"
                            "Year=1999\r\n"
                            "Plate=ABC 123\r\n"
                            "Start Odometer=12346  \r\n"
                            "CoolDays=730 \r\n"
                            "CoolDistance=30000  \r\n"
                            "OilDays=90  \r\n"
                            "TuneDistance=15000  \r\n"
                            "TuneDays=365 \r\n"
                            "OilDistance=3000   \r\n"
                            "TransDays=    \r\n"
                            "TransDistance=0      \r\n"
                            "TireDays=180 \r\n"
                            "TireDistance=7500   \r\n"
                            "Custom1=Brakes\r\n"
                            "Custom2=\r\n"
                            "Custom3=\r\n"
                            "Custom4=\r\n"
                            "Custom5=\r\n"
                            "C1Days=60  \r\n"
                            "C2Days=    \r\n"
                            "C3Days=    \r\n"
                            "C4Days=    \r\n"
                            "C5Days=    \r\n"
                            "C1Miles=12000  \r\n"
                            "C2Miles=0      \r\n"
                            "C3Miles=0      \r\n"
                            "C4Miles=0      \r\n"
                            "C5Miles=0      \r\n"
                            "CostPerMile=0.550\r\n"
                            "Distance=Kilometer\r\n"
                            "Econo=KPL\r\n"
                            "Liquid=Litre\r\n"_s;

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
    QTest::addColumn<QString>("expected");

    QTest::newRow("new vehicle entered in slot 0") << 0 << QString()
                                                   << u"\r\n[Blue Van]\r\n"_s + blueVanKeys + blueVanRest
            + u"\r\n[VehicleList]\r\nVehicle0=Blue Van\r\n"_s
            + u"\r\n[TripSettings]\r\nDetailed=Yes\r\nCompanyName=No\r\nHomeAddress=No\r\n"
              "UseContacts=No\r\nSortListBy=Purpose\r\n"_s;
    QTest::newRow("no list slot, own directory")
        << -1 << u"\\Storage Card\\Van\\"_s
        << u"\r\n[Blue Van]\r\nDirectory=\\Storage Card\\Van\\\r\n"_s + blueVanRest
            + u"\r\n[TripSettings]\r\nDetailed=Yes\r\nCompanyName=No\r\nHomeAddress=No\r\n"
              "UseContacts=No\r\nSortListBy=Purpose\r\n"_s;
}

void TestVehicleProfile::saveNewVehicle()
{
    QFETCH(int, slot);
    QFETCH(QString, directory);
    QFETCH(QString, expected);

    VehicleSettings v = blueVan();
    v.directory = directory;
    TripSettings trip;
    trip.detailed = true;
    trip.sortListBy = 1;
    RecordingReporter reporter;
    IniFile ini;
    QVERIFY(VehicleProfile::save(ini, v, trip, slot, reporter));
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE(ini.serialize(), SettingsFiles::utf16(expected));
}

void TestVehicleProfile::saveWithEmptyVin()
{
    const QString text = u"\r\n[Van]\r\nVIN=\r\nMake=Ford\r\n"_s;
    std::unique_ptr<IniFile> ini(iniFrom(text));
    VehicleSettings v = blueVan();
    v.name = u"Van"_s;
    v.vin.clear();
    RecordingReporter reporter;
    QVERIFY(!VehicleProfile::save(*ini, v, TripSettings(), 0, reporter));
    QCOMPARE(reporter.texts(), QStringList { u"VIN is empty Skipping save"_s });
    QCOMPARE(ini->serialize(), SettingsFiles::utf16(text));
    QVERIFY(!ini->isModified());
}

void TestVehicleProfile::unitWords_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("word");

    QTest::newRow("miles") << u"Distance"_s << 0 << u"Mile"_s;
    QTest::newRow("kilometres") << u"Distance"_s << 1 << u"Kilometer"_s;
    QTest::newRow("MPG") << u"Econo"_s << 0 << u"MPG"_s;
    QTest::newRow("MPL") << u"Econo"_s << 1 << u"MPL"_s;
    QTest::newRow("L/100km") << u"Econo"_s << 2 << u"L/100km"_s;
    QTest::newRow("MPiG") << u"Econo"_s << 3 << u"MPiG"_s;
    QTest::newRow("KPL") << u"Econo"_s << 4 << u"KPL"_s;
    QTest::newRow("US gallons") << u"Liquid"_s << 0 << u"US"_s;
    QTest::newRow("imperial gallons") << u"Liquid"_s << 1 << u"Imp"_s;
    QTest::newRow("litres") << u"Liquid"_s << 2 << u"Litre"_s;
}

void TestVehicleProfile::unitWords()
{
    QFETCH(QString, key);
    QFETCH(int, code);
    QFETCH(QString, word);

    VehicleSettings v;
    v.name = u"V"_s;
    v.vin = u"X"_s;
    qint32 VehicleSettings::*field = key == u"Distance"_s ? &VehicleSettings::distanceUnit
        : key == u"Econo"_s                               ? &VehicleSettings::economyUnit
                                                          : &VehicleSettings::liquidUnit;
    v.*field = code;
    IniFile ini;
    NullReporter reporter;
    QVERIFY(VehicleProfile::save(ini, v, TripSettings(), -1, reporter));
    QString written;
    QVERIFY(ini.GetString(u"V"_s, key, written));
    QCOMPARE(written, word);

    // And back, with the trailing blanks a hand edit may leave.
    ini.SetString(u"V"_s, key, word + u"  "_s);
    VehicleSettings loaded;
    loaded.*field = 99;
    VehicleProfile::load(ini, u"V"_s, loaded);
    QCOMPARE(loaded.*field, code);
}

void TestVehicleProfile::saveLastServices()
{
    VehicleSettings v;
    v.name = u"Van"_s;
    v.setupDate = 1000000000;
    v.lastMileage[OilChangeReminder] = 3000.4;
    v.lastDate[OilChangeReminder] = 86400;
    v.lastMileage[TireRotationReminder] = 123456.5001;
    v.lastDate[TireRotationReminder] = 1234567890;
    v.lastMileage[9] = 7;
    v.lastDate[9] = 4294967295u;
    IniFile ini;
    VehicleProfile::saveLastServices(ini, v);

    QString expected
        = u"\r\n[Van]\r\nDirectory=\\My Documents\\Tarvane Files\\\r\nSetupDate=1000000000\r\n"_s;
    const QStringList mileage = { u"3000   "_s, u"0      "_s, u"0      "_s, u"0      "_s, u"123457 "_s,
                                  u"0      "_s, u"0      "_s, u"0      "_s, u"0      "_s, u"7      "_s };
    const QStringList dates
        = { u"0000086400"_s, u"0000000000"_s, u"0000000000"_s, u"0000000000"_s, u"1234567890"_s,
            u"0000000000"_s, u"0000000000"_s, u"0000000000"_s, u"0000000000"_s, u"-0000000001"_s };
    for (int r = 0; r < 10; ++r) {
        expected += u"LastR%1Mileage="_s.arg(r) + mileage[r] + u"\r\n"_s;
        expected += u"LastR%1Date="_s.arg(r) + dates[r] + u"\r\n"_s;
    }
    expected += u"\r\n[Versions]\r\nPPC=Version 2.2.2 Build 76\r\n"_s;
    QCOMPARE(ini.serialize(), SettingsFiles::utf16(expected));

    // The dates come back as the same 32-bit values, the largest included.
    VehicleSettings back;
    VehicleProfile::load(ini, u"Van"_s, back);
    QCOMPARE(back.setupDate, 1000000000u);
    QCOMPARE(back.lastDate[9], 4294967295u);
    QCOMPARE(back.lastDate[OilChangeReminder], 86400u);
    QCOMPARE(back.lastMileage[TireRotationReminder], 123457.0);
}

void TestVehicleProfile::loadNumbers_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<double>("startOdometer");
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("oilDays");
    QTest::addColumn<double>("costPerMile");

    // Each row sets one key; the others stay missing and keep the values 0.
    QTest::newRow("padded odometer") << u"Start Odometer=12345  "_s << 12345.0 << 0 << 0 << 0.0;
    QTest::newRow("odometer with junk") << u"Start Odometer=12.5km"_s << 12.5 << 0 << 0 << 0.0;
    QTest::newRow("odometer not a number") << u"Start Odometer=abc"_s << 0.0 << 0 << 0 << 0.0;
    QTest::newRow("odometer exponent") << u"Start Odometer=1e3"_s << 1000.0 << 0 << 0 << 0.0;
    QTest::newRow("year junk") << u"Year=nineteen"_s << 0.0 << 0 << 0 << 0.0;
    QTest::newRow("year fraction cut") << u"Year=2001.9"_s << 0.0 << 2001 << 0 << 0.0;
    QTest::newRow("negative days") << u"OilDays=-3x"_s << 0.0 << 0 << -3 << 0.0;
    QTest::newRow("days too large") << u"OilDays=99999999999"_s << 0.0 << 0 << 2147483647 << 0.0;
    QTest::newRow("cost leading point") << u"CostPerMile=.5"_s << 0.0 << 0 << 0 << 0.5;
}

void TestVehicleProfile::loadNumbers()
{
    QFETCH(QString, line);
    QFETCH(double, startOdometer);
    QFETCH(int, year);
    QFETCH(int, oilDays);
    QFETCH(double, costPerMile);

    std::unique_ptr<IniFile> ini(iniFrom(u"[Van]\r\n"_s + line + u"\r\n"_s));
    VehicleSettings v;
    QVERIFY(VehicleProfile::load(*ini, u"Van"_s, v));
    QCOMPARE(v.startOdometer, startOdometer);
    QCOMPARE(v.year, year);
    QCOMPARE(v.intervalDays[OilChangeReminder], oilDays);
    QCOMPARE(v.costPerMile, costPerMile);
}

void TestVehicleProfile::loadMissingKeysKeepValues()
{
    std::unique_ptr<IniFile> ini(iniFrom(u"[Van]\r\nMake=Ford\r\nTuneDays=30\r\nLastR3Mileage=500\r\n"_s));
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
    QCOMPARE(v.model, u"Ranger"_s);
    QCOMPARE(v.intervalDistance[TuneUpReminder], 15000.4);
    QCOMPARE(v.customNames[0], u"Brakes"_s);
    QCOMPARE(v.economyUnit, 4);
    QCOMPARE(v.liquidUnit, 2);

    // A reset first gives a hand-written section the plain defaults.
    VehicleProfile::resetToDefaults(v);
    QCOMPARE(v.name, u"Van"_s);
    QVERIFY(VehicleProfile::load(*ini, u"Van"_s, v));
    QCOMPARE(v.directory, u"\\My Documents\\Tarvane Files\\"_s);
    QCOMPARE(v.vin, QString());
    QCOMPARE(v.intervalDistance[TuneUpReminder], 0.0);
    QCOMPARE(v.customNames[0], QString());
    QCOMPARE(v.distanceUnit, 0);
    QCOMPARE(v.economyUnit, 0);
    QCOMPARE(v.liquidUnit, 0);

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
    QCOMPARE(v.intervalDistance[OilChangeReminder], 3500.0);
    QCOMPARE(v.intervalDays[OilChangeReminder], 0);
    QCOMPARE(v.intervalDistance[TireRotationReminder], 0.0);
    QCOMPARE(v.customNames[1], u"Wax "_s);
    QCOMPARE(v.intervalDistance[FirstCustomReminder + 1], 2000.0);
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
        << u"Vehicle0=A\r\nVehicle1=\r\nVehicle2=B\r\n"_s << u"B"_s << QStringList { u"A"_s, u"B"_s } << 1;
    QTest::newRow("missing key stops")
        << u"Vehicle0=A\r\nVehicle2=B\r\n"_s << u"B"_s << QStringList { u"A"_s } << -1;
    QTest::newRow("exact case only") << u"Vehicle0=Van\r\nVehicle1=van\r\n"_s << u"van"_s
                                     << QStringList { u"Van"_s, u"van"_s } << 1;
    QTest::newRow("no match") << u"Vehicle0=Van\r\n"_s << u"Van "_s << QStringList { u"Van"_s } << -1;
    QTest::newRow("keys out of order")
        << u"Vehicle1=B\r\nVehicle0=A\r\n"_s << u"A"_s << QStringList { u"A"_s, u"B"_s } << 0;
    QTest::newRow("no list") << QString() << u"Select Vehicle"_s << QStringList() << -1;
}

void TestVehicleProfile::vehicleList()
{
    QFETCH(QString, section);
    QFETCH(QString, current);
    QFETCH(QStringList, names);
    QFETCH(int, index);

    std::unique_ptr<IniFile> ini(iniFrom(
        section.isEmpty() ? QString() : u"[VehicleList]\r\n"_s + section + u"[Other]\r\nVehicle9=Z\r\n"_s));
    const VehicleProfile::VehicleList list = VehicleProfile::readVehicleList(*ini, current);
    QCOMPARE(list.names, names);
    QCOMPARE(list.currentIndex, index);
}

void TestVehicleProfile::tripSettings_data()
{
    QTest::addColumn<QString>("detailed");
    QTest::addColumn<QString>("sortListBy");
    QTest::addColumn<bool>("isDetailed");
    QTest::addColumn<int>("sort");

    // The values start out as detailed = true and sort = 1.
    QTest::newRow("plain") << u"Yes"_s << u"Date"_s << true << 0;
    QTest::newRow("no") << u"No"_s << u"Contact"_s << false << 2;
    QTest::newRow("lower case is not yes") << u"yes"_s << u"Purpose"_s << false << 1;
    QTest::newRow("contained") << u"  Yes please"_s << u"By Contact name"_s << true << 2;
    QTest::newRow("unknown order keeps") << u"YES"_s << u"Mileage"_s << false << 1;
    QTest::newRow("missing keys keep") << QString() << QString() << true << 1;
}

void TestVehicleProfile::tripSettings()
{
    QFETCH(QString, detailed);
    QFETCH(QString, sortListBy);
    QFETCH(bool, isDetailed);
    QFETCH(int, sort);

    QString text = u"[TripSettings]\r\nUseContacts=Yes\r\n"_s;
    if (!detailed.isNull())
        text += u"Detailed="_s + detailed + u"\r\n"_s;
    if (!sortListBy.isNull())
        text += u"SortListBy="_s + sortListBy + u"\r\n"_s;
    std::unique_ptr<IniFile> ini(iniFrom(text));
    TripSettings trip;
    trip.detailed = true;
    trip.sortListBy = 1;
    VehicleProfile::loadTripSettings(*ini, trip);
    QCOMPARE(trip.detailed, isDetailed);
    QCOMPARE(trip.sortListBy, sort);
    QCOMPARE(trip.useContacts, true);
    QCOMPARE(trip.companyName, false);
}

QTEST_GUILESS_MAIN(TestVehicleProfile)
#include "tst_vehicleprofile.moc"
