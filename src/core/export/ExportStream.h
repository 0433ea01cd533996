#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

// The bytes of an export, streamed to a device in blocks so that a log of any size is written
// in constant memory. Text goes out one byte per UTF-16 code unit (its low eight bits); numbers
// through the C library's printf formats. The first failing write sticks.
class ExportStream
{
public:
    explicit ExportStream(QIODevice *device);

    // A template, written as it is (the templates are ASCII).
    void literal(const char *bytes);
    void literal(const char *bytes, qsizetype size);
    // A value of the log: one byte per code unit, no escaping.
    void text(const QString &value);
    // One printf-style number (or a few): "%6.1f", "%d-%.2d-%.2dT%.2d:%.2d:00.000".
    void format(const char *format, ...) __attribute__((format(printf, 2, 3)));

    // Writes what is left; false when any write failed.
    bool finish();
    bool failed() const { return m_failed; }
    // The device's message of the failed write.
    QString deviceError() const { return m_deviceError; }

private:
    // Room for size more bytes at the end of the block, flushing it first when needed.
    char *reserve(qsizetype size);
    void flush();
    void writeOut(const char *bytes, qsizetype size);

    static constexpr qsizetype BlockSize = 64 * 1024;
    QIODevice *m_device;
    QByteArray m_block;
    qsizetype m_used = 0;
    bool m_failed = false;
    QString m_deviceError;
};
