#include <QBuffer>
#include <QtTest>

#include "exchange/CsvHeader.h"
#include "exchange/CsvTokenizer.h"

using namespace Qt::StringLiterals;

namespace {

// Every record as "field|field|...", one per line, then how the reading ended.
QString tokenize(const QByteArray &bytes, qint64 start = 0)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    CsvTokenizer tokenizer(&buffer, start);
    CsvRecord record;
    QStringList out;
    for (;;) {
        const CsvTokenizer::Status status = tokenizer.next(record);
        if (status == CsvTokenizer::Status::End) {
            out.append(u"END"_s);
            break;
        }
        if (status == CsvTokenizer::Status::Error) {
            out.append(u"ERROR line %1: %2"_s.arg(tokenizer.line())
                           .arg(tokenizer.errorString().section(u'\n', 0, 1)));
            // The failure sticks.
            if (tokenizer.next(record) != CsvTokenizer::Status::Error)
                out.append(u"(did not stick)"_s);
            break;
        }
        QStringList fields;
        for (int i = 0; i < record.count; ++i)
            fields.append(record.fields[size_t(i)]);
        out.append(fields.join(u'|'));
    }
    return out.join(u'\n');
}

QByteArray fields(int count, const QByteArray &value = "x")
{
    QByteArrayList list;
    for (int i = 0; i < count; ++i)
        list.append(value);
    return list.join(',');
}

} // namespace

class TestCsvTokenizer : public QObject
{
    Q_OBJECT

private slots:
    void tokenizer_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected");
        const QByteArray f124(124, 'a');
        const QByteArray f125(125, 'a');
        const QByteArray long100(100, 'b');

