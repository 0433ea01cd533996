#include "FileFingerprint.h"

#include "AtomicFile.h"

#include <QFileInfo>
#include <QHash>

namespace {
// Only compared with another hash made by this process, beside the size, to notice another
// program's save: a fast 64-bit hash does that at several times SHA-1's speed, which counts for a
// million-entry log hashed on every save.
quint64 hashOf(const QByteArray &bytes)
{
    return quint64(qHashBits(bytes.constData(), size_t(bytes.size()), 0));
}
} // namespace

FileFingerprint::FileFingerprint(const QString &path, const QByteArray &bytes)
    : m_path(path)
    , m_size(bytes.size())
    , m_hash(hashOf(bytes))
{ }

bool FileFingerprint::matches(const QByteArray &bytes) const
{
    return !isNull() && bytes.size() == m_size && hashOf(bytes) == m_hash;
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
    QByteArray bytes;
    return !AtomicFile::readFile(m_path, maxSize, bytes, nullptr) || hashOf(bytes) != m_hash;
}
