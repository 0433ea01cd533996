#pragma once

#include <QByteArray>
#include <QString>

// What a data file held when this program last read or wrote it, to tell whether another
// program (the CLI, a cron job, a second window) has changed it since. A different size answers
// at once. A file whose identity and change times are as recorded, and whose last change was
// already well in the past when it was recorded, is unchanged without being read: any later
// write would have moved its change time. Otherwise the content is compared by hash, because a
// rewrite within the file system's time resolution keeps the times and a file watcher can miss
// an event.
class FileFingerprint
{
public:
    FileFingerprint() = default;
    // The file at path holds exactly these bytes (they were just read from it or written to it).
    FileFingerprint(const QString &path, const QByteArray &bytes);
    // The file at path holds size bytes whose ContentHash is hash (they were just written).
    FileFingerprint(const QString &path, qint64 size, quint64 hash);
    // The same for bytes read from the file starting at readStart (see readStart()): the file's
    // times may then prove it unchanged later without reading it again.
    FileFingerprint(const QString &path, const QByteArray &bytes, qint64 readStart);
    // The system clock just before a file is read, in nanoseconds (0 where there is none).
    static qint64 readStart();

    bool isNull() const { return m_path.isEmpty(); }
    QString path() const { return m_path; }
    // These bytes are the ones the file held.
    bool matches(const QByteArray &bytes) const;
    // The file holds something else now. A file that is gone holds nothing to lose and counts as
    // unchanged; one that can't be read (or is larger than maxSize) counts as changed, so that
    // nothing is written over it unseen.
    bool changedOnDisk(qint64 maxSize) const;

    // The file's identity and times as the system reports them; valid is false when it can't.
    struct Stamp
    {
        bool valid = false;
        quint64 device = 0;
        quint64 inode = 0;
        qint64 size = -1;
        qint64 modifiedNs = 0;
        qint64 changedNs = 0;
        bool operator==(const Stamp &) const = default;
    };
    static Stamp stampOf(const QString &path);

private:
    QString m_path;
    qint64 m_size = -1;
    quint64 m_hash = 0;
    Stamp m_stamp;
    // The stamp alone proves the file unchanged (see above).
    bool m_settled = false;
};