        QTest::newRow("quoted comma") << QByteArray("\"a,b\",c\r\n") << u"a,b|c\nEND"_s;
        QTest::newRow("empty quoted") << QByteArray("\"\",x\r\n") << u" |x\nEND"_s;
        QTest::newRow("empty field") << QByteArray("a,,c\n") << u"a| |c\nEND"_s;
        QTest::newRow("blanks trimmed") << QByteArray("  a  , \" b \" ,c\n") << u"a|\" b \"|c\nEND"_s;
        QTest::newRow("CRLF") << QByteArray("a,b\r\nc,d\r\n") << u"a|b\nc|d\nEND"_s;
        QTest::newRow("LF only") << QByteArray("a,b\nc,d\n") << u"a|b\nc|d\nEND"_s;
        QTest::newRow("CR only") << QByteArray("a,b\rc,d\r") << u"a|b\nc|d\nEND"_s;
        QTest::newRow("no line end at the end") << QByteArray("a,b\nc,d") << u"a|b\nc|d\nEND"_s;
        QTest::newRow("quote then line feed") << QByteArray("1,\"end\"\n2\n") << u"1|end\n2\nEND"_s;
        QTest::newRow("quoted, closing quote not before a comma")
            << QByteArray("\"a\" ,b\",c\n") << u"a\" ,b|c\nEND"_s;
        QTest::newRow("export line, trailing comma")
            << QByteArray("\"Fuel\",\"  1200.0\",\" \",\r\n") << u"Fuel|1200.0| | \nEND"_s;
        QTest::newRow("blank line") << QByteArray("a\n\nb\n") << u"a\n \nb\nEND"_s;
        QTest::newRow("124 characters")
            << QByteArray(f124 + ",x\n") << QString::fromLatin1(f124) + u"|x\nEND"_s;
        QTest::newRow("124 characters at the line end")
            << QByteArray("x," + f124 + "\r\n") << u"x|"_s + QString::fromLatin1(f124) + u"\nEND"_s;
        QTest::newRow("125 characters")
            << QByteArray("ok\n" + f125 + ",x\n") << u"ok\nERROR line 3: Error 3221:\nCSV data format bad,"_s;
        QTest::newRow("28 fields") << QByteArray(fields(28) + "\n")
                                   << QStringList(28, u"x"_s).join(u'|') + u"\nEND"_s;
        QTest::newRow("29 fields") << QByteArray(fields(28) + ",\n")
                                   << u"ERROR line 2: Error!\nToo many fields in CSV line."_s;
        QTest::newRow("record longer than 512 bytes")
            << QByteArray(fields(20, long100) + "\r\nlast\r\n")
            << QStringList(20, QString::fromLatin1(long100)).join(u'|') + u"\nlast\nEND"_s;
        QTest::newRow("empty file") << QByteArray() << u"END"_s;
    }

    void tokenizer()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, expected);
        QCOMPARE(tokenize(input), expected);
    }

    void eightBitText()
    {
        // Bytes are characters of the same code: no decoding happens.
        QCOMPARE(tokenize("caf\xe9,\xa3"
                          "5\n"),
                 u"caf\u00e9|\u00a35\nEND"_s);
    }

    void startsAtTheOffset() { QCOMPARE(tokenize("Type,Odo\r\nFuel,12\r\n", 10), u"Fuel|12\nEND"_s); }

    void header_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("titles");
        QTest::addColumn<qint64>("length");

        QTest::newRow("export header")
            << QByteArray("\"Type\",\"Odometer\",\"Notes\"\r\n\"Fuel\",1,\r\n") << int(CsvHeader::Status::Ok)
            << u"Type|Odometer|Notes"_s << qint64(27);
        QTest::newRow("empty title keeps its place")
            << QByteArray("Date,,Odo\nx\n") << int(CsvHeader::Status::Ok) << u"Date||Odo"_s << qint64(10);
        QTest::newRow("trailing comma")
            << QByteArray("Date,Odo,\n") << int(CsvHeader::Status::Ok) << u"Date|Odo|"_s << qint64(10);
        QTest::newRow("CR only") << QByteArray("A,B\r1,2\r") << int(CsvHeader::Status::Ok) << u"A|B"_s
                                 << qint64(4);
        QTest::newRow("no line end") << QByteArray("A,B") << int(CsvHeader::Status::Ok) << u"A|B"_s
                                     << qint64(3);
        QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF"
                                                       "Date,Odo\n")
                                         << int(CsvHeader::Status::Ok) << u"Date|Odo"_s << qint64(12);
        QTest::newRow("no comma") << QByteArray("Odometer\n1\n") << int(CsvHeader::Status::NoColumns)
                                  << QString() << qint64(9);
        QTest::newRow("comma only after 512 bytes")
            << QByteArray(QByteArray(512, 'a') + ",b\n") << int(CsvHeader::Status::NoColumns) << QString()
            << qint64(512);
        QTest::newRow("empty") << QByteArray() << int(CsvHeader::Status::NoColumns) << QString() << qint64(0);
    }

    void header()
    {
        QFETCH(QByteArray, input);
        QFETCH(int, status);
        QFETCH(QString, titles);
        QFETCH(qint64, length);
        QBuffer buffer(&input);
        buffer.open(QIODevice::ReadOnly);
        CsvHeader header;
        QCOMPARE(int(CsvHeader::read(&buffer, &header)), status);
        QCOMPARE(header.titles.join(u'|'), titles);
        QCOMPARE(header.length, length);
    }

    void headerMessages()
    {
        CsvHeader header;
        QCOMPARE(CsvHeader::read(u"/nonexistent/file.csv"_s, &header), CsvHeader::Status::OpenError);
        QCOMPARE(CsvHeader::message(CsvHeader::Status::OpenError), u"ERROR 401: Error opening CSV file"_s);
        QVERIFY(
            CsvHeader::message(CsvHeader::Status::NoColumns)
                .startsWith(u"ERROR 2201: The CSV file selected has no definable columns or no CSV file was "
                            "selected. Please select a CSV file using the Browse Button.\nIf a file"_s));
    }
};

QTEST_GUILESS_MAIN(TestCsvTokenizer)
#include "tst_csv_tokenizer.moc"
