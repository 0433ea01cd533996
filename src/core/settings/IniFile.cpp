#include "IniFile.h"

#include "platform/CFormat.h"

#include <QFile>
#include <QSaveFile>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

bool startsKey(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

// The UTF-16LE code units after the byte-order mark, taken one for one (unpaired surrogates
// included) so that what was read is written back unchanged. A trailing odd byte is dropped.
QString decodeUtf16Le(const QByteArray &bytes)
{
    const qsizetype units = (bytes.size() - 2) / 2;
    QString text(units, Qt::Uninitialized);
    QChar *out = text.data();
    const auto *in = reinterpret_cast<const uchar *>(bytes.constData()) + 2;
    for (qsizetype i = 0; i < units; ++i)
        out[i] = QChar(char16_t(in[2 * i] | (in[2 * i + 1] << 8)));
    return text;
}

void appendUtf16Le(QByteArray &out, QStringView text)
{
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        out.append(char(u & 0xff));
        out.append(char(u >> 8));
    }
}

} // namespace

IniFile::~IniFile()
{
    // Owners rely on this: settings reach the disk when the object that holds them goes away.
    if (!m_path.isEmpty() && m_saveOnDestroy)
        Save();
}

bool IniFile::Load(const QString &path)
{
    m_sectionOrder.clear();
    m_sections.clear();
    m_modified = false;
    m_path = path;
    if (path.isEmpty())
        return false;

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const qint64 size = file.size();
    if (size < 0)
        return false;
    parse(file.readAll());
    m_modified = false;
    return true;
}

bool IniFile::Save(const QString &path)
{
    if (!path.isEmpty())
        m_path = path;
    if (m_path.isEmpty())
        return false;

    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QByteArray bytes = serialize();
    // An unfinished QSaveFile is discarded, so the old file stays whole on any failure.
    if (file.write(bytes) != bytes.size() || !file.commit())
        return false;
    m_modified = false;
    return true;
}

void IniFile::parse(const QByteArray &bytes)
{
    m_sectionOrder.clear();
    m_sections.clear();
    m_modified = false;

    // Without the mark the file reads as empty, on purpose.
    if (bytes.size() < 2 || uchar(bytes[0]) != 0xff || uchar(bytes[1]) != 0xfe)
        return;

    const QString text = decodeUtf16Le(bytes);
    const QChar *data = text.constData();
    const qsizetype n = text.size();
    Section *current = nullptr;
    qsizetype i = 0;

    while (i < n) {
        const char16_t c = data[i].unicode();
        if (c == u'[') {
            const qsizetype close = text.indexOf(u']', i + 1);
            if (close < 0)
                break; // a header that never closes ends the file
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
            break;
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
    return true;
}

void IniFile::DeleteSection(const QString &section)
{
    if (m_sections.remove(section) == 0)
        return;
    m_sectionOrder.removeOne(section);
    m_modified = true;
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
