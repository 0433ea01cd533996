#pragma once

#include "EntryDialog.h"
#include "forms/TripForm.h"
#include "platform/DevicePaths.h"

class QDateEdit;
class QLabel;
class QPlainTextEdit;
class QTimeEdit;

// "Trips": one trip, new, open or completed. The rules are TripForm's; this shell moves values
// between the controls and the form and runs the three pick lists.
class TripDialog : public EntryDialog
{
    Q_OBJECT
public:
    // installFolder is the install folder of the options (its Lists.ini seeds a missing user copy).
    TripDialog(const EntryFormContext &context, CVCItem &record, const DevicePaths &paths,
               const QString &installFolder, Reporter &reporter, QWidget *parent = nullptr);

    const TripForm &form() const { return m_form; }

    QLabel *vehicleLabel() const { return m_vehicle; }
    QComboBox *contactCombo() const { return m_contact; }
    QComboBox *purposeCombo() const { return m_purpose; }
    QComboBox *destinationCombo() const { return m_destination; }
    QPushButton *contactButton() const { return m_contactButton; }
    QPushButton *purposeButton() const { return m_purposeButton; }
    QPushButton *destinationButton() const { return m_destinationButton; }
    QPlainTextEdit *noteEdit() const { return m_note; }
    QLineEdit *tollsEdit() const { return m_tolls; }
    QLineEdit *parkingEdit() const { return m_parking; }
    QLineEdit *departOdometerEdit() const { return m_departOdometer; }
    QLineEdit *arriveOdometerEdit() const { return m_arriveOdometer; }
    QDateEdit *departDateEdit() const { return m_departDate; }
    QTimeEdit *departTimeEdit() const { return m_departTime; }
    QDateEdit *arriveDateEdit() const { return m_arriveDate; }
    QTimeEdit *arriveTimeEdit() const { return m_arriveTime; }
    QPushButton *button(const QString &caption) const;

protected:
    void saveClicked() override;

private:
    bool readControls(bool strict);
    void showValues();
    void fillLists();
    void listClicked(const QString &section);
    void odometerButton(void (TripForm::*step)());
    void limitNote();

    TripForm m_form;
    CVCItem &m_record;
    DevicePaths m_paths;
    QString m_installFolder;

    QLabel *m_vehicle = nullptr;
    QPushButton *m_contactButton = nullptr;
    QComboBox *m_contact = nullptr;
    QPushButton *m_purposeButton = nullptr;
    QComboBox *m_purpose = nullptr;
    QPushButton *m_destinationButton = nullptr;
    QComboBox *m_destination = nullptr;
    QPlainTextEdit *m_note = nullptr;
    QLineEdit *m_tolls = nullptr;
    QLineEdit *m_parking = nullptr;
    QLineEdit *m_departOdometer = nullptr;
    QDateEdit *m_departDate = nullptr;
    QTimeEdit *m_departTime = nullptr;
    QLineEdit *m_arriveOdometer = nullptr;
    QDateEdit *m_arriveDate = nullptr;
    QTimeEdit *m_arriveTime = nullptr;
};
