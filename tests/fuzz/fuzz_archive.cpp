// Feeds arbitrary bytes to the log reader: it must fail cleanly or read something that
// writes and reads back to the same bytes.
#include <QBuffer>
#include <QByteArray>

#include <cstdint>
#include <cstdlib>

#include "log/LogArchive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    EntryList entries;
    LogArchive archive;
    if (archive.read(&buffer, entries, QStringLiteral("fuzz.vcb"))) {
        // Whatever was read must read back the same after writing (compared as bytes, as a
        // NaN field never equals itself).
        const QByteArray written = LogArchive::encode(entries);
        EntryList again;
        LogArchive second;
        if (!second.decode(written, again, QStringLiteral("again.vcb"))
            || LogArchive::encode(again) != written)
            std::abort();
    } else if (archive.errorString().isEmpty()) {
        std::abort();
    }
    return 0;
}
