#pragma once

#include "SetupPage.h"

#include <array>

// "Cust.": the five custom reminders. Confirming also makes their names repair types.
class CSetuppage4 : public SetupPage
{
    Q_OBJECT
public:
    explicit CSetuppage4(SetupForm &form, QWidget *parent = nullptr);

    void showValues() override;
    void confirm() override;

    QLineEdit *nameEdit(int row) const { return m_names[size_t(row)]; }
    QLineEdit *mileageEdit(int row) const { return m_mileage[size_t(row)]; }
    QLineEdit *daysEdit(int row) const { return m_days[size_t(row)]; }

private:
    std::array<QLineEdit *, 5> m_names {};
    std::array<QLineEdit *, 5> m_mileage {};
    std::array<QLineEdit *, 5> m_days {};
};
