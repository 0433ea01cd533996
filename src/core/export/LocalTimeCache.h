#pragma once

#include <QDate>
#include <QTime>

// The local date and time of the log's 32-bit times, for writers that convert hundreds of
// thousands of them. The offset from UTC is asked of the platform once per stretch between two
// time-zone transitions and then applied by arithmetic, which gives the same answer as a
// conversion of each time and is many times faster.
class LocalTimeCache
{
public:
    struct Local
    {
        QDate date;
        QTime time;
    };

    Local toLocal(quint32 seconds);

private:
    qint64 m_validFrom = 1; // empty interval: the first call fills it
    qint64 m_validTo = 0;
    int m_offset = 0;
};
