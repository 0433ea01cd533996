#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

// How the other apps' files write numbers, dates, flags and names, read tolerantly.
namespace PeerText {

enum class DateOrder { Auto, Mdy, Dmy, Ymd };

// "mdy", "dmy", "ymd", "auto"; false for anything else.
bool parseDateOrder(const QString &text, DateOrder *order);

// A number as those apps write it: currency signs and unit words around it, blanks and no-break
// spaces, thousands separators. decimalMark is '.' or ','; a null QChar guesses per value (both
// marks: the last one is the decimal; a lone comma before exactly three digits groups
// thousands). False for a text with no digits.
bool parseNumber(const QString &text, QChar decimalMark, double *value);
// 0 for text that holds no number.
double number(const QString &text, QChar decimalMark);

// Day, month and year with '/', '.' or '-' between them, no zero padding needed, and an optional
// time "H:mm[:ss]" with optional AM/PM; the result is local time. Invalid for anything else.
QDateTime parseDate(const QString &text, DateOrder order);
// The order of a column of dates: four digits first is y-m-d; a first part above 12 settles
// d/m/y, a second part above 12 m/d/y; otherwise d.m.y for dotted dates and m/d/y for the rest.
DateOrder inferDateOrder(const QStringList &dates);

// 1, true, yes, y, full, partial ... and their usual translations; false for 0, no, empty ...
bool flag(const QString &text);

// A service name mapped to the log's reminder names where one matches ("Engine Oil" and
// "Oil Change" give "Oil Change", "Coolant" "Coolant Flush" ...); other names keep their words.
QString serviceName(const QString &name);
// A comma-separated list of services or slugs ("engine_oil,oil_filter", "Engine Oil, Oil Filter")
// as one name, the reminders' names first so the reminders recognise the entry: "Oil Change, Oil
// Filter". Repeated names are dropped.
QString serviceNames(const QString &list);
// A slug such as "windshield_wipers" as words: "Windshield Wipers".
QString slugWords(const QString &slug);

// Column lookup by name after trimming and case-folding; the first of several equal names wins.
class Columns
{
public:
    Columns() = default;
    explicit Columns(const QStringList &header);
    // The index of the first name present, -1 when none is.
    int find(const QStringList &names) const;
    // Every column of that name, for files that repeat one.
    QList<int> findAll(const QString &name) const;
    // The first column whose name starts with the prefix, -1 when none does.
    int findPrefix(const QString &prefix) const;
    QString headerName(int column) const { return m_names.value(column); }
    static QString fold(const QString &name) { return name.trimmed().toCaseFolded(); }

private:
    QStringList m_names;
    QHash<QString, int> m_index;
};

// A field of a row, empty when the row is shorter than the header.
inline QString field(const QStringList &fields, int column)
{
    return column >= 0 && column < fields.size() ? fields.at(column).trimmed() : QString();
}

} // namespace PeerText
