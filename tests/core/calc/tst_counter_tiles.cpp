#include <QTest>

#include "calc/CounterTiles.h"

class TestCounterTiles : public QObject
{
    Q_OBJECT

private slots:
    void wholeNumber_data();
    void wholeNumber();
    void decimal_data();
    void decimal();
    void dueDate_data();
    void dueDate();
    void dueReading_data();
    void dueReading();
};

void TestCounterTiles::wholeNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("style");
    QTest::addColumn<QList<int>>("expected");

    const QList<int> zeros { 198, 198, 198, 198, 198, 198, 198 };
    QTest::newRow("zero") << 0.0 << 1 << zeros;
    QTest::newRow("negative") << -512.0 << 1 << zeros;
    QTest::newRow("below a half") << 0.49 << 1 << zeros;
    QTest::newRow("rounded up") << 12345.6 << 1 << QList<int> { 198, 198, 199, 200, 201, 202, 204 };
    QTest::newRow("seven digits") << 9876543.0 << 1 << QList<int> { 207, 206, 205, 204, 203, 202, 201 };
    QTest::newRow("eight digits keep the first seven")
        << 12345678.0 << 1 << QList<int> { 199, 200, 201, 202, 203, 204, 205 };
    QTest::newRow("rounding into eight digits")
        << 9999999.6 << 1 << QList<int> { 199, 198, 198, 198, 198, 198, 198 };
    QTest::newRow("alert set") << 42.0 << 2 << QList<int> { 211, 211, 211, 211, 211, 215, 213 };
    QTest::newRow("alert zero") << 0.0 << 2 << QList<int> { 211, 211, 211, 211, 211, 211, 211 };
    QTest::newRow("other style is normal") << 42.0 << 3 << QList<int> { 198, 198, 198, 198, 198, 202, 200 };
    QTest::newRow("infinite") << qInf() << 1 << zeros;
}

void TestCounterTiles::wholeNumber()
{
    QFETCH(double, value);
    QFETCH(int, style);
    QTEST(CounterTiles::wholeNumber(value, style), "expected");
}

void TestCounterTiles::decimal_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("style");
    QTest::addColumn<QList<int>>("expected");

    const QList<int> zeros { 235, 235, 235, 245, 235, 235 };
    QTest::newRow("zero") << 0.0 << 1 << zeros;
    QTest::newRow("negative") << -7.5 << 1 << zeros;
    QTest::newRow("at the threshold") << 0.001 << 1 << zeros;
    QTest::newRow("tiny") << 0.0005 << 1 << zeros;
    QTest::newRow("one hundredth") << 0.006 << 1 << QList<int> { 235, 235, 235, 245, 235, 236 };
    QTest::newRow("one digit") << 7.5 << 1 << QList<int> { 235, 235, 242, 245, 240, 235 };
    QTest::newRow("two digits rounded") << 23.456 << 1 << QList<int> { 235, 237, 238, 245, 239, 241 };
    QTest::newRow("three digits") << 100.0 << 1 << QList<int> { 236, 235, 235, 245, 235, 235 };
    QTest::newRow("four digits") << 1234.5 << 1 << QList<int> { 236, 237, 238, 245, 235, 240 };
    QTest::newRow("alert set") << 7.5 << 2 << QList<int> { 300, 300, 307, 310, 305, 300 };
    QTest::newRow("other style is normal") << 7.5 << 0 << QList<int> { 235, 235, 242, 245, 240, 235 };
}

void TestCounterTiles::decimal()
{
    QFETCH(double, value);
    QFETCH(int, style);
    QTEST(CounterTiles::decimal(value, style), "expected");
}

void TestCounterTiles::dueDate_data()
{
    QTest::addColumn<quint32>("lastDone");
    QTest::addColumn<int>("days");
    QTest::addColumn<QList<int>>("expected");

    const quint32 jan10 = 1704844800; // 2024-01-10 00:00 UTC
    const quint32 dec1 = 1701388800; // 2023-12-01 00:00 UTC
    QTest::newRow("next day") << jan10 << 1 << QList<int> { 249, 271 };
    QTest::newRow("into February") << jan10 << 30 << QList<int> { 250, 269 };
    QTest::newRow("leap day") << jan10 << 50 << QList<int> { 250, 289 };
    QTest::newRow("December 31") << dec1 << 30 << QList<int> { 260, 291 };
    QTest::newRow("no interval") << jan10 << 0 << QList<int> { 248, 292 };
    QTest::newRow("negative interval") << jan10 << -3 << QList<int> { 248, 292 };
}

void TestCounterTiles::dueDate()
{
    QFETCH(quint32, lastDone);
    QFETCH(int, days);
    QTEST(CounterTiles::dueDate(lastDone, days), "expected");
}

void TestCounterTiles::dueReading_data()
{
    QTest::addColumn<double>("interval");
    QTest::addColumn<double>("lastDone");
    QTest::addColumn<double>("current");
    QTest::addColumn<QList<int>>("expected");

    QTest::newRow("no interval") << 0.0 << 9000.0 << 50000.0
                                 << QList<int> { 198, 198, 198, 198, 198, 198, 198 };
    QTest::newRow("never done, ahead")
        << 3000.0 << 0.0 << 2000.0 << QList<int> { 198, 198, 198, 201, 198, 198, 198 };
    QTest::newRow("never done, passed")
        << 3000.0 << 0.0 << 5000.0 << QList<int> { 211, 211, 211, 214, 211, 211, 211 };
    QTest::newRow("due exactly now") << 3000.0 << 10000.0 << 13000.0
                                     << QList<int> { 198, 198, 199, 201, 198, 198, 198 };
    QTest::newRow("passed") << 3000.0 << 10000.0 << 13001.0
                            << QList<int> { 211, 211, 212, 214, 211, 211, 211 };
}

void TestCounterTiles::dueReading()
{
    QFETCH(double, interval);
    QFETCH(double, lastDone);
    QFETCH(double, current);
    QTEST(CounterTiles::dueReading(interval, lastDone, current), "expected");
}

QTEST_GUILESS_MAIN(TestCounterTiles)
#include "tst_counter_tiles.moc"
