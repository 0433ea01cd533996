#include "SettingsIniFormat.h"

#include "AtomicFile.h"

#include <QFileDevice>
#include <QMap>

using namespace Qt::StringLiterals;

namespace {

bool isHexDigit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

void appendHex(QByteArray &out, uint value, int width)
{
    out += QByteArray::number(value, 16).toUpper().rightJustified(width, '0');
}

QByteArray escapedKey(QStringView key)
{
    QByteArray out;
    for (const QChar qc : key) {
        const char16_t c = qc.unicode();
        if (c == u'/')
            out += '\\';
        else if ((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_'
                 || c == u'-' || c == u'.')
            out += char(c);
        else if (c <= 0xff)
            out += '%', appendHex(out, c, 2);
        else
            out += "%U", appendHex(out, c, 4);
    }
    return out;
}

QString unescapedKey(const QByteArray &key)
{
    QString out;
    for (qsizetype i = 0; i < key.size(); ++i) {
        const char c = key[i];
        if (c == '\\') {
            out += u'/';
        } else if (c == '%' && i + 2 < key.size() + 0 && key[i + 1] == 'U' && i + 5 < key.size()) {
            bool ok = false;
            const uint u = key.mid(i + 2, 4).toUInt(&ok, 16);
            out += ok ? QChar(char16_t(u)) : QChar(u'%');
            i += ok ? 5 : 0;
        } else if (c == '%' && i + 2 < key.size()) {
            bool ok = false;
            const uint u = key.mid(i + 1, 2).toUInt(&ok, 16);
            out += ok ? QChar(char16_t(u)) : QChar(u'%');
            i += ok ? 2 : 0;
        } else {
            out += QChar::fromLatin1(c);
        }
    }
    return out;
}

QByteArray escapedValue(const QString &text)
{
    QByteArray out;
    bool needsQuotes = false;
    bool escapeNextIfDigit = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c == u';' || c == u',' || c == u'=')
            needsQuotes = true;
        if (escapeNextIfDigit && isHexDigit(c)) {
            out += "\\x" + QByteArray::number(uint(c), 16);
            continue;
        }
        escapeNextIfDigit = false;
        switch (c) {
        case u'\0':
            out += "\\0";
            escapeNextIfDigit = true;
            break;
        case u'\a':
            out += "\\a";
            break;
        case u'\b':
            out += "\\b";
            break;
        case u'\f':
            out += "\\f";
            break;
        case u'\n':
            out += "\\n";
            break;
        case u'\r':
            out += "\\r";
            break;
        case u'\t':
            out += "\\t";
            break;
        case u'\v':
            out += "\\v";
            break;
        case u'"':
        case u'\\':
            out += '\\', out += char(c);
            break;
        default:
            if (c <= 0x1f) {
                out += "\\x" + QByteArray::number(uint(c), 16);
                escapeNextIfDigit = true;
            } else if (QChar::isHighSurrogate(c) && i + 1 < text.size()) {
                out += QStringView(text).mid(i, 2).toUtf8();
                ++i;
            } else {
                out += QStringView(text).mid(i, 1).toUtf8();
            }
        }
    }
    if (needsQuotes || out.startsWith(' ') || out.endsWith(' '))
        out = '"' + out + '"';
    return out;
}

QByteArray valueText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return "@Invalid()";
    case QMetaType::QString: {
        QString text = value.toString();
        if (text.startsWith(u'@'))
            text.prepend(u'@');
        return escapedValue(text);
    }
    default:
        return escapedValue(value.toString());
    }
}

