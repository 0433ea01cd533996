#pragma once

#include <QDialog>

#include "storage/FullBackup.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;
class VehicleSession;

// "FULL BACKUP" and "FULL RESTORE": a location, the button that runs the copy, "Abort", and the
// "FILES COPIED" list filling as the files are copied. The copying and its messages are the
// core's; the dialog only shows them.
class FullBackupDialog : public QDialog
{
    Q_OBJECT
public:
    // drives and copier stand in for the machine's drives and the real copy in tests.
    FullBackupDialog(FullBackup::Kind kind, AppContext &context, QWidget *parent = nullptr,
                     const BackupLocations::DriveEnumerator &drives = {}, FullBackup::Copier copier = {});

    // Opens the dialog from the main screen and records what it did there: after a complete
    // backup the "Full Backup" line, after a restore the reload of everything and the "Full
    // Restore" line. True when the main screen needs refreshing.
    static bool openFromMainScreen(FullBackup::Kind kind, VehicleSession &session, QWidget *parent);

    // The button's action: asks, copies, lists, tells the result. A complete backup closes the
    // dialog; a restore, or a backup with failures, stays open on its list.
    void runCopy();

    // Whether a restore (or backup) has copied anything since the dialog opened.
    bool hasRun() const { return m_result.has_value(); }
    const std::optional<FullCopyResult> &copyResult() const { return m_result; }

    QComboBox *locationBox() const { return m_location; }
    QPushButton *runButton() const { return m_run; }
    QPushButton *abortButton() const { return m_abort; }
    QTreeWidget *filesList() const { return m_files; }

    void done(int result) override;

private:
    void buildControls();
    void fillLocations(const BackupLocations::DriveEnumerator &drives);
    void showFolder();
    void addLine(const FullCopyStep &step);

    FullBackup::Kind m_kind;
    AppContext &m_context;
    FullBackup m_full;
    QList<BackupLocation> m_locations;
    std::optional<FullCopyResult> m_result;

    QComboBox *m_location = nullptr;
    QLabel *m_folder = nullptr;
    QPushButton *m_run = nullptr;
    QPushButton *m_abort = nullptr;
    QTreeWidget *m_files = nullptr;
};
