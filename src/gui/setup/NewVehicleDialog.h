#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;
class Reporter;
class SetupForm;

// "New Vehicle": the new vehicle's name. "Create" ends it with the name typed (an empty one
// too); a name that can't be used is reported and the dialog stays open.
class NewVehicleDialog : public QDialog
{
    Q_OBJECT
public:
    NewVehicleDialog(const SetupForm &form, Reporter &reporter, QWidget *parent = nullptr);

    static constexpr int NameLength = 24;
    QString name() const;
    QLineEdit *nameEdit() const { return m_name; }
    QPushButton *createButton() const { return m_create; }
    QPushButton *cancelButton() const { return m_cancel; }

private:
    void createClicked();

    const SetupForm &m_form;
    Reporter &m_reporter;
    QLineEdit *m_name = nullptr;
    QPushButton *m_create = nullptr;
    QPushButton *m_cancel = nullptr;
};
