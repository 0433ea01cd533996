// Feeds arbitrary bytes to the reader of other apps' CSV files, writes what it read back out
// fully quoted and checks that reading that gives the same rows. The number and date readers
// get every field as well.
#include "exchange/PeerCsvReader.h"
#include "exchange/PeerText.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

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
    return 0;
}
