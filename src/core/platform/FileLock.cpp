#include "FileLock.h"

#include <QDir>

using namespace Qt::StringLiterals;

FileLock::FileLock(const QString &filePath)
    : m_filePath(filePath)
    , m_lock(filePath + u".lock"_s)
{
    m_lock.setStaleLockTime(StaleSeconds * 1000);
}

FileLock::~FileLock()
{
    unlock();
}

bool FileLock::lock(int waitMs)
{
    if (m_locked)
        return true;
    if (m_lock.tryLock(waitMs)) {
        m_locked = true;
        return true;
    }
    // Only another holder makes us wait and give up. Where no lock can be made at all (a read-only
    // or full disk, a missing folder) the write fails on its own and says why.
    return m_lock.error() != QLockFile::LockFailedError;
}

void FileLock::unlock()
{
    if (m_locked)
        m_lock.unlock();
    m_locked = false;
}

QString FileLock::busyMessage(const QString &filePath)
{
    return u"The file %1 is in use by another program. Nothing was changed; try again in a moment."_s.arg(
        QDir::toNativeSeparators(filePath));
}
