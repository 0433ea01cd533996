#pragma once

#include <QDialog>

#include "exchange/CsvImportForm.h"

class FileChooser;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class VehicleSession;

// "IMPORT": the CSV file, the saved maps, the file's columns beside the import fields, and the
// import itself with a progress bar. The rules and the import are the core's.
class CsvImportDialog : public QDialog
{
    Q_OBJECT
public:
    CsvImportDialog(VehicleSession &session, FileChooser &chooser, QWidget *parent = nullptr);

    // Opens the dialog; true when entries were imported (the caller refills its list).
    static bool run(VehicleSession &session, FileChooser &chooser, QWidget *parent);

    void browse();
    // "Save Map": asks for a name, then saveMapAs().
    void saveMap();
    bool saveMapAs(const QString &name);
    // Assigns the chosen column to the chosen field, or clears the field (see CsvImportForm).
    void assignOrClear();
    void runImport();
    bool imported() const { return m_imported; }

    QLineEdit *fileField() const { return m_file; }
    QComboBox *mapBox() const { return m_maps; }
    QTreeWidget *dataList() const { return m_data; }
    QTreeWidget *fieldList() const { return m_fields; }
    QPushButton *assignButton() const { return m_assign; }
    QPushButton *importButton() const { return m_import; }
    QPushButton *abortButton() const { return m_abort; }
    QGroupBox *mapsGroup() const { return m_group; }
    QProgressBar *progressBar() const { return m_progress; }

    void done(int result) override;

private:
    void buildControls();
    void connectControls();
    void showValues();
    void showMaps();
    void updateAssignButton();
    int chosenColumn() const;
    int chosenField() const;

    VehicleSession &m_session;
    FileChooser &m_chooser;
    CsvImportForm m_form;
    bool m_imported = false;
    bool m_busy = false;

    QLineEdit *m_file = nullptr;
    QPushButton *m_browse = nullptr;
    QGroupBox *m_group = nullptr;
    QComboBox *m_maps = nullptr;
    QPushButton *m_saveMap = nullptr;
    QProgressBar *m_progress = nullptr;
    QTreeWidget *m_data = nullptr;
    QTreeWidget *m_fields = nullptr;
    QPushButton *m_assign = nullptr;
    QPushButton *m_import = nullptr;
    QPushButton *m_abort = nullptr;
};
