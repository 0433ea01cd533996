#pragma once

#include "EntryDialog.h"
#include "forms/FuelForm.h"

class QCheckBox;
class QDateEdit;
class QLabel;
class QPlainTextEdit;
class Reporter;

// "Fuel": one fill-up, new or stored. The rules are FuelForm's; this shell moves values between
// the controls and the form and runs the station list.
class FuelDialog : public EntryDialog
{
    Q_OBJECT
public:
    // On Save the record is rewritten and the dialog accepted; Cancel leaves the record alone.
    FuelDialog(const EntryFormContext &context, CVCItem &record, const QString &listsPath, Reporter &reporter,
               QWidget *parent = nullptr);

    const FuelForm &form() const { return m_form; }

    QLineEdit *odometerEdit() const { return m_odometer; }
    QDateEdit *dateEdit() const { return m_date; }
    QPushButton *stationButton() const { return m_stationButton; }
    QComboBox *stationCombo() const { return m_station; }
    QLineEdit *quantityEdit() const { return m_quantity; }
    QComboBox *unitCombo() const { return m_unit; }
    QLabel *priceUnitLabel() const { return m_priceUnit; }
    QCheckBox *notFullBox() const { return m_notFull; }
    QLineEdit *priceEdit() const { return m_price; }
    QLineEdit *temperatureEdit() const { return m_temperature; }
    QLineEdit *totalEdit() const { return m_total; }
    QLineEdit *economyEdit() const { return m_economy; }
    QPlainTextEdit *noteEdit() const { return m_note; }

protected:
    void saveClicked() override;

private:
    // Lenient while typing; strict (with the request for a number) on Save.
    bool readControls(bool strict);
    void showValues();
    void fillStations();
    void quantityEdited();
    void priceEdited();
    void unitEdited();
    void stationClicked();

    FuelForm m_form;
    CVCItem &m_record;
    QString m_listsPath;
    bool m_showing = false;

    QLineEdit *m_odometer = nullptr;
    QDateEdit *m_date = nullptr;
    QPushButton *m_stationButton = nullptr;
    QComboBox *m_station = nullptr;
    QLineEdit *m_quantity = nullptr;
    QComboBox *m_unit = nullptr;
    QCheckBox *m_notFull = nullptr;
    QLineEdit *m_price = nullptr;
    QLabel *m_priceUnit = nullptr;
    bool m_totalEdited = false;
    QLineEdit *m_temperature = nullptr;
    QLineEdit *m_total = nullptr;
    QLineEdit *m_economy = nullptr;
    QPlainTextEdit *m_note = nullptr;
};
