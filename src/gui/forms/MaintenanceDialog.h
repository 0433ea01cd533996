#pragma once

#include <QList>

#include "EntryDialog.h"
#include "forms/MaintenanceForm.h"

class QDateEdit;
class QLabel;
class QPlainTextEdit;
class QToolButton;

// "Maintenance": one repair or service, new or stored. The rules, the icon ones included, are
// MaintenanceForm's; this shell moves values between the controls and the form.
class MaintenanceDialog : public EntryDialog
{
    Q_OBJECT
public:
    MaintenanceDialog(const EntryFormContext &context, CVCItem &record, const QString &listsPath,
                      Reporter &reporter, QWidget *parent = nullptr);

    const MaintenanceForm &form() const { return m_form; }

    QLineEdit *odometerEdit() const { return m_odometer; }
    QDateEdit *dateEdit() const { return m_date; }
    QPushButton *repairButton() const { return m_repairButton; }
    QComboBox *repairCombo() const { return m_repair; }
    QLabel *iconPreview() const { return m_preview; }
    QLineEdit *invoiceEdit() const { return m_invoice; }
    QLineEdit *costEdit() const { return m_cost; }
    QPushButton *locationButton() const { return m_locationButton; }
    QComboBox *locationCombo() const { return m_location; }
    QPlainTextEdit *noteEdit() const { return m_note; }
    // "I0".."I10".
    QToolButton *iconButton(int index) const { return m_iconButtons.value(index); }

protected:
    void saveClicked() override;

private:
    bool readControls(bool strict);
    void showValues();
    void showIcon();
    void fillLists();
    void repairTypeChosen(const QString &text);
    void repairTypeEdited();
    void listClicked(const QString &section);

    MaintenanceForm m_form;
    CVCItem &m_record;
    QString m_listsPath;

    QLineEdit *m_odometer = nullptr;
    QDateEdit *m_date = nullptr;
    QPushButton *m_repairButton = nullptr;
    QComboBox *m_repair = nullptr;
    QLabel *m_preview = nullptr;
    QLineEdit *m_invoice = nullptr;
    QLineEdit *m_cost = nullptr;
    QPushButton *m_locationButton = nullptr;
    QComboBox *m_location = nullptr;
    QPlainTextEdit *m_note = nullptr;
    QList<QToolButton *> m_iconButtons;
};
