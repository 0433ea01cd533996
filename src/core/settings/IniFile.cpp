#include "IniFile.h"

#include "platform/CFormat.h"

#include "platform/AtomicFile.h"
#include "platform/FileLock.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QtEndian>

#include <climits>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool startsKey(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

// The UTF-16 code units from skip on, taken one for one (unpaired surrogates included) so that
// what was read is written back unchanged. A trailing odd byte is dropped. Copied in bulk: this
// runs over every byte of every settings file the program reads.
QString decodeUtf16Le(const QByteArray &bytes, qsizetype skip)
{
    const qsizetype units = (bytes.size() - skip) / 2;
    QString text(units, Qt::Uninitialized);
    if (units > 0)
        qFromLittleEndian<char16_t>(bytes.constData() + skip, units, text.data());
    return text;
}

QString decodeUtf16Be(const QByteArray &bytes, qsizetype skip)
{
    const qsizetype units = (bytes.size() - skip) / 2;
    QString text(units, Qt::Uninitialized);
    if (units > 0)
        qFromBigEndian<char16_t>(bytes.constData() + skip, units, text.data());
    return text;
}

// UTF-16 that lost its mark: zero bytes only in the high halves of the code units.
int markLessUtf16Order(const QByteArray &bytes)
{
    if (bytes.size() % 2 != 0)
        return 0;
    bool zeroEven = false;
    bool zeroOdd = false;
    const char *begin = bytes.constData();
    const char *end = begin + bytes.size();
    for (const char *p = begin; p < end && !(zeroEven && zeroOdd); ++p) {
        p = static_cast<const char *>(std::memchr(p, 0, size_t(end - p)));
        if (!p)
            break;
        ((p - begin) % 2 ? zeroOdd : zeroEven) = true;
    }
    if (zeroOdd && !zeroEven)
        return 1; // little-endian
    if (zeroEven && !zeroOdd)
        return 2; // big-endian
    return 0;
}

void appendUtf16Le(QByteArray &out, QStringView text)
{
    // An empty view may have no data at all, and the bulk copy must not see a null pointer.
    if (text.isEmpty())
        return;
    const qsizetype at = out.size();
    out.resize(at + 2 * text.size());
    qToLittleEndian<char16_t>(text.utf16(), text.size(), out.data() + at);
}

} // namespace

IniFile::~IniFile()
{
    // Owners rely on this: settings reach the disk when the object that holds them goes away.
    if (!m_path.isEmpty() && m_saveOnDestroy && !m_unreadable)
        Save();
}

bool IniFile::Load(const QString &path)
{
    m_sectionOrder.clear();
    m_sections.clear();
    m_modified = false;
    m_path = path;
    m_unreadable = false;
    m_error.clear();
    m_journal.clear();
    m_loadedPath = path;
    m_loadedHash = contentHash(QByteArray());
    if (path.isEmpty())
        return false;

    if (!QFileInfo::exists(path))
        return false;
    QByteArray bytes;
    if (!AtomicFile::readFile(path, MaxFileSize, bytes, &m_error)) {
        m_unreadable = true;
        return false;
    }
    m_loadedHash = contentHash(bytes);
    if (!parse(bytes)) {
        // Never written over: what the user had stays for them to look at or repair.
        m_unreadable = true;
        m_error = u"Not a settings file in a known text encoding"_s;
        return false;
    }
    m_modified = false;
    return true;
}

bool IniFile::Save(const QString &path)
{
    if (!path.isEmpty())
        m_path = path;
    if (m_path.isEmpty())
        return false;

    FileLock lock(m_path);
    if (!lock.lock()) {
        m_error = FileLock::busyMessage(m_path);
        return false;
    }
    // A file that exists but can't be read as settings is the user's, not ours to replace: this
    // holds whoever loaded what before, so a template can't be saved over it either.
    QByteArray onDisk;
    const bool exists = QFileInfo::exists(m_path);
    if ((m_unreadable && m_path == m_loadedPath && exists) || (exists && !readExisting(m_path, &onDisk))) {
        m_error = u"The file could not be read as settings and is kept as it is"_s;
        return false;
    }
    // Another program (the CLI, a second window) saved since we loaded: start from its file and
    // make our own changes again, so neither side loses what the other wrote.
    if (m_path == m_loadedPath && contentHash(exists ? onDisk : QByteArray()) != m_loadedHash) {
        if (!m_modified) {
            m_loadedHash = contentHash(onDisk);
            return parseKeepingPath(onDisk);
        }
        const QList<JournalEntry> journal = std::exchange(m_journal, {});
        parse(onDisk);
        for (const JournalEntry &entry : journal) {
            if (entry.op == JournalEntry::Set)
                SetString(entry.section, entry.key, entry.value);
            else if (entry.op == JournalEntry::DeleteKeyOp)
                DeleteKey(entry.section, entry.key);
            else
                DeleteSection(entry.section);
        }
    }

    const QByteArray bytes = serialize();
    QString reason;
    if (!AtomicFile::writeFile(m_path, bytes, &reason)) {
        m_error = reason;
        return false;
    }
    m_loadedPath = m_path;
    m_loadedHash = contentHash(bytes);
    m_journal.clear();
    m_unreadable = false;
    m_error.clear();
    m_modified = false;
    return true;
}

