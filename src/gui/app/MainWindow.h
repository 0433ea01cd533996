#pragma once

#include <QMainWindow>

class FileChangeWatcher;
class FileChooser;
class HelpLauncher;
class QAction;
class QLabel;
class QListWidget;
class TileCounter;
class VehicleSelector;
class VehicleSession;

// The program's only top-level window: banner, vehicle selector, odometer and economy counters
// and the reminder list, with the TOOLS menu. It shows the session's figures and hands every
// user action to the session; the rules live there.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    // The session must have been started. The window does not own its arguments.
    MainWindow(VehicleSession &session, FileChooser &chooser, HelpLauncher &help, QWidget *parent = nullptr);

    // Shows the session's vehicle list, counters and reminder lines.
    void refresh();

    // The size and place of the last run, if the preferences hold one.
    bool restoreWindowGeometry();
    void saveWindowGeometry();

    // Menu commands, public so that tests and the toolbar share them.
    void showHelp();
    void showAbout();
    void backupVehicle();
    void restoreVehicle();
    // "Fuel", "Repairs", "Trips": a new entry through its form, kept when saved with an odometer.
    void addEntry(int entryType);
    // "Setup / Edit": vehicles and their settings, then everything reloaded.
    void showSetup();
    // "View Data": the History screen; the log is reopened when it closes.
    void viewData();

    VehicleSelector *vehicleSelector() const { return m_selector; }
    TileCounter *odometerCounter() const { return m_odometer; }
    TileCounter *currentEconomyCounter() const { return m_current; }
    TileCounter *averageEconomyCounter() const { return m_average; }
    QListWidget *reminderList() const { return m_reminders; }
    QLabel *noRemindersLabel() const { return m_noReminders; }
    QLabel *chooseVehicleHint() const { return m_chooseHint; }
    QAction *helpAction() const { return m_helpAction; }
    QAction *aboutAction() const { return m_aboutAction; }
    QAction *backupAction() const { return m_backupAction; }
    QAction *restoreAction() const { return m_restoreAction; }
    QAction *fuelAction() const { return m_fuelAction; }
    QAction *repairsAction() const { return m_repairsAction; }
    QAction *tripsAction() const { return m_tripsAction; }
    QAction *setupAction() const { return m_setupAction; }
    QAction *viewDataAction() const { return m_viewDataAction; }
    QAction *quitAction() const { return m_quitAction; }

    static QString preferenceSection();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildActions();
    void buildMenu();
    void buildToolBar();
    QWidget *buildCentre();
    void selectionChanged(int index);
    void dropDownOpened();
    void dropDownClosed();
    void showCounters();
    void showReminders();
    void fillSelector();
    // Reads the log and settings again when another program changed them; before every change.
    void catchUp();

    VehicleSession &m_session;
    FileChooser &m_chooser;
    HelpLauncher &m_help;
    bool m_filling = false;
    FileChangeWatcher *m_watcher = nullptr;

    VehicleSelector *m_selector = nullptr;
    TileCounter *m_odometer = nullptr;
    TileCounter *m_current = nullptr;
    TileCounter *m_average = nullptr;
    QLabel *m_currentLabel = nullptr;
    QListWidget *m_reminders = nullptr;
    QLabel *m_noReminders = nullptr;
    QAction *m_helpAction = nullptr;
    QAction *m_aboutAction = nullptr;
    QAction *m_backupAction = nullptr;
    QAction *m_restoreAction = nullptr;
    QAction *m_fuelAction = nullptr;
    QAction *m_repairsAction = nullptr;
    QAction *m_tripsAction = nullptr;
    QAction *m_setupAction = nullptr;
    QAction *m_viewDataAction = nullptr;
    QAction *m_quitAction = nullptr;
    QLabel *m_chooseHint = nullptr;
};
