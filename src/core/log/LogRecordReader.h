#pragma once

#include <QString>
#include <QtEndian>

#include <cstring>
#include <vector>

#include "CVCItem.h"

// Texts repeat from record to record ("Fuel", "Gallons", the same few stations), so one load
// keeps a table of the short ones it has seen and hands out shared copies: one allocation per
// distinct text instead of one per field. The table is bounded, so a log of unique texts costs
// no more than before.
class LogTextTable
{
public:
    static constexpr qsizetype MaxLength = 48;

    // Sized to the input: a small log holds few texts, and making and freeing a table of the full
    // size would cost more than reading the whole log.
    explicit LogTextTable(qsizetype inputBytes);

    // The shared text for these UTF-16 code units (little-endian), made on first sight.
    LogText get(const uchar *units, qsizetype length);

    static LogText fromUnits(const uchar *units, qsizetype length);

    // The copies get() handed out are counted in one step per text (instead of one atomic
    // increment per field); this must run before any of them is destroyed.
    void countCopies();
    ~LogTextTable() { countCopies(); }

private:
    // Half full at most, so a probe ends quickly at an empty slot.
    static constexpr size_t Slots = 8192;
    static constexpr size_t MinSlots = 64;
    size_t m_slotCount;
    std::vector<LogText> m_slots; // made on the first text, so an empty log costs nothing
    std::vector<quint32> m_uncounted; // per slot, copies handed out but not yet counted
    size_t m_used = 0;
};

// Reads a log's records straight from the bytes in memory; every read checks what is left
// first. The first failure sticks: later reads return zeros and the message names that first
// problem. Where a whole run of fields is known to fit, it is read with one check.
class LogRecordReader
{
public:
    LogRecordReader(const uchar *data, qsizetype size)
        : m_begin(data)
        , m_p(data)
        , m_end(data + size)
        , m_texts(size)
    { }

    bool failed() const { return !m_error.isEmpty(); }
    const QString &error() const { return m_error; }
    qint64 offset() const { return m_p - m_begin; }
    qint64 left() const { return m_end - m_p; }
    const uchar *position() const { return m_p; }
    // See LogTextTable::countCopies(): before any text read is destroyed.
    void countTexts() { m_texts.countCopies(); }

    void fail(const QString &what)
    {
        if (m_error.isEmpty())
            m_error = what;
    }
    bool need(qint64 bytes)
    {
        if (failed())
            return false;
        if (left() >= bytes) [[likely]]
            return true;
        failShort(bytes);
        return false;
    }

    quint8 u8() { return need(1) ? *m_p++ : 0; }
    quint16 u16() { return need(2) ? take<quint16>() : 0; }
    quint32 u32() { return need(4) ? take<quint32>() : 0; }
    qint32 i32() { return qint32(u32()); }
    double f64() { return need(8) ? takeDouble() : 0.0; }
    bool bytesEqual(const char *text, qint64 length);
    quint32 count()
    {
        const quint16 word = u16();
        return word == 0xFFFF ? u32() : word;
    }

    LogText string()
    {
        // Nearly every text is written in the UTF-16 form with a one-byte length: 0xFF 0xFFFE,
        // the length, the code units. That form is read here with one check; any other goes the
        // long way, which also names what is wrong.
        if (!failed() && left() >= 4 && m_p[0] == 0xFF && m_p[1] == 0xFE && m_p[2] == 0xFF && m_p[3] < 0xFF
            && left() - 4 >= 2 * qint64(m_p[3])) [[likely]] {
            const qsizetype length = m_p[3];
            const uchar *units = m_p + 4;
            m_p += 4 + 2 * length;
            if (length == 0)
                return LogText();
            return length <= LogTextTable::MaxLength ? m_texts.get(units, length)
                                                     : LogTextTable::fromUnits(units, length);
        }
        return anyString();
    }

    // Fixed fields read without checks: only after need() said they all fit.
    struct Unchecked
    {
        LogRecordReader &r;
        quint32 u32() { return r.take<quint32>(); }
        qint32 i32() { return qint32(r.take<quint32>()); }
        double f64() { return r.takeDouble(); }
    };

private:
    template<typename T> T take()
    {
        const T v = qFromLittleEndian<T>(m_p);
        m_p += sizeof(T);
        return v;
    }
    double takeDouble()
    {
        const quint64 bits = take<quint64>();
        double v;
        std::memcpy(&v, &bits, sizeof v);
        return v;
    }
    void failShort(qint64 bytes);
    LogText anyString();
    qint64 lengthField();

    const uchar *m_begin;
    const uchar *m_p;
    const uchar *m_end;
    QString m_error;
    LogTextTable m_texts;
};

// One record's fields in the file's order.
void readLogRecord(LogRecordReader &r, CVCItem &item);
