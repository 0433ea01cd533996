#include "CSetuppage_2.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

CSetuppage_2::CSetuppage_2(SetupForm &form, QWidget *parent)
    : SetupPage(SetupPages::measurementsTitle(), SetupPages::measurementsHint(), form, parent)
{
    m_start = digitsEdit(u"startOdometer"_s, 10);
    m_distance = new QButtonGroup(this);
    m_liquid = new QButtonGroup(this);
    m_economy = new QButtonGroup(this);

    auto *start = new QFormLayout;
    start->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    start->addRow(u"Starting Odometer"_s, m_start);
    contentLayout()->addLayout(start);
    // Two columns keep the three groups within a small screen.
    auto *groups = new QGridLayout;
    groups->addWidget(radioGroup(u"Distance"_s, SetupPages::distanceCaptions(), m_distance, u"distance"_s), 0,
                      0);
    groups->addWidget(radioGroup(u"Liquids"_s, SetupPages::liquidCaptions(), m_liquid, u"liquid"_s), 1, 0);
    groups->addWidget(radioGroup(u"Economy"_s, SetupPages::economyCaptions(), m_economy, u"economy"_s), 0, 1,
                      2, 1);
    contentLayout()->addLayout(groups);
}

void CSetuppage_2::showValues()
{
    const MeasurementsValues values = m_form.measurements();
    m_start->setText(SetupPages::numberText(values.startOdometer));
    checkButton(m_distance, values.distanceUnit);
    checkButton(m_liquid, values.liquidUnit);
    checkButton(m_economy, values.economyUnit);
}

void CSetuppage_2::confirm()
{
    // A stored fraction shown in the edit is kept as it was.
    MeasurementsValues values = m_form.measurements();
    SetupPages::digitsOnly(m_start->text(), &values.startOdometer);
    values.distanceUnit = qMax(0, m_distance->checkedId());
    values.liquidUnit = qMax(0, m_liquid->checkedId());
    values.economyUnit = qMax(0, m_economy->checkedId());
    m_form.confirm(values);
}
