// The real tarvane-cli when the disk is full, when the settings file can't be read and when two
// of it add at the same moment: nothing the user had may be lost, and no entry reported added
// may be missing.
#include "core/files_helper.h"
#include "log/LogArchive.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

// TARVANE_CLI runs the same cases against another build (an older one, to see them fail there).
const QString Cli
    = qEnvironmentVariable("TARVANE_CLI", QStringLiteral(TARVANE_BINARY_DIR "/src/cli/tarvane-cli"));

using TestFiles::snapshot;

void setUpProcess(QProcess &process, const QString &root, const QStringList &arguments, rlim_t fileLimit = 0)
{
    if (fileLimit) {
        // Writes past the limit fail with EFBIG, as they would with ENOSPC on a full disk.
        process.setChildProcessModifier([fileLimit] {
            const rlimit rl { fileLimit, fileLimit };
            setrlimit(RLIMIT_FSIZE, &rl);
            signal(SIGXFSZ, SIG_IGN);
        });
    }
    process.setProgram(Cli);
    process.setArguments(QStringList { u"--root"_s, root, u"--now"_s, u"2024-03-01T08:30"_s } + arguments);
}

int runCli(const QString &root, const QStringList &arguments, QByteArray *err = nullptr, rlim_t fileLimit = 0)
{
    QProcess process;
    setUpProcess(process, root, arguments, fileLimit);
    process.start();
    if (!process.waitForFinished(60000))
        return -1;
    if (err)
        *err = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

QStringList fill(int odometer)
{
    return { u"add"_s,        u"fuel"_s, u"My Car"_s,  u"--odometer"_s, QString::number(odometer),
             u"--quantity"_s, u"10"_s,   u"--price"_s, u"3.5"_s };
}

size_t entriesIn(const QString &log)
{
    EntryList entries;
    LogArchive archive;
    return archive.read(log, entries) ? entries.size() : size_t(-1);
}

} // namespace

class TestCliSafety : public QObject
{
    Q_OBJECT

private slots:
    void fullDiskChangesNothing();
    void unreadableSettingsKept_data();
    void unreadableSettingsKept();
    void concurrentAddsAllLand();
    void longTypedNumberIsQuick();
};

void TestCliSafety::fullDiskChangesNothing()
{
    QTemporaryDir root;
    for (int i = 1; i <= 5; ++i)
        QCOMPARE(runCli(root.path(), fill(1000 * i)), 0);
    const QMap<QString, QByteArray> before = snapshot(root.path());
    QByteArray err;
    const int code = runCli(root.path(), fill(6000), &err, 64);
    QCOMPARE(code, 1);
    const QString log = root.path() + u"/My Documents/Tarvane Files/MYCAR0001.vcb"_s;
    const QString expected = u"Save ERROR 105!\nUnable to save database\nUnable to write the log file "_s
        + log + u": File too large.\n"_s;
    QVERIFY2(QString::fromUtf8(err).contains(expected), err.constData());
    QVERIFY2(!err.contains("Added"), err.constData());
    // Every file byte for byte as it was, and no temporary left behind.
    QCOMPARE(snapshot(root.path()), before);
    QCOMPARE(entriesIn(log), size_t(5));
}

void TestCliSafety::unreadableSettingsKept_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("Latin-1 text") << QByteArray("[VehicleList]\r\nVehicle0=Caf\xe9\r\n");
    QTest::newRow("cut short in the mark") << QByteArray("\xff", 1);
    QTest::newRow("binary") << QByteArray("\x01\x00\x00\x02\xff\x00\x10", 7);
}

void TestCliSafety::unreadableSettingsKept()
{
    QFETCH(QByteArray, bytes);
    QTemporaryDir root;
    QCOMPARE(runCli(root.path(), fill(1000)), 0);
    const QString settings = root.path() + u"/My Documents/Tarvane Files/Velcora.ini"_s;
    TestFiles::put(settings, bytes);
    const QMap<QString, QByteArray> before = snapshot(root.path());
    for (const QStringList &command : { fill(2000), fill(3000) }) {
        QByteArray err;
        QCOMPARE(runCli(root.path(), command, &err), 1);
        const QString expected
            = u"ERROR 100:Cannot load ini file.\nPlease check your documentation\nfor possible "
              "causes.\n"_s
            + settings + u": Not a settings file in a known text encoding\n"_s;
        QVERIFY2(QString::fromUtf8(err).startsWith(expected), err.constData());
        QCOMPARE(snapshot(root.path()), before);
    }
}

void TestCliSafety::concurrentAddsAllLand()
{
    QTemporaryDir root;
    QCOMPARE(runCli(root.path(), fill(100)), 0);
    int reported = 1;
    for (int round = 0; round < 8; ++round) {
        QProcess first;
        QProcess second;
        setUpProcess(first, root.path(), fill(1000 + 10 * round));
        setUpProcess(second, root.path(), fill(1005 + 10 * round));
        first.start();
        second.start();
        QVERIFY(first.waitForFinished(60000));
        QVERIFY(second.waitForFinished(60000));
        for (QProcess *p : { &first, &second }) {
            const QByteArray out = p->readAllStandardOutput();
            // Either it landed and says so, or it failed and says why: never "Added" with a failure.
            QCOMPARE(out.startsWith("Added Fuel entry"), p->exitCode() == 0);
            reported += p->exitCode() == 0;
        }
    }
    QCOMPARE(entriesIn(root.path() + u"/My Documents/Tarvane Files/MYCAR0001.vcb"_s), size_t(reported));
    QCOMPARE(reported, 17);
}

void TestCliSafety::longTypedNumberIsQuick()
{
    // The form takes the typed text whole, not one character at a time.
    QTemporaryDir root;
    QElapsedTimer timer;
    timer.start();
    QStringList command = fill(1000);
    command[8] = u"3."_s + QString(50000, u'5');
    QCOMPARE(runCli(root.path(), command), 0);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(TestCliSafety)
#include "tst_cli_safety.moc"
