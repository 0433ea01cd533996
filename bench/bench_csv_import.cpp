// Imports a generated CSV file of 100,000 rows in the CSV export's all-columns layout through the
// built-in "Tarvane CSV" map into an empty log and saves it, five times; prints each run and the
// medians of the whole import and of reading the records alone.
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

#include "LogGenerator.h"
#include "exchange/CsvImport.h"
#include "log/VehicleLog.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"

namespace {

QByteArray field(const QString &text)
{
    return '"' + to8bit(text) + "\",";
}

QByteArray date(quint32 seconds)
{
    return to8bit(DeviceTime::toLocal(seconds).toString(QStringLiteral("M/d/yyyy")));
}

QByteArray dateTime(quint32 seconds)
{
    return to8bit(DeviceTime::toLocal(seconds).toString(QStringLiteral("M/d/yyyy h:mm AP")));
}

QByteArray csv(const EntryList &entries)
{
    QByteArray out = "\"Type\",\"Odometer\",\"Entry Date\",\"Invoice Number\",\"Amount\",\"Filling Station\","
                     "\"Fuel Qty.\",\"Fuel Price\",\"Economy\",\"Fuel Cost\",\"Purpose\",\"Destination\","
                     "\"Contact\",\"Start Odometer\",\"End Odometer\",\"Distance\",\"Departure Date\","
                     "\"Arrival Date\",\"Duration\",\"Tolls\",\"Parking\",\"Trip Cost\",\"Notes\"\r\n";
    for (const CVCItem &e : entries) {
        const bool trip = e.entryType == CVCItem::Trip;
        out += field(e.isOpenTrip() ? QStringLiteral("* OPEN TRIP") : e.typeText.text());
        out += field(cformat("%6.1f", e.odometer));
        out += '"' + date(e.entryDate) + "\",";
        out += field(e.invoice);
        out += trip ? QByteArray("\" \",") : field(cformat("%3.2f", e.amount));
        out += field(e.station);
        out += e.fuelQuantity > 0 ? field(cformat("%3.3f", e.fuelQuantity)) : QByteArray("\" \",");
        out += e.unitPrice > 0 && !trip ? field(cformat("%3.3f", e.unitPrice)) : QByteArray("\" \",");
        out += e.economy > 0 ? field(cformat("%3.3f", e.economy)) : QByteArray("\" \",");
        out += e.fuelQuantity > 0 ? field(cformat("%4.2f", e.fuelQuantity * e.unitPrice))
                                  : QByteArray("\" \",");
        out += field(e.purpose) + field(e.destination) + field(e.contact);
        out += field(cformat("%6.1f", e.odometer)) + field(cformat("%6.1f", e.endOdometer));
        out += field(cformat("%6.1f", qMax(0.0, e.endOdometer - e.odometer)));
        out += '"' + dateTime(e.departTime) + "\",\"" + dateTime(e.arriveTime) + "\",";
        out += field(e.tripDurationText());
        out += trip ? field(cformat("%3.2f", e.amount)) : QByteArray("\" \",");
        out += field(cformat("%3.2f", e.parking));
        out += field(cformat("%6.2f", trip ? e.unitPrice + e.parking + e.amount : e.parking + e.amount));
        out += field(e.notes) + "\r\n";
    }
    return out;
}

// CPU time of the process: on a busy machine the wall clock also counts other programs' turns.
double cpuMs()
{
    timespec t {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    constexpr size_t Rows = 100000;
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("big.csv"));
    {
        LogGenerator generator;
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly) || out.write(csv(generator.generate(Rows))) < 0)
            return 1;
    }
    std::vector<double> whole;
    std::vector<double> reading;
    std::vector<double> cpu;
    for (int run = 0; run < 5; ++run) {
        const QString folder = dir.filePath(QStringLiteral("run%1/").arg(run));
        QDir().mkpath(folder);
        RecordingReporter reporter;
        VehicleLog log;
        QElapsedTimer timer;
        const double cpuStart = cpuMs();
        timer.start();
        CsvImport import(ImportMap::builtIn(), CsvConversionSettings());
        if (!import.begin(file, reporter))
            return 1;
        while (import.step(2000)) { }
        const double readMs = double(timer.nsecsElapsed()) / 1e6;
        if (!import.finish(log, folder, QStringLiteral("BIG"), reporter) || log.entries().size() != Rows) {
            std::fprintf(stderr, "import failed: %s\n", qPrintable(reporter.texts().join(QLatin1Char('\n'))));
            return 1;
        }
        const double wholeMs = double(timer.nsecsElapsed()) / 1e6;
        const double cpuUsed = cpuMs() - cpuStart;
        whole.push_back(wholeMs);
        cpu.push_back(cpuUsed);
        reading.push_back(readMs);
        std::printf("run %d: %zu rows (%.1f MB), read+convert %.1f ms, with placing and saving %.1f ms "
                    "(CPU %.1f ms)\n",
                    run + 1, Rows, double(QFileInfo(file).size()) / 1e6, readMs, wholeMs, cpuUsed);
    }
    std::printf("median of 5: read+convert %.1f ms, whole import %.1f ms (%.0f rows/s), CPU %.1f ms\n",
                median(reading), median(whole), double(Rows) * 1000.0 / median(whole), median(cpu));
    return 0;
}
