#include "FileFingerprint.h"

#include "AtomicFile.h"
#include "ContentHash.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <time.h>
#endif

namespace {
#ifdef Q_OS_UNIX
qint64 nanoseconds(const timespec &t)
{
    return qint64(t.tv_sec) * 1000000000 + t.tv_nsec;
}

// How long ago the file's last change must lie for its times to be trusted. Times kept to the
// nanosecond are stamped from a clock at most a tick behind the real one; times kept in whole
// seconds (or coarser, as on FAT) may round a fresh change down by up to two seconds.
qint64 settleMarginNs(const FileFingerprint::Stamp &stamp)
{
    const bool fine = stamp.changedNs % 1000000000 != 0 || stamp.modifiedNs % 1000000000 != 0;
    return fine ? qint64(100) * 1000000 : qint64(3) * 1000000000;
}
#endif
} // namespace

FileFingerprint::Stamp FileFingerprint::stampOf(const QString &path)
{
    Stamp stamp;
#ifdef Q_OS_UNIX
    struct stat st;
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return stamp;
    stamp.valid = true;
    stamp.device = quint64(st.st_dev);
    stamp.inode = quint64(st.st_ino);
    stamp.size = qint64(st.st_size);
    stamp.modifiedNs = nanoseconds(st.st_mtim);
    stamp.changedNs = nanoseconds(st.st_ctim);
#else
    Q_UNUSED(path);
#endif
    return stamp;
}

FileFingerprint::FileFingerprint(const QString &path, const QByteArray &bytes)
    : m_path(path)
    , m_size(bytes.size())
    , m_hash(ContentHash::of(bytes))
    , m_stamp(stampOf(path))
{ }

FileFingerprint::FileFingerprint(const QString &path, qint64 size, quint64 hash)
    : m_path(path)
    , m_size(size)
    , m_hash(hash)
    , m_stamp(stampOf(path))
{ }

FileFingerprint::FileFingerprint(const QString &path, const QByteArray &bytes, qint64 readStart)
    : FileFingerprint(path, bytes)
{
#ifdef Q_OS_UNIX
    // A change made after the read began is stamped no earlier than that moment (less a clock
    // tick), so a file last changed well before it cannot have changed under the read or since
    // without its stamp moving.
    m_settled = readStart > 0 && m_stamp.valid && m_stamp.size == m_size
        && m_stamp.changedNs < readStart - settleMarginNs(m_stamp);
#else
    Q_UNUSED(readStart);
#endif
}

qint64 FileFingerprint::readStart()
{
#ifdef Q_OS_UNIX
    // The system's own clock, not the program's clock service: it is compared with the times the
    // file system stamps.
    timespec now;
    if (clock_gettime(CLOCK_REALTIME, &now) == 0)
        return nanoseconds(now);
#endif
    return 0;
}

bool FileFingerprint::matches(const QByteArray &bytes) const
{
    return !isNull() && bytes.size() == m_size && ContentHash::of(bytes) == m_hash;
}

bool FileFingerprint::changedOnDisk(qint64 maxSize) const
{
    if (isNull())
        return false;
    const QFileInfo info(m_path);
    if (!info.exists())
        return false;
    if (info.size() != m_size)
        return true;
    if (m_settled && stampOf(m_path) == m_stamp)
        return false;
    // Read through a mapping: a large log is hashed where it lies, without a copy.
    QFile file(m_path);
    if (!AtomicFile::checkReadable(m_path, maxSize, nullptr) || !file.open(QIODevice::ReadOnly)
        || file.size() != m_size)
        return true;
    if (m_size == 0)
        return m_hash != ContentHash::of(QByteArray());
    const uchar *map = file.map(0, m_size);
    const QByteArray bytes
        = map ? QByteArray::fromRawData(reinterpret_cast<const char *>(map), m_size) : file.readAll();
    const bool changed = bytes.size() != m_size || ContentHash::of(bytes) != m_hash;
    if (map)
        file.unmap(const_cast<uchar *>(map));
    return changed;
}
