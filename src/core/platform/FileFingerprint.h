#pragma once

#include <QByteArray>
#include <QString>

// What a data file held when this program last read or wrote it, to tell whether another
// program (the CLI, a cron job, a second window) has changed it since. A different size answers
// at once; otherwise the content is compared by hash, because a rewrite within the file system's
// time resolution keeps the modification time and a file watcher can miss an event.
class FileFingerprint
{
public:
    FileFingerprint() = default;
    // The file at path holds exactly these bytes (they were just read from it or written to it).
    FileFingerprint(const QString &path, const QByteArray &bytes);

    bool isNull() const { return m_path.isEmpty(); }
    QString path() const { return m_path; }
    // These bytes are the ones the file held.
    bool matches(const QByteArray &bytes) const;
    // The file holds something else now. A file that is gone holds nothing to lose and counts as
    // unchanged; one that can't be read (or is larger than maxSize) counts as changed, so that
    // nothing is written over it unseen.
    bool changedOnDisk(qint64 maxSize) const;

private:
    QString m_path;
    qint64 m_size = -1;
    quint64 m_hash = 0;
};
