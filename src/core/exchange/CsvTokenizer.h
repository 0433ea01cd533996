#pragma once

#include <QByteArray>
#include <QString>

#include <array>

class QIODevice;

// One line of an import file: at most 28 field texts, each at most 254 characters. Slots not
// filled by the line hold " ", as an empty field does.
struct CsvRecord
{
    static constexpr int MaxFields = 28;
    std::array<QString, MaxFields> fields;
    int count = 0;

    // The field of a slot with its blank filler removed; empty for a slot beyond the line.
    QString text(int slot) const;
};

// A pull reader of the records of a CSV file, from a start offset (the header's length). Each
// record is read from its own offset in chunks of at most 512 bytes, as 8-bit text; a record that
// begins inside the chunk read last goes on from there instead of reading those bytes again.
//
// A field that starts with a double quote ends at a quote followed by a comma, any other at a
// comma; a line end ("\r\n", "\n" or "\r") ends the field and the record. The first failure
// sticks: later calls return Error again, and errorString() and line() say what and where.
class CsvTokenizer
{
public:
    static constexpr int ChunkSize = 512;
    // Characters a field may hold between its separators; one more stops the import.
    static constexpr int FieldLimit = 124;
    static constexpr int FieldCut = 254;

    enum class Status { Record, End, Error };
    enum class Failure { None, FieldTooLong, TooManyFields, ReadError };

    static QString fieldTooLongMessage();
    static QString tooManyFieldsMessage();

    // firstLine is the file's line number of the record at startOffset.
    CsvTokenizer(QIODevice *device, qint64 startOffset, int firstLine = 2);

    Status next(CsvRecord &record);

    Failure failure() const { return m_failure; }
    // The fixed message of the failure, empty while there is none.
    QString errorString() const;
    // The file's line of the record last returned, or of the one that failed.
    int line() const { return m_line; }
    // The offset where the next record starts.
    qint64 position() const { return m_recordStart; }

private:
    int get();
    int peek();
    bool fill();
    Status fail(Failure failure);

    QIODevice *m_device;
    qint64 m_recordStart;
    int m_line;
    int m_nextLine;
    Failure m_failure = Failure::None;
    char m_chunk[ChunkSize];
    qint64 m_chunkOffset = 0; // the file offset of the chunk's first byte
    qint64 m_chunkSize = 0;
    qint64 m_chunkPos = 0;
    qint64 m_consumed = 0; // bytes of the current record taken so far
    bool m_eof = false;
    char m_raw[FieldLimit + 1];
};
