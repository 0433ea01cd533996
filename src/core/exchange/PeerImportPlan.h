#pragma once

#include <QList>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

#include "PeerImportFiles.h"
#include "PeerLogMerge.h"
#include "dataview/DataViewColumns.h"

class LocaleFormats;
class Reporter;
class VehicleSession;

// What the "Import from another app" screen shows and does: the chosen files read by the app
// that wrote them, merged into the open log in memory for the preview and the counts, and then
// saved in one step. Every text and count of the screen is here; the dialog only shows them.
class PeerImportPlan
{
public:
    PeerImportPlan();

    static QString title() { return QStringLiteral("Import from another app"); }
    static QString fileFilter() { return QStringLiteral("Exported files (*.csv *.txt);;All files (*)"); }
    // The date-order choices, "Auto" first, and the order of each.
    static QStringList dateOrderNames();
    static PeerText::DateOrder dateOrderAt(int index);
    static QString chooseVehicleText() { return QStringLiteral("Choose a vehicle"); }
    static QString noFilesText() { return QStringLiteral("Add the file(s) your other app exported."); }

    // The files, in the order chosen; adding one already chosen does nothing.
    void addFile(const QString &path);
    void clearFiles();
    const QStringList &files() const { return m_files; }
    void setDateOrder(PeerText::DateOrder order) { m_options.dateOrder = order; }
    void setSourceVehicle(const QString &name) { m_options.sourceVehicle = name; }
    QString sourceVehicle() const { return m_options.sourceVehicle; }

    // Reads the files again and merges their entries into the log given; nothing is saved.
    void refresh(const EntryList &log, const PeerTarget &target);

    // "Fuelio backup: 212 fill-ups, 14 costs, units km / litres", or why nothing can be imported.
    QString recognised() const;
    bool failed() const { return !m_run.result.error.isEmpty() || m_files.isEmpty(); }
    // What "Auto" settled on, "dates read as day/month/year"; empty for an order the user chose
    // or while nothing could be read.
    QString dateOrderNote() const;
    // The vehicles of a file that holds several (the screen offers them), else empty.
    QStringList vehicles() const;
    bool vehicleNeeded() const { return m_run.result.vehicleNeeded; }
    // "7 entries to add to Civic; 2 already in the log; 1 row skipped."; empty when nothing can
    // be imported.
    QString summary(const QString &vehicleName) const;
    // The rows skipped and why, one a line.
    QStringList warnings() const;
    bool canImport() const { return !failed() && m_merged.added > 0; }
    int added() const { return m_merged.added; }

    // The preview: the added entries as the History list will show them, at most limit rows.
    static QList<DataViewColumns::Column> previewColumns();
    QList<QStringList> previewRows(const LocaleFormats &locale, int limit) const;

    // The import: the files read and merged again against the session's log, then saved once.
    // progress(step, steps) is called before each step. A log that did not load is never
    // written over. False after the reporter's message.
    bool apply(VehicleSession &session, Reporter &reporter, const std::function<void(int, int)> &progress);
    // "Added 7 entries to Civic; skipped 2 as duplicates, 1 as unusable."
    QString doneText(const QString &vehicleName) const;

    static PeerTarget targetOf(const VehicleSession &session);

private:
    std::vector<std::unique_ptr<PeerImporter>> m_importers;
    QStringList m_files;
    PeerImportOptions m_options;
    PeerImportRun m_run;
    PeerMergeResult m_merged;
};
