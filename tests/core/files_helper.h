#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>

// Settings files as they lie on disk: the mark FF FE, then each UTF-16 code unit low byte first.
namespace SettingsFiles {

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

inline QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("<missing>");
    return file.readAll();
}

} // namespace SettingsFiles
