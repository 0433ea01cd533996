#pragma once

#include <QByteArray>
#include <QtGlobal>

// A fast 64-bit hash of a file's bytes, fed in pieces of any size (a log is hashed while it is
// written out): the same bytes give the same value however they are split. Only ever compared
// with another value made by this process, to notice that a file changed; never stored.
class ContentHash
{
public:
    void add(const char *data, qsizetype size);
    quint64 result() const;

    static quint64 of(const char *data, qsizetype size)
    {
        ContentHash hash;
        hash.add(data, size);
        return hash.result();
    }
    static quint64 of(const QByteArray &bytes) { return of(bytes.constData(), bytes.size()); }

private:
    static constexpr int Stripe = 32; // four lanes of eight bytes, mixed independently
    void stripe(const uchar *p);

    quint64 m_lanes[4]
        = { 0x243F6A8885A308D3ull, 0x13198A2E03707344ull, 0xA4093822299F31D0ull, 0x082EFA98EC4E6C89ull };
    uchar m_pending[Stripe] = {};
    int m_pendingSize = 0;
    quint64 m_total = 0;
};
