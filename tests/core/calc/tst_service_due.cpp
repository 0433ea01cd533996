#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "calc/DueCalendar.h"
#include "calc/ServiceDue.h"
#include "core/files_helper.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"

using namespace Qt::StringLiterals;

namespace {

using TestFiles::whole;

// 2024-03-01 00:00:00 UTC; the tests run in UTC.
constexpr quint32 Now = 1709251200;
constexpr quint32 Jan16 = 1705363200; // 2024-01-16
constexpr quint32 Oct1 = 1696118400; // 2023-10-01

// A device that takes limit bytes and then refuses to write.
class FailingBuffer : public QBuffer
{
public:
    explicit FailingBuffer(qint64 limit)
        : m_limit(limit)
    { }

protected:
    qint64 writeData(const char *data, qint64 len) override
    {
        const qint64 room = m_limit - size();
        if (room <= 0)
            return -1;
        return QBuffer::writeData(data, qMin(len, room));
    }

private:
    qint64 m_limit;
};

} // namespace

class TestServiceDue : public QObject
{
    Q_OBJECT

private slots:
    void evaluate_data();
    void evaluate();
    void loadForScreen();
    void foldLine_data();
    void foldLine();
    void escapeText();
    void calendarWriteFailures();
};

void TestServiceDue::evaluate_data()
{
    QTest::addColumn<int>("days");
    QTest::addColumn<double>("distance");
    QTest::addColumn<double>("lastMileage");
    QTest::addColumn<quint32>("lastDate");
    QTest::addColumn<double>("reading");
    QTest::addColumn<QList<int>>("dateTiles");
    QTest::addColumn<QDate>("dueDate");
    QTest::addColumn<bool>("overdueByDate");
    QTest::addColumn<QList<int>>("readingTiles");
    QTest::addColumn<bool>("overdueByReading");

    const QList<int> noDate { 248, 292 };
    // Distance rules: N = interval + last done against the current reading.
    QTest::newRow("distance interval 0 shows zeros")
        << 0 << 0.0 << 5000.0 << 0u << 9000.0 << noDate << QDate() << false << whole("0000000") << false;
    QTest::newRow("never done, N above the reading")
        << 0 << 3000.0 << 0.0 << 0u << 2000.0 << noDate << QDate() << false << whole("0003000") << false;
    QTest::newRow("never done, N below the reading") << 0 << 3000.0 << 0.0 << 0u << 50000.0 << noDate
                                                     << QDate() << false << whole("0003000", true) << true;
    QTest::newRow("N equal to the reading is not overdue")
        << 0 << 3000.0 << 9000.0 << 0u << 12000.0 << noDate << QDate() << false << whole("0012000") << false;
    QTest::newRow("one mile past N") << 0 << 3000.0 << 9000.0 << 0u << 12001.0 << noDate << QDate() << false
                                     << whole("0012000", true) << true;
    QTest::newRow("negative interval never red")
        << 0 << -5.0 << 100.0 << 0u << 200.0 << noDate << QDate() << false << whole("0000095") << false;
    // Date rules: last done + days x 86400; month tile 249 + month index, day tile 260 + day.
    QTest::newRow("day interval 0 with a last-done date")
        << 0 << 0.0 << 0.0 << Jan16 << 0.0 << noDate << QDate() << false << whole("0000000") << false;
    QTest::newRow("90 days from Jan 16th: Apr 15th")
        << 90 << 0.0 << 0.0 << Jan16 << 0.0 << QList<int> { 252, 275 } << QDate(2024, 4, 15) << false
        << whole("0000000") << false;
    QTest::newRow("90 days from Oct 1st: Dec 30th, passed")
        << 90 << 0.0 << 0.0 << Oct1 << 0.0 << QList<int> { 260, 290 } << QDate(2023, 12, 30) << true
        << whole("0000000") << false;
    QTest::newRow("due today is not overdue")
        << 1 << 0.0 << 0.0 << Now - 86400 << 0.0 << QList<int> { 251, 261 } << QDate(2024, 3, 1) << false
        << whole("0000000") << false;
    QTest::newRow("never done: Jan 31st 1970, not overdue")
        << 30 << 0.0 << 0.0 << 0u << 0.0 << QList<int> { 249, 291 } << QDate(1970, 1, 31) << false
        << whole("0000000") << false;
}

void TestServiceDue::evaluate()
{
    QFETCH(int, days);
    QFETCH(double, distance);
    QFETCH(double, lastMileage);
    QFETCH(quint32, lastDate);
    QFETCH(double, reading);

    const ServiceDue due = ServiceDueDates::evaluate(3, u"Engine Tune-Up"_s, days, distance, lastMileage,
                                                     lastDate, reading, Now);
    QTEST(due.dateTiles, "dateTiles");
    QTEST(due.dueDate, "dueDate");
    QCOMPARE(due.hasDueDate, days >= 1);
    QTEST(due.overdueByDate, "overdueByDate");
    QTEST(due.readingTiles, "readingTiles");
    QTEST(due.overdueByReading, "overdueByReading");
    QCOMPARE(due.dueReading, distance + lastMileage);
}

