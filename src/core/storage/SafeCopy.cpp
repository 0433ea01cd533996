#include "SafeCopy.h"

#include <QFile>
#include <QSaveFile>

#if defined(Q_OS_WIN)
#include <io.h>
#elif defined(Q_OS_UNIX)
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 ChunkSize = 64 * 1024;

bool fail(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return false;
}

// The rename in commit() is atomic, but without a sync first a power loss could still leave an
// empty file under the target's name on some file systems.
bool syncToDisk(QSaveFile &file)
{
    if (!file.flush())
        return false;
    const int fd = file.handle();
    if (fd < 0)
        return true;
#if defined(Q_OS_WIN)
    return _commit(fd) == 0;
#elif defined(Q_OS_UNIX)
    return ::fsync(fd) == 0;
#else
    return true;
#endif
}

} // namespace

bool SafeCopy::copy(const QString &source, const QString &target, QString *error)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return fail(error, in.errorString());
    return copy(in, target, error);
}

bool SafeCopy::copy(QIODevice &source, const QString &target, QString *error)
{
    QSaveFile out(target);
    // Never fall back to writing the target in place: that is exactly the half file we avoid.
    out.setDirectWriteFallback(false);
    if (!out.open(QIODevice::WriteOnly))
        return fail(error, out.errorString());

    QByteArray buffer(ChunkSize, Qt::Uninitialized);
    for (;;) {
        const qint64 got = source.read(buffer.data(), buffer.size());
        if (got < 0) {
            out.cancelWriting();
            const QString reason = source.errorString();
            return fail(error, reason.isEmpty() ? u"Read error"_s : reason);
        }
        if (got == 0 && source.atEnd())
            break;
        if (got == 0 && !source.waitForReadyRead(30000)) {
            out.cancelWriting();
            return fail(error, u"Read error"_s);
        }
        if (out.write(buffer.constData(), got) != got) {
            const QString reason = out.errorString();
            out.cancelWriting();
            return fail(error, reason);
        }
    }
    if (!syncToDisk(out)) {
        const QString reason = out.errorString();
        out.cancelWriting();
        return fail(error, reason.isEmpty() ? u"Unable to write the file to the disk"_s : reason);
    }
    if (!out.commit())
        return fail(error, out.errorString());
    return true;
}
