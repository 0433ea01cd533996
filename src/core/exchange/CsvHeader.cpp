#include "CsvHeader.h"

#include <QFile>

#include "CsvTokenizer.h"

using namespace Qt::StringLiterals;

namespace {

QString stripQuotes(QString text)
{
    text = text.trimmed();
    if (text.startsWith(u'"'))
        text.remove(0, 1);
    if (text.endsWith(u'"'))
        text.chop(1);
    return text;
}

} // namespace

QString CsvHeader::openErrorMessage()
{
    return u"ERROR 401: Error opening CSV file"_s;
}

QString CsvHeader::noColumnsMessage()
{
    return u"ERROR 2201: The CSV file selected has no definable columns or no CSV file was selected. Please "
           "select a CSV file using the Browse Button.\nIf a file was selected, Please consult the manual on "
           "CSV formats or visit the support Website."_s;
}

QString CsvHeader::message(Status status)
{
    switch (status) {
    case Status::Ok:
        break;
    case Status::OpenError:
        return openErrorMessage();
    case Status::NoColumns:
        return noColumnsMessage();
    }
    return QString();
}

bool CsvHeader::split(const QString &line, QStringList *titles)
{
    titles->clear();
    if (!line.contains(u','))
        return false;
    qsizetype start = 0;
    for (qsizetype comma = line.indexOf(u','); comma >= 0; comma = line.indexOf(u',', start)) {
        titles->append(stripQuotes(line.mid(start, comma - start)));
        start = comma + 1;
    }
    QString last = line.mid(start);
    static const QString strip = u"\"\r\n ,\t"_s;
    while (!last.isEmpty() && strip.contains(last.front()))
        last.remove(0, 1);
    while (!last.isEmpty() && strip.contains(last.back()))
        last.chop(1);
    titles->append(last);
    return true;
}

CsvHeader::Status CsvHeader::read(QIODevice *device, CsvHeader *header)
{
    *header = CsvHeader();
    if (!device || !device->isReadable())
        return Status::OpenError;
    const QByteArray bytes = device->read(CsvTokenizer::ChunkSize);
    // The line ends at its first line feed; a file with carriage returns only ends it there.
    qsizetype end = bytes.indexOf('\n');
    const qsizetype cr = bytes.indexOf('\r');
    if (end < 0 && cr >= 0)
        end = cr;
    header->length = end < 0 ? bytes.size() : end + 1;
    QByteArray first = bytes.left(end < 0 ? bytes.size() : end);
    // Spreadsheets saving "CSV UTF-8" start with a byte-order mark; it is no part of the first title.
    if (first.startsWith("\xEF\xBB\xBF"))
        first.remove(0, 3);
    const QString line = QString::fromLatin1(first);
    return split(line, &header->titles) ? Status::Ok : Status::NoColumns;
}

CsvHeader::Status CsvHeader::read(const QString &fileName, CsvHeader *header)
{
    *header = CsvHeader();
    QFile file(fileName);
    if (fileName.isEmpty() || !file.open(QIODevice::ReadOnly))
        return Status::OpenError;
    return read(&file, header);
}
