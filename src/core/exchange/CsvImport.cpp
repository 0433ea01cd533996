#include "CsvImport.h"

#include "calc/FuelEconomy.h"
#include "log/VehicleLog.h"
#include "platform/CFormat.h"
#include "platform/Reporter.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The log's save speaks of "Save ERROR 105"; a save made by the import reports it in its own words.
class ImportSaveReporter : public Reporter
{
public:
    explicit ImportSaveReporter(Reporter &inner)
        : m_inner(inner)
    { }
    void error(const QString &text, const QString &title) override
    {
        const QString saveError = QString::fromUtf8(VehicleLog::SaveError105);
        m_inner.error(text.startsWith(saveError) ? QString::fromUtf8(VehicleLog::SaveError205) : text, title);
    }
    void warning(const QString &text, const QString &title) override { m_inner.warning(text, title); }
    void info(const QString &text, const QString &title) override { m_inner.info(text, title); }
    bool ask(const QString &text, const QString &title, Buttons buttons) override
    {
        return m_inner.ask(text, title, buttons);
    }

private:
    Reporter &m_inner;
};

} // namespace

QString CsvImport::odometerNotMappedMessage()
{
    return u"WARNING! The Odometer field must be mapped.  All imported data must have a mileage entry to be "
           "valid."_s;
}

QString CsvImport::completeMessage(int lines, int skipped)
{
    return cformat("Import Complete!\nImported %d lines\nSkipped %d Lines", lines - 2, skipped);
}

CsvImport::CsvImport(const ImportMap &map, const CsvConversionSettings &settings)
    : m_converter(map, settings)
    , m_settings(settings)
    , m_odometerMapped(map.isMapped(ImportMap::Odometer))
{ }

CsvImport::~CsvImport() = default;

bool CsvImport::begin(const QString &fileName, Reporter &reporter)
{
    if (!m_odometerMapped) {
        reporter.warning(odometerNotMappedMessage());
        return false;
    }
    m_file = std::make_unique<QFile>(fileName);
    if (fileName.isEmpty() || !m_file->open(QIODevice::ReadOnly)) {
        reporter.error(CsvHeader::openErrorMessage());
        m_file.reset();
        return false;
    }
    return begin(m_file.get(), reporter);
}

bool CsvImport::begin(QIODevice *device, Reporter &reporter)
{
    if (!m_odometerMapped) {
        reporter.warning(odometerNotMappedMessage());
        return false;
    }
    CsvHeader header;
    const CsvHeader::Status status = CsvHeader::read(device, &header);
    if (status != CsvHeader::Status::Ok) {
        reporter.error(CsvHeader::message(status));
        return false;
    }
    m_device = device;
    m_tokenizer.emplace(device, header.length, 2);
    m_converted.clear();
    m_lines = 0;
    m_skipped = 0;
    m_done = false;
    return true;
}

bool CsvImport::step(int records)
{
    if (!m_tokenizer || m_done)
        return false;
    for (int i = 0; i < records; ++i) {
        if (m_tokenizer->next(m_record) != CsvTokenizer::Status::Record) {
            m_done = true;
            return false;
        }
        ++m_lines;
        CVCItem item;
        if (m_converter.convert(m_record, &item))
            m_converted.push_back(std::move(item));
        else
            ++m_skipped;
    }
    return true;
}

int CsvImport::percentDone() const
{
    if (!m_device || !m_tokenizer || m_device->size() <= 0)
        return m_done ? 100 : 0;
    if (m_done)
        return 100;
    return int(qBound<qint64>(0, m_tokenizer->position() * 100 / m_device->size(), qint64(100)));
}

CsvTokenizer::Failure CsvImport::failure() const
{
    return m_tokenizer ? m_tokenizer->failure() : CsvTokenizer::Failure::None;
}

int CsvImport::failedLine() const
{
    return m_tokenizer && failure() != CsvTokenizer::Failure::None ? m_tokenizer->line() : 0;
}

bool CsvImport::finish(VehicleLog &log, const QString &dataFolder, const QString &vin, Reporter &reporter)
{
    while (step(4096)) { }
    if (m_file)
        m_file->close();
    const bool stopped = failure() != CsvTokenizer::Failure::None;
    if (stopped) {
        reporter.error(m_tokenizer->errorString()
                       + cformat("\nThe import stopped at line %d of the file; the lines before it are "
                                 "imported.",
                                 m_tokenizer->line()));
    }
    if (!m_converted.empty()) {
        EntryList merged = merge(log.entries(), m_converted);
        computeEconomies(merged, m_settings);
        const EntryList before = log.entries();
        log.setEntries(std::move(merged));
        ImportSaveReporter saveReporter(reporter);
        if (!log.save(dataFolder, vin, saveReporter)) {
            // The file on disk is as it was; so is the list.
            log.setEntries(before);
            return false;
        }
    }
    reporter.info(completeMessage(m_lines, m_skipped));
    return !stopped;
}

EntryList CsvImport::merge(const EntryList &log, EntryList imported)
{
    std::stable_sort(imported.begin(), imported.end(),
                     [](const CVCItem &a, const CVCItem &b) { return a.odometer < b.odometer; });
    EntryList merged;
    merged.reserve(log.size() + imported.size());
    auto next = imported.begin();
    for (const CVCItem &item : log) {
        while (next != imported.end() && next->odometer < item.odometer)
            merged.push_back(std::move(*next++));
        merged.push_back(item);
    }
    for (; next != imported.end(); ++next)
        merged.push_back(std::move(*next));
    return merged;
}

void CsvImport::computeEconomies(EntryList &entries, const CsvConversionSettings &settings)
{
    double lastFullFill = 0.0;
    for (CVCItem &item : entries) {
        if (item.entryType != CVCItem::Fuel)
            continue;
        if (item.economy == CsvRecordConverter::EconomyToCompute) {
            FuelEconomy::FillUpInput input;
            input.odometer = item.odometer;
            input.quantityText = QString::number(item.fuelQuantity, 'g', 17);
            input.priceText = QString::number(item.unitPrice, 'g', 17);
            input.liquidText = item.fuelMeasure;
            input.distanceUnit = settings.distanceUnit;
            input.economyUnit = settings.economyUnit;
            input.startOdometer = settings.startOdometer;
            input.lastFullFillOdometer = lastFullFill;
            input.liquidUnit = settings.liquidUnit;
            item.economy = FuelEconomy::computeFillUp(input).economy;
        }
        if (item.notFull == 0)
            lastFullFill = item.odometer;
    }
}
