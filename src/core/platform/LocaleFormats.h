#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// The locale's short date and time formats, date order, separator and currency symbol.
class LocaleFormats
{
public:
    enum class DateOrder { MonthDayYear, DayMonthYear, YearMonthDay };

    virtual ~LocaleFormats() = default;
    virtual QString shortDate(const QDate &date) const = 0;
    virtual QString shortTime(const QTime &time) const = 0;
    virtual DateOrder dateOrder() const = 0;
    virtual QString dateSeparator() const = 0;
    // At most two characters; "$" when the locale's symbol is longer (the record's rule).
    virtual QString currencySymbol() const = 0;

    QString shortDate(const QDateTime &local) const { return shortDate(local.date()); }
    QString shortTime(const QDateTime &local) const { return shortTime(local.time()); }
};

// Formats of a QLocale (the system's in the program, en_US in the tests).
class QLocaleFormats : public LocaleFormats
{
public:
    explicit QLocaleFormats(const QLocale &locale = QLocale::system());

    QString shortDate(const QDate &date) const override;
    QString shortTime(const QTime &time) const override;
    DateOrder dateOrder() const override { return m_order; }
    QString dateSeparator() const override { return m_separator; }
    QString currencySymbol() const override { return m_currency; }

    using LocaleFormats::shortDate;
    using LocaleFormats::shortTime;

private:
    QLocale m_locale;
    QString m_dateFormat;
    QString m_timeFormat;
    DateOrder m_order = DateOrder::MonthDayYear;
    QString m_separator;
    QString m_currency;
};

// The fixed formats the tests pin: en_US, "M/d/yyyy", "h:mm AP", "$".
class TestLocaleFormats : public LocaleFormats
{
public:
    QString shortDate(const QDate &date) const override;
    QString shortTime(const QTime &time) const override;
    DateOrder dateOrder() const override { return DateOrder::MonthDayYear; }
    QString dateSeparator() const override;
    QString currencySymbol() const override;

    using LocaleFormats::shortDate;
    using LocaleFormats::shortTime;
};
