#include "AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

QString systemReason(int code)
{
#ifdef Q_OS_UNIX
    return QString::fromLocal8Bit(std::strerror(code));
#else
    Q_UNUSED(code);
    return u"Unknown error"_s;
#endif
}

bool syncHandle(int handle, QString *reason)
{
#ifdef Q_OS_UNIX
    if (handle >= 0 && ::fsync(handle) != 0 && errno != EINVAL && errno != EROFS) {
        if (reason)
            *reason = systemReason(errno);
        return false;
    }
#else
    Q_UNUSED(handle);
    Q_UNUSED(reason);
#endif
    return true;
}

} // namespace

AtomicFile::AtomicFile(const QString &path)
    : m_path(path)
    , m_file(path)
{ }

bool AtomicFile::fail(const QString &reason)
{
    if (!m_failed)
        m_error = reason.isEmpty() ? u"Unknown error"_s : reason;
    m_failed = true;
    if (m_file.isOpen())
        m_file.cancelWriting();
    return false;
}

QString AtomicFile::errorString() const
{
    // A codec writing through device() sees the failure first; the device keeps the reason.
    if (m_error.isEmpty() && m_file.error() != QFileDevice::NoError)
        return m_file.errorString();
    return m_error;
}

bool AtomicFile::open()
{
    m_failed = false;
    m_error.clear();
    const QFileInfo info(m_path);
    if (info.exists() && !info.isFile())
        return fail(u"Not a regular file"_s);
    // Unbuffered: a write that fails inside a buffer would go unseen until after the rename.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return fail(m_file.errorString());
    return true;
}

bool AtomicFile::write(const char *data, qsizetype size)
{
    if (m_failed || !m_file.isOpen())
        return false;
    qint64 done = 0;
    while (done < size) {
        const qint64 n = m_file.write(data + done, size - done);
        if (n <= 0)
            return fail(m_file.errorString());
        done += n;
    }
    return true;
}

bool AtomicFile::commit()
{
    if (m_failed || !m_file.isOpen())
        return fail(errorString());
    QString reason;
    if (!finishDevice(m_file, &reason))
        return fail(reason);
    if (!m_file.commit())
        return fail(m_file.errorString());
    syncFolderOf(m_path);
    return true;
}

void AtomicFile::cancel()
{
    if (m_file.isOpen())
        m_file.cancelWriting();
    m_file.commit(); // with writing cancelled this only removes the temporary
}

bool AtomicFile::writeFile(const QString &path, const QByteArray &bytes, QString *reason)
{
    AtomicFile file(path);
    const bool ok = file.open() && file.write(bytes) && file.commit();
    if (!ok && reason)
        *reason = file.errorString();
    return ok;
}

bool AtomicFile::finishDevice(QFileDevice &file, QString *reason)
{
    if (!file.flush() || file.error() != QFileDevice::NoError) {
        if (reason)
            *reason = file.errorString();
        return false;
    }
    return syncHandle(file.handle(), reason);
}

bool AtomicFile::checkReadable(const QString &path, qint64 maxSize, QString *reason)
{
    const QFileInfo info(path);
    QString why;
    if (!info.exists())
        why = u"No such file or directory"_s;
    else if (!info.isFile())
        why = u"Not a regular file"_s;
    else if (info.size() > maxSize)
        why = u"File too large"_s;
    if (why.isEmpty())
        return true;
    if (reason)
        *reason = why;
    return false;
}

bool AtomicFile::readFile(const QString &path, qint64 maxSize, QByteArray &bytes, QString *reason)
{
    if (!checkReadable(path, maxSize, reason))
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (reason)
            *reason = file.errorString();
        return false;
    }
    bytes = file.readAll();
    return true;
}

void AtomicFile::syncFolderOf(const QString &path)
{
#ifdef Q_OS_UNIX
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
#else
    Q_UNUSED(path);
#endif
}

bool AtomicFile::isTemporaryName(const QString &fileName, const QString &targetName)
{
    if (fileName.size() != targetName.size() + 7 || !fileName.startsWith(targetName)
        || fileName[targetName.size()] != u'.')
        return false;
    for (qsizetype i = targetName.size() + 1; i < fileName.size(); ++i) {
        const QChar c = fileName[i];
        if (!(c.isDigit() || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z')))
            return false;
    }
    return true;
}

int AtomicFile::removeStaleTemporaries(const QString &folder, bool (*isTarget)(const QString &),
                                       qint64 maxAgeSeconds)
{
    const QDateTime cutoff = QDateTime::currentDateTimeUtc().addSecs(-maxAgeSeconds);
    int removed = 0;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo &info : files) {
        const QString name = info.fileName();
        if (name.size() < 8)
            continue;
        const QString target = name.left(name.size() - 7);
        if (!isTarget(target) || !isTemporaryName(name, target))
            continue;
        if (info.lastModified().toUTC() < cutoff && QFile::remove(info.absoluteFilePath()))
            ++removed;
    }
    return removed;
}
