// The History screen over a generated log of 100,000 entries: opening it (read, filled and
// painted), changing the type and the period filter (refill and paint), and scrolling a page.
// Prints the median of several runs of each, in milliseconds.
#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "LogGenerator.h"
#include "dataview/DataViewFilter.h"
#include "dataview/EntryTableModel.h"
#include "dataview/HistoryDialog.h"
#include "log/LogArchive.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"

namespace {

constexpr size_t Entries = 100000;
constexpr int Runs = 7;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

template<typename Step> double timed(Step step)
{
    QElapsedTimer timer;
    timer.start();
    step();
    return double(timer.nsecsElapsed()) / 1e6;
}

// Paints the dialog now, as the screen would on the next frame.
void paint(QWidget *widget)
{
    widget->grab();
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    QTemporaryDir root;
    RecordingReporter reporter;
    LogGenerator generator;
    const EntryList entries = generator.generate(Entries);
    // "Now" in the middle of the generated dates, so week, month and year list something.
    FixedClock clock(entries[Entries / 2].entryDate);
    QLocaleFormats locale;
    MemorySettingsStore options;
    MemorySettingsStore preferences;
    AppContext context { DevicePaths(root.path()), reporter, clock, locale, options, preferences };
    options.createKey(QStringLiteral("Options"));
    options.setValue(QStringLiteral("Options"), QStringLiteral("Name"), QStringLiteral("My Car"));
    VehicleSession session(context);
    session.start();
    if (!LogArchive().write(context.paths.dataFolder() + QStringLiteral("MYCAR0001.vcb"), entries)) {
        std::fprintf(stderr, "cannot write the log\n");
        return 1;
    }
    session.reopen();

    // Core alone: one pass of the filter over the whole list.
    std::vector<double> filterMs;
    for (int run = 0; run < Runs; ++run) {
        DataViewFilter filter;
        filter.type = DataViewFilter::Fuel;
        filter.period = DataViewFilter::Year;
        filterMs.push_back(timed([&] { filter.listedPositions(session.entries(), clock.now()); }));
    }

    std::vector<double> openMs, typeMs, periodMs, scrollMs;
    int rows = 0;
    for (int run = 0; run < Runs; ++run) {
        std::unique_ptr<HistoryDialog> dialog;
        openMs.push_back(timed([&] {
            dialog = std::make_unique<HistoryDialog>(session, reporter);
            dialog->resize(480, 640);
            dialog->show();
            paint(dialog.get());
        }));
        rows = dialog->model()->rowCount();
        const DataViewFilter::Type type = run % 2 ? DataViewFilter::AllTypes : DataViewFilter::Fuel;
        typeMs.push_back(timed([&] {
            dialog->setTypeFilter(type);
            paint(dialog.get());
        }));
        periodMs.push_back(timed([&] {
            dialog->setPeriodFilter(DataViewFilter::Year);
            paint(dialog.get());
        }));
        dialog->setPeriodFilter(DataViewFilter::AllPeriods);
        QScrollBar *bar = dialog->table()->verticalScrollBar();
        for (int page = 0; page < 20; ++page) {
            scrollMs.push_back(timed([&] {
                bar->setValue(bar->value() + bar->pageStep() * 97);
                paint(dialog.get());
            }));
        }
        dialog->setTypeFilter(DataViewFilter::AllTypes);
        dialog->reject();
    }
    if (!reporter.texts().isEmpty())
        std::fprintf(stderr, "messages: %s\n", qPrintable(reporter.texts().join(QLatin1Char('\n'))));

    std::printf("History, %zu entries (%d rows listed), medians of %d runs:\n", Entries, rows, Runs);
    std::printf("  open (read file, fill, paint)      %8.1f ms\n", median(openMs));
    std::printf("  type filter change (refill, paint) %8.1f ms\n", median(typeMs));
    std::printf("  period filter change (Year)        %8.1f ms\n", median(periodMs));
    std::printf("  scroll a jump + paint              %8.1f ms (median of %zu)\n", median(scrollMs),
                scrollMs.size());
    std::printf("  filter pass alone (core)           %8.1f ms\n", median(filterMs));
    return 0;
}
