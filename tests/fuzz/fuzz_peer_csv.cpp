// Feeds arbitrary bytes to the reader of other apps' CSV files, writes what it read back out
// fully quoted and checks that reading that gives the same rows. The number and date readers
// get every field as well, and every importer reads the bytes as its own file (asked for the
// first of several vehicles when it wants one), merged into a log the way an import would.
#include "exchange/PeerCsvReader.h"
#include "exchange/PeerImporter.h"
#include "exchange/PeerLogMerge.h"
#include "exchange/PeerText.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void importEverywhere(const QByteArray &bytes)
{
    static const auto importers = allPeerImporters();
    const std::vector<PeerFile> files { { QStringLiteral("fuzz.csv"), bytes } };
    PeerTarget target;
    target.costPerMile = 0.5;
    for (const auto &importer : importers) {
        const int confidence = importer->detect(files.front().name, bytes.left(4096));
        if (confidence < 0 || confidence > 100)
            abort();
        PeerImportOptions options;
        PeerImportResult result = importer->read(files, options);
        if (result.vehicleNeeded && !result.vehicles.isEmpty()) {
            options.sourceVehicle = result.vehicles.first();
            result = importer->read(files, options);
        }
        if (!result.error.isEmpty())
            continue;
        const PeerMergeResult merged = PeerLogMerge::merge({}, result.entries, target);
        if (merged.added + merged.unusable != int(result.entries.size())
            || merged.addedAt.size() != size_t(merged.added))
            abort();
        for (size_t i = 1; i < merged.entries.size(); ++i) {
            if (merged.entries[i - 1].odometer > merged.entries[i].odometer)
                abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QChar separator = PeerCsvReader::detectSeparator(bytes);
    const std::vector<PeerCsvRow> rows = PeerCsvReader::parse(bytes, separator);
    const std::vector<PeerCsvRow> again
        = PeerCsvReader::parse(PeerCsvReader::write(rows, separator), separator);
    if (again.size() != rows.size())
        abort();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (again[i].fields != rows[i].fields)
            abort();
        for (const QString &field : rows[i].fields) {
            double value = 0;
            PeerText::parseNumber(field, QChar(), &value);
            PeerText::parseDate(field, PeerText::DateOrder::Auto);
        }
    }
    importEverywhere(bytes);
    return 0;
}
