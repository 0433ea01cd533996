#pragma once

#include "SetupPage.h"

class QButtonGroup;

// "Measurements": the starting odometer and the three unit settings.
class CSetuppage_2 : public SetupPage
{
    Q_OBJECT
public:
    explicit CSetuppage_2(SetupForm &form, QWidget *parent = nullptr);

    void showValues() override;
    void confirm() override;

    QLineEdit *startOdometerEdit() const { return m_start; }
    QButtonGroup *distanceGroup() const { return m_distance; }
    QButtonGroup *liquidGroup() const { return m_liquid; }
    QButtonGroup *economyGroup() const { return m_economy; }

private:
    QLineEdit *m_start = nullptr;
    QButtonGroup *m_distance = nullptr;
    QButtonGroup *m_liquid = nullptr;
    QButtonGroup *m_economy = nullptr;
};
