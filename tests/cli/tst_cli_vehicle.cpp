#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"

using namespace Qt::StringLiterals;

using CliFiles::readAll;
using CliFiles::snapshot;

namespace {

// A settings file's text (UTF-16 with its mark) as UTF-8, for looking into it.
QString settingsText(const QString &path)
{
    const QByteArray bytes = readAll(path);
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData() + 2),
                              (bytes.size() - 2) / 2);
}

} // namespace

class TestCliVehicle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newVehicleThenProfile();
    void setRenamesLogOnYes();
    void deleteAsks();
    void refusals_data();
    void refusals();

private:
    QString data(const QString &file) const
    {
        return m_root->path() + u"/My Documents/Tarvane Files/"_s + file;
    }

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<CliRunner> m_cli;
};

void TestCliVehicle::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    m_cli = std::make_unique<CliRunner>(m_root->path());
    // The template's car, chosen, so that later runs open a real vehicle.
    QCOMPARE(m_cli->run({ u"vehicle"_s, u"set"_s, u"My Car"_s, u"--plate"_s, u"abc 123"_s }).exitCode, 0);
    QCOMPARE(m_cli->run({ u"vehicle"_s, u"new"_s, u"Van"_s, u"--vin"_s, u"VAN1"_s }).exitCode, 0);
}

void TestCliVehicle::newVehicleThenProfile()
{
    const CliResult created = m_cli->runLine(
        u"vehicle new \"Blue Bike\" --vin bb-9 --year 2020 --start-odometer 1500 --distance km --economy "
        "L100KM --liquid litre --tune 30000,730 --custom 1:Insurance,0,365 --custom \"5:Chain, lube,500,30\" "
        "--cost-per-mile 0.25 --detailed-trips yes --json"_s);
    QCOMPARE(created.err, QString());
    QCOMPARE(created.exitCode, 0);
    // The printed profile is the one the settings file now holds, and the new vehicle is current.
    const CliResult profile = m_cli->run({ u"profile"_s, u"--json"_s });
    QCOMPARE(profile.out, created.out);

    const QJsonObject p = QJsonDocument::fromJson(created.out.toUtf8()).object();
    QStringList values;
    for (const char *key :
         { "name", "VIN", "Year", "Start Odometer", "Distance", "Econo", "Liquid", "TuneDistance", "TuneDays",
           "Custom1", "C1Days", "Custom5", "C5Miles", "C5Days", "CostPerMile", "Make" })
        values.append(p.value(QString::fromLatin1(key)).toVariant().toString());
    QCOMPARE(values,
             (QStringList { u"Blue Bike"_s, u"BB-9"_s, u"2020"_s, u"1500"_s, u"1"_s, u"2"_s, u"2"_s,
                            u"30000"_s, u"730"_s, u"Insurance"_s, u"365"_s, u"Chain, lube"_s, u"500"_s,
                            u"30"_s, u"0.25"_s, QString() }));
    QVERIFY(settingsText(data(u"Velcora.ini"_s)).contains(u"Vehicle2=Blue Bike\r\n"_s));
    QVERIFY(settingsText(data(u"Velcora.ini"_s))
                .contains(u"[TripSettings]\r\nSortListBy=Date\r\nUseContacts=No\r\n"
                          "HomeAddress=No\r\nCompanyName=No\r\nDetailed=Yes\r\n"_s));
    // The custom names became repair types, after the template's own.
    QVERIFY(settingsText(data(u"Lists.ini"_s))
                .contains(u"Line12=Wiper Blades\r\nLine13=Insurance\r\nLine14=Chain, lube\r\n"_s));
    QVERIFY(QFile::exists(data(u"BB-9.vcb"_s)));
}

void TestCliVehicle::setRenamesLogOnYes()
{
    QVERIFY(QFile::copy(data(u"VAN1.vcb"_s), data(u"VAN1.bak"_s)));
    const QByteArray log = readAll(data(u"VAN1.vcb"_s));
    const CliResult result
        = m_cli->run({ u"--yes"_s, u"vehicle"_s, u"set"_s, u"Van"_s, u"--vin"_s, u"van2"_s });
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.err,
             u"The log of this vehicle is stored by its VIN, as \"VAN1.vcb\".\nRename it to \"VAN2.vcb\" so "
             "that its entries stay with the vehicle? [Yes]\n"_s);
    QVERIFY(result.out.startsWith(u"[Van]\nDirectory=\\My Documents\\Tarvane Files\\\nVIN=VAN2\n"_s));
    QVERIFY(!QFile::exists(data(u"VAN1.vcb"_s)));
    QCOMPARE(readAll(data(u"VAN2.vcb"_s)), log);
    QVERIFY(QFile::exists(data(u"VAN2.bak"_s)));
}

