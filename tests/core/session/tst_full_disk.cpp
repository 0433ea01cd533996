// Every writer on a full disk: each runs in a child process whose files can't grow past a few
// bytes (RLIMIT_FSIZE with SIGXFSZ ignored, so writes fail with EFBIG as on a full file system).
// The old file must come out byte for byte as it was and the failure must be reported.
#include "core/files_helper.h"
#include "log/LogArchive.h"
#include "log/VehicleBackup.h"
#include "log/VehicleLog.h"
#include "platform/AtomicFile.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"
#include "platform/SettingsStore.h"
#include "settings/IniFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Refused = 7; // the child's code for "the writer reported the failure as expected"

// The child's exit code: Refused when the writer returned false with the reason in its message.
int runWithFileLimit(rlim_t limit, const std::function<bool(QString *)> &writer)
{
    const pid_t pid = fork();
    if (pid == 0) {
        const rlimit rl { limit, limit };
        setrlimit(RLIMIT_FSIZE, &rl);
        signal(SIGXFSZ, SIG_IGN);
        QString message;
        const bool ok = writer(&message);
        _exit(ok ? 0 : (message.contains(u"File too large"_s) ? Refused : 1));
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

QStringList folderNames(const QString &path)
{
    return QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

EntryList entries(int count)
{
    EntryList list;
    for (int i = 0; i < count; ++i) {
        CVCItem item;
        item.entryType = CVCItem::Fuel;
        item.odometer = 1000.0 + i;
        item.fuelQuantity = 40.0;
        item.notes = u"fill-up %1"_s.arg(i);
        list.push_back(item);
    }
    return list;
}

} // namespace

class TestFullDisk : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(m_dir.isValid()); }
    void writers_data();
    void writers();
    void unbufferedWritesAreChecked();
    void staleTemporariesRemoved();

private:
    QTemporaryDir m_dir;
};

void TestFullDisk::writers_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("old");
    // Returns the writer's success and its message.
    QTest::addColumn<std::function<bool(const QString &, QString *)>>("writer");

    const QString data = m_dir.path() + u"/Tarvane Files/"_s;
    QTest::newRow("log") << data + u"CAR.vcb"_s << LogArchive::encode(entries(5))
                         << std::function<bool(const QString &, QString *)>(
                                [data](const QString &, QString *m) {
                                    VehicleLog log;
                                    RecordingReporter reporter;
                                    log.entries() = entries(6);
                                    const bool ok = log.save(data, u"CAR"_s, reporter);
                                    *m = reporter.texts().join(u'\n');
                                    return ok;
                                });
    QTest::newRow("backup") << data + u"CAR.bak"_s << LogArchive::encode(entries(2))
                            << std::function<bool(const QString &, QString *)>([data](const QString &,
                                                                                      QString *m) {
                                   RecordingReporter reporter;
                                   bool busy = false;
                                   const bool ok
                                       = VehicleBackup::backup(entries(6), data, u"CAR"_s, reporter, busy);
                                   *m = reporter.texts().join(u'\n');
                                   return ok;
                               });
    QByteArray ini("\xff\xfe", 2);
    for (const char c : QByteArray("\r\n[VehicleList]\r\nVehicle0=My Car\r\n"))
        ini.append(c).append('\0');
    QTest::newRow("settings file") << data + u"Velcora.ini"_s << ini
                                   << std::function<bool(const QString &, QString *)>([](const QString &f,
                                                                                         QString *m) {
                                          IniFile settings;
                                          settings.Load(f);
                                          settings.setSaveOnDestroy(false);
                                          for (int i = 0; i < 20; ++i)
                                              settings.SetString(u"My Car"_s, u"Key%1"_s.arg(i), u"value"_s);
                                          const bool ok = settings.Save();
                                          *m = settings.errorString();
                                          return ok;
                                      });
    const QString store = m_dir.path() + u"/Registry/Quellar-Tarvane.ini"_s;
    QTest::newRow("preference store")
        << store << QByteArray("[ListAttributes]\nWidth0=60\n")
        << std::function<bool(const QString &, QString *)>(
               [root = m_dir.path()](const QString &, QString *m) {
                   const DevicePaths paths(root);
                   QSettingsStore settings(paths, u"Quellar"_s, u"Tarvane"_s);
                   for (int i = 0; i < 20; ++i)
                       settings.setValue(u"ListAttributes"_s, u"Width%1"_s.arg(i), 100 + i);
                   const bool ok = settings.sync();
                   *m = u"File too large"_s; // QSettings keeps no reason, only its status
                   return ok;
               });
    QTest::newRow("any file through the helper")
        << m_dir.path() + u"/export.csv"_s << QByteArray("a,b\n1,2\n")
        << std::function<bool(const QString &, QString *)>([](const QString &f, QString *m) {
               return AtomicFile::writeFile(f, QByteArray(4000, 'x'), m);
           });
}

void TestFullDisk::writers()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, old);
    using Writer = std::function<bool(const QString &, QString *)>;
    QFETCH(Writer, writer);

    TestFiles::put(file, old);
    const QStringList before = folderNames(QFileInfo(file).absolutePath());
    // Room for the old file's size but not for the new content.
    const int code = runWithFileLimit(rlim_t(old.size() + 8), [&](QString *m) { return writer(file, m); });
    QCOMPARE(code, Refused);
    QCOMPARE(TestFiles::read(file), old);
    // No temporary left behind either.
    QCOMPARE(folderNames(QFileInfo(file).absolutePath()), before);
}

void TestFullDisk::unbufferedWritesAreChecked()
{
    // A write that fails half-way through a codec's device is seen by the commit.
    const QString path = m_dir.filePath(u"log.vcb"_s);
    QVERIFY(AtomicFile::writeFile(path, "old"));
    const int code = runWithFileLimit(64, [&](QString *m) {
        AtomicFile file(path);
        if (!file.open())
            return true;
        for (int i = 0; i < 10; ++i)
            file.device()->write(QByteArray(16, 'n'));
        const bool ok = file.commit();
        *m = file.errorString();
        return ok;
    });
    QCOMPARE(code, Refused);
    QCOMPARE(TestFiles::read(path), QByteArray("old"));
}

void TestFullDisk::staleTemporariesRemoved()
{
    const QString folder = m_dir.filePath(u"stale"_s);
    QVERIFY(QDir().mkpath(folder));
    const QDateTime old = QDateTime::currentDateTimeUtc().addSecs(-3600);
    // Only the writer's own names ("<target>.XXXXXX") of known targets, and only old ones, go.
    for (const QString &name :
         { u"CAR.vcb.sJyuxK"_s, u"Velcora.ini.A1b2C3"_s, u"CAR.vcb.fresh1"_s, u"CAR.vcb.toolong1"_s,
           u"CAR.vcb.ab-cd1"_s, u"notes.txt.sJyuxK"_s, u"CAR.vcb"_s }) {
        QFile file(folder + u'/' + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("x");
        file.flush();
        if (name != u"CAR.vcb.fresh1"_s)
            QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
    }
    const auto isTarget = [](const QString &n) {
        return n.endsWith(u".vcb"_s) || n == u"Velcora.ini"_s;
    };
    QCOMPARE(AtomicFile::removeStaleTemporaries(folder, isTarget, 600), 2);
    QCOMPARE(folderNames(folder),
             (QStringList { u"CAR.vcb"_s, u"CAR.vcb.ab-cd1"_s, u"CAR.vcb.fresh1"_s, u"CAR.vcb.toolong1"_s,
                            u"notes.txt.sJyuxK"_s }));
}

QTEST_GUILESS_MAIN(TestFullDisk)
#include "tst_full_disk.moc"
