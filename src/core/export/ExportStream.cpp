#include "ExportStream.h"

#include <QIODevice>

#include "platform/CFormat.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

ExportStream::ExportStream(QIODevice *device)
    : m_device(device)
    , m_block(BlockSize, Qt::Uninitialized)
{ }

char *ExportStream::reserve(qsizetype size)
{
    if (m_used + size > BlockSize)
        flush();
    if (size > BlockSize)
        return nullptr;
    char *at = m_block.data() + m_used;
    m_used += size;
    return at;
}

void ExportStream::literal(const char *bytes)
{
    literal(bytes, qsizetype(std::strlen(bytes)));
}

void ExportStream::literal(const char *bytes, qsizetype size)
{
    if (char *at = reserve(size))
        std::memcpy(at, bytes, size_t(size));
    else
        writeOut(bytes, size);
}

void ExportStream::text(const QString &value)
{
    const char16_t *units = reinterpret_cast<const char16_t *>(value.utf16());
    char *at = reserve(value.size());
    if (!at) {
        const QByteArray bytes = to8bit(value);
        writeOut(bytes.constData(), bytes.size());
        return;
    }
    for (qsizetype i = 0; i < value.size(); ++i)
        at[i] = static_cast<char>(units[i] & 0xFF);
}

void ExportStream::format(const char *format, ...)
{
    // Every number format of the exports fits here; a wider result (a huge double) is cut.
    char bytes[400];
    va_list args;
    va_start(args, format);
    const int written = std::vsnprintf(bytes, sizeof bytes, format, args);
    va_end(args);
    if (written > 0)
        literal(bytes, qMin<qsizetype>(written, qsizetype(sizeof bytes) - 1));
}

void ExportStream::flush()
{
    writeOut(m_block.constData(), m_used);
    m_used = 0;
}

void ExportStream::writeOut(const char *bytes, qsizetype size)
{
    qsizetype done = 0;
    while (!m_failed && done < size) {
        const qint64 n = m_device->write(bytes + done, size - done);
        if (n <= 0) {
            m_failed = true;
            m_deviceError = m_device->errorString();
        } else {
            done += n;
        }
    }
}

bool ExportStream::finish()
{
    flush();
    return !m_failed;
}
