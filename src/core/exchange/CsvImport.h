#pragma once

#include <QFile>
#include <QString>

#include <memory>
#include <optional>

#include "CsvHeader.h"
#include "CsvRecordConverter.h"
#include "CsvTokenizer.h"
#include "ImportMap.h"
#include "log/CVCItem.h"

class Reporter;
class VehicleLog;

// One run of "IMPORT": the file's records are read and converted in steps (so a screen can
// show progress and stay responsive), then placed into the log by odometer and the log is saved
// once. A line that stops the import keeps what was converted before it.
class CsvImport
{
public:
    static QString odometerNotMappedMessage();
    // "Import Complete!\nImported %d lines\nSkipped %d Lines", with the lines counted minus 2.
    static QString completeMessage(int lines, int skipped);
    // The group's captions before, during and after an import.
    static QString mapsCaption() { return QStringLiteral("CSV Maps"); }
    static QString importingCaption() { return QStringLiteral("Importing Data"); }
    static QString completeCaption() { return QStringLiteral("Import Compete."); }

    CsvImport(const ImportMap &map, const CsvConversionSettings &settings);
    ~CsvImport();

    // Checks the map, opens the file and reads its header; false after the message.
    bool begin(const QString &fileName, Reporter &reporter);
    // The same over an open device, which must stay open until finish().
    bool begin(QIODevice *device, Reporter &reporter);
    // Reads at most `records` records; false once the file is done or a line stopped it.
    bool step(int records);
    // 0..100 by the bytes read.
    int percentDone() const;

    // Reports a line that stopped the import, places the entries into the log by odometer,
    // computes the missing economies, saves the log once ("Save ERROR 205!..." on failure) and
    // shows the counts. Nothing is saved when nothing was converted. False when the import
    // stopped early or the save failed.
    bool finish(VehicleLog &log, const QString &dataFolder, const QString &vin, Reporter &reporter);

    // The entries converted so far, in file order.
    const EntryList &converted() const { return m_converted; }
    int lines() const { return m_lines; }
    int skipped() const { return m_skipped; }
    // The tokenizer's failure, None while the file reads well.
    CsvTokenizer::Failure failure() const;
    int failedLine() const;

    // Imported entries placed among the log's by odometer: an entry goes after every entry of the
    // log at or below its reading, and entries of equal readings keep their file order.
    static EntryList merge(const EntryList &log, EntryList imported);
    // Gives every fill-up marked EconomyToCompute the economy the fuel form would have computed
    // from the full fill-up before it in the list.
    static void computeEconomies(EntryList &entries, const CsvConversionSettings &settings);

private:
    CsvRecordConverter m_converter;
    CsvConversionSettings m_settings;
    bool m_odometerMapped;
    std::unique_ptr<QFile> m_file;
    QIODevice *m_device = nullptr;
    std::optional<CsvTokenizer> m_tokenizer;
    CsvRecord m_record;
    EntryList m_converted;
    int m_lines = 0;
    int m_skipped = 0;
    bool m_done = false;
};
