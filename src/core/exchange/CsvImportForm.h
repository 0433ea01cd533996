#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "ImportMap.h"
#include "ImportMapStore.h"

class Reporter;
class SettingsStore;

// The IMPORT screen without its widgets: the chosen file and its column titles, the map being
// built, the saved maps, and the rules of assigning a file column to a field.
class CsvImportForm
{
public:
    static QString title() { return QStringLiteral("IMPORT"); }
    // The field list's row colour of a mapped field: red 200, green 255, blue 200.
    static constexpr int MappedRed = 200, MappedGreen = 255, MappedBlue = 200;

    struct DataRow
    {
        int column = 0; // counting from 0
        QString title;
    };

    // Opens on the last map used and, when it still reads, the file chosen last.
    CsvImportForm(SettingsStore &preferences, Reporter &reporter);

    // "Browse" confirmed a file: it is remembered (CSVName) and its first line read; a file that
    // can't be read or has no columns leaves IMPORT disabled, after the message.
    void chooseFile(const QString &path);
    // The map selector chose a saved map.
    void selectMap(const QString &name);
    // "Save Map" with the name the user typed; false after a message when it can't be saved.
    bool saveMap(const QString &name);

    // Assign or clear: a field already fed by the column (or any field when no column is chosen)
    // is cleared, any other is assigned the column.
    void toggle(int field, int column);
    // What toggle() would do: true when it would clear.
    bool wouldClear(int field, int column) const;

    QString fileName() const { return m_fileName; }
    bool importEnabled() const { return m_importEnabled; }
    const ImportMap &map() const { return m_map; }
    QStringList mapNames() const { return m_store.selectorNames(); }
    // The rows of the "CSV Data" list: the columns that have a title.
    QList<DataRow> dataRows() const;
    // The field list's second column: "3: Odometer", or "Column 3" for a column without a title
    // in the file (or with no file read), empty when the field is not mapped.
    QString assignmentText(int field) const;
    ImportMapStore &store() { return m_store; }

private:
    ImportMapStore m_store;
    Reporter &m_reporter;
    QString m_fileName;
    QStringList m_titles;
    ImportMap m_map;
    bool m_importEnabled = false;
};
