#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include "core/files_helper.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/VehicleProfile.h"
#include "setup/SetupForm.h"
#include "setup/VehicleNames.h"

using namespace Qt::StringLiterals;

namespace {

// A settings file as it lies on disk, from the UTF-8 text of a golden file: CR LF line ends.
QByteArray settingsBytes(const QString &text)
{
    return TestFiles::utf16(QString(text).replace(u"\n"_s, u"\r\n"_s));
}

QByteArray golden(const QString &folder)
{
    return settingsBytes(QString::fromUtf8(
        TestFiles::read(QStringLiteral(TARVANE_TEST_DATA "/setup/") + folder + u"/Velcora.ini.txt"_s)));
}

// "k=v|k=v" as the lines of a settings file ("" for none).
QString iniText(const QString &joined)
{
    return u"\n"_s + QString(joined).replace(u'|', u'\n') + u'\n';
}

} // namespace

class TestSetupForm : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void display_data();
    void display();
    void newVehicleSlot_data();
    void newVehicleSlot();
    void newVehicleWholeFile();
    void newVehicleStops_data();
    void newVehicleStops();
    void deleteVehicle_data();
    void deleteVehicle();
    void editKeepsLogAndRenamesOnRequest_data();
    void editKeepsLogAndRenamesOnRequest();
    void customPageSeedsRepairList();
    void pagesRoundTrip();
    void nameProblems_data();
    void nameProblems();

private:
    // A form on the data folder's files, opened as the program has the named vehicle open.
    std::unique_ptr<SetupForm> openForm(const QString &name, double highest = 0.0);
    QString path(const QString &file) const { return m_dir->filePath(file); }

    std::unique_ptr<QTemporaryDir> m_dir;
    RecordingReporter m_reporter;
};

void TestSetupForm::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_reporter = RecordingReporter();
    QVERIFY(TestFiles::write(path(u"Velcora.ini"_s), golden(u"before"_s)));
    QVERIFY(TestFiles::write(path(u"Lists.ini"_s), settingsBytes(u"\n[RepairList]\nLine0=Brakes\n"_s)));
}

std::unique_ptr<SetupForm> TestSetupForm::openForm(const QString &name, double highest)
{
    IniFile ini;
    ini.setSaveOnDestroy(false);
    ini.Load(path(u"Velcora.ini"_s));
    VehicleSettings vehicle;
    VehicleProfile::load(ini, name, vehicle);
    TripSettings trip;
    VehicleProfile::loadTripSettings(ini, trip);
    const SetupPaths paths { path(u"Velcora.ini"_s), path(u"Lists.ini"_s), m_dir->path() + u'/' };
    auto form = std::make_unique<SetupForm>(paths, name, vehicle, trip, highest);
    form->open();
    return form;
}

void TestSetupForm::display_data()
{
    QTest::addColumn<int>("economyUnit");
    QTest::addColumn<int>("distanceUnit");
    QTest::addColumn<QString>("economy");
    QTest::addColumn<QString>("word");

    QTest::newRow("MPG miles") << 0 << 0 << u"MPG"_s << u"mi"_s;
    QTest::newRow("MPL reads MPGi") << 1 << 1 << u"MPGi"_s << u"km"_s;
    QTest::newRow("L/100km") << 2 << 1 << u"L/100km"_s << u"km"_s;
    QTest::newRow("MPiG reads MPGi") << 3 << 0 << u"MPGi"_s << u"mi"_s;
    QTest::newRow("KPL") << 4 << 1 << u"KPL"_s << u"km"_s;
    QTest::newRow("beyond KPL") << 7 << 0 << u"KPL"_s << u"mi"_s;
}

void TestSetupForm::display()
{
    QFETCH(int, economyUnit);
    QFETCH(int, distanceUnit);
    QFETCH(QString, economy);
    QFETCH(QString, word);

    auto form = openForm(u"Van"_s, 12345.6);
    MeasurementsValues units = form->measurements();
    units.economyUnit = economyUnit;
    units.distanceUnit = distanceUnit;
    form->confirm(units);
    // "%-7.0f" odometer, "%-4.0d" year and days, "%-8.0f" oil distance.
    const SetupDisplay expected { u"Van"_s,  u"12346  "_s, u"Ford"_s,   u"Transit"_s,  u"2015"_s,
                                  u"V 1"_s,  u"VAN1"_s,    economy,     u"3000    "_s, word,
                                  u"180 "_s, u"No"_s,      u"Purpose"_s };
    QCOMPARE(form->display(), expected);
}

