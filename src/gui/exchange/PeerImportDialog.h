#pragma once

#include <QDialog>

#include "exchange/PeerImportPlan.h"

class FileChooser;
class QComboBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;
class Reporter;
class VehicleSession;

// "Import from another app": the exported file(s), what was recognised in them, the vehicle of a
// file of several and the date order, a preview of the entries as they will be stored, the rows
// skipped and why, then Import with a progress bar. PeerImportPlan holds the rules and texts.
class PeerImportDialog : public QDialog
{
    Q_OBJECT
public:
    PeerImportDialog(VehicleSession &session, FileChooser &chooser, Reporter &reporter,
                     QWidget *parent = nullptr);

    // Opens the dialog; true when entries were imported (the caller refills its list).
    static bool run(VehicleSession &session, FileChooser &chooser, Reporter &reporter, QWidget *parent);

    // "Add File…": one more file (Fuelly's two are added one after the other).
    void addFile();
    void clearFiles();
    void runImport();
    bool imported() const { return m_imported; }

    QListWidget *fileList() const { return m_files; }
    QLabel *recognisedLabel() const { return m_recognised; }
    QLabel *summaryLabel() const { return m_summary; }
    QComboBox *vehicleBox() const { return m_vehicle; }
    QComboBox *dateOrderBox() const { return m_dateOrder; }
    QLabel *dateOrderNote() const { return m_dateOrderNote; }
    QTableWidget *previewTable() const { return m_preview; }
    QPlainTextEdit *warningsView() const { return m_warnings; }
    QPushButton *importButton() const { return m_import; }
    QProgressBar *progressBar() const { return m_progress; }

    static constexpr int PreviewRows = 20;

    void done(int result) override;

private:
    void buildControls();
    void connectControls();
    // Reads the files again with the current choices and shows the outcome.
    void refresh();

    VehicleSession &m_session;
    FileChooser &m_chooser;
    Reporter &m_reporter;
    PeerImportPlan m_plan;
    bool m_imported = false;
    bool m_busy = false;

    QListWidget *m_files = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_clear = nullptr;
    QLabel *m_recognised = nullptr;
    QLabel *m_vehicleLabel = nullptr;
    QComboBox *m_vehicle = nullptr;
    QComboBox *m_dateOrder = nullptr;
    QLabel *m_dateOrderNote = nullptr;
    QLabel *m_summary = nullptr;
    QTableWidget *m_preview = nullptr;
    QLabel *m_warningsLabel = nullptr;
    QPlainTextEdit *m_warnings = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_import = nullptr;
    QPushButton *m_close = nullptr;
};
