// One `tarvane-cli add` on a vehicle with a 2,000-entry log, timed as a whole process (start, read
// the log, add, save, exit), as a user or a script meets it. Prints every run and the median.
//
// Usage: bench_cli_add [path to tarvane-cli] [entries] [runs]
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "LogGenerator.h"
#include "log/LogArchive.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2.0;
}

// Runs the command once; the wall time in milliseconds, or -1 when it failed.
double timedRun(const QString &program, const QStringList &arguments)
{
    QProcess process;
    QElapsedTimer wall;
    wall.start();
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        std::fprintf(stderr, "%s failed: %s\n", qPrintable(program),
                     process.readAllStandardError().constData());
        return -1;
    }
    return double(wall.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString program = args.size() > 1
        ? args.at(1)
        : QCoreApplication::applicationDirPath() + u"/../src/cli/tarvane-cli"_s;
    const int count = args.size() > 2 ? args.at(2).toInt() : 2000;
    const int runs = args.size() > 3 ? args.at(3).toInt() : 21;

    QTemporaryDir root;
    root.setAutoRemove(qEnvironmentVariableIsEmpty("BENCH_KEEP"));
    if (!root.autoRemove())
        std::printf("sandbox kept in %s\n", qPrintable(root.path()));
    const DevicePaths paths(root.path());
    EntryList log = LogGenerator().generate(size_t(count));
    const double odometer = log.back().odometer;
    {
        // A first run puts the settings in place and records the template's vehicle as chosen.
        NullReporter reporter;
        SystemClock clock;
        TestLocaleFormats locale;
        QSettingsStore options(paths, u"Quellar"_s, u"Velcora"_s);
        QSettingsStore preferences(paths, u"Quellar"_s, u"Tarvane"_s);
        AppContext context { paths, reporter, clock, locale, options, preferences };
        VehicleSession session(context);
        session.start();
        session.selectVehicle(session.vehicleNames().value(0));
        session.saveOptions();
        options.sync();
        if (!LogArchive().write(session.databasePath(), log)) {
            std::fprintf(stderr, "cannot write the log\n");
            return 1;
        }
    }

    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        // Each fill-up lies beyond the last one, as in real use; the log grows by one entry a run.
        const QString reading = QString::number(qint64(odometer) + 300 * (run + 1));
        const double ms = timedRun(program,
                                   { u"--root"_s, root.path(), u"add"_s, u"fuel"_s, u"--odometer"_s, reading,
                                     u"--quantity"_s, u"11.5"_s, u"--price"_s, u"3.199"_s });
        if (ms < 0)
            return 1;
        times.push_back(ms);
        std::printf("run %2d: %.1f ms\n", run + 1, ms);
    }
    std::printf(
        "tarvane-cli add on a %d-entry log: median %.1f ms, fastest %.1f ms, slowest %.1f ms (%d runs)\n",
        count, median(times), *std::min_element(times.begin(), times.end()),
        *std::max_element(times.begin(), times.end()), runs);
    return 0;
}
