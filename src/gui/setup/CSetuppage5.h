#pragma once

#include "SetupPage.h"

class QButtonGroup;
class QCheckBox;

// "Trips": detailed trip reports and the trip rate. The hidden options ride along unchanged.
class CSetuppage5 : public SetupPage
{
    Q_OBJECT
public:
    explicit CSetuppage5(SetupForm &form, QWidget *parent = nullptr);

    void showValues() override;
    void confirm() override;

    QCheckBox *detailedBox() const { return m_detailed; }
    QLineEdit *costEdit() const { return m_cost; }

private:
    QCheckBox *m_detailed = nullptr;
    QLineEdit *m_cost = nullptr;
    QCheckBox *m_contacts = nullptr;
    QCheckBox *m_homeAddress = nullptr;
    QCheckBox *m_companyName = nullptr;
    QButtonGroup *m_sort = nullptr;
};
