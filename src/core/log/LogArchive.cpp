#include "LogArchive.h"

#include "platform/AtomicFile.h"

#include <QFile>
#include <QFileDevice>
#include <QHashFunctions>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <vector>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 NewClassTag = 0xFFFF;
constexpr quint16 ClassIndexTag = 0x8001;
constexpr quint16 Schema = 1;
constexpr char ClassName[] = "CVCItem";
constexpr int ClassNameLength = 7;

// The fewest bytes a record can take: class tag, fixed fields and eight zero-length
// 8-bit strings. Used to refuse counts the rest of the file could never hold.
constexpr qint64 MinimumRecordSize = 2 + 4 + 4 + 8 + 4 + 8 + 4 + 8 * 1 + 3 * 4 + 6 * 4 + 6 * 8;

// Bytes a string takes: marker, length form, UTF-16 code units.
qsizetype stringSize(const QString &s)
{
    const qsizetype length = s.size();
    const qsizetype lengthForm = length < 0xFF ? 1 : length < 0xFFFE ? 3 : 7;
    return 3 + lengthForm + 2 * length;
}

qsizetype recordSize(const CVCItem &item)
{
    return 32 + 12 + 24 + 48 + stringSize(item.notes) + stringSize(item.fuelMeasure)
        + stringSize(item.station) + stringSize(item.invoice) + stringSize(item.purpose)
        + stringSize(item.destination) + stringSize(item.contact) + stringSize(item.typeText);
}

// Writes into a buffer sized beforehand, so a large log costs one allocation.
class Writer
{
public:
    explicit Writer(char *out)
        : m_p(out)
    { }
    char *position() const { return m_p; }
    void bytes(const char *data, qsizetype size)
    {
        std::memcpy(m_p, data, size_t(size));
        m_p += size;
    }
    void u8(quint8 v) { *m_p++ = char(v); }
    void u16(quint16 v)
    {
        qToLittleEndian(v, m_p);
        m_p += 2;
    }
    void u32(quint32 v)
    {
        qToLittleEndian(v, m_p);
        m_p += 4;
    }
    void i32(qint32 v) { u32(quint32(v)); }
    void f64(double v)
    {
        quint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        qToLittleEndian(bits, m_p);
        m_p += 8;
    }
    void count(quint32 n)
    {
        if (n < 0xFFFF) {
            u16(quint16(n));
        } else {
            u16(0xFFFF);
            u32(n);
        }
    }
    void string(const QString &s)
    {
        // Always the UTF-16 form: the marker, then the length in one of three widths.
        u8(0xFF);
        u16(0xFFFE);
        const quint32 length = quint32(s.size());
        if (length < 0xFF) {
            u8(quint8(length));
        } else if (length < 0xFFFE) {
            u8(0xFF);
            u16(quint16(length));
        } else {
            u8(0xFF);
            u16(0xFFFF);
            u32(length);
        }
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
        bytes(reinterpret_cast<const char *>(s.utf16()), qsizetype(length) * 2);
#else
        const char16_t *src = reinterpret_cast<const char16_t *>(s.utf16());
        for (quint32 i = 0; i < length; ++i)
            u16(quint16(src[i]));
#endif
    }

private:
    char *m_p;
};

void writeRecord(Writer &w, const CVCItem &item)
{
    w.i32(item.iconIndex);
    w.i32(item.entryType);
    w.f64(item.odometer);
    w.u32(item.entryDate);
    w.f64(item.economyUnit);
    w.i32(item.distanceUnit);
    w.string(item.notes);
    w.string(item.fuelMeasure);
    w.string(item.station);
    w.string(item.invoice);
    w.string(item.purpose);
    w.string(item.destination);
    w.string(item.contact);
    w.string(item.typeText);
    w.u32(item.departTime);
    w.u32(item.arriveTime);
    w.u32(item.reservedTime);
    w.i32(item.temperature);
    w.i32(item.newEntryMark);
    w.i32(item.reserved1);
    w.i32(item.reserved2);
    w.i32(item.notFull);
    w.i32(item.listPosition);
    w.f64(item.amount);
    w.f64(item.fuelQuantity);
    w.f64(item.unitPrice);
    w.f64(item.endOdometer);
    w.f64(item.economy);
    w.f64(item.parking);
}

// Texts repeat from record to record ("Fuel", "Gallons", the same few stations), so one load
// keeps a table of the short ones it has seen and hands out shared copies: one allocation per
// distinct text instead of one per field. The table is bounded, so a log of unique texts costs
// no more than before.
class TextTable
{
public:
    static constexpr qsizetype MaxLength = 48;

