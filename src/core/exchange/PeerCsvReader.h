#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

// One record of a CSV file and the line it starts on (1-based). A blank line is a row with no
// fields, so that readers of sectioned files can see where a section ends.
struct PeerCsvRow
{
    int line = 0;
    QStringList fields;

    bool isBlank() const
    {
        return fields.isEmpty() || (fields.size() == 1 && fields.first().trimmed().isEmpty());
    }
};

// The CSV reader of the other apps' files: RFC 4180 quoting ("" inside quotes, separators and
// line breaks inside quoted fields), ',' or ';' separators, UTF-8 with or without a byte-order
// mark, CR LF, LF or lone CR line ends. It is forgiving where those apps write broken quoting:
// text after a closing quote (`"Filled tank completely" 2`) stays part of the field, and a quote
// inside an unquoted field is kept as a character.
class PeerCsvReader
{
public:
    // ';' when the first line holds more semicolons than commas outside quotes, else ','.
    static QChar detectSeparator(const QByteArray &bytes);
    static std::vector<PeerCsvRow> parse(const QByteArray &bytes, QChar separator);
    static std::vector<PeerCsvRow> parse(const QString &text, QChar separator);
    // The reverse, every field quoted, rows ended by LF; used to check the reader against itself.
    static QByteArray write(const std::vector<PeerCsvRow> &rows, QChar separator);
};