void TestCliVehicle::deleteAsks()
{
    const auto before = snapshot(m_root->path());
    const CliResult asked = m_cli->run({ u"vehicle"_s, u"delete"_s, u"My Car"_s });
    QCOMPARE(asked.exitCode, 1);
    QVERIFY(asked.err.endsWith(u"stays in the data folder. [No]\nNot deleted.\n"_s));
    QCOMPARE(snapshot(m_root->path()), before);

    const CliResult deleted = m_cli->run({ u"--yes"_s, u"vehicle"_s, u"delete"_s, u"My Car"_s });
    QCOMPARE(deleted.exitCode, 0);
    QVERIFY(deleted.out.endsWith(u"MYCAR0001.vcb stays on disk. Current vehicle: \"Van\".\n"_s));
    QCOMPARE(m_cli->run({ u"vehicles"_s }).out, u"Van\tVAN1\n"_s);
    QVERIFY(QFile::exists(data(u"MYCAR0001.vcb"_s)));
    QVERIFY(!settingsText(data(u"Velcora.ini"_s)).contains(u"[My Car]"_s));
}

void TestCliVehicle::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // the first line on stderr

    const QString cannot = u"Sorry, Can not delete."_s;
    QTest::newRow("no action") << QStringList { u"vehicle"_s } << 2
                               << u"Usage: tarvane-cli vehicle new NAME"_s;
    QTest::newRow("new without name")
        << QStringList { u"vehicle"_s, u"new"_s } << 2 << u"Usage: tarvane-cli vehicle new NAME"_s;
    QTest::newRow("set nothing") << QStringList { u"vehicle"_s, u"set"_s, u"Van"_s } << 2
                                 << u"Nothing to set."_s;
    QTest::newRow("odometer with a fraction")
        << QStringList { u"vehicle"_s, u"set"_s, u"--start-odometer"_s, u"10.5"_s } << 2
        << u"--start-odometer: expected digits only"_s;
    QTest::newRow("custom number") << QStringList { u"vehicle"_s, u"set"_s, u"--custom"_s, u"6:X,1,1"_s } << 2
                                   << u"--custom: expected N:NAME,DIST,DAYS with N from 1 to 5"_s;
    QTest::newRow("unit word") << QStringList { u"vehicle"_s, u"set"_s, u"--liquid"_s, u"pints"_s } << 2
                               << u"--liquid: expected us|imp|litre"_s;
    QTest::newRow("name taken") << QStringList { u"vehicle"_s, u"new"_s, u"van"_s } << 1
                                << u"There is already a vehicle named \"Van\". Select a unique name."_s;
    QTest::newRow("name with a bracket")
        << QStringList { u"vehicle"_s, u"new"_s, u"[X]"_s } << 1 << u"A vehicle name can't contain \"[\"."_s;
    QTest::newRow("no VIN") << QStringList { u"vehicle"_s, u"new"_s, u"Bike"_s } << 1
                            << u"VIN is empty Skipping save"_s;
    QTest::newRow("VIN of another vehicle")
        << QStringList { u"vehicle"_s, u"set"_s, u"My Car"_s, u"--vin"_s, u"van1"_s } << 1
        << u"The vehicle \"Van\" has the VIN VAN1 already. Each vehicle needs a VIN of its own, since its "
           u"log is "
           "stored by VIN."_s;
    QTest::newRow("unknown vehicle") << QStringList { u"vehicle"_s, u"delete"_s, u"Truck"_s } << 1
                                     << u"No vehicle named \"Truck\" in the vehicle list."_s;
    QTest::newRow("delete slot 0, slot 1 empty")
        << QStringList { u"--yes"_s, u"vehicle"_s, u"delete"_s, u"My Car"_s } << 1 << cannot;
}

void TestCliVehicle::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);

    if (QByteArray(QTest::currentDataTag()).startsWith("delete slot 0")) {
        // Van leaves slot 1 empty: deleting My Car from slot 0 would switch to nothing.
        QCOMPARE(m_cli->run({ u"--yes"_s, u"vehicle"_s, u"new"_s, u"Car"_s, u"--vin"_s, u"CAR3"_s }).exitCode,
                 0);
        QCOMPARE(m_cli->run({ u"--yes"_s, u"vehicle"_s, u"delete"_s, u"Van"_s }).exitCode, 0);
    }
    const auto before = snapshot(m_root->path());
    const CliResult result = m_cli->run(arguments);
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(result.err.section(u'\n', 0, 0).left(message.size()), message);
    QCOMPARE(snapshot(m_root->path()), before);
}

QTEST_GUILESS_MAIN(TestCliVehicle)
#include "tst_cli_vehicle.moc"
