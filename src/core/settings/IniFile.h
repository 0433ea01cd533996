#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;

// Red, green and blue of a colour kept in a settings file ("r,g,b").
struct IniColor
{
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const IniColor &) const = default;
};

// The settings-file object: an in-memory UTF-16 INI file with case-sensitive names whose
// sections and keys keep the order in which they were first met. Each owner loads its own
// copy, and the object writes itself back to its path when destroyed.
class IniFile
{
public:
    IniFile() = default;
    ~IniFile();
    IniFile(const IniFile &) = delete;
    IniFile &operator=(const IniFile &) = delete;

    // Larger files are no settings file and are refused unread.
    static constexpr qint64 MaxFileSize = qint64(16) << 20;

    // Host paths. Load forgets everything first and remembers the path. A file that exists but
    // can't be read (not a regular file, too large, no known text encoding) is never saved over.
    bool Load(const QString &path);
    // With an empty path the remembered one is used; false when there is none, when the file
    // there exists but can't be read as settings, or writing fails (errorString() says why).
    bool Save(const QString &path = QString());
    // "The settings file %s could not be saved; it is left as it was."
    static QString saveFailedText(const QString &path);
    // Another program saved the file since this object last read or wrote it. Save() then takes
    // the other program's content (making our own changes again over it).
    bool changedOnDisk() const;
    // The reason of the last failed Load or Save, in the system's words.
    QString errorString() const { return m_error; }
    // The last Load found a file it could not read.
    bool loadFailed() const { return m_unreadable; }

    bool GetString(const QString &section, const QString &key, QString &out) const;
    void SetString(const QString &section, const QString &key, const QString &value);
    bool GetInt(const QString &section, const QString &key, int &out) const;
    void SetInt(const QString &section, const QString &key, int value);
    bool GetColor(const QString &section, const QString &key, IniColor &out) const;
    void SetColor(const QString &section, const QString &key, const IniColor &color);
    bool DeleteKey(const QString &section, const QString &key);
    void DeleteSection(const QString &section);

    // Parsing and writing without a file, for the codec tests and the fuzzer. False (and empty)
    // for bytes in no known encoding.
    bool parse(const QByteArray &bytes);
    // The text of a file: UTF-16 with either mark or without one, UTF-8 with or without its mark.
    // Empty bytes are an empty text. False for anything else (binary, another 8-bit encoding).
    static bool decode(const QByteArray &bytes, QString *text);
    QByteArray serialize() const;

    // The value conversions behind GetInt, SetInt and GetColor.
    // parseInt reads like C's atoi: white space, an optional sign, digits; 0 when there are none;
    // out-of-range values stop at INT_MIN / INT_MAX.
    static int parseInt(QStringView text);
    // Digits with no sign, made as '0' + value % 10: a negative value comes out as characters
    // below '0' (-5 gives "+", -15 gives "/+"), a quirk that is kept on purpose.
    static QString formatInt(int value);
    // Up to three numbers separated by ","; characters other than digits and "," are ignored.
    static IniColor parseColor(QStringView text);

    QString path() const { return m_path; }
    // Reading tools (the CLI's reading commands) must leave the file as it is.
    void setSaveOnDestroy(bool save) { m_saveOnDestroy = save; }
    bool isModified() const { return m_modified; }
    QStringList sections() const { return m_sectionOrder; }
    QStringList keys(const QString &section) const;
    bool hasSection(const QString &section) const { return m_sections.contains(section); }

private:
    struct Section
    {
        QStringList keyOrder;
        QHash<QString, QString> values;
    };

    // Our own changes since the last load or save, made again over a file another program saved.
    struct JournalEntry
    {
        enum Op { Set, DeleteKeyOp, DeleteSectionOp } op;
        QString section;
        QString key;
        QString value;
    };

    // False when the file exists but is not settings; bytes gets what it holds.
    static bool readExisting(const QString &path, QByteArray *bytes);
    static QByteArray contentHash(const QByteArray &bytes);
    bool parseKeepingPath(const QByteArray &bytes);

    QList<JournalEntry> m_journal;
    QString m_loadedPath;
    QByteArray m_loadedHash; // of the bytes last read from or written to m_loadedPath

    QString m_path;
    QString m_error;
    bool m_unreadable = false;
    QStringList m_sectionOrder;
    QHash<QString, Section> m_sections;
    bool m_modified = false;
    bool m_saveOnDestroy = true;
};