QString IniFile::saveFailedText(const QString &path)
{
    return u"The settings file %1 could not be saved; it is left as it was."_s.arg(path);
}

bool IniFile::changedOnDisk() const
{
    if (m_path.isEmpty() || m_path != m_loadedPath || m_unreadable)
        return false;
    QByteArray onDisk;
    if (QFileInfo::exists(m_path) && !readExisting(m_path, &onDisk))
        return false; // not settings any more: Save() refuses it and says so
    return contentHash(onDisk) != m_loadedHash;
}

bool IniFile::parseKeepingPath(const QByteArray &bytes)
{
    m_journal.clear();
    const bool ok = parse(bytes);
    m_modified = false;
    return ok;
}

QByteArray IniFile::contentHash(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

bool IniFile::readExisting(const QString &path, QByteArray *bytes)
{
    QString reason;
    if (!AtomicFile::checkReadable(path, MaxFileSize, &reason))
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true; // the write will fail on its own, with the system's reason
    *bytes = file.readAll();
    QString text;
    return decode(*bytes, &text);
}

bool IniFile::decode(const QByteArray &bytes, QString *text)
{
    text->clear();
    if (bytes.isEmpty())
        return true; // an empty file holds nothing to lose
    const auto *b = reinterpret_cast<const uchar *>(bytes.constData());
    if (bytes.size() >= 2 && b[0] == 0xff && b[1] == 0xfe) {
        *text = decodeUtf16Le(bytes, 2);
        return true;
    }
    // Files re-saved by an editor are read as what they plainly are.
    if (bytes.size() >= 2 && b[0] == 0xfe && b[1] == 0xff) {
        *text = decodeUtf16Be(bytes, 2);
        return true;
    }
    if (const int order = markLessUtf16Order(bytes)) {
        *text = order == 1 ? decodeUtf16Le(bytes, 0) : decodeUtf16Be(bytes, 0);
        return true;
    }
    const qsizetype skip = bytes.startsWith("\xef\xbb\xbf") ? 3 : 0;
    if (bytes.indexOf('\0') >= 0)
        return false;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    *text = utf8.decode(QByteArrayView(bytes).sliced(skip));
    if (utf8.hasError()) {
        text->clear();
        return false;
    }
    return true;
}

bool IniFile::parse(const QByteArray &bytes)
{
    m_sectionOrder.clear();
    m_sections.clear();
    m_modified = false;

    QString text;
    if (!decode(bytes, &text))
        return false;
    const QChar *data = text.constData();
    const qsizetype n = text.size();
    Section *current = nullptr;
    qsizetype i = 0;

    while (i < n) {
        const char16_t c = data[i].unicode();
        if (c == u'[') {
            const qsizetype close = text.indexOf(u']', i + 1);
            if (close < 0)
                return true; // a header that never closes ends the file
            const QString name = text.mid(i + 1, close - i - 1);
            auto it = m_sections.find(name);
            if (it == m_sections.end()) {
                m_sectionOrder.append(name);
                it = m_sections.insert(name, Section());
            }
            current = &it.value();
            i = close + 1;
            continue;
        }
        if (!startsKey(c)) {
            ++i;
            continue;
        }

        // A key runs to the next "=", across line ends if need be.
        const qsizetype eq = text.indexOf(u'=', i);
        if (eq < 0)
            return true;
        const QString key = text.mid(i, eq - i);
        qsizetype v = eq + 1;
        while (v < n && (data[v] == u' ' || data[v] == u'\t'))
            ++v;
        qsizetype end = v;
        while (end < n && data[end] != u'\r' && data[end] != u'\n')
            ++end;
        const QString value = text.mid(v, end - v);
        i = end;

        // Keys in front of the first header belong to no section and are dropped.
        if (!current)
            continue;
        auto vit = current->values.find(key);
        if (vit == current->values.end()) {
            current->keyOrder.append(key);
            current->values.insert(key, value);
        } else {
            vit.value() = value;
        }
    }
    return true;
}

QByteArray IniFile::serialize() const
{
    QByteArray out;
    out.append('\xff');
    out.append('\xfe');
    for (const QString &name : m_sectionOrder) {
        appendUtf16Le(out, u"\r\n[");
        appendUtf16Le(out, name);
        appendUtf16Le(out, u"]\r\n");
        const Section &section = m_sections[name];
        for (const QString &key : section.keyOrder) {
            appendUtf16Le(out, key);
            appendUtf16Le(out, u"=");
            appendUtf16Le(out, section.values[key]);
            appendUtf16Le(out, u"\r\n");
        }
    }
    return out;
}

QStringList IniFile::keys(const QString &section) const
{
    const auto it = m_sections.constFind(section);
    return it == m_sections.cend() ? QStringList() : it->keyOrder;
}

bool IniFile::GetString(const QString &section, const QString &key, QString &out) const
{
    const auto it = m_sections.constFind(section);
    if (it == m_sections.cend())
        return false;
    const auto vit = it->values.constFind(key);
    if (vit == it->values.cend())
        return false;
    out = vit.value();
    return true;
}

void IniFile::SetString(const QString &section, const QString &key, const QString &value)
{
    auto it = m_sections.find(section);
    if (it == m_sections.end()) {
        m_sectionOrder.append(section);
        it = m_sections.insert(section, Section());
    }
    auto vit = it->values.find(key);
    if (vit == it->values.end()) {
        it->keyOrder.append(key);
        it->values.insert(key, value);
    } else {
        vit.value() = value;
    }
    m_modified = true;
    m_journal.append({ JournalEntry::Set, section, key, value });
}

bool IniFile::GetInt(const QString &section, const QString &key, int &out) const
{
    QString text;
    if (!GetString(section, key, text))
        return false;
    out = parseInt(text);
    return true;
}

void IniFile::SetInt(const QString &section, const QString &key, int value)
{
    SetString(section, key, formatInt(value));
}

bool IniFile::GetColor(const QString &section, const QString &key, IniColor &out) const
{
    QString text;
    if (!GetString(section, key, text))
        return false;
    out = parseColor(text);
    return true;
}

void IniFile::SetColor(const QString &section, const QString &key, const IniColor &color)
{
    SetString(section, key, cformat("%d,%d,%d", color.red, color.green, color.blue));
}

bool IniFile::DeleteKey(const QString &section, const QString &key)
{
    auto it = m_sections.find(section);
    if (it == m_sections.end())
        return false;
    if (it->values.remove(key) == 0)
        return false;
    it->keyOrder.removeOne(key);
    m_modified = true;
    m_journal.append({ JournalEntry::DeleteKeyOp, section, key, QString() });
    return true;
}

void IniFile::DeleteSection(const QString &section)
{
    if (m_sections.remove(section) == 0)
        return;
    m_sectionOrder.removeOne(section);
    m_modified = true;
    m_journal.append({ JournalEntry::DeleteSectionOp, section, QString(), QString() });
}

int IniFile::parseInt(QStringView text)
{
    // As C's atoi: leading white space, an optional sign, then digits up to the first other
    // character. Values beyond the int range stop at INT_MAX / INT_MIN.
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n
           && (text[i] == u' ' || text[i] == u'\t' || text[i] == u'\r' || text[i] == u'\n' || text[i] == u'\v'
               || text[i] == u'\f'))
        ++i;
    bool negative = false;
    if (i < n && (text[i] == u'-' || text[i] == u'+')) {
        negative = text[i] == u'-';
        ++i;
    }
    qint64 value = 0;
    for (; i < n && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        value = value * 10 + (text[i].unicode() - u'0');
        if (value > qint64(INT_MAX) + 1)
            value = qint64(INT_MAX) + 1;
    }
    if (negative)
        return int(-value);
    return value > INT_MAX ? INT_MAX : int(value);
}

QString IniFile::formatInt(int value)
{
    // Digits are produced as '0' + value % 10, so a negative value gives characters below '0'
    // ("+" for -5, "/+" for -15). Settings never hold negative numbers; the quirk is kept.
    char16_t digits[16];
    int count = 0;
    do {
        digits[count++] = char16_t(u'0' + value % 10);
        value /= 10;
    } while (value != 0);
    QString text(count, Qt::Uninitialized);
    for (int k = 0; k < count; ++k)
        text[k] = QChar(digits[count - 1 - k]);
    return text;
}

IniColor IniFile::parseColor(QStringView text)
{
    // Digits build the current number, "," moves to the next; everything else is ignored.
    qint64 parts[3] = { 0, 0, 0 };
    int index = 0;
    for (const QChar c : text) {
        if (c == u',') {
            if (++index == 3)
                break;
        } else if (c >= u'0' && c <= u'9') {
            parts[index] = qMin<qint64>(parts[index] * 10 + (c.unicode() - u'0'), INT_MAX);
        }
    }
    return IniColor { int(parts[0]), int(parts[1]), int(parts[2]) };
}