// A value as QSettings reads it: quotes group, backslashes escape, "," outside quotes makes a
// list and ";" outside quotes starts a comment.
QVariant parsedValue(const QByteArray &raw)
{
    QStringList parts;
    QByteArray current;
    bool quoted = false;
    bool list = false;
    qsizetype i = 0;
    qsizetype kept = 0; // the part's length up to its last quoted or escaped character
    const auto flush = [&] {
        while (current.size() > kept && (current.endsWith(' ') || current.endsWith('\t')))
            current.chop(1);
        parts.append(QString::fromUtf8(current));
        current.clear();
        kept = 0;
    };
    while (i < raw.size()) {
        const char c = raw[i++];
        if (c == '"') {
            quoted = !quoted;
            kept = current.size();
        } else if (c == '\\' && i < raw.size()) {
            const char e = raw[i++];
            switch (e) {
            case 'a':
                current += '\a';
                break;
            case 'b':
                current += '\b';
                break;
            case 'f':
                current += '\f';
                break;
            case 'n':
                current += '\n';
                break;
            case 'r':
                current += '\r';
                break;
            case 't':
                current += '\t';
                break;
            case 'v':
                current += '\v';
                break;
            case 'x': {
                uint u = 0;
                while (i < raw.size() && isHexDigit(char16_t(raw[i]))) {
                    u = u * 16 + uint(QByteArray(1, raw[i]).toUInt(nullptr, 16));
                    ++i;
                }
                current += QString(QChar(char16_t(u))).toUtf8();
                break;
            }
            case '0': {
                uint u = 0;
                while (i < raw.size() && raw[i] >= '0' && raw[i] <= '7')
                    u = u * 8 + uint(raw[i++] - '0');
                current += QString(QChar(char16_t(u))).toUtf8();
                break;
            }
            default:
                current += e;
            }
            kept = current.size();
        } else if (!quoted && c == ';') {
            break;
        } else if (!quoted && c == ',') {
            list = true;
            flush();
        } else if (!quoted && (c == ' ' || c == '\t') && current.isEmpty()) {
            // leading blanks of a part
        } else {
            current += c;
            if (quoted)
                kept = current.size();
        }
    }
    flush();
    if (list)
        return parts;
    const QString text = parts.value(0);
    if (text == u"@Invalid()"_s)
        return QVariant();
    if (text.startsWith(u"@@"_s))
        return text.mid(1);
    return text;
}

bool readDevice(QIODevice &device, QSettings::SettingsMap &map)
{
    map = SettingsIniFormat::parse(device.readAll());
    return true;
}

bool writeDevice(QIODevice &device, const QSettings::SettingsMap &map)
{
    const QByteArray bytes = SettingsIniFormat::serialize(map);
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 n = device.write(bytes.constData() + done, bytes.size() - done);
        if (n <= 0)
            return false;
        done += n;
    }
    // QSettings renames the file after this returns true: the bytes must be on disk by then.
    auto *file = qobject_cast<QFileDevice *>(&device);
    return !file || AtomicFile::finishDevice(*file, nullptr);
}

} // namespace

QSettings::Format SettingsIniFormat::format()
{
    static const QSettings::Format registered = QSettings::registerFormat(u"conf"_s, readDevice, writeDevice);
    return registered;
}

QByteArray SettingsIniFormat::serialize(const QSettings::SettingsMap &map)
{
    // Sections in name order, General (the keys without a group) first, as QSettings does.
    QMap<QString, QList<std::pair<QString, QVariant>>> sections;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        const qsizetype slash = it.key().indexOf(u'/');
        const QString section = slash < 0 ? QString() : it.key().left(slash);
        sections[section].append({ slash < 0 ? it.key() : it.key().mid(slash + 1), it.value() });
    }
    QByteArray out;
    for (auto it = sections.cbegin(); it != sections.cend(); ++it) {
        if (!out.isEmpty())
            out += '\n';
        QByteArray name = it.key().isEmpty() ? QByteArray("General") : escapedKey(it.key());
        if (name == "General" && !it.key().isEmpty())
            name = "%General";
        out += '[' + name + "]\n";
        for (const auto &[key, value] : it.value())
            out += escapedKey(key) + '=' + valueText(value) + '\n';
    }
    return out;
}

QSettings::SettingsMap SettingsIniFormat::parse(const QByteArray &bytes)
{
    QSettings::SettingsMap map;
    QString section;
    for (const QByteArray &rawLine : bytes.split('\n')) {
        const QByteArray line = rawLine.trimmed();
        if (line.isEmpty() || line.startsWith(';') || line.startsWith('#'))
            continue;
        if (line.startsWith('[')) {
            const qsizetype close = line.indexOf(']');
            const QByteArray name = line.mid(1, close < 0 ? -1 : close - 1);
            section = name == "General" ? QString() : unescapedKey(name);
            continue;
        }
        const qsizetype eq = line.indexOf('=');
        if (eq <= 0)
            continue;
        const QString key = unescapedKey(line.left(eq).trimmed());
        map.insert(section.isEmpty() ? key : section + u'/' + key, parsedValue(line.mid(eq + 1)));
    }
    return map;
}
