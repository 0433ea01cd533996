#pragma once

#include "SetupPage.h"

#include <array>

// "Int.": distance and days between the five standard services.
class CSetuppage3 : public SetupPage
{
    Q_OBJECT
public:
    explicit CSetuppage3(SetupForm &form, QWidget *parent = nullptr);

    void showValues() override;
    void confirm() override;

    // Rows in screen order: oil change, tune-up, transmission, coolant, tires.
    QLineEdit *distanceEdit(int row) const { return m_distance[size_t(row)]; }
    QLineEdit *daysEdit(int row) const { return m_days[size_t(row)]; }

private:
    std::array<QLineEdit *, 5> m_distance {};
    std::array<QLineEdit *, 5> m_days {};
};