void TestSetupForm::newVehicleSlot_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<int>("slot");

    QTest::newRow("no list") << u"[Other]|A=1"_s << 0;
    QTest::newRow("contiguous") << u"[VehicleList]|Vehicle0=A|Vehicle1=B"_s << 2;
    QTest::newRow("gap in slot 1") << u"[VehicleList]|Vehicle0=A|Vehicle2=B"_s << 1;
    QTest::newRow("emptied slot 1") << u"[VehicleList]|Vehicle0=A|Vehicle1=|Vehicle2=B"_s << 1;
    QTest::newRow("emptied slot 0") << u"[VehicleList]|Vehicle0=|Vehicle1=A"_s << 0;
}

void TestSetupForm::newVehicleSlot()
{
    QFETCH(QString, list);
    QFETCH(int, slot);
    QVERIFY(TestFiles::write(path(u"Velcora.ini"_s), settingsBytes(iniText(list))));
    auto form = openForm(u"A"_s);
    QVERIFY(form->beginNewVehicle(m_reporter));
    QCOMPARE(form->newVehicleSlot(), slot);
}

void TestSetupForm::newVehicleWholeFile()
{
    auto form = openForm(u"Van"_s, 10500);
    QVERIFY(form->beginNewVehicle(m_reporter));
    QVERIFY(form->acceptNewName(true, u"Blue Bike"_s, m_reporter));

    // The reset keeps the Van's units, year and trip rate, and clears everything else.
    QCOMPARE(form->generalInfo(), (GeneralInfoValues { QString(), QString(), QString(), 2015, QString() }));
    QCOMPARE(form->measurements(), (MeasurementsValues { 0.0, 1, 2, 2 }));
    QCOMPARE(form->intervals(), IntervalsValues());
    QCOMPARE(form->custom(), CustomValues());
    QCOMPARE(form->trips(), (TripsValues { false, 0.4, true, false, false, 1 }));

    form->confirm(GeneralInfoValues { u"bb-9"_s, u"Trek"_s, u"FX 3"_s, 2020, u"b 1"_s });
    form->confirm(MeasurementsValues { 1500, 0, 0, 0 });
    // Rows: oil, tune-up, transmission, coolant, tires.
    form->confirm(IntervalsValues { { 3000, 0, 0, 0, 7500.4 }, { 90, 0, 0, 365, 180 } });
    form->confirm(CustomValues {
        { u"Insurance"_s, {}, {}, {}, u"Chain"_s }, { 0, 0, 0, 0, 500 }, { 365, 0, 0, 0, 30 } });
    form->confirm(TripsValues { true, 0.25, true, false, false, 1 });
    QVERIFY(form->finishNewVehicle(m_reporter));

    QCOMPARE(TestFiles::read(path(u"Velcora.ini"_s)), golden(u"new-vehicle"_s));
    QCOMPARE(form->currentName(), u"Blue Bike"_s);
    QVERIFY(form->isNewVehicle());
    QCOMPARE(form->highestOdometer(), 1500.0);
    QCOMPARE(m_reporter.texts(), QStringList());
}

void TestSetupForm::newVehicleStops_data()
{
    QTest::addColumn<bool>("created");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("vin");
    QTest::addColumn<QString>("currentName");
    QTest::addColumn<QStringList>("messages");

    QTest::newRow("cancelled") << false << u"Bike"_s << QString() << u"Van"_s
                               << QStringList { u"ERROR 202! Unable to create new vehicle record"_s };
    QTest::newRow("empty name chooses no vehicle")
        << true << QString() << QString() << QString() << QStringList();
    QTest::newRow("name taken in other case")
        << true << u"car"_s << QString() << u"Van"_s
        << QStringList { u"There is already a vehicle named \"Car\". Select a unique name."_s };
    QTest::newRow("no VIN") << true << u"Bike"_s << QString() << u"Van"_s
                            << QStringList { u"VIN is empty Skipping save"_s };
    QTest::newRow("VIN of a path") << true << u"Bike"_s << u"../X"_s << u"Van"_s
                                   << QStringList { u"A VIN can't contain \"/\"."_s };
}

void TestSetupForm::newVehicleStops()
{
    QFETCH(bool, created);
    QFETCH(QString, name);
    QFETCH(QString, vin);
    QFETCH(QString, currentName);
    QFETCH(QStringList, messages);

    auto form = openForm(u"Van"_s, 10500);
    QVERIFY(form->beginNewVehicle(m_reporter));
    if (form->acceptNewName(created, name, m_reporter)) {
        form->confirm(GeneralInfoValues { vin, u"Trek"_s, QString(), 0, QString() });
        QVERIFY(!form->finishNewVehicle(m_reporter));
        QCOMPARE(form->vehicle().make, u"Ford"_s);
        QCOMPARE(form->highestOdometer(), 10500.0);
    }
    QCOMPARE(form->currentName(), currentName);
    QCOMPARE(m_reporter.texts(), messages);
    QCOMPARE(TestFiles::read(path(u"Velcora.ini"_s)), golden(u"before"_s));
}

