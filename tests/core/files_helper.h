#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTest>

#include "log/CVCItemJson.h"
#include "log/LogArchive.h"

// Files, records and times as the tests of every group write and read them. Settings files lie on
// disk as the mark FF FE, then each UTF-16 code unit low byte first.
namespace TestFiles {

inline QByteArray utf16(const QString &text)
{
    QByteArray bytes("\xff\xfe", 2);
    for (const QChar c : text) {
        bytes.append(char(c.unicode() & 0xff));
        bytes.append(char(c.unicode() >> 8));
    }
    return bytes;
}

// "[S]|k=v" as a list of lines.
inline QStringList lines(const QString &joined)
{
    return joined.split(u'|', Qt::SkipEmptyParts);
}

// A file in the written form: each "[section]" line after an empty line, every line ended by CR LF.
inline QByteArray written(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += (line.startsWith(u'[') ? QStringLiteral("\r\n") : QString()) + line + QStringLiteral("\r\n");
    return utf16(text);
}

// Writes the bytes, creating missing folders on the way.
inline bool write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The same, failing the running test when the file can't be written.
inline void put(const QString &path, const QByteArray &bytes)
{
    QVERIFY2(write(path, bytes), qPrintable(path));
}

// A file's bytes, or "<missing>" so a comparison says what went wrong.
inline QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("<missing>");
    return file.readAll();
}

// Every file below a folder (relative path to bytes), hidden ones included, so that a stray
// temporary file shows up too.
inline QMap<QString, QByteArray> snapshot(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(QDir(folder).relativeFilePath(path), read(path));
    }
    return files;
}

// The odometers of a log file in their order, {-1} when it does not read.
inline QList<double> odometers(const QString &path)
{
    EntryList list;
    if (!LogArchive().read(path, list))
        return { -1 };
    QList<double> values;
    for (const CVCItem &item : list)
        values.append(item.odometer);
    return values;
}

// A record from the JSON of the fields that are set, written with single quotes; the rest are 0.
// A name the record does not have stops the run: a misspelt fixture would otherwise pass unseen.
inline CVCItem record(const QByteArray &fields)
{
    QJsonParseError error;
    const QByteArray text = QByteArray('{' + fields + '}').replace('\'', '"');
    const QJsonObject object = QJsonDocument::fromJson(text, &error).object();
    const QJsonObject all = cvcItemToJson(CVCItem());
    for (const QString &key : object.keys())
        error.error = all.contains(key) ? error.error : QJsonParseError::IllegalValue;
    if (error.error != QJsonParseError::NoError)
        qFatal("Bad record fixture: %s", fields.constData());
    return cvcItemFromJson(object);
}

// Every field of a record, so that a QCOMPARE shows which one differs.
inline QString json(const CVCItem &item)
{
    return QString::fromUtf8(QJsonDocument(cvcItemToJson(item)).toJson(QJsonDocument::Compact));
}

// The bytes of a log holding one fill-up at the odometer.
inline QByteArray logBytes(double odometer)
{
    return LogArchive::encode({ { .odometer = odometer, .typeText = QStringLiteral("Fuel") } });
}

// "2026-11-02T09:00:00" UTC, and a day at an hour UTC, as the log's seconds.
inline quint32 utc(const char *iso)
{
    return quint32(QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate).toSecsSinceEpoch());
}

inline quint32 at(int year, int month, int day, int hour = 12)
{
    return quint32(QDateTime(QDate(year, month, day), QTime(hour, 0), Qt::UTC).toSecsSinceEpoch());
}

// The drums of a whole-number counter showing the digits, red ones when alert.
inline QList<int> whole(const char *digits, bool alert = false)
{
    QList<int> tiles;
    for (const char *c = digits; *c; ++c)
        tiles << (alert ? 211 : 198) + (*c - '0');
    return tiles;
}

} // namespace TestFiles
