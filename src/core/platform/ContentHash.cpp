#include "ContentHash.h"

#include <QtEndian>

#include <cstring>

namespace {
constexpr quint64 Prime1 = 0x9E3779B185EBCA87ull;
constexpr quint64 Prime2 = 0xC2B2AE3D27D4EB4Full;

constexpr quint64 rotate(quint64 v, int bits)
{
    return (v << bits) | (v >> (64 - bits));
}

constexpr quint64 round(quint64 lane, quint64 word)
{
    return rotate(lane + word * Prime2, 31) * Prime1;
}

quint64 word(const uchar *p)
{
    return qFromLittleEndian<quint64>(p);
}
} // namespace

void ContentHash::stripe(const uchar *p)
{
    for (int lane = 0; lane < 4; ++lane)
        m_lanes[lane] = round(m_lanes[lane], word(p + 8 * lane));
}

void ContentHash::add(const char *data, qsizetype size)
{
    const uchar *p = reinterpret_cast<const uchar *>(data);
    m_total += quint64(size);
    if (m_pendingSize > 0) {
        const qsizetype take = qMin<qsizetype>(size, Stripe - m_pendingSize);
        std::memcpy(m_pending + m_pendingSize, p, size_t(take));
        m_pendingSize += int(take);
        p += take;
        size -= take;
        if (m_pendingSize < Stripe)
            return;
        stripe(m_pending);
        m_pendingSize = 0;
    }
    for (; size >= Stripe; p += Stripe, size -= Stripe)
        stripe(p);
    if (size > 0) {
        std::memcpy(m_pending, p, size_t(size));
        m_pendingSize = int(size);
    }
}

quint64 ContentHash::result() const
{
    quint64 h = m_total * Prime1;
    for (int lane = 0; lane < 4; ++lane)
        h = rotate(h ^ round(0, m_lanes[lane]), 27) * Prime1 + Prime2;
    // The last partial stripe, zero-padded; the total length above tells "ab" from "ab\0".
    uchar tail[Stripe] = {};
    std::memcpy(tail, m_pending, size_t(m_pendingSize));
    for (int i = 0; i < Stripe; i += 8)
        h = rotate(h ^ round(0, word(tail + i)), 27) * Prime1 + Prime2;
    h ^= h >> 33;
    h *= Prime2;
    h ^= h >> 29;
    return h;
}
