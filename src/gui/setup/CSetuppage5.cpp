#include "CSetuppage5.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

CSetuppage5::CSetuppage5(SetupForm &form, QWidget *parent)
    : SetupPage(SetupPages::tripsTitle(), SetupPages::tripsHint(), form, parent)
{
    m_detailed = new QCheckBox(u"Detailed trip reports"_s);
    m_detailed->setObjectName(u"detailed"_s);
    m_cost = new QLineEdit;
    m_cost->setObjectName(u"costPerMile"_s);
    m_cost->setValidator(
        new QRegularExpressionValidator(QRegularExpression(u"\\d{0,9}(\\.\\d*)?"_s), m_cost));
    m_cost->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    contentLayout()->addWidget(m_detailed);
    auto *cost = new QFormLayout;
    cost->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    cost->addRow(u"Cost per Mile/Km:"_s, m_cost);
    contentLayout()->addLayout(cost);

    // Options kept for the trip lists: not shown, not editable, but saved as they were.
    m_contacts = new QCheckBox(u"Outlook Contacts"_s, this);
    m_homeAddress = new QCheckBox(u"Use home address in details"_s, this);
    m_companyName = new QCheckBox(u"Use Company name in details"_s, this);
    m_sort = new QButtonGroup(this);
    QWidget *sort = radioGroup(u"Sort by:"_s, SetupPages::sortCaptions(), m_sort, u"sortBy"_s);
    sort->setParent(this);
    for (QWidget *hidden : { static_cast<QWidget *>(m_contacts), static_cast<QWidget *>(m_homeAddress),
                             static_cast<QWidget *>(m_companyName), sort }) {
        hidden->setEnabled(false);
        hidden->hide();
    }
}

void CSetuppage5::showValues()
{
    const TripsValues values = m_form.trips();
    m_detailed->setChecked(values.detailed);
    m_cost->setText(SetupPages::numberText(values.costPerMile));
    m_contacts->setChecked(values.useContacts);
    m_homeAddress->setChecked(values.homeAddress);
    m_companyName->setChecked(values.companyName);
    checkButton(m_sort, qMin(values.sortListBy, 2));
}

void CSetuppage5::confirm()
{
    TripsValues values = m_form.trips();
    values.detailed = m_detailed->isChecked();
    bool ok = false;
    const double cost = m_cost->text().toDouble(&ok);
    values.costPerMile = ok ? cost : 0.0;
    values.useContacts = m_contacts->isChecked();
    values.homeAddress = m_homeAddress->isChecked();
    values.companyName = m_companyName->isChecked();
    // The order index above 2 reads as "Contact" either way; keep the stored one.
    if (m_sort->checkedId() != qMin(values.sortListBy, 2))
        values.sortListBy = qMax(0, m_sort->checkedId());
    m_form.confirm(values);
}
