#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

#include "CVCItem.h"

class FileFingerprint;
class QIODevice;

// The byte format of a vehicle's log (.vcb) and of its backup (.bak): a count, the records
// (the first carrying the "CVCItem" class description, the others a reference to it) and an
// empty trailing collection. Bytes after the archive are ignored on read.
//
// Reading checks every count and length against the bytes left, so a hostile file can neither
// crash the reader nor make it allocate more than the file's size suggests. On failure the
// list handed in is left as it was and errorString() names the file and what is wrong.
class LogArchive
{
public:
    // Larger files are refused unread: a log of a million entries stays far below it.
    static constexpr qint64 MaxFileSize = qint64(256) << 20;

    // The archive of a list, exactly as written to disk.
    static QByteArray encode(const EntryList &entries);
    // The same bytes handed to sink a piece at a time; false as soon as sink returns false.
    static bool encodeInChunks(const EntryList &entries,
                               const std::function<bool(const char *, qsizetype)> &sink);

    // sourceName is the file name used in messages.
    bool decode(const QByteArray &bytes, EntryList &entries, const QString &sourceName);
    bool decode(const char *data, qsizetype size, EntryList &entries, const QString &sourceName);

    // From the device's current position to its end. The name in messages is the device's
    // file name when it has one, else sourceName.
    // With fingerprint, a file's fingerprint is made from the same read, on success.
    bool read(QIODevice *device, EntryList &entries, const QString &sourceName = QString(),
              FileFingerprint *fingerprint = nullptr);
    bool read(const QString &fileName, EntryList &entries);

    bool write(QIODevice *device, const EntryList &entries);
    // Atomic: the old file stays whole unless the new one is written completely. With written,
    // the new file's fingerprint on success.
    bool write(const QString &fileName, const EntryList &entries, FileFingerprint *written = nullptr);
    // The same for bytes made by encode().
    bool writeEncoded(const QString &fileName, const QByteArray &bytes);

    QString errorString() const { return m_error; }

private:
    // mapped: the bytes are a read-only file mapping whose parsed pages may be dropped.
    bool decode(const char *data, qsizetype size, EntryList &entries, const QString &sourceName, bool mapped);

    QString m_error;
};
