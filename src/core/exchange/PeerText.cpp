#include "PeerText.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace PeerText {

bool parseDateOrder(const QString &text, DateOrder *order)
{
    const QString word = text.trimmed().toLower();
    if (word == u"mdy"_s)
        *order = DateOrder::Mdy;
    else if (word == u"dmy"_s)
        *order = DateOrder::Dmy;
    else if (word == u"ymd"_s)
        *order = DateOrder::Ymd;
    else if (word == u"auto"_s)
        *order = DateOrder::Auto;
    else
        return false;
    return true;
}

bool parseNumber(const QString &text, QChar decimalMark, double *value)
{
    QString digits;
    bool negative = false;
    for (const QChar c : text) {
        if (c.isDigit() || c == u'.' || c == u',')
            digits.append(c);
        else if (c == u'-' && digits.isEmpty())
            negative = true;
    }
    if (std::none_of(digits.cbegin(), digits.cend(), [](QChar c) { return c.isDigit(); }))
        return false;
    QChar mark = decimalMark;
    if (mark.isNull()) {
        const qsizetype lastPoint = digits.lastIndexOf(u'.');
        const qsizetype lastComma = digits.lastIndexOf(u',');
        if (lastPoint >= 0 && lastComma >= 0)
            mark = lastPoint > lastComma ? u'.' : u',';
        else if (lastComma >= 0)
            mark = digits.count(u',') == 1 && digits.size() - lastComma - 1 != 3 ? u',' : u'.';
        else
            mark = u'.';
    }
    const QChar group = mark == u'.' ? u',' : u'.';
    digits.remove(group);
    if (mark == u',')
        digits.replace(u',', u'.');
    bool ok = false;
    const double parsed = digits.toDouble(&ok);
    if (!ok)
        return false;
    *value = negative ? -parsed : parsed;
    return true;
}

double number(const QString &text, QChar decimalMark)
{
    double value = 0.0;
    return parseNumber(text, decimalMark, &value) ? value : 0.0;
}

namespace {

const QRegularExpression &datePattern()
{
    static const QRegularExpression pattern(
        u"^\\s*(\\d{1,4})[/.\\-](\\d{1,2})[/.\\-](\\d{1,4})\\.?(?:[ T]+(\\d{1,2}):(\\d{2})(?::(\\d{2}))?\\s*([AaPp][Mm])?)?\\s*$"_s);
    return pattern;
}

} // namespace

QDateTime parseDate(const QString &text, DateOrder order)
{
    const QRegularExpressionMatch m = datePattern().match(text);
    if (!m.hasMatch())
        return QDateTime();
    const int a = m.captured(1).toInt();
    const int b = m.captured(2).toInt();
    const int c = m.captured(3).toInt();
    if (m.captured(1).size() == 4)
        order = DateOrder::Ymd;
    else if (order == DateOrder::Auto || order == DateOrder::Ymd)
        order = a > 12 || text.contains(u'.') ? DateOrder::Dmy : DateOrder::Mdy;
    int year = c;
    int month = a;
    int day = b;
    if (order == DateOrder::Ymd) {
        year = a;
        month = b;
        day = c;
    } else if (order == DateOrder::Dmy) {
        day = a;
        month = b;
    }
    if (year < 100)
        year += 2000;
    const QDate date(year, month, day);
    int hour = m.captured(4).toInt();
    const int minute = m.captured(5).toInt();
    const int second = m.captured(6).toInt();
    const QString meridiem = m.captured(7).toLower();
    if (meridiem == u"pm"_s && hour < 12)
        hour += 12;
    else if (meridiem == u"am"_s && hour == 12)
        hour = 0;
    const QTime time(hour, minute, second);
    if (!date.isValid() || !time.isValid())
        return QDateTime();
    return QDateTime(date, time);
}

