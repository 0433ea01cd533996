#include "CSetuppage4.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "setup/SetupForm.h"

using namespace Qt::StringLiterals;

CSetuppage4::CSetuppage4(SetupForm &form, QWidget *parent)
    : SetupPage(SetupPages::customTitle(), SetupPages::customHint(), form, parent)
{
    auto *grid = new QGridLayout;
    grid->setColumnStretch(0, 4);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 2);
    const QStringList headings { u"Interval Name"_s, u"Mileage"_s, u"Days"_s };
    for (int column = 0; column < headings.size(); ++column) {
        auto *heading = new QLabel(headings.at(column));
        QFont bold = heading->font();
        bold.setBold(true);
        heading->setFont(bold);
        grid->addWidget(heading, 0, column);
    }
    for (int row = 0; row < 5; ++row) {
        const QString number = QString::number(row + 1);
        m_names[size_t(row)] = new QLineEdit;
        m_names[size_t(row)]->setObjectName(u"name"_s + number);
        m_names[size_t(row)]->setAccessibleName(u"Interval Name "_s + number);
        m_mileage[size_t(row)] = digitsEdit(u"mileage"_s + number, 10);
        m_mileage[size_t(row)]->setAccessibleName(u"Mileage "_s + number);
        m_days[size_t(row)] = digitsEdit(u"days"_s + number, 9);
        m_days[size_t(row)]->setAccessibleName(u"Days "_s + number);
        grid->addWidget(m_names[size_t(row)], row + 1, 0);
        grid->addWidget(m_mileage[size_t(row)], row + 1, 1);
        grid->addWidget(m_days[size_t(row)], row + 1, 2);
    }
    contentLayout()->addLayout(grid);
}

void CSetuppage4::showValues()
{
    const CustomValues values = m_form.custom();
    for (size_t row = 0; row < 5; ++row) {
        m_names[row]->setText(values.names[row]);
        m_mileage[row]->setText(SetupPages::numberText(values.mileage[row]));
        m_days[row]->setText(QString::number(values.days[row]));
    }
}

void CSetuppage4::confirm()
{
    CustomValues values = m_form.custom();
    for (size_t row = 0; row < 5; ++row) {
        values.names[row] = m_names[row]->text();
        SetupPages::digitsOnly(m_mileage[row]->text(), &values.mileage[row]);
        SetupPages::digitsOnly(m_days[row]->text(), &values.days[row]);
    }
    m_form.confirm(values);
}
