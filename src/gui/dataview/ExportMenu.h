#pragma once

#include <QMenu>

#include <functional>

#include "dataview/DataViewFilter.h"
#include "export/Exporter.h"

class FileChooser;
class VehicleSession;

// The History screen's "Export" sub-menu: "Export CSV", "xls Export by Date" and "Export HTML"
// with "&Export ALL data " and "Excel Exports" (which does nothing, as it always has). Each
// export reads the screen's filter at the moment it runs; messages go through the session's
// reporter.
class ExportMenu : public QMenu
{
    Q_OBJECT

public:
    using FilterSource = std::function<DataViewFilter()>;

    ExportMenu(VehicleSession &session, FileChooser &chooser, FilterSource filter, QWidget *parent = nullptr);

    QAction *csvAction() const { return m_csv; }
    QAction *xmlAction() const { return m_xml; }
    QAction *htmlAllAction() const { return m_htmlAll; }
    QAction *excelExportsAction() const { return m_excelExports; }

    // True when the file was written.
    bool run(Exporter::Format format);

private:
    VehicleSession &m_session;
    FileChooser &m_chooser;
    FilterSource m_filter;
    QAction *m_csv = nullptr;
    QAction *m_xml = nullptr;
    QAction *m_htmlAll = nullptr;
    QAction *m_excelExports = nullptr;
};
