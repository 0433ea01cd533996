#include "ImportValues.h"

#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace ImportValues {

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isCurrency(QChar c)
{
    // 0x80 is the euro sign of the Windows code page, read here as 8-bit text.
    return c.category() == QChar::Symbol_Currency || c.unicode() == 0x80;
}

int monthOf(QStringView word)
{
    static const std::array<const char16_t *, 12> months
        = { u"jan", u"feb", u"mar", u"apr", u"may", u"jun", u"jul", u"aug", u"sep", u"oct", u"nov", u"dec" };
    if (word.size() < 3)
        return 0;
    for (size_t i = 0; i < months.size(); ++i)
        if (word.first(3).compare(QStringView(months[i]), Qt::CaseInsensitive) == 0)
            return int(i) + 1;
    return 0;
}

struct Part
{
    int value = 0;
    int digits = 0; // 0 for a month word
};

int fullYear(const Part &part)
{
    if (part.digits > 2)
        return part.value;
    return part.value < 70 ? 2000 + part.value : 1900 + part.value;
}

QDate makeDate(int year, int month, int day)
{
    const QDate date(year, month, day);
    return date.isValid() && year >= 1970 && year <= 2105 ? date : QDate();
}

QDate numericDate(const std::array<Part, 3> &p, LocaleFormats::DateOrder order)
{
    if (p[0].digits > 2)
        return makeDate(p[0].value, p[1].value, p[2].value);
    if (order == LocaleFormats::DateOrder::YearMonthDay)
        return makeDate(fullYear(p[0]), p[1].value, p[2].value);
    const bool monthFirst = order == LocaleFormats::DateOrder::MonthDayYear;
    const int year = fullYear(p[2]);
    QDate date = monthFirst ? makeDate(year, p[0].value, p[1].value) : makeDate(year, p[1].value, p[0].value);
    if (!date.isValid())
        date = monthFirst ? makeDate(year, p[1].value, p[0].value) : makeDate(year, p[0].value, p[1].value);
    return date;
}

QDate wordDate(const std::array<Part, 3> &p, int monthIndex)
{
    // The two numbers beside the month word: a four-digit one is the year, else day then year.
    Part first;
    Part second;
    bool haveFirst = false;
    for (int i = 0; i < 3; ++i) {
        if (i == monthIndex)
            continue;
        (haveFirst ? second : first) = p[size_t(i)];
        haveFirst = true;
    }
    const int month = p[size_t(monthIndex)].value;
    if (first.digits > 2)
        return makeDate(first.value, month, second.value);
    return makeDate(fullYear(second), month, first.value);
}

QTime timeOf(QStringView text)
{
    qsizetype i = 0;
    std::array<int, 3> parts { -1, 0, 0 };
    int count = 0;
    while (i < text.size() && count < 3) {
        if (!isDigit(text[i]))
            break;
        int value = 0;
        int digits = 0;
        while (i < text.size() && isDigit(text[i]) && digits < 3) {
            value = value * 10 + (text[i].unicode() - u'0');
            ++i;
            ++digits;
        }
        parts[size_t(count++)] = value;
        if (i < text.size() && text[i] == u':')
            ++i;
        else
            break;
    }
    if (count < 2)
        return QTime();
    while (i < text.size() && text[i].isSpace())
        ++i;
    int hour = parts[0];
    if (i < text.size()) {
        const QChar marker = text[i].toUpper();
        if (marker == u'P' && hour < 12)
            hour += 12;
        else if (marker == u'A' && hour == 12)
            hour = 0;
    }
    return QTime(hour, parts[1], parts[2]);
}

} // namespace