    // Sized to the input: a small log holds few texts, and making and freeing a table of the full
    // size would cost more than reading the whole log.
    explicit TextTable(qsizetype inputBytes)
        : m_slotCount(std::clamp<size_t>(size_t(qNextPowerOfTwo(quint64(inputBytes / 16))), MinSlots, Slots))
    { }

    // The shared text for these UTF-16 code units (little-endian), made on first sight.
    LogText get(const uchar *units, qsizetype length)
    {
        if (m_slots.empty())
            m_slots.resize(m_slotCount);
        const size_t bytes = size_t(length) * 2;
        size_t slot = qHashBits(units, bytes) & (m_slotCount - 1);
        for (;;) {
            const LogText &s = m_slots[slot];
            if (s.isEmpty())
                break;
            if (s.size() == length && std::memcmp(s->utf16(), units, bytes) == 0)
                return s;
            slot = (slot + 1) & (m_slotCount - 1);
        }
        LogText made = fromUnits(units, length);
        if (m_used < m_slotCount / 2) {
            m_slots[slot] = made;
            ++m_used;
        }
        return made;
    }

    static LogText fromUnits(const uchar *units, qsizetype length)
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

private:
    // Half full at most, so a probe ends quickly at an empty slot.
    static constexpr size_t Slots = 8192;
    static constexpr size_t MinSlots = 64;
    size_t m_slotCount;
    std::vector<LogText> m_slots; // made on the first text, so an empty log costs nothing
    size_t m_used = 0;
};

// Reads straight from the bytes in memory; every read checks what is left first. The first
// failure sticks: later reads return zeros and the message names that first problem.
class Reader
{
public:
    Reader(const uchar *data, qsizetype size)
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

    void fail(const QString &what)
    {
        if (m_error.isEmpty())
            m_error = what;
    }
    bool need(qint64 bytes)
    {
        if (failed())
            return false;
        if (left() < bytes) {
            fail(u"the file ends too early (at byte %1, %2 more bytes needed)"_s.arg(offset()).arg(bytes
                                                                                                   - left()));
            return false;
        }
        return true;
    }

    quint8 u8()
    {
        if (!need(1))
            return 0;
        return *m_p++;
    }
    quint16 u16()
    {
        if (!need(2))
            return 0;
        const quint16 v = qFromLittleEndian<quint16>(m_p);
        m_p += 2;
        return v;
    }
    quint32 u32()
    {
        if (!need(4))
            return 0;
        const quint32 v = qFromLittleEndian<quint32>(m_p);
        m_p += 4;
        return v;
    }
    qint32 i32() { return qint32(u32()); }
    double f64()
    {
        if (!need(8))
            return 0;
        const quint64 bits = qFromLittleEndian<quint64>(m_p);
        m_p += 8;
        double v;
        std::memcpy(&v, &bits, sizeof v);
        return v;
    }
    bool bytesEqual(const char *text, qint64 length)
    {
        if (!need(length))
            return false;
        const bool equal = std::memcmp(m_p, text, size_t(length)) == 0;
        m_p += length;
        return equal;
    }

    quint32 count()
    {
        const quint16 word = u16();
        return word == 0xFFFF ? u32() : word;
    }

    LogText string()
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
            fail(u"a text at byte %1 claims %2 characters, more than the %3 bytes left"_s.arg(at)
                     .arg(length)
                     .arg(left()));
            return LogText();
        }
        if (length == 0)
            return LogText();
        LogText s;
        if (!unicode)
            s = QString::fromLatin1(reinterpret_cast<const char *>(m_p), qsizetype(length));
        else if (length <= TextTable::MaxLength)
            s = m_texts.get(m_p, qsizetype(length));
        else
            s = TextTable::fromUnits(m_p, qsizetype(length));
        m_p += bytes;
        return s;
    }

private:
    static constexpr qint64 Marker = -1;

    // One of the three length forms, or Marker for the UTF-16 marker.
    qint64 lengthField()
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

    const uchar *m_begin;
    const uchar *m_p;
    const uchar *m_end;
    QString m_error;
    TextTable m_texts;
};

