// Settings files that exist but can't be read are never written over, and two objects saving the
// same file keep each other's changes.
#include "core/files_helper.h"
#include "settings/IniFile.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using TestFiles::lines;
using TestFiles::read;
using TestFiles::write;
using TestFiles::written;

class TestIniFileSafety : public QObject
{
    Q_OBJECT

private slots:
    void unreadableNeverWrittenOver_data();
    void unreadableNeverWrittenOver();
    void twoWritersKeepBothChanges();
};

void TestIniFileSafety::unreadableNeverWrittenOver_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const QString encoding = u"Not a settings file in a known text encoding"_s;
    QTest::newRow("Latin-1") << QByteArray("[My Car]\r\nMake=Citro\xebn\r\n") << encoding;
    QTest::newRow("cut short in the mark") << QByteArray("\xff", 1) << encoding;
    QTest::newRow("NULs on both halves") << QByteArray("\x00\x01\x00\x00\x02\x00", 6) << encoding;
}

void TestIniFileSafety::unreadableNeverWrittenOver()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    QVERIFY(write(path, bytes));
    {
        IniFile ini;
        QVERIFY(!ini.Load(path));
        QVERIFY(ini.loadFailed());
        QCOMPARE(ini.errorString(), reason);
        QCOMPARE(ini.path(), path);
        ini.SetString(u"VehicleList"_s, u"Vehicle0"_s, u"My Car"_s);
        QVERIFY(!ini.Save());
        QCOMPARE(ini.errorString(), u"The file could not be read as settings and is kept as it is"_s);
        // Another object that loaded something else can't save over it either.
        IniFile other;
        QVERIFY(other.Load(dir.filePath(u"missing.ini"_s)) == false);
        QVERIFY(!other.Save(path));
    } // and no save on destruction
    QCOMPARE(read(path), bytes);
}

void TestIniFileSafety::twoWritersKeepBothChanges()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    QVERIFY(write(path, written(lines(u"[VehicleList]|Vehicle0=My Car|[My Car]|VIN=A"_s))));
    IniFile gui;
    IniFile cli;
    QVERIFY(gui.Load(path));
    QVERIFY(cli.Load(path));
    gui.SetString(u"VehicleList"_s, u"Vehicle1"_s, u"Van"_s);
    gui.SetString(u"Van"_s, u"VIN"_s, u"B"_s);
    QVERIFY(gui.Save());
    cli.SetString(u"My Car"_s, u"LastR0Mileage"_s, u"1200"_s);
    cli.DeleteKey(u"My Car"_s, u"VIN"_s);
    QVERIFY(cli.Save());
    const QByteArray both = written(
        lines(u"[VehicleList]|Vehicle0=My Car|Vehicle1=Van|[My Car]|LastR0Mileage=1200|[Van]|VIN=B"_s));
    QCOMPARE(read(path), both);
    // An object with no changes of its own neither writes nor brings back what it had read.
    gui.setSaveOnDestroy(true);
    QVERIFY(gui.Save());
    QCOMPARE(read(path), both);
}

QTEST_GUILESS_MAIN(TestIniFileSafety)
#include "tst_inifile_safety.moc"
