#pragma once

#include <QString>

#include "log/CVCItem.h"
#include "platform/FileFingerprint.h"

class Reporter;

// The History screen's own copy of a vehicle's log and every change the screen makes to it.
// Each change is saved at once ("Save ERROR 205!\nUnable save database" when it can't be), so
// nothing is ever held unsaved. A file that failed to load is never saved over.
class DataViewLog
{
public:
    static QString saveErrorText() { return QStringLiteral("Save ERROR 205!\nUnable save database"); }
    static QString deleteQuestion() { return QStringLiteral("DELETE! ARE YOU SURE?"); }
    static QString deleteAllQuestion() { return QStringLiteral("DELETE ALL DATA! ARE YOU SURE?"); }
    // Asked by "Insert Fuel or Repair" in the ALL view.
    static QString fuelQuestion() { return QStringLiteral("Is this a Fuel Entry?\nNo=Maintenance entry."); }
    static QString fuelQuestionTitle() { return QStringLiteral("Type of data"); }

    // The record an insert opens its form on: the type name ("Fuel", "Maintenance", "Trip") and
    // code, the vehicle's odometer and today's date, everything else empty.
    static CVCItem newRecord(CVCItem::EntryType type, double odometer, quint32 now);

    // dataFolder ends with a separator; an empty VIN is "UnKnown".
    DataViewLog(const QString &dataFolder, const QString &vin);

    QString databasePath() const; // <folder><VIN>.vcb
    QString backupPath() const; // <folder><VIN>.bak, the file Vehicle Restore reads

    // Reads the database file. "ERROR 100! Unable to open database %s" when it can't be opened,
    // the reader's message when it is damaged; the list is then empty and saving is refused.
    bool load(Reporter &reporter);
    bool loaded() const { return m_loaded; }
    // Writes the list over the existing database file (never creating one), holding its lock.
    // Refused when another program changed the file since it was read: its entries are not ours
    // to drop.
    bool save(Reporter &reporter);
    // Another program changed the file since this list was read or written.
    bool changedOnDisk() const;
    // Reads the file again when another program changed it; true when it did.
    bool reloadIfChanged(Reporter &reporter);

    const EntryList &entries() const { return m_entries; }
    // For tests and tools that build a list in memory.
    void setEntries(EntryList entries)
    {
        m_entries = std::move(entries);
        m_loaded = true;
        m_disk = FileFingerprint();
    }

    // Where the insertion rule puts a record with this odometer: walking from the first entry,
    // before the first entry that is not the last one and whose odometer is not lower; after
    // the last entry when none is found, the last entry itself never being compared. A single
    // entry takes the record before it when its odometer is not lower, and otherwise the
    // record is discarded (-1). An empty list also gives -1: the screen inserts only into a log.
    static int insertionPoint(const EntryList &entries, double odometer);

    // Places the record by the insertion rule and saves. Returns its position, -1 when the
    // rule discarded it (nothing changes then) or the save failed.
    int insert(const CVCItem &item, Reporter &reporter);
    // Puts an edited record back at its position and saves.
    bool replace(int position, const CVCItem &item, Reporter &reporter);
    // Asks "DELETE! ARE YOU SURE?"; on Yes removes the entry and saves.
    bool remove(int position, Reporter &reporter);
    // Asks "DELETE ALL DATA! ARE YOU SURE?"; on Yes writes the whole list to the backup file,
    // then empties the list and saves. A backup that can't be written stops it before anything
    // is deleted.
    bool removeAll(Reporter &reporter);
    // "Reconcile Data": recomputes the log in the vehicle's units and saves.
    bool reconcile(int distanceUnit, int economyUnit, Reporter &reporter);

private:
    QString m_folder;
    QString m_vin;
    EntryList m_entries;
    bool m_loaded = false;
    FileFingerprint m_disk;
};