void TestSetupForm::deleteVehicle_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("after"); // golden folder
    QTest::addColumn<QString>("currentName");
    QTest::addColumn<QStringList>("messages");

    const QString question
        = u"DELETE THIS VEHICLE?\nARE YOU SURE?\n\nIts log \"CAR2.vcb\" stays in the data folder."_s;
    const QString cannot
        = u"Sorry, Can not delete.\nYou must have at least 1 vehicle,\nadd another vehicle before deleting this one."_s;
    QTest::newRow("slot 2 switches to slot 0") << u"Car"_s << true << int(SetupForm::DeleteResult::Deleted)
                                               << u"delete-car"_s << u"Van"_s << QStringList { question };
    QTest::newRow("answered No") << u"Car"_s << false << int(SetupForm::DeleteResult::Kept) << u"before"_s
                                 << u"Car"_s << QStringList { question };
    QTest::newRow("slot 0 with slot 1 empty") << u"Van"_s << true << int(SetupForm::DeleteResult::Refused)
                                              << u"before"_s << u"Van"_s << QStringList { cannot };
    QTest::newRow("letter case differs")
        << u"car"_s << true << int(SetupForm::DeleteResult::Refused) << u"before"_s << u"car"_s
        << QStringList { u"Sorry, Can not delete.\n\"car\" is not in the vehicle list."_s };
}

void TestSetupForm::deleteVehicle()
{
    QFETCH(QString, name);
    QFETCH(bool, answer);
    QFETCH(int, result);
    QFETCH(QString, after);
    QFETCH(QString, currentName);
    QFETCH(QStringList, messages);

    QVERIFY(TestFiles::write(path(u"CAR2.vcb"_s), "log"));
    auto form = openForm(name);
    m_reporter.setNextAnswer(answer);
    QCOMPARE(int(form->deleteVehicle(m_reporter)), result);
    QCOMPARE(TestFiles::read(path(u"Velcora.ini"_s)), golden(after));
    QCOMPARE(form->currentName(), currentName);
    QCOMPARE(m_reporter.texts(), messages);
    // The log stays on disk.
    QCOMPARE(TestFiles::read(path(u"CAR2.vcb"_s)), QByteArray("log"));
}

void TestSetupForm::editKeepsLogAndRenamesOnRequest_data()
{
    QTest::addColumn<QString>("vin");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("questions");

    QTest::newRow("same VIN") << u"VAN1"_s << true << QStringList { u"VAN1.bak"_s, u"VAN1.vcb"_s } << 0;
    QTest::newRow("renamed") << u"van 2"_s << true << QStringList { u"VAN 2.bak"_s, u"VAN 2.vcb"_s } << 1;
    QTest::newRow("declined") << u"VAN2"_s << false << QStringList { u"VAN1.bak"_s, u"VAN1.vcb"_s } << 1;
}

void TestSetupForm::editKeepsLogAndRenamesOnRequest()
{
    QFETCH(QString, vin);
    QFETCH(bool, answer);
    QFETCH(QStringList, files);
    QFETCH(int, questions);

    QVERIFY(TestFiles::write(path(u"VAN1.vcb"_s), "entries"));
    QVERIFY(TestFiles::write(path(u"VAN1.bak"_s), "backup"));
    auto form = openForm(u"Van"_s);
    form->beginEdit();
    GeneralInfoValues general = form->generalInfo();
    general.vin = vin;
    form->confirm(general);
    // A unit change is the profile's only: the stored entries stay as they are.
    form->confirm(MeasurementsValues { 10000, 0, 0, 0 });
    m_reporter.setNextAnswer(answer);
    QVERIFY(form->finishEdit(m_reporter));

    QCOMPARE(int(m_reporter.messages().size()), questions);
    QCOMPARE(QDir(m_dir->path()).entryList({ u"*.vcb"_s, u"*.bak"_s }, QDir::Files, QDir::Name), files);
    QCOMPARE(TestFiles::read(path(files.at(1))), QByteArray("entries"));
    IniFile ini;
    ini.setSaveOnDestroy(false);
    QVERIFY(ini.Load(path(u"Velcora.ini"_s)));
    QString value;
    QVERIFY(ini.GetString(u"Van"_s, u"VIN"_s, value));
    QCOMPARE(value, vin.toUpper());
    QVERIFY(ini.GetString(u"Van"_s, u"Econo"_s, value));
    QCOMPARE(value, u"MPG"_s);
}

