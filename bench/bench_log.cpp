// Writes, opens and scans generated logs of 10,000 and 1,000,000 entries and prints the rates
// and the peak memory. "bench_log FILE COUNT" only writes a generated log for other uses.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <sys/resource.h>

#include <cstdio>

#include "LogGenerator.h"
#include "log/LogArchive.h"
#include "log/VehicleLog.h"
#include "platform/AtomicFile.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"

namespace {

long peakKiB()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss; // KiB on Linux
}

double rate(size_t count, qint64 nanoseconds)
{
    return nanoseconds > 0 ? double(count) * 1e9 / double(nanoseconds) : 0.0;
}

bool benchmark(const QString &folder, size_t count)
{
    LogGenerator generator;
    const EntryList entries = generator.generate(count);

    QElapsedTimer timer;
    timer.start();
    LogArchive archive;
    if (!archive.write(folder + QStringLiteral("BENCH.vcb"), entries)) {
        std::fprintf(stderr, "%s\n", qPrintable(archive.errorString()));
        return false;
    }
    const qint64 writeNs = timer.nsecsElapsed();
    const qint64 bytes = QFileInfo(folder + QStringLiteral("BENCH.vcb")).size();

    VehicleLog log;
    RecordingReporter reporter;
    FixedClock clock(1700000000);
    timer.restart();
    const bool opened
        = log.open(folder, QStringLiteral("BENCH"), LogScanSettings { 12000.0, {} }, reporter, clock);
    const qint64 openNs = timer.nsecsElapsed();
    if (!opened || log.entries().size() != count) {
        std::fprintf(stderr, "open failed: %s\n", qPrintable(reporter.texts().join(QLatin1Char('\n'))));
        return false;
    }
    timer.restart();
    const LogScan scan = VehicleLog::scanEntries(log.entries(), LogScanSettings { 12000.0, {} });
    const qint64 scanNs = timer.nsecsElapsed();

    // The write again in its parts: making the bytes, handing them to the system, and the
    // fsync with the rename that make it durable and atomic.
    timer.restart();
    const QByteArray encoded = LogArchive::encode(log.entries());
    const qint64 encodeNs = timer.nsecsElapsed();
    AtomicFile file(folder + QStringLiteral("SPLIT.vcb"));
    timer.restart();
    const bool written = file.open() && file.write(encoded);
    const qint64 handNs = timer.nsecsElapsed();
    timer.restart();
    const bool committed = written && file.commit();
    const qint64 syncNs = timer.nsecsElapsed();
    // The program's own save also checks the file on disk against the one it read.
    timer.restart();
    const bool saved = log.save(folder, QStringLiteral("BENCH"), reporter);
    const qint64 saveNs = timer.nsecsElapsed();
    // The same save of a log opened a while after its last change: the check that no other
    // program changed it trusts the file's times instead of reading it back.
    QThread::msleep(300);
    VehicleLog settled;
    const bool reopened
        = settled.open(folder, QStringLiteral("BENCH"), LogScanSettings { 12000.0, {} }, reporter, clock);
    timer.restart();
    const bool savedSettled = reopened && settled.save(folder, QStringLiteral("BENCH"), reporter);
    const qint64 settledNs = timer.nsecsElapsed();
    if (!committed || !saved || !savedSettled) {
        std::fprintf(stderr, "save failed: %s\n", qPrintable(file.errorString()));
        return false;
    }

    std::printf(
        "%9zu entries, %6.1f MB: write %7.1f ms (%10.0f entries/s), open+scan %7.1f ms (%10.0f entries/s), "
        "scan alone %6.1f ms; last odometer %.0f; peak RSS %ld MiB\n",
        count, double(bytes) / 1e6, double(writeNs) / 1e6, rate(count, writeNs), double(openNs) / 1e6,
        rate(count, openNs), double(scanNs) / 1e6, scan.lastOdometer, peakKiB() / 1024);
    std::printf("%9zu entries: write = encode %7.1f ms + write %7.1f ms + fsync and rename %7.1f ms; "
                "VehicleLog::save %7.1f ms (file just written: read back) / %7.1f ms (file settled)\n",
                count, double(encodeNs) / 1e6, double(handNs) / 1e6, double(syncNs) / 1e6,
                double(saveNs) / 1e6, double(settledNs) / 1e6);
    std::fflush(stdout);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() == 3) {
        LogGenerator generator;
        LogArchive archive;
        if (!archive.write(args.at(1), generator.generate(args.at(2).toULongLong()))) {
            std::fprintf(stderr, "%s\n", qPrintable(archive.errorString()));
            return 1;
        }
        return 0;
    }
    QTemporaryDir dir;
    const QString folder = dir.path() + QLatin1Char('/');
    for (size_t count : { size_t(10000), size_t(1000000) }) {
        if (!benchmark(folder, count))
            return 1;
    }
    return 0;
}
