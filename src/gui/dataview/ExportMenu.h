#pragma once

#include <QMenu>

#include <functional>
#include <memory>

#include "dataview/DataViewFilter.h"
#include "export/Exporter.h"

class FileChooser;
class Reporter;
class VehicleSession;

// The History screen's "Export" sub-menu: "Export CSV", "xls Export by Date" and "Export HTML"
// with "&Export ALL data " and "Excel Exports" (which does nothing, as it always has). Each
// export reads the screen's list and filter at the moment it runs.
class ExportMenu : public QMenu
{
    Q_OBJECT

public:
    // What the screen shows: its entry list and its filter.
    struct Source
    {
        std::function<const EntryList &()> entries;
        std::function<DataViewFilter()> filter;
    };

    ExportMenu(VehicleSession &session, Reporter &reporter, Source source, QWidget *parent = nullptr);
    ~ExportMenu() override;

    // The folder chooser; the platform's dialog unless tests set their own.
    void setFileChooser(FileChooser *chooser);

    QAction *csvAction() const { return m_csv; }
    QAction *xmlAction() const { return m_xml; }
    QAction *htmlAllAction() const { return m_htmlAll; }
    QAction *excelExportsAction() const { return m_excelExports; }
    // "Export HTML": other HTML pages slot in before "Excel Exports".
    QMenu *htmlMenu() const { return m_html; }

    // True when the file was written.
    bool run(Exporter::Format format);

private:
    VehicleSession &m_session;
    Reporter &m_reporter;
    Source m_source;
    std::unique_ptr<FileChooser> m_ownChooser;
    FileChooser *m_chooser;
    QAction *m_csv = nullptr;
    QAction *m_xml = nullptr;
    QAction *m_htmlAll = nullptr;
    QAction *m_excelExports = nullptr;
    QMenu *m_html = nullptr;
};
