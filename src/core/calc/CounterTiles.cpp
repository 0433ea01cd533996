#include "CounterTiles.h"

#include <QDateTime>

#include "platform/CFormat.h"
#include "platform/Clock.h"

using namespace Qt::StringLiterals;

namespace CounterTiles {

namespace {

// A character of the formatted reading read as a number: a blank, or anything that is not a
// digit, reads as 0.
int digitOf(QChar c)
{
    return (c >= u'0' && c <= u'9') ? c.unicode() - u'0' : 0;
}

QString zeroFilled(QString text, int width)
{
    if (text.size() < width)
        text.prepend(QString(width - text.size(), u'0'));
    return text;
}

} // namespace

QList<int> wholeNumber(double value, int style)
{
    if (!(value > 0))
        value = 0;
    const QString text = zeroFilled(cformat("%7.0f", value), 7);
    const int base = style == Alert ? WholeAlertDigitBase : WholeDigitBase;
    QList<int> tiles;
    tiles.reserve(7);
    for (int i = 0; i < 7; ++i)
        tiles.append(base + digitOf(text.at(i)));
    return tiles;
}

QList<int> decimal(double value, int style)
{
    if (!(value > 0.001))
        value = 0;
    // Only five- to three-character texts are filled; "%3.2f" never gives fewer than four.
    const QString text = zeroFilled(cformat("%3.2f", value), 6);
    const bool alert = style == Alert;
    const int base = alert ? DecimalAlertDigitBase : DecimalDigitBase;
    return { base + digitOf(text.at(0)), base + digitOf(text.at(1)),
             base + digitOf(text.at(2)), alert ? DecimalAlertPoint : DecimalPoint,
             base + digitOf(text.at(4)), base + digitOf(text.at(5)) };
}

QList<int> dueDate(quint32 lastDoneDate, qint32 dayInterval)
{
    if (dayInterval < 1)
        return { NoDateMonth, NoDateDay };
    const quint32 due = lastDoneDate + static_cast<quint32>(dayInterval) * 86400u;
    const QDate date = DeviceTime::toLocal(due).date();
    return { MonthBase + date.month() - 1, DayBase + date.day() };
}

QList<int> dueReading(double interval, double lastDone, double current)
{
    const double due = interval + lastDone;
    if (due >= current && interval > 0 && lastDone > 0)
        return wholeNumber(due, Normal);
    if (interval == 0)
        return wholeNumber(0, Normal);
    if (due < current && interval > 0)
        return wholeNumber(due, Alert);
    return wholeNumber(due, Normal);
}

} // namespace CounterTiles
