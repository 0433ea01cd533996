#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "core/context_helper.h"
#include "core/files_helper.h"
#include "log/LogArchive.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

using TestFiles::read;

class TestVehicleSession : public QObject
{
    Q_OBJECT

private slots:
    void dropDownRewritesOnlyAVehicleKeptElsewhere_data();
    void dropDownRewritesOnlyAVehicleKeptElsewhere();
    void countersAndLastServices();
};

void TestVehicleSession::dropDownRewritesOnlyAVehicleKeptElsewhere_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<bool>("rewritten");
    QTest::newRow("data folder") << u"\\My Documents\\Tarvane Files\\"_s << false;
    QTest::newRow("same folder, other spelling") << u"My Documents\\Tarvane Files\\"_s << false;
    QTest::newRow("another folder") << u"\\Storage Card\\Tarvane\\"_s << true;
}

void TestVehicleSession::dropDownRewritesOnlyAVehicleKeptElsewhere()
{
    QFETCH(QString, directory);
    QFETCH(bool, rewritten);
    TestContext run(1'780'000'000);
    AppContext &context = run.context;

    const QString data = context.paths.dataFolder();
    {
        // First start puts the templates in place; then the sample vehicle keeps its log elsewhere.
        VehicleSession first(context);
        first.start(false, u"My Car"_s);
        first.settings().SetString(u"My Car"_s, u"Directory"_s, directory);
    }
    CVCItem oil { .entryType = CVCItem::Maintenance, .odometer = 1200, .typeText = u"Oil Change"_s };
    // Stray bytes after the archive: a save writes the archive alone, so they show a rewrite.
    const QByteArray onDisk = LogArchive::encode({ oil }) + QByteArray("stale");
    TestFiles::put(data + u"MYCAR0001.vcb"_s, onDisk);

    VehicleSession session(context);
    QVERIFY(session.start(false, u"My Car"_s));
    QCOMPARE(session.entries().size(), size_t(1));
    session.dropDownOpened();
    session.dropDownClosed();
    QCOMPARE(read(data + u"MYCAR0001.vcb"_s), rewritten ? LogArchive::encode(session.entries()) : onDisk);
    QCOMPARE(session.entries().size(), size_t(1));
}

void TestVehicleSession::countersAndLastServices()
{
    TestContext run(1'780'000'000);
    AppContext &context = run.context;
    const auto shown = [](const MainScreenFigures &f) {
        const auto one = [](const CounterState &c) {
            return c.noData ? u"No Data"_s : c.text;
        };
        return QStringList { one(f.odometer), one(f.currentEconomy), one(f.averageEconomy) };
    };
    {
        // Before a vehicle is chosen every counter says "No Data".
        VehicleSession first(context);
        QVERIFY(first.start());
        QCOMPARE(first.currentVehicleName(), u"Select Vehicle"_s);
        QCOMPARE(shown(first.figures()), (QStringList { u"No Data"_s, u"No Data"_s, u"No Data"_s }));
    }
    CVCItem oil;
    oil.entryType = CVCItem::Maintenance;
    oil.odometer = 1200;
    oil.entryDate = 1'700'000'000;
    oil.typeText = u"Oil Change"_s;
    QVERIFY(LogArchive().write(context.paths.dataFolder() + u"MYCAR0001.vcb"_s, { oil }));

    // A log without a full fill-up: the odometer and an economy of 0, not "No Data".
    VehicleSession session(context);
    QVERIFY(session.start(false, u"My Car"_s));
    QCOMPARE(shown(session.figures()), (QStringList { u"1200"_s, u"0.00"_s, u"0.00"_s }));
    session.saveAfterStartup();
    const auto lastOil = [&]() -> QString {
        QString mileage, date;
        session.settings().GetString(u"My Car"_s, u"LastR0Mileage"_s, mileage);
        session.settings().GetString(u"My Car"_s, u"LastR0Date"_s, date);
        return mileage + u'|' + date;
    };
    QCOMPARE(lastOil(), u"1200   |1700000000"_s);
    // Once the entry is gone the scan's zeros are saved, not the old figures.
    QVERIFY(session.replaceEntries({}));
    session.saveAfterStartup();
    QCOMPARE(lastOil(), u"0      |0000000000"_s);
}

QTEST_GUILESS_MAIN(TestVehicleSession)
#include "tst_vehicle_session.moc"
