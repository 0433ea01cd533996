#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "ServiceDue.h"

class QIODevice;

// Writes the due dates of a vehicle's services as an iCalendar file, so that any calendar program
// reminds the user without Tarvane running: one all-day event per due date, with an alarm a week
// before and the due reading in its description. Each event's UID is made of the vehicle's VIN
// and the service's number, so importing a newer file moves the events instead of adding copies.
class DueCalendar
{
public:
    struct Vehicle
    {
        QString name;
        QString vin;
        int distanceUnit = 0;
    };

    // stamp is the time the file is made (DTSTAMP). Dates in the descriptions are ISO dates, which
    // read the same in every locale the file may be imported in.
    DueCalendar(const Vehicle &vehicle, quint32 stamp);

    // A service becomes an event when it has a due date and has been done at least once (a
    // service never done would fall due in 1970).
    static bool hasEvent(const ServiceDue &service);
    static qsizetype eventCount(const QList<ServiceDue> &services);

    // The whole file: CRLF line ends, lines folded at 75 octets, UTF-8.
    QByteArray encode(const QList<ServiceDue> &services) const;

    // False, with errorString(), when nothing is due by date or the device fails.
    bool write(QIODevice *device, const QList<ServiceDue> &services);
    // Atomic: an existing file stays whole unless the new one is written completely.
    bool write(const QString &fileName, const QList<ServiceDue> &services);
    QString errorString() const { return m_error; }

    // TEXT values: backslash, semicolon, comma and line breaks escaped.
    static QString escapeText(const QString &text);
    // One content line in UTF-8, folded so that no line exceeds 75 octets (never inside a
    // character), each line ended by CRLF.
    static QByteArray foldLine(const QByteArray &line);
    static QString uid(const QString &vin, int serviceIndex);
    static QString nothingDueText();

private:
    QString summary(const ServiceDue &service) const;
    QString description(const ServiceDue &service) const;
    QString distanceText(double distance) const;

    Vehicle m_vehicle;
    quint32 m_stamp;
    QString m_error;
};
