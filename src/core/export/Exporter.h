#pragma once

#include <QString>

#include <memory>
#include <vector>

#include "dataview/DataViewFilter.h"
#include "log/CVCItem.h"

class Clock;
class LocaleFormats;
class QIODevice;
class Reporter;

// The entries an export writes, already chosen by the caller's filters, in log order.
using EntrySelection = std::vector<const CVCItem *>;

// What the writers read besides the entries: the CSV's layout follows the History screen's
// filter, and the workbook needs its period to be "list by date".
struct ExportData
{
    EntrySelection entries;
    QString vehicleName; // empty: "UnKnown"
    double tripRate = 0.0; // money per distance unit (the profile's CostPerMile)
    double lastOdometer = 0.0; // of the load-time scan
    DataViewFilter::Type typeFilter = DataViewFilter::AllTypes;
    DataViewFilter::Period periodFilter = DataViewFilter::AllPeriods;
    const LocaleFormats *locale = nullptr;
    const Clock *clock = nullptr;

    // The vehicle's name as the file is named: "UnKnown" when it has none.
    QString effectiveName() const;
};

// One export format: a writer onto any device, an atomic file save, and the messages the
// program shows around a run. Like the log archive, write() keeps errorString() on failure.
class Exporter
{
public:
    enum class Format { Csv, Html, Xml };

    explicit Exporter(const ExportData &data)
        : m_data(data)
    { }
    virtual ~Exporter() = default;

    virtual QString name() const = 0; // "CSV", "HTML", "XML"
    virtual QString suffix() const = 0; // ".csv", ".htm", ".xml"

    virtual bool write(QIODevice *device) = 0;
    // Atomic: a failed export leaves no half file and the old file as it was.
    bool write(const QString &fileName);
    QString errorString() const { return m_error; }

    // Asked before anything else (a folder chooser included); false stops the export silently
    // after whatever message the format shows.
    virtual bool confirm(Reporter &reporter) const;
    // The message when the file cannot be written, and the one after success.
    virtual QString createErrorMessage() const = 0;
    virtual QString successMessage(const QString &filePath) const = 0;

    // The vehicle's name as the file is named, and "<folder><name><suffix>" (the folder ends with
    // a separator).
    QString baseName() const { return m_data.effectiveName(); }
    QString filePath(const QString &folder) const;

protected:
    // Ends a writer's run: flushes the stream and sets the error text when a write failed.
    bool finish(class ExportStream &stream);
    const ExportData &m_data;
    QString m_error;
};

std::unique_ptr<Exporter> createExporter(Exporter::Format format, const ExportData &data);

namespace ExportRun {
inline QString pathNotSetMessage()
{
    return QStringLiteral("Export Path not set\nExport Aborted!");
}
// Writes the export into folder (an empty folder means the user chose none) and shows the
// format's messages. A vehicle name that cannot be a file name is refused before anything is
// written. Returns true when the file was written.
bool toFolder(Exporter &exporter, const QString &folder, Reporter &reporter);
} // namespace ExportRun
