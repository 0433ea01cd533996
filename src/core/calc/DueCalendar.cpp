#include "DueCalendar.h"

#include "Units.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"

#include <QFileDevice>
#include <QSaveFile>
#include <QUrl>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString basicDate(const QDate &date)
{
    return date.toString(u"yyyyMMdd"_s);
}

} // namespace

DueCalendar::DueCalendar(const Vehicle &vehicle, quint32 stamp)
    : m_vehicle(vehicle)
    , m_stamp(stamp)
{ }

bool DueCalendar::hasEvent(const ServiceDue &service)
{
    return service.hasDueDate && service.lastDate != 0 && service.dueDate.isValid();
}

qsizetype DueCalendar::eventCount(const QList<ServiceDue> &services)
{
    return std::count_if(services.begin(), services.end(), &DueCalendar::hasEvent);
}

QString DueCalendar::nothingDueText()
{
    return u"No service has a due date yet: a service needs a day interval and a date it was last done."_s;
}

QString DueCalendar::escapeText(const QString &text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'\\' || c == u';' || c == u',') {
            out += u'\\';
            out += c;
        } else if (c == u'\r') {
            // "\r\n" and a lone "\r" both end a line.
            out += u"\\n"_s;
            if (i + 1 < text.size() && text.at(i + 1) == u'\n')
                ++i;
        } else if (c == u'\n') {
            out += u"\\n"_s;
        } else {
            out += c;
        }
    }
    return out;
}

QByteArray DueCalendar::foldLine(const QByteArray &line)
{
    constexpr qsizetype Limit = 75;
    QByteArray out;
    qsizetype start = 0;
    qsizetype room = Limit;
    while (line.size() - start > room) {
        qsizetype end = start + room;
        // Back off to the first byte of a UTF-8 sequence.
        while (end > start && (static_cast<unsigned char>(line.at(end)) & 0xC0) == 0x80)
            --end;
        out += line.mid(start, end - start);
        out += "\r\n ";
        start = end;
        room = Limit - 1; // the leading blank counts
    }
    out += line.mid(start);
    out += "\r\n";
    return out;
}

QString DueCalendar::uid(const QString &vin, int serviceIndex)
{
    // Percent-encoding keeps any VIN inside the characters a UID line can carry unescaped.
    const QString key = QString::fromLatin1(QUrl::toPercentEncoding(vin));
    return cformat("%s-LastR%d@tarvane", key.toUtf8().constData(), serviceIndex);
}

QString DueCalendar::distanceText(double distance) const
{
    return cformat("%.0f %s", distance, Units::reminderUnitWord(m_vehicle.distanceUnit).toUtf8().constData());
}

QString DueCalendar::summary(const ServiceDue &service) const
{
    return u"%1 due (%2)"_s.arg(service.displayLabel(), m_vehicle.name);
}

QString DueCalendar::description(const ServiceDue &service) const
{
    QStringList lines;
    lines << u"Vehicle: %1 (VIN %2)"_s.arg(m_vehicle.name, m_vehicle.vin);
    lines << u"Due date: %1"_s.arg(service.dueDate.toString(Qt::ISODate));
    lines << (service.intervalDistance > 0 ? u"Due reading: %1"_s.arg(distanceText(service.dueReading))
                                           : u"Due reading: none"_s);
    lines << u"Last done: %1 on %2"_s.arg(distanceText(service.lastMileage),
                                          DeviceTime::toLocal(service.lastDate).date().toString(Qt::ISODate));
    QString interval = cformat("Interval: %d days", service.intervalDays);
    if (service.intervalDistance > 0)
        interval += u", "_s + distanceText(service.intervalDistance);
    lines << interval;
    return lines.join(u'\n');
}

QByteArray DueCalendar::encode(const QList<ServiceDue> &services) const
{
    QByteArray out;
    const auto line = [&out](const QString &text) {
        out += foldLine(text.toUtf8());
    };
    line(u"BEGIN:VCALENDAR"_s);
    line(u"VERSION:2.0"_s);
    line(u"PRODID:-//Quellar//Tarvane//EN"_s);
    line(u"CALSCALE:GREGORIAN"_s);
    const QString stamp = QDateTime::fromSecsSinceEpoch(m_stamp, Qt::UTC).toString(u"yyyyMMdd'T'HHmmss'Z'"_s);
    for (const ServiceDue &service : services) {
        if (!hasEvent(service))
            continue;
        const QString title = escapeText(summary(service));
        line(u"BEGIN:VEVENT"_s);
        line(u"UID:"_s + uid(m_vehicle.vin.isEmpty() ? m_vehicle.name : m_vehicle.vin, service.index));
        line(u"DTSTAMP:"_s + stamp);
        line(u"DTSTART;VALUE=DATE:"_s + basicDate(service.dueDate));
        line(u"DTEND;VALUE=DATE:"_s + basicDate(service.dueDate.addDays(1)));
        line(u"SUMMARY:"_s + title);
        line(u"DESCRIPTION:"_s + escapeText(description(service)));
        line(u"TRANSP:TRANSPARENT"_s);
        line(u"BEGIN:VALARM"_s);
        line(u"ACTION:DISPLAY"_s);
        line(u"DESCRIPTION:"_s + title);
        line(u"TRIGGER:-P7D"_s);
        line(u"END:VALARM"_s);
        line(u"END:VEVENT"_s);
    }
    line(u"END:VCALENDAR"_s);
    return out;
}

bool DueCalendar::write(QIODevice *device, const QList<ServiceDue> &services)
{
    m_error.clear();
    if (eventCount(services) == 0) {
        m_error = nothingDueText();
        return false;
    }
    const auto *file = qobject_cast<QFileDevice *>(device);
    const QString name = file ? file->fileName() : u"(stream)"_s;
    if (!device || !device->isWritable()) {
        m_error = u"Unable to write the calendar file %1."_s.arg(name);
        return false;
    }
    const QByteArray bytes = encode(services);
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 n = device->write(bytes.constData() + done, bytes.size() - done);
        if (n <= 0) {
            m_error = u"Unable to write the calendar file %1: %2."_s.arg(name, device->errorString());
            return false;
        }
        done += n;
    }
    return true;
}

bool DueCalendar::write(const QString &fileName, const QList<ServiceDue> &services)
{
    if (eventCount(services) == 0) {
        m_error = nothingDueText();
        return false;
    }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = u"Unable to write the calendar file %1: %2."_s.arg(fileName, file.errorString());
        return false;
    }
    if (!write(&file, services))
        return false;
    if (!file.commit()) {
        m_error = u"Unable to write the calendar file %1: %2."_s.arg(fileName, file.errorString());
        return false;
    }
    return true;
}