void TestServiceDue::loadForScreen()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    {
        IniFile ini;
        ini.SetString(u"Van"_s, u"LastR0Mileage"_s, u"9000   "_s);
        ini.SetString(u"Van"_s, u"LastR0Date"_s, u"1705363200"_s);
        ini.SetString(u"Van"_s, u"LastR4Mileage"_s, u"11000  "_s);
        ini.SetString(u"Van"_s, u"LastR4Date"_s, u"0000000000"_s);
        ini.SetString(u"Van"_s, u"LastR7Mileage"_s, u""_s);
        QVERIFY(ini.Save(path));
        ini.Load(QString());
    }
    const QByteArray before = TestFiles::read(path);

    // The log knows a later tire rotation; the oil change it does not know keeps the file's values.
    LogScan scan;
    scan.lastServiceOdometer[4] = 12000;
    scan.lastServiceDate[4] = Now;
    RecordingReporter reporter;
    const LastServices last
        = ServiceDueDates::loadForScreen(ServiceDueDates::Screen::Fixed, path, u"Van"_s, scan, reporter);
    QVERIFY(reporter.messages().isEmpty());
    LastServices expected;
    expected.mileage[0] = 9000;
    expected.date[0] = Jan16;
    expected.mileage[4] = 12000;
    expected.date[4] = Now;
    QCOMPARE(last, expected);
    QCOMPARE(TestFiles::read(path), before);

    // A file that does not load: the screen's own message and empty values, even with a scan.
    const QString missing = dir.filePath(u"none/Velcora.ini"_s);
    QCOMPARE(
        ServiceDueDates::loadForScreen(ServiceDueDates::Screen::Fixed, missing, u"Van"_s, scan, reporter),
        LastServices());
    QCOMPARE(
        ServiceDueDates::loadForScreen(ServiceDueDates::Screen::Custom, missing, u"Van"_s, scan, reporter),
        LastServices());
    QCOMPARE(
        reporter.texts(),
        (QStringList {
            u"ERROR 600:Cannot load ini file.\nPlease check your documentation\nfor possible causes."_s,
            u"ERROR 601:Cannot load ini file.\nPlease check your documentation\nfor possible causes."_s }));
    QCOMPARE(reporter.messages().first().kind, Reporter::Kind::Error);
    QVERIFY(!QFile::exists(missing));
}

void TestServiceDue::foldLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("folded");

    const QByteArray a75(75, 'a');
    QTest::newRow("75 octets stay on one line") << a75 << a75 + "\r\n";
    QTest::newRow("76 octets fold") << a75 + "b" << a75 + "\r\n b\r\n";
    // Continuation lines hold 74 octets after their blank.
    QTest::newRow("two folds") << a75 + QByteArray(74, 'b') + "c"
                               << a75 + "\r\n " + QByteArray(74, 'b') + "\r\n c\r\n";
    // "ö" is two octets (C3 B6) across the 75th octet: the whole character moves down.
    QTest::newRow("never inside a character")
        << QByteArray(74, 'a') + "\xc3\xb6" + "z" << QByteArray(74, 'a') + "\r\n \xc3\xb6z\r\n";
}

void TestServiceDue::foldLine()
{
    QFETCH(QByteArray, line);
    QTEST(DueCalendar::foldLine(line), "folded");
}

void TestServiceDue::escapeText()
{
    QCOMPARE(DueCalendar::escapeText(u"a\\b;c,d\ne\r\nf\rg"_s), u"a\\\\b\\;c\\,d\\ne\\nf\\ng"_s);
}

void TestServiceDue::calendarWriteFailures()
{
    VehicleSettings vehicle;
    vehicle.intervalDays[0] = 90;
    LastServices last;
    last.date[0] = Jan16;
    const QList<ServiceDue> services = ServiceDueDates::all(vehicle, last, 0, Now);
    DueCalendar calendar({ u"Van"_s, u"V1"_s, 0 }, Now);
    const QByteArray bytes = calendar.encode(services);
    QVERIFY(bytes.size() > 200);

    FailingBuffer buffer(100);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(!calendar.write(&buffer, services));
    QVERIFY(calendar.errorString().startsWith(u"Unable to write the calendar file (stream)"_s));

    // A failed or refused write leaves what was there.
    QTemporaryDir dir;
    const QString path = dir.filePath(u"van.ics"_s);
    TestFiles::put(path, "old");
    QVERIFY(!calendar.write(path, ServiceDueDates::all(VehicleSettings(), last, 0, Now)));
    QCOMPARE(calendar.errorString(), DueCalendar::nothingDueText());
    QVERIFY(!calendar.write(dir.filePath(u"no/such/folder/van.ics"_s), services));
    QVERIFY(calendar.errorString().startsWith(u"Unable to write the calendar file "_s));
    QCOMPARE(TestFiles::read(path), QByteArray("old"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList { u"van.ics"_s });

    QVERIFY(calendar.write(path, services));
    QCOMPARE(TestFiles::read(path), bytes);
}

QTEST_GUILESS_MAIN(TestServiceDue)
#include "tst_service_due.moc"