void TestSetupForm::customPageSeedsRepairList()
{
    auto form = openForm(u"Van"_s);
    form->confirm(CustomValues { { u"Insurance"_s, {}, u"Brakes"_s, {}, u"Tune-Up"_s }, {}, { 365 } });
    const QByteArray seeded = settingsBytes(u"\n[RepairList]\nLine0=Brakes\nLine1=Insurance\nLine2=Tune-"
                                            u"Up\nLine3=Oil Change\nLine4=Coolant Flush\n"
                                            "Line5=Transmission Service\nLine6=Rotate Tires\n"_s);
    QCOMPARE(TestFiles::read(path(u"Lists.ini"_s)), seeded);
    form->confirm(form->custom());
    QCOMPARE(TestFiles::read(path(u"Lists.ini"_s)), seeded);
}

void TestSetupForm::pagesRoundTrip()
{
    // Each page shows what the one before it confirmed; the rows of the "Int." page are in screen
    // order, not reminder order.
    auto form = openForm(u"Car"_s);
    const IntervalsValues intervals { { 1, 2, 3, 4, 5 }, { 10, 20, 30, 40, 50 } };
    form->confirm(intervals);
    QCOMPARE(form->intervals(), intervals);
    QCOMPARE(form->vehicle().intervalDistance[TuneUpReminder], 2.0);
    QCOMPARE(form->vehicle().intervalDays[CoolantFlushReminder], 40);
    const TripsValues trips { true, 0.575, false, true, true, 2 };
    form->confirm(trips);
    QCOMPARE(form->trips(), trips);
    QVERIFY(form->saveAndExit(m_reporter));
    IniFile ini;
    ini.setSaveOnDestroy(false);
    QVERIFY(ini.Load(path(u"Velcora.ini"_s)));
    QStringList values;
    for (const char *key : { "TuneDistance", "CoolDays", "CostPerMile" }) {
        QString value;
        ini.GetString(u"Car"_s, QString::fromLatin1(key), value);
        values.append(value);
    }
    for (const char *key : { "Detailed", "CompanyName", "HomeAddress", "UseContacts", "SortListBy" }) {
        QString value;
        ini.GetString(u"TripSettings"_s, QString::fromLatin1(key), value);
        values.append(value);
    }
    QCOMPARE(values,
             (QStringList { u"2      "_s, u"40  "_s, u"0.575"_s, u"Yes"_s, u"Yes"_s, u"Yes"_s, u"No"_s,
                            u"Contact"_s }));
}

void TestSetupForm::nameProblems_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("vin");

    QTest::newRow("plain") << u"Jennifer's Ford Mustang"_s << QString() << QString();
    QTest::newRow("empty") << QString() << QString() << QString();
    QTest::newRow("slash") << u"A/B"_s << u"A vehicle name can't contain \"/\"."_s
                           << u"A VIN can't contain \"/\"."_s;
    QTest::newRow("backslash") << u"A\\B"_s << u"A vehicle name can't contain \"\\\"."_s
                               << u"A VIN can't contain \"\\\"."_s;
    QTest::newRow("bracket") << u"[A"_s << u"A vehicle name can't contain \"[\"."_s
                             << u"A VIN can't contain \"[\"."_s;
    QTest::newRow("dot dot") << u".."_s << u"\"..\" can't be a vehicle name."_s
                             << u"\"..\" can't be a VIN."_s;
    QTest::newRow("NUL") << u"A"_s + QChar(0) << u"A vehicle name can't contain a control character."_s
                         << u"A VIN can't contain a control character."_s;
    QTest::newRow("line end") << u"A\nB"_s << u"A vehicle name can't contain a control character."_s
                              << u"A VIN can't contain a control character."_s;
    QTest::newRow("trailing blank") << u"A "_s << u"A vehicle name can't begin or end with a blank."_s
                                    << u"A VIN can't begin or end with a blank."_s;
    QTest::newRow("colon") << u"A:B"_s << QString() << u"A VIN can't contain \":\"."_s;
    QTest::newRow("section of the file")
        << u"tripsettings"_s
        << u"\"tripsettings\" is a name the settings file uses itself. Select another name."_s << QString();
    QTest::newRow("taken") << u"VAN"_s << u"There is already a vehicle named \"Van\". Select a unique name."_s
                           << QString();
}

void TestSetupForm::nameProblems()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QFETCH(QString, vin);
    QCOMPARE(VehicleNames::nameProblem(text, { u"Van"_s, u"Car"_s }), name);
    QCOMPARE(VehicleNames::vinProblem(text), vin);
}

QTEST_GUILESS_MAIN(TestSetupForm)
#include "tst_setup_form.moc"
