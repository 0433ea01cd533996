#include "CFormat.h"

#include <cstdarg>
#include <cstdio>
#include <vector>

QString cformat(const char *format, ...)
{
    char small[256];
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int needed = std::vsnprintf(small, sizeof small, format, args);
    va_end(args);
    if (needed < 0) {
        va_end(copy);
        return {};
    }
    if (static_cast<size_t>(needed) < sizeof small) {
        va_end(copy);
        return QString::fromUtf8(small, needed);
    }
    std::vector<char> big(static_cast<size_t>(needed) + 1);
    std::vsnprintf(big.data(), big.size(), format, copy);
    va_end(copy);
    return QString::fromUtf8(big.data(), needed);
}

QByteArray to8bit(const QString &text)
{
    QByteArray out(text.size(), Qt::Uninitialized);
    const char16_t *units = reinterpret_cast<const char16_t *>(text.utf16());
    for (qsizetype i = 0; i < text.size(); ++i)
        out[i] = static_cast<char>(units[i] & 0xFF);
    return out;
}

QString from8bit(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes);
}
