#pragma once

#include <QByteArray>
#include <QSaveFile>
#include <QString>

class QFileDevice;

// The one way this program replaces a file. The bytes go to a temporary beside the target,
// unbuffered so that every failing write is seen where it happens; the device's error is checked
// and the temporary synced to disk before it is renamed over the target, and the folder is synced
// after. On any failure the old file stays byte for byte as it was and errorString() gives the
// reason in the system's words ("No space left on device", "Permission denied").
class AtomicFile
{
public:
    explicit AtomicFile(const QString &path);
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    // Refuses a target that exists and is not a regular file (a FIFO, a device, a folder).
    bool open();
    // For codecs that write to a device; every write's result must still be checked.
    QIODevice *device() { return &m_file; }
    // The whole array or failure.
    bool write(const QByteArray &bytes) { return write(bytes.constData(), bytes.size()); }
    bool write(const char *data, qsizetype size);
    bool commit();
    // Drops the temporary; the target is left alone.
    void cancel();

    QString path() const { return m_path; }
    QString errorString() const;

    // open, write and commit in one call; reason (when given) receives errorString().
    static bool writeFile(const QString &path, const QByteArray &bytes, QString *reason = nullptr);
    // For a file device opened by someone else who will rename it (QSettings): flushes it and
    // syncs it to disk, false with the reason when the device reports any error.
    static bool finishDevice(QFileDevice &file, QString *reason);
    // Before reading a file whole: refuses what is not a regular file (a FIFO would block, a
    // device never ends) and what is larger than maxSize. reason gets the system's words.
    static bool checkReadable(const QString &path, qint64 maxSize, QString *reason);
    // checkReadable, then the whole file into bytes; reason gets the system's words on failure.
    static bool readFile(const QString &path, qint64 maxSize, QByteArray &bytes, QString *reason);

    // Forces the folder's entries (a rename) to disk; best effort.
    static void syncFolderOf(const QString &path);

    // The temporaries the writer makes: "<target>.XXXXXX" with six letters or digits.
    static bool isTemporaryName(const QString &fileName, const QString &targetName);
    // Removes temporaries of ours in folder that are older than maxAgeSeconds and belong to a
    // target accepted by isTarget (given the target's file name). Returns how many went.
    static int removeStaleTemporaries(const QString &folder, bool (*isTarget)(const QString &),
                                      qint64 maxAgeSeconds);

private:
    bool fail(const QString &reason);

    QString m_path;
    QSaveFile m_file;
    QString m_error;
    bool m_failed = false;
};
