#include <QtTest>

#include "core/files_helper.h"
#include "dataview/DataViewLog.h"
#include "log/LogArchive.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

using TestFiles::odometers;
using TestFiles::read;

namespace {

CVCItem at(double odometer, qint32 type = CVCItem::Fuel)
{
    return { .entryType = type, .odometer = odometer, .typeText = CVCItem::typeName(type) };
}

EntryList entries(const QList<double> &odometers)
{
    EntryList list;
    for (double odometer : odometers)
        list.push_back(at(odometer));
    return list;
}

} // namespace

class TestDataViewLog : public QObject
{
    Q_OBJECT

private slots:
    void insertionPoint_data();
    void insertionPoint();
    void insertSaves();
    void deleteOne();
    void deleteAll();
    void deleteAllBackupFails();
    void failures();
    void reconcile();

private:
    QTemporaryDir m_dir;
    QString folder() const { return m_dir.path() + u'/'; }
    QString vcb() const { return folder() + u"VIN1.vcb"_s; }
    void writeLog(const EntryList &list) { QVERIFY(LogArchive().write(vcb(), list)); }
};

void TestDataViewLog::insertionPoint_data()
{
    QTest::addColumn<QList<double>>("log");
    QTest::addColumn<double>("odometer");
    QTest::addColumn<int>("position");

    QTest::newRow("empty log") << QList<double> {} << 100.0 << -1;
    QTest::newRow("one lower: discarded") << QList<double> { 500 } << 600.0 << -1;
    QTest::newRow("one equal: before it") << QList<double> { 500 } << 500.0 << 0;
    QTest::newRow("one higher: before it") << QList<double> { 500 } << 400.0 << 0;
    QTest::newRow("before the first") << QList<double> { 100, 200, 300 } << 50.0 << 0;
    QTest::newRow("between") << QList<double> { 100, 200, 300 } << 150.0 << 1;
    QTest::newRow("equal goes before") << QList<double> { 100, 200, 300 } << 200.0 << 1;
    QTest::newRow("below the last: appended") << QList<double> { 100, 200, 300 } << 250.0 << 3;
    QTest::newRow("above the last") << QList<double> { 100, 200, 300 } << 350.0 << 3;
    QTest::newRow("two, between: appended") << QList<double> { 100, 200 } << 150.0 << 2;
    QTest::newRow("unsorted log") << QList<double> { 100, 300, 200 } << 250.0 << 1;
}

void TestDataViewLog::insertionPoint()
{
    QFETCH(QList<double>, log);
    QFETCH(double, odometer);
    QTEST(DataViewLog::insertionPoint(entries(log), odometer), "position");
}

void TestDataViewLog::insertSaves()
{
    writeLog(entries({ 100, 200, 300 }));
    DataViewLog log(folder(), u"VIN1"_s);
    RecordingReporter reporter;
    QVERIFY(log.load(reporter));
    QCOMPARE(log.insert(at(150, CVCItem::Trip), reporter), 1);
    QCOMPARE(odometers(vcb()), (QList<double> { 100, 150, 200, 300 }));
    QCOMPARE(read(vcb()), LogArchive::encode(log.entries()));
    QCOMPARE(log.entries()[1].entryType, qint32(CVCItem::Trip));

    // One entry below the new record: the record is dropped and the file is left alone.
    writeLog(entries({ 500 }));
    QVERIFY(log.load(reporter));
    const QByteArray before = read(vcb());
    QCOMPARE(log.insert(at(600), reporter), -1);
    QCOMPARE(read(vcb()), before);
    QCOMPARE(reporter.texts(), QStringList());
}

void TestDataViewLog::deleteOne()
{
    writeLog(entries({ 100, 200, 300 }));
    DataViewLog log(folder(), u"VIN1"_s);
    RecordingReporter reporter;
    QVERIFY(log.load(reporter));
    const QByteArray before = read(vcb());
    reporter.setNextAnswer(false);
    QVERIFY(!log.remove(1, reporter));
    QCOMPARE(read(vcb()), before);
    reporter.setNextAnswer(true);
    QVERIFY(log.remove(1, reporter));
    QVERIFY(!log.remove(7, reporter)); // nothing selected there: no question
    QCOMPARE(reporter.texts(), (QStringList { u"DELETE! ARE YOU SURE?"_s, u"DELETE! ARE YOU SURE?"_s }));
    QCOMPARE(odometers(vcb()), (QList<double> { 100, 300 }));
}

