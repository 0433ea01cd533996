#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"
#include "core/export/ExportCase_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;
using CliFiles::readAll;

class TestCliExport : public QObject
{
    Q_OBJECT

private slots:
    void exports_data();
    void exports();
};

// Each row runs one export on a sandbox whose vehicle "My Car" holds the log of a golden case.
void TestCliExport::exports_data()
{
    QTest::addColumn<QString>("goldenCase");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");
    QTest::addColumn<QString>("file"); // relative to the root; empty when none may be written
    QTest::addColumn<QString>("expected"); // golden file the output must equal, or empty

    const QString docs = u"My Documents/"_s;
    QTest::newRow("xml of a date range")
        << u"xml-range"_s
        << (u"--now 2026-11-18T12:05:09 export xml My|Car --period dates --from 2026-11-02 --to 2026-11-10"_s)
               .split(u' ')
        << 0 << u"Excel Export completed.File Name:\n@/My Documents/My Car.xml\n"_s << QString()
        << docs + u"My Car.xml"_s << u"xml-range/expected.xml"_s;
    QTest::newRow("xml needs a date range")
        << u"xml-range"_s << QStringList { u"export"_s, u"xml"_s, u"My Car"_s } << 1 << QString()
        << u"You must select List By Date to export in XML format\n"_s << QString() << QString();
    QTest::newRow("html unanswered")
        << u"html-odd"_s << QStringList { u"export"_s, u"html"_s, u"My Car"_s } << 1 << QString()
        << u"Displaying this HTML file may cause some older CE explorers to hang.\nthere is no problem with "
           "Desktop explorer or newer windows CE second edition.\nContinue? [Cancel]\n"_s
        << QString() << QString();
    QTest::newRow("html with --yes")
        << u"html-odd"_s << QStringList { u"--yes"_s, u"export"_s, u"html"_s, u"My Car"_s } << 0
        << u"Export to HTML completed.\nMy Documents\\My Car.htm\n"_s
        << u"Displaying this HTML file may cause some older CE explorers to hang.\nthere is no problem with "
           "Desktop explorer or newer windows CE second edition.\nContinue? [OK]\n"_s
        << docs + u"My Car.htm"_s << QString();
    QTest::newRow("csv of the month's fill-ups")
        << u"csv-all-all"_s
        << (u"--now 2026-11-18 export csv My|Car --type fuel --period month --out @/out"_s).split(u' ') << 0
        << u"Export to @/out/My Car.csv is complete.\n"_s << QString() << u"out/My Car.csv"_s << QString();
    QTest::newRow("csv into a missing folder")
        << u"csv-all-all"_s
        << QStringList { u"export"_s, u"csv"_s, u"My Car"_s, u"--out"_s, u"@/none/deeper"_s } << 1
        << QString() << u"ERROR 101: Unable to create CSV file\n"_s << QString() << QString();
    QTest::newRow("unknown format") << u"csv-all-all"_s << QStringList { u"export"_s, u"pdf"_s } << 2
                                    << QString()
                                    << u"Unknown export format \"pdf\": use csv, html or xml.\n"_s
                                    << QString() << QString();
    QTest::newRow("dates without a range")
        << u"csv-all-all"_s << QStringList { u"export"_s, u"csv"_s, u"--period"_s, u"dates"_s } << 2
        << QString() << u"--period dates needs --from and --to, and they go with it only.\n"_s << QString()
        << QString();
}

void TestCliExport::exports()
{
    QFETCH(QString, goldenCase);
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, out);
    QFETCH(QString, err);
    QFETCH(QString, file);
    QFETCH(QString, expected);

    QTemporaryDir root;
    CliRunner cli(root.path());
    cli.options.createKey(u"Options"_s); // no "REGKEY_OPTIONS" line in front of the messages
    QCOMPARE(cli.run({ u"vehicles"_s }).exitCode, 0);
    ExportCase golden;
    QString error;
    QVERIFY2(golden.load(QStringLiteral(TARVANE_TEST_DATA "/export/") + goldenCase, &error),
             qPrintable(error));
    const QString log = root.path() + u"/My Documents/Tarvane Files/MYCAR0001.vcb"_s;
    QVERIFY(LogArchive().write(log, golden.entries));
    const QByteArray logBytes = readAll(log);
    QVERIFY(QDir(root.path()).mkdir(u"out"_s));

    // "|" stands for the space inside an argument, "@" for the sandbox root.
    for (QString &argument : arguments)
        argument.replace(u'|', u' ').replace(u'@', root.path());
    const CliResult result = cli.run(arguments);
    // A usage error goes on with the usage line.
    QCOMPARE(result.err.section(u"Usage:"_s, 0, 0), err);
    QCOMPARE(result.out, QString(out).replace(u'@', root.path()));
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(readAll(log), logBytes);

    // Nothing but the file of a successful run is written.
    QStringList written = QDir(root.path() + u"/My Documents"_s).entryList(QDir::Files);
    for (const QString &name : QDir(root.path() + u"/out"_s).entryList(QDir::Files))
        written.append(u"out/"_s + name);
    QCOMPARE(written, file.isEmpty() ? QStringList() : QStringList { file.section(u"My Documents/"_s, -1) });
    if (!expected.isEmpty())
        QCOMPARE(readAll(root.filePath(file)),
                 readAll(QStringLiteral(TARVANE_TEST_DATA "/export/") + expected));
    if (file.endsWith(u".csv"_s)) {
        // The month's one fill-up, with the locale's short date.
        const QList<QByteArray> lines = readAll(root.filePath(file)).split('\n');
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(1),
                 QByteArray("\"Fuel\",\"1400.0\",\"11/18/26\",\"Esso\",\"12.000\",\"3.100\",\"28.125\","
                            "\" 37.20\",\"\",\r"));
    }
}

QTEST_GUILESS_MAIN(TestCliExport)
#include "tst_cli_export.moc"
