#include "ExportMenu.h"

#include "app/FileChooser.h"
#include "export/ExportSelection.h"
#include "log/VehicleLog.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

ExportMenu::ExportMenu(VehicleSession &session, Reporter &reporter, Source source, QWidget *parent)
    : QMenu(u"Export"_s, parent)
    , m_session(session)
    , m_reporter(reporter)
    , m_source(std::move(source))
    , m_ownChooser(std::make_unique<DialogFileChooser>())
    , m_chooser(m_ownChooser.get())
{
    m_csv = addAction(u"Export CSV"_s, this, [this] { run(Exporter::Format::Csv); });
    m_xml = addAction(u"xls Export by Date"_s, this, [this] { run(Exporter::Format::Xml); });
    QMenu *html = m_html = addMenu(u"Export HTML"_s);
    m_htmlAll = html->addAction(u"&Export ALL data "_s, this, [this] { run(Exporter::Format::Html); });
    // Kept in the menu, as users know it, without a command behind it.
    m_excelExports = html->addAction(u"Excel Exports"_s);
    // Items a finger can hit on a small touch screen.
    const QString touchItems
        = u"QMenu::item { min-height: 32px; padding: 0 24px 0 12px; }"
          "QMenu::item:selected { background: palette(highlight); color: palette(highlighted-text); }"_s;
    setStyleSheet(touchItems);
    html->setStyleSheet(touchItems);
}

ExportMenu::~ExportMenu() = default;

void ExportMenu::setFileChooser(FileChooser *chooser)
{
    m_chooser = chooser ? chooser : m_ownChooser.get();
}

bool ExportMenu::run(Exporter::Format format)
{
    AppContext &context = m_session.context();
    const DataViewFilter filter = m_source.filter();
    const EntryList &entries = m_source.entries();
    const VehicleSettings &vehicle = m_session.vehicle();
    ExportData data;
    data.vehicleName = m_session.currentVehicleName();
    data.tripRate = vehicle.costPerMile;
    // The screen's list may have changed since the session last read the log.
    EntryList scanned = entries;
    data.lastOdometer
        = VehicleLog::scanEntries(scanned, LogScanSettings { vehicle.startOdometer, vehicle.customNames })
              .lastOdometer;
    data.typeFilter = filter.type;
    data.periodFilter = filter.period;
    data.locale = &context.locale;
    data.clock = &context.clock;
    data.entries = ExportSelection::forFormat(format, entries, filter, context.clock.now());

    auto exporter = createExporter(format, data);
    if (!exporter->confirm(m_reporter))
        return false;
    const QString myDocuments = context.paths.myDocuments();
    // The page always goes to My Documents; the others into the folder the user picks.
    const QString folder = format == Exporter::Format::Html
        ? myDocuments
        : m_chooser->chooseFolder(parentWidget(), u"Export"_s, myDocuments);
    return ExportRun::toFolder(*exporter, folder, m_reporter);
}
