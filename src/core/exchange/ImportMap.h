#pragma once

#include <QString>
#include <QStringList>

#include <array>

// Which file column feeds each import field. 28 slots: 0..23 belong to the fields below,
// 24..27 are kept and stored but feed nothing. A slot holds a column counting from 0, or -1.
class ImportMap
{
public:
    enum Field {
        EntryType,
        Odometer,
        Date,
        Invoice,
        Amount,
        Station,
        FuelQty,
        Measure,
        FuelPrice,
        Economy,
        FuelCost,
        Purpose,
        Destination,
        Contact,
        StartOdo,
        EndOdo,
        Distance,
        DepartDate,
        ArriveDate,
        Duration,
        TollsMaintCost,
        Parking,
        TripCost,
        Notes,
    };
    static constexpr int FieldCount = 24;
    static constexpr int SlotCount = 28;
    static constexpr int None = -1;

    // "EntryType", "Odometer", ... "Tolls & Maint cost", ... "Notes"; empty for a slot without one.
    static QString fieldName(int field);
    static QStringList fieldNames();
    // A field by its name, ignoring case and blanks ("fuel qty", "FuelQty"); -1 when none.
    static int fieldFromName(const QString &name);

    // The map that reads the CSV export's all-columns layout back.
    static QString builtInName() { return QStringLiteral("Tarvane CSV"); }
    static ImportMap builtIn();

    QString name;
    std::array<int, SlotCount> columns;

    ImportMap() { columns.fill(None); }
    explicit ImportMap(const QString &mapName)
        : name(mapName)
    {
        columns.fill(None);
    }

    int column(int slot) const { return slot >= 0 && slot < SlotCount ? columns[size_t(slot)] : None; }
    bool isMapped(int slot) const { return column(slot) >= 0; }
    void assign(int slot, int column);
    void clear(int slot) { assign(slot, None); }

    bool operator==(const ImportMap &other) const = default;
};
