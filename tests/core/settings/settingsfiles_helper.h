#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

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

inline bool write(const QString &path, const QByteArray &bytes)
{
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
