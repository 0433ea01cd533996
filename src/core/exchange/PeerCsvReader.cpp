#include "PeerCsvReader.h"

#include <QString>

using namespace Qt::StringLiterals;

namespace {

QString decode(const QByteArray &bytes)
{
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

} // namespace

QChar PeerCsvReader::detectSeparator(const QByteArray &bytes)
{
    int commas = 0;
    int semicolons = 0;
    bool quoted = false;
    for (const char c : bytes) {
        if (c == '"')
            quoted = !quoted;
        else if (!quoted && (c == '\n' || c == '\r'))
            break;
        else if (!quoted && c == ',')
            ++commas;
        else if (!quoted && c == ';')
            ++semicolons;
    }
    return semicolons > commas ? u';' : u',';
}

std::vector<PeerCsvRow> PeerCsvReader::parse(const QByteArray &bytes, QChar separator)
{
    return parse(decode(bytes), separator);
}

std::vector<PeerCsvRow> PeerCsvReader::parse(const QString &input, QChar separator)
{
    QString text = input;
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    std::vector<PeerCsvRow> rows;
    PeerCsvRow row;
    QString field;
    bool quoted = false; // inside a quoted part of the field
    bool fieldStarted = false; // the row has at least one character or separator
    int line = 1;
    row.line = 1;
    const qsizetype size = text.size();
    auto endRow = [&]() {
        if (fieldStarted)
            row.fields.append(field);
        rows.push_back(row);
        row = PeerCsvRow();
        field.clear();
        fieldStarted = false;
    };
    for (qsizetype i = 0; i < size; ++i) {
        const QChar c = text.at(i);
        if (quoted) {
            if (c == u'"') {
                if (i + 1 < size && text.at(i + 1) == u'"') {
                    field.append(u'"');
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                if (c == u'\n' || (c == u'\r' && !(i + 1 < size && text.at(i + 1) == u'\n')))
                    ++line;
                field.append(c);
            }
            continue;
        }
        if (c == u'\r' || c == u'\n') {
            if (c == u'\r' && i + 1 < size && text.at(i + 1) == u'\n')
                ++i;
            endRow();
            ++line;
            row.line = line;
            continue;
        }
        fieldStarted = true;
        if (c == separator) {
            row.fields.append(field);
            field.clear();
        } else if (c == u'"' && field.trimmed().isEmpty()) {
            // Blanks before an opening quote (", \"Civic\"") are layout, not content.
            field.clear();
            quoted = true;
        } else if (c == u'"' && i > 0 && text.at(i - 1) == u'"') {
            // `""` right after a closing quote: a literal quote, as inside the quotes.
            quoted = true;
            field.append(u'"');
        } else {
            field.append(c);
        }
    }
    if (fieldStarted || quoted)
        endRow();
    return rows;
}

QByteArray PeerCsvReader::write(const std::vector<PeerCsvRow> &rows, QChar separator)
{
    QString text;
    for (const PeerCsvRow &row : rows) {
        for (qsizetype i = 0; i < row.fields.size(); ++i) {
            if (i > 0)
                text.append(separator);
            QString field = row.fields.at(i);
            field.replace(u"\""_s, u"\"\""_s);
            text.append(u'"').append(field).append(u'"');
        }
        text.append(u'\n');
    }
    return text.toUtf8();
}
