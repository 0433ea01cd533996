#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QString>

#include "log/CVCItem.h"

// A buffer that accepts limit bytes and then fails, as a full disk would.
class FailingBuffer : public QBuffer
{
public:
    explicit FailingBuffer(qint64 limit)
        : m_limit(limit)
    { }

protected:
    qint64 writeData(const char *data, qint64 len) override
    {
        if (pos() + len > m_limit) {
            setErrorString(QStringLiteral("No space left on device"));
            return -1;
        }
        return QBuffer::writeData(data, len);
    }

private:
    qint64 m_limit;
};

// Spaces are allowed in the hex text so the fields of a record can be told apart.
inline QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

inline QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray("<missing>");
    return f.readAll();
}

inline bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// The three records whose bytes the archive tests spell out by hand.
CVCItem sampleFuel();
CVCItem sampleMaintenance();
CVCItem sampleTrip();

// "CVCItem" with its tag, schema and name length, as before the first record.
extern const char *const ClassHeaderHex;
extern const char *const FuelHex;
extern const char *const MaintenanceHex;
extern const char *const TripHex;

// The archive of the records given in hex: count, class header before the first record, a
// reference tag before each later one, and the empty second collection.
QByteArray archiveOf(std::initializer_list<const char *> records);
