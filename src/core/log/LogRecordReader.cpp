#include "LogRecordReader.h"

#include <QtMath>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A short text's slot in the table. Inline and simple: texts are a few words long and the table
// bounds its probes, so a poor spread costs sharing, never time.
size_t hashUnits(const uchar *p, size_t bytes)
{
    const auto load = [](const uchar *at, size_t size) {
        quint64 v = 0;
        std::memcpy(&v, at, size);
        return v;
    };
    const auto mix = [](quint64 h, quint64 v) {
        h = (h ^ v) * 0xFF51AFD7ED558CCDull;
        return h ^ (h >> 29);
    };
    quint64 h = quint64(bytes) * 0x9E3779B97F4A7C15ull;
    // Whole words only, the last one overlapping the one before: no byte-by-byte tail. A text has
    // at least one code unit, so two or more bytes.
    if (bytes >= 8) {
        const uchar *last = p + bytes - 8;
        for (; p < last; p += 8)
            h = mix(h, load(p, 8));
        h = mix(h, load(last, 8));
    } else if (bytes >= 4) {
        h = mix(h, load(p, 4) | load(p + bytes - 4, 4) << 32);
    } else {
        h = mix(h, load(p, 2));
    }
    h *= 0xC4CEB9FE1A85EC53ull;
    return size_t(h ^ (h >> 32));
}

// A text not found within this many slots is made on its own: a file crafted so that its texts
// collide costs a little sharing instead of a long search for every field.
constexpr int MaxProbes = 16;

} // namespace

LogTextTable::LogTextTable(qsizetype inputBytes)
    : m_slotCount(std::clamp<size_t>(size_t(qNextPowerOfTwo(quint64(inputBytes / 16))), MinSlots, Slots))
{ }

LogText LogTextTable::get(const uchar *units, qsizetype length)
{
    if (m_slots.empty()) {
        m_slots.resize(m_slotCount);
        m_uncounted.resize(m_slotCount);
    }
    const size_t bytes = size_t(length) * 2;
    size_t slot = hashUnits(units, bytes) & (m_slotCount - 1);
    for (int probe = 0;; ++probe) {
        if (probe == MaxProbes)
            return fromUnits(units, length);
        const LogText &s = m_slots[slot];
        if (s.isEmpty())
            break;
        if (s.size() == length && std::memcmp(s->constData(), units, bytes) == 0) {
            ++m_uncounted[slot];
            return s.uncountedCopy();
        }
        slot = (slot + 1) & (m_slotCount - 1);
    }
    LogText made = fromUnits(units, length);
    if (m_used < m_slotCount / 2) {
        m_slots[slot] = made;
        ++m_used;
    }
    return made;
}

void LogTextTable::countCopies()
{
    for (size_t slot = 0; slot < m_uncounted.size(); ++slot) {
        if (m_uncounted[slot] != 0)
            m_slots[slot].countCopies(int(m_uncounted[slot]));
        m_uncounted[slot] = 0;
    }
}

LogText LogTextTable::fromUnits(const uchar *units, qsizetype length)
{
    QString s(length, Qt::Uninitialized);
    char16_t *dst = reinterpret_cast<char16_t *>(s.data());
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    std::memcpy(dst, units, size_t(length) * 2);
#else
    for (qsizetype i = 0; i < length; ++i)
        dst[i] = qFromLittleEndian<quint16>(units + 2 * i);
#endif
    return LogText(std::move(s));
}

void LogRecordReader::failShort(qint64 bytes)
{
    fail(u"the file ends too early (at byte %1, %2 more bytes needed)"_s.arg(offset()).arg(bytes - left()));
}

bool LogRecordReader::bytesEqual(const char *text, qint64 length)
{
    if (!need(length))
        return false;
    const bool equal = std::memcmp(m_p, text, size_t(length)) == 0;
    m_p += length;
    return equal;
}

namespace {
constexpr qint64 Marker = -1;
}

// One of the three length forms, or Marker for the UTF-16 marker.
qint64 LogRecordReader::lengthField()
{
    const quint8 b = u8();
    if (b < 0xFF)
        return b;
    const quint16 w = u16();
    if (w == 0xFFFE)
        return Marker;
    if (w < 0xFFFF)
        return w;
    return u32();
}

LogText LogRecordReader::anyString()
{
    const qint64 at = offset();
    qint64 length = lengthField();
    const bool unicode = length == Marker;
    if (unicode) {
        // 0xFF 0xFFFE announces UTF-16 text; the real length follows it.
        length = lengthField();
        if (length == Marker) {
            fail(u"a text at byte %1 has a repeated marker"_s.arg(at));
            return LogText();
        }
    }
    if (failed())
        return LogText();
    const qint64 bytes = unicode ? length * 2 : length;
    if (left() < bytes) {
        fail(u"a text at byte %1 claims %2 characters, more than the %3 bytes left"_s.arg(at).arg(length).arg(
            left()));
        return LogText();
    }
    if (length == 0)
        return LogText();
    LogText s;
    if (!unicode)
        s = QString::fromLatin1(reinterpret_cast<const char *>(m_p), qsizetype(length));
    else if (length <= LogTextTable::MaxLength)
        s = m_texts.get(m_p, qsizetype(length));
    else
        s = LogTextTable::fromUnits(m_p, qsizetype(length));
    m_p += bytes;
    return s;
}

namespace {

// The fixed fields before and after the texts, from either source: checked field by field (so a
// cut names its exact byte) or unchecked once the whole run is known to fit.
constexpr qint64 HeadSize = 4 + 4 + 8 + 4 + 8 + 4;
constexpr qint64 TailSize = 3 * 4 + 6 * 4 + 6 * 8;

template<typename Source> void readHead(Source &&in, CVCItem &item)
{
    item.iconIndex = in.i32();
    item.entryType = in.i32();
    item.odometer = in.f64();
    item.entryDate = in.u32();
    item.economyUnit = in.f64();
    item.distanceUnit = in.i32();
}

template<typename Source> void readTail(Source &&in, CVCItem &item)
{
    item.departTime = in.u32();
    item.arriveTime = in.u32();
    item.reservedTime = in.u32();
    item.temperature = in.i32();
    item.newEntryMark = in.i32();
    item.reserved1 = in.i32();
    item.reserved2 = in.i32();
    item.notFull = in.i32();
    item.listPosition = in.i32();
    item.amount = in.f64();
    item.fuelQuantity = in.f64();
    item.unitPrice = in.f64();
    item.endOdometer = in.f64();
    item.economy = in.f64();
    item.parking = in.f64();
}

} // namespace

void readLogRecord(LogRecordReader &r, CVCItem &item)
{
    if (!r.failed() && r.left() >= HeadSize)
        readHead(LogRecordReader::Unchecked { r }, item);
    else
        readHead(r, item);
    item.notes = r.string();
    item.fuelMeasure = r.string();
    item.station = r.string();
    item.invoice = r.string();
    item.purpose = r.string();
    item.destination = r.string();
    item.contact = r.string();
    item.typeText = r.string();
    if (!r.failed() && r.left() >= TailSize)
        readTail(LogRecordReader::Unchecked { r }, item);
    else
        readTail(r, item);
}