void readRecord(Reader &r, CVCItem &item)
{
    item.iconIndex = r.i32();
    item.entryType = r.i32();
    item.odometer = r.f64();
    item.entryDate = r.u32();
    item.economyUnit = r.f64();
    item.distanceUnit = r.i32();
    item.notes = r.string();
    item.fuelMeasure = r.string();
    item.station = r.string();
    item.invoice = r.string();
    item.purpose = r.string();
    item.destination = r.string();
    item.contact = r.string();
    item.typeText = r.string();
    item.departTime = r.u32();
    item.arriveTime = r.u32();
    item.reservedTime = r.u32();
    item.temperature = r.i32();
    item.newEntryMark = r.i32();
    item.reserved1 = r.i32();
    item.reserved2 = r.i32();
    item.notFull = r.i32();
    item.listPosition = r.i32();
    item.amount = r.f64();
    item.fuelQuantity = r.f64();
    item.unitPrice = r.f64();
    item.endOdometer = r.f64();
    item.economy = r.f64();
    item.parking = r.f64();
}

// A large log read through a file mapping would otherwise stay resident next to the entries
// made from it: the pages already parsed are handed back every few megabytes (the file itself
// stays in the page cache, and a later touch would simply read it again).
class MappedPages
{
public:
    explicit MappedPages(const uchar *begin)
        : m_next(begin ? alignUp(begin) : nullptr)
    { }

    void release(const uchar *parsed)
    {
#ifdef Q_OS_LINUX
        if (!m_next || parsed - m_next < Step)
            return;
        const uchar *end = alignDown(parsed);
        if (end > m_next && madvise(const_cast<uchar *>(m_next), size_t(end - m_next), MADV_DONTNEED) == 0)
            m_next = end;
#else
        Q_UNUSED(parsed);
#endif
    }

private:
    static constexpr qint64 Step = 8 << 20;
    static quintptr pageSize()
    {
        static const quintptr size = quintptr(sysconf(_SC_PAGESIZE));
        return size;
    }
    static const uchar *alignUp(const uchar *p)
    {
        return reinterpret_cast<const uchar *>((quintptr(p) + pageSize() - 1) & ~(pageSize() - 1));
    }
    static const uchar *alignDown(const uchar *p)
    {
        return reinterpret_cast<const uchar *>(quintptr(p) & ~(pageSize() - 1));
    }

    const uchar *m_next;
};

QString deviceName(QIODevice *device, const QString &fallback)
{
    if (auto *file = qobject_cast<QFileDevice *>(device); file && !file->fileName().isEmpty())
        return file->fileName();
    return fallback;
}

} // namespace

QByteArray LogArchive::encode(const EntryList &entries)
{
    const quint32 count = quint32(entries.size());
    qsizetype size = (count < 0xFFFF ? 2 : 6) + 2;
    if (count > 0)
        size += 6 + ClassNameLength + qsizetype(count - 1) * 2;
    for (const CVCItem &item : entries)
        size += recordSize(item);
    QByteArray out(size, Qt::Uninitialized);
    Writer w(out.data());
    w.count(count);
    bool first = true;
    for (const CVCItem &item : entries) {
        if (first) {
            w.u16(NewClassTag);
            w.u16(Schema);
            w.u16(ClassNameLength);
            w.bytes(ClassName, ClassNameLength);
            first = false;
        } else {
            w.u16(ClassIndexTag);
        }
        writeRecord(w, item);
    }
    w.u16(0); // the second, always empty, collection
    Q_ASSERT(w.position() == out.constData() + size);
    return out;
}

bool LogArchive::decode(const QByteArray &bytes, EntryList &entries, const QString &sourceName)
{
    return decode(bytes.constData(), bytes.size(), entries, sourceName);
}

bool LogArchive::decode(const char *data, qsizetype size, EntryList &entries, const QString &sourceName)
{
    return decode(data, size, entries, sourceName, false);
}

