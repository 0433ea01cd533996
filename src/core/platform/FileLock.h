#pragma once

#include <QLockFile>
#include <QString>

// The lock every load-modify-save of a data file holds: "<file>.lock" beside it. A lock left by a
// killed process is taken over once it is older than StaleSeconds. Only another holder is a reason
// to refuse: where no lock can be made (read-only or full disk) the write itself fails with the
// system's reason.
class FileLock
{
public:
    static constexpr int StaleSeconds = 30;
    static constexpr int DefaultWaitMs = 10000;

    explicit FileLock(const QString &filePath);
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    // Waits up to waitMs for another writer to finish; false when it does not.
    bool lock(int waitMs = DefaultWaitMs);
    void unlock();
    bool isLocked() const { return m_locked; }

    // "The file ... is in use by another program. Try again in a moment."
    static QString busyMessage(const QString &filePath);

private:
    QString m_filePath;
    QLockFile m_lock;
    bool m_locked = false;
};
