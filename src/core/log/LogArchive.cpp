#include "LogArchive.h"

#include "LogRecordReader.h"
#include "platform/AtomicFile.h"
#include "platform/ContentHash.h"
#include "platform/FileFingerprint.h"

#include <QFile>
#include <QFileDevice>
#include <QtEndian>

#include <cstring>
#include <memory>
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

// A large list is written from end to end once, right after it is reserved: huge pages spare
// the hundreds of thousands of small page faults that would otherwise cost a fifth of the load.
void adviseHugePages(const void *begin, size_t bytes)
{
#ifdef Q_OS_LINUX
    constexpr quintptr Huge = quintptr(2) << 20;
    const quintptr first = (quintptr(begin) + Huge - 1) & ~(Huge - 1);
    const quintptr last = (quintptr(begin) + bytes) & ~(Huge - 1);
    if (last > first + 2 * Huge)
        madvise(reinterpret_cast<void *>(first), last - first, MADV_HUGEPAGE);
#else
    Q_UNUSED(begin);
    Q_UNUSED(bytes);
#endif
}

QString deviceName(QIODevice *device, const QString &fallback)
{
    if (auto *file = qobject_cast<QFileDevice *>(device); file && !file->fileName().isEmpty())
        return file->fileName();
    return fallback;
}

} // namespace

namespace {

qsizetype headerSize(quint32 count)
{
    return (count < 0xFFFF ? 2 : 6) + (count > 0 ? 6 + ClassNameLength : 0);
}

void writeHeader(Writer &w, quint32 count)
{
    w.count(count);
    if (count > 0) {
        w.u16(NewClassTag);
        w.u16(Schema);
        w.u16(ClassNameLength);
        w.bytes(ClassName, ClassNameLength);
    }
}

// The first record follows the class description in the header; every later one names the class
// by its index.
void writeEntry(Writer &w, const CVCItem &item, bool first)
{
    if (!first)
        w.u16(ClassIndexTag);
    writeRecord(w, item);
}

} // namespace

QByteArray LogArchive::encode(const EntryList &entries)
{
    const quint32 count = quint32(entries.size());
    qsizetype size = headerSize(count) + 2;
    if (count > 0)
        size += qsizetype(count - 1) * 2;
    for (const CVCItem &item : entries)
        size += recordSize(item);
    QByteArray out(size, Qt::Uninitialized);
    Writer w(out.data());
    writeHeader(w, count);
    for (size_t i = 0; i < entries.size(); ++i)
        writeEntry(w, entries[i], i == 0);
    w.u16(0); // the second, always empty, collection
    Q_ASSERT(w.position() == out.constData() + size);
    return out;
}

bool LogArchive::encodeInChunks(const EntryList &entries,
                                const std::function<bool(const char *, qsizetype)> &sink)
{
    // Small enough to stay in the processor's cache between being made and being handed on.
    constexpr qsizetype ChunkSize = qsizetype(1) << 20;
    const quint32 count = quint32(entries.size());
    // Left uninitialised: a small log touches only the pages it fills.
    qsizetype capacity = ChunkSize;
    auto buffer = std::make_unique_for_overwrite<char[]>(size_t(capacity));
    qsizetype used = 0;
    const auto room = [&](qsizetype bytes) {
        if (used + bytes <= capacity)
            return true;
        if (used > 0 && !sink(buffer.get(), used))
            return false;
        used = 0;
        if (bytes > capacity) { // a record with a very long text
            capacity = bytes;
            buffer = std::make_unique_for_overwrite<char[]>(size_t(capacity));
        }
        return true;
    };
    {
        Writer w(buffer.get());
        writeHeader(w, count);
        used = w.position() - buffer.get();
    }
    for (size_t i = 0; i < entries.size(); ++i) {
        const qsizetype bytes = 2 + recordSize(entries[i]);
        if (!room(bytes))
            return false;
        Writer w(buffer.get() + used);
        writeEntry(w, entries[i], i == 0);
        used = w.position() - buffer.get();
    }
    if (!room(2))
        return false;
    Writer(buffer.get() + used).u16(0);
    used += 2;
    return sink(buffer.get(), used);
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
    LogRecordReader r(reinterpret_cast<const uchar *>(data), size);
    const quint32 count = r.count();
    EntryList loaded;
    if (!r.failed()) {
        // Each record needs a minimum of bytes, and the trailing collection two more.
        if (count > 0 && qint64(count) * MinimumRecordSize + 2 > r.left())
            r.fail(u"it claims %1 entries but only %2 bytes follow"_s.arg(count).arg(r.left()));
        else {
            loaded.reserve(count);
            adviseHugePages(loaded.data(), count * sizeof(CVCItem));
        }
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
        readLogRecord(r, loaded.back());
        pages.release(r.position());
    }
    // Before anything read can be freed (on a failure, the partial list is).
    r.countTexts();
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

bool LogArchive::read(QIODevice *device, EntryList &entries, const QString &sourceName,
                      FileFingerprint *fingerprint)
{
    const QString name = deviceName(device, sourceName);
    if (!device || !device->isReadable()) {
        m_error = u"Unable to read the log file %1."_s.arg(name);
        return false;
    }
    // A device or a pipe never ends and a huge file is no log: neither is read into memory.
    auto *file = qobject_cast<QFile *>(device);
    if (auto *fileDevice = qobject_cast<QFileDevice *>(device)) {
        if (fileDevice->isSequential() || fileDevice->size() > MaxFileSize) {
            m_error = u"Unable to read the log file %1: %2."_s.arg(
                name, fileDevice->isSequential() ? u"Not a regular file"_s : u"File too large"_s);
            return false;
        }
    }
    // Only a whole file has a fingerprint.
    if (!file || file->pos() != 0)
        fingerprint = nullptr;
    const qint64 start = FileFingerprint::readStart();
    // A file is read through a mapping when possible: no copy of a large log.
    if (file) {
        const qint64 pos = file->pos();
        const qint64 size = file->size() - pos;
        if (size > 0) {
            if (uchar *map = file->map(pos, size)) {
                const char *data = reinterpret_cast<const char *>(map);
                FileFingerprint made;
                if (fingerprint)
                    made = FileFingerprint(file->fileName(), QByteArray::fromRawData(data, size), start);
                const bool ok = decode(data, qsizetype(size), entries, name, true);
                file->unmap(map);
                if (ok && fingerprint)
                    *fingerprint = made;
                return ok;
            }
        }
    }
    // A device that stops delivering early shows up as a truncated archive.
    const QByteArray bytes = device->readAll();
    const bool ok = decode(bytes, entries, name);
    if (ok && fingerprint)
        *fingerprint = FileFingerprint(file->fileName(), bytes, start);
    return ok;
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

bool LogArchive::write(const QString &fileName, const EntryList &entries, FileFingerprint *written)
{
    m_error.clear();
    // Made and written a chunk at a time: a large log never exists twice in memory, and its
    // fingerprint is taken on the way.
    AtomicFile file(fileName);
    ContentHash hash;
    qint64 size = 0;
    const bool ok = file.open()
        && encodeInChunks(entries,
                          [&](const char *data, qsizetype bytes) {
                              hash.add(data, bytes);
                              size += bytes;
                              return file.write(data, bytes);
                          })
        && file.commit();
    if (!ok) {
        m_error = u"Unable to write the log file %1: %2."_s.arg(fileName, file.errorString());
        file.cancel();
        return false;
    }
    if (written)
        *written = FileFingerprint(fileName, size, hash.result());
    return true;
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
