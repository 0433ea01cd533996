#include "LocalTimeCache.h"

#include <QDateTime>
#include <QTimeZone>

#include <limits>

LocalTimeCache::Local LocalTimeCache::toLocal(quint32 seconds)
{
    const qint64 t = seconds;
    if (t < m_validFrom || t >= m_validTo) {
        // The offset as the log's own conversion sees it; the zone's transitions only bound
        // the stretch in which it holds.
        m_offset = QDateTime::fromSecsSinceEpoch(t).offsetFromUtc();
        const QTimeZone zone = QTimeZone::systemTimeZone();
        const QDateTime at = QDateTime::fromSecsSinceEpoch(t, Qt::UTC);
        const QTimeZone::OffsetData previous = zone.previousTransition(at.addSecs(1));
        const QTimeZone::OffsetData next = zone.nextTransition(at);
        m_validFrom = previous.atUtc.isValid() ? previous.atUtc.toSecsSinceEpoch()
                                               : std::numeric_limits<qint64>::min();
        m_validTo = next.atUtc.isValid() ? next.atUtc.toSecsSinceEpoch() : std::numeric_limits<qint64>::max();
        if (m_validFrom > t || m_validTo <= t) {
            // The zone data disagree with themselves: convert this one time alone.
            m_validFrom = t;
            m_validTo = t + 1;
        }
    }
    const qint64 local = t + m_offset;
    qint64 days = local / 86400;
    qint64 rest = local % 86400;
    if (rest < 0) {
        rest += 86400;
        --days;
    }
    return { QDate::fromJulianDay(2440588 + days), QTime::fromMSecsSinceStartOfDay(int(rest * 1000)) };
}
