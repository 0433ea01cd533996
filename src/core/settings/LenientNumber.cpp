#include "LenientNumber.h"

#include <QByteArray>

#include <limits>

namespace {
bool isCSpace(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\v' || c == u'\f' || c == u'\r';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

qsizetype skipSpace(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && isCSpace(text[i]))
        ++i;
    return i;
}
} // namespace

namespace LenientNumber {

double toDouble(QStringView text)
{
    qsizetype i = skipSpace(text);
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    qsizetype digits = 0;
    while (i < text.size() && isDigit(text[i])) {
        ++i;
        ++digits;
    }
    if (i < text.size() && text[i] == u'.') {
        ++i;
        while (i < text.size() && isDigit(text[i])) {
            ++i;
            ++digits;
        }
    }
    if (digits == 0)
        return 0.0;
    qsizetype end = i;
    // An exponent counts only when digits follow it: "12e" is 12, like strtod.
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype j = i + 1;
        if (j < text.size() && (text[j] == u'+' || text[j] == u'-'))
            ++j;
        if (j < text.size() && isDigit(text[j])) {
            while (j < text.size() && isDigit(text[j]))
                ++j;
            end = j;
        }
    }
    bool ok = false;
    const double value = text.sliced(start, end - start).toLatin1().toDouble(&ok);
    if (ok)
        return value;
    // Out of range: strtod gives infinity with the number's sign.
    const bool negative = text[start] == u'-';
    return negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
}

qint64 toInteger(QStringView text)
{
    qsizetype i = skipSpace(text);
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    constexpr quint64 limit = quint64(std::numeric_limits<qint64>::max());
    quint64 magnitude = 0;
    bool overflow = false;
    while (i < text.size() && isDigit(text[i])) {
        const quint64 digit = quint64(text[i].unicode() - u'0');
        if (magnitude > (limit + 1 - digit) / 10)
            overflow = true;
        else
            magnitude = magnitude * 10 + digit;
        ++i;
    }
    if (negative) {
        if (overflow || magnitude > limit)
            return std::numeric_limits<qint64>::min();
        return -qint64(magnitude);
    }
    if (overflow || magnitude > limit)
        return std::numeric_limits<qint64>::max();
    return qint64(magnitude);
}

qint32 toInt32(QStringView text)
{
    const qint64 low = std::numeric_limits<qint32>::min();
    const qint64 high = std::numeric_limits<qint32>::max();
    return qint32(qBound(low, toInteger(text), high));
}

} // namespace LenientNumber