double number(QStringView text)
{
    qsizetype i = 0;
    bool negative = false;
    // Blanks, signs, a currency sign and a parenthesis may stand before the digits in any order.
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'-' || c == u'(')
            negative = true;
        else if (!(c.isSpace() || c == u'+' || isCurrency(c)))
            break;
    }
    // The digits go to a small buffer; longer numbers than it holds are cut, as no log value needs them.
    char digits[64];
    int length = 0;
    bool any = false;
    bool point = false;
    for (; i < text.size() && length < int(sizeof digits); ++i) {
        const QChar c = text[i];
        if (isDigit(c)) {
            digits[length++] = char(c.unicode());
            any = true;
        } else if (c == u'.' && !point) {
            digits[length++] = '.';
            point = true;
        } else if (c == u',' && any && !point && i + 3 < text.size() && isDigit(text[i + 1])
                   && isDigit(text[i + 2]) && isDigit(text[i + 3])
                   && (i + 4 >= text.size() || !isDigit(text[i + 4]))) {
            continue; // a thousands separator
        } else {
            break;
        }
    }
    if (!any)
        return 0.0;
    double value = 0.0;
    // from_chars never looks at the process locale, unlike strtod.
    const std::from_chars_result result = std::from_chars(digits, digits + length, value);
    if (result.ec != std::errc() || !std::isfinite(value))
        return 0.0;
    return negative ? -value : value;
}

DateTime dateTime(QStringView text, LocaleFormats::DateOrder order)
{
    std::array<Part, 3> parts;
    int count = 0;
    int monthIndex = -1;
    qsizetype i = 0;
    while (i < text.size() && count < 3) {
        const QChar c = text[i];
        if (isDigit(c)) {
            Part part;
            while (i < text.size() && isDigit(text[i]) && part.digits < 5) {
                part.value = part.value * 10 + (text[i].unicode() - u'0');
                ++part.digits;
                ++i;
            }
            if (i < text.size() && text[i] == u':')
                return DateTime(); // a time where the date should be
            parts[size_t(count++)] = part;
        } else if (c.isLetter()) {
            const qsizetype start = i;
            while (i < text.size() && text[i].isLetter())
                ++i;
            const int month = monthOf(text.sliced(start, i - start));
            // Other words (a weekday, "of") are passed over; a second month word is not a date.
            if (month > 0) {
                if (monthIndex >= 0)
                    return DateTime();
                monthIndex = count;
                parts[size_t(count++)] = Part { month, 0 };
            }
        } else {
            ++i;
        }
    }
    if (count < 3)
        return DateTime();
    DateTime result;
    result.date = monthIndex >= 0 ? wordDate(parts, monthIndex) : numericDate(parts, order);
    if (!result.date.isValid())
        return DateTime();
    while (i < text.size() && (text[i].isSpace() || text[i] == u'T' || text[i] == u',' || text[i] == u'.'))
        ++i;
    result.time = timeOf(text.sliced(i));
    return result;
}

QString measure(QStringView text)
{
    const QString word = text.trimmed().toString().toUpper();
    if (word.isEmpty())
        return QString();
    if (word.startsWith(u"IMP"_s) || word.contains(u"IMPERIAL"_s))
        return u"Imp. Gallons"_s;
    if (word.startsWith(u"GAL"_s) || word == u"US"_s || word.startsWith(u"US "_s) || word.startsWith(u"US."_s)
        || word == u"G"_s)
        return u"Gallons"_s;
    if (word.startsWith(u"LIT"_s) || word.startsWith(u"LTR"_s) || word == u"L"_s)
        return u"Litres"_s;
    return QString();
}

qint64 durationSeconds(QStringView text)
{
    qint64 total = 0;
    bool any = false;
    qsizetype i = 0;
    while (i < text.size()) {
        if (!isDigit(text[i])) {
            ++i;
            continue;
        }
        qint64 value = 0;
        while (i < text.size() && isDigit(text[i]) && value < 100000000)
            value = value * 10 + (text[i++].unicode() - u'0');
        while (i < text.size() && text[i].isSpace())
            ++i;
        const QChar unit = i < text.size() ? text[i].toUpper() : QChar();
        any = true;
        if (unit == u'D')
            total += value * 86400;
        else if (unit == u'H')
            total += value * 3600;
        else if (unit == u'S')
            total += value;
        else
            total += value * 60; // minutes, and a bare number
    }
    return any ? total : -1;
}

} // namespace ImportValues
