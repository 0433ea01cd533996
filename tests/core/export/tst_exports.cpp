#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "ExportCase_helper.h"
#include "core/files_helper.h"
#include "export/CsvExport.h"
#include "export/ExportSelection.h"
#include "export/Exporter.h"
#include "export/HtmlExport.h"
#include "export/XmlExport.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {

// Takes limit bytes, then every write fails (a full disk, a pulled card).
class FailingDevice : public QIODevice
{
public:
    FailingDevice(QIODevice *target, qint64 limit)
        : m_target(target)
        , m_limit(limit)
    {
        open(QIODevice::WriteOnly);
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 room = qMin(size, m_limit - m_written);
        if (room <= 0) {
            setErrorString(u"No space left on device"_s);
            return -1;
        }
        m_written += room;
        return m_target ? m_target->write(data, room) : room;
    }

private:
    QIODevice *m_target;
    qint64 m_limit;
    qint64 m_written = 0;
};

// The real writer of a format, stopped by a full device after a few hundred bytes.
template<class Base> class StoppedExport : public Base
{
public:
    using Base::Base;
    bool write(QIODevice *device) override
    {
        FailingDevice failing(device, 300);
        return Base::write(&failing);
    }
};

std::unique_ptr<Exporter> stoppedExporter(Exporter::Format format, const ExportData &data)
{
    switch (format) {
    case Exporter::Format::Csv:
        return std::make_unique<StoppedExport<CsvExport>>(data);
    case Exporter::Format::Html:
        return std::make_unique<StoppedExport<HtmlExport>>(data);
    case Exporter::Format::Xml:
        break;
    }
    return std::make_unique<StoppedExport<XmlExport>>(data);
}

QString dataFolder(const char *name)
{
    return QStringLiteral(TARVANE_TEST_DATA "/export/") + QString::fromLatin1(name);
}

} // namespace

class TestExports : public QObject
{
    Q_OBJECT

private slots:
    void golden_data();
    void golden();
    void weekSelection_data();
    void weekSelection();
    void failingDevice_data();
    void failingDevice();
    void failedFileKeepsOldFile_data();
    void failedFileKeepsOldFile();
    void messagesAroundARun();
};

void TestExports::golden_data()
{
    QTest::addColumn<QString>("folder");
    const QDir root(QStringLiteral(TARVANE_TEST_DATA "/export"));
    for (const QString &name : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        QTest::newRow(name.toLatin1().constData()) << root.filePath(name);
}

void TestExports::golden()
{
    QFETCH(QString, folder);
    ExportCase c;
    QString error;
    QVERIFY2(c.load(folder, &error), qPrintable(error));
    c.select();
    auto exporter = createExporter(c.format(), c.data);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QVERIFY2(exporter->write(&buffer), qPrintable(exporter->errorString()));

    QFile expectedFile(c.expectedFile());
    QVERIFY(expectedFile.open(QIODevice::ReadOnly));
    const QByteArray expected = expectedFile.readAll();
    const QByteArray actual = buffer.data();
    if (actual != expected) {
        qsizetype at = 0;
        while (at < actual.size() && at < expected.size() && actual[at] == expected[at])
            ++at;
        QFile dump(QStringLiteral(TARVANE_BINARY_DIR "/") + QDir(folder).dirName() + u".actual"_s);
        if (dump.open(QIODevice::WriteOnly))
            dump.write(actual);
        QFAIL(
            qPrintable(u"first difference at byte %1\nexpected: %2\nactual:   %3\n(whole output in %4)"_s.arg(
                QString::number(at), QString::fromLatin1(expected.mid(qMax<qsizetype>(0, at - 40), 100)),
                QString::fromLatin1(actual.mid(qMax<qsizetype>(0, at - 40), 100)), dump.fileName())));
    }
}

void TestExports::weekSelection_data()
{
    QTest::addColumn<QDate>("today");
    for (int day = 1; day <= 30; ++day)
        QTest::addRow("November %d", day) << QDate(2026, 11, day);
}

// The CSV's own wording of the week counts the weekday from Sunday = 1 and allows "weekday - 2"
// days back; the list counts from Sunday = 0 and allows "weekday - 1". Both bounds are the same
// number, so the export, which selects through the list's filter, writes the days the wording
// names: checked here for every day of a month up to today.
void TestExports::weekSelection()
{
    QFETCH(QDate, today);
    EntryList entries;
    QList<int> expected;
    const int sundayIsOne = today.dayOfWeek() % 7 + 1;
    for (int day = 1; day <= today.day(); ++day) {
        CVCItem item;
        item.entryDate = caseTime(u"2026-11-%1T10:00:00"_s.arg(day, 2, 10, QChar(u'0')));
        item.odometer = day;
        entries.push_back(item);
        if (today.day() - day <= sundayIsOne - 2)
            expected.append(day);
    }
    DataViewFilter filter;
    filter.period = DataViewFilter::Week;
    QList<int> selected;
    for (const CVCItem *item : ExportSelection::forFormat(
             Exporter::Format::Csv, entries, filter, caseTime(today.toString(Qt::ISODate) + u"T12:00:00"_s)))
        selected.append(int(item->odometer));
    QCOMPARE(selected, expected);
}

void TestExports::failingDevice_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<qint64>("limit");
    for (int format : { 0, 1, 2 }) {
        for (qint64 limit : { 0, 500, 100000 })
            QTest::addRow("%s after %lld bytes",
                          format == 0       ? "csv"
                              : format == 1 ? "html"
                                            : "xml",
                          limit)
                << format << limit;
    }
}

