#include "ExportMenu.h"

#include "app/FileChooser.h"
#include "export/ExportSelection.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

ExportMenu::ExportMenu(VehicleSession &session, FileChooser &chooser, FilterSource filter, QWidget *parent)
    : QMenu(u"Export"_s, parent)
    , m_session(session)
    , m_chooser(chooser)
    , m_filter(std::move(filter))
{
    m_csv = addAction(u"Export CSV"_s, this, [this] { run(Exporter::Format::Csv); });
    m_xml = addAction(u"xls Export by Date"_s, this, [this] { run(Exporter::Format::Xml); });
    QMenu *html = addMenu(u"Export HTML"_s);
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

bool ExportMenu::run(Exporter::Format format)
{
    AppContext &context = m_session.context();
    const DataViewFilter filter = m_filter();
    ExportData data;
    data.vehicleName = m_session.currentVehicleName();
    data.tripRate = m_session.vehicle().costPerMile;
    data.lastOdometer = m_session.scan().lastOdometer;
    data.typeFilter = filter.type;
    data.periodFilter = filter.period;
    data.locale = &context.locale;
    data.clock = &context.clock;
    data.entries = ExportSelection::forFormat(format, m_session.entries(), filter, context.clock.now());

    auto exporter = createExporter(format, data);
    if (!exporter->confirm(context.reporter))
        return false;
    const QString myDocuments = context.paths.myDocuments();
    // The page always goes to My Documents; the others into the folder the user picks.
    const QString folder = format == Exporter::Format::Html
        ? myDocuments
        : m_chooser.chooseFolder(parentWidget(), u"Export"_s, myDocuments);
    return ExportRun::toFolder(*exporter, folder, context.reporter);
}
