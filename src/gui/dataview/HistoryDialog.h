#pragma once

#include <QDialog>

#include <memory>

#include "dataview/DataViewFilter.h"
#include "dataview/DataViewLog.h"

class EntryTableModel;
class ExportMenu;
class FileChangeWatcher;
class FileChooser;
class QAbstractButton;
class QAbstractItemModel;
class QAction;
class QButtonGroup;
class QCheckBox;
class QDateEdit;
class QMenu;
class QMenuBar;
class QTableView;
class Reporter;
class VehicleSession;

// "History": the open vehicle's log as a list, narrowed by type and period, with editing,
// inserting, deleting and "Reconcile Data". The rules live in DataViewLog, DataViewFilter and
// EntryTableModel; this dialog builds the controls and hands the user's commands to them.
// Every change is saved at once; the caller reopens the log when the dialog has closed.
class HistoryDialog : public QDialog
{
    Q_OBJECT
public:
    HistoryDialog(VehicleSession &session, Reporter &reporter, QWidget *parent = nullptr);
    ~HistoryDialog() override;
    // Runs the screen and reopens the session's log afterwards, so the main screen shows the
    // log as the screen left it.
    static void run(VehicleSession &session, Reporter &reporter, QWidget *parent);

    // Menu commands, public so that tests drive them as the menu does.
    void setTypeFilter(DataViewFilter::Type type);
    void setPeriodFilter(DataViewFilter::Period period);
    void setDateRange(const QDate &start, const QDate &end);
    void editSelected();
    void insertFuelOrRepair();
    void insertTrip();
    void deleteSelected();
    void deleteAll();
    void reconcile();
    // "Import CSV": the IMPORT screen, then the list refilled from the file.
    void importCsv(FileChooser &chooser);
    // "Import from another app…": the files of another vehicle-log app, then the list refilled.
    void importFromApp(FileChooser &chooser);
    void chooseFont();
    void setShadeRows(bool shade);

    const DataViewFilter &filter() const { return m_filter; }
    const DataViewLog &log() const { return m_log; }
    QTableView *table() const { return m_table; }
    EntryTableModel *model() const { return m_model; }
    QMenu *optionsMenu() const { return m_options; }
    ExportMenu *exportMenu() const { return m_exportMenu; }
    // The position in the log of the selected row, -1 when none is selected.
    int selectedPosition() const;
    void selectRow(int row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void done(int result) override;

private:
    void buildControls();
    void buildMenu(QMenuBar *bar);
    void layOut(QMenuBar *bar);
    void connectControls();
    void showValues();
    void applyFont();
    void applyColumns();
    void saveColumnWidths();
    // Fills the list again; after a change the log is read back from its file first.
    void refill(bool reload);
    // Reads the log again, and fills the list, when another program changed its file; before
    // every change. True when it did.
    bool catchUp();
    void insertEntry(CVCItem::EntryType type);
    QAction *addCommand(QMenu *menu, const QString &text, void (HistoryDialog::*slot)());

    VehicleSession &m_session;
    Reporter &m_reporter;
    DataViewLog m_log;
    DataViewFilter m_filter;
    ExportMenu *m_exportMenu = nullptr;
    FileChangeWatcher *m_watcher = nullptr;
    int m_lastSelected = -1;

    EntryTableModel *m_model = nullptr;
    QAbstractItemModel *m_view = nullptr; // the model with the entries' pictures
    QTableView *m_table = nullptr;
    QButtonGroup *m_typeGroup = nullptr;
    QButtonGroup *m_periodGroup = nullptr;
    QCheckBox *m_byDate = nullptr;
    QDateEdit *m_start = nullptr;
    QDateEdit *m_end = nullptr;
    QMenu *m_options = nullptr;
    QAction *m_shadeAction = nullptr;
};