DateOrder inferDateOrder(const QStringList &dates)
{
    bool dotted = false;
    for (const QString &text : dates) {
        const QRegularExpressionMatch m = datePattern().match(text);
        if (!m.hasMatch())
            continue;
        if (m.captured(1).size() == 4)
            return DateOrder::Ymd;
        if (m.captured(1).toInt() > 12)
            return DateOrder::Dmy;
        if (m.captured(2).toInt() > 12)
            return DateOrder::Mdy;
        dotted = dotted || text.contains(u'.');
    }
    return dotted ? DateOrder::Dmy : DateOrder::Mdy;
}

bool flag(const QString &text)
{
    static const QStringList yes
        = { u"1"_s,  u"true"_s, u"yes"_s, u"y"_s,   u"full"_s, u"partial"_s, u"reset"_s, u"si"_s,
            u"sí"_s, u"ja"_s,   u"tak"_s, u"oui"_s, u"sim"_s,  u"x"_s,       u"wahr"_s,  u"verdadero"_s };
    return yes.contains(text.trimmed().toLower());
}

QString slugWords(const QString &slug)
{
    static const QRegularExpression gaps(u"[_\\s]+"_s);
    QStringList words = slug.trimmed().split(gaps, Qt::SkipEmptyParts);
    for (QString &word : words)
        word[0] = word.at(0).toUpper();
    return words.join(u' ');
}

QString serviceName(const QString &name)
{
    const QString words = name.trimmed();
    const QString key = words.toLower().replace(u'_', u' ');
    struct Rule
    {
        const char16_t *pattern;
        const char16_t *name;
    };
    static const Rule rules[] = {
        { u"^(engine oil|oil change|oil( and| &)? filter change|change oil|oil)$", u"Oil Change" },
        { u"^coolant", u"Coolant Flush" },
        { u"^transmission", u"Transmission Service" },
        { u"^(tune.?up|spark plugs?)$", u"Tune-Up" },
        { u"^(tire|tyre) rotation$|^rotate (tires|tyres)$", u"Rotate Tires" },
    };
    // Compiled once: every service row of a file asks.
    static const std::vector<std::pair<QRegularExpression, QString>> compiled = [] {
        std::vector<std::pair<QRegularExpression, QString>> list;
        for (const Rule &rule : rules)
            list.emplace_back(QRegularExpression(QString::fromUtf16(rule.pattern)),
                              QString::fromUtf16(rule.name));
        return list;
    }();
    for (const auto &[pattern, name] : compiled) {
        if (pattern.match(key).hasMatch())
            return name;
    }
    return words;
}

QString serviceNames(const QString &list)
{
    QStringList names;
    qsizetype mapped = 0; // the reminders' names lead, in the list's order
    for (const QString &slug : list.split(u',', Qt::SkipEmptyParts)) {
        const QString words = slugWords(slug);
        const QString name = serviceName(words);
        if (name.isEmpty() || names.contains(name))
            continue;
        if (name != words)
            names.insert(mapped++, name);
        else
            names.append(name);
    }
    return names.join(u", "_s);
}

Columns::Columns(const QStringList &header)
{
    for (qsizetype i = 0; i < header.size(); ++i) {
        const QString name = fold(header.at(i));
        m_names.append(name);
        if (!m_index.contains(name))
            m_index.insert(name, int(i));
    }
}

int Columns::find(const QStringList &names) const
{
    for (const QString &name : names) {
        const auto it = m_index.constFind(fold(name));
        if (it != m_index.constEnd())
            return it.value();
    }
    return -1;
}

QList<int> Columns::findAll(const QString &name) const
{
    QList<int> columns;
    const QString folded = fold(name);
    for (qsizetype i = 0; i < m_names.size(); ++i) {
        if (m_names.at(i) == folded)
            columns.append(int(i));
    }
    return columns;
}

int Columns::findPrefix(const QString &prefix) const
{
    const QString folded = fold(prefix);
    for (qsizetype i = 0; i < m_names.size(); ++i) {
        if (m_names.at(i).startsWith(folded))
            return int(i);
    }
    return -1;
}

} // namespace PeerText
