#include <QFile>
#include <QtTest>

#include "CliRunner_helper.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

namespace {

const QString Recognised = u"Fuelly export: 3 fill-ups, 1 service, 1 cost, units mi / gal\n"_s;
const QString Warnings
    = u"  fuelups.csv line 5: no fuel quantity\n  services.csv line 4: no odometer reading\n"_s;

QStringList fuellyFiles()
{
    const QString folder = QStringLiteral(TARVANE_TEST_DATA "/import/fuelly/");
    return { folder + u"fuelups.csv"_s, folder + u"services.csv"_s };
}

} // namespace

class TestCliImportApp : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void dryRunThenImportTwice();
    void damagedLogIsNotWritten();
    void badCalls();

private:
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<CliRunner> m_runner;
    QString logPath() const { return m_root->filePath(u"My Documents/Tarvane Files/MYCAR0001.vcb"_s); }
    EntryList log() const
    {
        EntryList entries;
        LogArchive archive;
        if (QFile::exists(logPath()))
            archive.read(logPath(), entries);
        return entries;
    }
};

// A fresh sandbox with the template vehicle "My Car" (miles, US gallons, MPG) selected.
void TestCliImportApp::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    m_runner = std::make_unique<CliRunner>(m_root->path());
    m_runner->options.createKey(u"Options"_s);
    m_runner->options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
}

void TestCliImportApp::dryRunThenImportTwice()
{
    CliResult result
        = m_runner->run(QStringList { u"import-app"_s } + fuellyFiles() + QStringList { u"--dry-run"_s });
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out,
             Recognised + u"Would add 5 entries to My Car; skipped 0 as duplicates, 2 as unusable.\n"_s
                 + Warnings);
    QCOMPARE(log().size(), size_t(0));

    result = m_runner->run(QStringList { u"import-app"_s } + fuellyFiles() + QStringList { u"My Car"_s });
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out,
             Recognised + u"Added 5 entries to My Car; skipped 0 as duplicates, 2 as unusable.\n"_s
                 + Warnings);
    const EntryList first = log();
    QCOMPARE(first.size(), size_t(5));
    QCOMPARE(first[3].typeText, u"Oil Change, Oil Filter"_s);

    result = m_runner->run(QStringList { u"import-app"_s, u"--json"_s, u"--from"_s, u"fuelly"_s }
                           + fuellyFiles());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out, uR"({
    "added": 0,
    "app": "fuelly",
    "dryRun": false,
    "duplicates": 5,
    "recognised": "Fuelly export: 3 fill-ups, 1 service, 1 cost, units mi / gal",
    "unusable": 2,
    "vehicle": "My Car",
    "vehicles": [
    ],
    "warnings": [
        "fuelups.csv line 5: no fuel quantity",
        "services.csv line 4: no odometer reading"
    ]
}
)"_s);
    QVERIFY(log() == first);
}

void TestCliImportApp::damagedLogIsNotWritten()
{
    QVERIFY(QDir().mkpath(m_root->filePath(u"My Documents/Tarvane Files"_s)));
    QFile damaged(logPath());
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write("not a log at all");
    damaged.close();
    const CliResult result = m_runner->run(QStringList { u"import-app"_s } + fuellyFiles());
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.endsWith(u"The log of My Car could not be read; nothing was imported.\n"_s),
             qPrintable(result.err));
    QCOMPARE(log().size(), size_t(0));
}

void TestCliImportApp::badCalls()
{
    CliResult result = m_runner->run({ u"import-app"_s, u"--date-order"_s, u"ydm"_s, fuellyFiles().first() });
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err, u"Unknown date order \"ydm\": use mdy, dmy or ymd.\n"_s);
    result = m_runner->run(
        { u"import-app"_s, QStringLiteral(TARVANE_TEST_DATA "/import/fuelly/expected.json") });
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.err, u"expected.json: not an export of a known app; name it with --from.\n"_s);
    result = m_runner->run({ u"import-app"_s, m_root->filePath(u"missing.csv"_s), u"My Car"_s });
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.startsWith(u"Cannot read "_s + m_root->filePath(u"missing.csv"_s)),
             qPrintable(result.err));

    // An aCar file of two vehicles lists them until one is named, for a script too.
    const QString acar = QStringLiteral(TARVANE_TEST_DATA "/import/acar/acar.csv");
    result = m_runner->run({ u"import-app"_s, acar, u"--dry-run"_s, u"--json"_s });
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.err,
             u"acar.csv holds 2 vehicles (Civic, Miata); choose one.\n  Civic\n  Miata\n"
             "Name one with --source-vehicle NAME.\n"_s);
    QCOMPARE(result.out, uR"({
    "error": "acar.csv holds 2 vehicles (Civic, Miata); choose one.",
    "vehicles": [
        "Civic",
        "Miata"
    ]
}
)"_s);
    result = m_runner->run(
        { u"import-app"_s, acar, u"--source-vehicle"_s, u"Miata"_s, u"--dry-run"_s, u"--json"_s });
    QCOMPARE(result.out, uR"({
    "added": 2,
    "app": "acar",
    "dryRun": true,
    "duplicates": 0,
    "recognised": "aCar export (Miata): 1 fill-up, 1 trip, units mi / gal",
    "unusable": 0,
    "vehicle": "My Car",
    "vehicles": [
        "Civic",
        "Miata"
    ],
    "warnings": [
    ]
}
)"_s);
}

QTEST_GUILESS_MAIN(TestCliImportApp)
#include "tst_cli_import_app.moc"
