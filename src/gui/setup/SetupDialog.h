#pragma once

#include <QDialog>
#include <QMap>

class QAction;
class QLabel;
class QMenuBar;
class QPushButton;
class Reporter;
class SetupForm;

// "Setup": the current vehicle's profile at a glance, and the commands that edit it, create a
// vehicle, delete one and save. A shell over SetupForm, which holds the values and the rules.
class SetupDialog : public QDialog
{
    Q_OBJECT
public:
    SetupDialog(SetupForm &form, Reporter &reporter, QWidget *parent = nullptr);

    // The menu commands.
    void editVehicleInfo();
    void editTripInfo();
    void newVehicle();
    void deleteVehicle();
    void saveAndExit();

    QAction *editAction() const { return m_edit; }
    QAction *tripAction() const { return m_trip; }
    QAction *newAction() const { return m_new; }
    QAction *deleteAction() const { return m_delete; }
    QAction *saveAction() const { return m_save; }
    QAction *exitAction() const { return m_exit; }
    QPushButton *saveExitButton() const { return m_saveExit; }
    // The value label beside a caption ("Vehicle ID:", "Economy:" ...).
    QLabel *valueLabel(const QString &caption) const { return m_values.value(caption); }

private:
    QMenuBar *buildMenu();
    QWidget *buildDisplay();
    void showValues();
    bool runSheet(const QString &title, bool vehicleInfo);

    SetupForm &m_form;
    Reporter &m_reporter;
    QMap<QString, QLabel *> m_values;
    QAction *m_edit = nullptr;
    QAction *m_trip = nullptr;
    QAction *m_new = nullptr;
    QAction *m_delete = nullptr;
    QAction *m_save = nullptr;
    QAction *m_exit = nullptr;
    QPushButton *m_saveExit = nullptr;
};