void TestExports::failingDevice()
{
    QFETCH(int, format);
    QFETCH(qint64, limit);
    // Enough entries that the output passes the largest limit.
    EntryList entries(1000);
    for (size_t i = 0; i < entries.size(); ++i) {
        entries[i].odometer = 1000 + double(i);
        entries[i].typeText = u"Fuel"_s;
        entries[i].notes = u"a note that makes each row longer than it would be"_s;
    }
    FixedClock clock(caseTime(u"2026-11-18T12:00:00"_s));
    TestLocaleFormats locale;
    ExportData data;
    data.entries = ExportSelection::all(entries);
    data.locale = &locale;
    data.clock = &clock;
    auto exporter = createExporter(Exporter::Format(format), data);
    FailingDevice device(nullptr, limit);
    QVERIFY(!exporter->write(&device));
    QCOMPARE(exporter->errorString(),
             u"Unable to write the %1 export: No space left on device"_s.arg(exporter->name()));
}

void TestExports::failedFileKeepsOldFile_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("message");
    QTest::newRow("csv") << 0 << u"ERROR 101: Unable to create CSV file"_s;
    QTest::newRow("html") << 1 << u"ERROR 701: Unable to create HTML file"_s;
    QTest::newRow("xml") << 2 << u"ERROR 701: Unable to create Excel file"_s;
}

void TestExports::failedFileKeepsOldFile()
{
    QFETCH(int, format);
    QFETCH(QString, message);
    ExportCase c;
    QString error;
    QVERIFY(c.load(dataFolder("csv-all-all"), &error));
    c.data.periodFilter = DataViewFilter::ByDate;
    c.data.entries = ExportSelection::all(c.entries);
    QTemporaryDir dir;
    auto exporter = stoppedExporter(Exporter::Format(format), c.data);
    const QString target = dir.filePath(u"Van"_s + exporter->suffix());
    TestFiles::put(target, "the export of last week");

    RecordingReporter reporter;
    QVERIFY(!ExportRun::toFolder(*exporter, dir.path(), reporter));
    QCOMPARE(reporter.texts(), QStringList { message });
    QCOMPARE(TestFiles::read(target), QByteArray("the export of last week"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList { u"Van"_s + exporter->suffix() });
}

void TestExports::messagesAroundARun()
{
    ExportCase c;
    QString error;
    QVERIFY(c.load(dataFolder("csv-all-all"), &error));
    c.data.entries = ExportSelection::all(c.entries);
    QTemporaryDir dir;
    const QString folder = dir.path() + u'/';
    RecordingReporter reporter;

    // An older export of the same name is replaced.
    TestFiles::put(folder + u"Van.csv"_s, "the export of last week");
    auto csv = createExporter(Exporter::Format::Csv, c.data);
    QVERIFY(!ExportRun::toFolder(*csv, QString(), reporter));
    QVERIFY(ExportRun::toFolder(*csv, folder, reporter));
    QVERIFY(TestFiles::read(folder + u"Van.csv"_s).startsWith("\"Type\",\"Odometer\""));

    // The page asks first; Cancel writes nothing.
    auto html = createExporter(Exporter::Format::Html, c.data);
    reporter.setNextAnswer(false);
    QVERIFY(!html->confirm(reporter));
    reporter.setNextAnswer(true);
    QVERIFY(html->confirm(reporter));
    QVERIFY(ExportRun::toFolder(*html, folder, reporter));

    // The workbook needs a date range.
    auto xml = createExporter(Exporter::Format::Xml, c.data);
    QVERIFY(!xml->confirm(reporter));
    c.data.periodFilter = DataViewFilter::ByDate;
    QVERIFY(xml->confirm(reporter));
    QVERIFY(ExportRun::toFolder(*xml, folder, reporter));

    // A vehicle name that is a path is refused before anything is written.
    c.data.vehicleName = u"../Van"_s;
    QVERIFY(!ExportRun::toFolder(*csv, folder, reporter));

    QCOMPARE(
        reporter.texts(),
        (QStringList { u"Export Path not set\nExport Aborted!"_s,
                       u"Export to %1Van.csv is complete."_s.arg(folder), HtmlExport::warningText(),
                       HtmlExport::warningText(), u"Export to HTML completed.\nMy Documents\\Van.htm"_s,
                       u"You must select List By Date to export in XML format"_s,
                       u"Excel Export completed.File Name:\n%1Van.xml"_s.arg(folder),
                       u"The vehicle name \"../Van\" cannot be used as a file name.\nExport Aborted!"_s }));
    QCOMPARE(reporter.messages().at(2).title, u"WARNING"_s);
    QCOMPARE(QDir(folder).entryList(QDir::Files), (QStringList { u"Van.csv"_s, u"Van.htm"_s, u"Van.xml"_s }));
}

QTEST_GUILESS_MAIN(TestExports)
#include "tst_exports.moc"