bool LogArchive::decode(const char *data, qsizetype size, EntryList &entries, const QString &sourceName,
                        bool mapped)
{
    m_error.clear();
    MappedPages pages(mapped ? reinterpret_cast<const uchar *>(data) : nullptr);
    Reader r(reinterpret_cast<const uchar *>(data), size);
    const quint32 count = r.count();
    EntryList loaded;
    if (!r.failed()) {
        // Each record needs a minimum of bytes, and the trailing collection two more.
        if (count > 0 && qint64(count) * MinimumRecordSize + 2 > r.left())
            r.fail(u"it claims %1 entries but only %2 bytes follow"_s.arg(count).arg(r.left()));
        else
            loaded.reserve(count);
    }
    for (quint32 i = 0; i < count && !r.failed(); ++i) {
        const qint64 at = r.offset();
        const quint16 tag = r.u16();
        if (r.failed())
            break;
        if (i == 0) {
            if (tag != NewClassTag) {
                r.fail(u"unknown class tag 0x%1 at byte %2"_s.arg(uint(tag), 4, 16, QChar(u'0')).arg(at));
                break;
            }
            const quint16 schema = r.u16();
            const quint16 nameLength = r.u16();
            if (r.failed())
                break;
            if (schema != Schema) {
                r.fail(u"unsupported schema %1 of the entry class (expected %2)"_s.arg(schema).arg(Schema));
                break;
            }
            if (nameLength != ClassNameLength || !r.bytesEqual(ClassName, ClassNameLength)) {
                if (!r.failed())
                    r.fail(u"unknown class name at byte %1 (expected CVCItem)"_s.arg(at + 6));
                break;
            }
        } else if (tag != ClassIndexTag) {
            r.fail(u"unknown class tag 0x%1 at byte %2"_s.arg(uint(tag), 4, 16, QChar(u'0')).arg(at));
            break;
        }
        loaded.emplace_back();
        readRecord(r, loaded.back());
        pages.release(r.position());
    }
    if (!r.failed()) {
        const qint64 at = r.offset();
        const quint16 trailing = r.u16();
        if (!r.failed() && trailing != 0)
            r.fail(u"unexpected data at byte %1 after the last entry"_s.arg(at));
    }
    if (r.failed()) {
        m_error = u"The log file %1 is damaged: %2."_s.arg(sourceName, r.error());
        return false;
    }
    entries = std::move(loaded);
    return true;
}

bool LogArchive::read(QIODevice *device, EntryList &entries, const QString &sourceName)
{
    const QString name = deviceName(device, sourceName);
    if (!device || !device->isReadable()) {
        m_error = u"Unable to read the log file %1."_s.arg(name);
        return false;
    }
    // A device or a pipe never ends and a huge file is no log: neither is read into memory.
    if (auto *file = qobject_cast<QFileDevice *>(device)) {
        if (file->isSequential() || file->size() > MaxFileSize) {
            m_error = u"Unable to read the log file %1: %2."_s.arg(
                name, file->isSequential() ? u"Not a regular file"_s : u"File too large"_s);
            return false;
        }
    }
    // A file is read through a mapping when possible: no copy of a large log.
    if (auto *file = qobject_cast<QFile *>(device); file && !file->isSequential()) {
        const qint64 pos = file->pos();
        const qint64 size = file->size() - pos;
        if (size > 0) {
            if (uchar *map = file->map(pos, size)) {
                const bool ok
                    = decode(reinterpret_cast<const char *>(map), qsizetype(size), entries, name, true);
                file->unmap(map);
                return ok;
            }
        }
    }
    // A device that stops delivering early shows up as a truncated archive.
    return decode(device->readAll(), entries, name);
}

bool LogArchive::read(const QString &fileName, EntryList &entries)
{
    QString reason;
    if (!AtomicFile::checkReadable(fileName, MaxFileSize, &reason)) {
        m_error = u"Unable to open the log file %1: %2."_s.arg(fileName, reason);
        return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = u"Unable to open the log file %1: %2."_s.arg(fileName, file.errorString());
        return false;
    }
    return read(&file, entries, fileName);
}

bool LogArchive::write(QIODevice *device, const EntryList &entries)
{
    m_error.clear();
    const QByteArray bytes = encode(entries);
    const QString name = deviceName(device, u"(stream)"_s);
    if (!device || !device->isWritable()) {
        m_error = u"Unable to write the log file %1."_s.arg(name);
        return false;
    }
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 n = device->write(bytes.constData() + done, bytes.size() - done);
        if (n <= 0) {
            m_error = u"Unable to write the log file %1: %2."_s.arg(name, device->errorString());
            return false;
        }
        done += n;
    }
    return true;
}

bool LogArchive::write(const QString &fileName, const EntryList &entries)
{
    return writeEncoded(fileName, encode(entries));
}

bool LogArchive::writeEncoded(const QString &fileName, const QByteArray &bytes)
{
    m_error.clear();
    QString reason;
    if (!AtomicFile::writeFile(fileName, bytes, &reason)) {
        m_error = u"Unable to write the log file %1: %2."_s.arg(fileName, reason);
        return false;
    }
    return true;
}
