#pragma once

#include <QString>
#include <QStringList>

class QIODevice;

// The first line of an import file: the column titles and where the records begin.
struct CsvHeader
{
    enum class Status { Ok, OpenError, NoColumns };

    static QString openErrorMessage();
    static QString noColumnsMessage();

    // The title of each file column, counting from 0; an empty field between two commas keeps its
    // place with an empty title (it is not listed, but later columns keep their numbers).
    QStringList titles;
    // Bytes of the first line with its line end: the offset of the first record.
    qint64 length = 0;

    // The first 512 bytes up to the first line end, as 8-bit text. A line without a comma has
    // no columns.
    static Status read(QIODevice *device, CsvHeader *header);
    static Status read(const QString &fileName, CsvHeader *header);
    // Splits a first line into titles; false when it holds no comma.
    static bool split(const QString &line, QStringList *titles);

    // The message of a status, empty for Ok.
    static QString message(Status status);
};