void TestDataViewLog::deleteAll()
{
    writeLog(entries({ 100, 200, 300 }));
    const QByteArray before = read(vcb());
    DataViewLog log(folder(), u"VIN1"_s);
    RecordingReporter reporter;
    QVERIFY(log.load(reporter));
    reporter.setNextAnswer(false);
    QVERIFY(!log.removeAll(reporter));
    QVERIFY(!QFile::exists(folder() + u"VIN1.bak"_s));

    reporter.setNextAnswer(true);
    QVERIFY(log.removeAll(reporter));
    QCOMPARE(read(folder() + u"VIN1.bak"_s), before);
    QCOMPARE(read(vcb()), QByteArray(4, '\0'));
    QCOMPARE(reporter.texts(),
             (QStringList { u"DELETE ALL DATA! ARE YOU SURE?"_s, u"DELETE ALL DATA! ARE YOU SURE?"_s }));

    // An empty log still leaves a backup: the empty archive.
    QFile::remove(folder() + u"VIN1.bak"_s);
    reporter.setNextAnswer(true);
    QVERIFY(log.removeAll(reporter));
    QCOMPARE(read(folder() + u"VIN1.bak"_s), QByteArray(4, '\0'));
    QFile::remove(folder() + u"VIN1.bak"_s);
}

void TestDataViewLog::deleteAllBackupFails()
{
    writeLog(entries({ 100, 200 }));
    const QByteArray before = read(vcb());
    QVERIFY(QDir(folder()).mkdir(u"VIN1.bak"_s)); // the backup can't be written over a folder
    DataViewLog log(folder(), u"VIN1"_s);
    RecordingReporter reporter;
    QVERIFY(log.load(reporter));
    reporter.setNextAnswer(true);
    QVERIFY(!log.removeAll(reporter));
    QCOMPARE(reporter.texts(),
             (QStringList { u"DELETE ALL DATA! ARE YOU SURE?"_s,
                            u"Backup ERROR 107!\nUnable to backup database"_s }));
    QCOMPARE(read(vcb()), before);
    QCOMPARE(log.entries().size(), 2u);
    QDir(folder()).rmdir(u"VIN1.bak"_s);
}

void TestDataViewLog::failures()
{
    RecordingReporter reporter;
    // No file: nothing to open, and a save never creates one.
    DataViewLog missing(folder(), u"NONE"_s);
    QVERIFY(!missing.load(reporter));
    QVERIFY(!missing.save(reporter));
    QCOMPARE(reporter.texts(),
             (QStringList { u"ERROR 100! Unable to open database %1NONE.vcb"_s.arg(folder()),
                            u"Save ERROR 205!\nUnable save database"_s }));
    QVERIFY(!QFile::exists(folder() + u"NONE.vcb"_s));

    // A damaged file is reported and never written over, whatever the screen does next.
    const QByteArray damaged("\x02\x00\xff\xff\x01\x00", 6);
    QVERIFY(TestFiles::write(vcb(), damaged));
    DataViewLog log(folder(), u"VIN1"_s);
    reporter.clear();
    QVERIFY(!log.load(reporter));
    QCOMPARE(reporter.texts().size(), 1);
    QCOMPARE(log.insert(at(10), reporter), -1);
    reporter.setNextAnswer(true);
    QVERIFY(!log.removeAll(reporter));
    QVERIFY(!log.reconcile(0, 0, reporter));
    QCOMPARE(read(vcb()), damaged);
    QVERIFY(!QFile::exists(folder() + u"VIN1.bak"_s));
}

void TestDataViewLog::reconcile()
{
    // 300 miles on 10 US gallons after a first fill at 0 km: 30.00 MPG (the first is out of range).
    EntryList list = entries({ 1000, 1300 });
    for (CVCItem &item : list) {
        item.fuelMeasure = u"Gallons"_s;
        item.fuelQuantity = 10;
        item.unitPrice = 3;
    }
    writeLog(list);
    DataViewLog log(folder(), u"VIN1"_s);
    RecordingReporter reporter;
    QVERIFY(log.load(reporter));
    QVERIFY(log.reconcile(0, 0, reporter));
    EntryList onDisk;
    QVERIFY(LogArchive().read(vcb(), onDisk));
    QCOMPARE(QString::number(onDisk[1].economy, 'f', 2), u"30.00"_s);
    QCOMPARE(onDisk[1].amount, 30.0);
    QCOMPARE(onDisk, log.entries());
}

QTEST_GUILESS_MAIN(TestDataViewLog)
#include "tst_dataview_log.moc"
