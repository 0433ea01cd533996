// Feeds arbitrary bytes to the import's header reader and tokenizer, then checks what a record
// may hold: at most 28 fields of at most 124 characters, never empty, a failure that sticks, and
// a reader that always moves forward.
#include "exchange/CsvHeader.h"
#include "exchange/CsvRecordConverter.h"
#include "exchange/CsvTokenizer.h"
#include "exchange/ImportMap.h"

#include <QBuffer>
#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        abort();
    CsvHeader header;
    CsvHeader::read(&buffer, &header);
    if (header.length < 0 || header.length > qint64(size))
        abort();

    CsvTokenizer tokenizer(&buffer, header.length);
    const CsvRecordConverter converter(ImportMap::builtIn(), CsvConversionSettings());
    CsvRecord record;
    qint64 last = header.length;
    for (;;) {
        const CsvTokenizer::Status status = tokenizer.next(record);
        if (status == CsvTokenizer::Status::End)
            break;
        if (status == CsvTokenizer::Status::Error) {
            if (tokenizer.errorString().isEmpty() || tokenizer.next(record) != CsvTokenizer::Status::Error)
                abort();
            break;
        }
        if (tokenizer.position() <= last || tokenizer.position() > qint64(size))
            abort();
        last = tokenizer.position();
        if (record.count < 1 || record.count > CsvRecord::MaxFields)
            abort();
        for (int i = 0; i < record.count; ++i) {
            const QString &field = record.fields[size_t(i)];
            if (field.isEmpty() || field.size() > CsvTokenizer::FieldLimit)
                abort();
        }
        CVCItem item;
        if (converter.convert(record, &item) && !item.HasOdometer())
            abort();
    }
    return 0;
}
