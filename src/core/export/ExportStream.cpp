#include "ExportStream.h"

#include <QIODevice>

#include <cstdarg>
#include <cstdio>
#include <cstring>

ExportStream::ExportStream(QIODevice *device)
    : m_device(device)
{
    m_buffer.reserve(BlockSize + 4096);
}

void ExportStream::literal(const char *bytes)
{
    literal(bytes, qsizetype(std::strlen(bytes)));
}

void ExportStream::text(const QString &value)
{
    const qsizetype start = m_buffer.size();
    m_buffer.resize(start + value.size());
    char *out = m_buffer.data() + start;
    const char16_t *units = reinterpret_cast<const char16_t *>(value.utf16());
    for (qsizetype i = 0; i < value.size(); ++i)
        out[i] = static_cast<char>(units[i] & 0xFF);
    flushIfFull();
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
    if (m_buffer.isEmpty() || m_failed) {
        m_buffer.clear();
        return;
    }
    qsizetype done = 0;
    while (done < m_buffer.size()) {
        const qint64 n = m_device->write(m_buffer.constData() + done, m_buffer.size() - done);
        if (n <= 0) {
            m_failed = true;
            m_deviceError = m_device->errorString();
            break;
        }
        done += n;
    }
    m_buffer.clear();
}

bool ExportStream::finish()
{
    flush();
    return !m_failed;
}
