// Exports a generated log of 100,000 entries to CSV, HTML and XML files, five runs each, and
// prints the median wall and CPU times, the output rate and how much the peak memory grew while exporting.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

#include "LogGenerator.h"
#include "export/ExportSelection.h"
#include "export/Exporter.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"

namespace {

long peakKiB()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss; // KiB on Linux
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    constexpr size_t Count = 100000;
    constexpr int Runs = 5;
    LogGenerator generator;
    const EntryList entries = generator.generate(Count);
    QTemporaryDir dir;
    FixedClock clock(1700000000);
    QLocaleFormats locale(QLocale(QLocale::English, QLocale::UnitedStates));
    const long baseKiB = peakKiB();

    const struct
    {
        Exporter::Format format;
        DataViewFilter::Period period;
    } runs[] = { { Exporter::Format::Csv, DataViewFilter::AllPeriods },
                 { Exporter::Format::Html, DataViewFilter::AllPeriods },
                 { Exporter::Format::Xml, DataViewFilter::ByDate } };
    bool ok = true;
    for (const auto &run : runs) {
        ExportData data;
        data.vehicleName = QStringLiteral("Bench");
        data.tripRate = 0.5;
        data.periodFilter = run.period;
        data.locale = &locale;
        data.clock = &clock;
        DataViewFilter filter;
        filter.period = run.period;
        filter.startDate = QDate(2000, 1, 1);
        filter.endDate = QDate(2100, 1, 1);
        data.entries = ExportSelection::forFormat(run.format, entries, filter, clock.now());
        auto exporter = createExporter(run.format, data);
        const QString path = exporter->filePath(dir.path() + QLatin1Char('/'));
        std::vector<double> ms, cpuMs;
        for (int i = 0; i < Runs; ++i) {
            QElapsedTimer timer;
            timer.start();
            const std::clock_t cpuStart = std::clock();
            if (!exporter->write(path)) {
                std::fprintf(stderr, "%s\n", qPrintable(exporter->errorString()));
                ok = false;
                break;
            }
            ms.push_back(double(timer.nsecsElapsed()) / 1e6);
            cpuMs.push_back(double(std::clock() - cpuStart) * 1000.0 / CLOCKS_PER_SEC);
        }
        if (ms.empty())
            continue;
        std::sort(ms.begin(), ms.end());
        std::sort(cpuMs.begin(), cpuMs.end());
        const double median = ms[ms.size() / 2];
        const double cpuMedian = cpuMs[cpuMs.size() / 2];
        const double mb = double(QFileInfo(path).size()) / 1e6;
        std::printf("%-4s %zu entries (%zu written): median %7.1f ms of %d runs (min %7.1f, max %7.1f), "
                    "CPU median %7.1f ms; %6.1f MB, %6.1f MB/s; peak RSS grew %ld KiB while exporting\n",
                    qPrintable(exporter->name()), Count, data.entries.size(), median, Runs, ms.front(),
                    ms.back(), cpuMedian, mb, mb / (median / 1000.0), peakKiB() - baseKiB);
        std::fflush(stdout);
    }
    return ok ? 0 : 1;
}
