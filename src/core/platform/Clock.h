#pragma once

#include <QDateTime>
#include <QtGlobal>

// "Now" as an input: the program asks the clock, tests and the CLI's --now pin it.
class Clock
{
public:
    virtual ~Clock() = default;
    // Seconds since 1970-01-01 00:00:00 UTC, as the log's 32-bit times.
    virtual quint32 now() const = 0;
    QDateTime nowLocal() const { return QDateTime::fromSecsSinceEpoch(now()); }
};

class SystemClock : public Clock
{
public:
    quint32 now() const override { return static_cast<quint32>(QDateTime::currentSecsSinceEpoch()); }
};

class FixedClock : public Clock
{
public:
    explicit FixedClock(quint32 seconds = 0)
        : m_now(seconds)
    { }
    quint32 now() const override { return m_now; }
    void set(quint32 seconds) { m_now = seconds; }
    void advance(qint64 seconds) { m_now = static_cast<quint32>(m_now + seconds); }

private:
    quint32 m_now;
};

// The log's 32-bit times: seconds since 1970 UTC, shown in local time. 0 means "not set".
namespace DeviceTime {
inline QDateTime toLocal(quint32 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds);
}
inline quint32 fromLocal(const QDateTime &local)
{
    return static_cast<quint32>(local.toSecsSinceEpoch());
}
} // namespace DeviceTime
