#pragma once

#include "SetupPage.h"

// "General Info.": VIN, make, model, year and plate.
class CSetuppage1 : public SetupPage
{
    Q_OBJECT
public:
    explicit CSetuppage1(SetupForm &form, QWidget *parent = nullptr);

    QString problem() const override;
    void showValues() override;
    void confirm() override;

    QLineEdit *vinEdit() const { return m_vin; }
    QLineEdit *makeEdit() const { return m_make; }
    QLineEdit *modelEdit() const { return m_model; }
    QLineEdit *yearEdit() const { return m_year; }
    QLineEdit *plateEdit() const { return m_plate; }

private:
    QLineEdit *m_vin = nullptr;
    QLineEdit *m_make = nullptr;
    QLineEdit *m_model = nullptr;
    QLineEdit *m_year = nullptr;
    QLineEdit *m_plate = nullptr;
};
