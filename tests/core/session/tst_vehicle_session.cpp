#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "log/LogArchive.h"
#include "session/VehicleSession.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestVehicleSession : public QObject
{
    Q_OBJECT

private slots:
    void dropDownRewritesOnlyAVehicleKeptElsewhere_data();
    void dropDownRewritesOnlyAVehicleKeptElsewhere();
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
    QTemporaryDir root;
    RecordingReporter reporter;
    FixedClock clock(1'780'000'000);
    TestLocaleFormats locale;
    MemorySettingsStore options;
    MemorySettingsStore preferences;
    AppContext context { DevicePaths(root.path()), reporter, clock, locale, options, preferences };

    const QString data = context.paths.dataFolder();
    {
        // First start puts the templates in place; then the sample vehicle keeps its log elsewhere.
        VehicleSession first(context);
        first.start(false, u"My Car"_s);
        first.settings().SetString(u"My Car"_s, u"Directory"_s, directory);
    }
    CVCItem oil;
    oil.entryType = CVCItem::Maintenance;
    oil.odometer = 1200;
    oil.typeText = u"Oil Change"_s;
    // Stray bytes after the archive: a save writes the archive alone, so they show a rewrite.
    const QByteArray onDisk = LogArchive::encode({ oil }) + QByteArray("stale");
    {
        QFile file(data + u"MYCAR0001.vcb"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(onDisk);
    }

    VehicleSession session(context);
    QVERIFY(session.start(false, u"My Car"_s));
    QCOMPARE(session.entries().size(), size_t(1));
    session.dropDownOpened();
    session.dropDownClosed();
    QCOMPARE(readAll(data + u"MYCAR0001.vcb"_s), rewritten ? LogArchive::encode(session.entries()) : onDisk);
    QCOMPARE(session.entries().size(), size_t(1));
}

QTEST_GUILESS_MAIN(TestVehicleSession)
#include "tst_vehicle_session.moc"
