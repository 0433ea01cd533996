#pragma once

#include <QString>
#include <QStringList>

#include "ImportMap.h"
#include "platform/Preferences.h"

class SettingsStore;

// The import's preferences: the saved maps (a section per map with F0..F27 = column + 1, 0 for
// none) and, in ListAttributes, CSVName, Map1..MapN, DefaultMap, LastMap and the lists' column
// widths. Every value is read with a default and written at once.
class ImportMapStore
{
public:
    static QString csvNameKey() { return QStringLiteral("CSVName"); }
    static QString defaultMapKey() { return QStringLiteral("DefaultMap"); }
    static QString lastMapKey() { return QStringLiteral("LastMap"); }
    // "Map%d", counting from 1.
    static QString mapKey(int number);
    // The column widths of the field list ("Field", column) and of the "CSV Data" list.
    static QString fieldColumnWidthKey(int column);
    static QString dataColumnWidthKey() { return QStringLiteral("D1Number0"); }

    explicit ImportMapStore(SettingsStore &store);

    // DefaultMap, "DefaultMap" when unset.
    QString defaultMapName() const;
    // LastMap, the default map when unset.
    QString lastMapName() const;
    // Map1, Map2, ... up to the first one missing.
    QStringList savedNames() const;
    // The map selector: the default map, the saved maps, then the built-in "Tarvane CSV".
    QStringList selectorNames() const;

    // The stored slots; the built-in map until a map of its name has been stored.
    ImportMap load(const QString &name) const;
    // LastMap and the 28 slots of the map's section.
    bool store(const ImportMap &map);
    // "Save Map": a name not yet in the selector is added as the next MapN first.
    bool save(const ImportMap &map);
    // Why a name can't name a map (it would clash with a fixed section or nest), or empty.
    static QString nameError(const QString &name);

    QString csvName() const;
    bool setCsvName(const QString &path);
    int columnWidth(const QString &key, int defaultWidth) const;
    bool setColumnWidth(const QString &key, int width);

private:
    SettingsStore &m_store;
    Preferences m_preferences;
};
