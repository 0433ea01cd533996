#include "LocaleFormats.h"

using namespace Qt::StringLiterals;

QLocaleFormats::QLocaleFormats(const QLocale &locale)
    : m_locale(locale)
    , m_dateFormat(locale.dateFormat(QLocale::ShortFormat))
    , m_timeFormat(locale.timeFormat(QLocale::ShortFormat))
{
    // The order of the day, month and year fields, as the first of them appears in the format.
    const qsizetype d = m_dateFormat.indexOf(u'd');
    const qsizetype m = m_dateFormat.indexOf(u'M');
    const qsizetype y = m_dateFormat.indexOf(u'y');
    if (y >= 0 && (m < 0 || y < m) && (d < 0 || y < d))
        m_order = DateOrder::YearMonthDay;
    else if (d >= 0 && m >= 0 && d < m)
        m_order = DateOrder::DayMonthYear;
    for (QChar c : std::as_const(m_dateFormat)) {
        if (!c.isLetter()) {
            m_separator = QString(c);
            break;
        }
    }
    if (m_separator.isEmpty())
        m_separator = u"/"_s;
    m_currency = locale.currencySymbol(QLocale::CurrencySymbol);
    // The symbol was fetched into three characters, terminator included.
    if (m_currency.isEmpty() || m_currency.size() > 2)
        m_currency = u"$"_s;
}

QString QLocaleFormats::shortDate(const QDate &date) const
{
    return m_locale.toString(date, m_dateFormat);
}

QString QLocaleFormats::shortTime(const QTime &time) const
{
    return m_locale.toString(time, m_timeFormat);
}

QString TestLocaleFormats::shortDate(const QDate &date) const
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(date, u"M/d/yyyy"_s);
}

QString TestLocaleFormats::shortTime(const QTime &time) const
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(time, u"h:mm AP"_s);
}

QString TestLocaleFormats::dateSeparator() const
{
    return u"/"_s;
}

QString TestLocaleFormats::currencySymbol() const
{
    return u"$"_s;
}
