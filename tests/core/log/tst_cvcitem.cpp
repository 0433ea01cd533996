#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include "log/CVCItem.h"
#include "log/CVCItemJson.h"
#include "log_helper.h"
#include "platform/LocaleFormats.h"

using namespace Qt::StringLiterals;

class TestCVCItem : public QObject
{
    Q_OBJECT

private slots:
    void duration_data();
    void duration();
    void columnTexts();
    void json();
    void sharedTexts();
};

void TestCVCItem::duration_data()
{
    QTest::addColumn<quint32>("depart");
    QTest::addColumn<quint32>("arrive");
    QTest::addColumn<QString>("text");
    QTest::newRow("no departure") << 0u << 5000u << QString();
    QTest::newRow("no arrival") << 5000u << 0u << QString();
    QTest::newRow("one hour one minute") << 1000u << 1000u + 3661u << u"0 Days 1 Hours 1 Min"_s;
    QTest::newRow("59 seconds") << 1000u << 1059u << u"0 Days 0 Hours 0 Min"_s;
    // Minutes are taken from the total less the hours of the last day only: 1505 - 60.
    QTest::newRow("a day and more") << 1000u << 1000u + 90300u << u"1 Days 1 Hours 1445 Min"_s;
    QTest::newRow("arrival before departure") << 5000u << 1400u << u"0 Days -1 Hours 0 Min"_s;
}

void TestCVCItem::duration()
{
    QFETCH(quint32, depart);
    QFETCH(quint32, arrive);
    CVCItem t;
    t.entryType = CVCItem::Trip;
    t.departTime = depart;
    t.arriveTime = arrive;
    QTEST(t.tripDurationText(), "text");
}

void TestCVCItem::columnTexts()
{
    TestLocaleFormats locale;
    QCOMPARE((QStringList { CVCItem::typeName(0), CVCItem::typeName(1), CVCItem::typeName(2),
                            CVCItem::typeName(3) }),
             (QStringList { u"Fuel"_s, u"Maint."_s, u"Trip"_s, QString() }));
    CVCItem f = sampleFuel();
    QStringList economies;
    for (double unit : { -1.0, 0.0, 1.0, 2.0, 3.0, 4.0, 9.0 }) {
        f.economyUnit = unit;
        economies << f.economyText();
    }
    QCOMPARE(economies,
             (QStringList { u"25.50 MPG"_s, u"25.50 MPG"_s, u"25.50 MPL"_s, u"25.50 L/100km"_s,
                            u"25.50 MPGi"_s, u"25.50 KPL"_s, u"25.50 KPL"_s }));
    f.odometer = 1234.6;
    f.unitPrice = 3.1994;
    f.fuelQuantity = 12.3456;
    f.amount = 39.5;
    QCOMPARE(f.odometerText(), u"1235   "_s);
    QCOMPARE(f.odometerText(false), u"   1235"_s);
    QCOMPARE(f.priceText(locale), u"$3.199"_s);
    QCOMPARE(f.priceText(locale, false), u"$3.199"_s);
    QCOMPARE(f.quantityText(), u"12.346"_s);
    QCOMPARE(f.amountText(locale), u"$39.50"_s);
    QCOMPARE(f.temperatureText(), u" -5"_s);
    f.temperature = 7;
    QCOMPARE(f.temperatureText(), u"  7"_s);
    QCOMPARE(f.entryDateTimeText(locale), u"11/14/2023 10:13 PM"_s);
    CVCItem t = sampleTrip();
    QCOMPARE(t.tripDistance(), 8.0);
    QCOMPARE(t.endOdometerText(false), u"     10"_s);
    QCOMPARE(t.mileageCostText(locale), u"$2.000"_s);
    QCOMPARE(t.parkingText(locale, false), u"$3.25"_s);
}

void TestCVCItem::json()
{
    const QJsonObject o = cvcItemToJson(sampleTrip());
    const QString expected
        = uR"({"amount":0,"arriveTime":4096,"contact":"","departTime":16,"destination":"X",)"
          uR"("distanceUnit":0,"economy":0,"economyUnit":0,"endOdometer":10,"entryDate":1,)"
          uR"("entryType":2,"fuelMeasure":"","fuelQuantity":0,"iconIndex":19,"invoice":"","listPosition":2,)"
          uR"("newEntryMark":0,"notFull":0,"notes":"","odometer":2,"parking":3.25,"purpose":"Biz",)"
          uR"("reserved1":0,"reserved2":0,"reservedTime":0,"station":"","temperature":0,)"
          uR"("typeText":"Trip","unitPrice":2})"_s;
    QCOMPARE(QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Compact)), expected);
    for (const CVCItem &item : { sampleFuel(), sampleMaintenance(), sampleTrip() })
        QVERIFY(cvcItemFromJson(cvcItemToJson(item)) == item);
    CVCItem late;
    late.entryDate = 0xFFFFFFF0u; // beyond 2038 still a positive number of seconds
    QCOMPARE(cvcItemToJson(late).value(u"entryDate"_s).toInteger(), qint64(0xFFFFFFF0u));
    QCOMPARE(cvcItemFromJson(cvcItemToJson(late)).entryDate, 0xFFFFFFF0u);
}

void TestCVCItem::sharedTexts()
{
    CVCItem a;
    a.station = u"Shell"_s;
    CVCItem b = a;
    // A copy shares the text and keeps it when the original's field changes or goes.
    QCOMPARE(b.station->constData(), a.station->constData());
    a.station = u"BP"_s + a.station;
    QCOMPARE(a.station.text(), u"BPShell"_s);
    QCOMPARE(b.station.text(), u"Shell"_s);
    a = CVCItem();
    QCOMPARE(b.station.text(), u"Shell"_s);
    // Equal texts compare equal whether shared or not; an empty text holds nothing.
    b.notes = QString(u""_s);
    QVERIFY(b.notes.isEmpty() && b.notes == QString() && !(b.station == u"Shel"_s));
    a.station = u"Shel"_s + u'l';
    QVERIFY(a.station == b.station && a.station->constData() != b.station->constData());
    QCOMPARE(u"at "_s + b.station + u'.', u"at Shell."_s);
}

QTEST_GUILESS_MAIN(TestCVCItem)
#include "tst_cvcitem.moc"
