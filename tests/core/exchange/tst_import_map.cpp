#include <QtTest>

#include "exchange/ImportMap.h"
#include "exchange/ImportMapStore.h"
#include "platform/SettingsStore.h"

using namespace Qt::StringLiterals;

namespace {

// A key's values as "name=value" in the order they were first written.
QStringList dump(const MemorySettingsStore &store, const QString &key)
{
    QStringList out;
    for (const QString &name : store.writeOrder(key))
        out.append(name + u'=' + store.value(key, name).toString());
    return out;
}

QStringList slotKeys(const QList<int> &values)
{
    QStringList out;
    for (int i = 0; i < values.size(); ++i)
        out.append(u"F%1=%2"_s.arg(i).arg(values[i]));
    return out;
}

} // namespace

class TestImportMap : public QObject
{
    Q_OBJECT

private slots:
    void fieldNames()
    {
        QCOMPARE(
            ImportMap::fieldNames().join(u','),
            u"EntryType,Odometer,Date,Invoice,Amount,Station,Fuel Qty,Measure,Fuel Price,Economy,Fuel Cost,"
            "Purpose,Destination,Contact,Start Odo,End Odo,Distance,Depart Date,Arrive Date,Duration,"
            "Tolls & Maint cost,Parking,Trip Cost,Notes"_s);
        QCOMPARE(ImportMap::fieldFromName(u"fuel qty"_s), int(ImportMap::FuelQty));
        QCOMPARE(ImportMap::fieldFromName(u"TOLLS&MAINTCOST"_s), int(ImportMap::TollsMaintCost));
        QCOMPARE(ImportMap::fieldFromName(u"Fuel"_s), -1);
    }

    void savingWritesTheKeys()
    {
        MemorySettingsStore memory;
        ImportMapStore store(memory);
        QCOMPARE(store.lastMapName(), u"DefaultMap"_s);
        QCOMPARE(store.selectorNames(), QStringList({ u"DefaultMap"_s, u"Tarvane CSV"_s }));

        ImportMap fuel(u"Fuel sheet"_s);
        fuel.assign(ImportMap::Odometer, 0);
        fuel.assign(ImportMap::Date, 2);
        fuel.assign(ImportMap::FuelQty, 3);
        fuel.assign(26, 5); // a spare slot is kept too
        QVERIFY(store.save(fuel));
        ImportMap trips(u"Trips"_s);
        trips.assign(ImportMap::Odometer, 1);
        QVERIFY(store.save(trips));
        trips.assign(ImportMap::Notes, 4);
        QVERIFY(store.save(trips)); // known name: stored again, not listed twice

        QList<int> expected(28, 0);
        expected[1] = 1;
        expected[2] = 3;
        expected[6] = 4;
        expected[26] = 6;
        QCOMPARE(dump(memory, u"Fuel sheet"_s), slotKeys(expected));
        QCOMPARE(dump(memory, u"ListAttributes"_s),
                 QStringList({ u"Map1=Fuel sheet"_s, u"LastMap=Trips"_s, u"Map2=Trips"_s }));
        QCOMPARE(memory.value(u"Trips"_s, u"F23"_s).toInt(), 5);

        QCOMPARE(store.selectorNames(),
                 QStringList({ u"DefaultMap"_s, u"Fuel sheet"_s, u"Trips"_s, u"Tarvane CSV"_s }));
        QCOMPARE(store.lastMapName(), u"Trips"_s);
        QCOMPARE(store.load(u"Fuel sheet"_s), fuel);
        QCOMPARE(store.load(u"Trips"_s), trips);
    }

    void readingKeysWrittenElsewhere()
    {
        MemorySettingsStore memory;
        memory.setValue(u"ListAttributes"_s, u"DefaultMap"_s, u"Mine"_s);
        memory.setValue(u"ListAttributes"_s, u"Map1"_s, u"Mine"_s);
        memory.setValue(u"ListAttributes"_s, u"Map2"_s, u"Other"_s);
        memory.setValue(u"ListAttributes"_s, u"Map4"_s, u"Lost"_s); // after a gap: not listed
        memory.setValue(u"Mine"_s, u"F1"_s, 3);
        memory.setValue(u"Mine"_s, u"F23"_s, u"12"_s); // as an INI-backed store returns it
        memory.setValue(u"Mine"_s, u"F2"_s, u"x"_s); // not a number: not assigned
        ImportMapStore store(memory);
        QCOMPARE(store.lastMapName(), u"Mine"_s);
        QCOMPARE(store.selectorNames(), QStringList({ u"Mine"_s, u"Other"_s, u"Tarvane CSV"_s }));
        const ImportMap map = store.load(u"Mine"_s);
        QCOMPARE(map.column(ImportMap::Odometer), 2);
        QCOMPARE(map.column(ImportMap::Notes), 11);
        QCOMPARE(map.column(ImportMap::Date), -1);

        ImportMap added(u"Third"_s);
        QVERIFY(store.save(added));
        QCOMPARE(memory.value(u"ListAttributes"_s, u"Map3"_s).toString(), u"Third"_s);
    }

    void builtInMap()
    {
        MemorySettingsStore memory;
        ImportMapStore store(memory);
        const ImportMap map = store.load(u"Tarvane CSV"_s);
        QCOMPARE(map, ImportMap::builtIn());
        // The export's 23 columns, in order, with no measure column.
        const QList<int> expected
            = { 0, 1, 2, 3, 4, 5, 6, -1, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22 };
        QList<int> columns;
        for (int field = 0; field < ImportMap::SlotCount; ++field)
            columns.append(map.column(field));
        QCOMPARE(columns, expected + QList<int>(4, -1));
        // Once stored under its name, the user's version wins.
        ImportMap changed = map;
        changed.clear(ImportMap::Notes);
        QVERIFY(store.save(changed));
        QCOMPARE(store.load(u"Tarvane CSV"_s).column(ImportMap::Notes), -1);
        QVERIFY(store.savedNames().isEmpty());
    }

    void refusedNamesAndFailingStore()
    {
        MemorySettingsStore memory;
        ImportMapStore store(memory);
        for (const QString &name : { u""_s, u"a/b"_s, u"listattributes"_s, u"Today"_s, u" x"_s })
            QVERIFY2(!store.save(ImportMap(name)), qPrintable(name));
        QVERIFY(memory.valueNames(u"ListAttributes"_s).isEmpty());
        memory.setFailWrites(true);
        QVERIFY(!store.save(ImportMap(u"Fine"_s)));
    }
};

QTEST_GUILESS_MAIN(TestImportMap)
#include "tst_import_map.moc"
