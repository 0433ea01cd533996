// Cold start of the program on a vehicle with a 100,000-entry log: the time from process start to
// the first painted main window, as the program reports it (TARVANE_STARTUP_TIMING=exit), and the
// session's own start-up measured in this process for comparison.
//
// Usage: bench_startup [path to the tarvane executable] [entries]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

#include "log/LogArchive.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {
EntryList bigLog(int count)
{
    EntryList entries;
    entries.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        CVCItem item;
        item.entryType = i % 3;
        item.iconIndex = item.entryType == CVCItem::Trip ? 19 : item.entryType == CVCItem::Fuel ? 0 : 4;
        item.odometer = 1000.0 + i * 25.0;
        item.entryDate = 1000000000u + quint32(i) * 3600u;
        item.typeText = item.entryType == CVCItem::Maintenance ? u"Oil Change"_s : u"Fuel"_s;
        item.notes = u"Generated entry"_s;
        item.fuelMeasure = u"Gallons"_s;
        item.fuelQuantity = 10.0;
        item.economy = 25.0 + (i % 7);
        item.endOdometer = item.odometer + 20.0;
        entries.push_back(item);
    }
    return entries;
}
} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString program
        = args.size() > 1 ? args.at(1) : QCoreApplication::applicationDirPath() + u"/../src/app/tarvane"_s;
    const int count = args.size() > 2 ? args.at(2).toInt() : 100000;

    QTemporaryDir root;
    const DevicePaths paths(root.path());
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
        if (!LogArchive().write(session.databasePath(), bigLog(count))) {
            std::fprintf(stderr, "cannot write the log\n");
            return 1;
        }

        QElapsedTimer timer;
        timer.start();
        VehicleSession again(context);
        again.start();
        std::printf("session start-up with %d entries: %lld ms\n", count,
                    static_cast<long long>(timer.elapsed()));
    }

    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"TARVANE_STARTUP_TIMING"_s, u"exit"_s);
    if (!env.contains(u"DISPLAY"_s) && !env.contains(u"WAYLAND_DISPLAY"_s))
        env.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    const QString logPath = paths.dataFolder() + u"MYCAR0001.vcb"_s;
    static const QRegularExpression timing(u"first paint after (\\d+) ms"_s);
    for (int run = 1; run <= 3; ++run) {
        QProcess process;
        process.setProcessEnvironment(env);
        QElapsedTimer wall;
        wall.start();
        process.start(program, { u"--root"_s, root.path() });
        if (!process.waitForFinished(60000)) {
            std::fprintf(stderr, "%s did not finish\n", qPrintable(program));
            return 1;
        }
        const QRegularExpressionMatch match = timing.match(QString::fromUtf8(process.readAllStandardError()));
        std::printf("run %d: first paint after %s ms (process wall time %lld ms), log of %lld bytes\n", run,
                    match.hasMatch() ? qPrintable(match.captured(1)) : "?",
                    static_cast<long long>(wall.elapsed()),
                    static_cast<long long>(QFileInfo(logPath).size()));
    }
    return 0;
}
