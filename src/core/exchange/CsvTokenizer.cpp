#include "CsvTokenizer.h"

#include <QIODevice>

using namespace Qt::StringLiterals;

namespace {

enum FieldEnd { EndOfField, EndOfRecord, Failed };

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

// The field as the import stores it: line-end characters, one pair of quotes, blanks and a left-over
// separator removed; nothing left is a single blank.
QString trimmed(const char *raw, qsizetype size)
{
    qsizetype begin = 0;
    qsizetype end = size;
    while (end > begin && (raw[end - 1] == '\r' || raw[end - 1] == '\n'))
        --end;
    if (end > begin && raw[begin] == '"')
        ++begin;
    if (end > begin && raw[end - 1] == '"')
        --end;
    while (begin < end && isBlank(raw[begin]))
        ++begin;
    while (end > begin && isBlank(raw[end - 1]))
        --end;
    if (end - begin >= 2 && raw[end - 2] == '"' && raw[end - 1] == ',')
        end -= 2;
    if (end > begin && raw[end - 1] == ',')
        --end;
    if (end == begin)
        return u" "_s;
    return QString::fromLatin1(raw + begin, qMin<qsizetype>(end - begin, CsvTokenizer::FieldCut));
}

} // namespace

QString CsvRecord::text(int slot) const
{
    if (slot < 0 || slot >= count)
        return QString();
    const QString &field = fields[size_t(slot)];
    return field == u" "_s ? QString() : field;
}

QString CsvTokenizer::fieldTooLongMessage()
{
    return u"Error 3221:\nCSV data format bad,\nPlease refer to manual under Importing CSV files."_s;
}

QString CsvTokenizer::tooManyFieldsMessage()
{
    return u"Error!\nToo many fields in CSV line.\nThis error is reported when the data can not be imported "
           "properly.\nPlease refer to the manual under importing data for a solution to this error."_s;
}

CsvTokenizer::CsvTokenizer(QIODevice *device, qint64 startOffset, int firstLine)
    : m_device(device)
    , m_recordStart(startOffset)
    , m_line(firstLine)
    , m_nextLine(firstLine)
{ }

QString CsvTokenizer::errorString() const
{
    switch (m_failure) {
    case Failure::None:
        return QString();
    case Failure::FieldTooLong:
        return fieldTooLongMessage();
    case Failure::TooManyFields:
        return tooManyFieldsMessage();
    case Failure::ReadError:
        break;
    }
    return u"ERROR 401: Error opening CSV file"_s;
}

bool CsvTokenizer::fill()
{
    if (m_eof)
        return false;
    const qint64 n = m_device->read(m_chunk, ChunkSize);
    if (n <= 0) {
        m_eof = true;
        if (n < 0)
            m_failure = Failure::ReadError;
        return false;
    }
    m_chunkOffset += m_chunkSize;
    m_chunkSize = n;
    m_chunkPos = 0;
    return true;
}

int CsvTokenizer::get()
{
    if (m_chunkPos == m_chunkSize && !fill())
        return -1;
    ++m_consumed;
    return static_cast<unsigned char>(m_chunk[m_chunkPos++]);
}

int CsvTokenizer::peek()
{
    if (m_chunkPos == m_chunkSize && !fill())
        return -1;
    return static_cast<unsigned char>(m_chunk[m_chunkPos]);
}

CsvTokenizer::Status CsvTokenizer::fail(Failure failure)
{
    if (m_failure == Failure::None)
        m_failure = failure;
    return Status::Error;
}

CsvTokenizer::Status CsvTokenizer::next(CsvRecord &record)
{
    if (m_failure != Failure::None)
        return Status::Error;
    m_consumed = 0;
    if (m_recordStart >= m_chunkOffset && m_recordStart < m_chunkOffset + m_chunkSize) {
        // The record starts inside the chunk read last: the bytes from its offset are already here.
        m_chunkPos = m_recordStart - m_chunkOffset;
    } else {
        if (!m_device || !m_device->seek(m_recordStart))
            return fail(Failure::ReadError);
        m_eof = false;
        m_chunkSize = 0;
        m_chunkPos = 0;
        m_chunkOffset = m_recordStart;
        if (!fill())
            return m_failure == Failure::None ? Status::End : Status::Error;
    }

    m_line = m_nextLine;
    record.count = 0;
    for (QString &field : record.fields)
        field = u" "_s;

    for (;;) {
        qsizetype size = 0;
        const bool quoted = peek() == '"';
        FieldEnd end = EndOfField;
        for (;;) {
            const int c = get();
            if (c < 0 || c == '\n') {
                end = EndOfRecord;
                break;
            }
            if (c == '\r') {
                if (peek() == '\n')
                    get();
                end = EndOfRecord;
                break;
            }
            if (quoted ? c == '"' && peek() == ',' : c == ',') {
                if (quoted)
                    get();
                break;
            }
            m_raw[size++] = char(c);
            if (size > FieldLimit) {
                end = Failed;
                break;
            }
        }
        if (m_failure != Failure::None)
            return Status::Error;
        if (end == Failed)
            return fail(Failure::FieldTooLong);
        if (record.count == CsvRecord::MaxFields)
            return fail(Failure::TooManyFields);
        record.fields[size_t(record.count++)] = trimmed(m_raw, size);
        if (end == EndOfRecord)
            break;
    }
    m_recordStart += m_consumed;
    ++m_nextLine;
    return Status::Record;
}
